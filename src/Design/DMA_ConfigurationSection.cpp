#include "Design/DMA_Configuration.h"

#include "Model/XmlTree.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace ChipLoom {

namespace {

const QString MemToMem = QStringLiteral("MEMTOMEM");

} // namespace

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
