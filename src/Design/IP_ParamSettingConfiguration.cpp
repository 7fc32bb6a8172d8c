#include "Design/IP_ParamSettingConfiguration.h"

#include "Design/Calculators/DerivedParameters.h"
#include "Design/ParameterChecks.h"
#include "Model/xmloperation.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

constexpr int RebuildDelayMs = 100;
constexpr int MaxRounds = 6; // of a rebuild whose tokens and values feed back into it
const char *const RebuildTask = "parameters";

} // namespace

IP_ParamSettingConfiguration::IP_ParamSettingConfiguration(QString series, QString instance,
                                                           std::shared_ptr<const PeripheralTree> tree,
                                                           Scheduler &scheduler, QObject *parent)
    : QObject(parent), m_mcuSerials(std::move(series)), m_InstanceName(std::move(instance)),
      m_PeripheralsXMLFileInfo(std::move(tree)), m_scheduler(scheduler)
{
    readDeclarations();
}

IP_ParamSettingConfiguration::~IP_ParamSettingConfiguration()
{
    m_scheduler.cancelAll(this);
}

void IP_ParamSettingConfiguration::readDeclarations()
{
    m_AllRefParameterListInXMLFile =
        XMLOperation::GetXMLFileAllRefParameterList(m_InstanceName, m_PeripheralsXMLFileInfo->root());
    m_declarationsByName.clear();
    for (int i = 0; i < m_AllRefParameterListInXMLFile.size(); ++i)
        m_declarationsByName[m_AllRefParameterListInXMLFile.at(i).Name].append(i);
    m_abstractMode = m_PeripheralsXMLFileInfo->GetRefMode_Abstract();
}

void IP_ParamSettingConfiguration::updateLanguage()
{
    readDeclarations();
    InitParam();
}

// ---- Modes ----

bool IP_ParamSettingConfiguration::ModeRefModeMap_ISEmpty() const
{
    return std::all_of(m_Mode_RefMode_List.begin(), m_Mode_RefMode_List.end(),
                       [](const IP_MODE_Struct &mode) { return mode.currentModeParamName.isEmpty(); });
}

void IP_ParamSettingConfiguration::ModeChange(const QString &modeName, const QString &paramName)
{
    ModeChange({IP_MODE_Struct{modeName, paramName}});
}

void IP_ParamSettingConfiguration::ModeChange(const QList<IP_MODE_Struct> &modes)
{
    for (const IP_MODE_Struct &mode : modes) {
        if (mode.modeName.isEmpty() && mode.currentModeParamName.isEmpty())
            continue;
        const auto entry = std::find_if(m_Mode_RefMode_List.begin(), m_Mode_RefMode_List.end(),
                                        [&](const IP_MODE_Struct &known) { return known.modeName == mode.modeName; });
        if (entry == m_Mode_RefMode_List.end())
            m_Mode_RefMode_List.append(mode);
        else
            entry->currentModeParamName = mode.currentModeParamName;
    }
    UpdateModeChange();
}

void IP_ParamSettingConfiguration::orderModes(const QStringList &modeNames)
{
    std::stable_sort(m_Mode_RefMode_List.begin(), m_Mode_RefMode_List.end(), [&](const auto &a, const auto &b) {
        return modeNames.indexOf(a.modeName) < modeNames.indexOf(b.modeName);
    });
    std::stable_sort(m_RefParameterList.begin(), m_RefParameterList.end(), [&](const auto &a, const auto &b) {
        return modeNames.indexOf(a.BaseMode) < modeNames.indexOf(b.BaseMode);
    });
    emit Send_RefreshParamTabWidget_Signal();
}

void IP_ParamSettingConfiguration::UpdateModeChange()
{
    if (!ModeRefModeMap_ISEmpty()) {
        InitParam();
        return;
    }
    const QStringList before = m_ownTokens.values();
    rememberValues();
    m_RefParameterList.clear();
    m_Mode_RefMode_List.clear();
    m_ownTokens.clear();
    m_warnings.clear();
    m_scheduler.cancel(this, RebuildTask);
    finish(before);
}

// ---- The rebuild ----

void IP_ParamSettingConfiguration::InitParam()
{
    rebuild(m_ownTokens.values());
}

