#include "ClockConfig/ClockTexts.h"

#include "ClockConfig/ClockFields.h"

#include <QCoreApplication>

namespace ChipLoom {

namespace ClockPrompt {

const char *const HextInput = QT_TRANSLATE_NOOP("Prompt", "hext input error, please re-enter.");
const char *const SclkInput = QT_TRANSLATE_NOOP("Prompt", "sclk input error!");
const char *const PllMsInput = QT_TRANSLATE_NOOP("Prompt", "pll_ms input error!");
const char *const PllNsInput = QT_TRANSLATE_NOOP("Prompt", "pll_ns input error!");
const char *const I2sf5Input = QT_TRANSLATE_NOOP("Prompt", "I2SF5 external clock input error! ");
const char *const AdjustMs = QT_TRANSLATE_NOOP("Prompt", "pll_ms input error, is it adjusted automatically?\n"
                                                         "The following condition must be met: \n"
                                                         "2MHz <= pll_input / pll_ms <= 16MHz");
const char *const AdjustNs1000 = QT_TRANSLATE_NOOP("Prompt", "pll_ns input error, is it adjusted automatically?\n\n"
                                                             "The following condition must be met: \n"
                                                             "500MHz <= pll_input * pll_ns / pll_ms <= 1000MHz");
const char *const AdjustNs1200 = QT_TRANSLATE_NOOP("Prompt", "pll_ns input error, is it adjusted automatically?\n\n"
                                                             "The following condition must be met: \n"
                                                             "500MHz <= pll_input * pll_ns / pll_ms <= 1200MHz");
const char *const Reset =
    QT_TRANSLATE_NOOP("Prompt", "The current configuration will be reset. Please confirm whether to continue?");
const char *const UnknownSeries = QT_TRANSLATE_NOOP("Prompt", "MCU in file not supported.");

const char *adjustNs(const ClockSeries &series)
{
    return series.vcoMax == PLL_NS_CHECK_MAX_VALUE_F435F437 ? AdjustNs1200 : AdjustNs1000;
}

PromptRequest error(const char *text)
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Critical;
    request.title = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Error"));
    request.text = QLatin1String(text);
    request.buttons = QStringList{QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Ok"))};
    return request;
}

PromptRequest question(const char *text, bool goOn)
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Warning;
    request.title = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Warning"));
    request.text = QLatin1String(text);
    request.buttons = QStringList{QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Yes")),
                                  QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Cancel"))};
    request.defaultButton = goOn ? 0 : 1;
    return request;
}

} // namespace ClockPrompt

namespace {

using Kind = ClockProblem::Kind;

QString shown(const char *text)
{
    return QCoreApplication::translate("Clock", text);
}

struct ErrorText
{
    ClockBranch branch;
    const char *text;
};

constexpr ErrorText AboveTexts[] = {
    {ClockBranch::Sclk, QT_TRANSLATE_NOOP("Prompt", "Can not support sclk greater than %1MHz")},
    {ClockBranch::Apb1, QT_TRANSLATE_NOOP("Prompt", "Can not support apb1clk greater than %1MHz")},
    {ClockBranch::Apb2, QT_TRANSLATE_NOOP("Prompt", "Can not support apb2clk greater than %1MHz")},
    {ClockBranch::Apb3, QT_TRANSLATE_NOOP("Prompt", "Can not support apb3clk greater than %1MHz")},
    {ClockBranch::Pll, QT_TRANSLATE_NOOP("Prompt", "Can not support pll clock greater than %1MHz")},
    {ClockBranch::I2sf5, QT_TRANSLATE_NOOP("Prompt", "Can not support I2SF5 clock greater than %1MHz")},
};

const char *aboveText(ClockBranch branch)
{
    for (const ErrorText &entry : AboveTexts) {
        if (entry.branch == branch)
            return entry.text;
    }
    return "";
}

const char *problemText(const ClockSeries &series, const ClockProblem &problem)
{
    switch (problem.kind) {
    case Kind::HextInput:
        return ClockPrompt::HextInput;
    case Kind::SclkInput:
        return ClockPrompt::SclkInput;
    case Kind::PllMsInput:
        return ClockPrompt::PllMsInput;
    case Kind::PllNsInput:
        return ClockPrompt::PllNsInput;
    case Kind::I2sf5Input:
        return ClockPrompt::I2sf5Input;
    case Kind::Above:
        return aboveText(problem.branch);
    case Kind::PllBelow:
        return QT_TRANSLATE_NOOP("Prompt", "Can not support pll clock less than %1MHz");
    case Kind::UsbNot48:
        return QT_TRANSLATE_NOOP("Prompt",
                                 "USB clock must be 48MHz. But the USB clock of current config is wrong.  please "
                                 "confirm whether to continue?");
    case Kind::AdcAbove: // the texts differ in more than the number
        return series.adcMax == 28
                   ? QT_TRANSLATE_NOOP("Prompt",
                                       "The maximum ADC clock is 28 MHz. The currently configured ADC clock is "
                                       "wrong, please confirm whether to continue?")
                   : QT_TRANSLATE_NOOP("Prompt",
                                       "The maximum ADC clock is 35 MHz. The currently configured ADC clock is "
                                       "wrong.  please confirm whether to continue?");
    case Kind::AdcNotBelowApb2:
        return QT_TRANSLATE_NOOP("Prompt",
                                 "The ADC clock must be less than the APB2 clock. The currently configured ADC "
                                 "clock is wrong, please confirm whether to continue?");
    }
    return "";
}

QString noMultiplierText(double pllInput)
{
    return shown(QT_TRANSLATE_NOOP("Clock",
                                   "No multiplier exists for a PLL input of %1 MHz. Change hext, its divider or "
                                   "the PLL source."))
        .arg(pllInput);
}

// The condition that ends the question about a factor, and what does not meet it.
QString factorText(const char *question, double mhz)
{
    return QString::fromLatin1(question).section(QLatin1Char('\n'), -1) + QStringLiteral(": %1MHz").arg(mhz);
}

} // namespace

PromptRequest clockProblemPrompt(const ClockSeries &series, const ClockProblem &problem, double pllInput)
{
    const char *text = problemText(series, problem);
    PromptRequest request = problem.isWarning() ? ClockPrompt::question(text) : ClockPrompt::error(text);
    if (problem.kind == Kind::Above || problem.kind == Kind::PllBelow)
        request.textArguments = QStringList{QString::number(problem.limit)};
    if (problem.noMultiplier)
        request.detail = noMultiplierText(pllInput);
    else if (problem.kind == Kind::PllMsInput && problem.value > 0)
        request.detail = factorText(ClockPrompt::AdjustMs, problem.value);
    else if (problem.kind == Kind::PllNsInput && problem.value > 0)
        request.detail = factorText(ClockPrompt::adjustNs(series), problem.value);
    else if (problem.branch != ClockBranch::None && problem.kind != Kind::I2sf5Input)
        request.detail = QStringLiteral("%1: %2 MHz")
                             .arg(QLatin1String(clockBranchName(problem.branch)))
                             .arg(QString::number(problem.value, 'f', 3));
    return request;
}

QString clockProblemText(const ClockSeries &series, const ClockProblem &problem, double pllInput)
{
    const PromptRequest request = clockProblemPrompt(series, problem, pllInput);
    QString text = QCoreApplication::translate("Prompt", request.text.toUtf8().constData()).simplified();
    for (const QString &argument : request.textArguments)
        text = text.arg(argument);
    return request.detail.isEmpty() ? text : text + QStringLiteral(" (") + request.detail + QLatin1Char(')');
}

QString clockRefusalText(const ClockSeries &series, const ClockOutcome &outcome)
{
    const QString name = clockFieldName(series, outcome.field);
    switch (outcome.refusal) {
    case ClockRefusal::None:
        return {};
    case ClockRefusal::NotOnThisSeries:
        return shown(QT_TRANSLATE_NOOP("Clock", "This series has no %1.")).arg(name);
    case ClockRefusal::NoSuchValue:
        return shown(QT_TRANSLATE_NOOP("Clock", "%1 cannot take this value.")).arg(name);
    case ClockRefusal::OutOfRange:
        return shown(QT_TRANSLATE_NOOP("Clock", "%1 must be a number from %2 to %3."))
            .arg(name)
            .arg(outcome.min)
            .arg(outcome.max);
    case ClockRefusal::HextOff:
        return shown(QT_TRANSLATE_NOOP("Clock", "High speed external crystal, Need to enable in \"Pin out "
                                                "Configuration--CRM\"."));
    case ClockRefusal::LextOff:
        return shown(QT_TRANSLATE_NOOP("Clock", "Low speed external crystal, Need to enable in \"Pin out "
                                                "Configuration--CRM\"."));
    case ClockRefusal::SysTickTaken:
        return shown(QT_TRANSLATE_NOOP("Clock", "When FREERTOS is activated, this option is invalid."));
    case ClockRefusal::SclkNotOnPll:
        return shown(QT_TRANSLATE_NOOP("Clock", "A frequency can be typed only while the PLL is the source of sclk."));
    case ClockRefusal::HextInvalid:
        return shown(QT_TRANSLATE_NOOP("Clock", "hext must be a number from %1 to %2 MHz first."))
            .arg(outcome.min)
            .arg(outcome.max);
    case ClockRefusal::NotAdjusted:
        return shown(QT_TRANSLATE_NOOP("Clock", "%1 does not suit the PLL input and was not adjusted.")).arg(name);
    case ClockRefusal::NoMultiplier:
        return shown(QT_TRANSLATE_NOOP("Clock", "No multiplier exists for the present PLL input."));
    }
    return {};
}

QString clockLimitsText(const ClockReading &reading)
{
    const ClockLimits &limits = reading.limits;
    if (reading.branch == ClockBranch::Usb)
        return shown(QT_TRANSLATE_NOOP("Clock", "%1 MHz exactly")).arg(limits.max);
    if (limits.min > 0 && limits.max > 0)
        return shown(QT_TRANSLATE_NOOP("Clock", "%1 to %2 MHz")).arg(limits.min).arg(limits.max);
    if (limits.max > 0)
        return shown(QT_TRANSLATE_NOOP("Clock", "up to %1 MHz")).arg(limits.max);
    return {};
}

} // namespace ChipLoom
