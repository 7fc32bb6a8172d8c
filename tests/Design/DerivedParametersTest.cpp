#include "Design/Calculators/DerivedParameters.h"
#include "Design/Calculators/I2cTiming.h"
#include "Design/Design.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace ChipLoom;

namespace {

// A real device, whose results are looked at after each change.
class DerivedParametersTest : public ::testing::Test
{
protected:
    void open(const char *series, const char *device, const char *package)
    {
        ASSERT_TRUE(design.NewDesign(series, device, package));
    }
    void set(const char *setting)
    {
        const auto change = DesignChange::fromSetting(QString::fromUtf8(setting));
        ASSERT_TRUE(change);
        const DesignAnswer answer = design.apply(*change);
        ASSERT_TRUE(answer) << setting << ": " << answer.arguments.join(' ').toStdString();
        ASSERT_TRUE(design.scheduler().drain());
    }
    const IP_ParamSettingConfiguration &parameters(const char *instance)
    {
        return design.peripheral(instance)->parameters();
    }
    QString value(const char *instance, const char *name)
    {
        const RefParameter *entry = parameters(instance).parameter(name);
        return entry ? entry->CurrentValue : QStringLiteral("(absent)");
    }
    double mhz(const char *instance) { return design.clock().Get_Peripherals_Clock(instance); }

    AppPaths paths{QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)};
    ScriptedPrompt prompt;
    Design design{paths, prompt};
};

TEST_F(DerivedParametersTest, RatesFollowEditsAndTheClockOncePerBurst)
{
    open("ZV32F403A", "ZV32F403AVGT7", "LQFP100");
    set("mode/USART1/Mode=Asynchronous");
    const double before = value("USART1", "RealBaudRate").toDouble();
    EXPECT_NEAR(before, 115200, 115200 * 0.02);
    set("param/USART1/BaudRate=9600");
    EXPECT_NEAR(value("USART1", "RealBaudRate").toDouble(), 9600, 10);

    int rebuilds = 0;
    QObject::connect(&parameters("USART1"), &IP_ParamSettingConfiguration::Send_RefreshParamTabWidget_Signal,
                     [&rebuilds] { ++rebuilds; });
    const double clock = mhz("USART1");
    for (const char *divider : {"clock/apb2div=4", "clock/apb2div=8", "clock/apb2div=16"})
        ASSERT_TRUE(design.apply(*DesignChange::fromSetting(divider)));
    ASSERT_TRUE(design.scheduler().drain());
    EXPECT_NE(mhz("USART1"), clock);
    EXPECT_EQ(rebuilds, 1);
    const double real = value("USART1", "RealBaudRate").toDouble();
    EXPECT_NEAR(std::remainder(mhz("USART1") * 1e6 / real, 1.0), 0, 1e-4);

    // A rate that the slow bus cannot meet is marked with its size, and no error.
    set("param/USART1/BaudRate=115200");
    const DesignAnswer warning = parameters("USART1").warning("RealBaudRate");
    const double error = (value("USART1", "RealBaudRate").toDouble() - 115200) / 1152;
    EXPECT_EQ(warning.reason, std::abs(error) > 2 ? DesignReason::RateOff : DesignReason::None);
    EXPECT_EQ(parameters("USART1").GetParamStatusFlag(), IPPARAMSTATUS_NORMAL);
    // A port samples each bit sixteen times. That of printf is told of too.
    set("clock/sclkselect=HICK");
    set("clock/apb2div=1");
    set("param/USART1/BaudRate=1000000");
    EXPECT_EQ(parameters("USART1").warning("BaudRate"),
              (DesignAnswer{DesignReason::AboveMaximum, {"BaudRate", "1000000", "500000"}}));
    set("mode/SYSTEM/UART_Printf=USART2");
    EXPECT_TRUE(parameters("SYSTEM").warnings().isEmpty());
    set("param/SYSTEM/Printf_BaudRate=1300000");
    EXPECT_EQ(parameters("SYSTEM").warning("Printf_BaudRate").reason, DesignReason::RateOff);
}

