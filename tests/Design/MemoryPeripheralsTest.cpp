#include "Design/Calculators/SerialClocks.h"
#include "Design/NVIC_Configuration.h"
#include "DeviceFixture.h"

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

// Rules that only bite where the database gives them something to bite on: what else has to be chosen for a memory, for
// Ethernet by the size of the package, and who hears a USB controller.

class MemoryPeripheralsTest : public DeviceFixture
{
protected:
    void choose(const QString &instance, const QString &choices)
    {
        for (const QString &choice : choices.split(' ', Qt::SkipEmptyParts))
            ASSERT_TRUE(apply("mode/" + instance + '/' + choice)) << instance.toStdString() << choice.toStdString();
    }
};

struct UseCase
{
    const char *device;
    const char *package;
    const char *instance;
    const char *choices;
    bool inUse;
    const char *missing = ""; ///< the mode that the note asks for
};

class CompleteTest : public MemoryPeripheralsTest, public ::testing::WithParamInterface<UseCase>
{
};

TEST_P(CompleteTest, TakesWhatItsRuleAsksFor)
{
    const UseCase &row = GetParam();
    open(row.device, row.package);
    choose(row.instance, row.choices);
    const IP_ModeAndConfiguration *peripheral = design.peripheral(row.instance);
    EXPECT_EQ(peripheral->GetIPValidFlag(), row.inUse) << row.choices;
    EXPECT_EQ(peripheral->note().argument.toStdString(), row.missing);
    EXPECT_EQ((peripheral->GetIPStatusFlag() & IPSTATUS_ERROR) != 0, *row.missing != 0);
}

const char *const Large = "LQFP144";
const UseCase Ethernet[] = {
    {"ZV32F437ZMT7", Large, "EMAC", "Mode=MII_Clocked PHY_Clock=HEXT MII_Duplex=Full_Only", true},
    {"ZV32F437ZMT7", Large, "EMAC", "Mode=MII_Clocked_Errors PHY_Clock=HCLK", false, "MII_Duplex"},
    {"ZV32F437ZMT7", Large, "EMAC", "Mode=MII_Clocked_TX_ER MII_Duplex=Half_And_Full", false, "PHY_Clock"},
    {"ZV32F437ZMT7", Large, "EMAC", "Mode=RMII", false, "RMII_Link"},
    {"ZV32F437ZMT7", Large, "EMAC", "Mode=RMII_RX_ER RMII_Link=Fixed", true},
    {"ZV32F437ZMT7", Large, "EMAC", "Mode=MII MII_Duplex=Full_Only", false, "Receive_Error"},
    {"ZV32F437ZMT7", Large, "EMAC", "Mode=MII MII_Duplex=Full_Only Receive_Error=Not_Wired", true},
    {"ZV32F437ZMT7", Large, "EMAC", "Mode=RMII RMII_Link=PHY PPS_Output=Pulse", false, "Time_Stamps"},
    {"ZV32F437ZMT7", Large, "EMAC", "Mode=RMII RMII_Link=PHY PPS_Output=Pulse Time_Stamps=TRUE", true},
    {"ZV32F437ZMT7", Large, "EMAC",
     "Mode=MII MII_Duplex=Full_Only Receive_Error=RX_ER Time_Stamps=TRUE PPS_Output=Square", true},
    {"ZV32F437VMT7", "LQFP100", "EMAC", "Mode=RMII", false, "RMII_Link"},
    {"ZV32F437VMT7", "LQFP100", "EMAC", "Mode=RMII RMII_Link=PHY", true},
    {"ZV32F437RCT7", "LQFP64", "EMAC", "Mode=RMII_RX_ER RMII_Link=PHY PPS_Output=Square", false, "Time_Stamps"},
    {"ZV32F437RCT7", "LQFP64", "EMAC", "Mode=MII Receive_Error=RX_ER", false, "MII_Duplex"},
    {"ZV32F437RCT7", "LQFP64", "EMAC", "Mode=MII Receive_Error=RX_ER MII_Duplex=Half_And_Full", true},
};
INSTANTIATE_TEST_SUITE_P(Ethernet, CompleteTest, ::testing::ValuesIn(Ethernet));

