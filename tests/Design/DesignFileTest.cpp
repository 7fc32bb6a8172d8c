#include "Design/DesignFacts.h"
#include "Design/DesignTexts.h"
#include "DesignFileFixture.h"
#include "Limits.h"
#include "Model/XmlTree.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <random>
#include <sys/wait.h>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

class DesignFileTest : public DesignFileFixture
{
protected:
    /// Some of everything that the frame itself writes.
    void fill()
    {
        ASSERT_TRUE(openNew());
        for (const char *setting :
             {"pin/PA9=USART1_TX", "pin/PB0=GPIO_Output", "clock/sclk=100", "project/ProjectName=Blink & 'Röhre'",
              "project/MinHeapSize=0x800", "project/CodeSplitIP=true"})
            EXPECT_TRUE(set(setting)) << setting;
    }

    QByteArray saved(const char *name = "a.ZVWP")
    {
        EXPECT_TRUE(design.SaveProject(path(name)));
        return readAll(path(name));
    }

    /// Opens other content and gives what a new saving of it writes; empty if it is refused.
    QByteArray reopened(const QByteArray &content)
    {
        writeAll(path("other.ZVWP"), content);
        return design.OpenDesign(path("other.ZVWP")) ? design.file().content() : QByteArray();
    }
};

TEST_F(DesignFileTest, WritesItsSectionsInOrderAndNothingOfTheMachine)
{
    fill();
    const QByteArray content = saved();
    QStringList sections;
    for (const XMLElementInfo &section : parseXml(content).root.subElementInfoList) {
        if (!design.part(section.tagName))
            sections.append(section.tagName);
    }
    EXPECT_EQ(sections, QStringList({"ChipLoomVersion", "MCUInfo", "ClockConfiguration", "PINInfo", "ProjectInfomation",
                                     "FunctionRankInfo"}));
    EXPECT_FALSE(content.contains(folder.path().toUtf8()));
    EXPECT_FALSE(QString::fromUtf8(content).contains(QRegularExpression(QStringLiteral("20[0-9][0-9]-[0-9]"))));
    EXPECT_EQ(DesignFile::GetXMLElementString(path("a.ZVWP"), "MCUInfo", "MCUPackage"), "LQFP48");
    EXPECT_EQ(DesignFile::GetXMLElementString(path("a.ZVWP"), "MCUInfo", "Nothing"), "");
    const QList<ProjectFilePinInfo> pins = DesignFile::GetProjectFilePinInfo(path("a.ZVWP"));
    ASSERT_EQ(pins.size(), 2);
    EXPECT_EQ(pins.at(1).pinname + pins.at(1).signalname + pins.at(1).signaltype, "PA9USART1_TXManual_Config");
}

TEST_F(DesignFileTest, ASavedDesignOpensAsItWas)
{
    fill();
    EXPECT_TRUE(design.isModified());
    const QByteArray content = saved();
    EXPECT_FALSE(design.isModified());
    Design other(paths, prompt);
    ASSERT_TRUE(other.OpenDesign(path("a.ZVWP")));
    EXPECT_EQ(other.file().content(), content);
    EXPECT_FALSE(other.isModified());
    EXPECT_EQ(other.file().path(), path("a.ZVWP"));
    EXPECT_EQ(printed(other.file().problems()), QStringList());
    EXPECT_EQ(other.project().ProjectName, "Blink & 'Röhre'");
    EXPECT_EQ(other.clock().Get_SYSCLK(), 100.0);
    EXPECT_TRUE(compareDesigns(design, other).isEmpty());

    EXPECT_TRUE(set("project/ToolchainIDE=CMake", &other));
    EXPECT_TRUE(set("pin/PA9=", &other));
    const QList<DesignDifference> differences = compareDesigns(design, other);
    ASSERT_EQ(differences.size(), 2);
    EXPECT_EQ(differences.at(0).place + differences.at(0).first + differences.at(0).second, "PA9USART1_TX");
    EXPECT_EQ(differences.at(1).first + differences.at(1).second, "ZV32_IDECMake");

    other.clear();
    EXPECT_EQ(other.file().path(), "");
    EXPECT_TRUE(prompt.requests.isEmpty());
}

