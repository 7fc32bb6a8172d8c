#pragma once

#include "Project/ToolchainEditor.h"

namespace ChipLoom {

/// The Makefile in the root of the project.
class MakefileEditor : public ToolchainEditor
{
public:
    bool ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const override;
    bool ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const override;
};

} // namespace ChipLoom
