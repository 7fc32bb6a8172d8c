#include "Cli/Command.h"
#include "Cli/TextTable.h"
#include "Model/xmloperation.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

namespace ChipLoom {

namespace {

constexpr std::array<CommandOption, 3> Options{{
    {"series", "NAME", QT_TRANSLATE_NOOP("Cli", "Only the devices of a series, as ZV32F421.")},
    {"package", "NAME", QT_TRANSLATE_NOOP("Cli", "Only the devices in a package, as LQFP48.")},
    {"search", "TEXT", QT_TRANSLATE_NOOP("Cli", "Only the devices whose name holds TEXT, in upper or lower case.")},
}};

struct Row
{
    QString line, series;
    MCUDeviceStruct device;
};

struct Column
{
    const char *title; // context "Cli"
    const char *key;   // in JSON
    QString (*text)(const Row &row);
};

const std::array<Column, 9> Columns{{
    {QT_TRANSLATE_NOOP("Cli", "Device"), "device", [](const Row &row) { return row.device.DeviceName; }},
    {QT_TRANSLATE_NOOP("Cli", "Series"), "series", [](const Row &row) { return row.series; }},
    {QT_TRANSLATE_NOOP("Cli", "Package"), "package", [](const Row &row) { return row.device.DevicePackage; }},
    {QT_TRANSLATE_NOOP("Cli", "Flash"), "flash", [](const Row &row) { return row.device.DeviceFlash; }},
    {QT_TRANSLATE_NOOP("Cli", "SRAM"), "sram", [](const Row &row) { return row.device.DeviceSRAM; }},
    {QT_TRANSLATE_NOOP("Cli", "Max. SRAM"), "maxSram", [](const Row &row) { return row.device.DeviceMaxSRAM; }},
    {QT_TRANSLATE_NOOP("Cli", "Core"), "core", [](const Row &row) { return row.device.DeviceCore; }},
    {QT_TRANSLATE_NOOP("Cli", "Frequency"), "frequency", [](const Row &row) { return row.device.DeviceFrequency; }},
    {QT_TRANSLATE_NOOP("Cli", "GPIOs"), "gpios", [](const Row &row) { return row.device.DeviceGPIOs; }},
}};

void writeJson(QTextStream &out, const QList<Row> &rows)
{
    QJsonArray array;
    for (const Row &row : rows) {
        QJsonObject object{{QStringLiteral("productLine"), row.line}};
        for (const Column &column : Columns)
            object.insert(QLatin1String(column.key), column.text(row));
        array.append(object);
    }
    out << QString::fromUtf8(QJsonDocument(array).toJson());
}

void writeText(QTextStream &out, const QList<Row> &rows)
{
    QList<QStringList> lines{{}};
    for (const Column &column : Columns)
        lines.first().append(QCoreApplication::translate("Cli", column.title));
    for (const Row &row : rows) {
        lines.append(QStringList());
        for (const Column &column : Columns)
            lines.last().append(column.text(row));
    }
    writeTable(out, lines);
}

/// False, with a message that names the choices, if the catalogue does not have what was asked for.
bool isKnown(const CommandContext &context, const char *option, const QStringList &known, const QString &message)
{
    if (!context.isSet(option) || known.contains(context.value(option), Qt::CaseInsensitive))
        return true;
    context.tell(message.arg(context.value(option), known.join(QLatin1String(", "))));
    return false;
}

bool holds(const CommandContext &context, const char *option, const QString &text)
{
    return !context.isSet(option) || context.value(option).compare(text, Qt::CaseInsensitive) == 0;
}

ExitCode listDevices(CommandContext &context)
{
    const XMLOperation database(context.paths);
    const QList<ProductLineStruct> lines = database.GetProductLinesList();
    QStringList series;
    QStringList packages;
    QList<Row> rows;
    bool any = false;
    const QString search = context.value("search").toUpper();
    for (const ProductLineStruct &line : lines) {
        for (const MCUSerialStruct &serial : line.MCUSerialList) {
            series.append(serial.SeriaName);
            for (const MCUDeviceStruct &device : serial.MCUDeviceList) {
                any = true;
                if (!packages.contains(device.DevicePackage))
                    packages.append(device.DevicePackage);
                if (holds(context, "series", serial.SeriaName) && holds(context, "package", device.DevicePackage) &&
                    device.DeviceName.contains(search))
                    rows.append({line.ProductLineName, serial.SeriaName, device});
            }
        }
    }
    if (!any)
        return context.tell(database.catalogueProblem());
    if (!isKnown(context, "series", series,
                 QCoreApplication::translate("Cli", "There is no series \"%1\" in the catalogue, which has: %2")) ||
        !isKnown(context, "package", packages,
                 QCoreApplication::translate("Cli", "There is no package \"%1\" in the catalogue, which has: %2")))
        return ExitCode::WrongUsage;
    if (context.json)
        writeJson(context.out, rows);
    else if (rows.isEmpty())
        context.tell(QCoreApplication::translate("Cli", "No device fits."));
    else
        writeText(context.out, rows);
    return ExitCode::Success;
}

} // namespace

extern const Command DevicesCommand;
const Command DevicesCommand{
    .name = "devices",
    .arguments = "",
    .minArguments = 0,
    .maxArguments = 0,
    .summary = QT_TRANSLATE_NOOP("Cli", "List the devices of the catalogue."),
    .details = "",
    .options = Options,
    .run = listDevices,
};

} // namespace ChipLoom
