#include "Gui/Modes/ModeTexts.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"

#include <QCoreApplication>

namespace ChipLoom {

namespace {

QString shown(const char *text)
{
    return QCoreApplication::translate("ModePage", text);
}

// Pins that could take a signal, with what stands there now.
QString holders(const Design &design, const QString &signal)
{
    const DevicePinInfo &pins = design.pinInfo();
    const PinRules rules = design.pins().rules();
    QStringList lines;
    for (const SignalPlace place : pins.placesOf(signal)) {
        if (!pins.pin(place.pin).validFlag)
            continue;
        const QStringList standing = rules.configuredOnPin(place.pin, signal);
        if (!standing.isEmpty())
            lines.append(signal + QLatin1String("------") + pins.pin(place.pin).pinName + QLatin1Char('\n') +
                         standing.join(QLatin1String(", ")));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

QString itemText(const ItemInfoStruct &item)
{
    return ownText(item.UserName_EN, item.UserName_CH, item.Name);
}

QString itemHint(const Design &design, const ModuleConfiguration &module, const ModeControl &control, int index)
{
    const DesignAnswer answer = module.itemAnswer(control, index);
    if (answer)
        return {};
    const Condition &own = control.declaration().modeCondition;
    const QString closed = ownText(own.Diagnostic_EN, own.Diagnostic_CH, {});
    if (answer.reason == DesignReason::ModeClosed && !closed.isEmpty())
        return closed;
    const Condition &condition = control.items().at(index - 1).ItemCondition;
    const QString diagnostic = ownText(condition.Diagnostic_EN, condition.Diagnostic_CH, {});
    if (answer.reason == DesignReason::ItemConditionNotMet && !diagnostic.isEmpty())
        return diagnostic;
    if (answer.reason != DesignReason::PinsTaken)
        return answerText(answer);
    QStringList conflicts;
    for (const QString &signal : answer.arguments.value(1).split(QLatin1String(", ")))
        conflicts.append(holders(design, signal));
    conflicts.removeAll(QString());
    return conflicts.isEmpty() ? answerText(answer)
                               : shown(QT_TRANSLATE_NOOP("ModePage", "Conflict with:")) + QLatin1Char('\n') +
                                     conflicts.join(QLatin1Char('\n'));
}

QString rangeText(const RefParameter &parameter)
{
    const QString &least = parameter.MinValue;
    const QString &most = parameter.MaxValue;
    if (!least.isEmpty() && !most.isEmpty())
        return shown(QT_TRANSLATE_NOOP("ModePage", "%1 to %2")).arg(least, most);
    if (!least.isEmpty())
        return shown(QT_TRANSLATE_NOOP("ModePage", "at least %1")).arg(least);
    return most.isEmpty() ? QString() : shown(QT_TRANSLATE_NOOP("ModePage", "at most %1")).arg(most);
}

QString parameterToolTip(const RefParameter &parameter)
{
    QString text = QLatin1String("<b>") + parameter.Comment.toHtmlEscaped() + QLatin1String("</b> (") +
                   parameter.Name.toHtmlEscaped() + QLatin1Char(')');
    const QString range = rangeText(parameter);
    if (!range.isEmpty())
        text += QLatin1String("<br>") + range.toHtmlEscaped() + QLatin1Char(' ') + parameter.Unit.toHtmlEscaped();
    if (!parameter.Description.isEmpty())
        text += QLatin1String("<p><b>") + shown(QT_TRANSLATE_NOOP("ModePage", "Parameter Description")) +
                QLatin1String("</b><br>") + parameter.Description.toHtmlEscaped();
    if (!parameter.condition.Expression.isEmpty())
        text +=
            QLatin1String("<p><b>") + shown(QT_TRANSLATE_NOOP("ModePage", "Dependency")) + QLatin1String("</b><br>") +
            (parameter.condition.Diagnostic.isEmpty() ? parameter.condition.Expression : parameter.condition.Diagnostic)
                .toHtmlEscaped();
    return text;
}

} // namespace ChipLoom
