#pragma once

namespace ChipLoom {

/// The whole of the program with windows: start-up, home window, event loop. Returns the exit code of the process.
int runChipLoom(int argc, char **argv);

} // namespace ChipLoom
