#include "Project/ProjectFolder.h"

#include "Base/AtomicFile.h"
#include "GenerateCode/GeneratedFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace ChipLoom {

namespace {

const QString OldSuffix = QStringLiteral(".chiploom-old");

QString replacedNote(const QString &path, const QString &copy)
{
    return QCoreApplication::translate("Project", "%1 was changed by hand and the package has another one: the former "
                                                  "file is now %2")
        .arg(path, copy);
}

QString setAsideNote(const QString &path, const QString &copy)
{
    return QCoreApplication::translate("Project", "%1 was changed by hand and is no longer needed: it is now %2")
        .arg(path, copy);
}

bool isAsLeft(const ProjectManifest::Entry *entry, const FileState &state)
{
    return entry && entry->targetSize == state.size && entry->targetTime == state.milliseconds();
}

QString folderOf(const QString &path)
{
    return path.left(qMax(0, path.lastIndexOf(QLatin1Char('/'))));
}

/// Puts a file in the place of another in one step.
bool renameOver(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

} // namespace

ProjectFolder::ProjectFolder(QString root, BuilderAccount &account, std::function<bool()> stopAsked,
                             std::function<void()> advanced)
    : m_root(std::move(root)), m_account(account), m_stopAsked(std::move(stopAsked)), m_advanced(std::move(advanced)),
      m_manifest(m_root)
{
}

bool ProjectFolder::copy(const QVector<CopyItem> &items)
{
    for (const CopyItem &item : items) {
        if (m_stopAsked()) {
            m_account.cancelled = true;
            return false;
        }
        if (!copyOne(item))
            return false;
        m_advanced();
    }
    return true;
}

bool ProjectFolder::copyOne(const CopyItem &item)
{
    const QString target = absolute(item.target);
    if (!makeFolder(folderOf(item.target)))
        return false;
    const ProjectManifest::Entry *entry = m_manifest.entry(item.target);
    if (m_newFolders.contains(folderOf(item.target)) && !entry)
        return store(item, item.target, {});

    const FileState place = fileState(target);
    const FileState former = place.isLink() ? followedState(target) : place;
    const bool fromThisPackage = entry && entry->sourceSize == item.size && entry->sourceTime == item.time;
    const bool mayBeTheUsers = !isAsLeft(entry, former);
    if (former.isFile() && (item.keepExisting || fromThisPackage)) {
        if (mayBeTheUsers)
            m_ofUser.insert(item.target);
        m_account.unchanged.append(item.target);
        return true;
    }
    if (mayBeTheUsers && place.isFile() && !sameContent(item.source, target))
        return keepAside(item.target, replacedNote) && store(item, item.target, {});
    return store(item, item.target, former);
}

bool ProjectFolder::keepAside(const QString &path, Note note)
{
    const QString copy = freeBackup(path, absolute(path));
    if (!renameOver(absolute(path), absolute(copy)))
        return fail(QStringLiteral("%1: %2").arg(absolute(path), QString::fromLocal8Bit(std::strerror(errno))));
    m_account.notes.append(note(path, copy));
    return true;
}

QString ProjectFolder::freeBackup(const QString &path, const QString &file) const
{
    return backupPath(absolute(path), file).mid(m_root.size() + 1);
}

bool ProjectFolder::store(const CopyItem &item, const QString &path, const FileState &former)
{
    const QString target = absolute(path);
    if (former.exists() && !former.isFile())
        return fail(
            QCoreApplication::translate("Project", "%1 stands where a file is to be: move it away").arg(target));
    if (former.isFile() && former.size == item.size && sameContent(item.source, target)) {
        remember(item, former);
        m_account.unchanged.append(item.target);
        return true;
    }
    clearFolder(folderOf(path));
    const QString error = putCopy(item.source, target);
    if (!error.isEmpty())
        return fail(error);
    remember(item, {}); // its state is asked for in the end, when editors are done with it
    m_account.written.append(item.target);
    return true;
}

void ProjectFolder::remember(const CopyItem &item, const FileState &state)
{
    m_manifest.setEntry(item.target, {item.size, item.time, state.size, state.milliseconds()});
}

bool ProjectFolder::hasFolder(const QString &folder)
{
    const QString path = absolute(folder);
    return QFileInfo::exists(path) || (fileState(path + OldSuffix).isFolder() && renameOver(path + OldSuffix, path));
}

bool ProjectFolder::replaceFolder(const QString &folder, QVector<CopyItem> items)
{
    const QString part = partPath(folder);
    const QString old = folder + OldSuffix;
    const QFileInfo info(absolute(folder));
    if (info.isSymLink())
        return fail(QCoreApplication::translate("Project", "%1 is a link; it is not replaced").arg(info.filePath()));
    if (!info.isDir())
        return fail(QCoreApplication::translate("Project", "%1 is no folder").arg(info.filePath()));
    const ProjectManifest former = m_manifest;
    // What a run that was stopped had not yet moved over.
    const QFileInfo waiting(absolute(old));
    if (waiting.isDir() && !waiting.isSymLink() && !keepUserFiles(former, old, folder))
        return false;
    if (waiting.isSymLink() || !QDir(absolute(old)).removeRecursively())
        return failToRemove(old);
    const QStringList written = m_account.written;
    const auto giveUp = [&] {
        QDir(absolute(part)).removeRecursively();
        m_manifest = former; // nothing of it has come into place
        m_account.written = written;
        return false;
    };
    for (const CopyItem &item : items) {
        if (m_stopAsked()) {
            m_account.cancelled = true;
            return giveUp();
        }
        const QString path = part + item.target.mid(folder.size());
        if (!makeFolder(folderOf(path)) || !store(item, path, {}))
            return giveUp();
        m_advanced();
    }
    const bool exchanged = renameOver(absolute(folder), absolute(old)) && renameOver(absolute(part), absolute(folder));
    if (!exchanged) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        if (!QFileInfo::exists(absolute(folder)))
            renameOver(absolute(old), absolute(folder));
        giveUp();
        return fail(QStringLiteral("%1: %2").arg(absolute(folder), reason));
    }
    if (!keepUserFiles(former, old, folder))
        return false;
    return QDir(absolute(old)).removeRecursively() || failToRemove(old);
}

