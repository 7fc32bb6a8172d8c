#pragma once

#include "GenerateCode/CodeText.h"

namespace ChipLoom {

/// A text that was read, or why it could not be.
struct TextRead
{
    bool ok = false;
    bool exists = false;
    std::string text; ///< without carriage returns
    QString error;    ///< for a person; empty if `ok`
    qint64 bytes = 0; ///< of the file, carriage returns included
};

/// Reads a template resource or a previously generated file.
TextRead readSourceText(const QString &path);

/// Replaces the file at `path` by `text` if its bytes differ. The old file stands if anything fails. A file that is new
/// holds nobody's work yet, and nobody waits for the disk to take it. An error for a person, or empty.
QString writeGeneratedFile(const QString &path, std::string_view text);

/// Of a file that holds the user's work, beside the one that took its place.
inline const QString BackupSuffix = QStringLiteral(".bak");

/// Where a file that holds the user's work can be kept once another stands at `path`: "<name>.bak", or "<name>.2.bak"
/// and so on where an earlier loss, a link or anything else stands. A copy with the bytes of `file` serves again.
QString backupPath(const QString &path, const QString &file);

/// Puts the bytes of a former file, which hold the user's work, where `backupPath` says. An error for a person, or
/// empty.
QString keepFormerFile(const QString &path, const QString &copy);

} // namespace ChipLoom
