#pragma once

#include "Model/ShareParameter.h"

namespace ChipLoom {

/// The list of recent designs in its file, newest first; empty if the file cannot be read. A path ends at its first
/// ";".
QList<ProjectFileSaveInfo> GetRecentlyProjectList(const QString &file);

/// Takes the entry of this path out of the file. False if the file cannot be replaced; it then stands as it was.
bool DeleteRecentlyProjectToFile(const QString &file, const QString &path);

} // namespace ChipLoom
