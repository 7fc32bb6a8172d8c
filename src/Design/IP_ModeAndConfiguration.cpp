#include "Design/IP_ModeAndConfiguration.h"

#include "Design/ClockRouting.h"
#include "Design/Design.h"
#include "Model/xmloperation.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

QStringList namesOf(const QList<ModeSignal> &list)
{
    QStringList names;
    for (const ModeSignal &signal : list)
        names.append(signal.signalName);
    return names;
}

QList<ModeSignal> onPins(const QList<ModeSignal> &list)
{
    QList<ModeSignal> real;
    std::copy_if(list.begin(), list.end(), std::back_inserter(real),
                 [](const ModeSignal &signal) { return !signal.Virtual; });
    return real;
}

} // namespace

IP_ModeAndConfiguration::IP_ModeAndConfiguration(Design &design, PeripheralsBaseInfo info,
                                                 std::shared_ptr<const PeripheralTree> tree)
    : ModuleConfiguration(design, std::move(info), std::move(tree))
{
    completeSignals();
    InitModeUI();
}

// ---- From the database to controls ----

void IP_ModeAndConfiguration::completeSignals()
{
    m_ModeSignalsList = XMLOperation::GetModeSignals(instanceName(), file().root());
    QHash<QString, const ModeSignal *> table;
    for (const ModeSignal &signal : qAsConst(m_ModeSignalsList)) {
        if (!table.contains(signal.signalName))
            table.insert(signal.signalName, &signal);
    }
    for (ModeCofiguration &mode : modeSettings()) {
        for (ModeParamCofiguration &param : mode.modeParam) {
            for (ModeSignal &signal : param.modeParamSignalsList) {
                const ModeSignal *declared = table.value(signal.signalName);
                // A signal that the table does not know places nothing.
                signal.Virtual = !declared || declared->Virtual;
                if (declared && signal.signalIOMode.isEmpty())
                    signal.signalIOMode = declared->signalIOMode;
            }
        }
    }
}

// Whether the device has every signal, on bonded pins or not.
bool IP_ModeAndConfiguration::ItemIsValid(const QList<ModeSignal> &signalList) const
{
    const DevicePinInfo &pins = design().pinInfo();
    return std::all_of(signalList.begin(), signalList.end(), [&](const ModeSignal &signal) {
        if (signal.Virtual)
            return virtualSignalPresence(design().series(), signal.signalName, pins) != VirtualSignal::Absent;
        return !pins.placesOf(signal.signalName).isEmpty() || !pins.pinsNamed(signal.signalName).isEmpty();
    });
}

// ---- Looking at the pins ----

void IP_ModeAndConfiguration::askPins(const ModeControl &control, int index, ItemInfoStruct &item) const
{
    const DevicePinInfo &pins = design().pinInfo();
    item.missingSignals.clear();
    const QStringList names = item.pinSignals();
    for (const QString &name : names) {
        const QVector<SignalPlace> &places = pins.placesOf(name);
        const bool bonded =
            std::any_of(places.begin(), places.end(), [&](SignalPlace place) { return pins.pin(place.pin).validFlag; });
        if (!bonded)
            item.missingSignals.append(name);
    }
    // What is chosen has its pins; anything else has room if a placement in its stead would find some.
    item.pinsFree = names.isEmpty() || control.index() == index ||
                    (item.missingSignals.isEmpty() &&
                     design()
                         .pins()
                         .unplacedByRequest(GetClearPinSignalsList(control), item.SignalsList, instanceName())
                         .isEmpty());
}

QStringList IP_ModeAndConfiguration::signalsInUse() const
{
    QStringList names;
    for (const std::unique_ptr<ModeControl> &control : controls())
        names += namesOf(control->currentValidSignals());
    return names;
}

