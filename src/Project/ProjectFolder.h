#pragma once

#include "Project/PackageListing.h"
#include "Project/ProjectManifest.h"
#include "Project/ProjectOrder.h"

#include <QSet>

#include <functional>

namespace ChipLoom {

/// The folder of a project while it is built: copies files into it, each written beside its place and renamed, so that
/// no reader and no interruption ever sees a part. Nothing outside the folder is touched: a link in it that leads
/// elsewhere stops the copy.
class ProjectFolder
{
public:
    /// `stopAsked` is looked at between files; `advanced` is told after each.
    ProjectFolder(QString root, BuilderAccount &account, std::function<bool()> stopAsked,
                  std::function<void()> advanced);

    ProjectManifest &manifest() { return m_manifest; }

    /// Copies what is new or has changed in the package. A file that the user changed stays while the package has what
    /// it had; once the package has another, the user's goes where `backupPath` says. False, with `account.detail` or
    /// `account.cancelled`, if not all was copied.
    bool copy(const QVector<CopyItem> &items);

    /// Whether there is such a folder. One that a run was replacing when it was killed comes back.
    bool hasFolder(const QString &folder);

    /// Puts a whole folder of the project in the place of the one that stands there, once all of it has been read.
    /// Files that no former run brought move over to the new one.
    bool replaceFolder(const QString &folder, QVector<CopyItem> items);

    /// Copies a file of the project to another place of it, over what stands there.
    bool copyInside(const QString &from, const QString &to);

    /// Takes a file away, if there is one.
    bool remove(const QString &path);
    /// The same with a file of the package that the project no longer needs; what the user changed is set aside.
    bool retire(const QString &path);
    /// Moves a file that the project no longer needs where `backupPath` says, because it holds the user's work, and
    /// tells so.
    bool setAside(const QString &path);
    /// Makes a folder with those above it.
    bool makeFolder(const QString &path);
    /// Takes away what killed runs left in a folder, which happens by itself in those that files are copied to.
    void clearFolder(const QString &path);

    /// Writes the manifest, with sizes and times of what was written, so that the next run goes on from here whatever
    /// stops this one.
    bool finish();

private:
    bool copyOne(const CopyItem &item);
    /// `former` is what stands at the place now.
    bool store(const CopyItem &item, const QString &path, const FileState &former);
    bool keepUserFiles(const ProjectManifest &former, const QString &oldFolder, const QString &folder);
    void remember(const CopyItem &item, const FileState &state);
    /// What is told of a file and of where it is now.
    using Note = QString (*)(const QString &path, const QString &copy);
    /// Moves what the user changed out of the way.
    bool keepAside(const QString &path, Note note);
    QString freeBackup(const QString &path, const QString &file) const;
    QString absolute(const QString &path) const { return m_root + QLatin1Char('/') + path; }
    /// Whether links on the way to it do not lead out of the project.
    bool liesInside(const QString &folder) const;
    /// With what the system has just said.
    bool failToMake(const QString &folder);
    bool failToRemove(const QString &folder);
    bool fail(const QString &detail);

    QString m_root;
    BuilderAccount &m_account;
    std::function<bool()> m_stopAsked;
    std::function<void()> m_advanced;
    ProjectManifest m_manifest;
    QSet<QString> m_folders;    ///< known to be inside
    QSet<QString> m_newFolders; ///< made in this run: nothing lies in them but what it brings
    QSet<QString> m_clearedFolders;
    QSet<QString> m_ofUser; ///< changed by the user and left so
};

} // namespace ChipLoom
