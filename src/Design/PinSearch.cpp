#include "Design/PinSearch.h"

namespace ChipLoom {

PinSearch::PinSearch(const DevicePinInfo &info, QObject *parent) : QObject(parent), m_info(info) {}

void PinSearch::QuerySignalName_Accurate(const QString &name)
{
    QSet<int> hits;
    for (const SignalPlace &place : m_info.placesOf(name)) {
        if (m_info.pin(place.pin).validFlag)
            hits.insert(m_info.pin(place.pin).pinNumber);
    }
    setHits(hits);
}

void PinSearch::QuerySignalName_Fuzzy(const QString &text)
{
    const QString wanted = text.trimmed().toUpper();
    QSet<int> hits;
    for (const MCUPinsBaseInfo &pin : m_info.m_deviceBaseInfoList) {
        const auto matches = [&wanted](const PinSignalStruct &signal) {
            return signal.signalName.toUpper().contains(wanted);
        };
        if (!wanted.isEmpty() && pin.validFlag &&
            (pin.pinName.toUpper().contains(wanted) ||
             std::any_of(pin.pinSignalsList.begin(), pin.pinSignalsList.end(), matches)))
            hits.insert(pin.pinNumber);
    }
    setHits(hits);
}

void PinSearch::QuerySignalName(const QString &text)
{
    if (m_info.placesOf(text).isEmpty())
        QuerySignalName_Fuzzy(text);
    else
        QuerySignalName_Accurate(text);
}

void PinSearch::ReceiveGPIOQuerySignals(const QString &pinName, const QString &signal)
{
    QSet<int> hits;
    const int pin = m_info.validPinNamed(pinName);
    if (pin >= 0 && !m_info.placeOnPin(signal, pin).isNull())
        hits.insert(m_info.pin(pin).pinNumber);
    setHits(hits);
}

void PinSearch::CancelQuerySignalNameAllPin()
{
    setHits({});
}

void PinSearch::setHits(QSet<int> hits)
{
    if (hits == m_hits)
        return;
    m_hits = std::move(hits);
    emit hitsChanged();
}

void PinSearch::ReceiveQueryIPSignal(const QString &ipName, const QStringList &signalNames)
{
    if (ipName == m_lastQueryIPName)
        return;
    m_lastQueryIPName = ipName;
    m_markedSignals = signalNames;
    emit marksChanged();
}

QSet<int> PinSearch::markedPositions() const
{
    QSet<int> positions;
    for (const QString &signal : m_markedSignals) {
        for (const SignalPlace &place : m_info.placesOf(signal)) {
            if (m_info.pin(place.pin).validFlag)
                positions.insert(m_info.pin(place.pin).pinNumber);
        }
    }
    return positions;
}

QStringList PinSearch::signalNames() const
{
    QStringList names;
    for (const QString &name : m_info.GetAllSignalsName()) {
        for (const SignalPlace &place : m_info.placesOf(name)) {
            if (m_info.pin(place.pin).validFlag) {
                names.append(name);
                break;
            }
        }
    }
    return names;
}

} // namespace ChipLoom
