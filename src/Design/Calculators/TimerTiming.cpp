#include "Design/Calculators/TimerTiming.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace ChipLoom {

double timerOverflowHz(double clockHz, std::uint32_t divider, std::uint32_t period, bool twoWay)
{
    const double steps = twoWay ? 2.0 * period : period + 1.0;
    return steps > 0 && clockHz > 0 ? clockHz / ((divider + 1.0) * steps) : 0;
}

std::optional<TimerDivision> timerDivisionFor(double clockHz, double wantedHz, std::uint32_t maxDivider,
                                              std::uint32_t maxPeriod, bool twoWay)
{
    if (!(clockHz > 0) || !(wantedHz > 0))
        return std::nullopt;
    std::optional<TimerDivision> best;
    double bestError = 0;
    const double leastPeriod = twoWay ? 1.0 : 0.0;
    for (std::uint32_t divider = 0;; ++divider) {
        const double steps = clockHz / ((divider + 1.0) * wantedHz);
        const double period = std::floor(twoWay ? steps / 2 : steps - 1);
        for (const double candidate : {period, period + 1}) {
            TimerDivision division{
                divider, static_cast<std::uint32_t>(std::clamp(candidate, leastPeriod, double(maxPeriod))), 0};
            division.overflowHz = timerOverflowHz(clockHz, divider, division.period, twoWay);
            const double error = std::abs(division.overflowHz - wantedHz);
            if (!best || error < bestError) {
                best = division;
                bestError = error;
            }
        }
        // Nothing is nearer than exact, and no larger divider helps once the shortest period is too long.
        if (divider == maxDivider || bestError == 0 || period < leastPeriod)
            return best;
    }
}

double timerDeadTimeNs(unsigned dtg, int clockDivision, double clockMHz)
{
    if (clockMHz <= 0)
        return 0;
    const double t = clockDivision / clockMHz;
    unsigned steps = 0;
    switch ((dtg & 0xFFu) >> 5) {
    case 4:
    case 5:
        steps = ((dtg & 63u) + 64) * 2;
        break;
    case 6:
        steps = ((dtg & 31u) + 32) * 8;
        break;
    case 7:
        steps = ((dtg & 31u) + 32) * 16;
        break;
    default:
        steps = dtg & 0xFFu;
        break;
    }
    return steps * t * 1000.0;
}

std::optional<double> timerFilterHz(double clockHz, int clockDivision, const QString &dividers, int filter)
{
    const QStringList list = dividers.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    bool isNumber = false;
    const int divider = list.value(filter).toInt(&isNumber);
    if (filter < 0 || !isNumber || divider <= 0 || clockDivision <= 0)
        return std::nullopt;
    return clockHz / clockDivision / divider;
}

} // namespace ChipLoom
