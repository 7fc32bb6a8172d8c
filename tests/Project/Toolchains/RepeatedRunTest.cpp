// A run that finds nothing changed since the last one makes nothing; whatever has changed must be found.

#include "Base/FileState.h"
#include "Design/Design.h"
#include "Design/ToolchainRules.h"
#include "GenerateCode/CodeGeneration.h"
#include "Middlewares/Middlewares.h"
#include "Model/SeriesHelpers.h"
#include "Project/PackageFixture.h"
#include "Project/PackageListing.h"
#include "Project/ProjectFolder.h"
#include "Project/ProjectGeneration.h"
#include "Project/ProjectManifest.h"
#include "Project/ProjectStamp.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

namespace ChipLoom::Test {

namespace {

class RepeatedRun : public ::testing::Test
{
protected:
    RepeatedRun()
    {
        const FirmwarePackage bundled = firmwarePackageIn(QStringLiteral(CHIPLOOM_BIN_DIR "/firmware"), "ZV32F421");
        package = {bundled.name, bundled.version, m_dir.filePath(bundled.name), false};
        std::filesystem::copy(bundled.path.toStdString(), package.path.toStdString(),
                              std::filesystem::copy_options::recursive);
        newDesign();
    }

    void newDesign()
    {
        m_design.emplace(AppPaths(QStringLiteral(CHIPLOOM_BIN_DIR), m_dir.path()), m_prompt);
        registerMiddlewares(*m_design);
        ASSERT_TRUE(m_design->NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48"));
        set("project", "ToolchainIDE", "CMake");
        set("project", "ProjectName", "again");
    }
    void set(const char *module, const char *name, const char *value)
    {
        EXPECT_TRUE(m_design->apply({module, name, value})) << module << '/' << name;
    }

    /// Whether there was nothing to do. `meanwhile` comes when all has been copied.
    bool run(const std::function<void()> &meanwhile = [] {})
    {
        CodeGeneration code(*m_design, m_folder + "/project");
        const ProjectOrder order = projectOrder(*m_design, m_folder, package, {}, code);
        GenerateProjectThread builder(order);
        account = builder.build();
        EXPECT_EQ(account.code, 0) << account.detail.toStdString();
        meanwhile();
        record = code.run(true);
        EXPECT_TRUE(record.ok) << record.error.toStdString();
        rememberProject(order, account, code);
        return order.nothingChanged;
    }
    QStringList paths() const
    {
        QStringList paths;
        for (const GeneratedFileRecord &file : record.files)
            paths.append(file.path);
        return paths;
    }
    QString in(const QString &file) const { return m_folder + '/' + file; }
    QString inPackage(const QString &file) const { return package.path + '/' + file; }
    /// Puts a byte in the place of another, as the fastest of all editors might.
    static void changeByte(const QString &path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) << path.toStdString();
        char byte = 0;
        ASSERT_TRUE(file.seek(3) && file.getChar(&byte) && file.seek(3) && file.putChar(byte == 'x' ? 'y' : 'x'));
    }

    static void nextStep()
    {
        for (const qint64 step = fileClock(); fileClock() == step;)
            continue;
    }

