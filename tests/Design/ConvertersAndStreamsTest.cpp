#include "Design/DMA_Configuration.h"
#include "Design/DesignTexts.h"
#include "Design/NVIC_Configuration.h"
#include "DeviceFixture.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

// The rules of a device whose converters have a common part, and whose EDMA stands beside the DMA.

using namespace ChipLoom;

namespace {

class ConvertersAndStreams : public DeviceFixture
{
protected:
    void SetUp() override { openLarge(); }
    void openLarge() { open("ZV32F437ZMT7", "LQFP144"); }
    void openSmall() { open("ZV32F435CGT7", "LQFP48"); }

    void set(const QStringList &settings)
    {
        for (const QString &setting : settings)
            EXPECT_EQ(apply(setting).reason, DesignReason::None) << setting.toStdString();
    }

    const IP_ParamSettingConfiguration &parameters(const char *instance)
    {
        return design.peripheral(instance)->parameters();
    }
    bool isOpen(const char *instance, const char *name)
    {
        const RefParameter *entry = parameters(instance).parameter(name);
        return entry && entry->Enable;
    }
    QString edma(const char *request, const char *name)
    {
        for (const DMARequest *row : design.edma()->rows()) {
            for (const RefParameter &parameter : row->RefParameterfoList) {
                if (row->requestName == request && parameter.Name == name)
                    return parameter.CurrentValue;
            }
        }
        return "(absent)";
    }
    QStringList offered(const char *request, const char *name)
    {
        QStringList values;
        for (const DMARequest *row : design.edma()->rows()) {
            for (const RefParameter &parameter : row->RefParameterfoList) {
                if (row->requestName != request || parameter.Name != name)
                    continue;
                for (const PossibleValue &one : design.edma()->offeredValues(*row, parameter))
                    values.append(one.Value);
            }
        }
        return values;
    }
    QString noteOf(const char *instance) { return design.peripheral(instance)->note().argument; }
};

TEST_F(ConvertersAndStreams, AConverterAsksForTheCommonPartAndTakesItsClock)
{
    for (const char *adc : {"ADC1", "ADC2", "ADC3"}) {
        EXPECT_FALSE(design.peripheral(adc)->GetIPValidFlag());
        EXPECT_EQ(noteOf(adc), "Please note: When configuring ADC, it is also necessary to configure ADC-Common");
        set({QString("mode/") + adc + "/IN1=TRUE"});
        EXPECT_TRUE(design.peripheral(adc)->GetIPValidFlag());
        EXPECT_EQ(noteOf(adc), "");
        EXPECT_FALSE(isOpen(adc, "ClockDivision"));
        EXPECT_EQ(value(adc, "Clock"), "72") << "a quarter of the bus, as after a reset";
    }
    EXPECT_EQ(apply("mode/ADC1/IN1=FALSE").reason, DesignReason::None);
    EXPECT_FALSE(noteOf("ADC1").isEmpty());

    EXPECT_FALSE(design.peripheral("ADC-Common")->GetIPValidFlag());
    set({"mode/ADC-Common/Activated=TRUE", "param/ADC-Common/ClockDivision=ADC_HCLK_DIV_8"});
    EXPECT_TRUE(design.peripheral("ADC-Common")->GetIPValidFlag());
    EXPECT_EQ(design.peripheral("ADC-Common")->tabs(), QList<ConfigurationTab>{ConfigurationTab::Parameters});
    EXPECT_EQ(value("ADC-Common", "Clock"), "36");
    EXPECT_EQ(value("ADC3", "Clock"), "36");
    // 640.5 cycles of sampling and 12.5 of the conversion; fewer bits take fewer.
    EXPECT_NEAR(value("ADC2", "SamplingRate_OrdinarySequence_1").toDouble(), 36000 / 653.0, 0.01);
    set({"param/ADC2/ResolutionSelect=ADC_RESOLUTION_6B",
         "param/ADC2/SamplingTime_OrdinarySequence_1=ADC_SAMPLETIME_2_5"});
    EXPECT_NEAR(value("ADC2", "SamplingRate_OrdinarySequence_1").toDouble(), 36000 / 9.0, 0.1);
    // A channel has one sampling time: that of the rank that is set last.
    set({"param/ADC2/SequenceMode=TRUE", "param/ADC2/NbrOfOrdinarySequence=2"});
    EXPECT_EQ(answerText(parameters("ADC2").warnings().value("SamplingTime_OrdinarySequence_1")),
              "SamplingTime_OrdinarySequence_1 has no effect: a channel has one sampling time, here that of "
              "SamplingTime_OrdinarySequence_2.");
    EXPECT_NEAR(value("ADC2", "SamplingRate_OrdinarySequence_1").toDouble(), 36000 / 647.0, 0.01);
    set({"mode/ADC2/IN2=TRUE", "param/ADC2/Channel_OrdinarySequence_2=ADC_CHANNEL_2"});
    EXPECT_TRUE(parameters("ADC2").warnings().isEmpty());
    // A result of several conversions takes their time.
    set({"param/ADC2/Oversampling=TRUE", "param/ADC2/OversampleRatio=ADC_OVERSAMPLE_RATIO_16"});
    EXPECT_NEAR(value("ADC2", "SamplingRate_OrdinarySequence_1").toDouble(), 36000 / 9.0 / 16, 0.1);
    EXPECT_EQ(value("ADC2", "OversampleShift"), "0");
    set({"param/ADC2/ResolutionSelect=ADC_RESOLUTION_12B", "param/ADC2/OversampleRatio=ADC_OVERSAMPLE_RATIO_64"});
    EXPECT_EQ(value("ADC2", "OversampleShift"), "2") << "18 bits do not fit";
    EXPECT_EQ(apply("param/ADC2/OversampleShift=1").reason, DesignReason::BelowMinimum);
    EXPECT_FALSE(parameters("ADC-Common").warnings().contains("Clock"));
    set({"param/ADC-Common/ClockDivision=ADC_HCLK_DIV_2"});
    EXPECT_EQ(answerText(parameters("ADC-Common").warnings().value("Clock")),
              "144 is too large for Clock: at most 80.");
    set({"clock/ahbdiv=2"});
    EXPECT_FALSE(parameters("ADC-Common").warnings().contains("Clock"));
    EXPECT_EQ(value("ADC3", "Clock"), "72");
}

// What is led out of the chip is what the converters run at, whoever divides it.
TEST_F(ConvertersAndStreams, TheClockOfTheConvertersCanBeLedOut)
{
    const auto output = [this] { return design.clock().getMCUPLL()->reading(ClockBranch::Clkout2).mhz; };
    set({"mode/CRM/Clock-out2=TRUE", "clock/clkout2=ADC", "clock/clkout2div2=2"});
    EXPECT_EQ(output(), 0) << "no converter is on";
    set({"clock/clkout2=USB"});
    EXPECT_EQ(output(), 0) << "no controller is on";
    set({"mode/USB_OTGFS2/Mode=Host_Only"});
    EXPECT_EQ(output(), 24);
    set({"clock/clkout2=ADC"});
    set({"mode/ADC2/IN1=TRUE"});
    EXPECT_EQ(output(), 36);
    set({"mode/ADC-Common/Activated=TRUE", "param/ADC-Common/ClockDivision=ADC_HCLK_DIV_12"});
    EXPECT_EQ(output(), 12);
    set({"clock/apb2div=4"});
    EXPECT_EQ(output(), 12) << "the bus of their registers does not matter";
    const DesignSnapshot divided = design.snapshot();
    set({"mode/ADC-Common/Activated=FALSE"});
    EXPECT_EQ(output(), 36);
    ASSERT_TRUE(design.restore(divided));
    design.scheduler().drain();
    EXPECT_EQ(output(), 12);

    QTemporaryDir folder;
    const QString path = folder.filePath("adc.ZVWP");
    ASSERT_TRUE(design.file().SaveProject(path));
    openLarge();
    ASSERT_TRUE(design.file().OpenDesign(path));
    EXPECT_EQ(output(), 12);
}

TEST_F(ConvertersAndStreams, CombinedConvertersFollowTheFirst)
{
    set({"mode/ADC-Common/Activated=TRUE", "mode/ADC1/IN0=TRUE", "mode/ADC2/IN1=TRUE", "mode/ADC3/IN2=TRUE",
         "param/ADC1/SequenceMode=TRUE", "param/ADC1/NbrOfOrdinarySequence=3",
         "param/ADC1/OrdinaryTriggerSource=ADC_ORDINARY_TRIG_TMR20CH1", "param/ADC1/PreemptConversions=TRUE",
         "param/ADC1/NbrOfPreemptSequence=2", "param/ADC1/OrdinaryTriggerEdge=ADC_TRIGGER_EDGE_FALLING",
         "param/ADC1/OrdinaryPartMode=TRUE", "param/ADC1/OrdinaryPartCount=2", "param/ADC1/PreemptPartMode=TRUE"});
    struct Row
    {
        const char *mode;
        bool secondOrdinary, thirdOrdinary, secondPreempt, thirdPreempt, transfers;
    };
    const Row table[] = {
        {"ADC_INDEPENDENT_MODE", false, false, false, false, false},
        {"ADC_ORDINARY_SMLT_MODE", true, false, false, false, true},
        {"ADC_PREEMPT_SMLT_MODE", false, false, true, false, false},
        {"ADC_ORDINARY_SMLT_PREEMPT_SMLT_MODE", true, false, true, false, true},
        {"ADC_ORDINARY_SHIFT_MODE", true, false, false, false, true},
        {"ADC_TRIPLE_ORDINARY_SMLT_MODE", true, true, false, false, true},
        {"ADC_TRIPLE_PREEMPT_SMLT_MODE", false, false, true, true, false},
        {"ADC_TRIPLE_ORDINARY_SMLT_PREEMPT_SMLT_MODE", true, true, true, true, true},
        {"ADC_TRIPLE_ORDINARY_SHIFT_MODE", true, true, false, false, true},
    };
    for (const Row &row : table) {
        SCOPED_TRACE(row.mode);
        set({QString("param/ADC-Common/CombineMode=") + row.mode});
        for (const auto &[adc, ordinary, preempt] : {std::tuple("ADC2", row.secondOrdinary, row.secondPreempt),
                                                     std::tuple("ADC3", row.thirdOrdinary, row.thirdPreempt)}) {
            SCOPED_TRACE(adc);
            EXPECT_EQ(value(adc, "CombineMode"), row.mode);
            for (const char *name : {"SequenceMode", "NbrOfOrdinarySequence", "OrdinaryTriggerSource"}) {
                EXPECT_NE(isOpen(adc, name) || (!ordinary && !strcmp(name, "NbrOfOrdinarySequence")), ordinary) << name;
                if (ordinary) {
                    EXPECT_EQ(value(adc, name), value("ADC1", name)) << name;
                }
            }
            if (ordinary) {
                EXPECT_EQ(value(adc, "OrdinaryTriggerEdge"), "ADC_TRIGGER_EDGE_FALLING");
                EXPECT_FALSE(isOpen(adc, "OrdinaryTriggerEdge"));
                EXPECT_EQ(value(adc, "OrdinaryPartCount"), "2");
            }
            EXPECT_NE(isOpen(adc, "PreemptConversions"), preempt);
            if (preempt) {
                EXPECT_EQ(value(adc, "NbrOfPreemptSequence"), "2");
                EXPECT_EQ(value(adc, "PreemptPartMode"), "TRUE");
                EXPECT_EQ(value(adc, "PreemptTriggerSource"), value("ADC1", "PreemptTriggerSource"));
            }
            EXPECT_TRUE(isOpen(adc, "Channel_OrdinarySequence_1")) << "each converter has its own channels";
        }
        EXPECT_EQ(isOpen("ADC-Common", "CommonDMAMode"), row.transfers);
        EXPECT_EQ(isOpen("ADC-Common", "SampleInterval"), QString(row.mode).endsWith("SHIFT_MODE"));
        EXPECT_FALSE(design.peripheral("ADC2")->GetIPStatusFlag() & IPSTATUS_ERROR);
    }
    // What leads a follower may stand on a line that only the leader hears.
    set({"mode/EXINT/EXINT11=TRUE", "mode/ADC1/Ordinary_External_Trigger=EXINT11_Line",
         "param/ADC1/OrdinaryTriggerSource=ADC_ORDINARY_TRIG_EXINT11"});
    EXPECT_EQ(value("ADC3", "OrdinaryTriggerSource"), "ADC_ORDINARY_TRIG_EXINT11");
    EXPECT_FALSE(design.peripheral("ADC3")->GetIPStatusFlag() & IPSTATUS_ERROR);

    // Each has its request, by either controller, until the first fetches the results of all.
    set({"dma/any=ADC1", "edma/any=ADC2"});
    EXPECT_EQ(value("ADC1", "OrdinaryDMA"), "TRUE");
    EXPECT_EQ(value("ADC2", "OrdinaryDMA"), "TRUE");
    EXPECT_EQ(value("ADC3", "OrdinaryDMA"), "FALSE");
    set({"param/ADC-Common/CommonDMAMode=ADC_COMMON_DMA_WORD"});
    EXPECT_EQ(value("ADC1", "OrdinaryDMA"), "TRUE");
    EXPECT_EQ(value("ADC2", "OrdinaryDMA"), "FALSE");

    // Two results in a half-word leave each eight bits.
    set({"param/ADC-Common/CombineMode=ADC_ORDINARY_SMLT_MODE", "param/ADC-Common/CommonDMAMode=ADC_COMMON_DMA_BYTES",
         "param/ADC1/ResolutionSelect=ADC_RESOLUTION_8B"});
    const auto isTooWide = [this](const char *adc) { return parameters(adc).warnings().contains("ResolutionSelect"); };
    EXPECT_FALSE(isTooWide("ADC1"));
    EXPECT_TRUE(isTooWide("ADC2"));
    EXPECT_FALSE(isTooWide("ADC3")) << "does not follow";
    set({"param/ADC-Common/CombineMode=ADC_TRIPLE_ORDINARY_SHIFT_MODE",
         "param/ADC-Common/CommonDMAMode=ADC_COMMON_DMA_WORD"});
    EXPECT_FALSE(isTooWide("ADC2"));

    // A stored design comes back the same, and without the common part each stands for itself.
    QTemporaryDir folder;
    const QString file = folder.filePath("combined.ZVWP");
    ASSERT_TRUE(design.SaveProject(file));
    const QStringList before{value("ADC2", "OrdinaryTriggerSource"), value("ADC3", "NbrOfOrdinarySequence"),
                             value("ADC-Common", "CommonDMAMode"), value("ADC2", "OrdinaryDMA")};
    openLarge();
    ASSERT_TRUE(design.OpenDesign(file));
    EXPECT_EQ(design.file().problems().size(), 0);
    EXPECT_EQ((QStringList{value("ADC2", "OrdinaryTriggerSource"), value("ADC3", "NbrOfOrdinarySequence"),
                           value("ADC-Common", "CommonDMAMode"), value("ADC2", "OrdinaryDMA")}),
              before);
    set({"mode/ADC-Common/Activated=FALSE"});
    EXPECT_EQ(value("ADC2", "CombineMode"), "ADC_INDEPENDENT_MODE");
    EXPECT_TRUE(isOpen("ADC3", "OrdinaryTriggerSource"));
}

// The default names a channel that is off here: the first that is on stands in for it, and is what can be restored.
TEST_F(ConvertersAndStreams, AListWithoutItsDefaultIsNotChangedByItself)
{
    set({"mode/ADC-Common/Activated=TRUE", "mode/ADC2/IN3=TRUE", "mode/ADC2/IN5=TRUE"});
    const auto rank = [this] { return *parameters("ADC2").parameter("Channel_OrdinarySequence_1"); };
    EXPECT_EQ(rank().CurrentValue, "ADC_CHANNEL_3");
    EXPECT_FALSE(parameters("ADC2").isChangedFromDefault(rank()));
    set({"param/ADC2/Channel_OrdinarySequence_1=ADC_CHANNEL_5"});
    EXPECT_TRUE(parameters("ADC2").isChangedFromDefault(rank()));
    EXPECT_EQ(parameters("ADC2").defaultOf(rank()), "ADC_CHANNEL_3");
}

TEST_F(ConvertersAndStreams, WordsOfTwoResultsNeedWordsOfTheRequest)
{
    set({"mode/ADC-Common/Activated=TRUE", "mode/ADC1/IN0=TRUE", "mode/ADC2/IN1=TRUE",
         "param/ADC-Common/CombineMode=ADC_ORDINARY_SMLT_MODE"});
    for (DMA_Configuration *controller : {design.dma(), design.edma()}) {
        const bool isEdma = controller == design.edma();
        const QString section = isEdma ? "edma" : "dma";
        const auto widths = [&](const QString &request) {
            QStringList values;
            for (const DMARequest *row : controller->rows()) {
                for (const RefParameter &parameter : row->RefParameterfoList) {
                    if (row->requestName == request && parameter.Name.endsWith("DataAlignment"))
                        values.append(parameter.CurrentValue.section('_', -1));
                }
            }
            return values.join(' ').toStdString();
        };
        set({section + "/any=ADC1", section + "/any=ADC2"});
        for (const char *mode : {"HALFWORD", "WORD", "BYTES", "DISABLE"}) {
            set({QString("param/ADC-Common/CommonDMAMode=ADC_COMMON_DMA_") + mode});
            EXPECT_EQ(widths("ADC1"), mode == QString("WORD") ? "WORD WORD" : "HALFWORD HALFWORD") << mode;
            EXPECT_EQ(widths("ADC2"), "HALFWORD HALFWORD") << mode;
        }
        set({"param/ADC-Common/CommonDMAMode=ADC_COMMON_DMA_WORD"});
        EXPECT_EQ(apply(section + "/ADC1/PeriphDataAlignment=" + section.toUpper() + "_PERIPHERAL_DATA_WIDTH_HALFWORD")
                      .reason,
                  DesignReason::ValueNotOffered);
        set({section + "/ADC1=", section + "/ADC2="});
    }
}

TEST_F(ConvertersAndStreams, ARequestOfTheOtherControllerIsNamed)
{
    for (const char *setting : {"dma/any=DVP", "dma/EDMA_Stream1=DVP", "dma/DVP/Priority=DMA_PRIORITY_HIGH"})
        EXPECT_EQ(answerText(apply(setting)), "DVP belongs to EDMA; its settings begin with \"edma/\".") << setting;
    EXPECT_EQ(apply("dma/any=NOTHING").reason, DesignReason::UnknownDmaRequest);
}

TEST_F(ConvertersAndStreams, OneControllerServesARequest)
{
    set({"mode/USART1/Mode=Asynchronous", "mode/DAC/OUT1=TRUE", "dma/any=USART1_TX"});
    EXPECT_FALSE(design.edma()->getDMARequestNameList().contains("USART1_TX"));
    EXPECT_EQ(apply("edma/any=USART1_TX").reason, DesignReason::NoChannelForDmaRequest);
    EXPECT_EQ(apply("edma/EDMA_Stream3=USART1_TX").reason, DesignReason::NoChannelForDmaRequest);
    set({"dma/USART1_TX=", "edma/EDMA_Stream3=USART1_TX"});
    EXPECT_FALSE(design.dma()->getDMARequestNameList().contains("USART1_TX"));
    EXPECT_EQ(apply("dma/any=USART1_TX").reason, DesignReason::NoChannelForDmaRequest);
    // Memory to memory is nobody's.
    set({"dma/any=MEMTOMEM", "edma/any=MEMTOMEM"});

    // The pair needs both outputs and excludes its halves, wherever they stand.
    EXPECT_EQ(apply("edma/any=DAC1_DAC2").reason, DesignReason::DmaRequestClosed);
    set({"mode/DAC/OUT2=TRUE", "param/DAC/TriggerSource_1=DAC_TMR6_TRGOUT_EVENT"});
    EXPECT_EQ(apply("dma/any=DAC2").reason, DesignReason::DmaRequestClosed) << "without a trigger nothing asks";
    set({"param/DAC/TriggerSource_2=DAC_SOFTWARE_TRIGGER", "dma/any=DAC2"});
    EXPECT_EQ(apply("edma/any=DAC1_DAC2").reason, DesignReason::NoChannelForDmaRequest);
    EXPECT_FALSE(design.edma()->getDMARequestNameList("DAC").contains("DAC1_DAC2"));
    set({"dma/DAC2=", "edma/any=DAC1_DAC2"});
    EXPECT_EQ(apply("dma/any=DAC1").reason, DesignReason::NoChannelForDmaRequest);
    EXPECT_EQ(edma("DAC1_DAC2", "PeriphDataAlignment"), "EDMA_PERIPHERAL_DATA_WIDTH_WORD");
    set({"param/DAC/TriggerSource_1=DAC_TRIGGER_DISABLE"});
    EXPECT_EQ(edma("DAC1_DAC2", "Direction"), "(absent)");
}

TEST_F(ConvertersAndStreams, StreamsWaitGenerateAndAskForTheirVectors)
{
    set({"mode/USART1/Mode=Asynchronous", "mode/DVP/Mode=Hardware_8_bits", "edma/any=USART1_RX", "edma/any=DVP",
         "edma/any=GENERATOR3"});
    EXPECT_EQ(value("DVP", "DataByDMA"), "TRUE");
    // Directly, memory takes what the peripheral gives.
    EXPECT_EQ(offered("USART1_RX", "MemDataAlignment"), QStringList{"EDMA_MEMORY_DATA_WIDTH_BYTE"});
    set({"edma/USART1_RX/PeriphDataAlignment=EDMA_PERIPHERAL_DATA_WIDTH_HALFWORD"});
    EXPECT_EQ(edma("USART1_RX", "MemDataAlignment"), "EDMA_MEMORY_DATA_WIDTH_HALFWORD");
    set({"edma/USART1_RX/FIFOMode=TRUE", "edma/USART1_RX/MemDataAlignment=EDMA_MEMORY_DATA_WIDTH_WORD",
         "edma/USART1_RX/MemBurst=EDMA_MEMORY_BURST_4"});
    EXPECT_EQ(offered("USART1_RX", "FIFOThreshold"), QStringList{"EDMA_FIFO_THRESHOLD_FULL"});
    set({"edma/USART1_RX/FIFOMode=FALSE"});
    EXPECT_EQ(edma("USART1_RX", "MemDataAlignment"), "EDMA_MEMORY_DATA_WIDTH_HALFWORD");
    EXPECT_EQ(edma("USART1_RX", "Interrupt_FERR"), "(absent)");
    set({"param/USART1/Databitnum=USART_DATA_9BITS"});
    EXPECT_EQ(offered("USART1_RX", "MemDataAlignment"), QStringList{"EDMA_MEMORY_DATA_WIDTH_HALFWORD"});
    EXPECT_FALSE(offered("USART1_RX", "PeriphDataAlignment").contains("EDMA_PERIPHERAL_DATA_WIDTH_BYTE"));

    // An event can be waited for while it is given, and no ring closes.
    set({"edma/DVP/SyncEnable=TRUE"});
    EXPECT_FALSE(offered("DVP", "SyncSignalID").contains("EDMA_SIGNAL_STREAM1_EVENT"));
    set({"edma/USART1_RX/EventEnable=TRUE", "edma/DVP/SyncSignalID=EDMA_SIGNAL_STREAM1_EVENT",
         "edma/GENERATOR3/GeneratorSignalID=EDMA_SIGNAL_STREAM1_EVENT"});
    EXPECT_FALSE(offered("USART1_RX", "SyncSignalID").contains("EDMA_SIGNAL_STREAM1_EVENT"));
    set({"edma/USART1_RX/EventEnable=FALSE"});
    EXPECT_EQ(edma("DVP", "SyncSignalID"), "EDMA_SIGNAL_EXINT0");
    EXPECT_EQ(edma("GENERATOR3", "GeneratorSignalID"), "EDMA_SIGNAL_EXINT0");
    EXPECT_EQ(edma("DVP", "GeneratorSignalID"), "(absent)");

    set({"edma/DVP/Interrupt_FDT=TRUE"});
    EXPECT_TRUE(design.nvic()->vector("EDMA_Stream2_IRQn")->enabledFlag);
    EXPECT_FALSE(design.nvic()->vector("EDMA_Stream1_IRQn")->enabledFlag);
    set({"mode/DVP/Mode="});
    EXPECT_FALSE(design.nvic()->vector("EDMA_Stream2_IRQn")->enabledFlag);
    EXPECT_EQ(design.edma()->rows().size(), 2) << "a generator needs no peripheral";
}

TEST_F(ConvertersAndStreams, ChannelsOfBothControllersShareAMultiplexer)
{
    set({"mode/USART1/Mode=Asynchronous", "dma/USART1_RX=DMA1_Channel3", "dma/USART1_TX=DMA2_Channel5",
         "dma/USART1_TX/SyncEnable=TRUE", "dma/USART1_RX/EventEnable=TRUE"});
    const auto signalsOf = [&](const char *request) {
        const DMARequest &record = *design.dma()->getDMARequestByName(request);
        QStringList names;
        for (const RefParameter &parameter : record.RefParameterfoList) {
            if (parameter.Name.endsWith("SignalID")) {
                for (const PossibleValue &one : design.dma()->offeredValues(record, parameter))
                    names.append(one.Value.section("SIGNAL_", 1));
            }
        }
        return names.join(' ');
    };
    EXPECT_EQ(signalsOf("USART1_TX"), "EXINT0 EXINT1 EXINT2 EXINT3 DMA1_CHANNEL3_EVENT");
    set({"dma/USART1_RX/SyncEnable=TRUE", "dma/USART1_TX/EventEnable=TRUE"});
    EXPECT_EQ(signalsOf("USART1_RX"), "EXINT0 EXINT1 EXINT2 EXINT3") << "what gives events waits for none";

    // The streams have generators of their own; a transfer within memory waits for nothing.
    set({"dma/any=GENERATOR2", "edma/any=GENERATOR2", "dma/any=MEMTOMEM"});
    EXPECT_EQ(signalsOf("GENERATOR2"), "EXINT0 EXINT1 EXINT2 EXINT3 DMA1_CHANNEL3_EVENT DMA2_CHANNEL5_EVENT");
    EXPECT_EQ(signalsOf("MEMTOMEM"), "");
    EXPECT_EQ(design.dma()->getDMARequestByName("MEMTOMEM")->RefParameterfoList.first().CurrentValue,
              "DMA_DIR_MEMORY_TO_MEMORY");
}

TEST_F(ConvertersAndStreams, ACameraTakesTheLinesThatThePackageHas)
{
    EXPECT_FALSE(design.peripheral("DVP")->GetIPValidFlag());
    set({"mode/DVP/Mode=Hardware_14_bits"});
    EXPECT_TRUE(design.peripheral("DVP")->GetIPValidFlag());
    EXPECT_EQ(value("DVP", "DataByDMA"), "FALSE");
    EXPECT_EQ(value("DVP", "FrameStartCode"), "(absent)");
    // So many of so many: never more than there are.
    set({"param/DVP/Frame_Rate_Contorl=TRUE", "param/DVP/Frame_Rate_Contorl_Source_Factor=8",
         "param/DVP/Frame_Rate_Contorl_Target_Factor=6"});
    EXPECT_EQ(apply("param/DVP/Frame_Rate_Contorl_Target_Factor=9").reason, DesignReason::AboveMaximum);
    set({"param/DVP/Frame_Rate_Contorl_Source_Factor=4"});
    EXPECT_EQ(value("DVP", "Frame_Rate_Contorl_Target_Factor"), "4");

    openSmall();
    EXPECT_NE(apply("mode/DVP/Mode=Hardware_10_bits").reason, DesignReason::None);
    set({"mode/DVP/Mode=Embedded_8_bits"});
    EXPECT_NE(value("DVP", "FrameStartCode"), "(absent)");
    EXPECT_EQ(value("DVP", "HorizontalBlanking"), "(absent)");
}

TEST_F(ConvertersAndStreams, TimersCarryTheInfraredAndLinesMoveTheOutputs)
{
    EXPECT_NE(apply("mode/IRTMR/Activated=TRUE").reason, DesignReason::None);
    set({"mode/TMR11/Activated=TRUE", "mode/TMR10/Activated=TRUE", "mode/IRTMR/Activated=TRUE"});
    EXPECT_EQ(value("IRTMR", "IR_Source"), "SCFG_IR_SOURCE_TMR10");
    // A channel that only compares gives no wave, one with PWM does without a pin.
    for (const char *timer : {"TMR11", "TMR10"})
        set({QString("mode/%1/Channel1_mode=Output_Compare_No_Output").arg(timer)});
    EXPECT_EQ(value("IRTMR", "IR_Carrier"), "FALSE");
    for (const char *timer : {"TMR11", "TMR10"})
        set({QString("mode/%1/Channel1_mode=PWM_Generation_No_Output").arg(timer)});
    EXPECT_EQ(value("IRTMR", "IR_Carrier"), "TRUE");
    set({"mode/TMR11/Activated=FALSE"});
    EXPECT_FALSE(design.peripheral("IRTMR")->GetIPValidFlag());

    set({"mode/DAC/OUT1=TRUE"});
    EXPECT_NE(apply("param/DAC/TriggerSource_1=DAC_EXTERNAL_INTERRUPT_LINE_9").reason, DesignReason::None);
    set({"mode/EXINT/EXINT9=TRUE", "param/DAC/TriggerSource_1=DAC_EXTERNAL_INTERRUPT_LINE_9"});
    set({"mode/EXINT/EXINT9=FALSE"});
    EXPECT_EQ(value("DAC", "TriggerSource_1"), "DAC_TRIGGER_DISABLE");
    EXPECT_TRUE(design.nvic()->vector("TMR6_DAC_GLOBAL_IRQn")->canBeSet);
    set({"mode/DAC/OUT1=FALSE"});
    EXPECT_FALSE(design.nvic()->vector("TMR6_DAC_GLOBAL_IRQn")->canBeSet);

    // The frames of the first controller trim the clock, and the box follows them.
    EXPECT_NE(apply("mode/ACC/Activated=TRUE").reason, DesignReason::None);
    set({"mode/USB_OTGFS1/Mode=Device_Only", "param/USB_OTGFS1/ClockTrimming=TRUE"});
    EXPECT_TRUE(design.peripheral("ACC")->GetIPValidFlag());
    set({"mode/USB_OTGFS1/Mode="});
    EXPECT_FALSE(design.peripheral("ACC")->GetIPValidFlag());

    // All timers of motor control by name: a subordinate mode without its input is no use of the timer.
    for (const char *timer : {"TMR1", "TMR2", "TMR3", "TMR4", "TMR5", "TMR8", "TMR9", "TMR12", "TMR20"}) {
        SCOPED_TRACE(timer);
        const QString mode = QString("mode/") + timer + '/';
        set({mode + "Activated=TRUE", mode + "Subordinate mode=Reset"});
        EXPECT_FALSE(design.peripheral(timer)->GetIPValidFlag());
        EXPECT_TRUE(design.peripheral(timer)->GetIPStatusFlag() & IPSTATUS_ERROR);
        EXPECT_EQ(noteOf(timer), "Sub-mode input selection");
        set({mode + "Sub-mode input selection=IS1"});
        EXPECT_TRUE(design.peripheral(timer)->GetIPValidFlag());
        EXPECT_EQ(noteOf(timer), "");
    }
}

TEST_F(ConvertersAndStreams, ABlockIsAPortOrAnAudioInterface)
{
    openSmall();
    for (const QString number : {"1", "2", "3", "4"}) {
        const QString audio = "mode/I2S" + number + "/Mode=";
        const QString port = "mode/SPI" + number + "/Mode=";
        set({audio + "Half_Duplex_Master", "mode/I2S" + number + "/MCK_Output=TRUE", "dma/any=I2S" + number + "_TX"});
        EXPECT_NE(apply(port + "Transmit_Only_Master").reason, DesignReason::None) << number.toStdString();
        EXPECT_EQ(value("I2S" + number, "MCLKOutput"), "TRUE");
        set({audio, port + "Transmit_Only_Master"});
        EXPECT_NE(apply(audio + "Half_Duplex_Slave").reason, DesignReason::None) << number.toStdString();
        set({port});
    }
}

} // namespace