void IP_ParamSettingConfiguration::rebuild(const QStringList &tokensBefore)
{
    // Tokens that this raises come back through their receivers; what they change is taken up by the round after.
    if (m_rebuilding || ModeRefModeMap_ISEmpty())
        return;
    m_rebuilding = true;
    m_scheduler.cancel(this, RebuildTask);
    rememberValues();
    for (int round = 0; round < MaxRounds; ++round) {
        const QMap<ParameterKey, QString> tokens = m_ownTokens;
        const QList<RefParameter> previous = m_RefParameterList;
        rebuildOnce();
        rememberValues();
        const bool settled =
            tokens == m_ownTokens && std::equal(previous.begin(), previous.end(), m_RefParameterList.begin(),
                                                m_RefParameterList.end(), [](const auto &a, const auto &b) {
                                                    return a.Name == b.Name && a.CurrentValue == b.CurrentValue;
                                                });
        if (settled)
            break;
    }
    m_rebuilding = false;
    finish(tokensBefore);
}

void IP_ParamSettingConfiguration::rebuildOnce()
{
    InitParam_Abstract();
    const QList<IP_MODE_Struct> modes = m_Mode_RefMode_List;
    for (const IP_MODE_Struct &mode : modes) {
        InitParam_Other(mode);
        // A converter takes its parameters from one mode only.
        if (m_InstanceName.contains(QLatin1String("ADC")) && !mode.currentModeParamName.isEmpty())
            break;
    }
    computeResults();
    RefParameterList_ValueCheck();
}

void IP_ParamSettingConfiguration::computeResults()
{
    m_warnings.clear();
    m_clockOfResults = m_clock ? m_clock(m_InstanceName) : 0;
    for (auto leader = m_otherLists.constBegin(); leader != m_otherLists.constEnd(); ++leader) {
        if (leader.key().startsWith(QLatin1String("ADC")))
            UpdateParam_FromLeader_Operate(m_RefParameterList, leader.value());
    }
    ParameterSheet sheet(m_mcuSerials, m_InstanceName, m_RefParameterList, m_clock, m_warnings);
    SpecialParam_Operate(sheet);
}

void IP_ParamSettingConfiguration::ReciveClockChangedSignal()
{
    if (m_clock && m_clock(m_InstanceName) != m_clockOfResults)
        InitParam();
}

void IP_ParamSettingConfiguration::InitParam_Abstract()
{
    if (m_abstractMode.Abstract && !m_abstractMode.ParamList.isEmpty())
        buildMode(m_abstractMode, m_abstractMode.Name);
}

void IP_ParamSettingConfiguration::InitParam_Other(const IP_MODE_Struct &mode)
{
    if (mode.modeName.isEmpty() && mode.currentModeParamName.isEmpty())
        return;
    RefMode refMode;
    if (!mode.currentModeParamName.isEmpty())
        refMode = m_PeripheralsXMLFileInfo->GetRefMode(mode.modeName, mode.currentModeParamName);
    buildMode(refMode, mode.modeName);
}

void IP_ParamSettingConfiguration::buildMode(const RefMode &mode, const QString &baseMode)
{
    QList<RefParameter> chosen;
    for (const Parameter &restriction : mode.ParamList) {
        const RefParameter *declaration = GetMeetConditionRefParameter(restriction.Name);
        if (!declaration)
            continue;
        RefParameter parameter = *declaration;
        parameter.BaseMode = baseMode;
        if (parameter.Group.isEmpty()) {
            parameter.Group = mode.Group;
            parameter.Group_EN = mode.Group_EN;
            parameter.Group_CH = mode.Group_CH;
        }
        takeValue(parameter, restriction);
        const auto base = m_valueTypes.constFind(parameter.Name);
        if (base != m_valueTypes.constEnd())
            parameter.CurrentValueType = base.value();
        m_values.set(parameter.Name, parameter.CurrentValue);
        setOwnToken(parameter);
        chosen.append(parameter);
    }
    replaceModeParameters(baseMode, chosen);
}

