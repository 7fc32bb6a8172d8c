#include "Design/ProjectSettings.h"
#include "Design/ToolchainRules.h"
#include "Packages/FirmwarePackages.h"
#include "Project/PackageFixture.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

QStringList versions(const QList<FirmwarePackage> &packages)
{
    QStringList list;
    for (const FirmwarePackage &package : packages)
        list.append(package.version + (package.bundled ? " bundled" : ""));
    return list;
}

TEST(FirmwarePackages, TheBundledOneIsOfferedWhereTheRepositoryHasNone)
{
    QTemporaryDir dir;
    const AppPaths paths(dir.path(), dir.path());
    const QString repository = dir.path() + "/repository";
    writeFile(dir.path() + "/firmware/ZV32F403A_407_Firmware_Library_V2.0.0/file", "x");
    EXPECT_EQ(versions(firmwarePackages(paths, repository, "ZV32F407")), QStringList{"V2.0.0 bundled"});
    EXPECT_EQ(versions(firmwarePackages(paths, repository, "ZV32F421")), QStringList());

    const QString folder = repository + "/ZV32F403A_407/ZV32F403A_407_Firmware_Library_";
    for (const char *name : {"V2.9.0/file", "V2.10.1/file", "Vnext/file"})
        writeFile(folder + name, "x");
    QDir().mkpath(folder + "V3.0.0"); // empty: not installed
    EXPECT_EQ(versions(firmwarePackages(paths, repository, "ZV32F403A")), (QStringList{"V2.10.1", "V2.9.0"}));
    EXPECT_EQ(firmwarePackageIn(repository, "ZV32F407").version, "V2.10.1");
    EXPECT_TRUE(firmwarePackageIn(dir.path() + "/firmware", "ZV32F421").path.isEmpty());
}

TEST(ProjectValues, HeapAndStackFitOneByOne)
{
    ProjectValues values;
    values.MinHeapSize = "0x4000";
    values.MinStackSize = "4000";
    EXPECT_TRUE(HeapAndStackCheck(values, 0x4000)) << "each fills the memory, and each is looked at alone";
    EXPECT_EQ(HeapAndStackCheck(values, 0x3fff).arguments, (QStringList{"MinHeapSize", "0x4000", "3fff"}));
    for (const char *wrong : {"", "0x", "0xx1", "12G", "0x1000000000"}) {
        values.MinStackSize = wrong;
        EXPECT_EQ(HeapAndStackCheck(values, 0x8000).reason, DesignReason::NotANumber) << wrong;
    }
}

TEST(ProjectValues, AProjectIsGeneratedAgainWhereItsDesignLies)
{
    QTemporaryDir dir;
    ProjectValues values;
    values.ProjectName = "blink";
    EXPECT_EQ(values.getProjectFullPath(""), "");
    values.ProjectLocation = dir.path();
    EXPECT_EQ(values.getProjectFullPath(""), dir.path() + "/blink");
    writeFile(dir.path() + "/blink.ZVWP", "design");
    EXPECT_EQ(values.getProjectFullPath(""), dir.path() + "/blink") << "of another design";
    EXPECT_EQ(values.getProjectFullPath(dir.path() + "/blink.ZVWP"), dir.path() + "/blink") << "nothing generated yet";
    ASSERT_TRUE(QDir(dir.path()).mkdir("project"));
    EXPECT_EQ(values.getProjectFullPath(dir.path() + "/./blink.ZVWP"), dir.path());
    EXPECT_EQ(values.getDesignFilePath(dir.path() + "/blink.ZVWP"), dir.path() + "/blink.ZVWP");
    // A location that is the folder's own root, or written with dots, is the same place.
    values.ProjectLocation = dir.path() + "/a/../";
    EXPECT_EQ(values.getProjectFullPath(""), dir.path() + "/blink");
}

TEST(ToolchainRules, SeriesAndMiddlewaresRuleToolchainsOut)
{
    struct Row
    {
        IDE_TYPE type;
        const char *series;
        QStringList middlewares;
        ToolchainReason reason;
    };
    const QList<Row> rows{
        {IDE_MDK_V4, "ZV32F421", {}, ToolchainReason::None},
        {IDE_MDK_V4, "ZV32F403E", {}, ToolchainReason::NotForSeries},
        {IDE_MDK_V4, "ZV32F421", {"FREERTOS"}, ToolchainReason::WithFreertosOrDsp},
        {IDE_IAR_V7_4, "ZV32F421", {"CMSIS_DSP"}, ToolchainReason::WithDsp},
        {IDE_IAR_V7_4, "ZV32F421", {"LWIP"}, ToolchainReason::None},
        {IDE_IAR_V7_4, "ZV32F421", {"LWIP", "RT-Thread_Nano"}, ToolchainReason::WithLwipAndRtThread},
        {IDE_CMAKE, "ZV32F403E", {"FREERTOS", "CMSIS_DSP", "LWIP", "RT-Thread_Nano"}, ToolchainReason::None},
    };
    for (const Row &row : rows)
        EXPECT_EQ(toolchainReason(row.type, row.series, row.middlewares), row.reason)
            << row.type << row.series << row.middlewares.join(" ").toStdString();
}

TEST(ToolchainRules, CMakeHasFoldersThatItMisreads)
{
    for (const char *folder : {"/a;b", "/a\"b", "/a\\b", "/a#b", "/<a>", "/a|b", "/a?b", "/a:b", "/${a}", "/$ENV{a}"}) {
        EXPECT_EQ(folderReason(IDE_CMAKE, folder), ToolchainReason::NotInFolder) << folder;
        EXPECT_EQ(folderReason(IDE_MAKEFILE, folder), ToolchainReason::None) << folder;
    }
    for (const char *folder : {"/a b", "/$a {b}", "/a'b`c", "/(a) & [b]", "C:/a"})
        EXPECT_EQ(folderReason(IDE_CMAKE, folder), ToolchainReason::None) << folder;
}

} // namespace
