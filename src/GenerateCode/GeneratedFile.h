#pragma once

#include <QString>

namespace ChipLoom {

/// A text that was read, or why it could not be.
struct TextRead
{
    bool ok = false;
    bool exists = false;
    QString text;  ///< each byte is one character (Latin-1), every carriage return dropped
    QString error; ///< for a person; empty if `ok`
};

/// Reads a template resource or a previously generated file. Bytes become Latin-1 characters, so that a user's text
/// passes unchanged whatever its encoding.
TextRead readSourceText(const QString &path);

/// What became of one generated file.
struct GeneratedFileResult
{
    enum class Outcome { Written, Unchanged, Failed };

    Outcome outcome = Outcome::Failed;
    QString error; ///< for a person; empty unless `Failed`
};

/// Puts the user's blocks of the file at `path` into `text` (if `keepUserCode`; a file that does not exist has none)
/// and replaces the file, with "\n" line ends, if its bytes differ. The old file stands if anything fails.
GeneratedFileResult writeGeneratedFile(const QString &path, QString text, bool keepUserCode);

/// Why a previous file would stop a generation: it exists but cannot be read or is no regular file. Empty if it would
/// not. To be asked for every file before the first one is written.
QString previousFileProblem(const QString &path);

} // namespace ChipLoom
