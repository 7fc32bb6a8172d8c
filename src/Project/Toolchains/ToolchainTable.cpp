#include "Project/ToolchainEditor.h"

namespace ChipLoom {

const ToolchainEditor *ToolchainEditor::of(IDE_TYPE)
{
    return nullptr;
}

} // namespace ChipLoom