const UseCase Memories[] = {
    {"ZV32F435ZMT7", Large, "XMC_NORFlash-PSRAM-SRAM-ROM-LCD_3", "Activated=TRUE Chip_Select=NE3", false,
     "Memory_Type"},
    {"ZV32F435ZMT7", Large, "XMC_NORFlash-PSRAM-SRAM-ROM-LCD_3", "Activated=TRUE Memory_Type=ROM_16_bits", true},
    {"ZV32F435VMT7", "LQFP100", "XMC_NORFlash-PSRAM-SRAM-ROM-LCD_2", "Activated=TRUE Memory_Type=Multiplexed_NOR",
     true},
    {"ZV32F435ZMT7", Large, "XMC_NANDFlash_2", "Activated=TRUE", false, "Data_Width"},
    {"ZV32F435ZMT7", Large, "XMC_NANDFlash_2", "Activated=TRUE Data_Width=16_bits", true},
    {"ZV32F435ZMT7", Large, "XMC_PCCard", "Activated=TRUE Spaces=Memory_IO", false, "Data_Width"},
    {"ZV32F435ZMT7", Large, "XMC_PCCard", "Activated=TRUE Data_Width=8_bits", false, "Spaces"},
    {"ZV32F435ZMT7", Large, "XMC_PCCard", "Activated=TRUE Data_Width=8_bits Spaces=Memory", true},
    {"ZV32F435ZMT7", Large, "XMC_SDRAM_1", "Activated=TRUE", false, "Address"},
    {"ZV32F435ZMT7", Large, "XMC_SDRAM_1", "Activated=TRUE Byte_Masks=Both Address=Rows_12_Banks_4", false,
     "Data_Width"},
    {"ZV32F435ZMT7", Large, "XMC_SDRAM_2", "Activated=TRUE Address=Rows_13_Banks_2 Data_Width=8_bits", true},
};
INSTANTIATE_TEST_SUITE_P(Memories, CompleteTest, ::testing::ValuesIn(Memories));

TEST_F(MemoryPeripheralsTest, PackagesOfferWhatTheirPinsCarry)
{
    const auto modes = [this](const QString &device, const QString &package) {
        open(device, package);
        return design.peripheral("EMAC")->control("Mode")->items().size();
    };
    EXPECT_EQ(modes("ZV32F437ZMT7", Large), 7);
    EXPECT_EQ(modes("ZV32F437VMT7", "LQFP100"), 3); // neither PHY_CLK nor TX_ER
    EXPECT_EQ(design.peripheral("XMC_SDRAM_1"), nullptr);
    EXPECT_EQ(design.peripheral("XMC_NORFlash-PSRAM-SRAM-ROM-LCD_3"), nullptr);
    // without A0 to A15 no memory has lines of its own
    const IP_ModeAndConfiguration *bank = design.peripheral("XMC_NORFlash-PSRAM-SRAM-ROM-LCD_1");
    EXPECT_EQ(bank->control("Address_Lines"), nullptr);
    EXPECT_EQ(bank->control("Memory_Type")->items().size(), 4);
    open("ZV32F435CMT7", "LQFP48");
    EXPECT_EQ(design.peripheral("QSPI2"), nullptr);
    EXPECT_NE(design.peripheral("QSPI1")->control("Four_Lines"), nullptr);
}

