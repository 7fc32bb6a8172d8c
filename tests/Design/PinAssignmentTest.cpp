#include "PinFixture.h"
#include "PinRandomWalk.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <random>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

/// A series whose signals stand alone: several pins for one signal, multi-use, EMAC, variants, a bound pair.
DevicePinInfo plainDevice()
{
    MCUPinsBaseInfo in = gpioPin(7, "PF0", {"CRM_HEXT_IN"});
    MCUPinsBaseInfo out = gpioPin(8, "PF1", {"CRM_HEXT_OUT", "TMR1_CH1"});
    MCUPinsBaseInfo in2 = gpioPin(9, "PF2", {"CRM_HEXT_IN"});
    MCUPinsBaseInfo out2 = gpioPin(10, "PF3", {"CRM_HEXT_OUT"});
    bind(in, "CRM_HEXT_IN", "CRM_HEXT_OUT", 8);
    bind(out, "CRM_HEXT_OUT", "CRM_HEXT_IN", 7);
    bind(in2, "CRM_HEXT_IN", "CRM_HEXT_OUT", 10);
    bind(out2, "CRM_HEXT_OUT", "CRM_HEXT_IN", 9);
    return pinTable({gpioPin(1, "PA0", {"USART1_TX", "ADC1_IN0*", "ADC2_IN0*", "ADC1_IN9*", "EXINT0*"}),
                     gpioPin(2, "PA1", {"USART1_TX", "USART1_RX", "ADC1_IN1*", "TMR1_CH1"}),
                     gpioPin(3, "PA2", {"USART1_RX", "EMAC_MII_TXD0", "EMAC_RMII_TXD0", "EMAC_MII_TXD1"}),
                     gpioPin(4, "PA9", {"USART2_TX", "TMR1_CH2"}, "NOPINREMAP"),
                     gpioPin(4, "PA11", {"USART2_TX", "TMR1_CH4"}, "PINREMAP"), gpioPin(5, "PB0", {"TMR3_CH3"}),
                     gpioPin(5, "PB2", {"TMR3_EXT", "USART2_TX"}), fixedPin(6, "VDD"), in, out, in2, out2},
                    {});
}

/// A series with remap groups.
DevicePinInfo remapDevice()
{
    return pinTable(
        {gpioPin(1, "PA4", {"SPI1_CS", "USART2_CK", "ADC1_IN4"}), gpioPin(2, "PA5", {"SPI1_SCK", "TMR8_CH1"}),
         gpioPin(3, "PA6", {"SPI1_MISO", "TMR3_CH1", "TMR8_BRK", "USART2_RX"}),
         gpioPin(4, "PA7", {"SPI1_MOSI", "TMR3_CH2"}), gpioPin(5, "PA15", {"SPI1_CS"}),
         gpioPin(6, "PB3", {"SPI1_SCK", "TMR2_CH2"}), gpioPin(7, "PB4", {"SPI1_MISO", "TMR3_CH1"}),
         gpioPin(8, "PB5", {"SPI1_MOSI", "TMR3_CH2", "I2C1_SMBA"}), gpioPin(9, "PC6", {"TMR3_CH1"}),
         gpioPin(10, "PC7", {"TMR3_CH2"}), gpioPin(11, "PD0", {"SPI1_SCK"})},
        {remapGroup("SPI1", 0, {"SPI1_CS=PA4!", "SPI1_SCK=PA5", "SPI1_MISO=PA6!", "SPI1_MOSI=PA7"}),
         remapGroup("SPI1", 1, {"SPI1_CS=PA15", "SPI1_SCK=PB3", "SPI1_MISO=PB4", "SPI1_MOSI=PB5", "SPI1_X=PZ9"}),
         remapGroup("TMR3", 0, {"TMR3_CH1=PA6", "TMR3_CH2=PA7"}),
         remapGroup("TMR3", 1, {"TMR3_CH1=PB4", "TMR3_CH2=PB5"}),
         remapGroup("TMR3", 2, {"TMR3_CH1=PC6", "TMR3_CH2=PC7"}), remapGroup("QSPI", 0, {"QSPI_CK=PZ1"})});
}

class PinAssignmentTest : public ::testing::Test
{
protected:
    void SetUp() override { qRegisterMetaType<const DevicePinInfo *>("const ChipLoom::DevicePinInfo*"); }
    void open(const QString &series, DevicePinInfo info) { pins.load(series, std::move(info)); }
    void TearDown() override { EXPECT_EQ(brokenInvariant(pins), ""); }

    DesignAnswer tick(const QString &pin, const QString &signal) { return pins.checkedLibAction(pin, signal, true); }
    DesignAnswer untick(const QString &pin, const QString &signal) { return pins.checkedLibAction(pin, signal, false); }
    void request(const QStringList &names, const QString &ip, const QStringList &old = {})
    {
        pins.ReciveIPPinSignals(wanted(old), wanted(names), false, ip);
    }
    void withdraw(const QStringList &names, const QString &ip)
    {
        pins.ReciveClearIPPinSignals(wanted(names), false, ip);
    }
    QString table() const { return printed(pins.pinInfo()); }
    const PinSignalStruct &state(const QString &pin, const QString &signal) const
    {
        const DevicePinInfo &info = pins.pinInfo();
        return info.signal(info.placeOnPin(signal, info.pinsNamed(pin).first()));
    }

