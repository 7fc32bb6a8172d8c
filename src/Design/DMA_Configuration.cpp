#include "Design/DMA_Configuration.h"

#include "Design/Design.h"
#include "Model/XmlTree.h"

#include <QXmlStreamWriter>

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

const QString MemToMem = QStringLiteral("MEMTOMEM");
const QString AnyChannel = QStringLiteral("any");
const QString RequestKey = QStringLiteral("Request");
const QString EventEnable = QStringLiteral("EventEnable");

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

// ---- Questions ----

QStringList DMA_Configuration::tokensOf(const QString &instance) const
{
    return instance.isEmpty() ? m_tokens.value({}) : m_tokens.value({}) + m_tokens.value(instance);
}

DmaParameterContext DMA_Configuration::contextOf(const DMARequest &request, int channel) const
{
    DmaParameterContext context;
    context.tokens = tokensOf(request.InstanceName);
    if (channel >= 0) {
        const DmaTable::Channel &own = m_table.channel(channel);
        context.handle = own.handle;
        context.controller = own.controller;
        context.channelNo = own.name.section(QLatin1Char('_'), 1);
    }
    for (int i = 0; i < m_table.channelCount(); ++i) {
        const DmaTable::Channel &one = m_table.channel(i);
        const QString name = one.controller.toUpper() + QLatin1String("_MUX_") +
                             one.name.section(QLatin1Char('_'), 1).toUpper() + QLatin1String("_EVENT");
        const int row = rowOf(one.name);
        const QString event = row < 0 ? QString() : currentValue(row, EventEnable);
        context.channelEvents.insert(name, event.isEmpty() ? QStringLiteral("FALSE") : event);
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
        const bool waits =
            memory ? !getAvailableChannelByRequest(request).isEmpty() : request.configStatus == Request_Enable;
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

QStringList DMA_Configuration::GetValidDMAChannelName_ForIP(const QString &instance) const
{
    QStringList names;
    for (const DMARequest *request : ValidDMAChannalList()) {
        if (concerns(m_table.indexOf(request), instance))
            names.append(request->channelName);
    }
    return names;
}

QStringList DMA_Configuration::GetValidDMAChannelName_All() const
{
    return GetValidDMAChannelName_ForIP({});
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
        answer = m_table.indexOf(change.value) < 0 ? DesignAnswer{DesignReason::UnknownDmaRequest, {}}
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
        answer = place(change.value, {}, -1);
    else if (isChannel)
        answer = place(change.value, who, -1);
    else
        answer = place(who, change.value, -1);
    if (answer)
        tellChanges();
    return answer;
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

void DMA_Configuration::writeSection(QXmlStreamWriter &writer) const
{
    if (m_rows.isEmpty())
        return;
    writer.writeStartElement(instanceName());
    for (const int row : m_rows) {
        const DMARequest &request = m_table.request(row);
        const bool memory = request.DMAType == DMA_REQUEST_MEMTOMEM;
        writer.writeStartElement(memory ? MemToMem : QStringLiteral("list"));
        if (!memory) {
            writer.writeAttribute(QStringLiteral("Instance"), request.InstanceName);
            writer.writeAttribute(QStringLiteral("Request"), request.requestName);
        }
        writer.writeAttribute(QStringLiteral("Channel"), request.channelName);
        for (const RefParameter &parameter : request.RefParameterfoList) {
            writer.writeEmptyElement(QStringLiteral("ParametersSub"));
            writer.writeAttribute(QStringLiteral("name"), parameter.Name);
            writer.writeAttribute(QStringLiteral("value"), parameter.CurrentValue);
        }
        writer.writeEndElement();
    }
    writer.writeEndElement();
}

void DMA_Configuration::readSection(const XMLElementInfo &root, QList<DesignProblem> &problems)
{
    const XMLElementInfo *section = ChipLoom::findChild(root, QLatin1String(instanceName().toLatin1()));
    if (!section)
        return;
    QList<StoredValue> values;
    QStringList order;
    for (const XMLElementInfo &element : section->subElementInfoList) {
        readRow(element, values, problems);
        order.append(attributeValue(element, QLatin1String("Channel")));
    }
    // What stood here before the section was read goes behind its rows.
    std::stable_sort(m_rows.begin(), m_rows.end(), [&](int a, int b) {
        const int first = order.indexOf(m_table.request(a).channelName);
        const int second = order.indexOf(m_table.request(b).channelName);
        return first >= 0 && (second < 0 || first < second);
    });
    // A value may be offered only after a later one is in, of another request too: what is refused is tried again
    // behind the others.
    for (int before = -1; before != values.size();) {
        before = values.size();
        values.erase(std::remove_if(values.begin(), values.end(),
                                    [this](const StoredValue &stored) {
                                        return currentValue(stored.request, stored.name) == stored.value ||
                                               applySetting(stored.request, stored.name, stored.value);
                                    }),
                     values.end());
    }
    for (const StoredValue &stored : qAsConst(values)) {
        const DMARequest &request = m_table.request(stored.request);
        problems.append(
            {placeOf(request) + QLatin1Char('/') + stored.name, canTake(request, stored.name, stored.value)});
    }
    tellChanges();
}

void DMA_Configuration::readRow(const XMLElementInfo &element, QList<StoredValue> &values,
                                QList<DesignProblem> &problems)
{
    const bool memory = element.tagName == MemToMem;
    if (!memory && element.tagName != QLatin1String("list"))
        return;
    const QString name = memory ? MemToMem : attributeValue(element, QLatin1String("Request"));
    const QString channel = attributeValue(element, QLatin1String("Channel"));
    const DesignAnswer placed = m_table.channelIndex(channel) < 0
                                    ? DesignAnswer{DesignReason::UnknownDmaChannel, {channel}}
                                    : place(name, channel, -1);
    if (!placed) {
        problems.append({instanceName() + QLatin1Char('/') + name, placed});
        return;
    }
    for (const XMLElementInfo &stored : element.subElementInfoList) {
        if (stored.tagName == QLatin1String("ParametersSub"))
            values.append({rowOf(channel), attributeValue(stored, QLatin1String("name")),
                           attributeValue(stored, QLatin1String("value"))});
    }
}

QString DMA_Configuration::placeOf(const DMARequest &request) const
{
    return instanceName() + QLatin1Char('/') + addressOf(request);
}

void DMA_Configuration::collectProblems(QList<DesignProblem> &problems) const
{
    for (const int row : m_rows) {
        const DMARequest &request = m_table.request(row);
        for (const RefParameter &parameter : request.RefParameterfoList) {
            if (parameter.Visible && !isGood(request, parameter))
                problems.append(
                    {instanceName() + QLatin1Char('/') + addressOf(request) + QLatin1Char('/') + parameter.Name,
                     {DesignReason::ValueNotOffered, {parameter.Name, parameter.CurrentValue}}});
        }
    }
}

} // namespace ChipLoom
