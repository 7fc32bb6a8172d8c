#include "Design/NVIC_Configuration.h"

#include "Design/Conditions.h"
#include "Design/Design.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/ParameterChecks.h"
#include "Design/VectorRules.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

struct NVIC_Configuration::State
{
    std::vector<Source> sources;
    std::vector<MCUNVICSetting> records;
    QString userPriorityGroup;
    int fixedPriorityGroup = -1;
    QHash<QString, bool> validPeripherals;
    QList<DMAChannelUse> channels;
    QStringList autoEnableTokens;
    QStringList rtosTokens;
    bool rtos = false;
    int rtosMinPriority = 0;
    NVICSHOWMODDE showMode = SHOW_ALL;
};

namespace {

const QString GroupName = QStringLiteral("PriorityGroup");
const QString ShowType = QStringLiteral("ShowType");

void takeOnce(QStringList &list, const QStringList &tokens)
{
    for (const QString &token : tokens)
        list.removeOne(token);
}

} // namespace

NVIC_Configuration::NVIC_Configuration(Design &design, PeripheralsBaseInfo info,
                                       std::shared_ptr<const PeripheralTree> tree)
    : m_design(design), m_baseInfo(std::move(info)), m_NVICXMLFileInfo(std::move(tree))
{
    readTable();
    connect(&design, &Design::statusChanged, this, &NVIC_Configuration::SetPeripheralsListIPStatus);
}

void NVIC_Configuration::readTable()
{
    const QList<NVICVector> vectors = GetNVICVectors(m_NVICXMLFileInfo->root());
    for (const NVICVector &vector : vectors) {
        m_sources.push_back({vector});
        startValues(m_sources.back());
        m_records.push_back(vector.setting);
        const int index = int(m_records.size()) - 1;
        for (const QString &name : {vector.setting.ValueName, vector.setting.NVICName}) {
            if (!m_indexes.contains(name))
                m_indexes.insert(name, index);
        }
    }
    for (MCUNVICSetting &record : m_records)
        m_AllNVICSettingList.append(&record);
    InitPriorityGroupParameter();
    m_userPriorityGroup = m_PriorityGroupParameter.CurrentValue;
    chooseGroup(m_userPriorityGroup);
    update();
}

void NVIC_Configuration::startValues(Source &source) const
{
    const NVICVector declared = source.declared;
    source = {declared};
    source.enabled = declared.setting.enabledFlag;
    source.generateHandler = declared.setting.IRQHandler_Generate_enabledFlag;
    source.preemption = declared.setting.preemptionPriority_Default_Value;
    source.sub = declared.setting.subPriority_Default_Value;
}

// ---- Priority group ----

void NVIC_Configuration::InitPriorityGroupParameter()
{
    const QString value = m_PriorityGroupParameter.CurrentValue;
    m_PriorityGroupParameter = m_NVICXMLFileInfo->GetRefParameter(instanceName(), GroupName);
    if (!value.isEmpty())
        m_PriorityGroupParameter.CurrentValue = value;
}

/// The limits of a priority under the present group: those of the declaration whose condition its token meets.
NVIC_Configuration::Limits NVIC_Configuration::InitPriorityParameter(const QString &name) const
{
    QStringList tokens;
    for (const PossibleValue &value : m_PriorityGroupParameter.PossibleValueList) {
        if (value.Value == m_PriorityGroupParameter.CurrentValue && !value.Semaphore.isEmpty())
            tokens.append(value.Semaphore);
    }
    const QList<RefParameter> declarations = m_NVICXMLFileInfo->GetRefParameterList(instanceName(), name);
    for (const RefParameter &declaration : declarations) {
        const QString &expression = declaration.condition.Expression;
        if (expression.isEmpty() || ParameterCondition::of(expression).isMet(ParameterValues(), tokens))
            return {declaration.MinValue.toInt(), declaration.MaxValue.toInt()};
    }
    return {};
}

void NVIC_Configuration::chooseGroup(const QString &value)
{
    m_PriorityGroupParameter.CurrentValue = value;
    m_preemptionLimits = InitPriorityParameter(QStringLiteral("PreemptionPriority"));
    m_subLimits = InitPriorityParameter(QStringLiteral("SubPriority"));
}

