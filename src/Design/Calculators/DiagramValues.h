#pragma once

#include "Design/Calculators/I2cTiming.h"
#include "Design/Calculators/ParameterSheet.h"
#include "Design/Calculators/WatchdogTiming.h"
#include "Model/Enumerations.h"

#include <cstdint>
#include <optional>

/// What the drawings of a peripheral show beside its parameters, and what the calculators share with them.
namespace ChipLoom {

/// One bit as a bus sees it, in quanta; all 0 if no timing is chosen.
struct CanBit
{
    int sync = 0, bs1 = 0, bs2 = 0; ///< they add up to the bit, on controllers whose first register counts `sync` too
    double samplePoint = 0;         ///< percent
    double bitRate = 0;             ///< kbit/s

    int quanta() const { return sync + bs1 + bs2; }
    bool operator==(const CanBit &) const = default;
};

struct CanBits
{
    CAN_TYPE type = CAN_TYPE_1;
    CanBit nominal; ///< of classic CAN the only one
    CanBit data;    ///< only of `CAN_TYPE_NominalData`

    bool operator==(const CanBits &) const = default;
};

CanBits canBitsOf(const ParameterReader &parameters);

struct SpiFrame
{
    bool ti = false; ///< fixes the three below
    bool clockHighWhenIdle = false;
    bool secondEdge = false;
    bool lowestBitFirst = false;
    double bitClockHz = 0; ///< 0 for a slave

    bool operator==(const SpiFrame &) const = default;
};

SpiFrame spiFrameOf(const ParameterReader &parameters);

/// What is asked of the timing register of an interface that has one.
I2cRequest i2cRequestOf(const ParameterReader &parameters);

/// Times on the bus in nanoseconds. Without a timing register they are the limits of the bus standard.
struct I2cBusTimes
{
    bool limits = true;
    double rise = 0, fall = 0, dataSetup = 0, dataHold = 0;
    double speedHz = 0;

    bool operator==(const I2cBusTimes &) const = default;
};

I2cBusTimes i2cBusTimesOf(const ParameterReader &parameters);

/// How a timer comes to its overflows. Register values, and the greatest that can be set.
struct TimerCount
{
    enum class Direction { Up, Down, TwoWay };

    double clockHz = 0; ///< 0 if it counts what comes from outside
    std::uint32_t divider = 0, maxDivider = 0;
    std::uint32_t period = 0, maxPeriod = 0;
    Direction direction = Direction::Up;
    double overflowHz = 0;

    bool operator==(const TimerCount &) const = default;
};

/// Whether a timer counts what comes from outside, so that its frequency is not known.
bool isExternallyClocked(const ParameterReader &parameters);
/// Nothing for a set without divider and period.
std::optional<TimerCount> timerCountOf(const ParameterReader &parameters);

struct WatchdogCount
{
    int counter = 0;
    int window = 0; ///< the counter's own value where there is no window
    bool hasWindow = false;
    bool hexadecimal = false; ///< the base in which the user has the counter shown
    WatchdogTiming timing;

    bool operator==(const WatchdogCount &) const = default;
};

WatchdogCount watchdogCountOf(const ParameterReader &parameters);

/// Which of its six ways of working an operational amplifier is set to, 1 to 6; 0 if none.
int opModeOf(const ParameterReader &parameters);

} // namespace ChipLoom
