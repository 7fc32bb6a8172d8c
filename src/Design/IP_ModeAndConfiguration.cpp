#include "Design/IP_ModeAndConfiguration.h"

#include "Design/ClockRouting.h"
#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Design/NVIC_Configuration.h"
#include "Model/xmloperation.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

struct IP_ModeAndConfiguration::State
{
    std::vector<ModeControl::State> controls;
    std::shared_ptr<const IP_ParamSettingConfiguration::State> parameters;
    bool valid = false;
    IPSTATUS status = IPSTATUS_OFF;
    QStringList dmaTokens;
    ModeNote note;
};

namespace {

const QString On = QStringLiteral("TRUE");
const QString Off = QStringLiteral("FALSE");
const QString Disable = QStringLiteral("Disable");
const QString ModeSection = QStringLiteral("mode");
const QString ParamSection = QStringLiteral("param");

QStringList without(const QStringList &list, const QStringList &removed)
{
    QStringList rest;
    std::copy_if(list.begin(), list.end(), std::back_inserter(rest),
                 [&](const QString &entry) { return !removed.contains(entry); });
    return rest;
}

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
    : m_design(design), m_BaseInfo(std::move(info)), m_PeripheralsXMLFileInfo(tree),
      m_ParamSettingConfiguration(design.series(), m_BaseInfo.InstanceName, std::move(tree), design.scheduler())
{
    connect(&m_ParamSettingConfiguration, &IP_ParamSettingConfiguration::paramTokensChanged, this,
            &IP_ModeAndConfiguration::paramTokensChanged);
    connect(&m_ParamSettingConfiguration, &IP_ParamSettingConfiguration::SendIPParamStatus, this,
            [this](const QString &, IPPARAMSTATUS status) { ReciveIPParamStatus(status); });
    connect(&m_ParamSettingConfiguration, &IP_ParamSettingConfiguration::SendIPParamList, this,
            &IP_ModeAndConfiguration::SendParamList_To_OtherIP);
    GetModeAndConfiguration();
    InitModeUI();
}

IP_ModeAndConfiguration::~IP_ModeAndConfiguration() = default;

// ---- From the database to controls ----

void IP_ModeAndConfiguration::GetModeAndConfiguration()
{
    m_ModeSettingsList = XMLOperation::GetModeSettings(m_BaseInfo.InstanceName, m_PeripheralsXMLFileInfo->root());
    m_ModeSignalsList = XMLOperation::GetModeSignals(m_BaseInfo.InstanceName, m_PeripheralsXMLFileInfo->root());
    QHash<QString, const ModeSignal *> table;
    for (const ModeSignal &signal : qAsConst(m_ModeSignalsList)) {
        if (!table.contains(signal.signalName))
            table.insert(signal.signalName, &signal);
    }
    for (ModeCofiguration &mode : m_ModeSettingsList) {
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

bool IP_ModeAndConfiguration::isRemoved(const QString &removeCondition, bool forItem) const
{
    return removeCondition.contains(m_design.series()) || removeCondition.contains(m_design.device()) ||
           (forItem && removeCondition.contains(m_BaseInfo.InstanceName));
}

ItemInfoStruct IP_ModeAndConfiguration::itemOf(const ModeParamCofiguration &param) const
{
    ItemInfoStruct item;
    item.Name = param.modeParamName;
    item.UserName_EN = param.modeParamUserName_EN;
    item.UserName_CH = param.modeParamUserName_CH;
    item.ItemCondition = param.modeParamCondition;
    item.condition = ControlCondition(param.modeParamCondition.Expression, param.modeParamCondition.AndFlag);
    item.SemaphoreList = param.modeParamSemaphoreList;
    item.SignalsList = param.modeParamSignalsList;
    return item;
}

void IP_ModeAndConfiguration::InitModeUI()
{
    for (const ModeCofiguration &mode : qAsConst(m_ModeSettingsList)) {
        if (mode.modeRemoveCondition.isEmpty() || !isRemoved(mode.modeRemoveCondition, false))
            makeControl(mode);
    }
    UpdateControlMachSignalMode();
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->HandleSemaphore();
}

// Whether the device has every signal, on bonded pins or not.
bool IP_ModeAndConfiguration::ItemIsValid(const QList<ModeSignal> &signalList) const
{
    const DevicePinInfo &pins = m_design.pinInfo();
    return std::all_of(signalList.begin(), signalList.end(), [&](const ModeSignal &signal) {
        if (signal.Virtual)
            return virtualSignalPresence(m_design.series(), signal.signalName, pins) != VirtualSignal::Absent;
        return !pins.placesOf(signal.signalName).isEmpty() || !pins.pinsNamed(signal.signalName).isEmpty();
    });
}

void IP_ModeAndConfiguration::makeControl(const ModeCofiguration &mode)
{
    const auto changed = [this](ModeControl &control, int formerIndex) { modeChanged(control, formerIndex); };
    const auto ask = [this](const ModeControl &control, int index, ItemInfoStruct &item) {
        askPins(control, index, item);
    };

    const bool single =
        mode.modeParam.size() == 1 && mode.modeParam.first().modeParamName.trimmed() == mode.modeName.trimmed();
    if (mode.modeParam.isEmpty() || single) {
        ItemInfoStruct item = single ? itemOf(mode.modeParam.first()) : ItemInfoStruct();
        item.Name = mode.modeName;
        item.SemaphoreList = mode.modeSemaphoreList + item.SemaphoreList;
        if (ItemIsValid(item.SignalsList))
            m_controls.push_back(std::make_unique<ProCheckBox>(mode, std::move(item), changed, ask));
        return;
    }

    std::vector<ItemInfoStruct> items;
    for (const ModeParamCofiguration &param : mode.modeParam) {
        if ((param.modeParamRemoveCondition.isEmpty() || !isRemoved(param.modeParamRemoveCondition, true)) &&
            ItemIsValid(param.modeParamSignalsList))
            items.push_back(itemOf(param));
    }
    if (!items.empty())
        m_controls.push_back(std::make_unique<ProComboBox>(mode, std::move(items), changed, ask));
}

void IP_ModeAndConfiguration::UpdateControlMachSignalMode()
{
    QHash<QStringList, int> uses;
    const auto key = [](const ItemInfoStruct &item) {
        QStringList names = namesOf(item.SignalsList);
        names.sort();
        return names;
    };
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        for (const ItemInfoStruct &item : control->items())
            ++uses[key(item)];
    }
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        for (int i = 0; i + 1 < control->count(); ++i)
            control->setMultiMachFlag(i, uses.value(key(control->items().at(i))) > 1);
    }
}

// ---- Looking at the pins ----

void IP_ModeAndConfiguration::askPins(const ModeControl &control, int index, ItemInfoStruct &item) const
{
    const DevicePinInfo &pins = m_design.pinInfo();
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
                     m_design.pins()
                         .unplacedByRequest(GetClearPinSignalsList(control), item.SignalsList, m_BaseInfo.InstanceName)
                         .isEmpty());
}

