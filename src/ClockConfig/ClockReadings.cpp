#include "ClockConfig/ClockReadings.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

struct BranchRow
{
    ClockBranch branch;
    const char *name;
    bool (*exists)(const ClockSeries &);
};

constexpr auto Always = [](const ClockSeries &) { return true; };

constexpr std::array<BranchRow, 24> Branches{{
    {ClockBranch::Lick, "LICK", Always},
    {ClockBranch::Rtc, "RTC", Always},
    {ClockBranch::Pll, "PLL", Always},
    {ClockBranch::Sclk, "SCLK", Always},
    {ClockBranch::Ahb, "AHB", Always},
    {ClockBranch::SysTick, "SysTick", Always},
    {ClockBranch::Apb1, "APB1", Always},
    {ClockBranch::Apb1Timer, "APB1 timers", Always},
    {ClockBranch::Apb2, "APB2", Always},
    {ClockBranch::Apb2Timer, "APB2 timers", Always},
    {ClockBranch::Apb3, "APB3", [](const ClockSeries &s) { return s.apb3Max > 0; }},
    {ClockBranch::Adc, "ADC", Always},
    {ClockBranch::Usb, "USB", [](const ClockSeries &s) { return s.hasUsb(); }},
    {ClockBranch::I2sf5, "I2SF5", [](const ClockSeries &s) { return s.i2sf5; }},
    {ClockBranch::Usart1, "USART1", [](const ClockSeries &s) { return s.usartSources >= 1; }},
    {ClockBranch::Usart2, "USART2", [](const ClockSeries &s) { return s.usartSources >= 2; }},
    {ClockBranch::Usart3, "USART3", [](const ClockSeries &s) { return s.usartSources >= 3; }},
    {ClockBranch::I2c1, "I2C1", [](const ClockSeries &s) { return s.i2c1Source; }},
    {ClockBranch::Can1, "CAN1", [](const ClockSeries &s) { return s.canSources >= 1; }},
    {ClockBranch::Can2, "CAN2", [](const ClockSeries &s) { return s.canSources >= 2; }},
    {ClockBranch::Can3, "CAN3", [](const ClockSeries &s) { return s.canSources >= 3; }},
    {ClockBranch::Clkout, "CLKOUT", [](const ClockSeries &s) { return s.clkout != ClkoutForm::TwoOutputs; }},
    {ClockBranch::Clkout1, "CLKOUT1", [](const ClockSeries &s) { return s.clkout == ClkoutForm::TwoOutputs; }},
    {ClockBranch::Clkout2, "CLKOUT2", [](const ClockSeries &s) { return s.clkout == ClkoutForm::TwoOutputs; }},
}};

constexpr double Hick48 = 48.0;
constexpr double Hick8 = 8.0;

double usartClock(const ZV32ConfigCLK &clock, USART_CLOCK_SOURCE source, double pclk)
{
    switch (source) {
    case USART_CLOCK_SOURCE_PCLK:
        return pclk;
    case USART_CLOCK_SOURCE_SCLK:
        return clock.Get_SYSCLKValue();
    case USART_CLOCK_SOURCE_HICK48:
        return Hick48;
    case USART_CLOCK_SOURCE_LEXT:
        return clock.Get_LEXT_Value() / 1000.0;
    case USART_CLOCK_SOURCE_HICK:
        return Hick8;
    }
    return 0.0;
}

double i2c1Clock(const ZV32ConfigCLK &clock)
{
    switch (clock.Get_I2C1_ClockSource()) {
    case I2C1_CLOCK_SOURCE_PCLK:
        return clock.Get_APB1CLKValue();
    case I2C1_CLOCK_SOURCE_SCLK:
        return clock.Get_SYSCLKValue();
    case I2C1_CLOCK_SOURCE_HICK48:
        return Hick48;
    case I2C1_CLOCK_SOURCE_HICK:
        return Hick8;
    }
    return 0.0;
}

double canClock(const ZV32ConfigCLK &clock, CAN_CLOCK_SOURCE source)
{
    switch (source) {
    case CAN_CLOCK_SOURCE_HEXT:
        return clock.Get_HEXT_Value();
    case CAN_CLOCK_SOURCE_PLL:
        return clock.Get_PLLCLKValue();
    case CAN_CLOCK_SOURCE_PCLK:
        return clock.Get_APB1CLKValue();
    }
    return 0.0;
}

