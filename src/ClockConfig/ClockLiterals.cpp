#include "ClockConfig/ClockLiterals.h"

#include "ClockConfig/ZV32ConfigCLK.h"
#include "ClockConfig/ZV32PLLConfig.h"

#include <array>
#include <initializer_list>

namespace ChipLoom {

namespace {

QString word(double value, const char *prefix, std::initializer_list<const char *> words)
{
    const auto index = static_cast<size_t>(value);
    return index < words.size() ? QLatin1String(prefix) + QLatin1String(words.begin()[index]) : QString();
}

QString divider(double value, const char *prefix)
{
    const int whole = static_cast<int>(value);
    const QLatin1String half(value > whole ? "_5" : "");
    return QLatin1String(prefix) + QString::number(whole) + half;
}

// The series whose real-time clock has no calendar of its own name it without the E.
constexpr std::array RtcSeries{ZV32F413, ZV32F415, ZV32WB415, ZV32F403A, ZV32F407, ZV32A403A, ZV32F403E, ZV32F407E};

const char *rtcPrefix(ZV32MCUSERIALS series)
{
    for (const ZV32MCUSERIALS code : RtcSeries) {
        if (code == series)
            return "CRM_RTC_CLOCK_";
    }
    return "CRM_ERTC_CLOCK_";
}

QString canSource(const ZV32ConfigCLK &clock, double value)
{
    // Where USB has a divider of the VCO, the PLL's way to CAN is that divider too.
    if (static_cast<int>(value) == CAN_CLOCK_SOURCE_PLL && clock.series().usb == UsbForm::VcoDivider)
        return QStringLiteral("CRM_CAN_CLOCK_SOURCE_PLLU");
    return word(value, "CRM_CAN_CLOCK_SOURCE_", {"HEXT", "PLL", "PCLK"});
}

QString usbSource(const ZV32ConfigCLK &clock, double hickToUsb)
{
    if (static_cast<int>(hickToUsb) == HICK_TO_USB_ENABLE)
        return QStringLiteral("CRM_USB_CLOCK_SOURCE_HICK");
    return clock.series().usb == UsbForm::VcoDivider ? QStringLiteral("CRM_USB_CLOCK_SOURCE_PLLU")
                                                     : QStringLiteral("CRM_USB_CLOCK_SOURCE_PLL");
}

} // namespace

QString clockLiteral(const ZV32ConfigCLK &clock, ClockField field)
{
    const double value = clockFieldValue(clock, field);
    switch (field) {
    case ClockField::RtcSel:
        return word(value, rtcPrefix(clock.series().code), {"LICK", "LEXT", "HEXT_DIV"});
    case ClockField::AhbDiv:
        return divider(value, "CRM_AHB_DIV_");
    case ClockField::Apb1Div:
        return divider(value, "CRM_APB1_DIV_");
    case ClockField::Apb2Div:
        return divider(value, "CRM_APB2_DIV_");
    case ClockField::Apb3Div:
        return divider(value, "CRM_APB3_DIV_");
    case ClockField::HextDiv:
        return divider(value, "CRM_HEXT_DIV_");
    case ClockField::PllMult:
        return divider(value, "CRM_PLL_MULT_");
    case ClockField::PllFr:
        return divider(value, "CRM_PLL_FR_");
    case ClockField::Clkout:
        return word(
            value, "CRM_CLKOUT_",
            {"NOCLK", "LICK", "LEXT", "HICK", "HEXT", "SCLK", "USB", "ADC", "PLL_DIV_2", "PLL_DIV_4", "PLL", "USBFS"});
    case ClockField::ClkoutDiv:
        return divider(value, "CRM_CLKOUT_DIV_");
    case ClockField::Clkout1:
        return word(value, "CRM_CLKOUT1_", {"HICK", "LEXT", "HEXT", "PLL"});
    case ClockField::Clkout2:
        return word(value, "CRM_CLKOUT2_", {"SCLK", "HEXT", "PLL", "USB", "HICK", "ADC", "LICK", "LEXT"});
    case ClockField::Clkout1Div1:
    case ClockField::Clkout2Div1:
        return divider(value, "CRM_CLKOUT_DIV1_");
    case ClockField::Clkout1Div2:
    case ClockField::Clkout2Div2:
        return divider(value, "CRM_CLKOUT_DIV2_");
    case ClockField::RtcDiv:
        return divider(value, "CRM_ERTC_CLOCK_HEXT_DIV_");
    case ClockField::HickToUsb:
        return usbSource(clock, value);
    case ClockField::UsbDiv:
        return divider(value, "CRM_USB_DIV_");
    case ClockField::PllFu:
        return divider(value, "CRM_PLL_FU_");
    case ClockField::AdcSource:
        return word(value, "CRM_ADC_CLOCK_SOURCE_", {"HCLK", "PLLCLK"});
    case ClockField::AdcDiv:
        return divider(value, "CRM_ADC_DIV_");
    case ClockField::Usart1Source:
    case ClockField::Usart2Source:
    case ClockField::Usart3Source:
        return word(value, "CRM_USART_CLOCK_SOURCE_", {"PCLK", "SCLK", "HICK48", "LEXT", "HICK"});
    case ClockField::I2c1Source:
        return word(value, "CRM_I2C_CLOCK_SOURCE_", {"PCLK", "SCLK", "HICK48", "HICK"});
    case ClockField::I2sf5Source:
        return word(value, "CRM_I2SF5_CLOCK_SOURCE_", {"PLLP", "SCLK", "HICK", "EXTERNAL"});
    case ClockField::Can1Source:
    case ClockField::Can2Source:
    case ClockField::Can3Source:
        return canSource(clock, value);
    default:
        return {};
    }
}

#define CHIPLOOM_LITERAL(member, field)                                                                                \
    QString ZV32PLLConfig::GenerateCode_Get_##member() const                                                           \
    {                                                                                                                  \
        return getMCUPLL() ? clockLiteral(getMCUPLL()->clock(), ClockField::field) : QString();                        \
    }
CHIPLOOM_LITERAL(ERTC_ClockSource, RtcSel)
CHIPLOOM_LITERAL(ERTC_Div, RtcDiv)
CHIPLOOM_LITERAL(USB_ClockSource, HickToUsb)
CHIPLOOM_LITERAL(ADC_ClockSource, AdcSource)
CHIPLOOM_LITERAL(ADCDiv, AdcDiv)
CHIPLOOM_LITERAL(USART1_ClockSource, Usart1Source)
CHIPLOOM_LITERAL(USART2_ClockSource, Usart2Source)
CHIPLOOM_LITERAL(USART3_ClockSource, Usart3Source)
CHIPLOOM_LITERAL(I2C1_ClockSource, I2c1Source)
CHIPLOOM_LITERAL(I2SF5_ClockSource, I2sf5Source)
CHIPLOOM_LITERAL(CAN1_ClockSource, Can1Source)
CHIPLOOM_LITERAL(CAN2_ClockSource, Can2Source)
CHIPLOOM_LITERAL(CAN3_ClockSource, Can3Source)
#undef CHIPLOOM_LITERAL

QString ZV32PLLConfig::GenerateCode_Get_USB_Div() const
{
    if (!getMCUPLL())
        return {};
    const ZV32ConfigCLK &clock = getMCUPLL()->clock();
    return clockLiteral(clock, clock.series().usb == UsbForm::VcoDivider ? ClockField::PllFu : ClockField::UsbDiv);
}

double ZV32PLLConfig::GenerateCode_Get_Hext_Value() const
{
    return getMCUPLL() ? clockFieldValue(getMCUPLL()->clock(), ClockField::Hext) : 0.0;
}

} // namespace ChipLoom
