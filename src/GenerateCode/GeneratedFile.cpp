#include "GenerateCode/GeneratedFile.h"

#include "Base/AtomicFile.h"
#include "Base/FileState.h"

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

QString writeGeneratedFile(const QString &path, std::string_view text)
{
    const QByteArray content = QByteArray::fromRawData(text.data(), length(text));
    return fileState(path).exists() ? replaceFile(path, content).error : putFile(path, content);
}

QString backupPath(const QString &path, const QString &file)
{
    QString copy = path + BackupSuffix;
    for (int number = 2;; ++number) {
        const FileState state = fileState(copy);
        const bool isFree = !state.exists();
        if (isFree || (state.isFile() && state.size == followedState(file).size && sameContent(copy, file)))
            return copy;
        copy = QStringLiteral("%1.%2%3").arg(path).arg(number).arg(BackupSuffix);
    }
}

QString keepFormerFile(const QString &path, const QString &copy)
{
    const ReadResult file = readFile(path, MaxSourceBytes);
    return file.ok ? replaceFile(copy, file.content).error : file.error;
}

} // namespace ChipLoom
