#pragma once

#include "Design/DesignReason.h"

#include <QString>
#include <QStringList>

namespace ChipLoom {

class Design;
class ModeControl;
class ModuleConfiguration;

/// A refusal in words of the current language, and the instances in which it could be lifted, in list order. These are
/// entries of the device's lists, and never the instance that was refused.
struct Explanation
{
    QString text;
    QStringList modules;
};

/// The sentence of an answer, and whom it names: instances, and the owners of signals. `self` is left out.
Explanation explained(const Design &design, const DesignAnswer &answer, const QString &self);

/// Why an entry cannot be chosen: the database's diagnostic and who raises or should raise the tokens that it asks
/// for, or the pins, what stands there and who holds it. Empty if the entry can be chosen.
Explanation itemExplanation(const Design &design, const ModuleConfiguration &module, const ModeControl &control,
                            int index);

} // namespace ChipLoom
