#include "Design/Design.h"
#include "GenerateCode/CodeGeneration.h"
#include "Middlewares/Middlewares.h"
#include "Project/GenerateProjectThread.h"
#include "Project/ProjectGeneration.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ChipLoom::Test {

namespace {

struct GccRow
{
    const char *title, *series, *device, *package, *toolchain, *name;
};

const char *const Awkward = "Größe & 'x'; $y 2#1 (c)";

constexpr GccRow Rows[] = {
    {"Makefile_small", "ZV32F421", "ZV32F421C8T7", "LQFP48", "Makefile", Awkward},
    {"Makefile_tiny", "ZV32F421", "ZV32F421K4U7", "QFN32", "Makefile", "tiny"},
    {"Makefile_large", "ZV32F403A", "ZV32F403AVGT7", "LQFP100", "Makefile", "plain"},
    {"CMake_tiny", "ZV32F421", "ZV32F421K4U7", "QFN32", "CMake", Awkward},
    {"CMake_large", "ZV32F407", "ZV32F407RCT7", "LQFP64", "CMake", "flash"},
    {"Makefile_flat", "ZV32F435", "ZV32F435CCU7", "QFN48", "Makefile", "flat"},
    {"CMake_largest", "ZV32F437", "ZV32F437ZMT7", "LQFP144", "CMake", "largest"},
    {"CMake_other", "ZV32F403A", "ZV32F403AVGT7", "LQFP100", "CMake", "other"},
};

/// A whole project, as a user has it made, and built by the tools that they have.
class GccBuild : public ::testing::TestWithParam<GccRow>
{
protected:
    void generate(const QString &fullPath)
    {
        const AppPaths paths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR));
        ScriptedPrompt prompt;
        Design design(paths, prompt);
        registerMiddlewares(design);
        const GccRow &row = GetParam();
        ASSERT_TRUE(design.NewDesign(row.series, row.device, row.package));
        ASSERT_TRUE(design.apply({"project", "ToolchainIDE", row.toolchain}));
        ASSERT_TRUE(design.apply({"project", "ProjectName", row.name}));
        CodeGeneration code(design, fullPath + "/project");
        const FirmwarePackage package = firmwarePackageIn(QStringLiteral(CHIPLOOM_BIN_DIR "/firmware"), row.series);
        GenerateProjectThread builder(projectOrder(design, fullPath, package, {}, code));
        ASSERT_TRUE(code.record().ok) << code.record().error.toStdString();
        ASSERT_EQ(builder.build().code, 0) << builder.account().detail.toStdString();
        EXPECT_EQ(builder.account().notes, QStringList());
        ASSERT_TRUE(code.run(true).ok) << code.record().error.toStdString();
    }
    /// Runs without a word of warning; what it wrote.
    QString run(const QString &dir, const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.setWorkingDirectory(dir);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(120000)) << program.toStdString();
        const QString output = QString::fromUtf8(process.readAll());
        EXPECT_EQ(process.exitCode(), 0) << output.toStdString();
        EXPECT_FALSE(output.contains("warning:", Qt::CaseInsensitive)) << output.toStdString();
        return output;
    }
    bool isMake() const { return QString(GetParam().toolchain) == "Makefile"; }
    /// A name for a folder that is as awkward as the toolchain can bear.
    QString awkward(const QString &name) const
    {
        return name + QString::fromUtf8(isMake() ? " für \"mich\" & 'dich'; $y ${z} 2#1" : " für 'mich' & $y `z` (c)");
    }
    /// Builds and gives the bytes of the program. `preset` is "debug" or "release".
    QByteArray buildIn(const QString &dir, const QString &preset)
    {
        const QString output = dir + (isMake() ? "/build" : "/build/" + preset);
        if (isMake()) {
            run(dir, "make", {"clean"});
            run(dir, "make", {QLatin1String("DEBUG=") + (preset == "debug" ? '1' : '0')});
        } else {
            run(dir, "cmake", {"--preset", preset});
            run(dir, "cmake", {"--build", "--preset", preset});
        }
        for (const char *suffix : {"elf", "hex", "bin", "map"})
            EXPECT_EQ(QDir(output).entryList({QString("*.") + suffix}).size(), 1) << suffix;
        QFile commands(isMake() ? dir + "/compile_commands.json" : output + "/compile_commands.json");
        EXPECT_TRUE(commands.open(QIODevice::ReadOnly));
        const QJsonArray entries = QJsonDocument::fromJson(commands.readAll()).array();
        EXPECT_GT(entries.size(), 5);
        for (const QJsonValue &entry : entries)
            EXPECT_TRUE(entry["directory"].toString().startsWith(isMake() ? dir : output));
        QFile binary(output + '/' + QDir(output).entryList({"*.bin"}).value(0));
        EXPECT_TRUE(binary.open(QIODevice::ReadOnly));
        return binary.readAll();
    }
    /// Builds again what has been built; what the tools wrote.
    QString again(const QString &dir)
    {
        return isMake() ? run(dir, "make", {"DEBUG=0"}) : run(dir, "cmake", {"--build", "--preset", "release"});
    }

    QTemporaryDir folder;
};

} // namespace

TEST_P(GccBuild, BuildsFromScratchAndAfterAMove)
{
    const QString here = QDir(folder.path()).canonicalPath() + '/' + awkward("here");
    generate(here);
    if (HasFatalFailure())
        return;
    EXPECT_GT(buildIn(here, "debug").size(), 500);
    const QByteArray first = buildIn(here, "release");
    EXPECT_GT(first.size(), 500);
    // An unchanged project has nothing to compile; another linker script is another program.
    const char *const compiled = isMake() ? "gcc" : "Building";
    const char *const linked = isMake() ? "-T" : "Linking";
    QString output = again(here);
    EXPECT_FALSE(output.contains(compiled) || output.contains(linked)) << output.toStdString();
    QFile script(here + "/project/ldscripts/" + QDir(here + "/project/ldscripts").entryList({"*.ld"}).value(0));
    ASSERT_TRUE(script.open(QIODevice::Append));
    script.write("\n");
    script.close();
    output = again(here);
    EXPECT_TRUE(output.contains(linked)) << output.toStdString();

    const QString there = QDir(folder.path()).canonicalPath() + "/moved to '" + awkward("there");
    ASSERT_TRUE(QDir().rename(here, there));
    // CMake's folder of the build belongs to its place.
    ASSERT_TRUE(isMake() || QDir(there + "/build").removeRecursively());
    EXPECT_EQ(buildIn(there, "release"), first);
}

INSTANTIATE_TEST_SUITE_P(Slow, GccBuild, ::testing::ValuesIn(Rows), [](const auto &info) { return info.param.title; });

} // namespace ChipLoom::Test
