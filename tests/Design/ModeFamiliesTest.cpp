// What differs by series in modes and their notes, tried on devices made up for each series.

#include "Design/DesignTexts.h"
#include "Design/Explanations.h"
#include "Design/Routing.h"
#include "Model/SeriesHelpers.h"
#include "TinyChip.h"

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

/// Whether a list of short names, "F421 F425" or "all", has a series; "all but F421" for the others.
bool inList(const QString &list, const QString &series)
{
    QStringList words = list.split(' ');
    const bool inverted = words.value(1) == "but";
    return words.first() == "all" ? !inverted || !words.contains(series.mid(4)) : words.contains(series.mid(4));
}

using Families = TinyChip;

struct UseRow
{
    const char *instance, *name, *modes;
    const char *choices;
    const char *validOn; ///< series
    int pins = 64;
};

TEST_F(Families, APeripheralIsInUseByTheChoicesOfItsKind)
{
    const char *const UsartModes = "Mode: Async, Sync; Flow: RTS, CTS";
    const char *const Checks = "Activated; Channel1; Channel2";
    const char *const TimerModes = "Activated; Subordinate mode: Reset; Sub-mode input selection: IS0; Channel1";
    const char *const Memory = "Activated; Width: 8, 16; Select: NE1; Wait";
    const char *const Ethernet = "Mode: A, B, C, D, E, F; B1: X; B2: X; B3: X; B4: X; B5: X; First; Clock";
    const char *const Comparator = "Mode: Fast; Output_select: Pin; INP_channel_select: P1, P2; INM_channel_select: N1";
    const std::vector<UseRow> rows{
        {"USART1", "USART", UsartModes, "Mode=Sync", "all"},
        {"UART4", "UART", UsartModes, "Flow=RTS", ""},
        {"DVP", "DVP", UsartModes, "Flow=RTS", ""},
        {"SDIO1", "SDIO", UsartModes, "Mode=Async", "all"},
        {"CRM", "CRM", "HEXT: Crystal; Clock-out", "Clock-out", "all"},
        {"SCFG", "SCFG", "A; B: X", "B=X", "all"},
        {"SPI1", "SPI", UsartModes, "Flow=CTS", "all"},
        {"TMR1", "TMR", TimerModes, "Channel1", ""},
        {"TMR20", "TMR", TimerModes, "Activated; Channel1", "all"},
        {"TMR15", "TMR", TimerModes, "Activated; Subordinate mode=Reset", ""},
        {"TMR3", "TMR", TimerModes, "Activated; Subordinate mode=Reset; Sub-mode input selection=IS0", "all"},
        {"TMR14", "TMR", Checks, "Channel2", ""},
        {"WWDT", "WWDT", Checks, "Activated", "all"},
        {"CAN2", "CAN", Checks, "Channel1", ""},
        {"HWDIV", "HWDIV", Checks, "Channel1", ""},
        {"TRNG", "TRNG", Checks, "Activated", "all"},
        {"ADC-Common", "ADC-Common", Checks, "Channel1", ""},
        {"ADC3", "ADC", Checks, "Channel2", "all"},
        {"PWC", "PWC", Checks, "Channel1", "all"},
        {"EXINT", "EXINT", Checks, "Channel2", "all"},
        {"XMC_NORFlash-PSRAM-LCD_1", "XMC_NORFlash", Memory, "Activated", ""},
        {"XMC_NORFlash-PSRAM-LCD_1", "XMC_NORFlash", Memory, "Activated; Width=8", "all"},
        {"XMC_NANDFlash_2", "XMC_NANDFlash", Memory, "Width=16", ""},
        {"XMC_PCCard", "XMC_PCCard", Memory, "Activated; Width=8", ""},
        {"XMC_PCCard", "XMC_PCCard", Memory, "Activated; Width=8; Select=NE1", "all"},
        {"XMC_SDRAM_1", "XMC_SDRAM", "Activated; Bank: 1; Width: 8; Columns: 8", "Activated; Bank=1; Width=8", ""},
        {"XMC_SDRAM_1", "XMC_SDRAM", "Activated; Bank: 1; Width: 8; Columns: 8", "Activated; Width=8; Columns=8",
         "all"},
        {"EMAC", "EMAC", Ethernet, "Mode=A; B2=X; B3=X", "", 144},
        {"EMAC", "EMAC", Ethernet, "Mode=D; B1=X; B3=X", "all", 144},
        {"EMAC", "EMAC", Ethernet, "Mode=D; B1=X; B3=X; B5=X", "", 144},
        {"EMAC", "EMAC", Ethernet, "Mode=D; B1=X; B3=X; B5=X; Clock", "all", 144},
        {"EMAC", "EMAC", Ethernet, "Mode=E; B1=X; B3=X", "", 144},
        {"EMAC", "EMAC", Ethernet, "Mode=F; B4=X", "all", 144},
        {"EMAC", "EMAC", Ethernet, "Mode=B; B4=X", "all", 100},
        {"EMAC", "EMAC", Ethernet, "Mode=B; B2=X; B3=X", "", 64},
        {"EMAC", "EMAC", Ethernet, "Mode=C; B2=X; B3=X", "all", 64},
        {"EMAC", "EMAC", "Mode: A", "Mode=A", "all", 144},
        {"CMP1", "CMP", Comparator, "Mode=Fast", "all but M412 M416"},
        {"CMP2", "CMP", Comparator, "Mode=Fast; Output_select=Pin", "all but M412 M416"},
        {"CMP1", "CMP", Comparator, "Mode=Fast; Output_select=Pin; INP_channel_select=P1", "all but M412 M416"},
        {"CMP1", "CMP", Comparator, "Mode=Fast; Output_select=Pin; INP_channel_select=P2", "all"},
        {"CMP1", "CMP", Comparator, "Mode=Fast; Output_select=Pin; INP_channel_select=P1; INM_channel_select=N1",
         "all"},
    };
    for (const QString &series : allSeriesNames()) {
        for (const UseRow &row : rows) {
            SCOPED_TRACE((series + ' ' + row.instance + ' ' + row.choices).toStdString());
            open(series, {{row.instance, row.name, row.modes}}, "LQFP", row.pins);
            EXPECT_FALSE(ip().GetIPValidFlag());
            choose(row.choices);
            EXPECT_EQ(ip().GetIPValidFlag(), inList(row.validOn, series));
            EXPECT_EQ(ip().GetIPStatusFlag() & IPSTATUS_ON, ip().GetIPValidFlag() ? IPSTATUS_ON : 0);
            EXPECT_EQ(ip().tabs().isEmpty(), !ip().GetIPValidFlag() || QString("SCFG DEBUG").contains(row.instance));
        }
    }
}