bool ProjectFolder::keepUserFiles(const ProjectManifest &former, const QString &oldFolder, const QString &folder)
{
    QDirIterator files(absolute(oldFolder), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        QString target = folder + path.mid(absolute(oldFolder).size());
        const bool inPackage = QFileInfo::exists(absolute(target));
        const ProjectManifest::Entry *entry = former.entry(target);
        if (entry && !inPackage)
            m_manifest.forget(target);
        if (entry ? isAsLeft(entry, fileState(path)) : inPackage && sameContent(path, absolute(target)))
            continue;
        if (entry || inPackage) {
            const QString copy = freeBackup(target, path);
            m_account.notes.append(replacedNote(target, copy));
            target = copy;
        }
        if (!makeFolder(folderOf(target)) || !renameOver(path, absolute(target)))
            return fail(QCoreApplication::translate("Project", "%1 cannot be moved to %2").arg(path, target));
    }
    return true;
}

bool ProjectFolder::copyInside(const QString &from, const QString &to)
{
    const QFileInfo info(absolute(from));
    const ReadResult read = readFile(info.filePath(), MaxWholeFile);
    if (!read.ok)
        return fail(read.error);
    if (!makeFolder(folderOf(to)))
        return false;
    if (fileState(absolute(to)).isLink()) // nothing is written through it
        QFile::remove(absolute(to));
    const ReplaceResult result = replaceFile(absolute(to), read.content);
    if (!result.ok())
        return fail(result.error);
    if (result.outcome == ReplaceOutcome::Written)
        m_account.written.append(to);
    return true;
}

