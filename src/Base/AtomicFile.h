#pragma once

#include <QByteArray>
#include <QString>

#include <span>
#include <string_view>

namespace ChipLoom {

/// What became of a file that was to be replaced.
enum class ReplaceOutcome {
    Written,   ///< the new content is on the disk
    Unchanged, ///< the file already held exactly this content and was not touched
    Failed     ///< the old file stands as it was
};

struct ReplaceResult
{
    ReplaceOutcome outcome = ReplaceOutcome::Failed;
    QString error; ///< what the system said, for a person; empty unless `Failed`

    bool ok() const { return outcome != ReplaceOutcome::Failed; }
};

/// What the system has just said of a path (`errno`), for a person.
QString systemError(const QString &path);

/// Replaces a file as a whole: after a crash, a kill or a full disk either the old or the new content stands there,
/// never a part. A symbolic link keeps pointing at its target, whose content is replaced. The folder must exist.
/// A path that exists and is no regular file, or that cannot be read back, fails. What can be made again need not wait
/// for the disk: it is put into place as by `putFile`.
ReplaceResult replaceFile(const QString &path, const QByteArray &content, bool canBeMadeAgain = false);

/// Puts a file into place as a whole without waiting for the disk: for what can be made again, and for what stands
/// nowhere yet. After a kill or a full disk the old or the new content stands there; after a loss of power it may be
/// empty. A link is replaced itself. An error for a person, or empty.
QString putFile(const QString &path, const QByteArray &content, bool executable = false);

/// Writes a file that stands nowhere yet, part by part, in a folder that is not in place yet: what an error leaves is
/// not taken away. An error for a person, or empty.
QString makeFile(const QString &path, std::span<const std::string_view> content);

/// Puts the content of a regular file into place in the same way; the copy can be executed if the source can.
QString putCopy(const QString &source, const QString &path);

/// Where what is to stand at `path` can be put until it is whole: beside it, under a name that no other part has, so
/// that runs that write to one folder at once do not meet. `putFile` and `putCopy` do so of themselves.
QString partPath(const QString &path);

/// Takes away the parts in a folder, files and folders, that a killed run has left: its process is gone, and nothing
/// has changed in them for an hour, since the process may be one of another container or machine.
void removeLeftParts(const QString &folder);

/// What came of reading a file as a whole.
struct ReadResult
{
    bool ok = false;
    bool exists = false;
    bool tooLarge = false;
    QByteArray content;
    QString error; ///< for a person; empty if `ok`
};

/// Reads a regular file of at most `maxBytes`. A larger one, a folder, a device or an unreadable file gives an error.
ReadResult readFile(const QString &path, qint64 maxBytes);

/// The most bytes of a file that is compared or copied as a whole.
inline constexpr qint64 MaxWholeFile = 1 << 30;

/// Whether two regular files hold the same; false if one of them cannot be read or is larger than `MaxWholeFile`.
bool sameContent(const QString &path, const QString &other);

} // namespace ChipLoom
