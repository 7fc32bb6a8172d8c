#include "Design/ModeFamilies.h"

#include "Design/DevicePinInfo.h"
#include "Design/ModeControl.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

// What a series has beside what all share.
enum Feature : unsigned {
    AdcCommon = 1u << 0,       ///< its converters need ADC-Common too
    CanNote = 1u << 1,         ///< its CAN asks for the crystal
    DuplexNote = 1u << 2,      ///< the second half of a full-duplex I2S follows the first
    AccByTokens = 1u << 3,     ///< USB switches the clock calibration on and off
    DebugBox = 1u << 4,        ///< one box chooses the debug interface
    DebugSwd = 1u << 5,        ///< a check box for the two debug wires
    DebugSwo = 1u << 6,        ///< and one for the trace output
    ComparatorBoxes = 1u << 7, ///< the comparator asks for its output and inputs
    ComparatorIdle = 1u << 8,  ///< and is not in use before they are chosen; some inputs need no second one
};

struct SeriesRow
{
    const char *series;
    unsigned features;
    const char *subordinateTimers; ///< timers whose note asks for the sub-mode input
    const char *ultraPins;         ///< pins of the virtual names "SCFG_VS_<pin>Ultra"
};

constexpr const char *TimersAll = "TMR1 TMR2 TMR3 TMR4 TMR5 TMR8 TMR9 TMR12 TMR20";
constexpr const char *TimersWithout12 = "TMR1 TMR2 TMR3 TMR4 TMR5 TMR8 TMR9 TMR20";
constexpr const char *TimersWith15 = "TMR1 TMR2 TMR3 TMR4 TMR5 TMR8 TMR9 TMR12 TMR15 TMR20";

constexpr std::array<SeriesRow, 30> Rows{{
    {"ZV32F421", CanNote | DebugSwd | ComparatorBoxes, TimersWith15, ""},
    {"ZV32F423", CanNote | DuplexNote | AccByTokens | DebugBox, TimersAll, "PB8 PB9 PD12 PD13"},
    {"ZV32A423", CanNote | DuplexNote | AccByTokens | DebugBox, TimersAll, "PB8 PB9 PD12 PD13"},
    {"ZV32F425", CanNote | DuplexNote | AccByTokens | DebugSwd, TimersWith15, "PB8 PB9 PB13 PB14"},
    {"ZV32L021", CanNote | DebugSwd, TimersWith15, "PB8 PB9"},
    {"ZV32F011", CanNote | DebugSwd, TimersWith15, "PB8 PB9"},
    {"ZV32F403", CanNote | DebugBox, TimersAll, ""},
    {"ZV32F403A", CanNote | AccByTokens | DebugBox, TimersAll, ""},
    {"ZV32F407", CanNote | AccByTokens | DebugBox, TimersAll, ""},
    {"ZV32A403A", CanNote | AccByTokens | DebugBox, TimersAll, ""},
    {"ZV32F413", CanNote | AccByTokens | DebugBox, TimersWithout12, ""},
    {"ZV32F415", CanNote | DebugBox, TimersAll, ""},
    {"ZV32WB415", CanNote | DebugBox, TimersAll, ""},
    {"ZV32F405", CanNote | DuplexNote | AccByTokens | DebugSwd | DebugSwo, TimersAll, "PB3 PB9 PB10"},
    {"ZV32F402", CanNote | DuplexNote | AccByTokens | DebugSwd | DebugSwo, TimersAll, "PB3 PB9 PB10"},
    {"ZV32F490", CanNote | DuplexNote | AccByTokens | DebugSwd | DebugSwo, TimersAll, "PB3 PB9 PB10"},
    {"ZV32F406", AdcCommon | DebugSwd | DebugSwo, TimersAll, "PB3 PB9 PB10"},
    {"ZV32F408", AdcCommon | DebugSwd | DebugSwo, TimersAll, "PB3 PB9 PB10"},
    {"ZV32F435", AdcCommon | CanNote | AccByTokens | DebugBox, TimersAll, "PB3 PB9 PB10 PD12 PD13 PD14 PD15 PF14 PF15"},
    {"ZV32F437", AdcCommon | CanNote | AccByTokens | DebugBox, TimersAll, "PB3 PB9 PB10 PD12 PD13 PD14 PD15 PF14 PF15"},
    {"ZV32F455", AdcCommon | CanNote | AccByTokens | DebugSwd | DebugSwo, TimersAll, "PB8 PB9 PD12 PD13 PD14 PD15"},
    {"ZV32F456", AdcCommon | CanNote | AccByTokens | DebugSwd | DebugSwo, TimersAll, "PB8 PB9 PD12 PD13 PD14 PD15"},
    {"ZV32F457", AdcCommon | CanNote | AccByTokens | DebugSwd | DebugSwo, TimersAll, "PB8 PB9 PD12 PD13 PD14 PD15"},
    {"ZV32M412", AdcCommon | CanNote | DebugSwd | DebugSwo | ComparatorBoxes | ComparatorIdle, TimersAll,
     "PA11 PA12 PB8 PB9"},
    {"ZV32M416", AdcCommon | CanNote | DebugSwd | DebugSwo | ComparatorBoxes | ComparatorIdle, TimersAll,
     "PA11 PA12 PB8 PB9"},
    {"ZV32F422", CanNote | DebugSwd | DebugSwo | ComparatorBoxes, TimersWith15, ""},
    {"ZV32F426", CanNote | DebugSwd | DebugSwo | ComparatorBoxes, TimersWith15, ""},
    {"ZV32F6221", CanNote | DebugSwd | DebugSwo | ComparatorBoxes, TimersWith15, ""},
    {"ZV32F403E", CanNote | AccByTokens | DebugBox, TimersAll, ""},
    {"ZV32F407E", CanNote | AccByTokens | DebugBox, TimersAll, ""},
}};

