#pragma once

#include "Base/UserPrompt.h"
#include "GenerateCode/CodeGeneration.h"
#include "Packages/FirmwarePackages.h"
#include "Project/ProjectOrder.h"

namespace ChipLoom {

/// Sizes of the device of a design, in bytes.
quint32 flashSizeOf(const Design &design);
quint32 sramSizeOf(const Design &design);

/// Middlewares in use.
QStringList validMiddlewares(const Design &design);

/// Whether a package has what a project of the series and toolchain needs: "libraries", "middlewares" and the skeleton
/// of the toolchain. What is missing, for a person; empty if nothing is.
QString checkPackagePathValid(const FirmwarePackage &package, const QString &series, IDE_TYPE type,
                              const QString &templatePath);
/// Whether the components that the design uses are in the repository.
bool checkComponentsPathValid(const QString &repository, const QStringList &middlewares);

/// Skeletons that are used where a package has none.
QString projectTemplatePath(const AppPaths &paths, const QString &series);

/// The calls of `main` in their present order, brought up to date with what is in use.
QList<MainFuncNameForRank> validFunctionRank(const Design &design);

/// What to build of the open design, with the lists of its generators. `package` has an empty path for a project
/// without firmware. `code` is run for its account, which names the sources: if it fails, nothing is to be built. Where
/// nothing has changed since a run that was remembered, order and code say so, and nothing is made.
ProjectOrder projectOrder(const Design &design, const QString &fullPath, const FirmwarePackage &package,
                          const QString &repository, CodeGeneration &code);

/// Remembers a run whose code has been written too, so that it need not be made again while nothing changes. One that
/// failed, had something to tell, or is to keep backups is not remembered.
void rememberProject(const ProjectOrder &order, const BuilderAccount &account, const CodeGeneration &code);

// ---- What is asked; "Yes" goes on, "Cancel" ends the generation ----

bool goesOnWithoutPackage(UserPrompt &prompt, const QString &series, const QString &detail);
bool goesOnWithoutComponents(UserPrompt &prompt);
/// Asks about a build that failed. True at once for one that did not; false at once for one that was cancelled.
bool showGenerateProjectError(UserPrompt &prompt, const BuilderAccount &account);

} // namespace ChipLoom
