#pragma once

#include "ClockConfig/ClockSeries.h"

#include <QString>

namespace ChipLoom {

/// All values of one clock tree: what was chosen, and the frequencies that follow from it. A plain value without a
/// page: copying it is how a state is kept and put back.
///
/// Frequencies are in MHz, but LICK and LEXT in kHz. Dividers and multipliers are natural values (4 divides by 4).
/// Setters store and calculate nothing; `CalculateCLK` and the searches bring the frequencies up to date.
class ZV32ConfigCLK
{
public:
    /// A code without a row gets the arithmetic of the plainest series with a ceiling of 0.
    explicit ZV32ConfigCLK(ZV32MCUSERIALS series);

    const ClockSeries &series() const { return *m_series; }

    /// Start values that hold for every series. Those that a series sets for itself stay as they are.
    void InitValue();
    /// The start state of the series, sources and dividers; switches of peripherals in use stay as they are.
    /// Frequencies are calculated.
    void InitSeriesValues();

    /// The ceiling of SCLK; 0 for a code without a row.
    int GetSYSCLKValidMaxValue() const { return m_series->sclkMax; }

    // Forward.
    double GetPllInPutValue() const;
    /// Multiplier bounds for a PLL input; both 0 if no multiplier exists for it. `m_PLL_MUL` is clamped into them.
    void UpdatePLLMULMinMaxValue(double pllInput);
    void CalculatePLLCLK();
    void CalculateCLK();
    /// `m_RTCCLK_Value`.
    void CalculateRTCCLK();

    // What is in use.
    bool hext_isEnable() const; ///< anything that runs is fed by HEXT
    bool hick_isEnable() const;
    bool pll_isEnable() const;
    bool usbpll_isEnable() const; ///< USB is in use and on the PLL
    bool hextdiv_isEnable() const;
    bool clockOutputUsesPll() const;  ///< an output with a pin is on a PLL source
    bool clockOutputUsesHext() const; ///< an output with a pin is on HEXT
    /// What HICK gives to a clock output: 48 while a path uses it at 48, else 8.
    double hickOutputValue() const;

    // Checks of a typed divider. A refusal suggests the nearest value that fits, or the least if none does.
    bool PLL_MS_Valid_Check(int ms, int &suggestion) const;
    bool PLL_NS_Valid_Check(int ns, int ms, int &suggestion) const;
    /// First and last MS whose quotient is in range; 1 and 15 if none is.
    void Get_PLL_MS_ValidRange(double input, int &max, int &min) const;
    /// First and last NS whose VCO is in range; 31 and 500 if none is.
    void Get_PLL_NS_ValidRange(double input, int ms, int &max, int &min) const;

    // Reverse.
    /// Solves the PLL fields for `m_SYSCLK_Value` if SCLK is on the PLL, and calculates what follows from SCLK.
    void CalculateParam_From_SYSCLK();
    /// Solves the PLL fields for a USB clock of 48 MHz. Nothing unless `usbpll_isEnable`; SCLK's buses stay as they
    /// are.
    void CalculateParam_From_USBCLK();

    /// The PLL configuration register; only series with MS and NS have it.
    quint32 PllConfigRegister() const;
    /// "0x" and eight hexadecimal digits.
    QString Get_CRM_PLLCFG_Value() const;

// One getter and one setter for a value that is chosen.
#define CHIPLOOM_CLOCK_INPUT(type, name, field)                                                                        \
    type Get_##name() const                                                                                            \
    {                                                                                                                  \
        return field;                                                                                                  \
    }                                                                                                                  \
    void Set_##name(type value)                                                                                        \
    {                                                                                                                  \
        field = value;                                                                                                 \
    }