    FirmwarePackage package;
    BuilderAccount account;
    GenerationRecord record;
    std::optional<Design> m_design;

private:
    QTemporaryDir m_dir;
    ScriptedPrompt m_prompt;
    QString m_folder = m_dir.filePath("again");
};

TEST_F(RepeatedRun, MakesNothingAndTellsWhatStands)
{
    EXPECT_FALSE(run());
    const QStringList sources = paths();
    const QList<MainFuncNameForRank> rank = m_design->project().functionRank;
    EXPECT_FALSE(rank.isEmpty());
    // The design as the run left it, and as it was read from a file that no run has brought up to date.
    for (const bool fresh : {false, true}) {
        if (fresh)
            newDesign();
        EXPECT_TRUE(run()) << fresh;
        EXPECT_EQ(account.written, QStringList());
        for (const char *file : {"CMakeLists.txt", "libraries/drivers/src/zv32f421_crm.c"})
            EXPECT_TRUE(account.unchanged.contains(file)) << file;
        EXPECT_EQ(paths(), sources);
        for (const GeneratedFileRecord &file : record.files)
            EXPECT_EQ(file.state, GeneratedFileRecord::State::Unchanged);
        ASSERT_EQ(m_design->project().functionRank.size(), rank.size());
        for (int i = 0; i < rank.size(); ++i)
            EXPECT_EQ(m_design->project().functionRank[i].FuncName, rank[i].FuncName);
    }
    EXPECT_TRUE(contentOf(in(".chiploom-stamp")).contains(QFile::encodeName(QCoreApplication::applicationFilePath())))
        << "another program has other templates";
}

TEST_F(RepeatedRun, SeesWhateverChanged)
{
    const QString driver = "libraries/drivers/src/zv32f421_crm.c";
    const QString main = in("project/src/main.c");
    struct Row
    {
        const char *title;
        std::function<void()> change;
        std::function<bool()> isMended = [] { return true; };
    };
    const QList<Row> rows{
        {"a source edited", [&] { changeByte(main); }, [&] { return !contentOf(main).left(9).contains('x'); }},
        {"a source removed", [&] { QFile::remove(main); }, [&] { return QFileInfo::exists(main); }},
        {"a project file edited", [&] { changeByte(in("CMakeLists.txt")); }},
        {"a copied file edited", [&] { changeByte(in(driver)); }},
        {"a copied file removed", [&] { QFile::remove(in(driver)); }, [&] { return QFileInfo::exists(in(driver)); }},
        {"a file among the sources", [&] { writeFile(in("project/src/mine.c"), "mine"); }},
        {"a file of the package edited", [&] { changeByte(inPackage(driver)); },
         [&] { return contentOf(in(driver)) == contentOf(inPackage(driver)); }},
        {"a file more in the package", [&] { writeFile(inPackage("libraries/drivers/inc/more.h"), "more"); },
         [&] { return contentOf(in("libraries/drivers/inc/more.h")) == "more"; }},
        {"another package",
         [&] {
             ASSERT_TRUE(QFile::rename(package.path, package.path + ".1"));
             package.path += ".1";
         }},
        {"another size of the heap", [&] { set("project", "MinHeapSize", "0x600"); },
         [&] { return contentOf(in("project/ldscripts/ZV32F421x8_FLASH.ld")).contains("_Min_Heap_Size = 0x600"); }},
        {"another option of the code", [&] { set("project", "CodeSplitIP", "true"); }},
        {"a peripheral more", [&] { set("mode", "CRC/Activated", "TRUE"); },
         [&] { return contentOf(in("cmake/zv32_chiploom/CMakeLists.txt")).contains("zv32f421_crc.c"); }},
        {"another parameter", [&] { set("param", "CRC/CRCInitValue", "12"); }},
        {"a pin", [&] { set("pin", "PA0", "GPIO_Output"); }},
        {"a label", [&] { set("label", "PA0", "LED"); }},
        {"a setting of a pin", [&] { set("gpio", "PA0/GPIO_PullType", "GPIO_PULL_DOWN"); }},
        {"the priorities", [&] { set("nvic", "PriorityGroup", "NVIC_PRIORITY_GROUP_2"); }},
        {"a request for DMA",
         [&] {
             set("mode", "USART1/Mode", "Asynchronous");
             run();
             set("dma", "any", "USART1_TX");
         }},
        {"a setting of the request", [&] { set("dma", "USART1_TX/Priority", "DMA_PRIORITY_HIGH"); }},
        {"another clock", [&] { set("clock", "ahbdiv", "2"); }},
        {"another order of calls",
         [&] {
             QList<MainFuncNameForRank> rank = m_design->project().functionRank;
             rank.last().MainDoNotCallFlag = true;
             m_design->setFunctionRank(rank);
         }},
        {"another toolchain", [&] { set("project", "ToolchainIDE", "Makefile"); }},
        {"the first toolchain", [&] { set("project", "ToolchainIDE", "CMake"); }},
        {"no manifest", [&] { QFile::remove(in(".chiploom-manifest")); },
         [&] { return QFileInfo::exists(in(".chiploom-manifest")); }},
        {"a stamp of another form", [&] { changeByte(in(".chiploom-stamp")); }},
        {"no stamp", [&] { QFile::remove(in(".chiploom-stamp")); }},
    };
    run();
    for (const Row &row : rows) {
        row.change();
        EXPECT_FALSE(run()) << row.title;
        EXPECT_TRUE(row.isMended()) << row.title;
        nextStep(); // of a package that may have changed while it was used no stamp is left
        run();      // a note of what the user changed in a copied file is given once
        EXPECT_TRUE(run()) << row.title;
    }
}

TEST_F(RepeatedRun, TakesNothingOfItsOwnForAChangeOfTheUsers)
{
    run();
    const QString drivers = "libraries/drivers/src";
    for (const QString &name : QDir(inPackage(drivers)).entryList({"*.c"}))
        changeByte(inPackage(drivers + '/' + name));
    ASSERT_TRUE(QFile::rename(package.path, package.path + ".1"));
    package.path += ".1";
    EXPECT_FALSE(run());
    EXPECT_EQ(account.notes, QStringList());
    EXPECT_EQ(QDir(in(drivers)).entryList({"*.bak"}), QStringList());
}

// Where file times move in steps the stamp gives those of the present step an exact one: the manifest has to know it.
TEST_F(RepeatedRun, LeavesCopiedFilesTheTimeThatTheManifestHolds)
{
    const QString driver = "libraries/drivers/src/zv32f421_crm.c";
    for (int round = 0; round < 20; ++round) {
        const QTemporaryDir dir;
        PackageListing listing(package.path);
        ASSERT_TRUE(listing.copyFile(driver, "a.c"));
        ProjectFolder folder(
            dir.path(), account, [] { return false; }, [] {});
        ASSERT_TRUE(folder.makeFolder({}) && folder.copy(listing.items()) && folder.finish());
        ProjectStamp::leave(dir.path(), fileClock(), {1}, {.watched = {}, .project = {"a.c"}, .generated = {}});
        const ProjectManifest manifest(dir.path());
        ASSERT_TRUE(manifest.entry("a.c"));
        EXPECT_EQ(manifest.entry("a.c")->targetTime, fileState(dir.filePath("a.c")).milliseconds());
        account = {};
    }
}

TEST_F(RepeatedRun, HoldsForEveryFormInOneFolder)
{
    for (int round = 0; round < 2; ++round) {
        for (const IDE_TYPE type : offeredToolchains()) {
            const QByteArray name = getIDEPathName(type).toUtf8();
            set("project", "ToolchainIDE", name.constData());
            EXPECT_FALSE(run()) << name.constData();
            EXPECT_TRUE(run()) << name.constData();
        }
    }
}

TEST_F(RepeatedRun, IsMadeInFullWhereItCannotBeSureOrIsAskedToBackUp)
{
    run();
    EXPECT_TRUE(run());
    set("project", "BackupCode", "true");
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(run());
    EXPECT_TRUE(QFileInfo::exists(in("project/src/backup/main.c.bak")));
    set("project", "BackupCode", "false");

    // The package changes while it is used.
    const QString driver = "libraries/drivers/src/zv32f421_crm.c";
    QFile::remove(in(".chiploom-stamp"));
    EXPECT_FALSE(run([&] { changeByte(inPackage(driver)); }));
    EXPECT_FALSE(run());
    EXPECT_EQ(contentOf(in(driver)), contentOf(inPackage(driver)));

    // What a link leads to changes without the link.
    const QString main = in("project/src/main.c");
    ASSERT_TRUE(QFile::rename(main, main + ".mine") && QFile::link(main + ".mine", main));
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(run());
}

} // namespace

} // namespace ChipLoom::Test
