#pragma once

#include "Project/ProjectOrder.h"

namespace ChipLoom::Test {

/// What a project says, read anew from its files by other means than those that wrote it.
struct ProjectFacts
{
    QString device; ///< as the files name it
    bool fpu = false;
    quint32 flashOrigin = 0, flashSize = 0, ramOrigin = 0, ramSize = 0, stack = 0, heap = 0;
    QStringList defines, includes, sources; ///< sorted; paths relative to the root of the project
};

ProjectFacts readFacts(const ProjectOrder &order);

} // namespace ChipLoom::Test
