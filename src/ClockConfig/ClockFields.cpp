#include "ClockConfig/ClockFields.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace ChipLoom {

namespace {

enum class Stored {
    No,
    WithField,  ///< wherever the page has it
    WithBypass, ///< on series that keep bypass and ADC flags in the file
    WithClkoutPin,
};

struct FieldRow
{
    ClockField field;
    const char *name;
    Stored stored = Stored::WithField;
};

constexpr std::array<FieldRow, 53> Fields{{
    {ClockField::LextBypass, "lextbypass", Stored::WithBypass},
    {ClockField::RtcSel, "rtcsel"},
    {ClockField::RtcDiv, "rtcdiv"},
    {ClockField::Hext, "hext"},
    {ClockField::HextBypass, "hextbypass", Stored::WithBypass},
    {ClockField::HextDiv, "hextdiv"},
    {ClockField::SclkHextDiv, "sclkhextdiv"},
    {ClockField::SclkHickDiv, "sclkhickdiv"},
    {ClockField::PllHextDiv, "pllhextdiv"},
    {ClockField::PllHickDiv, "pllhickdiv"},
    {ClockField::PllRc, "pllrcs"},
    {ClockField::PllMode, "pllmode"},
    {ClockField::PllMult, "pllmult"},
    {ClockField::PllMs, "pllms"},
    {ClockField::PllNs, "pllns"},
    {ClockField::PllFr, "pllfr"},
    {ClockField::PllFp, "pllfp"},
    {ClockField::SclkSelect, "sclkselect"},
    {ClockField::AhbDiv, "ahbdiv"},
    {ClockField::Apb1Div, "apb1div"},
    {ClockField::Apb2Div, "apb2div"},
    {ClockField::Apb3Div, "apb3div"},
    {ClockField::UsbDiv, "usbdiv"},
    {ClockField::PllFu, "pllfu"},
    {ClockField::HickToUsb, "hicktousb"},
    {ClockField::HickToSclk, "hicktosclk"},
    {ClockField::Clkout, "clkout"},
    {ClockField::ClkoutDiv, "clkoutdiv"},
    {ClockField::ClkoutDiv1, "clkoutdiv1"},
    {ClockField::ClkoutDiv2, "clkoutdiv2"},
    {ClockField::Clkout1, "clkout1"},
    {ClockField::Clkout1Div1, "clkout1div1"},
    {ClockField::Clkout1Div2, "clkout1div2"},
    {ClockField::Clkout2, "clkout2"},
    {ClockField::Clkout2Div1, "clkout2div1"},
    {ClockField::Clkout2Div2, "clkout2div2"},
    {ClockField::ClkoutPin, "clkoutpinselect", Stored::WithClkoutPin},
    {ClockField::AdcSwitch, "adcswitch", Stored::WithBypass},
    {ClockField::AdcDiv, "adcdiv"},
    {ClockField::AdcSource, "adcclocksel"},
    {ClockField::Usart1Source, "usart1clocksel"},
    {ClockField::Usart2Source, "usart2clocksel"},
    {ClockField::Usart3Source, "usart3clocksel"},
    {ClockField::I2c1Source, "i2c1clocksel"},
    {ClockField::Can1Source, "can1clocksel"},
    {ClockField::Can2Source, "can2clocksel"},
    {ClockField::Can3Source, "can3clocksel"},
    {ClockField::I2sf5Source, "i2sf5clocksel"},
    {ClockField::I2sf5Clock, "i2sf5clock"},
    {ClockField::SysticDiv, "systicsel"},
    {ClockField::Clkout1Pin, "clkout1pin", Stored::No},
    {ClockField::Clkout2Pin, "clkout2pin", Stored::No},
    {ClockField::Sclk, "sclk", Stored::No},
}};

static_assert([] {
    for (std::size_t i = 0; i < Fields.size(); ++i) {
        if (int(Fields[i].field) != int(i))
            return false;
    }
    return true;
}());

constexpr auto FieldOrder = [] {
    std::array<ClockField, Fields.size()> order{};
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = Fields[i].field;
    return order;
}();

const FieldRow &rowOf(ClockField field)
{
    return Fields[std::size_t(field)];
}

constexpr std::array<ClockOption, 2> OffOn{{{0, "off"}, {1, "on"}}};
constexpr std::array<ClockOption, 3> RtcSources{{{RTCSEL_LICK, "LICK"}, {RTCSEL_LEXT, "LEXT"}, {RTCSEL_HEXT, "HEXT"}}};
constexpr std::array<ClockOption, 2> PllSources{{{PLLRC_HEXT, "HEXT"}, {PLLRC_HICK, "HICK"}}};
constexpr std::array<ClockOption, 2> PllModes{{{PLLMODE_NORMAL, QT_TRANSLATE_NOOP("Clock", "normal")},
                                               {PLLMODE_FLEXIBLE, QT_TRANSLATE_NOOP("Clock", "flexible")}}};
constexpr std::array<ClockOption, 3> SclkSources{{{SYSCLK_HEXT, "HEXT"}, {SYSCLK_PLL, "PLL"}, {SYSCLK_HICK, "HICK"}}};
constexpr std::array<ClockOption, 2> UsbSources{{{HICK_TO_USB_DISABLE, "PLL"}, {HICK_TO_USB_ENABLE, "HICK"}}};
constexpr std::array<ClockOption, 2> HickToSclk{{{HICK_TO_SCLK_DIV6, "8MHz"}, {HICK_TO_SCLK_NODIV, "48MHz"}}};
constexpr std::array<ClockOption, 12> ClkoutNames{{{CLKOUT_NOCLK, QT_TRANSLATE_NOOP("Clock", "NONE")},
                                                   {CLKOUT_LICK, "LICK"},
                                                   {CLKOUT_LEXT, "LEXT"},
                                                   {CLKOUT_HICK, "HICK"},
                                                   {CLKOUT_HEXT, "HEXT"},
                                                   {CLKOUT_SCLK, "SCLK"},
                                                   {CLKOUT_USB, "USB"},
                                                   {CLKOUT_ADCCLK, "ADC"},
                                                   {CLKOUT_PLLDIV2, "PLL/2"},
                                                   {CLKOUT_PLLDIV4, "PLL/4"},
                                                   {CLKOUT_PLL, "PLL"},
                                                   {CLKOUT_USBFS, "USBFS"}}};
constexpr std::array<ClockOption, 4> Clkout1Sources{
    {{CLKOUT1_HICK, "HICK"}, {CLKOUT1_LEXT, "LEXT"}, {CLKOUT1_HEXT, "HEXT"}, {CLKOUT1_PLL, "PLL"}}};
constexpr std::array<ClockOption, 8> Clkout2Sources{{{CLKOUT2_SCLK, "SCLK"},
                                                     {CLKOUT2_HEXT, "HEXT"},
                                                     {CLKOUT2_PLL, "PLL"},
                                                     {CLKOUT2_USB, "USB"},
                                                     {CLKOUT2_HICK, "HICK"},
                                                     {CLKOUT2_ADCCLK, "ADC"},
                                                     {CLKOUT2_LICK, "LICK"},
                                                     {CLKOUT2_LEXT, "LEXT"}}};
constexpr std::array<ClockOption, 7> PinNames{{{CLKOUTPIN_NONE, "NONE"},
                                               {CLKOUTPIN_PA8, "PA8"},
                                               {CLKOUTPIN_PA9, "PA9"},
                                               {CLKOUTPIN_PB13, "PB13"},
                                               {CLKOUTPIN_PC9, "PC9"},
                                               {CLKOUTPIN_PF2, "PF2"},
                                               {CLKOUTPIN_PE4, "PE4"}}};
constexpr std::array<ClockOption, 3> Clkout1Pins{
    {{CLKOUT1PIN_NONE, "NONE"}, {CLKOUT1PIN_PA8, "PA8"}, {CLKOUT1PIN_PE4, "PE4"}}};
constexpr std::array<ClockOption, 2> Clkout2Pins{{{CLKOUT2PIN_NONE, "NONE"}, {CLKOUT2PIN_PC9, "PC9"}}};
constexpr std::array<ClockOption, 2> AdcSources{{{ADC_CLOCK_SOURCE_HCLK, "HCLK"}, {ADC_CLOCK_SOURCE_PLLCLK, "PLL"}}};
constexpr std::array<ClockOption, 5> UsartSources{{{USART_CLOCK_SOURCE_PCLK, "PCLK"},
                                                   {USART_CLOCK_SOURCE_SCLK, "SCLK"},
                                                   {USART_CLOCK_SOURCE_HICK48, "HICK48"},
                                                   {USART_CLOCK_SOURCE_LEXT, "LEXT"},
                                                   {USART_CLOCK_SOURCE_HICK, "HICK"}}};
constexpr std::array<ClockOption, 4> I2cSources{{{I2C1_CLOCK_SOURCE_PCLK, "PCLK"},
                                                 {I2C1_CLOCK_SOURCE_SCLK, "SCLK"},
                                                 {I2C1_CLOCK_SOURCE_HICK48, "HICK48"},
                                                 {I2C1_CLOCK_SOURCE_HICK, "HICK"}}};
constexpr std::array<ClockOption, 3> CanSources{
    {{CAN_CLOCK_SOURCE_HEXT, "HEXT"}, {CAN_CLOCK_SOURCE_PLL, "PLL"}, {CAN_CLOCK_SOURCE_PCLK, "PCLK"}}};
constexpr std::array<ClockOption, 4> I2sf5Sources{
    {{I2SF5_CLOCK_SOURCE_PLLP, "PLLP"},
     {I2SF5_CLOCK_SOURCE_SCLK, "SCLK"},
     {I2SF5_CLOCK_SOURCE_HICK, "HICK"},
     {I2SF5_CLOCK_SOURCE_EXTERNAL, QT_TRANSLATE_NOOP("Clock", "external")}}};

constexpr std::array<int, 9> BusDividers{1, 2, 4, 8, 16, 64, 128, 256, 512};
constexpr std::array<int, 5> ApbDividers{1, 2, 4, 8, 16};
constexpr std::array<int, 6> HextSclkDividers{1, 2, 4, 8, 16, 32};
constexpr std::array<int, 5> HickSclkDividers{1, 2, 4, 8, 16};
constexpr std::array<int, 5> ClkoutDiv1Values{1, 2, 3, 4, 5};
constexpr std::array<int, 9> AdcDividers{2, 3, 4, 5, 6, 7, 8, 12, 16};
constexpr std::array<int, 2> SysticDividers{1, 8};
constexpr std::array<int, 1> HextDividers{2};

std::vector<ClockOption> named(std::span<const ClockOption> options)
{
    return {options.begin(), options.end()};
}

template <typename Number> std::vector<ClockOption> numbers(std::span<const Number> values)
{
    std::vector<ClockOption> options;
    for (const Number value : values)
        options.push_back({double(value)});
    return options;
}

std::vector<ClockOption> range(int first, int last)
{
    std::vector<ClockOption> options;
    for (int value = first; value <= last; ++value)
        options.push_back({double(value)});
    return options;
}

std::vector<ClockOption> selected(std::span<const ClockOption> names, std::span<const int> values)
{
    std::vector<ClockOption> options;
    for (const int value : values)
        options.push_back(names[std::size_t(value)]);
    return options;
}

template <typename Type> Type fromNumber(double value)
{
    if constexpr (std::is_same_v<Type, double>)
        return value;
    else
        return static_cast<Type>(int(value));
}

} // namespace

