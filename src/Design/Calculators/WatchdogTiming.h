#pragma once

namespace ChipLoom {

/// When a watchdog may be refreshed, in milliseconds from the last refresh.
struct WatchdogTiming
{
    double refreshNotAllowed = 0; ///< so long a refresh resets the device; 0 without a window
    double refreshWindow = 0;     ///< so long it may then be refreshed
    double timeout = 0;           ///< after that the device resets

    bool operator==(const WatchdogTiming &) const = default;
};

/// The independent watchdog counts from `counter` down to 0 at its clock over `prescaler` and resets with the step
/// after. A refresh while it stands above `window` resets, too. All 0 without a clock.
WatchdogTiming wdtTiming(double clockHz, int prescaler, int counter, int window);

/// The window watchdog resets with the step from 0x40 to 0x3F, and when it is refreshed above `window`.
WatchdogTiming wwdtTiming(double clockHz, int prescaler, int counter, int window);

} // namespace ChipLoom
