// Remap groups: signals that one multiplex value of a peripheral moves together.
#include "Design/PinAssignment.h"

#include <algorithm>

namespace ChipLoom {

/// The group in which a signal stands on a pin, the one in use first.
int PinAssignment::groupInUse(const QString &signal, int pin) const
{
    for (int group : m_configuredGroups) {
        if (rules().placeInGroup(signal, group).pin == pin)
            return group;
    }
    return rules().GetGroupOfSignalOnPin(signal, pin);
}

/// Places the signals of a request that stand in groups: all in one group, preferably the one in which most of the
/// peripheral's signals already stand. If no group has room nothing is placed.
void PinAssignment::placeInGroups(const QList<ModeSignal> &groupSignals, const QString &ipName)
{
    QVector<int> candidates = rules().GetSignalGroupListFromIPName(ipName, groupSignals);
    const QVector<int> inUseBefore = m_configuredGroups;
    for (int group : candidates)
        CancelSignalsHideOccupyInGroup(group);
    const auto leavesSomeBehind = [this](int group) { return rules().leavesSignalsBehind(group); };
    candidates.erase(std::remove_if(candidates.begin(), candidates.end(), leavesSomeBehind), candidates.end());

    int favourite = -1;
    int favouriteCount = 0;
    QList<HaveConfigedSignal> held;
    for (int group : candidates) {
        const QList<HaveConfigedSignal> standing = rules().HaveConfigedSignalInGroup(group);
        if (standing.size() > favouriteCount) {
            favourite = group;
            favouriteCount = int(standing.size());
        }
        for (const HaveConfigedSignal &signal : standing) {
            const auto isKnown = [&signal](const HaveConfigedSignal &known) {
                return known.signalName == signal.signalName;
            };
            if (std::none_of(held.begin(), held.end(), isKnown))
                held.append(signal);
        }
    }
    QList<ModeSignal> all = groupSignals;
    for (const HaveConfigedSignal &signal : held) {
        const auto isAsked = [&signal](const ModeSignal &asked) { return asked.signalName == signal.signalName; };
        if (std::none_of(groupSignals.begin(), groupSignals.end(), isAsked))
            all.append({true, signal.signalName, signal.signaIOMode, false});
    }

    const auto takesAll = [&](int group) { return rules().SignalsCanbeUseInGroup(all, group).accepted(); };
    const auto takesRequest = [&](int group) {
        return rules().AllSignalsInGroupCanbeUse(group) && rules().SignalsCanbeUseInGroup(groupSignals, group);
    };
    int chosen = favourite >= 0 && takesAll(favourite) ? favourite : -1;
    if (chosen < 0) {
        auto found = std::find_if(candidates.begin(), candidates.end(), takesRequest);
        if (found == candidates.end())
            found = std::find_if(candidates.begin(), candidates.end(), takesAll);
        if (found != candidates.end())
            chosen = *found;
    }
    if (chosen < 0) {
        m_configuredGroups = inUseBefore;
        markHiddenSignals();
        return;
    }
    ConfigSignalsInGroup(groupSignals, held, chosen);
    ConfigSignalsHideOccupyInGroup(chosen);
}

/// The requested members go to the group's pins; what else is held of the group comes along where there is room, and
/// stays where it is otherwise.
void PinAssignment::ConfigSignalsInGroup(const QList<ModeSignal> &groupSignals, const QList<HaveConfigedSignal> &held,
                                         int group)
{
    QStringList asked;
    for (const ModeSignal &signal : groupSignals) {
        asked.append(signal.signalName);
        const SignalPlace old = rules().configuredPlace(signal.signalName);
        const SignalPlace place = rules().placeInGroup(signal.signalName, group);
        const PINCONFIG_TYPE before = old.isNull() ? Not_Config : m_info.signal(old).configStatus;
        if (!old.isNull() && !(old == place))
            clearSignal(old);
        SetSignalStatusInPin(place, PINCONFIG_TYPE(before | IP_Config), signal.signalIOMode);
    }
    for (const HaveConfigedSignal &signal : held) {
        const SignalPlace place = rules().placeInGroup(signal.signalName, group);
        const SignalPlace old = rules().configuredPlace(signal.signalName);
        if (asked.contains(signal.signalName) || place.isNull() || old.isNull() || old == place ||
            !rules().SignalCanbeUseInPin(signal.signalName, place.pin))
            continue;
        clearSignal(old);
        SetSignalStatusInPin(place, signal.configStatus, signal.signaIOMode);
    }
}

/// A user moved one signal of a group: the others follow. What the new group does not have loses what its mode held;
/// the user's own choices stay.
void PinAssignment::UpdatePinGroupSignalsConfigInfo(int newGroup, int oldGroup)
{
    const QList<HaveConfigedSignal> standing = rules().HaveConfigedSignalInGroup(oldGroup);
    for (const HaveConfigedSignal &signal : standing) {
        const SignalPlace old = rules().placeInGroup(signal.signalName, oldGroup);
        const SignalPlace place = rules().placeInGroup(signal.signalName, newGroup);
        if (old == place)
            continue;
        if (place.isNull()) {
            withdraw(signal.signalName);
            continue;
        }
        clearSignal(old);
        SetSignalStatusInPin(place, signal.configStatus, signal.signaIOMode);
    }
}

void PinAssignment::ConfigSignalsHideOccupyInGroup(int group)
{
    if (!m_configuredGroups.contains(group))
        m_configuredGroups.append(group);
    markHiddenSignals();
}

void PinAssignment::CancelSignalsHideOccupyInGroup(int group)
{
    if (m_configuredGroups.removeAll(group) > 0)
        markHiddenSignals();
}

/// Marks what stands behind the groups in use. A remap value brings all members to their pins. Most of those that
/// nobody placed leave their pin alone; those that the group denies to timers do not, and other peripherals must not
/// drive it.
void PinAssignment::markHiddenSignals()
{
    for (const SignalPlace &place : m_markedPlaces) {
        PinSignalStruct &state = edit(place);
        state.signalOtherIPOccupy = false;
        state.occupySignalsList.clear();
    }
    m_markedPlaces.clear();
    for (int group : m_configuredGroups) {
        const IPSignalGroupInfo &info = m_info.m_deviceIPSignalGroupInfoList.at(group);
        for (const IPSignal &member : info.signalGroup) {
            const SignalPlace hidden = rules().placeInGroup(member.signalName, group);
            if (member.TMRIPCanUseFlag || hidden.isNull() || m_info.signal(hidden).configStatus != Not_Config)
                continue;
            QStringList occupied;
            for (int s = 0; s < m_info.pin(hidden.pin).pinSignalsList.size(); ++s) {
                const QString &name = m_info.signal({hidden.pin, s}).signalName;
                if (isPlainFunction(name) || isOfOnePeripheral(name, member.signalName))
                    continue;
                occupied.append(name);
                edit({hidden.pin, s}).signalOtherIPOccupy = true;
                m_markedPlaces.append({hidden.pin, s});
            }
            if (!occupied.isEmpty()) {
                edit(hidden).occupySignalsList = occupied;
                m_markedPlaces.append(hidden);
            }
        }
    }
}

const IPSignalGroupInfo *PinAssignment::configuredGroup(const QString &ipName) const
{
    for (int group : m_configuredGroups) {
        const IPSignalGroupInfo &info = m_info.m_deviceIPSignalGroupInfoList.at(group);
        if (info.IPName == ipName)
            return &info;
    }
    return nullptr;
}

} // namespace ChipLoom
