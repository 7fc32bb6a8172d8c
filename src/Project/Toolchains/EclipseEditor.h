#pragma once

#include "Project/ToolchainEditor.h"

namespace ChipLoom {

/// Eclipse with GCC and the maker's ZV32 IDE, which is made of it: ".project", ".cproject" and, for the latter,
/// "preferences.ini".
class EclipseEditor : public ToolchainEditor
{
public:
    explicit EclipseEditor(bool zv32Ide) : m_zv32Ide(zv32Ide) {}

    bool ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const override;
    bool ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const override;

private:
    bool m_zv32Ide;
};

} // namespace ChipLoom
