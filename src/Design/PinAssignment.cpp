#include "Design/PinAssignment.h"

#include "Model/SeriesHelpers.h"

#include <QLoggingCategory>

#include <algorithm>

namespace ChipLoom {

Q_LOGGING_CATEGORY(pinLog, "chiploom.pins")

PinAssignment::PinAssignment(QObject *parent) : QObject(parent), m_search(m_info) {}

void PinAssignment::load(const QString &series, DevicePinInfo info)
{
    clear();
    m_info = std::move(info);
    // Where pins are remapped, EVENTOUT is one output of the chip, and the pins of the crystal are remapped at once.
    const SeriesTraits *traits = seriesTraits(series);
    m_eventoutOnOnePin = traits && traits->pinsRemapped;
    if (m_eventoutOnOnePin)
        m_info.joinCrystalPins();
}

void PinAssignment::clear()
{
    m_search.CancelQuerySignalNameAllPin();
    m_search.ReceiveQueryIPSignal({}, {});
    m_info = DevicePinInfo();
    m_eventoutOnOnePin = false;
    m_pinRemapFlag = false;
    m_pinRemapFlag1 = false;
    m_configuredGroups.clear();
    m_markedPlaces.clear();
    m_undo.clear();
    m_changedPositions.clear();
    m_notices.clear();
}

// ---- The pin table ----

PinSignalStruct &PinAssignment::edit(SignalPlace place)
{
    PinSignalStruct &state = m_info.m_deviceBaseInfoList[place.pin].pinSignalsList[place.signal];
    m_undo.push_back({place, state});
    return state;
}

void PinAssignment::rollBack(size_t mark)
{
    while (m_undo.size() > mark) {
        const Undo &undo = m_undo.back();
        m_info.m_deviceBaseInfoList[undo.place.pin].pinSignalsList[undo.place.signal] = undo.before;
        m_undo.pop_back();
    }
}

void PinAssignment::clearSignal(SignalPlace place)
{
    PinSignalStruct &state = edit(place);
    state.configStatus = Not_Config;
    if (!isPlainFunction(state.signalName))
        state.signalIOMode.clear();
    HandleSameIPSignalMultiUseInSamePin(place.pin);
}

/// Puts a signal on a pin and takes off the pin what cannot stay beside it.
void PinAssignment::SetSignalStatusInPin(SignalPlace place, PINCONFIG_TYPE status, const QString &ioMode)
{
    PinSignalStruct &state = edit(place);
    state.configStatus = status;
    if (!isPlainFunction(state.signalName))
        state.signalIOMode = ioMode;
    if (status != Not_Config)
        clearOthersOfPosition(place);
    HandleSameIPSignalMultiUseInSamePin(place.pin);
}

void PinAssignment::clearOthersOfPosition(SignalPlace place)
{
    const QString signal = m_info.signal(place).signalName;
    const bool multiUse = m_info.signal(place).pinSignalMultiUseFlag;
    for (int pin : m_info.pinsAtPosition(m_info.pin(place.pin).pinNumber)) {
        for (int s = 0; s < m_info.pin(pin).pinSignalsList.size(); ++s) {
            const PinSignalStruct &present = m_info.signal({pin, s});
            if (present.configStatus == Not_Config || SignalPlace{pin, s} == place)
                continue;
            if (pin == place.pin &&
                (isSameEmacFunction(signal, present.signalName) || (multiUse && present.pinSignalMultiUseFlag)))
                continue;
            clearSignal({pin, s});
        }
    }
}

/// Multi-use holds between peripherals only: beside a configured multi-use signal, its own peripheral's other signals
/// on the pin lose the flag.
void PinAssignment::HandleSameIPSignalMultiUseInSamePin(int pin)
{
    const int count = int(m_info.pin(pin).pinSignalsList.size());
    QVector<bool> flags(count);
    for (int s = 0; s < count; ++s)
        flags[s] = m_info.signal({pin, s}).pinSignalMultiUseFlagBackup;
    for (int s = 0; s < count; ++s) {
        const PinSignalStruct &configured = m_info.signal({pin, s});
        if (configured.configStatus == Not_Config || !flags[s])
            continue;
        for (int other = 0; other < count; ++other) {
            const QString &name = m_info.signal({pin, other}).signalName;
            if (name != configured.signalName && isOfOnePeripheral(name, configured.signalName))
                flags[other] = false;
        }
    }
    for (int s = 0; s < count; ++s) {
        if (m_info.signal({pin, s}).pinSignalMultiUseFlag != flags[s])
            edit({pin, s}).pinSignalMultiUseFlag = flags[s];
    }
}

/// What follows from the placements: groups in which nothing stands any more are out of use, and the marks of the
/// others are up to date.
void PinAssignment::UpdateMCUPinsConfigDisplayInfo()
{
    const auto unused = [this](int group) { return rules().HaveConfigedSignalInGroup(group).isEmpty(); };
    m_configuredGroups.erase(std::remove_if(m_configuredGroups.begin(), m_configuredGroups.end(), unused),
                             m_configuredGroups.end());
    markHiddenSignals();
}

/// Completes an operation and forgets how to undo it. Gives the signals whose state changed somewhere.
QStringList PinAssignment::finishOperation()
{
    UpdateMCUPinsConfigDisplayInfo();
    QStringList changed;
    QSet<QPair<int, int>> seen;
    for (const Undo &undo : m_undo) {
        const QPair<int, int> key(undo.place.pin, undo.place.signal);
        if (seen.contains(key))
            continue;
        seen.insert(key);
        const PinSignalStruct &now = m_info.signal(undo.place);
        const bool statusChanged = now.configStatus != undo.before.configStatus;
        if (statusChanged && !changed.contains(now.signalName))
            changed.append(now.signalName);
        if (statusChanged || now.signalUserLabel != undo.before.signalUserLabel ||
            now.signalIOMode != undo.before.signalIOMode)
            m_changedPositions.insert(m_info.pin(undo.place.pin).pinNumber);
    }
    m_undo.clear();
    return changed;
}

void PinAssignment::tell(const Notice &notice)
{
    constexpr int maxRounds = 1000; // far beyond what converging peripherals need
    m_notices.push_back(notice);
    if (m_telling)
        return;
    m_telling = true;
    for (int round = 0; !m_notices.empty(); ++round) {
        if (round == maxRounds) {
            qCWarning(pinLog, "peripherals keep asking each other for pins; stopped after %d rounds", maxRounds);
            m_notices.clear();
            break;
        }
        const Notice next = m_notices.front();
        m_notices.pop_front();
        emit SendAllConfigedSignals(&m_info, next.flag, next.ipName, next.changedSignals);
    }
    m_telling = false;
    tellViews();
}

void PinAssignment::tellViews()
{
    if (m_telling || m_changedPositions.isEmpty())
        return;
    QList<int> positions = m_changedPositions.values();
    m_changedPositions.clear();
    std::sort(positions.begin(), positions.end());
    emit pinsChanged(positions);
}

// ---- By peripherals ----

void PinAssignment::ReciveIPPinSignals(const QList<ModeSignal> &oldList, const QList<ModeSignal> &newList, bool flag,
                                       const QString &ipName)
{
    m_search.CancelQuerySignalNameAllPin();
    placeRequest(oldList, newList, ipName);
    finishOperation();
    tell({flag, ipName, {}});
}

void PinAssignment::ReciveClearIPPinSignals(const QList<ModeSignal> &list, bool flag, const QString &ipName)
{
    ReciveIPPinSignals(list, {}, flag, ipName);
}

QStringList PinAssignment::unplacedByRequest(const QList<ModeSignal> &oldList, const QList<ModeSignal> &newList,
                                             const QString &ipName)
{
    const QVector<int> groups = m_configuredGroups;
    const QVector<SignalPlace> marks = m_markedPlaces;
    placeRequest(oldList, newList, ipName);
    QStringList unplaced;
    for (const ModeSignal &signal : newList) {
        const SignalPlace place = rules().configuredPlace(signal.signalName);
        if (!signal.Virtual && (place.isNull() || !(m_info.signal(place).configStatus & IP_Config)))
            unplaced.append(signal.signalName);
    }
    rollBack(0);
    m_configuredGroups = groups;
    m_markedPlaces = marks;
    return unplaced;
}

void PinAssignment::placeRequest(const QList<ModeSignal> &oldList, const QList<ModeSignal> &newList,
                                 const QString &ipName)
{
    for (const ModeSignal &old : oldList) {
        const auto isWanted = [&old](const ModeSignal &wanted) { return wanted.signalName == old.signalName; };
        if (std::none_of(newList.begin(), newList.end(), isWanted))
            withdraw(old.signalName);
    }
    IPSignalsConfig(newList, ipName);
}

void PinAssignment::withdraw(const QString &signal)
{
    for (const SignalPlace &place : m_info.placesOf(signal)) {
        if (!m_info.pin(place.pin).validFlag)
            continue;
        const PINCONFIG_TYPE status = m_info.signal(place).configStatus;
        if (status == IP_Config) {
            clearSignal(place);
        } else if (status == Manual_IP_Config) {
            PinSignalStruct &state = edit(place);
            state.configStatus = Manual_Config;
            if (!isPlainFunction(signal))
                state.signalIOMode.clear();
        }
    }
}

void PinAssignment::IPSignalsConfig(const QList<ModeSignal> &list, const QString &ipName)
{
    QList<ModeSignal> singles;
    QList<ModeSignal> groupSignals;
    for (const ModeSignal &signal : list) {
        if (!signal.Virtual)
            (rules().IsSignalINGroupList(signal.signalName) ? groupSignals : singles).append(signal);
    }
    QVector<bool> configFinished(singles.size());
    for (int i = 0; i < singles.size(); ++i) {
        const ModeSignal &asked = singles.at(i);
        const SignalPlace place = rules().configuredPlace(asked.signalName);
        if (place.isNull())
            continue;
        configFinished[i] = true;
        if (m_info.signal(place).configStatus == Manual_Config &&
            !rules().hiddenByRemap(asked.signalName, asked.signalIOMode, place.pin))
            continue; // stays a choice without effect until the remap group goes
        PinSignalStruct &state = edit(place);
        if (state.configStatus == Manual_Config)
            state.configStatus = Manual_IP_Config;
        if (!isPlainFunction(state.signalName))
            state.signalIOMode = asked.signalIOMode;
    }
    for (int i = 0; i < singles.size(); ++i) {
        if (!configFinished.at(i))
            placeSingle(singles, i);
    }
    if (!groupSignals.isEmpty())
        placeInGroups(groupSignals, ipName);
}

/// Places a signal on the first pin with room for it, but leaves a pin to a later signal of the request if this one
/// can also stand further on.
void PinAssignment::placeSingle(const QList<ModeSignal> &singles, int index)
{
    const ModeSignal &signal = singles.at(index);
    for (const SignalPlace &place : m_info.placesOf(signal.signalName)) {
        if (!m_info.pin(place.pin).validFlag ||
            !rules().SignalCanbeUseInPinAccordingIOMode(signal.signalName, signal.signalIOMode, place.pin))
            continue;
        if (FollowUpSignalInThisPin(singles, index, place.pin) &&
            HaveCanbeUseSignalInFollowupPin(place.pin + 1, signal.signalName))
            continue;
        const size_t mark = m_undo.size();
        SetSignalStatusInPin(place, IP_Config, signal.signalIOMode);
        QStringList moved{signal.signalName};
        if (moveBoundSignals(signal.signalName, place.pin, moved))
            return;
        rollBack(mark);
    }
}

bool PinAssignment::FollowUpSignalInThisPin(const QList<ModeSignal> &singles, int index, int pin) const
{
    for (int later = index + 1; later < singles.size(); ++later) {
        if (!m_info.placeOnPin(singles.at(later).signalName, pin).isNull())
            return true;
    }
    return false;
}

bool PinAssignment::HaveCanbeUseSignalInFollowupPin(int nextPin, const QString &signal) const
{
    for (const SignalPlace &place : m_info.placesOf(signal)) {
        if (place.pin >= nextPin && m_info.pin(place.pin).validFlag && rules().SignalCanbeUseInPin(signal, place.pin))
            return true;
    }
    return false;
}

// ---- Whole ----

void PinAssignment::refreshIPControl()
{
    tell({true, QString(), {}});
}

void PinAssignment::AllConfigReset()
{
    m_search.CancelQuerySignalNameAllPin();
    for (int p = 0; p < m_info.m_deviceBaseInfoList.size(); ++p) {
        for (int s = 0; s < m_info.pin(p).pinSignalsList.size(); ++s) {
            const PinSignalStruct &state = m_info.signal({p, s});
            if (state.configStatus != Not_Config)
                clearSignal({p, s});
            if (!state.signalUserLabel.isEmpty())
                edit({p, s}).signalUserLabel.clear();
        }
    }
    finishOperation();
    tellViews();
}

void PinAssignment::ReceivePinRemapFlag(bool on)
{
    m_pinRemapFlag = on;
    HandlePinRemapFlag(QStringLiteral("PINREMAP"), on);
    HandlePinRemapFlag(QStringLiteral("NOPINREMAP"), !on);
    const QStringList changed = finishOperation();
    tell({true, QString(), changed});
}

void PinAssignment::ReceivePinRemapFlag1(bool on)
{
    m_pinRemapFlag1 = on;
    HandlePinRemapFlag(QStringLiteral("PINREMAP1"), on);
    const QStringList changed = finishOperation();
    tell({true, QString(), changed});
}

void PinAssignment::HandlePinRemapFlag(const QString &variant, bool valid)
{
    for (int p = 0; p < m_info.m_deviceBaseInfoList.size(); ++p) {
        if (m_info.pin(p).Variant != variant || m_info.pin(p).validFlag == valid)
            continue;
        m_info.m_deviceBaseInfoList[p].validFlag = valid;
        m_changedPositions.insert(m_info.pin(p).pinNumber);
        for (int s = 0; !valid && s < m_info.pin(p).pinSignalsList.size(); ++s) {
            if (m_info.signal({p, s}).configStatus != Not_Config)
                clearSignal({p, s});
        }
    }
}

PinAssignment::Snapshot PinAssignment::save() const
{
    Snapshot snapshot{{}, m_configuredGroups, m_pinRemapFlag, m_pinRemapFlag1};
    for (const MCUPinsBaseInfo &pin : m_info.m_deviceBaseInfoList) {
        for (const PinSignalStruct &state : pin.pinSignalsList)
            snapshot.signalStates.push_back({state.configStatus, state.signalIOMode, state.signalUserLabel});
    }
    return snapshot;
}

void PinAssignment::restore(const Snapshot &snapshot)
{
    m_search.CancelQuerySignalNameAllPin();
    m_pinRemapFlag = snapshot.pinRemapFlag;
    m_pinRemapFlag1 = snapshot.pinRemapFlag1;
    HandlePinRemapFlag(QStringLiteral("PINREMAP"), m_pinRemapFlag);
    HandlePinRemapFlag(QStringLiteral("NOPINREMAP"), !m_pinRemapFlag);
    HandlePinRemapFlag(QStringLiteral("PINREMAP1"), m_pinRemapFlag1);
    auto saved = snapshot.signalStates.begin();
    for (int p = 0; p < m_info.m_deviceBaseInfoList.size(); ++p) {
        bool changed = false;
        for (int s = 0; s < m_info.pin(p).pinSignalsList.size(); ++s, ++saved) {
            const PinSignalStruct &now = m_info.signal({p, s});
            if (now.configStatus == saved->status && now.signalIOMode == saved->ioMode &&
                now.signalUserLabel == saved->label)
                continue;
            PinSignalStruct &state = edit({p, s});
            state.configStatus = saved->status;
            state.signalIOMode = saved->ioMode;
            state.signalUserLabel = saved->label;
            changed = true;
        }
        if (changed)
            HandleSameIPSignalMultiUseInSamePin(p);
    }
    m_configuredGroups = snapshot.groups;
    const QStringList changedSignals = finishOperation();
    tell({false, QString(), changedSignals});
}

} // namespace ChipLoom
