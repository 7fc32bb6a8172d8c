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

/// What became of one generated file.
struct GeneratedFileResult
{
    enum class Outcome { Written, Unchanged, Failed };

    Outcome outcome = Outcome::Failed;
    QString error; ///< for a person; empty unless `Failed`
};

/// Replaces the file at `path` by `text`, with "\n" line ends, if its bytes differ; the user's blocks stay (if
/// `keepUserCode`; a file that does not exist has none). The old file stands if anything fails. A file that
/// is new holds nobody's work yet, and nobody waits for the disk to take it.
GeneratedFileResult writeGeneratedFile(const QString &path, std::string_view text, bool keepUserCode);

} // namespace ChipLoom
