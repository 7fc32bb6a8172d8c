#pragma once

namespace ChipLoom {

// The design file stores these by number: never renumber.

/// Whether the PLL multiplies by a table value or by the MS, NS and FR (or FP) form.
enum PLLCONFIGMODE { PLLMODE_NORMAL = 0, PLLMODE_FLEXIBLE = 1 };

enum PLLHEXTDIV { PLLHEXT_NODIV = 0, PLLHEXT_DIV = 1 };

enum PLLHICKDIV { PLLHICK_NODIV = 0, PLLHICK_DIV = 1 };

enum PLLRC { PLLRC_HEXT = 0, PLLRC_HICK = 1 };

enum RTCSEL { RTCSEL_LICK = 0, RTCSEL_LEXT = 1, RTCSEL_HEXT = 2 };

enum SYSCLKSelect { SYSCLK_HEXT = 0, SYSCLK_PLL = 1, SYSCLK_HICK = 2 };

/// Whether HICK reaches SCLK at 8 MHz (divided by 6) or at 48 MHz.
enum HICK_TO_SCLK { HICK_TO_SCLK_DIV6 = 0, HICK_TO_SCLK_NODIV = 1 };

/// Whether the USB clock comes from HICK instead of the PLL.
enum HICK_TO_USB { HICK_TO_USB_DISABLE = 0, HICK_TO_USB_ENABLE = 1 };

enum CLKOUT {
    CLKOUT_NOCLK = 0,
    CLKOUT_LICK = 1,
    CLKOUT_LEXT = 2,
    CLKOUT_HICK = 3,
    CLKOUT_HEXT = 4,
    CLKOUT_SCLK = 5,
    CLKOUT_USB = 6,
    CLKOUT_ADCCLK = 7,
    CLKOUT_PLLDIV2 = 8,
    CLKOUT_PLLDIV4 = 9,
    CLKOUT_PLL = 10,
    CLKOUT_USBFS = 11
};

enum CLKOUT1 { CLKOUT1_HICK = 0, CLKOUT1_LEXT = 1, CLKOUT1_HEXT = 2, CLKOUT1_PLL = 3 };

enum CLKOUT2 {
    CLKOUT2_SCLK = 0,
    CLKOUT2_HEXT = 1,
    CLKOUT2_PLL = 2,
    CLKOUT2_USB = 3,
    CLKOUT2_HICK = 4,
    CLKOUT2_ADCCLK = 5,
    CLKOUT2_LICK = 6,
    CLKOUT2_LEXT = 7
};

enum CLKOUTPIN {
    CLKOUTPIN_NONE = 0,
    CLKOUTPIN_PA8 = 1,
    CLKOUTPIN_PA9 = 2,
    CLKOUTPIN_PB13 = 3,
    CLKOUTPIN_PC9 = 4,
    CLKOUTPIN_PF2 = 5,
    CLKOUTPIN_PE4 = 6
};

enum CLKOUT1PIN { CLKOUT1PIN_NONE = 0, CLKOUT1PIN_PA8 = 1, CLKOUT1PIN_PE4 = 2 };

enum CLKOUT2PIN { CLKOUT2PIN_NONE = 0, CLKOUT2PIN_PC9 = 1 };

enum USART_CLOCK_SOURCE {
    USART_CLOCK_SOURCE_PCLK = 0,
    USART_CLOCK_SOURCE_SCLK = 1,
    USART_CLOCK_SOURCE_HICK48 = 2,
    USART_CLOCK_SOURCE_LEXT = 3,
    USART_CLOCK_SOURCE_HICK = 4
};

enum I2C1_CLOCK_SOURCE {
    I2C1_CLOCK_SOURCE_PCLK = 0,
    I2C1_CLOCK_SOURCE_SCLK = 1,
    I2C1_CLOCK_SOURCE_HICK48 = 2,
    I2C1_CLOCK_SOURCE_HICK = 3
};

enum ADC_CLOCK_SOURCE { ADC_CLOCK_SOURCE_HCLK = 0, ADC_CLOCK_SOURCE_PLLCLK = 1 };

enum I2SF5_CLOCK_SOURCE {
    I2SF5_CLOCK_SOURCE_PLLP = 0,
    I2SF5_CLOCK_SOURCE_SCLK = 1,
    I2SF5_CLOCK_SOURCE_HICK = 2,
    I2SF5_CLOCK_SOURCE_EXTERNAL = 3
};

enum CAN_CLOCK_SOURCE { CAN_CLOCK_SOURCE_HEXT = 0, CAN_CLOCK_SOURCE_PLL = 1, CAN_CLOCK_SOURCE_PCLK = 2 };

// Limits that hold for every series, in MHz unless a name says otherwise. What differs stands in ClockSeries.
inline constexpr double HEXT_INPUT_MIN_VALUE = 4.0;
inline constexpr double HEXT_INPUT_MAX_VALUE = 25.0;
inline constexpr double SYSCLK_INPUT_MIN_VALUE = 4.0;
inline constexpr int PLL_MS_MIN_VALUE = 1;
inline constexpr int PLL_MS_MAX_VALUE = 15;
inline constexpr double PLL_MS_CHECK_MIN_VALUE = 2.0; ///< PLL input / MS
inline constexpr double PLL_MS_CHECK_MAX_VALUE = 16.0;
inline constexpr int PLL_NS_MIN_VALUE = 31;
inline constexpr int PLL_NS_MAX_VALUE = 500;
inline constexpr double PLL_NS_CHECK_MIN_VALUE_OTHER = 500.0; ///< the VCO, PLL input * NS / MS
inline constexpr double PLL_NS_CHECK_MAX_VALUE_OTHER = 1000.0;
inline constexpr double PLL_NS_CHECK_MAX_VALUE_F435F437 = 1200.0;
inline constexpr double PLL_NS_SEARCH_MAX_VALUE_USB = 960.0; ///< while USB takes its clock from the VCO
inline constexpr double USB_OUTPUT_CLK_VALUE = 48.0;
inline constexpr double I2SF5_EXTERNAL_CLOCK_MINVALUE_1M = 1.0;
inline constexpr double I2SF5_EXTERNAL_CLOCK_MAXVALUE_72M = 72.0;

} // namespace ChipLoom
