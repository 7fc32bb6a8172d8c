#include "QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Outcome
{
    int code;
    QString out, err;
};

class CommandLine : public ::testing::Test
{
protected:
    void SetUp() override
    {
        writeCatalogue(R"(<?xml version="1.0" encoding="UTF-8"?>
<C>
  <E term="ProductLinesList"><L Line="Value" InfoEN="Small" InfoCH="小"/></E>
  <E term="Value"><S Serial="ZV32F421"/><S Serial="ZV32L021"/></E>
  <E term="ZV32F421">
    <D Name="ZV32F421C8T7" Package="LQFP48" Flash="64KB" SRAM="16KB" Core="M4" Frequency="120MHz" GPIO="39"/>
    <D Name="ZV32F421K8U7" Package="QFN32" Flash="64KB" SRAM="16KB" Core="M4" Frequency="120MHz" GPIO="27"/>
  </E>
  <E term="ZV32L021">
    <D Name="ZV32L021C8T7" Package="LQFP48" Flash="64KB" SRAM="8KB" MaxSRAM="9KB" Core="M0+" Frequency="80MHz" GPIO="39"/>
  </E>
</C>)");
    }

    void writeCatalogue(const QByteArray &content)
    {
        QFile file(m_folder.filePath("MCUList.xml"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    Outcome run(QStringList arguments) const
    {
        QProcess process;
        QProcessEnvironment environment;
        environment.insert("PATH", qEnvironmentVariable("PATH"));
        environment.insert("LD_LIBRARY_PATH", qEnvironmentVariable("LD_LIBRARY_PATH"));
        process.setProcessEnvironment(environment);
        process.start(CHIPLOOM_BIN_DIR "/chiploom-cli", arguments << "--database" << m_folder.path());
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QStringList devices(const QStringList &filter) const
    {
        const Outcome outcome = run(QStringList{"devices", "--json"} + filter);
        EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
        QStringList names;
        for (const QJsonValue &value : QJsonDocument::fromJson(outcome.out.toUtf8()).array())
            names.append(value.toObject().value("device").toString());
        return names;
    }

    QTemporaryDir m_folder;
};

TEST_F(CommandLine, FiltersTheDevices)
{
    EXPECT_EQ(devices({}), (QStringList{"ZV32F421C8T7", "ZV32F421K8U7", "ZV32L021C8T7"}));
    EXPECT_EQ(devices({"--series", "zv32f421", "--package", "lqfp48"}), QStringList{"ZV32F421C8T7"});
    EXPECT_EQ(devices({"--search", "c8t"}), (QStringList{"ZV32F421C8T7", "ZV32L021C8T7"}));
    EXPECT_EQ(devices({"--search", "nothing"}), QStringList());
}

TEST_F(CommandLine, ShowsATableInBothLanguages)
{
    const Outcome english = run({"devices", "--series", "ZV32L021"});
    EXPECT_EQ(english.code, 0);
    EXPECT_EQ(english.err, "");
    EXPECT_EQ(english.out, "Device        Series    Package  Flash  SRAM  Max. SRAM  Core  Frequency  GPIOs\n"
                           "ZV32L021C8T7  ZV32L021  LQFP48   64KB   8KB   9KB        M0+   80MHz      39\n");
    const Outcome chinese = run({"--language", "zh", "devices", "--series", "ZV32L021"});
    EXPECT_TRUE(chinese.out.startsWith(QStringLiteral("器件          系列      封装"))) << chinese.out.toStdString();
}

TEST_F(CommandLine, WrongUsageIsToldAndReturns2)
{
    struct Row
    {
        QStringList arguments;
        QString message;
    };
    const QList<Row> rows{
        {{}, "No command was given."},
        {{"frobnicate"}, "There is no command \"frobnicate\"."},
        {{"check", QString(QChar(QChar::ReplacementCharacter))},
         QString("\"%1\" is not in the encoding of the system").arg(QChar(QChar::ReplacementCharacter))},
        {{"devices", "extra"}, "\"devices\" takes no arguments."},
        {{"devices", "--bogus"}, "Unknown option 'bogus'."},
        {{"--language", "fr", "devices"}, "\"fr\" is no language; give en or zh."},
        {{"devices", "--series", "ZV32X"},
         "There is no series \"ZV32X\" in the catalogue, which has: ZV32F421, ZV32L021"},
        {{"devices", "--package", "DIP8"}, "There is no package \"DIP8\" in the catalogue, which has: LQFP48, QFN32"},
    };
    for (const Row &row : rows) {
        const Outcome outcome = run(row.arguments);
        EXPECT_EQ(outcome.code, 2) << row.message.toStdString();
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.err.startsWith("chiploom-cli: " + row.message)) << outcome.err.toStdString();
    }
}

TEST_F(CommandLine, ACatalogueThatCannotBeUsedIsToldWithItsPlace)
{
    const QString file = m_folder.filePath("MCUList.xml");
    writeCatalogue("<C>\n<E term=\n</C>");
    const Outcome broken = run({"devices"});
    EXPECT_EQ(broken.code, 1);
    EXPECT_TRUE(broken.err.startsWith("chiploom-cli: The file " + file + " is damaged in line 3:"))
        << broken.err.toStdString();

    writeCatalogue("<C/>");
    const Outcome empty = run({"devices", "--series", "ZV32F421"});
    EXPECT_EQ(empty.code, 1);
    EXPECT_EQ(empty.err, "chiploom-cli: The file " + file + " lists no product line with devices.\n");

    ASSERT_TRUE(QFile::remove(file));
    const Outcome missing = run({"devices"});
    EXPECT_EQ(missing.code, 3);
    EXPECT_EQ(missing.err, "chiploom-cli: The file " + file + " does not exist.\n");
    EXPECT_TRUE(run({"--language", "zh", "devices"}).err.contains(QStringLiteral("不存在")));
}

TEST_F(CommandLine, AResultThatCannotBeWrittenIsAFileError)
{
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(CHIPLOOM_BIN_DIR "/chiploom-cli", {"--database", m_folder.path(), "devices"});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 3);
    EXPECT_EQ(process.readAllStandardError(), "chiploom-cli: The result cannot be written to standard output.\n");
}

// What the help lists is what the program takes: each command answers its own help, and each of its options is known.
TEST_F(CommandLine, TheHelpIsTrueAndComplete)
{
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    QStringList commands;
    bool listing = false;
    for (const QString &line : help.out.split('\n')) {
        if (listing && line.startsWith("  "))
            commands.append(line.trimmed().section(' ', 0, 0));
        listing = line == "Commands:" || (listing && !line.isEmpty());
    }
    ASSERT_TRUE(commands.contains("devices")) << help.out.toStdString();
    static const QRegularExpression option("^  (--[a-z-]+)( \\S+)?", QRegularExpression::MultilineOption);
    for (const QString &command : qAsConst(commands)) {
        const Outcome own = run({command, "--help"});
        EXPECT_EQ(own.code, 0) << command.toStdString();
        EXPECT_TRUE(own.out.startsWith("Usage: chiploom-cli [OPTIONS] " + command)) << own.out.toStdString();
        auto found = option.globalMatch(own.out);
        int options = 0;
        while (found.hasNext()) {
            const QRegularExpressionMatch match = found.next();
            ++options;
            if (match.captured(1) == "--language")
                continue;
            QStringList arguments{command, match.captured(1)};
            if (match.capturedLength(2) > 0)
                arguments.append("x");
            const Outcome tried = run(arguments << "--help");
            EXPECT_EQ(tried.code, 0) << tried.err.toStdString();
        }
        EXPECT_GE(options, 6);
    }
    EXPECT_EQ(run({"--version"}).out, "chiploom-cli V1.2.05\n");
}

} // namespace
