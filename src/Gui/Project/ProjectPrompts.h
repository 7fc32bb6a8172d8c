#pragma once

#include "Base/UserPrompt.h"
#include "Design/DesignReason.h"

namespace ChipLoom {

/// The boxes of the project dialog.
namespace ProjectPrompts {

void tellEmptyPlace(UserPrompt &prompt);
/// A heap or stack that `HeapAndStackCheck` refused.
void tellWrongSize(UserPrompt &prompt, const DesignAnswer &answer);
/// Any other value that cannot be taken.
void tellWrongValue(UserPrompt &prompt, const DesignAnswer &answer);
void tellToolchainRefused(UserPrompt &prompt, const QString &reason);
void tellGenerateFailed(UserPrompt &prompt, const QString &detail);
bool mayOverwrite(UserPrompt &prompt, const QString &name);
bool mayResetRanking(UserPrompt &prompt);

/// What the user wants to do with a finished project.
enum class Finished { Ok, OpenFolder, OpenProject };
Finished tellFinished(UserPrompt &prompt, bool projectCanBeOpened);
void tellProjectNotOpened(UserPrompt &prompt);

} // namespace ProjectPrompts

} // namespace ChipLoom