QStringList IP_ModeAndConfiguration::signalsInUse() const
{
    QStringList names;
    for (const std::unique_ptr<ModeControl> &control : m_controls)
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
    for (const std::unique_ptr<ModeControl> &other : m_controls) {
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
    const DevicePinInfo &pins = m_design.pinInfo();
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
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->pinsHaveChanged();
    if (updateControl && sendIPName != m_BaseInfo.InstanceName && !m_ModeSignalsList.isEmpty()) {
        const QSet<QString> placed = placedSignals();
        for (const std::unique_ptr<ModeControl> &control : m_controls) {
            if (control->isCheckBox())
                UpdateStateAccordPinSignals(*control, placed);
            else
                UpdateSelectItemAccordPinSignals(*control, placed);
        }
    }
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

// ---- A mode changes ----

ModeControl *IP_ModeAndConfiguration::control(const QString &modeName) const
{
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        if (control->modeName() == modeName)
            return control.get();
    }
    return nullptr;
}

DesignAnswer IP_ModeAndConfiguration::itemAnswer(const ModeControl &control, int index) const
{
    if (control.itemCanbeChoosed(index))
        return {};
    if (!control.isEnabled())
        return {DesignReason::ModeClosed, {m_BaseInfo.InstanceName, control.modeName()}};
    const ItemInfoStruct &item = control.items().at(index - 1);
    switch (item.state()) {
    case ItemState::NotOnPackage:
        return {DesignReason::SignalsNotOnPackage, {item.missingSignals.join(QLatin1String(", "))}};
    case ItemState::ConditionNotMet:
        return {DesignReason::ItemConditionNotMet, {item.Name, item.ItemCondition.Expression}};
    case ItemState::PinConflict:
        break;
    case ItemState::Enabled:
        return {};
    }
    const QStringList unplaced =
        m_design.pins().unplacedByRequest(GetClearPinSignalsList(control), item.SignalsList, m_BaseInfo.InstanceName);
    return {DesignReason::PinsTaken, {item.Name, unplaced.join(QLatin1String(", "))}};
}

DesignAnswer IP_ModeAndConfiguration::chooseItem(const QString &modeName, const QString &itemName)
{
    ModeControl *control = this->control(modeName);
    if (!control)
        return {DesignReason::UnknownMode, {m_BaseInfo.InstanceName, modeName}};
    int index = 0;
    if (control->isCheckBox() && itemName == On)
        index = 1;
    else if (!itemName.isEmpty() && itemName != Disable && itemName != Off)
        index = control->indexOf(itemName);
    if (index < 0)
        return {DesignReason::UnknownItem, {m_BaseInfo.InstanceName, modeName, itemName}};
    const DesignAnswer answer = itemAnswer(*control, index);
    if (!answer)
        return answer;
    control->setIndex(index);
    return {};
}

void IP_ModeAndConfiguration::modeChanged(ModeControl &control, int formerIndex)
{
    changeTokens(control, formerIndex);
    UpdateIPValidFlag();
    m_ParamSettingConfiguration.ModeChange(control.modeName(), control.currentName());
    changePins(control, formerIndex);
    switch (pinRemapMode(m_BaseInfo, control.modeName())) {
    case PinRemapMode::PinRemap:
        emit SendPinRemapFlag(control.isOn());
        break;
    case PinRemapMode::PinRemap1:
        emit SendPinRemapFlag1(control.isOn());
        break;
    case PinRemapMode::None:
        break;
    }
    afterModeChange();
}

void IP_ModeAndConfiguration::changeTokens(const ModeControl &control, int formerIndex)
{
    const auto tokensOf = [&](int index) {
        return index > 0 ? control.items().at(index - 1).SemaphoreList : QStringList();
    };
    const QStringList before = tokensOf(formerIndex);
    const QStringList now = tokensOf(control.index());
    const QStringList cancelled = without(before, now);
    const QStringList enabled = without(now, before);
    if (!cancelled.isEmpty())
        SendCancelSemaphore(cancelled);
    if (!enabled.isEmpty())
        SendEnableSemaphore(enabled);
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
        emit SendIPPinSignals(mayGo, wanted, false, m_BaseInfo.InstanceName);
    else if (!held.isEmpty() && !mayGo.isEmpty())
        emit ClearIPPinSignals(mayGo, false, m_BaseInfo.InstanceName);
}

void IP_ModeAndConfiguration::afterModeChange()
{
    UpdateIPValidFlag();
    ModeSpecialOperation();
    emit SendIPStatusFlag(m_BaseInfo.InstanceName, m_IPStatus, true);
    emit modesChanged();
}

ModeFamilyInput IP_ModeAndConfiguration::familyInput() const
{
    return {m_design.series(), m_BaseInfo, getComboBoxList(), getCheckBoxList(), m_design.pinInfo().m_allPinNums};
}

std::vector<const ModeControl *> IP_ModeAndConfiguration::getComboBoxList() const
{
    std::vector<const ModeControl *> list;
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        if (!control->isCheckBox())
            list.push_back(control.get());
    }
    return list;
}