// Banks share the pins of the bus: what one gives up, another keeps.
TEST_F(MemoryPeripheralsTest, BanksShareTheirPins)
{
    open("ZV32F435ZMT7", Large);
    choose("XMC_SDRAM_1", "Activated=TRUE Address=Rows_12_Banks_4 Data_Width=16_bits");
    choose("XMC_NANDFlash_1", "Activated=TRUE Data_Width=8_bits");
    choose("XMC_SDRAM_1", "Data_Width=Disable");
    EXPECT_EQ(design.pinInfo().placesOf("XMC_D15").size(), 1);
    const auto placed = [this](const QString &signal) {
        const QVector<SignalPlace> &places = design.pinInfo().placesOf(signal);
        return std::any_of(places.begin(), places.end(), [this](const SignalPlace &place) {
            return design.pinInfo().signal(place).configStatus != Not_Config;
        });
    };
    EXPECT_TRUE(placed("XMC_D7"));
    EXPECT_FALSE(placed("XMC_D8"));
    EXPECT_TRUE(design.peripheral("XMC_NANDFlash_1")->GetIPValidFlag());
}

TEST_F(MemoryPeripheralsTest, ResultsFollowTheClock)
{
    open("ZV32F435ZMT7", Large);
    choose("XMC_SDRAM_1", "Activated=TRUE Address=Rows_12_Banks_4 Data_Width=16_bits");
    const double hclk = design.clock().Get_AHBCLK();
    EXPECT_NEAR(value("XMC_SDRAM_1", "ClockFrequency").toDouble(), hclk / 2, 1e-3);
    EXPECT_EQ(value("XMC_SDRAM_1", "RefreshCount").toInt(), sdramRefreshCount(hclk * 1e6 / 2, 12, 64));
    ASSERT_TRUE(apply("param/XMC_SDRAM_1/ClockDivision=XMC_SDRAM_CLKDIV_4"));
    EXPECT_EQ(value("XMC_SDRAM_1", "RefreshCount").toInt(), sdramRefreshCount(hclk * 1e6 / 4, 12, 64));
    choose("QSPI1", "Activated=TRUE");
    ASSERT_TRUE(apply("param/QSPI1/ClkDivision=QSPI_CLK_DIV_10"));
    EXPECT_NEAR(value("QSPI1", "ClockFrequency").toDouble(), hclk / 10, 1e-3);
    // Three bytes reach 16 MB.
    choose("QSPI1", "Memory_Mapped=TRUE");
    EXPECT_TRUE(design.peripheral("QSPI1")->parameters().warnings().isEmpty());
    ASSERT_TRUE(apply("param/QSPI1/FlashSize=QSPI_SIZE_32_MB"));
    EXPECT_EQ(design.peripheral("QSPI1")->parameters().warning("ReadAddressLength"),
              (DesignAnswer{DesignReason::BelowMinimum, {"ReadAddressLength", "3", "4"}}));
    ASSERT_TRUE(apply("param/QSPI1/ReadAddressLength=QSPI_ADDRESS_4_BYTES"));
    EXPECT_TRUE(design.peripheral("QSPI1")->parameters().warnings().isEmpty());
}

