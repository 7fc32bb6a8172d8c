#include "Project/Toolchains/CMakeEditor.h"
#include "Project/Toolchains/EclipseEditor.h"
#include "Project/Toolchains/IarEditor.h"
#include "Project/Toolchains/MakefileEditor.h"
#include "Project/Toolchains/MdkEditor.h"

namespace ChipLoom {

const ToolchainEditor *ToolchainEditor::of(IDE_TYPE type)
{
    static const EclipseEditor zv32Ide(true);
    static const EclipseEditor eclipse(false);
    static const IarEditor iarV6_10(true);
    static const IarEditor iar;
    static const MdkEditor mdkV4(false);
    static const MdkEditor mdkV5(true);
    static const MakefileEditor makefile;
    static const CMakeEditor cmake;
    switch (type) {
    case IDE_ZV32_IDE:
        return &zv32Ide;
    case IDE_ECLIPSE_GCC:
        return &eclipse;
    case IDE_IAR_V6_10:
        return &iarV6_10;
    case IDE_IAR_V7_4:
    case IDE_IAR_V8_2:
    case IDE_IAR_V9_3:
        return &iar;
    case IDE_MDK_V4:
        return &mdkV4;
    case IDE_MDK_V5:
        return &mdkV5;
    case IDE_MAKEFILE:
        return &makefile;
    case IDE_CMAKE:
        return &cmake;
    }
    return nullptr;
}

} // namespace ChipLoom
