#include "Design/IP_ParamSettingConfiguration.h"

#include "Design/Calculators/DerivedParameters.h"
#include "Design/ParameterChecks.h"
#include "Model/xmloperation.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

constexpr int RebuildDelayMs = 100;

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
    return isRemarked(value) || value.ValueCondition.Expression.isEmpty() ||
           isConditionMet(value.ValueCondition.Expression);
}

bool IP_ParamSettingConfiguration::isRemarked(const PossibleValue &value)
{
    return value.Action == QLatin1String("Remark");
}

const PossibleValue *IP_ParamSettingConfiguration::remarkedChoice(const RefParameter &parameter) const
{
    for (const PossibleValue &value : parameter.PossibleValueList) {
        if (value.Value == parameter.CurrentValue && isRemarked(value))
            return &value;
    }
    return nullptr;
}

// What works only together with another peripheral, which the user may set up by code of his own.
DesignAnswer IP_ParamSettingConfiguration::remark(const RefParameter &parameter) const
{
    const PossibleValue *chosen = remarkedChoice(parameter);
    if (!chosen)
        return {};
    const ParameterCondition &condition = ParameterCondition::of(chosen->ValueCondition.Expression);
    QStringList tokens = m_ValidSemaphoreList;
    for (const QString &word : condition.words()) {
        if (m_isRaised && m_isRaised(word))
            tokens.append(word);
    }
    if (condition.isMet(m_values, tokens))
        return {};
    return {DesignReason::ValueDoubtful, {parameter.Name, chosen->ValueCondition.Diagnostic}};
}

DesignAnswer IP_ParamSettingConfiguration::warning(const QString &name) const
{
    const DesignAnswer computed = m_warnings.value(name);
    const RefParameter *entry = computed ? parameter(name) : nullptr;
    return entry ? remark(*entry) : computed;
}

bool IP_ParamSettingConfiguration::hasWarnings() const
{
    return !m_warnings.isEmpty() || std::any_of(m_RefParameterList.begin(), m_RefParameterList.end(),
                                                [this](const RefParameter &entry) { return !remark(entry); });
}

bool IP_ParamSettingConfiguration::hasRemarkedChoices() const
{
    return std::any_of(m_RefParameterList.begin(), m_RefParameterList.end(),
                       [this](const RefParameter &entry) { return remarkedChoice(entry) != nullptr; });
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

QString IP_ParamSettingConfiguration::defaultOf(const RefParameter &parameter) const
{
    return parameterKind(parameter.Type) == ParameterKind::List
               ? GetValidValueInValueList(parameter.DefaultValueBackup, parameter)
               : parameter.DefaultValueBackup;
}

bool IP_ParamSettingConfiguration::isChangedFromDefault(const RefParameter &parameter) const
{
    const QString byDefault = defaultOf(parameter);
    const std::optional<qint64> present = conditionNumber(parameter.CurrentValue);
    const std::optional<qint64> initial = conditionNumber(byDefault);
    if (present && initial)
        return *present != *initial;
    return parameter.CurrentValue != byDefault;
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
                                               m_foreignTokens, m_ownTokens, m_otherLists, m_warnings,
                                               m_clocksOfResults});
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
    m_clocksOfResults = state->clocksOfResults;
    m_scheduler.cancel(this, RebuildTask);
    updateTokens();
    RefreshIPParamStatus();
    emit Send_RefreshParamTabWidget_Signal();
}

} // namespace ChipLoom