TEST_F(DerivedParametersTest, CanOffersWhatFitsAndKeepsAChoice)
{
    open("ZV32F403A", "ZV32F403AVGT7", "LQFP100");
    set("mode/CAN1/Activated=TRUE");
    EXPECT_EQ(value("CAN1", "RealBaudRate"), "500");
    ASSERT_EQ(parameters("CAN1").parameter("BaudRate_Result_Select")->PossibleValueList.size(), 2);
    set("param/CAN1/BaudRate_Result_Select=CAN_RESULT_1");
    EXPECT_EQ(value("CAN1", "BS1_Size"), "CAN_BTS1_6TQ");
    set("param/CAN1/AutoWakeUp=FALSE");
    EXPECT_EQ(value("CAN1", "BaudRate_Result_Select"), "CAN_RESULT_1");
    set("param/CAN1/RSAW_Size=CAN_RSAW_4TQ");
    EXPECT_EQ(parameters("CAN1").warning("RSAW_Size"),
              (DesignAnswer{DesignReason::AboveMaximum, {"RSAW_Size", "4", "1"}}))
        << "wider than its segment";
    set("param/CAN1/RSAW_Size=CAN_RSAW_1TQ");

    // Another rate takes its usual sample point and the best of what fits.
    set("param/CAN1/BaudRate=1000");
    EXPECT_EQ(value("CAN1", "Sample_Point"), "75");
    EXPECT_EQ(value("CAN1", "BaudRate_Result_Select"), "CAN_RESULT_0");
    EXPECT_EQ(value("CAN1", "RealBaudRate"), "1000");

    // Nothing divides down to this rate: the list is bad, and says what would fit.
    set("param/CAN1/BaudRate=997");
    EXPECT_EQ(parameters("CAN1").GetParamStatusFlag(), IPPARAMSTATUS_NORMAL);
    set("clock/sclkselect=HICK");
    set("param/CAN1/BaudRate=930");
    EXPECT_EQ(parameters("CAN1").warning("BaudRate_Result_Select").reason, DesignReason::NoBitTiming);
    EXPECT_EQ(parameters("CAN1").GetParamStatusFlag(), IPPARAMSTATUS_ERROR);
    set("param/CAN1/BaudRate=500");
    EXPECT_EQ(parameters("CAN1").GetParamStatusFlag(), IPPARAMSTATUS_NORMAL);
    EXPECT_TRUE(parameters("CAN1").warnings().isEmpty());
}

TEST_F(DerivedParametersTest, TimersWatchdogsConvertersAndAudioShowWhatFollows)
{
    open("ZV32F403A", "ZV32F403AVGT7", "LQFP100");
    set("mode/TMR1/Activated=TRUE");
    set("param/TMR1/DividerValue=9");
    set("param/TMR1/Period=999");
    EXPECT_DOUBLE_EQ(value("TMR1", "OverflowFrequency").toDouble(), mhz("TMR1") * 1e6 / 10000);
    set("param/TMR1/CounterDirection=TMR_COUNT_TWO_WAY_1");
    EXPECT_NEAR(value("TMR1", "OverflowFrequency").toDouble(), mhz("TMR1") * 1e6 / 19980, 0.001);
    set("param/TMR1/ClockDivision=TMR_CLOCK_DIV2");
    set("param/TMR1/DeadTime=255");
    EXPECT_NEAR(value("TMR1", "DeadTimeValue").toDouble(), 63 * 16 * 2 * 1e3 / mhz("TMR1"), 0.001);
    set("mode/TMR1/Channel1_mode=Input_Capture");
    set("param/TMR1/InputFilter_CH1=15");
    EXPECT_NEAR(value("TMR1", "InputFilter_CH1_Frequency").toDouble(), mhz("TMR1") * 1e3 / 2 / 32, 0.001);
    for (const char *outside : {"mode/TMR1/Clock_source=External_Clock_B", "mode/TMR3/Activated=TRUE",
                                "mode/TMR3/Combined_Channels=Encoder_Mode"})
        set(outside);
    EXPECT_FALSE(parameters("TMR1").parameter("OverflowFrequency")->Visible);
    EXPECT_FALSE(parameters("TMR3").parameter("OverflowFrequency")->Visible);

    set("mode/WWDT/Activated=TRUE");
    set("param/WWDT/Window=0x50");
    EXPECT_NEAR(value("WWDT", "Time_Timeout").toDouble(), 64 * 4.096 / mhz("WWDT"), 1e-4);
    EXPECT_NEAR(value("WWDT", "Time_RefreshNotAllowed").toDouble(), 47 * 4.096 / mhz("WWDT"), 1e-4);

    set("mode/ADC1/IN0=TRUE");
    set("param/ADC1/SamplingTime_OrdinarySequence_1=ADC_SAMPLETIME_1_5");
    EXPECT_NEAR(value("ADC1", "SamplingRate_OrdinarySequence_1").toDouble(), mhz("ADC1") * 1e3 / 14, 0.001);

    set("mode/I2S2/Mode=Half_Duplex_Master");
    set("param/I2S2/AudioFreq=I2S_AUDIO_FREQUENCY_11_025K");
    EXPECT_NEAR(value("I2S2", "RealAudioFreq").toDouble(), 11.025, 0.02);
    const double narrow = value("I2S2", "I2S_DIV").toDouble();
    set("param/I2S2/DataFormat=I2S_DATA_24BIT_CHANNEL_32BIT");
    EXPECT_NEAR(value("I2S2", "I2S_DIV").toDouble(), narrow / 2, 1);
}

