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
/// A folder without a package of the series; `connected` is the name of its folder in a repository.
void tellNoPackages(UserPrompt &prompt, const QString &folder, const QString &connected);
void tellToolchainRefused(UserPrompt &prompt, const QString &reason);
void tellGenerateFailed(UserPrompt &prompt, const QString &detail);
bool mayOverwrite(UserPrompt &prompt, const QString &name, const QString &detail);
bool mayResetRanking(UserPrompt &prompt);

/// What the user wants to do with a finished project.
enum class Finished { Ok, OpenFolder, OpenProject };
/// `notes` are what the builder left undone, and what became of the user's code.
Finished tellFinished(UserPrompt &prompt, bool projectCanBeOpened, const QStringList &notes);
void tellProjectNotOpened(UserPrompt &prompt);

} // namespace ProjectPrompts

} // namespace ChipLoom
