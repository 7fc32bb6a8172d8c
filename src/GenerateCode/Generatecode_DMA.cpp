#include "GenerateCode/Generatecode_DMA.h"

#include "GenerateCode/FunctionPlan.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace ChipLoom {

namespace {

constexpr std::array Events{"FDT", "HDT", "DTERR", "DMERR", "FERR"};
constexpr size_t ChannelEvents = 3; // a stream has all of them

const QString Yes = QStringLiteral("TRUE");
const QLatin1String Stream("EDMA");
const QLatin1String Generator("GENERATOR");
constexpr std::string_view SampleRequest = "\"request\"";

// What the topics ask for beside the parameters of a request.
const QString LoopMode = QStringLiteral("LoopMode");
const QString FlexibleRequest = QStringLiteral("FlexibleRequest");
const QString GeneratorRequest = QStringLiteral("GeneratorRequest");

std::span<const char *const> eventsOf(const QString &name)
{
    return std::span(Events).first(name == Stream ? Events.size() : ChannelEvents);
}

bool isMemoryToMemory(const DMARequest &request)
{
    return request.requestName.startsWith(QLatin1String("MEMTOMEM"));
}

// What not every family has stands or falls with its section in the template.
Topic optional(const QByteArray &key, const char *sectionName, TopicTest test, const char *function,
               const QList<TopicValue> &arguments)
{
    return section("GenerateCode_DMA_feature", QString::fromLatin1(sectionName), std::move(test),
                   {call("GenerateCode_DMA_feature", (key + function).constData(), arguments)})
        .onlyWhen(QStringLiteral("in the template"));
}

std::vector<Topic> channelTopics(const QString &name)
{
    const QByteArray key = name.toLower().toLatin1() + '_';
    const auto member = [&](const char *field, TopicValue value) {
        return assignment("GenerateCode_DMA_init", (key + "init_struct." + field).constData(), std::move(value));
    };
    std::vector<Topic> topics{
        member("direction", "Direction"),
        member("memory_data_width", "MemDataAlignment"),
        member("memory_inc_enable", "MemInc"),
        member("peripheral_data_width", "PeriphDataAlignment"),
        member("peripheral_inc_enable", "PeriphInc"),
        member("priority", "Priority"),
        member("loop_mode_enable", LoopMode),
        optional(key, "flexible", isGiven(FlexibleRequest), "flexible_config", {Keep, FlexibleRequest}),
        optional(key, "request generator", isGiven(GeneratorRequest), "generator_config",
                 {GeneratorRequest, "GeneratorSignalID", "GeneratorPolarity", "GeneratorRequestCount"}),
        optional(key, "request synchronization", isOther("SyncEnable", {"FALSE"}), "synchronization_config",
                 {Keep, "SyncSignalID", "SyncPolarity"}),
        optional(key, "request count", isOther("SyncRequestCount", {"FALSE"}), "request_count_set",
                 {Keep, "SyncRequestCount"}),
        optional(key, "request event", isOther("EventEnable", {"FALSE"}), "event_enable", {Keep, Keep}),
    };
    if (name == Stream) {
        append(topics, {member("fifo_mode_enable", "FIFOMode"), member("fifo_threshold", "FIFOThreshold"),
                        member("memory_burst", "MemBurst"), member("peripheral_burst", "PeriphBurst"),
                        optional(key, "double memory", isOther("DoubleMemoryMode", {"FALSE"}), "double_memory_config",
                                 {Keep, Keep, "CurrentMemory"}),
                        optional(key, "two dimensions", isOther("2DMode", {"FALSE"}), "two_dimensions_config",
                                 {Keep, "XAxisCount", "YAxisCount", "SourceStride", "DestinationStride"}),
                        optional(key, "linked table", isOther("LinkedTableTransferMode", {"FALSE"}),
                                 "linked_table_config", {Keep, Keep})});
    }
    for (const char *event : eventsOf(name))
        topics.push_back(interruptEnable((QByteArray("Interrupt_") + event).constData()));
    return topics;
}

const PeripheralTopics &topicsOf(const QString &name)
{
    static const PeripheralTopics dma{.kind = "DMA", .function = channelTopics(QStringLiteral("DMA"))};
    static const PeripheralTopics edma{.kind = "EDMA", .function = channelTopics(Stream)};
    return name == Stream ? edma : dma;
}

} // namespace