QString ClockOption::text() const
{
    return name ? QLatin1String(name) : QString::number(value);
}

std::span<const ClockField> allClockFields()
{
    return FieldOrder;
}

bool isTypedClockField(ClockField field)
{
    return field == ClockField::Hext || field == ClockField::PllMs || field == ClockField::PllNs ||
           field == ClockField::I2sf5Clock || field == ClockField::Sclk;
}

bool hasClockField(const ClockSeries &s, ClockField field)
{
    switch (field) {
    case ClockField::RtcSel:
    case ClockField::Hext:
    case ClockField::PllRc:
    case ClockField::SclkSelect:
    case ClockField::AhbDiv:
    case ClockField::Apb1Div:
    case ClockField::Apb2Div:
    case ClockField::HickToSclk:
    case ClockField::SysticDiv:
    case ClockField::Sclk:
        return true;
    case ClockField::LextBypass:
    case ClockField::HextBypass:
        return s.bypassFlags;
    case ClockField::AdcSwitch:
        return s.adcDivider || s.adcSource;
    case ClockField::RtcDiv:
        return s.rtcDivider;
    case ClockField::HextDiv:
        return s.hextDividerBox;
    case ClockField::SclkHextDiv:
    case ClockField::SclkHickDiv:
        return s.sclkDividers;
    case ClockField::PllHextDiv:
        return !s.directPllInput;
    case ClockField::PllHickDiv:
        return s.hickPllExtraDivider;
    case ClockField::PllMode:
        return s.pll == PllForm::Dual;
    case ClockField::PllMult:
        return s.hasMultiplier();
    case ClockField::PllMs:
    case ClockField::PllNs:
        return s.hasFeedback();
    case ClockField::PllFr:
        return s.hasFeedback() && !s.hasFp();
    case ClockField::PllFp:
        return s.hasFp();
    case ClockField::Apb3Div:
        return s.apb3Max > 0;
    case ClockField::UsbDiv:
        return s.usb == UsbForm::Divider;
    case ClockField::PllFu:
        return s.usb == UsbForm::VcoDivider;
    case ClockField::HickToUsb:
        return s.hasUsb();
    case ClockField::Clkout:
    case ClockField::ClkoutPin:
        return s.clkout != ClkoutForm::TwoOutputs;
    case ClockField::ClkoutDiv:
        return s.clkout == ClkoutForm::OneDivider;
    case ClockField::ClkoutDiv1:
    case ClockField::ClkoutDiv2:
        return s.clkout == ClkoutForm::TwoDividers;
    case ClockField::Clkout1:
    case ClockField::Clkout1Div1:
    case ClockField::Clkout1Div2:
    case ClockField::Clkout2:
    case ClockField::Clkout2Div1:
    case ClockField::Clkout2Div2:
    case ClockField::Clkout1Pin:
    case ClockField::Clkout2Pin:
        return s.clkout == ClkoutForm::TwoOutputs;
    case ClockField::AdcDiv:
        return s.adcDivider;
    case ClockField::AdcSource:
        return s.adcSource;
    case ClockField::Usart1Source:
        return s.usartSources >= 1;
    case ClockField::Usart2Source:
        return s.usartSources >= 2;
    case ClockField::Usart3Source:
        return s.usartSources >= 3;
    case ClockField::I2c1Source:
        return s.i2c1Source;
    case ClockField::Can1Source:
        return s.canSources >= 1;
    case ClockField::Can2Source:
        return s.canSources >= 2;
    case ClockField::Can3Source:
        return s.canSources >= 3;
    case ClockField::I2sf5Source:
    case ClockField::I2sf5Clock:
        return s.i2sf5;
    }
    return false;
}