    PinAssignment pins;
};

enum class Event { TickPlain, Tick, Untick, Reset, Request, Withdraw };

struct Transition
{
    PINCONFIG_TYPE from;
    Event event;
    PINCONFIG_TYPE to;
};

class TransitionTest : public PinAssignmentTest, public ::testing::WithParamInterface<Transition>
{
};

TEST_P(TransitionTest, LeadsToTheToldState)
{
    open("ZV32F421", plainDevice());
    const Transition &row = GetParam();
    const QString signal = row.event == Event::TickPlain ? "GPIO_Output" : "USART1_TX";
    if (row.from & Manual_Config)
        tick("PA0", signal);
    if (row.from & IP_Config)
        request({signal + ":MuxOutputPushPull"}, "USART1");
    ASSERT_EQ(state("PA0", signal).configStatus, row.from);

    switch (row.event) {
    case Event::TickPlain:
    case Event::Tick:
        EXPECT_TRUE(tick("PA0", signal));
        break;
    case Event::Untick:
        untick("PA0", signal);
        break;
    case Event::Reset:
        EXPECT_TRUE(tick("PA0", "Reset_State"));
        break;
    case Event::Request:
        request({signal + ":MuxOutputPushPull"}, "USART1");
        break;
    case Event::Withdraw:
        withdraw({signal}, "USART1");
        break;
    }
    EXPECT_EQ(state("PA0", signal).configStatus, row.to);
    if (!isPlainFunction(signal)) {
        EXPECT_EQ(state("PA0", signal).signalIOMode, row.to & IP_Config ? "MuxOutputPushPull" : "");
    } else {
        EXPECT_EQ(state("PA0", signal).signalIOMode, "Mode_GPIO_Output");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TransitionTest,
    ::testing::Values(
        Transition{Not_Config, Event::TickPlain, Manual_IP_Config}, Transition{Not_Config, Event::Tick, Manual_Config},
        Transition{Manual_Config, Event::Tick, Manual_Config}, Transition{IP_Config, Event::Tick, Manual_IP_Config},
        Transition{Manual_IP_Config, Event::Tick, Manual_IP_Config},
        Transition{Manual_Config, Event::Untick, Not_Config}, Transition{IP_Config, Event::Untick, Not_Config},
        Transition{Manual_IP_Config, Event::Untick, Not_Config}, Transition{Manual_Config, Event::Reset, Not_Config},
        Transition{IP_Config, Event::Reset, Not_Config}, Transition{Manual_IP_Config, Event::Reset, Not_Config},
        Transition{Not_Config, Event::Request, IP_Config}, Transition{Manual_Config, Event::Request, Manual_IP_Config},
        Transition{IP_Config, Event::Request, IP_Config},
        Transition{Manual_IP_Config, Event::Request, Manual_IP_Config},
        Transition{Not_Config, Event::Withdraw, Not_Config}, Transition{Manual_Config, Event::Withdraw, Manual_Config},
        Transition{IP_Config, Event::Withdraw, Not_Config},
        Transition{Manual_IP_Config, Event::Withdraw, Manual_Config}));

TEST_F(PinAssignmentTest, ByHandASignalMovesWithItsStateAndReplacesWhatStandsThere)
{
    open("ZV32F421", plainDevice());
    request({"USART1_TX:MuxOutputPushPull"}, "USART1");
    EXPECT_EQ(table(), "PA0=USART1_TX:mode");
    ASSERT_TRUE(tick("PA1", "TMR1_CH1"));
    ASSERT_TRUE(tick("PA1", "USART1_TX"));
    EXPECT_EQ(table(), "PA1=USART1_TX:mode");
    EXPECT_EQ(state("PA1", "USART1_TX").signalIOMode, "MuxOutputPushPull");
    EXPECT_EQ(state("PA0", "USART1_TX").signalIOMode, "");

    // Plain functions stand on any number of pins.
    ASSERT_TRUE(tick("PA0", "GPIO_Output"));
    ASSERT_TRUE(tick("PA2", "GPIO_Output"));
    ASSERT_TRUE(tick("PB0", "EVENTOUT"));
    ASSERT_TRUE(tick("PA0", "EVENTOUT"));
    EXPECT_EQ(table(), "PA0=EVENTOUT:manual+mode PA1=USART1_TX:mode PA2=GPIO_Output:manual+mode "
                       "PB0=EVENTOUT:manual+mode");
}

TEST_F(PinAssignmentTest, EventoutStandsOnOnePinWhereTheSeriesRoutesIt)
{
    open("ZV32F403A", plainDevice());
    ASSERT_TRUE(tick("PB0", "EVENTOUT"));
    ASSERT_TRUE(tick("PA0", "EVENTOUT"));
    EXPECT_EQ(table(), "PA0=EVENTOUT:manual+mode");
}

TEST_F(PinAssignmentTest, MultiUseSignalsShareAPinBetweenPeripheralsOnly)
{
    open("ZV32F421", plainDevice());
    ASSERT_TRUE(tick("PA0", "ADC1_IN0"));
    ASSERT_TRUE(tick("PA0", "EXINT0"));
    ASSERT_TRUE(tick("PA0", "ADC2_IN0"));
    EXPECT_EQ(table(), "PA0=ADC1_IN0:manual PA0=ADC2_IN0:manual PA0=EXINT0:manual");
    // Two of one peripheral exclude each other, though the device marks both; then the second shares with nobody.
    EXPECT_TRUE(pins.rules().SameIPMultiSignlaInPin("ADC1_IN9", 0));
    ASSERT_TRUE(tick("PA0", "ADC1_IN9"));
    EXPECT_EQ(table(), "PA0=ADC1_IN9:manual");
    ASSERT_TRUE(tick("PA0", "Reset_State"));
    request({"ADC1_IN0", "ADC1_IN9", "EXINT0"}, "ADC1");
    EXPECT_EQ(table(), "PA0=ADC1_IN0:mode PA0=EXINT0:mode");
    EXPECT_EQ(pins.unplacedByRequest({}, wanted({"ADC1_IN0", "ADC1_IN9"}), "ADC1"), QStringList("ADC1_IN9"));
    // What excludes a plain function keeps the function's I/O mode.
    ASSERT_TRUE(tick("PA0", "GPIO_Analog"));
    ASSERT_TRUE(tick("PA0", "ADC1_IN0"));
    EXPECT_EQ(table(), "PA0=ADC1_IN0:manual");
    EXPECT_EQ(state("PA0", "GPIO_Analog").signalIOMode, "Mode_GPIO_Analog");
}

TEST_F(PinAssignmentTest, TwoOutputsOnOnePinMustBeOfOneKind)
{
    open("ZV32F421", pinTable({gpioPin(1, "PA0", {"A_OUT*", "B_OUT*"})}, {}));
    request({"A_OUT:MuxOutputPushPull"}, "A");
    EXPECT_EQ(pins.rules().SignalCanbeUseInPinAccordingIOMode("B_OUT", "MuxOutputOpenDrain", 0),
              (DesignAnswer{DesignReason::OutputKindDiffers, {"PA0", "A_OUT"}}));
    request({"B_OUT:MuxOutputOpenDrain"}, "B");
    EXPECT_EQ(table(), "PA0=A_OUT:mode");
    request({"B_OUT:MuxOutputPushPull"}, "B");
    EXPECT_EQ(table(), "PA0=A_OUT:mode PA0=B_OUT:mode");
}

TEST_F(PinAssignmentTest, EmacSignalsOfOnePadFunctionStayTogether)
{
    open("ZV32F407", plainDevice());
    ASSERT_TRUE(tick("PA2", "EMAC_MII_TXD0"));
    ASSERT_TRUE(tick("PA2", "EMAC_RMII_TXD0"));
    EXPECT_EQ(table(), "PA2=EMAC_MII_TXD0:manual PA2=EMAC_RMII_TXD0:manual");
    EXPECT_EQ(pins.rules().SignalCanbeUseInPin("EMAC_MII_TXD1", pins.pinInfo().validPinNamed("PA2")),
              (DesignAnswer{DesignReason::HeldBySignal, {"PA2", "EMAC_MII_TXD0;EMAC_RMII_TXD0"}}));
    ASSERT_TRUE(tick("PA2", "EMAC_MII_TXD1"));
    EXPECT_EQ(table(), "PA2=EMAC_MII_TXD1:manual");
}

TEST_F(PinAssignmentTest, ARequestLeavesAPinToALaterSignalThatNeedsIt)
{
    open("ZV32F421", plainDevice());
    // TX could take PA0 or PA1, RX PA1 or PA2; held PA2 leaves RX only PA1.
    ASSERT_TRUE(tick("PA2", "GPIO_Input"));
    ASSERT_TRUE(tick("PA0", "GPIO_Input"));
    request({"USART1_TX", "USART1_RX"}, "USART1");
    // PA1 is the last pin for TX, so TX keeps it.
    EXPECT_EQ(table(), "PA0=GPIO_Input:manual+mode PA1=USART1_TX:mode PA2=GPIO_Input:manual+mode");
    EXPECT_EQ(pins.unplacedByRequest({}, wanted({"USART1_TX", "USART1_RX"}), "USART1"), QStringList("USART1_RX"));
    withdraw({"USART1_TX", "USART1_RX"}, "USART1");
    ASSERT_TRUE(tick("PA0", "Reset_State"));
    request({"USART1_RX", "USART1_TX"}, "USART1");
    EXPECT_EQ(table(), "PA0=USART1_TX:mode PA1=USART1_RX:mode PA2=GPIO_Input:manual+mode");
}

TEST_F(PinAssignmentTest, OnlyTheBondedVariantTakesSignals)
{
    open("ZV32F421", plainDevice());
    EXPECT_EQ(tick("PA11", "TMR1_CH4"), (DesignAnswer{DesignReason::InactiveVariant, {"PA11"}}));
    request({"USART2_TX"}, "USART2");
    EXPECT_EQ(table(), "PA9=USART2_TX:mode");

    QSignalSpy told(&pins, &PinAssignment::SendAllConfigedSignals);
    QSignalSpy seen(&pins, &PinAssignment::pinsChanged);
    pins.ReceivePinRemapFlag(true);
    EXPECT_EQ(table(), "");
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.first().at(3).toStringList(), QStringList("USART2_TX"));
    EXPECT_EQ(seen.first().first().value<QList<int>>(), QList<int>{4});
    request({"USART2_TX"}, "USART2");
    EXPECT_EQ(table(), "PA11=USART2_TX:mode");
    EXPECT_EQ(tick("PA9", "TMR1_CH2").reason, DesignReason::InactiveVariant);
    pins.ReceivePinRemapFlag(false);
    EXPECT_EQ(table(), "");

    // Two bonded pads of one position: one at a time.
    request({"TMR3_CH3"}, "TMR3");
    EXPECT_EQ(pins.rules().SignalCanbeUseInPin("TMR3_EXT", pins.pinInfo().validPinNamed("PB2")),
              (DesignAnswer{DesignReason::VariantHeld, {"PB2", "PB0", "TMR3_CH3"}}));
    ASSERT_TRUE(tick("PB2", "TMR3_EXT"));
    EXPECT_EQ(table(), "PB2=TMR3_EXT:manual");
}

