#include "Design/Calculators/CanBitTiming.h"
#include "Design/Calculators/I2cTiming.h"
#include "Design/Calculators/SerialClocks.h"
#include "Design/Calculators/TimerTiming.h"
#include "Design/Calculators/WatchdogTiming.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>
#include <tuple>

namespace ChipLoom {

namespace {

// ---- CAN ----

// Every classic timing at one sample point, by trying all registers.
std::set<std::tuple<int, unsigned, unsigned>> allCanTimings(const CanRequest &request, double samplePoint)
{
    std::set<std::tuple<int, unsigned, unsigned>> found;
    for (unsigned bs1 = 1; bs1 <= 16; ++bs1) {
        for (unsigned bs2 = 1; bs2 <= 8; ++bs2) {
            const double length = 1.0 + bs1 + bs2;
            if (length < 8 || length > 25 || std::abs((1.0 + bs1) / length * 100 - samplePoint) > 1e-5)
                continue;
            for (int div = 1; div <= 4096; ++div) {
                const double rate = request.clockKHz / (length * div);
                // The nearest divider stands for the pair.
                const bool nearest = std::lround(request.clockKHz / (length * request.bitRate)) == div;
                if (nearest && std::abs(rate / request.bitRate - 1) <= request.tolerance)
                    found.insert({div, bs1, bs2});
            }
        }
    }
    return found;
}

TEST(CanBitTimingTest, FindsWhatTryingAllRegistersFinds)
{
    int hits = 0;
    for (const double clock : {8000.0, 16000.0, 36000.0, 48000.0, 60000.0, 72000.0, 96000.0, 100000.0, 120000.0}) {
        for (const double rate : {10.0, 33.3, 100.0, 125.0, 250.0, 500.0, 666.0, 800.0, 1000.0}) {
            CanRequest request{.clockKHz = clock, .bitRate = rate, .samplePoint = canSamplePointFor(rate)};
            const QList<CANValue> results = CAN_CalcResults(request);
            if (results.isEmpty()) {
                EXPECT_TRUE(allCanTimings(request, request.samplePoint).empty()) << clock << " " << rate;
                continue;
            }
            std::set<std::tuple<int, unsigned, unsigned>> found;
            for (const CANValue &value : results) {
                found.insert({value.nDiv, value.uiBS1, value.uiBS2});
                EXPECT_DOUBLE_EQ(value.dSamplePoint, results.first().dSamplePoint);
                EXPECT_EQ(value.uiBitDuration, value.uiBS1 + value.uiBS2 + 1);
            }
            EXPECT_EQ(found, allCanTimings(request, results.first().dSamplePoint)) << clock << " " << rate;
            hits += results.size();
        }
    }
    EXPECT_GT(hits, 60);
}

TEST(CanBitTimingTest, KeepsTheRatioOfTheUsualSamplePointAndMovesOutHighSideFirst)
{
    for (const CANValue &value : CAN_CalcResults({.clockKHz = 60000, .bitRate = 500, .samplePoint = 87.5}))
        EXPECT_EQ(value.uiBS1 + 1, 7 * value.uiBS2);
    // 79 % has no ratio; 80 % lies one percent above, 78 % one below.
    const QList<CANValue> moved = CAN_CalcResults({.clockKHz = 60000, .bitRate = 500, .samplePoint = 79});
    ASSERT_FALSE(moved.isEmpty());
    EXPECT_DOUBLE_EQ(moved.first().dSamplePoint, 80.0);
    EXPECT_TRUE(CAN_CalcResults({.clockKHz = 0, .bitRate = 500, .samplePoint = 87.5}).isEmpty());
    EXPECT_TRUE(CAN_CalcResults({.clockKHz = 1000, .bitRate = 1000, .samplePoint = 75}).isEmpty());
    const auto nearest = nearestCanTiming({.clockKHz = 1000, .bitRate = 1000, .samplePoint = 75});
    ASSERT_TRUE(nearest);
    EXPECT_DOUBLE_EQ(nearest->dBitRate, 125.0);
}

TEST(CanBitTimingTest, BoundsTheDividersOfAFlexibleDataRate)
{
    CanRequest request{
        .clockKHz = 80000, .bitRate = 500, .samplePoint = 80, .type = CAN_TYPE_NominalData, .phase = CALC_Type_Nominal};
    for (const CANValue &value : CAN_CalcResults(request)) {
        EXPECT_LE(value.nDiv, 2);
        EXPECT_EQ(value.uiBitDuration, value.uiBS1 + value.uiBS2);
        EXPECT_EQ(value.uiSJWMax, value.uiBS2);
    }
    EXPECT_FALSE(CAN_CalcResults(request).isEmpty());
    request.bitRate = 50; // needs a divider of 2 and 800 quanta
    EXPECT_TRUE(CAN_CalcResults(request).isEmpty());
}

// ---- I2C ----

TEST(I2cTimingTest, IsTheFastestThatNoLimitForbids)
{
    std::mt19937 random(7);
    const auto between = [&random](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    int solved = 0;
    for (int round = 0; round < 60; ++round) {
        const I2cMode mode = static_cast<I2cMode>(between(0, 2));
        const I2cLimits &limits = i2cLimits(mode);
        const I2cRequest request{.clockHz = between(4, 150) * 1e6,
                                 .mode = mode,
                                 .speedHz = limits.maxSpeedHz * between(3, 10) / 10.0,
                                 .riseTime = double(between(0, int(limits.maxRise))),
                                 .fallTime = double(between(0, int(limits.maxFall))),
                                 .analogFilter = between(0, 1) == 1,
                                 .digitalFilter = between(0, 3)};
        const I2cAnswer answer = solveI2cTiming(request);
        // The oracle tries every divider with every sum of steps; the data fields only decide whether it counts.
        double best = 0;
        for (int div = 0; div < 256; ++div) {
            I2cTiming timing{.div = div};
            bool data = false;
            for (int fields = 0; fields < 256 && !data; ++fields) {
                timing = {.div = div, .scld = fields / 16, .sdad = fields % 16, .sclh = 255, .scll = 255};
                data = keepsI2cLimits(request, timing);
            }
            if (!data)
                continue;
            for (timing.scll = 0; timing.scll < 256; ++timing.scll) {
                for (timing.sclh = 0; timing.sclh < 256; ++timing.sclh) {
                    const double speed = 1e9 / i2cTimes(request, timing).period;
                    if (speed > best && keepsI2cLimits(request, timing))
                        best = speed;
                    else if (speed <= best)
                        break;
                }
            }
        }
        ASSERT_EQ(answer.timing.has_value(), best > 0) << round;
        if (!answer.timing)
            continue;
        ++solved;
        EXPECT_TRUE(keepsI2cLimits(request, *answer.timing)) << round;
        EXPECT_NEAR(answer.timing->speedHz, best, best * 1e-9) << round;
        EXPECT_NEAR(1e9 / i2cTimes(request, *answer.timing).period, answer.timing->speedHz, 1e-3);
    }
    EXPECT_GT(solved, 20);
}

TEST(I2cTimingTest, NamesTheLimitThatFails)
{
    I2cRequest request{.clockHz = 8e6, .mode = I2cMode::Standard, .speedHz = 100e3, .riseTime = 100, .fallTime = 50};
    EXPECT_EQ(solveI2cTiming(request).failing, I2cLimit::None);
    request.riseTime = 1001;
    EXPECT_EQ(solveI2cTiming(request).failing, I2cLimit::RiseTime);
    request.riseTime = 100;
    request.speedHz = 120e3;
    EXPECT_EQ(solveI2cTiming(request).failing, I2cLimit::TooFast);
    EXPECT_EQ(solveI2cTiming(request).nearestSpeedHz, 100e3);
    request.speedHz = 50;
    const I2cAnswer slow = solveI2cTiming(request);
    EXPECT_EQ(slow.failing, I2cLimit::TooSlow);
    request.speedHz = slow.nearestSpeedHz;
    EXPECT_TRUE(solveI2cTiming(request).timing);
    request = {.clockHz = 2e6, .mode = I2cMode::FastPlus, .speedHz = 1e6, .riseTime = 100, .fallTime = 50};
    EXPECT_EQ(solveI2cTiming(request).failing, I2cLimit::DataHold);
}

// ---- Serial ports ----

TEST(SerialClocksTest, NoDividerComesNearer)
{
    for (const double clock : {8e6, 36e6, 60e6, 120e6}) {
        for (const double rate : {1200.0, 9600.0, 115200.0, 921600.0, 3e6}) {
            double best = clock;
            for (int divider = 1; divider <= 100000; ++divider) {
                if (std::abs(clock / divider - rate) < std::abs(best - rate))
                    best = clock / divider;
            }
            EXPECT_NEAR(realBaudRate(clock, rate), best, 1e-6) << clock << " " << rate;
        }
        for (const double rate : {8e3, 11025.0, 44100.0, 48e3, 192e3}) {
            for (const int perSample : {256, 32, 64, 16}) {
                double best = 1e12;
                for (int div = 2; div <= 1023; ++div) {
                    for (int odd = 0; odd <= 1; ++odd) {
                        const double reached = clock / perSample / (2 * div + odd);
                        if (std::abs(reached - rate) < std::abs(best - rate))
                            best = reached;
                    }
                }
                const I2SDivider divider = i2sDivider(clock, rate, perSample);
                EXPECT_NEAR(divider.sampleRate, best, 1e-6) << clock << " " << rate << " " << perSample;
                EXPECT_NEAR(clock / perSample / (2 * divider.div + divider.odd), best, 1e-6);
            }
        }
    }
    EXPECT_EQ(i2sClocksPerSample(true, true, 16), 256);
    EXPECT_EQ(i2sClocksPerSample(false, true, 16), 16);
    EXPECT_EQ(i2sClocksPerSample(false, false, 16), 32);
}

// ---- Timers and watchdogs ----

TEST(TimerTimingTest, FindsTheNearestOverflowWithTheSmallestDivider)
{
    std::mt19937 random(11);
    for (int round = 0; round < 40; ++round) {
        const double clock = std::uniform_real_distribution(1e3, 1e5)(random);
        const double wanted = std::exp(std::uniform_real_distribution(-2.0, 9.0)(random));
        const bool twoWay = round % 2 == 1;
        constexpr std::uint32_t Max = 255;
        const auto division = timerDivisionFor(clock, wanted, Max, Max, twoWay);
        ASSERT_TRUE(division);
        TimerDivision best;
        double error = 1e30;
        for (std::uint32_t divider = 0; divider <= Max; ++divider) {
            for (std::uint32_t period = twoWay ? 1 : 0; period <= Max; ++period) {
                const double hz = timerOverflowHz(clock, divider, period, twoWay);
                if (std::abs(hz - wanted) < error) {
                    error = std::abs(hz - wanted);
                    best = {divider, period, hz};
                }
            }
        }
        EXPECT_EQ(*division, best) << clock << " " << wanted << " " << twoWay;
    }
    const auto second = timerDivisionFor(120e6, 1, 65535, 65535, false);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->overflowHz, 1.0);
    EXPECT_EQ(timerDivisionFor(120e6, 0, 65535, 65535, false), std::nullopt);
    // Typed, put into registers and shown again, a reachable frequency is the same.
    const auto again = timerDivisionFor(120e6, second->overflowHz, 65535, 65535, false);
    EXPECT_EQ(*again, *second);
    EXPECT_EQ(timerDivisionFor(120e6, 1, 65535, 4294967295u, false)->divider, 0u);
}

TEST(TimerTimingTest, DeadTimeGrowsWithItsRegister)
{
    EXPECT_EQ(timerDeadTimeNs(0, 1, 100), 0.0);
    EXPECT_DOUBLE_EQ(timerDeadTimeNs(127, 1, 100), 1270.0);
    EXPECT_DOUBLE_EQ(timerDeadTimeNs(128, 1, 100), 1280.0);
    EXPECT_DOUBLE_EQ(timerDeadTimeNs(192, 2, 100), 32 * 8 * 20.0);
    EXPECT_DOUBLE_EQ(timerDeadTimeNs(255, 1, 100), 63 * 16 * 10.0);
    for (unsigned dtg = 1; dtg < 256; ++dtg)
        EXPECT_GT(timerDeadTimeNs(dtg, 1, 100), timerDeadTimeNs(dtg - 1, 1, 100)) << dtg;
    EXPECT_EQ(timerFilterHz(64e6, 2, QStringLiteral("1 2 32"), 2), std::optional(1e6));
    EXPECT_EQ(timerFilterHz(64e6, 2, QStringLiteral("1 2 32"), 3), std::nullopt);
}

TEST(WatchdogTimingTest, CountsToTheResetAndToTheWindow)
{
    EXPECT_DOUBLE_EQ(wdtTiming(40e3, 4, 4095, 4095).timeout, 409.6);
    EXPECT_DOUBLE_EQ(wdtTiming(40e3, 4, 4095, 4095).refreshNotAllowed, 0.0);
    const WatchdogTiming window = wwdtTiming(60e6, 4096, 0x7F, 0x50);
    EXPECT_DOUBLE_EQ(window.timeout, 64 * 4096 / 60e3);
    EXPECT_DOUBLE_EQ(window.refreshNotAllowed, (0x7F - 0x50) * 4096 / 60e3);
    EXPECT_DOUBLE_EQ(window.refreshWindow + window.refreshNotAllowed, window.timeout);
}

} // namespace

} // namespace ChipLoom
