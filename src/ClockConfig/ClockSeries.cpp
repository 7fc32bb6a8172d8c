#include "ClockConfig/ClockSeries.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

constexpr std::array<int, 6> FrValues{1, 2, 4, 8, 16, 32};
constexpr std::array<int, 16> FpValues{1, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30};

constexpr std::array<double, 13> UsbHalfStepsTo7{1, 1.5, 2, 2.5, 3, 3.5, 4, 4.5, 5, 5.5, 6, 6.5, 7};
constexpr std::array<double, 7> UsbHalfStepsTo4{1, 1.5, 2, 2.5, 3, 3.5, 4};
constexpr std::array<double, 8> UsbWhole2To9{2, 3, 4, 5, 6, 7, 8, 9};
constexpr std::array<double, 7> UsbVcoDividers{11, 13, 12, 14, 16, 18, 20};

constexpr std::array<int, 10> ClkoutDivided{CLKOUT_NOCLK, CLKOUT_LICK, CLKOUT_LEXT,   CLKOUT_HICK,    CLKOUT_HEXT,
                                            CLKOUT_SCLK,  CLKOUT_USB,  CLKOUT_ADCCLK, CLKOUT_PLLDIV2, CLKOUT_PLLDIV4};
constexpr std::array<int, 9> ClkoutDividedNoUsb{CLKOUT_NOCLK, CLKOUT_LICK,   CLKOUT_LEXT,    CLKOUT_HICK,   CLKOUT_HEXT,
                                                CLKOUT_SCLK,  CLKOUT_ADCCLK, CLKOUT_PLLDIV2, CLKOUT_PLLDIV4};
constexpr std::array<int, 7> ClkoutPll{CLKOUT_SCLK, CLKOUT_HEXT, CLKOUT_PLL, CLKOUT_USB,
                                       CLKOUT_HICK, CLKOUT_LICK, CLKOUT_LEXT};
constexpr std::array<int, 7> ClkoutPllUsbfs{CLKOUT_SCLK, CLKOUT_HEXT, CLKOUT_PLL, CLKOUT_USBFS,
                                            CLKOUT_HICK, CLKOUT_LICK, CLKOUT_LEXT};
constexpr std::array<int, 6> ClkoutPllNoUsb{CLKOUT_SCLK, CLKOUT_HEXT, CLKOUT_PLL,
                                            CLKOUT_HICK, CLKOUT_LICK, CLKOUT_LEXT};

constexpr std::array<int, 2> PinPa8{CLKOUTPIN_NONE, CLKOUTPIN_PA8};
constexpr std::array<int, 3> PinsPa8Pc9{CLKOUTPIN_NONE, CLKOUTPIN_PA8, CLKOUTPIN_PC9};
constexpr std::array<int, 5> PinsSmall{CLKOUTPIN_NONE, CLKOUTPIN_PA8, CLKOUTPIN_PA9, CLKOUTPIN_PB13, CLKOUTPIN_PF2};

constexpr std::array<ClockedInstances, 5> Apb3Instances{{
    {"DAC", -1, -1, ClockBranch::Apb3},
    {"DAC", 1, 2, ClockBranch::Apb3},
    {"CMP", -1, -1, ClockBranch::Apb3},
    {"CMP", 1, 4, ClockBranch::Apb3},
    {"OPAMP", 1, 4, ClockBranch::Apb3},
}};

constexpr ClockSeries RowF403{
    .code = ZV32F403,
    .map = ClockMap::F413,
    .pll = PllForm::Table,
    .sclkMax = 200,
    .hick = 8.0,
    .hickToSclkFixed = true,
    .hickPllDivider = 2,
    .apbRaise = ApbRaise::BothAboveHalf,
    .apb1Max = 100,
    .apb2Max = 100,
    .pllMax = 200,
    .usb = UsbForm::Divider,
    .usbDividers = UsbHalfStepsTo4,
    .adcDivider = true,
    .adcMax = 28,
    .clkoutSources = ClkoutDivided,
    .clkoutPins = PinPa8,
    .startMul = 50,
};

constexpr ClockSeries RowF413{
    .code = ZV32F413,
    .map = ClockMap::F413,
    .pll = PllForm::Table,
    .sclkMax = 200,
    .apbRaise = ApbRaise::BothAboveHalf,
    .apb1Max = 100,
    .apb2Max = 100,
    .pllMax = 200,
    .usb = UsbForm::Divider,
    .usbDividers = UsbHalfStepsTo7,
    .offPll = OffPllSearch::UsbIfInUseOnPll,
    .adcDivider = true,
    .adcMax = 28,
    .clkoutSources = ClkoutDivided,
    .clkoutPins = PinPa8,
    .startMul = 50,
    .startUsbDivider = 4.0,
    .startUsbFromHick = true,
    .startAdcDivider = 4,
};

