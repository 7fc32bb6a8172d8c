#include "Design/Calculators/SerialClocks.h"

#include <algorithm>
#include <cmath>

namespace ChipLoom {

double realBaudRate(double clockHz, double bitRate, bool doubled)
{
    const double clock = doubled ? 2 * clockHz : clockHz;
    if (clock <= 0 || bitRate <= 0)
        return 0;
    const double below = std::max(1.0, std::floor(clock / bitRate));
    const double faster = clock / below;
    const double slower = clock / (below + 1);
    return std::abs(faster - bitRate) <= std::abs(slower - bitRate) ? faster : slower;
}

double errorPercent(double real, double wanted)
{
    return wanted > 0 ? (real - wanted) / wanted * 100.0 : 0;
}

double sdioClock(double clock, int division, bool bypass)
{
    return bypass ? clock : clock / (division + 2);
}

int sdramRefreshCount(double clockHz, int rowLines, double refreshMs)
{
    const double clocks = std::floor(clockHz * refreshMs / 1e3 / std::ldexp(1.0, rowLines)) - 20;
    return static_cast<int>(std::clamp(clocks, 0.0, 8191.0));
}

int i2sClocksPerSample(bool masterClock, bool pcm, int channelBits)
{
    if (masterClock)
        return 256;
    return pcm ? channelBits : 2 * channelBits;
}

I2SDivider i2sDivider(double clockHz, double sampleRate, int clocksPerSample)
{
    constexpr double Least = 2 * 2;
    constexpr double Most = 2 * 1023 + 1;
    I2SDivider divider;
    if (clockHz <= 0 || sampleRate <= 0 || clocksPerSample <= 0)
        return divider;
    const double base = clockHz / clocksPerSample;
    const double below = std::clamp(std::floor(base / sampleRate), Least, Most);
    const double above = std::min(below + 1, Most);
    const double chosen = std::abs(base / below - sampleRate) <= std::abs(base / above - sampleRate) ? below : above;
    divider.div = static_cast<int>(chosen) / 2;
    divider.odd = static_cast<int>(chosen) % 2;
    divider.sampleRate = base / chosen;
    divider.errorPercent = errorPercent(divider.sampleRate, sampleRate);
    return divider;
}

} // namespace ChipLoom
