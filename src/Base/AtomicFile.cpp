#include "Base/AtomicFile.h"

#include "Base/FileState.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

namespace ChipLoom {

namespace {

bool writeAll(QFileDevice &file, const QByteArray &content)
{
    // A full disk takes a part and gives no error; the error comes with the next try.
    for (qint64 done = 0; done < content.size();) {
        const qint64 written = file.write(content.constData() + done, content.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

constexpr size_t CopiedAtOnce = 64 * 1024;

// A part is called "<name>.chiploom-part-<process>-<number>". The first number is drawn by lot: in containers, which
// number their processes each for itself, two programs may have the same process number.
const QByteArray PartMark = QByteArrayLiteral(".chiploom-part-");
const quint32 FirstNumber = std::random_device()();
std::atomic<quint32> g_nextNumber{FirstNumber};

/// The path without as much of the end of its name as leaves no room for what a part has behind it. Cut between
/// characters, because the name may go through a text.
QByteArray partStart(const QByteArray &path)
{
    constexpr int LongestStart = 200; // a name has 255 bytes
    int end = std::min(path.size(), path.lastIndexOf('/') + 1 + LongestStart);
    while (end < path.size() && (path.at(end) & 0xC0) == 0x80)
        --end;
    return path.left(end);
}

QByteArray partName(const QByteArray &path)
{
    return partStart(path) + PartMark + QByteArray::number(getpid()) + '-' + QByteArray::number(g_nextNumber++, 16);
}

// What a run writes at once is older only if that run is over, though its process is of another container or machine.
constexpr qint64 LeftAfterNs = 3600LL * 1000 * 1000 * 1000;

/// Whether a name is that of a part whose run is not among the processes that are seen here.
bool isPartOfNobody(const QByteArray &name)
{
    const int mark = name.lastIndexOf(PartMark);
    if (mark < 0)
        return false;
    const QList<QByteArray> words = name.mid(mark + PartMark.size()).split('-');
    bool isProcess = false;
    bool isNumber = false;
    const pid_t process = words.first().toInt(&isProcess);
    const quint32 number = words.last().toUInt(&isNumber, 16);
    if (words.size() != 2 || !isProcess || process <= 0 || !isNumber)
        return false;
    if (process == getpid()) // this one, or one of before that had its number
        return number - FirstNumber >= g_nextNumber - FirstNumber;
    return kill(process, 0) != 0 && errno == ESRCH;
}

bool writeAll(int file, const char *data, size_t size)
{
    // A full disk takes a part and gives no error; the error comes with the next try.
    for (size_t done = 0; done < size;) {
        const ssize_t written = ::write(file, data + done, size - done);
        if (written > 0)
            done += size_t(written);
        else if (written == 0 || errno != EINTR)
            return false;
    }
    return true;
}

// As many parts at once as one call takes.
bool writeAll(int file, std::span<const std::string_view> parts)
{
    std::array<iovec, 512> waiting; // NOLINT(*-member-init): written to
    for (size_t first = 0; first < parts.size(); first += waiting.size()) {
        const auto some = parts.subspan(first, std::min(waiting.size(), parts.size() - first));
        size_t size = 0;
        for (size_t i = 0; i < some.size(); ++i) {
            waiting[i] = {const_cast<char *>(some[i].data()), some[i].size()};
            size += some[i].size();
        }
        const ssize_t written = ::writev(file, waiting.data(), int(some.size()));
        if (written == ssize_t(size))
            continue;
        // The rest, or why it cannot be written, comes with the next try.
        size_t done = written > 0 ? size_t(written) : 0;
        for (const std::string_view part : some) {
            const size_t begun = std::min(done, part.size());
            if (!writeAll(file, part.data() + begun, part.size() - begun))
                return false;
            done -= begun;
        }
    }
    return true;
}

/// A file that is written beside its place and renamed. Unless it has come into place it goes again. Where an operation
/// is false, `errno` says why.
class PartFile
{
public:
    explicit PartFile(const QString &path) : m_path(QFile::encodeName(path)) {}
    ~PartFile()
    {
        const int error = errno;
        if (m_file >= 0)
            ::close(m_file);
        if (m_waits)
            unlink(m_part.constData());
        errno = error;
    }
    Q_DISABLE_COPY(PartFile)

    bool open(bool executable)
    {
        const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
        do {
            m_part = partName(m_path);
            m_file = ::open(m_part.constData(), flags, executable ? 0777 : 0666);
        } while (m_file < 0 && errno == EEXIST);
        m_waits = m_file >= 0;
        return m_waits;
    }
    bool write(const char *data, size_t size) const { return writeAll(m_file, data, size); }
    bool moveIntoPlace()
    {
        // Some file systems tell only now that they have no room.
        if (::close(std::exchange(m_file, -1)) != 0)
            return false;
        m_waits = std::rename(m_part.constData(), m_path.constData()) != 0;
        return !m_waits;
    }

private:
    QByteArray m_path, m_part;
    int m_file = -1;
    bool m_waits = false; ///< to come into place
};

} // namespace

QString systemError(const QString &path)
{
    return QStringLiteral("%1: %2").arg(path, qt_error_string(errno));
}

ReplaceResult replaceFile(const QString &path, const QByteArray &content, bool canBeMadeAgain)
{
    const QFileInfo info(path);
    if (info.exists()) {
        const ReadResult old = readFile(path, std::numeric_limits<qint64>::max());
        if (!old.ok)
            return {ReplaceOutcome::Failed, old.error};
        if (old.content == content)
            return {ReplaceOutcome::Unchanged, {}};
        // A rename would replace a read-only file, since only the folder's permissions count; the user meant it kept.
        if (!info.isWritable())
            return {ReplaceOutcome::Failed, QCoreApplication::translate("Base", "%1 is read-only").arg(path)};
    }
    if (canBeMadeAgain) {
        const QString error = putFile(path, content, info.isExecutable());
        return {error.isEmpty() ? ReplaceOutcome::Written : ReplaceOutcome::Failed, error};
    }
    QSaveFile file(path);
    // commit() does not notice when the disk does not take what is left in a buffer.
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, content);
    if (!written || !file.commit())
        return {ReplaceOutcome::Failed, QStringLiteral("%1: %2").arg(path, file.errorString())};
    return {ReplaceOutcome::Written, {}};
}

QString putFile(const QString &path, const QByteArray &content, bool executable)
{
    PartFile part(path);
    const bool done =
        part.open(executable) && part.write(content.constData(), size_t(content.size())) && part.moveIntoPlace();
    return done ? QString() : systemError(path);
}

QString makeFile(const QString &path, std::span<const std::string_view> content)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0)
        return systemError(path);
    const bool isWritten = writeAll(file, content);
    const QString error = isWritten ? QString() : systemError(path);
    // Some file systems tell only now that they have no room.
    return ::close(file) == 0 || !isWritten ? error : systemError(path);
}

QString putCopy(const QString &source, const QString &path)
{
    // Without waiting for the writer of a pipe.
    const int from = open(QFile::encodeName(source).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (from < 0)
        return systemError(source);
    const auto closed = qScopeGuard([from] { close(from); });
    const FileState state = fileState(from);
    if (!state.isFile())
        return QCoreApplication::translate("Base", "%1 is no regular file").arg(source);
    PartFile part(path);
    if (!part.open(state.executable))
        return systemError(path);
    std::array<char, CopiedAtOnce> buffer; // NOLINT(*-member-init): read into
    for (ssize_t count = 1; count > 0;) {
        do
            count = read(from, buffer.data(), buffer.size());
        while (count < 0 && errno == EINTR);
        if (count < 0)
            return systemError(source);
        if (!part.write(buffer.data(), size_t(count)))
            return systemError(path);
    }
    return part.moveIntoPlace() ? QString() : systemError(path);
}

QString partPath(const QString &path)
{
    return QFile::decodeName(partName(QFile::encodeName(path)));
}

void removeLeftParts(const QString &folder)
{
    // By the names alone: a run looks into several folders, and next to never finds a part.
    DIR *dir = opendir(QFile::encodeName(folder).constData());
    if (!dir)
        return;
    QVector<QByteArray> left;
    while (const dirent *entry = readdir(dir)) {
        if (std::strstr(entry->d_name, PartMark.constData()) && isPartOfNobody(entry->d_name))
            left.append(entry->d_name);
    }
    closedir(dir);
    for (const QByteArray &name : left) {
        const QString path = folder + QLatin1Char('/') + QFile::decodeName(name);
        const FileState state = fileState(path);
        if (fileClock() - state.time < LeftAfterNs)
            continue;
        if (state.isFolder())
            QDir(path).removeRecursively();
        else
            QFile::remove(path);
    }
}

ReadResult readFile(const QString &path, qint64 maxBytes)
{
    ReadResult result;
    const QFileInfo info(path);
    result.exists = info.exists() || info.isSymLink();
    if (!result.exists) {
        result.error = QCoreApplication::translate("Base", "%1 does not exist").arg(path);
        return result;
    }
    if (!info.isFile()) {
        result.error = QCoreApplication::translate("Base", "%1 is no regular file").arg(path);
        return result;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return result;
    }
    if (file.size() > maxBytes) {
        result.tooLarge = true;
        result.error = QCoreApplication::translate("Base", "%1 has %2 bytes; at most %3 are read")
                           .arg(path, QString::number(file.size()), QString::number(maxBytes));
        return result;
    }
    result.content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        result.error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return result;
    }
    result.ok = true;
    return result;
}

bool sameContent(const QString &path, const QString &other)
{
    const ReadResult one = readFile(path, MaxWholeFile);
    const ReadResult two = one.ok ? readFile(other, MaxWholeFile) : ReadResult{};
    return two.ok && one.content == two.content;
}

} // namespace ChipLoom
