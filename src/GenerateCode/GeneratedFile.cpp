#include "GenerateCode/GeneratedFile.h"

#include "Base/AtomicFile.h"
#include "GenerateCode/UserBlocks.h"

#include <QFileInfo>

#include <utility>

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
    std::string text = file.content.toStdString();
    if (text.find('\r') != std::string::npos)
        std::erase(text, '\r');
    return {true, true, std::move(text), {}, size};
}

GeneratedFileResult writeGeneratedFile(const QString &path, std::string_view text, bool keepUserCode)
{
    std::string kept;
    if (keepUserCode) {
        const TextRead previous = readSourceText(path);
        if (!previous.ok && previous.exists)
            return {GeneratedFileResult::Outcome::Failed, previous.error};
        kept = text;
        if (previous.ok)
            GenerateCode_Handle_KeepUserCode_EXT(previous.text, kept);
        text = kept;
    }
    const QByteArray content = QByteArray::fromRawData(text.data(), length(text));
    if (const QFileInfo info(path); !info.exists() && !info.isSymLink()) {
        const QString error = putFile(path, content);
        return {error.isEmpty() ? GeneratedFileResult::Outcome::Written : GeneratedFileResult::Outcome::Failed, error};
    }
    const ReplaceResult replaced = replaceFile(path, content);
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
