#include "Design/DMA_Configuration.h"
#include "HostRegisters.h"

using namespace ChipLoom;
using namespace ChipLoom::Test;

// Streams, converters with a common part and the video interface: the registers hold what the pages show.

namespace {

constexpr int Streams = 6;

const char *const Program = R"(
#define _GNU_SOURCE
#include <stdio.h>
#include <sys/mman.h>
#include "zv32f435_437_lm_config.h"

#define SHOW(name, value) printf(name " %lu\n", (unsigned long)(value))

static void show_stream(int n, const edma_stream_type *stream)
{
  printf("ctrl %d %u\n", n, stream->ctrl);
  printf("fifo %d %u\n", n, stream->fifo);
  printf("plane %d %u\n", n, stream->plane);
  printf("stride %d %u\n", n, stream->stride);
  printf("link %d %u\n", n, stream->link);
  printf("mux %d %u\n", n, stream->mux);
  printf("second %d %u\n", n, stream->m1addr);
}

static void show_converter(int n, adc_type *adc)
{
  printf("adc ctrl %d %u\n", n, adc->ctrl);
  printf("adc trig %d %u\n", n, adc->trig);
  printf("adc length %d %u\n", n, adc->sqlen);
  printf("adc first %d %u\n", n, adc->osq[0]);
  printf("adc sampling %d %u\n", n, adc->spt[0]);
  printf("adc oversampling %d %u\n", n, adc->ovsp);
}

int main(void)
{
  void *const base = (void *)APB1_BUS_BASE;

  if(mmap(base, 0x60000, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0) != base)
  {
    return 1;
  }
  lm_edma_stream1_init();
  lm_edma_stream2_init();
  lm_edma_stream3_init();
  lm_edma_stream4_init();
  lm_edma_stream5_init();
  lm_edma_stream6_init();
  lm_edma_stream_config(EDMA_STREAM6, 0x20000100u, 0x20000200u, 60000);
  edma_stream_enable(EDMA_STREAM6, TRUE);
  for(int n = 1; n <= 6; n++)
  {
    show_stream(n, (edma_stream_type *)(EDMA_BASE + 64u * n));
  }
  SHOW("size", EDMA_STREAM6->dtcnt);
  SHOW("source", EDMA_STREAM6->paddr);
  SHOW("destination", EDMA_STREAM6->m0addr);
  SHOW("generator", EDMA->gen[EDMA_GENERATOR2]);
  lm_adc_common_init();
  lm_adc1_init();
  lm_adc2_init();
  lm_adc3_init();
  SHOW("common", ADCCOM->ctrl);
  show_converter(1, ADC1);
  show_converter(2, ADC2);
  show_converter(3, ADC3);
  lm_dvp_init();
  SHOW("dvp control", DVP->ctrl);
  SHOW("dvp codes", DVP->codes);
  SHOW("dvp start", DVP->wstart);
  SHOW("dvp size", DVP->wsize);
  SHOW("dvp scale", DVP->scale);
  SHOW("dvp interrupts", DVP->inten);
  lm_dac_init();
  SHOW("dac first", DAC->out[0].ctrl);
  SHOW("dac second", DAC->out[1].ctrl);
  return 0;
}
)";

class StreamRegisters : public testing::WithParamInterface<unsigned>, public HostRegisters
{
protected:
    StreamRegisters() : HostRegisters(GetParam()) {}

    // Enters something that is offered into every setting of the requests that have a stream.
    void chooseStreamSettings()
    {
        for (const DMARequest *request : design.edma()->ValidDMAChannalList()) {
            QStringList names;
            for (const RefParameter &parameter : request->RefParameterfoList)
                names.append(parameter.Name);
            // Twice: what is switched on shows more.
            for (const QString &name : names + names) {
                const auto parameter =
                    std::find_if(request->RefParameterfoList.begin(), request->RefParameterfoList.end(),
                                 [&](const RefParameter &one) { return one.Name == name; });
                if (parameter == request->RefParameterfoList.end() || !parameter->Enable)
                    continue;
                const QList<PossibleValue> offered = design.edma()->offeredValues(*request, *parameter);
                const QString value =
                    offered.isEmpty()
                        ? QString::number(random(parameter->MinValue.toInt(), parameter->MaxValue.toInt()))
                        : offered.at(random(0, offered.size() - 1)).Value;
                set({"edma/" + request->channelName + '/' + name + '=' + value});
            }
        }
    }