TEST_F(DesignFileTest, TheOrderOfTheSectionsDoesNotMatter)
{
    fill();
    const QByteArray content = saved();
    // Sections are what stands indented by four blanks.
    QStringList sections = QString::fromUtf8(content).split(QRegularExpression(QStringLiteral("\n(?=    <[^/])")));
    const QString head = sections.takeFirst();
    sections.last().remove(QStringLiteral("\n</Root>\n"));
    std::mt19937 random(7);
    for (int round = 0; round < 10; ++round) {
        std::shuffle(sections.begin(), sections.end(), random);
        const QString mixed = head + '\n' + sections.join('\n') + "\n</Root>\n";
        EXPECT_EQ(reopened(mixed.toUtf8()), content);
    }
}

TEST_F(DesignFileTest, WhatALaterVersionWroteSurvives)
{
    fill();
    QByteArray content = saved();
    content.replace("</MCUInfo>", "<Lot name=\"7\">new</Lot></MCUInfo>");
    content.replace("</Root>", "<Later a=\"&quot;&lt;\"><Inner>x &amp; y</Inner><Inner/></Later></Root>");
    const QByteArray kept = reopened(content);
    EXPECT_TRUE(kept.contains("<Lot name=\"7\">new</Lot>"));
    EXPECT_TRUE(kept.contains("<Later a=\"&quot;&lt;\">\n        <Inner>x &amp; y</Inner>\n        <Inner/>"));
    EXPECT_EQ(reopened(kept), kept);
    EXPECT_EQ(printed(design.file().problems()), QStringList());
    openNew();
    EXPECT_FALSE(design.file().content().contains("Later"));
}

struct RefusedFile
{
    const char *before;
    const char *after;
    const char *text;
};

