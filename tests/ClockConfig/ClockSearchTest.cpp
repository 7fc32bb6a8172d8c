#include "ClockConfig/ClockFields.h"
#include "ClockConfig/ClockSolver.h"
#include "ClockConfig/LiteralSearch.h"
#include "Model/SeriesHelpers.h"

#include <gtest/gtest.h>

#include <set>

using namespace ChipLoom;

namespace {

ZV32ConfigCLK started(ZV32MCUSERIALS series)
{
    ZV32ConfigCLK clock(series);
    clock.InitSeriesValues();
    return clock;
}

void expectSame(const ZV32ConfigCLK &fast, const LiteralSearch &literal)
{
    const bool same = fast.Get_PLL_MS() == literal.ms && fast.Get_PLL_NS() == literal.ns &&
                      fast.Get_PLL_FR() == literal.fr && fast.Get_PLL_FP() == literal.fp &&
                      fast.Get_PLL_FU() == literal.fu && fast.Get_PLL_MUL() == literal.mul &&
                      fast.Get_USBDIV() == literal.usbdiv && fast.Get_PLLCLKValue() == literal.pll &&
                      fast.Get_SYSCLKValue() == literal.sclk && fast.Get_USBCLKValue() == literal.usb;
    EXPECT_TRUE(same) << "input " << fast.GetPllInPutValue() << " literal MS " << literal.ms << " NS " << literal.ns
                      << " FR " << literal.fr << " FP " << literal.fp << " FU " << literal.fu << " MUL " << literal.mul
                      << " SCLK " << literal.sclk << " USB " << literal.usb << "; fast MS " << fast.Get_PLL_MS()
                      << " NS " << fast.Get_PLL_NS() << " FR " << fast.Get_PLL_FR() << " FP " << fast.Get_PLL_FP()
                      << " FU " << fast.Get_PLL_FU() << " MUL " << fast.Get_PLL_MUL() << " SCLK "
                      << fast.Get_SYSCLKValue() << " USB " << fast.Get_USBCLKValue();
}

/// The PLL inputs to try: HICK, and crystals that are exact, odd, at the limits and out of every range.
std::vector<ZV32ConfigCLK> inputs(const ClockSeries &series)
{
    std::vector<ZV32ConfigCLK> clocks{started(series.code)};
    for (const double hext : {0.5, 1.0, 4.0, 7.3728, 8.0, 11.0592, 12.0, 14.31818, 16.0, 24.576, 25.0, 300.0}) {
        ZV32ConfigCLK clock = started(series.code);
        clock.Set_PLLRC(PLLRC_HEXT);
        clock.Set_HEXT_Value(hext);
        clocks.push_back(clock);
    }
    if (series.hickPllExtraDivider) {
        clocks.push_back(started(series.code));
        clocks.back().Set_PLLHICKDIV(PLLHICK_DIV);
    }
    return clocks;
}

std::vector<PLLCONFIGMODE> modes(const ClockSeries &series)
{
    if (series.pll == PllForm::Table)
        return {PLLMODE_NORMAL};
    if (series.pll == PllForm::Dual)
        return {PLLMODE_NORMAL, PLLMODE_FLEXIBLE};
    return {PLLMODE_FLEXIBLE};
}

class EverySeries : public testing::TestWithParam<ZV32MCUSERIALS>
{
};

TEST_P(EverySeries, SolvesATargetAsTheFullLoopsDo)
{
    const ClockSeries &series = *clockSeries(GetParam());
    std::vector<double> targets{0.0, 1.0, 3.99, 1000.0, double(series.sclkMax), series.sclkMax - 0.5};
    for (int i = 0; i < 24; ++i)
        targets.push_back(4.0 + i * (series.sclkMax - 4.0) / 23.3);
    for (double round = 24; round <= series.sclkMax; round += 24)
        targets.push_back(round);
    for (const ZV32ConfigCLK &input : inputs(series)) {
        for (const PLLCONFIGMODE mode : modes(series)) {
            for (const bool usb : {false, true}) {
                if (usb && !series.hasUsb())
                    continue;
                for (const double target : targets) {
                    ZV32ConfigCLK fast = input;
                    fast.Set_ConfigMode(mode);
                    fast.Set_TO_USB_Switch(usb);
                    fast.Set_HickToUsb(HICK_TO_USB_DISABLE);
                    fast.Set_SYSCLKValue(target);
                    LiteralSearch literal(fast);
                    literal.fromSysclk();
                    fast.CalculateParam_From_SYSCLK();
                    expectSame(fast, literal);
                    if (testing::Test::HasFailure()) {
                        ADD_FAILURE() << "target " << target << " mode " << mode << " usb " << usb;
                        return;
                    }
                }
            }
        }
    }
}

TEST_P(EverySeries, SolvesUsbAsTheFullLoopsDo)
{
    const ClockSeries &series = *clockSeries(GetParam());
    if (!series.hasUsb())
        return;
    const ClockField field = series.usb == UsbForm::VcoDivider ? ClockField::PllFu : ClockField::UsbDiv;
    for (const ZV32ConfigCLK &input : inputs(series)) {
        for (const PLLCONFIGMODE mode : modes(series)) {
            for (const SYSCLKSelect select : {SYSCLK_PLL, SYSCLK_HICK}) {
                for (const double divider : series.usbDividers) {
                    ZV32ConfigCLK fast = input;
                    fast.Set_ConfigMode(mode);
                    fast.Set_TO_USB_Switch(true);
                    fast.Set_HickToUsb(HICK_TO_USB_DISABLE);
                    fast.Set_SYSCLKSelect(select);
                    fast.Set_SYSCLKValue(select == SYSCLK_PLL ? 0.7 * series.sclkMax : 8.0);
                    setClockFieldValue(fast, field, divider);
                    LiteralSearch literal(fast);
                    literal.fromUsbclk();
                    fast.CalculateParam_From_USBCLK();
                    expectSame(fast, literal);
                    if (testing::Test::HasFailure()) {
                        ADD_FAILURE() << "divider " << divider << " mode " << mode << " select " << select;
                        return;
                    }
                }
            }
        }
    }
}

std::vector<ZV32MCUSERIALS> allCodes()
{
    std::vector<ZV32MCUSERIALS> codes;
    for (const ClockSeries &series : allClockSeries())
        codes.push_back(series.code);
    return codes;
}

INSTANTIATE_TEST_SUITE_P(Clock, EverySeries, testing::ValuesIn(allCodes()),
                         [](const auto &info) { return ZV32MCUSERIALS_To_MCUSerialString(info.param).toStdString(); });

struct ToldRow
{
    ZV32MCUSERIALS series;
    double target;
    int ms, ns, divider;
};

TEST(ClockSearch, ToldSolutions)
{
    const ToldRow rows[] = {
        {ZV32F435, 144, 1, 144, 8}, // FR 32 and 16 cannot reach it, FR 4 comes too late
        {ZV32F423, 150, 1, 75, 2},  // the PLL runs at 300
        {ZV32F402, 216, 1, 108, 4},
        {ZV32M412, 500, 1, 90, 4}, // clipped to the ceiling
    };
    for (const ToldRow &row : rows) {
        ZV32ConfigCLK clock = started(row.series);
        clock.Set_SYSCLKValue(row.target);
        clock.CalculateParam_From_SYSCLK();
        EXPECT_EQ(clock.Get_PLL_MS(), row.ms);
        EXPECT_EQ(clock.Get_PLL_NS(), row.ns);
        EXPECT_EQ(clock.series().hasFp() ? clock.Get_PLL_FP() : clock.Get_PLL_FR(), row.divider);
    }
}

struct CheckRow
{
    int ms, ns;
    bool msValid;
    int msSuggestion;
    bool nsValid;
    int nsSuggestion;
};

TEST(ClockSearch, TypedDividersAreCheckedAndCorrected)
{
    // PLL input 8 MHz: MS 1 to 4; VCO 500 to 1200.
    const CheckRow rows[] = {
        {1, 63, true, 1, true, 31},    {1, 62, true, 1, false, 63},   {4, 500, true, 1, true, 31},
        {5, 31, false, 4, false, 313}, {1, 151, true, 1, false, 150}, {4, 249, true, 1, false, 250},
    };
    const ZV32ConfigCLK clock = started(ZV32F435);
    for (const CheckRow &row : rows) {
        int suggestion = 0;
        EXPECT_EQ(clock.PLL_MS_Valid_Check(row.ms, suggestion), row.msValid) << row.ms;
        EXPECT_EQ(suggestion, row.msSuggestion) << row.ms;
        EXPECT_EQ(clock.PLL_NS_Valid_Check(row.ns, row.ms, suggestion), row.nsValid) << row.ns;
        EXPECT_EQ(suggestion, row.nsSuggestion) << row.ns;
    }
    ZV32ConfigCLK fast = started(ZV32F435);
    fast.Set_PLLRC(PLLRC_HEXT);
    fast.Set_HEXT_Value(25.0);
    int suggestion = 0;
    EXPECT_FALSE(fast.PLL_MS_Valid_Check(1, suggestion));
    EXPECT_EQ(suggestion, 2);
}

TEST_P(EverySeries, ListsTheSolutionOfATypedSclkFirst)
{
    const ClockSeries &series = *clockSeries(GetParam());
    for (const double target : {20.0, 37.5, 66.6, 72.0}) {
        ZV32ConfigCLK typed = started(series.code);
        typed.Set_SYSCLKValue(target);
        typed.CalculateParam_From_SYSCLK();
        ZV32ConfigCLK start = started(series.code);
        const std::vector<ClockSolution> solutions = solveClock(start, target, 6);
        ASSERT_FALSE(solutions.empty());
        const double told = clockErrorPpm(typed.Get_SYSCLKValue(), target);
        if (solutions.front().clock.Get_ConfigMode() == typed.Get_ConfigMode()) {
            EXPECT_NEAR(solutions.front().clock.Get_SYSCLKValue(), typed.Get_SYSCLKValue(), 1e-9) << target;
            EXPECT_EQ(solutions.front().clock.Get_PLL_NS(), typed.Get_PLL_NS()) << target;
        } else {
            EXPECT_LT(std::abs(solutions.front().sclkPpm), std::abs(told)) << target;
        }
        std::set<double> frequencies;
        for (const ClockSolution &solution : solutions) {
            EXPECT_TRUE(frequencies.insert(solution.clock.Get_SYSCLKValue()).second);
            EXPECT_GE(std::abs(solution.sclkPpm), std::abs(solutions.front().sclkPpm));
            EXPECT_LE(solution.clock.Get_SYSCLKValue(), series.sclkMax);
        }
    }
}

TEST(ClockSolver, UsbComesFirstWhileItIsOnThePll)
{
    ZV32ConfigCLK clock = started(ZV32F435);
    clock.Set_TO_USB_Switch(true);
    clock.Set_HickToUsb(HICK_TO_USB_DISABLE);
    const std::vector<ClockSolution> solutions = solveClock(clock, 100, 4);
    ASSERT_EQ(solutions.size(), 4u);
    EXPECT_EQ(solutions[0].usbPpm, 0.0);
    EXPECT_EQ(solutions[0].clock.Get_SYSCLKValue(), 96.0);
    EXPECT_EQ(solutions[0].clock.Get_USBDIV(), 2.0);
    for (const ClockSolution &solution : solutions)
        EXPECT_LE(std::abs(solution.usbPpm), UsbTolerancePpm);

    // From the VCO both can be met, with another output divider than without USB.
    ZV32ConfigCLK vco = started(ZV32F455);
    vco.Set_TO_USB_Switch(true);
    vco.Set_HickToUsb(HICK_TO_USB_DISABLE);
    const std::vector<ClockSolution> both = solveClock(vco, 192, 1);
    ASSERT_EQ(both.size(), 1u);
    EXPECT_EQ(both[0].sclkPpm, 0.0);
    EXPECT_EQ(both[0].usbPpm, 0.0);

    EXPECT_TRUE(solveClock(clock, 0, 4).empty());
}

} // namespace
