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
}

} // namespace
