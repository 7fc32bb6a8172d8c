#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace ChipLoom {

/// Overflows of a counter in Hz: the clock over (`divider` + 1) and over the steps from one overflow to the next, which
/// are `period` + 1 when it counts one way and 2 x `period` when it counts up and down. 0 if it never overflows.
double timerOverflowHz(double clockHz, std::uint32_t divider, std::uint32_t period, bool twoWay);

struct TimerDivision
{
    std::uint32_t divider = 0; ///< register value, as the period
    std::uint32_t period = 0;
    double overflowHz = 0;

    bool operator==(const TimerDivision &) const = default;
};

/// Divider and period whose overflow is exactly the nearest to `wantedHz`; of several, those with the smallest divider.
/// Nothing unless clock and frequency are positive.
std::optional<TimerDivision> timerDivisionFor(double clockHz, double wantedHz, std::uint32_t maxDivider,
                                              std::uint32_t maxPeriod, bool twoWay);

/// The dead time in nanoseconds that stands behind a value of the dead-time register (its lower eight bits), counted in
/// `clockDivision` clocks of `clockMHz`. 0 without a clock.
double timerDeadTimeNs(unsigned dtg, int clockDivision, double clockMHz);

/// The frequency at which an input filter samples, in Hz: the clock over `clockDivision` and over what `dividers` names
/// for the filter's value, a list of numbers with blanks between them. Nothing if the list has no such entry.
std::optional<double> timerFilterHz(double clockHz, int clockDivision, const QString &dividers, int filter);

} // namespace ChipLoom