struct NoteRow
{
    const char *instance, *name, *modes;
    const char *choices;
    const char *note;    ///< how it begins
    const char *notedOn; ///< series
    bool error = false;
};

TEST_F(Families, ANoteStandsWhereItsSeriesHasTheRule)
{
    const char *const TimerModes = "Activated; Subordinate mode: Reset; Sub-mode input selection: IS0";
    const char *const I2s = "Mode: A, B, C, D, FullMaster, FullSlave";
    const char *const Comparator = "Mode: Fast; Output_select: Pin; INP_channel_select: P1, P2; INM_channel_select: N1";
    const char *const ComparatorSeries = "M412 M416 F421 F422 F426 F6221";
    const char *const AdcNote = "Please note: When configuring ADC, it is also necessary to configure ADC-Common";
    const char *const DuplexNote = "Please note: Full duplex affiliated parameters must be same as the leader";
    const char *const DuplexSeries = "F423 A423 F425 F405 F402 F490";
    const std::vector<NoteRow> rows{
        {"TMR12", "TMR", TimerModes, "Activated; Subordinate mode=Reset", "Please select a Sub-mode input selection",
         "all but F413", true},
        {"TMR15", "TMR", TimerModes, "Activated; Subordinate mode=Reset", "Please select a Sub-mode input selection",
         "F421 F425 L021 F011 F422 F426 F6221", true},
        {"TMR2", "TMR", TimerModes, "Activated; Subordinate mode=Reset; Sub-mode input selection=IS0", "", "all"},
        {"ADC1", "ADC", "IN1; IN2", "", AdcNote, "F435 F437 F455 F456 F457 M412 M416 F406 F408"},
        {"ADC1", "ADC", "IN1; IN2", "IN2", "", "all"},
        {"XMC_NANDFlash_1", "XMC", "Activated; Width: 8", "Activated", "Please select a Width", "all", true},
        {"CMP1", "CMP", Comparator, "Mode=Fast", "Please select a Output_select", ComparatorSeries, true},
        {"CMP1", "CMP", Comparator, "Mode=Fast; Output_select=Pin", "Please select a INP_channel_select",
         ComparatorSeries, true},
        {"CMP1", "CMP", Comparator, "Mode=Fast; Output_select=Pin; INP_channel_select=P2",
         "Please select a INM_channel_select", "F421 F422 F426 F6221", true},
        {"CMP1", "CMP", Comparator, "Mode=Fast; Output_select=Pin; INP_channel_select=P2; INM_channel_select=N1", "",
         "all"},
        {"DEBUG", "DEBUG", "SWO2", "SWO2", "This peripheral has no parameters to be configured.", "all"},
        {"CAN1", "CAN", "Activated", "Activated", "As specified in CAN protocol", "all but F406 F408"},
        {"I2S2", "I2S", I2s, "Mode=FullMaster", DuplexNote, DuplexSeries},
        {"I2S3", "I2S", I2s, "Mode=FullSlave", DuplexNote, DuplexSeries},
        {"I2S1", "I2S", I2s, "Mode=FullSlave", "", "all"},
        {"I2S2", "I2S", I2s, "Mode=D", "", "all"},
    };
    for (const QString &series : allSeriesNames()) {
        for (const NoteRow &row : rows) {
            SCOPED_TRACE((series + ' ' + row.instance + ' ' + row.choices).toStdString());
            open(series, {row.instance, row.name, row.modes});
            choose(row.choices);
            const bool noted = *row.note && inList(row.notedOn, series);
            const QString text = noteText(ip());
            EXPECT_TRUE(noted ? text.startsWith(row.note) : text.isEmpty()) << text.toStdString();
            EXPECT_EQ((ip().GetIPStatusFlag() & IPSTATUS_ERROR) != 0, noted && row.error);
        }
    }
}

