#include "Project/Toolchains/TextSections.h"

#include "Project/ProjectFiles.h"
#include "Project/Toolchains/ProjectLists.h"

#include <QCoreApplication>

namespace ChipLoom {

bool TextSections::read(const ProjectOrder &order, const QString &file, BuilderAccount &account)
{
    const ProjectText read = readProjectText(order.projectFullPath + QLatin1Char('/') + file);
    if (!read.ok) {
        account.detail = read.error;
        return false;
    }
    m_file = file;
    m_text = read.text;
    m_dosLines = m_text.contains(QLatin1String("\r\n"));
    if (m_dosLines)
        m_text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return true;
}

bool TextSections::write(const ProjectOrder &order, BuilderAccount &account)
{
    QString text = m_text;
    if (m_dosLines)
        text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return writeProjectText(order, order.projectFullPath + QLatin1Char('/') + m_file, text, account);
}

void TextSections::set(const QString &what, const QString &expression, const QString &by, BuilderAccount &account)
{
    edit(
        what, expression, [&by](const QString &) { return by; }, account);
}

void TextSections::edit(const QString &what, const QString &expression,
                        const std::function<QString(const QString &)> &lines, BuilderAccount &account)
{
    const QRegularExpressionMatch match = usedOnce(expression).match(m_text);
    if (!match.hasMatch()) {
        account.notes.append(QCoreApplication::translate("Project", "%1: %2 was not found in its known form and was "
                                                                    "left as it is")
                                 .arg(m_file, what));
        return;
    }
    const QString by = lines(match.captured(1));
    m_text.replace(match.capturedStart(1), match.capturedLength(1), by);
}

QStringList listEntries(const QString &lines, const QString &prefix)
{
    QStringList entries;
    for (QString line : lines.split(QLatin1Char('\n'))) {
        line = withoutBlanks(line);
        if (line.endsWith(QLatin1Char('\\')))
            line = withoutBlanks(line.chopped(1));
        if (line.startsWith(prefix))
            line.remove(0, prefix.size());
        if (!line.isEmpty())
            entries.append(line);
    }
    return entries;
}

ContinuedList continuedList(const QString &text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    int end = 0;
    for (bool goesOn = true; goesOn && end < lines.size() && !withoutBlanks(lines.at(end)).isEmpty(); ++end)
        goesOn = lines.at(end).endsWith(QLatin1Char('\\'));
    const bool hasEmptyLine = end < lines.size() && withoutBlanks(lines.at(end)).isEmpty();
    const QStringList rest = lines.mid(end + int(hasEmptyLine));
    return {lines.mid(0, end).join(QLatin1Char('\n')), rest.join(QLatin1Char('\n'))};
}

} // namespace ChipLoom
