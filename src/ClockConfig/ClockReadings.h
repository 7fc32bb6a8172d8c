#pragma once

#include "ClockConfig/ZV32ConfigCLK.h"

#include <span>
#include <vector>

namespace ChipLoom {

/// What a branch may carry, in MHz; 0 means no limit on that side.
struct ClockLimits
{
    double min = 0.0;
    double max = 0.0;

    bool contains(double mhz) const { return !(min > 0 && mhz < min) && !(max > 0 && mhz > max); }
};

/// One frequency of the tree with its limits.
struct ClockReading
{
    ClockBranch branch = ClockBranch::None;
    double mhz = 0.0;
    ClockLimits limits;

    /// USB must meet 48 MHz exactly; everything else must keep its limits.
    bool inRange() const;
};

/// The branches that the series has, sources first, outputs last.
std::vector<ClockBranch> clockBranches(const ClockSeries &series);

/// The plain name of a branch, the same in every language: "APB1 timers".
const char *clockBranchName(ClockBranch branch);

ClockLimits clockLimits(const ClockSeries &series, ClockBranch branch);

/// The frequency of a branch. `i2sf5External` is the external I2S clock in MHz. USB is what it last was while it is
/// not in use, the ADC is 0 then.
ClockReading clockReading(const ZV32ConfigCLK &clock, ClockBranch branch, double i2sf5External);

/// What the chosen source gives to a clock output before its dividers, in MHz.
double clockOutputSource(const ZV32ConfigCLK &clock, ClockBranch output);

} // namespace ChipLoom