DesignAnswer NVIC_Configuration::setPriorityGroup(const QString &value)
{
    if (value == m_PriorityGroupParameter.CurrentValue)
        return {};
    const QList<PossibleValue> &list = m_PriorityGroupParameter.PossibleValueList;
    if (std::none_of(list.begin(), list.end(), [&](const PossibleValue &entry) { return entry.Value == value; }))
        return {DesignReason::ValueNotInList, {GroupName, value}};
    if (isPriorityGroupFixed())
        return {DesignReason::PriorityGroupFixed, {}};
    m_userPriorityGroup = value;
    chooseGroup(value);
    // What lies beyond the new limits is lowered for good.
    for (Source &source : m_sources) {
        source.preemption = std::min(source.preemption, m_preemptionLimits.maximum);
        source.sub = std::min(source.sub, m_subLimits.maximum);
    }
    update();
    return {};
}

void NVIC_Configuration::Set_Fixed_NVICPriorityGroup(int index)
{
    const QList<PossibleValue> &list = m_PriorityGroupParameter.PossibleValueList;
    if (list.isEmpty())
        return;
    m_fixedPriorityGroup = std::clamp(index, 0, int(list.size()) - 1);
    chooseGroup(list.at(m_fixedPriorityGroup).Value);
    update();
}

void NVIC_Configuration::Cancel_Fixed_NVICPriorityGroup()
{
    m_fixedPriorityGroup = -1;
    chooseGroup(m_userPriorityGroup);
    update();
}

// ---- From choices and circumstances to records ----

bool NVIC_Configuration::exintLineInterrupts(const QString &line) const
{
    const IP_ModeAndConfiguration *exint = m_design.peripheral(QStringLiteral("EXINT"));
    const RefParameter *event =
        exint ? exint->parameters().parameter(QLatin1String("InterruptEvent_EXINT") + line) : nullptr;
    return event && event->CurrentValue.endsWith(QLatin1String("_INTERRUPT"));
}

bool NVIC_Configuration::isOpen(const Source &source) const
{
    const MCUNVICSetting &declared = source.declared.setting;
    if (declared.core_IRQFlag || source.declared.isFree)
        return true;
    for (const QString &owner : declared.relatedIPNameList) {
        if (owner == QLatin1String("CRM"))
            return true; // the clock is never off
        if (std::any_of(m_listDMAInfo.begin(), m_listDMAInfo.end(),
                        [&](const DMAChannelUse &use) { return use.channelName == owner; }))
            return true;
        if (!m_ValidPeripheralsList.value(owner))
            continue;
        const IP_ModeAndConfiguration *peripheral = m_design.peripheral(owner);
        if (peripheral && peripheral->baseInfo().Name == QLatin1String("PWC")) {
            // Its voltage monitor interrupts; its wake-up pins do not.
            const std::vector<const ModeControl *> boxes = peripheral->getCheckBoxList();
            if (boxes.empty() || !boxes.front()->isOn())
                continue;
        }
        // Any other peripheral of the vector opens it, whatever the lines of EXINT do.
        const QStringList &lines = source.declared.exintLines;
        if (lines.isEmpty() || owner != QLatin1String("EXINT") ||
            std::any_of(lines.begin(), lines.end(), [this](const QString &line) { return exintLineInterrupts(line); }))
            return true;
    }
    return false;
}

bool NVIC_Configuration::isForcedOn(const Source &source) const
{
    static const QString DmaMode = QStringLiteral("_APP_DMA_Mode");
    const MCUNVICSetting &declared = source.declared.setting;
    if (ignoresTokens(declared))
        return false;
    return std::any_of(
        m_AutoEnableNVICIRQSemaphoreList.begin(), m_AutoEnableNVICIRQSemaphoreList.end(), [&](const QString &token) {
            if (!token.contains(DmaMode))
                return vectorOfToken(token) == declared.ValueName;
            // A bus that the application serves by DMA needs the interrupts of its channels.
            const QString instance = token.section(QLatin1Char('_'), 0, 0);
            return std::any_of(m_listDMAInfo.begin(), m_listDMAInfo.end(), [&](const DMAChannelUse &use) {
                return use.instanceName == instance && declared.relatedIPNameList.contains(use.channelName);
            });
        });
}

void NVIC_Configuration::update()
{
    for (size_t i = 0; i < m_sources.size(); ++i)
        deriveRecord(m_sources[i], m_records[i]);
    emit SendRefreshNVIC();
}

