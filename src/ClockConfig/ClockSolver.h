#pragma once

#include "ClockConfig/ZV32ConfigCLK.h"

#include <vector>

namespace ChipLoom {

/// One setting of the PLL that comes near a wanted SCLK.
struct ClockSolution
{
    ZV32ConfigCLK clock;  ///< the whole tree with this setting, calculated
    double sclkPpm = 0.0; ///< how far SCLK lies from the target
    double usbPpm = 0.0;  ///< how far USB lies from 48 MHz; 0 unless USB is on the PLL
};

/// What USB full speed tolerates.
inline constexpr double UsbTolerancePpm = 2500.0;

double clockErrorPpm(double mhz, double target);

/// The nearest settings of the PLL for a target SCLK in MHz, at most `count`, no two with the same SCLK and none above
/// the ceiling. Best first: while USB is on the PLL those that USB tolerates come before the others, then the smaller
/// error of SCLK, then that of USB. Among equal settings the one that the search for a typed SCLK finds. On series
/// with both forms of the PLL both are tried. Sources and bus dividers are those of `clock`, with SCLK on the PLL;
/// empty if the target is not positive or the PLL has no input.
std::vector<ClockSolution> solveClock(const ZV32ConfigCLK &clock, double target, int count);

} // namespace ChipLoom