const SeriesRow NoSeries{"", CanNote, TimersAll, ""};

const SeriesRow &rowOf(const QString &series)
{
    const auto row =
        std::find_if(Rows.begin(), Rows.end(), [&](const SeriesRow &entry) { return series == entry.series; });
    return row == Rows.end() ? NoSeries : *row;
}

bool listed(const char *blankSeparated, const QString &word)
{
    return QString::fromLatin1(blankSeparated).split(QLatin1Char(' ')).contains(word);
}

// Where a virtual signal stands for a property of the package. The first row that names signal and series decides.
struct PackageRow
{
    const char *signal;
    const char *series;
    const char *packages; ///< package and pin count, "*" for any; empty: on all
    bool presentThere;    ///< else everywhere but there
};

constexpr std::array<PackageRow, 11> PackageRows{{
    {"SCFG_VS_PA11PA12_REMAP", "ZV32F421 ZV32F425", "TSSOP/20", true},
    {"SCFG_VS_PA11PA12_REMAP", "ZV32L021 ZV32F011", "*/28 */20", true},
    {"SCFG_VS_PA11PA12_REMAP", "ZV32M412 ZV32M416", "TSSOP/24", true},
    {"SCFG_VS_PA11PA12_REMAP", "ZV32F422 ZV32F426 ZV32F6221", "TSSOP/20 QFN/28", true},
    {"SCFG_VS_PA11PA12_REMAP", "*", "*/*", false},
    {"SCFG_VS_NRSTPF2_REMAP", "ZV32M412 ZV32M416", "*/*", true},
    {"SCFG_VS_NRSTPF2_REMAP", "*", "*/*", false},
    {"SCFG_VS_I2S23", "ZV32F405 ZV32F402 ZV32F490", "QFN/32", false},
    {"SCFG_VS_I2S12", "ZV32F405 ZV32F402 ZV32F490", "QFN/32", false},
    {"SCFG_VS_I2S23", "ZV32F425", "TSSOP/20", false},
    {"SCFG_VS_I2S13", "ZV32F425", "TSSOP/20", false},
}};