struct PresenceRow
{
    const char *instance, *signal;
    const char *family;
    int pins;
    const char *presentOn; ///< series
};

TEST_F(Families, AVirtualSignalIsThereOnItsSeriesAndPackages)
{
    const char *const NoName = "all"; // a virtual name that a series does not know counts as present
    const std::vector<PresenceRow> rows{
        {"SCFG", "VS_PA11PA12_REMAP", "TSSOP", 20, "F421 F425 L021 F011 F422 F426 F6221"},
        {"SCFG", "VS_PA11PA12_REMAP", "TSSOP", 24, "M412 M416"},
        {"SCFG", "VS_PA11PA12_REMAP", "QFN", 28, "L021 F011 F422 F426 F6221"},
        {"SCFG", "VS_PA11PA12_REMAP", "LQFP", 28, "L021 F011"},
        {"SCFG", "VS_PA11PA12_REMAP", "LQFP", 64, ""},
        {"SCFG", "VS_NRSTPF2_REMAP", "LQFP", 48, "M412 M416"},
        {"SCFG", "VS_I2S23", "QFN", 48, "all but F405 F402 F490"},
        {"SCFG", "VS_I2S12", "LQFP", 32, "all but F405 F402 F490"},
        {"SCFG", "VS_I2S13", "QFN", 32, "all"},
        {"SCFG", "VS_I2S23", "TSSOP", 28, "all but F425"},
        {"SCFG", "VS_I2S13", "LQFP", 20, "all but F425"},
        {"SCFG", "VS_I2S12", "TSSOP", 20, "all"},
        {"SCFG", "VS_I2S23", "LQFP", 64, "all"},
        {"ADC1", "VS_EXINT11", "LQFP", 10, ""},
        {"ADC1", "VS_EXINT11", "LQFP", 20, "all"},
        {"ADC1", "VS_EXINT15", "LQFP", 64, "all"},
        {"CMP1", "VS_INTERNAL", "LQFP", 10, NoName},
        // Ultra pins: 16 pins end at PA15, so that a pin that its series names is missing.
        {"SCFG", "VS_PB8Ultra", "LQFP", 16, "all but F423 A423 F425 L021 F011 F455 F456 F457 M412 M416"},
        {"SCFG", "VS_PB9Ultra", "LQFP", 16,
         "all but F423 A423 F425 L021 F011 F405 F402 F490 F406 F408 F435 F437 F455 F456 F457 M412 M416"},
        {"SCFG", "VS_PB10Ultra", "LQFP", 16, "all but F405 F402 F490 F406 F408 F435 F437"},
        {"SCFG", "VS_PB13Ultra", "LQFP", 16, "all but F425"},
        {"SCFG", "VS_PD12Ultra", "LQFP", 16, "all but F423 A423 F435 F437 F455 F456 F457"},
        {"SCFG", "VS_PD14Ultra", "LQFP", 16, "all but F435 F437 F455 F456 F457"},
        {"SCFG", "VS_PF14Ultra", "LQFP", 64, "all but F435 F437"},
        {"SCFG", "VS_PB9Ultra", "LQFP", 64, "all"},
    };
    for (const QString &series : allSeriesNames()) {
        for (const PresenceRow &row : rows) {
            SCOPED_TRACE(QString("%1 %2 %3%4").arg(series, row.signal, row.family).arg(row.pins).toStdString());
            open(series, {{row.instance, "IP", QString("Other; Asked @ ") + row.signal}}, row.family, row.pins);
            EXPECT_EQ(ip().control("Asked") != nullptr, inList(row.presentOn, series));
        }
    }
}

