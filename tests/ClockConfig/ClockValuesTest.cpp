#include "ClockConfig/ZV32ConfigCLK.h"
#include "Model/SeriesHelpers.h"

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

ZV32ConfigCLK started(ZV32MCUSERIALS series)
{
    ZV32ConfigCLK clock(series);
    clock.InitSeriesValues();
    return clock;
}

TEST(ClockSeries, EverySeriesButOneHasAPage)
{
    for (const QString &name : allSeriesNames()) {
        const ZV32MCUSERIALS code = MCUSerialString_To_ZV32MCUSERIALS(name);
        ASSERT_TRUE(clockSeries(code)) << name.toStdString();
        EXPECT_EQ(hasClockPage(code), code != ZV32F403) << name.toStdString();
    }
    EXPECT_EQ(allClockSeries().size(), 29u);
    EXPECT_FALSE(clockSeries(ZV32C421));
    EXPECT_EQ(ZV32ConfigCLK(ZV32C421).GetSYSCLKValidMaxValue(), 0);
}

struct StartRow
{
    ZV32MCUSERIALS series;
    double sclk;
    double apb1;
    double apb2;
    double apb3;
    double usbOnPll; // 0: no USB
};

TEST(ClockStart, ReachesTheToldFrequencies)
{
    const StartRow rows[] = {
        {ZV32F413, 200, 100, 100, 0, 50},  {ZV32F403A, 240, 120, 120, 0, 60}, {ZV32A403A, 200, 100, 100, 0, 50},
        {ZV32F407E, 312, 156, 156, 0, 48}, {ZV32WB415, 144, 72, 72, 0, 48},   {ZV32F421, 120, 120, 120, 0, 0},
        {ZV32F425, 96, 96, 96, 0, 48},     {ZV32F011, 80, 80, 80, 0, 0},      {ZV32F6221, 180, 180, 180, 90, 0},
        {ZV32A423, 150, 75, 150, 0, 50},   {ZV32F437, 288, 144, 144, 0, 48},  {ZV32F405, 216, 108, 216, 0, 48},
        {ZV32F457, 192, 192, 192, 48, 72}, {ZV32M416, 180, 180, 180, 45, 0},  {ZV32F408, 216, 216, 216, 108, 0},
    };
    for (const StartRow &row : rows) {
        SCOPED_TRACE(ZV32MCUSERIALS_To_MCUSerialString(row.series).toStdString());
        ZV32ConfigCLK clock = started(row.series);
        EXPECT_DOUBLE_EQ(clock.Get_SYSCLKValue(), row.sclk);
        EXPECT_DOUBLE_EQ(clock.Get_APB1CLKValue(), row.apb1);
        EXPECT_DOUBLE_EQ(clock.Get_APB2CLKValue(), row.apb2);
        if (row.apb3 > 0) {
            EXPECT_DOUBLE_EQ(clock.Get_APB3CLKValue(), row.apb3);
        }
        EXPECT_DOUBLE_EQ(clock.Get_APB1TMRCLK_Value(), row.apb1 < row.sclk ? 2 * row.apb1 : row.apb1);

        clock.Set_TO_USB_Switch(true);
        clock.Set_HickToUsb(HICK_TO_USB_DISABLE);
        EXPECT_EQ(clock.usbpll_isEnable(), row.usbOnPll > 0);
        clock.CalculateCLK();
        if (row.usbOnPll > 0) {
            EXPECT_DOUBLE_EQ(clock.Get_USBCLKValue(), row.usbOnPll);
        }
    }
}

TEST(ClockForward, AnApbDividerIsRaisedOnceAndNeverLowered)
{
    ZV32ConfigCLK clock = started(ZV32F435);
    EXPECT_EQ(clock.Get_APB1DIV(), 2);
    clock.Set_SYSCLKSelect(SYSCLK_HICK);
    clock.CalculateCLK();
    EXPECT_EQ(clock.Get_APB1DIV(), 2);
    EXPECT_DOUBLE_EQ(clock.Get_APB1CLKValue(), 4.0);
    EXPECT_DOUBLE_EQ(clock.Get_APB1TMRCLK_Value(), 8.0);

    ZV32ConfigCLK noRaise = started(ZV32F408);
    EXPECT_EQ(noRaise.Get_APB1DIV(), 1);
}

struct BoundsRow
{
    double input;
    int max;
};