std::vector<const ModeControl *> IP_ModeAndConfiguration::getCheckBoxList() const
{
    std::vector<const ModeControl *> list;
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        if (control->isCheckBox())
            list.push_back(control.get());
    }
    return list;
}

void IP_ModeAndConfiguration::UpdateIPValidFlag()
{
    m_IPValidFlag = isPeripheralValid(familyInput());
    const int error = m_IPStatus & IPSTATUS_ERROR;
    m_IPStatus = static_cast<IPSTATUS>((m_IPValidFlag ? IPSTATUS_ON : IPSTATUS_OFF) | error);
}

void IP_ModeAndConfiguration::ModeSpecialOperation()
{
    m_note = modeNote(familyInput(), m_IPValidFlag);
    const bool error =
        m_note.error || (m_IPValidFlag && m_ParamSettingConfiguration.GetParamStatusFlag() == IPPARAMSTATUS_ERROR);
    m_IPStatus = static_cast<IPSTATUS>((m_IPValidFlag ? IPSTATUS_ON : IPSTATUS_OFF) | (error ? IPSTATUS_ERROR : 0));
}

QList<ConfigurationTab> IP_ModeAndConfiguration::tabs() const
{
    return m_IPValidFlag ? configurationTabs(familyInput()) : QList<ConfigurationTab>();
}