void NVIC_Configuration::deriveRecord(Source &source, MCUNVICSetting &record)
{
    const MCUNVICSetting &declared = source.declared.setting;
    record.canBeSet = isOpen(source);
    if (!record.canBeSet) {
        source.enabled = false;
        source.heldByTokens = false;
    } else if (isForcedOn(source)) {
        source.heldByTokens = source.heldByTokens || !source.enabled;
        source.enabled = true;
    } else if (source.heldByTokens) {
        source.enabled = false;
        source.heldByTokens = false;
    }
    record.enabledFlag = source.enabled;
    record.enabled_CanBeSet = declared.enabled_CanBeSet;
    record.IRQHandler_Generate_canBeSet = declared.IRQHandler_Generate_canBeSet;
    record.IRQHandler_Generate_enabledFlag = source.generateHandler;
    record.preemptionPriority_CanBeSet = declared.preemptionPriority_CanBeSet;
    record.preemptionPriority_MinValue = m_preemptionLimits.minimum;
    record.preemptionPriority_MaxValue = m_preemptionLimits.maximum;
    record.preemptionPriority_Value = std::min(source.preemption, m_preemptionLimits.maximum);
    record.subPriority_CanBeSet = declared.subPriority_CanBeSet;
    record.subPriority_MinValue = m_subLimits.minimum;
    record.subPriority_MaxValue = m_subLimits.maximum;
    record.subPriority_Value = std::min(source.sub, m_subLimits.maximum);
    record.FREERTOS_Func_canBeSet = false;
    record.FREERTOS_Func_enabledFlag = false;
    if (m_FREERTOS_EnableFlag)
        FREERTOSFunctionOperation(source, record);
    record.FREERTOS_Func_enabledFlag_ManualCancel = source.rtosManualCancel;
}

void NVIC_Configuration::FREERTOSFunctionOperation(Source &source, MCUNVICSetting &record) const
{
    if (rtosHandles(record.NVICName)) {
        record.IRQHandler_Generate_canBeSet = false;
        record.IRQHandler_Generate_enabledFlag = false;
    }
    switch (rtosRule(record.NVICName)) {
    case RtosRule::Never:
        return;
    case RtosRule::LowestPriority:
        record.FREERTOS_Func_enabledFlag = true;
        record.preemptionPriority_CanBeSet = false;
        record.subPriority_CanBeSet = false;
        record.preemptionPriority_Value = record.preemptionPriority_MaxValue;
        record.subPriority_Value = record.preemptionPriority_MaxValue;
        return;
    case RtosRule::HighestPriority:
        record.preemptionPriority_CanBeSet = false;
        record.subPriority_CanBeSet = false;
        record.preemptionPriority_Value = record.preemptionPriority_MinValue;
        record.subPriority_Value = record.preemptionPriority_MinValue;
        return;
    case RtosRule::OnRequest:
        record.FREERTOS_Func_canBeSet = true;
        record.FREERTOS_Func_enabledFlag = source.rtosFunction;
        break;
    case RtosRule::Peripheral:
        if (!record.canBeSet) {
            source.rtosManualCancel = false;
            record.preemptionPriority_Value = record.preemptionPriority_MinValue;
            return;
        }
        record.FREERTOS_Func_canBeSet = true;
        record.FREERTOS_Func_enabledFlag = !source.rtosManualCancel;
        break;
    }
    if (record.FREERTOS_Func_enabledFlag && record.preemptionPriority_CanBeSet) {
        record.preemptionPriority_MinValue = std::min(m_FREERTOS_MinPriority, record.preemptionPriority_MaxValue);
        record.preemptionPriority_Value = std::max(record.preemptionPriority_Value, record.preemptionPriority_MinValue);
    }
}

// ---- What others tell ----

void NVIC_Configuration::HandleSpecialItem()
{
    if (IP_ModeAndConfiguration *exint = m_design.peripheral(QStringLiteral("EXINT"))) {
        connect(&exint->parameters(), &IP_ParamSettingConfiguration::Send_RefreshParamTabWidget_Signal, this,
                &NVIC_Configuration::update);
    }
}

void NVIC_Configuration::SetPeripheralsListIPStatus(const QString &instanceName, IPSTATUS status)
{
    const bool on = (status & IPSTATUS_ON) != 0;
    const bool same = std::exchange(m_ValidPeripheralsList[instanceName], on) == on;
    // What counts in the power control is one mode of several, which goes on and off while the others stay.
    const ModuleConfiguration *module = same && on ? m_design.module(instanceName) : nullptr;
    if (!same || (module && module->baseInfo().Name == QLatin1String("PWC")))
        update();
}

