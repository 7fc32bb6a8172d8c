#pragma once

#include <QString>
#include <QTextDocument>

namespace ChipLoom {

/// The tool tip of a control that lacks the room for its text: the text as a whole above what the tip says else.
inline QString wholeTextTip(const QString &text, const QString &toolTip)
{
    if (toolTip.isEmpty())
        return text;
    return Qt::mightBeRichText(toolTip) ? QLatin1String("<p>") + text.toHtmlEscaped() + QLatin1String("</p>") + toolTip
                                        : text + QLatin1Char('\n') + toolTip;
}

/// A text that may also be broken behind an underscore: names of macros and modules can be wider than their place.
inline QString breakable(QString text)
{
    return text.replace(QLatin1Char('_'), QStringLiteral("_\u200B"));
}

} // namespace ChipLoom