    // Enters something that is offered into a parameter that is shown.
    void choose(const QString &instance, const QStringList &names)
    {
        for (const QString &name : names) {
            const IP_ParamSettingConfiguration &parameters = design.peripheral(instance)->parameters();
            const RefParameter *parameter = parameters.parameter(name);
            if (!parameter || !parameter->Enable)
                continue;
            QStringList values;
            for (const PossibleValue &value : parameter->PossibleValueList) {
                if (parameters.canTake(name, value.Value))
                    values.append(value.Value);
            }
            if (values.isEmpty())
                values.append(QString::number(random(parameter->MinValue.toInt(), parameter->MaxValue.toInt())));
            set({chosen(instance, name, values)});
        }
    }

    void expectStream(int n, const DMARequest &request)
    {
        SCOPED_TRACE(request.channelName.toStdString() + ' ' + request.requestName.toStdString());
        QMap<QString, QString> values;
        for (const RefParameter &parameter : request.RefParameterfoList)
            values[parameter.Name] = parameter.CurrentValue;
        const auto of = [&](const char *name) { return QString("%1 %2").arg(name).arg(n); };
        const auto on = [&](const char *name) { return int(values.value(name) == "TRUE"); };
        const auto place = [&](const char *name, const QString &stem, const QStringList &order) {
            const QString value = values.value(name);
            return value.isEmpty() ? 0 : order.indexOf(QString(value).remove("EDMA_" + stem));
        };
        const QStringList bursts{"SINGLE", "BURST_4", "BURST_8", "BURST_16"};
        const QStringList widths{"BYTE", "HALFWORD", "WORD"};
        EXPECT_EQ(field(of("ctrl"), 1, 5), on("Interrupt_FDT") + 2 * on("Interrupt_HDT") + 4 * on("Interrupt_DTERR") +
                                               8 * on("Interrupt_DMERR") + 16 * on("Interrupt_FERR"));
        EXPECT_EQ(field(of("ctrl"), 6, 2),
                  place("Direction", "DIR_", {"PERIPHERAL_TO_MEMORY", "MEMORY_TO_PERIPHERAL", "MEMORY_TO_MEMORY"}));
        EXPECT_EQ(field(of("ctrl"), 8, 1), values.value("Mode") == "CIRCULAR");
        EXPECT_EQ(field(of("ctrl"), 9, 1), on("PeriphInc"));
        EXPECT_EQ(field(of("ctrl"), 10, 1), on("MemInc"));
        EXPECT_EQ(field(of("ctrl"), 12, 2), place("PeriphDataAlignment", "PERIPHERAL_DATA_WIDTH_", widths));
        EXPECT_EQ(field(of("ctrl"), 14, 2), place("MemDataAlignment", "MEMORY_DATA_WIDTH_", widths));
        EXPECT_EQ(field(of("ctrl"), 16, 2), place("Priority", "PRIORITY_", {"LOW", "MEDIUM", "HIGH", "VERY_HIGH"}));
        EXPECT_EQ(field(of("ctrl"), 18, 2), place("MemBurst", "MEMORY_", bursts));
        EXPECT_EQ(field(of("ctrl"), 20, 2), place("PeriphBurst", "PERIPHERAL_", bursts));
        EXPECT_EQ(field(of("ctrl"), 24, 4), on("DoubleMemoryMode") + 2 * (values.value("CurrentMemory").endsWith('1')) +
                                                4 * on("2DMode") + 8 * on("LinkedTableTransferMode"));
        EXPECT_EQ(field(of("fifo"), 0, 1), on("FIFOMode"));
        EXPECT_EQ(field(of("fifo"), 1, 2),
                  place("FIFOThreshold", "FIFO_THRESHOLD_", {"1QUARTER", "HALF", "3QUARTER", "FULL"}));
        EXPECT_EQ(field(of("plane"), 0, 16), values.value("XAxisCount").toInt());
        EXPECT_EQ(field(of("plane"), 16, 16), values.value("YAxisCount").toInt());
        EXPECT_EQ(qint16(field(of("stride"), 0, 16)), values.value("SourceStride").toInt());
        EXPECT_EQ(qint16(field(of("stride"), 16, 16)), values.value("DestinationStride").toInt());
        // Without a FIFO there is nothing to change the width in, and a threshold holds whole bursts.
        if (!on("FIFOMode")) {
            EXPECT_EQ(field(of("ctrl"), 12, 2), field(of("ctrl"), 14, 2));
        } else {
            const int burst = field(of("ctrl"), 18, 2);
            const int bytes = (1 << field(of("ctrl"), 14, 2)) * (burst ? 2 << burst : 1);
            EXPECT_EQ(4 * (field(of("fifo"), 1, 2) + 1) % bytes, 0);
        }
        const bool waits = on("SyncEnable");
        const QStringList edges{"", "RISING", "FALLING", "BOTH"};
        QStringList signalNames{"EXINT0", "EXINT1", "EXINT2", "EXINT3"};
        for (int stream = 1; stream <= 8; ++stream)
            signalNames.append(QString("STREAM%1_EVENT").arg(stream));
        EXPECT_EQ(field(of("mux"), 8, 2), waits + 2 * on("EventEnable"));
        EXPECT_EQ(field(of("mux"), 10, 2), place("SyncPolarity", "EDGE_", edges));
        EXPECT_EQ(field(of("mux"), 12, 5), place("SyncSignalID", "SIGNAL_", signalNames));
        EXPECT_EQ(field(of("mux"), 20, 5), qMax(0, values.value("SyncRequestCount").toInt() - 1));
        EXPECT_EQ(field(of("mux"), 0, 8) != 0, request.requestName != "MEMTOMEM");
        if (request.requestName.startsWith("GENERATOR")) {
            EXPECT_EQ(field("generator", 0, 1), 1);
            EXPECT_EQ(field("generator", 1, 2), place("GeneratorPolarity", "EDGE_", edges));
            EXPECT_EQ(field("generator", 4, 5), place("GeneratorSignalID", "SIGNAL_", signalNames));
            EXPECT_EQ(field("generator", 12, 5) + 1, values.value("GeneratorRequestCount").toInt());
        }
    }