QList<ModeSignal> IP_ModeAndConfiguration::GetModeAllPinsSignals(const ModeControl &control) const
{
    QList<ModeSignal> all;
    QSet<QString> known;
    for (const ModeParamCofiguration &param : control.declaration().modeParam) {
        for (const ModeSignal &signal : param.modeParamSignalsList) {
            if (!signal.Virtual && !known.contains(signal.signalName)) {
                known.insert(signal.signalName);
                all.append(signal);
            }
        }
    }
    return all;
}

QStringList IP_ModeAndConfiguration::GetOtherModeValidPinSignalsList(const ModeControl &control) const
{
    QStringList names;
    for (const std::unique_ptr<ModeControl> &other : controls()) {
        if (other.get() != &control)
            names += namesOf(other->currentValidSignals());
    }
    return names;
}

QList<ModeSignal> IP_ModeAndConfiguration::GetClearPinSignalsList(const ModeControl &control) const
{
    const QStringList others = GetOtherModeValidPinSignalsList(control);
    QList<ModeSignal> rest;
    for (const ModeSignal &signal : GetModeAllPinsSignals(control)) {
        if (!others.contains(signal.signalName))
            rest.append(signal);
    }
    return rest;
}

QSet<QString> IP_ModeAndConfiguration::placedSignals() const
{
    QSet<QString> placed;
    const DevicePinInfo &pins = design().pinInfo();
    for (const ModeSignal &signal : m_ModeSignalsList) {
        for (const SignalPlace place : pins.placesOf(signal.signalName)) {
            if (pins.pin(place.pin).validFlag && pins.signal(place).configStatus != Not_Config)
                placed.insert(signal.signalName);
        }
    }
    return placed;
}

void IP_ModeAndConfiguration::ReciveAllConfigedSignals(const DevicePinInfo *, bool updateControl,
                                                       const QString &sendIPName)
{
    if (sendIPName == QLatin1String("UserLabel"))
        return;
    for (const std::unique_ptr<ModeControl> &control : controls())
        control->pinsHaveChanged();
    if (updateControl && sendIPName != instanceName() && !m_ModeSignalsList.isEmpty()) {
        const QSet<QString> placed = placedSignals();
        for (const std::unique_ptr<ModeControl> &control : controls()) {
            if (control->isCheckBox())
                UpdateStateAccordPinSignals(*control, placed);
            else
                UpdateSelectItemAccordPinSignals(*control, placed);
        }
    }
    if (watchesEdges())
        refreshStatus();
    emit modesChanged();
}

namespace {

bool allPlaced(const ItemInfoStruct &item, const QSet<QString> &placed)
{
    const QStringList names = item.pinSignals();
    return std::all_of(names.begin(), names.end(), [&](const QString &name) { return placed.contains(name); });
}

bool isPartOfAnother(const ItemInfoStruct &item, const std::vector<const ItemInfoStruct *> &items)
{
    const QStringList names = namesOf(item.SignalsList);
    return std::any_of(items.begin(), items.end(), [&](const ItemInfoStruct *other) {
        if (other == &item || other->SignalsList.size() <= names.size())
            return false;
        const QStringList more = namesOf(other->SignalsList);
        return std::all_of(names.begin(), names.end(), [&](const QString &name) { return more.contains(name); });
    });
}

} // namespace

void IP_ModeAndConfiguration::UpdateSelectItemAccordPinSignals(ModeControl &control, const QSet<QString> &placed)
{
    if (!control.isEnabled())
        return;
    if (const ItemInfoStruct *chosen = control.current()) {
        if (!allPlaced(*chosen, placed))
            control.setIndex(0);
        return;
    }
    std::vector<const ItemInfoStruct *> standing;
    for (const ItemInfoStruct &item : control.items()) {
        if (!item.SignalsList.isEmpty() && !item.hasVirtualSignal() && allPlaced(item, placed))
            standing.push_back(&item);
    }
    std::vector<const ItemInfoStruct *> whole;
    std::copy_if(standing.begin(), standing.end(), std::back_inserter(whole),
                 [&](const ItemInfoStruct *item) { return !isPartOfAnother(*item, standing); });
    if (whole.size() == 1 && !whole.front()->MultiMachFlag && whole.front()->CanBeChoose())
        control.setIndex(control.indexOf(whole.front()->Name));
}

