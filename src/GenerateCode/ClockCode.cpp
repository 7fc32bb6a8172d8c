#include "GenerateCode/ClockCode.h"

#include "ClockConfig/ClockLiterals.h"
#include "GenerateCode/Generatecode_IP.h"
#include "GenerateCode/GenerationInput.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"

#include <QtMath>

#include <array>
#include <span>
#include <utility>

namespace ChipLoom {

namespace {

// MHz of SCLK up to which 0, 1, ... wait cycles are enough.
constexpr std::array<double, 7> FlashLimits{32, 64, 96, 128, 160, 192, 216};
// Above this the clock has to rise in steps. MHz.
constexpr double StepLimit = 108.0;
constexpr double PllRangeLimit = 72.0;
// Width of the names in the comment block.
constexpr int NameWidth = 20;

// MHz of SCLK up to which the core runs on 1.1 V and on 1.2 V; above it needs 1.3 V.
constexpr double LowVoltageLimit = 144.0;
constexpr double MiddleVoltageLimit = 240.0;

QString hertz(double value, double unit)
{
    return QString::number(qRound64(value * unit));
}

QString onOff(bool on)
{
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

QString number(double value)
{
    return QString::number(value);
}

} // namespace

struct ClockCode::Chain
{
    ClockMap map;
    std::span<const Piece> pieces;
};

// Its pin, its source and its dividers; `number` stands behind the names of its section, signal and functions.
struct ClockCode::Output
{
    const char *number;
    ClockField pin;
    std::span<const char *const> pins; ///< by the value of `pin`; the first stands for none
    ClockField source;
    const char *sourceCall;
    std::span<const ClockField> dividers;