TEST_F(Families, AChipStartsWithItsTimeBaseAndDebugInterface)
{
    const QString Box = "F403 F403A F407 A403A F413 F423 A423 F415 WB415 F435 F437 F403E F407E";
    const QString WithTrace = "F405 F402 F490 M412 M416 F455 F456 F457 F422 F426 F6221 F406 F408";
    for (const QString &series : allSeriesNames()) {
        SCOPED_TRACE(series.toStdString());
        open(series, {{"DEBUG", "DEBUG", "Debug interface: JTAG, SWD; SWD; SWO"},
                      {"SYSTEM", "SYSTEM", "Time_Base: TMR6, SysTick"}});
        EXPECT_EQ(ip().control("Debug interface")->currentName(), inList(Box, series) ? "SWD" : "");
        EXPECT_EQ(ip().control("SWD")->isOn(), !inList(Box, series));
        EXPECT_EQ(ip().control("SWO")->isOn(), inList(WithTrace, series));
        EXPECT_EQ(m_design.peripheral("SYSTEM")->control("Time_Base")->currentName(), "SysTick");
    }
}

TEST_F(Families, UsbTakesTheClockCalibrationAlongAndADeviceItsSupplySense)
{
    const QString Calibrated =
        "F423 A423 F425 F403A F407 A403A F413 F405 F402 F490 F435 F437 F455 F456 F457 F403E F407E";
    for (const QString &series : allSeriesNames()) {
        SCOPED_TRACE(series.toStdString());
        open(series, {{"USB_OTGFS1", "USB", "Mode: Device_Only -> Usb, Host_Only; Activate_VBUS"},
                      {"ACC", "ACC", "Activated <- Usb"}});
        ASSERT_TRUE(m_design.apply({"mode", "USB_OTGFS1/Mode", "Device_Only"}));
        EXPECT_EQ(m_design.peripheral("ACC")->GetIPValidFlag(), inList(Calibrated, series));
        EXPECT_EQ(ip().control("Activate_VBUS")->isOn(), inList("F415 WB415", series));
        ASSERT_TRUE(m_design.apply({"mode", "USB_OTGFS1/Mode", "Host_Only"}));
        EXPECT_FALSE(m_design.peripheral("ACC")->GetIPValidFlag());
    }
}

