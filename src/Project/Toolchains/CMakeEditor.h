#pragma once

#include "Project/ToolchainEditor.h"

namespace ChipLoom {

/// CMake: "CMakeLists.txt" with the project's name, "cmake/gcc-arm-none-eabi.cmake" with the linker script, and
/// "cmake/zv32_chiploom/CMakeLists.txt" with all lists.
class CMakeEditor : public ToolchainEditor
{
public:
    bool ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const override;
    bool ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const override;
};

} // namespace ChipLoom
