#include "Design/DMA_Configuration.h"

#include "Design/Design.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

struct DMA_Configuration::State
{
    QList<DMARequest> requests;
    QList<ChannelUseType> channels;
    QList<int> rows;
    std::vector<DmaParameters::Entered> entered;
    QHash<QString, QStringList> tokens;
    QStringList toldInterrupts;
    QStringList toldChannels;
    IPSTATUS toldStatus;
};

namespace {

const QString AnyChannel = QStringLiteral("any");
const QString RequestKey = QStringLiteral("Request");

// What `list` holds more often than `other`.
QStringList surplus(QStringList list, const QStringList &other)
{
    for (const QString &entry : other)
        list.removeOne(entry);
    return list;
}

} // namespace

DMA_Configuration::DMA_Configuration(Design &design, PeripheralsBaseInfo info,
                                     std::shared_ptr<const PeripheralTree> tree)
    : m_design(design), m_BaseInfo(std::move(info)), m_isEdma(m_BaseInfo.InstanceName == QLatin1String("EDMA")),
      m_table(m_BaseInfo.InstanceName, tree->root()), m_parameters(tree, m_isEdma), m_entered(m_table.requestCount())
{
    for (int i = 0; i < m_table.requestCount(); ++i) {
        for (const QString &owner : m_table.rule(i).owners)
            m_owners.insert(owner);
    }
    followTokens({});
}

// ---- Changes by a user ----

bool DMA_Configuration::handles(const DesignChange &change) const
{
    return change.section == m_BaseInfo.InstanceName.toLower();
}

DesignAnswer DMA_Configuration::apply(const DesignChange &change)
{
    const QString who = change.address.section(QLatin1Char('/'), 0, 0);
    const QString what = change.address.section(QLatin1Char('/'), 1);
    const bool isChannel = m_table.channelIndex(who) >= 0;
    const int row = rowOf(who);
    DesignAnswer answer;
    if (who != AnyChannel && !isChannel && m_table.indexOf(who) < 0)
        answer = m_table.indexOf(change.value) < 0 ? unknownRequest({change.value, who})
                                                   : DesignAnswer{DesignReason::UnknownDmaChannel, {who}};
    else if (!what.isEmpty() && row < 0)
        answer = {DesignReason::DmaRequestNotUsed, {who}};
    else if (what == RequestKey)
        answer = place(change.value, {}, row);
    else if (!what.isEmpty())
        answer = applySetting(row, what, change.value);
    else if (change.value.isEmpty() && row >= 0)
        free(row);
    else if (change.value.isEmpty())
        answer = {DesignReason::DmaRequestNotUsed, {who}};
    else if (who == AnyChannel)
        answer = m_table.indexOf(change.value) < 0 ? unknownRequest({change.value}) : place(change.value, {}, -1);
    else if (isChannel)
        answer = place(change.value, who, -1);
    else
        answer = place(who, change.value, -1);
    if (answer)
        tellChanges();
    return answer;
}

DesignAnswer DMA_Configuration::unknownRequest(const QStringList &names) const
{
    for (const DMA_Configuration *other : m_design.dmaParts()) {
        for (const QString &name : names) {
            if (other->m_table.indexOf(name) >= 0) {
                const QString controller = other->m_BaseInfo.InstanceName;
                return {DesignReason::DmaRequestElsewhere, {name, controller, controller.toLower()}};
            }
        }
    }
    return {DesignReason::UnknownDmaRequest, {}};
}

DesignAnswer DMA_Configuration::applySetting(int request, const QString &name, const QString &value)
{
    const DMARequest &record = m_table.request(request);
    const DesignAnswer answer = canTake(record, name, value);
    if (answer) {
        m_entered[request].insert(name, value.trimmed());
        initUsedRequests();
    }
    return answer;
}

DesignAnswer DMA_Configuration::move(int request, const QString &channelName)
{
    const DMARequest &record = m_table.request(request);
    if (channelName.isEmpty())
        return {DesignReason::DmaRequestUsed, {record.requestName, record.channelName}};
    if (channelName == record.channelName)
        return {};
    const int channel = m_table.channelIndex(channelName);
    if (!getAvailableChannelByRequest(record).contains(channelName))
        return {DesignReason::DmaChannelNotForRequest, {record.requestName, channelName}};
    m_table.channelInfo(m_table.channelIndex(record.channelName)).channelUseType = channelUseType_Not;
    const int row = m_rows.indexOf(request);
    m_rows.removeAt(row);
    use(request, channel, row);
    return {};
}

