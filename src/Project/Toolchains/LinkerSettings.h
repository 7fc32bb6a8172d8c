#pragma once

#include "Project/ProjectOrder.h"

namespace ChipLoom {

/// Sets heap and stack in the linker file of the order or, for MDK, in its start-up file. The expressions match sizes
/// of decimal digits only: a size with letters, which this function itself may have written, is not found again, stays,
/// and becomes a note. False, with `account.detail`, if the file cannot be read or written.
bool configLinkerSizes(const ProjectOrder &order, BuilderAccount &account);

} // namespace ChipLoom
