#pragma once

#include "Project/ProjectOrder.h"

namespace ChipLoom {

/// Edits the project files of one toolchain after the copy. Objects without state: one for each toolchain, for the
/// length of the process. An editor prompts nobody and may run on any thread. Its files are read as Latin-1 and
/// replaced only if their bytes differ (`ProjectFiles.h`).
class ToolchainEditor
{
public:
    virtual ~ToolchainEditor() = default;

    /// Sets heap and stack in the linker file or, for MDK, in the start-up file. False, with `account.detail`, if it
    /// cannot be read or written; a size that the file does not hold in the expected form becomes a note.
    virtual bool ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const = 0;

    /// Brings the project files up to date. With `first` they still have the names of the template. False, with
    /// `account.detail`, for a file that cannot be read, understood or written.
    virtual bool ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const = 0;

    /// The editor of a toolchain, or null if it has none.
    static const ToolchainEditor *of(IDE_TYPE type);
};

} // namespace ChipLoom
