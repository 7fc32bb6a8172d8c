#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/GPIO_Configuration.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "Design/PinMenu.h"
#include "Model/XmlTree.h"
#include "ScriptedPrompt.h"

#include <QXmlStreamWriter>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

class SettingsListsTest : public testing::Test
{
protected:
    SettingsListsTest() { EXPECT_TRUE(design.NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48")); }

    void change(const QString &setting)
    {
        const DesignAnswer answer = design.apply(*DesignChange::fromSetting(setting));
        EXPECT_TRUE(answer) << setting.toStdString() << ": " << answerText(answer).toStdString();
        design.scheduler().drain();
    }

    DesignReason refusal(const QString &setting) { return design.apply(*DesignChange::fromSetting(setting)).reason; }

    // A setting of a pin's row; "none" without the row, "-" where the IO mode has no such setting.
    QString value(const QString &pin, const QString &parameter) const
    {
        const SignalsGPIOSetting *row = design.gpio()->row(pin);
        const RefParameter *found = row ? GPIO_Configuration::setting(*row, parameter) : nullptr;
        return !row ? "none" : found ? found->CurrentValue : "-";
    }

    QString label(const QString &pin) const { return design.gpio()->row(pin)->signalUserLabel; }
    const MCUNVICSetting &vector(const QString &name) const { return *design.nvic()->vector(name); }
    void runRtos(bool on) { design.nvic()->ReceiveSemaphore("FREERTOS", {"Semaphore_FREERTOS"}, on); }

    // The sections of both lists, as the design file has them.
    static QByteArray written(const Design &from)
    {
        QByteArray text;
        QXmlStreamWriter writer(&text);
        writer.writeStartElement("Root");
        from.nvic()->writeSection(writer);
        from.gpio()->writeSection(writer);
        writer.writeEndElement();
        return text;
    }

    static QList<DesignProblem> read(Design &into, const QByteArray &text)
    {
        const XmlDocument document = parseXml(text);
        EXPECT_FALSE(document.problem);
        QList<DesignProblem> problems;
        into.nvic()->readSection(document.root, problems);
        into.gpio()->readSection(document.root, problems);
        return problems;
    }

    ScriptedPrompt prompt;
    Design design{AppPaths(CHIPLOOM_BIN_DIR, CHIPLOOM_BIN_DIR), prompt};
};

// ---- Pins ----

TEST_F(SettingsListsTest, OnlyWhatHasAnEffectHasARowInTheOrderOfThePins)
{
    change("pin/PA9=USART1_TX");
    EXPECT_EQ(value("PA9", "GPIO_Mode"), "none") << "placed by hand, no mode uses it";
    EXPECT_EQ(refusal("gpio/PA9/Pull type=Pull-up"), DesignReason::NoSettingsOnPin);
    change("mode/USART1/Mode=Asynchronous");
    change("pin/PB0=GPIO_Output");
    change("pin/PA0=GPIO_Input");
    QStringList rows;
    for (const SignalsGPIOSetting *row : design.gpio()->rowsOf(GPIO_Configuration::allRows()))
        rows.append(row->InPinName + ' ' + row->signalName);
    EXPECT_EQ(rows.filter("USART1_TX").size(), 1);
    EXPECT_LT(rows.indexOf("PA0 GPIO_Input"), rows.indexOf("PB0 GPIO_Output"));
    EXPECT_EQ(design.gpio()->rowsOf("GPIO").size(), 2);
    EXPECT_TRUE(design.gpio()->instancesWithRows().contains("USART1"));

    change("mode/USART1/Mode=");
    EXPECT_EQ(value("PA9", "GPIO_Mode"), "none");
}

TEST_F(SettingsListsTest, TheIoModeDecidesWhichSettingsAndValuesThereAre)
{
    change("pin/PA0=GPIO_Input");
    EXPECT_EQ(value("PA0", "GPIO_OutputType"), "-");
    EXPECT_EQ(refusal("gpio/PA0/GPIO type=Open drain"), DesignReason::UnknownParameter);
    EXPECT_EQ(refusal("gpio/PA0/GPIO mode=GPIO_MODE_OUTPUT"), DesignReason::ValueNotOffered);
    EXPECT_EQ(refusal("gpio/PA0/Pull type=strong"), DesignReason::ValueNotInList);
    EXPECT_EQ(refusal("gpio/PA0=1"), DesignReason::UnknownSetting);
    change("gpio/PA0/GPIO_PullType=GPIO_PULL_UP"); // by keys
    EXPECT_EQ(value("PA0", "GPIO_PullType"), "GPIO_PULL_UP");
    change("gpio/PA0/pull type=pull-down"); // by captions
    EXPECT_EQ(value("PA0", "GPIO_PullType"), "GPIO_PULL_DOWN");
}

TEST_F(SettingsListsTest, OfSeveralSignalsOnAPinTheOneThatDrivesItDecides)
{
    change("mode/ADC1/IN0=TRUE");
    EXPECT_EQ(value("PA0", "GPIO_Mode"), "GPIO_MODE_ANALOG");
    change("pin/PA0=EXINT0");
    change("mode/EXINT/EXINT0=TRUE");
    EXPECT_EQ(design.gpio()->rowsOf("EXINT").size(), 1);
    EXPECT_EQ(design.gpio()->rowsOf("ADC1"), design.gpio()->rowsOf("EXINT")) << "one row for one pin";
    EXPECT_EQ(design.gpio()->row("PA0")->signalName, "ADC1_IN0;EXINT0");
}

// Their signals bear the name of the controller, or one that looks so.
TEST_F(SettingsListsTest, PartsOfAControllerHaveTheRowsOfTheirModes)
{
    ASSERT_TRUE(design.NewDesign("ZV32F437", "ZV32F437ZMT7", "LQFP144"));
    change("mode/USB_OTGFS1/Mode=Device_Only");
    const int pins = design.gpio()->rowsOf("USB_OTGFS1").size();
    EXPECT_GE(pins, 2);
    EXPECT_EQ(design.gpio()->rowsOf("USB_OTGFS2").size(), 0);
    EXPECT_EQ(design.gpio()->instancesWithRows(), QStringList({"DEBUG", "USB_OTGFS1"}));
    for (const QString &instance : design.gpio()->instancesWithRows())
        change("gpio/ShowType=" + instance);
}

TEST_F(SettingsListsTest, ASignalIsTheirsWhoseDescriptionListsItWhateverItsName)
{
    ASSERT_TRUE(design.NewDesign("ZV32F437", "ZV32F437ZMT7", "LQFP144"));
    const struct
    {
        const char *signal, *owner, *pin, *menu;
    } rows[] = {{"USB_OTGFS1_DP", "USB_OTGFS1", "PA12", "USB_OTGFS1"},
                {"WKUP1", "PWC", "PA0", "PWC"},
                {"EXINT3", "EXINT", "PC3", "EXINT"},
                {"XMC_SDNWE", "XMC_SDRAM_1", "PC0", "XMC"},
                {"CRM_HEXT_IN", "CRM", "PH0", "CRM"},
                {"USART1_TX", "USART1", "PA9", "USART1"},
                {"EVENTOUT", "GPIO", "PA1", ""}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.signal);
        EXPECT_EQ(design.ownersOf(row.signal).value(0), row.owner);
        EXPECT_TRUE(design.signalsOf(row.owner).contains(row.signal));
        const int pin = design.pinInfo().validPinNamed(row.pin);
        ASSERT_FALSE(design.pinInfo().placeOnPin(row.signal, pin).isNull());
        const int position = design.pinInfo().pin(pin).pinNumber;
        design.pins().search().ReceiveQueryIPSignal(row.owner, design.signalsOf(row.owner));
        EXPECT_TRUE(design.pins().search().markedPositions().contains(position));
        QString menu = "(none)";
        for (const PinMenuGroup &group : pinMenu(design, position).groups) {
            for (const PinMenuEntry &entry : group.entries)
                menu = entry.signalName == row.signal ? group.peripheral : menu;
        }
        EXPECT_EQ(menu, row.menu);
    }
    EXPECT_FALSE(design.signalsOf("USB_OTGFS1").contains("USB_OTGFS2_DP"));
    EXPECT_EQ(design.ownersOf("NOBODY_TX"), QStringList());

    // What banks share is theirs who hold it.
    EXPECT_GT(design.holdersOf("XMC_D0").size(), 5);
    change("mode/XMC_SDRAM_2/Activated=TRUE");
    EXPECT_EQ(design.holdersOf("XMC_SDNWE"), QStringList("XMC_SDRAM_2"));
    EXPECT_EQ(design.gpio()->rowsOf("XMC_SDRAM_1").size(), 0);
}

// Whatever stood there when it was given, and whether that still has an effect.
TEST_F(SettingsListsTest, ALabelIsThePinsAndNotOneFunctions)
{
    change("pin/PA0=EXINT0");
    change("mode/EXINT/EXINT0=TRUE");
    change("label/PA0=BUTTON");
    change("mode/ADC1/IN0=TRUE");
    EXPECT_EQ(design.gpio()->row("PA0")->signalName, "ADC1_IN0;EXINT0");
    EXPECT_EQ(label("PA0"), "BUTTON");
    change("gpio/PA0/Label=LEVEL");
    EXPECT_EQ(label("PA0"), "LEVEL");
    change("gpio/PA0/Label=");
    EXPECT_EQ(label("PA0"), "") << "not what it was before";

    change("pin/PA0=ADC1_IN0");
    change("label/PA0=LEVEL");
    change("mode/ADC1/IN0=FALSE");
    EXPECT_EQ(design.gpio()->row("PA0")->signalName, "EXINT0");
    EXPECT_EQ(label("PA0"), "LEVEL") << "the converter's function waits there for its mode";
    const QByteArray before = written(design);
    change("label/PA0=");
    EXPECT_TRUE(read(design, before).isEmpty());
    EXPECT_EQ(label("PA0"), "LEVEL");
    EXPECT_EQ(written(design), before);
}

TEST_F(SettingsListsTest, OnePlainFunctionHandsItsSettingsAndLabelToTheNext)
{
    change("pin/PA0=GPIO_Input");
    change("gpio/PA0/Pull type=Pull-up");
    change("gpio/PA0/Label=BUTTON");
    change("pin/PA0=GPIO_Output");
    EXPECT_EQ(value("PA0", "GPIO_PullType"), "GPIO_PULL_UP");
    EXPECT_EQ(value("PA0", "GPIO_Mode"), "GPIO_MODE_OUTPUT") << "the first value that the mode offers";
    EXPECT_EQ(label("PA0"), "BUTTON");
    change("gpio/PA0/Label=LAMP");
    change("pin/PA0=GPIO_Input");
    EXPECT_EQ(label("PA0"), "LAMP") << "not the label that the input had before";
    EXPECT_EQ(design.pins().GetPinConfigedDisplayText(design.gpio()->row("PA0")->signalInPinNum), "LAMP");
    change("pin/PA0=GPIO_Analog");
    EXPECT_EQ(value("PA0", "GPIO_PullType"), "GPIO_PULL_NONE");
}

TEST_F(SettingsListsTest, SettingsReturnWithTheirSignalAndAnotherSignalGetsDefaults)
{
    change("pin/PA9=USART1_TX");
    change("mode/USART1/Mode=Asynchronous");
    change("gpio/PA9/Pull type=Pull-up");
    change("label/PA9=CONSOLE");
    change("mode/USART1/Mode=");
    change("pin/PA9=GPIO_Output");
    EXPECT_EQ(value("PA9", "GPIO_PullType"), "GPIO_PULL_NONE");
    EXPECT_EQ(label("PA9"), "");
    change("pin/PA9=USART1_TX");
    change("mode/USART1/Mode=Asynchronous");
    EXPECT_EQ(value("PA9", "GPIO_PullType"), "GPIO_PULL_UP");
    EXPECT_EQ(label("PA9"), "CONSOLE");

    design.peripheral("USART1")->ResetConfiguration();
    EXPECT_FALSE(GPIO_Configuration::isModified(*design.gpio()->row("PA9")));
}

TEST_F(SettingsListsTest, ARowMovesItsSignalToAnotherPin)
{
    change("pin/PA9=USART1_TX");
    change("mode/USART1/Mode=Asynchronous");
    EXPECT_TRUE(design.gpio()->GetSignalInPinNameList("USART1_TX").contains("PB6"));
    change("gpio/PA9/Pin=PB6");
    EXPECT_EQ(value("PA9", "GPIO_Mode"), "none");
    EXPECT_EQ(design.gpio()->row("PB6")->signalName, "USART1_TX");
    EXPECT_EQ(refusal("gpio/PB6/Pin=PB12"), DesignReason::SignalNotOnPin);
    change("pin/PA0=GPIO_Output");
    EXPECT_FALSE(design.apply({"gpio", "PA0/Pin", "PA1"}));
}

TEST_F(SettingsListsTest, PinsTellTheGeneratorTheirNames)
{
    const auto define = [this](const QString &pin) {
        for (const GPIO_Pin_Define_Info *info : design.gpio()->GetGPIOPinDefineInfo()) {
            if (info->Name == pin)
                return *info;
        }
        return GPIO_Pin_Define_Info();
    };
    const GPIO_Pin_Define_Info pin = define("PA9");
    EXPECT_EQ(pin.GPIO_x, "GPIOA");
    EXPECT_EQ(pin.GPIO_PinSource_x, "GPIO_PINS_SOURCE9");
    EXPECT_EQ(pin.EXINT_LINE_x, "EXINT_LINE_9");
    EXPECT_TRUE(std::any_of(pin.pinSignalMuxInfoList.begin(), pin.pinSignalMuxInfoList.end(), [](const auto &mux) {
        return mux.SignalName == "USART1_TX" && mux.GPIO_Mux_x == "GPIO_MUX_1";
    }));
}

// ---- Interrupts ----

TEST_F(SettingsListsTest, VectorsOpenAndCloseWithWhatRaisesThem)
{
    EXPECT_FALSE(vector("USART1_IRQn").canBeSet);
    EXPECT_TRUE(vector("SysTick_IRQn").canBeSet);
    EXPECT_TRUE(vector("CRM_IRQn").canBeSet);
    EXPECT_TRUE(vector("FLASH_IRQn").canBeSet);
    EXPECT_EQ(refusal("nvic/USART1_IRQn/Enabled=TRUE"), DesignReason::VectorClosed);
    EXPECT_EQ(refusal("nvic/Nobody_IRQn/Enabled=TRUE"), DesignReason::UnknownVector);
    EXPECT_EQ(refusal("nvic/HardFault_IRQn/PreemptionPriority=1"), DesignReason::VectorFieldFixed);
    change("mode/USART1/Mode=Asynchronous");
    change("nvic/USART1_IRQn/Enabled=TRUE");
    change("nvic/USART1_IRQn/PreemptionPriority=3");
    EXPECT_EQ(design.nvic()->vectorsOf("USART1").size(), 1);
    EXPECT_EQ(refusal("nvic/USART1_IRQn/PreemptionPriority=16"), DesignReason::AboveMaximum);
    EXPECT_EQ(refusal("nvic/USART1_IRQn/SubPriority=1"), DesignReason::AboveMaximum);
    EXPECT_EQ(refusal("nvic/USART1_IRQn/SubPriority=x"), DesignReason::NotANumber);
    change("mode/USART1/Mode=");
    EXPECT_FALSE(vector("USART1_IRQn").enabledFlag);

    // The lines of EXINT: only those that interrupt.
    change("mode/EXINT/EXINT1=TRUE");
    EXPECT_TRUE(vector("EXINT1_0_IRQn").canBeSet);
    EXPECT_FALSE(vector("EXINT3_2_IRQn").canBeSet);
    change("param/EXINT/InterruptEvent_EXINT1=EXINT_LINE_EVENT");
    EXPECT_FALSE(vector("EXINT1_0_IRQn").canBeSet);

    // The voltage monitor, not the wake-up pins.
    change("mode/PWC/WKUP1=TRUE");
    EXPECT_FALSE(vector("PVM_IRQn").canBeSet);
    change("mode/PWC/PVM=TRUE");
    EXPECT_TRUE(vector("PVM_IRQn").canBeSet);

    // The real-time clock, which opens its lines of EXINT by itself.
    ASSERT_TRUE(design.NewDesign("ZV32F435", "ZV32F435ZMT7", "LQFP144"));
    EXPECT_FALSE(vector("ERTC_WKUP_IRQn").canBeSet);
    change("mode/ERTC/Activate Clock Source=TRUE");
    for (const char *name : {"ERTC_WKUP_IRQn", "ERTCAlarm_IRQn", "TAMP_STAMP_IRQn"})
        EXPECT_TRUE(vector(name).canBeSet) << name;
}

TEST_F(SettingsListsTest, ADmaChannelOpensItsVectorAndStandsInThePeripheralsTab)
{
    design.nvic()->UpdateDMAChannelInfoForAllNVICList({{"DMA1_Channel2", "USART1"}, {"DMA1_Channel3", "USART2"}});
    EXPECT_TRUE(vector("DMA1_Channel3_2_IRQn").canBeSet);
    ASSERT_EQ(design.nvic()->vectorsOf("USART1").size(), 1);
    change("nvic/DMA1_Channel3_2_IRQn/Enabled=TRUE");
    design.nvic()->UpdateDMAChannelInfoForAllNVICList({{"DMA1_Channel3", "USART2"}});
    EXPECT_TRUE(vector("DMA1_Channel3_2_IRQn").enabledFlag) << "the other channel still holds it";
    design.nvic()->UpdateDMAChannelInfoForAllNVICList({});
    EXPECT_FALSE(vector("DMA1_Channel3_2_IRQn").enabledFlag);
}

TEST_F(SettingsListsTest, AGroupWithFewerLevelsLowersTheStoredValues)
{
    change("nvic/SysTick_IRQn/PreemptionPriority=9");
    change("nvic/PriorityGroup=NVIC_PRIORITY_GROUP_2");
    EXPECT_EQ(vector("SysTick_IRQn").preemptionPriority_Value, 3);
    EXPECT_EQ(vector("SysTick_IRQn").subPriority_MaxValue, 3);
    change("nvic/PriorityGroup=NVIC_PRIORITY_GROUP_4");
    EXPECT_EQ(vector("SysTick_IRQn").preemptionPriority_Value, 3);
    EXPECT_EQ(refusal("nvic/PriorityGroup=NVIC_PRIORITY_GROUP_9"), DesignReason::ValueNotInList);
}

TEST_F(SettingsListsTest, TokensForceVectorsOnAndTheLastOneLetsGo)
{
    const QString token = "Semaphore_AutoEnable_I2C1_EVT_IRQn_FromApp_I2C1";
    NVIC_Configuration &nvic = *design.nvic();
    nvic.ReceiveSemaphore("I2C_Application", {token}, true);
    EXPECT_FALSE(vector("I2C1_EVT_IRQn").enabledFlag) << "its bus is off";
    change("mode/I2C1/Mode=I2C");
    EXPECT_TRUE(vector("I2C1_EVT_IRQn").enabledFlag);
    EXPECT_EQ(refusal("nvic/I2C1_EVT_IRQn/Enabled=FALSE"), DesignReason::VectorHeldOn);
    nvic.ReceiveSemaphore("I2C_Application", {token}, true);
    nvic.ReceiveSemaphore("I2C_Application", {token}, false);
    EXPECT_TRUE(vector("I2C1_EVT_IRQn").enabledFlag);
    nvic.ReceiveSemaphore("I2C_Application", {token}, false);
    EXPECT_FALSE(vector("I2C1_EVT_IRQn").enabledFlag);

    change("nvic/I2C1_EVT_IRQn/Enabled=TRUE");
    nvic.ReceiveSemaphore("I2C_Application", {token}, true);
    nvic.ReceiveSemaphore("I2C_Application", {token}, false);
    EXPECT_TRUE(vector("I2C1_EVT_IRQn").enabledFlag) << "the user had switched it on";

    nvic.UpdateDMAChannelInfoForAllNVICList({{"DMA1_Channel2", "I2C1"}});
    nvic.ReceiveSemaphore("I2C_Application", {"I2C1_APP_DMA_Mode"}, true);
    EXPECT_TRUE(vector("DMA1_Channel3_2_IRQn").enabledFlag);
    nvic.UpdateAutoEnableNVICIRQSemaphore({}, {"Semaphore_AutoEnable_FLASH_IRQn_FromApp_I2C1"});
    EXPECT_FALSE(vector("FLASH_IRQn").enabledFlag) << "not by tokens";
}

TEST_F(SettingsListsTest, TheRtosPinsItsOwnVectorsAndLimitsThoseThatCallIt)
{
    NVIC_Configuration &nvic = *design.nvic();
    change("mode/USART1/Mode=Asynchronous");
    change("mode/USART2/Mode=Asynchronous");
    change("nvic/PriorityGroup=NVIC_PRIORITY_GROUP_2");
    change("nvic/USART1_IRQn/PreemptionPriority=1");
    change("nvic/USART1_IRQn/SubPriority=2");
    change("nvic/USART2_IRQn/PreemptionPriority=2");
    change("nvic/PendSV_IRQn/PreemptionPriority=1");
    const QByteArray before = written(design);

    nvic.SetFREERTOSPRIORITY("5");
    runRtos(true);
    EXPECT_EQ(nvic.GetPriorityGroupParameter().CurrentValue, "NVIC_PRIORITY_GROUP_4");
    EXPECT_EQ(refusal("nvic/PriorityGroup=NVIC_PRIORITY_GROUP_2"), DesignReason::PriorityGroupFixed);
    for (const QString name : {"PendSV_IRQn", "SysTick_IRQn"}) {
        EXPECT_EQ(vector(name).preemptionPriority_Value, 15);
        EXPECT_EQ(refusal("nvic/" + name + "/PreemptionPriority=1"), DesignReason::VectorFieldFixed);
    }
    EXPECT_EQ(vector("SVCall_IRQn").preemptionPriority_Value, 0);
    EXPECT_FALSE(vector("SVCall_IRQn").IRQHandler_Generate_enabledFlag);
    EXPECT_TRUE(vector("SysTick_IRQn").IRQHandler_Generate_enabledFlag);
    EXPECT_TRUE(vector("USART1_IRQn").FREERTOS_Func_enabledFlag);
    EXPECT_EQ(vector("USART1_IRQn").preemptionPriority_Value, 5);
    EXPECT_EQ(refusal("nvic/USART1_IRQn/PreemptionPriority=4"), DesignReason::BelowMinimum);
    EXPECT_FALSE(vector("BusFault_IRQn").FREERTOS_Func_enabledFlag);
    EXPECT_EQ(refusal("nvic/HardFault_IRQn/RTOSFunction=TRUE"), DesignReason::VectorFieldFixed);
    change("nvic/BusFault_IRQn/RTOSFunction=TRUE");
    EXPECT_EQ(vector("BusFault_IRQn").preemptionPriority_Value, 5);
    change("nvic/BusFault_IRQn/RTOSFunction=FALSE");

    // Unticked, the limit goes; and it stays unticked when the RTOS comes again.
    change("nvic/USART1_IRQn/RTOSFunction=FALSE");
    EXPECT_EQ(vector("USART1_IRQn").preemptionPriority_Value, 1);
    runRtos(false);
    runRtos(true);
    EXPECT_FALSE(vector("USART1_IRQn").FREERTOS_Func_enabledFlag);
    EXPECT_TRUE(vector("USART2_IRQn").FREERTOS_Func_enabledFlag);
    change("nvic/USART1_IRQn/RTOSFunction=TRUE");

    runRtos(false);
    EXPECT_EQ(written(design), before) << "nothing of it is left";
}

// ---- Both ----

TEST_F(SettingsListsTest, WhatIsWrittenIsReadAgain)
{
    const QStringList settings{"pin/PA9=USART1_TX",   "mode/USART1/Mode=Asynchronous",
                               "pin/PB0=GPIO_Output", "gpio/PB0/GPIO type=Open drain",
                               "label/PB0=LED",       "pin/PB1=ADC1_IN9",
                               "label/PB1=LATER"};
    for (const QString &setting : settings)
        change(setting);
    const QByteArray start = written(design);
    for (const QString setting : {"gpio/PA9/Pull type=Pull-up", "nvic/PriorityGroup=NVIC_PRIORITY_GROUP_3",
                                  "nvic/USART1_IRQn/Enabled=TRUE", "nvic/USART1_IRQn/GenerateHandler=FALSE",
                                  "nvic/USART1_IRQn/SubPriority=1", "nvic/ShowType=1", "gpio/ShowType=GPIO"})
        change(setting);
    const QByteArray full = written(design);
    EXPECT_TRUE(full.contains("<ShowType>1</ShowType>"));
    EXPECT_TRUE(full.contains("<USART1_IRQHandler>1;0;1;0;0;0</USART1_IRQHandler>"));
    EXPECT_TRUE(full.contains("<Signal SignalName=\"GPIO_Output\" PinName=\"PB0\">"));
    EXPECT_TRUE(full.contains("<Label>LATER</Label>")) << "without a row";

    Design other{AppPaths(CHIPLOOM_BIN_DIR, CHIPLOOM_BIN_DIR), prompt};
    ASSERT_TRUE(other.NewDesign(design.series(), design.device(), design.package()));
    for (const QString &setting : settings) {
        if (!setting.startsWith("gpio") && !setting.startsWith("label")) {
            ASSERT_TRUE(other.apply(*DesignChange::fromSetting(setting)));
        }
    }
    EXPECT_TRUE(read(other, full).isEmpty());
    EXPECT_EQ(written(other), full);

    // And put back from memory.
    const DesignSnapshot snapshot = design.snapshot();
    for (const QString setting : {"pin/PB0=GPIO_Input", "label/PB0=KEY",
                                  "mode/USART1/Mode=", "nvic/PriorityGroup=NVIC_PRIORITY_GROUP_0", "gpio/ShowType=All"})
        change(setting);
    ASSERT_TRUE(design.restore(snapshot));
    EXPECT_EQ(written(design), full);
    design.AllConfigReset();
    EXPECT_EQ(design.gpio()->rowsOf("GPIO").size(), 0);
    EXPECT_EQ(design.nvic()->GetPriorityGroupParameter().CurrentValue, "NVIC_PRIORITY_GROUP_4");
    EXPECT_NE(start, full);
}

TEST_F(SettingsListsTest, WhatAFileSaysWrongIsNamedAndTheRestTaken)
{
    change("pin/PB0=GPIO_Output");
    const QList<DesignProblem> problems =
        read(design, "<Root><NVIC><PriorityGroup>NVIC_PRIORITY_GROUP_7</PriorityGroup><ShowType>9</ShowType>"
                     "<USART1_IRQHandler>1;3;0;0;0;1</USART1_IRQHandler><Nobody_Handler>1;0;0;0;0;1</Nobody_Handler>"
                     "<SysTick_Handler>1;99;0;0;0;1</SysTick_Handler><PendSV_Handler>1;2</PendSV_Handler>"
                     "<CRM_IRQHandler>1;4;0;0;0;1</CRM_IRQHandler></NVIC>"
                     "<GPIO><Signal SignalName=\"GPIO_Input\" PinName=\"PB0\"/><Signal SignalName=\"GPIO_Output\" "
                     "PinName=\"PZ9\"/><Signal SignalName=\"GPIO_Output\" PinName=\"PB0\"><Parameters "
                     "name=\"GPIO_PullType\" value=\"no\"/><Parameters name=\"GPIO_OutputType\" "
                     "value=\"GPIO_OUTPUT_OPEN_DRAIN\"/><Label>1x</Label></Signal></GPIO></Root>");
    QStringList places;
    for (const DesignProblem &problem : problems) {
        places.append(problem.place);
        EXPECT_FALSE(answerText(problem.reason).isEmpty());
    }
    for (const QString place : {"NVIC/PriorityGroup", "NVIC/ShowType", "NVIC/USART1_IRQn", "NVIC/Nobody_Handler",
                                "NVIC/SysTick_IRQn", "NVIC/PendSV_Handler", "PB0", "PZ9", "PB0/GPIO_PullType"})
        EXPECT_TRUE(places.contains(place)) << place.toStdString();
    EXPECT_TRUE(vector("CRM_IRQn").enabledFlag);
    EXPECT_EQ(vector("CRM_IRQn").preemptionPriority_Value, 4);
    EXPECT_EQ(value("PB0", "GPIO_OutputType"), "GPIO_OUTPUT_OPEN_DRAIN");
    EXPECT_EQ(value("PB0", "GPIO_PullType"), "GPIO_PULL_NONE");
}

} // namespace
