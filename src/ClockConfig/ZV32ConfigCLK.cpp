#include "ClockConfig/ZV32ConfigCLK.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

constexpr ClockSeries NoSeries{.code = ZV32ErrorMCU2, .map = ClockMap::F413, .pll = PllForm::Table, .sclkMax = 0};

struct MultiplierRow
{
    double min;
    double max;
    bool minExcluded;
    int multiplier;
};

// The gaps between the rows are the hardware's: no multiplier is specified for an input in them.
constexpr std::array<MultiplierRow, 6> MultiplierBounds{{
    {3.9, 5.0, false, 50},
    {5.2, 6.25, false, 33},
    {7.8125, 8.33, false, 25},
    {8.33, 12.5, true, 16},
    {15.625, 20.83, false, 12},
    {20.83, 31.255, true, 8},
}};

} // namespace

ZV32ConfigCLK::ZV32ConfigCLK(ZV32MCUSERIALS series)
    : m_series(clockSeries(series) ? clockSeries(series) : &NoSeries), m_MCUType(series)
{
    InitValue();
}

void ZV32ConfigCLK::InitValue()
{
    m_lick_Input_Value = 40.0;
    m_lext_Input_Value = 32.768;
    m_lext_Bypass = false;
    m_hext_Input_Value = 8.0;
    m_hick_Input_Value = m_series->hick;
    m_hext_Bypass = false;
    m_rtcsel = RTCSEL_LICK;
    m_RTCCLK_Value = 0.0;
    m_sclkhext_div = 1;
    m_sclkhick_div = 1;
    m_pllhext_div = PLLHEXT_NODIV;
    m_pllhick_div = PLLHICK_NODIV;
    m_PLLRC = PLLRC_HEXT;
    m_PLL_MS = 2;
    m_PLL_NS = 192;
    m_PLL_FR = 8;
    m_PLL_FP = 2;
    m_PLL_FU = 18;
    m_sclk_select = SYSCLK_HICK;
    m_AHBDIV = m_APB1DIV = m_APB2DIV = m_APB3DIV = 1;
    m_SysticDIV = 8;
    m_PLLCLK_Value = m_SYSCLK_Value = m_AHBCLK_Value = 0.0;
    m_APB1CLK_Value = m_APB2CLK_Value = m_APB3CLK_Value = 0.0;
    m_APB1TMR_MUL = m_APB2TMR_MUL = 1;
    m_APB1TMRCLK_Value = m_APB2TMRCLK_Value = 0.0;
    m_ToADC_Switch = false;
    m_ToADCDIV = 2;
    m_ADCCLK_Value = 0.0;
    m_USBDIV = 1.0;
    m_ToUSBSwitch = false;
    m_USBCLK_Value = 0.0;
    m_CLKOUT1_Div1 = m_CLKOUT1_Div2 = m_CLKOUT2_Div1 = m_CLKOUT2_Div2 = 1;
    m_CLKOUT1_PinSelect = CLKOUT1PIN_NONE;
    m_CLKOUT2_PinSelect = CLKOUT2PIN_NONE;
    m_CLKOUT1 = CLKOUT1_HICK;
    m_CLKOUT2 = CLKOUT2_SCLK;
    m_CLKOUT_Div = m_CLKOUT_Div1 = m_CLKOUT_Div2 = 1;
    m_CLKOUT_PinSelect = CLKOUTPIN_NONE;
    m_CLKOUT = CLKOUT_NOCLK;
    m_USART1Switch = m_USART2Switch = m_USART3Switch = m_I2CSwitch = m_I2SF5Switch = false;
    m_CAN1Switch = m_CAN2Switch = m_CAN3Switch = false;
    m_ConfigMode = PLLMODE_FLEXIBLE;
    m_PLL_MUL_Min = 2;
    m_PLL_MUL_Max = 64;
    m_usart1_Clock_Source = m_usart2_Clock_Source = m_usart3_Clock_Source = USART_CLOCK_SOURCE_PCLK;
    m_i2c1_Clock_Source = I2C1_CLOCK_SOURCE_PCLK;
    m_adc_Clock_Source = ADC_CLOCK_SOURCE_HCLK;
    m_i2sf5_Clock_Source = I2SF5_CLOCK_SOURCE_PLLP;
    m_can1_Clock_Source = m_can2_Clock_Source = m_can3_Clock_Source = CAN_CLOCK_SOURCE_HEXT;
}

