#include "Design/DmaParameters.h"

#include "Design/ParameterChecks.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

constexpr int MaxRounds = 6; // of parameters whose conditions look at each other
const QString Yes = QStringLiteral("TRUE");
const QString No = QStringLiteral("FALSE");

struct FifoThreshold
{
    const char *value;
    int bytes; // of the 16 of a FIFO
};

constexpr std::array<FifoThreshold, 4> Thresholds{{
    {"EDMA_FIFO_THRESHOLD_1QUARTER", 4},
    {"EDMA_FIFO_THRESHOLD_HALF", 8},
    {"EDMA_FIFO_THRESHOLD_3QUARTER", 12},
    {"EDMA_FIFO_THRESHOLD_FULL", 16},
}};

// What a value says by its end, of the memory and of the peripheral.
struct Figure
{
    const char *ending;
    int figure;
};

constexpr std::array<Figure, 3> Widths{{{"_BYTE", 1}, {"_HALFWORD", 2}, {"_WORD", 4}}};
constexpr std::array<Figure, 4> Bursts{{{"_SINGLE", 1}, {"_BURST_4", 4}, {"_BURST_8", 8}, {"_BURST_16", 16}}};

struct BurstSide
{
    const char *burst;
    const char *width;
};

constexpr std::array<BurstSide, 2> BurstSides{
    {{"MemBurst", "MemDataAlignment"}, {"PeriphBurst", "PeriphDataAlignment"}}};

template <size_t N> int figureOf(const std::array<Figure, N> &table, const QString &value)
{
    for (const Figure &row : table) {
        if (value.endsWith(QLatin1String(row.ending)))
            return row.figure;
    }
    return 1;
}

QString filled(QString text, const DmaParameterContext &context)
{
    if (text.contains(QLatin1Char('$'))) {
        text.replace(QLatin1String("$channelNameValue"), context.handle);
        text.replace(QLatin1String("$DMATYPE"), context.controller.toUpper());
        text.replace(QLatin1String("$ChannelNo"), context.channelNo.toUpper());
        text.replace(QLatin1String("$RequestName"), context.request);
    }
    return text;
}

const RefParameter *find(const QList<RefParameter> &list, const QString &name)
{
    const auto entry =
        std::find_if(list.begin(), list.end(), [&](const RefParameter &one) { return one.Name == name; });
    return entry == list.end() ? nullptr : &*entry;
}

} // namespace

bool fitsFifo(int width, int burst, int part)
{
    return part % (width * burst) == 0;
}

bool isDmaConditionMet(const QString &expression, const ParameterValues &values, const DmaParameterContext &context)
{
    const QString condition = expression.section(QLatin1String("<!"), 0, 0).trimmed();
    return condition.isEmpty() || ParameterCondition::of(filled(condition, context)).isMet(values, context.tokens);
}

ParameterValues DmaParameters::UpdateDMAMuxConditionInNameAndValueList(const DMARequest &request,
                                                                       const DmaParameterContext &context) const
{
    ParameterValues values;
    values.set(QStringLiteral("Instance"), request.InstanceName);
    for (auto event = context.channelEvents.begin(); event != context.channelEvents.end(); ++event)
        values.set(event.key(), event.value());
    for (const RefParameter &parameter : request.RefParameterfoList)
        values.set(parameter.Name, parameter.CurrentValue);
    if (m_edma)
        UpdateFIFOThresholdParamInfo(request, values, context.tokens);
    return values;
}

void DmaParameters::UpdateFIFOThresholdParamInfo(const DMARequest &request, ParameterValues &values,
                                                 const QStringList &tokens) const
{
    const RefParameter *width = find(request.RefParameterfoList, QStringLiteral("MemDataAlignment"));
    const RefParameter *burst = find(request.RefParameterfoList, QStringLiteral("MemBurst"));
    const int bytes = width ? figureOf(Widths, width->CurrentValue) : 1;
    const int transfers = burst ? figureOf(Bursts, burst->CurrentValue) : 1;
    for (const FifoThreshold &threshold : Thresholds) {
        const QString name = QLatin1String(threshold.value);
        bool offered = fitsFifo(bytes, transfers, threshold.bytes);
        // A token sets itself above the rule.
        if (tokens.contains(name + QLatin1Char('=') + Yes))
            offered = true;
        else if (tokens.contains(name + QLatin1Char('=') + No))
            offered = false;
        values.set(name, offered ? Yes : No);
    }
}

bool DmaParameters::isOffered(const RefParameter &parameter, const PossibleValue &value, const ParameterValues &values,
                              const DmaParameterContext &context) const
{
    if (m_edma && parameter.Name == QLatin1String("FIFOThreshold") && values.value(value.Value) == No)
        return false;
    // A burst passes through the FIFO as a whole; one that no threshold holds would leave it without one.
    for (const BurstSide &side : BurstSides) {
        if (!m_edma || parameter.Name != QLatin1String(side.burst))
            continue;
        const QString width = values.value(QLatin1String(side.width)).value_or(QString());
        if (!fitsFifo(figureOf(Widths, width), figureOf(Bursts, value.Value), Thresholds.back().bytes))
            return false;
    }
    return isDmaConditionMet(value.ValueCondition.Expression, values, context);
}

QString DmaParameters::takenValue(const RefParameter &parameter, const Entered &entered, const ParameterValues &values,
                                  const DmaParameterContext &context) const
{
    const auto memory = entered.constFind(parameter.Name);
    const bool known = parameter.Enable && memory != entered.constEnd();
    if (parameterKind(parameter.Type) != ParameterKind::List)
        return known ? memory.value() : parameter.DefaultValue;
    QString fallback;
    QString initial;
    for (const PossibleValue &value : parameter.PossibleValueList) {
        if (!isOffered(parameter, value, values, context))
            continue;
        if (known && value.Value == memory.value())
            return value.Value;
        if (value.Value == parameter.DefaultValue && !value.ErrorFlag)
            initial = value.Value;
        if (fallback.isEmpty() && !value.ErrorFlag)
            fallback = value.Value;
    }
    return initial.isEmpty() ? fallback : initial;
}

