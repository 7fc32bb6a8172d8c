#include "GenerateCode/SourceTree.h"

#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/UserBlocks.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace ChipLoom {

SourceTree::SourceTree(QString directory, bool keepUserCode)
    : m_directory(std::move(directory)), m_keepUserCode(keepUserCode)
{
}

QString SourceTree::absolute(const QString &path) const
{
    return m_directory + QLatin1Char('/') + path;
}

void SourceTree::put(const QString &path, const QString &text)
{
    if (!m_texts.contains(path))
        m_paths.append(path);
    m_texts.insert(path, text);
}

void SourceTree::keepUserBlocks(const QString &path, QString &text) const
{
    if (!m_keepUserCode)
        return;
    const TextRead former = readSourceText(absolute(path));
    if (former.ok)
        GenerateCode_Handle_KeepUserCode_EXT(former.text, text);
}

QString SourceTree::problems() const
{
    QStringList lines;
    QStringList folders{m_directory};
    for (const QString &path : m_paths) {
        const QString folder = QFileInfo(absolute(path)).path();
        if (!folders.contains(folder))
            folders.append(folder);
    }
    for (const QString &folder : folders) {
        const QFileInfo info(folder);
        if (info.exists() && !info.isDir())
            lines.append(QCoreApplication::translate("GenerateCode", "%1 is no folder").arg(folder));
    }
    for (const QString &path : m_paths) {
        const QString problem = previousFileProblem(absolute(path));
        if (!problem.isEmpty())
            lines.append(problem.contains(path) ? problem : absolute(path) + QLatin1String(": ") + problem);
    }
    return lines.join(QLatin1Char('\n'));
}

QVector<GeneratedFileRecord> SourceTree::compare() const
{
    QVector<GeneratedFileRecord> records;
    for (const QString &path : m_paths) {
        GeneratedFileRecord record{path, GeneratedFileRecord::State::New, {}, {}};
        const TextRead former = readSourceText(absolute(path));
        if (former.ok) {
            const QString text = m_texts.value(path);
            // By size, because the reading drops carriage returns.
            const bool same = former.text == text && QFileInfo(absolute(path)).size() == text.size();
            record.state = same ? GeneratedFileRecord::State::Unchanged : GeneratedFileRecord::State::Changed;
            if (!same) {
                record.lostBlocks = lostUserBlocks(former.text, m_keepUserCode ? text : QString());
                record.expandedBlocks = expandedUserBlocks(former.text, m_keepUserCode ? text : QString());
            }
        }
        records.append(record);
    }
    for (const QString &path : m_removed) {
        if (QFileInfo(absolute(path)).isFile())
            records.append({path, GeneratedFileRecord::State::Removed, {}, {}});
    }
    return records;
}

QString SourceTree::write() const
{
    for (const QString &path : m_paths) {
        const QString folder = QFileInfo(absolute(path)).path();
        if (!QDir().mkpath(folder)) {
            const QString name = QFileInfo(folder).fileName();
            return QCoreApplication::translate("Prompt", "Creating \"%1\" folder error!").arg(name);
        }
    }
    for (const QString &path : m_paths) {
        const GeneratedFileResult result = writeGeneratedFile(absolute(path), m_texts.value(path), false);
        if (result.outcome == GeneratedFileResult::Outcome::Failed)
            return absolute(path) + QLatin1String(": ") + result.error;
    }
    for (const QString &path : m_removed) {
        QFile file(absolute(path));
        if (QFileInfo(file).isFile() && !file.remove())
            return absolute(path) + QLatin1String(": ") + file.errorString();
    }
    return {};
}

} // namespace ChipLoom
