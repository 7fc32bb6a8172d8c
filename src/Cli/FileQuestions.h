#pragma once

#include "Cli/Command.h"

namespace ChipLoom {

class Design;

/// Asks before a file that exists is replaced by a new design.
bool mayReplaceFile(const CommandContext &context, const QString &path);

/// Asks before what the opened file held and this version could not take is dropped by saving.
bool mayDropProblems(const CommandContext &context, const Design &design);

} // namespace ChipLoom
