#pragma once

#include "Design/DesignPart.h"
#include "Model/PeripheralTree.h"
#include "Model/XmlSettings.h"

#include <QHash>
#include <QList>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace ChipLoom {

class Design;

/// A DMA channel that a peripheral's request holds.
struct DMAChannelUse
{
    QString channelName;  ///< as "DMA1_Channel1"
    QString instanceName; ///< as "USART1"

    bool operator==(const DMAChannelUse &) const = default;
};

/// The interrupts of the chip: one vector for each row, the parting of the priority bits, and what the RTOS asks of
/// both.
///
/// A vector is open while a peripheral that raises it is on, or a DMA channel of its own is in use; the core's always
/// are. What the user chose is kept apart from what holds now, so that limits of the RTOS go without a trace.
///
/// Changes through the one door: "nvic/PriorityGroup=<value>", "nvic/ShowType=<0 to 2>" and "nvic/<vector>/<field>"
/// with the enumerator of a vector, as "USART1_IRQn", and a field of `Field`.
class NVIC_Configuration : public DesignPart
{
    Q_OBJECT
public:
    enum class Field { Enabled, GenerateHandler, PreemptionPriority, SubPriority, RTOSFunction };

    NVIC_Configuration(Design &design, PeripheralsBaseInfo info, std::shared_ptr<const PeripheralTree> tree);

    // ---- The table ----

    /// In the order of the database. The records live as long as the design.
    const QList<MCUNVICSetting *> &GetAllNVICSettingList() const { return m_AllNVICSettingList; }
    /// The vector of an enumerator or of a name, or null.
    const MCUNVICSetting *vector(const QString &name) const;
    /// The open vectors that a peripheral or a DMA channel of its own raises.
    QList<const MCUNVICSetting *> vectorsOf(const QString &instanceName) const;
    QList<const MCUNVICSetting *> vectorsShown(NVICSHOWMODDE mode) const;

    /// Why a field of a vector cannot be changed; accepted if it can.
    DesignAnswer fieldAnswer(const MCUNVICSetting &vector, Field field) const;
    static QString fieldName(Field field);
    static std::optional<Field> fieldNamed(const QString &name);
    /// The field as a text: "TRUE", "FALSE", or a number.
    static QString fieldValue(const MCUNVICSetting &vector, Field field);

    /// The parting of the bits with its choices; `CurrentValue` is the present one.
    const RefParameter &GetPriorityGroupParameter() const { return m_PriorityGroupParameter; }
    /// Whether the RTOS has fixed the parting.
    bool isPriorityGroupFixed() const { return m_fixedPriorityGroup >= 0; }
    bool FREERTOSEnableFlag() const { return m_FREERTOS_EnableFlag; }
    int FREERTOSMinPriority() const { return m_FREERTOS_MinPriority; }
    /// Why a vector that is on will never be called; accepted for all others.
    DesignAnswer remark(const MCUNVICSetting &vector) const;
    /// Why the events of a peripheral that are to interrupt do not; accepted where none is or a vector of it is on.
    DesignAnswer eventsRemark(const QString &instanceName) const;
    /// Which vectors the page shows.
    NVICSHOWMODDE showMode() const { return m_ShowMode; }

    // ---- Changes by a user ----

    DesignAnswer setField(const QString &vector, Field field, const QString &value);
    DesignAnswer setPriorityGroup(const QString &value);
    /// Defaults for the vectors of one peripheral.
    void SetNVICDefaultValue(const QString &instanceName);

    // ---- What others tell ----

    /// A peripheral went on or off.
    void SetPeripheralsListIPStatus(const QString &instanceName, IPSTATUS status);
    /// All DMA channels in use, whenever one of them changes.
    void UpdateDMAChannelInfoForAllNVICList(const QList<DMAChannelUse> &channels);
    /// Tokens of another instance, of which some force vectors on and the RTOS's fix the priority group.
    void ReceiveSemaphore(const QString &sender, const QStringList &tokens, bool enable);
    /// Tokens "Semaphore_AutoEnable_<vector>_FromApp_<instance>": each enable is taken back by one cancel. A vector
    /// that only tokens held on goes off with the last of them.
    void UpdateAutoEnableNVICIRQSemaphore(const QStringList &cancelList, const QStringList &enableList);
    /// Fixes the parting by its place in the list of choices; the user's returns with the cancel.
    void Set_Fixed_NVICPriorityGroup(int index);
    void Cancel_Fixed_NVICPriorityGroup();
    void SetFREERTOSEnableFlag(bool on);
    /// The most urgent priority from which the RTOS may be called; anything but a number counts as 0.
    void SetFREERTOSPRIORITY(const QString &text);

    // ---- The part ----

    QString instanceName() const override { return m_baseInfo.InstanceName; }
    bool handles(const DesignChange &change) const override;
    DesignAnswer apply(const DesignChange &change) override;
    void HandleSpecialItem() override;
    void reset() override;
    void updateLanguage() override;
    void collectProblems(QList<DesignProblem> &problems) const override;
    std::any save() const override;
    void restore(const std::any &state) override;
    bool isRestoredLast() const override { return true; }
    void writeSection(QXmlStreamWriter &writer) const override;
    void readSection(const XMLElementInfo &root, QList<DesignProblem> &problems) override;

signals:
    /// A vector, a limit, the group or what is shown has changed.
    void SendRefreshNVIC();

private:
    /// What is known of a vector beside its record, which is derived from it.
    struct Source
    {
        NVICVector declared;
        // The user's choices; a priority may lie beyond what the RTOS allows now.
        bool enabled = false;
        bool generateHandler = false;
        int preemption = 0;
        int sub = 0;
        bool rtosFunction = false;     ///< ticked, where it is off by itself
        bool rtosManualCancel = false; ///< unticked, where it is on by itself
        bool heldByTokens = false;
    };
    struct Limits
    {
        int minimum = 0;
        int maximum = 0;
    };
    struct State;

    void readTable();
    void startValues(Source &source) const;
    void InitPriorityGroupParameter();
    Limits InitPriorityParameter(const QString &name) const;
    void chooseGroup(const QString &value);
    bool isOpen(const Source &source) const;
    bool exintLineInterrupts(const QString &line) const;
    bool isForcedOn(const Source &source) const;
    void update();
    void deriveRecord(Source &source, MCUNVICSetting &record);
    void FREERTOSFunctionOperation(Source &source, MCUNVICSetting &record) const;
    int indexOf(const QString &name) const;
    void readVector(const QString &handler, const QString &text, QList<DesignProblem> &problems);

    Design &m_design;
    PeripheralsBaseInfo m_baseInfo;
    std::shared_ptr<const PeripheralTree> m_NVICXMLFileInfo;
    std::vector<Source> m_sources;
    std::vector<MCUNVICSetting> m_records; ///< one for each source
    QHash<QString, int> m_indexes;         ///< of the enumerators and the names
    QList<MCUNVICSetting *> m_AllNVICSettingList;

    RefParameter m_PriorityGroupParameter;
    Limits m_preemptionLimits;
    Limits m_subLimits;
    QString m_userPriorityGroup;
    int m_fixedPriorityGroup = -1;

    QHash<QString, bool> m_ValidPeripheralsList;
    QList<DMAChannelUse> m_listDMAInfo;
    QStringList m_AutoEnableNVICIRQSemaphoreList; ///< with repetitions
    QStringList m_rtosTokens;                     ///< with repetitions
    bool m_FREERTOS_EnableFlag = false;
    int m_FREERTOS_MinPriority = 0;
    NVICSHOWMODDE m_ShowMode = SHOW_ALL;
};

} // namespace ChipLoom