    void expectConverters()
    {
        const QString common = "ADC-Common";
        EXPECT_EQ(field("common", 0, 4) + 2, shown(common, "ClockDivision").section('_', -1).toInt());
        static const QMap<QString, int> Modes{
            {"ADC_INDEPENDENT_MODE", 0},           {"ADC_ORDINARY_SMLT_PREEMPT_SMLT_MODE", 1},
            {"ADC_ORDINARY_SMLT_MODE", 2},         {"ADC_PREEMPT_SMLT_MODE", 3},
            {"ADC_ORDINARY_SHIFT_MODE", 4},        {"ADC_TRIPLE_ORDINARY_SMLT_PREEMPT_SMLT_MODE", 9},
            {"ADC_TRIPLE_ORDINARY_SMLT_MODE", 10}, {"ADC_TRIPLE_PREEMPT_SMLT_MODE", 11},
            {"ADC_TRIPLE_ORDINARY_SHIFT_MODE", 12}};
        EXPECT_EQ(field("common", 4, 4), Modes.value(shown(common, "CombineMode"), -1));
        const QString interval = shown(common, "SampleInterval").section('_', -1);
        EXPECT_EQ(field("common", 8, 4), interval.isEmpty() ? 0 : interval.toInt() - 5);
        static const QStringList Transfers{"DISABLE", "HALFWORD", "WORD", "BYTES"};
        EXPECT_EQ(field("common", 12, 2), qMax(0, Transfers.indexOf(shown(common, "CommonDMAMode").section('_', -1))));
        for (int n = 1; n <= 3; ++n) {
            const QString adc = QString("ADC%1").arg(n);
            SCOPED_TRACE(adc.toStdString());
            const auto of = [&](const char *name) { return QString("adc %1 %2").arg(name).arg(n); };
            EXPECT_EQ(field(of("ctrl"), 0, 1), 1);
            EXPECT_EQ(field(of("ctrl"), 3, 1), isOn(adc, "SequenceMode"));
            EXPECT_EQ(field(of("ctrl"), 4, 1), isOn(adc, "RepeatMode"));
            EXPECT_EQ(field(of("ctrl"), 6, 1), isOn(adc, "OrdinaryDMA"));
            EXPECT_EQ(12 - 2 * field(of("ctrl"), 10, 2),
                      shown(adc, "ResolutionSelect").section('_', -1).chopped(1).toInt());
            EXPECT_EQ(field(of("length"), 0, 5), number(adc, "NbrOfOrdinarySequence"));
            const int channel = shown(adc, "Channel_OrdinarySequence_1").section('_', -1).toInt();
            EXPECT_EQ(field(of("first"), 0, 5), channel);
            EXPECT_EQ(field(of("trig"), 0, 4) == 0, shown(adc, "OrdinaryTriggerSource").endsWith("SOFTWARE"));
            static const QStringList Edges{"RISING", "FALLING", "BOTH"};
            EXPECT_EQ(field(of("trig"), 6, 2),
                      qMax(0, Edges.indexOf(shown(adc, "OrdinaryTriggerEdge").section('_', -1))));
            EXPECT_EQ(field(of("oversampling"), 0, 1), isOn(adc, "Oversampling"));
            if (isOn(adc, "Oversampling")) {
                EXPECT_EQ(2 << field(of("oversampling"), 1, 3), shown(adc, "OversampleRatio").section('_', -1).toInt());
                EXPECT_EQ(field(of("oversampling"), 4, 4), number(adc, "OversampleShift"));
            }
        }
    }