void NVIC_Configuration::UpdateDMAChannelInfoForAllNVICList(const QList<DMAChannelUse> &channels)
{
    if (m_listDMAInfo == channels)
        return;
    m_listDMAInfo = channels;
    update();
}

void NVIC_Configuration::ReceiveSemaphore(const QString &sender, const QStringList &tokens, bool enable)
{
    static const QStringList Forcing{QStringLiteral("USB_DEVICE"), QStringLiteral("USB_HOST"),
                                     QStringLiteral("I2C_Application")};
    if (Forcing.contains(sender))
        UpdateAutoEnableNVICIRQSemaphore(enable ? QStringList() : tokens, enable ? tokens : QStringList());
    if (sender != QLatin1String("FREERTOS"))
        return;
    static const QString Running = QStringLiteral("Semaphore_FREERTOS");
    const QStringList heard = tokens.contains(Running) ? QStringList{Running} : QStringList();
    if (enable)
        m_rtosTokens += heard;
    else
        takeOnce(m_rtosTokens, heard);
    const bool runs = !m_rtosTokens.isEmpty();
    if (runs == m_FREERTOS_EnableFlag)
        return;
    constexpr int AllBitsPreempt = 4;
    if (runs)
        Set_Fixed_NVICPriorityGroup(AllBitsPreempt);
    else
        Cancel_Fixed_NVICPriorityGroup();
    SetFREERTOSEnableFlag(runs);
}

void NVIC_Configuration::UpdateAutoEnableNVICIRQSemaphore(const QStringList &cancelList, const QStringList &enableList)
{
    takeOnce(m_AutoEnableNVICIRQSemaphoreList, cancelList);
    m_AutoEnableNVICIRQSemaphoreList += enableList;
    update();
}

void NVIC_Configuration::SetFREERTOSEnableFlag(bool on)
{
    m_FREERTOS_EnableFlag = on;
    update();
}

void NVIC_Configuration::SetFREERTOSPRIORITY(const QString &text)
{
    const int priority = std::max(0, text.toInt());
    if (std::exchange(m_FREERTOS_MinPriority, priority) != priority)
        update();
}

// ---- The table ----

int NVIC_Configuration::indexOf(const QString &name) const
{
    return m_indexes.value(name, -1);
}

const MCUNVICSetting *NVIC_Configuration::vector(const QString &name) const
{
    const int index = indexOf(name);
    return index < 0 ? nullptr : &m_records[index];
}

QList<const MCUNVICSetting *> NVIC_Configuration::vectorsOf(const QString &instanceName) const
{
    QList<const MCUNVICSetting *> list;
    for (const MCUNVICSetting &record : m_records) {
        const auto serves = [&](const DMAChannelUse &use) {
            return use.instanceName == instanceName && record.relatedIPNameList.contains(use.channelName);
        };
        if (record.canBeSet && (record.relatedIPNameList.contains(instanceName) ||
                                std::any_of(m_listDMAInfo.begin(), m_listDMAInfo.end(), serves)))
            list.append(&record);
    }
    return list;
}

QList<const MCUNVICSetting *> NVIC_Configuration::vectorsShown(NVICSHOWMODDE mode) const
{
    QList<const MCUNVICSetting *> list;
    for (const MCUNVICSetting &record : m_records) {
        if (mode == SHOW_ALL || (mode == SHOW_AVAILABLE ? record.canBeSet : record.enabledFlag))
            list.append(&record);
    }
    return list;
}

DesignAnswer NVIC_Configuration::remark(const MCUNVICSetting &vector) const
{
    const int index = vector.enabledFlag ? indexOf(vector.ValueName) : -1;
    const QStringList lines = index < 0 ? QStringList() : m_sources[size_t(index)].declared.exintLines;
    const bool open = std::any_of(lines.begin(), lines.end(), [this](const QString &line) {
        return exintLineInterrupts(line) || m_design.raises(QStringLiteral("Semaphore_EXINT%1_Taken").arg(line));
    });
    if (lines.isEmpty() || open)
        return {};
    return {DesignReason::VectorLineClosed, {vector.ValueName, lines.join(QLatin1String(", "))}};
}