const RefParameter *IP_ParamSettingConfiguration::GetMeetConditionRefParameter(const QString &name) const
{
    const RefParameter *unconditional = nullptr;
    const QVector<int> candidates = m_declarationsByName.value(name);
    for (const int index : candidates) {
        const RefParameter &candidate = m_AllRefParameterListInXMLFile.at(index);
        if (candidate.condition.Expression.isEmpty()) {
            if (!unconditional)
                unconditional = &candidate;
        } else if (isConditionMet(candidate.condition.Expression)) {
            return &candidate;
        }
    }
    return unconditional;
}

void IP_ParamSettingConfiguration::takeValue(RefParameter &parameter, const Parameter &restriction) const
{
    const std::optional<QString> earlier = m_values.value(parameter.Name);
    const QStringList &allowed = restriction.PossibleValueList;
    if (!allowed.isEmpty()) {
        if (allowed.size() > 1) {
            QList<PossibleValue> offered;
            for (const PossibleValue &value : qAsConst(parameter.PossibleValueList)) {
                if (allowed.contains(value.Value))
                    offered.append(value);
            }
            parameter.PossibleValueList = offered;
        }
        parameter.CurrentValue = earlier && allowed.contains(*earlier) ? *earlier : allowed.first();
        return;
    }
    if (!parameter.Visible || !earlier)
        return;
    parameter.CurrentValue =
        parameterKind(parameter.Type) == ParameterKind::List ? GetValidValueInValueList(*earlier, parameter) : *earlier;
}

QString IP_ParamSettingConfiguration::GetValidValueInValueList(const QString &value,
                                                               const RefParameter &parameter) const
{
    const auto firstOffered = [&](auto fits) -> const PossibleValue * {
        for (const PossibleValue &entry : parameter.PossibleValueList) {
            if (fits(entry) && isOffered(entry))
                return &entry;
        }
        return nullptr;
    };
    if (const PossibleValue *same = firstOffered([&](const auto &entry) { return entry.Value == value; }))
        return same->Value;
    if (const PossibleValue *initial =
            firstOffered([&](const auto &entry) { return entry.Value == parameter.DefaultValue && !entry.ErrorFlag; }))
        return initial->Value;
    const PossibleValue *other = firstOffered([&](const auto &entry) { return !entry.ErrorFlag; });
    return other ? other->Value : QString();
}

void IP_ParamSettingConfiguration::replaceModeParameters(const QString &baseMode, const QList<RefParameter> &chosen)
{
    int position = -1;
    for (int i = m_RefParameterList.size() - 1; i >= 0; --i) {
        const RefParameter &old = m_RefParameterList.at(i);
        if (old.BaseMode != baseMode)
            continue;
        const bool stays = std::any_of(chosen.begin(), chosen.end(),
                                       [&](const RefParameter &parameter) { return parameter.Name == old.Name; });
        if (!stays)
            m_ownTokens.remove({baseMode, old.Name});
        m_RefParameterList.removeAt(i);
        position = i;
    }
    if (position < 0)
        position = m_RefParameterList.size();
    for (const RefParameter &parameter : chosen)
        m_RefParameterList.insert(position++, parameter);
    updateTokens();
}

QString IP_ParamSettingConfiguration::GetParamRangeMappingValue(const QString &bound) const
{
    const int mark = bound.indexOf(QLatin1String("=#"));
    if (mark < 0)
        return bound;
    const RefParameter *named = parameter(bound.mid(mark + 2).trimmed());
    return named ? named->CurrentValue : QString();
}

void IP_ParamSettingConfiguration::RefParameterList_ValueCheck()
{
    for (RefParameter &entry : m_RefParameterList) {
        if (entry.CurrentValue.contains(QLatin1Char('=')))
            continue;
        if (hasNumberBase(parameterKind(entry.Type))) {
            entry.MinValue = GetParamRangeMappingValue(entry.MinValue);
            entry.MaxValue = GetParamRangeMappingValue(entry.MaxValue);
        }
        if (entry.Visible)
            entry.CurrentValue = nearestInRange(entry);
    }
}

void IP_ParamSettingConfiguration::rememberValues()
{
    for (const RefParameter &entry : qAsConst(m_RefParameterList))
        m_values.set(entry.Name, entry.CurrentValue);
}

void IP_ParamSettingConfiguration::RefreshParams()
{
    InitParam();
}