    void expectCamera()
    {
        const QString dvp = "DVP";
        EXPECT_EQ(field("dvp control", 0, 2), 1) << "on, but a capture waits for its memory";
        EXPECT_EQ(field("dvp control", 2, 1), shown(dvp, "CaptureMode") == "DVP_CAPTURE_SINGLE");
        EXPECT_EQ(field("dvp control", 3, 1), shown(dvp, "PixelClockEdge") == "DVP_PIXCLK_FALLING");
        EXPECT_EQ(field("dvp control", 4, 1), shown(dvp, "HorizontalBlanking") == "DVP_BLANKING_HIGH");
        EXPECT_EQ(field("dvp control", 5, 1), shown(dvp, "VerticalBlanking") == "DVP_BLANKING_HIGH");
        EXPECT_EQ(field("dvp control", 6, 1), shown(dvp, "SyncMode") == "DVP_SYNC_EMBEDDED");
        EXPECT_EQ(8 + 2 * field("dvp control", 8, 2), shown(dvp, "DataWidth").section('_', -1).chopped(4).toInt());
        EXPECT_EQ(field("dvp control", 10, 1), 1);
        int shift = 0;
        for (const char *code : {"FrameStartCode", "LineStartCode", "LineEndCode", "FrameEndCode"}) {
            EXPECT_EQ(field("dvp codes", shift, 8), number(dvp, code)) << code;
            shift += 8;
        }
        EXPECT_EQ(field("dvp control", 7, 1), isOn(dvp, "WindowCrop"));
        EXPECT_EQ(field("dvp start", 0, 16), number(dvp, "CropX"));
        EXPECT_EQ(field("dvp start", 16, 16), number(dvp, "CropY"));
        EXPECT_EQ(field("dvp size", 0, 16), number(dvp, "CropWidth"));
        EXPECT_EQ(field("dvp size", 16, 16), number(dvp, "CropHeight"));
        shift = 0;
        for (const QString stem : {"Horizontal_Scaling_Resize", "Vertical_Scaling_Resize", "Frame_Rate_Contorl"}) {
            EXPECT_EQ(field("dvp scale", shift, 5), qMax(0, number(dvp, stem + "_Source_Factor") - 1));
            EXPECT_EQ(field("dvp scale", shift + 5, 5), qMax(0, number(dvp, stem + "_Target_Factor") - 1));
            EXPECT_LE(field("dvp scale", shift + 5, 5), field("dvp scale", shift, 5));
            shift += 10;
        }
        EXPECT_EQ(field("dvp interrupts", 0, 5), isOn(dvp, "Interrupt_CFD") + 2 * isOn(dvp, "Interrupt_OVR") +
                                                     4 * isOn(dvp, "Interrupt_ESE") + 8 * isOn(dvp, "Interrupt_VS") +
                                                     16 * isOn(dvp, "Interrupt_HS"));
    }
};

