#pragma once

#include "Design/DesignPart.h"
#include "Design/DmaParameters.h"
#include "Design/DmaRequests.h"

#include <QSet>

namespace ChipLoom {

/// The DMA, or the EDMA, of the open design: which request has which channel, and how it transfers. The page of the
/// controller and the tabs of the peripherals show this one object, so a channel taken in one is taken in all.
///
/// Changes through the one door, in the section "dma" or "edma":
///
///     dma/DMA1_Channel1=USART1_TX         the request gets that channel; empty frees the channel
///     dma/any=USART1_TX                   the request gets the first channel that can serve it
///     dma/USART1_TX=DMA1_Channel2         the same the other way round; empty takes the request's channel away
///     dma/USART1_TX/Priority=...          a setting of a request that has a channel
///     dma/USART1_TX/Request=SPI1_TX       another request takes its place in the table
///
/// A channel's name can stand for the request that has it, which tells several memory-to-memory transfers apart.
///
/// Both controllers may know a request; one of them serves it.
///
/// A request is `Request_Enable` while its peripheral's tokens meet its condition, `Request_Used` while it has a
/// channel. Memory to memory depends on no peripheral and has no state between `Request_Not` and `Request_Used`.
class DMA_Configuration : public DesignPart
{
    Q_OBJECT
public:
    DMA_Configuration(Design &design, PeripheralsBaseInfo info, std::shared_ptr<const PeripheralTree> tree);

    /// "DMA" or "EDMA": also the word that titles begin with.
    QString typeName() const { return m_BaseInfo.InstanceName; }
    bool isEdma() const { return m_isEdma; }
    /// The records that generators read. Pointers in it live as long as the design; their content changes with it.
    const DMA_INFO &dmaInfo() const { return m_table.info(); }
    /// The requests that have a channel, by channel.
    QList<DMARequest *> ValidDMAChannalList() const;

    // ---- Questions; an empty instance asks for all of them ----

    /// The rows of a table: requests with a channel in the order in which they came.
    QList<const DMARequest *> rows(const QString &instance = {}) const;
    bool hasRequests(const QString &instance) const;
    const DMARequest *getDMARequestByName(const QString &name) const;
    /// Requests that could be given a channel, and memory to memory while a channel is free.
    QStringList getDMARequestNameList(const QString &instance = {}) const;
    /// Channels that are free for a request now, in order of preference.
    QStringList getAvailableChannelByRequest(const DMARequest &request) const;
    /// Whether a fresh row makes sense: a channel is free and a request waits.
    DesignAnswer canAdd(const QString &instance = {}) const;
    /// How the request is addressed in changes: its name, or its channel where another row has the same name.
    QString addressOf(const DMARequest &request) const;
    QList<PossibleValue> offeredValues(const DMARequest &request, const RefParameter &parameter) const;
    bool isGood(const DMARequest &request, const RefParameter &parameter) const;
    DesignAnswer canTake(const DMARequest &request, const QString &name, const QString &value) const;
    /// Tokens that an instance hears while its requests have channels.
    QStringList requestTokens(const QString &instance) const;

    // ---- What others tell ----

    /// Tokens that reach the requests of an instance; an empty instance stands for every one.
    void ReceiveSemaphores(const QString &instance, const QStringList &tokens, bool enable);
    /// The settings of an instance's requests back to their defaults; no request loses its channel.
    void SetDMASettingsDefaultValue(const QString &instance = {});
    void ResetAllDMASetting();

    // ---- The part ----

    QString instanceName() const override { return m_BaseInfo.InstanceName; }
    bool handles(const DesignChange &change) const override;
    DesignAnswer apply(const DesignChange &change) override;
    void reset() override { ResetAllDMASetting(); }
    void updateLanguage() override;
    std::any save() const override;
    void restore(const std::any &state) override;
    void writeSection(QXmlStreamWriter &writer) const override;
    void readSection(const XMLElementInfo &root, QList<DesignProblem> &problems) override;
    void collectProblems(QList<DesignProblem> &problems) const override;

signals:
    /// Rows, channels, values or what is offered changed; tables look again.
    void settingsChanged();
    /// A request got a channel or lost it: peripherals look at their `requestTokens`, vectors at the channels in use.
    void SendDMARequestChangeSignals();
    /// "Semaphore_AutoEnable_<vector>..." for the vectors of channels whose interrupts are wanted. Each enable is taken
    /// back by one cancel. `instanceName` is the instance name of this part.
    void SendAutoEnableNVICIRQSemaphore(const QStringList &cancelled, const QStringList &enabled,
                                        const QString &instanceName);

private:
    struct State;
    struct StoredValue
    {
        int request;
        QString name, value;
    };

    QStringList tokensOf(const QString &instance) const;
    DmaParameterContext contextOf(const DMARequest &request, int channel) const;
    DmaParameterContext contextOf(const DMARequest &request) const;
    bool concerns(int request, const QString &instance) const;
    QString currentValue(int request, const QString &name) const;
    bool serves(int request, int channel) const;
    bool isOpen(int request) const;
    QString takenElsewhere(int request) const;
    int freeRecord(const QString &requestName) const;
    int rowOf(const QString &requestOrChannel) const;

    /// Why none of the names is a request of this controller; another one may have it.
    DesignAnswer unknownRequest(const QStringList &names) const;
    DesignAnswer applySetting(int request, const QString &name, const QString &value);
    DesignAnswer place(const QString &requestName, const QString &channelName, int replaced);
    DesignAnswer move(int request, const QString &channelName);
    void use(int request, int channel, int row);
    void free(int request);
    void takeOverrides(int request, const QStringList &tokens);
    bool followTokens(const QString &instance);
    void initUsedRequests();
    void tellChanges();
    QStringList interruptTokens() const;
    void readRow(const XMLElementInfo &element, QList<StoredValue> &values, QList<DesignProblem> &problems);
    QString placeOf(const DMARequest &request) const;

    Design &m_design;
    PeripheralsBaseInfo m_BaseInfo;
    bool m_isEdma;
    DmaTable m_table;
    DmaParameters m_parameters;

    QSet<QString> m_owners;                        ///< instances that have requests
    QList<int> m_rows;                             ///< requests with a channel, in the order of the table
    std::vector<DmaParameters::Entered> m_entered; ///< by request
    QHash<QString, QStringList> m_tokens;          ///< by instance, with repetitions; under "" those for all
    QStringList m_toldInterrupts;                  ///< tokens in force at the interrupt controller
    QStringList m_toldChannels;                    ///< requests with their channels, as last announced
    IPSTATUS m_toldStatus = IPSTATUS_OFF;
};

} // namespace ChipLoom
