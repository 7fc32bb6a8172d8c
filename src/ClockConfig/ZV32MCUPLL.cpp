#include "ClockConfig/ZV32MCUPLL.h"

#include "Base/Scheduler.h"
#include "ClockConfig/ClockTexts.h"

#include <algorithm>
#include <cmath>

namespace ChipLoom {

namespace {

constexpr int ChangeSignalDelayMs = 500;
constexpr double DefaultI2sf5ExternalClock = 12.288; // MHz, the usual master clock of audio at 48 kHz

QString threeDecimals(double mhz)
{
    return QString::number(mhz, 'f', 3);
}

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

ClockOutcome refused(ClockRefusal reason, ClockField field)
{
    return {reason, field, 0.0, 0.0};
}

} // namespace

ZV32MCUPLL::ZV32MCUPLL(const ClockSeries &series, Scheduler &scheduler, UserPrompt &prompt, QObject *parent)
    : QObject(parent), m_state{.clock = ZV32ConfigCLK(series.code)}, m_scheduler(scheduler), m_prompt(prompt)
{
    ResetAllControl();
    m_changed = {};
    m_scheduler.cancelAll(this);
}

ZV32MCUPLL::~ZV32MCUPLL()
{
    m_scheduler.cancelAll(this);
}

void ZV32MCUPLL::restore(const State &state)
{
    m_state = state;
    markChanged(&Flags::clock);
    markChanged(&Flags::usb);
    if (series().i2sf5)
        markChanged(&Flags::i2sf5);
    report();
}

void ZV32MCUPLL::ResetAllControl()
{
    ZV32ConfigCLK &clock = m_state.clock;
    clock.InitSeriesValues();
    if (m_state.freertos)
        clock.Set_SysticDIV(1);
    m_state.hextText = QString::number(clock.Get_HEXT_Value());
    m_state.i2sf5Clock = DefaultI2sf5ExternalClock;
    m_state.i2sf5Text = QString::number(m_state.i2sf5Clock);
    m_state.sclkTarget = m_state.sclkReached = 0.0;
    Update_Flexible_Controls();
    UpdateResultControls();
    markChanged(&Flags::usb);
    if (series().i2sf5)
        markChanged(&Flags::i2sf5);
}

// ---- The one door ----

ClockOutcome ZV32MCUPLL::apply(const ClockChange &change)
{
    const Scheduler::Hold hold(m_scheduler);
    const ClockOutcome outcome = applyToField(change);
    if (outcome.ok() || outcome.standsNonetheless())
        emit edited();
    return outcome;
}

ClockOutcome ZV32MCUPLL::applyToField(const ClockChange &change)
{
    if (!hasClockField(series(), change.field))
        return refused(ClockRefusal::NotOnThisSeries, change.field);
    if (isTypedClockField(change.field))
        return applyText(change);

    const std::vector<ClockOption> options = clockOptions(clock(), change.field);
    if (options.empty())
        return refused(ClockRefusal::NoMultiplier, change.field);
    if (std::none_of(options.begin(), options.end(), [&](const ClockOption &o) { return o.value == change.value; }))
        return refused(ClockRefusal::NoSuchValue, change.field);
    const ClockRefusal now = optionRefusal(change.field, change.value);
    if (now != ClockRefusal::None)
        return refused(now, change.field);

    const ClockOutcome outcome = applyChoice(change.field, change.value);
    if (!outcome.ok()) {
        // The choice stands, and so do the frequencies that follow from what was accepted before.
        recalculate();
    }
    return outcome;
}

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
            return refused(ClockRefusal::SclkNotOnPll, ClockField::Sclk);
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
        return refused(ClockRefusal::SclkNotOnPll, ClockField::Sclk);
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

ClockOutcome ZV32MCUPLL::applyChoice(ClockField field, double value)
{
    ZV32ConfigCLK &clock = m_state.clock;
    setClockFieldValue(clock, field, value);
    switch (field) {
    case ClockField::PllRc:
    case ClockField::PllHextDiv:
    case ClockField::PllHickDiv:
    case ClockField::HextDiv:
        return resolvePll(true);
    case ClockField::PllMode:
        return resolvePll(false);
    case ClockField::PllMult:
    case ClockField::PllFr:
    case ClockField::PllFp: {
        const ClockOutcome hext = takeHextForPll();
        return hext.ok() ? UpdateCalculateResult() : hext;
    }
    case ClockField::SclkSelect:
        return chooseSclkSource();
    case ClockField::UsbDiv:
    case ClockField::PllFu:
        return chooseUsbDivider();
    case ClockField::HickToUsb:
        return chooseUsbSource();
    case ClockField::RtcSel:
    case ClockField::RtcDiv:
    case ClockField::LextBypass:
    case ClockField::HextBypass:
    case ClockField::SysticDiv:
    case ClockField::ClkoutDiv:
    case ClockField::ClkoutDiv1:
    case ClockField::ClkoutDiv2:
    case ClockField::Clkout1Div1:
    case ClockField::Clkout1Div2:
    case ClockField::Clkout2Div1:
    case ClockField::Clkout2Div2:
        UpdateResultControls();
        return {};
    case ClockField::I2sf5Source:
        markChanged(&Flags::i2sf5);
        return UpdateCalculateResult();
    default:
        return UpdateCalculateResult();
    }
}

// The PLL input or its form changed: keep SCLK where it is as well as the PLL can.
ClockOutcome ZV32MCUPLL::resolvePll(bool targetRequired)
{
    if (const ClockOutcome hext = takeHextForPll(); !hext.ok())
        return hext;
    double target = 0.0;
    const ClockOutcome valid = Result_SYSCLK_Valid(target);
    if (!valid.ok()) {
        const ClockOutcome forward = targetRequired ? valid : UpdateCalculateResult();
        return forward.ok() ? afterSearch() : forward;
    }
    m_state.clock.Set_SYSCLKValue(target);
    updateParamFromResult(m_state.clock);
    noteTarget(target);
    Update_Flexible_Controls();
    UpdateResultControls();
    return afterSearch();
}

ClockOutcome ZV32MCUPLL::chooseSclkSource()
{
    ClockOutcome outcome;
    if (clock().Get_SYSCLKSelect() == SYSCLK_HEXT) {
        double hext = 0.0;
        outcome = Hext_Value_Valid(hext);
        if (outcome.ok())
            m_state.clock.Set_HEXT_Value(hext);
    } else if (clock().Get_SYSCLKSelect() == SYSCLK_PLL) {
        outcome = takeHextForPll();
    }
    if (outcome.ok())
        outcome = UpdateCalculateResult();
    if (!outcome.ok())
        return outcome;
    UpdateParam_From_ResultCLK();
    return afterSearch();
}

ClockOutcome ZV32MCUPLL::chooseUsbDivider()
{
    ZV32ConfigCLK &clock = m_state.clock;
    if (clock.Get_SYSCLKSelect() == SYSCLK_PLL || !clock.usbpll_isEnable())
        return UpdateCalculateResult();
    if (const ClockOutcome hext = takeHextForPll(); !hext.ok())
        return hext;
    clock.CalculateParam_From_USBCLK();
    Update_Flexible_Controls();
    UpdateResultControls();
    return afterSearch();
}

ClockOutcome ZV32MCUPLL::chooseUsbSource()
{
    ZV32ConfigCLK &clock = m_state.clock;
    markChanged(&Flags::usb);
    if (clock.Get_HickToUsb() == HICK_TO_USB_ENABLE) {
        clock.Set_USBCLKValue(USB_OUTPUT_CLK_VALUE);
        UpdateParam_From_ResultCLK();
        return afterSearch();
    }
    if (const ClockOutcome hext = takeHextForPll(); !hext.ok())
        return hext;
    clock.CalculateParam_From_USBCLK();
    clock.CalculateCLK(); // the search may have moved SCLK, and its buses with it
    Update_Flexible_Controls();
    UpdateResultControls();
    return afterSearch();
}

void ZV32MCUPLL::applyPllFields(const ZV32ConfigCLK &solution)
{
    ZV32ConfigCLK &clock = m_state.clock;
    for (const ClockField field : {ClockField::PllMode, ClockField::PllMult, ClockField::PllMs, ClockField::PllNs,
                                   ClockField::PllFr, ClockField::PllFp, ClockField::UsbDiv, ClockField::PllFu}) {
        if (hasClockField(series(), field))
            setClockFieldValue(clock, field, clockFieldValue(solution, field));
    }
    Update_Flexible_Controls();
    recalculate();
    emit edited();
}

// ---- Checks of what is typed ----

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
            return refused(ClockRefusal::NotAdjusted, ClockField::PllMs);
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
        const bool wide = series().vcoMax == PLL_NS_CHECK_MAX_VALUE_F435F437;
        const char *text = wide ? ClockPrompt::AdjustNs1200 : ClockPrompt::AdjustNs1000;
        if (!offerAdjustment(text, QStringLiteral("pll_ns = %1").arg(suggestion)))
            return refused(ClockRefusal::NotAdjusted, ClockField::PllNs);
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

// ---- Calculation ----

ClockOutcome ZV32MCUPLL::UpdateCalculateResult()
{
    const ClockOutcome valid = TextBox_Input_Valid_Check();
    if (!valid.ok())
        return valid;
    m_state.clock.CalculateCLK();
    UpdateResultControls();
    return {};
}

void ZV32MCUPLL::updateParamFromResult(ZV32ConfigCLK &clock)
{
    if (clock.Get_SYSCLKSelect() == SYSCLK_PLL) {
        clock.CalculateParam_From_SYSCLK();
        return;
    }
    bool fromUsb = false;
    switch (clock.series().offPll) {
    case OffPllSearch::Forward:
        break;
    case OffPllSearch::UsbAlways:
        fromUsb = true;
        break;
    case OffPllSearch::UsbIfInUse:
        fromUsb = clock.Get_TO_USB_Switch();
        break;
    case OffPllSearch::UsbIfInUseOnPll:
        fromUsb = clock.usbpll_isEnable();
        break;
    }
    if (fromUsb)
        clock.CalculateParam_From_USBCLK();
    else
        clock.CalculateCLK();
}

void ZV32MCUPLL::UpdateParam_From_ResultCLK()
{
    updateParamFromResult(m_state.clock);
    Update_Flexible_Controls();
    UpdateResultControls();
}

void ZV32MCUPLL::Update_Flexible_Controls()
{
    if (!series().hasFeedback())
        return;
    m_state.msText = QLatin1Char('/') + QString::number(clock().Get_PLL_MS());
    m_state.nsText = QLatin1Char('*') + QString::number(clock().Get_PLL_NS());
}

void ZV32MCUPLL::UpdateResultControls()
{
    m_state.clock.CalculateRTCCLK();
    m_state.sclkText = threeDecimals(clock().Get_SYSCLKValue());
    markChanged(&Flags::clock);
    report();
}

void ZV32MCUPLL::report()
{
    emit SendClockHaveErrorSignal(hasError());
    emit refreshed();
}

// Brings the frequencies up to date with what is accepted, without asking. Refused MS and NS texts stay in their boxes.
void ZV32MCUPLL::recalculate()
{
    m_state.clock.CalculateCLK();
    UpdateResultControls();
}

void ZV32MCUPLL::noteTarget(double target)
{
    m_state.sclkTarget = target;
    m_state.sclkReached = clock().Get_SYSCLKValue();
}

bool ZV32MCUPLL::noMultiplierExists(const ZV32ConfigCLK &clock) const
{
    return series().multiplierBounds && clock.Get_ConfigMode() == PLLMODE_NORMAL && clock.pll_isEnable() &&
           clock.Get_PLL_MUL_Max() == 0;
}

ClockOutcome ZV32MCUPLL::afterSearch() const
{
    return noMultiplierExists(clock()) ? refused(ClockRefusal::NoMultiplier, ClockField::PllMult) : ClockOutcome{};
}

// ---- Change flags ----

void ZV32MCUPLL::markChanged(bool Flags::*flag)
{
    m_changed.*flag = true;
    if (!m_scheduler.isPending(this, "clock changed"))
        m_scheduler.schedule(this, "clock changed", ChangeSignalDelayMs, [this] { HandleTimeout(); });
}

void ZV32MCUPLL::HandleTimeout()
{
    const Flags changed = m_changed;
    m_changed = {};
    if (changed.clock)
        emit SendClockChangedSignal();
    if (changed.usb)
        emit SendUSBClockSourceChangeSignal();
    if (changed.i2sf5)
        emit SendI2SF5ClockSourceChangeSignal();
}

} // namespace ChipLoom
