#pragma once

#include "Design/DesignReason.h"
#include "Design/DevicePinInfo.h"
#include "Design/PinRules.h"
#include "Design/PinSearch.h"

#include <QObject>
#include <QSet>
#include <QStringList>
#include <QVector>

#include <deque>
#include <vector>

namespace ChipLoom {

/// A signal, and the name of the pin where it stands or should.
struct NamedPlace
{
    QString pin, signal;
};

/// The one authority on pins, without a drawing: the state half of `ChipView`.
///
/// Two sources change the pin table: the user, pin by pin, and the modes of the peripherals, which ask for signals and
/// are told the outcome. Each operation is complete when it returns. Then `SendAllConfigedSignals` goes to every
/// peripheral. A peripheral may ask again while it is told: that is done at once, and what there is to tell of it goes
/// out after the present round, so that every receiver hears everything in one order.
class PinAssignment : public QObject
{
    Q_OBJECT
public:
    explicit PinAssignment(QObject *parent = nullptr);

    /// Takes over the pin table of a new design.
    void load(const QString &series, DevicePinInfo info);
    /// Forgets the table.
    void clear();

    const DevicePinInfo &pinInfo() const { return m_info; }
    PinRules rules() const { return PinRules(m_info); }
    PinSearch &search() { return m_search; }
    const PinSearch &search() const { return m_search; }
    void updateLanguage() { m_info.updateLanguage(); }

    // ---- By hand ----

    /// A choice in the menu of a pin: ticks or unticks a function, or clears the pin ("Reset_State", whatever
    /// `checked`). What the pin cannot hold beside the chosen function leaves it; a signal that stands elsewhere moves
    /// here with its state, and takes its remap group along.
    DesignAnswer checkedLibAction(const QString &pinName, const QString &signal, bool checked);
    /// Whether that tick would be accepted. Changes nothing and tells nobody.
    DesignAnswer canPlaceByHand(const QString &pinName, const QString &signal);
    /// A row of the GPIO table chose another pin for its signal.
    DesignAnswer ReceiveSignalPinNameChange(const QString &signal, const QString &pinName);

    /// Places many at once, as long as one placement makes room for another, and tells the peripherals when it is done.
    /// What finds no room stays in the list.
    void placeByHand(QList<NamedPlace> &pending);
    /// A choice by hand that no mode uses goes to this pin even if its remap group stands elsewhere, as it may have
    /// come about when the group's own pin was taken. False, with nothing changed, if a mode uses the signal or what
    /// stands on the pin would have to leave it.
    bool settleByHand(const NamedPlace &wanted);
    /// What stands by hand stands from now on for its mode alone; without a mode that uses it, it leaves its pin. No
    /// mode is chosen or taken off for it.
    void leaveToModes(const QStringList &signalNames);

    /// Labels the first function that stands on the pin; empty takes the label off.
    DesignAnswer UserLabelEditFinished_Slot(const QString &pinName, const QString &label);
    DesignAnswer ReceiveGPIOSignalsUserLabelChange(const QString &pinName, const QString &signal, const QString &label);

    // ---- By peripherals ----

    /// The peripheral held `oldList` and now wants `newList`. What finds no pin stays unplaced.
    void ReciveIPPinSignals(const QList<ModeSignal> &oldList, const QList<ModeSignal> &newList, bool flag,
                            const QString &ipName);
    void ReciveClearIPPinSignals(const QList<ModeSignal> &list, bool flag, const QString &ipName);
    /// The signals that such a request would leave unplaced. Changes nothing and tells nobody.
    QStringList unplacedByRequest(const QList<ModeSignal> &oldList, const QList<ModeSignal> &newList,
                                  const QString &ipName);

    /// Switches the variants "PINREMAP" against "NOPINREMAP", or the variant "PINREMAP1", on or off.
    void ReceivePinRemapFlag(bool on);
    void ReceivePinRemapFlag1(bool on);
    bool pinRemapFlag() const { return m_pinRemapFlag; }
    bool pinRemapFlag1() const { return m_pinRemapFlag1; }

    /// Lets every peripheral look at the pins again.
    void refreshIPControl();

    // ---- Whole ----

    /// Takes every signal and label off every pin. Tells the views only.
    void AllConfigReset();

    struct Snapshot
    {
        struct SignalState
        {
            PINCONFIG_TYPE status;
            QString ioMode, label;
        };
        std::vector<SignalState> signalStates;
        QVector<int> groups;
        bool pinRemapFlag = false;
        bool pinRemapFlag1 = false;
    };
    Snapshot save() const;
    /// `snapshot` is of the same table. Peripherals are told without the flag: their own state is put back by itself.
    void restore(const Snapshot &snapshot);