bool isStoredClockField(const ClockSeries &series, ClockField field)
{
    switch (rowOf(field).stored) {
    case Stored::No:
        return false;
    case Stored::WithField:
        return hasClockField(series, field);
    case Stored::WithBypass:
        return series.bypassFlags;
    case Stored::WithClkoutPin:
        return series.clkoutPinStored;
    }
    return false;
}

QString clockFieldName(const ClockSeries &series, ClockField field)
{
    if (series.oldSclkDividerNames && field == ClockField::SclkHextDiv)
        return QStringLiteral("hextdiv");
    if (series.oldSclkDividerNames && field == ClockField::SclkHickDiv)
        return QStringLiteral("hickdiv");
    if (series.canSources == 1 && field == ClockField::Can1Source)
        return QStringLiteral("canclocksel");
    return QLatin1String(rowOf(field).name);
}

std::optional<ClockField> clockFieldByName(const ClockSeries &series, const QString &name)
{
    for (const ClockField field : FieldOrder) {
        if (hasClockField(series, field) && clockFieldName(series, field) == name)
            return field;
    }
    return std::nullopt;
}

std::vector<ClockOption> clockOptions(const ZV32ConfigCLK &clock, ClockField field)
{
    const ClockSeries &s = clock.series();
    switch (field) {
    case ClockField::LextBypass:
    case ClockField::HextBypass:
    case ClockField::AdcSwitch:
    case ClockField::PllHextDiv:
    case ClockField::PllHickDiv:
        return named(OffOn);
    case ClockField::RtcSel:
        return named(RtcSources);
    case ClockField::RtcDiv:
        return range(2, 31);
    case ClockField::HextDiv:
        return numbers<int>(HextDividers);
    case ClockField::SclkHextDiv:
        return numbers<int>(HextSclkDividers);
    case ClockField::SclkHickDiv:
        return numbers<int>(HickSclkDividers);
    case ClockField::PllRc:
        return named(PllSources);
    case ClockField::PllMode:
        return named(PllModes);
    case ClockField::PllMult: {
        ZV32ConfigCLK bounds = clock;
        bounds.UpdatePLLMULMinMaxValue(clock.GetPllInPutValue());
        return bounds.Get_PLL_MUL_Max() == 0 ? std::vector<ClockOption>()
                                             : range(bounds.Get_PLL_MUL_Min(), bounds.Get_PLL_MUL_Max());
    }
    case ClockField::PllFr:
    case ClockField::PllFp:
        return numbers<int>(pllOutputDividers(s));
    case ClockField::SclkSelect:
        return named(SclkSources);
    case ClockField::AhbDiv:
    case ClockField::ClkoutDiv:
    case ClockField::ClkoutDiv2:
    case ClockField::Clkout1Div2:
    case ClockField::Clkout2Div2:
        return numbers<int>(BusDividers);
    case ClockField::Apb1Div:
    case ClockField::Apb2Div:
    case ClockField::Apb3Div:
        return numbers<int>(ApbDividers);
    case ClockField::UsbDiv:
    case ClockField::PllFu:
        return numbers<double>(s.usbDividers);
    case ClockField::HickToUsb:
        return named(UsbSources);
    case ClockField::HickToSclk:
        return named(HickToSclk);
    case ClockField::Clkout:
        return selected(ClkoutNames, s.clkoutSources);
    case ClockField::ClkoutDiv1:
    case ClockField::Clkout1Div1:
    case ClockField::Clkout2Div1:
        return numbers<int>(ClkoutDiv1Values);
    case ClockField::Clkout1:
        return named(Clkout1Sources);
    case ClockField::Clkout2:
        return named(Clkout2Sources);
    case ClockField::ClkoutPin:
        return selected(PinNames, s.clkoutPins);
    case ClockField::Clkout1Pin:
        return named(Clkout1Pins);
    case ClockField::Clkout2Pin:
        return named(Clkout2Pins);
    case ClockField::AdcDiv:
        return numbers<int>(AdcDividers);
    case ClockField::AdcSource:
        return named(AdcSources);
    case ClockField::Usart1Source:
    case ClockField::Usart2Source:
    case ClockField::Usart3Source:
        return named(UsartSources);
    case ClockField::I2c1Source:
        return named(I2cSources);
    case ClockField::Can1Source:
    case ClockField::Can2Source:
    case ClockField::Can3Source:
        return named(CanSources);
    case ClockField::I2sf5Source:
        return named(I2sf5Sources);
    case ClockField::SysticDiv:
        return numbers<int>(SysticDividers);
    case ClockField::Hext:
    case ClockField::PllMs:
    case ClockField::PllNs:
    case ClockField::I2sf5Clock:
    case ClockField::Sclk:
        break;
    }
    return {};
}