constexpr ClockSeries RowF415{
    .code = ZV32F415,
    .map = ClockMap::F415,
    .pll = PllForm::Dual,
    .sclkMax = 150,
    .multiplierBounds = true,
    .apbRaise = ApbRaise::BothAboveHalf,
    .apb1Max = 75,
    .apb2Max = 75,
    .pllMax = 150,
    .pllMin = 16,
    .usb = UsbForm::Divider,
    .usbDividers = UsbHalfStepsTo7,
    .offPll = OffPllSearch::UsbIfInUse,
    .usbShowsPll = true,
    .adcDivider = true,
    .adcMax = 28,
    .clkoutSources = ClkoutDivided,
    .clkoutPins = PinPa8,
    .startMul = 36,
    .startNs = 72,
    .startOutputDivider = 4,
    .startUsbDivider = 3.0,
    .startAdcDivider = 4,
};

constexpr ClockSeries RowF403A{
    .code = ZV32F403A,
    .map = ClockMap::F403A,
    .pll = PllForm::Table,
    .sclkMax = 240,
    .hextDividerBox = true,
    .apbRaise = ApbRaise::BothAboveHalf,
    .apb1Max = 120,
    .apb2Max = 120,
    .pllMax = 240,
    .usb = UsbForm::Divider,
    .usbDividers = UsbHalfStepsTo7,
    .offPll = OffPllSearch::UsbIfInUseOnPll,
    .adcDivider = true,
    .adcMax = 28,
    .clkoutSources = ClkoutDivided,
    .clkoutPins = PinPa8,
    .startMul = 60,
    .startUsbDivider = 4.0,
    .startUsbFromHick = true,
    .startAdcDivider = 6,
};

constexpr ClockSeries RowF403E{
    .code = ZV32F403E,
    .map = ClockMap::F403E,
    .pll = PllForm::Table,
    .sclkMax = 320,
    .hickPllDivider = 6,
    .hickPllExtraDivider = true,
    .hextDividerBox = true,
    .apbRaise = ApbRaise::BothAboveHalf,
    .apb1Max = 160,
    .apb2Max = 160,
    .pllMax = 320,
    .usb = UsbForm::Divider,
    .usbDividers = UsbHalfStepsTo7,
    .usbSearchMax = 7,
    .offPll = OffPllSearch::UsbIfInUseOnPll,
    .adcDivider = true,
    .adcMax = 35,
    .clkoutSources = ClkoutDivided,
    .clkoutPins = PinPa8,
    .startMul = 39,
    .startUsbDivider = 6.5,
    .startUsbFromHick = true,
    .startAdcDivider = 6,
};

constexpr ClockSeries RowF421{
    .code = ZV32F421,
    .map = ClockMap::F421,
    .pll = PllForm::Dual,
    .sclkMax = 120,
    .multiplierBounds = true,
    .apb1Max = 120,
    .apb2Max = 120,
    .pllMax = 120,
    .pllMin = 16,
    .bypassFlags = true,
    .adcDivider = true,
    .adcMax = 28,
    .clkoutSources = ClkoutDividedNoUsb,
    .clkoutPins = PinsSmall,
    .clkoutPinStored = true,
    .startMul = 30,
    .startNs = 120,
    .startOutputDivider = 8,
    .startAdcDivider = 6,
};

constexpr ClockSeries RowF425{
    .code = ZV32F425,
    .map = ClockMap::F425,
    .pll = PllForm::Dual,
    .sclkMax = 96,
    .multiplierBounds = true,
    .apb1Max = 96,
    .apb2Max = 96,
    .pllMax = 96,
    .pllMin = 16,
    .usb = UsbForm::Divider,
    .usbDividers = UsbHalfStepsTo4,
    .offPll = OffPllSearch::UsbIfInUseOnPll,
    .adcDivider = true,
    .adcMax = 28,
    .clkoutSources = ClkoutDivided,
    .clkoutPins = PinPa8,
    .startMul = 24,
    .startNs = 96,
    .startOutputDivider = 8,
    .startUsbDivider = 2.0,
    .startUsbFromHick = true,
    .startAdcDivider = 4,
};

constexpr ClockSeries RowL021{
    .code = ZV32L021,
    .map = ClockMap::L021,
    .pll = PllForm::Dual,
    .sclkMax = 80,
    .multiplierBounds = true,
    .apb1Max = 80,
    .apb2Max = 80,
    .pllMax = 80,
    .pllMin = 16,
    .adcDivider = true,
    .adcFromAhb = true,
    .adcBelowApb2 = true,
    .adcMax = 28,
    .usartSources = 2,
    .i2c1Source = true,
    .clkoutSources = ClkoutDividedNoUsb,
    .clkoutPins = PinPa8,
    .startMul = 20,
    .startNs = 80,
    .startOutputDivider = 8,
    .startAdcDivider = 4,
};

