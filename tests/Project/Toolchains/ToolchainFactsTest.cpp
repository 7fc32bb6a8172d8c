#include "ProjectFacts.h"
#include "ToolchainFixture.h"

namespace ChipLoom::Test {

namespace {

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

class ToolchainFacts : public ToolchainFixture, public ::testing::WithParamInterface<IDE_TYPE>
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

struct DeviceRow
{
    const char *name;
    quint32 flashKB, sramKB;
};

} // namespace

TEST_P(ToolchainFacts, AgreeOverDevicesAndSizes)
{
    for (const DeviceRow &row : {DeviceRow{"ZV32F421C8T7", 64, 16}, DeviceRow{"ZV32F421K4U7", 16, 8},
                                 DeviceRow{"ZV32F403AVGT7", 1024, 96}, DeviceRow{"ZV32F407RCT7", 256, 96}}) {
        SCOPED_TRACE(row.name);
        order = {};
        begin(GetParam(), row.name, row.flashKB, row.sramKB);
        order.projectFullPath += row.name;
        order.minStackSize = 0x800;
        order.minHeapSize = 0x1000;
        order.needsSystemFiles = order.isTextForm();
        buildWell();
        expectFacts();
    }
}

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

} // namespace ChipLoom::Test
