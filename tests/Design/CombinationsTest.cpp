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
                      CombinationCase{"FillingForTheDma",
                                      {"mode/QSPI1/Activated=TRUE"},
                                      {"dma/any=QSPI1"},
                                      "QSPI1",
                                      "DMAThreshold",
                                      "QSPI_DMA_16_WORDS",
                                      "dma/QSPI1=",
                                      "(absent)"}),
    [](const ::testing::TestParamInfo<CombinationCase> &info) { return std::string(info.param.name); });

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