TEST_F(Families, TabsStandInOrderAndSomePeripheralsHaveFew)
{
    using Tab = ConfigurationTab;
    for (const QString &series : allSeriesNames()) {
        for (const char *few : {"ADC-Common", "SYSTEM"}) {
            open(series, {few, few, "Activated"});
            choose("Activated");
            EXPECT_EQ(ip().tabs(), QList<Tab>{Tab::Parameters}) << few;
        }
        open(series, {"TMR6", "TMR", "Activated"});
        EXPECT_TRUE(ip().tabs().isEmpty());
        choose("Activated");
        EXPECT_EQ(ip().tabs(), (QList<Tab>{Tab::Parameters, Tab::Dma, Tab::Nvic, Tab::Interrupts, Tab::Gpio}));
    }
}

struct RemovalRow
{
    const char *names;
    const char *device;
    bool removed;
};

TEST_F(Families, AConditionWithdrawsFromWholeNames)
{
    for (const RemovalRow &row :
         {RemovalRow{"ZV32F403", "ZV32F403RC", true}, RemovalRow{"ZV32F403A", "ZV32F403RC", false},
          RemovalRow{"ZV32F403RC", "ZV32F403RC", true}, RemovalRow{"ZV32F403RE, ZV32F421", "ZV32F403RC", false},
          RemovalRow{"TMR15", "ZV32F403RC", false}, RemovalRow{"TMR9,TMR1", "ZV32F403RC", true}}) {
        open("ZV32F403", {{"TMR1", "TMR", QString("Mode: A, B")}}, "LQFP", 64, row.device);
        const QString file = m_dir.filePath("ZV32DB/device/ZV32F403/Peripherals/TMR-V1.xml");
        QFile description(file);
        ASSERT_TRUE(description.open(QIODevice::ReadWrite));
        const QByteArray text = description.readAll().replace(
            "<ModeParam Name=\"B\">", QByteArray("<ModeParam Name=\"B\" RemoveCondition=\"") + row.names + "\">");
        description.resize(0);
        description.seek(0);
        description.write(text);
        description.close();
        ASSERT_TRUE(m_design.NewDesign("ZV32F403", row.device, "LQFP64"));
        EXPECT_EQ(ip().control("Mode")->indexOf("B") < 0, row.removed) << row.names;
    }
}

// ---- Routes ----

struct PairRow
{
    const char *senders, *receivers;
    const char *series;
    Route route = Route::ForwardAndRefresh;
};

const char *const AdcFollowers = "F403A F407 A403A F413 F403E F407E";

const std::vector<PairRow> Pairs{
    {"FREERTOS RT-Thread_Nano", "SYSTEM EMAC USB_DEVICE USB_HOST LWIP", "all"},
    {"LWIP", "EMAC", "all"},
    {"I2C_Application", "I2C1 I2C2 I2C3", "all"},
    {"TMR1 TMR10 TMR16 USART1 UART4", "SYSTEM", "all"},
    {"SYSTEM", "TMR1 TMR10 TMR16 USART1 UART4 EMAC LWIP USB_DEVICE USB_HOST FREERTOS RT-Thread_Nano", "all"},
    {"TMR10 USART1 UART4", "IRTMR", "all"},
    {"TMR16", "IRTMR", "F421 F425 L021 F011 F422 F426 F6221"},
    {"I2S1", "SPI1", "all"},
    {"SPI1", "I2S1 FATFS", "all"},
    {"I2S2", "SPI2", "all"},
    {"I2S4", "SPI4", "all"},
    {"SPI4", "I2S4 FATFS", "all"},
    {"SCFG", "I2S2", "all"},
    {"EXINT", "ADC1 DAC", "all"},
    {"USB_OTGFS1 USBFS", "ACC", "all", Route::Forward},
    {"USB_OTGFS1 USBFS", "USB_DEVICE USB_HOST", "all"},
    {"CMP1", "TMR1 TMR10 TMR16", "F421 F422 F426"},
    {"ADC2", "ADC1", AdcFollowers},
    {"USB_DEVICE USB_HOST LWIP FATFS", "FREERTOS RT-Thread_Nano", "all"},
    {"EMAC", "LWIP", "all"},
    {"SDIO1 USB_HOST", "FATFS", "all"},
    {"I2C1 I2C2 I2C3", "I2C_Application", "all"},
    {"CAN1", "USB_DEVICE USBFS", AdcFollowers},
};

