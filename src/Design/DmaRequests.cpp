#include "Design/DmaRequests.h"

#include "Model/XmlTree.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

const QLatin1String RequestMode("DMA_Request");

// Requests in one text share a channel by hardware; series are separated by blanks.
struct TiedRow
{
    const char *series;
    const char *requests;
};

constexpr std::array<TiedRow, 3> Tied{{
    {"ZV32F421 ZV32F422 ZV32F426 ZV32F6221", "TMR16_CH1 TMR16_OVERFLOW"},
    {"ZV32F421 ZV32F422 ZV32F426 ZV32F6221", "TMR17_CH1 TMR17_OVERFLOW"},
    {"ZV32F422 ZV32F426 ZV32F6221", "TMR3_CH1 TMR3_TRIG"},
}};

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

QString attribute(const XMLElementInfo &element, const char *name)
{
    return attributeValue(element, QLatin1String(name));
}

bool isRequest(const XMLElementInfo &element)
{
    return element.tagName == QLatin1String("RefMode") && attribute(element, "BaseMode") == RequestMode;
}

const XMLElementInfo *declarationOf(const XMLElementInfo &tree, const QString &parameter)
{
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (element.tagName == QLatin1String("RefParameter") && attribute(element, "Name") == parameter)
            return &element;
    }
    return nullptr;
}

DMAParamInfo paramInfo(const XMLElementInfo &element, const XMLElementInfo &tree)
{
    DMAParamInfo info;
    info.InfoName = attribute(element, "Name");
    info.DefaultValue = attribute(element, "DefaultValue");
    QStringList allowed;
    for (const XMLElementInfo &value : element.subElementInfoList) {
        if (value.tagName == QLatin1String("PossibleValue"))
            allowed.append(value.tagText.trimmed());
    }
    const XMLElementInfo *declaration = declarationOf(tree, info.InfoName);
    if (!declaration)
        return info;
    info.InfoComment = attribute(*declaration, "Comment");
    for (const XMLElementInfo &value : declaration->subElementInfoList) {
        const QString name = attribute(value, "Value");
        if (value.tagName != QLatin1String("PossibleValue") || (!allowed.isEmpty() && !allowed.contains(name)))
            continue;
        info.ValueList.append(name);
        info.ValueDisplayList.append(attribute(value, "Comment"));
    }
    return info;
}

} // namespace

DMA_REQUEST_KIND requestKind(const QString &name)
{
    // In this order, since "EDMA" holds "DMA".
    static constexpr std::array<std::pair<const char *, DMA_REQUEST_KIND>, 5> Words{{
        {"MEMTOMEM", DMA_REQUEST_MEMTOMEM},
        {"GENERATOR", DMA_REQUEST_GENERATOR},
        {"EDMA", DMA_REQUEST_EDMA},
        {"DMA2", DMA_REQUEST_DMA2},
        {"DMA1", DMA_REQUEST_DMA1},
    }};
    for (const auto &[word, kind] : Words) {
        if (name.contains(QLatin1String(word), Qt::CaseInsensitive))
            return kind;
    }
    return DMA_REQUEST_UNKNOWN;
}

QStringList tiedRequests(const QString &series, const QString &request)
{
    for (const TiedRow &row : Tied) {
        QStringList group = words(row.requests);
        if (words(row.series).contains(series) && group.removeOne(request))
            return group;
    }
    return {};
}

DmaTable::DmaTable(const QString &instanceName, const XMLElementInfo &tree)
{
    m_info.instanceName = instanceName;
    m_info.m_DMAXMLFileInfo = tree;
    GetDMAChannelInfo(tree);
    getDMARequestList_sub(tree);
    GetDMAModeSettings(tree);
    findRivals();
}

void DmaTable::GetDMAChannelInfo(const XMLElementInfo &tree)
{
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        const QString name = attribute(element, "Name");
        if (element.tagName != QLatin1String("DMAChannel") || name.isEmpty() || channelIndex(name) >= 0)
            continue;
        const QString handle = attribute(element, "Handle");
        QString controller = attribute(element, "Controller");
        if (controller.isEmpty())
            controller = name.section(QLatin1Char('_'), 0, 0);
        const QString number = name.section(QLatin1Char('_'), 1);
        const QString event =
            controller.toUpper() + QLatin1String("_MUX_") + number.toUpper() + QLatin1String("_EVENT");
        m_channels.push_back({name, handle.isEmpty() ? name : handle, controller, number, event});
        auto info = std::make_unique<DMA_Channel_Info>();
        info->channelComment = name;
        info->channelValue = attribute(element, "Value");
        for (const XMLElementInfo &request : element.subElementInfoList) {
            if (request.tagName == QLatin1String("Request"))
                info->DMARequestNameList.append({attribute(request, "Name"), attribute(request, "Condition")});
        }
        m_info.m_ChannelInfoList.append(info.get());
        m_channelInfos.push_back(std::move(info));
        const DMA_REQUEST_KIND kind = requestKind(m_channels.back().controller);
        m_info.m_nDMA1ChannelCount += kind == DMA_REQUEST_DMA1;
        m_info.m_nDMA2ChannelCount += kind == DMA_REQUEST_DMA2;
    }
}