const QList<RefParameter> &DmaParameters::declarations(const QString &instance, const QString &name) const
{
    if (m_language != GlobalLanguage::g_CurrentLanguage) {
        m_language = GlobalLanguage::g_CurrentLanguage;
        m_declarations.clear();
    }
    QHash<QString, QList<RefParameter>> &ofInstance = m_declarations[instance];
    const auto known = ofInstance.find(name);
    return known != ofInstance.end() ? *known : *ofInstance.insert(name, m_tree->GetRefParameterList(instance, name));
}

void DmaParameters::InitOneDMARequestParam(DMARequest &request, const Entered &entered,
                                           const DmaParameterContext &context) const
{
    for (int round = 0; round < MaxRounds; ++round) {
        ParameterValues values = UpdateDMAMuxConditionInNameAndValueList(request, context);
        QList<RefParameter> built;
        for (const DMAParamInfo &info : qAsConst(request.DMAParamInfoList)) {
            const RefParameter *chosen = nullptr;
            for (const RefParameter &declaration : declarations(request.InstanceName, info.InfoName)) {
                const QString &condition = declaration.condition.Expression;
                if (condition.isEmpty() && !chosen)
                    chosen = &declaration;
                if (!condition.isEmpty() && isDmaConditionMet(condition, values, context)) {
                    chosen = &declaration;
                    break;
                }
            }
            if (!chosen)
                continue;
            RefParameter parameter = *chosen;
            parameter.BaseMode = request.requestName;
            // The request's own default is that of its usual case; a declaration for a case brings one along.
            if (!info.DefaultValue.isEmpty() && parameter.condition.Expression.isEmpty())
                parameter.DefaultValue = info.DefaultValue;
            if (parameterKind(parameter.Type) == ParameterKind::List) {
                parameter.PossibleValueList.erase(
                    std::remove_if(parameter.PossibleValueList.begin(), parameter.PossibleValueList.end(),
                                   [&](const PossibleValue &value) { return !info.ValueList.contains(value.Value); }),
                    parameter.PossibleValueList.end());
                parameter.Enable = parameter.Enable && parameter.PossibleValueList.size() > 1;
            }
            parameter.DefaultValueBackup = takenValue(parameter, {}, values, context); // or what stands in for it
            parameter.CurrentValue = takenValue(parameter, entered, values, context);
            parameter.CurrentValue = nearestInRange(parameter);
            parameter.ManualModifyFlag = entered.contains(parameter.Name);
            values.set(parameter.Name, parameter.CurrentValue);
            built.append(parameter);
        }
        const bool settled =
            std::equal(built.begin(), built.end(), request.RefParameterfoList.begin(), request.RefParameterfoList.end(),
                       [](const RefParameter &a, const RefParameter &b) {
                           return a.Name == b.Name && a.CurrentValue == b.CurrentValue;
                       });
        request.RefParameterfoList = built;
        if (settled)
            break;
    }
}

DesignAnswer DmaParameters::canTake(const DMARequest &request, const QString &name, const QString &value,
                                    const DmaParameterContext &context) const
{
    const RefParameter *parameter = find(request.RefParameterfoList, name);
    if (!parameter || !parameter->Visible)
        return {DesignReason::UnknownParameter, {request.requestName, name}};
    if (!parameter->Enable && value != parameter->CurrentValue)
        return {DesignReason::ParameterClosed, {name}};
    if (!DisplayText_to_Value(*parameter, value))
        return {DesignReason::NotANumber, {name, value}};
    if (const DesignAnswer checked = checkedValue(*parameter, value); !checked)
        return checked;
    if (parameterKind(parameter->Type) != ParameterKind::List)
        return {};
    const QList<PossibleValue> offered = offeredValues(request, *parameter, context);
    const bool listed =
        std::any_of(offered.begin(), offered.end(), [&](const PossibleValue &one) { return one.Value == value; });
    return listed ? DesignAnswer{} : DesignAnswer{DesignReason::ValueNotOffered, {name, value}};
}

QList<PossibleValue> DmaParameters::offeredValues(const DMARequest &request, const RefParameter &parameter,
                                                  const DmaParameterContext &context) const
{
    const ParameterValues values = UpdateDMAMuxConditionInNameAndValueList(request, context);
    QList<PossibleValue> offered;
    for (const PossibleValue &value : parameter.PossibleValueList) {
        if (isOffered(parameter, value, values, context))
            offered.append(value);
    }
    return offered;
}

bool DmaParameters::isGood(const DMARequest &request, const RefParameter &parameter,
                           const DmaParameterContext &context) const
{
    if (parameterKind(parameter.Type) != ParameterKind::List)
        return RefParameter_ValueCheck(parameter);
    const QList<PossibleValue> offered = offeredValues(request, parameter, context);
    return std::any_of(offered.begin(), offered.end(), [&](const PossibleValue &value) {
        return value.Value == parameter.CurrentValue && !value.ErrorFlag;
    });
}

QStringList DmaParameters::interruptTokens(const DMARequest &request, const DmaParameterContext &context) const
{
    QStringList tokens;
    for (const RefParameter &parameter : request.RefParameterfoList) {
        for (const PossibleValue &value : parameter.PossibleValueList) {
            if (value.Value == parameter.CurrentValue && !value.Semaphore.isEmpty())
                tokens.append(filled(value.Semaphore, context));
        }
    }
    return tokens;
}

} // namespace ChipLoom
