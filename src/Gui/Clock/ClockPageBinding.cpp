#include "Gui/Clock/ClockPageBinding.h"

#include "ClockConfig/ClockSolver.h"
#include "ClockConfig/ClockTexts.h"

#include <QCoreApplication>
#include <QScopedValueRollback>

namespace ChipLoom {

namespace {

using Tone = ClockFace::Tone;
using Ground = ClockFace::Ground;

/// SCLK above which the device must be kept cool and well supplied, on the maps that have room for the note.
constexpr double SclkNoteAbove = 240.0;

constexpr int SolutionCount = 8;

QString word(const QString &name)
{
    return QCoreApplication::translate("Clock", name.toUtf8().constData());
}

QString megahertz(double value)
{
    return QString::number(value, 'f', 3);
}

QString ppm(double value)
{
    return QStringLiteral("%1%2 ppm").arg(QLatin1String(value > 0 ? "+" : "")).arg(value, 0, 'f', 1);
}

/// The fields of the PLL as they stand on the canvas: "/1 *144 /8" or "*36".
QString pllFields(const ZV32ConfigCLK &clock)
{
    if (clock.Get_ConfigMode() == PLLMODE_NORMAL)
        return QStringLiteral("*%1").arg(clock.Get_PLL_MUL());
    const int output = clock.series().hasFp() ? clock.Get_PLL_FP() : clock.Get_PLL_FR();
    return QStringLiteral("/%1 *%2 /%3").arg(clock.Get_PLL_MS()).arg(clock.Get_PLL_NS()).arg(output);
}

bool isFactor(ClockField field)
{
    return field == ClockField::PllMult;
}

/// "/8" for a divider, "*8" for a multiplier, the name of anything else.
QString optionText(const ZV32ConfigCLK &clock, ClockField field, const ClockOption &option)
{
    if (field == ClockField::PllHextDiv)
        return QStringLiteral("/%1").arg(option.value != 0 ? clock.Get_HEXTDIV() : 1);
    if (field == ClockField::PllHickDiv)
        return QStringLiteral("/%1").arg(clock.series().hickPllDivider * (option.value != 0 ? 2 : 1));
    if (option.name)
        return word(option.text());
    return (isFactor(field) ? QLatin1Char('*') : QLatin1Char('/')) + option.text();
}

struct Info
{
    ClockExtra extra;
    ClockField field; ///< while this one matters, the hint is not needed
    const char *subject;
    const char *module;
};

constexpr Info Infos[]{
    {ClockExtra::UsbInfo, ClockField::HickToUsb, "hick to usb", "USB_OTGFS"},
    {ClockExtra::AdcInfo, ClockField::AdcDiv, "adc", "ADC1"},
    {ClockExtra::Usart1Info, ClockField::Usart1Source, "usart1", "USART1"},
    {ClockExtra::Usart2Info, ClockField::Usart2Source, "usart2", "USART2"},
    {ClockExtra::Usart3Info, ClockField::Usart3Source, "usart3", "USART3"},
    {ClockExtra::I2c1Info, ClockField::I2c1Source, "i2c1", "I2C1"},
    {ClockExtra::Can1Info, ClockField::Can1Source, "can1", "CAN1"},
    {ClockExtra::Can2Info, ClockField::Can2Source, "can2", "CAN2"},
    {ClockExtra::Can3Info, ClockField::Can3Source, "can3", "CAN3"},
    {ClockExtra::I2sf5Info, ClockField::I2sf5Source, "i2sf5", "I2SF5"},
};

} // namespace

ClockPageBinding::ClockPageBinding(ZV32MCUPLL &page) : m_page(page)
{
    connect(&page, &ZV32MCUPLL::refreshed, this, [this] {
        if (m_applying)
            return;
        m_wantedSclk.reset(); // a reset, a design or a peripheral changed the tree
        tell();
    });
}

void ClockPageBinding::tell()
{
    if (changed)
        changed();
}

void ClockPageBinding::apply(const ClockChange &change)
{
    {
        const QScopedValueRollback applying(m_applying, true);
        const ClockOutcome outcome = m_page.apply(change);
        if (change.field == ClockField::Sclk && change.step == ClockChange::Step::Accept && outcome.ok()) {
            m_wantedSclk = change.text.toDouble();
            m_achievedSclk = m_page.Get_SYSCLK();
        }
    }
    tell(); // a refusal too: the control shows what holds
}

void ClockPageBinding::choose(ClockField field, int option)
{
    const std::vector<ClockOption> options = clockOptions(m_page.clock(), field);
    if (option >= 0 && option < int(options.size()))
        apply(ClockChange::choose(field, options[std::size_t(option)].value));
}

void ClockPageBinding::type(ClockField field, const QString &text)
{
    apply(ClockChange::type(field, text));
}

void ClockPageBinding::enter(ClockField field, const QString &text)
{
    apply(ClockChange::enter(field, text));
}

std::optional<double> ClockPageBinding::wantedSclk() const
{
    const bool stands = m_page.clock().Get_SYSCLKSelect() == SYSCLK_PLL && m_page.Get_SYSCLK() == m_achievedSclk;
    return stands ? m_wantedSclk : std::nullopt;
}

double ClockPageBinding::solutionTarget() const
{
    // What is being typed goes before what was asked for.
    const QString typed = m_page.text(ClockField::Sclk);
    if (m_page.sclkTextIsValid() && typed != megahertz(m_page.Get_SYSCLK()))
        return typed.toDouble();
    return wantedSclk().value_or(m_page.Get_SYSCLK());
}

QVector<ClockSolutionRow> ClockPageBinding::solutions() const
{
    QVector<ClockSolutionRow> rows;
    for (const ClockSolution &solution : solveClock(m_page.clock(), solutionTarget(), SolutionCount)) {
        const ZV32ConfigCLK &clock = solution.clock;
        const QString usb = clock.usbpll_isEnable() ? QStringLiteral("%1 (%2)").arg(megahertz(clock.Get_USBCLKValue()),
                                                                                    ppm(solution.usbPpm))
                                                    : QStringLiteral("-");
        rows.append({pllFields(clock), megahertz(clock.Get_SYSCLKValue()), ppm(solution.sclkPpm),
                     QStringLiteral("%1 / %2 / %3")
                         .arg(megahertz(clock.Get_AHBCLKValue()), megahertz(clock.Get_APB1CLKValue()),
                              megahertz(clock.Get_APB2CLKValue())),
                     usb});
    }
    return rows;
}

void ClockPageBinding::chooseSolution(int row)
{
    const double target = solutionTarget();
    const std::vector<ClockSolution> solutions = solveClock(m_page.clock(), target, SolutionCount);
    if (row < 0 || row >= int(solutions.size()))
        return;
    {
        const QScopedValueRollback applying(m_applying, true);
        m_page.applyPllFields(solutions[std::size_t(row)].clock);
    }
    m_wantedSclk = target;
    m_achievedSclk = m_page.Get_SYSCLK();
    tell();
}

ClockFormOnly ClockPageBinding::pllForm() const
{
    return m_page.clock().Get_ConfigMode() == PLLMODE_NORMAL ? ClockFormOnly::Normal : ClockFormOnly::Flexible;
}

ClockPaths ClockPageBinding::runningPaths() const
{
    const ZV32ConfigCLK &clock = m_page.clock();
    ClockPaths paths = ClockPath::Always;
    const std::array rtc{ClockPath::LickToRtc, ClockPath::LextToRtc, ClockPath::HextToRtc};
    paths |= rtc[std::size_t(clock.Get_RTCSEL())];
    const std::array sclk{ClockPath::HextToSclk, ClockPath::PllToSclk, ClockPath::HickToSclk};
    paths |= sclk[std::size_t(clock.Get_SYSCLKSelect())];
    if (m_page.pllIsShown())
        paths |= ClockPath::Pll | (clock.Get_PLLRC() == PLLRC_HEXT ? ClockPath::HextToPll : ClockPath::HickToPll);
    if (m_page.usbIsInUse())
        paths |= clock.usbpll_isEnable() ? ClockPath::PllToUsb : ClockPath::HickToUsb;
    static constexpr std::pair<ClockBranch, ClockPath> branches[]{
        {ClockBranch::Adc, ClockPath::Adc},         {ClockBranch::Usart1, ClockPath::Usart1},
        {ClockBranch::Usart2, ClockPath::Usart2},   {ClockBranch::Usart3, ClockPath::Usart3},
        {ClockBranch::I2c1, ClockPath::I2c1},       {ClockBranch::Can1, ClockPath::Can1},
        {ClockBranch::Can2, ClockPath::Can2},       {ClockBranch::Can3, ClockPath::Can3},
        {ClockBranch::I2sf5, ClockPath::I2sf5},     {ClockBranch::Clkout, ClockPath::Clkout1},
        {ClockBranch::Clkout1, ClockPath::Clkout1}, {ClockBranch::Clkout2, ClockPath::Clkout2},
    };
    for (const auto &[branch, path] : branches)
        // An output without a source has its pin and carries nothing.
        paths.setFlag(path, paths.testFlag(path) || (m_page.isShown(branch) && m_page.reading(branch).mhz > 0));
    return paths;
}

ClockFace ClockPageBinding::face(const ClockSubject &subject) const
{
    if (const auto *field = std::get_if<ClockField>(&subject))
        return fieldFace(*field);
    if (const auto *branch = std::get_if<ClockBranch>(&subject))
        return branchFace(*branch);
    return extraFace(std::get<ClockExtra>(subject));
}

ClockFace ClockPageBinding::fieldFace(ClockField field) const
{
    switch (field) {
    case ClockField::LextBypass:
        return {.shown = m_page.clock().Get_LEXT_Bypass(), .text = tr("bypass")};
    case ClockField::HextBypass:
        return {.shown = m_page.clock().Get_HEXT_Bypass(), .text = tr("bypass")};
    case ClockField::ClkoutPin:
    case ClockField::Clkout1Pin:
    case ClockField::Clkout2Pin:
        return {.text = word(m_page.text(field)), .toolTip = tr("The pin is chosen at CRM on the pin page.")};
    default:
        return isTypedClockField(field) ? typedFace(field) : choiceFace(field);
    }
}

ClockFace ClockPageBinding::choiceFace(ClockField field) const
{
    const ZV32ConfigCLK &clock = m_page.clock();
    ClockFace face;
    face.enabled = m_page.isShown(field);
    const double present = clockFieldValue(clock, field);
    for (const ClockOption &option : clockOptions(clock, field)) {
        if (option.value == present)
            face.choice = face.options.size();
        face.options.append(optionText(clock, field, option));
        const ClockOutcome refusal{m_page.optionRefusal(field, option.value), field};
        face.refusals.append(clockRefusalText(m_page.series(), refusal));
    }
    return face;
}

ClockFace ClockPageBinding::typedFace(ClockField field) const
{
    const ZV32ConfigCLK &clock = m_page.clock();
    ClockFace face;
    face.text = m_page.text(field);
    face.enabled = m_page.isShown(field);
    bool valid = true;
    QString accepted = face.text;
    ClockOutcome limits{ClockRefusal::OutOfRange, field};
    switch (field) {
    case ClockField::Hext:
        valid = m_page.hextTextIsValid();
        limits.min = HEXT_INPUT_MIN_VALUE;
        limits.max = HEXT_INPUT_MAX_VALUE;
        if (face.enabled && face.text.toDouble() != clock.Get_HEXT_Value())
            face.ground = Ground::Pending;
        break;
    case ClockField::Sclk: {
        const ClockLimits sclk = m_page.sclkInputLimits();
        face.enabled = clock.Get_SYSCLKSelect() == SYSCLK_PLL;
        valid = m_page.sclkTextIsValid() && m_page.reading(ClockBranch::Sclk).inRange();
        limits.min = sclk.min;
        limits.max = sclk.max;
        accepted = megahertz(clock.Get_SYSCLKValue());
        if (face.enabled)
            face.ground = face.text == accepted ? Ground::Accepted : Ground::Pending;
        face.tone = Tone::Good;
        break;
    }
    case ClockField::PllMs:
        accepted = QStringLiteral("/%1").arg(clock.Get_PLL_MS());
        break;
    case ClockField::PllNs:
        accepted = QStringLiteral("*%1").arg(clock.Get_PLL_NS());
        break;
    case ClockField::I2sf5Clock:
        valid = m_page.i2sf5TextIsValid();
        if (face.enabled && face.text.toDouble() != m_page.state().i2sf5Clock)
            face.ground = Ground::Pending;
        limits.min = I2SF5_EXTERNAL_CLOCK_MINVALUE_1M;
        limits.max = I2SF5_EXTERNAL_CLOCK_MAXVALUE_72M;
        break;
    default:
        break;
    }
    if (face.text != accepted && face.enabled)
        face.ground = Ground::Pending;
    if (!valid && face.enabled) {
        face.tone = Tone::OutOfRange;
        face.toolTip = clockRefusalText(m_page.series(), limits);
    } else if (face.ground == Ground::Pending) {
        face.toolTip = tr("Return takes the typed value.");
    }
    return face;
}

ClockFace ClockPageBinding::branchFace(ClockBranch branch) const
{
    const ClockReading reading = m_page.reading(branch);
    ClockFace face;
    face.enabled = m_page.isShown(branch);
    face.text = megahertz(reading.mhz);
    if (const QString limits = clockLimitsText(reading); !limits.isEmpty())
        face.toolTip = tr("Limit: %1").arg(limits);
    if (face.enabled && !reading.inRange())
        face.tone = Tone::OutOfRange;
    return face;
}

ClockFace ClockPageBinding::resultFace(ClockBranch branch) const
{
    ClockFace face = branchFace(branch);
    face.text = face.enabled ? tr("%1 MHz").arg(face.text) : QString();
    if (branch == ClockBranch::Sclk && face.tone == Tone::Plain)
        face.tone = Tone::Good;
    return face;
}

ClockFace ClockPageBinding::infoFace(ClockExtra extra) const
{
    const ZV32ConfigCLK &clock = m_page.clock();
    switch (extra) {
    case ClockExtra::HextInfo:
        return {.shown = !clock.Get_HEXT_Enable(),
                .toolTip = clockRefusalText(m_page.series(), {ClockRefusal::HextOff, ClockField::Hext})};
    case ClockExtra::LextInfo:
        return {.shown = !clock.Get_LEXT_Enable(),
                .toolTip = clockRefusalText(m_page.series(), {ClockRefusal::LextOff, ClockField::RtcSel})};
    default:
        break;
    }
    const auto needed = [](const QString &subject, const char *module) {
        return tr("%1, Need to enable in \"Pin out Configuration--%2\".").arg(subject, QLatin1String(module));
    };
    if (extra == ClockExtra::ClkoutInfo || extra == ClockExtra::Clkout2Info) {
        const ClockBranch output = m_page.series().clkout != ClkoutForm::TwoOutputs ? ClockBranch::Clkout
                                   : extra == ClockExtra::ClkoutInfo                ? ClockBranch::Clkout1
                                                                                    : ClockBranch::Clkout2;
        return {.shown = !m_page.isShown(output), .toolTip = needed(QLatin1String(clockBranchName(output)), "CRM")};
    }
    for (const Info &info : Infos) {
        if (info.extra != extra)
            continue;
        const bool inUse = extra == ClockExtra::AdcInfo ? m_page.adcIsInUse() : m_page.isShown(info.field);
        return {.shown = !inUse, .toolTip = needed(QLatin1String(info.subject), info.module)};
    }
    return {.shown = false};
}

QString ClockPageBinding::outputText(ClockBranch output, bool source) const
{
    const double mhz = source ? clockOutputSource(m_page.clock(), output) : m_page.reading(output).mhz;
    // LICK and LEXT read in kHz.
    if (mhz > 0 && mhz < 0.1)
        return QStringLiteral("(%1 kHz)").arg(mhz * 1000, 0, 'f', 3);
    return QStringLiteral("(%1 MHz)").arg(megahertz(mhz));
}

QString ClockPageBinding::rtcText() const
{
    const ZV32ConfigCLK &clock = m_page.clock();
    const double kilohertz = m_page.reading(ClockBranch::Rtc).mhz * 1000;
    if (clock.Get_RTCSEL() != RTCSEL_HEXT)
        return QString::number(kilohertz);
    return m_page.hextTextIsValid() ? QString::number(kilohertz, 'f', 3) : QStringLiteral("0");
}

ClockFace ClockPageBinding::extraFace(ClockExtra extra) const
{
    const ZV32ConfigCLK &clock = m_page.clock();
    const bool two = m_page.series().clkout == ClkoutForm::TwoOutputs;
    switch (extra) {
    case ClockExtra::Lick:
    case ClockExtra::ToWdt:
        return {.text = QString::number(clock.Get_LICK_Value())};
    case ClockExtra::Lext:
        return {.enabled = clock.Get_LEXT_Enable(), .text = QString::number(clock.Get_LEXT_Value())};
    case ClockExtra::Hick:
        return {.text = QString::number(clock.Get_HICK_Value())};
    case ClockExtra::ToRtc:
        return {.text = rtcText()};
    case ClockExtra::PllCfg: {
        const QString value = m_page.pllRegisterText();
        return {.text = value.isEmpty() ? QString() : QStringLiteral("CRM_PLLCFG: ") + value};
    }
    case ClockExtra::PllNote:
        return {.shown = m_page.pllIsShown() && clockOptions(clock, ClockField::PllMult).empty(),
                .text = clockRefusalText(m_page.series(), {ClockRefusal::NoMultiplier, ClockField::PllMult}),
                .tone = Tone::OutOfRange};
    case ClockExtra::SclkError:
        return sclkErrorFace();
    case ClockExtra::Solutions:
        return {.enabled = clock.Get_SYSCLKSelect() == SYSCLK_PLL, .text = tr("Solutions...")};
    case ClockExtra::SclkLimitNote:
        return {.shown = clock.Get_SYSCLKValue() > SclkNoteAbove,
                .text = tr("Useage limited:") + QLatin1Char('\n') + tr("Temperature range - 40~85 degree. ") +
                        QLatin1Char('\n') + tr("VDD must over 3.0V. "),
                .tone = Tone::OutOfRange};
    case ClockExtra::Apb1TmrMul:
        return {.text = QStringLiteral("* %1").arg(clock.Get_APB1TMR_MUL())};
    case ClockExtra::Apb2TmrMul:
        return {.text = QStringLiteral("* %1").arg(clock.Get_APB2TMR_MUL())};
    case ClockExtra::SystemClock:
        return resultFace(ClockBranch::Sclk);
    case ClockExtra::PllClock:
        return resultFace(ClockBranch::Pll);
    case ClockExtra::UsbClock:
        return resultFace(ClockBranch::Usb);
    case ClockExtra::AdcClock:
        // Without a divider on this page the converters divide the clock of their bus.
        return resultFace(clockBranchOf(m_page.series(), QStringLiteral("ADC1")));
    case ClockExtra::ClkoutSource:
        return {.text = outputText(two ? ClockBranch::Clkout1 : ClockBranch::Clkout, true)};
    case ClockExtra::Clkout2Source:
        return {.text = outputText(ClockBranch::Clkout2, true)};
    case ClockExtra::ClkoutResult:
        return {.text = outputText(two ? ClockBranch::Clkout1 : ClockBranch::Clkout, false)};
    case ClockExtra::Clkout2Result:
        return {.text = outputText(ClockBranch::Clkout2, false)};
    default:
        return infoFace(extra);
    }
}

ClockFace ClockPageBinding::sclkErrorFace() const
{
    const std::optional<double> wanted = wantedSclk();
    const double achieved = m_page.Get_SYSCLK();
    if (!wanted || megahertz(*wanted) == megahertz(achieved))
        return {.shown = false};
    return {.text = tr("%1 MHz instead of %2").arg(megahertz(achieved), megahertz(*wanted)) + QLatin1Char('\n') +
                    ppm(clockErrorPpm(achieved, *wanted))};
}

} // namespace ChipLoom