    QString name(const char *before, const char *behind) const
    {
        return QLatin1String(before) + QLatin1String(number) + QLatin1String(behind);
    }
};

ClockCode::ClockCode(const ZV32ConfigCLK &clock, const GenerationInput &input) : m_clock(clock), m_input(input) {}

bool ClockCode::lick_isEnable() const
{
    const bool rtc = m_input.IP_Is_Valid(QStringLiteral("RTC")) || m_input.IP_Is_Valid(QStringLiteral("ERTC"));
    return (rtc && m_clock.Get_RTCSEL() == RTCSEL_LICK) || m_input.IP_Is_Valid(QStringLiteral("WDT")) ||
           (m_clock.Get_CLKOUT_PinSelect() != CLKOUTPIN_NONE && m_clock.Get_CLKOUT() == CLKOUT_LICK) ||
           (m_clock.Get_CLKOUT2_PinSelect() != CLKOUT2PIN_NONE && m_clock.Get_CLKOUT2() == CLKOUT2_LICK);
}

QString ClockCode::GetOutPutString_OscInitType_FlashPsr() const
{
    size_t cycles = 0;
    while (cycles < FlashLimits.size() && m_clock.Get_SYSCLKValue() > FlashLimits[cycles])
        ++cycles;
    return QStringLiteral("FLASH_WAIT_CYCLE_%1").arg(cycles);
}

QString ClockCode::GetOutPutString_PWC_LDO_OUTPUT() const
{
    const double sclk = m_clock.Get_SYSCLKValue();
    return sclk > MiddleVoltageLimit ? QStringLiteral("PWC_LDO_OUTPUT_1V3")
           : sclk > LowVoltageLimit  ? QStringLiteral("PWC_LDO_OUTPUT_1V2")
                                     : QStringLiteral("PWC_LDO_OUTPUT_1V1");
}

QString ClockCode::GetOutPutString_OscInitType_PLLRC() const
{
    const ClockSeries &series = m_clock.series();
    if (!m_clock.pll_isEnable())
        return QStringLiteral("CRM_PLL_SOURCE_HEXT");
    if (m_clock.Get_PLLRC() == PLLRC_HICK) {
        return series.hickPllExtraDivider && m_clock.Get_PLLHICKDIV() == PLLHICK_NODIV
                   ? QStringLiteral("CRM_PLL_SOURCE_HICK_8M")
                   : QStringLiteral("CRM_PLL_SOURCE_HICK");
    }
    return !series.directPllInput && m_clock.Get_PLLHEXTDIV() == PLLHEXT_DIV ? QStringLiteral("CRM_PLL_SOURCE_HEXT_DIV")
                                                                             : QStringLiteral("CRM_PLL_SOURCE_HEXT");
}

QString ClockCode::GetOutPutString_OscInitType_PLLOutputRange() const
{
    return m_clock.Get_PLLCLKValue() > PllRangeLimit ? QStringLiteral("CRM_PLL_OUTPUT_RANGE_GT72MHZ")
                                                     : QStringLiteral("CRM_PLL_OUTPUT_RANGE_LE72MHZ");
}

bool ClockCode::GenerateCode_lm_clock_config_lm_config_c(std::string &text) const
{
    using C = ClockCode;
    static constexpr std::array<Piece, 14> F421{
        &C::GenerateCode_flashpsr,     &C::GenerateCode_lext,         &C::GenerateCode_hextbypass,
        &C::GenerateCode_hext,         &C::GenerateCode_hick,         &C::GenerateCode_lick,
        &C::GenerateCode_pll,          &C::GenerateCode_autostepmode, &C::GenerateCode_pllsysclock,
        &C::GenerateCode_hextsysclock, &C::GenerateCode_hicksysclock, &C::GenerateCode_ahbclk,
        &C::GenerateCode_apb1clk,      &C::GenerateCode_apb2clk};
    static constexpr std::array<Piece, 14> F403A{
        &C::GenerateCode_lext,         &C::GenerateCode_lick,         &C::GenerateCode_hext,
        &C::GenerateCode_hextbypass,   &C::GenerateCode_hick,         &C::GenerateCode_hextdiv,
        &C::GenerateCode_pll,          &C::GenerateCode_autostepmode, &C::GenerateCode_pllsysclock,
        &C::GenerateCode_hextsysclock, &C::GenerateCode_hicksysclock, &C::GenerateCode_ahbclk,
        &C::GenerateCode_apb1clk,      &C::GenerateCode_apb2clk};
    static constexpr std::array<Piece, 15> F435{&C::GenerateCode_flashpsr,     &C::GenerateCode_PWC_LDO_OUTPUT,
                                                &C::GenerateCode_lext,         &C::GenerateCode_hextbypass,
                                                &C::GenerateCode_hext,         &C::GenerateCode_hick,
                                                &C::GenerateCode_lick,         &C::GenerateCode_pll,
                                                &C::GenerateCode_autostepmode, &C::GenerateCode_pllsysclock,
                                                &C::GenerateCode_hextsysclock, &C::GenerateCode_hicksysclock,
                                                &C::GenerateCode_ahbclk,       &C::GenerateCode_apb1clk,
                                                &C::GenerateCode_apb2clk};
    // One chain for each map that has templates.
    static constexpr std::array<Chain, 3> Chains{
        {{ClockMap::F421, F421}, {ClockMap::F403A, F403A}, {ClockMap::F435, F435}}};
    for (const Chain &chain : Chains) {
        if (chain.map != m_clock.series().map)
            continue;
        for (const Piece piece : chain.pieces) {
            if (!(this->*piece)(text))
                return false;
        }
        return GenerateCode_result(text);
    }
    return false;
}

bool ClockCode::GenerateCode_flashpsr(std::string &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("flash psr"), true) &&
           rewriteCall(text, QStringLiteral("flash_psr_set"), {GetOutPutString_OscInitType_FlashPsr()});
}

bool ClockCode::GenerateCode_PWC_LDO_OUTPUT(std::string &text) const
{
    return rewriteCall(text, QStringLiteral("pwc_ldo_output_voltage_set"), {GetOutPutString_PWC_LDO_OUTPUT()});
}

bool ClockCode::GenerateCode_lext(std::string &text) const
{
    const bool on = m_clock.Get_LEXT_Enable();
    return GenerateCode_Handle_Function(text, QStringLiteral("enable lext"), on) &&
           (!on || GenerateCode_Handle_Function(text, QStringLiteral("lext bypass"), m_clock.Get_LEXT_Bypass()));
}

bool ClockCode::GenerateCode_lick(std::string &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("enable lick"), lick_isEnable());
}

