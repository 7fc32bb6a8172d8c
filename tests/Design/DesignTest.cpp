#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/PinMenu.h"
#include "PinFixture.h"
#include "ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

/// A part that counts: its state is a number that the setting "count/<instance>" sets.
class CountPart : public DesignPart
{
public:
    CountPart(Design &design, QString instance) : m_instance(std::move(instance))
    {
        ++alive;
        connect(&design.pins(), &PinAssignment::SendAllConfigedSignals, this, [this] { ++told; });
        design.scheduler().schedule(this, "late", 100, [] { ++late; });
    }
    ~CountPart() override { --alive; }

    QString instanceName() const override { return m_instance; }
    bool handles(const DesignChange &change) const override
    {
        return change.section == "count" && change.address == m_instance;
    }
    DesignAnswer apply(const DesignChange &change) override
    {
        if (change.value == "no")
            return {DesignReason::NoGroupFits, {m_instance}};
        value = change.value.toInt();
        return {};
    }
    QStringList signalsInUse() const override { return inUse; }
    void reset() override { value = 0; }
    std::any save() const override { return value; }
    void restore(const std::any &state) override { value = std::any_cast<int>(state); }

    static inline int alive = 0;
    static inline int late = 0;
    int value = 0;
    int told = 0;
    QStringList inUse;

private:
    QString m_instance;
};

class DesignTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        design.registerPartFactory([](Design &owner, const PeripheralsBaseInfo &entry) -> std::unique_ptr<DesignPart> {
            if (entry.GroupName != "Counted")
                return nullptr;
            return std::make_unique<CountPart>(owner, entry.InstanceName);
        });
    }
    void TearDown() override { CountPart::late = 0; }

    void write(const QString &device, const QByteArray &lists, const QString &series = "ZV32F421")
    {
        const QString folder = dir.filePath("ZV32DB/device/" + series);
        QDir().mkpath(folder);
        QFile file(folder + "/" + device + ".xml");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<Configuration>" + lists + "</Configuration>");
    }
    void openSmall()
    {
        write(
            "SMALL",
            R"(<E term="MCUBaseInfo"><I MCUName="SMALL" Package="TSSOP" PinNums="3" xPinNum="0" yPinNum="2" PID="0x12"/></E>
              <E term="PinsList">
                <P PinNum="1" PinName="PA0" Remarks_EN="wake" Remarks_CH="W"><F Func="USART1_TX"/><F Func="TMR1_CH2"/>
                  <F Func="TMR1_CH10"/><F Func="GPIO_Output" IOMode="Out"/></P>
                <P PinNum="2" PinName="PA1"><F Func="USART1_TX"/></P>
                <P PinNum="3" PinName="VDD" PinFixed="true"/></E>
              <E term="PeripheralsList"><I InstanceName="USART1" Name="USART" GroupName="Counted"/>
                <I InstanceName="TMR1" Name="TMR" GroupName="Timers"/></E>
              <E term="MiddlewaresList"><I InstanceName="FATFS" Name="FATFS" GroupName="Counted"/></E>)");
        ASSERT_TRUE(design.NewDesign("ZV32F421", "SMALL", "TSSOP20"));
    }
    CountPart &countPart(const QString &instance) { return *dynamic_cast<CountPart *>(design.part(instance)); }

    QTemporaryDir dir;
    ScriptedPrompt prompt;
    Design design{AppPaths(dir.path(), dir.path()), prompt};
};

