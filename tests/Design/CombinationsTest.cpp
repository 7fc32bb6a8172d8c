#include "Design/DMA_Configuration.h"
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