bool ClockCode::GenerateCode_hext(std::string &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("enable hext"), m_clock.hext_isEnable());
}

bool ClockCode::GenerateCode_hextbypass(std::string &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("hext bypass"),
                                        m_clock.hext_isEnable() && m_clock.Get_HEXT_Bypass());
}

bool ClockCode::GenerateCode_hick(std::string &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("enable hick"), m_clock.hick_isEnable());
}

bool ClockCode::GenerateCode_hextdiv(std::string &text) const
{
    const bool on = m_clock.hextdiv_isEnable();
    return GenerateCode_Handle_Function(text, QStringLiteral("enable hextdiv"), on) &&
           (!on ||
            rewriteCall(text, QStringLiteral("crm_hext_clock_div_set"), {clockLiteral(m_clock, ClockField::HextDiv)}));
}

bool ClockCode::GenerateCode_pll(std::string &text) const
{
    const bool on = m_clock.pll_isEnable();
    if (!GenerateCode_Handle_Function(text, QStringLiteral("enable pll"), on))
        return false;
    if (!on)
        return true;
    if (m_clock.series().pll == PllForm::Table)
        return rewriteCall(text, QStringLiteral("crm_pll_config"),
                           {GetOutPutString_OscInitType_PLLRC(), clockLiteral(m_clock, ClockField::PllMult),
                            GetOutPutString_OscInitType_PLLOutputRange()});
    if (!m_clock.series().hasMultiplier())
        return rewriteCall(text, QStringLiteral("crm_pll_config"), flexibleFactors());
    return GenerateCode_pll_normal(text) && GenerateCode_pll_flexible(text);
}

bool ClockCode::GenerateCode_pll_normal(std::string &text) const
{
    const bool on = m_clock.Get_ConfigMode() == PLLMODE_NORMAL;
    return GenerateCode_Handle_Function(text, QStringLiteral("pll normal"), on) &&
           (!on || rewriteCall(text, QStringLiteral("crm_pll_config"),
                               {GetOutPutString_OscInitType_PLLRC(), clockLiteral(m_clock, ClockField::PllMult)}));
}

bool ClockCode::GenerateCode_pll_flexible(std::string &text) const
{
    const bool on = m_clock.Get_ConfigMode() == PLLMODE_FLEXIBLE;
    return GenerateCode_Handle_Function(text, QStringLiteral("pll flexible"), on) &&
           (!on || rewriteCall(text, QStringLiteral("crm_pll_flexible_config"), flexibleFactors()));
}

QStringList ClockCode::flexibleFactors() const
{
    return {GetOutPutString_OscInitType_PLLRC(), QString::number(m_clock.Get_PLL_NS()),
            QString::number(m_clock.Get_PLL_MS()), clockLiteral(m_clock, ClockField::PllFr)};
}

bool ClockCode::GenerateCode_autostepmode(std::string &text) const
{
    const bool step = m_clock.Get_SYSCLKValue() > StepLimit;
    return GenerateCode_Handle_Function(text, QStringLiteral("enable auto step mode"), step) &&
           GenerateCode_Handle_Function(text, QStringLiteral("disable auto step mode"), step);
}

bool ClockCode::GenerateCode_pllsysclock(std::string &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("pll sysclock"), m_clock.Get_SYSCLKSelect() == SYSCLK_PLL);
}

