#include "GenerateCode/SourceTree.h"

#include "Base/AtomicFile.h"
#include "Base/FileState.h"
#include "GenerateCode/UserBlocks.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <utility>

namespace ChipLoom {

namespace {

QString folderError(const QString &folder)
{
    const QFileInfo info(folder);
    return QCoreApplication::translate("Prompt", "Creating \"%1\" folder error!").arg(info.fileName()) +
           QLatin1Char('\n') + QDir::toNativeSeparators(info.absoluteFilePath());
}

} // namespace

SourceTree::SourceTree(QString directory, bool keepUserCode)
    : m_directory(std::move(directory)), m_keepUserCode(keepUserCode)
{
}

QString SourceTree::absolute(const QString &path) const
{
    return m_directory + QLatin1Char('/') + path;
}

const TextRead &SourceTree::former(const QString &path) const
{
    const auto known = m_former.find(path);
    if (known != m_former.end())
        return known->second;
    const QString file = absolute(path);
    const bool exists = !m_newFolder && fileState(file).exists();
    return m_former.emplace(path, exists ? readSourceText(file) : TextRead()).first->second;
}

bool SourceTree::isSame(const QString &path) const
{
    // By size too, because the reading drops carriage returns.
    const TextRead &file = former(path);
    const std::string &code = text(path);
    return file.ok && file.bytes == static_cast<qint64>(code.size()) && file.text == code;
}

QStringList SourceTree::folders() const
{
    QStringList folders{m_directory};
    for (const QString &path : m_paths) {
        const QString folder = absolute(path.left(std::max(0, path.lastIndexOf(QLatin1Char('/')))));
        if (!folders.contains(folder))
            folders.append(folder);
    }
    return folders;
}

const std::string &SourceTree::text(const QString &path) const
{
    static const std::string none;
    const auto known = m_texts.find(path);
    if (known == m_texts.end())
        return none;
    Text &text = known->second;
    if (!text.code)
        text.code = text.sections->joined();
    return *text.code;
}

SectionedText::Parts SourceTree::parts(const QString &path) const
{
    const Text &text = m_texts.at(path);
    return text.code ? SectionedText::Parts{*text.code} : text.sections->parts();
}

SectionedText SourceTree::sections(const QString &path) const
{
    const auto known = m_texts.find(path);
    if (known == m_texts.end())
        return {};
    Text &text = known->second;
    if (!text.sections)
        text.sections = cutOnce(absolute(path), *text.code);
    return *text.sections;
}

void SourceTree::put(const QString &path, Text made, bool isFinished)
{
    if (m_texts.insert_or_assign(path, std::move(made)).second && !m_paths.contains(path))
        m_paths.append(path);
    if (m_newFolder && isFinished)
        m_newFolder->put(path, parts(path));
}

void SourceTree::put(const QString &path, SectionedText text)
{
    put(path, Text{std::move(text), {}});
}

void SourceTree::put(const QString &path, std::string text)
{
    put(path, Text{{}, std::move(text)});
}

void SourceTree::writeAtOnce()
{
    if (fileState(m_directory).exists())
        return;
    m_newFolder =
        std::make_unique<NewFolder>(m_directory, QStringList{QStringLiteral("inc"), QStringLiteral("src")}, m_beside);
    for (const QString &path : qAsConst(m_paths))
        m_newFolder->put(path, parts(path));
}

/// A project may have several forms in one folder: what the Makefile or CMake's lists name is still needed.
bool SourceTree::isListedBeside(const QString &path) const
{
    const QString folder = QFileInfo(m_directory).path();
    const QString name = QFileInfo(m_directory).fileName() + QLatin1Char('/') + path;
    for (const char *lists : {"/Makefile", "/cmake/zv32_chiploom/CMakeLists.txt"}) {
        if (readSourceText(folder + QLatin1String(lists)).text.find(name.toStdString()) != std::string::npos)
            return true;
    }
    return false;
}

void SourceTree::remove(const QString &path, const std::string &text)
{
    if (former(path).ok && former(path).text == text && !isListedBeside(path))
        m_removed.append(path);
}

void SourceTree::putKeepingUserBlocks(const QString &path, std::string text, const SectionedText &sample)
{
    m_samples.insert_or_assign(path, sample);
    if (hasBlocksToKeep(path) && !putUserBlocksBack(former(path).text, text))
        m_touched.insert(path);
    put(path, std::move(text));
}

void SourceTree::putKeepingUserBlocks(const QString &path, SectionedText text, const SectionedText &sample)
{
    m_samples.insert_or_assign(path, sample);
    put(path, withUserBlocks(path, std::move(text)));
}

void SourceTree::putSample(const QString &path, const SectionedText &sample)
{
    m_samples.insert_or_assign(path, sample);
    put(path, withUserBlocks(path, sample), false);
}

SourceTree::Text SourceTree::withUserBlocks(const QString &path, SectionedText text)
{
    if (!hasBlocksToKeep(path))
        return {std::move(text), {}};
    const std::string before = text.joined();
    std::string kept = before;
    if (!putUserBlocksBack(former(path).text, kept, text.cut()))
        m_touched.insert(path);
    if (kept == before) // and cut already
        return {std::move(text), {}};
    return {{}, std::move(kept)};
}

QString SourceTree::problems() const
{
    if (m_newFolder) // which finds out itself
        return {};
    QStringList lines;
    for (const QString &folder : folders()) {
        const QFileInfo info(folder);
        if (info.exists() && !info.isDir())
            lines.append(QCoreApplication::translate("GenerateCode", "%1 is no folder").arg(folder));
    }
    for (const QString &path : m_paths) {
        const TextRead &file = former(path);
        if (!file.ok && file.exists)
            lines.append(file.error.contains(path) ? file.error : absolute(path) + QLatin1String(": ") + file.error);
    }
    return lines.join(QLatin1Char('\n'));
}

QStringList SourceTree::repeatedBlocks() const
{
    QStringList lines;
    for (const auto &[path, file] : m_former) {
        QStringList names = userBlockNames(file.text);
        std::sort(names.begin(), names.end());
        for (auto name = std::adjacent_find(names.cbegin(), names.cend()); name != names.cend();
             name = std::adjacent_find(std::upper_bound(name, names.cend(), *name), names.cend()))
            lines.append(absolute(path) + QLatin1String(": ") + *name);
    }
    return lines;
}

QStringList SourceTree::lostBlocks(const QString &path, const std::string &code) const
{
    const QStringList lost = lostUserBlocks(former(path).text, code);
    const auto sample = m_samples.find(path);
    return lost.isEmpty() || sample == m_samples.end()
               ? lost
               : lostUserBlocks(former(path).text, code, sample->second.joined());
}

QVector<GeneratedFileRecord> SourceTree::compare() const
{
    QVector<GeneratedFileRecord> records;
    for (const QString &path : m_paths) {
        GeneratedFileRecord record{path, GeneratedFileRecord::State::New, {}, {}};
        if (const TextRead &file = former(path); file.ok) {
            const bool same = isSame(path);
            record.state = same ? GeneratedFileRecord::State::Unchanged : GeneratedFileRecord::State::Changed;
            if (!same) {
                const std::string code = m_keepUserCode ? text(path) : std::string();
                record.lostBlocks = lostBlocks(path, code);
                record.expandedBlocks = expandedUserBlocks(file.text, code);
                if (!(record.lostBlocks.isEmpty() && record.expandedBlocks.isEmpty()))
                    record.formerCopy = backupPath(absolute(path), absolute(path)).mid(m_directory.size() + 1);
            }
            if (m_touched.contains(path))
                record.repeatedBlocks = repeatedUserBlocks(file.text, text(path));
        }
        records.append(record);
    }
    for (const QString &path : m_removed) {
        if (QFileInfo(absolute(path)).isFile())
            records.append({path, GeneratedFileRecord::State::Removed, {}, {}});
    }
    return records;
}

bool SourceTree::isCurrent() const
{
    for (const auto &[path, file] : m_former) {
        const TextRead now = readSourceText(absolute(path));
        if (now.exists != file.exists || now.bytes != file.bytes || now.text != file.text)
            return false;
    }
    return true;
}

QString SourceTree::write(const QVector<GeneratedFileRecord> &changes)
{
    if (!m_newFolder)
        writeAtOnce();
    if (m_newFolder) {
        const QString error = m_newFolder->moveIntoPlace();
        return m_newFolder->failedFolder().isEmpty() ? error : folderError(m_newFolder->failedFolder());
    }
    const auto isWritten = [](const GeneratedFileRecord &file) {
        return file.state == GeneratedFileRecord::State::New || file.state == GeneratedFileRecord::State::Changed;
    };
    const bool anyWritten = std::any_of(changes.begin(), changes.end(), isWritten);
    if (anyWritten)
        removeLeftParts(QFileInfo(m_directory).path());
    for (const QString &folder : folders()) {
        if (anyWritten && fileState(folder).exists())
            removeLeftParts(folder);
        if (!QDir().mkpath(folder))
            return folderError(folder);
    }
    for (const GeneratedFileRecord &file : changes) {
        const QString path = absolute(file.path);
        if (isWritten(file)) {
            QString error = file.formerCopy.isEmpty() ? QString() : keepFormerFile(path, absolute(file.formerCopy));
            if (error.isEmpty())
                error = writeGeneratedFile(path, text(file.path));
            if (!error.isEmpty())
                return error;
        } else if (QFile old(path); file.state == GeneratedFileRecord::State::Removed && !old.remove()) {
            return path + QLatin1String(": ") + old.errorString();
        }
    }
    return {};
}

} // namespace ChipLoom
