#pragma once

#include "GenerateCode/NameTable.h"
#include "Model/ShareParameter.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace ChipLoom {

/// A signal of some device by a number that its name has for the whole run of the program. What is kept from one
/// generation to the next asks by it, without looking into texts.
enum class SignalNumber : int {};
using SignalNumbers = std::vector<SignalNumber>;

/// In any thread.
SignalNumber numberOfSignal(const QString &name);
SignalNumbers numbersOfSignals(const QStringList &names);

/// Finds the first of some names of pins that is the same as another, as `IsPinNameSame` has it. The names outlive it.
class PinNames
{
public:
    void reserve(int names) { m_first.reserve(names); }
    /// The number of the name is the count of those before it.
    void append(QStringView name);
    /// The number of the first name that is the same, or -1.
    int find(QStringView name) const;

private:
    int m_count = 0;
    NameTable m_first; ///< by what a name consists of
};

/// The defines of a device's pins by the pin. The defines outlive it.
class PinDefines
{
public:
    explicit PinDefines(const QList<GPIO_Pin_Define_Info *> &defines);
    /// One for all generations of a device, as long as somebody owns the same defines; without an owner always a new
    /// one.
    static std::shared_ptr<const PinDefines> of(const QList<GPIO_Pin_Define_Info *> &defines,
                                                const std::shared_ptr<const void> &owner);

    struct Pin
    {
        /// A signal that the multiplexer puts on the pin.
        struct Mux
        {
            SignalNumber signal;
            QString value;
        };
        const GPIO_Pin_Define_Info &define;
        std::vector<Mux> muxes = {};

        /// Empty where the pin has no such signal.
        const QString &muxOf(SignalNumber signal) const;
    };
    /// Null for what is no pin.
    const Pin *find(QStringView pin) const;

private:
    PinNames m_names;
    std::vector<Pin> m_pins;
};

/// What the defines made of a label have behind it.
inline const QLatin1String PinOfLabel("_PIN");
inline const QLatin1String PortOfLabel("_GPIO_PORT");

/// What stands on the pins of a design, for all generators of one generation. The settings outlive it.
class PinIndex
{
public:
    PinIndex(std::shared_ptr<const PinDefines> defines, QList<SignalsGPIOSetting *> settings);

    const PinDefines &defines() const { return *m_defines; }
    /// The first setting of a signal, alone or joined with others; null where it stands on no pin.
    const SignalsGPIOSetting *settingOf(SignalNumber signal) const;
    const SignalsGPIOSetting *settingOf(const QString &signal) const;
    /// What the first setting on a pin calls it, or empty.
    const QString &labelOf(QStringView pin) const;

private:
    const SignalsGPIOSetting *search(const QString &signal) const;

    std::shared_ptr<const PinDefines> m_defines;
    QList<SignalsGPIOSetting *> m_settings;
    std::vector<const SignalsGPIOSetting *> m_bySignal; ///< by the numbers that there were at first
    PinNames m_pins;                                    ///< of the settings, where any has a label
};

} // namespace ChipLoom