TEST_F(DerivedParametersTest, FollowersTakeWhatTheFirstConverterSetsForAll)
{
    open("ZV32F403A", "ZV32F403AVGT7", "LQFP100");
    for (const char *mode : {"mode/ADC1/IN0=TRUE", "mode/ADC2/IN1=TRUE"})
        set(mode);
    ASSERT_FALSE(parameters("ADC2").parameter("CombineMode")->Enable);
    set("param/ADC1/CombineMode=ADC_ORDINARY_SMLT_MODE");
    EXPECT_EQ(value("ADC2", "CombineMode"), "ADC_ORDINARY_SMLT_MODE");
    for (const char *setting : {"param/ADC1/SequenceMode=TRUE", "param/ADC1/NbrOfOrdinarySequence=3",
                                "param/ADC1/OrdinaryTriggerSource=ADC12_ORDINARY_TRIG_TMR2CH2"})
        set(setting);
    EXPECT_EQ(value("ADC2", "NbrOfOrdinarySequence"), "3");
    EXPECT_EQ(value("ADC2", "OrdinaryTriggerSource"), "ADC12_ORDINARY_TRIG_TMR2CH2");
    EXPECT_TRUE(parameters("ADC2").parameter("PreemptConversions")->Enable);
    // The other way round nothing goes, and a converter that comes later has it at once.
    set("mode/ADC2/IN1=FALSE");
    set("param/ADC1/CombineMode=ADC_PREEMPT_SMLT_MODE");
    set("mode/ADC2/IN1=TRUE");
    EXPECT_EQ(value("ADC2", "CombineMode"), "ADC_PREEMPT_SMLT_MODE");
    EXPECT_TRUE(parameters("ADC2").parameter("OrdinaryTriggerSource")->Enable);
    EXPECT_FALSE(parameters("ADC2").parameter("PreemptConversions")->Enable);
    EXPECT_EQ(value("ADC2", "Clock"), value("ADC1", "Clock"));
    // Taking turns at one signal, the one has to end its sampling before the other begins.
    set("param/ADC1/CombineMode=ADC_ORDINARY_LONGSHIFT_MODE");
    set("param/ADC1/NbrOfOrdinarySequence=1");
    const char *sampling = "SamplingTime_OrdinarySequence_1";
    EXPECT_EQ(parameters("ADC2").warning(sampling),
              (DesignAnswer{DesignReason::AboveMaximum, {sampling, "239.5", "14"}}));
    set("param/ADC2/SamplingTime_OrdinarySequence_1=ADC_SAMPLETIME_13_5");
    EXPECT_TRUE(parameters("ADC2").warnings().isEmpty());
    set("param/ADC1/CombineMode=ADC_ORDINARY_SHORTSHIFT_MODE");
    EXPECT_EQ(parameters("ADC2").warning(sampling).arguments.value(2), "7");
}

