#include "Gui/Modes/ModeTexts.h"

#include "Design/DesignTexts.h"

#include <QCoreApplication>
#include <QMenu>

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

QString shown(const char *text)
{
    return QCoreApplication::translate("ModePage", text);
}

} // namespace

QString itemText(const ItemInfoStruct &item)
{
    return ownText(item.UserName_EN, item.UserName_CH, item.Name);
}

QString withLinks(const Explanation &explanation)
{
    QString text = explanation.text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
    for (const QString &module : explanation.modules) {
        const QString name = module.toHtmlEscaped();
        text += QStringLiteral("  \u2192&nbsp;<a href=\"") + name + QLatin1String("\">") + name + QLatin1String("</a>");
    }
    return text;
}

void addExplanation(QMenu &menu, const QString &name, const Explanation &explanation,
                    const std::function<void(const QString &module)> &show)
{
    if (explanation.text.isEmpty())
        return;
    // The lines of a menu are short; the whole reason is in the tool tip.
    menu.setToolTipsVisible(true);
    QAction *reason = menu.addAction(name + QLatin1String(": ") + explanation.text.section(QLatin1Char('\n'), 0, 0));
    reason->setToolTip(explanation.text);
    reason->setEnabled(false);
    for (const QString &module : explanation.modules) {
        QAction *leads = menu.addAction(shown(QT_TRANSLATE_NOOP("ModePage", "Show %1")).arg(module));
        QObject::connect(leads, &QAction::triggered, leads, [show, module] { show(module); });
    }
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

QString unitText(const RefParameter &parameter)
{
    // Signs as MHz are the same everywhere; these are words.
    static constexpr std::array Words{QT_TRANSLATE_NOOP("ModePage", "bit"), QT_TRANSLATE_NOOP("ModePage", "bytes"),
                                      QT_TRANSLATE_NOOP("ModePage", "words"), QT_TRANSLATE_NOOP("ModePage", "ticks"),
                                      QT_TRANSLATE_NOOP("ModePage", "x 32 clocks")};
    const auto word = std::find(Words.begin(), Words.end(), parameter.Unit);
    return word == Words.end() ? parameter.Unit : shown(*word);
}

QString parameterToolTip(const RefParameter &parameter)
{
    QString text = QLatin1String("<b>") + parameter.Comment.toHtmlEscaped() + QLatin1String("</b> (") +
                   parameter.Name.toHtmlEscaped() + QLatin1Char(')');
    const QString range = rangeText(parameter);
    if (!range.isEmpty())
        text += QLatin1String("<br>") + range.toHtmlEscaped() + QLatin1Char(' ') + unitText(parameter).toHtmlEscaped();
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
