#include "GenerateCode/Generatecode_DMA.h"

#include "GenerateCode/PeripheralGenerator.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"

#include <QRegularExpression>

#include <array>
#include <span>
#include <utility>

namespace ChipLoom {

namespace {

struct Member
{
    const char *field; // of dma_init_type or edma_init_type
    const char *parameter;
};

constexpr std::array<Member, 10> Members{{
    {"direction", "Direction"},
    {"memory_data_width", "MemDataAlignment"},
    {"memory_inc_enable", "MemInc"},
    {"peripheral_data_width", "PeriphDataAlignment"},
    {"peripheral_inc_enable", "PeriphInc"},
    {"priority", "Priority"},
    {"fifo_mode_enable", "FIFOMode"},
    {"fifo_threshold", "FIFOThreshold"},
    {"memory_burst", "MemBurst"},
    {"peripheral_burst", "PeriphBurst"},
}};

// A section that stays if its parameter is on, with one call: the first arguments stand in the template, the parameters
// named here follow.
struct Feature
{
    const char *section;
    const char *test;
    const char *call; // behind "dma_"
    int kept;
    std::array<const char *, 4> parameters;
};

constexpr std::array<Feature, 6> Features{{
    {"double memory", "DoubleMemoryMode", "double_memory_config", 2, {"CurrentMemory"}},
    {"two dimensions",
     "2DMode",
     "two_dimensions_config",
     1,
     {"XAxisCount", "YAxisCount", "SourceStride", "DestinationStride"}},
    {"linked table", "LinkedTableTransferMode", "linked_table_config", 2, {}},
    {"request synchronization", "SyncEnable", "synchronization_config", 1, {"SyncSignalID", "SyncPolarity"}},
    {"request count", "SyncRequestCount", "request_count_set", 1, {"SyncRequestCount"}},
    {"request event", "EventEnable", "event_enable", 2, {}},
}};

constexpr std::array Events{"FDT", "HDT", "DTERR", "DMERR", "FERR"};
constexpr size_t ChannelEvents = 3; // a stream has all of them

const QString Yes = QStringLiteral("TRUE");
const QLatin1String Generator("GENERATOR");

bool isMemoryToMemory(const DMARequest &request)
{
    return request.requestName.startsWith(QLatin1String("MEMTOMEM"));
}

std::span<const char *const> eventsOf(const QString &name)
{
    return std::span(Events).first(name == QLatin1String("EDMA") ? Events.size() : ChannelEvents);
}

} // namespace

GenerateCode_DMA::GenerateCode_DMA(const QString &name, QStringList channels, const QList<DMARequest *> &requests)
    : m_name(name), m_key(name.toLower()), m_channels(std::move(channels))
{
    for (DMARequest *request : requests) {
        if (m_channels.contains(request->channelName))
            m_ValidDMAChannalList.append(request);
    }
}

QString GenerateCode_DMA::sharedSection() const
{
    return m_key +
           (m_name == QLatin1String("EDMA") ? QLatin1String("_stream_config") : QLatin1String("_channel_config"));
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

QStringList GenerateCode_DMA::sections() const
{
    QStringList names{sharedSection()};
    for (const QString &channel : m_channels)
        names.append(channelSection(channel));
    return names;
}

QString GenerateCode_DMA::dataRegister(const DMARequest &request) const
{
    if (isMemoryToMemory(request) || request.requestName.startsWith(Generator))
        return {};
    if (m_commonConversionData && request.requestName == QLatin1String("ADC1"))
        return QStringLiteral("ADCCOM->codt");
    if (request.requestName == QLatin1String("DAC1_DAC2"))
        return QStringLiteral("DAC->dual");
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

bool GenerateCode_DMA::writeChannel(SectionedText &body, const DMARequest &request) const
{
    const auto assign = [&](const char *field, const QString &value) {
        return rewriteAssignments(body, m_key + QLatin1String("_init_struct.") + QLatin1String(field), value);
    };
    for (const Member &member : Members) {
        const QString value = Get_DMARequeset_parameterValue(QLatin1String(member.parameter), request);
        if (!value.isEmpty() && !assign(member.field, value))
            return false;
    }
    const bool circular = Get_DMARequeset_parameterValue(QStringLiteral("Mode"), request) == QLatin1String("CIRCULAR");
    if (!assign("loop_mode_enable", circular ? Yes : QStringLiteral("FALSE")) || !writeFeatures(body, request))
        return false;
    for (const char *event : eventsOf(m_name)) {
        const QString name = QLatin1String("Interrupt_") + QLatin1String(event);
        if (!GenerateCode_Handle_Function(body, name, Get_DMARequeset_parameterValue(name, request) == Yes))
            return false;
    }
    return true;
}

// What the template of the family has of them.
bool GenerateCode_DMA::writeFeatures(SectionedText &body, const DMARequest &request) const
{
    const auto valueOf = [&](const char *parameter) {
        return Get_DMARequeset_parameterValue(QLatin1String(parameter), request);
    };
    const auto write = [&](const QString &section, bool keep, const QString &call, int kept,
                           const QStringList &values) {
        std::optional<SectionedText> part = body.keptBody(section);
        if (!part)
            return true;
        if (!keep)
            return GenerateCode_Handle_Function(body, section, false);
        const QString function = m_key + QLatin1Char('_') + call;
        const int count = kept + values.size();
        const auto written = [&](QString &text, const QStringList &samples) {
            appendCall(text, function, samples.mid(0, kept) + values);
        };
        return part->writeFirst({Statement::Kind::Call, function, count}, SectionedText::Part::Statement, written) &&
               body.replaceSection(section, std::move(*part));
    };
    for (const Feature &feature : Features) {
        QStringList values;
        for (const char *parameter : feature.parameters) {
            if (parameter)
                values.append(valueOf(parameter));
        }
        const QString test = valueOf(feature.test);
        if (!write(QLatin1String(feature.section), !test.isEmpty() && test != QLatin1String("FALSE"),
                   QLatin1String(feature.call), feature.kept, values))
            return false;
    }
    const bool generated = request.requestName.startsWith(Generator);
    return write(QStringLiteral("flexible"), !isMemoryToMemory(request), QStringLiteral("flexible_config"), 1,
                 {m_name + QLatin1String("_FLEXIBLE_") + request.requestName}) &&
           write(QStringLiteral("request generator"), generated, QStringLiteral("generator_config"), 0,
                 {m_name + QLatin1Char('_') + request.requestName, valueOf("GeneratorSignalID"),
                  valueOf("GeneratorPolarity"), valueOf("GeneratorRequestCount")});
}

bool GenerateCode_DMA::editChannels(SectionedText &text, const ChannelEdit &edit) const
{
    for (const QString &channel : m_channels) {
        const QString section = channelSection(channel);
        QString written;
        if (const DMARequest *request = GetValidDMAChannel(channel)) {
            std::optional<SectionedText> work = text.keptBody(section);
            if (!work || !edit(*work, channel, *request))
                return false;
            written = work->joined();
            written.replace(QLatin1String("\"request\""), QLatin1Char('"') + request->requestName + QLatin1Char('"'));
            GenerateCode_DeleteBlankLine_FunctionEnd(written);
        }
        if (!text.replaceSection(section, written))
            return false;
    }
    return true;
}

bool GenerateCode_DMA::GenerateCode_lm_config_c(SectionedText &text) const
{
    if (!m_channels.isEmpty() && !GenerateCode_Handle_Function(text, sharedSection(), isUsed()))
        return false;
    return editChannels(text, [this](SectionedText &work, const QString &, const DMARequest &request) {
        return writeChannel(work, request);
    });
}

bool GenerateCode_DMA::GenerateCode_defines(SectionedText &text) const
{
    return m_channels.isEmpty() || GenerateCode_Handle_Function(text, m_key + QLatin1String(" define"), isUsed());
}

bool GenerateCode_DMA::GenerateCode_header_sections(SectionedText &text) const
{
    if (!m_channels.isEmpty() && !GenerateCode_Handle_Function(text, sharedSection(), isUsed()))
        return false;
    for (const QString &channel : m_channels) {
        if (!GenerateCode_Handle_Function(text, channelSection(channel), DMAChannelIsValid(channel)))
            return false;
    }
    return true;
}

bool GenerateCode_DMA::writeCall(SectionedText &work, const QString &channel, const DMARequest &request) const
{
    // What SCFG can move to this channel has a section of its own in front of the call.
    static const QRegularExpression remap(QStringLiteral(R"(\[#(\w+)_dma_remap\])"));
    QString body = work.joined();
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
    work = SectionedText(body);
    return true;
}

bool GenerateCode_DMA::GenerateCode_main_c(SectionedText &text) const
{
    return editChannels(text, [this](SectionedText &work, const QString &channel, const DMARequest &request) {
        return writeCall(work, channel, request);
    });
}

bool GenerateCode_DMA::GenerateCode_interrupt_int_c(SectionedText &text) const
{
    for (const QString &channel : m_channels) {
        const DMARequest *request = GetValidDMAChannel(channel);
        int number = channel.size();
        while (number > 0 && channel.at(number - 1).isDigit())
            --number;
        const QString controller = channel.left(channel.indexOf(QLatin1Char('_')));
        for (const char *event : eventsOf(m_name)) {
            const QString flag =
                controller + QLatin1Char('_') + QLatin1String(event) + channel.mid(number) + QLatin1String("_FLAG");
            const bool keep = request && Get_DMARequeset_parameterValue(
                                             QLatin1String("Interrupt_") + QLatin1String(event), *request) == Yes;
            if (!GenerateCode_Handle_Function(text, flag, keep))
                return false;
        }
    }
    return true;
}

} // namespace ChipLoom