std::optional<double> clockOptionByText(const ZV32ConfigCLK &clock, ClockField field, const QString &text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    for (const ClockOption &option : clockOptions(clock, field)) {
        if (option.text().compare(text, Qt::CaseInsensitive) == 0 || (isNumber && option.value == number))
            return option.value;
    }
    return std::nullopt;
}

int clockPinIndex(const ClockSeries &series, ClockField field, const QString &pin)
{
    if (!hasClockField(series, field))
        return 0;
    const std::vector<ClockOption> pins = clockOptions(ZV32ConfigCLK(series.code), field);
    const auto found = std::find_if(pins.begin(), pins.end(), [&](const ClockOption &o) { return o.text() == pin; });
    return found == pins.end() ? 0 : int(found - pins.begin());
}

QString clockFieldText(const ZV32ConfigCLK &clock, ClockField field)
{
    const double value = clockFieldValue(clock, field);
    for (const ClockOption &option : clockOptions(clock, field)) {
        if (option.value == value)
            return option.text();
    }
    return QString::number(value);
}

// One row per field for both directions: the value as a number, and the number as the value's own type.
#define CHIPLOOM_CLOCK_FIELDS(X)                                                                                       \
    X(LextBypass, LEXT_Bypass)                                                                                         \
    X(RtcSel, RTCSEL)                                                                                                  \
    X(RtcDiv, RTCDIV)                                                                                                  \
    X(Hext, HEXT_Value)                                                                                                \
    X(HextBypass, HEXT_Bypass)                                                                                         \
    X(HextDiv, HEXTDIV)                                                                                                \
    X(SclkHextDiv, SCLKHEXTDIV)                                                                                        \
    X(SclkHickDiv, SCLKHICKDIV)                                                                                        \
    X(PllHextDiv, PLLHEXTDIV)                                                                                          \
    X(PllHickDiv, PLLHICKDIV)                                                                                          \
    X(PllRc, PLLRC)                                                                                                    \
    X(PllMode, ConfigMode)                                                                                             \
    X(PllMult, PLL_MUL)                                                                                                \
    X(PllMs, PLL_MS)                                                                                                   \
    X(PllNs, PLL_NS)                                                                                                   \
    X(PllFr, PLL_FR)                                                                                                   \
    X(PllFp, PLL_FP)                                                                                                   \
    X(SclkSelect, SYSCLKSelect)                                                                                        \
    X(AhbDiv, AHBDIV)                                                                                                  \
    X(Apb1Div, APB1DIV)                                                                                                \
    X(Apb2Div, APB2DIV)                                                                                                \
    X(Apb3Div, APB3DIV)                                                                                                \
    X(UsbDiv, USBDIV)                                                                                                  \
    X(PllFu, PLL_FU)                                                                                                   \
    X(HickToUsb, HickToUsb)                                                                                            \
    X(HickToSclk, HickToSclk)                                                                                          \
    X(Clkout, CLKOUT)                                                                                                  \
    X(ClkoutDiv, CLKOUT_Div)                                                                                           \
    X(ClkoutDiv1, CLKOUT_Div1)                                                                                         \
    X(ClkoutDiv2, CLKOUT_Div2)                                                                                         \
    X(Clkout1, CLKOUT1)                                                                                                \
    X(Clkout1Div1, CLKOUT1_Div1)                                                                                       \
    X(Clkout1Div2, CLKOUT1_Div2)                                                                                       \
    X(Clkout2, CLKOUT2)                                                                                                \
    X(Clkout2Div1, CLKOUT2_Div1)                                                                                       \
    X(Clkout2Div2, CLKOUT2_Div2)                                                                                       \
    X(ClkoutPin, CLKOUT_PinSelect)                                                                                     \
    X(AdcSwitch, TO_ADC_Switch)                                                                                        \
    X(AdcDiv, ADCDIV)                                                                                                  \
    X(AdcSource, ADC_ClockSource)                                                                                      \
    X(Usart1Source, USART1_ClockSource)                                                                                \
    X(Usart2Source, USART2_ClockSource)                                                                                \
    X(Usart3Source, USART3_ClockSource)                                                                                \
    X(I2c1Source, I2C1_ClockSource)                                                                                    \
    X(Can1Source, CAN1_ClockSource)                                                                                    \
    X(Can2Source, CAN2_ClockSource)                                                                                    \
    X(Can3Source, CAN3_ClockSource)                                                                                    \
    X(I2sf5Source, I2SF5_ClockSource)                                                                                  \
    X(SysticDiv, SysticDIV)                                                                                            \
    X(Clkout1Pin, CLKOUT1_PinSelect)                                                                                   \
    X(Clkout2Pin, CLKOUT2_PinSelect)                                                                                   \
    X(Sclk, SYSCLKValue)

double clockFieldValue(const ZV32ConfigCLK &clock, ClockField field)
{
    switch (field) {
#define CHIPLOOM_GET(name, member)                                                                                     \
    case ClockField::name:                                                                                             \
        return double(clock.Get_##member());
        CHIPLOOM_CLOCK_FIELDS(CHIPLOOM_GET)
#undef CHIPLOOM_GET
    case ClockField::I2sf5Clock:
        break;
    }
    return 0.0;
}

void setClockFieldValue(ZV32ConfigCLK &clock, ClockField field, double value)
{
    switch (field) {
#define CHIPLOOM_SET(name, member)                                                                                     \
    case ClockField::name:                                                                                             \
        clock.Set_##member(fromNumber<decltype(clock.Get_##member())>(value));                                         \
        break;
        CHIPLOOM_CLOCK_FIELDS(CHIPLOOM_SET)
#undef CHIPLOOM_SET
    case ClockField::I2sf5Clock:
        break;
    }
}

} // namespace ChipLoom