TEST_P(StreamRegisters, HoldWhatTheDesignShows)
{
    open("ZV32F437", "ZV32F437ZMT7", "LQFP144");
    set({"mode/ADC-Common/Activated=TRUE", "mode/ADC1/IN0=TRUE", "mode/ADC2/IN1=TRUE", "mode/ADC3/IN9=TRUE",
         "mode/DAC/OUT1=TRUE", "mode/DAC/OUT2=TRUE", "param/DAC/TriggerSource_1=DAC_TMR6_TRGOUT_EVENT",
         "param/DAC/TriggerSource_2=DAC_TMR6_TRGOUT_EVENT", "mode/USART1/Mode=Asynchronous"});
    set({chosen("DVP", {}, {"Hardware_8_bits", "Hardware_10_bits", "Hardware_14_bits", "Embedded_8_bits"})
             .replace("param/DVP/", "mode/DVP/Mode")});
    for (const char *request : {"DVP", "ADC1", "USART1_TX", "DAC1_DAC2", "GENERATOR2", "MEMTOMEM"})
        set({QString("edma/any=") + request});
    chooseStreamSettings();
    choose("ADC-Common", {"ClockDivision", "CombineMode", "SampleInterval", "CommonDMAMode"});
    for (const char *adc : {"ADC1", "ADC2", "ADC3"})
        choose(adc, {"ResolutionSelect", "SequenceMode", "RepeatMode", "NbrOfOrdinarySequence", "OrdinaryTriggerSource",
                     "OrdinaryTriggerEdge", "Oversampling", "OversampleRatio", "OversampleShift",
                     "SamplingTime_OrdinarySequence_1"});
    QStringList names;
    for (const RefParameter &parameter : design.peripheral("DVP")->parameters().GetRefParameterList())
        names.append(parameter.Name);
    choose("DVP", names);
    for (const QString stem : {"Horizontal_Scaling_Resize", "Vertical_Scaling_Resize", "Frame_Rate_Contorl"})
        choose("DVP", {stem + "_Source_Factor", stem + "_Target_Factor"});
    choose("DVP", {"CropX", "CropY", "CropWidth", "CropHeight"});
    const GenerationRecord record = generate();
    ASSERT_TRUE(record.ok) << record.error.toStdString();
    ASSERT_NO_FATAL_FAILURE(readRegisters("ZV32F435_437", Program));
    ASSERT_EQ(m_registers.size(), 7 * Streams + 4 + 1 + 3 * 6 + 6 + 2);

    const QList<DMARequest *> requests = design.edma()->ValidDMAChannalList();
    ASSERT_EQ(requests.size(), Streams);
    for (int n = 1; n <= Streams; ++n)
        expectStream(n, *requests.at(n - 1));
    EXPECT_EQ(m_registers["size"], 60000U);
    EXPECT_EQ(m_registers["source"], 0x20000100U);
    EXPECT_EQ(m_registers["destination"], 0x20000200U);
    EXPECT_EQ(field("ctrl 6", 0, 1), 1);
    expectConverters();
    expectCamera();
    // One request serves both outputs.
    EXPECT_EQ(field("dac first", 16, 1), 1);
    EXPECT_EQ(field("dac second", 16, 1), 0);
    const QString main = text("src/main.c");
    const bool together = field("common", 12, 2) != 0;
    for (const QString &address : {QString("DVP->dt"), QString(together ? "ADCCOM->codt" : "ADC1->odt"),
                                   QString("USART1->dt"), QString("DAC->dual")})
        EXPECT_TRUE(main.contains(", (uint32_t)&" + address + ",\n")) << address.toStdString();
    EXPECT_TRUE(main.contains("EDMA_STREAM5, EDMA_STREAM5_PERIPHERAL_BASE_ADDR,\n"));
}

INSTANTIATE_TEST_SUITE_P(Slow, StreamRegisters, testing::Range(1U, 5U));

} // namespace
