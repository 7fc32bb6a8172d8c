#include "Cli/Command.h"
#include "ClockConfig/ClockReadings.h"
#include "ClockConfig/ClockSettings.h"
#include "ClockConfig/ClockSolver.h"
#include "Model/SeriesHelpers.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cmath>

namespace ChipLoom {

namespace {

constexpr std::array<CommandOption, 4> Options{{
    {"sclk", "MHZ", QT_TRANSLATE_NOOP("Cli", "The system clock that is wanted, in MHz. Must be given.")},
    {"hext", "MHZ", QT_TRANSLATE_NOOP("Cli", "Feed the PLL from a crystal of this frequency instead of from HICK.")},
    {"usb", nullptr,
     QT_TRANSLATE_NOOP("Cli", "Take the USB clock from the PLL too: what gives USB 48 MHz comes first.")},
    {"count", "N", QT_TRANSLATE_NOOP("Cli", "How many settings to list, 1 to 100; 8 if not given.")},
}};

/// One more column of the list: a value of the solved tree under the name of its setting.
struct Field
{
    ClockField field;
    bool flexible; ///< of the MS and NS form
};

constexpr std::array<Field, 5> PllFields{{{ClockField::PllMult, false},
                                          {ClockField::PllMs, true},
                                          {ClockField::PllNs, true},
                                          {ClockField::PllFr, true},
                                          {ClockField::PllFp, true}}};

QString pllSettings(const ClockSolution &solution)
{
    const ClockSeries &series = solution.clock.series();
    const bool flexible = solution.clock.Get_ConfigMode() == PLLMODE_FLEXIBLE;
    QStringList settings;
    for (const Field &entry : PllFields) {
        if (entry.flexible == flexible && hasClockField(series, entry.field))
            settings.append(clockFieldName(series, entry.field) + QLatin1Char('=') +
                            QString::number(clockFieldValue(solution.clock, entry.field)));
    }
    if (solution.clock.usbpll_isEnable()) {
        const ClockField usb = series.usb == UsbForm::VcoDivider ? ClockField::PllFu : ClockField::UsbDiv;
        settings.append(clockFieldName(series, usb) + QLatin1Char('=') +
                        QString::number(clockFieldValue(solution.clock, usb)));
    }
    return settings.join(QLatin1Char(' '));
}

QString ppm(double error)
{
    if (std::abs(error) < 0.05)
        return QStringLiteral("0");
    return (error > 0 ? QStringLiteral("+") : QString()) + QString::number(error, 'f', 1);
}

void writeText(QTextStream &out, const std::vector<ClockSolution> &solutions)
{
    const ClockSeries &series = solutions.front().clock.series();
    const bool usb = solutions.front().clock.usbpll_isEnable();
    QList<ClockBranch> buses{ClockBranch::Ahb, ClockBranch::Apb1, ClockBranch::Apb2};
    if (series.apb3Max > 0)
        buses.append(ClockBranch::Apb3);
    out << QStringLiteral("SCLK (MHz)").rightJustified(11) << QStringLiteral("ppm").rightJustified(10);
    for (const ClockBranch bus : buses)
        out << QString(QLatin1String(clockBranchName(bus))).rightJustified(9);
    if (usb)
        out << QStringLiteral("USB").rightJustified(9) << QStringLiteral("ppm").rightJustified(10);
    out << "  PLL\n";
    for (const ClockSolution &solution : solutions) {
        out << QString::number(solution.clock.Get_SYSCLKValue(), 'f', 6).rightJustified(11)
            << ppm(solution.sclkPpm).rightJustified(10);
        for (const ClockBranch bus : buses)
            out << QString::number(clockReading(solution.clock, bus, 0).mhz, 'f', 3).rightJustified(9);
        if (usb)
            out << QString::number(solution.clock.Get_USBCLKValue(), 'f', 3).rightJustified(9)
                << ppm(solution.usbPpm).rightJustified(10);
        out << "  " << pllSettings(solution) << '\n';
    }
}

void writeJson(QTextStream &out, const std::vector<ClockSolution> &solutions)
{
    QJsonArray array;
    for (const ClockSolution &solution : solutions) {
        const ZV32ConfigCLK &clock = solution.clock;
        QJsonObject object{
            {QStringLiteral("settings"), pllSettings(solution)}, {QStringLiteral("sclk"), clock.Get_SYSCLKValue()},
            {QStringLiteral("sclkPpm"), solution.sclkPpm},       {QStringLiteral("ahb"), clock.Get_AHBCLKValue()},
            {QStringLiteral("apb1"), clock.Get_APB1CLKValue()},  {QStringLiteral("apb2"), clock.Get_APB2CLKValue()}};
        if (clock.series().apb3Max > 0)
            object.insert(QStringLiteral("apb3"), clock.Get_APB3CLKValue());
        if (clock.usbpll_isEnable()) {
            object.insert(QStringLiteral("usb"), clock.Get_USBCLKValue());
            object.insert(QStringLiteral("usbPpm"), solution.usbPpm);
        }
        array.append(object);
    }
    out << QString::fromUtf8(QJsonDocument(array).toJson());
}

/// A number of an option within its limits; tells what is wrong otherwise.
std::optional<double> numberOf(const CommandContext &context, const char *option, double min, double max)
{
    bool ok = false;
    const double value = context.value(option).toDouble(&ok);
    if (ok && value >= min && value <= max)
        return value;
    context.tell(QCoreApplication::translate("Cli", "--%1 must be a number from %2 to %3.")
                     .arg(QLatin1String(option))
                     .arg(min)
                     .arg(max));
    return std::nullopt;
}

ExitCode solve(CommandContext &context)
{
    const ClockSeries *series = clockSeriesByText(context.arguments.first());
    if (!series) {
        context.tell(QCoreApplication::translate("Cli", "There is no clock tree of \"%1\"; these have one: %2")
                         .arg(context.arguments.first(), clockSeriesNames()));
        return ExitCode::WrongUsage;
    }
    ZV32ConfigCLK clock(series->code);
    clock.InitSeriesValues();
    const std::optional<double> sclk = numberOf(context, "sclk", SYSCLK_INPUT_MIN_VALUE, series->sclkMax);
    if (!sclk)
        return ExitCode::WrongUsage;
    if (context.isSet("hext")) {
        const std::optional<double> hext = numberOf(context, "hext", HEXT_INPUT_MIN_VALUE, HEXT_INPUT_MAX_VALUE);
        if (!hext)
            return ExitCode::WrongUsage;
        clock.Set_HEXT_Value(*hext);
        clock.Set_PLLRC(PLLRC_HEXT);
    }
    if (context.isSet("usb")) {
        if (!series->hasUsb()) {
            context.tell(QCoreApplication::translate("Cli", "%1 has no USB clock.")
                             .arg(ZV32MCUSERIALS_To_MCUSerialString(series->code)));
            return ExitCode::WrongUsage;
        }
        clock.Set_TO_USB_Switch(true);
        clock.Set_HickToUsb(HICK_TO_USB_DISABLE);
    }
    int count = 8;
    if (context.isSet("count")) {
        const std::optional<double> wanted = numberOf(context, "count", 1, 100);
        if (!wanted)
            return ExitCode::WrongUsage;
        count = int(*wanted);
    }
    const std::vector<ClockSolution> solutions = solveClock(clock, *sclk, count);
    if (solutions.empty()) {
        context.tell(
            QCoreApplication::translate("Cli", "No setting of the PLL stays within the limits of the series."));
        return ExitCode::Problem;
    }
    if (context.json)
        writeJson(context.out, solutions);
    else
        writeText(context.out, solutions);
    return ExitCode::Success;
}

} // namespace

extern const Command SolveClockCommand;
const Command SolveClockCommand{
    .name = "solve-clock",
    .arguments = "SERIES",
    .minArguments = 1,
    .maxArguments = 1,
    .summary = QT_TRANSLATE_NOOP("Cli", "List the settings of the PLL that come nearest to a system clock."),
    .details = QT_TRANSLATE_NOOP("Cli", "The settings are listed best first, with the error in ppm, in the words that "
                                        "clock settings take."),
    .options = Options,
    .run = solve,
};

} // namespace ChipLoom
