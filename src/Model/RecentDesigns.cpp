#include "Model/RecentDesigns.h"

#include "Base/AtomicFile.h"
#include "Model/XmlTree.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace ChipLoom {

namespace {

constexpr int MaxEntries = 5;
constexpr XmlLimits ListLimits{.bytes = 1024 * 1024, .depth = 16, .nodes = 20'000};

QString listedPath(const QString &path)
{
    return path.section(QLatin1Char(';'), 0, 0);
}

QList<ProjectFileSaveInfo> readWithout(const QString &file, const QString &path)
{
    QList<ProjectFileSaveInfo> entries = GetRecentlyProjectList(file);
    const QString listed = listedPath(path);
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [&](const ProjectFileSaveInfo &entry) { return entry.filePath == listed; }),
                  entries.end());
    return entries;
}

bool write(const QString &file, const QList<ProjectFileSaveInfo> &entries)
{
    QByteArray content;
    QXmlStreamWriter xml(&content);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("Root"));
    xml.writeStartElement(QStringLiteral("ResentlyProject"));
    for (const ProjectFileSaveInfo &entry : entries)
        xml.writeTextElement(QStringLiteral("FilePath"), entry.filePath + QLatin1Char(';') + entry.creatTime);
    xml.writeEndDocument();
    return replaceFile(file, content).ok();
}

} // namespace

QList<ProjectFileSaveInfo> GetRecentlyProjectList(const QString &file)
{
    QList<ProjectFileSaveInfo> entries;
    const XmlDocument document = readXml(file, XmlText::All, ListLimits);
    const XMLElementInfo *list = findChild(document.root, QLatin1String("ResentlyProject"));
    if (!list)
        return entries;
    for (const XMLElementInfo &element : list->subElementInfoList) {
        const QString path = listedPath(element.tagText);
        if (element.tagName != QLatin1String("FilePath") || path.isEmpty())
            continue;
        const bool hasTime = element.tagText.contains(QLatin1Char(';'));
        entries.append({path, hasTime ? element.tagText.section(QLatin1Char(';'), -1) : QString()});
        if (entries.size() == MaxEntries)
            break;
    }
    return entries;
}

bool SetRecentlyProjectToFile(const QString &file, const QString &path, const QDateTime &time)
{
    QList<ProjectFileSaveInfo> entries = readWithout(file, path);
    while (entries.size() >= MaxEntries)
        entries.removeLast();
    entries.prepend({listedPath(path), time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))});
    return write(file, entries);
}

bool DeleteRecentlyProjectToFile(const QString &file, const QString &path)
{
    return write(file, readWithout(file, path));
}

} // namespace ChipLoom
