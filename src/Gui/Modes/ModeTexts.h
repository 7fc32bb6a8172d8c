#pragma once

#include "Design/Explanations.h"
#include "Design/ModuleConfiguration.h"

#include <QString>

#include <functional>

class QMenu;

namespace ChipLoom {

// Words for modes and parameters, in the language of the moment.

QString itemText(const ItemInfoStruct &item);

/// An explanation as rich text, with a link to each module; the link's target is the instance.
QString withLinks(const Explanation &explanation);

/// Puts an explanation into a menu: the reason, and an entry for each module that leads there. Nothing for an empty
/// one.
void addExplanation(QMenu &menu, const QString &name, const Explanation &explanation,
                    const std::function<void(const QString &module)> &show);

/// Range or choices of a parameter, its description and what it depends on, as rich text.
QString parameterToolTip(const RefParameter &parameter);

/// "1 to 65535", "at least 1", or empty.
QString rangeText(const RefParameter &parameter);

/// The unit in the user's language.
QString unitText(const RefParameter &parameter);

} // namespace ChipLoom