bool ClockCode::GenerateCode_hextsysclock(std::string &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("hext sysclock"),
                                        m_clock.Get_SYSCLKSelect() == SYSCLK_HEXT);
}

bool ClockCode::GenerateCode_hicksysclock(std::string &text) const
{
    const bool on = m_clock.Get_SYSCLKSelect() == SYSCLK_HICK;
    return GenerateCode_Handle_Function(text, QStringLiteral("hick sysclock"), on) &&
           (!on || GenerateCode_Handle_Function(text, QStringLiteral("hick48"),
                                                m_clock.Get_HickToSclk() == HICK_TO_SCLK_NODIV));
}

bool ClockCode::GenerateCode_ahbclk(std::string &text) const
{
    return rewriteCall(text, QStringLiteral("crm_ahb_div_set"), {clockLiteral(m_clock, ClockField::AhbDiv)});
}

bool ClockCode::GenerateCode_apb1clk(std::string &text) const
{
    return rewriteCall(text, QStringLiteral("crm_apb1_div_set"), {clockLiteral(m_clock, ClockField::Apb1Div)});
}

bool ClockCode::GenerateCode_apb2clk(std::string &text) const
{
    return rewriteCall(text, QStringLiteral("crm_apb2_div_set"), {clockLiteral(m_clock, ClockField::Apb2Div)});
}

QString ClockCode::pllInput() const
{
    if (m_clock.Get_PLLRC() == PLLRC_HICK)
        return QStringLiteral("hick / %1").arg(m_clock.series().hickPllDivider);
    if (m_clock.series().directPllInput || m_clock.Get_PLLHEXTDIV() != PLLHEXT_DIV)
        return QStringLiteral("hext");
    return m_clock.series().hextDividerBox ? QStringLiteral("hext / hext_div") : QStringLiteral("hext / 2");
}

QString ClockCode::formula() const
{
    switch (m_clock.Get_SYSCLKSelect()) {
    case SYSCLK_HEXT:
        return QStringLiteral("hext");
    case SYSCLK_HICK:
        return m_clock.Get_HickToSclk() == HICK_TO_SCLK_NODIV ? QStringLiteral("hick") : QStringLiteral("hick / 6");
    case SYSCLK_PLL:
        break;
    }
    const ClockSeries &series = m_clock.series();
    if (series.pll == PllForm::Table || (series.pll == PllForm::Dual && m_clock.Get_ConfigMode() == PLLMODE_NORMAL))
        return pllInput() + QLatin1String(" * pll_mult");
    return QLatin1Char('(') + pllInput() + QLatin1String(" * pll_ns)/(pll_ms * pll_fr)");
}