void IP_ParamSettingConfiguration::SetOtherIPParamList(const QList<RefParameter> &list, const QString &sender)
{
    const QList<RefParameter> before = std::exchange(m_otherLists[sender], list);
    // What followed a leader that has gone stands for itself again.
    for (RefParameter &own : m_RefParameterList) {
        const auto leads = [&](const RefParameter &other) { return other.Name == own.Name && other.Enable; };
        if (!own.Enable && std::any_of(before.begin(), before.end(), leads) &&
            std::none_of(list.begin(), list.end(), leads))
            own.CurrentValue = own.DefaultValue;
    }
    const bool same =
        std::equal(before.begin(), before.end(), list.begin(), list.end(),
                   [](const auto &a, const auto &b) { return a.Name == b.Name && a.CurrentValue == b.CurrentValue; });
    if (!same)
        InitParam();
}

// ---- Values ----

const RefParameter *IP_ParamSettingConfiguration::parameter(const QString &name) const
{
    for (const RefParameter &entry : m_RefParameterList) {
        if (entry.Name == name)
            return &entry;
    }
    return nullptr;
}

RefParameter *IP_ParamSettingConfiguration::find(const QString &name)
{
    // Not through the const look-up: snapshots and other modules share the list and keep what they were given.
    const auto found = std::find_if(m_RefParameterList.begin(), m_RefParameterList.end(),
                                    [&name](const RefParameter &entry) { return entry.Name == name; });
    return found == m_RefParameterList.end() ? nullptr : &*found;
}

bool IP_ParamSettingConfiguration::isConditionMet(const QString &expression) const
{
    return ParameterCondition::of(expression).isMet(m_values, m_ValidSemaphoreList);
}

ParameterCondition::Unmet IP_ParamSettingConfiguration::unmetTerms(const QString &expression) const
{
    return ParameterCondition::of(expression).unmet(m_values, m_ValidSemaphoreList);
}

bool IP_ParamSettingConfiguration::isOffered(const PossibleValue &value) const
{
    return value.ValueCondition.Expression.isEmpty() || isConditionMet(value.ValueCondition.Expression);
}

DesignAnswer IP_ParamSettingConfiguration::canTake(const QString &name, const QString &value) const
{
    const RefParameter *entry = parameter(name);
    if (!entry || !entry->Visible)
        return {DesignReason::UnknownParameter, {m_InstanceName, name}};
    if (!entry->Enable)
        return {DesignReason::ParameterClosed, {name}};
    if (!DisplayText_to_Value(*entry, value))
        return {DesignReason::NotANumber, {name, value}};
    return rangeAnswer(*entry, value);
}

DesignAnswer IP_ParamSettingConfiguration::rangeAnswer(const RefParameter &parameter, const QString &value) const
{
    if (const DesignAnswer checked = checkedValue(parameter, value); !checked)
        return checked;
    if (parameterKind(parameter.Type) == ParameterKind::List) {
        const bool offered =
            std::any_of(parameter.PossibleValueList.begin(), parameter.PossibleValueList.end(),
                        [&](const PossibleValue &possible) { return possible.Value == value && isOffered(possible); });
        if (!offered)
            return {DesignReason::ValueNotOffered, {parameter.Name, value}};
    }
    return {};
}

DesignAnswer IP_ParamSettingConfiguration::valueAnswer(const RefParameter &parameter) const
{
    const DesignAnswer answer = rangeAnswer(parameter, parameter.CurrentValue);
    if (!answer || GetOneParamStatus(parameter))
        return answer;
    return {DesignReason::ValueMarked, {parameter.Name, parameter.CurrentValue}};
}

