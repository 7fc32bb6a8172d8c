#include "Design/Design.h"
#include "Model/xmloperation.h"
#include "PinRandomWalk.h"
#include "ScriptedPrompt.h"

#include <gtest/gtest.h>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

class SampleDevicesTest : public ::testing::Test
{
protected:
    AppPaths paths{QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)};
    ScriptedPrompt prompt;
    Design design{paths, prompt};
};

TEST_F(SampleDevicesTest, EveryDeviceOpensAndItsGroupsCanStand)
{
    int devices = 0;
    for (const MCUSerialStruct &series : XMLOperation(paths).GetMCUSerialsList()) {
        for (const MCUDeviceStruct &device : series.MCUDeviceList) {
            SCOPED_TRACE(device.DeviceName.toStdString());
            ++devices;
            ASSERT_TRUE(design.NewDesign(series.SeriaName, device.DeviceName, device.DevicePackage));
            const DevicePinInfo &info = design.pinInfo();
            EXPECT_EQ(info.positions().size(), info.m_allPinNums);
            for (const IPSignalGroupInfo &group : info.m_deviceIPSignalGroupInfoList) {
                for (const IPSignal &member : group.signalGroup) {
                    const QVector<int> pins = info.pinsNamed(member.signalInPinName);
                    EXPECT_TRUE(std::any_of(pins.begin(), pins.end(), [&](int pin) {
                        return !info.placeOnPin(member.signalName, pin).isNull();
                    })) << member.signalName.toStdString();
                }
            }
        }
    }
    EXPECT_GT(devices, 0);
}

struct Walk
{
    const char *series;
    const char *package; ///< the first device of the series in such a package
};

class SampleWalkTest : public SampleDevicesTest, public ::testing::WithParamInterface<Walk>
{
};

TEST_P(SampleWalkTest, TenThousandOperationsKeepTheRules)
{
    const XMLOperation database(paths);
    for (const MCUDeviceStruct &device : database.GetDeviceNameList(GetParam().series)) {
        if (device.DevicePackage != GetParam().package)
            continue;
        PinAssignment pins;
        const QString file = database.deviceFile(GetParam().series, device.DeviceName);
        pins.load(GetParam().series, DevicePinInfo(database.GetDeviceFile(file), file));
        randomWalk(pins, 10000, 50);
        // And with every peripheral answering to what it is told.
        ASSERT_TRUE(design.NewDesign(GetParam().series, device.DeviceName, device.DevicePackage));
        randomWalk(design.pins(), 200, 10);
        return;
    }
    FAIL() << "the catalogue has no such device";
}

INSTANTIATE_TEST_SUITE_P(Slow, SampleWalkTest,
                         ::testing::Values(Walk{"ZV32F421", "TSSOP20"}, Walk{"ZV32F403A", "LQFP64"},
                                           Walk{"ZV32F407", "LQFP100"}));

} // namespace
