#include "Design/DMA_Configuration.h"
#include "Design/NVIC_Configuration.h"
#include "DeviceFixture.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

// Values that only work beside others: with these they are taken, and they go with them.

using namespace ChipLoom;

namespace {

struct CombinationCase
{
    const char *name;
    QStringList alone;  ///< settings beside which the value is refused
    QStringList beside; ///< what it takes in addition
    const char *instance, *parameter, *value;
    const char *without;  ///< setting that takes away what it takes
    const char *fallback; ///< its value then
};

class Combinations : public DeviceFixture, public ::testing::WithParamInterface<CombinationCase>
{
protected:
    void SetUp() override { open("ZV32F437ZMT7", "LQFP144"); }
};

TEST_P(Combinations, AreAskedFor)
{
    const CombinationCase &row = GetParam();
    const QString setting = QString("param/%1/%2=%3").arg(row.instance, row.parameter, row.value);
    for (const QString &one : row.alone)
        ASSERT_TRUE(apply(one)) << one.toStdString();
    EXPECT_FALSE(apply(setting));
    for (const QString &one : row.beside)
        ASSERT_TRUE(apply(one)) << one.toStdString();
    EXPECT_TRUE(apply(setting));
    ASSERT_TRUE(apply(row.without));
    EXPECT_EQ(value(row.instance, row.parameter), row.fallback);
}

const QStringList Timer{"mode/TMR1/Activated=TRUE"};
const QStringList Capture = Timer + QStringList{"mode/TMR1/Channel2_mode=Input_Capture"};
const QStringList Master{"mode/SPI1/Mode=Full_Duplex_Master"};
const QStringList Alarm{"mode/ERTC/Activate Clock Source=TRUE", "mode/ERTC/Activate Calendar=TRUE",
                        "mode/ERTC/Alarm_A=TRUE", "param/ERTC/Interrupt_ALA=TRUE", "mode/EXINT/EXINT17=TRUE"};

INSTANTIATE_TEST_SUITE_P(
    Rules, Combinations,
    ::testing::Values(CombinationCase{"OutputForOtherTimers",
                                      Timer,
                                      {"mode/TMR1/Channel2_mode=PWM_Generation"},
                                      "TMR1",
                                      "PrimaryTMROutput",
                                      "TMR_PRIMARY_SEL_C2ORAW",
                                      "mode/TMR1/Channel2_mode=Disable",
                                      "TMR_PRIMARY_SEL_RESET"},
                      CombinationCase{"SwitchedOutput",
                                      Timer + QStringList{"mode/TMR1/Output_Channel_Switch=TRUE"},
                                      {"mode/TMR1/Channel3_mode=Forced_Output"},
                                      "TMR1",
                                      "OutputSwitch_CH3",
                                      "TRUE",
                                      "mode/TMR1/Channel3_mode=Disable",
                                      "(absent)"},
                      CombinationCase{"PinOfTheNeighbour",
                                      Capture,
                                      {"mode/TMR1/Channel1_mode=Input_Capture"},
                                      "TMR1",
                                      "InputMapping_CH2",
                                      "TMR_CC_CHANNEL_MAPPED_INDIRECT",
                                      "mode/TMR1/Channel1_mode=PWM_Generation",
                                      "TMR_CC_CHANNEL_MAPPED_DIRECT"},
                      CombinationCase{"TriggerInput",
                                      Capture,
                                      {"mode/TMR1/Subordinate mode=Reset", "mode/TMR1/Sub-mode input selection=IS1"},
                                      "TMR1",
                                      "InputMapping_CH2",
                                      "TMR_CC_CHANNEL_MAPPED_STI",
                                      "mode/TMR1/Subordinate mode=Disable",
                                      "TMR_CC_CHANNEL_MAPPED_DIRECT"},
                      CombinationCase{"DirectionOfAnEncoder",
                                      Timer + QStringList{"mode/TMR1/Combined_Channels=Encoder_Mode"},
                                      {"mode/TMR1/Combined_Channels=PWM_Input"},
                                      "TMR1",
                                      "CounterDirection",
                                      "TMR_COUNT_DOWN",
                                      "mode/TMR1/Combined_Channels=Encoder_Mode",
                                      "TMR_COUNT_UP"},
                      CombinationCase{"PulseBeforeEachFrame",
                                      Master,
                                      {"mode/SPI1/Hardware_CS=Hardware_CS_Output"},
                                      "SPI1",
                                      "TIMode",
                                      "SPI_TIMODE_ENABLE",
                                      "mode/SPI1/Hardware_CS=Hardware_CS_Input",
                                      "SPI_TIMODE_DISABLE"},
                      CombinationCase{"OneWireHasOnePin",
                                      {"mode/USART1/Mode=Single_Wire_Half_Duplex"},
                                      {"mode/USART1/Mode=Asynchronous"},
                                      "USART1",
                                      "PinsSwapping",
                                      "TRUE",
                                      "mode/USART1/Mode=Single_Wire_Half_Duplex",
                                      "(absent)"},
                      // The interrupt of the alarm comes by this line.
                      CombinationCase{"LineOfTheAlarm",
                                      Alarm,
                                      {"param/ERTC/Interrupt_ALA=FALSE"},
                                      "EXINT",
                                      "InterruptEvent_EXINT17",
                                      "EXINT_LINE_EVENT",
                                      "param/ERTC/Interrupt_ALA=TRUE",
                                      "EXINT_LINE_INTERRUPT"},
                      CombinationCase{"FillingForTheDma",
                                      {"mode/QSPI1/Activated=TRUE"},
                                      {"dma/any=QSPI1"},
                                      "QSPI1",
                                      "DMAThreshold",
                                      "QSPI_DMA_16_WORDS",
                                      "dma/QSPI1=",
                                      "(absent)"}),
    [](const ::testing::TestParamInfo<CombinationCase> &info) { return std::string(info.param.name); });

TEST_F(DeviceFixture, AComplementaryOutputFollowsAChannelThatCompares)
{
    open("ZV32F421C8T7", "LQFP48");
    ASSERT_TRUE(apply("mode/TMR1/Activated=TRUE"));
    EXPECT_FALSE(apply("mode/TMR1/Channel1C_output=TRUE"));
    for (const char *setting : {"mode/TMR1/Channel1_mode=PWM_Generation_No_Output", "mode/TMR1/Channel1C_output=TRUE",
                                "mode/TMR1/Channel1_mode=Forced_Output"})
        ASSERT_TRUE(apply(setting)) << setting;
    EXPECT_EQ(value("TMR1", "OutputPolarity_CH1C"), "TMR_OUTPUT_ACTIVE_HIGH");
    ASSERT_TRUE(apply("mode/TMR1/Channel1_mode=Input_Capture"));
    EXPECT_EQ(value("TMR1", "OutputPolarity_CH1C"), "(absent)");
}

struct RemarkCase
{
    const char *name, *device, *package;
    QStringList choice; ///< with which a half is missing
    const char *instance, *parameter;
    DesignReason reason;
    QStringList mend; ///< settings elsewhere that bring the other half
};

class Remarks : public DeviceFixture, public ::testing::WithParamInterface<RemarkCase>
{
};

// It may come by code of the user's: what he chose stays, no generation stops, and he is told.
TEST_P(Remarks, StandWhileTheOtherHalfIsMissing)
{
    const RemarkCase &row = GetParam();
    open(row.device, row.package);
    for (const QString &one : row.choice)
        ASSERT_TRUE(apply(one)) << one.toStdString();
    const IP_ParamSettingConfiguration &parameters = design.peripheral(row.instance)->parameters();
    const QString chosen = value(row.instance, row.parameter);
    EXPECT_EQ(parameters.warning(row.parameter).reason, row.reason);
    EXPECT_TRUE(parameters.hasWarnings());
    EXPECT_EQ(parameters.GetParamStatusFlag(), IPPARAMSTATUS_NORMAL);
    const QList<DesignProblem> problems = design.problems();
    EXPECT_TRUE(std::any_of(problems.begin(), problems.end(), [&row](const DesignProblem &problem) {
        return problem.isWarning && problem.place == QString("%1/%2").arg(row.instance, row.parameter);
    }));
    for (const QString &one : row.mend)
        ASSERT_TRUE(apply(one)) << one.toStdString();
    EXPECT_TRUE(parameters.warning(row.parameter));
    EXPECT_EQ(value(row.instance, row.parameter), chosen);
}

const QStringList Follower{"mode/TMR3/Activated=TRUE", "mode/TMR3/Subordinate mode=Trigger",
                           "mode/TMR3/Sub-mode input selection=IS0"};
const QStringList Pair{"mode/ADC-Common/Activated=TRUE", "param/ADC-Common/CombineMode=ADC_ORDINARY_SMLT_MODE",
                       "mode/ADC1/IN1=TRUE", "mode/ADC2/IN1=TRUE"};

const RemarkCase RemarkCases[] = {
    {"MasterThatGivesNothing",
     "ZV32F437ZMT7",
     "LQFP144",
     Follower + QStringList{"mode/TMR1/Activated=TRUE"},
     "TMR3",
     "SubModeInput",
     DesignReason::ValueDoubtful,
     {"param/TMR1/PrimaryTMROutput=TMR_PRIMARY_SEL_ENABLE"}},
    {"MasterThatIsReset",
     "ZV32F421C8T7",
     "LQFP48",
     Follower,
     "TMR3",
     "SubModeInput",
     DesignReason::ValueDoubtful,
     {"mode/TMR1/Activated=TRUE", "mode/TMR1/Subordinate mode=Reset"}},
    {"ConverterOfAChannel",
     "ZV32F407VGT7",
     "LQFP100",
     {"mode/ADC1/IN1=TRUE", "param/ADC1/OrdinaryTriggerSource=ADC12_ORDINARY_TRIG_TMR2CH2"},
     "ADC1",
     "OrdinaryTriggerSource",
     DesignReason::ValueDoubtful,
     {"mode/TMR2/Activated=TRUE", "mode/TMR2/Channel2_mode=PWM_Generation_No_Output"}},
    {"OutputOfATimer",
     "ZV32F437ZMT7",
     "LQFP144",
     {"mode/DAC/OUT2=TRUE", "param/DAC/TriggerSource_2=DAC_TMR6_TRGOUT_EVENT"},
     "DAC",
     "TriggerSource_2",
     DesignReason::ValueDoubtful,
     {"mode/TMR6/Activated=TRUE", "param/TMR6/PrimaryTMROutput=TMR_PRIMARY_SEL_OVERFLOW"}},
    {"PairOnOnePin",
     "ZV32F437ZMT7",
     "LQFP144",
     Pair,
     "ADC2",
     "Channel_OrdinarySequence_1",
     DesignReason::ChannelAtOnce,
     {"mode/ADC1/IN2=TRUE", "param/ADC1/Channel_OrdinarySequence_1=ADC_CHANNEL_2"}},
    {"EnvelopeThatSoftwareMoves",
     "ZV32F421C8T7",
     "LQFP48",
     {"mode/TMR16/Activated=TRUE", "mode/TMR17/Activated=TRUE", "mode/TMR17/Channel1_mode=PWM_Generation_No_Output",
      "mode/TMR16/Channel1_mode=Forced_Output", "mode/IRTMR/Activated=TRUE"},
     "IRTMR",
     "IR_Source",
     DesignReason::ValueDoubtful,
     {"mode/TMR16/Channel1_mode=PWM_Generation_No_Output"}}};

INSTANTIATE_TEST_SUITE_P(Rules, Remarks, ::testing::ValuesIn(RemarkCases),
                         [](const auto &row) { return row.param.name; });

// The third converter has some numbers on pins of its own, and who takes turns shares a pin on purpose.
TEST_F(DeviceFixture, OnlyTheSamePinAtTheSameMomentIsRemarked)
{
    open("ZV32F437ZMT7", "LQFP144");
    for (const QString &one :
         Pair + QStringList{"param/ADC-Common/CombineMode=ADC_TRIPLE_ORDINARY_SMLT_MODE", "mode/ADC1/IN4=TRUE",
                            "mode/ADC3/IN4=TRUE", "param/ADC1/Channel_OrdinarySequence_1=ADC_CHANNEL_4"})
        ASSERT_TRUE(apply(one)) << one.toStdString();
    EXPECT_FALSE(design.peripheral("ADC2")->parameters().hasWarnings());
    EXPECT_FALSE(design.peripheral("ADC3")->parameters().hasWarnings());
    ASSERT_TRUE(apply("param/ADC1/Channel_OrdinarySequence_1=ADC_CHANNEL_1"));
    EXPECT_EQ(design.peripheral("ADC2")->parameters().warning("Channel_OrdinarySequence_1").reason,
              DesignReason::ChannelAtOnce);
    ASSERT_TRUE(apply("param/ADC-Common/CombineMode=ADC_ORDINARY_SHIFT_MODE"));
    EXPECT_TRUE(design.peripheral("ADC2")->parameters().warning("Channel_OrdinarySequence_1"));
}

// The wake-ups and the voltage monitor reach the core by their line of EXINT alone; ERTC opens its own.
TEST_F(DeviceFixture, AVectorWithoutItsLineIsRemarked)
{
    open("ZV32F437ZMT7", "LQFP144");
    for (const char *setting :
         {"mode/PWC/PVM=TRUE", "nvic/PVM_IRQn/Enabled=TRUE", "mode/ERTC/Activate Clock Source=TRUE",
          "mode/ERTC/Activate Calendar=TRUE", "mode/ERTC/Alarm_A=TRUE", "param/ERTC/Interrupt_ALA=TRUE",
          "nvic/ERTCAlarm_IRQn/Enabled=TRUE"})
        ASSERT_TRUE(apply(setting)) << setting;
    QList<DesignProblem> problems;
    design.nvic()->collectProblems(problems);
    ASSERT_EQ(problems.size(), 1);
    EXPECT_TRUE(problems.first().isWarning);
    EXPECT_EQ(problems.first().reason, (DesignAnswer{DesignReason::VectorLineClosed, {"PVM_IRQn", "16"}}));
    ASSERT_TRUE(apply("mode/EXINT/EXINT16=TRUE"));
    EXPECT_TRUE(design.nvic()->remark(*design.nvic()->vector("PVM_IRQn")));
    ASSERT_TRUE(apply("param/EXINT/InterruptEvent_EXINT16=EXINT_LINE_EVENT"));
    EXPECT_FALSE(design.nvic()->remark(*design.nvic()->vector("PVM_IRQn")));
}

TEST_F(DeviceFixture, EventsWithoutAVectorAreRemarked)
{
    open("ZV32F437ZMT7", "LQFP144");
    const auto unheard = [this](const char *instance) { return design.nvic()->eventsRemark(instance); };
    ASSERT_TRUE(apply("mode/TMR1/Activated=TRUE"));
    EXPECT_TRUE(unheard("TMR1"));
    ASSERT_TRUE(apply("param/TMR1/Interrupt_Overflow=TRUE"));
    EXPECT_EQ(unheard("TMR1").reason, DesignReason::EventsUnheard);
    EXPECT_EQ(unheard("TMR1").arguments.last().count("_IRQn"), 4);
    ASSERT_TRUE(apply("nvic/TMR1_OVF_TMR10_IRQn/Enabled=TRUE"));
    EXPECT_TRUE(unheard("TMR1"));
    // Frames are received by interrupt where nothing else is chosen.
    for (const char *setting : {"mode/EMAC/Mode=RMII", "mode/EMAC/RMII_Link=PHY"})
        ASSERT_TRUE(apply(setting)) << setting;
    EXPECT_EQ(unheard("EMAC").reason, DesignReason::EventsUnheard);
    ASSERT_TRUE(apply("param/EMAC/ReceiveMode=EMAC_RX_POLLING"));
    EXPECT_TRUE(unheard("EMAC"));
}

// What moves data follows what makes them, until the user has a say.
TEST_F(DeviceFixture, ARequestGoesTheWayAndHasTheWidthOfItsData)
{
    open("ZV32F407VGT7", "LQFP100");
    const auto dma = [this](const char *request, const char *name) {
        for (const DMARequest *row : design.dma()->rows()) {
            for (const RefParameter &parameter : row->RefParameterfoList) {
                if (row->requestName == request && parameter.Name == name) {
                    EXPECT_EQ(parameter.CurrentValue, parameter.DefaultValueBackup) << "not shown as changed";
                    return parameter.CurrentValue;
                }
            }
        }
        return QStringLiteral("(absent)");
    };
    for (const char *setting :
         {"mode/TMR3/Activated=TRUE", "mode/TMR3/Channel1_mode=Input_Capture", "mode/TMR3/Channel2_mode=PWM_Generation",
          "dma/any=TMR3_CH1", "dma/any=TMR3_CH2", "mode/SPI2/Mode=Full_Duplex_Master", "dma/any=SPI2_RX",
          "mode/ADC1/IN1=TRUE", "mode/ADC2/IN2=TRUE", "dma/any=ADC1", "mode/USART1/Mode=Asynchronous",
          "param/USART1/Databitnum=USART_DATA_9BITS", "dma/any=USART1_RX"})
        ASSERT_TRUE(apply(setting)) << setting;
    EXPECT_EQ(dma("TMR3_CH1", "Direction"), "DMA_DIR_PERIPHERAL_TO_MEMORY");
    EXPECT_EQ(dma("TMR3_CH2", "Direction"), "DMA_DIR_MEMORY_TO_PERIPHERAL");
    EXPECT_EQ(dma("SPI2_RX", "PeriphDataAlignment"), "DMA_PERIPHERAL_DATA_WIDTH_BYTE");
    EXPECT_EQ(dma("USART1_RX", "MemDataAlignment"), "DMA_MEMORY_DATA_WIDTH_HALFWORD");
    EXPECT_EQ(dma("ADC1", "PeriphDataAlignment"), "DMA_PERIPHERAL_DATA_WIDTH_HALFWORD");
    for (const char *setting :
         {"mode/TMR3/Channel1_mode=PWM_Generation", "param/SPI2/FrameFormat=SPI_FRAME_16BIT",
          "param/ADC1/CombineMode=ADC_ORDINARY_SMLT_MODE", "param/USART1/Parityselection=USART_PARITY_EVEN"})
        ASSERT_TRUE(apply(setting)) << setting;
    EXPECT_EQ(dma("TMR3_CH1", "Direction"), "DMA_DIR_MEMORY_TO_PERIPHERAL");
    EXPECT_EQ(dma("SPI2_RX", "PeriphDataAlignment"), "DMA_PERIPHERAL_DATA_WIDTH_HALFWORD");
    EXPECT_EQ(dma("USART1_RX", "MemDataAlignment"), "DMA_MEMORY_DATA_WIDTH_BYTE") << "eight bits beside the parity";
    EXPECT_EQ(dma("ADC1", "PeriphDataAlignment"), "DMA_PERIPHERAL_DATA_WIDTH_WORD") << "two results";
}

// Neither the lowest beyond the class of before nor the highest below the next one.
TEST_F(DeviceFixture, AClassOfSpeedBringsItsSpeed)
{
    open("ZV32F437ZMT7", "LQFP144");
    ASSERT_TRUE(apply("mode/I2C1/Mode=I2C"));
    for (const auto &[speedClass, speed] : {std::pair("I2C_Fast", "400000"), std::pair("I2C_Fast_Plus", "1000000"),
                                            std::pair("I2C_Standard", "100000")}) {
        ASSERT_TRUE(apply(QString("param/I2C1/I2C_Mode=") + speedClass));
        EXPECT_EQ(value("I2C1", "ClockSpeed"), speed);
    }
    ASSERT_TRUE(apply("param/I2C1/ClockSpeed=50000"));
    EXPECT_EQ(value("I2C1", "ClockSpeed"), "50000");
}

} // namespace