void DmaTable::getDMARequestList_sub(const XMLElementInfo &tree)
{
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (!isRequest(element) || attribute(element, "Name").isEmpty())
            continue;
        DMARequest request;
        request.requestName = attribute(element, "Name");
        request.InstanceName = attribute(element, "IpInstance");
        for (const XMLElementInfo &child : element.subElementInfoList) {
            if (child.tagName == QLatin1String("InstanceCondition"))
                request.instanceCondition.append({attribute(child, "ChannelName"), attribute(child, "Condition")});
            else if (child.tagName == QLatin1String("Parameter"))
                request.DMAParamInfoList.append(paramInfo(child, tree));
        }
        request.DMAType = requestKind(request.requestName);
        if (indexOf(request.requestName) >= 0)
            continue;
        // Several channels can copy memory at once.
        const int copies = request.DMAType == DMA_REQUEST_MEMTOMEM ? std::max(1, channelCount()) : 1;
        for (int i = 0; i < copies; ++i) {
            m_requests.push_back(std::make_unique<DMARequest>(request));
            m_info.m_AllDMARequestList.append(m_requests.back().get());
            m_rules.push_back(
                {attribute(element, "Condition"), attribute(element, "Semaphore"), {request.InstanceName}});
        }
    }
}

void DmaTable::GetDMAModeSettings(const XMLElementInfo &tree)
{
    DMAModeCofiguration mode{RequestMode, QStringLiteral("OR"), {}};
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        const QString owner = attribute(element, "IpInstance");
        if (!isRequest(element) || owner.isEmpty())
            continue;
        auto entry = std::find_if(mode.modeParam.begin(), mode.modeParam.end(),
                                  [&](const DMAInstanceCofiguration &known) { return known.instanceName == owner; });
        if (entry == mode.modeParam.end())
            entry = mode.modeParam.insert(mode.modeParam.end(), {owner, QStringLiteral("OR"), {}});
        QStringList tokens{attribute(element, "Semaphore")};
        tokens.removeAll(QString());
        entry->modeSignal.append({attribute(element, "Name"), attribute(element, "Condition"), tokens});
    }
    if (!mode.modeParam.isEmpty())
        m_info.m_DMAModeConfigList.append(mode);
}

// A pair is named by both of its halves, as ADC1_ADC2.
void DmaTable::findRivals()
{
    for (int pair = 0; pair < requestCount(); ++pair) {
        const QString name = request(pair).requestName;
        for (int cut = name.indexOf(QLatin1Char('_')); cut > 0; cut = name.indexOf(QLatin1Char('_'), cut + 1)) {
            const int first = indexOf(name.left(cut));
            const int second = indexOf(name.mid(cut + 1));
            if (first < 0 || second < 0)
                continue;
            for (const int half : {first, second}) {
                m_rules[pair].halves.append(half);
                m_rules[pair].rivals.append(half);
                m_rules[half].rivals.append(pair);
                if (!m_rules[pair].owners.contains(request(half).InstanceName))
                    m_rules[pair].owners.append(request(half).InstanceName);
            }
        }
    }
}

int DmaTable::indexOf(const QString &requestName) const
{
    for (int i = 0; i < requestCount(); ++i) {
        if (request(i).requestName == requestName)
            return i;
    }
    return -1;
}

int DmaTable::indexOf(const DMARequest *wanted) const
{
    for (int i = 0; i < requestCount(); ++i) {
        if (&request(i) == wanted)
            return i;
    }
    return -1;
}

int DmaTable::channelIndex(const QString &channelName) const
{
    for (int i = 0; i < channelCount(); ++i) {
        if (m_channels[i].name == channelName)
            return i;
    }
    return -1;
}

} // namespace ChipLoom
