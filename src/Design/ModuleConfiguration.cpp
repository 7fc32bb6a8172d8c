#include "Design/ModuleConfiguration.h"

#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Design/NVIC_Configuration.h"
#include "Model/xmloperation.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace ChipLoom {

struct ModuleConfiguration::State
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
const QString ParamsSection = QStringLiteral("params");
const QString BaseSection = QStringLiteral("base");
const QString ResetSection = QStringLiteral("reset");

QStringList without(const QStringList &list, const QStringList &removed)
{
    QStringList rest;
    std::copy_if(list.begin(), list.end(), std::back_inserter(rest),
                 [&](const QString &entry) { return !removed.contains(entry); });
    return rest;
}

// "Name=value,Name=value"; a piece without a value names a parameter that gets none.
QList<XMLAttributeInfo> assignments(const QString &text)
{
    QList<XMLAttributeInfo> list;
    for (const QString &piece : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        XMLAttributeInfo assignment;
        assignment.attributeName = piece.section(QLatin1Char('='), 0, 0).trimmed();
        assignment.attributeValue = piece.section(QLatin1Char('='), 1).trimmed();
        list.append(assignment);
    }
    return list;
}

} // namespace

ModuleConfiguration::ModuleConfiguration(Design &design, PeripheralsBaseInfo info,
                                         std::shared_ptr<const PeripheralTree> tree)
    : m_design(design), m_BaseInfo(std::move(info)), m_PeripheralsXMLFileInfo(tree),
      m_ModeSettingsList(XMLOperation::GetModeSettings(m_BaseInfo.InstanceName, tree->root())),
      m_ParamSettingConfiguration(design.series(), m_BaseInfo.InstanceName, std::move(tree), design.scheduler())
{
    m_ParamSettingConfiguration.setPeripheralClock(
        [clock = &design.clock()](const QString &instance) { return clock->Get_Peripherals_Clock(instance); });
    m_ParamSettingConfiguration.setTokenQuestion(
        [whole = &design](const QString &token) { return whole->raises(token); });
    connect(&m_ParamSettingConfiguration, &IP_ParamSettingConfiguration::paramTokensChanged, this,
            &ModuleConfiguration::paramTokensChanged);
    connect(&m_ParamSettingConfiguration, &IP_ParamSettingConfiguration::SendIPParamStatus, this,
            [this](const QString &, IPPARAMSTATUS status) { ReciveIPParamStatus(status); });
    connect(&m_ParamSettingConfiguration, &IP_ParamSettingConfiguration::SendIPParamList, this,
            &DesignPart::SendParamList_To_OtherIP);
}

ModuleConfiguration::~ModuleConfiguration() = default;

// ---- From the database to controls ----

// Whole names count: the name of a device holds that of its series, and "ZV32F403A" and "TMR15" hold "ZV32F403" and
// "TMR1".
bool ModuleConfiguration::isRemoved(const QString &removeCondition, bool forItem) const
{
    static const QRegularExpression Separators(QStringLiteral("[\\s,;|]+"));
    const QStringList names = removeCondition.split(Separators);
    return names.contains(m_design.series()) || names.contains(m_design.device()) ||
           (forItem && names.contains(m_BaseInfo.InstanceName));
}

ItemInfoStruct ModuleConfiguration::itemOf(const ModeParamCofiguration &param) const
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

void ModuleConfiguration::InitModeUI()
{
    for (const ModeCofiguration &mode : qAsConst(m_ModeSettingsList)) {
        if (mode.modeRemoveCondition.isEmpty() || !isRemoved(mode.modeRemoveCondition, false))
            makeControl(mode);
    }
    UpdateControlMachSignalMode();
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->HandleSemaphore();
    // Some notes are for a module that is off.
    ModeSpecialOperation();
}

void ModuleConfiguration::makeControl(const ModeCofiguration &mode)
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

void ModuleConfiguration::UpdateControlMachSignalMode()
{
    QHash<QStringList, int> uses;
    const auto key = [](const ItemInfoStruct &item) {
        QStringList names;
        for (const ModeSignal &signal : item.SignalsList)
            names.append(signal.signalName);
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

// ---- A mode changes ----

ModeControl *ModuleConfiguration::control(const QString &modeName) const
{
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        if (control->modeName() == modeName)
            return control.get();
    }
    return nullptr;
}

DesignAnswer ModuleConfiguration::itemAnswer(const ModeControl &control, int index) const
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
    return {DesignReason::PinsTaken, {item.Name, unplacedSignals(control, item).join(QLatin1String(", "))}};
}