DesignAnswer IP_ParamSettingConfiguration::ParamModefySlot(const QString &name, const QString &value,
                                                           CURRENTVALUETYPE base)
{
    const DesignAnswer answer = canTake(name, value);
    if (!answer)
        return answer;
    RefParameter *entry = find(name);
    const QStringList before = m_ownTokens.values();
    if (hasNumberBase(parameterKind(entry->Type)) && base != CURRENTVALUETYPE_NONE) {
        entry->CurrentValueType = base;
        m_valueTypes.insert(name, base);
    }
    entry->CurrentValue = Value_to_DisplayText(*entry, value.trimmed(), entry->CurrentValueType);
    entry->ManualModifyFlag = true;
    m_values.set(name, entry->CurrentValue);
    setOwnToken(*entry);
    for (const XMLAttributeInfo &follower : ModifyParam_Operate(m_InstanceName, name, entry->CurrentValue)) {
        if (RefParameter *other = find(follower.attributeName)) {
            other->CurrentValue = follower.attributeValue;
            m_values.set(other->Name, other->CurrentValue);
        }
    }
    if (entry->ReloadFlag)
        m_scheduler.schedule(this, RebuildTask, RebuildDelayMs, [this] { InitParam(); });
    finish(before);
    return answer;
}

DesignAnswer IP_ParamSettingConfiguration::ParamModefySlot(const QList<XMLAttributeInfo> &values)
{
    for (const XMLAttributeInfo &value : values) {
        if (const DesignAnswer answer = canTake(value.attributeName, value.attributeValue); !answer)
            return answer;
    }
    QList<XMLAttributeInfo> former;
    for (const XMLAttributeInfo &value : values) {
        XMLAttributeInfo taken = value;
        if (const RefParameter *entry = parameter(value.attributeName))
            taken.attributeValue = entry->CurrentValue;
        const DesignAnswer answer = ParamModefySlot(value.attributeName, value.attributeValue, CURRENTVALUETYPE_NONE);
        if (!answer) {
            // What came before has closed this one, and goes back.
            for (const XMLAttributeInfo &back : qAsConst(former))
                ParamModefySlot(back.attributeName, back.attributeValue, CURRENTVALUETYPE_NONE);
            return answer;
        }
        former.prepend(taken);
    }
    return {};
}

DesignAnswer IP_ParamSettingConfiguration::setNumberBase(const QString &name, const QString &base)
{
    const RefParameter *entry = parameter(name);
    if (!entry || !hasNumberBase(parameterKind(entry->Type)))
        return {DesignReason::UnknownParameter, {m_InstanceName, name}};
    if (base != QLatin1String("10") && base != QLatin1String("16"))
        return {DesignReason::NotANumber, {name, base}};
    return ParamModefySlot(name, entry->CurrentValue,
                           base == QLatin1String("16") ? CURRENTVALUETYPE_HEX : CURRENTVALUETYPE_DEC);
}

bool IP_ParamSettingConfiguration::isChangedFromDefault(const RefParameter &parameter) const
{
    const std::optional<qint64> present = conditionNumber(parameter.CurrentValue);
    const std::optional<qint64> initial = conditionNumber(parameter.DefaultValueBackup);
    if (present && initial)
        return *present != *initial;
    return parameter.CurrentValue != parameter.DefaultValueBackup;
}

void IP_ParamSettingConfiguration::SetParametersDefaultValue()
{
    const QStringList before = m_ownTokens.values();
    m_values.clear();
    m_valueTypes.clear();
    m_RefParameterList.clear();
    m_ownTokens.clear();
    updateTokens();
    if (ModeRefModeMap_ISEmpty()) {
        finish(before);
        return;
    }
    rebuild(before);
}

void IP_ParamSettingConfiguration::ClearAllParameters()
{
    const QStringList before = m_ownTokens.values();
    m_scheduler.cancel(this, RebuildTask);
    m_RefParameterList.clear();
    m_Mode_RefMode_List.clear();
    m_values.clear();
    m_valueTypes.clear();
    m_ownTokens.clear();
    finish(before);
}

void IP_ParamSettingConfiguration::HandleTimeout()
{
    if (m_scheduler.isPending(this, RebuildTask))
        InitParam();
}

// ---- Tokens ----

void IP_ParamSettingConfiguration::setOwnToken(const RefParameter &parameter)
{
    const ParameterKey key{parameter.BaseMode, parameter.Name};
    QString token;
    for (const PossibleValue &value : parameter.PossibleValueList) {
        if (value.Value == parameter.CurrentValue) {
            token = value.Semaphore;
            break;
        }
    }
    if (m_ownTokens.value(key) == token)
        return;
    if (token.isEmpty())
        m_ownTokens.remove(key);
    else
        m_ownTokens.insert(key, token);
    updateTokens();
}

