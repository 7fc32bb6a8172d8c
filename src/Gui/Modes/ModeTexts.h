#pragma once

#include "Design/ModuleConfiguration.h"

#include <QString>

namespace ChipLoom {

class Design;

// Words for modes and parameters, in the language of the moment.

QString itemText(const ItemInfoStruct &item);

/// Why an entry cannot be chosen: the database's diagnostic, or the pins that hold it and who holds them. Empty if it
/// can be chosen.
QString itemHint(const Design &design, const ModuleConfiguration &module, const ModeControl &control, int index);

/// Range or choices of a parameter, its description and what it depends on, as rich text.
QString parameterToolTip(const RefParameter &parameter);

/// "1 to 65535", "at least 1", or empty.
QString rangeText(const RefParameter &parameter);

} // namespace ChipLoom