bool ClockCode::GenerateCode_result(std::string &text) const
{
    const std::string opening = "* @brief  system clock config program";
    const int start = indexOf(text, opening);
    const int end = start < 0 ? -1 : indexOf(text, "* @retval none", start);
    if (end < 0)
        return false;

    const ClockSeries &series = m_clock.series();
    QList<std::pair<QString, QString>> lines{
        {QStringLiteral("lick"), onOff(lick_isEnable())},
        {QStringLiteral("lext"), onOff(m_clock.Get_LEXT_Enable())},
        {QStringLiteral("hick"), onOff(m_clock.hick_isEnable())},
        {QStringLiteral("hext"), onOff(m_clock.hext_isEnable())},
    };
    if (m_clock.hext_isEnable())
        lines.append({QStringLiteral("hext_value"), hertz(m_clock.Get_HEXT_Value(), 1e6)});
    if (m_clock.pll_isEnable()) {
        if (m_clock.hextdiv_isEnable() && series.hextDividerBox)
            lines.append({QStringLiteral("hext_div"), number(m_clock.Get_HEXTDIV())});
        const bool multiplied =
            series.pll == PllForm::Table || (series.pll == PllForm::Dual && m_clock.Get_ConfigMode() == PLLMODE_NORMAL);
        if (multiplied) {
            lines.append({QStringLiteral("pll_mult"), number(m_clock.Get_PLL_MUL())});
        } else {
            lines.append({QStringLiteral("pll_ns"), number(m_clock.Get_PLL_NS())});
            lines.append({QStringLiteral("pll_ms"), number(m_clock.Get_PLL_MS())});
            lines.append({QStringLiteral("pll_fr"), number(m_clock.Get_PLL_FR())});
        }
        if (series.pll == PllForm::Table)
            lines.append({QStringLiteral("pll_range"), m_clock.Get_PLLCLKValue() > PllRangeLimit
                                                           ? QStringLiteral("GT72MHZ (greater than 72 mhz)")
                                                           : QStringLiteral("LE72MHZ (up to 72 mhz)")});
    }
    lines += QList<std::pair<QString, QString>>{
        {QStringLiteral("sclk"), hertz(m_clock.Get_SYSCLKValue(), 1e6)},
        {QStringLiteral("ahbdiv"), number(m_clock.Get_AHBDIV())},
        {QStringLiteral("ahbclk"), hertz(m_clock.Get_AHBCLKValue(), 1e6)},
        {QStringLiteral("apb1div"), number(m_clock.Get_APB1DIV())},
        {QStringLiteral("apb1clk"), hertz(m_clock.Get_APB1CLKValue(), 1e6)},
        {QStringLiteral("apb2div"), number(m_clock.Get_APB2DIV())},
        {QStringLiteral("apb2clk"), hertz(m_clock.Get_APB2CLKValue(), 1e6)},
    };
    if (indexOf(text, "flash_psr_set") >= 0)
        lines.append({QStringLiteral("flash_wtcyc"),
                      GetOutPutString_OscInitType_FlashPsr().section(QLatin1Char('_'), -1) + QLatin1String(" cycle")});

    static constexpr std::array sources{"hext", "pll", "hick"};
    QString note = QLatin1String("\n  * @note   the system clock is configured as follow:\n"
                                 "  *         system clock (sclk)   = ") +
                   formula() + QLatin1String("\n  *         system clock source   = ") +
                   QLatin1String(sources[static_cast<size_t>(m_clock.Get_SYSCLKSelect())]) + QLatin1Char('\n');
    for (const auto &[name, value] : qAsConst(lines))
        note += QLatin1String("  *         - ") + name.leftJustified(NameWidth) + QLatin1String("= ") + value +
                QLatin1Char('\n');
    replaceAt(text, start, end - start, opening + toCode(note) + "  ");
    return true;
}

std::span<const ClockCode::Output> ClockCode::outputs() const
{
    static constexpr std::array Pins{"", "PA8", "PA9", "PB13", "PC9", "PF2", "PE4"};
    static constexpr std::array Pins1{"", "PA8", "PE4"};
    static constexpr std::array Pins2{"", "PC9"};
    static constexpr std::array Dividers{ClockField::ClkoutDiv};
    static constexpr std::array Dividers1{ClockField::Clkout1Div1, ClockField::Clkout1Div2};
    static constexpr std::array Dividers2{ClockField::Clkout2Div1, ClockField::Clkout2Div2};
    static constexpr std::array<Output, 1> One{
        {{"", ClockField::ClkoutPin, Pins, ClockField::Clkout, "crm_clock_out_set", Dividers}}};
    static constexpr std::array<Output, 2> Two{
        {{"1", ClockField::Clkout1Pin, Pins1, ClockField::Clkout1, "crm_clock_out1_set", Dividers1},
         {"2", ClockField::Clkout2Pin, Pins2, ClockField::Clkout2, "crm_clock_out2_set", Dividers2}}};
    if (m_clock.series().clkout == ClkoutForm::TwoOutputs)
        return Two;
    return One;
}