DmaChannelNames::DmaChannelNames(const QString &channel)
    : name(channel), section(channel.toLower() + QLatin1String("_init")),
      addressArgument(toCode(channel.toUpper()) + "_PERIPHERAL_BASE_ADDR")
{
    const int controller = channel.indexOf(QLatin1Char('_'));
    const QString kind = channel.left(controller);
    questions = &InstanceQuestions::of(topicsOf(kind), channel);
    int number = channel.size();
    while (number > 0 && channel.at(number - 1).isDigit())
        --number;
    for (const char *event : eventsOf(kind))
        events.push_back(
            {QLatin1String("Interrupt_") + QLatin1String(event),
             kind + QLatin1Char('_') + QLatin1String(event) + channel.midRef(number) + QLatin1String("_FLAG")});
}

GenerateCode_DMA::GenerateCode_DMA(ZV32MCUSERIALS series, const QString &name,
                                   const std::vector<DmaChannelNames> &channels, const QList<DMARequest *> &requests)
    : m_MCUSerial(series), m_name(name), m_key(name.toLower()), m_names(channels)
{
    for (const DmaChannelNames &channel : channels) {
        const auto owner = std::find_if(requests.begin(), requests.end(), [&](const DMARequest *request) {
            return request->channelName == channel.name;
        });
        m_channels.push_back({channel, owner == requests.end() ? nullptr : *owner});
    }
}

bool GenerateCode_DMA::isUsed() const
{
    return std::any_of(m_channels.begin(), m_channels.end(), [](const Channel &channel) { return channel.request; });
}

QString GenerateCode_DMA::sharedSection() const
{
    return m_key +
           (m_name == QLatin1String("EDMA") ? QLatin1String("_stream_config") : QLatin1String("_channel_config"));
}