    // ---- What a pin shows ----

    /// The state that colours a position: a function placed by hand without effect wins, else the last configured one.
    PINCONFIG_TYPE positionStatus(int pinNumber) const;
    /// Label, or else signal name, of what stands on a position; several joined by ";".
    QString GetPinConfigedDisplayText(int pinNumber) const;
    /// Names of the bonded entries of a position, joined by "__".
    QString GetRectDisplayPinName(int pinNumber) const;
    QString GetRectDisplayPinRemarks(int pinNumber) const;

    /// The remap group that a peripheral uses, or null while none is in use.
    const IPSignalGroupInfo *configuredGroup(const QString &ipName) const;

signals:
    /// The state of pins has changed; every peripheral updates itself. `changedSignals` names what a change by hand
    /// placed or took away; `ipName` is the peripheral that asked, empty for a change by hand, "UserLabel" for a label.
    void SendAllConfigedSignals(const ChipLoom::DevicePinInfo *info, bool flag, const QString &ipName,
                                const QStringList &changedSignals);
    /// Something of these positions changed. Once after each operation, when all peripherals have been told.
    void pinsChanged(const QList<int> &pinNumbers);

private:
    struct Notice
    {
        bool flag = false;
        QString ipName;
        QStringList changedSignals;
    };
    struct Undo
    {
        SignalPlace place;
        PinSignalStruct before;
    };

    // The pin table, with what it was before the running operation.
    PinSignalStruct &edit(SignalPlace place);
    void rollBack(size_t mark);
    void clearSignal(SignalPlace place);
    void SetSignalStatusInPin(SignalPlace place, PINCONFIG_TYPE status, const QString &ioMode);
    void clearOthersOfPosition(SignalPlace place);
    void HandleSameIPSignalMultiUseInSamePin(int pin);
    void UpdateMCUPinsConfigDisplayInfo();
    QStringList finishOperation();
    void tell(const Notice &notice);
    void tellViews();

    // By hand.
    DesignAnswer findPin(const QString &pinName, const QString &signal, int &pin) const;
    SignalPlace placeUnderName(const QString &signal, int pin, const QString &pinName) const;
    DesignAnswer tickedAnswer(const QString &signal, const QString &pinName, int pin, SignalPlace &place) const;
    DesignAnswer tick(const QString &signal, const QString &pinName, int pin);
    DesignAnswer tickOrLeave(const QString &signal, const QString &pinName, int pin);
    int countOnPosition(int pinNumber) const;
    void tellOfHand(bool flag);
    void UpdatePinConfigInfoSlot(const QString &signal, int pin);
    DesignAnswer moveBoundSignals(const QString &signal, int pin, QStringList &moved);
    DesignAnswer setLabel(SignalPlace place, const QString &label);

    // By peripherals.
    void placeRequest(const QList<ModeSignal> &oldList, const QList<ModeSignal> &newList, const QString &ipName);
    void withdraw(const QString &signal);
    void IPSignalsConfig(const QList<ModeSignal> &list, const QString &ipName);
    void placeSingle(const QList<ModeSignal> &singles, int index);
    bool FollowUpSignalInThisPin(const QList<ModeSignal> &singles, int index, int pin) const;
    bool HaveCanbeUseSignalInFollowupPin(int nextPin, const QString &signal) const;
    void placeInGroups(const QList<ModeSignal> &groupSignals, const QString &ipName);

    // Remap groups.
    int groupInUse(const QString &signal, int pin) const;
    void ConfigSignalsInGroup(const QList<ModeSignal> &groupSignals, const QList<HaveConfigedSignal> &held, int group);
    void ConfigSignalsHideOccupyInGroup(int group);
    void CancelSignalsHideOccupyInGroup(int group);
    void UpdatePinGroupSignalsConfigInfo(int newGroup, int oldGroup);
    void markHiddenSignals();

    void HandlePinRemapFlag(const QString &variant, bool valid);

    DevicePinInfo m_info;
    PinSearch m_search;
    bool m_eventoutOnOnePin = false; ///< the series allows EVENTOUT on a single pin
    bool m_pinRemapFlag = false;
    bool m_pinRemapFlag1 = false;
    QVector<int> m_configuredGroups;     ///< remap groups in use, as indexes into the table's list
    QVector<SignalPlace> m_markedPlaces; ///< where marks of these groups stand

    std::vector<Undo> m_undo; ///< of the running operation
    QSet<int> m_changedPositions;
    std::deque<Notice> m_notices;
    bool m_telling = false;
};

} // namespace ChipLoom
