#pragma once

#include <QString>
#include <QStringList>

#include <atomic>
#include <mutex>
#include <string_view>
#include <vector>

namespace ChipLoom {

class Beside;

/// A folder that comes into place as a whole: files are written into one beside it while the next are made, and in the
/// end that one gets its name. After a kill or a full disk the folder is whole or not there at all.
class NewFolder
{
public:
    /// Of a path where nothing stands, with the names of the folders in it. Those above it are made.
    NewFolder(QString path, QStringList folders, Beside &beside);
    /// What has not come into place goes.
    ~NewFolder();
    Q_DISABLE_COPY(NewFolder)

    /// A file in one of the folders, "src/main.c", whose content consists of parts: they stay as they are until the
    /// folder is in place or this is gone.
    void put(const QString &file, std::vector<std::string_view> content);
    /// Once all is put. An error for a person, or empty.
    QString moveIntoPlace();
    /// The folder that could not be made, if that was the error.
    const QString &failedFolder() const { return m_failedFolder; }

private:
    void makeFolders();
    void fail(const QString &error, const QString &folder = {});

    const QString m_path, m_aside;
    const QStringList m_folders;
    Beside &m_beside;
    bool m_isInPlace = false;
    std::once_flag m_foldersMade;
    std::atomic<bool> m_isOver = false; ///< nothing more is written
    std::mutex m_mutex;                 ///< of what follows
    QString m_error, m_failedFolder;
};

} // namespace ChipLoom
