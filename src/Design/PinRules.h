#pragma once

#include "Design/DesignReason.h"
#include "Design/DevicePinInfo.h"

namespace ChipLoom {

/// A signal of a group that is already placed.
struct HaveConfigedSignal
{
    QString signalName, signalInPinName, signaIOMode;
    PINCONFIG_TYPE configStatus = Not_Config;
};

/// Two signals that one pin cannot serve at once though the database lets it: the text before the first "_" is the
/// same. Whose a signal is, `Design::ownersOf` tells.
bool isOfOnePeripheral(const QString &a, const QString &b);

/// Whether an I/O mode makes a peripheral drive the pin.
bool isMuxOutput(const QString &ioMode);

/// Two EMAC signals that are one function of the pad in two interface modes: first and last name parts are equal.
bool isSameEmacFunction(const QString &a, const QString &b);

/// The rules of placing, as questions to a pin table. Pins and groups are indexes into its lists; every answer says
/// why not.
class PinRules
{
public:
    explicit PinRules(const DevicePinInfo &info) : m_info(info) {}

    /// Whether the pin has room for the signal beside what stands on it and on the other variants of its position.
    DesignAnswer SignalCanbeUseInPin(const QString &signal, int pin) const;
    /// The same for a signal that is driven in a certain way: outputs that share a pin must be of one kind, and a pin
    /// behind which a remap group hides a member takes no other driver.
    DesignAnswer SignalCanbeUseInPinAccordingIOMode(const QString &signal, const QString &ioMode, int pin) const;
    /// Whether the other pin of the crystal lets the signal in. Some chips take both from their clock for the ports, or
    /// neither: a clock put in at one of them and a function on the other exclude each other.
    DesignAnswer besideCrystal(const QString &signal, int pin) const;
    /// Whether a remap group in use hides a member behind the pin that keeps others from driving it.
    DesignAnswer hiddenByRemap(const QString &signal, const QString &ioMode, int pin) const;
    /// Two multi-use signals of one peripheral: the asked one finds another there that is configured.
    bool SameIPMultiSignlaInPin(const QString &signal, int pin) const;
    /// Whether a user may place the signal: a group's signal that stands elsewhere needs a group that offers it here.
    DesignAnswer SignalCanBeUsedForManualConfig(const QString &signal, int pin) const;

    /// The first place of the signal on a bonded pin where it is configured; null if it stands nowhere.
    SignalPlace configuredPlace(const QString &signal) const;
    /// Names of the configured functions of a pin, but for one.
    QStringList configuredOnPin(int pin, const QString &exceptSignal = {}) const;

    bool IsSignalINGroupList(const QString &signal) const { return !m_info.groupsOf(signal).isEmpty(); }
    /// The groups of a peripheral that have one of the signals, in list order. Where none is told as the
    /// peripheral's, those of any.
    QVector<int> GetSignalGroupListFromIPName(const QString &ipName, const QList<ModeSignal> &groupSignals) const;
    /// The place on a bonded pin that a group gives a signal; null if the group or the package has none.
    SignalPlace placeInGroup(const QString &signal, int group) const;
    /// What stands in a group, in member order.
    QList<HaveConfigedSignal> HaveConfigedSignalInGroup(int group) const;
    /// Whether no timer drives a pin that the group denies to timers, whichever of its members are asked for: the chip
    /// moves them all, and the code never chooses such a group.
    DesignAnswer besideTimers(int group) const;
    /// Whether all the signals are members with room on their pins, and no timer stands in the way.
    DesignAnswer SignalsCanbeUseInGroup(const QList<ModeSignal> &groupSignals, int group) const;
    DesignAnswer AllSignalsInGroupCanbeUse(int group) const;
    /// Whether a signal stands in another group of the peripheral that shares members with this one, and has no place
    /// in this one. The chip moves such groups as a whole, and a package may bond only some of the members.
    bool leavesSignalsBehind(int group) const;
    /// The group in which a signal stands on a pin; where several do, the one in which most signals stand, -1 for none.
    int GetGroupOfSignalOnPin(const QString &signal, int pin) const;

private:
    bool canShareAPosition(SignalPlace a, SignalPlace b) const;

    const DevicePinInfo &m_info;
};

} // namespace ChipLoom