constexpr ClockSeries RowF422{
    .code = ZV32F422,
    .map = ClockMap::F422,
    .pll = PllForm::Dual,
    .sclkMax = 180,
    .multiplierBounds = true,
    .apb1Max = 180,
    .apb2Max = 180,
    .apb3Max = 90,
    .pllMax = 180,
    .pllMin = 16,
    .bypassFlags = true,
    .adcDivider = true,
    .adcFromAhb = true,
    .adcMax = 35,
    .canSources = 1,
    .clkoutSources = ClkoutDividedNoUsb,
    .clkoutPins = PinsSmall,
    .clkoutPinStored = true,
    .instances = Apb3Instances,
    .startMul = 45,
    .startNs = 75,
    .startOutputDivider = 4,
    .startAdcDivider = 6,
    .startApb3Divider = 2,
    .startCanSource = CAN_CLOCK_SOURCE_PLL,
};

constexpr ClockSeries RowF435{
    .code = ZV32F435,
    .map = ClockMap::F435,
    .pll = PllForm::Fr,
    .sclkMax = 288,
    .hickPllDivider = 6,
    .directPllInput = true,
    .vcoMax = PLL_NS_CHECK_MAX_VALUE_F435F437,
    .apbRaise = ApbRaise::BothAboveHalf,
    .apb1Max = 144,
    .apb2Max = 144,
    .pllMax = 288,
    .usb = UsbForm::Divider,
    .usbDividers = UsbHalfStepsTo7,
    .usbSearchMax = 7,
    .offPll = OffPllSearch::UsbAlways,
    .rtcDivider = true,
    .adcFromAhb = true,
    .clkout = ClkoutForm::TwoOutputs,
    .startNs = 144,
    .startOutputDivider = 4,
    .startUsbDivider = 6.0,
    .startUsbFromHick = true,
    .startAdcDivider = 4,
};

constexpr ClockSeries RowF423{
    .code = ZV32F423,
    .map = ClockMap::F423,
    .pll = PllForm::Fr,
    .sclkMax = 150,
    .hickPllDivider = 6,
    .directPllInput = true,
    .halfPllIsSclk = true,
    .sclkHasMin = false,
    .sclkDividers = true,
    .apbRaise = ApbRaise::Apb1Above120,
    .apb1Max = 120,
    .apb2Max = 150,
    .pllMax = 150,
    .usb = UsbForm::Divider,
    .usbDividers = UsbWhole2To9,
    .usbSearchMin = 2,
    .usbSearchMax = 8,
    .offPll = OffPllSearch::UsbIfInUseOnPll,
    .rtcDivider = true,
    .adcSource = true,
    .usartSources = 3,
    .i2c1Source = true,
    .clkout = ClkoutForm::TwoDividers,
    .clkoutSources = ClkoutPll,
    .clkoutPins = PinsPa8Pc9,
    .clkoutPinStored = true,
    .startNs = 75,
    .startOutputDivider = 2,
    .startUsbDivider = 6.0,
    .startUsbFromHick = true,
    .startClkout = CLKOUT_SCLK,
};

constexpr ClockSeries RowM412{
    .code = ZV32M412,
    .map = ClockMap::M412,
    .pll = PllForm::Fr,
    .sclkMax = 180,
    .hickPllDivider = 6,
    .directPllInput = true,
    .sclkHasMin = false,
    .sclkDividers = true,
    .apb1Max = 180,
    .apb2Max = 180,
    .apb3Max = 90,
    .pllMax = 180,
    .systickMax = 216,
    .rtcDivider = true,
    .canSources = 1,
    .clkout = ClkoutForm::TwoDividers,
    .clkoutSources = ClkoutPllNoUsb,
    .clkoutPins = PinsPa8Pc9,
    .instances = Apb3Instances,
    .startNs = 90,
    .startOutputDivider = 4,
    .startApb3Divider = 4,
    .startClkout = CLKOUT_SCLK,
    .startCanSource = CAN_CLOCK_SOURCE_PLL,
};

constexpr ClockSeries RowF402{
    .code = ZV32F402,
    .map = ClockMap::F402,
    .pll = PllForm::Fp,
    .sclkMax = 216,
    .hickPllDivider = 6,
    .directPllInput = true,
    .sclkHasMin = false,
    .sclkDividers = true,
    .oldSclkDividerNames = true,
    .apbRaise = ApbRaise::Apb1Above120,
    .apb1Max = 120,
    .apb2Max = 216,
    .pllMax = 216,
    .usb = UsbForm::VcoDivider,
    .usbDividers = UsbVcoDividers,
    .usbSearchMin = 11,
    .usbSearchMax = 20,
    .offPll = OffPllSearch::UsbIfInUseOnPll,
    .rtcDivider = true,
    .i2sf5 = true,
    .clkout = ClkoutForm::TwoDividers,
    .clkoutSources = ClkoutPllUsbfs,
    .clkoutPins = PinsPa8Pc9,
    .clkoutPinStored = true,
    .startHext = 12.0,
    .startNs = 108,
    .startOutputDivider = 4,
    .startUsbDivider = 18,
    .startUsbFromHick = true,
    .startClkout = CLKOUT_SCLK,
};

