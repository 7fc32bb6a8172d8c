#pragma once

#include "Design/ModuleConfiguration.h"

#include <memory>
#include <vector>

namespace ChipLoom {

class DevicePinInfo;

/// One peripheral of the open design: a module whose modes want pins. The page of the peripheral shows this object and
/// hands it changes.
class IP_ModeAndConfiguration : public ModuleConfiguration
{
    Q_OBJECT
public:
    IP_ModeAndConfiguration(Design &design, PeripheralsBaseInfo info, std::shared_ptr<const PeripheralTree> tree);

    QList<ConfigurationTab> tabs() const override;
    /// The signals that the description lists, whether on pins or virtual.
    const QList<ModeSignal> &signalTable() const { return m_ModeSignalsList; }

    // ---- What others tell ----

    void ReciveAllConfigedSignals(const DevicePinInfo *info, bool updateControl, const QString &sendIPName);
    void HandleSpecialItem() override;

    // ---- The part ----

    DesignAnswer apply(const DesignChange &change) override;
    QStringList signalsInUse() const override;
    void reset() override;

signals:
    void SendIPPinSignals(const QList<ChipLoom::ModeSignal> &oldList, const QList<ChipLoom::ModeSignal> &newList,
                          bool flag, const QString &ipName);
    void ClearIPPinSignals(const QList<ChipLoom::ModeSignal> &list, bool flag, const QString &ipName);
    void SendPinRemapFlag(bool on);
    void SendPinRemapFlag1(bool on);

protected:
    bool isInUse() const override;
    ModeNote currentNote() const override;
    bool ItemIsValid(const QList<ModeSignal> &signalList) const override;
    void askPins(const ModeControl &control, int index, ItemInfoStruct &item) const override;
    QStringList unplacedSignals(const ModeControl &control, const ItemInfoStruct &item) const override;
    void choiceMade(ModeControl &control, int formerIndex) override;
    void tokensReceived() override;
    DesignAnswer confirmChoice(const ModeControl &control, const QString &itemName) const override;
    QStringList modesFromReset() const override;
    bool standsOnPins(const ModeControl &control) const override;
    bool hasInterruptsSection() const override { return true; }
    XMLAttributeInfo modernMode(const XMLAttributeInfo &saved) const override;
    QString savedModeName(const ModeControl &control) const override;

private:
    void completeSignals();
    void changePins(ModeControl &control, int formerIndex);
    bool askPllSwitch() const;

    QList<ModeSignal> GetModeAllPinsSignals(const ModeControl &control) const;
    QStringList GetOtherModeValidPinSignalsList(const ModeControl &control) const;
    QList<ModeSignal> GetClearPinSignalsList(const ModeControl &control) const;

    QSet<QString> placedSignals() const;
    /// Whether its signals are edges on pins that others can use too: the lines, and the pins that wake the chip up.
    bool watchesEdges() const
    {
        return baseInfo().Name == QLatin1String("EXINT") || baseInfo().Name == QLatin1String("PWC");
    }
    DesignAnswer edgesAnswer() const;
    void UpdateSelectItemAccordPinSignals(ModeControl &control, const QSet<QString> &placed);
    void UpdateStateAccordPinSignals(ModeControl &control, const QSet<QString> &placed);

    QList<ModeSignal> m_ModeSignalsList;
};

} // namespace ChipLoom
