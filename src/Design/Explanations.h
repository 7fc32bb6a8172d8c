#pragma once

#include "Design/DesignReason.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace ChipLoom {

class Design;
class ModeControl;
class ModuleConfiguration;
struct LostChoice;
struct PossibleValue;
struct RefParameter;

/// A refusal in words of the current language, and the instances in which it could be lifted, in list order. These are
/// entries of the device's lists, and never the instance that was refused.
struct Explanation
{
    QString text;
    QStringList modules;
};

/// The sentence of an answer, and whom it names: instances, and the owners of signals. `self` is left out.
Explanation explained(const Design &design, const DesignAnswer &answer, const QString &self);

/// What went off because its pins went: each instance with its choices.
QList<Explanation> explained(const Design &design, const QList<LostChoice> &lost);

/// Why an entry cannot be chosen: the database's diagnostic and where that could be changed, modes and parameters of
/// the module itself and other instances that raise or should raise the tokens; or the pins, what stands there and who
/// holds it. Empty if the entry can be chosen.
Explanation itemExplanation(const Design &design, const ModuleConfiguration &module, const ModeControl &control,
                            int index);

/// The same for a value that a list parameter has, but does not offer now. Empty if it is offered.
Explanation valueExplanation(const Design &design, const ModuleConfiguration &module, const RefParameter &parameter,
                             const PossibleValue &value);

} // namespace ChipLoom