TEST(Routing, TokensReachWhomTheyConcernAndNobodyElse)
{
    const QStringList instances{"FREERTOS",   "RT-Thread_Nano", "LWIP",  "I2C_Application",
                                "USB_DEVICE", "USB_HOST",       "FATFS", "CMSIS_DSP",
                                "SYSTEM",     "EMAC",           "TMR1",  "TMR10",
                                "TMR16",      "USART1",         "UART4", "IRTMR",
                                "I2S1",       "SPI1",           "I2S2",  "I2C1",
                                "I2S4",       "SPI4",           "I2C2",  "I2C3",
                                "SCFG",       "EXINT",          "ADC1",  "ADC2",
                                "DAC",        "USB_OTGFS1",     "USBFS", "ACC",
                                "CMP1",       "SDIO1",          "CAN1",  "CRM",
                                "GPIO",       "ADC-Common"};
    for (const QString &series : allSeriesNames()) {
        QHash<QPair<QString, QString>, Route> expected;
        for (const PairRow &row : Pairs) {
            if (!inList(row.series, series))
                continue;
            for (const QString &sender : QString(row.senders).split(' ')) {
                for (const QString &receiver : QString(row.receivers).split(' '))
                    expected.insert({sender, receiver}, row.route);
            }
        }
        for (const QString &sender : instances) {
            for (const QString &receiver : instances) {
                EXPECT_EQ(tokenRoute(series, sender, receiver), expected.value({sender, receiver}, Route::None))
                    << series.toStdString() << ": " << sender.toStdString() << " to " << receiver.toStdString();
            }
        }
        EXPECT_TRUE(reachesDmaSettings(series, "EXINT"));
        EXPECT_EQ(reachesDmaSettings(series, "SCFG"), inList("all but F422 F426 F6221", series));
        EXPECT_FALSE(reachesDmaSettings(series, "USART1"));

        const bool grouped = inList("F435 F437 M412 M416 F455 F456 F457 F406 F408", series);
        EXPECT_EQ(parameterListRoute(series, "ADC1", "ADC2"), grouped || inList(AdcFollowers, series));
        EXPECT_EQ(parameterListRoute(series, "ADC-Common", "ADC3"), grouped);
        EXPECT_EQ(parameterListRoute(series, "ADC1", "ADC-Common"), grouped);
        EXPECT_TRUE(parameterListRoute(series, "I2C3", "I2C_Application"));
        EXPECT_TRUE(parameterListRoute(series, "EMAC", "LWIP"));
        EXPECT_FALSE(parameterListRoute(series, "ADC2", "ADC1"));
    }
}

TEST(EarlyInstances, OthersDependOnThemSoTheyAreReadFirst)
{
    for (const QString &series : allSeriesNames()) {
        const QStringList early = earlyInstances(series);
        const bool motor = inList("M412 M416", series);
        if (inList("F403", series)) {
            EXPECT_TRUE(early.isEmpty());
            continue;
        }
        EXPECT_EQ(early.last(), motor ? "ADC1" : early.contains("ADC2") ? "SYSTEM" : "IRTMR") << series.toStdString();
        EXPECT_TRUE(early.contains("EXINT") && early.contains("SYSTEM")) << series.toStdString();
        EXPECT_EQ(early.contains("SCFG"),
                  inList("F421 F423 A423 F425 F402 F405 F490 L021 F011 F406 F408 M412 M416 F422 "
                         "F426 F6221",
                         series))
            << series.toStdString();
        EXPECT_EQ(early.contains("ACC"), inList("all but F421 L021 F011 F406 F408", series)) << series.toStdString();
        EXPECT_EQ(early.contains("EMAC"),
                  inList("F403A F407 A403A F413 F415 WB415 F403E F407E F435 F437 F455 F456 F457", series))
            << series.toStdString();
        // The second half of a full-duplex pair goes ahead of the first.
        EXPECT_EQ(early.contains("I2S1"), early.contains("I2S2"));
        EXPECT_LE(early.indexOf("I2S2"), early.indexOf("I2S1"));
        EXPECT_EQ(early.contains("I2S4"), inList("F435 F437 F455 F456 F457", series)) << series.toStdString();
        EXPECT_EQ(early.contains("OP1"), motor);
        EXPECT_EQ(early.first() == "ADC2", early.contains("DEBUG"));
    }
}

} // namespace