double i2sf5Clock(const ZV32ConfigCLK &clock, double external)
{
    switch (clock.Get_I2SF5_ClockSource()) {
    case I2SF5_CLOCK_SOURCE_PLLP:
        return clock.Get_PLLCLKValue();
    case I2SF5_CLOCK_SOURCE_SCLK:
        return clock.Get_SYSCLKValue();
    case I2SF5_CLOCK_SOURCE_HICK:
        return clock.hickOutputValue();
    case I2SF5_CLOCK_SOURCE_EXTERNAL:
        return external;
    }
    return 0.0;
}

double adcClock(const ZV32ConfigCLK &clock)
{
    // Without a divider or a source here the converter divides AHB by itself.
    if (!clock.series().adcSource)
        return clock.series().adcDivider ? clock.Get_ADCCLK_Value() : clock.Get_AHBCLKValue();
    return clock.Get_ADC_ClockSource() == ADC_CLOCK_SOURCE_PLLCLK ? clock.Get_PLLCLKValue() : clock.Get_AHBCLKValue();
}

double frequency(const ZV32ConfigCLK &clock, ClockBranch branch, double i2sf5External)
{
    switch (branch) {
    case ClockBranch::None:
        return 0.0;
    case ClockBranch::Pll:
        return clock.Get_PLLCLKValue();
    case ClockBranch::Sclk:
        return clock.Get_SYSCLKValue();
    case ClockBranch::Ahb:
        return clock.Get_AHBCLKValue();
    case ClockBranch::Apb1:
        return clock.Get_APB1CLKValue();
    case ClockBranch::Apb1Timer:
        return clock.Get_APB1TMRCLK_Value();
    case ClockBranch::Apb2:
        return clock.Get_APB2CLKValue();
    case ClockBranch::Apb2Timer:
        return clock.Get_APB2TMRCLK_Value();
    case ClockBranch::Apb3:
        return clock.Get_APB3CLKValue();
    case ClockBranch::SysTick:
        return clock.Get_AHBCLKValue() / clock.Get_SysticDIV();
    case ClockBranch::Adc:
        return adcClock(clock);
    case ClockBranch::Usb:
        return clock.Get_USBCLKValue();
    case ClockBranch::Rtc:
        return clock.Get_RTCCLK_Value();
    case ClockBranch::Hext:
        return clock.Get_HEXT_Enable() ? clock.Get_HEXT_Value() : 0.0;
    case ClockBranch::Lick:
        return clock.Get_LICK_Value() / 1000.0;
    case ClockBranch::I2sf5:
        return i2sf5Clock(clock, i2sf5External);
    case ClockBranch::Usart1:
        return usartClock(clock, clock.Get_USART1_ClockSource(), clock.Get_APB2CLKValue());
    case ClockBranch::Usart2:
        return usartClock(clock, clock.Get_USART2_ClockSource(), clock.Get_APB1CLKValue());
    case ClockBranch::Usart3:
        return usartClock(clock, clock.Get_USART3_ClockSource(), clock.Get_APB1CLKValue());
    case ClockBranch::I2c1:
        return i2c1Clock(clock);
    case ClockBranch::Can1:
        return canClock(clock, clock.Get_CAN1_ClockSource());
    case ClockBranch::Can2:
        return canClock(clock, clock.Get_CAN2_ClockSource());
    case ClockBranch::Can3:
        return canClock(clock, clock.Get_CAN3_ClockSource());
    case ClockBranch::Clkout: {
        const int divider = clock.series().clkout == ClkoutForm::OneDivider
                                ? clock.Get_CLKOUT_Div()
                                : clock.Get_CLKOUT_Div1() * clock.Get_CLKOUT_Div2();
        return clockOutputSource(clock, branch) / divider;
    }
    case ClockBranch::Clkout1:
        return clockOutputSource(clock, branch) / (clock.Get_CLKOUT1_Div1() * clock.Get_CLKOUT1_Div2());
    case ClockBranch::Clkout2:
        return clockOutputSource(clock, branch) / (clock.Get_CLKOUT2_Div1() * clock.Get_CLKOUT2_Div2());
    }
    return 0.0;
}

} // namespace

bool ClockReading::inRange() const
{
    return branch == ClockBranch::Usb ? mhz == USB_OUTPUT_CLK_VALUE : limits.contains(mhz);
}

