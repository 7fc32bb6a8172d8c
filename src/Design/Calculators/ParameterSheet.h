#pragma once

#include "Design/DesignReason.h"
#include "Model/ShareParameter.h"

#include <QHash>

#include <functional>
#include <optional>

namespace ChipLoom {

/// Remarks on values that can be had but are worth a look, by the name of the parameter.
using ParameterWarnings = QHash<QString, DesignAnswer>;

/// Clock of an instance, or of the crystal by the name "HEXT", in MHz; 0 if there is none.
using PeripheralClock = std::function<double(const QString &instance)>;

/// The parameters of one peripheral by name, with its clock. What is not in the set reads as nothing.
class ParameterReader
{
public:
    ParameterReader(QString series, QString instance, const QList<RefParameter> &list, const PeripheralClock &clock);

    const QString &series() const { return m_series; }
    const QString &instance() const { return m_instance; }
    const QList<RefParameter> &list() const { return m_parameters; }
    /// The clock of the instance itself, in Hz.
    double clockHz() const { return clockHz(m_instance); }
    /// That of another instance; 0 if it has none.
    double clockHz(const QString &instance) const;
    /// That of HEXT, in Hz; 0 where it is off.
    double crystalHz() const { return clockHz(QStringLiteral("HEXT")); }

    bool has(const QString &name) const { return parameter(name) != nullptr; }
    /// Null if the parameter is not in the set.
    const RefParameter *parameter(const QString &name) const;
    /// Empty if the parameter is not in the set.
    QString text(const QString &name) const;
    bool isOn(const QString &name) const;
    /// Decimal or, behind "0x", hexadecimal.
    std::optional<double> number(const QString &name) const;
    /// The number that ends a driver token, as 8 in "SPI_MCLK_DIV_8"; nothing if none does.
    std::optional<int> tokenNumber(const QString &name) const;
    /// A frequency that stands in the unit that the parameter declares, in Hz.
    std::optional<double> frequency(const QString &name) const;

private:
    QString m_series;
    QString m_instance;
    const QList<RefParameter> &m_parameters;
    const PeripheralClock &m_clock;
};

/// The parameters as a calculator sees them: inputs by name, results by name. What is not in the set is not written.
class ParameterSheet : public ParameterReader
{
public:
    ParameterSheet(QString series, QString instance, QList<RefParameter> &list, const PeripheralClock &clock,
                   ParameterWarnings &warnings);

    void set(const QString &name, const QString &value);
    /// A number with at most `decimals` digits behind the point.
    void setNumber(const QString &name, double value, int decimals);
    /// A frequency or rate in the unit that the parameter declares: Hz, kHz, MHz, bit/s, kbit/s, ksps.
    void setFrequency(const QString &name, double hz);
    void setMinimum(const QString &name, const QString &bound);
    void setMaximum(const QString &name, const QString &bound);
    void offer(const QString &name, const QList<PossibleValue> &values);

    /// The result does not stand for the present inputs; it is not shown.
    void hide(const QString &name);

    void warn(const QString &name, DesignReason reason, const QStringList &arguments);

private:
    RefParameter *find(const QString &name);

    QList<RefParameter> &m_list;
    ParameterWarnings &m_warnings;
};

/// A number with at most `decimals` digits behind the point and no zeros at its end.
QString shortNumber(double value, int decimals);

} // namespace ChipLoom