TEST_F(DesignFileTest, AFileOfNoKnownDeviceIsRefusedAndTheDesignStays)
{
    fill();
    const QByteArray content = saved();
    set("project/ProjectName=Other");
    const QByteArray present = design.file().content();
    const RefusedFile rows[] = {
        {"<MCUSerials>ZV32F421<", "<MCUSerials>ZV32X999<", "Open file error, MCU in file not supported."},
        {"<MCUSerials>ZV32F421<", "<MCUSerials>ZV32F403A<", "Open file error, MCU in file not supported."},
        {"<MCUName>ZV32F421C8T7<", "<MCUName>ZV32F421<", "Open file error, MCU in file not supported."},
        {"<MCUName>ZV32F421C8T7<", "<MCUName>../../x<", "Open file error, MCU in file not supported."},
        {">LQFP48<", ">LQFP64<", "Open file error, MCU package in file not supported."},
        {">LQFP48<", ">LQFP<", "Open file error, MCU package in file not supported."},
        {">LQFP48<", "><", "Open file error, can not get MCU information!"},
        {"MCUInfo", "MCUInf", "Open file error, can not get MCU information!"},
        {"<Root>", "<!DOCTYPE x [<!ENTITY a \"b\">]><Root>", "Open file error, can not get MCU information!"},
    };
    for (const RefusedFile &row : rows) {
        QByteArray changed = content;
        ASSERT_TRUE(changed.contains(row.before));
        prompt.requests.clear();
        EXPECT_EQ(reopened(changed.replace(row.before, row.after)), QByteArray());
        ASSERT_EQ(prompt.requests.size(), 1) << row.after;
        EXPECT_EQ(prompt.requests.first().title, "Error");
        EXPECT_EQ(prompt.requests.first().text, row.text) << row.after;
        EXPECT_TRUE(prompt.requests.first().detail.contains("other.ZVWP")) << row.after;
        EXPECT_EQ(design.file().fault(), DesignFile::Fault::NoDesign);
        EXPECT_EQ(design.file().content(), present);
        EXPECT_EQ(design.file().path(), path("a.ZVWP"));
        EXPECT_TRUE(design.isModified());
    }
    for (const char *name : {"missing.ZVWP", "."}) {
        EXPECT_FALSE(design.OpenDesign(path(name)));
        EXPECT_EQ(design.file().fault(), DesignFile::Fault::Unreadable);
    }
    QFile huge(path("huge.ZVWP"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(200 * 1024 * 1024));
    EXPECT_FALSE(design.OpenDesign(huge.fileName()));
    EXPECT_TRUE(prompt.requests.last().detail.contains("209715200")) << prompt.requests.last().detail.toStdString();
    EXPECT_EQ(design.file().content(), present);
}

TEST_F(DesignFileTest, ACutFileIsRefusedWhereverItIsCut)
{
    fill();
    const QByteArray content = saved();
    const QByteArray present = design.file().content();
    const int end = content.trimmed().size();
    for (int i = 0; i < 300; ++i) {
        const int cut = int(qint64(end) * i / 300);
        ASSERT_EQ(reopened(content.left(cut)), QByteArray()) << cut;
        ASSERT_EQ(prompt.requests.last().text, "Open file error, can not get MCU information!");
    }
    EXPECT_EQ(design.file().content(), present);
}

struct WrongValue
{
    const char *before;
    const char *after;
    const char *problem; ///< its place
};

TEST_F(DesignFileTest, AWrongValueKeepsItsDefaultAndIsNamed)
{
    fill();
    const QByteArray content = saved();
    openNew();
    const ProjectValues defaults = design.project();
    const WrongValue rows[] = {
        {"pinname=\"PA9\"", "pinname=\"PX9\"", "PX9"},
        {"signalname=\"USART1_TX\"", "signalname=\"USART9_TX\"", "PA9"},
        {"pinname=\"PA9\"", "pinname=\"VDD\"", "VDD"},
        {"<MinHeapSize>0x800", "<MinHeapSize>0xfffffffff", "project/MinHeapSize"},
        {"<ToolchainIDE>ZV32_IDE", "<ToolchainIDE>Notepad", "project/ToolchainIDE"},
        {"<ProjectName>Blink", "<ProjectName>../../Blink", "project/ProjectName"},
        {"<KeepUserCode>true", "<KeepUserCode>maybe", "project/KeepUserCode"},
        {"<PINInfo>", "<PINInfo/><PINInfo>", "file"},
        {"<ahbdiv>1<", "<ahbdiv>77<", "clock/ahbdiv"},
    };
    for (const WrongValue &row : rows) {
        QByteArray changed = content;
        ASSERT_TRUE(changed.contains(row.before)) << row.before;
        const QByteArray after = reopened(changed.replace(row.before, row.after));
        EXPECT_FALSE(after.isEmpty());
        EXPECT_FALSE(after.contains(row.after)) << row.after;
        const QList<DesignProblem> &problems = design.file().problems();
        ASSERT_FALSE(problems.isEmpty()) << row.after;
        EXPECT_EQ(problems.first().place, row.problem) << printed(problems).join(' ').toStdString();
        EXPECT_EQ(reopened(after), after) << row.after;
    }
    QByteArray changed = content;
    reopened(changed.replace("<MinHeapSize>0x800", "<MinHeapSize>zz"));
    EXPECT_EQ(design.project().MinHeapSize, defaults.MinHeapSize);
    EXPECT_TRUE(prompt.requests.isEmpty());
}

TEST_F(DesignFileTest, OfWhatAMergeOfTwoDesignsLeftTheFirstCounts)
{
    ASSERT_TRUE(openNew());
    for (const char *setting : {"mode/USART1/Mode=Asynchronous", "param/USART1/BaudRate=9600", "label/PA2=SERIAL",
                                "nvic/USART1_IRQn/Enabled=TRUE"})
        ASSERT_TRUE(set(setting)) << setting;
    const QByteArray content = saved();
    for (const QByteArray before :
         {"<ParametersSub name=\"BaudRate\" value=\"9600\"/>", "<ahbdiv>1</ahbdiv>",
          "<USART1_IRQHandler>1;0;0;0;0;1</USART1_IRQHandler>", "<ModeSub name=\"Mode\" value=\"Asynchronous\"/>"}) {
        ASSERT_TRUE(content.contains(before)) << before.constData();
        QByteArray other = before;
        other.replace("9600", "19200").replace("1<", "2<").replace(">1;", ">0;").replace("Async", "Sync");
        QByteArray changed = content;
        EXPECT_EQ(reopened(changed.replace(before, before + other)), content) << other.constData();
        EXPECT_EQ(design.file().problems().size(), 1) << printed(design.file().problems()).join(' ').toStdString();
        EXPECT_TRUE(design.file().dropsOnSaving());
        reopened(content);
        EXPECT_FALSE(design.file().dropsOnSaving());
    }
}

TEST_F(DesignFileTest, ACrystalThatWaitsForItsFrequencyIsNoFaultOfTheFile)
{
    ASSERT_TRUE(openNew());
    ASSERT_TRUE(set("mode/CRM/HEXT=HEXT-External-Oscillator")); // the PLL follows
    QByteArray content = saved();
    ASSERT_TRUE(content.contains("<hext>0.000000<") && content.contains("<pllrcs>0<"));
    content.replace("<pllmult>15<", "<pllmult>0<"); // as it is once a divider was changed
    EXPECT_EQ(reopened(content), content);
    EXPECT_EQ(printed(design.file().problems()), QStringList());
}

// Code of such a design would wait without end for a crystal.
TEST_F(DesignFileTest, WhatACrystalFeedsNeedsItsMode)
{
    openNew("ZV32F437ZMT7", "ZV32F437", "LQFP144");
    ASSERT_TRUE(set("mode/CRM/Clock-out1=TRUE"));
    const QByteArray content = saved();
    QByteArray changed = content;
    changed.replace("<pllrcs>1<", "<pllrcs>0<").replace("<clkout1>0<", "<clkout1>2<");
    EXPECT_EQ(reopened(changed.replace("<rtcsel>0<", "<rtcsel>1<")), content);
    QStringList places;
    for (const DesignProblem &problem : design.file().problems())
        places.append(problem.place);
    EXPECT_EQ(places, QStringList({"clock/pllrcs", "clock/clkout1", "clock/rtcsel"}));
    EXPECT_FALSE(design.clock().getMCUPLL()->clock().hext_isEnable());
}

// Whoever moves to a smaller package reads what went, not the hundred lines that follow from it.
TEST_F(DesignFileTest, ASmallerPackageIsToldInCauses)
{
    openNew("ZV32F437ZMT7", "ZV32F437", "LQFP144");
    for (const char *setting :
         {"mode/XMC_SDRAM_1/Activated=TRUE", "mode/XMC_SDRAM_1/Address=Rows_11_Banks_2",
          "mode/XMC_SDRAM_1/Data_Width=8_bits", "label/PG15=RAM_CLOCK", "mode/QSPI1/Activated=TRUE",
          "mode/QSPI1/Four_Lines=TRUE", "pin/PA6=GPIO_Output", "mode/I2S1/Mode=Half_Duplex_Master", "pin/PG11=I2S1_CK"})
        ASSERT_TRUE(set(setting)) << setting;
    QByteArray content = saved();
    content.replace("ZV32F437ZMT7", "ZV32F437VMT7").replace("LQFP144", "LQFP100");
    content = reopened(content);
    QStringList texts;
    for (const DesignProblem &problem : design.file().problems())
        texts.append(problem.place + ": " + answerText(problem.reason));
    EXPECT_EQ(texts, QStringList({"XMC_SDRAM_1: The device has no XMC_SDRAM_1; its settings stay in the file.",
                                  "PG11: I2S1_CK does not stand on pin PG11.", "PG15: The package has no pin PG15."}));
    EXPECT_TRUE(content.contains("<XMC_SDRAM_1>"));
}

TEST_F(DesignFileTest, WhatAModeWithoutPinsTakesAlongIsNotToldBesideIt)
{
    openNew("ZV32F407VGT7", "ZV32F407", "LQFP100");
    for (const char *setting : {"mode/SPI4/Mode=Full_Duplex_Master", "mode/SPI4/Hardware_CS=Hardware_CS_Output",
                                "nvic/SPI4_IRQn/Enabled=TRUE", "pin/PB7=GPIO_Output"})
        ASSERT_TRUE(set(setting)) << setting;
    QByteArray content = saved();
    reopened(content.replace("ZV32F407VGT7", "ZV32F407RGT7").replace("LQFP100", "LQFP64"));
    QStringList places;
    for (const DesignProblem &problem : design.file().problems())
        places.append(problem.place);
    EXPECT_EQ(places, QStringList("SPI4/Mode"));
}

TEST_F(DesignFileTest, AFailedSaveLeavesTheOldFileAndSaysWhy)
{
    fill();
    const QByteArray old = saved();
    set("project/ProjectName=Other");
    const auto fails = [&](const QString &target) {
        prompt.requests.clear();
        EXPECT_FALSE(design.SaveProject(target));
        EXPECT_EQ(design.file().fault(), DesignFile::Fault::Unwritable);
        ASSERT_EQ(prompt.requests.size(), 1);
        EXPECT_EQ(prompt.requests.first().title, "Error");
        EXPECT_EQ(prompt.requests.first().text, "Save file error!");
        EXPECT_EQ(prompt.requests.first().buttons, QStringList("Ok"));
        EXPECT_TRUE(prompt.requests.first().detail.contains(target)) << prompt.requests.first().detail.toStdString();
        EXPECT_TRUE(design.isModified());
        EXPECT_EQ(design.file().path(), path("a.ZVWP"));
    };
    {
        const FullDisk full(1000);
        fails(path("a.ZVWP"));
    }
    EXPECT_EQ(readAll(path("a.ZVWP")), old);
    fails(folder.path());
    fails(path("nowhere/a.ZVWP"));
    {
        const AsOrdinaryUser nobody(folder.path());
        ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
        fails(path("b.ZVWP"));
        QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    EXPECT_EQ(readAll(path("a.ZVWP")), old);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("a.ZVWP"));
}

TEST_F(DesignFileTest, KilledWhileItSavesItLeavesAWholeFile)
{
    fill();
    const QByteArray first = saved();
    set("project/ProjectName=A much longer name than the other one has");
    const QByteArray second = design.file().content();
    std::mt19937 random(3);
    for (int round = 0; round < 30; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (int i = 0;; ++i) {
                set(i % 2 ? "project/ProjectName=Blink & 'Röhre'"
                          : "project/ProjectName=A much longer name than the other one has");
                design.SaveProject(path("a.ZVWP"));
            }
        }
        ASSERT_GT(child, 0);
        ::usleep(random() % 8000);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const QByteArray content = readAll(path("a.ZVWP"));
        ASSERT_TRUE(content == first || content == second) << content.toStdString();
    }
}

