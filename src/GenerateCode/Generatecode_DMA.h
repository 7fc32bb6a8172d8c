#pragma once

#include "GenerateCode/SectionedText.h"
#include "Model/ShareParameter.h"

#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace ChipLoom {

class InstanceQuestions;

/// What the templates call the parts of a DMA channel or EDMA stream.
struct DmaChannelNames
{
    explicit DmaChannelNames(const QString &channel);

    struct Event
    {
        QString parameter; ///< "Interrupt_FDT"
        QString section;   ///< in the handler: "DMA1_FDT1_FLAG"
    };
    QString name;                ///< "DMA1_Channel1"
    QString section;             ///< of its functions: "dma1_channel1_init"
    std::string addressArgument; ///< in the sample of its call
    std::vector<Event> events;
    InstanceQuestions *questions; ///< never null
};

/// Writes the functions of the DMA channels, or of the EDMA streams, their calls with the addresses of the peripherals,
/// and the events in their handlers.
class GenerateCode_DMA
{
public:
    /// `name` is "DMA" or "EDMA"; `channels` are all channels of the chip and stay as long as the templates, which
    /// keep what was found for them; `requests` those that have one, of other controllers too. Nothing is written where
    /// there are no channels.
    GenerateCode_DMA(ZV32MCUSERIALS series, const QString &name, const std::vector<DmaChannelNames> &channels,
                     const QList<DMARequest *> &requests);

    const QString &name() const { return m_name; }
    bool isUsed() const;
    /// The results of all converters are fetched where they stand together, by the request of the first.
    void SetCommonConversionData(bool common) { m_commonConversionData = common; }

    bool GenerateCode_lm_config_c(SectionedText &text) const;
    /// The block of addresses and sizes that the user fills in.
    bool GenerateCode_defines(SectionedText &text) const;
    /// The prototypes.
    bool GenerateCode_header_sections(SectionedText &text) const;
    bool GenerateCode_main_c(SectionedText &text) const;
    bool GenerateCode_interrupt_int_c(SectionedText &text) const;

    /// The request that has a channel, or null.
    const DMARequest *GetValidDMAChannel(const QString &channel) const;
    bool DMAChannelIsValid(const QString &channel) const { return GetValidDMAChannel(channel) != nullptr; }
    static QString Get_DMARequeset_parameterValue(const QString &name, const DMARequest &request);

    /// The data register that a request serves, as "USART1->dt"; empty where no peripheral asks: for a transfer within
    /// memory, and for requests of a generator.
    QString dataRegister(const DMARequest &request) const;
    QString sharedSection() const;
    /// All of them, in the order of the files.
    QStringList sections() const;

private:
    struct Channel
    {
        const DmaChannelNames &names;
        const DMARequest *request = nullptr; ///< null where the channel is free
    };
    using ChannelEdit = std::function<bool(const TextCut &body, const Channel &channel, std::string &text)>;
    /// Edits the sections of the channels in use; those of the others go.
    bool editChannels(SectionedText &text, const ChannelEdit &edit) const;
    /// Of the events of all channels, in their order.
    const SectionedText::Spots &spotsOfEvents(const SectionedText &handlers) const;
    bool writeChannel(const TextCut &body, const Channel &channel, std::string &text) const;
    bool writeCall(const TextCut &body, const Channel &channel, std::string &text) const;

    ZV32MCUSERIALS m_MCUSerial;
    QString m_name;
    QString m_key;                               ///< what functions and types begin with: "dma"
    const std::vector<DmaChannelNames> &m_names; ///< of all channels
    std::vector<Channel> m_channels;
    bool m_commonConversionData = false;
};

} // namespace ChipLoom
