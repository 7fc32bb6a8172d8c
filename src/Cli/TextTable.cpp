#include "Cli/TextTable.h"

#include <algorithm>
#include <vector>

namespace ChipLoom {

namespace {

/// A Chinese character is as wide as two others.
int widthOf(const QString &text)
{
    return static_cast<int>(std::count_if(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0x2E7F; })) +
           text.size();
}

} // namespace

void writeTable(QTextStream &out, const QList<QStringList> &lines, int indent)
{
    std::vector<int> widths(lines.isEmpty() ? 0 : lines.first().size());
    for (const QStringList &line : lines) {
        for (int i = 0; i < line.size(); ++i)
            widths.at(i) = std::max(widths.at(i), widthOf(line.at(i)));
    }
    for (const QStringList &line : lines) {
        QString text(indent, QLatin1Char(' '));
        for (int i = 0; i < line.size(); ++i)
            text += line.at(i) + QString(widths.at(i) - widthOf(line.at(i)) + 2, QLatin1Char(' '));
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        out << text << '\n';
    }
}

} // namespace ChipLoom