TEST_F(DesignTest, EveryChangeGoesThroughOneDoor)
{
    EXPECT_EQ(design.apply(DesignChange::placeSignal("PA0", "USART1_TX")).reason, DesignReason::NoDesign);
    openSmall();
    EXPECT_EQ(design.pid(), 0x12u);
    QSignalSpy seen(&design, &Design::pinsChanged);
    QSignalSpy modified(&design, &Design::modifiedChanged);
    struct Row
    {
        const char *setting;
        DesignReason reason;
        const char *table;
    };
    const Row rows[] = {
        {"pin/PA0=USART1_TX", DesignReason::None, "PA0=USART1_TX:manual"},
        {"pin/PA1=USART1_TX", DesignReason::None, "PA1=USART1_TX:manual"},
        {"label/PA1=LED", DesignReason::None, "PA1=USART1_TX:manual"},
        {"label/PA0=LED", DesignReason::NothingToLabel, "PA1=USART1_TX:manual"},
        {"pin/PA9=USART1_TX", DesignReason::UnknownPin, "PA1=USART1_TX:manual"},
        {"pins/PA1=USART1_TX", DesignReason::UnknownSetting, "PA1=USART1_TX:manual"},
        {"count/USART2=1", DesignReason::UnknownSetting, "PA1=USART1_TX:manual"},
        {"count/USART1=no", DesignReason::NoGroupFits, "PA1=USART1_TX:manual"},
        {"count/USART1=7", DesignReason::None, "PA1=USART1_TX:manual"},
        {"pin/PA1=-USART1_TX", DesignReason::None, ""},
        {"pin/PA1=-USART1_TX", DesignReason::NotPlaced, ""},
        {"pin/PA0=GPIO_Output", DesignReason::None, "PA0=GPIO_Output:manual+mode"},
        {"pin/PA0=", DesignReason::None, ""},
    };
    for (const Row &row : rows) {
        const auto change = DesignChange::fromSetting(row.setting);
        ASSERT_TRUE(change) << row.setting;
        EXPECT_EQ(change->toSetting(), row.setting);
        EXPECT_EQ(design.apply(*change).reason, row.reason) << row.setting;
        EXPECT_EQ(printed(design.pinInfo()), row.table) << row.setting;
    }
    EXPECT_EQ(countPart("USART1").value, 7);
    EXPECT_EQ(seen.size(), 6);
    EXPECT_EQ(modified.size(), 1);
    for (const char *bad : {"", "pin", "pin/PA0", "/PA0=X", "pin/=X", "=X", "pin=PA0/X"})
        EXPECT_FALSE(DesignChange::fromSetting(bad)) << bad;
}

TEST_F(DesignTest, SnapshotsPutBackPinsAndParts)
{
    openSmall();
    design.apply(DesignChange::placeSignal("PA0", "USART1_TX"));
    design.apply(DesignChange::labelPin("PA0", "LOG"));
    design.apply({"count", "USART1", "3"});
    const DesignSnapshot snapshot = design.snapshot();
    design.apply(DesignChange::placeSignal("PA1", "USART1_TX"));
    design.apply({"count", "USART1", "4"});
    design.AllConfigReset();
    EXPECT_EQ(countPart("USART1").value, 0);
    EXPECT_EQ(printed(design.pinInfo()), "");
    const int told = countPart("USART1").told;
    ASSERT_TRUE(design.restore(snapshot));
    EXPECT_EQ(countPart("USART1").value, 3);
    EXPECT_EQ(countPart("USART1").told, told + 1);
    EXPECT_EQ(printed(design.pinInfo()), "PA0=USART1_TX:manual");
    EXPECT_EQ(design.pins().GetPinConfigedDisplayText(1), "LOG");
    openSmall();
    EXPECT_FALSE(design.restore(snapshot)) << "of another design";
}

TEST_F(DesignTest, TheClockIsPartOfTheDesign)
{
    openSmall();
    EXPECT_EQ(design.clock().Get_SYSCLK(), 120);
    const DesignSnapshot snapshot = design.snapshot();
    EXPECT_FALSE(design.isModified());
    EXPECT_TRUE(design.apply({"clock", "sclk", "96"}));
    EXPECT_TRUE(design.isModified());
    EXPECT_EQ(design.clock().Get_SYSCLK(), 96);
    const DesignAnswer refused = design.apply({"clock", "ahbdiv", "3"});
    EXPECT_EQ(refused, (DesignAnswer{DesignReason::ClockRefused, {"ahbdiv takes: 1, 2, 4, 8, 16, 64, 128, 256, 512"}}));
    ASSERT_TRUE(design.restore(snapshot));
    EXPECT_EQ(design.clock().Get_SYSCLK(), 120);
    design.clear();
    EXPECT_EQ(design.clock().Get_SYSCLK(), 0);
}

TEST_F(DesignTest, AHundredDesignsLeaveNothingBehind)
{
    for (int i = 0; i < 100; ++i) {
        openSmall();
        EXPECT_EQ(CountPart::alive, 2);
        design.apply(DesignChange::placeSignal("PA0", "USART1_TX"));
        EXPECT_EQ(countPart("FATFS").told, 1);
        if (i % 2)
            design.clear();
    }
    design.clear();
    EXPECT_EQ(CountPart::alive, 0);
    EXPECT_FALSE(design.isOpen());
    EXPECT_TRUE(design.peripherals().isEmpty());
    EXPECT_TRUE(design.pinInfo().isEmpty());
    EXPECT_TRUE(design.scheduler().isIdle());
    EXPECT_EQ(CountPart::late, 0);
}