    CHIPLOOM_CLOCK_INPUT(double, LICK_Value, m_lick_Input_Value)
    CHIPLOOM_CLOCK_INPUT(double, LEXT_Value, m_lext_Input_Value)
    CHIPLOOM_CLOCK_INPUT(bool, LEXT_Enable, m_lext_enable_Flag)
    CHIPLOOM_CLOCK_INPUT(bool, LEXT_Bypass, m_lext_Bypass)
    CHIPLOOM_CLOCK_INPUT(double, HEXT_Value, m_hext_Input_Value)
    CHIPLOOM_CLOCK_INPUT(double, HICK_Value, m_hick_Input_Value)
    CHIPLOOM_CLOCK_INPUT(bool, HEXT_Enable, m_hext_enable_Flag)
    CHIPLOOM_CLOCK_INPUT(bool, HEXT_Bypass, m_hext_Bypass)
    CHIPLOOM_CLOCK_INPUT(RTCSEL, RTCSEL, m_rtcsel)
    CHIPLOOM_CLOCK_INPUT(int, RTCDIV, m_rtc_div)
    CHIPLOOM_CLOCK_INPUT(int, HEXTDIV, m_hext_div)
    CHIPLOOM_CLOCK_INPUT(int, SCLKHEXTDIV, m_sclkhext_div)
    CHIPLOOM_CLOCK_INPUT(int, SCLKHICKDIV, m_sclkhick_div)
    CHIPLOOM_CLOCK_INPUT(PLLHEXTDIV, PLLHEXTDIV, m_pllhext_div)
    CHIPLOOM_CLOCK_INPUT(PLLHICKDIV, PLLHICKDIV, m_pllhick_div)
    CHIPLOOM_CLOCK_INPUT(PLLRC, PLLRC, m_PLLRC)
    CHIPLOOM_CLOCK_INPUT(int, PLL_MS, m_PLL_MS)
    CHIPLOOM_CLOCK_INPUT(int, PLL_NS, m_PLL_NS)
    CHIPLOOM_CLOCK_INPUT(int, PLL_FR, m_PLL_FR)
    CHIPLOOM_CLOCK_INPUT(int, PLL_FP, m_PLL_FP)
    CHIPLOOM_CLOCK_INPUT(int, PLL_FU, m_PLL_FU)
    CHIPLOOM_CLOCK_INPUT(SYSCLKSelect, SYSCLKSelect, m_sclk_select)
    CHIPLOOM_CLOCK_INPUT(int, AHBDIV, m_AHBDIV)
    CHIPLOOM_CLOCK_INPUT(int, APB1DIV, m_APB1DIV)
    CHIPLOOM_CLOCK_INPUT(int, APB2DIV, m_APB2DIV)
    CHIPLOOM_CLOCK_INPUT(int, APB3DIV, m_APB3DIV)
    CHIPLOOM_CLOCK_INPUT(int, SysticDIV, m_SysticDIV)
    CHIPLOOM_CLOCK_INPUT(bool, TO_ADC_Switch, m_ToADC_Switch)
    CHIPLOOM_CLOCK_INPUT(int, ADCDIV, m_ToADCDIV)
    CHIPLOOM_CLOCK_INPUT(double, USBDIV, m_USBDIV)
    CHIPLOOM_CLOCK_INPUT(bool, TO_USB_Switch, m_ToUSBSwitch)
    CHIPLOOM_CLOCK_INPUT(HICK_TO_USB, HickToUsb, m_HickToUSB)
    CHIPLOOM_CLOCK_INPUT(HICK_TO_SCLK, HickToSclk, m_HickToSclk)
    CHIPLOOM_CLOCK_INPUT(int, CLKOUT1_Div1, m_CLKOUT1_Div1)
    CHIPLOOM_CLOCK_INPUT(int, CLKOUT1_Div2, m_CLKOUT1_Div2)
    CHIPLOOM_CLOCK_INPUT(CLKOUT1PIN, CLKOUT1_PinSelect, m_CLKOUT1_PinSelect)
    CHIPLOOM_CLOCK_INPUT(int, CLKOUT2_Div1, m_CLKOUT2_Div1)
    CHIPLOOM_CLOCK_INPUT(int, CLKOUT2_Div2, m_CLKOUT2_Div2)
    CHIPLOOM_CLOCK_INPUT(CLKOUT2PIN, CLKOUT2_PinSelect, m_CLKOUT2_PinSelect)
    CHIPLOOM_CLOCK_INPUT(CLKOUT1, CLKOUT1, m_CLKOUT1)
    CHIPLOOM_CLOCK_INPUT(CLKOUT2, CLKOUT2, m_CLKOUT2)
    CHIPLOOM_CLOCK_INPUT(int, CLKOUT_Div, m_CLKOUT_Div)
    CHIPLOOM_CLOCK_INPUT(CLKOUTPIN, CLKOUT_PinSelect, m_CLKOUT_PinSelect)
    CHIPLOOM_CLOCK_INPUT(CLKOUT, CLKOUT, m_CLKOUT)
    CHIPLOOM_CLOCK_INPUT(int, CLKOUT_Div1, m_CLKOUT_Div1)
    CHIPLOOM_CLOCK_INPUT(int, CLKOUT_Div2, m_CLKOUT_Div2)
    CHIPLOOM_CLOCK_INPUT(bool, USART1_Switch, m_USART1Switch)
    CHIPLOOM_CLOCK_INPUT(bool, USART2_Switch, m_USART2Switch)
    CHIPLOOM_CLOCK_INPUT(bool, USART3_Switch, m_USART3Switch)
    CHIPLOOM_CLOCK_INPUT(bool, I2C_Switch, m_I2CSwitch)
    CHIPLOOM_CLOCK_INPUT(bool, I2SF5_Switch, m_I2SF5Switch)
    CHIPLOOM_CLOCK_INPUT(bool, CAN1_Switch, m_CAN1Switch)
    CHIPLOOM_CLOCK_INPUT(bool, CAN2_Switch, m_CAN2Switch)
    CHIPLOOM_CLOCK_INPUT(bool, CAN3_Switch, m_CAN3Switch)
    CHIPLOOM_CLOCK_INPUT(PLLCONFIGMODE, ConfigMode, m_ConfigMode)
    CHIPLOOM_CLOCK_INPUT(int, PLL_MUL, m_PLL_MUL)
    CHIPLOOM_CLOCK_INPUT(USART_CLOCK_SOURCE, USART1_ClockSource, m_usart1_Clock_Source)
    CHIPLOOM_CLOCK_INPUT(USART_CLOCK_SOURCE, USART2_ClockSource, m_usart2_Clock_Source)
    CHIPLOOM_CLOCK_INPUT(USART_CLOCK_SOURCE, USART3_ClockSource, m_usart3_Clock_Source)
    CHIPLOOM_CLOCK_INPUT(I2C1_CLOCK_SOURCE, I2C1_ClockSource, m_i2c1_Clock_Source)
    CHIPLOOM_CLOCK_INPUT(ADC_CLOCK_SOURCE, ADC_ClockSource, m_adc_Clock_Source)
    CHIPLOOM_CLOCK_INPUT(I2SF5_CLOCK_SOURCE, I2SF5_ClockSource, m_i2sf5_Clock_Source)
    CHIPLOOM_CLOCK_INPUT(CAN_CLOCK_SOURCE, CAN1_ClockSource, m_can1_Clock_Source)
    CHIPLOOM_CLOCK_INPUT(CAN_CLOCK_SOURCE, CAN2_ClockSource, m_can2_Clock_Source)
    CHIPLOOM_CLOCK_INPUT(CAN_CLOCK_SOURCE, CAN3_ClockSource, m_can3_Clock_Source)
    // Targets: what a page writes before a search, and what the search and the calculation write back.
    CHIPLOOM_CLOCK_INPUT(double, SYSCLKValue, m_SYSCLK_Value)
    CHIPLOOM_CLOCK_INPUT(double, PLLCLKValue, m_PLLCLK_Value)
    CHIPLOOM_CLOCK_INPUT(double, USBCLKValue, m_USBCLK_Value)
#undef CHIPLOOM_CLOCK_INPUT