bool ProjectFolder::remove(const QString &path)
{
    const FileState state = fileState(absolute(path));
    if (!state.isFile() && !state.isLink())
        return true;
    if (!makeFolder(folderOf(path)))
        return false;
    QFile file(absolute(path));
    if (!file.remove())
        return fail(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    m_manifest.forget(path);
    m_account.removed.append(path);
    return true;
}

bool ProjectFolder::retire(const QString &path)
{
    const FileState state = fileState(absolute(path));
    return !state.isFile() || isAsLeft(m_manifest.entry(path), state) ? remove(path) : setAside(path);
}

bool ProjectFolder::setAside(const QString &path)
{
    if (!makeFolder(folderOf(path)) || !keepAside(path, setAsideNote))
        return false;
    m_manifest.forget(path);
    m_account.removed.append(path);
    return true;
}

bool ProjectFolder::makeFolder(const QString &path)
{
    if (m_folders.contains(path))
        return true;
    if (path.isEmpty()) {
        if (!followedState(m_root).exists())
            m_newFolders.insert(path);
        if (!QDir().mkpath(m_root))
            return failToMake(m_root);
        m_folders.insert(path);
        return true;
    }
    if (!makeFolder(folderOf(path)))
        return false;
    const QString folder = absolute(path);
    if (QDir().mkdir(folder)) {
        m_newFolders.insert(path);
    } else {
        const int error = errno;
        const bool isLink = fileState(folder).isLink();
        if (isLink && !liesInside(folder))
            return fail(
                QCoreApplication::translate("Project", "%1 is a link that leads out of the project; it is not followed")
                    .arg(folder));
        if (!followedState(folder).isFolder()) {
            errno = error;
            return failToMake(folder);
        }
    }
    m_folders.insert(path);
    return true;
}

bool ProjectFolder::liesInside(const QString &folder) const
{
    return QFileInfo(folder).canonicalFilePath().startsWith(QFileInfo(m_root).canonicalFilePath() + QLatin1Char('/'));
}

void ProjectFolder::clearFolder(const QString &path)
{
    if (m_newFolders.contains(path) || m_clearedFolders.contains(path))
        return;
    m_clearedFolders.insert(path);
    if (path.isEmpty() || liesInside(absolute(path)))
        removeLeftParts(absolute(path));
}

bool ProjectFolder::finish()
{
    const qint64 step = fileClock();
    for (const QString &path : qAsConst(m_account.written)) {
        // A size that was set in the user's own version leaves it the user's.
        const ProjectManifest::Entry *known = m_ofUser.contains(path) ? nullptr : m_manifest.entry(path);
        if (known) {
            ProjectManifest::Entry entry = *known;
            FileState now = fileState(absolute(path));
            // A change within this step of the clock is to show.
            if (now.isFile() && now.time == step) {
                setExactTime(absolute(path));
                now = fileState(absolute(path));
            }
            entry.targetSize = now.size;
            entry.targetTime = now.milliseconds();
            m_manifest.setEntry(path, entry);
        }
    }
    const QByteArray content = m_manifest.content();
    if (content == m_manifest.savedContent() || !followedState(m_root).isFolder())
        return true;
    // Losing it costs the next run some time and nothing else, so nobody waits for the disk.
    const QString error = putFile(absolute(ProjectManifest::fileName()), content);
    if (!error.isEmpty())
        return fail(error);
    m_manifest.setSaved(content);
    return true;
}

bool ProjectFolder::failToMake(const QString &folder)
{
    const QString reason = QString::fromLocal8Bit(std::strerror(errno));
    return fail(QCoreApplication::translate("Project", "The folder %1 cannot be made: %2").arg(folder, reason));
}

bool ProjectFolder::failToRemove(const QString &folder)
{
    return fail(QCoreApplication::translate("Project", "%1 cannot be removed").arg(absolute(folder)));
}

bool ProjectFolder::fail(const QString &detail)
{
    m_account.detail = detail;
    return false;
}

} // namespace ChipLoom
