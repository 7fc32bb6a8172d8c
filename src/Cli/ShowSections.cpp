#include "Cli/ShowSections.h"

#include "Cli/ClockListing.h"
#include "Cli/DmaListing.h"
#include "Cli/PeripheralListing.h"
#include "Cli/SettingsListing.h"
#include "Cli/TextTable.h"
#include "Design/DesignTexts.h"
#include "Design/PinMenu.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>

#include <array>

namespace ChipLoom {

namespace {

QString statusWord(PINCONFIG_TYPE status)
{
    static constexpr std::array<const char *, 4> words{"none", "manual", "mode", "manual+mode"};
    return QLatin1String(words.at(status));
}

/// Calls `use(pin, state)` for each function that stands on a pin, by position.
template <typename Use> void forEachPlaced(const DevicePinInfo &info, const Use &use)
{
    for (int position : info.positions()) {
        for (int pin : info.pinsAtPosition(position)) {
            for (const PinSignalStruct &state : info.pin(pin).pinSignalsList) {
                if (state.configStatus != Not_Config)
                    use(info.pin(pin), state);
            }
        }
    }
}

void writePins(Design &design, QTextStream &out)
{
    const auto heading = [](const char *text) { return QCoreApplication::translate("Cli", text); };
    QList<QStringList> lines{{heading(QT_TRANSLATE_NOOP("Cli", "Position")), heading(QT_TRANSLATE_NOOP("Cli", "Pin")),
                              heading(QT_TRANSLATE_NOOP("Cli", "Signal")), heading(QT_TRANSLATE_NOOP("Cli", "Label")),
                              heading(QT_TRANSLATE_NOOP("Cli", "State"))}};
    forEachPlaced(design.pinInfo(), [&lines](const MCUPinsBaseInfo &pin, const PinSignalStruct &state) {
        lines.append({pin.pinNumberStr, pin.pinName, state.signalName, state.signalUserLabel,
                      statusText(state.configStatus, state.signalName)});
    });
    if (lines.size() == 1)
        out << "  " << QCoreApplication::translate("Cli", "No pin is in use.") << '\n';
    else
        writeTable(out, lines, 2);
}

QJsonValue pinsJson(Design &design)
{
    QJsonArray pins;
    forEachPlaced(design.pinInfo(), [&pins](const MCUPinsBaseInfo &pin, const PinSignalStruct &state) {
        pins.append(QJsonObject{{QStringLiteral("position"), pin.pinNumberStr},
                                {QStringLiteral("pin"), pin.pinName},
                                {QStringLiteral("signal"), state.signalName},
                                {QStringLiteral("status"), statusWord(state.configStatus)},
                                {QStringLiteral("ioMode"), state.signalIOMode},
                                {QStringLiteral("label"), state.signalUserLabel}});
    });
    return pins;
}

void writeClockOf(Design &design, QTextStream &out)
{
    if (const ZV32MCUPLL *page = design.clock().getMCUPLL())
        writeClock(out, *page);
    else
        out << "  " << QCoreApplication::translate("Cli", "This series has no clock tree.") << '\n';
}

QJsonValue clockOf(Design &design)
{
    const ZV32MCUPLL *page = design.clock().getMCUPLL();
    return page ? QJsonValue(clockJson(*page)) : QJsonValue();
}

void writeProject(Design &design, QTextStream &out)
{
    QList<QStringList> lines;
    for (const QString &name : projectValueNames())
        lines.append({QLatin1String("project/") + name, projectValue(design.project(), name)});
    writeTable(out, lines, 2);
}

QJsonValue projectJson(Design &design)
{
    QJsonObject values;
    for (const QString &name : projectValueNames())
        values.insert(name, projectValue(design.project(), name));
    return values;
}

constexpr std::array<ShowSection, 7> Sections{{
    {"pins", QT_TRANSLATE_NOOP("Cli", "Pins"), writePins, pinsJson},
    {"peripherals", QT_TRANSLATE_NOOP("Cli", "Peripherals"), writePeripherals, peripheralsJson},
    {"gpio", QT_TRANSLATE_NOOP("Cli", "Pin settings"), writeGpio, gpioJson},
    {"nvic", QT_TRANSLATE_NOOP("Cli", "Interrupts"), writeNvic, nvicJson},
    {"dma", QT_TRANSLATE_NOOP("Cli", "DMA"), writeDma, dmaJson},
    {"clock", QT_TRANSLATE_NOOP("Cli", "Clock"), writeClockOf, clockOf},
    {"project", QT_TRANSLATE_NOOP("Cli", "Project"), writeProject, projectJson},
}};

} // namespace

std::span<const ShowSection> showSections()
{
    return Sections;
}

void writePinFunctions(Design &design, int pinNumber, QTextStream &out)
{
    QList<QStringList> lines;
    const PinMenu menu = pinMenu(design, pinNumber);
    for (const PinMenuGroup &group : menu.groups) {
        for (const PinMenuEntry &entry : group.entries) {
            const char *mark = entry.status != Not_Config ? "*" : entry.refusal ? "" : "-";
            const QString hint =
                entry.status != Not_Config ? statusText(entry.status, entry.signalName) : menuEntryHint(entry);
            lines.append({QLatin1String(mark), menuGroupText(group), entry.pinName, entry.signalName, hint});
        }
    }
    if (lines.isEmpty())
        out << "  " << QCoreApplication::translate("Cli", "The pin offers no functions.") << '\n';
    else
        writeTable(out, lines, 2);
}

QJsonValue pinFunctionsJson(Design &design, int pinNumber)
{
    QJsonArray functions;
    const PinMenu menu = pinMenu(design, pinNumber);
    for (const PinMenuGroup &group : menu.groups) {
        for (const PinMenuEntry &entry : group.entries) {
            functions.append(QJsonObject{{QStringLiteral("pin"), entry.pinName},
                                         {QStringLiteral("signal"), entry.signalName},
                                         {QStringLiteral("status"), statusWord(entry.status)},
                                         {QStringLiteral("possible"), entry.refusal.accepted()},
                                         {QStringLiteral("hint"), menuEntryHint(entry)}});
        }
    }
    return functions;
}

} // namespace ChipLoom