TEST(ClockForward, MultiplierBoundsHaveGapsAndClamp)
{
    const BoundsRow rows[] = {{3.89, 0}, {3.9, 50},    {5.0, 50},   {5.1, 0},    {5.2, 33},   {6.25, 33},
                              {7.8, 0},  {7.8125, 25}, {8.33, 25},  {8.331, 16}, {12.5, 16},  {13.0, 0},
                              {15.6, 0}, {15.625, 12}, {20.83, 12}, {20.84, 8},  {31.255, 8}, {31.3, 0}};
    for (const BoundsRow &row : rows) {
        ZV32ConfigCLK clock(ZV32F421);
        clock.Set_PLL_MUL(60);
        clock.UpdatePLLMULMinMaxValue(row.input);
        EXPECT_EQ(clock.Get_PLL_MUL_Max(), row.max) << row.input;
        EXPECT_EQ(clock.Get_PLL_MUL_Min(), row.max == 0 ? 0 : 2) << row.input;
        EXPECT_EQ(clock.Get_PLL_MUL(), row.max) << row.input;
    }
    ZV32ConfigCLK table(ZV32F413);
    table.UpdatePLLMULMinMaxValue(5.1);
    EXPECT_EQ(table.Get_PLL_MUL_Max(), 64);
}

TEST(ClockForward, RegisterImage)
{
    ZV32ConfigCLK fr = started(ZV32F435); // MS 1, NS 144, FR 4 from HICK
    EXPECT_EQ(fr.Get_CRM_PLLCFG_Value(), "0x00022401");
    fr.Set_PLLRC(PLLRC_HEXT);
    EXPECT_EQ(fr.Get_CRM_PLLCFG_Value(), "0x00422401");

    ZV32ConfigCLK fu = started(ZV32F405); // MS 1, NS 108, FP 4, FU 18
    EXPECT_EQ(fu.Get_CRM_PLLCFG_Value(), "0x00521b01");
    fu.Set_TO_USB_Switch(true);
    fu.Set_HickToUsb(HICK_TO_USB_DISABLE);
    fu.Set_PLLRC(PLLRC_HEXT);
    EXPECT_EQ(fu.Get_CRM_PLLCFG_Value(), "0x60521b01");
    fu.Set_PLL_FU(12);
    fu.Set_PLL_FP(30);
    EXPECT_EQ(fu.Get_CRM_PLLCFG_Value(), "0x602f1b01");

    ZV32ConfigCLK fp = started(ZV32F406);
    fp.Set_PLLRC(PLLRC_HEXT);
    EXPECT_EQ(fp.Get_CRM_PLLCFG_Value(), "0x40021b01");
}

TEST(ClockUse, TheSourcesThatRun)
{
    ZV32ConfigCLK clock = started(ZV32F435);
    EXPECT_TRUE(clock.pll_isEnable());
    EXPECT_TRUE(clock.hick_isEnable());
    EXPECT_FALSE(clock.hext_isEnable());
    clock.Set_RTCSEL(RTCSEL_HEXT);
    EXPECT_TRUE(clock.hext_isEnable());
    clock.Set_RTCSEL(RTCSEL_LICK);
    clock.Set_SYSCLKSelect(SYSCLK_HEXT);
    EXPECT_FALSE(clock.pll_isEnable());
    EXPECT_FALSE(clock.hick_isEnable());

    clock.Set_CLKOUT2(CLKOUT2_PLL);
    EXPECT_FALSE(clock.pll_isEnable()) << "an output without a pin is not in use";
    clock.Set_CLKOUT2_PinSelect(CLKOUT2PIN_PC9);
    EXPECT_TRUE(clock.pll_isEnable());
    EXPECT_TRUE(clock.hick_isEnable());

    ZV32ConfigCLK can = started(ZV32F455);
    can.Set_SYSCLKSelect(SYSCLK_HICK);
    can.Set_CAN2_Switch(true);
    EXPECT_TRUE(can.pll_isEnable()) << "PCLK counts on this series";
    can.Set_CAN2_ClockSource(CAN_CLOCK_SOURCE_HEXT);
    EXPECT_FALSE(can.pll_isEnable());
    EXPECT_TRUE(can.hext_isEnable());
}

TEST(ClockBranches, FollowTheRow)
{
    EXPECT_EQ(clockBranchOf(*clockSeries(ZV32F435), "TMR13"), ClockBranch::Apb1Timer);
    EXPECT_EQ(clockBranchOf(*clockSeries(ZV32F435), "TMR20"), ClockBranch::Apb2Timer);
    EXPECT_EQ(clockBranchOf(*clockSeries(ZV32F435), "USART2"), ClockBranch::Apb1);
    EXPECT_EQ(clockBranchOf(*clockSeries(ZV32F423), "USART2"), ClockBranch::Usart2);
    EXPECT_EQ(clockBranchOf(*clockSeries(ZV32F435), "ADC1"), ClockBranch::Ahb);
    EXPECT_EQ(clockBranchOf(*clockSeries(ZV32F421), "ADC1"), ClockBranch::Adc);
    EXPECT_EQ(clockBranchOf(*clockSeries(ZV32F421), "I2C1"), ClockBranch::Apb1);
    EXPECT_EQ(clockBranchOf(*clockSeries(ZV32L021), "I2C1"), ClockBranch::I2c1);
    EXPECT_EQ(clockBranchOf(*clockSeries(ZV32F421), "Teapot"), ClockBranch::None);
}

} // namespace
