#include "Limits.h"
#include "Project/PackageFixture.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

using namespace ChipLoom;

namespace {

const QString Core = QStringLiteral("libraries/cmsis/cm4/core_support/core.h");

TEST(Builder, ASecondRunTouchesNothing)
{
    PackageFixture project;
    const BuilderAccount first = project.build();
    ASSERT_EQ(first.code, 0) << first.detail.toStdString();
    EXPECT_TRUE(first.written.contains(Core));
    EXPECT_TRUE(QFileInfo::exists(project.in("project/MDK_V5/blink")));
    EXPECT_EQ(project.editor.seen.ipNameList, QStringList{"zv32f421_crm"});
    EXPECT_FALSE(QFileInfo::exists(project.in("libraries/cmsis/dsp"))) << "nobody uses it";
    const QStringList state = project.state();

    const BuilderAccount second = project.build();
    EXPECT_EQ(second.code, 0) << second.detail.toStdString();
    EXPECT_EQ(second.written, QStringList());
    EXPECT_EQ(project.state(), state);
    EXPECT_EQ(project.editor.firsts, (QList<bool>{true, false}));
}

TEST(Builder, KeepsWhatTheUserChangedUntilThePackageHasAnother)
{
    PackageFixture project;
    project.build();
    writeFile(project.in(Core), "the user's");
    EXPECT_EQ(project.build().code, 0);
    EXPECT_EQ(contentOf(project.in(Core)), "the user's");

    writeFile(project.inPackage(Core), "corrected");
    const BuilderAccount account = project.build();
    EXPECT_EQ(contentOf(project.in(Core)), "corrected");
    EXPECT_EQ(contentOf(project.in(Core + ".bak")), "the user's");
    EXPECT_EQ(account.notes.size(), 1);

    writeFile(project.in(Core), "the user's other one");
    writeFile(project.inPackage(Core), "corrected again");
    EXPECT_TRUE(project.build().notes.value(0).endsWith(Core + ".2.bak"));
    EXPECT_EQ(contentOf(project.in(Core + ".bak")), "the user's");
    EXPECT_EQ(contentOf(project.in(Core + ".2.bak")), "the user's other one");
}

TEST(Builder, ASizeThatIsSetInTheUsersFileLeavesItTheUsers)
{
    PackageFixture project;
    project.build();
    const QString startup = project.order.startupFile();
    writeFile(project.in(startup), "the user's");
    project.editor.startup = "the user's, with a larger stack";
    ASSERT_EQ(project.build().code, 0);
    project.order.packagePath = project.package(QStringLiteral("V2.1.0"));
    project.editor.startup.clear();
    const BuilderAccount account = project.build();
    EXPECT_EQ(account.code, 0) << account.detail.toStdString();
    EXPECT_EQ(contentOf(project.in(startup)), "V2.1.0");
    EXPECT_EQ(contentOf(project.in(startup + ".bak")), "the user's, with a larger stack");
    EXPECT_EQ(account.notes.size(), 1);
}

TEST(Builder, TellsOfADriverThatThePackageLacks)
{
    PackageFixture project;
    project.order.validIPFileNameList.append("zv32f421_qspi");
    QFile::remove(project.inPackage("libraries/drivers/src/zv32f421_crm.c"));
    const BuilderAccount account = project.build();
    EXPECT_EQ(account.code, 0) << account.detail.toStdString();
    EXPECT_EQ(account.notes.size(), 3) << account.notes.join('\n').toStdString();
    EXPECT_EQ(account.notes.filter("drivers/src/zv32f421_crm.c").size(), 1);
}

TEST(Builder, RefusesAFolderWithTheProjectOfAnotherFamily)
{
    PackageFixture project;
    const auto named = [&](const QString &name) {
        const QString path = project.path() + '/' + name;
        EXPECT_TRUE(QDir().rename(project.package("new"), path));
        return path;
    };
    project.order.packagePath = named("ZV32F421_Firmware_Library_V2.0.0");
    ASSERT_EQ(project.build().code, 0);
    const QStringList state = project.state();
    project.order.packagePath = named("ZV32F435_437_Firmware_Library_V2.0.0");
    const BuilderAccount account = project.build();
    EXPECT_EQ(account.code, 1);
    EXPECT_TRUE(account.detail.contains("was made for ZV32F421")) << account.detail.toStdString();
    EXPECT_EQ(project.state(), state);
    project.order.packagePath = named("ZV32F421_Firmware_Library_V2.1.0");
    EXPECT_EQ(project.build().code, 0);
}

TEST(Builder, AnotherPackageReplacesTheLibrariesAndKeepsTheUsersFiles)
{
    for (const auto &[withManifest, killed] : {std::pair(true, false), {false, false}, {true, true}}) {
        PackageFixture project;
        project.build();
        writeFile(project.in("libraries/drivers/src/mine.c"), "mine");
        writeFile(project.in("libraries/drivers/src/zv32f421_old.c"), "of the first package");
        writeFile(project.in("notes.txt"), "mine");
        if (!withManifest)
            QFile::remove(project.in(".chiploom-manifest"));
        if (killed) { // between taking the old folder away and putting the new one there
            ASSERT_TRUE(QDir().rename(project.in("libraries"), project.in("libraries.chiploom-old")));
        }
        project.order.packagePath = project.package(QStringLiteral("V2.1.0"));
        project.order.updatePackageVersion = true;
        const BuilderAccount account = project.build();
        ASSERT_EQ(account.code, 0) << account.detail.toStdString();
        EXPECT_EQ(contentOf(project.in(Core)), "V2.1.0");
        EXPECT_EQ(contentOf(project.in("libraries/drivers/src/mine.c")), "mine");
        EXPECT_EQ(contentOf(project.in("notes.txt")), "mine");
        EXPECT_EQ(QDir(project.order.projectFullPath).entryList({"libraries*"}, QDir::Dirs), QStringList{"libraries"});
    }
}

TEST(Builder, ARunBesideAnotherStopsBeforeItTakesTheOthersFilesForTheUsers)
{
    PackageFixture project;
    ASSERT_EQ(project.build().code, 0);
    const QStringList libraries = project.state().filter("/libraries/");
    for (const QString &line : libraries) {
        const QString file = line.section(' ', 0, 0);
        writeFile(file, "the user's " + file.toUtf8());
    }
    ProjectOrder other = project.order;
    project.order.packagePath = project.package(QStringLiteral("V2.1.0"));
    other.packagePath = project.package(QStringLiteral("V2.2.0"));
    GenerateProjectThread builder(project.order);
    builder.setEditor(&project.editor);
    BuilderAccount beside;
    QObject::connect(&builder, &GenerateProjectThread::progress, &builder, [&](int done) {
        GenerateProjectThread second(other);
        second.setEditor(&project.editor);
        if (done == 1)
            beside = second.build();
    });
    EXPECT_EQ(builder.build().code, 0);
    EXPECT_EQ(beside.code, 1);
    EXPECT_TRUE(beside.detail.contains(project.order.projectFullPath)) << beside.detail.toStdString();
    for (const QString &line : libraries) {
        const QString file = line.section(' ', 0, 0);
        EXPECT_EQ(contentOf(file + ".bak"), "the user's " + file.toUtf8());
        EXPECT_EQ(contentOf(file), "V2.1.0");
    }
    project.order.packagePath = other.packagePath;
    EXPECT_EQ(project.build().code, 0) << "when the other is done";
    EXPECT_EQ(project.state().filter("chiploom-lock"), QStringList());
}

TEST(Builder, ABrokenPackageLeavesTheOldLibrariesInPlace)
{
    PackageFixture project;
    project.build();
    const QStringList state = project.state();
    project.order.packagePath = project.package(QStringLiteral("V2.1.0"));
    QFile::remove(project.inPackage(project.order.startupFile()));
    const BuilderAccount account = project.build();
    EXPECT_EQ(account.code, 1);
    EXPECT_TRUE(account.detail.contains(project.order.startupFile())) << account.detail.toStdString();
    EXPECT_EQ(project.state(), state);
}

TEST(Builder, FollowsNoLinkOutOfThePackageNorOutOfTheProject)
{
    PackageFixture outwards;
    const QString secret = outwards.path() + "/secret";
    writeFile(secret, "secret");
    ASSERT_TRUE(QFile::link(secret, outwards.inPackage("libraries/drivers/inc/link.h")));
    BuilderAccount account = outwards.build();
    EXPECT_EQ(account.code, 1);
    EXPECT_TRUE(account.detail.contains("link.h")) << account.detail.toStdString();
    EXPECT_FALSE(QFileInfo::exists(outwards.order.projectFullPath)) << "nothing is written";

    PackageFixture cyclic;
    ASSERT_TRUE(QFile::link(cyclic.inPackage("libraries"), cyclic.inPackage("libraries/drivers/again")));
    EXPECT_EQ(cyclic.build().code, 1);

    PackageFixture inside;
    ASSERT_TRUE(QFile::link(inside.inPackage(Core), inside.inPackage("libraries/drivers/inc/core.h")));
    EXPECT_EQ(inside.build().code, 0);
    EXPECT_FALSE(QFileInfo(inside.in("libraries/drivers/inc/core.h")).isSymLink());

    PackageFixture target;
    const QString elsewhere = target.path() + "/elsewhere";
    QDir().mkpath(elsewhere);
    QDir().mkpath(target.order.projectFullPath);
    ASSERT_TRUE(QFile::link(elsewhere, target.in("libraries")));
    EXPECT_EQ(target.build().code, 1);
    EXPECT_TRUE(QDir(elsewhere).isEmpty());
}

TEST(Builder, FailuresHaveTheirCodeAndLeaveNoParts)
{
    PackageFixture fifo;
    ASSERT_EQ(mkfifo(fifo.inPackage("libraries/cmsis/pipe").toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(fifo.build().code, 1);

    PackageFixture inTheWay;
    writeFile(inTheWay.in("libraries"), "a file");
    EXPECT_EQ(inTheWay.build().code, 1);
    EXPECT_EQ(contentOf(inTheWay.in("libraries")), "a file");

    PackageFixture linker;
    linker.editor.linkerFails = true;
    EXPECT_EQ(linker.build().code, 2);

    // An interrupted skeleton is made again from the template.
    PackageFixture unfinished;
    unfinished.editor.projectFails = true;
    EXPECT_EQ(unfinished.build().code, 3);
    unfinished.editor.projectFails = false;
    EXPECT_EQ(unfinished.build().code, 0);
    EXPECT_EQ(unfinished.editor.firsts, (QList<bool>{true, true}));
}

TEST(Builder, WhatMayNotBeReadOrWrittenStopsItAndIsNamed)
{
    const QTemporaryDir home;
    const AsOrdinaryUser user(home.path());
    const auto forbid = [](const QString &path) { QFile::setPermissions(path, {}); };
    const auto allow = [](const QString &path) {
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    };
    PackageFixture readOnly;
    QDir().mkpath(readOnly.order.projectFullPath);
    QFile::setPermissions(readOnly.order.projectFullPath, QFile::ReadOwner | QFile::ExeOwner);
    BuilderAccount account = readOnly.build();
    EXPECT_EQ(account.code, 1);
    EXPECT_TRUE(account.detail.contains(readOnly.in("libraries"))) << account.detail.toStdString();
    EXPECT_TRUE(account.detail.endsWith(std::strerror(EACCES))) << account.detail.toStdString();
    EXPECT_TRUE(QDir(readOnly.order.projectFullPath).isEmpty());
    allow(readOnly.order.projectFullPath);

    // A folder, a file and a template of the package: nothing has been written when it is found.
    PackageFixture unreadable;
    const QString folder = unreadable.inPackage("libraries/drivers/inc");
    const QString file = unreadable.inPackage(Core);
    const QString skeleton = unreadable.inPackage("project/zv_start_f421/templates/MDK_V5/template");
    for (const QString &path : {folder, file, skeleton}) {
        forbid(path);
        account = unreadable.build();
        EXPECT_EQ(account.code, 1);
        EXPECT_TRUE(account.detail.contains(path)) << account.detail.toStdString();
        EXPECT_FALSE(QFileInfo::exists(unreadable.order.projectFullPath)) << path.toStdString();
        allow(path);
    }
    EXPECT_EQ(unreadable.build().code, 0);
    // In the middle of a later copy: what stands stays whole.
    writeFile(unreadable.inPackage(Core), "corrected");
    writeFile(unreadable.inPackage("libraries/drivers/inc/zv32f421_crm.h"), "corrected");
    QFile::setPermissions(unreadable.in("libraries/drivers/inc"), QFile::ReadOwner | QFile::ExeOwner);
    account = unreadable.build();
    EXPECT_EQ(account.code, 1);
    EXPECT_TRUE(account.detail.contains("zv32f421_crm.h")) << account.detail.toStdString();
    EXPECT_EQ(contentOf(unreadable.in("libraries/drivers/inc/zv32f421_crm.h")), "V2.0.0");
    allow(unreadable.in("libraries/drivers/inc"));
    EXPECT_EQ(unreadable.build().code, 0);
    EXPECT_EQ(contentOf(unreadable.in("libraries/drivers/inc/zv32f421_crm.h")), "corrected");
}

TEST(Builder, AFileThatTheDiskDoesNotTakeLeavesTheOldOne)
{
    PackageFixture project;
    project.build();
    writeFile(project.inPackage(Core), QByteArray(100000, 'x'));
    const QString left = project.in(Core + QStringLiteral(".chiploom-part-%1-1").arg(endedProcess()));
    writeFile(left, "half");
    makeOld(left);
    BuilderAccount account;
    {
        const FullDisk disk(50000);
        account = project.build();
    }
    EXPECT_EQ(account.code, 1);
    EXPECT_TRUE(account.detail.contains("core.h")) << account.detail.toStdString();
    EXPECT_EQ(contentOf(project.in(Core)), "V2.0.0");
    EXPECT_EQ(QDir(QFileInfo(left).path()).entryList(QDir::Files), QStringList{"core.h"});

    account = project.build();
    EXPECT_EQ(account.code, 0) << account.detail.toStdString();
    EXPECT_EQ(contentOf(project.in(Core)).size(), 100000);
}

TEST(Builder, CanBeCancelledBetweenFilesAndGoesOnLater)
{
    PackageFixture project;
    GenerateProjectThread builder(project.order);
    builder.setEditor(&project.editor);
    int told = 0;
    QObject::connect(&builder, &GenerateProjectThread::progress, [&](int done, int total) {
        told = done;
        EXPECT_GT(total, 3);
        if (done == 2)
            builder.cancel();
    });
    const BuilderAccount account = builder.build();
    EXPECT_TRUE(account.cancelled);
    EXPECT_EQ(told, 2);
    EXPECT_EQ(account.written.size(), 2);
    for (const QString &file : project.state())
        EXPECT_FALSE(file.contains("chiploom-part")) << file.toStdString();
    EXPECT_EQ(project.build().code, 0);
    EXPECT_EQ(project.editor.firsts, QList<bool>{true});
}

TEST(Builder, BacksUpAndDeletesAsTold)
{
    PackageFixture project;
    project.build();
    const QByteArray head = "/* add user code begin Header */\nhead\n/* add user code end Header */\n";
    writeFile(project.in("project/src/lm_usart.c"), head);
    writeFile(project.in("project/src/lm_spi.c"), "mine as a whole");
    writeFile(project.in("project/src/lm_tmr.c"),
              head + "/* add user code begin 0 */\nmine\n/* add user code end 0 */\n");
    writeFile(project.in("project/src/mine.c"), "mine");
    project.order.backupCode = true;
    project.order.deleteProjectFileList = QStringList{"lm_usart.c", "lm_tmr.c", "lm_spi.c", "../../notes.txt"};
    writeFile(project.in("notes.txt"), "mine");

    project.order.deletePriviousFiles = false;
    project.build();
    EXPECT_EQ(contentOf(project.in("project/src/lm_usart.c")), head);
    project.order.deletePriviousFiles = true;
    const BuilderAccount account = project.build();
    EXPECT_EQ(account.removed, QStringList({"project/src/lm_spi.c", "project/src/lm_tmr.c", "project/src/lm_usart.c"}));
    EXPECT_EQ(account.notes.size(), 3) << account.notes.join('\n').toStdString();
    EXPECT_TRUE(account.notes.contains("project/src/lm_tmr.c: not carried over: the user code of \"0\""));
    EXPECT_EQ(contentOf(project.in("project/src/lm_spi.c.bak")), "mine as a whole");
    EXPECT_TRUE(contentOf(project.in("project/src/lm_tmr.c.bak")).contains("\nmine\n"));
    for (const char *file : {"lm_usart.c", "lm_usart.c.bak", "lm_tmr.c", "lm_spi.c"})
        EXPECT_FALSE(QFileInfo::exists(project.in(QString("project/src/") + file))) << file;
    EXPECT_EQ(contentOf(project.in("project/src/backup/lm_usart.c.bak")), head);
    EXPECT_EQ(contentOf(project.in("project/src/mine.c")), "mine");
    EXPECT_EQ(contentOf(project.in("notes.txt")), "mine");
}

TEST(Builder, EachSeriesTakesTheCoreOfItsOwn)
{
    for (const char *series : {"ZV32L021", "ZV32F011"}) {
        PackageFixture project{QLatin1String(series)};
        writeFile(project.inPackage("libraries/cmsis/cm4/core_support/core_cm4.h"), "of another core");
        EXPECT_EQ(project.build().code, 0);
        EXPECT_TRUE(QFileInfo::exists(project.in("libraries/cmsis/cm0plus/core_support/core.h"))) << series;
        EXPECT_FALSE(QFileInfo::exists(project.in("libraries/cmsis/cm4"))) << series;
    }
    PackageFixture newLayout{QStringLiteral("ZV32F403E")};
    EXPECT_EQ(newLayout.build().code, 0);
    EXPECT_TRUE(QFileInfo::exists(newLayout.in("libraries/device/src/startup/mdk/startup_zv32f403e_407e.s")));
}

TEST(Builder, BringsTheFoldersAndFilesOfMiddlewares)
{
    PackageFixture project;
    project.order.validMidNameList = QStringList{"FREERTOS", "LWIP", "CMSIS_DSP", "RT-Thread_Nano"};
    project.order.validMidFileNameList = {{"lwip_v2/port", "ethernetif.c", "src", ""}};
    project.order.componentsPath = project.path() + "/repository";
    const QString component = project.order.componentsPath + "/LM_RT-Thread_Nano/RT-Thread_Nano_V1.0/rt-thread/";
    writeFile(component + "libcpu/arm/cortex-m4/context_gcc.S", "switch");
    writeFile(component + "include/rtdef.h", "of the component");
    const BuilderAccount account = project.build();
    ASSERT_EQ(account.code, 0) << account.detail.toStdString();
    EXPECT_TRUE(QFileInfo::exists(project.in("libraries/cmsis/dsp/dsp.c")));
    EXPECT_TRUE(QFileInfo::exists(project.in("middlewares/freertos/kernel.c")));
    EXPECT_TRUE(QFileInfo::exists(project.in("middlewares/3rd_party/lwip/port/ethernetif.c")));
    EXPECT_TRUE(QFileInfo::exists(project.in("middlewares/rt-thread/libcpu/arm/cortex-m4/context_gcc.s")));
    EXPECT_TRUE(QFileInfo::exists(project.in("project/src/ethernetif.c")));

    // What the project configures stays, whatever the component has.
    writeFile(project.in("middlewares/rt-thread/include/rtdef.h"), "configured");
    writeFile(component + "include/rtdef.h", "of a later component");
    EXPECT_EQ(project.build().code, 0);
    EXPECT_EQ(contentOf(project.in("middlewares/rt-thread/include/rtdef.h")), "configured");

    project.order.validMidNameList = QStringList{"USB_DEVICE"};
    EXPECT_EQ(project.build().code, 1) << "the package lacks it";
}

TEST(Builder, WithoutAPackageItOnlyTendsWhatIsThere)
{
    PackageFixture project;
    project.order.packagePath.clear();
    EXPECT_EQ(project.build().code, 0);
    EXPECT_TRUE(project.editor.firsts.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(project.order.projectFullPath));
}

} // namespace
