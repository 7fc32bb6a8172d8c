#include "Project/ProjectManifest.h"

#include "Base/AtomicFile.h"

namespace ChipLoom {

namespace {

constexpr qint64 MaxManifest = 32 * 1024 * 1024;
const QByteArray FirstLine = QByteArrayLiteral("# Written by Chip Loom. May be deleted.");

} // namespace

ProjectManifest::ProjectManifest(const QString &root)
{
    const ReadResult read = readFile(root + QLatin1Char('/') + fileName(), MaxManifest);
    const QList<QByteArray> lines = read.content.split('\n');
    m_known = read.ok && lines.first() == FirstLine;
    if (!m_known)
        return;
    m_saved = read.content;
    for (const QByteArray &line : lines) {
        // The name stands last, because it may hold anything but a line end.
        const QList<QByteArray> words = line.split('\t');
        if (words.first() == "package" && words.size() > 1)
            m_package = QString::fromUtf8(line.mid(8));
        else if (words.first() == "unfinished" && words.size() > 1)
            m_unfinished.append(QString::fromUtf8(line.mid(11)));
        else if (words.first() == "drivers" && words.size() > 2)
            m_drivers.insert(QString::fromUtf8(words[1]), QString::fromUtf8(words[2]).split(QLatin1Char(' ')));
        else if (words.size() >= 5)
            m_entries.insert(
                QString::fromUtf8(words.mid(4).join('\t')),
                {words[0].toLongLong(), words[1].toLongLong(), words[2].toLongLong(), words[3].toLongLong()});
    }
}

void ProjectManifest::setUnfinished(const QString &toolchain, bool unfinished)
{
    m_unfinished.removeAll(toolchain);
    if (unfinished)
        m_unfinished.append(toolchain);
}

const ProjectManifest::Entry *ProjectManifest::entry(const QString &path) const
{
    const auto found = m_entries.constFind(path);
    return found == m_entries.constEnd() ? nullptr : &*found;
}

QByteArray ProjectManifest::content() const
{
    QByteArray text = FirstLine + '\n';
    if (!m_package.isEmpty())
        text += "package\t" + m_package.toUtf8() + '\n';
    for (const QString &toolchain : m_unfinished)
        text += "unfinished\t" + toolchain.toUtf8() + '\n';
    for (auto drivers = m_drivers.begin(); drivers != m_drivers.end(); ++drivers)
        text += "drivers\t" + drivers.key().toUtf8() + '\t' + drivers->join(QLatin1Char(' ')).toUtf8() + '\n';
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        if (entry.key().contains(QLatin1Char('\n')))
            continue;
        for (const qint64 number : {entry->sourceSize, entry->sourceTime, entry->targetSize, entry->targetTime})
            text += QByteArray::number(number) + '\t';
        text += entry.key().toUtf8() + '\n';
    }
    return text;
}

} // namespace ChipLoom
