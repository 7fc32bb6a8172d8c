#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "DmaFixture.h"
#include "Model/XmlTree.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSignalSpy>
#include <QXmlStreamWriter>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

struct Step
{
    const char *setting;
    DesignReason reason;
    const char *rows; ///< of the table behind it, as "USART1_TX@DMA1_Channel1"; null if they do not matter
};

class Dma : public ::testing::Test
{
protected:
    DesignAnswer apply(Design &design, const QString &setting)
    {
        const DesignAnswer answer = design.apply(*DesignChange::fromSetting(setting));
        design.scheduler().drain();
        return answer;
    }

    static QString rows(const DMA_Configuration &dma)
    {
        QStringList list;
        for (const DMARequest *request : dma.rows())
            list.append(request->requestName + '@' + request->channelName);
        return list.join(' ');
    }

    void walk(Design &design, const DMA_Configuration &dma, const std::vector<Step> &steps)
    {
        for (const Step &step : steps) {
            SCOPED_TRACE(step.setting);
            const DesignAnswer answer = apply(design, step.setting);
            EXPECT_EQ(answer.reason, step.reason) << answerText(answer).toStdString();
            if (step.rows) {
                EXPECT_EQ(rows(dma), step.rows);
            }
        }
    }

    static QString value(const DMA_Configuration &dma, const QString &requestOrChannel, const QString &name)
    {
        for (const DMARequest *request : dma.rows()) {
            for (const RefParameter &parameter : request->RefParameterfoList) {
                if ((request->requestName == requestOrChannel || request->channelName == requestOrChannel) &&
                    parameter.Name == name)
                    return parameter.CurrentValue;
            }
        }
        return {};
    }

    static QStringList offered(const DMA_Configuration &dma, int row, const QString &name)
    {
        QStringList values;
        const DMARequest &request = *dma.rows().at(row);
        for (const RefParameter &parameter : request.RefParameterfoList) {
            if (parameter.Name != name)
                continue;
            for (const PossibleValue &value : dma.offeredValues(request, parameter))
                values.append(value.Value);
        }
        return values;
    }

    static QByteArray section(const DMA_Configuration &dma)
    {
        QByteArray text;
        QXmlStreamWriter writer(&text);
        writer.writeStartDocument();
        writer.writeStartElement("Root");
        dma.writeSection(writer);
        writer.writeEndDocument();
        return text;
    }

    ScriptedPrompt prompt;
    AppPaths sample{QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)};
    DmaFixture fixture;
};