std::vector<ClockBranch> clockBranches(const ClockSeries &series)
{
    std::vector<ClockBranch> branches;
    for (const BranchRow &row : Branches) {
        if (row.exists(series))
            branches.push_back(row.branch);
    }
    return branches;
}

const char *clockBranchName(ClockBranch branch)
{
    const auto row =
        std::find_if(Branches.begin(), Branches.end(), [&](const BranchRow &entry) { return entry.branch == branch; });
    return row == Branches.end() ? "" : row->name;
}

ClockLimits clockLimits(const ClockSeries &s, ClockBranch branch)
{
    switch (branch) {
    case ClockBranch::Sclk:
    case ClockBranch::Ahb:
    case ClockBranch::Apb1Timer:
    case ClockBranch::Apb2Timer:
        return {0, double(s.sclkMax)};
    case ClockBranch::Apb1:
        return {0, double(s.apb1Max)};
    case ClockBranch::Apb2:
        return {0, double(s.apb2Max)};
    case ClockBranch::Apb3:
        return {0, double(s.apb3Max)};
    case ClockBranch::Pll:
        // Where SCLK is half of the PLL clock the limit is SCLK's, so the PLL itself may run twice as fast.
        return {double(s.pllMin), double(s.halfPllIsSclk ? 2 * s.pllMax : s.pllMax)};
    case ClockBranch::SysTick:
        return {0, double(s.systickMax > 0 ? s.systickMax : s.sclkMax)};
    case ClockBranch::Adc:
        return {0, double(s.adcMax)};
    case ClockBranch::I2sf5:
        return {0, double(s.sclkMax)};
    case ClockBranch::Usb:
        return {USB_OUTPUT_CLK_VALUE, USB_OUTPUT_CLK_VALUE};
    default:
        return {};
    }
}

ClockReading clockReading(const ZV32ConfigCLK &clock, ClockBranch branch, double i2sf5External)
{
    return {branch, frequency(clock, branch, i2sf5External), clockLimits(clock.series(), branch)};
}

double clockOutputSource(const ZV32ConfigCLK &clock, ClockBranch output)
{
    const double lick = clock.Get_LICK_Value() / 1000.0;
    const double lext = clock.Get_LEXT_Value() / 1000.0;
    const double usb = clock.Get_TO_USB_Switch() ? clock.Get_USBCLKValue() : 0.0;
    if (output == ClockBranch::Clkout1) {
        switch (clock.Get_CLKOUT1()) {
        case CLKOUT1_HICK:
            return clock.hickOutputValue();
        case CLKOUT1_LEXT:
            return lext;
        case CLKOUT1_HEXT:
            return clock.Get_HEXT_Value();
        case CLKOUT1_PLL:
            return clock.Get_PLLCLKValue();
        }
        return 0.0;
    }
    if (output == ClockBranch::Clkout2) {
        switch (clock.Get_CLKOUT2()) {
        case CLKOUT2_SCLK:
            return clock.Get_SYSCLKValue();
        case CLKOUT2_HEXT:
            return clock.Get_HEXT_Value();
        case CLKOUT2_PLL:
            return clock.Get_PLLCLKValue();
        case CLKOUT2_USB:
            return usb;
        case CLKOUT2_HICK:
            return clock.hickOutputValue();
        case CLKOUT2_ADCCLK:
            return clock.Get_ADCCLK_Value();
        case CLKOUT2_LICK:
            return lick;
        case CLKOUT2_LEXT:
            return lext;
        }
        return 0.0;
    }
    switch (clock.Get_CLKOUT()) {
    case CLKOUT_NOCLK:
        return 0.0;
    case CLKOUT_LICK:
        return lick;
    case CLKOUT_LEXT:
        return lext;
    case CLKOUT_HICK:
        return clock.hickOutputValue();
    case CLKOUT_HEXT:
        return clock.Get_HEXT_Value();
    case CLKOUT_SCLK:
        return clock.Get_SYSCLKValue();
    case CLKOUT_USB:
    case CLKOUT_USBFS:
        return usb;
    case CLKOUT_ADCCLK:
        return clock.Get_ADCCLK_Value();
    case CLKOUT_PLLDIV2:
        return clock.Get_PLLCLKValue() / 2;
    case CLKOUT_PLLDIV4:
        return clock.Get_PLLCLKValue() / 4;
    case CLKOUT_PLL:
        return clock.Get_PLLCLKValue();
    }
    return 0.0;
}

} // namespace ChipLoom
