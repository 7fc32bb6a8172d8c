#include "ProjectFacts.h"
#include "ToolchainFixture.h"

#include "Model/xmloperation.h"

#include <QRandomGenerator>

#include <utility>

namespace ChipLoom::Test {

namespace {

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

class ProjectForms : public ToolchainFixture
{
protected:
    /// The files say what was ordered, and another run changes nothing.
    void expectFacts(const QStringList &userDefines = {})
    {
        const ProjectFacts facts = readFacts(order);
        const bool dash = order.isMdk() && DeviceNameHaveCrossingLine(order.series);
        EXPECT_EQ(facts.device, (dash ? "-" : "") + order.device);
        EXPECT_EQ(facts.flashOrigin, 0x08000000u);
        EXPECT_EQ(facts.flashSize, order.flashSize);
        EXPECT_EQ(facts.ramOrigin, 0x20000000u);
        EXPECT_EQ(facts.ramSize, order.sramSize);
        EXPECT_EQ(facts.stack, order.minStackSize);
        EXPECT_EQ(facts.heap, order.minHeapSize);
        QStringList defines = userDefines + QStringList{order.device, "USE_STDPERIPH_DRIVER"};
        if (order.usesMiddleware("CMSIS_DSP"))
            defines += {"ARM_MATH_CM4", "ARM_MATH_MATRIX_CHECK", "ARM_MATH_ROUNDING", "ARM_MATH_LOOPUNROLL"};
        EXPECT_EQ(facts.defines, sorted(defines));
        EXPECT_EQ(facts.includes, sorted(order.includeDirs()));
        QStringList sources = order.applicationSources() + order.driverSources();
        sources += {order.deviceSourceDir() + "/system_" + order.filePrefix() + ".c", order.startupFile()};
        if (!order.validMidProjectFileList.isEmpty())
            sources += {"middlewares/freertos/source/tasks.c", "middlewares/freertos/source/queue.c",
                        "project/src/freertos_app.c"};
        EXPECT_EQ(facts.sources, sorted(sources));
        for (const QString &source : facts.sources) {
            EXPECT_TRUE(!source.startsWith("libraries/") || QFile::exists(path(source))) << source.toStdString();
        }
        const BuilderAccount again = build();
        EXPECT_EQ(again.code, 0) << again.detail.toStdString();
        EXPECT_EQ(again.written + again.removed, QStringList());
    }
};

class EveryDevice : public ProjectForms, public ::testing::WithParamInterface<IDE_TYPE>
{
};

class ToolchainFacts : public ProjectForms, public ::testing::WithParamInterface<IDE_TYPE>
{
};

} // namespace

TEST_P(ToolchainFacts, FollowTheDesignThereAndBack)
{
    begin(GetParam());
    buildWell();
    QMap<QString, QByteArray> before;
    for (const QString &file : projectFiles())
        before.insert(file, bytes(file));

    useFreeRtos();
    order.projectSources.append("lm_usart.c");
    order.deleteProjectFileList.clear();
    order.validIPFileNameList.append("zv32f421_spi");
    buildWell();
    expectFacts();

    leaveFreeRtos();
    order.projectSources.removeOne("lm_usart.c");
    order.deleteProjectFileList.append("lm_usart.c");
    order.validIPFileNameList.removeOne("zv32f421_spi");
    buildWell();
    expectFacts();
    for (const QString &file : projectFiles())
        EXPECT_EQ(bytes(file), before.value(file)) << file.toStdString();

    setDevice("ZV32F421K4U7", 16, 8);
    buildWell();
    expectFacts();
}

TEST_P(ToolchainFacts, FollowAnotherSeriesOfTheFamily)
{
    begin(GetParam(), "ZV32F435CGT7", 1024, 256);
    order.needsSystemFiles = order.isTextForm();
    buildWell();
    setDevice("ZV32F437ZMT7", 4032, 256);
    buildWell();
    expectFacts();
}

TEST_P(ToolchainFacts, NamesThatFilesAndShellsReadOtherwise)
{
    begin(GetParam());
    order.projectName = QString::fromUtf8("Größe & <b> 'x'; $y 2#1 (c) template");
    order.projectFullPath = folder.path() + QString::fromUtf8("/für & $x; 'y'");
    buildWell();
    expectFacts();
    EXPECT_TRUE(build().written.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, ToolchainFacts, ::testing::ValuesIn(AllToolchains),
                         [](const auto &info) { return getIDEPathName(info.param).replace('.', '_').toStdString(); });

TEST_P(EveryDevice, IsInTheFilesWhatItIsInTheCatalogue)
{
    const XMLOperation database(AppPaths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)));
    int devices = 0;
    for (const MCUSerialStruct &series : database.GetMCUSerialsList()) {
        for (const MCUDeviceStruct &device : series.MCUDeviceList) {
            SCOPED_TRACE(device.DeviceName.toStdString());
            ++devices;
            order = {};
            const quint32 pid = database.GetPID(database.deviceFile(series.SeriaName, device.DeviceName));
            begin(GetParam(), device.DeviceName, quint32(GetFlashSizeFromMCUPID(pid)),
                  quint32(GetRAMSizeFromMCUPID(pid)));
            EXPECT_EQ(order.series, series.SeriaName);
            // The libraries of a series are copied once; each device begins with the template.
            order.projectFullPath += series.SeriaName;
            QFile::remove(order.skeletonMark());
            QDir(order.skeletonMark()).removeRecursively();
            order.minStackSize = 0x800;
            order.minHeapSize = 0x1000;
            order.needsSystemFiles = order.isTextForm();
            buildWell();
            expectFacts();
            EXPECT_EQ(readFacts(order).fpu, device.DeviceCore == "Cortex-M4F");
        }
    }
    EXPECT_GT(devices, 30);
}

