#include "ClockConfig/ClockTexts.h"

#include "ClockConfig/ClockFields.h"

#include <QCoreApplication>

namespace ChipLoom {

namespace {

using Kind = ClockProblem::Kind;

QString tr(const char *text)
{
    return QCoreApplication::translate("Clock", text);
}

struct ErrorText
{
    ClockBranch branch;
    const char *text;
};

constexpr ErrorText AboveTexts[] = {
    {ClockBranch::Sclk, "Can not support sclk greater than %1MHz"},
    {ClockBranch::Apb1, "Can not support apb1clk greater than %1MHz"},
    {ClockBranch::Apb2, "Can not support apb2clk greater than %1MHz"},
    {ClockBranch::Apb3, "Can not support apb3clk greater than %1MHz"},
    {ClockBranch::Pll, "Can not support pll clock greater than %1MHz"},
    {ClockBranch::I2sf5, "Can not support I2SF5 clock greater than %1MHz"},
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
        return "hext input error, please re-enter.";
    case Kind::SclkInput:
        return "sclk input error!";
    case Kind::PllMsInput:
        return "pll_ms input error!";
    case Kind::PllNsInput:
        return "pll_ns input error!";
    case Kind::I2sf5Input:
        return "I2SF5 external clock input error! ";
    case Kind::Above:
        return aboveText(problem.branch);
    case Kind::PllBelow:
        return "Can not support pll clock less than %1MHz";
    case Kind::UsbNot48:
        return "USB clock must be 48MHz. But the USB clock of current config is wrong.  please confirm whether to "
               "continue?";
    case Kind::AdcAbove:
        // The texts differ in more than the number; translations are keyed by them.
        return series.adcMax == 28 ? "The maximum ADC clock is 28 MHz. The currently configured ADC clock is wrong, "
                                     "please confirm whether to continue?"
                                   : "The maximum ADC clock is 35 MHz. The currently configured ADC clock is wrong.  "
                                     "please confirm whether to continue?";
    case Kind::AdcNotBelowApb2:
        return "The ADC clock must be less than the APB2 clock. The currently configured ADC clock is wrong, please "
               "confirm whether to continue?";
    }
    return "";
}

QString noMultiplierText(double pllInput)
{
    return tr(QT_TRANSLATE_NOOP("Clock", "No multiplier exists for a PLL input of %1 MHz. Change hext, its divider or "
                                         "the PLL source."))
        .arg(pllInput);
}

} // namespace

PromptRequest clockProblemPrompt(const ClockSeries &series, const ClockProblem &problem, double pllInput)
{
    PromptRequest request;
    request.kind = problem.isWarning() ? PromptRequest::Kind::Warning : PromptRequest::Kind::Critical;
    request.title = problem.isWarning() ? QStringLiteral("Warning") : QStringLiteral("Error");
    request.text = QLatin1String(problemText(series, problem));
    if (problem.kind == Kind::Above || problem.kind == Kind::PllBelow)
        request.textArguments = QStringList{QString::number(problem.limit)};
    if (problem.noMultiplier)
        request.detail = noMultiplierText(pllInput);
    else if (problem.branch != ClockBranch::None && problem.kind != Kind::I2sf5Input)
        request.detail = QStringLiteral("%1: %2 MHz")
                             .arg(QLatin1String(clockBranchName(problem.branch)))
                             .arg(QString::number(problem.value, 'f', 3));
    request.buttons = problem.isWarning() ? QStringList{QStringLiteral("Yes"), QStringLiteral("Cancel")}
                                          : QStringList{QStringLiteral("Ok")};
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
        return tr(QT_TRANSLATE_NOOP("Clock", "This series has no %1.")).arg(name);
    case ClockRefusal::NoSuchValue:
        return tr(QT_TRANSLATE_NOOP("Clock", "%1 cannot take this value.")).arg(name);
    case ClockRefusal::OutOfRange:
        return tr(QT_TRANSLATE_NOOP("Clock", "%1 must be a number from %2 to %3."))
            .arg(name)
            .arg(outcome.min)
            .arg(outcome.max);
    case ClockRefusal::HextOff:
        return tr(QT_TRANSLATE_NOOP("Clock", "High speed external crystal, Need to enable in \"Pin out "
                                             "Configuration--CRM\"."));
    case ClockRefusal::LextOff:
        return tr(QT_TRANSLATE_NOOP("Clock", "Low speed external crystal, Need to enable in \"Pin out "
                                             "Configuration--CRM\"."));
    case ClockRefusal::SysTickTaken:
        return tr(QT_TRANSLATE_NOOP("Clock", "When FREERTOS is activated, this option is invalid."));
    case ClockRefusal::SclkNotOnPll:
        return tr(QT_TRANSLATE_NOOP("Clock", "A frequency can be typed only while the PLL is the source of sclk."));
    case ClockRefusal::HextInvalid:
        return tr(QT_TRANSLATE_NOOP("Clock", "hext must be a number from %1 to %2 MHz first."))
            .arg(outcome.min)
            .arg(outcome.max);
    case ClockRefusal::NotAdjusted:
        return tr(QT_TRANSLATE_NOOP("Clock", "%1 does not suit the PLL input and was not adjusted.")).arg(name);
    case ClockRefusal::NoMultiplier:
        return tr(QT_TRANSLATE_NOOP("Clock", "No multiplier exists for the present PLL input."));
    }
    return {};
}

QString clockLimitsText(const ClockReading &reading)
{
    const ClockLimits &limits = reading.limits;
    if (reading.branch == ClockBranch::Usb)
        return tr(QT_TRANSLATE_NOOP("Clock", "%1 MHz exactly")).arg(limits.max);
    if (limits.min > 0 && limits.max > 0)
        return tr(QT_TRANSLATE_NOOP("Clock", "%1 to %2 MHz")).arg(limits.min).arg(limits.max);
    if (limits.max > 0)
        return tr(QT_TRANSLATE_NOOP("Clock", "up to %1 MHz")).arg(limits.max);
    return {};
}

} // namespace ChipLoom