void IP_ModeAndConfiguration::HandleSpecialItem()
{
    for (const IP_MODE_Struct &item : specialItems(familyInput()))
        chooseItem(item.modeName, item.currentModeParamName);
}

void IP_ModeAndConfiguration::ResetConfiguration()
{
    if (m_design.gpio())
        m_design.gpio()->SetGPIOSettingsDefaultValue(m_BaseInfo.InstanceName);
    m_ParamSettingConfiguration.SetParametersDefaultValue();
    if (m_design.nvic())
        m_design.nvic()->SetNVICDefaultValue(m_BaseInfo.InstanceName);
    for (DMA_Configuration *dma : m_design.dmaParts())
        dma->SetDMASettingsDefaultValue(m_BaseInfo.InstanceName);
}

// ---- Tokens ----

void IP_ModeAndConfiguration::SendEnableSemaphore(const QStringList &tokens)
{
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->EnableSemaphore(tokens);
    m_ParamSettingConfiguration.EnableSemaphore(tokens);
    emit EnableSemaphore_To_OtherIP(m_BaseInfo.InstanceName, tokens, true);
}

void IP_ModeAndConfiguration::SendCancelSemaphore(const QStringList &tokens)
{
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->CancelSemaphore(tokens);
    m_ParamSettingConfiguration.CancelSemaphore(tokens);
    emit EnableSemaphore_To_OtherIP(m_BaseInfo.InstanceName, tokens, false);
}

void IP_ModeAndConfiguration::paramTokensChanged(const QStringList &cancelled, const QStringList &enabled)
{
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        control->CancelSemaphore(cancelled);
        control->EnableSemaphore(enabled);
    }
    if (!cancelled.isEmpty())
        emit EnableSemaphore_To_OtherIP(m_BaseInfo.InstanceName, cancelled, false);
    if (!enabled.isEmpty())
        emit EnableSemaphore_To_OtherIP(m_BaseInfo.InstanceName, enabled, true);
}

void IP_ModeAndConfiguration::UpdateDMACondition()
{
    QStringList wanted;
    for (const DMA_Configuration *dma : m_design.dmaParts())
        wanted += dma->requestTokens(m_BaseInfo.InstanceName);
    const QStringList before = m_ADCn_DMA_SemaphoreList;
    for (const QString &name : without(before, wanted))
        Cancel_ADCn_DMA_Semaphore(name);
    for (const QString &name : without(wanted, m_ADCn_DMA_SemaphoreList))
        Enable_ADCn_DMA_Semaphore(name);
    if (m_ADCn_DMA_SemaphoreList != before) {
        m_ParamSettingConfiguration.RefreshParams();
        followTokens();
    }
}

void IP_ModeAndConfiguration::Enable_ADCn_DMA_Semaphore(const QString &name)
{
    if (m_ADCn_DMA_SemaphoreList.contains(name))
        return;
    m_ADCn_DMA_SemaphoreList.append(name);
    SendEnableSemaphore({name});
}

void IP_ModeAndConfiguration::Cancel_ADCn_DMA_Semaphore(const QString &name)
{
    if (!m_ADCn_DMA_SemaphoreList.removeOne(name))
        return;
    SendCancelSemaphore({name});
}

void IP_ModeAndConfiguration::ReceiveEnableSemaphore_FromOtherIP(const QStringList &tokens)
{
    m_ParamSettingConfiguration.EnableSemaphore(tokens);
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->EnableSemaphore(tokens);
    followTokens();
}

void IP_ModeAndConfiguration::ReceiveCancelSemaphore_FromOtherIP(const QStringList &tokens)
{
    m_ParamSettingConfiguration.CancelSemaphore(tokens);
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->CancelSemaphore(tokens);
    followTokens();
}

void IP_ModeAndConfiguration::receiveTokens(const QStringList &tokens, bool enable)
{
    if (enable)
        ReceiveEnableSemaphore_FromOtherIP(tokens);
    else
        ReceiveCancelSemaphore_FromOtherIP(tokens);
}

void IP_ModeAndConfiguration::followTokens()
{
    const ModeFamilyInput input = familyInput();
    if (isSwitchedByTokens(input) && !input.checkBoxes.empty()) {
        ModeControl *box = control(input.checkBoxes.front()->modeName());
        box->setIndex(box->isEnabled() ? 1 : 0);
    }
    emit modesChanged();
}

