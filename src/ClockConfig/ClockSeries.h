#pragma once

#include "ClockConfig/ClockEnumerations.h"
#include "Model/Enumerations.h"

#include <QString>

#include <span>

namespace ChipLoom {

/// Series whose clock trees are drawn alike.
enum class ClockMap {
    F413,
    F415,
    F403A,
    F403E,
    F421,
    F425,
    L021,
    F422,
    F435,
    F423,
    M412,
    F402,
    F455,
    F406,
};

/// How the PLL makes its clock from its input.
enum class PllForm {
    Table, ///< a multiplier
    Dual,  ///< a multiplier or MS, NS and FR, by choice
    Fr,    ///< NS / (MS * FR)
    Fp,    ///< NS / (MS * FP)
};

/// Where the USB clock branches off the PLL.
enum class UsbForm {
    None,
    Divider,    ///< from the PLL clock by `m_USBDIV`
    VcoDivider, ///< from the VCO by `m_PLL_FU`
};

/// Which APB divider a too fast bus raises from 1 to 2 by itself.
enum class ApbRaise { None, BothAboveHalf, Apb1Above120 };

/// What recalculates when SCLK is not on the PLL and the PLL input, its dividers or the USB source change.
enum class OffPllSearch {
    Forward,         ///< frequencies from the fields
    UsbAlways,       ///< search the PLL fields for 48 MHz
    UsbIfInUse,      ///< the same while USB is in use, else forward
    UsbIfInUseOnPll, ///< the same while USB is in use and on the PLL, else forward
};

enum class ClkoutForm {
    OneDivider,  ///< one output, `m_CLKOUT_Div`
    TwoDividers, ///< one output, `m_CLKOUT_Div1` and `m_CLKOUT_Div2` in a row
    TwoOutputs,  ///< two outputs with two dividers each
};

/// A place of the tree that has a frequency: a bus or branch that clocks peripherals, a source, an output.
enum class ClockBranch {
    None,
    Hext, ///< the crystal itself, 0 while it is off
    Pll,
    Sclk,
    Ahb,
    Apb1,
    Apb1Timer,
    Apb2,
    Apb2Timer,
    Apb3,
    SysTick,
    Adc,
    Usb,
    Rtc,
    Lick,
    I2sf5,
    Usart1,
    Usart2,
    Usart3,
    I2c1,
    Can1,
    Can2,
    Can3,
    Clkout,
    Clkout1,
    Clkout2,
};

/// Instances such as "TMR2" to "TMR7": kind "TMR", first 2, last 7. A kind without numbers has `first` -1.
struct ClockedInstances
{
    const char *kind;
    int first;
    int last;
    ClockBranch branch;
};

/// All that distinguishes the clock tree of one series. Frequencies in MHz; 0 means that there is no such limit.
struct ClockSeries
{
    ZV32MCUSERIALS code;
    ClockMap map;
    PllForm pll;
    int sclkMax; ///< SCLK, AHB and the timers

    double hick = 48.0;
    bool hickToSclkFixed = false;     ///< HICK reaches SCLK as it stands
    int hickPllDivider = 12;          ///< HICK to PLL input
    bool hickPllExtraDivider = false; ///< `m_pllhick_div` halves once more
    bool directPllInput = false;      ///< no `m_pllhext_div` between HEXT and the PLL
    bool hextDividerBox = false;      ///< `m_hext_div` is a value of the design file
    bool multiplierBounds = false;    ///< the largest multiplier depends on the PLL input
    bool halfPllIsSclk = false;       ///< SCLK is half of the PLL clock
    double vcoMax = PLL_NS_CHECK_MAX_VALUE_OTHER;
    bool sclkHasMin = true;           ///< a typed SCLK below 4 MHz is refused
    bool sclkDividers = false;        ///< HEXT and HICK pass a divider on the way to SCLK
    bool oldSclkDividerNames = false; ///< those dividers are "hextdiv" and "hickdiv" in the design file

    ApbRaise apbRaise = ApbRaise::None;
    int apb1Max = 0;
    int apb2Max = 0;
    int apb3Max = 0; ///< 0: the series has no APB3
    int pllMax = 0;
    int pllMin = 0;
    int systickMax = 0; ///< 0 stands for `sclkMax`

    UsbForm usb = UsbForm::None;
    std::span<const double> usbDividers = {}; ///< as offered: `m_USBDIV` or `m_PLL_FU`
    int usbSearchMin = 1;                     ///< window in which a solved SCLK moves the divider
    int usbSearchMax = 4;
    OffPllSearch offPll = OffPllSearch::Forward;
    bool usbShowsPll = false; ///< the PLL counts as shown whenever USB is in use

    bool rtcDivider = false; ///< HEXT to RTC by `m_rtc_div`, else by 128
    bool bypassFlags = false;
    bool adcDivider = false;
    bool adcFromAhb = false; ///< the ADC divider takes AHB instead of APB2
    bool adcSource = false;
    bool adcBelowApb2 = false; ///< the ADC clock must lie below APB2
    int adcMax = 0;
    int usartSources = 0; ///< how many USARTs, from 1, have a source of their own
    bool i2c1Source = false;
    bool i2sf5 = false;
    int canSources = 0;           ///< how many CANs, from 1, have a source of their own
    bool canPclkNeedsPll = false; ///< PCLK as a CAN source counts as a use of the PLL

    ClkoutForm clkout = ClkoutForm::OneDivider;
    std::span<const int> clkoutSources = {}; ///< `CLKOUT` values as offered; empty with two outputs
    std::span<const int> clkoutPins = {};    ///< `CLKOUTPIN` values as offered; empty with two outputs
    bool clkoutPinStored = false;            ///< the pin is a value of the design file

    std::span<const ClockedInstances> instances = {};

    // Start values.
    double startHext = 8.0;
    int startMul = 0;
    int startNs = 192;
    int startOutputDivider = 8; ///< FR or FP
    double startUsbDivider = 1.0;
    bool startUsbFromHick = false;
    int startAdcDivider = 2;
    int startApb3Divider = 1;
    int startClkout = CLKOUT_NOCLK;
    int startCanSource = CAN_CLOCK_SOURCE_HEXT;

    bool hasUsb() const { return usb != UsbForm::None; }
    bool hasFp() const { return pll == PllForm::Fp; }
    bool hasMultiplier() const { return pll == PllForm::Table || pll == PllForm::Dual; }
    bool hasFeedback() const { return pll != PllForm::Table; } ///< MS and NS
};

/// The row of a series, or null for a code without one. `ZV32F403` has a row for its arithmetic but no clock page.
const ClockSeries *clockSeries(ZV32MCUSERIALS code);

/// Whether the series has a clock page.
bool hasClockPage(ZV32MCUSERIALS code);

/// All rows with a clock page, in the order of the table.
std::span<const ClockSeries> allClockSeries();

/// The values of the PLL's output divider, FR or FP, rising.
std::span<const int> pllOutputDividers(const ClockSeries &series);

/// The branch that clocks an instance ("TMR1", "SPI3", "SysTick", "HEXT"), `None` for one that the series does not
/// know.
ClockBranch clockBranchOf(const ClockSeries &series, const QString &instance);

} // namespace ChipLoom