TEST(ProjectValues, TakeOnlyWhatAProjectCanBe)
{
    const struct
    {
        const char *name;
        const char *value;
        DesignReason reason;
    } rows[] = {
        {"ProjectName", "Motor 2", DesignReason::None},
        {"ProjectName", "", DesignReason::InvalidText},
        {"ProjectName", "a/b", DesignReason::InvalidText},
        {"ProjectName", "..", DesignReason::InvalidText},
        {"ProjectLocation", "", DesignReason::None},
        {"ProjectLocation", "/tmp\n", DesignReason::InvalidText},
        {"ToolchainIDE", "MDK_V5", DesignReason::None},
        {"ToolchainIDE", "mdk", DesignReason::ValueNotInList},
        {"ToolchainIDE", "", DesignReason::ValueNotInList},
        {"ARMCompiler", "Use default complier version 6", DesignReason::None},
        {"ARMCompiler", "6", DesignReason::ValueNotInList},
        {"MinStackSize", "1000", DesignReason::None},
        {"MinStackSize", "-1", DesignReason::NotANumber},
        {"MinStackSize", "0x", DesignReason::NotANumber},
        {"UseFirmware", "TRUE", DesignReason::ValueNotInList},
        {"UseFirmware", "false", DesignReason::None},
        {"Nothing", "x", DesignReason::UnknownSetting},
    };
    for (const auto &row : rows) {
        ProjectValues values = ProjectValues::ofDevice("X");
        const QString before = projectValue(values, row.name);
        const DesignAnswer answer = setProjectValue(values, row.name, row.value);
        EXPECT_EQ(answer.reason, row.reason) << row.name << row.value;
        EXPECT_EQ(projectValue(values, row.name), answer ? QString(row.value) : before);
    }
}

} // namespace
