#pragma once

#include "Design/DesignPart.h"
#include "Design/IP_ParamSettingConfiguration.h"
#include "Design/ModeControl.h"
#include "Design/ModeFamilies.h"

#include <memory>
#include <vector>

namespace ChipLoom {

class Design;
class DevicePinInfo;

/// One peripheral of the open design: its modes as live controls, its parameters, and its part in the talk with the
/// pins and with the other peripherals. The page of the peripheral shows this object and hands it changes.
///
/// Changes through the one door: "mode/<instance>/<mode>=<item>" (empty or "Disable" for off, "TRUE" and "FALSE" for a
/// check box) and "param/<instance>/<parameter>=<value>".
class IP_ModeAndConfiguration : public DesignPart
{
    Q_OBJECT
public:
    IP_ModeAndConfiguration(Design &design, PeripheralsBaseInfo info, std::shared_ptr<const PeripheralTree> tree);
    ~IP_ModeAndConfiguration() override;

    const PeripheralsBaseInfo &baseInfo() const { return m_BaseInfo; }
    /// Controls in the order of their declaration, as the page shows them.
    const std::vector<std::unique_ptr<ModeControl>> &controls() const { return m_controls; }
    ModeControl *control(const QString &modeName) const;
    std::vector<const ModeControl *> getComboBoxList() const;
    std::vector<const ModeControl *> getCheckBoxList() const;
    IP_ParamSettingConfiguration &parameters() { return m_ParamSettingConfiguration; }
    const IP_ParamSettingConfiguration &parameters() const { return m_ParamSettingConfiguration; }

    bool GetIPValidFlag() const { return m_IPValidFlag; }
    IPSTATUS GetIPStatusFlag() const { return m_IPStatus; }
    /// What the page says beside the modes; empty for nothing.
    const ModeNote &note() const { return m_note; }
    /// The tabs that the peripheral shows now, in order.
    QList<ConfigurationTab> tabs() const;

    /// Why an entry cannot be chosen; accepted if it can.
    DesignAnswer itemAnswer(const ModeControl &control, int index) const;

    // ---- Changes by a user ----

    DesignAnswer chooseItem(const QString &modeName, const QString &itemName);
    /// Parameters, pin settings, labels and interrupts of the peripheral back to their defaults, keeping its modes.
    void ResetConfiguration();

    // ---- What others tell ----

    void ReciveAllConfigedSignals(const DevicePinInfo *info, bool updateControl, const QString &sendIPName);
    void ReceiveEnableSemaphore_FromOtherIP(const QStringList &tokens);
    void ReceiveCancelSemaphore_FromOtherIP(const QStringList &tokens);
    void receiveTokens(const QStringList &tokens, bool enable) override;
    void UpdateIPSetting() override;
    /// The DMA requests of this peripheral got or lost their channels: their tokens follow, cancels first.
    void UpdateDMACondition();
    void HandleSpecialItem() override;

    // ---- The part ----

    QString instanceName() const override { return m_BaseInfo.InstanceName; }
    bool handles(const DesignChange &change) const override;
    DesignAnswer apply(const DesignChange &change) override;
    QStringList signalsInUse() const override;
    void reset() override;
    void updateLanguage() override;
    std::any save() const override;
    void restore(const std::any &state) override;

signals:
    void SendIPPinSignals(const QList<ChipLoom::ModeSignal> &oldList, const QList<ChipLoom::ModeSignal> &newList,
                          bool flag, const QString &ipName);
    void ClearIPPinSignals(const QList<ChipLoom::ModeSignal> &list, bool flag, const QString &ipName);
    void SendParamList_To_OtherIP(const QList<ChipLoom::RefParameter> &list, const QString &ipName);
    void SendPinRemapFlag(bool on);
    void SendPinRemapFlag1(bool on);
    /// A mode, an entry's state, a note or the status has changed; the page looks again.
    void modesChanged();

private:
    void GetModeAndConfiguration();
    void InitModeUI();
    void makeControl(const ModeCofiguration &mode);
    ItemInfoStruct itemOf(const ModeParamCofiguration &param) const;
    bool ItemIsValid(const QList<ModeSignal> &signalList) const;
    bool isRemoved(const QString &removeCondition, bool forItem) const;
    void UpdateControlMachSignalMode();
    void askPins(const ModeControl &control, int index, ItemInfoStruct &item) const;

    void modeChanged(ModeControl &control, int formerIndex);
    void changeTokens(const ModeControl &control, int formerIndex);
    void changePins(ModeControl &control, int formerIndex);
    void UpdateIPValidFlag();
    void ModeSpecialOperation();
    void afterModeChange();
    bool askPllSwitch() const;
    DesignAnswer confirmChoice(const ModeControl &control, const QString &itemName) const;

    QList<ModeSignal> GetModeAllPinsSignals(const ModeControl &control) const;
    QStringList GetOtherModeValidPinSignalsList(const ModeControl &control) const;
    QList<ModeSignal> GetClearPinSignalsList(const ModeControl &control) const;

    void SendEnableSemaphore(const QStringList &tokens);
    void SendCancelSemaphore(const QStringList &tokens);
    void paramTokensChanged(const QStringList &cancelled, const QStringList &enabled);
    void followTokens();
    void Enable_ADCn_DMA_Semaphore(const QString &name);
    void Cancel_ADCn_DMA_Semaphore(const QString &name);
    void ReciveIPParamStatus(IPPARAMSTATUS status);
    ModeFamilyInput familyInput() const;

    QSet<QString> placedSignals() const;
    void UpdateSelectItemAccordPinSignals(ModeControl &control, const QSet<QString> &placed);
    void UpdateStateAccordPinSignals(ModeControl &control, const QSet<QString> &placed);

    struct State;

    Design &m_design;
    PeripheralsBaseInfo m_BaseInfo;
    std::shared_ptr<const PeripheralTree> m_PeripheralsXMLFileInfo;
    QList<ModeCofiguration> m_ModeSettingsList;
    QList<ModeSignal> m_ModeSignalsList;
    std::vector<std::unique_ptr<ModeControl>> m_controls;
    IP_ParamSettingConfiguration m_ParamSettingConfiguration;
    bool m_IPValidFlag = false;
    IPSTATUS m_IPStatus = IPSTATUS_OFF;
    QStringList m_ADCn_DMA_SemaphoreList; ///< raised while DMA requests of the peripheral have channels
    ModeNote m_note;
};

} // namespace ChipLoom
