#include "Base/NewFolder.h"

#include "Base/AtomicFile.h"
#include "Base/Beside.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <utility>

namespace ChipLoom {

namespace {

/// What takes longer than making a file.
constexpr size_t LargeFile = 64 * 1024;

} // namespace

NewFolder::NewFolder(QString path, QStringList folders, Beside &beside)
    : m_path(std::move(path)), m_aside(partPath(m_path)), m_folders(std::move(folders)), m_beside(beside)
{
    m_beside.add([this] { makeFolders(); });
}

NewFolder::~NewFolder()
{
    m_isOver = true;
    m_beside.finish();
    if (!m_isInPlace)
        QDir(m_aside).removeRecursively();
}

void NewFolder::fail(const QString &error, const QString &folder)
{
    const std::lock_guard lock(m_mutex);
    if (m_isOver.exchange(true))
        return;
    m_error = error;
    m_failedFolder = folder;
}

void NewFolder::makeFolders()
{
    std::call_once(m_foldersMade, [this] {
        removeLeftParts(QFileInfo(m_path).path());
        if (!QDir().mkpath(m_aside))
            fail(systemError(m_path), m_path);
        for (const QString &name : m_folders) {
            const QString folder = m_path + QLatin1Char('/') + name;
            if (!m_isOver && !QDir(m_aside).mkdir(name))
                fail(systemError(folder), folder);
        }
    });
}

void NewFolder::put(const QString &file, std::vector<std::string_view> content)
{
    size_t size = 0;
    for (const std::string_view part : content)
        size += part.size();
    auto write = [this, file, content = std::move(content)] {
        makeFolders();
        if (m_isOver)
            return;
        const QString error = makeFile(m_aside + QLatin1Char('/') + file, content);
        if (!error.isEmpty())
            fail(QString(error).replace(m_aside, m_path));
    };
    m_beside.add(std::move(write), size > LargeFile);
}

QString NewFolder::moveIntoPlace()
{
    m_beside.finish();
    if (m_isOver)
        return m_error;
    if (std::rename(QFile::encodeName(m_aside).constData(), QFile::encodeName(m_path).constData()) != 0)
        return systemError(m_path);
    m_isInPlace = true;
    return {};
}

} // namespace ChipLoom