TEST_F(DesignTest, MemoryControllersKeepThePinsThatAnotherUses)
{
    write("XMC", R"(<E term="PinsList"><P PinNum="1" PinName="PD0"><F Func="XMC_D2"/></P>
                      <P PinNum="2" PinName="PD1"><F Func="XMC_D3"/></P></E>
                    <E term="PeripheralsList"><I InstanceName="XMC_SDRAM_1" GroupName="Counted"/>
                      <I InstanceName="XMC_NANDFlash_1" GroupName="Counted"/></E>)");
    design.NewDesign("ZV32F421", "XMC", "LQFP144");
    const QList<ModeSignal> data = wanted({"XMC_D2", "XMC_D3"});
    design.ReciveIPPinSignals_FormIP({}, data, false, "XMC_SDRAM_1");
    countPart("XMC_NANDFlash_1").inUse = QStringList("XMC_D2");
    design.ReciveIPPinSignals_FormIP(data, {}, false, "XMC_SDRAM_1");
    EXPECT_EQ(printed(design.pinInfo()), "PD0=XMC_D2:mode");
    countPart("XMC_NANDFlash_1").inUse.clear();
    design.ReciveClearIPPinSignals_FormIP(data, false, "XMC_NANDFlash_1");
    EXPECT_EQ(printed(design.pinInfo()), "");
}

TEST_F(DesignTest, Channel4CHasARemapGroupOfItsOwnWhereTheSeriesSaysSo)
{
    const QByteArray lists =
        R"(<E term="PinsList"><P PinNum="1" PinName="PA8"><F Func="TMR1_CH4"/></P>
             <P PinNum="2" PinName="PB2"><F Func="TMR1_CH4C"/></P></E>
           <E term="PinsSignalsGroup"><G IPName="TMR1" GroupNum="0"><M SignalName="TMR1_CH4" PinName="PA8"/></G>
             <G IPName="TMR1" GroupNum="1"><M SignalName="TMR1_CH4C" PinName="PB2"/></G></E>)";
    const QList<ModeSignal> both = wanted({"TMR1_CH4", "TMR1_CH4C"});
    for (const auto &[series, table] :
         {std::pair("ZV32F403E", "PA8=TMR1_CH4:mode PB2=TMR1_CH4C:mode"), std::pair("ZV32F403A", "")}) {
        write("T", lists, series);
        design.NewDesign(series, "T", "LQFP48");
        design.ReciveIPPinSignals_FormIP(both, both, false, "TMR1");
        EXPECT_EQ(printed(design.pinInfo()), table) << series;
        design.ReciveIPPinSignals_FormIP(both, {}, false, "TMR1");
        EXPECT_EQ(printed(design.pinInfo()), "") << series;
    }
}

TEST_F(DesignTest, BadDeviceFilesOpenWithWhatThereIs)
{
    EXPECT_FALSE(design.NewDesign("ZV32F421", "MISSING", "LQFP48"));
    EXPECT_TRUE(design.isOpen());
    EXPECT_EQ(design.apply(DesignChange::placeSignal("PA0", "X")).reason, DesignReason::UnknownPin);

    QByteArray many = R"(<E term="PeripheralsList">)";
    for (int i = 0; i < 200; ++i)
        many += "<I InstanceName=\"P" + QByteArray::number(i) + "\" GroupName=\"Counted\"/>";
    write("MANY", R"(<E term="MCUBaseInfo"><I Package="CUBE" PinNums="x"/></E>)" + many + "</E>");
    EXPECT_TRUE(design.NewDesign("ZV32F421", "MANY", "CUBE"));
    EXPECT_EQ(CountPart::alive, 200);
    design.AllConfigReset();

    write("TWICE", R"(<E term="PinsList"><P PinNum="one" PinName="PA0"><F Func="A_X"/><F Func="A_X"/></P>
                      <P PinNum="" PinName="PA0"><F Func="A_X"><B Func="B_Y" PinNum="77"/></F><F Func="B_Y"/></P></E>
                      <E term="PinsSignalsGroup"><G IPName="A"><M SignalName="A_X" PinName="PZ0"/></G><G/></E>)");
    EXPECT_TRUE(design.NewDesign("ZV32F421", "TWICE", ""));
    EXPECT_TRUE(design.pinInfo().m_deviceIPSignalGroupInfoList.isEmpty());
    design.apply(DesignChange::placeSignal("PA0", "B_Y"));
    EXPECT_TRUE(design.apply(DesignChange::placeSignal("PA0", "A_X")));
}

