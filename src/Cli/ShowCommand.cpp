#include "Cli/ClockListing.h"
#include "Cli/DesignArguments.h"
#include "Cli/ShowSections.h"
#include "ClockConfig/ClockSettings.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <limits>

namespace ChipLoom {

namespace {

constexpr std::array<CommandOption, 2> Options{{
    {"section", "NAME",
     QT_TRANSLATE_NOOP("Cli", "Only this section of the design: pins, peripherals, gpio, nvic, dma, clock, project.")},
    {"pin", "NAME", QT_TRANSLATE_NOOP("Cli", "Instead, what a pin offers and what choosing it would do.")},
}};

bool isWanted(const CommandContext &context, const ShowSection &section)
{
    return !context.isSet("section") || context.value("section") == QLatin1String(section.name);
}

QJsonObject deviceJson(const Design &design)
{
    return {{QStringLiteral("device"), design.device()},
            {QStringLiteral("series"), design.series()},
            {QStringLiteral("package"), design.package()}};
}

void writeJson(const CommandContext &context, const QJsonObject &object)
{
    context.out << QString::fromUtf8(QJsonDocument(object).toJson());
}

void writeDevice(const CommandContext &context, const Design &design)
{
    context.out << design.device() << "  " << design.series() << "  " << design.package() << '\n';
}

ExitCode showPin(const CommandContext &context, Design &design)
{
    const QVector<int> named = design.pinInfo().pinsNamed(context.value("pin"));
    if (named.isEmpty()) {
        context.tell(QCoreApplication::translate("Cli", "There is no pin \"%1\".").arg(context.value("pin")));
        return ExitCode::WrongUsage;
    }
    const MCUPinsBaseInfo &pin = design.pinInfo().pin(named.first());
    if (context.json) {
        QJsonObject object = deviceJson(design);
        object.insert(QStringLiteral("position"), pin.pinNumberStr);
        object.insert(QStringLiteral("functions"), pinFunctionsJson(design, pin.pinNumber));
        writeJson(context, object);
        return ExitCode::Success;
    }
    writeDevice(context, design);
    context.out << '\n'
                << QCoreApplication::translate("Cli", "Pin %1, position %2").arg(pin.pinName, pin.pinNumberStr) << '\n';
    writePinFunctions(design, pin.pinNumber, context.out);
    return ExitCode::Success;
}

ExitCode showSectionsOf(const CommandContext &context, Design &design)
{
    if (context.json) {
        QJsonObject object = deviceJson(design);
        for (const ShowSection &section : showSections()) {
            if (isWanted(context, section))
                object.insert(QLatin1String(section.name), section.json(design));
        }
        writeJson(context, object);
        return ExitCode::Success;
    }
    writeDevice(context, design);
    for (const ShowSection &section : showSections()) {
        if (!isWanted(context, section))
            continue;
        context.out << '\n' << QCoreApplication::translate("Cli", section.title) << '\n';
        section.text(design, context.out);
    }
    return ExitCode::Success;
}

/// A series has no pins before a device is chosen, but it has a clock tree.
ExitCode showClockOf(const CommandContext &context, const ClockSeries &series)
{
    Scheduler scheduler;
    ZV32MCUPLL page(series, scheduler, context.prompt);
    const QStringList settings = context.arguments.mid(1);
    for (const QString &setting : settings) {
        const std::optional<DesignChange> change = DesignChange::fromSetting(setting);
        if (!change || change->section != QLatin1String("clock")) {
            context.tell(
                QCoreApplication::translate("Cli", "\"%1\" is no setting of a series; write it as clock/sclk=120.")
                    .arg(setting));
            return ExitCode::WrongUsage;
        }
        const QString refusal = applyClockSetting(page, change->address, change->value, true);
        if (!refusal.isEmpty()) {
            context.tell(setting + QLatin1String(": ") + refusal);
            return ExitCode::Problem;
        }
    }
    if (context.json)
        writeJson(context, {{QStringLiteral("clock"), clockJson(page)}});
    else
        writeClock(context.out, page);
    return ExitCode::Success;
}

ExitCode show(CommandContext &context)
{
    QStringList names;
    for (const ShowSection &section : showSections())
        names.append(QLatin1String(section.name));
    if (context.isSet("section") && !names.contains(context.value("section"))) {
        context.tell(QCoreApplication::translate("Cli", "There is no section \"%1\"; there are: %2")
                         .arg(context.value("section"), names.join(QLatin1String(", "))));
        return ExitCode::WrongUsage;
    }
    if (const ClockSeries *series = clockSeriesByText(context.arguments.first())) {
        const bool wantsMore =
            context.isSet("pin") || (context.isSet("section") && context.value("section") != "clock");
        if (!wantsMore)
            return showClockOf(context, *series);
        context.tell(QCoreApplication::translate("Cli", "Of a series only the clock can be shown; name a device."));
        return ExitCode::WrongUsage;
    }
    CommandDesign design(context);
    ExitCode code = openDesignOrDevice(context, context.arguments.first(), design);
    if (code == ExitCode::Success)
        code = applySettings(context, context.arguments.mid(1), design);
    if (code != ExitCode::Success)
        return code;
    return context.isSet("pin") ? showPin(context, design) : showSectionsOf(context, design);
}

} // namespace

extern const Command ShowCommand;
const Command ShowCommand{
    .name = "show",
    .arguments = "FILE|DEVICE|SERIES [SETTING...]",
    .minArguments = 1,
    .maxArguments = std::numeric_limits<int>::max(),
    .summary =
        QT_TRANSLATE_NOOP("Cli", "Show a design file (*.ZVWP), a new design for a device, or the clock of a series, "
                                 "with settings applied."),
    .details = SettingsHelp,
    .options = Options,
    .run = show,
};

} // namespace ChipLoom
