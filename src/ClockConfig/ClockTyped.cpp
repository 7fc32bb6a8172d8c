// What a user types into a clock page: texts on their way, accepted, checked and, where he agrees, adjusted.

#include "ClockConfig/ClockTexts.h"
#include "ClockConfig/ZV32MCUPLL.h"

#include <cmath>

namespace ChipLoom {

namespace {

/// The number of a frequency box; nothing for text that is no finite number.
std::optional<double> frequencyOf(const QString &text)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

/// The integer behind the sign ("/4", "*144"); 0 for text that is none.
int integerOf(QString text, QLatin1Char sign)
{
    text = text.trimmed();
    if (text.startsWith(sign))
        text.remove(0, 1);
    return text.toInt();
}

ClockOutcome outOfRange(ClockField field, double min, double max)
{
    return {ClockRefusal::OutOfRange, field, min, max};
}

} // namespace

ClockOutcome ZV32MCUPLL::applyText(const ClockChange &change)
{
    if (change.step == ClockChange::Step::Accept) {
        switch (change.field) {
        case ClockField::Hext:
            return acceptHext(change.text);
        case ClockField::Sclk:
            return acceptSclk(change.text);
        case ClockField::I2sf5Clock:
            return acceptI2sf5(change.text);
        default:
            return acceptMsOrNs(change.field, change.text);
        }
    }
    switch (change.field) {
    case ClockField::Hext:
        m_state.hextText = change.text;
        break;
    case ClockField::Sclk:
        if (clock().Get_SYSCLKSelect() != SYSCLK_PLL)
            return {ClockRefusal::SclkNotOnPll, ClockField::Sclk};
        m_state.sclkText = change.text;
        break;
    case ClockField::I2sf5Clock:
        m_state.i2sf5Text = change.text;
        break;
    case ClockField::PllMs:
        m_state.msText = change.text;
        break;
    default:
        m_state.nsText = change.text;
        break;
    }
    if (!hasError()) // a refused text may have been taken back
        emit SendClockHaveErrorSignal(false);
    emit refreshed();
    return {};
}

ClockOutcome ZV32MCUPLL::acceptHext(const QString &text)
{
    ZV32ConfigCLK &clock = m_state.clock;
    m_state.hextText = text;
    double hext = 0.0;
    if (const ClockOutcome valid = Hext_Value_Valid(hext); !valid.ok()) {
        report();
        return valid;
    }
    clock.Set_HEXT_Value(hext);
    m_state.hextEntered = true;
    if (clock.Get_SYSCLKSelect() != SYSCLK_PLL && clock.usbpll_isEnable()) {
        clock.CalculateParam_From_USBCLK();
        Update_Flexible_Controls();
    }
    const ClockOutcome outcome = UpdateCalculateResult();
    if (!outcome.ok())
        recalculate();
    return outcome.ok() ? afterSearch() : outcome;
}

ClockOutcome ZV32MCUPLL::acceptSclk(const QString &text)
{
    if (clock().Get_SYSCLKSelect() != SYSCLK_PLL)
        return {ClockRefusal::SclkNotOnPll, ClockField::Sclk};
    m_state.sclkText = text;
    double target = 0.0;
    if (const ClockOutcome valid = Result_SYSCLK_Valid(target); !valid.ok()) {
        report();
        return valid;
    }
    if (const ClockOutcome hext = takeHextForPll(); !hext.ok()) {
        report();
        return hext;
    }
    m_state.clock.Set_SYSCLKValue(target);
    m_state.clock.CalculateParam_From_SYSCLK();
    noteTarget(target);
    Update_Flexible_Controls();
    UpdateResultControls();
    return afterSearch();
}

ClockOutcome ZV32MCUPLL::acceptMsOrNs(ClockField field, const QString &text)
{
    const bool ms = field == ClockField::PllMs;
    (ms ? m_state.msText : m_state.nsText) = text;
    const int number = ms ? typedMs() : typedNs();
    const int min = ms ? PLL_MS_MIN_VALUE : PLL_NS_MIN_VALUE;
    const int max = ms ? PLL_MS_MAX_VALUE : PLL_NS_MAX_VALUE;
    if (number < min || number > max) {
        report();
        m_prompt.ask(ClockPrompt::error(ms ? ClockPrompt::PllMsInput : ClockPrompt::PllNsInput));
        return outOfRange(field, min, max);
    }
    if (const ClockOutcome hext = takeHextForPll(); !hext.ok()) {
        report();
        return hext;
    }
    if (!clock().pll_isEnable() || clock().Get_ConfigMode() != PLLMODE_FLEXIBLE) {
        // Nothing runs from it yet: what suits the PLL is checked once something does.
        setClockFieldValue(m_state.clock, field, number);
        Update_Flexible_Controls();
    }
    const ClockOutcome outcome = UpdateCalculateResult();
    if (!outcome.ok())
        recalculate();
    return outcome;
}

ClockOutcome ZV32MCUPLL::acceptI2sf5(const QString &text)
{
    m_state.i2sf5Text = text;
    if (!i2sf5TextIsValid()) {
        m_prompt.ask(ClockPrompt::error(ClockPrompt::I2sf5Input));
        report();
        return outOfRange(ClockField::I2sf5Clock, I2SF5_EXTERNAL_CLOCK_MINVALUE_1M, I2SF5_EXTERNAL_CLOCK_MAXVALUE_72M);
    }
    m_state.i2sf5Clock = *frequencyOf(text);
    UpdateResultControls();
    markChanged(&Flags::i2sf5);
    return {};
}

bool ZV32MCUPLL::hextTextIsValid() const
{
    const std::optional<double> value = frequencyOf(m_state.hextText);
    return value && *value >= HEXT_INPUT_MIN_VALUE && *value <= HEXT_INPUT_MAX_VALUE;
}

bool ZV32MCUPLL::i2sf5TextIsValid() const
{
    const std::optional<double> value = frequencyOf(m_state.i2sf5Text);
    return value && *value >= I2SF5_EXTERNAL_CLOCK_MINVALUE_1M && *value <= I2SF5_EXTERNAL_CLOCK_MAXVALUE_72M;
}

int ZV32MCUPLL::typedMs() const
{
    return integerOf(m_state.msText, QLatin1Char('/'));
}

int ZV32MCUPLL::typedNs() const
{
    return integerOf(m_state.nsText, QLatin1Char('*'));
}

ClockLimits ZV32MCUPLL::sclkInputLimits() const
{
    return {series().sclkHasMin ? SYSCLK_INPUT_MIN_VALUE : 0.0, double(series().sclkMax)};
}

bool ZV32MCUPLL::sclkTextIsValid() const
{
    const std::optional<double> value = frequencyOf(m_state.sclkText);
    return value && *value >= 0 && sclkInputLimits().contains(*value);
}

ClockOutcome ZV32MCUPLL::Hext_Value_Valid(double &out)
{
    out = 0.0;
    if (!hextTextIsValid()) {
        m_prompt.ask(ClockPrompt::error(ClockPrompt::HextInput));
        return outOfRange(ClockField::Hext, HEXT_INPUT_MIN_VALUE, HEXT_INPUT_MAX_VALUE);
    }
    out = *frequencyOf(m_state.hextText);
    return {};
}

ClockOutcome ZV32MCUPLL::Result_SYSCLK_Valid(double &out)
{
    out = 0.0;
    if (!sclkTextIsValid()) {
        m_prompt.ask(ClockPrompt::error(ClockPrompt::SclkInput));
        return outOfRange(ClockField::Sclk, sclkInputLimits().min, sclkInputLimits().max);
    }
    out = *frequencyOf(m_state.sclkText);
    return {};
}

ClockOutcome ZV32MCUPLL::takeHextForPll()
{
    if (clock().Get_PLLRC() != PLLRC_HEXT)
        return {};
    double hext = 0.0;
    if (!Hext_Value_Valid(hext).ok())
        return {ClockRefusal::HextInvalid, ClockField::Hext, HEXT_INPUT_MIN_VALUE, HEXT_INPUT_MAX_VALUE};
    m_state.clock.Set_HEXT_Value(hext);
    return {};
}

ClockOutcome ZV32MCUPLL::TextBox_Input_Valid_Check()
{
    ZV32ConfigCLK &clock = m_state.clock;
    const bool pll = clock.pll_isEnable();
    if (clock.Get_SYSCLKSelect() == SYSCLK_HEXT || clock.clockOutputUsesHext() ||
        (pll && clock.Get_PLLRC() == PLLRC_HEXT)) {
        double hext = 0.0;
        if (const ClockOutcome valid = Hext_Value_Valid(hext); !valid.ok())
            return valid;
        clock.Set_HEXT_Value(hext);
    }
    if (!pll || clock.Get_ConfigMode() != PLLMODE_FLEXIBLE)
        return {};
    const ClockOutcome ms = checkMsText();
    return ms.ok() ? checkNsText() : ms;
}

ClockOutcome ZV32MCUPLL::checkMsText()
{
    int ms = typedMs();
    if (ms < PLL_MS_MIN_VALUE || ms > PLL_MS_MAX_VALUE) {
        m_prompt.ask(ClockPrompt::error(ClockPrompt::PllMsInput));
        return outOfRange(ClockField::PllMs, PLL_MS_MIN_VALUE, PLL_MS_MAX_VALUE);
    }
    int suggestion = 0;
    if (!clock().PLL_MS_Valid_Check(ms, suggestion)) {
        if (!offerAdjustment(ClockPrompt::AdjustMs, QStringLiteral("pll_ms = %1").arg(suggestion)))
            return {ClockRefusal::NotAdjusted, ClockField::PllMs};
        ms = suggestion;
    }
    m_state.msText = QLatin1Char('/') + QString::number(ms); // "4" was typed as well
    m_state.clock.Set_PLL_MS(ms);
    return {};
}

ClockOutcome ZV32MCUPLL::checkNsText()
{
    int ns = typedNs();
    if (ns < PLL_NS_MIN_VALUE || ns > PLL_NS_MAX_VALUE) {
        m_prompt.ask(ClockPrompt::error(ClockPrompt::PllNsInput));
        return outOfRange(ClockField::PllNs, PLL_NS_MIN_VALUE, PLL_NS_MAX_VALUE);
    }
    int suggestion = 0;
    if (!clock().PLL_NS_Valid_Check(ns, clock().Get_PLL_MS(), suggestion)) {
        if (!offerAdjustment(ClockPrompt::adjustNs(series()), QStringLiteral("pll_ns = %1").arg(suggestion)))
            return {ClockRefusal::NotAdjusted, ClockField::PllNs};
        ns = suggestion;
    }
    m_state.nsText = QLatin1Char('*') + QString::number(ns);
    m_state.clock.Set_PLL_NS(ns);
    return {};
}

bool ZV32MCUPLL::offerAdjustment(const char *text, const QString &suggestion)
{
    PromptRequest request = ClockPrompt::question(text, true);
    request.detail = suggestion;
    return m_prompt.ask(request) == 0;
}

} // namespace ChipLoom
