#include "Project/ProjectFiles.h"

#include "Base/AtomicFile.h"
#include "Base/FileState.h"

#include <QDir>

namespace ChipLoom {

namespace {

constexpr qint64 MaxProjectFile = 16 * 1024 * 1024;

}

ProjectText readProjectText(const QString &path)
{
    const ReadResult read = readFile(path, MaxProjectFile);
    return {read.ok, QString::fromLatin1(read.content), read.error};
}

bool writeProjectText(const ProjectOrder &order, const QString &path, const QString &text, BuilderAccount &account)
{
    return writeProjectBytes(order, path, text.toLatin1(), account);
}

bool writeProjectBytes(const ProjectOrder &order, const QString &path, const QByteArray &bytes, BuilderAccount &account)
{
    const QString relative = QDir(order.projectFullPath).relativeFilePath(path);
    // What this run brings is nobody's work yet.
    const bool isNew = account.written.contains(relative) || !fileState(path).exists();
    const ReplaceResult result = replaceFile(path, bytes, isNew);
    switch (result.outcome) {
    case ReplaceOutcome::Failed:
        account.detail = result.error;
        return false;
    case ReplaceOutcome::Written:
        if (!account.written.contains(relative))
            account.written.append(relative);
        account.unchanged.removeOne(relative);
        break;
    case ReplaceOutcome::Unchanged:
        if (!account.written.contains(relative) && !account.unchanged.contains(relative))
            account.unchanged.append(relative);
        break;
    }
    return true;
}

QString utf8AsLatin1(const QString &name)
{
    return QString::fromLatin1(name.toUtf8());
}

QString withoutBlanks(const QString &text)
{
    return QString::fromLatin1(text.toLatin1().trimmed());
}

} // namespace ChipLoom
