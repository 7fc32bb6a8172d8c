#pragma once

#include "Design/IP_ModeAndConfiguration.h"

#include <QString>

namespace ChipLoom {

class Design;

// Words for modes and parameters, in the language of the moment.

/// One of two texts of the database: that of the current language, or the key where it is empty.
QString ownText(const QString &english, const QString &chinese, const QString &key);

QString itemText(const ItemInfoStruct &item);

/// Why an entry cannot be chosen: the database's diagnostic, or the pins that hold it and who holds them. Empty if it
/// can be chosen.
QString itemHint(const Design &design, const IP_ModeAndConfiguration &peripheral, const ModeControl &control,
                 int index);

QString noteText(const IP_ModeAndConfiguration &peripheral);

/// Range or choices of a parameter, its description and what it depends on, as rich text.
QString parameterToolTip(const RefParameter &parameter);

/// "1 to 65535", "at least 1", or empty.
QString rangeText(const RefParameter &parameter);

} // namespace ChipLoom
