#include "Design/Calculators/WatchdogTiming.h"

#include <algorithm>

namespace ChipLoom {

namespace {

WatchdogTiming timing(double clockHz, int prescaler, int counter, int window, int last)
{
    if (clockHz <= 0)
        return {};
    const double stepMs = prescaler / clockHz * 1000.0;
    WatchdogTiming result;
    result.refreshNotAllowed = std::max(0, counter - window) * stepMs;
    result.timeout = std::max(0, counter - last) * stepMs;
    result.refreshWindow = std::max(0.0, result.timeout - result.refreshNotAllowed);
    return result;
}

} // namespace

WatchdogTiming wdtTiming(double clockHz, int prescaler, int counter, int window)
{
    return timing(clockHz, prescaler, counter, window, -1);
}

WatchdogTiming wwdtTiming(double clockHz, int prescaler, int counter, int window)
{
    return timing(clockHz, prescaler, counter, window, 0x3F);
}

} // namespace ChipLoom
