#include "Model/RecentDesigns.h"

#include "Base/AtomicFile.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace ChipLoom {

namespace {

constexpr qint64 MaxFileBytes = 1024 * 1024;
constexpr int MaxEntries = 5;

QByteArray write(const QList<ProjectFileSaveInfo> &entries)
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
    return content;
}

} // namespace

QList<ProjectFileSaveInfo> GetRecentlyProjectList(const QString &file)
{
    const ReadResult read = readFile(file, MaxFileBytes);
    QList<ProjectFileSaveInfo> entries;
    QXmlStreamReader xml(read.content);
    if (!xml.readNextStartElement())
        return {};
    while (xml.readNextStartElement()) {
        if (xml.name() != QLatin1String("ResentlyProject")) {
            xml.skipCurrentElement();
            continue;
        }
        while (xml.readNextStartElement()) {
            if (xml.name() != QLatin1String("FilePath")) {
                xml.skipCurrentElement();
                continue;
            }
            const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
            const QString path = text.section(QLatin1Char(';'), 0, 0);
            if (!path.isEmpty() && entries.size() < MaxEntries)
                entries.append({path, text.section(QLatin1Char(';'), 1)});
        }
    }
    return xml.hasError() ? QList<ProjectFileSaveInfo>() : entries;
}

bool DeleteRecentlyProjectToFile(const QString &file, const QString &path)
{
    QList<ProjectFileSaveInfo> entries = GetRecentlyProjectList(file);
    for (int i = entries.size() - 1; i >= 0; --i) {
        if (entries.at(i).filePath == path)
            entries.removeAt(i);
    }
    return replaceFile(file, write(entries)).ok();
}

} // namespace ChipLoom