void IP_ModeAndConfiguration::UpdateStateAccordPinSignals(ModeControl &control, const QSet<QString> &placed)
{
    const ItemInfoStruct &item = control.items().front();
    if (!control.isEnabled() || item.SignalsList.isEmpty() || item.hasVirtualSignal())
        return;
    if (!allPlaced(item, placed))
        control.setIndex(0);
    else if (!item.MultiMachFlag && item.CanBeChoose())
        control.setIndex(1);
}

QStringList IP_ModeAndConfiguration::unplacedSignals(const ModeControl &control, const ItemInfoStruct &item) const
{
    return design().pins().unplacedByRequest(GetClearPinSignalsList(control), item.SignalsList, instanceName());
}

// ---- A mode changes ----

void IP_ModeAndConfiguration::choiceMade(ModeControl &control, int formerIndex)
{
    changePins(control, formerIndex);
    switch (pinRemapMode(baseInfo(), control.modeName())) {
    case PinRemapMode::PinRemap:
        emit SendPinRemapFlag(control.isOn());
        break;
    case PinRemapMode::PinRemap1:
        emit SendPinRemapFlag1(control.isOn());
        break;
    case PinRemapMode::None:
        break;
    }
}

void IP_ModeAndConfiguration::changePins(ModeControl &control, int formerIndex)
{
    const auto signalsOf = [&](int index) {
        return index > 0 ? onPins(control.items().at(index - 1).SignalsList) : QList<ModeSignal>();
    };
    const QList<ModeSignal> wanted = signalsOf(control.index());
    const QList<ModeSignal> held = signalsOf(formerIndex);
    const QList<ModeSignal> mayGo = GetClearPinSignalsList(control);
    control.setCurrentValidSignals(wanted);
    if (!wanted.isEmpty())
        emit SendIPPinSignals(mayGo, wanted, false, instanceName());
    else if (!held.isEmpty() && !mayGo.isEmpty())
        emit ClearIPPinSignals(mayGo, false, instanceName());
}

bool IP_ModeAndConfiguration::isInUse() const
{
    return isPeripheralValid(familyInput());
}

ModeNote IP_ModeAndConfiguration::currentNote() const
{
    const ModeNote note = modeNote(familyInput(), GetIPValidFlag());
    if (note.kind != ModeNote::Kind::None || !watchesEdges())
        return note;
    const DesignAnswer edges = edgesAnswer();
    return edges ? note : ModeNote{ModeNote::Kind::Reason, {}, false, edges};
}

/// The analog functions share their pins with the lines, and take the digital input away.
DesignAnswer IP_ModeAndConfiguration::edgesAnswer() const
{
    const DevicePinInfo &pins = design().pinInfo();
    for (const QString &line : signalsInUse()) {
        for (const SignalPlace place : pins.placesOf(line)) {
            const MCUPinsBaseInfo &pin = pins.pin(place.pin);
            if (!pin.validFlag || pins.signal(place).configStatus == Not_Config)
                continue;
            for (const PinSignalStruct &beside : pin.pinSignalsList) {
                if (beside.configStatus != Not_Config && beside.signalIOMode == QLatin1String("Analog"))
                    return {DesignReason::EdgeOnAnalogPin, {line, pin.pinName, beside.signalName}};
            }
        }
    }
    return {};
}

QList<ConfigurationTab> IP_ModeAndConfiguration::tabs() const
{
    return GetIPValidFlag() ? configurationTabs(familyInput()) : QList<ConfigurationTab>();
}

void IP_ModeAndConfiguration::HandleSpecialItem()
{
    for (const IP_MODE_Struct &item : specialItems(familyInput()))
        chooseItem(item.modeName, item.currentModeParamName);
}