bool packageMatches(const char *packages, const DevicePinInfo &pins, bool both)
{
    for (const QString &entry : QString::fromLatin1(packages).split(QLatin1Char(' '))) {
        const QString family = entry.section(QLatin1Char('/'), 0, 0);
        const QString count = entry.section(QLatin1Char('/'), 1);
        const bool sameFamily = family == QLatin1String("*") || family == pins.m_packageType;
        const bool sameCount = count == QLatin1String("*") || count.toInt() == pins.m_allPinNums;
        if (both ? sameFamily && sameCount : sameFamily || sameCount)
            return true;
    }
    return false;
}

bool isOn(const std::vector<const ModeControl *> &controls, size_t index)
{
    return index < controls.size() && controls[index]->isOn();
}

bool anyOn(const std::vector<const ModeControl *> &controls)
{
    return std::any_of(controls.begin(), controls.end(), [](const ModeControl *control) { return control->isOn(); });
}

const ModeControl *named(const std::vector<const ModeControl *> &controls, const char *modeName)
{
    for (const ModeControl *control : controls) {
        if (control->modeName() == QLatin1String(modeName))
            return control;
    }
    return nullptr;
}

// ---- Which peripherals share a rule of being in use ----

enum class InUse {
    AnyControl, ///< any box off 0 or any check box ticked
    FirstBox,   ///< the first box off 0
    FirstCheck, ///< the first check box ticked; the others are channels
    AnyCheck,   ///< any check box ticked
    Timer,      ///< as `FirstCheck`, and a subordinate mode has its input
    Memory,     ///< as `FirstCheck`, and the boxes of the row off 0
    Ethernet,   ///< boxes by pin count
    Comparator, ///< mode, output and inputs
};

struct UseRow
{
    enum class Of { Name, Instance, InstanceStart } of;
    const char *words;
    InUse rule;
    std::vector<size_t> boxes = {};
};

const std::vector<UseRow> &useRows()
{
    using Of = UseRow::Of;
    static const std::vector<UseRow> Table{
        {Of::Name, "USART UART SDIO DVP", InUse::FirstBox},
        {Of::Instance, TimersWith15, InUse::Timer},
        {Of::Instance, "TMR6 TMR7 TMR10 TMR11 TMR13 TMR14 TMR16 TMR17 ADC-Common", InUse::FirstCheck},
        {Of::Name, "CRC WDT WWDT IRTMR ERTC ACC CAN QSPI HWDIV TRNG SPIM", InUse::FirstCheck},
        {Of::Instance, "ADC1 ADC2 ADC3", InUse::AnyCheck},
        {Of::Name, "PWC EXINT DAC", InUse::AnyCheck},
        {Of::InstanceStart, "XMC_NORFlash XMC_NANDFlash", InUse::Memory, {0}},
        {Of::InstanceStart, "XMC_PCCard", InUse::Memory, {0, 1}},
        {Of::InstanceStart, "XMC_SDRAM", InUse::Memory, {1, 2}},
        {Of::Instance, "EMAC", InUse::Ethernet},
        {Of::Instance, "CMP1 CMP2", InUse::Comparator},
    };
    return Table;
}

const UseRow *useRow(const PeripheralsBaseInfo &info)
{
    for (const UseRow &row : useRows()) {
        switch (row.of) {
        case UseRow::Of::Name:
            if (listed(row.words, info.Name))
                return &row;
            break;
        case UseRow::Of::Instance:
            if (listed(row.words, info.InstanceName))
                return &row;
            break;
        case UseRow::Of::InstanceStart:
            for (const QString &start : QString::fromLatin1(row.words).split(QLatin1Char(' '))) {
                if (info.InstanceName.startsWith(start))
                    return &row;
            }
            break;
        }
    }
    return nullptr;
}

// The box without which a subordinate timer is incomplete, or null.
const ModeControl *missingTimerInput(const ModeFamilyInput &input)
{
    const ModeControl *mode = named(input.comboBoxes, "Subordinate mode");
    const ModeControl *source = named(input.comboBoxes, "Sub-mode input selection");
    return mode && source && mode->isOn() && !source->isOn() ? source : nullptr;
}