TEST_F(DesignTest, LanguageChangesTextsAndKeepsTheState)
{
    openSmall();
    design.apply(DesignChange::placeSignal("PA0", "USART1_TX"));
    EXPECT_EQ(design.pins().GetRectDisplayPinRemarks(1), "wake");
    GlobalLanguage::g_CurrentLanguage = UI_CH;
    design.updateLanguage();
    EXPECT_EQ(design.pins().GetRectDisplayPinRemarks(1), "W");
    EXPECT_EQ(printed(design.pinInfo()), "PA0=USART1_TX:manual");
    GlobalLanguage::g_CurrentLanguage = UI_EN;
}

TEST_F(DesignTest, TheMenuOfAPinSaysWhatAChoiceWouldDo)
{
    openSmall();
    design.apply(DesignChange::placeSignal("PA1", "USART1_TX"));
    design.apply(DesignChange::placeSignal("PA0", "GPIO_Output"));
    design.apply(DesignChange::labelPin("PA0", "LED"));
    const PinMenu menu = pinMenu(design, 1);
    QStringList lines;
    for (const PinMenuGroup &group : menu.groups) {
        for (const PinMenuEntry &entry : group.entries)
            lines.append(menuGroupText(group) + "/" + entry.signalName + (entry.status ? "*" : "") + ": " +
                         menuEntryHint(entry));
    }
    EXPECT_EQ(lines.join('\n'), "Plain functions/GPIO_Output*: \n"
                                "TMR1/TMR1_CH2: Takes GPIO_Output off this position.\n"
                                "TMR1/TMR1_CH10: Takes GPIO_Output off this position.\n"
                                "USART1/USART1_TX: Moves here from pin PA1. Takes GPIO_Output off this position.");
    EXPECT_TRUE(menu.canReset);
    EXPECT_EQ(menu.label, "LED");
    EXPECT_TRUE(pinMenu(design, 3).groups.isEmpty());
    EXPECT_EQ(answerText({DesignReason::HeldBySignal, {"PA%2", "A;B"}}), "Pin PA%2 is held by A;B.");
    EXPECT_EQ(answerText({DesignReason::NoBitTiming, {"Timing", "333", "375 kbit/s, 83.3 %"}}),
              "No bit timing gives 333 kbit/s closely enough; the nearest is 375 kbit/s, 83.3 %.");
}

TEST_F(DesignTest, ASearchHitsExactNamesBeforeParts)
{
    openSmall();
    PinSearch &search = design.pins().search();
    QSignalSpy hits(&search, &PinSearch::hitsChanged);
    search.QuerySignalName("USART1_TX");
    EXPECT_EQ(search.hits(), (QSet<int>{1, 2}));
    search.QuerySignalName("tmr1_ch");
    EXPECT_EQ(search.hits(), (QSet<int>{1}));
    search.QuerySignalName("vd");
    EXPECT_EQ(search.hits(), (QSet<int>{3}));
    search.ReceiveGPIOQuerySignals("PA1", "USART1_TX");
    EXPECT_EQ(search.hits(), (QSet<int>{2}));
    design.apply(DesignChange::placeSignal("PA0", "USART1_TX"));
    EXPECT_TRUE(search.hits().isEmpty()) << "a change ends the search";
    search.QuerySignalName("  ");
    EXPECT_TRUE(search.hits().isEmpty());
    EXPECT_EQ(hits.size(), 5);
    search.ReceiveQueryIPSignal("USART1", design.signalsOf("USART1"));
    EXPECT_EQ(search.markedPositions(), (QSet<int>{1, 2}));
    search.ReceiveQueryIPSignal("GPIO", design.signalsOf("GPIO"));
    EXPECT_EQ(search.markedPositions(), (QSet<int>{1}));
    design.clear();
    EXPECT_EQ(search.lastQueryIPName(), "");
}

} // namespace