TEST_F(Dma, FixedMappingGivesARequestItsOwnChannels)
{
    Design design(sample, prompt);
    ASSERT_TRUE(design.NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48"));
    const DMA_Configuration &dma = *design.dma();
    EXPECT_EQ(dma.dmaInfo().m_nDMA1ChannelCount, 5);
    EXPECT_EQ(dma.getDMARequestNameList(), QStringList{"MEMTOMEM"});
    EXPECT_EQ(dma.canAdd("USART1").reason, DesignReason::NoDmaRequest);
    walk(design, dma,
         {
             {"dma/any=USART1_TX", DesignReason::DmaRequestClosed, ""},
             {"dma/any=USART9_TX", DesignReason::UnknownDmaRequest, ""},
             {"mode/USART1/Mode=Asynchronous", DesignReason::None, ""},
             {"mode/SPI1/Mode=Full_Duplex_Master", DesignReason::None, ""},
             {"dma/DMA1_Channel1=USART1_TX", DesignReason::DmaChannelNotForRequest, ""},
             {"dma/DMA1_Channel9=USART1_TX", DesignReason::UnknownDmaChannel, ""},
             {"dma/any=USART1_TX", DesignReason::None, "USART1_TX@DMA1_Channel2"},
             {"dma/DMA1_Channel2=SPI1_RX", DesignReason::DmaChannelTaken, "USART1_TX@DMA1_Channel2"},
             {"dma/any=SPI1_RX", DesignReason::NoChannelForDmaRequest, "USART1_TX@DMA1_Channel2"},
             {"dma/any=USART1_TX", DesignReason::DmaRequestUsed, "USART1_TX@DMA1_Channel2"},
             // The request stands on another channel by the other remap, and takes its settings along.
             {"dma/USART1_TX/Priority=DMA_PRIORITY_HIGH", DesignReason::None, nullptr},
             {"mode/SCFG/USART1_TX DMA remap=TRUE", DesignReason::None, "USART1_TX@DMA1_Channel4"},
             {"dma/any=SPI1_RX", DesignReason::None, "USART1_TX@DMA1_Channel4 SPI1_RX@DMA1_Channel2"},
             // Where that one is taken, it loses its channel.
             {"mode/SCFG/USART1_TX DMA remap=FALSE", DesignReason::None, "SPI1_RX@DMA1_Channel2"},
             // In the place of the row before it, on the same channel.
             {"dma/any=MEMTOMEM", DesignReason::None, "SPI1_RX@DMA1_Channel2 MEMTOMEM@DMA1_Channel1"},
             {"dma/SPI1_RX/Request=USART1_TX", DesignReason::None, "USART1_TX@DMA1_Channel2 MEMTOMEM@DMA1_Channel1"},
             {"dma/USART1_TX/Request=SPI1_TX", DesignReason::None, "SPI1_TX@DMA1_Channel3 MEMTOMEM@DMA1_Channel1"},
             {"dma/SPI1_TX/Direction=DMA_DIR_PERIPHERAL_TO_MEMORY", DesignReason::ParameterClosed, nullptr},
             {"dma/SPI1_TX/Speed=1", DesignReason::UnknownParameter, nullptr},
             {"dma/SPI1_TX/Mode=FAST", DesignReason::ValueNotInList, nullptr},
             {"dma/SPI1_RX/Mode=NORMAL", DesignReason::DmaRequestNotUsed, nullptr},
             {"mode/SPI1/Mode=", DesignReason::None, "MEMTOMEM@DMA1_Channel1"},
             {"dma/MEMTOMEM=", DesignReason::None, ""},
             {"dma/MEMTOMEM=", DesignReason::DmaRequestNotUsed, ""},
         });
    EXPECT_EQ(dma.getDMARequestByName("USART1_TX")->configStatus, Request_Enable);
    EXPECT_EQ(dma.getDMARequestByName("SPI1_TX")->configStatus, Request_Not);
}

TEST_F(Dma, SettingsMoveWithTheirRequestAndEndWithItsRow)
{
    Design design(sample, prompt);
    ASSERT_TRUE(design.NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48"));
    const DMA_Configuration &dma = *design.dma();
    walk(design, dma,
         {{"mode/USART1/Mode=Asynchronous", DesignReason::None, nullptr},
          {"dma/any=USART1_TX", DesignReason::None, nullptr},
          {"dma/DMA1_Channel2/Priority=DMA_PRIORITY_HIGH", DesignReason::None, nullptr},
          {"mode/SCFG/USART1_TX DMA remap=TRUE", DesignReason::None, "USART1_TX@DMA1_Channel4"}});
    EXPECT_EQ(value(dma, "USART1_TX", "Priority"), "DMA_PRIORITY_HIGH");
    EXPECT_EQ(value(dma, "USART1_TX", "Direction"), "DMA_DIR_MEMORY_TO_PERIPHERAL");
    EXPECT_EQ(dma.ValidDMAChannalList().first()->channelNameValue, "DMA1_CHANNEL4");
    apply(design, "dma/USART1_TX=");
    apply(design, "dma/any=USART1_TX");
    EXPECT_EQ(value(dma, "USART1_TX", "Priority"), "DMA_PRIORITY_LOW");

    // A timer takes values from memory to compare, or leaves there what it captures.
    walk(design, dma,
         {{"mode/TMR3/Activated=TRUE", DesignReason::None, nullptr},
          {"mode/TMR3/Channel4_mode=Input_Capture", DesignReason::None, nullptr},
          {"dma/any=TMR3_CH4", DesignReason::None, nullptr},
          {"dma/TMR3_CH4/Direction=DMA_DIR_MEMORY_TO_MEMORY", DesignReason::ValueNotInList, nullptr},
          {"dma/TMR3_CH4/Direction=DMA_DIR_PERIPHERAL_TO_MEMORY", DesignReason::None, nullptr}});
    EXPECT_EQ(value(dma, "TMR3_CH4", "Direction"), "DMA_DIR_PERIPHERAL_TO_MEMORY");

    for (const LANGUAGE language : {UI_CH, UI_EN}) {
        GlobalLanguage::g_CurrentLanguage = language;
        design.updateLanguage();
        for (const RefParameter &one : dma.ValidDMAChannalList().first()->RefParameterfoList)
            EXPECT_EQ(one.Comment, language == UI_CH ? one.Comment_CH : one.Comment_EN);
    }
    EXPECT_EQ(value(dma, "TMR3_CH4", "Direction"), "DMA_DIR_PERIPHERAL_TO_MEMORY");
}

TEST_F(Dma, RequestsThatHardwareTiesExcludeEachOther)
{
    Design design(sample, prompt);
    ASSERT_TRUE(design.NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48"));
    apply(design, "mode/TMR16/Activated=TRUE");
    apply(design, "mode/TMR16/Channel1_mode=Output_Compare");
    const DMA_Configuration &dma = *design.dma();
    ASSERT_TRUE(dma.getDMARequestNameList("TMR16").contains("TMR16_CH1"));
    EXPECT_TRUE(apply(design, "dma/any=TMR16_CH1"));
    const DesignAnswer refused = apply(design, "dma/any=TMR16_OVERFLOW");
    EXPECT_EQ(answerText(refused), "No available channel for configurated DMA Request! TMR16_CH1 has been used");
    EXPECT_TRUE(apply(design, "dma/TMR16_CH1/Request=TMR16_OVERFLOW"));
    EXPECT_EQ(rows(dma), "TMR16_OVERFLOW@DMA1_Channel3");
    EXPECT_EQ(tiedRequests("ZV32F422", "TMR3_TRIG"), QStringList{"TMR3_CH1"});
    EXPECT_EQ(tiedRequests("ZV32F421", "TMR3_TRIG"), QStringList{});
}

TEST_F(Dma, FlexibleMappingGivesAnyRequestAnyChannel)
{
    Design design(sample, prompt);
    ASSERT_TRUE(design.NewDesign("ZV32F403A", "ZV32F403AVGT7", "LQFP100"));
    const DMA_Configuration &dma = *design.dma();
    walk(design, dma,
         {{"mode/USART1/Mode=Asynchronous", DesignReason::None, nullptr},
          {"dma/DMA2_Channel7=USART1_RX", DesignReason::None, "USART1_RX@DMA2_Channel7"},
          {"dma/any=USART1_TX", DesignReason::None, "USART1_RX@DMA2_Channel7 USART1_TX@DMA1_Channel1"},
          {"dma/USART1_RX=DMA2_Channel1", DesignReason::None, "USART1_RX@DMA2_Channel1 USART1_TX@DMA1_Channel1"},
          {"dma/USART1_RX=DMA1_Channel1", DesignReason::DmaChannelTaken, nullptr}});
    EXPECT_EQ(dma.getDMARequestByName("USART1_RX")->DMAType, DMA_REQUEST_DMA2);
    // Memory to memory takes every channel that is left, each with settings of its own.
    for (int i = 0; i < 12; ++i)
        EXPECT_TRUE(apply(design, "dma/any=MEMTOMEM"));
    EXPECT_EQ(dma.canAdd().reason, DesignReason::NoDmaChannel);
    EXPECT_EQ(apply(design, "dma/any=MEMTOMEM").reason, DesignReason::NoDmaChannel);
    EXPECT_TRUE(apply(design, "dma/DMA1_Channel3/Priority=DMA_PRIORITY_HIGH"));
    EXPECT_EQ(value(dma, "DMA1_Channel2", "Priority"), "DMA_PRIORITY_LOW");
    EXPECT_EQ(value(dma, "DMA1_Channel3", "Priority"), "DMA_PRIORITY_HIGH");
    EXPECT_EQ(dma.addressOf(*dma.rows().last()), "DMA2_Channel7");
    EXPECT_TRUE(apply(design, "dma/DMA1_Channel3="));
    EXPECT_EQ(dma.ValidDMAChannalList().size(), 13);
}

TEST_F(Dma, InterruptsOfARequestAskForTheVectorOfItsChannel)
{
    Design design(sample, prompt);
    ASSERT_TRUE(design.NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48"));
    QStringList held;
    QObject::connect(design.dma(), &DMA_Configuration::SendAutoEnableNVICIRQSemaphore, design.dma(),
                     [&](const QStringList &cancelled, const QStringList &enabled) {
                         for (const QString &token : cancelled)
                             EXPECT_TRUE(held.removeOne(token)) << token.toStdString();
                         held += enabled;
                     });
    const QString low = "Semaphore_AutoEnable_DMA1_Channel3_2_IRQn";
    const QString high = "Semaphore_AutoEnable_DMA1_Channel5_4_IRQn";
    apply(design, "mode/USART1/Mode=Asynchronous");
    apply(design, "dma/any=USART1_TX");
    EXPECT_EQ(held, QStringList());
    apply(design, "dma/USART1_TX/Interrupt_FDT=TRUE");
    apply(design, "dma/USART1_TX/Interrupt_DTERR=TRUE");
    EXPECT_EQ(held, (QStringList{low, low}));
    EXPECT_TRUE(design.nvic()->vector("DMA1_Channel3_2_IRQn")->enabledFlag);
    apply(design, "mode/SCFG/USART1_TX DMA remap=TRUE");
    EXPECT_EQ(held, (QStringList{high, high}));
    apply(design, "dma/USART1_TX/Interrupt_FDT=FALSE");
    EXPECT_EQ(held, QStringList{high});
    apply(design, "mode/USART1/Mode=");
    EXPECT_EQ(held, QStringList());
    for (const MCUNVICSetting *vector : design.nvic()->GetAllNVICSettingList())
        EXPECT_FALSE(vector->ValueName.startsWith("DMA") && (vector->enabledFlag || vector->canBeSet));
}

TEST_F(Dma, AThresholdHoldsWholeBursts)
{
    Design design(fixture.paths(), prompt);
    ASSERT_TRUE(design.NewDesign(fixture.Series, fixture.Device, fixture.Package));
    const DMA_Configuration &edma = *design.edma();
    apply(design, "mode/DVP/On=TRUE");
    apply(design, "edma/any=DVP");
    EXPECT_EQ(offered(edma, 0, "FIFOThreshold"), QStringList());
    EXPECT_EQ(apply(design, "edma/DVP/FIFOThreshold=EDMA_FIFO_THRESHOLD_FULL").reason, DesignReason::UnknownParameter);
    apply(design, "edma/DVP/FIFOMode=TRUE");
    struct Row
    {
        const char *width, *burst;
        QStringList quarters; ///< of the FIFO that are offered; none if the burst itself is refused
    };
    const Row table[] = {
        {"BYTE", "SINGLE", {"1QUARTER", "HALF", "3QUARTER", "FULL"}},
        {"BYTE", "BURST_4", {"1QUARTER", "HALF", "3QUARTER", "FULL"}},
        {"BYTE", "BURST_8", {"HALF", "FULL"}},
        {"BYTE", "BURST_16", {"FULL"}},
        {"HALFWORD", "BURST_4", {"HALF", "FULL"}},
        {"HALFWORD", "BURST_8", {"FULL"}},
        {"HALFWORD", "BURST_16", {}},
        {"WORD", "SINGLE", {"1QUARTER", "HALF", "3QUARTER", "FULL"}},
        {"WORD", "BURST_4", {"FULL"}},
        {"WORD", "BURST_8", {}},
    };
    for (const Row &row : table) {
        SCOPED_TRACE(std::string(row.width) + ' ' + row.burst);
        apply(design, "edma/DVP/MemBurst=EDMA_MEMORY_SINGLE");
        ASSERT_TRUE(apply(design, QString("edma/DVP/MemDataAlignment=EDMA_MEMORY_DATA_WIDTH_") + row.width));
        EXPECT_EQ(bool(apply(design, QString("edma/DVP/MemBurst=EDMA_MEMORY_") + row.burst)), !row.quarters.isEmpty());
        // The same FIFO stands in front of the peripheral.
        apply(design, "edma/DVP/PeriphBurst=EDMA_PERIPHERAL_SINGLE");
        ASSERT_TRUE(apply(design, QString("edma/DVP/PeriphDataAlignment=EDMA_PERIPHERAL_DATA_WIDTH_") + row.width));
        EXPECT_EQ(bool(apply(design, QString("edma/DVP/PeriphBurst=EDMA_PERIPHERAL_") + row.burst)),
                  !row.quarters.isEmpty());
        if (!row.quarters.isEmpty()) {
            EXPECT_EQ(offered(edma, 0, "FIFOThreshold"),
                      QStringList(row.quarters).replaceInStrings(QRegularExpression("^"), "EDMA_FIFO_THRESHOLD_"));
        }
    }
    // A wider word takes a burst with it that has no room any more, and the threshold follows.
    apply(design, "edma/DVP/MemDataAlignment=EDMA_MEMORY_DATA_WIDTH_BYTE");
    apply(design, "edma/DVP/MemBurst=EDMA_MEMORY_BURST_8");
    EXPECT_EQ(value(edma, "DVP", "FIFOThreshold"), "EDMA_FIFO_THRESHOLD_HALF");
    apply(design, "edma/DVP/MemDataAlignment=EDMA_MEMORY_DATA_WIDTH_WORD");
    EXPECT_EQ(value(edma, "DVP", "MemBurst"), "EDMA_MEMORY_SINGLE");
    // Tokens set parameters, and set themselves above the rule.
    apply(design, "edma/DVP/MemBurst=EDMA_MEMORY_BURST_4");
    EXPECT_EQ(offered(edma, 0, "FIFOThreshold"), QStringList{"EDMA_FIFO_THRESHOLD_FULL"});
    apply(design, "mode/DVP/Half=TRUE");
    EXPECT_EQ(offered(edma, 0, "FIFOThreshold"),
              (QStringList{"EDMA_FIFO_THRESHOLD_1QUARTER", "EDMA_FIFO_THRESHOLD_FULL"}));
    EXPECT_EQ(value(edma, "DVP", "Priority"), "EDMA_PRIORITY_HIGH");
}

TEST_F(Dma, APairAndItsHalvesExcludeEachOther)
{
    Design design(fixture.paths(), prompt);
    ASSERT_TRUE(design.NewDesign(fixture.Series, fixture.Device, fixture.Package));
    const DMA_Configuration &edma = *design.edma();
    const auto byDma = [&](const char *instance) {
        return design.peripheral(instance)->parameters().parameter("ByDma") != nullptr;
    };
    apply(design, "mode/ADC1/On=TRUE");
    EXPECT_EQ(edma.getDMARequestNameList("ADC1"), QStringList{"ADC1"});
    EXPECT_EQ(edma.getDMARequestNameList("ADC2"), QStringList{});
    apply(design, "mode/ADC2/On=TRUE");
    EXPECT_EQ(edma.getDMARequestNameList("ADC1"), (QStringList{"ADC1", "ADC1_ADC2"}));
    EXPECT_EQ(edma.getDMARequestNameList("ADC2"), (QStringList{"ADC2", "ADC1_ADC2"}));
    walk(design, edma,
         {{"edma/any=ADC2", DesignReason::None, "ADC2@EDMA_Stream1"},
          {"edma/any=ADC1_ADC2", DesignReason::NoChannelForDmaRequest, nullptr},
          {"edma/ADC2/Request=ADC1_ADC2", DesignReason::None, "ADC1_ADC2@EDMA_Stream1"},
          {"edma/any=ADC1", DesignReason::NoChannelForDmaRequest, nullptr}});
    // Both converters hear that their data go by DMA, until the pair has no channel.
    EXPECT_TRUE(byDma("ADC1"));
    EXPECT_TRUE(byDma("ADC2"));
    EXPECT_EQ(edma.rows("ADC2").size(), 1);
    apply(design, "mode/ADC2/On=FALSE");
    EXPECT_EQ(rows(edma), "");
    EXPECT_FALSE(byDma("ADC1"));
    apply(design, "edma/any=ADC1");
    EXPECT_TRUE(byDma("ADC1"));
}

TEST_F(Dma, StreamsKeepTheirOwnSettings)
{
    Design design(fixture.paths(), prompt);
    ASSERT_TRUE(design.NewDesign(fixture.Series, fixture.Device, fixture.Package));
    const DMA_Configuration &edma = *design.edma();
    walk(design, edma,
         {{"mode/DVP/On=TRUE", DesignReason::None, nullptr},
          {"mode/MUXGEN/On=TRUE", DesignReason::None, nullptr},
          {"edma/any=DVP", DesignReason::None, "DVP@EDMA_Stream1"},
          // In the order of preference of the request.
          {"edma/any=GENERATOR1", DesignReason::None, "DVP@EDMA_Stream1 GENERATOR1@EDMA_Stream3"},
          {"edma/GENERATOR1=EDMA_Stream4", DesignReason::DmaChannelNotForRequest, nullptr},
          {"edma/DVP/XAxisCount=4", DesignReason::UnknownParameter, nullptr},
          {"edma/DVP/2DMode=TRUE", DesignReason::None, nullptr},
          {"edma/DVP/XAxisCount=4", DesignReason::None, nullptr},
          {"edma/DVP/XAxisCount=33", DesignReason::AboveMaximum, nullptr},
          {"edma/DVP/LinkedTableTransferMode=TRUE", DesignReason::None, nullptr},
          {"edma/DVP/CurrentMemory=EDMA_MEMORY_1", DesignReason::UnknownParameter, nullptr},
          {"edma/DVP/DoubleMemoryMode=TRUE", DesignReason::None, nullptr},
          {"edma/DVP/CurrentMemory=EDMA_MEMORY_1", DesignReason::None, nullptr},
          // The other channel's events are there to wait for only while that channel gives them.
          {"edma/GENERATOR1/SyncEnable=TRUE", DesignReason::None, nullptr},
          {"edma/GENERATOR1/SyncSignalID=EVENT_OF_STREAM1", DesignReason::ValueNotOffered, nullptr},
          {"edma/DVP/EventEnable=TRUE", DesignReason::None, nullptr},
          {"edma/GENERATOR1/SyncSignalID=EVENT_OF_STREAM1", DesignReason::None, nullptr},
          {"edma/DVP/2DMode=FALSE", DesignReason::None, nullptr},
          {"edma/DVP/2DMode=TRUE", DesignReason::None, nullptr}});
    EXPECT_EQ(value(edma, "DVP", "XAxisCount"), "4");
    EXPECT_EQ(value(edma, "GENERATOR1", "SyncSignalID"), "EVENT_OF_STREAM1");
    EXPECT_EQ(edma.getDMARequestByName("GENERATOR1")->DMAType, DMA_REQUEST_GENERATOR);
    EXPECT_EQ(edma.getDMARequestByName("DVP")->DMAType, DMA_REQUEST_EDMA);

    // A stored section gives the same again, and a stored state too.
    const QByteArray stored = section(edma);
    const DesignSnapshot snapshot = design.snapshot();
    design.peripheral("DVP")->ResetConfiguration();
    EXPECT_EQ(value(edma, "DVP", "2DMode"), "FALSE");
    EXPECT_EQ(value(edma, "GENERATOR1", "SyncSignalID"), "EXINT_LINE0");
    design.AllConfigReset();
    EXPECT_EQ(rows(edma), "");
    EXPECT_TRUE(design.restore(snapshot));
    EXPECT_EQ(section(edma), stored);
    design.AllConfigReset();
    apply(design, "mode/MUXGEN/On=TRUE");
    QList<DesignProblem> problems;
    design.edma()->readSection(parseXml(stored).root, problems);
    ASSERT_EQ(problems.size(), 2);
    EXPECT_EQ(problems.first().place, "EDMA/DVP");
    EXPECT_EQ(problems.last().place, "EDMA/GENERATOR1/SyncSignalID");
    EXPECT_EQ(rows(edma), "GENERATOR1@EDMA_Stream3");
    apply(design, "mode/DVP/On=TRUE");
    problems.clear();
    design.edma()->readSection(parseXml(stored).root, problems);
    EXPECT_EQ(problems.size(), 0);
    EXPECT_EQ(section(edma), stored) << "in the order of the section, whatever stood there before";
}

TEST_F(Dma, ASectionThatDoesNotFitIsTakenAsFarAsItGoes)
{
    Design design(sample, prompt);
    ASSERT_TRUE(design.NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48"));
    apply(design, "mode/USART1/Mode=Asynchronous");
    QList<DesignProblem> problems;
    design.dma()->readSection(parseXml(R"(<Root><DMA><other/><list Request="USART1_TX" Channel="DMA1_Channel2">
        <ParametersSub name="Priority" value="DMA_PRIORITY_HIGH"/><ParametersSub name="Mode" value="FAST"/>
        <ParametersSub name="Colour" value="red"/></list><list Request="USART1_RX" Channel="DMA1_Channel2"/>
        <list Request="USART7_RX" Channel="DMA1_Channel3"/><list Request="USART1_RX"/><MEMTOMEM/>
        <MEMTOMEM Channel="DMA1_Channel5"/></DMA></Root>)")
                                  .root,
                              problems);
    EXPECT_EQ(rows(*design.dma()), "USART1_TX@DMA1_Channel2 MEMTOMEM@DMA1_Channel5");
    EXPECT_EQ(value(*design.dma(), "USART1_TX", "Priority"), "DMA_PRIORITY_HIGH");
    QStringList told;
    for (const DesignProblem &problem : problems)
        told.append(problem.place + ": " + answerText(problem.reason));
    EXPECT_EQ(told, (QStringList{
                        "DMA/USART1_RX: DMA1_Channel2 serves USART1_TX.",
                        "DMA/USART7_RX: No available DMA request!",
                        "DMA/USART1_RX: There is no DMA channel \"\".",
                        "DMA/MEMTOMEM: There is no DMA channel \"\".",
                        "DMA/USART1_TX/Mode: Mode has no value \"FAST\".",
                        "DMA/USART1_TX/Colour: USART1_TX shows no parameter Colour in its present modes.",
                    }));
}

struct Start
{
    const char *series, *device, *package;
};

class DmaOfASample : public Dma, public ::testing::WithParamInterface<Start>
{
};

// What could be left behind: states of requests, tokens at the peripherals, vectors.
QStringList printed(const Design &design)
{
    QStringList lines;
    for (const DMARequest *request : design.dma()->dmaInfo().m_AllDMARequestList)
        lines.append(request->requestName + QString::number(request->configStatus) + request->channelName);
    for (const DMA_Channel_Info *channel : design.dma()->dmaInfo().m_ChannelInfoList)
        lines.append(channel->channelComment + QString::number(channel->channelUseType));
    for (const auto &part : design.parts()) {
        if (const auto *peripheral = dynamic_cast<const IP_ModeAndConfiguration *>(part.get())) {
            QStringList tokens = peripheral->parameters().GetValidSemaphoreList();
            tokens.sort();
            lines.append(peripheral->instanceName() + ' ' + tokens.join(','));
        }
    }
    for (const MCUNVICSetting *vector : design.nvic()->GetAllNVICSettingList())
        lines.append(vector->ValueName + QString::number(vector->enabledFlag) + QString::number(vector->canBeSet));
    return lines;
}

TEST_P(DmaOfASample, EveryModeCanHaveItsRequestsAndLeavesNothingBehind)
{
    Design design(sample, prompt);
    ASSERT_TRUE(design.NewDesign(GetParam().series, GetParam().device, GetParam().package));
    const QStringList start = printed(design);
    QSet<QString> used;
    for (const auto &part : design.parts()) {
        auto *peripheral = dynamic_cast<IP_ModeAndConfiguration *>(part.get());
        const bool asks = peripheral && design.dma()->hasRequests(peripheral->instanceName());
        for (int mode = 0; asks && mode < int(peripheral->controls().size()); ++mode) {
            const auto &control = peripheral->controls().at(mode);
            for (int choice = 1; choice < control->count(); ++choice) {
                const QString former = control->currentName();
                const QString name = control->items().at(choice - 1).Name;
                if (!peripheral->chooseItem(control->modeName(), name))
                    continue;
                for (const QString &request : design.dma()->getDMARequestNameList(peripheral->instanceName())) {
                    if (apply(design, "dma/any=" + request)) {
                        used.insert(request);
                        EXPECT_TRUE(apply(design, "dma/" + request + "/Interrupt_FDT=TRUE"));
                    }
                }
                ASSERT_TRUE(peripheral->chooseItem(control->modeName(), former));
                design.scheduler().drain();
                ASSERT_EQ(printed(design), start) << peripheral->instanceName().toStdString() << ' '
                                                  << control->modeName().toStdString() << '=' << name.toStdString();
            }
        }
    }
    EXPECT_GT(used.size(), 20);
}

INSTANTIATE_TEST_SUITE_P(Samples, DmaOfASample,
                         ::testing::Values(Start{"ZV32F421", "ZV32F421C8T7", "LQFP48"},
                                           Start{"ZV32F403A", "ZV32F403AVGT7", "LQFP100"},
                                           Start{"ZV32F437", "ZV32F437ZMT7", "LQFP144"}));

} // namespace