const ModeControl *missingMemoryBox(const ModeFamilyInput &input, const UseRow &row)
{
    for (const size_t box : row.boxes) {
        if (box < input.comboBoxes.size() && !input.comboBoxes[box]->isOn())
            return input.comboBoxes[box];
    }
    return nullptr;
}

const ModeControl *missingComparatorBox(const ModeFamilyInput &input)
{
    const unsigned features = rowOf(input.series).features;
    const ModeControl *mode = named(input.comboBoxes, "Mode");
    if (!(features & ComparatorBoxes) || !mode || !mode->isOn())
        return nullptr;
    const ModeControl *output = named(input.comboBoxes, "Output_select");
    if (output && !output->isOn())
        return output;
    const ModeControl *positive = named(input.comboBoxes, "INP_channel_select");
    if (positive && !positive->isOn())
        return positive;
    static const QVector<int> NeedNegative{1, 4, 5, 6};
    const ModeControl *negative = named(input.comboBoxes, "INM_channel_select");
    const bool needed = positive && (!(features & ComparatorIdle) || NeedNegative.contains(positive->index()));
    return needed && negative && !negative->isOn() ? negative : nullptr;
}

// The first box that an interface of the Ethernet controller still needs, by its index and the size of the package, or
// null. Too few controls for a rule end the check.
const ModeControl *missingEthernetBox(const ModeFamilyInput &input)
{
    const auto &boxes = input.comboBoxes;
    if (!isOn(boxes, 0))
        return nullptr;
    const int index = boxes[0]->index();
    const bool large = input.allPinNums == 144;
    const bool medium = input.allPinNums == 100 || input.allPinNums == 64;
    std::vector<size_t> needed{2, 3};
    bool clockRule = false;
    if (large && index >= 1 && index <= 4) {
        needed = {1, 3};
        clockRule = true;
    } else if (large && (index == 5 || index == 6)) {
        needed = {4};
        clockRule = true;
    } else if (medium && (index == 1 || index == 2)) {
        needed = {4};
        clockRule = true;
    }
    for (const size_t box : needed) {
        if (box < boxes.size() && !boxes[box]->isOn())
            return boxes[box];
    }
    const bool needsStamps = clockRule && boxes.size() > 5 && input.checkBoxes.size() >= 2 && boxes[5]->isOn();
    return needsStamps && !input.checkBoxes[1]->isOn() ? input.checkBoxes[1] : nullptr;
}

} // namespace

bool isPeripheralValid(const ModeFamilyInput &input)
{
    const UseRow *row = useRow(input.info);
    switch (row ? row->rule : InUse::AnyControl) {
    case InUse::AnyControl:
        return anyOn(input.comboBoxes) || anyOn(input.checkBoxes);
    case InUse::FirstBox:
        return isOn(input.comboBoxes, 0);
    case InUse::FirstCheck:
        return isOn(input.checkBoxes, 0);
    case InUse::AnyCheck:
        return anyOn(input.checkBoxes);
    case InUse::Timer:
        return isOn(input.checkBoxes, 0) && !missingTimerInput(input);
    case InUse::Memory:
        return isOn(input.checkBoxes, 0) && !missingMemoryBox(input, *row);
    case InUse::Ethernet:
        return isOn(input.comboBoxes, 0) && !missingEthernetBox(input);
    case InUse::Comparator:
        return anyOn(input.comboBoxes) &&
               !((rowOf(input.series).features & ComparatorIdle) && missingComparatorBox(input));
    }
    return false;
}

bool hearsFreeRtos(const ModeControl &timeBase)
{
    const QStringList &tokens = timeBase.receivedTokens();
    return std::any_of(tokens.begin(), tokens.end(),
                       [](const QString &token) { return token.contains(QLatin1String("FREERTOS")); });
}

bool kernelSharesSysTick(const ModeControl &timeBase)
{
    return timeBase.currentName() == QLatin1String("SysTick") && hearsFreeRtos(timeBase);
}