    int Get_PLL_MUL_Min() const
    {
        return m_PLL_MUL_Min;
    }
    int Get_PLL_MUL_Max() const
    {
        return m_PLL_MUL_Max;
    }
    int Get_APB1TMR_MUL() const
    {
        return m_APB1TMR_MUL;
    }
    int Get_APB2TMR_MUL() const
    {
        return m_APB2TMR_MUL;
    }
    double Get_AHBCLKValue() const
    {
        return m_AHBCLK_Value;
    }
    double Get_APB1CLKValue() const
    {
        return m_APB1CLK_Value;
    }
    double Get_APB2CLKValue() const
    {
        return m_APB2CLK_Value;
    }
    double Get_APB3CLKValue() const
    {
        return m_APB3CLK_Value;
    }
    double Get_APB1TMRCLK_Value() const
    {
        return m_APB1TMRCLK_Value;
    }
    double Get_APB2TMRCLK_Value() const
    {
        return m_APB2TMRCLK_Value;
    }
    double Get_ADCCLK_Value() const
    {
        return m_ADCCLK_Value;
    }
    double Get_RTCCLK_Value() const
    {
        return m_RTCCLK_Value;
    }

private:
    bool canUsesPll() const;
    void calculateBuses();  ///< AHB, the APBs with the raise of their dividers, the timers, the ADC
    void calculateUsb();    ///< USB from the PLL clock, if it is on the PLL
    void solveUsbDivider(); ///< moves the USB divider to what a solved SCLK asks for
    void CalculateParam_From_ResultCLK(double input, bool fromUsb);
    void CalculateParam_From_ResultCLK_Normal(double input, bool fromUsb);
    void CalculateParam_From_ResultCLK_Flexible(double input, bool fromUsb);
    void CalculateParam_From_ResultCLK_Flexible_SYSCLK(double input);
    void CalculateParam_From_ResultCLK_Flexible_USBCLK(double input);
    struct FeedbackFields;
    FeedbackFields nearestPllClock(double input, double target) const;
    FeedbackFields nearestVco(double input, double vcoTarget, double pllTarget) const;
    void storeFeedback(const FeedbackFields &best);
    double vcoSearchMax() const;

