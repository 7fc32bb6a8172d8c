// How the set of parameters is built anew from modes, conditions and remembered values.

#include "Design/Calculators/DerivedParameters.h"
#include "Design/Calculators/SharedParameters.h"
#include "Design/IP_ParamSettingConfiguration.h"
#include "Design/ParameterChecks.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

constexpr int MaxRounds = 6; // of a rebuild whose tokens and values feed back into it

} // namespace

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
    m_clocksOfResults.clear();
    const PeripheralClock noted = [this](const QString &name) {
        return m_clocksOfResults[name] = m_clock ? m_clock(name) : 0;
    };
    for (auto leader = m_otherLists.constBegin(); leader != m_otherLists.constEnd(); ++leader)
        UpdateParam_FromLeader_Operate(m_RefParameterList, leader.key(), leader.value());
    ParameterSheet sheet(m_mcuSerials, m_InstanceName, m_RefParameterList, noted, m_warnings);
    SpecialParam_Operate(sheet);
    for (auto leader = m_otherLists.constBegin(); leader != m_otherLists.constEnd(); ++leader)
        CombinedChannels_Operate(sheet, leader.key(), leader.value());
}

void IP_ParamSettingConfiguration::ReciveClockChangedSignal()
{
    for (auto used = m_clocksOfResults.constBegin(); used != m_clocksOfResults.constEnd(); ++used) {
        if (m_clock && m_clock(used.key()) != used.value())
            return InitParam();
    }
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
        QList<PossibleValue> offered;
        for (const PossibleValue &value : qAsConst(parameter.PossibleValueList)) {
            if (allowed.contains(value.Value))
                offered.append(value);
        }
        // A single value is fixed: what a user chose beside it, the next rebuild would take back.
        if (allowed.size() > 1 || !offered.isEmpty())
            parameter.PossibleValueList = offered;
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

} // namespace ChipLoom