ModeNote modeNote(const ModeFamilyInput &input, bool valid)
{
    const SeriesRow &row = rowOf(input.series);
    const QString &instance = input.info.InstanceName;
    const auto fixed = [](const char *text) {
        return ModeNote{ModeNote::Kind::Fixed, QString::fromLatin1(text), false, {}};
    };
    const auto select = [](const ModeControl *box) {
        return ModeNote{ModeNote::Kind::SelectBox, box->modeName(), true, {}};
    };

    if (listed(row.subordinateTimers, instance)) {
        if (const ModeControl *box = missingTimerInput(input))
            return select(box);
        return {};
    }
    if (const ModeControl *timeBase = named(input.comboBoxes, "Time_Base"); timeBase && kernelSharesSysTick(*timeBase))
        return {ModeNote::Kind::Reason,
                {},
                false,
                {DesignReason::SysTickShared, {QStringLiteral("FREERTOS"), input.info.InstanceName}}};
    const UseRow *use = useRow(input.info);
    if (use && use->rule == InUse::Memory) {
        const ModeControl *box = isOn(input.checkBoxes, 0) ? missingMemoryBox(input, *use) : nullptr;
        return box ? select(box) : ModeNote();
    }
    if (use && use->rule == InUse::Ethernet) {
        const ModeControl *box = missingEthernetBox(input);
        return box ? select(box) : ModeNote();
    }
    if (use && use->rule == InUse::Comparator) {
        const ModeControl *box = missingComparatorBox(input);
        return box ? select(box) : ModeNote();
    }
    if ((row.features & AdcCommon) && listed("ADC1 ADC2 ADC3", instance) && !anyOn(input.checkBoxes))
        return fixed(QT_TRANSLATE_NOOP(
            "Modes", "Please note: When configuring ADC, it is also necessary to configure ADC-Common"));
    if (valid && listed("SCFG DEBUG", instance))
        return fixed(QT_TRANSLATE_NOOP("Modes", "This peripheral has no parameters to be configured."));
    if (valid && (row.features & CanNote) && instance.startsWith(QLatin1String("CAN")))
        return fixed(QT_TRANSLATE_NOOP(
            "Modes", "As specified in CAN protocol, the maximum allowable oscillator tolerance is 1.58%. To guarantee "
                     "normal communication, it is recommended to use \"High speed external crystal (HEXT)\" as the CAN "
                     "clock source."));
    const bool duplexIndex =
        !input.comboBoxes.empty() && (input.comboBoxes[0]->index() == 5 || input.comboBoxes[0]->index() == 6);
    if ((row.features & DuplexNote) && listed("I2S2 I2S3", instance) && duplexIndex)
        return fixed(
            QT_TRANSLATE_NOOP("Modes", "Please note: Full duplex affiliated parameters must be same as the leader"));
    return {};
}

QList<ConfigurationTab> configurationTabs(const ModeFamilyInput &input)
{
    using Tab = ConfigurationTab;
    if (listed("SCFG DEBUG", input.info.InstanceName))
        return {};
    if (listed("ADC-Common SYSTEM", input.info.InstanceName))
        return {Tab::Parameters};
    return {Tab::Parameters, Tab::Dma, Tab::Nvic, Tab::Interrupts, Tab::Gpio};
}

VirtualSignal virtualSignalPresence(const QString &series, const QString &signal, const DevicePinInfo &pins)
{
    const auto onDevice = [&](const QString &name) {
        return pins.placesOf(name).isEmpty() && pins.pinsNamed(name).isEmpty() ? VirtualSignal::Absent
                                                                               : VirtualSignal::Present;
    };
    if (signal == QLatin1String("VS_EXINT11") || signal == QLatin1String("VS_EXINT15"))
        return onDevice(signal.mid(3));
    static const QLatin1String UltraStart("SCFG_VS_");
    static const QLatin1String UltraEnd("Ultra");
    if (signal.startsWith(UltraStart) && signal.endsWith(UltraEnd)) {
        const QString pin = signal.mid(UltraStart.size(), signal.size() - UltraStart.size() - UltraEnd.size());
        return listed(rowOf(series).ultraPins, pin) ? onDevice(pin) : VirtualSignal::NotNamed;
    }
    for (const PackageRow &row : PackageRows) {
        if (signal != QLatin1String(row.signal) || !(listed(row.series, series) || listed(row.series, "*")))
            continue;
        // "Is not QFN and has not 32 pins": either excludes.
        const bool matches = packageMatches(row.packages, pins, row.presentThere);
        return matches == row.presentThere ? VirtualSignal::Present : VirtualSignal::Absent;
    }
    return VirtualSignal::NotNamed;
}