QLatin1String ClockCode::outputPin(const Output &output) const
{
    return QLatin1String(output.pins[static_cast<size_t>(clockFieldValue(m_clock, output.pin))]);
}

bool ClockCode::keepOutputs(SectionedText &text) const
{
    bool ok = true;
    for (const Output &output : outputs())
        ok = GenerateCode_Handle_Function(text, output.name("clkout", " function"), !outputPin(output).isEmpty()) && ok;
    return ok;
}

bool ClockCode::GenerateCode_clockout(std::string &text, const Output &output) const
{
    const QString section = output.name("clkout", " function");
    const QLatin1String pinName = outputPin(output);
    if (pinName.isEmpty())
        return GenerateCode_Handle_Function(text, section, false);
    const SectionSpan span = findSection(text, section);
    const GPIO_Pin_Define_Info *pin = nullptr;
    for (const GPIO_Pin_Define_Info *define : m_input.pinDefines) {
        if (IsPinNameSame(define->Name, pinName))
            pin = define;
    }
    if (!span.found() || !pin)
        return false;
    std::string work = keptBody(text, span);
    for (const SignalsGPIOSetting &setting : m_input.signalSettings) {
        if (IsSignalSame(setting.signalName, output.name("CRM_CLKOUT", "")))
            writePinSettings(work, setting);
    }
    bool ok =
        rewriteCall(work, QStringLiteral("crm_periph_clock_enable"),
                    {QLatin1String("CRM_") + pin->GPIO_x + QLatin1String("_PERIPH_CLOCK"), QStringLiteral("TRUE")});
    ok = ok && rewriteAssignments(work, QStringLiteral("gpio_init_struct.gpio_pins"), pin->GPIO_Pin_x) &&
         rewriteCall(work, QStringLiteral("gpio_init"), {pin->GPIO_x, QStringLiteral("&gpio_init_struct")});
    if (ok && findCall(work, QStringLiteral("gpio_pin_mux_config"), 3).found()) {
        QString mux;
        for (const GPIO_PinSignal_Mux_Info &info : pin->pinSignalMuxInfoList) {
            if (info.SignalName == output.name("CRM_CLKOUT", ""))
                mux = info.GPIO_Mux_x;
        }
        ok = rewriteCall(work, QStringLiteral("gpio_pin_mux_config"), {pin->GPIO_x, pin->GPIO_PinSource_x, mux});
    }
    QStringList dividers;
    for (const ClockField divider : output.dividers)
        dividers.append(clockLiteral(m_clock, divider));
    ok = ok && rewriteCall(work, QLatin1String(output.sourceCall), {clockLiteral(m_clock, output.source)}) &&
         rewriteCall(work, output.name("crm_clkout", "_div_set"), dividers);
    GenerateCode_DeleteBlankLine_FunctionEnd(work);
    replaceSection(text, span, work);
    return ok;
}

bool ClockCode::GenerateCode_lm_config_c(SectionedText &text) const
{
    const QString name = QStringLiteral("clock_config");
    std::string &section = text.section(name);
    const SectionSpan span = findSection(section, name);
    if (!span.found())
        return false;
    std::string work = keptBody(section, span);
    if (!GenerateCode_lm_clock_config_lm_config_c(work))
        return false;
    GenerateCode_DeleteBlankLine_FunctionEnd(work);
    replaceSection(section, span, work);
    for (const Output &output : outputs()) {
        if (!GenerateCode_clockout(text.section(output.name("clkout", " function")), output))
            return false;
    }
    return true;
}

bool ClockCode::GenerateCode_lm_config_h(SectionedText &text) const
{
    return keepOutputs(text);
}

bool ClockCode::GenerateCode_main_c(SectionedText &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("clock_config"), true) && keepOutputs(text);
}

bool ClockCode::GenerateCode_interrupt_int_c(SectionedText &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("clock_failure_handler"), m_clock.hext_isEnable());
}

} // namespace ChipLoom
