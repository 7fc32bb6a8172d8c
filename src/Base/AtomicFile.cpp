#include "Base/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>

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

} // namespace

ReplaceResult replaceFile(const QString &path, const QByteArray &content)
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
            return {ReplaceOutcome::Failed, QStringLiteral("%1 is read-only").arg(path)};
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
    QFile part(path + QLatin1String(".chiploom-part"));
    const auto mode = QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered;
    if (!part.open(mode)) {
        part.remove(); // what a run that was killed left
        if (!part.open(mode))
            return QStringLiteral("%1: %2").arg(path, part.errorString());
    }
    const bool written = writeAll(part, content);
    QString error = part.errorString();
    if (written && executable)
        part.setPermissions(part.permissions() | QFileDevice::ExeOwner | QFileDevice::ExeUser);
    part.close();
    if (written) {
        if (std::rename(QFile::encodeName(part.fileName()).constData(), QFile::encodeName(path).constData()) == 0)
            return {};
        error = QString::fromLocal8Bit(std::strerror(errno));
    }
    part.remove();
    return QStringLiteral("%1: %2").arg(path, error);
}

ReadResult readFile(const QString &path, qint64 maxBytes)
{
    ReadResult result;
    const QFileInfo info(path);
    result.exists = info.exists() || info.isSymLink();
    if (!result.exists) {
        result.error = QStringLiteral("%1 does not exist").arg(path);
        return result;
    }
    if (!info.isFile()) {
        result.error = QStringLiteral("%1 is no regular file").arg(path);
        return result;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return result;
    }
    if (file.size() > maxBytes) {
        result.tooLarge = true;
        result.error = QStringLiteral("%1 has %2 bytes; at most %3 are read").arg(path).arg(file.size()).arg(maxBytes);
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

} // namespace ChipLoom
