#include "GenerateCode/Generatecode_DMA.h"

#include "GenerateCode/PeripheralGenerator.h"
#include "GenerateCode/TextEngine.h"

#include <QRegularExpression>

#include <array>
#include <utility>

namespace ChipLoom {

namespace {

struct Member
{
    const char *field; // of dma_init_type
    const char *parameter;
};

constexpr std::array<Member, 6> Members{{
    {"direction", "Direction"},
    {"memory_data_width", "MemDataAlignment"},
    {"memory_inc_enable", "MemInc"},
    {"peripheral_data_width", "PeriphDataAlignment"},
    {"peripheral_inc_enable", "PeriphInc"},
    {"priority", "Priority"},
}};

constexpr std::array Events{"FDT", "HDT", "DTERR"};

bool assign(QString &text, const char *field, const QString &value)
{
    const QString member = QLatin1String("dma_init_struct.") + QLatin1String(field);
    return rewriteAll(text, member + QLatin1String(R"(\s*=\s*\w+;)"),
                      member + QLatin1String(" = ") + value + QLatin1Char(';'));
}

bool isMemoryToMemory(const DMARequest &request)
{
    return request.requestName.startsWith(QLatin1String("MEMTOMEM"));
}

} // namespace

GenerateCode_DMA::GenerateCode_DMA(QStringList channels, QList<DMARequest *> requests)
    : m_channels(std::move(channels)), m_ValidDMAChannalList(std::move(requests))
{
}

const DMARequest *GenerateCode_DMA::GetValidDMAChannel(const QString &channel) const
{
    for (const DMARequest *request : m_ValidDMAChannalList) {
        if (request->channelName.compare(channel, Qt::CaseInsensitive) == 0)
            return request;
    }
    return nullptr;
}

QString GenerateCode_DMA::Get_DMARequeset_parameterValue(const QString &name, const DMARequest &request)
{
    for (const RefParameter &entry : request.RefParameterfoList) {
        if (entry.Name == name)
            return entry.CurrentValue;
    }
    return {};
}

QString GenerateCode_DMA::channelSection(const QString &channel)
{
    return channel.toLower() + QLatin1String("_init");
}

QString GenerateCode_DMA::dataRegister(const DMARequest &request)
{
    if (isMemoryToMemory(request))
        return {};
    const QString owner = request.requestName.section(QLatin1Char('_'), 0, 0);
    const QString event = request.requestName.section(QLatin1Char('_'), 1);
    const QString kind = kindOfInstance(owner);
    const QString number = owner.mid(kind.size());
    if (kind == QLatin1String("ADC"))
        return owner + QLatin1String("->odt");
    if (kind == QLatin1String("DAC"))
        return QStringLiteral("DAC->out[%1].dth").arg(number.toInt() - 1);
    if (kind == QLatin1String("SDIO"))
        return owner + QLatin1String("->buf");
    if (kind == QLatin1String("TMR")) {
        return event.startsWith(QLatin1String("CH")) ? owner + QStringLiteral("->cdt[%1]").arg(event.mid(2).toInt() - 1)
                                                     : owner + QLatin1String("->pr");
    }
    // An I2S is its SPI working another way.
    return (kind == QLatin1String("I2S") ? QLatin1String("SPI") + number : owner) + QLatin1String("->dt");
}

bool GenerateCode_DMA::writeChannel(QString &body, const DMARequest &request) const
{
    body.replace(QLatin1String("\"request\""), QLatin1Char('"') + request.requestName + QLatin1Char('"'));
    for (const Member &member : Members) {
        const QString value = Get_DMARequeset_parameterValue(QLatin1String(member.parameter), request);
        if (!value.isEmpty() && !assign(body, member.field, value))
            return false;
    }
    const bool circular = Get_DMARequeset_parameterValue(QStringLiteral("Mode"), request) == QLatin1String("CIRCULAR");
    if (!assign(body, "loop_mode_enable", circular ? QStringLiteral("TRUE") : QStringLiteral("FALSE")))
        return false;
    if (findSection(body, QStringLiteral("flexible")).found()) {
        GenerateCode_Handle_Function(body, QStringLiteral("flexible"), !isMemoryToMemory(request));
        const CallMatch call = findCall(body, QStringLiteral("dma_flexible_config"), 2);
        if (call.found())
            body.replace(call.start, call.length,
                         QLatin1String("dma_flexible_config(") + call.arguments.first() +
                             QLatin1String(", DMA_FLEXIBLE_") + request.requestName + QLatin1String(");"));
        else if (!isMemoryToMemory(request))
            return false;
    }
    for (const char *event : Events) {
        const QString name = QLatin1String("Interrupt_") + QLatin1String(event);
        const bool keep = Get_DMARequeset_parameterValue(name, request) == QLatin1String("TRUE");
        if (!GenerateCode_Handle_Function(body, name, keep))
            return false;
    }
    GenerateCode_DeleteBlankLine_FunctionEnd(body);
    return true;
}

bool GenerateCode_DMA::editChannels(QString &text, const ChannelEdit &edit) const
{
    for (const QString &channel : m_channels) {
        const SectionSpan span = findSection(text, channelSection(channel));
        if (!span.found())
            return false;
        QString work;
        if (const DMARequest *request = GetValidDMAChannel(channel)) {
            work = keptBody(text, span);
            if (!edit(work, channel, *request))
                return false;
        }
        replaceSection(text, span, work);
    }
    return true;
}

bool GenerateCode_DMA::GenerateCode_lm_config_c(QString &text) const
{
    if (!m_channels.isEmpty() && !GenerateCode_Handle_Function(text, sharedSection(), !m_ValidDMAChannalList.isEmpty()))
        return false;
    return editChannels(text, [this](QString &work, const QString &, const DMARequest &request) {
        return writeChannel(work, request);
    });
}

bool GenerateCode_DMA::GenerateCode_defines(QString &text) const
{
    return m_channels.isEmpty() ||
           GenerateCode_Handle_Function(text, QStringLiteral("dma define"), !m_ValidDMAChannalList.isEmpty());
}

bool GenerateCode_DMA::GenerateCode_header_sections(QString &text) const
{
    if (!m_channels.isEmpty() && !GenerateCode_Handle_Function(text, sharedSection(), !m_ValidDMAChannalList.isEmpty()))
        return false;
    for (const QString &channel : m_channels) {
        if (!GenerateCode_Handle_Function(text, channelSection(channel), DMAChannelIsValid(channel)))
            return false;
    }
    return true;
}

bool GenerateCode_DMA::writeCall(QString &body, const QString &channel, const DMARequest &request) const
{
    // What SCFG can move to this channel has a section of its own in front of the call.
    static const QRegularExpression remap(QStringLiteral(R"(\[#(\w+)_dma_remap\])"));
    for (QRegularExpressionMatch match = remap.match(body); match.hasMatch(); match = remap.match(body)) {
        const QString signal = match.captured(1);
        const QString name = request.requestName.toLower();
        const bool moved = name == signal || name.startsWith(signal + QLatin1Char('_'));
        if (!GenerateCode_Handle_Function(body, signal + QLatin1String("_dma_remap"), moved))
            return false;
    }
    const QString macro = channel.toUpper();
    const QString sample = macro + QLatin1String("_PERIPHERAL_BASE_ADDR");
    if (!body.contains(sample))
        return false;
    const QString address = dataRegister(request);
    if (!address.isEmpty())
        body.replace(sample, QLatin1String("(uint32_t)&") + address);
    return true;
}

bool GenerateCode_DMA::GenerateCode_main_c(QString &text) const
{
    return editChannels(text, [this](QString &work, const QString &channel, const DMARequest &request) {
        return writeCall(work, channel, request);
    });
}

bool GenerateCode_DMA::GenerateCode_interrupt_int_c(QString &text) const
{
    for (const QString &channel : m_channels) {
        const DMARequest *request = GetValidDMAChannel(channel);
        const QString number = channel.section(QLatin1String("Channel"), 1);
        const QString controller = channel.section(QLatin1Char('_'), 0, 0);
        for (const char *event : Events) {
            const QString flag = controller + QLatin1Char('_') + QLatin1String(event) + number + QLatin1String("_FLAG");
            const bool keep =
                request && Get_DMARequeset_parameterValue(QLatin1String("Interrupt_") + QLatin1String(event),
                                                          *request) == QLatin1String("TRUE");
            if (!GenerateCode_Handle_Function(text, flag, keep))
                return false;
        }
    }
    return true;
}

} // namespace ChipLoom
