#include "Design/Design.h"
#include "Design/Explanations.h"
#include "Design/GPIO_Configuration.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Model/xmloperation.h"
#include "PrintedDesign.h"

#include <gtest/gtest.h>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

struct SampleDevice
{
    QString series, device, package;
};

void PrintTo(const SampleDevice &device, std::ostream *out)
{
    *out << device.device.toStdString();
}

// Every device of the sample database, or one of each `step`.
QList<SampleDevice> sampleDevices(int step)
{
    QList<SampleDevice> all;
    for (const MCUSerialStruct &series : XMLOperation(samplePaths()).GetMCUSerialsList()) {
        for (const MCUDeviceStruct &device : series.MCUDeviceList)
            all.append({series.SeriaName, device.DeviceName, device.DevicePackage});
    }
    QList<SampleDevice> devices;
    for (int i = 0; i < all.size(); i += step)
        devices.append(all.at(i));
    return devices;
}

class ModesOfEveryDevice : public testing::TestWithParam<SampleDevice>
{
protected:
    ScriptedPrompt m_prompt{0};
};

TEST_P(ModesOfEveryDevice, OnThenOffReturnsTheDesignToItsStart)
{
    Design design(samplePaths(), m_prompt);
    ASSERT_TRUE(design.NewDesign(GetParam().series, GetParam().device, GetParam().package));
    const QStringList start = printed(design);
    int choices = 0;
    for (const auto &part : design.parts()) {
        auto *peripheral = dynamic_cast<IP_ModeAndConfiguration *>(part.get());
        if (!peripheral)
            continue;
        for (const auto &control : peripheral->controls()) {
            const int former = control->index();
            for (int index = 1; index < control->count(); ++index) {
                if (index == former || !control->itemCanbeChoosed(index))
                    continue;
                const QString item = control->isCheckBox() ? "TRUE" : control->items().at(index - 1).Name;
                ASSERT_TRUE(peripheral->chooseItem(control->modeName(), item)) << item.toStdString();
                ASSERT_TRUE(design.scheduler().drain());
                ++choices;
                EXPECT_EQ(control->index(), index) << "offered, then refused: " << item.toStdString();
                const QString back = former == 0             ? QString()
                                     : control->isCheckBox() ? QStringLiteral("TRUE")
                                                             : control->items().at(former - 1).Name;
                ASSERT_TRUE(peripheral->chooseItem(control->modeName(), back));
                ASSERT_TRUE(design.scheduler().drain());
                const QStringList changes = difference(start, printed(design));
                ASSERT_TRUE(changes.isEmpty()) << peripheral->instanceName().toStdString() << " "
                                               << control->modeName().toStdString() << " " << item.toStdString() << "\n"
                                               << changes.mid(0, 12).join('\n').toStdString();
            }
        }
    }
    EXPECT_GT(choices, 50) << "the sample database offers too little to try";
}

