#pragma once

#include "Base/AppPaths.h"

#include <QStringList>

namespace ChipLoom {

/// The whole of the command line program: understands `arguments` (the first is the program), runs the command and
/// returns the exit code of the process. A `QCoreApplication` must exist.
int runCommandLine(const QStringList &arguments, AppPaths paths);

} // namespace ChipLoom
