#pragma once

#include "Cli/Command.h"
#include "Design/Design.h"
#include "GenerateCode/CodeGeneration.h"
#include "Project/ProjectOrder.h"

namespace ChipLoom {

/// Applies the options for a project in a folder to the design. Tells why it cannot: an unknown toolchain or number is
/// wrong usage.
ExitCode applyProjectOptions(const CommandContext &context, const QString &folder, Design &design);

/// Builds the project of a design in a folder around its code, which is not written here; tells what stopped it.
/// `order` and `account` take what was built and what came of it.
ExitCode buildProject(const CommandContext &context, Design &design, const QString &folder, CodeGeneration &code,
                      ProjectOrder &order, BuilderAccount &account);

/// Lists what the builder did, but for the files of the package.
void reportProject(const CommandContext &context, const BuilderAccount &account);

} // namespace ChipLoom