INSTANTIATE_TEST_SUITE_P(Slow, EveryDevice, ::testing::ValuesIn(AllToolchains),
                         [](const auto &info) { return getIDEPathName(info.param).replace('.', '_').toStdString(); });

TEST_F(ProjectForms, LiveInOneFolderAndFollowTheDesignInAnyOrder)
{
    QRandomGenerator random(20);
    QMap<IDE_TYPE, QByteArray> left;
    begin(IDE_MDK_V5);
    for (int round = 0; round < 60; ++round) {
        order.ideType = AllToolchains[random.bounded(int(std::size(AllToolchains)))];
        SCOPED_TRACE(std::to_string(round) + ' ' + getIDEPathName(order.ideType).toStdString());
        if (!left.contains(order.ideType)) {
            // The first one comes from the template; a user then puts a mark into it.
            leaveFreeRtos();
            buildWell();
            const QString file = mainFile();
            put(file, bytes(file) + (order.isTextForm() ? "# mine\n" : "<!-- mine -->\n"));
        } else {
            EXPECT_EQ(bytes(mainFile()), left.value(order.ideType)) << "another toolchain has touched it";
        }
        leaveFreeRtos();
        order.deleteProjectFileList = QStringList{"lm_usart.c", "lm_usart.h", "freertos_app.c"};
        order.projectSources.removeOne("lm_usart.c");
        order.validIPFileNameList.removeOne("zv32f421_spi");
        if (random.bounded(2) == 0) {
            order.projectSources.append("lm_usart.c");
            order.deleteProjectFileList = QStringList{"freertos_app.c"};
        }
        if (random.bounded(2) == 0)
            order.validIPFileNameList.append("zv32f421_spi");
        if (random.bounded(2) == 0) {
            useFreeRtos();
            order.deleteProjectFileList.removeOne("freertos_app.c");
        }
        if (random.bounded(4) == 0)
            setDevice("ZV32F421K4U7", 16, 8);
        else
            setDevice("ZV32F421C8T7", 64, 16);
        if (!order.validMidNameList.isEmpty()) {
            // The folder with what the middlewares are is not the editor's: the other files come first.
            const QStringList names = std::exchange(order.validMidNameList, {});
            const auto files = std::exchange(order.validMidProjectFileList, {});
            buildWell();
            order.validMidNameList = names;
            order.validMidProjectFileList = files;
        }
        buildWell();
        expectFacts();
        left.insert(order.ideType, bytes(mainFile()));
        EXPECT_TRUE(left.value(order.ideType).contains("mine"));
    }
    EXPECT_EQ(left.size(), int(std::size(AllToolchains)));
}

} // namespace ChipLoom::Test
