#pragma once

#include "Model/ShareParameter.h"

#include <QDateTime>

namespace ChipLoom {

// The list of recent designs in its file (`AppPaths::recentDesignsFile`): at most five, newest first. A path ends at
// its first ";". What changes the list gives false if the file cannot be replaced, which then stands as it was; a file
// that holds no list is begun anew.

/// Empty if the file is missing or cannot be read.
QList<ProjectFileSaveInfo> GetRecentlyProjectList(const QString &file);

/// Puts a design in front with this time; of more than five the oldest goes.
bool SetRecentlyProjectToFile(const QString &file, const QString &path,
                              const QDateTime &time = QDateTime::currentDateTime());

/// Takes the entry of this path out of the file.
bool DeleteRecentlyProjectToFile(const QString &file, const QString &path);

} // namespace ChipLoom
