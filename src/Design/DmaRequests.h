#pragma once

#include "Model/ShareParameter.h"

#include <memory>
#include <vector>

namespace ChipLoom {

/// What a request is for, in `DMARequest::DMAType`, by the word that its name or its controller holds.
enum DMA_REQUEST_KIND {
    DMA_REQUEST_UNKNOWN = 0,
    DMA_REQUEST_MEMTOMEM = 1,
    DMA_REQUEST_GENERATOR = 2, ///< raised by the request generator of the multiplexer
    DMA_REQUEST_EDMA = 3,
    DMA_REQUEST_DMA2 = 4,
    DMA_REQUEST_DMA1 = 5
};

DMA_REQUEST_KIND requestKind(const QString &name);

/// The description of the DMA of a series as records: what it declares, nothing of what is chosen. Owns the records to
/// which `info` points, so it stays where it was made.
class DmaTable
{
public:
    DmaTable(const QString &instanceName, const XMLElementInfo &tree);
    DmaTable(const DmaTable &) = delete;
    DmaTable &operator=(const DmaTable &) = delete;

    /// Beside a request's record: when it can be asked for, and what its peripheral hears while it has a channel.
    struct Rule
    {
        QString condition;      ///< empty for always
        QString token;          ///< empty for none
        QStringList owners;     ///< whose table shows it: one, or the two of a pair
        QList<int> halves = {}; ///< of a pair, as ADC1 and ADC2 of ADC1_ADC2
        QList<int> rivals = {}; ///< requests that cannot have a channel at the same time: a pair and its halves
    };
    /// Beside a channel's record.
    struct Channel
    {
        QString name;       ///< as "DMA1_Channel2"
        QString handle;     ///< with "_IRQn" behind it the vector
        QString controller; ///< as "DMA1"
        QString number;     ///< as "Channel2"
        QString event;      ///< as "DMA1_MUX_CHANNEL2_EVENT"; what conditions call its events
    };

    const DMA_INFO &info() const { return m_info; }
    int requestCount() const { return int(m_requests.size()); }
    DMARequest &request(int index) { return *m_requests.at(index); }
    const DMARequest &request(int index) const { return *m_requests.at(index); }
    const Rule &rule(int index) const { return m_rules.at(index); }
    /// The first request of that name, -1 for none. Memory to memory has as many records as there are channels.
    int indexOf(const QString &requestName) const;
    int indexOf(const DMARequest *request) const;

    int channelCount() const { return int(m_channels.size()); }
    DMA_Channel_Info &channelInfo(int index) { return *m_channelInfos.at(index); }
    const DMA_Channel_Info &channelInfo(int index) const { return *m_channelInfos.at(index); }
    const Channel &channel(int index) const { return m_channels.at(index); }
    int channelIndex(const QString &channelName) const;

private:
    void GetDMAChannelInfo(const XMLElementInfo &tree);
    void getDMARequestList_sub(const XMLElementInfo &tree);
    void GetDMAModeSettings(const XMLElementInfo &tree);
    void findRivals();

    DMA_INFO m_info;
    std::vector<std::unique_ptr<DMARequest>> m_requests;
    std::vector<Rule> m_rules;
    std::vector<std::unique_ptr<DMA_Channel_Info>> m_channelInfos;
    std::vector<Channel> m_channels;
};

/// Requests that hardware ties to one channel with another on a series: those of the group of `request`, itself left
/// out.
QStringList tiedRequests(const QString &series, const QString &request);

} // namespace ChipLoom
