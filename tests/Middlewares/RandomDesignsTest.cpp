#include "Middlewares/Middlewares.h"

#include "Design/DesignFacts.h"
#include "Design/DesignFileFixture.h"
#include "Design/RandomUser.h"
#include "Model/xmloperation.h"

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

struct Device
{
    QString series, device, package;
};

void PrintTo(const Device &device, std::ostream *out)
{
    *out << device.device.toStdString();
}

std::vector<Device> sampleDevices()
{
    std::vector<Device> devices;
    const AppPaths paths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR));
    for (const MCUSerialStruct &series : XMLOperation(paths).GetMCUSerialsList()) {
        for (const MCUDeviceStruct &device : series.MCUDeviceList)
            devices.push_back({series.SeriaName, device.DeviceName, device.DevicePackage});
    }
    return devices;
}

QStringList inWords(const QList<DesignDifference> &differences)
{
    QStringList lines;
    for (const DesignDifference &difference : differences)
        lines.append(difference.place + ": " + difference.first + " | " + difference.second);
    return lines;
}

/// The lines that stand in one of two texts alone.
QStringList otherLines(const QByteArray &first, const QByteArray &second)
{
    const QStringList a = QString::fromUtf8(first).split(QLatin1Char('\n'));
    const QStringList b = QString::fromUtf8(second).split(QLatin1Char('\n'));
    QStringList lines;
    for (int i = 0; i < qMax(a.size(), b.size()) && lines.size() < 10; ++i) {
        if (a.value(i) != b.value(i))
            lines += QStringList{a.value(i).trimmed() + QLatin1String(" / ") + b.value(i).trimmed()};
    }
    return lines;
}

class RandomDesigns : public DesignFileFixture, public ::testing::WithParamInterface<Device>
{
protected:
    RandomDesigns() { registerMiddlewares(design); }

    void tryDesigns(unsigned firstSeed, int count)
    {
        const Device device = GetParam();
        Design again(paths, prompt);
        registerMiddlewares(again);
        for (int i = 0; i < count; ++i) {
            SCOPED_TRACE("seed " + std::to_string(firstSeed + i));
            ASSERT_TRUE(design.NewDesign(device.series, device.device, device.package));
            RandomUser(design, firstSeed + i).change(10 + 20 * int((firstSeed + i) % 8));
            ASSERT_TRUE(design.SaveProject(path("a.ZVWP")));
            ASSERT_TRUE(again.OpenDesign(path("a.ZVWP")));
            EXPECT_EQ(printed(again.file().problems()), QStringList());
            EXPECT_EQ(inWords(compareDesigns(design, again)), QStringList());
            EXPECT_EQ(otherLines(design.file().content(), again.file().content()), QStringList());
            if (HasFailure()) {
                if (const QByteArray keep = qgetenv("CHIPLOOM_KEEP"); !keep.isEmpty())
                    QFile::copy(path("a.ZVWP"), QString::fromLocal8Bit(keep));
                return;
            }
        }
    }
};

TEST_P(RandomDesigns, OpenAsTheyWereSaved)
{
    tryDesigns(unsigned(qHash(GetParam().device, 1) % 1000), 2);
}

INSTANTIATE_TEST_SUITE_P(Sample, RandomDesigns, ::testing::ValuesIn(sampleDevices()));

class ManyRandomDesigns : public RandomDesigns
{
};

TEST_P(ManyRandomDesigns, OpenAsTheyWereSaved)
{
    tryDesigns(1000, 150);
}

INSTANTIATE_TEST_SUITE_P(Matrix, ManyRandomDesigns, ::testing::ValuesIn(sampleDevices()));

TEST_F(DesignFileFixture, AKernelBesideTheSystemTimerLosesTheTimeBase)
{
    registerMiddlewares(design);
    ASSERT_TRUE(openNew());
    ASSERT_TRUE(set("mode/FREERTOS/Activated=TRUE"));
    set("mode/SYSTEM/Time_Base=TMR6");
    QByteArray content = design.file().content();
    ASSERT_TRUE(content.contains("name=\"Time_Base\" value=\"TMR6\"")) << content.toStdString();
    writeAll(path("old.ZVWP"),
             content.replace("name=\"Time_Base\" value=\"TMR6\"", "name=\"Time_Base\" value=\"SysTick\""));
    prompt.requests.clear();
    ASSERT_TRUE(design.OpenDesign(path("old.ZVWP")));
    ASSERT_EQ(prompt.requests.size(), 1);
    EXPECT_EQ(prompt.requests.first().kind, PromptRequest::Kind::Warning);
    EXPECT_EQ(prompt.requests.first().title, "Warning");
    EXPECT_EQ(prompt.requests.first().buttons, QStringList("Ok"));
    EXPECT_EQ(
        prompt.requests.first().text,
        "FREERTOS cannot be activated simultaneously with the \"Delay TimeBase Source - SysTick\" in the SYSTEM. \n"
        "The \"Delay TimeBase Source - SysTick\" has been automatically disabled.\n"
        "Please reselect the \"Delay TimeBase Source\" in the SYSTEM");
    EXPECT_FALSE(design.module("SYSTEM")->control("Time_Base")->isOn());
    EXPECT_TRUE(design.module("FREERTOS")->control("Activated")->isOn());
    EXPECT_TRUE(design.isModified());
    ASSERT_TRUE(design.SaveProject(path("new.ZVWP")));
    ASSERT_TRUE(design.OpenDesign(path("new.ZVWP")));
    EXPECT_EQ(prompt.requests.size(), 1);
}

} // namespace