// Both banks have one clock: the second shows that of the first, and chooses for itself once the first is off.
TEST_F(MemoryPeripheralsTest, SecondSdramFollowsTheFirst)
{
    open("ZV32F435ZMT7", Large);
    choose("XMC_SDRAM_2", "Activated=TRUE Address=Rows_11_Banks_4 Data_Width=16_bits");
    ASSERT_TRUE(apply("param/XMC_SDRAM_2/ReadDelay=2"));
    choose("XMC_SDRAM_1", "Activated=TRUE Address=Rows_13_Banks_4 Data_Width=16_bits");
    ASSERT_TRUE(apply("param/XMC_SDRAM_1/ClockDivision=XMC_SDRAM_CLKDIV_4"));
    ASSERT_TRUE(apply("param/XMC_SDRAM_1/BurstRead=FALSE"));
    EXPECT_EQ(value("XMC_SDRAM_2", "ClockDivision"), "XMC_SDRAM_CLKDIV_4");
    EXPECT_EQ(value("XMC_SDRAM_2", "BurstRead"), "FALSE");
    EXPECT_EQ(value("XMC_SDRAM_2", "ReadDelay"), "1");
    ASSERT_TRUE(apply("param/XMC_SDRAM_1/Interrupt_RefreshError=TRUE"));
    EXPECT_EQ(value("XMC_SDRAM_2", "Interrupt_RefreshError"), "FALSE"); // one flag, one branch of the handler
    EXPECT_FALSE(apply("param/XMC_SDRAM_2/Interrupt_RefreshError=TRUE"));
    EXPECT_EQ(value("XMC_SDRAM_2", "ClockFrequency"), value("XMC_SDRAM_1", "ClockFrequency"));
    EXPECT_FALSE(apply("param/XMC_SDRAM_2/ClockDivision=XMC_SDRAM_CLKDIV_2"));
    choose("XMC_SDRAM_1", "Activated=FALSE");
    EXPECT_TRUE(apply("param/XMC_SDRAM_2/Interrupt_RefreshError=TRUE"));
    EXPECT_TRUE(apply("param/XMC_SDRAM_2/ClockDivision=XMC_SDRAM_CLKDIV_3"));
    EXPECT_EQ(value("XMC_SDRAM_2", "ClockDivision"), "XMC_SDRAM_CLKDIV_3");
}

// What no memory can work with is told where it is read.
TEST_F(MemoryPeripheralsTest, ClocksThatMemoriesCannotTakeAreTold)
{
    open("ZV32F435ZMT7", Large);
    const auto warned = [this](const char *instance, const char *name) {
        return design.peripheral(instance)->parameters().warning(name).reason;
    };
    choose("XMC_SDRAM_1", "Activated=TRUE Address=Rows_13_Banks_4 Data_Width=16_bits");
    ASSERT_TRUE(apply("param/XMC_SDRAM_1/RefreshTime=1"));
    EXPECT_EQ(value("XMC_SDRAM_1", "RefreshCount"), "0");
    EXPECT_EQ(warned("XMC_SDRAM_1", "RefreshCount"), DesignReason::BelowMinimum);
    for (const char *setting : {"mode/CRM/HEXT=HEXT-External-Oscillator", "clock/hext=8", "clock/pllrcs=HEXT",
                                "clock/sclk=288", "param/XMC_SDRAM_1/RefreshTime=64"})
        ASSERT_TRUE(apply(setting)) << setting;
    EXPECT_EQ(warned("XMC_SDRAM_1", "RefreshCount"), DesignReason::None);
    choose("SDIO2", "Mode=SD_4_bits");
    EXPECT_EQ(value("SDIO2", "ClockFrequency").toDouble(), 48);
    EXPECT_EQ(warned("SDIO2", "ClockFrequency"), DesignReason::None);
    ASSERT_TRUE(apply("param/SDIO2/Clock_division=3"));
    EXPECT_EQ(warned("SDIO2", "ClockFrequency"), DesignReason::AboveMaximum);
}

TEST(SdramRefresh, StaysWithinTheCounter)
{
    EXPECT_EQ(sdramRefreshCount(144e6, 12, 64), 2230); // 2250 clocks for each of 4096 rows
    EXPECT_EQ(sdramRefreshCount(72e6, 13, 64), 542);   // 562.5
    EXPECT_EQ(sdramRefreshCount(144e6, 11, 128), 8191);
    EXPECT_EQ(sdramRefreshCount(1e6, 13, 64), 0);
}

// A read over four lines needs the four lines; without them the value falls back to one that is allowed.
TEST_F(MemoryPeripheralsTest, LinesOfAReadFollowTheWiring)
{
    open("ZV32F435ZMT7", Large);
    choose("QSPI2", "Activated=TRUE Memory_Mapped=TRUE");
    EXPECT_FALSE(apply("param/QSPI2/ReadLines=QSPI_LINES_1_4_4"));
    choose("QSPI2", "Four_Lines=TRUE");
    EXPECT_TRUE(apply("param/QSPI2/ReadLines=QSPI_LINES_1_4_4"));
    choose("QSPI2", "Four_Lines=FALSE");
    EXPECT_EQ(value("QSPI2", "ReadLines"), "QSPI_LINES_1_1_1");
}

