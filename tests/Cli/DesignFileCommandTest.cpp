#include "QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Outcome
{
    int code;
    QString out, err;
};

class DesignFileCommand : public ::testing::Test
{
protected:
    /// Runs the program on the sample database beside it, in a folder of its own.
    Outcome run(const QStringList &arguments)
    {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(CHIPLOOM_BIN_DIR "/chiploom-cli", arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    QByteArray content(const char *name)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll();
    }
    void write(const char *name, const QByteArray &content)
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
};

TEST_F(DesignFileCommand, MakesChangesShowsAndComparesDesigns)
{
    const Outcome made = run({"new", "zv32f421c8t7", "a", "mode/USART1/Mode=Asynchronous", "pin/PB0=GPIO_Output"});
    ASSERT_EQ(made.code, 0) << made.err.toStdString();
    const QByteArray first = content("a.ZVWP");
    ASSERT_TRUE(QFile::copy(folder.filePath("a.ZVWP"), folder.filePath("b.zvwp")));
    EXPECT_EQ(run({"set", "b.zvwp"}).code, 0);
    EXPECT_EQ(content("b.zvwp"), first) << "nothing set, nothing changed";
    EXPECT_EQ(run({"diff", "a.ZVWP", "b.zvwp"}).code, 0);

    const Outcome set = run(
        {"set", "b.zvwp", "param/USART1/BaudRate=9600", "clock/sclk=100", "pin/PB0=", "project/ToolchainIDE=CMake"});
    EXPECT_EQ(set.code, 0) << set.err.toStdString();
    const Outcome shown = run({"show", "b.zvwp"});
    EXPECT_EQ(shown.code, 0);
    EXPECT_TRUE(shown.out.contains("param/USART1/BaudRate ") && shown.out.contains(" 9600 "));
    EXPECT_TRUE(shown.out.contains("project/ToolchainIDE          CMake\n")) << shown.out.toStdString();

    const Outcome words = run({"diff", "a.ZVWP", "b.zvwp"});
    EXPECT_EQ(words.code, 1);
    EXPECT_TRUE(words.out.contains("Parameter USART1/BaudRate: 115200 in the first design, 9600 in the second\n"))
        << words.out.toStdString();
    EXPECT_TRUE(words.out.contains("Pin PB0: GPIO_Output, only in the first design\n"));
    EXPECT_TRUE(words.out.contains("Project value ToolchainIDE: ZV32_IDE in the first design, CMake in the second\n"));
    const QJsonArray json = QJsonDocument::fromJson(run({"--json", "diff", "b.zvwp", "a.ZVWP"}).out.toUtf8()).array();
    EXPECT_EQ(json.first().toObject().value("kind").toString(), "parameter");
    EXPECT_EQ(json.first().toObject().value("second").toString(), "115200");
}

TEST_F(DesignFileCommand, WhatIsRefusedLeavesTheFileAlone)
{
    ASSERT_EQ(run({"new", "ZV32F421C8T7", "a.ZVWP"}).code, 0);
    const QByteArray before = content("a.ZVWP");
    EXPECT_EQ(run({"set", "a.ZVWP", "pin/PB0=GPIO_Output", "pin/PX9=GPIO_Output"}).code, 1);
    EXPECT_EQ(run({"new", "ZV32F421C8T7", "a.ZVWP", "pin/PB0=GPIO_Output"}).code, 1) << "exists, nobody to answer";
    EXPECT_EQ(content("a.ZVWP"), before);
    EXPECT_EQ(run({"--yes", "new", "ZV32F421C8T7", "a.ZVWP", "pin/PB0=GPIO_Output"}).code, 0);
    EXPECT_NE(content("a.ZVWP"), before);

    EXPECT_EQ(run({"set", "missing.ZVWP"}).code, 3);
    EXPECT_TRUE(run({"--language", "zh", "check", "missing.ZVWP"}).err.endsWith("missing.ZVWP 不存在\n"));
    EXPECT_EQ(run({"new", "ZV32F421C8T7", "no/folder/a.ZVWP"}).code, 3);
    for (const char *name : {"", "./"})
        EXPECT_EQ(run({"new", "ZV32F421C8T7", name}).code, 2) << "a hidden file";
    EXPECT_EQ(run({"set", "a.ZVWP", "project/ProjectName=" + QString(300, 'a')}).code, 1) << "no name for a file";
    ASSERT_TRUE(QFile::copy(folder.filePath("a.ZVWP"), folder.filePath("a.xml")));
    EXPECT_EQ(run({"show", "a.xml"}).code, 0);
    EXPECT_EQ(run({"show", "b.xml"}).code, 2);
    EXPECT_EQ(run({"show", "ZV32F421", "--pin", "PA9"}).code, 2);
    write("bad.ZVWP", before.left(before.size() / 2));
    const Outcome bad = run({"show", "bad.ZVWP"});
    EXPECT_EQ(bad.code, 1);
    EXPECT_TRUE(bad.err.startsWith("Error: Open file error, can not get MCU information!\n")) << bad.err.toStdString();

    // What cannot be taken is not dropped without a word.
    QByteArray partly = before;
    write("partly.ZVWP", partly.replace("<MinHeapSize>0x200", "<MinHeapSize>many"));
    const Outcome asked = run({"set", "partly.ZVWP", "pin/PB0=GPIO_Output"});
    EXPECT_EQ(asked.code, 1);
    EXPECT_TRUE(asked.err.contains("project/MinHeapSize: \"many\" is no value for MinHeapSize."))
        << asked.err.toStdString();
    EXPECT_EQ(content("partly.ZVWP"), partly);
    EXPECT_EQ(run({"--yes", "set", "partly.ZVWP", "pin/PB0=GPIO_Output"}).code, 0);
    EXPECT_TRUE(content("partly.ZVWP").contains("<MinHeapSize>0x200"));
}

TEST_F(DesignFileCommand, AsksOnlyWhereSomethingIsLostAndTellsWhatAPinTakes)
{
    ASSERT_EQ(run({"new", "ZV32F421C8T7", "a.ZVWP", "mode/USART1/Mode=Asynchronous"}).code, 0);
    const Outcome taken = run({"set", "a.ZVWP", "pin/PB0=GPIO_Output", "pin/PA3=GPIO_Output"});
    EXPECT_EQ(taken.code, 0);
    EXPECT_EQ(taken.err, "chiploom-cli: pin/PA3=GPIO_Output: USART1 lost a pin. Off now: Mode (Asynchronous)\n");

    // What the device has not stays in the file, however often it is saved.
    QByteArray other = content("a.ZVWP");
    const QByteArray section = "<EMAC>\n        <Mode>\n            <ModeSub name=\"Mode\" value=\"RMII\"/>";
    write("other.ZVWP", other.replace("</Root>", "    " + section + "\n        </Mode>\n    </EMAC>\n</Root>"));
    for (const char *setting : {"pin/PB1=GPIO_Output", "pin/PB1="}) {
        const Outcome set = run({"set", "other.ZVWP", setting});
        EXPECT_EQ(set.code, 0);
        EXPECT_EQ(set.err, "chiploom-cli: other.ZVWP: EMAC: The device has no EMAC; its settings stay in the file.\n");
        EXPECT_TRUE(content("other.ZVWP").contains(section));
    }
}

TEST_F(DesignFileCommand, CheckNamesEachPlaceAndReason)
{
    ASSERT_EQ(run({"new", "ZV32F421C8T7", "a.ZVWP", "pin/PB0=GPIO_Output"}).code, 0);
    const Outcome good = run({"check", "a.ZVWP"});
    EXPECT_EQ(good.code, 0);
    EXPECT_EQ(good.out, "No problems.\n");

    ASSERT_EQ(
        run({"set", "a.ZVWP", "pin/PA9=USART1_TX", "clock/adcdiv=2", "clock/sclk=120", "mode/ADC1/IN1=TRUE"}).code, 0);
    const Outcome bad = run({"check", "a.ZVWP"});
    EXPECT_EQ(bad.code, 1);
    EXPECT_TRUE(bad.out.contains("PA9: USART1_TX is placed by hand, but no mode uses it.\n")) << bad.out.toStdString();
    EXPECT_TRUE(bad.out.contains("\nclock: ")) << bad.out.toStdString();
    const QJsonObject json = QJsonDocument::fromJson(run({"--json", "check", "a.ZVWP"}).out.toUtf8()).object();
    EXPECT_EQ(json.value("problems").toArray().first().toObject().value("place").toString(), "PA9");
    EXPECT_EQ(json.value("problems").toArray().size(), bad.out.count('\n'));
}

TEST_F(DesignFileCommand, ARateThatIsFarOffIsToldAndFailsNothing)
{
    ASSERT_EQ(run({"new", "ZV32F403AVGT7", "slow.ZVWP", "mode/USART1/Mode=Asynchronous", "clock/sclkselect=HICK",
                   "clock/apb2div=16", "param/USART1/BaudRate=28800"})
                  .code,
              0);
    const Outcome checked = run({"check", "slow.ZVWP"});
    EXPECT_EQ(checked.code, 0) << checked.out.toStdString();
    EXPECT_TRUE(checked.out.startsWith("Warning: USART1/RealBaudRate: RealBaudRate is off by "))
        << checked.out.toStdString();
    EXPECT_TRUE(run({"show", "slow.ZVWP"}).out.contains("Warning: USART1/RealBaudRate: "));
    const QJsonObject json = QJsonDocument::fromJson(run({"--json", "check", "slow.ZVWP"}).out.toUtf8()).object();
    EXPECT_TRUE(json.value("problems").toArray().first().toObject().value("warning").toBool());
}

TEST_F(DesignFileCommand, EveryExampleOpensChecksAndIsSavedAsItIs)
{
    const QDir examples(CHIPLOOM_SOURCE_DIR "/examples");
    const QStringList names = examples.entryList({"*.ZVWP"}, QDir::Files);
    EXPECT_GE(names.size(), 6);
    for (const QString &name : names) {
        ASSERT_TRUE(QFile::copy(examples.filePath(name), folder.filePath(name)));
        const QByteArray before = content(name.toUtf8());
        EXPECT_FALSE(before.contains("<ProjectLocation>/")) << name.toStdString();
        const Outcome checked = run({"check", name});
        EXPECT_EQ(checked.code, 0) << name.toStdString() << checked.out.toStdString() << checked.err.toStdString();
        const Outcome saved = run({"set", name});
        EXPECT_EQ(saved.code, 0) << name.toStdString() << saved.err.toStdString();
        EXPECT_EQ(content(name.toUtf8()), before) << name.toStdString();
        // The settings beside it say how it was made.
        QFile settings(examples.filePath(name.section('.', 0, 0) + ".txt"));
        ASSERT_TRUE(settings.open(QIODevice::ReadOnly)) << name.toStdString();
        QStringList made;
        for (const QString &line : QString::fromUtf8(settings.readAll()).split('\n', Qt::SkipEmptyParts)) {
            if (!line.startsWith('#'))
                made.append(line);
        }
        EXPECT_EQ(run(QStringList{"--yes", "new", made.takeFirst(), "made.ZVWP"} + made).code, 0);
        EXPECT_EQ(content("made.ZVWP"), before) << name.toStdString() << ": run tools/make_examples";
        QFile::remove(folder.filePath("made.ZVWP"));
    }
}

} // namespace