DesignAnswer NVIC_Configuration::eventsRemark(const QString &instanceName) const
{
    const ModuleConfiguration *module = m_design.module(instanceName);
    if (!module || !module->GetIPValidFlag())
        return {};
    const QList<RefParameter> &parameters = module->parameters().GetRefParameterList();
    const bool hasEvent = std::any_of(parameters.begin(), parameters.end(), [](const RefParameter &parameter) {
        return isInterruptParameter(parameter) && parameter.CurrentValue == QLatin1String("TRUE");
    });
    if (!hasEvent && !module->raises(QStringLiteral("Semaphore_%1_Interrupts").arg(instanceName)))
        return {};
    QStringList closed;
    for (const MCUNVICSetting &record : m_records) {
        if (!record.relatedIPNameList.contains(instanceName))
            continue;
        if (record.enabledFlag)
            return {};
        closed.append(record.ValueName);
    }
    if (closed.isEmpty())
        return {};
    return {DesignReason::EventsUnheard, {instanceName, closed.join(QLatin1String(", "))}};
}

void NVIC_Configuration::collectProblems(QList<DesignProblem> &problems) const
{
    for (const MCUNVICSetting &record : m_records) {
        if (const DesignAnswer answer = remark(record); !answer)
            problems.append({QLatin1String("nvic/") + record.ValueName, answer, true});
    }
}

void NVIC_Configuration::SetNVICDefaultValue(const QString &instanceName)
{
    const QList<const MCUNVICSetting *> own = vectorsOf(instanceName);
    for (const MCUNVICSetting *record : own)
        startValues(m_sources[indexOf(record->ValueName)]);
    update();
}

// ---- The part ----

bool NVIC_Configuration::handles(const DesignChange &change) const
{
    return change.section == QLatin1String("nvic");
}

DesignAnswer NVIC_Configuration::apply(const DesignChange &change)
{
    if (change.address == GroupName)
        return setPriorityGroup(change.value);
    if (change.address == ShowType) {
        bool isNumber = false;
        const int mode = change.value.toInt(&isNumber);
        if (!isNumber || mode < SHOW_AVAILABLE || mode > SHOW_ALL)
            return {DesignReason::ValueNotInList, {ShowType, change.value}};
        m_ShowMode = NVICSHOWMODDE(mode);
        emit SendRefreshNVIC();
        return {};
    }
    const QString name = change.address.section(QLatin1Char('/'), 1);
    if (const std::optional<Field> field = fieldNamed(name))
        return setField(change.address.section(QLatin1Char('/'), 0, 0), *field, change.value);
    return {DesignReason::UnknownSetting, {change.section + QLatin1Char('/') + change.address}};
}

void NVIC_Configuration::reset()
{
    for (Source &source : m_sources)
        startValues(source);
    m_ShowMode = SHOW_ALL;
    m_userPriorityGroup = m_PriorityGroupParameter.DefaultValue;
    if (!isPriorityGroupFixed())
        chooseGroup(m_userPriorityGroup);
    update();
}

void NVIC_Configuration::updateLanguage()
{
    InitPriorityGroupParameter();
    for (MCUNVICSetting &record : m_records) {
        record.Diagnostic = GlobalLanguage::g_CurrentLanguage == UI_CH ? record.Diagnostic_CH : record.Diagnostic_EN;
    }
    emit SendRefreshNVIC();
}

std::any NVIC_Configuration::save() const
{
    return State{m_sources,
                 m_records,
                 m_userPriorityGroup,
                 m_fixedPriorityGroup,
                 m_ValidPeripheralsList,
                 m_listDMAInfo,
                 m_AutoEnableNVICIRQSemaphoreList,
                 m_rtosTokens,
                 m_FREERTOS_EnableFlag,
                 m_FREERTOS_MinPriority,
                 m_ShowMode};
}

void NVIC_Configuration::restore(const std::any &saved)
{
    const State *state = std::any_cast<State>(&saved);
    if (!state || state->sources.size() != m_sources.size())
        return;
    m_sources = state->sources;
    m_userPriorityGroup = state->userPriorityGroup;
    m_fixedPriorityGroup = state->fixedPriorityGroup;
    m_ValidPeripheralsList = state->validPeripherals;
    m_listDMAInfo = state->channels;
    m_AutoEnableNVICIRQSemaphoreList = state->autoEnableTokens;
    m_rtosTokens = state->rtosTokens;
    m_FREERTOS_EnableFlag = state->rtos;
    m_FREERTOS_MinPriority = state->rtosMinPriority;
    m_ShowMode = state->showMode;
    chooseGroup(isPriorityGroupFixed() ? m_PriorityGroupParameter.PossibleValueList.at(m_fixedPriorityGroup).Value
                                       : m_userPriorityGroup);
    std::copy(state->records.begin(), state->records.end(), m_records.begin());
    emit SendRefreshNVIC();
}

} // namespace ChipLoom
