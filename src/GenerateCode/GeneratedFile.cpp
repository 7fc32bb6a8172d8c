#include "GenerateCode/GeneratedFile.h"

#include "Base/AtomicFile.h"
#include "Base/FileState.h"

#include <limits>
#include <optional>
#include <utility>

namespace ChipLoom {

namespace {

// Far above any source file, far below what would exhaust the machine.
constexpr qint64 MaxSourceBytes = 256 * 1024 * 1024;
constexpr qint64 MaxKeptBytes = std::numeric_limits<int>::max() / 2;

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

QString writeGeneratedFile(const QString &path, std::string_view text)
{
    const QByteArray content = QByteArray::fromRawData(text.data(), length(text));
    return fileState(path).exists() ? replaceFile(path, content).error : putFile(path, content);
}

QString backupPath(const QString &path, const QString &file)
{
    std::optional<ReadResult> content; // read only if a copy of this size stands there
    QString copy = path + BackupSuffix;
    for (int number = 2;; ++number) {
        const FileState state = fileState(copy);
        if (!state.exists())
            return copy;
        if (state.isFile() && state.size == followedState(file).size) {
            if (!content)
                content = readFile(file, MaxKeptBytes);
            const ReadResult kept = readFile(copy, MaxKeptBytes);
            if (content->ok && kept.ok && kept.content == content->content)
                return copy;
        }
        copy = QStringLiteral("%1.%2%3").arg(path).arg(number).arg(BackupSuffix);
    }
}

QString keepFormerFile(const QString &path, const QString &copy)
{
    const ReadResult file = readFile(path, MaxSourceBytes);
    return file.ok ? replaceFile(copy, file.content).error : file.error;
}

} // namespace ChipLoom