void IP_ParamSettingConfiguration::updateTokens()
{
    m_ValidSemaphoreList = m_foreignTokens;
    for (const QString &token : qAsConst(m_ownTokens)) {
        if (!m_ValidSemaphoreList.contains(token))
            m_ValidSemaphoreList.append(token);
    }
}

bool IP_ParamSettingConfiguration::canRaise(const QString &token) const
{
    return std::any_of(m_AllRefParameterListInXMLFile.begin(), m_AllRefParameterListInXMLFile.end(),
                       [&](const RefParameter &declaration) {
                           return std::any_of(declaration.PossibleValueList.begin(),
                                              declaration.PossibleValueList.end(),
                                              [&](const PossibleValue &value) { return value.Semaphore == token; });
                       });
}

bool IP_ParamSettingConfiguration::raises(const QString &token) const
{
    return std::find(m_ownTokens.begin(), m_ownTokens.end(), token) != m_ownTokens.end();
}

void IP_ParamSettingConfiguration::EnableSemaphore(const QStringList &tokens)
{
    m_foreignTokens += tokens;
    updateTokens();
    RefreshIPParamStatus();
}

void IP_ParamSettingConfiguration::CancelSemaphore(const QStringList &tokens)
{
    for (const QString &token : tokens)
        m_foreignTokens.removeOne(token);
    updateTokens();
    RefreshIPParamStatus();
}

void IP_ParamSettingConfiguration::announceTokens(const QStringList &before)
{
    const QStringList now = m_ownTokens.values();
    QStringList cancelled;
    QStringList enabled;
    for (const QString &token : before) {
        if (!now.contains(token) && !cancelled.contains(token))
            cancelled.append(token);
    }
    for (const QString &token : now) {
        if (!before.contains(token) && !enabled.contains(token))
            enabled.append(token);
    }
    if (!cancelled.isEmpty() || !enabled.isEmpty())
        emit paramTokensChanged(cancelled, enabled);
}

// ---- Status ----

bool IP_ParamSettingConfiguration::GetOneParamStatus(const RefParameter &parameter) const
{
    if (parameterKind(parameter.Type) != ParameterKind::List)
        return RefParameter_ValueCheck(parameter);
    for (const PossibleValue &value : parameter.PossibleValueList) {
        if (value.Value == parameter.CurrentValue && isOffered(value))
            return !value.ErrorFlag;
    }
    return false;
}

void IP_ParamSettingConfiguration::RefreshIPParamStatus()
{
    const bool good = std::all_of(m_RefParameterList.begin(), m_RefParameterList.end(), [&](const RefParameter &entry) {
        return !entry.Visible || GetOneParamStatus(entry);
    });
    m_paramStatus = good ? IPPARAMSTATUS_NORMAL : IPPARAMSTATUS_ERROR;
    emit SendIPParamStatus(m_InstanceName, m_paramStatus);
}

void IP_ParamSettingConfiguration::finish(const QStringList &tokensBefore)
{
    updateTokens();
    announceTokens(tokensBefore);
    RefreshIPParamStatus();
    emit SendIPParamList(m_RefParameterList, m_InstanceName);
    emit Send_RefreshParamTabWidget_Signal();
}

// ---- Snapshot ----

std::shared_ptr<const IP_ParamSettingConfiguration::State> IP_ParamSettingConfiguration::save() const
{
    return std::make_shared<const State>(State{m_RefParameterList, m_Mode_RefMode_List, m_values, m_valueTypes,
                                               m_foreignTokens, m_ownTokens, m_otherLists, m_warnings});
}

void IP_ParamSettingConfiguration::restore(const std::shared_ptr<const State> &state)
{
    m_RefParameterList = state->parameters;
    m_Mode_RefMode_List = state->modes;
    m_values = state->values;
    m_valueTypes = state->valueTypes;
    m_foreignTokens = state->foreignTokens;
    m_ownTokens = state->ownTokens;
    m_otherLists = state->otherLists;
    m_warnings = state->warnings;
    m_scheduler.cancel(this, RebuildTask);
    updateTokens();
    RefreshIPParamStatus();
    emit Send_RefreshParamTabWidget_Signal();
}

} // namespace ChipLoom
