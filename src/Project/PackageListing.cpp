#include "Project/PackageListing.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>

namespace ChipLoom {

namespace {

// Far beyond any real package; what links make endless ends here.
constexpr int MaxDepth = 32;
constexpr int MaxFiles = 50000;

constexpr QDir::Filters Everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

} // namespace

PackageListing::PackageListing(const QString &root)
    : m_root(QDir(root).absolutePath()), m_canonical(QFileInfo(root).canonicalFilePath() + QLatin1Char('/'))
{
}

bool PackageListing::copyDirectory(const QString &from, const QString &to, bool keepExisting, const Skip &skip)
{
    const QFileInfo info(m_root + QLatin1Char('/') + from);
    if (!info.isDir())
        return fail(QCoreApplication::translate("Project", "The firmware package has no folder %1")
                        .arg(QDir::toNativeSeparators(info.filePath())));
    return staysInside(info) && listFolder(info.filePath(), QString(), to, keepExisting, skip, 0);
}

bool PackageListing::copyFile(const QString &from, const QString &to, bool keepExisting)
{
    const QFileInfo info(m_root + QLatin1Char('/') + from);
    if (!info.exists() && !info.isSymLink())
        return fail(QCoreApplication::translate("Project", "The firmware package has no file %1")
                        .arg(QDir::toNativeSeparators(info.filePath())));
    return staysInside(info) && addItem(info, to, keepExisting);
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
    return QFileInfo(m_root + QLatin1Char('/') + path).isDir();
}

bool PackageListing::hasFile(const QString &path) const
{
    return QFileInfo(m_root + QLatin1Char('/') + path).isFile();
}

QStringList PackageListing::fileNames(const QString &folder, const QString &pattern) const
{
    return QDir(m_root + QLatin1Char('/') + folder).entryList({pattern}, QDir::Files, QDir::Name);
}

QStringList PackageListing::folderNames(const QString &folder, const QString &pattern) const
{
    return QDir(m_root + QLatin1Char('/') + folder).entryList({pattern}, QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

bool PackageListing::listFolder(const QString &folder, const QString &relative, const QString &to, bool keepExisting,
                                const Skip &skip, int depth)
{
    if (depth > MaxDepth)
        return fail(QCoreApplication::translate("Project", "%1: folders are nested too deeply").arg(folder));
    const QDir dir(folder);
    if (!dir.isReadable())
        return fail(QCoreApplication::translate("Project", "%1 cannot be read").arg(folder));
    const QFileInfoList entries = dir.entryInfoList(Everything, QDir::Name);
    for (const QFileInfo &entry : entries) {
        if (!staysInside(entry))
            return false;
        const QString name = entry.fileName();
        const QString target = to.isEmpty() ? name : to + QLatin1Char('/') + name;
        if (!entry.isDir()) {
            if (!addItem(entry, target, keepExisting))
                return false;
            continue;
        }
        const QString below = relative.isEmpty() ? name : relative + QLatin1Char('/') + name;
        if (!(skip && skip(below)) && !listFolder(entry.filePath(), below, target, keepExisting, skip, depth + 1))
            return false;
    }
    return true;
}

bool PackageListing::addItem(const QFileInfo &info, const QString &to, bool keepExisting)
{
    if (!info.isFile())
        return fail(QCoreApplication::translate("Project", "%1 is no regular file").arg(info.filePath()));
    if (!info.isReadable())
        return fail(QCoreApplication::translate("Project", "%1 cannot be read").arg(info.filePath()));
    if (m_items.size() >= MaxFiles)
        return fail(QCoreApplication::translate("Project", "%1 holds too many files").arg(m_root));
    m_items.append({info.filePath(), to, info.size(), info.lastModified().toMSecsSinceEpoch(), keepExisting});
    return true;
}

bool PackageListing::staysInside(const QFileInfo &info)
{
    if (!info.isSymLink())
        return true;
    // A broken link has no canonical path.
    const QString target = info.canonicalFilePath();
    if (target.startsWith(m_canonical) && !info.filePath().startsWith(target + QLatin1Char('/')))
        return true;
    return fail(QCoreApplication::translate("Project", "The link %1 leads out of the package; it is not followed")
                    .arg(info.filePath()));
}

bool PackageListing::fail(const QString &error)
{
    if (m_error.isEmpty())
        m_error = error;
    return false;
}

} // namespace ChipLoom