void IP_ModeAndConfiguration::UpdateIPSetting()
{
    m_ParamSettingConfiguration.RefreshParams();
}

void IP_ModeAndConfiguration::ReciveIPParamStatus(IPPARAMSTATUS)
{
    if (!m_IPValidFlag)
        return;
    ModeSpecialOperation();
    emit SendIPStatusFlag(m_BaseInfo.InstanceName, m_IPStatus, false);
}

// ---- The part ----

bool IP_ModeAndConfiguration::handles(const DesignChange &change) const
{
    return (change.section == ModeSection || change.section == ParamSection) &&
           change.address.section(QLatin1Char('/'), 0, 0) == m_BaseInfo.InstanceName;
}

DesignAnswer IP_ModeAndConfiguration::apply(const DesignChange &change)
{
    const QString name = change.address.section(QLatin1Char('/'), 1);
    if (change.section == ParamSection)
        return m_ParamSettingConfiguration.ParamModefySlot(name, change.value, CURRENTVALUETYPE_NONE);
    const ModeControl *control = this->control(name);
    const DesignAnswer confirmed = control ? confirmChoice(*control, change.value) : DesignAnswer();
    if (!confirmed)
        return confirmed;
    const bool wasOn = control && control->isOn();
    const bool offersSwitch = offersPllSwitch(m_BaseInfo.InstanceName, name, m_design.clock());
    const DesignAnswer answer = chooseItem(name, change.value);
    if (answer && offersSwitch && !wasOn && control->isOn() && askPllSwitch())
        tellClock(*this, m_design.clock(), true);
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
    return m_design.prompt().ask(request) == 0;
}

DesignAnswer IP_ModeAndConfiguration::confirmChoice(const ModeControl &control, const QString &itemName) const
{
    static const QString RtosToken = QStringLiteral("FREERTOS");
    const QStringList &tokens = control.receivedTokens();
    const bool rtosRuns =
        std::any_of(tokens.begin(), tokens.end(), [](const QString &token) { return token.contains(RtosToken); });
    if (m_BaseInfo.InstanceName != QLatin1String("SYSTEM") || control.modeName() != QLatin1String("Time_Base") ||
        itemName != QLatin1String("SysTick") || control.currentName() == itemName || !rtosRuns)
        return {};
    PromptRequest request;
    request.kind = PromptRequest::Kind::Warning;
    request.title = QT_TRANSLATE_NOOP("Prompt", "Warning");
    request.text = QT_TRANSLATE_NOOP(
        "Prompt", "FREERTOS is enabled. It is recommended that SysTick  not be used simultaneously with FREERTOS. "
                  "Please confirm to proceed");
    request.buttons = QStringList{QT_TRANSLATE_NOOP("Prompt", "Yes"), QT_TRANSLATE_NOOP("Prompt", "Cancel")};
    request.defaultButton = 1;
    return m_design.prompt().ask(request) == 0 ? DesignAnswer() : DesignAnswer{DesignReason::Cancelled, {}};
}

void IP_ModeAndConfiguration::reset()
{
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->setIndex(0);
    while (!m_ADCn_DMA_SemaphoreList.isEmpty())
        Cancel_ADCn_DMA_Semaphore(m_ADCn_DMA_SemaphoreList.last());
    m_ParamSettingConfiguration.ClearAllParameters();
    HandleSpecialItem();
}

void IP_ModeAndConfiguration::updateLanguage()
{
    m_ParamSettingConfiguration.updateLanguage();
    emit modesChanged();
}

std::any IP_ModeAndConfiguration::save() const
{
    State state{{}, m_ParamSettingConfiguration.save(), m_IPValidFlag, m_IPStatus, m_ADCn_DMA_SemaphoreList, m_note};
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        state.controls.push_back(control->save());
    return state;
}

void IP_ModeAndConfiguration::restore(const std::any &saved)
{
    const State *state = std::any_cast<State>(&saved);
    if (!state || state->controls.size() != m_controls.size())
        return;
    for (size_t i = 0; i < m_controls.size(); ++i)
        m_controls[i]->restore(state->controls[i]);
    m_ParamSettingConfiguration.restore(state->parameters);
    m_IPValidFlag = state->valid;
    m_IPStatus = state->status;
    m_ADCn_DMA_SemaphoreList = state->dmaTokens;
    m_note = state->note;
    emit modesChanged();
}

} // namespace ChipLoom