QString checkedAlong(const ModeFamilyInput &input, const QString &modeName, const QString &itemName)
{
    // A device of these series tells by the supply of the bus that it is plugged in.
    const bool sensesSupply = listed("ZV32F415 ZV32WB415", input.series) &&
                              input.info.InstanceName == QLatin1String("USB_OTGFS1") &&
                              modeName == QLatin1String("Mode") && itemName == QLatin1String("Device_Only");
    return sensesSupply ? QStringLiteral("Activate_VBUS") : QString();
}

QList<IP_MODE_Struct> specialItems(const ModeFamilyInput &input)
{
    const unsigned features = rowOf(input.series).features;
    QList<IP_MODE_Struct> items;
    const auto choose = [&](const char *mode, const char *item) {
        if (const ModeControl *box = named(input.comboBoxes, mode)) {
            const bool known = box->indexOf(QLatin1String(item)) > 0;
            items.append({QLatin1String(mode), known ? QLatin1String(item) : box->items().front().Name});
        }
    };
    const auto tick = [&](const char *mode) {
        if (named(input.checkBoxes, mode))
            items.append({QLatin1String(mode), QStringLiteral("TRUE")});
    };
    if (input.info.InstanceName == QLatin1String("SYSTEM"))
        choose("Time_Base", "SysTick");
    if (input.info.InstanceName == QLatin1String("DEBUG")) {
        if (features & DebugBox)
            choose("Debug interface", "SWD");
        if (features & DebugSwd)
            tick("SWD");
        if (features & DebugSwo)
            tick("SWO");
    }
    return items;
}

namespace {

const QLatin1String SavedDebugMode("Debug interface");
const QLatin1String SerialWire("SWD");

// On series with a check box for the debug wires.
bool hasDebugCheck(const ModeFamilyInput &input)
{
    return input.info.InstanceName == QLatin1String("DEBUG") && (rowOf(input.series).features & DebugSwd);
}

} // namespace

QString savedModeName(const ModeFamilyInput &input, const QString &modeName)
{
    return hasDebugCheck(input) && modeName == SerialWire ? QString(SavedDebugMode) : modeName;
}

XMLAttributeInfo modernMode(const ModeFamilyInput &input, const XMLAttributeInfo &saved)
{
    XMLAttributeInfo modern = saved;
    const bool debug = input.info.InstanceName == QLatin1String("DEBUG") && saved.attributeName == SavedDebugMode;
    if (debug && hasDebugCheck(input))
        modern.attributeName = SerialWire;
    else if (debug && saved.attributeValue == QLatin1String("TRUE"))
        modern.attributeValue = SerialWire;
    // Timers were switched on by a box of this name before their first check box had another.
    const bool timer = input.series == QLatin1String("ZV32F421") && listed("TMR1 TMR3 TMR15", input.info.InstanceName);
    if (timer && saved.attributeName == QLatin1String("Activated") && !input.checkBoxes.empty() &&
        !named(input.checkBoxes, "Activated"))
        modern.attributeName = input.checkBoxes.front()->modeName();
    return modern;
}

bool isSwitchedByTokens(const ModeFamilyInput &input)
{
    return input.info.Name == QLatin1String("ACC") && (rowOf(input.series).features & AccByTokens);
}

PinRemapMode pinRemapMode(const PeripheralsBaseInfo &info, const QString &modeName)
{
    if (info.InstanceName != QLatin1String("SCFG"))
        return PinRemapMode::None;
    if (modeName == QLatin1String("PA11 PA12 remap"))
        return PinRemapMode::PinRemap;
    return modeName == QLatin1String("NRST PF2 remap") ? PinRemapMode::PinRemap1 : PinRemapMode::None;
}

} // namespace ChipLoom
