#pragma once

#include "Design/DesignPart.h"
#include "Design/IP_ParamSettingConfiguration.h"
#include "Design/ModeControl.h"
#include "Design/ModeFamilies.h"

#include <memory>
#include <optional>
#include <vector>

namespace ChipLoom {

class Design;

/// A module of the open design, peripheral or middleware: its modes as live controls, its parameters, and its part in
/// the talk by tokens. What needs pins, and when the module counts as in use, is the derived class's.
///
/// Changes through the one door: "mode/<instance>/<mode>=<item>" (empty or "Disable" for off, "TRUE" and "FALSE" for a
/// check box), "param/<instance>/<parameter>=<value>", "params/<instance>=<parameter>=<value>,<parameter>=<value>" for
/// numbers that change together or not at all, "base/<instance>/<parameter>=<10 or 16>" for the base in which
/// a number is written, and "reset/<instance>=" for the parameters of the module back to their defaults.
class ModuleConfiguration : public DesignPart
{
    Q_OBJECT
public:
    ModuleConfiguration(Design &design, PeripheralsBaseInfo info, std::shared_ptr<const PeripheralTree> tree);
    ~ModuleConfiguration() override;

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
    /// The tabs that the module shows now, in order.
    virtual QList<ConfigurationTab> tabs() const;

    /// Why an entry cannot be chosen; accepted if it can.
    DesignAnswer itemAnswer(const ModeControl &control, int index) const;

    /// Whether some choice or value of this module raises a token, and whether a present one does.
    bool canRaise(const QString &token) const;
    bool raises(const QString &token) const;

    // ---- Changes by a user ----

    DesignAnswer chooseItem(const QString &modeName, const QString &itemName);
    /// Parameters, pin settings, labels and interrupts of the module back to their defaults, keeping its modes.
    void ResetConfiguration();

    // ---- What others tell ----

    void ReceiveEnableSemaphore_FromOtherIP(const QStringList &tokens);
    void ReceiveCancelSemaphore_FromOtherIP(const QStringList &tokens);
    void receiveTokens(const QStringList &tokens, bool enable) override;
    void UpdateIPSetting() override;
    /// The DMA requests of this module got or lost their channels: their tokens follow, cancels first.
    void UpdateDMACondition();
    void ReciveClockChangedSignal() override { m_ParamSettingConfiguration.ReciveClockChangedSignal(); }
    void SetOtherIPParamList(const QList<RefParameter> &list, const QString &sender) override;

    // ---- The part ----

    QString instanceName() const override { return m_BaseInfo.InstanceName; }
    bool handles(const DesignChange &change) const override;
    DesignAnswer apply(const DesignChange &change) override;
    void reset() override;
    void updateLanguage() override;
    std::any save() const override;
    void restore(const std::any &state) override;
    /// The chosen entries, and the parameters that can be changed with their values. A choice that a new design or the
    /// pins would make by themselves is written as off where it is off.
    void writeSection(QXmlStreamWriter &xml) const override;
    /// Entries depend on each other and stand in any order: they are taken round by round. May be called again when
    /// modules on which this one depends have been read; what stands as written is left alone.
    void readSection(const XMLElementInfo &root, QList<DesignProblem> &problems) override;
    void collectProblems(QList<DesignProblem> &problems) const override;

signals:
    /// A mode, an entry's state, a note or the status has changed; the page looks again.
    void modesChanged();

protected:
    /// Makes the controls. For the constructor of the derived class, whose answers it needs.
    void InitModeUI();

    /// The declared modes, with what the derived class completes before the controls are made.
    QList<ModeCofiguration> &modeSettings() { return m_ModeSettingsList; }
    const PeripheralTree &file() const { return *m_PeripheralsXMLFileInfo; }
    Design &design() const { return m_design; }
    ModeFamilyInput familyInput() const;

    virtual bool isInUse() const = 0;
    virtual ModeNote currentNote() const = 0;
    /// Whether the device can serve an entry with these signals at all.
    virtual bool ItemIsValid(const QList<ModeSignal> &) const { return true; }
    /// Fills what the pins mean for an entry.
    virtual void askPins(const ModeControl &, int, ItemInfoStruct &) const {}
    /// The signals of an entry that find no pin now.
    virtual QStringList unplacedSignals(const ModeControl &, const ItemInfoStruct &) const { return {}; }
    /// A control has a new choice; tokens and parameters know of it.
    virtual void choiceMade(ModeControl &, int) {}
    /// Tokens of others have arrived at the controls.
    virtual void tokensReceived() {}
    /// Asks the user where a choice needs that.
    virtual DesignAnswer confirmChoice(const ModeControl &, const QString &) const { return {}; }
    /// The modes in which a new design has a choice already.
    virtual QStringList modesFromReset() const { return {}; }
    /// Whether the signals that stand on pins would choose an entry of this control.
    virtual bool standsOnPins(const ModeControl &) const { return false; }
    /// A choice of a design file as the present database names it.
    virtual XMLAttributeInfo modernMode(const XMLAttributeInfo &saved) const { return saved; }
    /// Whether the design file keeps the switches of interrupt events apart from the other parameters.
    virtual bool hasInterruptsSection() const { return false; }
    /// The name of a mode in design files.
    virtual QString savedModeName(const ModeControl &control) const { return control.modeName(); }

    /// Looks at note and status again, and tells if they differ.
    void refreshStatus();

private:
    void makeControl(const ModeCofiguration &mode);
    ItemInfoStruct itemOf(const ModeParamCofiguration &param) const;
    bool isRemoved(const QString &removeCondition, bool forItem) const;
    void UpdateControlMachSignalMode();

    void modeChanged(ModeControl &control, int formerIndex);
    void changeTokens(const ModeControl &control, int formerIndex);
    void UpdateIPValidFlag();
    void ModeSpecialOperation();

    void SendEnableSemaphore(const QStringList &tokens);
    void SendCancelSemaphore(const QStringList &tokens);
    void paramTokensChanged(const QStringList &cancelled, const QStringList &enabled);
    void followTokens();
    void Enable_ADCn_DMA_Semaphore(const QString &name);
    void Cancel_ADCn_DMA_Semaphore(const QString &name);
    void ReciveIPParamStatus(IPPARAMSTATUS status);

    /// What there was to do for a saved entry; nothing if it stands as written.
    std::optional<DesignAnswer> readMode(const XMLAttributeInfo &saved);
    std::optional<DesignAnswer> readParameter(const XMLAttributeInfo &saved);

    struct State;

    Design &m_design;
    PeripheralsBaseInfo m_BaseInfo;
    std::shared_ptr<const PeripheralTree> m_PeripheralsXMLFileInfo;
    QList<ModeCofiguration> m_ModeSettingsList;
    std::vector<std::unique_ptr<ModeControl>> m_controls;
    IP_ParamSettingConfiguration m_ParamSettingConfiguration;
    bool m_IPValidFlag = false;
    IPSTATUS m_IPStatus = IPSTATUS_OFF;
    QStringList m_ADCn_DMA_SemaphoreList; ///< raised while DMA requests of the module have channels
    ModeNote m_note;
};

} // namespace ChipLoom
