#include "Project/PackageListing.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace ChipLoom {

namespace {

// Far beyond any real package; what links make endless ends here.
constexpr int MaxDepth = 32;
constexpr int MaxFiles = 50000;

} // namespace

PackageListing::PackageListing(const QString &root) : m_root(QDir(root).absolutePath()) {}

bool PackageListing::copyDirectory(const QString &from, const QString &to, bool keepExisting, const Skip &skip)
{
    const QString path = m_root + QLatin1Char('/') + from;
    FileState state = fileState(path);
    if (!followedState(path).isFolder())
        return fail(QCoreApplication::translate("Project", "The firmware package has no folder %1").arg(path));
    return follow(path, state) && listFolder(path, QString(), to, keepExisting, skip, 0);
}

bool PackageListing::copyFile(const QString &from, const QString &to, bool keepExisting)
{
    const QString path = m_root + QLatin1Char('/') + from;
    FileState state = fileState(path);
    if (!state.exists())
        return fail(QCoreApplication::translate("Project", "The firmware package has no file %1").arg(path));
    return follow(path, state) && addItem(path, state, to, keepExisting);
}

void PackageListing::keepExisting(const QString &target)
{
    for (CopyItem &item : m_items) {
        if (item.target == target)
            item.keepExisting = true;
    }
}

void PackageListing::rename(const QString &target, const QString &newTarget)
{
    for (CopyItem &item : m_items) {
        if (item.target == target)
            item.target = newTarget;
    }
}

bool PackageListing::hasFolder(const QString &path) const
{
    return followedState(m_root + QLatin1Char('/') + path).isFolder();
}

bool PackageListing::hasFile(const QString &path) const
{
    return followedState(m_root + QLatin1Char('/') + path).isFile();
}

QStringList PackageListing::listedNames(const QString &folder) const
{
    const QString start = m_root + QLatin1Char('/') + folder + QLatin1Char('/');
    QStringList names;
    for (const CopyItem &item : m_items) {
        if (item.source.startsWith(start) && item.source.indexOf(QLatin1Char('/'), start.size()) < 0)
            names.append(item.source.mid(start.size()));
    }
    return names;
}

QStringList PackageListing::lookedAt() const
{
    QStringList paths = m_searched;
    for (const CopyItem &item : m_items)
        paths.append(item.source);
    return paths;
}

QStringList PackageListing::folderNames(const QString &folder, const QString &pattern) const
{
    m_searched.append(m_root + QLatin1Char('/') + folder);
    return QDir(m_searched.last()).entryList({pattern}, QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

bool PackageListing::listFolder(const QString &folder, const QString &relative, const QString &to, bool keepExisting,
                                const Skip &skip, int depth)
{
    if (depth > MaxDepth)
        return fail(QCoreApplication::translate("Project", "%1: folders are nested too deeply").arg(folder));
    if (!isReadable(folder))
        return fail(QCoreApplication::translate("Project", "%1 cannot be read").arg(folder));
    m_searched.append(folder);
    const QVector<FolderEntry> entries = folderEntries(folder);
    for (const FolderEntry &entry : entries) {
        const QString path = folder + QLatin1Char('/') + entry.name;
        FileState state = entry.state;
        if (!follow(path, state))
            return false;
        const QString target = to.isEmpty() ? entry.name : to + QLatin1Char('/') + entry.name;
        if (!state.isFolder()) {
            if (!addItem(path, state, target, keepExisting))
                return false;
            continue;
        }
        const QString below = relative.isEmpty() ? entry.name : relative + QLatin1Char('/') + entry.name;
        if (!(skip && skip(below)) && !listFolder(path, below, target, keepExisting, skip, depth + 1))
            return false;
    }
    return true;
}

bool PackageListing::addItem(const QString &path, const FileState &state, const QString &to, bool keepExisting)
{
    if (!state.isFile())
        return fail(QCoreApplication::translate("Project", "%1 is no regular file").arg(path));
    if (!isReadable(path))
        return fail(QCoreApplication::translate("Project", "%1 cannot be read").arg(path));
    if (m_items.size() >= MaxFiles)
        return fail(QCoreApplication::translate("Project", "%1 holds too many files").arg(m_root));
    m_items.append({path, to, state.size, state.milliseconds(), keepExisting});
    return true;
}

bool PackageListing::follow(const QString &path, FileState &state)
{
    if (!state.isLink())
        return true;
    // A broken link has no canonical path.
    const QString target = QFileInfo(path).canonicalFilePath();
    const QString root = QFileInfo(m_root).canonicalFilePath() + QLatin1Char('/');
    state = followedState(path);
    if (target.startsWith(root) && !path.startsWith(target + QLatin1Char('/')))
        return true;
    return fail(
        QCoreApplication::translate("Project", "The link %1 leads out of the package; it is not followed").arg(path));
}

bool PackageListing::fail(const QString &error)
{
    if (m_error.isEmpty())
        m_error = error;
    return false;
}

} // namespace ChipLoom
