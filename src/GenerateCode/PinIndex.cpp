#include "GenerateCode/PinIndex.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace ChipLoom {

namespace {

const QString None;

// A pin can have several names and a note in brackets behind them, "PD0/HEXT_IN [x]"; signals that share a pin are
// joined, "A;B".
constexpr char16_t PinSeparator = u'/';
constexpr char16_t SignalSeparator = u';';

/// `use(piece)` for what a name consists of.
template <typename Use> void forEachPiece(QStringView name, char16_t separator, Use use)
{
    const bool isOne = std::all_of(name.begin(), name.end(),
                                   [&](QChar c) { return c != separator && c.unicode() > ' ' && c.unicode() < 0x7f; });
    if (isOne) {
        use(name);
        return;
    }
    QStringView rest = name;
    if (separator == PinSeparator) {
        rest = rest.trimmed();
        rest = rest.left(std::find(rest.begin(), rest.end(), QLatin1Char(' ')) - rest.begin());
    }
    for (;;) {
        const auto end = std::find(rest.begin(), rest.end(), QChar(separator));
        use(rest.left(end - rest.begin()).trimmed());
        if (end == rest.end())
            return;
        rest = rest.mid(end - rest.begin() + 1);
    }
}

/// Those of all signals that were asked for.
struct SignalNames
{
    std::mutex mutex; ///< of what follows
    NumberedNames names;
};

SignalNames &signalNames()
{
    static SignalNames all;
    return all;
}

/// By number: the first of the settings, alone or joined with others; null where there is none.
std::vector<const SignalsGPIOSetting *> byNumber(const QList<SignalsGPIOSetting *> &settings)
{
    SignalNames &known = signalNames();
    const std::lock_guard lock(known.mutex);
    std::vector<const SignalsGPIOSetting *> bySignal(known.names.size());
    for (const SignalsGPIOSetting *setting : settings) {
        forEachPiece(setting->signalName, SignalSeparator, [&](QStringView name) {
            const int number = known.names.find(name);
            if (number >= 0 && !bySignal[static_cast<size_t>(number)])
                bySignal[static_cast<size_t>(number)] = setting;
        });
    }
    return bySignal;
}

QString nameOf(SignalNumber signal)
{
    SignalNames &known = signalNames();
    const std::lock_guard lock(known.mutex);
    return known.names.name(static_cast<int>(signal));
}

} // namespace

SignalNumber numberOfSignal(const QString &name)
{
    SignalNames &known = signalNames();
    const std::lock_guard lock(known.mutex);
    return SignalNumber(known.names.add(name));
}

SignalNumbers numbersOfSignals(const QStringList &names)
{
    SignalNumbers numbers;
    std::transform(names.begin(), names.end(), std::back_inserter(numbers), numberOfSignal);
    return numbers;
}

// ---- Pins ----

void PinNames::append(QStringView name)
{
    forEachPiece(name, PinSeparator, [this](QStringView piece) { m_first.insert(piece, m_count); });
    ++m_count;
}

int PinNames::find(QStringView name) const
{
    int first = m_first.find(name); // most are one piece
    if (first >= 0)
        return first;
    forEachPiece(name, PinSeparator, [&](QStringView piece) {
        const int found = m_first.find(piece);
        if (found >= 0 && (first < 0 || found < first))
            first = found;
    });
    return first;
}

PinDefines::PinDefines(const QList<GPIO_Pin_Define_Info *> &defines)
{
    m_names.reserve(defines.size());
    m_pins.reserve(static_cast<size_t>(defines.size()));
    for (const GPIO_Pin_Define_Info *define : defines) {
        m_names.append(define->Name);
        Pin &pin = m_pins.emplace_back(Pin{*define});
        for (const GPIO_PinSignal_Mux_Info &mux : define->pinSignalMuxInfoList)
            pin.muxes.push_back({numberOfSignal(mux.SignalName), mux.GPIO_Mux_x});
    }
}

std::shared_ptr<const PinDefines> PinDefines::of(const QList<GPIO_Pin_Define_Info *> &defines,
                                                 const std::shared_ptr<const void> &owner)
{
    static std::mutex mutex;
    static std::weak_ptr<const void> lastOwner;
    static std::shared_ptr<const PinDefines> last;
    if (!owner)
        return std::make_shared<const PinDefines>(defines);
    const std::lock_guard lock(mutex);
    if (lastOwner.lock() != owner) {
        last = std::make_shared<const PinDefines>(defines);
        lastOwner = owner;
    }
    return last;
}

const QString &PinDefines::Pin::muxOf(SignalNumber signal) const
{
    for (const Mux &mux : muxes) {
        if (mux.signal == signal)
            return mux.value;
    }
    return None;
}

const PinDefines::Pin *PinDefines::find(QStringView pin) const
{
    const int at = m_names.find(pin);
    return at < 0 ? nullptr : &m_pins[static_cast<size_t>(at)];
}

// ---- Settings ----

PinIndex::PinIndex(std::shared_ptr<const PinDefines> defines, QList<SignalsGPIOSetting *> settings)
    : m_defines(std::move(defines)), m_settings(std::move(settings)), m_bySignal(byNumber(m_settings))
{
    const bool anyLabel = std::any_of(m_settings.cbegin(), m_settings.cend(), [](const SignalsGPIOSetting *setting) {
        return !setting->signalUserLabel.isEmpty();
    });
    if (!anyLabel)
        return;
    m_pins.reserve(m_settings.size());
    for (const SignalsGPIOSetting *setting : qAsConst(m_settings))
        m_pins.append(setting->signalInPinName);
}

// A number that was given later is of no signal that was looked for here before.
const SignalsGPIOSetting *PinIndex::settingOf(SignalNumber signal) const
{
    const auto at = static_cast<size_t>(signal);
    return at < m_bySignal.size() ? m_bySignal[at] : search(nameOf(signal));
}

const SignalsGPIOSetting *PinIndex::settingOf(const QString &signal) const
{
    return signal.contains(QLatin1Char(';')) ? search(signal) : settingOf(numberOfSignal(signal.trimmed()));
}

const SignalsGPIOSetting *PinIndex::search(const QString &signal) const
{
    const auto found = std::find_if(m_settings.begin(), m_settings.end(), [&](const SignalsGPIOSetting *setting) {
        return IsSignalSame(setting->signalName, signal);
    });
    return found == m_settings.end() ? nullptr : *found;
}

const QString &PinIndex::labelOf(QStringView pin) const
{
    const int at = m_pins.find(pin);
    const SignalsGPIOSetting *setting = at < 0 ? nullptr : m_settings.at(at);
    return setting && !setting->signalUserLabel.isEmpty() ? setting->signalUserLabel_EXT : None;
}

} // namespace ChipLoom
