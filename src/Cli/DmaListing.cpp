#include "Cli/DmaListing.h"

#include "Cli/TextTable.h"
#include "Design/DMA_Configuration.h"
#include "Design/Design.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

namespace ChipLoom {

namespace {

QString shown(const char *text)
{
    return QCoreApplication::translate("Cli", text);
}

void writeRow(const DMA_Configuration &dma, const DMARequest &request, QTextStream &out)
{
    const QString section = dma.typeName().toLower() + QLatin1Char('/');
    QList<QStringList> lines{{section + request.channelName, request.requestName, {}}};
    const QString address = section + dma.addressOf(request) + QLatin1Char('/');
    for (const RefParameter &parameter : request.RefParameterfoList) {
        if (parameter.Visible)
            lines.append({address + parameter.Name, parameter.CurrentValue,
                          dma.isGood(request, parameter) ? QString() : shown(QT_TRANSLATE_NOOP("Cli", "not allowed"))});
    }
    writeTable(out, lines, 4);
}

} // namespace

void writeDma(Design &design, QTextStream &out)
{
    if (design.dmaParts().empty())
        out << "  " << shown(QT_TRANSLATE_NOOP("Cli", "The device has no DMA.")) << '\n';
    for (const DMA_Configuration *dma : design.dmaParts()) {
        out << "  " << dma->typeName() << '\n';
        const QList<const DMARequest *> rows = dma->rows();
        for (const DMARequest *request : rows)
            writeRow(*dma, *request, out);
        if (rows.isEmpty())
            out << "    " << shown(QT_TRANSLATE_NOOP("Cli", "No request has a channel.")) << '\n';
        const QStringList waiting = dma->getDMARequestNameList();
        if (!waiting.isEmpty())
            out << "    " << shown(QT_TRANSLATE_NOOP("Cli", "Requests without a channel:")) << ' '
                << waiting.join(QStringLiteral(", ")) << '\n';
    }
}

QJsonValue dmaJson(Design &design)
{
    QJsonArray list;
    for (const DMA_Configuration *dma : design.dmaParts()) {
        QJsonArray requests;
        for (const DMARequest *request : dma->rows()) {
            QJsonArray settings;
            for (const RefParameter &parameter : request->RefParameterfoList) {
                if (parameter.Visible)
                    settings.append(QJsonObject{{QStringLiteral("name"), parameter.Name},
                                                {QStringLiteral("value"), parameter.CurrentValue},
                                                {QStringLiteral("good"), dma->isGood(*request, parameter)}});
            }
            requests.append(QJsonObject{{QStringLiteral("request"), request->requestName},
                                        {QStringLiteral("instance"), request->InstanceName},
                                        {QStringLiteral("channel"), request->channelName},
                                        {QStringLiteral("settings"), settings}});
        }
        list.append(QJsonObject{{QStringLiteral("controller"), dma->typeName()},
                                {QStringLiteral("requests"), requests},
                                {QStringLiteral("waiting"), QJsonArray::fromStringList(dma->getDMARequestNameList())}});
    }
    return list;
}

} // namespace ChipLoom