// What is not wired cannot be addressed, nor masked.
TEST_F(MemoryPeripheralsTest, AnSdramUsesTheLinesItHas)
{
    open("ZV32F435ZMT7", Large);
    choose("XMC_SDRAM_1", "Activated=TRUE Byte_Masks=Lower Address=Rows_12_Banks_4 Data_Width=8_bits");
    ASSERT_TRUE(apply("param/XMC_SDRAM_1/ColumnAddress=XMC_COLUMN_11"));
    choose("XMC_SDRAM_1", "Address=Rows_11_Banks_4 Data_Width=16_bits");
    EXPECT_EQ(value("XMC_SDRAM_1", "ColumnAddress"), "XMC_COLUMN_8");
    EXPECT_FALSE(apply("param/XMC_SDRAM_1/ColumnAddress=XMC_COLUMN_11"));
    EXPECT_FALSE(design.peripheral("XMC_SDRAM_1")->control("Byte_Masks")->isOn());
    EXPECT_FALSE(apply("mode/XMC_SDRAM_1/Byte_Masks=Lower"));
    EXPECT_TRUE(apply("mode/XMC_SDRAM_1/Byte_Masks=Both"));
}

TEST_F(MemoryPeripheralsTest, CoarseTimeStampsNeedWholeNanoseconds)
{
    open("ZV32F437ZMT7", Large);
    choose("EMAC", "Mode=RMII RMII_Link=Fixed Time_Stamps=TRUE");
    const auto warning = [&] { return design.peripheral("EMAC")->parameters().warnings().value("TimeStampUpdate"); };
    EXPECT_TRUE(warning().accepted());
    ASSERT_TRUE(apply("param/EMAC/TimeStampUpdate=EMAC_TIME_STAMP_COARSE"));
    EXPECT_EQ(warning(), (DesignAnswer{DesignReason::RateOff, {"TimeStampUpdate", "-13.6", "0.01"}}))
        << "3 ns at 288 MHz";
    ASSERT_TRUE(apply("clock/sclkselect=hick"));
    EXPECT_TRUE(warning().accepted()) << "125 ns at 8 MHz";
}

TEST_F(MemoryPeripheralsTest, APhyTakesTheCrystalAsItIs)
{
    open("ZV32F437ZMT7", Large);
    choose("EMAC", "Mode=MII_Clocked PHY_Clock=HEXT MII_Duplex=Full_Only");
    const auto isMarked = [&] {
        return design.peripheral("EMAC")->parameters().warnings().contains("PHYClockFrequency");
    };
    EXPECT_EQ(value("EMAC", "PHYClockFrequency"), "0") << "HEXT is off";
    EXPECT_TRUE(isMarked());
    choose("CRM", "HEXT=HEXT-Bypass");
    EXPECT_EQ(value("EMAC", "PHYClockFrequency"), "8");
    EXPECT_TRUE(isMarked());
    ASSERT_TRUE(apply("clock/hext=25"));
    EXPECT_EQ(value("EMAC", "PHYClockFrequency"), "25");
    EXPECT_FALSE(isMarked());
}

