#include "QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Outcome
{
    int code;
    QString out, err;
};

class GenerateCommand : public testing::Test
{
protected:
    Outcome run(const QStringList &arguments)
    {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(CHIPLOOM_BIN_DIR "/chiploom-cli", arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    QByteArray content(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
};

TEST_F(GenerateCommand, WritesTheTreeAndLeavesTheDesignAsItIs)
{
    ASSERT_EQ(run({"new", "ZV32F421C8T7", "lamp.ZVWP", "pin/PB0=GPIO_Output"}).code, 0);
    ASSERT_EQ(run({"new", "ZV32F421C8T7", "board.v2.ZVWP"}).code, 0);
    EXPECT_EQ(run({"generate", "board.v2.ZVWP", "-o", "board"}).code, 0);
    EXPECT_EQ(run({"check", "board/board.v2.ZVWP"}).code, 0) << "a dot in a name begins no suffix";
    const QByteArray design = content("lamp.ZVWP");

    const Outcome dry = run({"generate", "lamp.ZVWP", "-o", "out", "--dry-run"});
    EXPECT_EQ(dry.code, 0) << dry.err.toStdString();
    EXPECT_TRUE(dry.out.contains("new       src/main.c\n")) << dry.out.toStdString();
    EXPECT_FALSE(QDir(folder.filePath("out")).exists());
    EXPECT_EQ(run({"generate", "lamp.ZVWP", "-o", "out", "--check"}).code, 1);

    const Outcome first = run({"generate", "lamp.ZVWP", "-o", "out"});
    EXPECT_EQ(first.code, 0) << first.err.toStdString();
    EXPECT_TRUE(content("out/project/src/main.c").contains("lm_gpio_config();"));
    EXPECT_TRUE(content("out/lamp.ZVWP").contains("lm_gpio_config")) << "the copy holds the order of calls";
    EXPECT_EQ(content("lamp.ZVWP"), design);
    EXPECT_EQ(run({"generate", "lamp.ZVWP", "-o", "out", "--check"}).code, 0);

    QFile source(folder.filePath("out/project/src/zv32f421_lm_config.c"));
    ASSERT_TRUE(source.open(QIODevice::ReadWrite));
    QByteArray text = source.readAll();
    text.replace("begin gpio_config 0 */\n", "begin gpio_config 0 */\n  mine();\n");
    source.seek(0);
    source.write(text);
    source.close();
    const Outcome lost = run({"generate", "lamp.ZVWP", "pin/PB0=", "-o", "out", "--dry-run"});
    EXPECT_TRUE(lost.out.contains("not carried over: the user code of \"gpio_config 0\"")) << lost.out.toStdString();
}

TEST_F(GenerateCommand, ReplacesItsOwnCopyOfTheDesignAndNoOther)
{
    const auto main = [this] { return content("out/project/src/main.c"); };
    ASSERT_EQ(run({"new", "ZV32F421C8T7", "lamp.ZVWP"}).code, 0);
    ASSERT_EQ(run({"generate", "lamp.ZVWP", "-o", "out"}).code, 0);
    ASSERT_EQ(run({"set", "lamp.ZVWP", "pin/PB0=GPIO_Output"}).code, 0);
    EXPECT_EQ(run({"generate", "lamp.ZVWP", "-o", "out"}).code, 0) << "the former copy";
    EXPECT_TRUE(content("out/lamp.ZVWP").contains("<GeneratedFrom>../lamp.ZVWP</GeneratedFrom>"));

    // Somebody works on the copy; and somebody else has a design of that name.
    ASSERT_EQ(run({"set", "out/lamp.ZVWP", "pin/PB1=GPIO_Output"}).code, 0);
    QDir(folder.path()).mkpath("else");
    ASSERT_EQ(run({"new", "ZV32F421C8T7", "else/lamp.ZVWP"}).code, 0);
    const QByteArray theirs = content("out/lamp.ZVWP");
    const QByteArray before = main();
    for (const char *file : {"lamp.ZVWP", "else/lamp.ZVWP"}) {
        const Outcome refused = run({"generate", file, "-o", "out"});
        EXPECT_EQ(refused.code, 1);
        EXPECT_TRUE(refused.err.contains("out/lamp.ZVWP already exists. Would you like to replace it?"))
            << refused.err.toStdString();
        EXPECT_EQ(content("out/lamp.ZVWP"), theirs);
        EXPECT_EQ(main(), before) << "nothing is written";
    }
    EXPECT_EQ(run({"--yes", "generate", "else/lamp.ZVWP", "-o", "out"}).code, 0);
    EXPECT_TRUE(content("out/lamp.ZVWP").contains("<GeneratedFrom>../else/lamp.ZVWP</GeneratedFrom>"));
}

TEST_F(GenerateCommand, RefusesWhatCannotBeGenerated)
{
    const Outcome manual = run({"generate", "ZV32F421C8T7", "pin/PB7=USART1_RX", "-o", "out"});
    EXPECT_EQ(manual.code, 1);
    EXPECT_TRUE(manual.err.contains("PB7-USART1_RX"));
    EXPECT_FALSE(QDir(folder.filePath("out")).exists());

    QDir(folder.path()).mkpath("out/project/src/main.c");
    const Outcome blocked = run({"generate", "ZV32F421C8T7", "-o", "out"});
    EXPECT_EQ(blocked.code, 3);
    EXPECT_TRUE(blocked.err.contains("Generate code failed!") && blocked.err.contains("src/main.c"));
    EXPECT_EQ(run({"generate", "nothing.ZVWP"}).code, 3);

    // A link where the copy of the design would go may lead to anything.
    QFile precious(folder.filePath("precious"));
    ASSERT_TRUE(precious.open(QIODevice::WriteOnly) && precious.link(folder.filePath("ZV32F421K8U7.ZVWP")));
    const Outcome linked = run({"generate", "ZV32F421K8U7", "-o", "."});
    EXPECT_EQ(linked.code, 3);
    EXPECT_TRUE(linked.err.contains("ZV32F421K8U7.ZVWP is a link")) << linked.err.toStdString();
    EXPECT_EQ(content("precious"), "");
}

TEST_F(GenerateCommand, MakesAWholeProjectAndMakesItAgainWithoutTouchingIt)
{
    const QStringList arguments{"generate",
                                "ZV32F421C8T7",
                                "pin/PB0=GPIO_Output",
                                "project/ProjectName=my lamp",
                                "-o",
                                "out dir/lamp",
                                "--toolchain",
                                "cmake",
                                "--heap",
                                "1024",
                                "--stack",
                                "0x800",
                                "--split"};
    const Outcome first = run(arguments);
    ASSERT_EQ(first.code, 0) << first.err.toStdString();
    EXPECT_TRUE(content("out dir/lamp/CMakeLists.txt").contains("my lamp"));
    EXPECT_TRUE(content("out dir/lamp/project/ldscripts/ZV32F421x8_FLASH.ld").contains("_Min_Heap_Size = 0x400;"));
    EXPECT_TRUE(content("out dir/lamp/project/ldscripts/ZV32F421x8_FLASH.ld").contains("_Min_Stack_Size = 0x800;"));
    EXPECT_TRUE(content("out dir/lamp/my lamp.ZVWP").contains("<PackageVersion>V2.0.0</PackageVersion>"));
    const Outcome second = run(arguments);
    EXPECT_EQ(second.code, 0) << second.err.toStdString();
    for (const char *state : {"written ", "new ", "changed ", "removed "})
        EXPECT_FALSE(second.out.contains('\n' + QLatin1String(state))) << second.out.toStdString();

    // Its own copy, generated in place, gives the same.
    const Outcome inPlace =
        run({"generate", "out dir/lamp/my lamp.ZVWP", "-o", "out dir/lamp", "--toolchain", "CMake"});
    EXPECT_EQ(inPlace.code, 0) << inPlace.err.toStdString();
    EXPECT_TRUE(inPlace.out.startsWith("Files of the firmware package written: 0\n"));
}

TEST_F(GenerateCommand, RefusesWhatNoProjectCanHave)
{
    struct Row
    {
        QStringList arguments;
        int code;
        const char *message;
    };
    const QList<Row> rows{
        {{"--toolchain", "MSBuild"}, 2, "There is no toolchain \"MSBuild\"; there are: ZV32_IDE, "},
        {{"-o", ""}, 2, "-o names no folder."},
        {{"--database", ""}, 2, "--database names no folder."},
        {{"--heap", "10"}, 2, "--heap is for a project"},
        {{"--toolchain", "CMake", "--heap", "0xzz"}, 2, "\"0xzz\" is no size for --heap"},
        {{"--toolchain", "MDK_V5", "--compiler", "7"}, 2, "--compiler is 5 or 6"},
        {{"--toolchain", "CMake", "--check"}, 2, "leave out --toolchain"},
        {{"--toolchain", "CMake", "--stack", "16385"}, 1, "project/MinStackSize: "},
        {{"--toolchain", "CMake", "--firmware", "nowhere"},
         1,
         "The Firmware Package(ZV32F421_Firmware_Library_V2.x.x)"},
        {{"--toolchain", "CMake", "-o", "out/a;b"}, 1, "CMake: CMake cannot build in a folder whose path holds"},
        {{"--toolchain", "CMake", "-o", "out/${x}"}, 1, "CMake: CMake cannot build in a folder whose path holds"},
    };
    for (const Row &row : rows) {
        const Outcome outcome = run(QStringList{"generate", "ZV32F421C8T7", "-o", "out"} + row.arguments);
        EXPECT_EQ(outcome.code, row.code) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains(row.message)) << outcome.err.toStdString();
        EXPECT_FALSE(QDir(folder.filePath("out")).exists()) << row.message;
    }
    // A heap of all the memory is not refused: each size is looked at alone.
    EXPECT_EQ(run({"generate", "ZV32F421C8T7", "-o", "out", "--toolchain", "CMake", "--heap", "16384"}).code, 0);
}

} // namespace