DesignAnswer DMA_Configuration::place(const QString &requestName, const QString &channelName, int replaced)
{
    const int index = freeRecord(requestName);
    if (index < 0)
        return {DesignReason::UnknownDmaRequest, {}};
    const DMARequest &request = m_table.request(index);
    const int holder = channelName.isEmpty() ? -1 : rowOf(channelName);
    if (holder >= 0 && m_table.request(holder).requestName == requestName)
        return {};
    if (!channelName.isEmpty() && m_table.channelIndex(channelName) < 0)
        return {DesignReason::UnknownDmaChannel, {channelName}};
    if (holder >= 0)
        return {DesignReason::DmaChannelTaken, {channelName, m_table.request(holder).requestName}};
    if (replaced >= 0 && m_table.request(replaced).requestName == requestName)
        return {};
    if (request.configStatus == Request_Used && request.DMAType == DMA_REQUEST_MEMTOMEM)
        return {DesignReason::NoDmaChannel, {}};
    if (request.configStatus == Request_Used)
        return move(index, channelName);
    if (request.DMAType != DMA_REQUEST_MEMTOMEM && request.configStatus != Request_Enable)
        return {DesignReason::DmaRequestClosed, {requestName, request.InstanceName}};

    for (const int rival : m_table.rule(index).rivals) {
        const DMARequest &other = m_table.request(rival);
        if (rival != replaced && other.configStatus == Request_Used)
            return {DesignReason::NoChannelForDmaRequest, {other.requestName}};
    }
    if (const QString taken = takenElsewhere(index); !taken.isEmpty())
        return {DesignReason::NoChannelForDmaRequest, {taken}};
    for (const QString &tied : tiedRequests(m_design.series(), requestName)) {
        const int other = rowOf(tied);
        if (other >= 0 && other != replaced)
            return {DesignReason::NoChannelForDmaRequest, {tied}};
    }

    // The channel of a row that is replaced counts as free, and is the one that stays if it can serve.
    const int freed = replaced < 0 ? -1 : m_table.channelIndex(m_table.request(replaced).channelName);
    const ChannelUseType former = freed < 0 ? channelUseType_Not : m_table.channelInfo(freed).channelUseType;
    if (freed >= 0)
        m_table.channelInfo(freed).channelUseType = channelUseType_Not;
    const QStringList channels = getAvailableChannelByRequest(request);
    if (freed >= 0)
        m_table.channelInfo(freed).channelUseType = former;

    if (channels.isEmpty() && request.DMAType == DMA_REQUEST_MEMTOMEM)
        return {DesignReason::NoDmaChannel, {}};
    if (channels.isEmpty()) {
        QStringList wanted;
        for (const DMAChannelCondition &entry : request.instanceCondition)
            wanted.append(entry.channelName);
        if (wanted.isEmpty())
            return {DesignReason::NoDmaChannel, {}};
        return {DesignReason::NoChannelForDmaRequest, {wanted.join(QLatin1Char('/'))}};
    }
    if (!channelName.isEmpty() && !channels.contains(channelName))
        return {DesignReason::DmaChannelNotForRequest, {requestName, channelName}};
    QString chosen = channelName.isEmpty() ? channels.first() : channelName;
    int row = m_rows.size();
    if (replaced >= 0) {
        row = m_rows.indexOf(replaced);
        const QString stays = m_table.channel(freed).name;
        if (channels.contains(stays))
            chosen = stays;
        free(replaced);
    }
    use(index, m_table.channelIndex(chosen), row);
    return {};
}

void DMA_Configuration::use(int request, int channel, int row)
{
    DMARequest &record = m_table.request(request);
    const DmaTable::Channel &own = m_table.channel(channel);
    const bool memory = record.DMAType == DMA_REQUEST_MEMTOMEM;
    record.configStatus = Request_Used;
    record.channelName = own.name;
    record.channelNameValue = m_table.channelInfo(channel).channelValue;
    record.DMAHandle = own.handle;
    if (!memory && record.DMAType != DMA_REQUEST_GENERATOR)
        record.DMAType = requestKind(own.controller);
    m_table.channelInfo(channel).channelUseType = memory ? channelUseType_MemToMem : channelUseType_IP;
    m_rows.insert(row, request);
    takeOverrides(request, tokensOf(record.InstanceName));
    initUsedRequests();
}

void DMA_Configuration::free(int request)
{
    DMARequest &record = m_table.request(request);
    m_table.channelInfo(m_table.channelIndex(record.channelName)).channelUseType = channelUseType_Not;
    record.channelName.clear();
    record.channelNameValue.clear();
    record.DMAHandle.clear();
    record.RefParameterfoList.clear();
    record.DMAType = requestKind(record.requestName);
    m_entered[request].clear();
    m_rows.removeOne(request);
    record.configStatus = record.DMAType != DMA_REQUEST_MEMTOMEM && isOpen(request) ? Request_Enable : Request_Not;
    initUsedRequests();
}

void DMA_Configuration::initUsedRequests()
{
    for (const int row : qAsConst(m_rows)) {
        DMARequest &request = m_table.request(row);
        m_parameters.InitOneDMARequestParam(request, m_entered[row], contextOf(request));
    }
}

void DMA_Configuration::SetDMASettingsDefaultValue(const QString &instance)
{
    for (const int row : qAsConst(m_rows)) {
        if (concerns(row, instance))
            m_entered[row].clear();
    }
    initUsedRequests();
    tellChanges();
}

void DMA_Configuration::ResetAllDMASetting()
{
    while (!m_rows.isEmpty())
        free(m_rows.last());
    tellChanges();
}

// ---- Tokens ----