TEST_F(MemoryPeripheralsTest, ACrystalReachesOnlyWhatWasComputedFromIt)
{
    open("ZV32F437ZMT7", Large);
    choose("CRM", "HEXT=HEXT-Bypass");
    choose("EMAC", "Mode=MII_Clocked PHY_Clock=HEXT MII_Duplex=Full_Only");
    choose("QSPI1", "Activated=TRUE");
    ASSERT_TRUE(apply("clock/sclkselect=hick"));
    QStringList rebuilt;
    for (const char *instance : {"EMAC", "QSPI1"}) {
        QObject::connect(&design.peripheral(instance)->parameters(),
                         &IP_ParamSettingConfiguration::Send_RefreshParamTabWidget_Signal,
                         [&rebuilt, instance] { rebuilt.append(instance); });
    }
    ASSERT_TRUE(apply("clock/hext=12"));
    EXPECT_EQ(rebuilt, QStringList("EMAC"));

    // Undone to where the PHY follows the crystal, the results follow it too.
    const DesignSnapshot withCrystal = design.snapshot();
    choose("EMAC", "PHY_Clock=HCLK");
    rebuilt.clear();
    ASSERT_TRUE(apply("clock/hext=16"));
    EXPECT_EQ(rebuilt, QStringList());
    ASSERT_TRUE(design.restore(withCrystal));
    ASSERT_TRUE(apply("clock/hext=25"));
    EXPECT_EQ(value("EMAC", "PHYClockFrequency"), "25");
}

TEST_F(MemoryPeripheralsTest, EthernetWithoutItsPhyHasAFixedSpeed)
{
    open("ZV32F437RCT7", "LQFP64");
    choose("EMAC", "Mode=RMII RMII_Link=PHY");
    EXPECT_EQ(value("EMAC", "AutoNegotiation"), "EMAC_AUTO_NEGOTIATION_ON");
    EXPECT_EQ(value("EMAC", "Speed"), "(absent)");
    choose("EMAC", "RMII_Link=Fixed");
    EXPECT_EQ(value("EMAC", "AutoNegotiation"), "(absent)");
    EXPECT_EQ(value("EMAC", "Speed"), "EMAC_SPEED_100MBPS");
    EXPECT_EQ(value("EMAC", "PHYAddress"), "(absent)");
    choose("EMAC", "RMII_Link=PHY");
    EXPECT_EQ(value("EMAC", "AutoNegotiation"), "EMAC_AUTO_NEGOTIATION_ON");
    EXPECT_EQ(value("EMAC", "PHYAddress"), "1");
    // without COL and CRS there is nothing to run half duplex with
    choose("EMAC", "Mode=MII Receive_Error=Not_Wired MII_Duplex=Full_Only");
    EXPECT_FALSE(apply("mode/EMAC/PPS_Output=Pulse")) << "without time stamps nothing gives pulses";
    choose("EMAC", "Time_Stamps=TRUE PPS_Output=Pulse Time_Stamps=FALSE");
    EXPECT_EQ(value("EMAC", "PPSForm"), "(absent)");
    ASSERT_TRUE(apply("param/EMAC/AutoNegotiation=EMAC_AUTO_NEGOTIATION_OFF"));
    EXPECT_FALSE(apply("param/EMAC/DuplexMode=EMAC_HALF_DUPLEX"));
}

TEST_F(MemoryPeripheralsTest, TheFirstUsbControllerTrimsHick)
{
    open("ZV32F435RCT7", "LQFP64");
    choose("USB_OTGFS2", "Mode=Device_Only Activate_VBUS=TRUE");
    EXPECT_EQ(value("USB_OTGFS2", "ClockTrimming"), "(absent)");
    EXPECT_FALSE(design.peripheral("ACC")->GetIPValidFlag());
    choose("USB_OTGFS1", "Mode=Device_Only");
    ASSERT_TRUE(apply("param/USB_OTGFS1/ClockTrimming=TRUE"));
    EXPECT_TRUE(design.peripheral("ACC")->GetIPValidFlag());
    // a host has nothing to trim by, and no supply to look for
    choose("USB_OTGFS1", "Mode=Host_Only");
    EXPECT_FALSE(design.peripheral("ACC")->GetIPValidFlag());
    EXPECT_FALSE(apply("mode/USB_OTGFS1/Activate_VBUS=TRUE"));
    EXPECT_TRUE(apply("mode/USB_OTGFS1/Activate_SOF=TRUE"));
}

} // namespace
