#include "Base/FileState.h"

#include <QFile>

#include <algorithm>
#include <array>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h> // NOLINT(*-deprecated-headers): the calls are of POSIX
#include <unistd.h>

namespace ChipLoom {

namespace {

qint64 nanoseconds(const timespec &time)
{
    return qint64(time.tv_sec) * 1000000000 + time.tv_nsec;
}

FileState stateOf(const struct stat &data)
{
    const FileState::Kind kind = S_ISREG(data.st_mode)   ? FileState::Kind::File
                                 : S_ISDIR(data.st_mode) ? FileState::Kind::Folder
                                 : S_ISLNK(data.st_mode) ? FileState::Kind::Link
                                                         : FileState::Kind::Other;
    return {
        kind,       (data.st_mode & S_IXUSR) != 0, data.st_size, nanoseconds(data.st_mtim), nanoseconds(data.st_ctim),
        data.st_ino};
}

FileState stateAt(int folder, const char *path, int flags)
{
    struct stat data = {};
    return fstatat(folder, path, &data, flags) == 0 ? stateOf(data) : FileState();
}

} // namespace

FileState fileState(const QString &path)
{
    return stateAt(AT_FDCWD, QFile::encodeName(path).constData(), AT_SYMLINK_NOFOLLOW);
}

FileState followedState(const QString &path)
{
    return stateAt(AT_FDCWD, QFile::encodeName(path).constData(), 0);
}

FileState fileState(int descriptor)
{
    struct stat data = {};
    return fstat(descriptor, &data) == 0 ? stateOf(data) : FileState();
}

QVector<FileState> fileStates(const QString &folder, const QVector<QByteArray> &paths)
{
    QVector<FileState> states;
    const int descriptor = open(QFile::encodeName(folder).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    for (const QByteArray &path : paths)
        states.append(stateAt(descriptor, path.constData(), AT_SYMLINK_NOFOLLOW));
    if (descriptor >= 0)
        close(descriptor);
    return states;
}

bool isReadable(const QString &path)
{
    return access(QFile::encodeName(path).constData(), R_OK) == 0;
}

qint64 fileClock()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return nanoseconds(now);
}

bool setExactTime(const QString &path)
{
    std::array<timespec, 2> times = {}; // access, change
    times[0].tv_nsec = UTIME_OMIT;
    clock_gettime(CLOCK_REALTIME, &times[1]);
    return utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times.data(), AT_SYMLINK_NOFOLLOW) == 0 &&
           fileState(path).time == nanoseconds(times[1]);
}

QVector<FolderEntry> folderEntries(const QString &folder)
{
    QVector<FolderEntry> entries;
    DIR *dir = opendir(QFile::encodeName(folder).constData());
    if (!dir)
        return entries;
    while (const dirent *entry = readdir(dir)) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..")
            entries.append({QFile::decodeName(name), stateAt(dirfd(dir), name.constData(), AT_SYMLINK_NOFOLLOW)});
    }
    closedir(dir);
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry &a, const FolderEntry &b) { return a.name < b.name; });
    return entries;
}

} // namespace ChipLoom