void ZV32ConfigCLK::InitSeriesValues()
{
    const ClockSeries &s = *m_series;
    m_rtcsel = RTCSEL_LICK;
    m_rtc_div = 2;
    m_hext_Input_Value = s.startHext;
    m_hext_div = 2;
    m_sclkhext_div = m_sclkhick_div = 1;
    m_pllhext_div = PLLHEXT_NODIV;
    m_pllhick_div = PLLHICK_NODIV;
    m_PLLRC = PLLRC_HICK;
    m_ConfigMode = s.hasMultiplier() ? PLLMODE_NORMAL : PLLMODE_FLEXIBLE;
    if (s.hasMultiplier())
        m_PLL_MUL = s.startMul;
    if (s.hasFeedback()) {
        m_PLL_MS = 1;
        m_PLL_NS = s.startNs;
        (s.hasFp() ? m_PLL_FP : m_PLL_FR) = s.startOutputDivider;
    }
    m_sclk_select = SYSCLK_PLL;
    m_AHBDIV = m_APB1DIV = m_APB2DIV = 1;
    m_APB3DIV = s.startApb3Divider;
    m_SysticDIV = 8;
    m_ToADCDIV = s.startAdcDivider;
    if (s.usb == UsbForm::VcoDivider)
        m_PLL_FU = int(s.startUsbDivider);
    else
        m_USBDIV = s.startUsbDivider;
    m_HickToUSB = s.startUsbFromHick ? HICK_TO_USB_ENABLE : HICK_TO_USB_DISABLE;
    if (s.startUsbFromHick)
        m_USBCLK_Value = USB_OUTPUT_CLK_VALUE;
    m_HickToSclk = HICK_TO_SCLK_DIV6;
    m_CLKOUT = static_cast<CLKOUT>(s.startClkout);
    m_CLKOUT1 = CLKOUT1_HICK;
    m_CLKOUT2 = CLKOUT2_SCLK;
    m_CLKOUT_Div = m_CLKOUT_Div1 = m_CLKOUT_Div2 = 1;
    m_CLKOUT1_Div1 = m_CLKOUT1_Div2 = m_CLKOUT2_Div1 = m_CLKOUT2_Div2 = 1;
    m_usart1_Clock_Source = m_usart2_Clock_Source = m_usart3_Clock_Source = USART_CLOCK_SOURCE_PCLK;
    m_i2c1_Clock_Source = I2C1_CLOCK_SOURCE_PCLK;
    m_adc_Clock_Source = ADC_CLOCK_SOURCE_HCLK;
    m_i2sf5_Clock_Source = I2SF5_CLOCK_SOURCE_PLLP;
    m_can1_Clock_Source = m_can2_Clock_Source = m_can3_Clock_Source = static_cast<CAN_CLOCK_SOURCE>(s.startCanSource);
    CalculateCLK();
    CalculateRTCCLK();
}

double ZV32ConfigCLK::GetPllInPutValue() const
{
    const ClockSeries &s = *m_series;
    if (m_PLLRC == PLLRC_HICK) {
        const bool halved = s.hickPllExtraDivider && m_pllhick_div == PLLHICK_DIV;
        return m_hick_Input_Value / (halved ? 2 * s.hickPllDivider : s.hickPllDivider);
    }
    if (!s.directPllInput && m_pllhext_div == PLLHEXT_DIV)
        return m_hext_Input_Value / m_hext_div;
    return m_hext_Input_Value;
}

void ZV32ConfigCLK::UpdatePLLMULMinMaxValue(double pllInput)
{
    m_PLL_MUL_Min = 2;
    m_PLL_MUL_Max = 64;
    if (m_series->multiplierBounds) {
        const auto row = std::find_if(MultiplierBounds.begin(), MultiplierBounds.end(), [&](const MultiplierRow &r) {
            return (r.minExcluded ? pllInput > r.min : pllInput >= r.min) && pllInput <= r.max;
        });
        const bool found = row != MultiplierBounds.end();
        m_PLL_MUL_Min = found ? 2 : 0;
        m_PLL_MUL_Max = found ? row->multiplier : 0;
    }
    if (m_PLL_MUL < m_PLL_MUL_Min)
        m_PLL_MUL = m_PLL_MUL_Min;
    else if (m_PLL_MUL > m_PLL_MUL_Max)
        m_PLL_MUL = m_PLL_MUL_Max;
}