void DMA_Configuration::ReceiveSemaphores(const QString &instance, const QStringList &tokens, bool enable)
{
    if (!instance.isEmpty() && !m_owners.contains(instance))
        return;
    QStringList &held = m_tokens[instance];
    for (const QString &token : tokens) {
        if (enable)
            held.append(token);
        else
            held.removeOne(token);
    }
    bool concernsRows = false;
    for (const int row : qAsConst(m_rows)) {
        if (!concerns(row, instance))
            continue;
        concernsRows = true;
        if (enable)
            takeOverrides(row, tokens);
    }
    const bool changed = followTokens(instance);
    if (!changed && !concernsRows)
        return;
    initUsedRequests();
    tellChanges();
}

// A token as "MemBurst=EDMA_MEMORY_BURST_4" sets the parameter that it names.
void DMA_Configuration::takeOverrides(int request, const QStringList &tokens)
{
    for (const QString &token : tokens) {
        const QString name = token.section(QLatin1Char('='), 0, 0).trimmed();
        const QString value = token.section(QLatin1Char('='), 1).trimmed();
        for (const DMAParamInfo &info : qAsConst(m_table.request(request).DMAParamInfoList)) {
            if (info.InfoName == name && info.ValueList.contains(value))
                m_entered[request].insert(name, value);
        }
    }
}

// Whether a request changed its state or its channel.
bool DMA_Configuration::followTokens(const QString &instance)
{
    bool changed = false;
    for (int i = 0; i < m_table.requestCount(); ++i) {
        DMARequest &request = m_table.request(i);
        if (!concerns(i, instance) || request.DMAType == DMA_REQUEST_MEMTOMEM)
            continue;
        const bool open = isOpen(i);
        if (request.configStatus != Request_Used) {
            const DMARequest_TYPE status = open ? Request_Enable : Request_Not;
            changed = changed || status != request.configStatus;
            request.configStatus = status;
            continue;
        }
        if (open && serves(i, m_table.channelIndex(request.channelName)))
            continue;
        changed = true;
        // The peripheral still asks, but by another channel: it takes its settings along if that one is free.
        const QStringList others = open ? getAvailableChannelByRequest(request) : QStringList();
        if (others.isEmpty())
            free(i);
        else
            move(i, others.first());
    }
    return changed;
}

QStringList DMA_Configuration::interruptTokens() const
{
    QStringList tokens;
    for (const int row : m_rows) {
        const DMARequest &request = m_table.request(row);
        tokens += m_parameters.interruptTokens(request, contextOf(request));
    }
    return tokens;
}

void DMA_Configuration::tellChanges()
{
    QStringList channels;
    for (const int row : qAsConst(m_rows))
        channels.append(m_table.request(row).requestName + QLatin1Char('@') + m_table.request(row).channelName);
    const bool requestsChanged = channels != m_toldChannels;
    m_toldChannels = channels;

    const QStringList tokens = interruptTokens();
    const QStringList cancelled = surplus(m_toldInterrupts, tokens);
    const QStringList enabled = surplus(tokens, m_toldInterrupts);
    m_toldInterrupts = tokens;

    const IPSTATUS status = m_rows.isEmpty() ? IPSTATUS_OFF : IPSTATUS_ON;
    const bool statusChanged = status != m_toldStatus;
    m_toldStatus = status;

    // What is told may come back as tokens; all of the state is current by now.
    if (requestsChanged)
        emit SendDMARequestChangeSignals();
    if (!cancelled.isEmpty() || !enabled.isEmpty())
        emit SendAutoEnableNVICIRQSemaphore(cancelled, enabled, instanceName());
    if (statusChanged)
        emit SendIPStatusFlag(instanceName(), m_toldStatus, false);
    emit settingsChanged();
}

// ---- The part ----

void DMA_Configuration::updateLanguage()
{
    initUsedRequests();
    emit settingsChanged();
}

std::any DMA_Configuration::save() const
{
    State state{{}, {}, m_rows, m_entered, m_tokens, m_toldInterrupts, m_toldChannels, m_toldStatus};
    for (int i = 0; i < m_table.requestCount(); ++i)
        state.requests.append(m_table.request(i));
    for (int i = 0; i < m_table.channelCount(); ++i)
        state.channels.append(m_table.channelInfo(i).channelUseType);
    return state;
}

void DMA_Configuration::restore(const std::any &saved)
{
    const State *state = std::any_cast<State>(&saved);
    if (!state || state->requests.size() != m_table.requestCount() || state->channels.size() != m_table.channelCount())
        return;
    for (int i = 0; i < m_table.requestCount(); ++i)
        m_table.request(i) = state->requests.at(i);
    for (int i = 0; i < m_table.channelCount(); ++i)
        m_table.channelInfo(i).channelUseType = state->channels.at(i);
    m_rows = state->rows;
    m_entered = state->entered;
    m_tokens = state->tokens;
    m_toldInterrupts = state->toldInterrupts;
    m_toldChannels = state->toldChannels;
    m_toldStatus = state->toldStatus;
    emit settingsChanged();
}

} // namespace ChipLoom
