#pragma once

#include "Project/ToolchainEditor.h"

namespace ChipLoom {

/// Keil MDK: "<project>.uvproj" and ".uvopt" of version 4, ".uvprojx" and ".uvoptx" of version 5.
class MdkEditor : public ToolchainEditor
{
public:
    explicit MdkEditor(bool v5) : m_v5(v5) {}

    bool ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const override;
    bool ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const override;

private:
    bool configOptions(const ProjectOrder &order, bool first, BuilderAccount &account) const;

    bool m_v5;
};

} // namespace ChipLoom