void ZV32ConfigCLK::CalculatePLLCLK()
{
    const double input = GetPllInPutValue();
    if (m_ConfigMode == PLLMODE_NORMAL) {
        UpdatePLLMULMinMaxValue(input);
        m_PLLCLK_Value = m_PLL_MUL * input;
    } else {
        m_PLLCLK_Value = m_PLL_NS * input / ((m_series->hasFp() ? m_PLL_FP : m_PLL_FR) * m_PLL_MS);
    }
}

void ZV32ConfigCLK::CalculateCLK()
{
    const ClockSeries &s = *m_series;
    if (m_sclk_select == SYSCLK_PLL || pll_isEnable())
        CalculatePLLCLK();
    switch (m_sclk_select) {
    case SYSCLK_HEXT:
        m_SYSCLK_Value = s.sclkDividers ? m_hext_Input_Value / m_sclkhext_div : m_hext_Input_Value;
        break;
    case SYSCLK_PLL:
        m_SYSCLK_Value = s.halfPllIsSclk ? m_PLLCLK_Value / 2 : m_PLLCLK_Value;
        break;
    case SYSCLK_HICK:
        m_SYSCLK_Value = m_hick_Input_Value;
        if (!s.hickToSclkFixed && m_HickToSclk == HICK_TO_SCLK_DIV6)
            m_SYSCLK_Value /= 6;
        if (s.sclkDividers)
            m_SYSCLK_Value /= m_sclkhick_div;
        break;
    }
    calculateBuses();
    calculateUsb();
}

void ZV32ConfigCLK::calculateBuses()
{
    const ClockSeries &s = *m_series;
    m_AHBCLK_Value = m_SYSCLK_Value / m_AHBDIV;
    m_APB1CLK_Value = m_AHBCLK_Value / m_APB1DIV;
    m_APB2CLK_Value = m_AHBCLK_Value / m_APB2DIV;
    m_APB3CLK_Value = m_AHBCLK_Value / m_APB3DIV;

    switch (s.apbRaise) {
    case ApbRaise::BothAboveHalf: {
        const int half = GetSYSCLKValidMaxValue() / 2;
        if (m_APB1CLK_Value > half && m_APB1DIV == 1)
            m_APB1DIV = 2;
        if (m_APB2CLK_Value > half && m_APB2DIV == 1)
            m_APB2DIV = 2;
        break;
    }
    case ApbRaise::Apb1Above120:
        if (m_AHBCLK_Value > 120 && m_APB1DIV == 1)
            m_APB1DIV = 2;
        break;
    case ApbRaise::None:
        break;
    }
    m_APB1CLK_Value = m_AHBCLK_Value / m_APB1DIV;
    m_APB2CLK_Value = m_AHBCLK_Value / m_APB2DIV;

    m_APB1TMR_MUL = m_APB1DIV == 1 ? 1 : 2;
    m_APB2TMR_MUL = m_APB2DIV == 1 ? 1 : 2;
    m_APB1TMRCLK_Value = m_APB1TMR_MUL * m_APB1CLK_Value;
    m_APB2TMRCLK_Value = m_APB2TMR_MUL * m_APB2CLK_Value;

    m_ADCCLK_Value = m_ToADC_Switch ? (s.adcFromAhb ? m_AHBCLK_Value : m_APB2CLK_Value) / m_ToADCDIV : 0.0;
}

void ZV32ConfigCLK::calculateUsb()
{
    if (!usbpll_isEnable())
        return;
    if (m_series->usb == UsbForm::VcoDivider)
        m_USBCLK_Value = m_PLL_FP * m_PLLCLK_Value / m_PLL_FU;
    else
        m_USBCLK_Value = m_PLLCLK_Value / m_USBDIV;
}

void ZV32ConfigCLK::CalculateRTCCLK()
{
    switch (m_rtcsel) {
    case RTCSEL_LICK:
        m_RTCCLK_Value = m_lick_Input_Value / 1000.0;
        break;
    case RTCSEL_LEXT:
        m_RTCCLK_Value = m_lext_Input_Value / 1000.0;
        break;
    case RTCSEL_HEXT:
        m_RTCCLK_Value = m_hext_Input_Value / (m_series->rtcDivider ? m_rtc_div : 128);
        break;
    }
}

bool ZV32ConfigCLK::usbpll_isEnable() const
{
    return m_series->hasUsb() && m_ToUSBSwitch && m_HickToUSB == HICK_TO_USB_DISABLE;
}