DesignAnswer ModuleConfiguration::chooseItem(const QString &modeName, const QString &itemName)
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

void ModuleConfiguration::modeChanged(ModeControl &control, int formerIndex)
{
    changeTokens(control, formerIndex);
    UpdateIPValidFlag();
    m_ParamSettingConfiguration.ModeChange(control.modeName(), control.currentName());
    choiceMade(control, formerIndex);
    UpdateIPValidFlag();
    ModeSpecialOperation();
    emit SendIPStatusFlag(m_BaseInfo.InstanceName, m_IPStatus, true);
    emit modesChanged();
}

void ModuleConfiguration::changeTokens(const ModeControl &control, int formerIndex)
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

ModeFamilyInput ModuleConfiguration::familyInput() const
{
    return {m_design.series(), m_BaseInfo, getComboBoxList(), getCheckBoxList(), m_design.pinInfo().m_allPinNums};
}

std::vector<const ModeControl *> ModuleConfiguration::getComboBoxList() const
{
    std::vector<const ModeControl *> list;
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        if (!control->isCheckBox())
            list.push_back(control.get());
    }
    return list;
}

std::vector<const ModeControl *> ModuleConfiguration::getCheckBoxList() const
{
    std::vector<const ModeControl *> list;
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        if (control->isCheckBox())
            list.push_back(control.get());
    }
    return list;
}

void ModuleConfiguration::UpdateIPValidFlag()
{
    m_IPValidFlag = isInUse();
    const int error = m_IPStatus & IPSTATUS_ERROR;
    m_IPStatus = static_cast<IPSTATUS>((m_IPValidFlag ? IPSTATUS_ON : IPSTATUS_OFF) | error);
}

void ModuleConfiguration::ModeSpecialOperation()
{
    m_note = currentNote();
    const bool error =
        m_note.error || (m_IPValidFlag && m_ParamSettingConfiguration.GetParamStatusFlag() == IPPARAMSTATUS_ERROR);
    m_IPStatus = static_cast<IPSTATUS>((m_IPValidFlag ? IPSTATUS_ON : IPSTATUS_OFF) | (error ? IPSTATUS_ERROR : 0));
}

void ModuleConfiguration::refreshStatus()
{
    const ModeNote note = m_note;
    const IPSTATUS status = m_IPStatus;
    ModeSpecialOperation();
    if (status != m_IPStatus)
        emit SendIPStatusFlag(m_BaseInfo.InstanceName, m_IPStatus, false);
    if (status != m_IPStatus || !(note == m_note))
        emit modesChanged();
}

QList<ConfigurationTab> ModuleConfiguration::tabs() const
{
    return m_IPValidFlag ? QList<ConfigurationTab>{ConfigurationTab::Parameters} : QList<ConfigurationTab>();
}

bool ModuleConfiguration::canRaise(const QString &token) const
{
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        const std::vector<ItemInfoStruct> &items = control->items();
        if (std::any_of(items.begin(), items.end(),
                        [&](const ItemInfoStruct &item) { return item.SemaphoreList.contains(token); }))
            return true;
    }
    return m_ParamSettingConfiguration.canRaise(token);
}

bool ModuleConfiguration::raises(const QString &token) const
{
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        if (control->current() && control->current()->SemaphoreList.contains(token))
            return true;
    }
    return m_ParamSettingConfiguration.raises(token);
}

void ModuleConfiguration::ResetConfiguration()
{
    if (m_design.gpio())
        m_design.gpio()->SetGPIOSettingsDefaultValue(instanceName());
    m_ParamSettingConfiguration.SetParametersDefaultValue();
    if (m_design.nvic())
        m_design.nvic()->SetNVICDefaultValue(instanceName());
    for (DMA_Configuration *dma : m_design.dmaParts())
        dma->SetDMASettingsDefaultValue(instanceName());
}

// ---- Tokens ----

void ModuleConfiguration::SendEnableSemaphore(const QStringList &tokens)
{
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->EnableSemaphore(tokens);
    m_ParamSettingConfiguration.EnableSemaphore(tokens);
    emit EnableSemaphore_To_OtherIP(m_BaseInfo.InstanceName, tokens, true);
}

void ModuleConfiguration::SendCancelSemaphore(const QStringList &tokens)
{
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->CancelSemaphore(tokens);
    m_ParamSettingConfiguration.CancelSemaphore(tokens);
    emit EnableSemaphore_To_OtherIP(m_BaseInfo.InstanceName, tokens, false);
}

