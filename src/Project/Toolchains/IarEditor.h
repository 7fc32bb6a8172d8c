#pragma once

#include "Project/ToolchainEditor.h"

namespace ChipLoom {

/// IAR Embedded Workbench: "<project>.ewp", ".ewd", ".ewt" and ".eww". Version 6.10 has its linker files from the
/// toolchain itself, and only its processor, linker file and defines are set.
class IarEditor : public ToolchainEditor
{
public:
    explicit IarEditor(bool v6_10 = false) : m_v6_10(v6_10) {}

    bool ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const override;
    bool ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const override;

private:
    bool configDebugger(const ProjectOrder &order, bool first, BuilderAccount &account) const;

    bool m_v6_10;
};

} // namespace ChipLoom
