#pragma once

namespace ChipLoom {

/// The version as titles, files and the version check show it.
inline constexpr const char *ProgramVersion = "V1.2.05";

} // namespace ChipLoom