TEST_P(ModesOfEveryDevice, WhatStandsOnAPinIsHisWhoseModeHoldsIt)
{
    Design design(samplePaths(), m_prompt);
    ASSERT_TRUE(design.NewDesign(GetParam().series, GetParam().device, GetParam().package));
    const DesignSnapshot start = design.snapshot();
    for (const PeripheralsBaseInfo &entry : design.peripherals()) {
        IP_ModeAndConfiguration *peripheral = design.peripheral(entry.InstanceName);
        const QStringList own = peripheral ? design.signalsOf(entry.InstanceName) : QStringList();
        for (size_t c = 0; peripheral && c < peripheral->controls().size(); ++c) {
            const ModeControl &control = *peripheral->controls()[c];
            const std::vector<ItemInfoStruct> items = control.items();
            for (const ItemInfoStruct &item : items) {
                for (const QString &signal : item.pinSignals()) {
                    EXPECT_TRUE(own.contains(signal) || design.pinInfo().placesOf(signal).isEmpty())
                        << entry.InstanceName.toStdString() << ' ' << signal.toStdString();
                }
                ASSERT_TRUE(design.restore(start));
                if (!peripheral->chooseItem(control.modeName(), control.isCheckBox() ? "TRUE" : item.Name))
                    continue;
                design.scheduler().drain();
                const QStringList withRows = design.gpio()->instancesWithRows();
                for (const QString &instance : withRows) {
                    const QStringList held = design.part(instance)->signalsInUse();
                    for (const SignalsGPIOSetting *row : design.gpio()->rowsOf(instance))
                        EXPECT_TRUE(held.contains(row->signalName))
                            << instance.toStdString() << ' ' << row->signalName.toStdString();
                    EXPECT_EQ(design.gpio()->rowsOf(instance).size(), held.size()) << instance.toStdString();
                }
                EXPECT_TRUE(peripheral->signalsInUse().isEmpty() || withRows.contains(entry.InstanceName));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sample, ModesOfEveryDevice, testing::ValuesIn(sampleDevices(12)));
INSTANTIATE_TEST_SUITE_P(Matrix, ModesOfEveryDevice, testing::ValuesIn(sampleDevices(1)));

TEST(ClockRouting, ACrystalReachesTheClockAndThePllFollowsWhenAsked)
{
    ScriptedPrompt prompt{0};
    Design design(samplePaths(), prompt);
    ASSERT_TRUE(design.NewDesign("ZV32F403A", "ZV32F403ARGT7", "LQFP64"));
    EXPECT_FALSE(design.apply({"clock", "pllrcs", "HEXT"})) << "no crystal yet";

    prompt.otherwise = 1;
    ASSERT_TRUE(design.apply({"mode", "CRM/HEXT", "HEXT-External-Oscillator"}));
    EXPECT_EQ(prompt.takeTexts(),
              QStringList("Question: After enabling hext, should the PLL reference clock(pllrcs) in 'Clock "
                          "Configuration' be switched to hext?"));
    EXPECT_EQ(design.clock().Get_PLLRC(), 1);
    EXPECT_TRUE(design.apply({"clock", "pllrcs", "HEXT"}));
    EXPECT_EQ(design.clock().Get_PLLRC(), 0);

    ASSERT_TRUE(design.apply({"mode", "CRM/HEXT", ""}));
    EXPECT_EQ(design.clock().Get_PLLRC(), 1) << "the PLL cannot stay on a crystal that is gone";

    prompt.otherwise = 0;
    ASSERT_TRUE(design.apply({"mode", "CRM/HEXT", "HEXT-External-Oscillator"}));
    EXPECT_EQ(design.clock().Get_PLLRC(), 0);
}

// The same switch of the chip gives both pins away.
TEST(ClockRouting, AClockFromOutsideAndTheOtherPinOfTheCrystalExcludeEachOther)
{
    ScriptedPrompt prompt{0};
    Design design(samplePaths(), prompt);
    ASSERT_TRUE(design.NewDesign("ZV32F403A", "ZV32F403ARGT7", "LQFP64"));
    ASSERT_TRUE(design.apply({"pin", "PD1", "GPIO_Output"}));
    const IP_ModeAndConfiguration &crm = *design.peripheral("CRM");
    const ModeControl &hext = *crm.control("HEXT");
    for (int index = 1; index < hext.count(); ++index) {
        EXPECT_EQ(hext.items().at(index - 1).state(), ItemState::PinConflict);
        const Explanation why = itemExplanation(design, crm, hext, index);
        EXPECT_TRUE(why.text.contains("\nCRM_HEXT_IN------PD1/HEXT_OUT\nGPIO_Output")) << why.text.toStdString();
        EXPECT_EQ(why.modules, QStringList("GPIO"));
    }
    ASSERT_TRUE(design.apply({"pin", "PD1", "-GPIO_Output"}));
    ASSERT_TRUE(design.apply({"mode", "CRM/HEXT", "HEXT-Bypass"}));
    EXPECT_EQ(design.apply({"pin", "PD1", "GPIO_Output"}).reason, DesignReason::CrystalPinsParted);

    ASSERT_TRUE(design.NewDesign("ZV32F403A", "ZV32F403AVGT7", "LQFP100"));
    ASSERT_TRUE(design.apply({"mode", "CRM/HEXT", "HEXT-Bypass"}));
    EXPECT_TRUE(design.apply({"pin", "PD1", "GPIO_Output"})) << "here they have pins of their own";
}

} // namespace