constexpr ClockSeries RowF455{
    .code = ZV32F455,
    .map = ClockMap::F455,
    .pll = PllForm::Fp,
    .sclkMax = 192,
    .hickPllDivider = 6,
    .directPllInput = true,
    .vcoMax = PLL_NS_CHECK_MAX_VALUE_F435F437,
    .sclkHasMin = false,
    .sclkDividers = true,
    .apb1Max = 192,
    .apb2Max = 192,
    .apb3Max = 90,
    .pllMax = 192,
    .usb = UsbForm::VcoDivider,
    .usbDividers = UsbVcoDividers,
    .usbSearchMin = 11,
    .usbSearchMax = 20,
    .offPll = OffPllSearch::UsbIfInUseOnPll,
    .rtcDivider = true,
    .i2sf5 = true,
    .canSources = 3,
    .canPclkNeedsPll = true,
    .clkout = ClkoutForm::TwoDividers,
    .clkoutSources = ClkoutPllUsbfs,
    .clkoutPins = PinsPa8Pc9,
    .instances = Apb3Instances,
    .startNs = 144,
    .startOutputDivider = 6,
    .startUsbDivider = 16,
    .startUsbFromHick = true,
    .startApb3Divider = 4,
    .startClkout = CLKOUT_SCLK,
    .startCanSource = CAN_CLOCK_SOURCE_PCLK,
};

constexpr ClockSeries RowF406{
    .code = ZV32F406,
    .map = ClockMap::F406,
    .pll = PllForm::Fp,
    .sclkMax = 216,
    .hickPllDivider = 6,
    .directPllInput = true,
    .sclkHasMin = false,
    .sclkDividers = true,
    .oldSclkDividerNames = true,
    .apb1Max = 216,
    .apb2Max = 216,
    .apb3Max = 120,
    .rtcDivider = true,
    .clkout = ClkoutForm::TwoDividers,
    .clkoutSources = ClkoutPllNoUsb,
    .clkoutPins = PinsPa8Pc9,
    .clkoutPinStored = true,
    .instances = Apb3Instances,
    .startHext = 12.0,
    .startNs = 108,
    .startOutputDivider = 4,
    .startApb3Divider = 2,
    .startClkout = CLKOUT_SCLK,
};

constexpr ClockSeries as(ZV32MCUSERIALS code, ClockSeries row)
{
    row.code = code;
    return row;
}

constexpr ClockSeries rowA403A()
{
    ClockSeries row = as(ZV32A403A, RowF403A);
    row.sclkMax = row.pllMax = 200;
    row.apb1Max = row.apb2Max = 100;
    row.startMul = 50;
    return row;
}

// The first row has no clock page.
constexpr std::array<ClockSeries, 30> Rows{{
    RowF403,
    RowF413,
    RowF415,
    as(ZV32WB415, RowF415),
    RowF403A,
    as(ZV32F407, RowF403A),
    rowA403A(),
    RowF403E,
    as(ZV32F407E, RowF403E),
    RowF421,
    RowF425,
    RowL021,
    as(ZV32F011, RowL021),
    RowF422,
    as(ZV32F426, RowF422),
    as(ZV32F6221, RowF422),
    RowF435,
    as(ZV32F437, RowF435),
    RowF423,
    as(ZV32A423, RowF423),
    RowM412,
    as(ZV32M416, RowM412),
    RowF402,
    as(ZV32F405, RowF402),
    as(ZV32F490, RowF402),
    RowF455,
    as(ZV32F456, RowF455),
    as(ZV32F457, RowF455),
    RowF406,
    as(ZV32F408, RowF406),
}};

} // namespace

const ClockSeries *clockSeries(ZV32MCUSERIALS code)
{
    const auto row =
        std::find_if(Rows.begin(), Rows.end(), [&](const ClockSeries &entry) { return entry.code == code; });
    return row == Rows.end() ? nullptr : &*row;
}

bool hasClockPage(ZV32MCUSERIALS code)
{
    return code != ZV32F403 && clockSeries(code);
}

std::span<const ClockSeries> allClockSeries()
{
    return std::span(Rows).subspan(1);
}

std::span<const int> pllOutputDividers(const ClockSeries &series)
{
    return series.hasFp() ? std::span<const int>(FpValues) : std::span<const int>(FrValues);
}

} // namespace ChipLoom