void IP_ModeAndConfiguration::tokensReceived()
{
    const ModeFamilyInput input = familyInput();
    if (!isSwitchedByTokens(input) || input.checkBoxes.empty())
        return;
    ModeControl *box = control(input.checkBoxes.front()->modeName());
    box->setIndex(box->isEnabled() ? 1 : 0);
}

// ---- The part ----

DesignAnswer IP_ModeAndConfiguration::apply(const DesignChange &change)
{
    const QString name = change.address.section(QLatin1Char('/'), 1);
    const ModeControl *control = change.section == QLatin1String("mode") ? this->control(name) : nullptr;
    const bool wasOn = control && control->isOn();
    const bool offersSwitch = control && offersPllSwitch(instanceName(), name, design().clock());
    const DesignAnswer answer = ModuleConfiguration::apply(change);
    if (answer && control && control->isOn()) {
        const QString along = checkedAlong(familyInput(), name, control->currentName());
        if (!along.isEmpty())
            chooseItem(along, QStringLiteral("TRUE"));
    }
    if (answer && offersSwitch && !wasOn && control->isOn() && askPllSwitch())
        tellClock(*this, design().clock(), true);
    return answer;
}

bool IP_ModeAndConfiguration::askPllSwitch() const
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Question;
    request.title = QT_TRANSLATE_NOOP("Prompt", "Question");
    request.text = QT_TRANSLATE_NOOP("Prompt", "After enabling hext, should the PLL reference clock(pllrcs) in 'Clock "
                                               "Configuration' be switched to hext?");
    request.buttons = QStringList{QT_TRANSLATE_NOOP("Prompt", "Yes"), QT_TRANSLATE_NOOP("Prompt", "Cancel")};
    request.escapeButton = 1;
    return design().prompt().ask(request) == 0;
}

DesignAnswer IP_ModeAndConfiguration::confirmChoice(const ModeControl &control, const QString &itemName) const
{
    if (instanceName() != QLatin1String("SYSTEM") || control.modeName() != QLatin1String("Time_Base") ||
        itemName != QLatin1String("SysTick") || control.currentName() == itemName || !hearsFreeRtos(control))
        return {};
    PromptRequest request;
    request.kind = PromptRequest::Kind::Warning;
    request.title = QT_TRANSLATE_NOOP("Prompt", "Warning");
    request.text = QT_TRANSLATE_NOOP(
        "Prompt", "FREERTOS is enabled. It is recommended that SysTick  not be used simultaneously with FREERTOS. "
                  "Please confirm to proceed");
    request.buttons = QStringList{QT_TRANSLATE_NOOP("Prompt", "Yes"), QT_TRANSLATE_NOOP("Prompt", "Cancel")};
    request.defaultButton = 1;
    return design().prompt().ask(request) == 0 ? DesignAnswer() : DesignAnswer{DesignReason::Cancelled, {}};
}

void IP_ModeAndConfiguration::reset()
{
    ModuleConfiguration::reset();
    HandleSpecialItem();
}

// ---- Its section of the design file ----

QStringList IP_ModeAndConfiguration::modesFromReset() const
{
    QStringList modes;
    for (const IP_MODE_Struct &item : specialItems(familyInput()))
        modes.append(item.modeName);
    return modes;
}

bool IP_ModeAndConfiguration::standsOnPins(const ModeControl &control) const
{
    const QSet<QString> placed = placedSignals();
    return std::any_of(control.items().begin(), control.items().end(), [&](const ItemInfoStruct &item) {
        return !item.SignalsList.isEmpty() && !item.hasVirtualSignal() && allPlaced(item, placed);
    });
}

XMLAttributeInfo IP_ModeAndConfiguration::modernMode(const XMLAttributeInfo &saved) const
{
    return ChipLoom::modernMode(familyInput(), saved);
}

QString IP_ModeAndConfiguration::savedModeName(const ModeControl &control) const
{
    return ChipLoom::savedModeName(familyInput(), control.modeName());
}

} // namespace ChipLoom
