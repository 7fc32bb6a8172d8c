#pragma once

#include <cstdint>
#include <optional>

namespace ChipLoom {

enum class I2cMode { Standard, Fast, FastPlus };

/// What an interface with a timing register is asked for. Times in nanoseconds.
struct I2cRequest
{
    double clockHz = 0;
    I2cMode mode = I2cMode::Standard;
    double speedHz = 0;
    double riseTime = 0; ///< of the lines, as the board gives it
    double fallTime = 0;
    bool analogFilter = true;
    int digitalFilter = 0; ///< clocks of the interface, 0 to 15
};

/// Fields of the timing register. A step lasts (`div` + 1) clocks.
struct I2cTiming
{
    int div = 0;        ///< bits 31 to 24
    int scld = 0;       ///< bits 23 to 20: data stand (`scld` + 1) steps before the clock rises
    int sdad = 0;       ///< bits 19 to 16: data change `sdad` steps after the clock has fallen
    int sclh = 0;       ///< bits 15 to 8: the clock is high for (`sclh` + 1) steps and the detection of its edge
    int scll = 0;       ///< bits 7 to 0: the same for low
    double speedHz = 0; ///< that follows

    std::uint32_t registerValue() const;
    bool operator==(const I2cTiming &) const = default;
};

/// Which limit of the bus standard the asked-for setting cannot keep.
enum class I2cLimit { None, Clock, RiseTime, FallTime, DataSetup, DataHold, TooFast, TooSlow };

struct I2cAnswer
{
    std::optional<I2cTiming> timing; ///< the nearest to the asked-for speed that keeps all limits and is not faster
    I2cLimit failing = I2cLimit::None;
    double nearestSpeedHz = 0; ///< where only the speed fails: the nearest that can be had; else 0
};

/// Limits of a mode by the bus standard, in nanoseconds.
struct I2cLimits
{
    double low, high;        ///< least times of the clock
    double dataSetup;        ///< least
    double dataHold;         ///< greatest
    double maxRise, maxFall; ///< greatest
    double maxSpeedHz;
};
const I2cLimits &i2cLimits(I2cMode mode);

/// Least time that data must stand before the clock rises, in nanoseconds.
double Get_tSUDat(I2cMode mode);

I2cAnswer solveI2cTiming(const I2cRequest &request);

/// Times of a setting in nanoseconds, and whether all limits hold: the oracle of the search.
struct I2cTimes
{
    double low, high, period, dataSetup, dataHold;
};
I2cTimes i2cTimes(const I2cRequest &request, const I2cTiming &timing);
bool keepsI2cLimits(const I2cRequest &request, const I2cTiming &timing);

/// The lowest clock in Hz that the classic interface can give from its bus clock.
int classicI2cLowestHz(double clockHz);
/// The clock in Hz that it gives, which is never above the wanted one: it counts a low and a high time that together
/// are so many equal parts.
double classicI2cSpeedHz(double clockHz, double wantedHz, int parts);

/// Timeouts of SMBus in milliseconds: the clock is low (or idle, counted in shorter steps) for so many steps plus one.
double i2cTimeoutMs(double clockHz, int registerValue, bool idle);

} // namespace ChipLoom
