#include "Design/PinRules.h"

#include <QSet>

#include <algorithm>

namespace ChipLoom {

bool isOfOnePeripheral(const QString &a, const QString &b)
{
    return a.section(QLatin1Char('_'), 0, 0) == b.section(QLatin1Char('_'), 0, 0);
}

bool isMuxOutput(const QString &ioMode)
{
    return ioMode.contains(QLatin1String("MuxOutputPushPull")) || ioMode.contains(QLatin1String("MuxOutputOpenDrain"));
}

namespace {

QString withoutMiddle(const QString &name)
{
    return name.section(QLatin1Char('_'), 0, 0) + QLatin1Char('_') + name.section(QLatin1Char('_'), -1);
}

/// Two outputs of a shared pin: both push-pull or both open-drain. What is not known yet does not stand in the way.
bool isSameOutputKind(const QString &asked, const QString &present)
{
    if (present.isEmpty())
        return true;
    const QLatin1String pushPull("MuxOutputPushPull");
    const QLatin1String openDrain("MuxOutputOpenDrain");
    return asked.contains(pushPull) ? present.contains(pushPull) : present.contains(openDrain);
}

} // namespace

bool isSameEmacFunction(const QString &a, const QString &b)
{
    return a.contains(QLatin1String("EMAC")) && withoutMiddle(a) == withoutMiddle(b);
}

DesignAnswer PinRules::SignalCanbeUseInPin(const QString &signal, int pin) const
{
    const MCUPinsBaseInfo &entry = m_info.pin(pin);
    const SignalPlace place = m_info.placeOnPin(signal, pin);
    if (place.isNull())
        return {DesignReason::SignalNotOnPin, {signal, entry.pinName}};
    for (int variant : m_info.pinsAtPosition(entry.pinNumber)) {
        if (variant == pin || IsPinNameSame(m_info.pin(variant).pinName, entry.pinName))
            continue;
        const QStringList standing = configuredOnPin(variant);
        if (!standing.isEmpty()) {
            return {DesignReason::VariantHeld,
                    {entry.pinName, m_info.pin(variant).pinName, standing.join(QLatin1Char(';'))}};
        }
    }
    const bool multiUse = m_info.signal(place).pinSignalMultiUseFlag;
    for (const PinSignalStruct &present : entry.pinSignalsList) {
        if (present.configStatus == Not_Config || present.signalName == signal ||
            isSameEmacFunction(signal, present.signalName) || (multiUse && present.pinSignalMultiUseFlag))
            continue;
        return {DesignReason::HeldBySignal, {entry.pinName, configuredOnPin(pin, signal).join(QLatin1Char(';'))}};
    }
    return besideCrystal(signal, pin);
}

DesignAnswer PinRules::besideCrystal(const QString &signal, int pin) const
{
    const auto isClock = [](const QString &name) { return name.contains(QLatin1String("HEXT")); };
    const int other = m_info.crystalPartner(pin);
    const QStringList standing = other < 0 ? QStringList() : configuredOnPin(other);
    if (std::none_of(standing.begin(), standing.end(),
                     [&](const QString &name) { return isClock(name) != isClock(signal); }))
        return {};
    return {DesignReason::CrystalPinsParted,
            {m_info.pin(pin).pinName, m_info.pin(other).pinName, standing.join(QLatin1Char(';'))}};
}

DesignAnswer PinRules::SignalCanbeUseInPinAccordingIOMode(const QString &signal, const QString &ioMode, int pin) const
{
    const DesignAnswer room = SignalCanbeUseInPin(signal, pin);
    if (!room || !isMuxOutput(ioMode))
        return room;
    const MCUPinsBaseInfo &entry = m_info.pin(pin);
    for (const PinSignalStruct &present : entry.pinSignalsList) {
        if (present.configStatus != Not_Config && present.signalName != signal && present.pinSignalMultiUseFlag &&
            !isSameOutputKind(ioMode, present.signalIOMode))
            return {DesignReason::OutputKindDiffers, {entry.pinName, present.signalName}};
    }
    return hiddenByRemap(signal, ioMode, pin);
}

DesignAnswer PinRules::hiddenByRemap(const QString &signal, const QString &ioMode, int pin) const
{
    if (!isMuxOutput(ioMode) || !m_info.signal(m_info.placeOnPin(signal, pin)).signalOtherIPOccupy)
        return {};
    const MCUPinsBaseInfo &entry = m_info.pin(pin);
    for (const PinSignalStruct &hidden : entry.pinSignalsList) {
        if (hidden.occupySignalsList.contains(signal))
            return {DesignReason::OccupiedByRemap, {entry.pinName, hidden.signalName}};
    }
    return {};
}

bool PinRules::SameIPMultiSignlaInPin(const QString &signal, int pin) const
{
    for (const PinSignalStruct &present : m_info.pin(pin).pinSignalsList) {
        if (present.configStatus != Not_Config && present.signalName != signal && present.pinSignalMultiUseFlagBackup &&
            isOfOnePeripheral(present.signalName, signal))
            return true;
    }
    return false;
}

DesignAnswer PinRules::SignalCanBeUsedForManualConfig(const QString &signal, int pin) const
{
    if (!IsSignalINGroupList(signal) || GetGroupOfSignalOnPin(signal, pin) >= 0)
        return {};
    for (const SignalPlace &place : m_info.placesOf(signal)) {
        const MCUPinsBaseInfo &other = m_info.pin(place.pin);
        if (other.validFlag && !IsPinNameSame(other.pinName, m_info.pin(pin).pinName) &&
            m_info.signal(place).configStatus != Not_Config)
            return {DesignReason::NoGroupOnPin, {signal, m_info.pin(pin).pinName}};
    }
    return {};
}

SignalPlace PinRules::configuredPlace(const QString &signal) const
{
    for (const SignalPlace &place : m_info.placesOf(signal)) {
        if (m_info.pin(place.pin).validFlag && m_info.signal(place).configStatus != Not_Config)
            return place;
    }
    return {};
}

QStringList PinRules::configuredOnPin(int pin, const QString &exceptSignal) const
{
    QStringList names;
    for (const PinSignalStruct &present : m_info.pin(pin).pinSignalsList) {
        if (present.configStatus != Not_Config && present.signalName != exceptSignal)
            names.append(present.signalName);
    }
    return names;
}

QVector<int> PinRules::GetSignalGroupListFromIPName(const QString &ipName, const QList<ModeSignal> &groupSignals) const
{
    QVector<int> ofPeripheral;
    QVector<int> ofAny;
    for (const ModeSignal &signal : groupSignals) {
        for (const GroupPlace &place : m_info.groupsOf(signal.signalName)) {
            if (!ofAny.contains(place.group))
                ofAny.append(place.group);
            if (m_info.m_deviceIPSignalGroupInfoList.at(place.group).IPName == ipName &&
                !ofPeripheral.contains(place.group))
                ofPeripheral.append(place.group);
        }
    }
    QVector<int> &groups = ofPeripheral.isEmpty() ? ofAny : ofPeripheral;
    std::sort(groups.begin(), groups.end());
    return groups;
}

SignalPlace PinRules::placeInGroup(const QString &signal, int group) const
{
    for (const GroupPlace &membership : m_info.groupsOf(signal)) {
        if (membership.group != group)
            continue;
        const IPSignal &member = m_info.m_deviceIPSignalGroupInfoList.at(group).signalGroup.at(membership.member);
        for (const SignalPlace &place : m_info.placesOf(signal)) {
            const MCUPinsBaseInfo &pin = m_info.pin(place.pin);
            if (pin.validFlag && IsPinNameSame(pin.pinName, member.signalInPinName))
                return place;
        }
    }
    return {};
}

QList<HaveConfigedSignal> PinRules::HaveConfigedSignalInGroup(int group) const
{
    QList<HaveConfigedSignal> standing;
    for (const IPSignal &member : m_info.m_deviceIPSignalGroupInfoList.at(group).signalGroup) {
        const SignalPlace place = placeInGroup(member.signalName, group);
        if (place.isNull() || m_info.signal(place).configStatus == Not_Config)
            continue;
        const PinSignalStruct &state = m_info.signal(place);
        standing.append({state.signalName, m_info.pin(place.pin).pinName, state.signalIOMode, state.configStatus});
    }
    return standing;
}

/// Whether two signals could stand where they are meant to at once, as far as they concern each other.
bool PinRules::canShareAPosition(SignalPlace a, SignalPlace b) const
{
    if (m_info.pin(a.pin).pinNumber != m_info.pin(b.pin).pinNumber || a == b)
        return true;
    const PinSignalStruct &one = m_info.signal(a);
    const PinSignalStruct &other = m_info.signal(b);
    return a.pin == b.pin && (isSameEmacFunction(one.signalName, other.signalName) ||
                              (one.pinSignalMultiUseFlag && other.pinSignalMultiUseFlag &&
                               !isOfOnePeripheral(one.signalName, other.signalName)));
}

DesignAnswer PinRules::SignalsCanbeUseInGroup(const QList<ModeSignal> &groupSignals, int group) const
{
    const IPSignalGroupInfo &info = m_info.m_deviceIPSignalGroupInfoList.at(group);
    QVector<SignalPlace> taken;
    for (const ModeSignal &signal : groupSignals) {
        const SignalPlace place = placeInGroup(signal.signalName, group);
        if (place.isNull())
            return {DesignReason::NoGroupFits, {info.IPName}};
        const DesignAnswer room = SignalCanbeUseInPinAccordingIOMode(signal.signalName, signal.signalIOMode, place.pin);
        if (!room)
            return room;
        for (const SignalPlace &other : taken) {
            if (!canShareAPosition(place, other))
                return {DesignReason::HeldBySignal, {m_info.pin(place.pin).pinName, m_info.signal(other).signalName}};
        }
        taken.append(place);
    }
    return besideTimers(group);
}

DesignAnswer PinRules::besideTimers(int group) const
{
    for (const IPSignal &member : m_info.m_deviceIPSignalGroupInfoList.at(group).signalGroup) {
        const SignalPlace place = member.TMRIPCanUseFlag ? SignalPlace() : placeInGroup(member.signalName, group);
        if (place.isNull())
            continue;
        const MCUPinsBaseInfo &pin = m_info.pin(place.pin);
        for (const PinSignalStruct &present : pin.pinSignalsList) {
            if (present.signalName.startsWith(QLatin1String("TMR")) && present.signalName != member.signalName &&
                present.configStatus != Not_Config && isMuxOutput(present.signalIOMode))
                return {DesignReason::TimerOutputOnGroupPin, {pin.pinName, present.signalName}};
        }
    }
    return {};
}

DesignAnswer PinRules::AllSignalsInGroupCanbeUse(int group) const
{
    const IPSignalGroupInfo &info = m_info.m_deviceIPSignalGroupInfoList.at(group);
    for (const IPSignal &member : info.signalGroup) {
        const SignalPlace place = placeInGroup(member.signalName, group);
        if (place.isNull())
            return {DesignReason::NoGroupFits, {info.IPName}};
        const DesignAnswer room = SignalCanbeUseInPin(member.signalName, place.pin);
        if (!room)
            return room;
    }
    return {};
}

bool PinRules::leavesSignalsBehind(int group) const
{
    const QList<IPSignalGroupInfo> &groups = m_info.m_deviceIPSignalGroupInfoList;
    QSet<QString> members;
    for (const IPSignal &member : groups.at(group).signalGroup)
        members.insert(member.signalName);
    for (int other = 0; other < groups.size(); ++other) {
        const QList<IPSignal> &others = groups.at(other).signalGroup;
        const auto isShared = [&members](const IPSignal &member) { return members.contains(member.signalName); };
        if (groups.at(other).IPName != groups.at(group).IPName || std::none_of(others.begin(), others.end(), isShared))
            continue;
        for (const HaveConfigedSignal &signal : HaveConfigedSignalInGroup(other)) {
            if (placeInGroup(signal.signalName, group).isNull())
                return true;
        }
    }
    return false;
}

int PinRules::GetGroupOfSignalOnPin(const QString &signal, int pin) const
{
    int best = -1;
    int bestCount = -1;
    for (const GroupPlace &membership : m_info.groupsOf(signal)) {
        const IPSignal &member =
            m_info.m_deviceIPSignalGroupInfoList.at(membership.group).signalGroup.at(membership.member);
        if (!IsPinNameSame(member.signalInPinName, m_info.pin(pin).pinName))
            continue;
        const int count = int(HaveConfigedSignalInGroup(membership.group).size());
        if (count > bestCount) {
            best = membership.group;
            bestCount = count;
        }
    }
    return best;
}

} // namespace ChipLoom
