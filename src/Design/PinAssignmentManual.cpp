// What the user does to pins, one at a time.
#include "Design/PinAssignment.h"

#include <QRegularExpression>

#include <algorithm>

namespace ChipLoom {

namespace {

/// The function of a pin that bears its label, or else the first that stands there with effect, or the first; -1 for
/// none.
int labelledSignal(const QList<PinSignalStruct> &functions)
{
    for (const auto &bears : {+[](const PinSignalStruct &state) { return !state.signalUserLabel.isEmpty(); },
                              +[](const PinSignalStruct &state) { return (state.configStatus & IP_Config) != 0; },
                              +[](const PinSignalStruct &) { return true; }}) {
        for (int s = 0; s < functions.size(); ++s) {
            if (functions.at(s).configStatus != Not_Config && bears(functions.at(s)))
                return s;
        }
    }
    return -1;
}

} // namespace

/// The bonded pin that a name means; of several, the first that offers the signal.
DesignAnswer PinAssignment::findPin(const QString &pinName, const QString &signal, int &pin) const
{
    pin = -1;
    const QVector<int> named = m_info.pinsNamed(pinName);
    for (int candidate : named) {
        if (!m_info.pin(candidate).validFlag)
            continue;
        if (!m_info.placeOnPin(signal, candidate).isNull()) {
            pin = candidate;
            return {};
        }
        if (pin < 0)
            pin = candidate;
    }
    if (pin >= 0)
        return {};
    return {named.isEmpty() ? DesignReason::UnknownPin : DesignReason::InactiveVariant, {pinName}};
}

/// The function that a pin of several names offers under one of them, or else under another.
SignalPlace PinAssignment::placeUnderName(const QString &signal, int pin, const QString &pinName) const
{
    const SignalPlace place = m_info.placeOnPin(signal, pin, pinName);
    return place.isNull() ? m_info.placeOnPin(signal, pin) : place;
}

/// Whether a tick of the function of this name on this pin is allowed; finds its place.
DesignAnswer PinAssignment::tickedAnswer(const QString &signal, const QString &pinName, int pin,
                                         SignalPlace &place) const
{
    const MCUPinsBaseInfo &entry = m_info.pin(pin);
    if (entry.fixedFlag)
        return {DesignReason::FixedPin, {entry.pinName}};
    place = placeUnderName(signal, pin, pinName);
    if (place.isNull()) {
        if (m_info.placesOf(signal).isEmpty())
            return {DesignReason::UnknownSignal, {signal}};
        return {DesignReason::SignalNotOnPin, {signal, entry.pinName}};
    }
    for (const DesignAnswer &answer :
         {rules().SignalCanBeUsedForManualConfig(signal, pin), rules().besideCrystal(signal, pin)}) {
        if (!answer)
            return answer;
    }
    return rules().hiddenByRemap(signal, m_info.signal(place).signalIOMode, pin);
}

DesignAnswer PinAssignment::canPlaceByHand(const QString &pinName, const QString &signal)
{
    int pin = -1;
    DesignAnswer answer = findPin(pinName, signal, pin);
    if (!answer)
        return answer;
    const QVector<int> groups = m_configuredGroups;
    const QVector<SignalPlace> marks = m_markedPlaces;
    answer = tick(signal, pinName, pin);
    rollBack(0);
    m_configuredGroups = groups;
    m_markedPlaces = marks;
    return answer;
}

DesignAnswer PinAssignment::checkedLibAction(const QString &pinName, const QString &signal, bool checked)
{
    int pin = -1;
    DesignAnswer answer = findPin(pinName, signal, pin);
    if (!answer)
        return answer;
    if (signal == QLatin1String("Reset_State")) {
        for (int s = 0; s < m_info.pin(pin).pinSignalsList.size(); ++s) {
            if (m_info.signal({pin, s}).configStatus != Not_Config)
                clearSignal({pin, s});
        }
    } else if (!checked) {
        const SignalPlace place = placeUnderName(signal, pin, pinName);
        if (place.isNull() || m_info.signal(place).configStatus == Not_Config)
            return {DesignReason::NotPlaced, {signal, m_info.pin(pin).pinName}};
        clearSignal(place);
    } else {
        answer = tickOrLeave(signal, pinName, pin);
        if (!answer)
            return answer;
    }
    m_search.CancelQuerySignalNameAllPin();
    tellOfHand(true);
    return answer;
}

void PinAssignment::placeByHand(QList<NamedPlace> &pending)
{
    for (bool progress = true; progress && !pending.isEmpty();) {
        progress = false;
        for (int i = 0; i < pending.size();) {
            const NamedPlace &place = pending.at(i);
            int pin = -1;
            if (!findPin(place.pin, place.signal, pin) || !tickOrLeave(place.signal, place.pin, pin)) {
                ++i;
                continue;
            }
            UpdateMCUPinsConfigDisplayInfo();
            pending.removeAt(i);
            progress = true;
        }
    }
    tellOfHand(true);
}

bool PinAssignment::settleByHand(const NamedPlace &wanted)
{
    int pin = -1;
    if (!findPin(wanted.pin, wanted.signal, pin) || m_info.pin(pin).fixedFlag || isPlainFunction(wanted.signal))
        return false;
    const SignalPlace place = placeUnderName(wanted.signal, pin, wanted.pin);
    const SignalPlace old = rules().configuredPlace(wanted.signal);
    if (place.isNull() || (!old.isNull() && m_info.signal(old).configStatus != Manual_Config) ||
        !rules().besideCrystal(wanted.signal, pin))
        return false;
    if (!old.isNull())
        clearSignal(old);
    const int standing = countOnPosition(m_info.pin(pin).pinNumber);
    SetSignalStatusInPin(place, Manual_Config, {});
    const bool fits = countOnPosition(m_info.pin(pin).pinNumber) == standing + 1;
    if (!fits)
        rollBack(0);
    tellOfHand(false);
    return fits;
}

int PinAssignment::countOnPosition(int pinNumber) const
{
    int count = 0;
    for (const int pin : m_info.pinsAtPosition(pinNumber)) {
        const QList<PinSignalStruct> &list = m_info.pin(pin).pinSignalsList;
        count += int(std::count_if(list.begin(), list.end(),
                                   [](const PinSignalStruct &state) { return state.configStatus != Not_Config; }));
    }
    return count;
}

void PinAssignment::leaveToModes(const QStringList &signalNames)
{
    for (const QString &name : signalNames) {
        for (const SignalPlace &place : m_info.placesOf(name)) {
            const PINCONFIG_TYPE status = m_info.signal(place).configStatus;
            if (status == Manual_IP_Config)
                edit(place).configStatus = IP_Config;
            else if (status == Manual_Config)
                clearSignal(place);
        }
    }
    tellOfHand(false);
}

void PinAssignment::tellOfHand(bool flag)
{
    const QStringList changed = finishOperation();
    if (!changed.isEmpty() || !m_changedPositions.isEmpty())
        tell({flag, QString(), changed});
}

/// A tick that is refused leaves everything as it was.
DesignAnswer PinAssignment::tickOrLeave(const QString &signal, const QString &pinName, int pin)
{
    const size_t mark = m_undo.size();
    const QVector<int> groups = m_configuredGroups;
    const QVector<SignalPlace> marks = m_markedPlaces;
    const DesignAnswer answer = tick(signal, pinName, pin);
    if (!answer) {
        rollBack(mark);
        m_configuredGroups = groups;
        m_markedPlaces = marks;
    }
    return answer;
}

DesignAnswer PinAssignment::ReceiveSignalPinNameChange(const QString &signal, const QString &pinName)
{
    int pin = -1;
    DesignAnswer answer = findPin(pinName, signal, pin);
    if (answer)
        answer = rules().SignalCanbeUseInPin(signal, pin);
    return answer ? checkedLibAction(pinName, signal, true) : answer;
}

/// Carries out a tick. On refusal the caller rolls back.
DesignAnswer PinAssignment::tick(const QString &signal, const QString &pinName, int pin)
{
    SignalPlace place;
    const DesignAnswer answer = tickedAnswer(signal, pinName, pin, place);
    if (!answer)
        return answer;
    const QVector<int> groups = m_configuredGroups;
    PinSignalStruct &state = edit(place);
    state.configStatus = PINCONFIG_TYPE(state.configStatus | (isPlainFunction(signal) ? 3 : 1));
    clearOthersOfPosition(place);
    HandleSameIPSignalMultiUseInSamePin(pin);
    UpdatePinConfigInfoSlot(signal, pin);
    for (const int group : qAsConst(m_configuredGroups)) {
        const DesignAnswer free = groups.contains(group) ? DesignAnswer() : rules().besideTimers(group);
        if (!free)
            return free;
    }
    QStringList moved{signal};
    return moveBoundSignals(signal, pin, moved);
}

/// Completes a tick: a signal that stands elsewhere moves here.
void PinAssignment::UpdatePinConfigInfoSlot(const QString &signal, int pin)
{
    const SignalPlace place = m_info.placeOnPin(signal, pin);
    if (isPlainFunction(signal)) {
        if (!m_eventoutOnOnePin || !signal.contains(QLatin1String("EVENTOUT")))
            return;
        for (const SignalPlace &other : m_info.placesOf(QStringLiteral("EVENTOUT"))) {
            if (other.pin != pin && m_info.pin(other.pin).validFlag && m_info.signal(other).configStatus != Not_Config)
                clearSignal(other);
        }
        return;
    }
    for (const SignalPlace &old : m_info.placesOf(signal)) {
        const PinSignalStruct standing = m_info.signal(old);
        if (old.pin == pin || !m_info.pin(old.pin).validFlag || standing.configStatus == Not_Config)
            continue;
        SetSignalStatusInPin(place, standing.configStatus, standing.signalIOMode);
        const int newGroup = groupInUse(signal, pin);
        const int oldGroup = groupInUse(signal, old.pin);
        if (newGroup >= 0 && oldGroup >= 0 && newGroup != oldGroup) {
            UpdatePinGroupSignalsConfigInfo(newGroup, oldGroup);
            CancelSignalsHideOccupyInGroup(oldGroup);
            ConfigSignalsHideOccupyInGroup(newGroup);
        } else {
            clearSignal(old);
        }
    }
}

/// Takes the placed signals that are bound to one that was just placed to the pins that it names, and what is bound to
/// those in turn. `moved` are signals that stand where they must.
DesignAnswer PinAssignment::moveBoundSignals(const QString &signal, int pin, QStringList &moved)
{
    const QList<BoundSignal> bounds = m_info.signal(m_info.placeOnPin(signal, pin)).pinSignalsBoundList;
    for (const BoundSignal &bound : bounds) {
        const SignalPlace old = rules().configuredPlace(bound.signalName);
        if (old.isNull() || m_info.pin(old.pin).pinNumber == bound.pinNum)
            continue;
        const DesignAnswer blocked{DesignReason::BoundSignalBlocked,
                                   {signal, bound.signalName, QString::number(bound.pinNum)}};
        if (moved.contains(bound.signalName))
            return blocked;
        moved.append(bound.signalName);
        SignalPlace target;
        for (int candidate : m_info.pinsAtPosition(bound.pinNum)) {
            if (target.isNull() && m_info.pin(candidate).validFlag)
                target = m_info.placeOnPin(bound.signalName, candidate);
        }
        if (target.isNull() || !rules().SignalCanbeUseInPin(bound.signalName, target.pin) ||
            !rules().SignalCanBeUsedForManualConfig(bound.signalName, target.pin))
            return blocked;
        UpdatePinConfigInfoSlot(bound.signalName, target.pin);
        const DesignAnswer following = moveBoundSignals(bound.signalName, target.pin, moved);
        if (!following)
            return following;
    }
    return {};
}

DesignAnswer PinAssignment::UserLabelEditFinished_Slot(const QString &pinName, const QString &label)
{
    int pin = -1;
    const DesignAnswer answer = findPin(pinName, QString(), pin);
    if (!answer)
        return answer;
    const int place = labelledSignal(m_info.pin(pin).pinSignalsList);
    return place < 0 ? DesignAnswer{DesignReason::NothingToLabel, {m_info.pin(pin).pinName}}
                     : setLabel({pin, place}, label);
}

DesignAnswer PinAssignment::ReceiveGPIOSignalsUserLabelChange(const QString &pinName, const QString &signal,
                                                              const QString &label)
{
    int pin = -1;
    const DesignAnswer answer = findPin(pinName, signal, pin);
    if (!answer)
        return answer;
    const SignalPlace place = m_info.placeOnPin(signal, pin);
    if (place.isNull() || m_info.signal(place).configStatus == Not_Config)
        return {DesignReason::NotPlaced, {signal, m_info.pin(pin).pinName}};
    return setLabel(place, label);
}

DesignAnswer PinAssignment::setLabel(SignalPlace place, const QString &label)
{
    static const QRegularExpression identifier(QStringLiteral("\\A[a-zA-Z_][a-zA-Z0-9_]*\\z"));
    if (!label.isEmpty() && !identifier.match(label).hasMatch())
        return {DesignReason::InvalidLabel, {label}};
    // The label is the pin's, whichever of its functions stood there when it was given.
    bool changed = false;
    for (int s = 0; s < m_info.pin(place.pin).pinSignalsList.size(); ++s) {
        const PinSignalStruct &state = m_info.signal({place.pin, s});
        const QString wanted = s == place.signal ? label : QString();
        if (state.signalUserLabel == wanted || (state.configStatus == Not_Config && s != place.signal))
            continue;
        edit({place.pin, s}).signalUserLabel = wanted;
        changed = true;
    }
    if (changed) {
        finishOperation();
        tell({false, QStringLiteral("UserLabel"), {}});
    }
    return {};
}

} // namespace ChipLoom
