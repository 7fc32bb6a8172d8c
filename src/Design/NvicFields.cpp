// The fields of a vector that the user sets: what they hold, whether they are open, and setting them.

#include "Design/NVIC_Configuration.h"
#include "Design/VectorRules.h"

#include <array>

namespace ChipLoom {

namespace {

using Field = NVIC_Configuration::Field;

const QString On = QStringLiteral("TRUE");
const QString Off = QStringLiteral("FALSE");

struct FieldRow
{
    Field field;
    const char *name;
};

constexpr std::array<FieldRow, 5> Fields{{
    {Field::Enabled, "Enabled"},
    {Field::GenerateHandler, "GenerateHandler"},
    {Field::PreemptionPriority, "PreemptionPriority"},
    {Field::SubPriority, "SubPriority"},
    {Field::RTOSFunction, "RTOSFunction"},
}};

} // namespace

QString NVIC_Configuration::fieldName(Field field)
{
    return QLatin1String(Fields.at(size_t(field)).name);
}

std::optional<NVIC_Configuration::Field> NVIC_Configuration::fieldNamed(const QString &name)
{
    for (const FieldRow &row : Fields) {
        if (name == QLatin1String(row.name))
            return row.field;
    }
    return {};
}

QString NVIC_Configuration::fieldValue(const MCUNVICSetting &vector, Field field)
{
    switch (field) {
    case Field::Enabled:
        return vector.enabledFlag ? On : Off;
    case Field::GenerateHandler:
        return vector.IRQHandler_Generate_enabledFlag ? On : Off;
    case Field::PreemptionPriority:
        return QString::number(vector.preemptionPriority_Value);
    case Field::SubPriority:
        return QString::number(vector.subPriority_Value);
    case Field::RTOSFunction:
        break;
    }
    return vector.FREERTOS_Func_enabledFlag ? On : Off;
}

DesignAnswer NVIC_Configuration::fieldAnswer(const MCUNVICSetting &vector, Field field) const
{
    if (!vector.canBeSet)
        return {DesignReason::VectorClosed, {vector.ValueName}};
    const Source &source = m_sources[indexOf(vector.ValueName)];
    const DesignAnswer fixed{DesignReason::VectorFieldFixed, {vector.ValueName, fieldName(field)}};
    switch (field) {
    case Field::Enabled:
        if (isForcedOn(source))
            return {DesignReason::VectorHeldOn, {vector.ValueName}};
        return vector.enabled_CanBeSet ? DesignAnswer() : fixed;
    case Field::GenerateHandler:
        return vector.IRQHandler_Generate_canBeSet ? DesignAnswer() : fixed;
    case Field::PreemptionPriority:
        return vector.preemptionPriority_CanBeSet ? DesignAnswer() : fixed;
    case Field::SubPriority:
        return vector.subPriority_CanBeSet ? DesignAnswer() : fixed;
    case Field::RTOSFunction:
        break;
    }
    return vector.FREERTOS_Func_canBeSet ? DesignAnswer() : fixed;
}

namespace {

DesignAnswer numberAnswer(const MCUNVICSetting &vector, Field field, const QString &text, int minimum, int maximum,
                          int &number)
{
    const QString place = vector.ValueName + QLatin1Char('/') + NVIC_Configuration::fieldName(field);
    bool isNumber = false;
    number = text.trimmed().toInt(&isNumber);
    if (!isNumber)
        return {DesignReason::NotANumber, {place, text}};
    if (number < minimum)
        return {DesignReason::BelowMinimum, {place, text, QString::number(minimum)}};
    if (number > maximum)
        return {DesignReason::AboveMaximum, {place, text, QString::number(maximum)}};
    return {};
}

} // namespace

DesignAnswer NVIC_Configuration::setField(const QString &name, Field field, const QString &value)
{
    const int index = indexOf(name);
    if (index < 0)
        return {DesignReason::UnknownVector, {name}};
    const MCUNVICSetting &record = m_records[index];
    if (fieldValue(record, field) == value)
        return {};
    const DesignAnswer open = fieldAnswer(record, field);
    if (!open)
        return open;
    Source &source = m_sources[index];
    if (field == Field::PreemptionPriority || field == Field::SubPriority) {
        const bool preemption = field == Field::PreemptionPriority;
        int number = 0;
        const DesignAnswer answer = numberAnswer(
            record, field, value, preemption ? record.preemptionPriority_MinValue : record.subPriority_MinValue,
            preemption ? record.preemptionPriority_MaxValue : record.subPriority_MaxValue, number);
        if (!answer)
            return answer;
        (preemption ? source.preemption : source.sub) = number;
    } else {
        if (value != On && value != Off)
            return {DesignReason::ValueNotInList, {record.ValueName + QLatin1Char('/') + fieldName(field), value}};
        const bool on = value == On;
        if (field == Field::Enabled) {
            source.enabled = on;
        } else if (field == Field::GenerateHandler) {
            source.generateHandler = on;
        } else if (rtosRule(record.NVICName) == RtosRule::OnRequest) {
            source.rtosFunction = on;
        } else {
            source.rtosManualCancel = !on;
        }
    }
    update();
    return {};
}

} // namespace ChipLoom
