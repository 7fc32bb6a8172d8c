#include "ClockConfig/ZV32MCUPLL.h"

#include "Base/Scheduler.h"
#include "ClockConfig/ClockTexts.h"

#include <QXmlStreamWriter>

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
    m_state.hextEntered = false;
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
    const QByteArray before = stored();
    const ClockOutcome outcome = applyToField(change);
    // Return in a field may bring nothing new.
    if (change.step == ClockChange::Step::Accept && (outcome.standsNonetheless() || stored() != before))
        emit edited();
    return outcome;
}

QByteArray ZV32MCUPLL::stored() const
{
    QByteArray section;
    QXmlStreamWriter writer(&section);
    SaveToFile(&writer);
    return section;
}

ClockOutcome ZV32MCUPLL::applyToField(const ClockChange &change)
{
    if (!hasClockField(series(), change.field))
        return {ClockRefusal::NotOnThisSeries, change.field};
    if (isTypedClockField(change.field))
        return applyText(change);

    const std::vector<ClockOption> options = clockOptions(clock(), change.field);
    if (options.empty())
        return {ClockRefusal::NoMultiplier, change.field};
    if (std::none_of(options.begin(), options.end(), [&](const ClockOption &o) { return o.value == change.value; }))
        return {ClockRefusal::NoSuchValue, change.field};
    const ClockRefusal now = optionRefusal(change.field, change.value);
    if (now != ClockRefusal::None)
        return {now, change.field};

    const ClockOutcome outcome = applyChoice(change.field, change.value);
    if (!outcome.ok()) {
        // The choice stands, and so do the frequencies that follow from what was accepted before.
        recalculate();
    }
    return outcome;
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
    // The search for USB leaves all else as it was; and the PLL may run for a clock output alone.
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
    return noMultiplierExists(clock()) ? ClockOutcome{ClockRefusal::NoMultiplier, ClockField::PllMult} : ClockOutcome{};
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
