#include "Design/Calculators/I2cTiming.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ChipLoom {

namespace {

constexpr double AnalogFilterMin = 50;
constexpr double AnalogFilterMax = 260;
constexpr int Synchronisation = 2; // clocks until an edge is seen

double clockNs(const I2cRequest &request)
{
    return 1e9 / request.clockHz;
}

// From an edge on the line until the interface counts.
double detection(const I2cRequest &request)
{
    return (request.analogFilter ? AnalogFilterMin : 0) + (request.digitalFilter + Synchronisation) * clockNs(request);
}

struct DataFields
{
    int scld, sdad;
};

// The least fields that keep setup and hold of the data at a step, or nothing.
std::optional<DataFields> dataFields(const I2cRequest &request, double step, I2cLimit &failing)
{
    const I2cLimits &limits = i2cLimits(request.mode);
    const double setup = std::ceil((request.riseTime + Get_tSUDat(request.mode)) / step - 1e-9) - 1;
    if (setup > 15) {
        failing = I2cLimit::DataSetup;
        return std::nullopt;
    }
    const double least = request.fallTime - (request.analogFilter ? AnalogFilterMin : 0) -
                         (request.digitalFilter + 3) * clockNs(request);
    const double most = limits.dataHold - request.riseTime - (request.analogFilter ? AnalogFilterMax : 0) -
                        (request.digitalFilter + 4) * clockNs(request);
    const double hold = std::max(0.0, std::ceil(least / step - 1e-9));
    if (hold > 15 || hold * step > most + 1e-9) {
        failing = I2cLimit::DataHold;
        return std::nullopt;
    }
    return DataFields{static_cast<int>(std::max(0.0, setup)), static_cast<int>(hold)};
}

} // namespace

const I2cLimits &i2cLimits(I2cMode mode)
{
    // What the I2C bus asks in standard, fast and fast plus mode.
    static constexpr std::array<I2cLimits, 3> Limits{{{4700, 4000, 250, 3450, 1000, 300, 100e3},
                                                      {1300, 600, 100, 900, 300, 300, 400e3},
                                                      {500, 260, 50, 450, 120, 120, 1000e3}}};
    return Limits[static_cast<size_t>(mode)];
}

double Get_tSUDat(I2cMode mode)
{
    return i2cLimits(mode).dataSetup;
}

std::uint32_t I2cTiming::registerValue() const
{
    return static_cast<std::uint32_t>(div) << 24 | static_cast<std::uint32_t>(scld) << 20 |
           static_cast<std::uint32_t>(sdad) << 16 | static_cast<std::uint32_t>(sclh) << 8 |
           static_cast<std::uint32_t>(scll);
}

I2cTimes i2cTimes(const I2cRequest &request, const I2cTiming &timing)
{
    const double clock = clockNs(request);
    const double step = (timing.div + 1) * clock;
    I2cTimes times{};
    times.low = (timing.scll + 1) * step + detection(request);
    times.high = (timing.sclh + 1) * step + detection(request);
    times.period = times.low + times.high + request.riseTime + request.fallTime;
    times.dataSetup = (timing.scld + 1) * step - request.riseTime;
    times.dataHold = timing.sdad * step + request.riseTime + (request.analogFilter ? AnalogFilterMax : 0) +
                     (request.digitalFilter + 4) * clock;
    return times;
}

bool keepsI2cLimits(const I2cRequest &request, const I2cTiming &timing)
{
    const I2cLimits &limits = i2cLimits(request.mode);
    const I2cTimes times = i2cTimes(request, timing);
    const double step = (timing.div + 1) * clockNs(request);
    const double leastHold = request.fallTime - (request.analogFilter ? AnalogFilterMin : 0) -
                             (request.digitalFilter + 3) * clockNs(request);
    constexpr double Rounding = 1e-6;
    return times.low >= limits.low - Rounding && times.high >= limits.high - Rounding &&
           times.dataSetup >= limits.dataSetup - Rounding && timing.sdad * step >= leastHold - Rounding &&
           times.dataHold <= limits.dataHold + Rounding && 1e9 / times.period <= request.speedHz * (1 + 1e-9);
}

I2cAnswer solveI2cTiming(const I2cRequest &request)
{
    const I2cLimits &limits = i2cLimits(request.mode);
    I2cAnswer answer;
    const auto fail = [&answer](I2cLimit limit) {
        answer.failing = limit;
        return answer;
    };
    if (!(request.clockHz > 0) || !(request.speedHz > 0))
        return fail(I2cLimit::Clock);
    if (request.riseTime > limits.maxRise)
        return fail(I2cLimit::RiseTime);
    if (request.fallTime > limits.maxFall)
        return fail(I2cLimit::FallTime);
    if (request.speedHz > limits.maxSpeedHz) {
        answer.nearestSpeedHz = limits.maxSpeedHz;
        return fail(I2cLimit::TooFast);
    }

    const double clock = clockNs(request);
    const double edges = request.riseTime + request.fallTime + 2 * detection(request);
    const double wanted = 1e9 / request.speedHz;
    I2cLimit dataLimit = I2cLimit::None;
    double longest = 0;
    double bestPeriod = 0;
    for (int div = 0; div < 256; ++div) {
        const double step = (div + 1) * clock;
        const std::optional<DataFields> data = dataFields(request, step, dataLimit);
        if (!data)
            continue;
        const auto leastSteps = [&](double time) {
            return std::max(1.0, std::ceil((time - detection(request)) / step - 1e-9));
        };
        const double low = leastSteps(limits.low);
        const double high = leastSteps(limits.high);
        if (low > 256 || high > 256)
            continue;
        longest = std::max(longest, 512 * step + edges);
        const double steps = std::max(low + high, std::ceil((wanted - edges) / step - 1e-9));
        if (steps > 512)
            continue;
        const double period = steps * step + edges;
        if (answer.timing && period >= bestPeriod)
            continue;
        // What is left over goes to both in the ratio of their least times.
        const double extra = steps - low - high;
        const double toLow = std::floor(extra * limits.low / (limits.low + limits.high));
        const double scll = std::clamp(low + toLow, std::max(low, steps - 256), std::min(256.0, steps - high));
        bestPeriod = period;
        answer.timing = I2cTiming{
            div, data->scld, data->sdad, static_cast<int>(steps - scll) - 1, static_cast<int>(scll) - 1, 1e9 / period};
    }
    if (answer.timing)
        return answer;
    if (longest > 0) {
        answer.nearestSpeedHz = 1e9 / longest;
        return fail(I2cLimit::TooSlow);
    }
    return fail(dataLimit == I2cLimit::None ? I2cLimit::Clock : dataLimit);
}

int classicI2cLowestHz(double clockHz)
{
    return static_cast<int>(std::lround(clockHz / 131072.0));
}

double classicI2cSpeedHz(double clockHz, double wantedHz, int parts)
{
    return wantedHz > 0 ? clockHz / (parts * std::max(1.0, std::ceil(clockHz / (parts * wantedHz)))) : 0;
}

double i2cTimeoutMs(double clockHz, int registerValue, bool idle)
{
    return clockHz > 0 ? (registerValue + 1) * (idle ? 4.0 : 2048.0) / clockHz * 1000.0 : 0;
}

} // namespace ChipLoom
