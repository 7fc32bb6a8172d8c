#include "Design/DMA_Configuration.h"

#include "Design/Design.h"

#include <algorithm>

namespace ChipLoom {

namespace {

const QString EventEnable = QStringLiteral("EventEnable");

} // namespace

QStringList DMA_Configuration::tokensOf(const QString &instance) const
{
    return instance.isEmpty() ? m_tokens.value({}) : m_tokens.value({}) + m_tokens.value(instance);
}

DmaParameterContext DMA_Configuration::contextOf(const DMARequest &request, int channel) const
{
    DmaParameterContext context;
    context.tokens = tokensOf(request.InstanceName);
    context.request = request.requestName;
    if (channel >= 0) {
        const DmaTable::Channel &own = m_table.channel(channel);
        context.handle = own.handle;
        context.controller = own.controller;
        context.channelNo = own.number;
    }
    for (int i = 0; i < m_table.channelCount(); ++i) {
        const DmaTable::Channel &one = m_table.channel(i);
        const int row = rowOf(one.name);
        const QString event = row < 0 ? QString() : currentValue(row, EventEnable);
        context.channelEvents.insert(one.event, event.isEmpty() ? QStringLiteral("FALSE") : event);
    }
    return context;
}

DmaParameterContext DMA_Configuration::contextOf(const DMARequest &request) const
{
    return contextOf(request, m_table.channelIndex(request.channelName));
}

bool DMA_Configuration::concerns(int request, const QString &instance) const
{
    return instance.isEmpty() || m_table.rule(request).owners.contains(instance);
}

QString DMA_Configuration::currentValue(int request, const QString &name) const
{
    for (const RefParameter &parameter : m_table.request(request).RefParameterfoList) {
        if (parameter.Name == name)
            return parameter.CurrentValue;
    }
    return {};
}

int DMA_Configuration::rowOf(const QString &requestOrChannel) const
{
    for (const int row : m_rows) {
        const DMARequest &request = m_table.request(row);
        if (request.requestName == requestOrChannel || request.channelName == requestOrChannel)
            return row;
    }
    return -1;
}

// A record of the name without a channel, or the one there is; -1 for an unknown name.
int DMA_Configuration::freeRecord(const QString &requestName) const
{
    for (int i = 0; i < m_table.requestCount(); ++i) {
        const DMARequest &request = m_table.request(i);
        if (request.requestName == requestName && request.configStatus != Request_Used)
            return i;
    }
    return m_table.indexOf(requestName);
}

bool DMA_Configuration::serves(int request, int channel) const
{
    const DMARequest &record = m_table.request(request);
    if (record.DMAType == DMA_REQUEST_MEMTOMEM)
        return true;
    ParameterValues values;
    values.set(QStringLiteral("Instance"), record.InstanceName);
    const DmaParameterContext context = contextOf(record, channel);
    const QString &name = m_table.channel(channel).name;
    const auto met = [&](const QString &condition) { return isDmaConditionMet(condition, values, context); };
    const QList<DMAChannelCondition> &own = record.instanceCondition;
    if (!own.isEmpty() && std::none_of(own.begin(), own.end(), [&](const DMAChannelCondition &entry) {
            return entry.channelName == name && met(entry.condition);
        }))
        return false;
    const QList<DMA_Request_Condition> &listed = m_table.channelInfo(channel).DMARequestNameList;
    return listed.isEmpty() || std::any_of(listed.begin(), listed.end(), [&](const DMA_Request_Condition &entry) {
               return entry.requestName == record.requestName && met(entry.condition);
           });
}

// Whether the peripheral is set so that the request can come at all.
bool DMA_Configuration::isOpen(int request) const
{
    const DMARequest &record = m_table.request(request);
    if (record.DMAType == DMA_REQUEST_MEMTOMEM)
        return true;
    ParameterValues values;
    values.set(QStringLiteral("Instance"), record.InstanceName);
    DmaParameterContext context;
    context.tokens = tokensOf(record.InstanceName);
    for (const QString &owner : m_table.rule(request).owners) {
        if (owner != record.InstanceName)
            context.tokens += m_tokens.value(owner);
    }
    if (!isDmaConditionMet(m_table.rule(request).condition, values, context))
        return false;
    const QList<DMAChannelCondition> &channels = record.instanceCondition;
    return channels.isEmpty() || std::any_of(channels.begin(), channels.end(), [&](const DMAChannelCondition &entry) {
               return isDmaConditionMet(entry.condition, values, context);
           });
}

// The request, or one that excludes it, that the other controller serves; empty if it serves none of them. Each has
// generators of its own.
QString DMA_Configuration::takenElsewhere(int request) const
{
    const int kind = m_table.request(request).DMAType;
    if (kind == DMA_REQUEST_MEMTOMEM || kind == DMA_REQUEST_GENERATOR)
        return {};
    QStringList names{m_table.request(request).requestName};
    for (const int rival : m_table.rule(request).rivals)
        names.append(m_table.request(rival).requestName);
    for (const DMA_Configuration *other : m_design.dmaParts()) {
        for (const QString &name : other == this ? QStringList() : names) {
            const DMARequest *known = other->getDMARequestByName(name);
            if (known && known->configStatus == Request_Used)
                return name;
        }
    }
    return {};
}

QList<const DMARequest *> DMA_Configuration::rows(const QString &instance) const
{
    QList<const DMARequest *> list;
    for (const int row : m_rows) {
        if (concerns(row, instance))
            list.append(&m_table.request(row));
    }
    return list;
}

bool DMA_Configuration::hasRequests(const QString &instance) const
{
    for (int i = 0; i < m_table.requestCount(); ++i) {
        if (concerns(i, instance))
            return true;
    }
    return false;
}

QList<DMARequest *> DMA_Configuration::ValidDMAChannalList() const
{
    QList<DMARequest *> list;
    for (int channel = 0; channel < m_table.channelCount(); ++channel) {
        const int row = rowOf(m_table.channel(channel).name);
        if (row >= 0)
            list.append(m_table.info().m_AllDMARequestList.at(row));
    }
    return list;
}

const DMARequest *DMA_Configuration::getDMARequestByName(const QString &name) const
{
    const int index = m_table.indexOf(name);
    return index < 0 ? nullptr : &m_table.request(index);
}

QStringList DMA_Configuration::getDMARequestNameList(const QString &instance) const
{
    QStringList names;
    for (int i = 0; i < m_table.requestCount(); ++i) {
        const DMARequest &request = m_table.request(i);
        if (!concerns(i, instance) || request.configStatus == Request_Used)
            continue;
        const bool memory = request.DMAType == DMA_REQUEST_MEMTOMEM;
        const bool waits = memory ? !getAvailableChannelByRequest(request).isEmpty()
                                  : request.configStatus == Request_Enable && takenElsewhere(i).isEmpty();
        if (waits && !names.contains(request.requestName))
            names.append(request.requestName);
    }
    return names;
}

QStringList DMA_Configuration::getAvailableChannelByRequest(const DMARequest &request) const
{
    const int index = m_table.indexOf(&request);
    QStringList preferred;
    for (const DMAChannelCondition &entry : request.instanceCondition)
        preferred.append(entry.channelName);
    QStringList channels;
    for (int i = 0; index >= 0 && i < m_table.channelCount(); ++i) {
        if (m_table.channelInfo(i).channelUseType == channelUseType_Not && serves(index, i))
            channels.append(m_table.channel(i).name);
    }
    std::stable_sort(channels.begin(), channels.end(),
                     [&](const QString &a, const QString &b) { return preferred.indexOf(a) < preferred.indexOf(b); });
    return channels;
}

DesignAnswer DMA_Configuration::canAdd(const QString &instance) const
{
    bool channelFree = false;
    for (int i = 0; i < m_table.channelCount(); ++i)
        channelFree = channelFree || m_table.channelInfo(i).channelUseType == channelUseType_Not;
    if (!channelFree)
        return {DesignReason::NoDmaChannel, {}};
    if (getDMARequestNameList(instance).isEmpty())
        return {DesignReason::NoDmaRequest, {}};
    return {};
}

QString DMA_Configuration::addressOf(const DMARequest &request) const
{
    const int count = int(std::count_if(m_rows.begin(), m_rows.end(), [&](int row) {
        return m_table.request(row).requestName == request.requestName;
    }));
    return count > 1 ? request.channelName : request.requestName;
}

QList<PossibleValue> DMA_Configuration::offeredValues(const DMARequest &request, const RefParameter &parameter) const
{
    return m_parameters.offeredValues(request, parameter, contextOf(request));
}

bool DMA_Configuration::isGood(const DMARequest &request, const RefParameter &parameter) const
{
    return m_parameters.isGood(request, parameter, contextOf(request));
}

DesignAnswer DMA_Configuration::canTake(const DMARequest &request, const QString &name, const QString &value) const
{
    return m_parameters.canTake(request, name, value, contextOf(request));
}

QStringList DMA_Configuration::requestTokens(const QString &instance) const
{
    QStringList tokens;
    const auto add = [&](int request) {
        const QString &token = m_table.rule(request).token;
        if (!token.isEmpty() && m_table.request(request).InstanceName == instance && !tokens.contains(token))
            tokens.append(token);
    };
    for (const int row : m_rows) {
        add(row);
        for (const int half : m_table.rule(row).halves)
            add(half);
    }
    return tokens;
}

} // namespace ChipLoom