const DMARequest *GenerateCode_DMA::GetValidDMAChannel(const QString &channel) const
{
    for (const Channel &one : m_channels) {
        if (one.names.name.compare(channel, Qt::CaseInsensitive) == 0)
            return one.request;
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

QStringList GenerateCode_DMA::sections() const
{
    QStringList names{sharedSection()};
    for (const Channel &channel : m_channels)
        names.append(channel.names.section);
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
    const int underline = request.requestName.indexOf(QLatin1Char('_'));
    const QString owner = request.requestName.left(underline);
    const QString event = underline < 0 ? QString() : request.requestName.mid(underline + 1);
    const QString kind = kindOfInstance(owner);
    const QString number = owner.mid(kind.size());
    if (kind == QLatin1String("ADC"))
        return owner + QLatin1String("->odt");
    if (kind == QLatin1String("DAC"))
        return QStringLiteral("DAC->out[%1].dth").arg(number.toInt() - 1);
    if (kind == QLatin1String("SDIO"))
        return owner + QLatin1String("->buf");
    if (kind == QLatin1String("TMR")) {
        return event.startsWith(QLatin1String("CH"))
                   ? owner + QLatin1String("->cdt[") + QString::number(event.midRef(2).toInt() - 1) + QLatin1Char(']')
                   : owner + QLatin1String("->pr");
    }
    // An I2S is its SPI working another way.
    return (kind == QLatin1String("I2S") ? QLatin1String("SPI") + number : owner) + QLatin1String("->dt");
}

bool GenerateCode_DMA::writeChannel(const TextCut &body, const Channel &channel, std::string &text) const
{
    const DMARequest &request = *channel.request;
    const bool circular = Get_DMARequeset_parameterValue(QStringLiteral("Mode"), request) == QLatin1String("CIRCULAR");
    DerivedValues derived{{LoopMode, circular ? Yes : QStringLiteral("FALSE")}};
    if (!isMemoryToMemory(request))
        derived.append({FlexibleRequest, m_name + QLatin1String("_FLEXIBLE_") + request.requestName});
    if (request.requestName.startsWith(Generator))
        derived.append({GeneratorRequest, m_name + QLatin1Char('_') + request.requestName});

    InstanceQuestions &questions = *channel.names.questions;
    DeclaredGenerator generator(m_MCUSerial, questions);
    generator.SetRefParameterList(request.RefParameterfoList);
    generator.SetDerivedValues(std::move(derived));
    return FunctionPlan::of(body, questions.topics().function, generator).write(generator, text);
}

const SectionedText::Spots &GenerateCode_DMA::spotsOfEvents(const SectionedText &handlers) const
{
    return handlers.spotsOf(m_names.data(), [this] {
        QStringList names;
        for (const Channel &channel : m_channels) {
            for (const DmaChannelNames::Event &event : channel.names.events)
                names.append(event.section);
        }
        return names;
    });
}

bool GenerateCode_DMA::editChannels(SectionedText &text, const ChannelEdit &edit) const
{
    auto spot = text.spotsOf(m_names).begin();
    for (const Channel &channel : m_channels) {
        const SectionedText::Spot &section = *spot++;
        std::string written;
        if (channel.request) {
            const std::shared_ptr<const TextCut> body = text.keptBody(section);
            written.reserve(body ? body->text().size() : 0);
            if (!body || !edit(*body, channel, written))
                return false;
            if (const int sample = indexOf(written, SampleRequest); sample >= 0)
                replaceAt(written, sample + 1, length(SampleRequest) - 2, toCode(channel.request->requestName));
            GenerateCode_DeleteBlankLine_FunctionEnd(written);
        }
        if (!text.replaceSection(section, std::move(written)))
            return false;
    }
    return true;
}

bool GenerateCode_DMA::GenerateCode_lm_config_c(SectionedText &text) const
{
    if (!m_channels.empty() && !GenerateCode_Handle_Function(text, sharedSection(), isUsed()))
        return false;
    return editChannels(text, [this](const TextCut &body, const Channel &channel, std::string &written) {
        return writeChannel(body, channel, written);
    });
}

bool GenerateCode_DMA::GenerateCode_defines(SectionedText &text) const
{
    return m_channels.empty() || GenerateCode_Handle_Function(text, m_key + QLatin1String(" define"), isUsed());
}

bool GenerateCode_DMA::GenerateCode_header_sections(SectionedText &text) const
{
    if (!m_channels.empty() && !GenerateCode_Handle_Function(text, sharedSection(), isUsed()))
        return false;
    const SectionedText::Spots &sections = text.spotsOf(m_names);
    return std::equal(m_channels.begin(), m_channels.end(), sections.begin(),
                      [&](const Channel &channel, const SectionedText::Spot &section) {
                          return text.handleSection(section, channel.request);
                      });
}

bool GenerateCode_DMA::writeCall(const TextCut &body, const Channel &channel, std::string &text) const
{
    // What SCFG can move to this channel has a section of its own in front of the call.
    const QLatin1String remap("_dma_remap");
    const QString name = channel.request->requestName.toLower();
    int copied = 0;
    for (const TextCut::Piece &piece : body.pieces()) {
        if (piece.kind != TextCut::Piece::Kind::Section || !piece.name.endsWith(remap))
            continue;
        const QString signal = piece.name.chopped(remap.size());
        text.append(body.between(copied, piece.start));
        if (name == signal || name.startsWith(signal + QLatin1Char('_')))
            text.append(body.between(piece.bodyStart, piece.bodyEnd())) += '\n';
        copied = piece.end();
    }
    text.append(body.between(copied, length(body.text())));

    const std::string &sample = channel.names.addressArgument;
    const QString address = dataRegister(*channel.request);
    return address.isEmpty() ? indexOf(text, sample) >= 0 : replaceAll(text, sample, "(uint32_t)&" + toCode(address));
}

bool GenerateCode_DMA::GenerateCode_main_c(SectionedText &text) const
{
    return editChannels(text, [this](const TextCut &body, const Channel &channel, std::string &written) {
        return writeCall(body, channel, written);
    });
}

bool GenerateCode_DMA::GenerateCode_interrupt_int_c(SectionedText &text) const
{
    auto spot = spotsOfEvents(text).begin();
    for (const Channel &channel : m_channels) {
        for (const DmaChannelNames::Event &event : channel.names.events) {
            const SectionedText::Spot &section = *spot++;
            if (text.isGone(section))
                continue;
            const bool keep =
                channel.request && Get_DMARequeset_parameterValue(event.parameter, *channel.request) == Yes;
            if (!text.handleSection(section, keep))
                return false;
        }
    }
    return true;
}

} // namespace ChipLoom
