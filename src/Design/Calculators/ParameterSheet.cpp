#include "Design/Calculators/ParameterSheet.h"

#include "Design/ParameterChecks.h"

#include <array>
#include <cmath>

namespace ChipLoom {

namespace {

double unitFactor(const QString &unit)
{
    struct Unit
    {
        const char *name;
        double hz;
    };
    static constexpr std::array<Unit, 7> Units{
        {{"Hz", 1}, {"kHz", 1e3}, {"MHz", 1e6}, {"bit/s", 1}, {"kbit/s", 1e3}, {"sps", 1}, {"ksps", 1e3}}};
    for (const Unit &known : Units) {
        if (unit == QLatin1String(known.name))
            return known.hz;
    }
    return 1;
}

} // namespace

QString shortNumber(double value, int decimals)
{
    QString text = QString::number(value, 'f', decimals);
    if (text.contains(QLatin1Char('.'))) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
    }
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

ParameterReader::ParameterReader(QString series, QString instance, const QList<RefParameter> &list,
                                 const PeripheralClock &clock)
    : m_series(std::move(series)), m_instance(std::move(instance)), m_parameters(list), m_clock(clock)
{
}

double ParameterReader::clockHz(const QString &instance) const
{
    return m_clock ? m_clock(instance) * 1e6 : 0;
}

const RefParameter *ParameterReader::parameter(const QString &name) const
{
    for (const RefParameter &entry : m_parameters) {
        if (entry.Name == name)
            return &entry;
    }
    return nullptr;
}

QString ParameterReader::text(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    return entry ? entry->CurrentValue : QString();
}

bool ParameterReader::isOn(const QString &name) const
{
    return text(name) == QLatin1String("TRUE");
}

std::optional<double> ParameterReader::number(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    if (!entry)
        return std::nullopt;
    if (const std::optional<quint64> whole = unsignedOf(entry->CurrentValue))
        return double(*whole);
    bool isNumber = false;
    const double value = entry->CurrentValue.toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<int> ParameterReader::tokenNumber(const QString &name) const
{
    const QString token = text(name);
    int begin = token.size();
    while (begin > 0 && token.at(begin - 1).isDigit())
        --begin;
    bool isNumber = false;
    const int value = token.mid(begin).toInt(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

std::optional<double> ParameterReader::frequency(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    const std::optional<double> value = number(name);
    return entry && value ? std::optional(*value * unitFactor(entry->Unit)) : std::nullopt;
}

ParameterSheet::ParameterSheet(QString series, QString instance, QList<RefParameter> &list,
                               const PeripheralClock &clock, ParameterWarnings &warnings)
    : ParameterReader(std::move(series), std::move(instance), list, clock), m_list(list), m_warnings(warnings)
{
}

RefParameter *ParameterSheet::find(const QString &name)
{
    for (RefParameter &entry : m_list) {
        if (entry.Name == name)
            return &entry;
    }
    return nullptr;
}

void ParameterSheet::set(const QString &name, const QString &value)
{
    if (RefParameter *entry = find(name))
        entry->CurrentValue = value;
}

void ParameterSheet::setNumber(const QString &name, double value, int decimals)
{
    set(name, shortNumber(value, decimals));
}

void ParameterSheet::setFrequency(const QString &name, double hz)
{
    if (RefParameter *entry = find(name))
        entry->CurrentValue = shortNumber(hz / unitFactor(entry->Unit), 3);
}

void ParameterSheet::setMinimum(const QString &name, const QString &bound)
{
    if (RefParameter *entry = find(name))
        entry->MinValue = bound;
}

void ParameterSheet::setMaximum(const QString &name, const QString &bound)
{
    if (RefParameter *entry = find(name))
        entry->MaxValue = bound;
}

void ParameterSheet::offer(const QString &name, const QList<PossibleValue> &values)
{
    if (RefParameter *entry = find(name))
        entry->PossibleValueList = values;
}

void ParameterSheet::hide(const QString &name)
{
    if (RefParameter *entry = find(name))
        entry->Visible = false;
}

void ParameterSheet::warn(const QString &name, DesignReason reason, const QStringList &arguments)
{
    m_warnings.insert(name, {reason, QStringList{name} + arguments});
}

} // namespace ChipLoom