    const ClockSeries *m_series;
    ZV32MCUSERIALS m_MCUType;

    double m_lick_Input_Value;
    double m_lext_Input_Value;
    bool m_lext_enable_Flag = false;
    bool m_lext_Bypass;
    double m_hext_Input_Value;
    double m_hick_Input_Value;
    bool m_hext_enable_Flag = false;
    bool m_hext_Bypass;
    RTCSEL m_rtcsel;
    int m_rtc_div = 2;
    double m_RTCCLK_Value;
    int m_hext_div = 2;
    int m_sclkhext_div;
    int m_sclkhick_div;
    PLLHEXTDIV m_pllhext_div;
    PLLHICKDIV m_pllhick_div;
    PLLRC m_PLLRC;
    int m_PLL_MS;
    int m_PLL_NS;
    int m_PLL_FR;
    int m_PLL_FP;
    int m_PLL_FU;
    SYSCLKSelect m_sclk_select;
    int m_AHBDIV;
    int m_APB1DIV;
    int m_APB2DIV;
    int m_APB3DIV;
    int m_SysticDIV;
    double m_PLLCLK_Value;
    double m_SYSCLK_Value;
    double m_AHBCLK_Value;
    double m_APB1CLK_Value;
    int m_APB1TMR_MUL;
    double m_APB1TMRCLK_Value;
    double m_APB2CLK_Value;
    double m_APB3CLK_Value;
    int m_APB2TMR_MUL;
    double m_APB2TMRCLK_Value;
    bool m_ToADC_Switch;
    int m_ToADCDIV;
    double m_ADCCLK_Value;
    double m_USBDIV;
    bool m_ToUSBSwitch;
    double m_USBCLK_Value;
    HICK_TO_USB m_HickToUSB = HICK_TO_USB_DISABLE;
    HICK_TO_SCLK m_HickToSclk = HICK_TO_SCLK_DIV6;
    int m_CLKOUT1_Div1;
    int m_CLKOUT1_Div2;
    CLKOUT1PIN m_CLKOUT1_PinSelect;
    int m_CLKOUT2_Div1;
    int m_CLKOUT2_Div2;
    CLKOUT2PIN m_CLKOUT2_PinSelect;
    CLKOUT1 m_CLKOUT1;
    CLKOUT2 m_CLKOUT2;
    int m_CLKOUT_Div;
    CLKOUTPIN m_CLKOUT_PinSelect;
    CLKOUT m_CLKOUT;
    int m_CLKOUT_Div1;
    int m_CLKOUT_Div2;
    bool m_USART1Switch;
    bool m_USART2Switch;
    bool m_USART3Switch;
    bool m_I2CSwitch;
    bool m_I2SF5Switch;
    bool m_CAN1Switch;
    bool m_CAN2Switch;
    bool m_CAN3Switch;
    PLLCONFIGMODE m_ConfigMode;
    int m_PLL_MUL = 2;
    int m_PLL_MUL_Min;
    int m_PLL_MUL_Max;
    USART_CLOCK_SOURCE m_usart1_Clock_Source;
    USART_CLOCK_SOURCE m_usart2_Clock_Source;
    USART_CLOCK_SOURCE m_usart3_Clock_Source;
    I2C1_CLOCK_SOURCE m_i2c1_Clock_Source;
    ADC_CLOCK_SOURCE m_adc_Clock_Source;
    I2SF5_CLOCK_SOURCE m_i2sf5_Clock_Source;
    CAN_CLOCK_SOURCE m_can1_Clock_Source;
    CAN_CLOCK_SOURCE m_can2_Clock_Source;
    CAN_CLOCK_SOURCE m_can3_Clock_Source;
};

} // namespace ChipLoom