TEST_F(DerivedParametersTest, AWireClockThatASlowBusCannotGiveIsToldOf)
{
    open("ZV32F407", "ZV32F407VGT7", "LQFP100");
    for (const char *setting : {"mode/I2C1/Mode=I2C", "param/I2C1/I2C_Mode=I2C_Fast"})
        set(setting);
    EXPECT_TRUE(parameters("I2C1").warnings().isEmpty());
    set("clock/sclk=8"); // with 4 MHz at the interface
    EXPECT_EQ(parameters("I2C1").warning("ClockSpeed"),
              (DesignAnswer{DesignReason::RateOff, {"ClockSpeed", "-16.667", "5"}}));
    set("param/I2C1/DutyCycle=I2C_FSMODE_DUTY_16_9");
    EXPECT_EQ(parameters("I2C1").warning("ClockSpeed").arguments.value(1), "-60");
    set("param/I2C1/ClockSpeed=160000");
    EXPECT_TRUE(parameters("I2C1").warnings().isEmpty());
}

TEST_F(DerivedParametersTest, AChipCardGetsAClockThatItBears)
{
    open("ZV32F403A", "ZV32F403AVGT7", "LQFP100");
    set("mode/USART1/Mode=SmartCard_with_Clock");
    const double port = mhz("USART1");
    set("param/USART1/SmartcardDivision=2");
    EXPECT_NEAR(value("USART1", "SmartcardClock").toDouble(), port / 4, 1e-3);
    EXPECT_EQ(parameters("USART1").warning("SmartcardClock").reason, port / 4 > 5   ? DesignReason::AboveMaximum
                                                                     : port / 4 < 1 ? DesignReason::BelowMinimum
                                                                                    : DesignReason::None);
    set("param/USART1/SmartcardDivision=31");
    EXPECT_EQ(parameters("USART1").warning("SmartcardClock").reason,
              port / 62 < 1 ? DesignReason::BelowMinimum : DesignReason::None);
    set("mode/USART1/Mode=SmartCard");
    EXPECT_EQ(value("USART1", "SmartcardClock"), "(absent)");
}

TEST_F(DerivedParametersTest, ACalendarThatRunsAwayIsToldOf)
{
    open("ZV32F421", "ZV32F421C8T7", "LQFP48");
    set("mode/ERTC/Activate Clock Source=TRUE"); // by LICK, with dividers for 32768 Hz
    EXPECT_EQ(parameters("ERTC").warning("DivB"), (DesignAnswer{DesignReason::RateOff, {"DivB", "22.07", "0.01"}}));
    set("param/ERTC/DivA=124");
    set("param/ERTC/DivB=319");
    EXPECT_TRUE(parameters("ERTC").warnings().isEmpty());

    open("ZV32F403A", "ZV32F403AVGT7", "LQFP100");
    set("mode/CRM/LEXT=LEXT-External-Oscillator");
    set("clock/rtcsel=LEXT");
    set("mode/RTC/Activate Clock Source=TRUE");
    EXPECT_TRUE(parameters("RTC").warnings().isEmpty());
    set("clock/rtcsel=LICK");
    EXPECT_EQ(parameters("RTC").warning("Divider").reason, DesignReason::RateOff);
}

TEST_F(DerivedParametersTest, ASnapshotKeepsTheValuesOfItsTime)
{
    open("ZV32F403A", "ZV32F403AVGT7", "LQFP100");
    set("mode/TMR3/Activated=TRUE");
    const DesignSnapshot before = design.snapshot();
    set("param/TMR3/DividerValue=7");
    ASSERT_TRUE(design.restore(before));
    EXPECT_EQ(value("TMR3", "DividerValue"), "0");
}

// Parameters that only other families have.
class ParameterFixture
{
public:
    void add(const char *name, const char *value, const char *unit = "")
    {
        RefParameter parameter;
        parameter.Name = name;
        parameter.CurrentValue = value;
        parameter.Unit = unit;
        list.append(parameter);
    }
    void operate(const char *series, const char *instance)
    {
        warnings.clear();
        ParameterSheet sheet(series, instance, list, clock, warnings);
        SpecialParam_Operate(sheet);
    }
    QString value(const char *name) const
    {
        for (const RefParameter &entry : list) {
            if (entry.Name == name)
                return entry.CurrentValue;
        }
        return {};
    }
    RefParameter &operator[](const char *name)
    {
        return *std::find_if(list.begin(), list.end(), [name](const auto &entry) { return entry.Name == name; });
    }

    QList<RefParameter> list;
    PeripheralClock clock = [](const QString &) { return 80.0; };
    ParameterWarnings warnings;
};

