#pragma once

#include <QString>
#include <QVector>

namespace ChipLoom {

/// What the file system says of a path, by one call of the system: where hundreds of files are asked about, more would
/// be felt.
struct FileState
{
    enum class Kind { Missing, File, Folder, Link, Other };

    Kind kind = Kind::Missing;
    bool executable = false; ///< by its owner
    qint64 size = 0;         ///< bytes
    qint64 time = 0;         ///< last change of the content, ns since the epoch
    qint64 change = 0;       ///< last change of content, name or rights, ns since the epoch
    quint64 inode = 0;

    bool exists() const { return kind != Kind::Missing; }
    bool isFile() const { return kind == Kind::File; }
    bool isFolder() const { return kind == Kind::Folder; }
    bool isLink() const { return kind == Kind::Link; }
    qint64 milliseconds() const { return time / 1000000; } ///< of `time`
};

/// A link stands for itself.
FileState fileState(const QString &path);
/// A link stands for what it leads to; a broken one is missing.
FileState followedState(const QString &path);
/// Of an open file.
FileState fileState(int descriptor);

/// Of many paths in their encoded form, as `fileState`. A relative one lies in `folder`.
QVector<FileState> fileStates(const QString &folder, const QVector<QByteArray> &paths);

bool isReadable(const QString &path);

/// The time that a change made at this moment may get, ns since the epoch. The system's clock for it moves in steps of
/// some milliseconds: two changes within one step leave the same time.
qint64 fileClock();
/// Gives a file or folder the exact time of this moment as that of its last change, so that a change that follows
/// within the same step shows. False where the file system keeps coarser times.
bool setExactTime(const QString &path);

struct FolderEntry
{
    QString name;
    FileState state; ///< a link stands for itself
};

/// All that lies in a folder, by name; empty for one that cannot be read, too.
QVector<FolderEntry> folderEntries(const QString &folder);

} // namespace ChipLoom