bool ZV32ConfigCLK::clockOutputUsesPll() const
{
    if (m_series->clkout == ClkoutForm::TwoOutputs) {
        return (m_CLKOUT1_PinSelect != CLKOUT1PIN_NONE && m_CLKOUT1 == CLKOUT1_PLL) ||
               (m_CLKOUT2_PinSelect != CLKOUT2PIN_NONE && m_CLKOUT2 == CLKOUT2_PLL);
    }
    if (m_CLKOUT_PinSelect == CLKOUTPIN_NONE)
        return false;
    if (m_series->clkout == ClkoutForm::TwoDividers)
        return m_CLKOUT == CLKOUT_PLL;
    return m_CLKOUT == CLKOUT_PLLDIV2 || m_CLKOUT == CLKOUT_PLLDIV4;
}

bool ZV32ConfigCLK::clockOutputUsesHext() const
{
    if (m_series->clkout == ClkoutForm::TwoOutputs) {
        return (m_CLKOUT1_PinSelect != CLKOUT1PIN_NONE && m_CLKOUT1 == CLKOUT1_HEXT) ||
               (m_CLKOUT2_PinSelect != CLKOUT2PIN_NONE && m_CLKOUT2 == CLKOUT2_HEXT);
    }
    return m_CLKOUT_PinSelect != CLKOUTPIN_NONE && m_CLKOUT == CLKOUT_HEXT;
}

bool ZV32ConfigCLK::canUsesPll() const
{
    const auto uses = [&](bool inUse, CAN_CLOCK_SOURCE source) {
        return inUse &&
               (source == CAN_CLOCK_SOURCE_PLL || (m_series->canPclkNeedsPll && source == CAN_CLOCK_SOURCE_PCLK));
    };
    return (m_series->canSources >= 1 && uses(m_CAN1Switch, m_can1_Clock_Source)) ||
           (m_series->canSources >= 2 && uses(m_CAN2Switch, m_can2_Clock_Source)) ||
           (m_series->canSources >= 3 && uses(m_CAN3Switch, m_can3_Clock_Source));
}

bool ZV32ConfigCLK::pll_isEnable() const
{
    const ClockSeries &s = *m_series;
    return m_sclk_select == SYSCLK_PLL || usbpll_isEnable() || clockOutputUsesPll() || canUsesPll() ||
           (s.adcSource && m_ToADC_Switch && m_adc_Clock_Source == ADC_CLOCK_SOURCE_PLLCLK) ||
           (s.i2sf5 && m_I2SF5Switch && m_i2sf5_Clock_Source == I2SF5_CLOCK_SOURCE_PLLP);
}

bool ZV32ConfigCLK::hextdiv_isEnable() const
{
    return pll_isEnable() && m_PLLRC == PLLRC_HEXT && !m_series->directPllInput;
}

bool ZV32ConfigCLK::hext_isEnable() const
{
    const ClockSeries &s = *m_series;
    const auto canOnHext = [](bool inUse, CAN_CLOCK_SOURCE source) { return inUse && source == CAN_CLOCK_SOURCE_HEXT; };
    return m_sclk_select == SYSCLK_HEXT || (pll_isEnable() && m_PLLRC == PLLRC_HEXT) || m_rtcsel == RTCSEL_HEXT ||
           clockOutputUsesHext() || (s.canSources >= 1 && canOnHext(m_CAN1Switch, m_can1_Clock_Source)) ||
           (s.canSources >= 2 && canOnHext(m_CAN2Switch, m_can2_Clock_Source)) ||
           (s.canSources >= 3 && canOnHext(m_CAN3Switch, m_can3_Clock_Source));
}