TEST(DerivedFixtureTest, TheTimingRegisterFollowsAndNamesTheLimitThatFails)
{
    ParameterFixture i2c;
    for (const auto &[name, value] : {std::pair{"I2C_Mode", "I2C_Fast"},
                                      {"Analog_Filter", "TRUE"},
                                      {"Digital_Filter", "0"},
                                      {"Rise_Time", "100"},
                                      {"Fall_Time", "50"},
                                      {"Timing_Configuration_Value", ""},
                                      {"DCLH_timeout_enable", "TRUE"},
                                      {"DCLH_timeout_mode", "I2C_TIMEOUT_DETCET_HIGH"},
                                      {"DCLH_timeout_value_register", "99"},
                                      {"DCLH_timeout_value", "0"}})
        i2c.add(name, value);
    i2c.add("ClockSpeed", "400", "kHz");
    i2c.operate("ZV32F425", "I2C1");
    const I2cAnswer answer =
        solveI2cTiming({.clockHz = 80e6, .mode = I2cMode::Fast, .speedHz = 400e3, .riseTime = 100, .fallTime = 50});
    EXPECT_EQ(i2c.value("Timing_Configuration_Value").toUInt(nullptr, 16), answer.timing->registerValue());
    EXPECT_EQ(i2c.value("DCLH_timeout_value"), "0.005");
    i2c["Rise_Time"].CurrentValue = "500";
    i2c.operate("ZV32F425", "I2C1");
    EXPECT_EQ(i2c.warnings.value("Timing_Configuration_Value"),
              (DesignAnswer{DesignReason::NoI2cTiming, {"Timing_Configuration_Value", "tr", "-"}}));
}

TEST(DerivedFixtureTest, AResynchronisationWiderThanItsSegmentIsNotOffered)
{
    for (const auto &[series, widest] : {std::pair("ZV32F435", 2), std::pair("ZV32F407", 4)}) {
        ParameterFixture can;
        for (const char *name : {"BaudRate_Result_Select", "Baudrate_Division", "BS1_Size", "BS2_Size", "RealBaudRate"})
            can.add(name, "", "kbit/s");
        can.add("RSAW_Size", "CAN_RSAW_4TQ");
        can.add("BaudRate", "500", "kbit/s");
        can.add("Sample_Point", "87.5");
        can.operate(series, "CAN1");
        EXPECT_EQ(can.value("BS2_Size"), "CAN_BTS2_2TQ") << series;
        EXPECT_EQ(can["RSAW_Size"].PossibleValueList.size(), widest) << series;
        EXPECT_EQ(can.value("RSAW_Size"), widest == 4 ? "CAN_RSAW_4TQ" : "CAN_RSAW_1TQ") << series;
        // What is offered beyond the segment is at least told of.
        EXPECT_EQ(can.warnings.value("RSAW_Size"),
                  (widest == 4 ? DesignAnswer{DesignReason::AboveMaximum, {"RSAW_Size", "4", "2"}} : DesignAnswer{}))
            << series;
    }
}

TEST(DerivedFixtureTest, BothPhasesOfAFlexibleRateShareOneDivider)
{
    ParameterFixture can;
    for (const char *prefix : {"Nominal", "Data"}) {
        for (const char *name :
             {"_BaudRate_Result_Select", "_Division", "_BS1_Size", "_BS2_Size", "_RSAW_Size", "_RealBaudRate"})
            can.add((std::string(prefix) + name).c_str(), "", "kbit/s");
    }
    can.add("NominalBaudRate", "500", "kbit/s");
    can.add("DataBaudRate", "2000", "kbit/s");
    can.add("Sample_Point", "80");
    can.operate("ZV32M412", "CAN1");
    EXPECT_EQ(can.value("Nominal_RealBaudRate"), "500");
    EXPECT_EQ(can.value("Data_RealBaudRate"), "2000");
    EXPECT_EQ(can.value("Nominal_Division"), can.value("Data_Division"));
    EXPECT_EQ(can["Data_RSAW_Size"].MaxValue, can.value("Data_BS2_Size"));
    // A fixed part of the bus clock bounds what scales a picture.
    ParameterFixture dvp;
    dvp.add("Horizontal_Scaling_Resize_Source_Factor", "12");
    dvp.add("Horizontal_Scaling_Resize_Target_Factor", "3");
    dvp.operate("ZV32F437", "DVP");
    EXPECT_EQ(dvp["Horizontal_Scaling_Resize_Target_Factor"].MaxValue, "12");
}

} // namespace
