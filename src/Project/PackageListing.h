#pragma once

#include "Base/FileState.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

namespace ChipLoom {

/// One file that is to be copied into a project.
struct CopyItem
{
    QString source;            ///< absolute
    QString target;            ///< relative to the root of the project
    qint64 size = 0;           ///< of the source, bytes
    qint64 time = 0;           ///< last change of the source, ms since the epoch
    bool keepExisting = false; ///< a file that stands there already stays
};

/// Lists what is to be copied from a package, before anything is written: a package with a hole, an unreadable file, or
/// a link that leads out of it is found here. Folders are listed by name, so that the order is always the same.
class PackageListing
{
public:
    /// Whether a folder, given relative to the one that is listed, is to be left out.
    using Skip = std::function<bool(const QString &folder)>;

    explicit PackageListing(const QString &root);

    /// Lists a folder of the package with all that is in it. False, with an error, if it is missing or must not be
    /// copied.
    bool copyDirectory(const QString &from, const QString &to, bool keepExisting = false, const Skip &skip = {});
    bool copyFile(const QString &from, const QString &to, bool keepExisting = false);

    /// Marks a listed file, by its target, as one that stays where it stands already.
    void keepExisting(const QString &target);
    /// Gives a listed file another target.
    void rename(const QString &target, const QString &newTarget);

    bool hasFolder(const QString &path) const;
    bool hasFile(const QString &path) const;
    /// Names of the listed files that lie in a folder of the package, sorted.
    QStringList listedNames(const QString &folder) const;
    /// Names of folders in one of the package that match, sorted.
    QStringList folderNames(const QString &folder, const QString &pattern) const;

    const QVector<CopyItem> &items() const { return m_items; }
    /// Files that were listed and folders that were searched; absolute.
    QStringList lookedAt() const;
    QString error() const { return m_error; } ///< for a person

private:
    bool listFolder(const QString &folder, const QString &relative, const QString &to, bool keepExisting,
                    const Skip &skip, int depth);
    bool addItem(const QString &path, const FileState &state, const QString &to, bool keepExisting);
    /// Follows a link within the package; false, with an error, for one that leads out of it.
    bool follow(const QString &path, FileState &state);
    bool fail(const QString &error);

    QString m_root; ///< absolute
    QVector<CopyItem> m_items;
    mutable QStringList m_searched; ///< folders
    QString m_error;
};

} // namespace ChipLoom