bool ZV32ConfigCLK::hick_isEnable() const
{
    const ClockSeries &s = *m_series;
    if (m_sclk_select == SYSCLK_HICK || (pll_isEnable() && m_PLLRC == PLLRC_HICK))
        return true;
    if (s.hasUsb() && m_ToUSBSwitch && m_HickToUSB == HICK_TO_USB_ENABLE)
        return true;
    if (s.clkout == ClkoutForm::TwoOutputs) {
        if ((m_CLKOUT1_PinSelect != CLKOUT1PIN_NONE && m_CLKOUT1 == CLKOUT1_HICK) ||
            (m_CLKOUT2_PinSelect != CLKOUT2PIN_NONE && m_CLKOUT2 == CLKOUT2_HICK))
            return true;
    } else if (m_CLKOUT_PinSelect != CLKOUTPIN_NONE && m_CLKOUT == CLKOUT_HICK) {
        return true;
    }
    const auto usartOnHick = [](bool inUse, USART_CLOCK_SOURCE source) {
        return inUse && (source == USART_CLOCK_SOURCE_HICK || source == USART_CLOCK_SOURCE_HICK48);
    };
    return (s.usartSources >= 1 && usartOnHick(m_USART1Switch, m_usart1_Clock_Source)) ||
           (s.usartSources >= 2 && usartOnHick(m_USART2Switch, m_usart2_Clock_Source)) ||
           (s.usartSources >= 3 && usartOnHick(m_USART3Switch, m_usart3_Clock_Source)) ||
           (s.i2c1Source && m_I2CSwitch &&
            (m_i2c1_Clock_Source == I2C1_CLOCK_SOURCE_HICK || m_i2c1_Clock_Source == I2C1_CLOCK_SOURCE_HICK48)) ||
           (s.i2sf5 && m_I2SF5Switch && m_i2sf5_Clock_Source == I2SF5_CLOCK_SOURCE_HICK);
}

double ZV32ConfigCLK::hickOutputValue() const
{
    const bool usbAt48 = m_series->hasUsb() && m_ToUSBSwitch && m_HickToUSB == HICK_TO_USB_ENABLE;
    const bool sclkAt48 = m_sclk_select == SYSCLK_HICK && m_HickToSclk == HICK_TO_SCLK_NODIV;
    return usbAt48 || sclkAt48 ? 48.0 : 8.0;
}

bool ZV32ConfigCLK::PLL_MS_Valid_Check(int ms, int &suggestion) const
{
    const double input = GetPllInPutValue();
    const auto fits = [&](int candidate) {
        const double quotient = input / candidate;
        return quotient >= PLL_MS_CHECK_MIN_VALUE && quotient <= PLL_MS_CHECK_MAX_VALUE;
    };
    suggestion = PLL_MS_MIN_VALUE;
    if (fits(ms))
        return true;
    const int step = input / ms < PLL_MS_CHECK_MIN_VALUE ? -1 : 1;
    for (int candidate = ms + step; candidate >= PLL_MS_MIN_VALUE && candidate <= PLL_MS_MAX_VALUE; candidate += step) {
        if (fits(candidate)) {
            suggestion = candidate;
            break;
        }
    }
    return false;
}

bool ZV32ConfigCLK::PLL_NS_Valid_Check(int ns, int ms, int &suggestion) const
{
    const double input = GetPllInPutValue();
    const auto vco = [&](int candidate) { return candidate * input / ms; };
    const auto fits = [&](int candidate) {
        return vco(candidate) >= PLL_NS_CHECK_MIN_VALUE_OTHER && vco(candidate) <= m_series->vcoMax;
    };
    suggestion = PLL_NS_MIN_VALUE;
    if (fits(ns))
        return true;
    const int step = vco(ns) > m_series->vcoMax ? -1 : 1;
    for (int candidate = ns + step; candidate >= PLL_NS_MIN_VALUE && candidate <= PLL_NS_MAX_VALUE; candidate += step) {
        if (fits(candidate)) {
            suggestion = candidate;
            break;
        }
    }
    return false;
}

quint32 ZV32ConfigCLK::PllConfigRegister() const
{
    const ClockSeries &s = *m_series;
    const auto exponent = [](int divider) {
        quint32 code = 0;
        while (code < 5 && (1 << code) < divider)
            ++code;
        return code;
    };
    quint32 value = quint32(m_PLL_MS) | quint32(m_PLL_NS) << 6;
    const quint32 fromHext = m_PLLRC == PLLRC_HEXT ? 1 : 0;
    if (!s.hasFp())
        return value | exponent(m_PLL_FR) << 16 | fromHext << 22;

    value |= quint32(m_PLL_FP / 2) << 16 | fromHext << 30;
    if (s.usb == UsbForm::VcoDivider) {
        quint32 code = 0;
        switch (m_PLL_FU) {
        case 13:
            code = 1;
            break;
        case 12:
            code = 2;
            break;
        case 14:
        case 16:
        case 18:
        case 20:
            code = quint32(m_PLL_FU) / 2 - 4;
            break;
        }
        value |= code << 20 | quint32(usbpll_isEnable() ? 1 : 0) << 29;
    }
    return value;
}

QString ZV32ConfigCLK::Get_CRM_PLLCFG_Value() const
{
    return QStringLiteral("0x%1").arg(PllConfigRegister(), 8, 16, QLatin1Char('0'));
}

} // namespace ChipLoom