void ModuleConfiguration::paramTokensChanged(const QStringList &cancelled, const QStringList &enabled)
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

void ModuleConfiguration::UpdateDMACondition()
{
    QStringList wanted;
    for (const DMA_Configuration *dma : m_design.dmaParts())
        wanted += dma->requestTokens(instanceName());
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

void ModuleConfiguration::Enable_ADCn_DMA_Semaphore(const QString &name)
{
    if (m_ADCn_DMA_SemaphoreList.contains(name))
        return;
    m_ADCn_DMA_SemaphoreList.append(name);
    SendEnableSemaphore({name});
}

void ModuleConfiguration::Cancel_ADCn_DMA_Semaphore(const QString &name)
{
    if (m_ADCn_DMA_SemaphoreList.removeOne(name))
        SendCancelSemaphore({name});
}

void ModuleConfiguration::ReceiveEnableSemaphore_FromOtherIP(const QStringList &tokens)
{
    m_ParamSettingConfiguration.EnableSemaphore(tokens);
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->EnableSemaphore(tokens);
    followTokens();
}

void ModuleConfiguration::ReceiveCancelSemaphore_FromOtherIP(const QStringList &tokens)
{
    m_ParamSettingConfiguration.CancelSemaphore(tokens);
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->CancelSemaphore(tokens);
    followTokens();
}

void ModuleConfiguration::receiveTokens(const QStringList &tokens, bool enable)
{
    if (enable)
        ReceiveEnableSemaphore_FromOtherIP(tokens);
    else
        ReceiveCancelSemaphore_FromOtherIP(tokens);
}

void ModuleConfiguration::followTokens()
{
    tokensReceived();
    refreshStatus();
    emit modesChanged();
}

void ModuleConfiguration::UpdateIPSetting()
{
    m_ParamSettingConfiguration.RefreshParams();
}

void ModuleConfiguration::SetOtherIPParamList(const QList<RefParameter> &list, const QString &sender)
{
    m_ParamSettingConfiguration.SetOtherIPParamList(list, sender);
}

void ModuleConfiguration::ReciveIPParamStatus(IPPARAMSTATUS)
{
    if (m_IPValidFlag)
        refreshStatus();
}

// ---- The part ----

bool ModuleConfiguration::handles(const DesignChange &change) const
{
    static const QStringList Sections{ModeSection, ParamSection, ParamsSection, BaseSection, ResetSection};
    return Sections.contains(change.section) &&
           change.address.section(QLatin1Char('/'), 0, 0) == m_BaseInfo.InstanceName;
}

DesignAnswer ModuleConfiguration::apply(const DesignChange &change)
{
    const QString name = change.address.section(QLatin1Char('/'), 1);
    if (change.section == ParamSection)
        return m_ParamSettingConfiguration.ParamModefySlot(name, change.value, CURRENTVALUETYPE_NONE);
    if (change.section == ParamsSection)
        return m_ParamSettingConfiguration.ParamModefySlot(assignments(change.value));
    if (change.section == BaseSection)
        return m_ParamSettingConfiguration.setNumberBase(name, change.value);
    if (change.section == ResetSection) {
        ResetConfiguration();
        return {};
    }
    const ModeControl *control = this->control(name);
    const DesignAnswer confirmed = control ? confirmChoice(*control, change.value) : DesignAnswer();
    return confirmed ? chooseItem(name, change.value) : confirmed;
}

void ModuleConfiguration::reset()
{
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        control->setIndex(0);
    while (!m_ADCn_DMA_SemaphoreList.isEmpty())
        Cancel_ADCn_DMA_Semaphore(m_ADCn_DMA_SemaphoreList.last());
    m_ParamSettingConfiguration.ClearAllParameters();
}

void ModuleConfiguration::updateLanguage()
{
    m_ParamSettingConfiguration.updateLanguage();
    emit modesChanged();
}

std::any ModuleConfiguration::save() const
{
    State state{{}, m_ParamSettingConfiguration.save(), m_IPValidFlag, m_IPStatus, m_ADCn_DMA_SemaphoreList, m_note};
    for (const std::unique_ptr<ModeControl> &control : m_controls)
        state.controls.push_back(control->save());
    return state;
}

void ModuleConfiguration::restore(const std::any &saved)
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
    emit SendIPStatusFlag(m_BaseInfo.InstanceName, m_IPStatus, false);
    emit modesChanged();
}

} // namespace ChipLoom