TEST_F(PinAssignmentTest, BoundSignalsFollowOrTheMoveIsRefused)
{
    open("ZV32F421", plainDevice());
    request({"CRM_HEXT_IN", "CRM_HEXT_OUT"}, "CRM");
    EXPECT_EQ(table(), "PF0=CRM_HEXT_IN:mode PF1=CRM_HEXT_OUT:mode");
    ASSERT_TRUE(tick("PF3", "CRM_HEXT_OUT"));
    EXPECT_EQ(table(), "PF2=CRM_HEXT_IN:mode PF3=CRM_HEXT_OUT:mode");
    ASSERT_TRUE(tick("PF1", "TMR1_CH1"));
    EXPECT_EQ(tick("PF0", "CRM_HEXT_IN"),
              (DesignAnswer{DesignReason::BoundSignalBlocked, {"CRM_HEXT_IN", "CRM_HEXT_OUT", "8"}}));
    EXPECT_EQ(table(), "PF1=TMR1_CH1:manual PF2=CRM_HEXT_IN:mode PF3=CRM_HEXT_OUT:mode");
}

TEST_F(PinAssignmentTest, RefusalsNameWhatIsWrongAndChangeNothing)
{
    open("ZV32F421", plainDevice());
    ASSERT_TRUE(tick("PA0", "USART1_TX"));
    QSignalSpy told(&pins, &PinAssignment::SendAllConfigedSignals);
    EXPECT_EQ(tick("PZ1", "USART1_TX"), (DesignAnswer{DesignReason::UnknownPin, {"PZ1"}}));
    EXPECT_EQ(tick("VDD", "GPIO_Input"), (DesignAnswer{DesignReason::FixedPin, {"VDD"}}));
    EXPECT_EQ(tick("PA0", "USART1_RX"), (DesignAnswer{DesignReason::SignalNotOnPin, {"USART1_RX", "PA0"}}));
    EXPECT_EQ(tick("PA0", "CAN1_TX"), (DesignAnswer{DesignReason::UnknownSignal, {"CAN1_TX"}}));
    EXPECT_EQ(untick("PA1", "USART1_RX"), (DesignAnswer{DesignReason::NotPlaced, {"USART1_RX", "PA1"}}));
    EXPECT_EQ(pins.UserLabelEditFinished_Slot("PA2", "X"), (DesignAnswer{DesignReason::NothingToLabel, {"PA2"}}));
    for (const char *bad : {"1A", "a b", "a-b", "A\n", "\xc3\xa4"})
        EXPECT_EQ(pins.UserLabelEditFinished_Slot("PA0", QString::fromUtf8(bad)).reason, DesignReason::InvalidLabel);
    EXPECT_EQ(pins.ReceiveSignalPinNameChange("USART1_RX", "PA0").reason, DesignReason::SignalNotOnPin);
    EXPECT_EQ(table(), "PA0=USART1_TX:manual");
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(PinAssignmentTest, APinWithTwoNamesIsMeantByEither)
{
    MCUPinsBaseInfo pin = gpioPin(1, "PC14/LEXT_IN", {"CRM_LEXT_IN"});
    pin.pinSignalsList.first().signalInPinName = "LEXT_IN";
    open("ZV32F421", pinTable({pin}, {}));
    for (const char *name : {"PC14", "LEXT_IN", "PC14/LEXT_IN"}) {
        ASSERT_TRUE(tick(name, "CRM_LEXT_IN")) << name;
        EXPECT_EQ(table(), "PC14/LEXT_IN=CRM_LEXT_IN:manual");
        ASSERT_TRUE(untick(name, "CRM_LEXT_IN")) << name;
    }
}

TEST_F(PinAssignmentTest, LabelsAreShownInPlaceOfSignalsAndReturnWithThem)
{
    open("ZV32F421", plainDevice());
    QSignalSpy told(&pins, &PinAssignment::SendAllConfigedSignals);
    ASSERT_TRUE(tick("PA0", "ADC1_IN0"));
    ASSERT_TRUE(tick("PA0", "EXINT0"));
    EXPECT_EQ(told.last().at(1), true);
    EXPECT_EQ(told.last().at(2), "");
    EXPECT_EQ(told.last().at(3), QStringList("EXINT0"));
    ASSERT_TRUE(pins.UserLabelEditFinished_Slot("PA0", "_sense1"));
    EXPECT_EQ(told.last().at(2), "UserLabel");
    EXPECT_EQ(pins.GetPinConfigedDisplayText(1), "_sense1;EXINT0");
    EXPECT_EQ(pins.positionStatus(1), Manual_Config);
    ASSERT_TRUE(tick("PA0", "GPIO_Output"));
    EXPECT_EQ(pins.GetPinConfigedDisplayText(1), "GPIO_Output");
    EXPECT_EQ(pins.positionStatus(1), Manual_IP_Config);
    ASSERT_TRUE(tick("PA0", "ADC1_IN0"));
    EXPECT_EQ(pins.GetPinConfigedDisplayText(1), "_sense1");
    pins.AllConfigReset();
    EXPECT_EQ(table(), "");
    ASSERT_TRUE(tick("PA0", "ADC1_IN0"));
    EXPECT_EQ(pins.GetPinConfigedDisplayText(1), "ADC1_IN0");
}

// ---- Remap groups ----

TEST_F(PinAssignmentTest, PinsThatGoToTheCrystalTogetherAreNotParted)
{
    const DevicePinInfo small = pinTable({gpioPin(5, "PD0/HEXT_IN", {"CRM_HEXT_IN", "CAN1_RX"}),
                                          gpioPin(6, "PD1/HEXT_OUT", {"CRM_HEXT_OUT", "CAN1_TX"}),
                                          gpioPin(7, "PA11", {"CAN1_RX"}), gpioPin(8, "PA12", {"CAN1_TX"})},
                                         {remapGroup("CAN1", 0, {"CAN1_RX=PA11", "CAN1_TX=PA12"}),
                                          remapGroup("CAN1", 3, {"CAN1_RX=PD0", "CAN1_TX=PD1"})});
    const DesignAnswer parted{DesignReason::CrystalPinsParted, {"PD1/HEXT_OUT", "PD0/HEXT_IN", "CRM_HEXT_IN"}};
    open("ZV32F403A", small);
    request({"CRM_HEXT_IN"}, "CRM"); // a clock from outside
    EXPECT_EQ(tick("PD1", "GPIO_Output"), parted);
    EXPECT_EQ(tick("PD1", "CAN1_TX"), parted);
    EXPECT_EQ(pins.ReceiveSignalPinNameChange("CAN1_TX", "PD1"), parted);
    EXPECT_FALSE(pins.settleByHand({"PD1", "CAN1_TX"}));
    request({"CAN1_RX", "CAN1_TX"}, "CAN1");
    EXPECT_EQ(table(), "PD0/HEXT_IN=CRM_HEXT_IN:mode PA11=CAN1_RX:mode PA12=CAN1_TX:mode");
    request({"CRM_HEXT_IN", "CRM_HEXT_OUT"}, "CRM");
    EXPECT_EQ(pins.rules().configuredOnPin(1), QStringList("CRM_HEXT_OUT")) << "the crystal's own";
    withdraw({"CRM_HEXT_IN", "CRM_HEXT_OUT"}, "CRM");
    EXPECT_TRUE(tick("PD1", "GPIO_Input"));
    EXPECT_TRUE(tick("PD0", "GPIO_Input"));
    EXPECT_EQ(tick("PD0", "CRM_HEXT_IN").reason, DesignReason::CrystalPinsParted);
    EXPECT_EQ(pins.unplacedByRequest({}, wanted({"CRM_HEXT_IN"}), "CRM"), QStringList("CRM_HEXT_IN"));

    // Elsewhere each pin has a multiplexer of its own.
    open("ZV32F421", small);
    request({"CRM_HEXT_IN"}, "CRM");
    EXPECT_TRUE(tick("PD1", "GPIO_Output"));
}

const QStringList spi = {"SPI1_SCK:MuxOutputPushPull", "SPI1_MISO:Input", "SPI1_MOSI:MuxOutputPushPull"};

TEST_F(PinAssignmentTest, AGroupIsPlacedWholeAndMarksWhatItHides)
{
    open("ZV32F403A", remapDevice());
    request({"SPI1_SCK:MuxOutputPushPull"}, "SPI1");
    EXPECT_EQ(table(), "PA5=SPI1_SCK:mode");
    EXPECT_EQ(pins.configuredGroup("SPI1")->GroupNum, 0);
    EXPECT_TRUE(state("PA4", "USART2_CK").signalOtherIPOccupy);
    EXPECT_EQ(state("PA4", "SPI1_CS").occupySignalsList, (QStringList{"USART2_CK", "ADC1_IN4"}));
    EXPECT_FALSE(state("PA7", "TMR3_CH2").signalOtherIPOccupy) << "the group leaves the pin alone";
    EXPECT_TRUE(state("PA6", "TMR3_CH1").signalOtherIPOccupy) << "the group denies the pin";

    // An output behind a hidden member is refused, an input is not.
    EXPECT_EQ(pins.rules().SignalCanbeUseInPinAccordingIOMode("USART2_CK", "MuxOutputPushPull", 0),
              (DesignAnswer{DesignReason::OccupiedByRemap, {"PA4", "SPI1_CS"}}));
    EXPECT_EQ(pins.unplacedByRequest({}, wanted({"USART2_CK:MuxOutputPushPull"}), "USART2"), QStringList("USART2_CK"));
    request({"ADC1_IN4:Analog"}, "ADC1");
    request({"TMR3_CH1:MuxOutputPushPull"}, "TMR3");
    EXPECT_EQ(table(), "PA4=ADC1_IN4:mode PA5=SPI1_SCK:mode PB4=TMR3_CH1:mode");

    withdraw({"SPI1_SCK"}, "SPI1");
    EXPECT_EQ(pins.configuredGroup("SPI1"), nullptr);
    EXPECT_FALSE(state("PA6", "TMR3_CH1").signalOtherIPOccupy);
    EXPECT_TRUE(state("PA4", "SPI1_CS").occupySignalsList.isEmpty());
}

TEST_F(PinAssignmentTest, AGroupTakesTheRequestedAndTheHeldSignals)
{
    open("ZV32F403A", remapDevice());
    // A pin of group 0 is taken, so the whole request goes to group 1.
    ASSERT_TRUE(tick("PA7", "GPIO_Output"));
    request(spi, "SPI1");
    EXPECT_EQ(table(), "PA7=GPIO_Output:manual+mode PB3=SPI1_SCK:mode PB4=SPI1_MISO:mode PB5=SPI1_MOSI:mode");
    withdraw(spi, "SPI1");

    // Held by hand in group 0; the request cannot have that group, and takes it to the other.
    ASSERT_TRUE(tick("PA6", "SPI1_MISO"));
    request({"SPI1_SCK", "SPI1_MOSI"}, "SPI1");
    EXPECT_EQ(table(), "PA7=GPIO_Output:manual+mode PB3=SPI1_SCK:mode PB4=SPI1_MISO:manual PB5=SPI1_MOSI:mode");
    withdraw({"SPI1_SCK", "SPI1_MOSI"}, "SPI1");
    ASSERT_TRUE(tick("PB4", "Reset_State"));

    // No group has room for all: nothing is placed.
    ASSERT_TRUE(tick("PB4", "GPIO_Output"));
    request(spi, "SPI1");
    EXPECT_EQ(table(), "PA7=GPIO_Output:manual+mode PB4=GPIO_Output:manual+mode");
}

TEST_F(PinAssignmentTest, AGroupWithoutWhatStandsAlreadyIsNotTaken)
{
    // The package bonds the master clock in group 1 only, and the data in group 0 only.
    open("ZV32F403A", pinTable({gpioPin(1, "PB12", {"I2S2_WS"}), gpioPin(2, "PB15", {"I2S2_SD"}),
                                gpioPin(3, "PB9", {"I2S2_WS"}), gpioPin(4, "PA3", {"I2S2_MCK"})},
                               {remapGroup("I2S2", 0, {"I2S2_WS=PB12", "I2S2_SD=PB15"}),
                                remapGroup("I2S2", 1, {"I2S2_WS=PB9", "I2S2_MCK=PA3"})}));
    request({"I2S2_WS", "I2S2_SD"}, "I2S2");
    request({"I2S2_MCK"}, "I2S2");
    EXPECT_EQ(table(), "PB12=I2S2_WS:mode PB15=I2S2_SD:mode");
}

TEST_F(PinAssignmentTest, TheGroupWithMostSignalsIsPreferred)
{
    open("ZV32F403A", remapDevice());
    ASSERT_TRUE(tick("PB3", "SPI1_SCK"));
    request(spi, "SPI1");
    EXPECT_EQ(table(), "PB3=SPI1_SCK:manual+mode PB4=SPI1_MISO:mode PB5=SPI1_MOSI:mode");
    // Adding and removing a signal stays in the group.
    request(spi + QStringList("SPI1_CS"), "SPI1", spi);
    request({"SPI1_SCK", "SPI1_CS"}, "SPI1", spi + QStringList("SPI1_CS"));
    EXPECT_EQ(table(), "PA15=SPI1_CS:mode PB3=SPI1_SCK:manual+mode");
    withdraw({"SPI1_SCK", "SPI1_CS"}, "SPI1");
    EXPECT_EQ(table(), "PB3=SPI1_SCK:manual");
}

TEST_F(PinAssignmentTest, ATimerOutputKeepsAGroupFromAPinThatItDenies)
{
    // On PA6 the group shares with multi-use signals only; a timer that drives the pin refuses the group.
    const auto device = [] {
        return pinTable(
            {gpioPin(1, "PA6", {"SPI1_MISO*", "TMR3_CH1*", "CMP1_OUT*"}), gpioPin(2, "PB4", {"SPI1_MISO*"})},
            {remapGroup("SPI1", 0, {"SPI1_MISO=PA6!"}), remapGroup("SPI1", 1, {"SPI1_MISO=PB4"})});
    };
    open("ZV32F403A", device());
    request({"TMR3_CH1:MuxOutputPushPull"}, "TMR3");
    EXPECT_EQ(pins.rules().SignalsCanbeUseInGroup(wanted({"SPI1_MISO:Input"}), 0),
              (DesignAnswer{DesignReason::TimerOutputOnGroupPin, {"PA6", "TMR3_CH1"}}));
    request({"SPI1_MISO:Input"}, "SPI1");
    EXPECT_EQ(table(), "PA6=TMR3_CH1:mode PB4=SPI1_MISO:mode");
    // Whether the signal of that pin is asked for or not: the chip moves the group as a whole.
    open("ZV32F403A", remapDevice());
    request({"TMR3_CH1:MuxOutputPushPull"}, "TMR3");
    request({"SPI1_SCK:MuxOutputPushPull"}, "SPI1");
    EXPECT_EQ(table(), "PA6=TMR3_CH1:mode PB3=SPI1_SCK:mode");
    EXPECT_EQ(tick("PA5", "SPI1_SCK").reason, DesignReason::TimerOutputOnGroupPin);
    EXPECT_EQ(table(), "PA6=TMR3_CH1:mode PB3=SPI1_SCK:mode");
    // A timer's input, or another's output, does not.
    open("ZV32F403A", device());
    request({"TMR3_CH1:Input"}, "TMR3");
    request({"SPI1_MISO:Input"}, "SPI1");
    EXPECT_EQ(table(), "PA6=SPI1_MISO:mode PA6=TMR3_CH1:mode");
    open("ZV32F403A", device());
    request({"CMP1_OUT:MuxOutputPushPull"}, "CMP1");
    request({"SPI1_MISO:Input"}, "SPI1");
    EXPECT_EQ(table(), "PA6=SPI1_MISO:mode PA6=CMP1_OUT:mode");
}

TEST_F(PinAssignmentTest, ByHandAGroupMovesWhole)
{
    open("ZV32F403A", remapDevice());
    request(spi, "SPI1");
    ASSERT_TRUE(tick("PB5", "I2C1_SMBA"));
    QSignalSpy told(&pins, &PinAssignment::SendAllConfigedSignals);
    ASSERT_TRUE(tick("PB3", "SPI1_SCK"));
    EXPECT_EQ(table(), "PB3=SPI1_SCK:mode PB4=SPI1_MISO:mode PB5=SPI1_MOSI:mode");
    EXPECT_EQ(pins.configuredGroup("SPI1")->GroupNum, 1);
    EXPECT_FALSE(state("PA4", "USART2_CK").signalOtherIPOccupy);
    QStringList changed = told.first().at(3).toStringList();
    changed.sort();
    EXPECT_EQ(changed, (QStringList{"I2C1_SMBA", "SPI1_MISO", "SPI1_MOSI", "SPI1_SCK"}));

    // A pin that no group offers takes the signal only while it stands nowhere.
    EXPECT_EQ(tick("PD0", "SPI1_SCK"), (DesignAnswer{DesignReason::NoGroupOnPin, {"SPI1_SCK", "PD0"}}));
    EXPECT_EQ(table(), "PB3=SPI1_SCK:mode PB4=SPI1_MISO:mode PB5=SPI1_MOSI:mode");
    withdraw(spi, "SPI1");
    ASSERT_TRUE(tick("PD0", "SPI1_SCK"));
    EXPECT_EQ(table(), "PD0=SPI1_SCK:manual");
}

TEST_F(PinAssignmentTest, SignalsOfAGroupThatMeetOnOnePinDoNotDriveEachOtherOut)
{
    open("ZV32F403A",
         pinTable({gpioPin(1, "PA0", {"TMR2_CH1", "TMR2_EXT"}), gpioPin(2, "PA1", {"TMR2_CH2"}),
                   gpioPin(3, "PA15", {"TMR2_CH1"}), gpioPin(4, "PB3", {"TMR2_CH2"}), gpioPin(5, "PD2", {"TMR2_EXT"})},
                  {remapGroup("TMR2", 0, {"TMR2_CH1=PA0", "TMR2_EXT=PA0", "TMR2_CH2=PA1"}),
                   remapGroup("TMR2", 1, {"TMR2_CH1=PA15", "TMR2_EXT=PD2", "TMR2_CH2=PB3"})}));
    EXPECT_EQ(pins.rules().SignalsCanbeUseInGroup(wanted({"TMR2_CH1", "TMR2_EXT"}), 0),
              (DesignAnswer{DesignReason::HeldBySignal, {"PA0", "TMR2_CH1"}}));
    request({"TMR2_CH1", "TMR2_EXT"}, "TMR2");
    EXPECT_EQ(table(), "PA15=TMR2_CH1:mode PD2=TMR2_EXT:mode");
    withdraw({"TMR2_CH1", "TMR2_EXT"}, "TMR2");
    // Held by hand, and in the way of the only group that is left: it stays where it is.
    ASSERT_TRUE(tick("PD2", "TMR2_EXT"));
    ASSERT_TRUE(tick("PB3", "GPIO_Input"));
    request({"TMR2_CH1", "TMR2_CH2"}, "TMR2");
    EXPECT_EQ(table(), "PA0=TMR2_CH1:mode PA1=TMR2_CH2:mode PB3=GPIO_Input:manual+mode PD2=TMR2_EXT:manual");
}

TEST_F(PinAssignmentTest, GroupsWithoutPinsOfThePackageAreDropped)
{
    const DevicePinInfo info = remapDevice();
    ASSERT_EQ(info.m_deviceIPSignalGroupInfoList.size(), 5);
    EXPECT_EQ(info.m_deviceIPSignalGroupInfoList.at(1).signalGroup.size(), 4);
    EXPECT_EQ(info.m_deviceIPSignalGroupInfoList.at(1).signalGroup.first().signalInPinNum, 5);
    open("ZV32F403A", info);
}

// ---- Re-entrance ----

TEST_F(PinAssignmentTest, APeripheralMayAskWhileItIsTold)
{
    open("ZV32F421", plainDevice());
    QStringList heardFirst;
    QStringList heardSecond;
    bool asked = false;
    QObject::connect(&pins, &PinAssignment::SendAllConfigedSignals, &pins, [&](auto *, bool, const QString &ip) {
        heardFirst.append(ip);
        if (!asked) {
            asked = true;
            request({"USART1_RX"}, "Second");
            EXPECT_EQ(table(), "PA0=USART1_TX:mode PA1=USART1_RX:mode") << "done when the call returns";
        }
    });
    QObject::connect(&pins, &PinAssignment::SendAllConfigedSignals, &pins,
                     [&](auto *, bool, const QString &ip) { heardSecond.append(ip); });
    QSignalSpy seen(&pins, &PinAssignment::pinsChanged);
    request({"USART1_TX"}, "First");
    EXPECT_EQ(heardFirst, (QStringList{"First", "Second"}));
    EXPECT_EQ(heardSecond, heardFirst);
    EXPECT_EQ(seen.size(), 1);

    // Peripherals that never agree are stopped.
    int rounds = 0;
    QObject::connect(&pins, &PinAssignment::SendAllConfigedSignals, &pins, [&] {
        ++rounds;
        request({}, "Again");
    });
    request({}, "Again");
    EXPECT_LT(rounds, 10000);
}

// ---- Random sequences ----

struct RandomCase
{
    const char *name;
    const char *series;
    DevicePinInfo (*device)();
};

class RandomTest : public PinAssignmentTest, public ::testing::WithParamInterface<RandomCase>
{
};

TEST_P(RandomTest, TenThousandOperationsKeepTheRules)
{
    open(GetParam().series, GetParam().device());
    randomWalk(pins, 10000, 1);
}

INSTANTIATE_TEST_SUITE_P(Devices, RandomTest,
                         ::testing::Values(RandomCase{"Plain", "ZV32F421", plainDevice},
                                           RandomCase{"Remap", "ZV32F403A", remapDevice}),
                         [](const auto &info) { return info.param.name; });

TEST_F(PinAssignmentTest, ARequestAndItsWithdrawalLeaveNoTrace)
{
    open("ZV32F403A", remapDevice());
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        pins.AllConfigReset();
        for (int i = 0; i < 4; ++i) {
            const MCUPinsBaseInfo pin = pins.pinInfo().pin(int(random() % 11));
            tick(pin.pinName, pin.pinSignalsList.at(int(random() % unsigned(pin.pinSignalsList.size()))).signalName);
        }
        const QString before = table();
        request({"TMR3_CH1:MuxOutputPushPull", "TMR3_CH2:MuxOutputPushPull"}, "TMR3");
        request({"USART2_CK:MuxOutputPushPull"}, "USART2");
        withdraw({"TMR3_CH1", "TMR3_CH2"}, "TMR3");
        withdraw({"USART2_CK"}, "USART2");
        if (!before.contains("TMR3")) { // what was placed by hand may have moved
            ASSERT_EQ(table(), before);
        }
        ASSERT_EQ(table().count('='), before.count('='));
    }
}

} // namespace
