#include "GenerateCode/GeneratedFile.h"

#include "Base/AtomicFile.h"
#include "GenerateCode/UserBlocks.h"

#include <QFileInfo>

#include <algorithm>
#include <cstring>

namespace ChipLoom {

namespace {

// Far above any source file, far below what would exhaust the machine.
constexpr qint64 MaxSourceBytes = 256 * 1024 * 1024;

} // namespace

TextRead readSourceText(const QString &path)
{
    ReadResult file = readFile(path, MaxSourceBytes);
    if (!file.ok)
        return {false, file.exists, {}, file.error, 0};
    const qint64 size = file.content.size();
    QByteArray &bytes = file.content;
    if (std::memchr(bytes.constData(), '\r', static_cast<size_t>(bytes.size())))
        bytes.truncate(static_cast<int>(std::remove(bytes.begin(), bytes.end(), '\r') - bytes.begin()));
    // By length: the form that takes the array alone ends at the first zero byte.
    return {true, true, QString::fromLatin1(bytes.constData(), bytes.size()), {}, size};
}

GeneratedFileResult writeGeneratedFile(const QString &path, QString text, bool keepUserCode)
{
    if (keepUserCode) {
        const TextRead previous = readSourceText(path);
        if (previous.ok)
            GenerateCode_Handle_KeepUserCode_EXT(previous.text, text);
        else if (previous.exists)
            return {GeneratedFileResult::Outcome::Failed, previous.error};
    }
    if (const QFileInfo info(path); !info.exists() && !info.isSymLink()) {
        const QString error = putFile(path, text.toLatin1());
        return {error.isEmpty() ? GeneratedFileResult::Outcome::Written : GeneratedFileResult::Outcome::Failed, error};
    }
    const ReplaceResult replaced = replaceFile(path, text.toLatin1());
    switch (replaced.outcome) {
    case ReplaceOutcome::Written:
        return {GeneratedFileResult::Outcome::Written, {}};
    case ReplaceOutcome::Unchanged:
        return {GeneratedFileResult::Outcome::Unchanged, {}};
    case ReplaceOutcome::Failed:
        break;
    }
    return {GeneratedFileResult::Outcome::Failed, replaced.error};
}

} // namespace ChipLoom
