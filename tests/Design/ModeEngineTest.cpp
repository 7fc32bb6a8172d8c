#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "Model/xmloperation.h"

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

class SilentPrompt : public UserPrompt
{
public:
    int ask(const PromptRequest &request) override
    {
        m_asked.append(request.text);
        return m_answer;
    }

    QStringList m_asked;
    int m_answer = 0;
};

AppPaths samplePaths()
{
    AppPaths paths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR));
    return paths;
}

// Everything that a user could tell apart: placed signals, choices and their states, parameters, tokens, the rows of
// the settings lists.
QStringList printed(const Design &design)
{
    QStringList lines;
    for (const MCUPinsBaseInfo &pin : design.pinInfo().m_deviceBaseInfoList) {
        for (const PinSignalStruct &signal : pin.pinSignalsList) {
            if (signal.configStatus != Not_Config)
                lines.append(pin.pinName + ' ' + signal.signalName + ' ' + QString::number(signal.configStatus));
        }
    }
    for (const auto &part : design.parts()) {
        const auto *peripheral = dynamic_cast<const IP_ModeAndConfiguration *>(part.get());
        if (!peripheral)
            continue;
        const QString name = peripheral->instanceName();
        lines.append(name + QString::number(peripheral->GetIPStatusFlag()));
        for (const auto &control : peripheral->controls()) {
            QString states;
            for (const ItemInfoStruct &item : control->items())
                states += QString::number(int(item.state()));
            QStringList tokens = control->receivedTokens();
            tokens.sort();
            lines.append(QStringList{name, control->modeName(), QString::number(control->index()),
                                     QString::number(control->isEnabled()), states, tokens.join(',')}
                             .join(' '));
        }
        for (const RefParameter &parameter : peripheral->parameters().GetRefParameterList())
            lines.append(name + ' ' + parameter.Name + ' ' + parameter.CurrentValue);
        QStringList tokens = peripheral->parameters().GetValidSemaphoreList();
        tokens.sort();
        lines.append(name + " tokens " + tokens.join(','));
    }
    for (const SignalsGPIOSetting *row : design.gpio()->GetAllSignalsGPIOSettingList()) {
        QStringList cells{row->InPinName, row->signalName, row->signalIOMode, row->signalUserLabel};
        for (const RefParameter &parameter : row->signalPinGPIOInfoList)
            cells.append(parameter.Name + '=' + parameter.CurrentValue);
        lines.append(cells.join(' '));
    }
    lines.append(design.nvic()->GetPriorityGroupParameter().CurrentValue);
    for (const MCUNVICSetting *vector : design.nvic()->GetAllNVICSettingList()) {
        lines.append(QStringList{
            vector->ValueName, QString::number(vector->canBeSet), QString::number(vector->enabledFlag),
            QString::number(vector->preemptionPriority_Value), QString::number(vector->IRQHandler_Generate_enabledFlag)}
                         .join(' '));
    }
    return lines;
}

QStringList difference(const QStringList &before, const QStringList &after)
{
    QStringList lines;
    for (const QString &line : after) {
        if (!before.contains(line))
            lines.append("+ " + line);
    }
    for (const QString &line : before) {
        if (!after.contains(line))
            lines.append("- " + line);
    }
    return lines;
}

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
    SilentPrompt m_prompt;
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

INSTANTIATE_TEST_SUITE_P(Sample, ModesOfEveryDevice, testing::ValuesIn(sampleDevices(12)));
INSTANTIATE_TEST_SUITE_P(Matrix, ModesOfEveryDevice, testing::ValuesIn(sampleDevices(1)));

TEST(ClockRouting, ACrystalReachesTheClockAndThePllFollowsWhenAsked)
{
    SilentPrompt prompt;
    Design design(samplePaths(), prompt);
    ASSERT_TRUE(design.NewDesign("ZV32F403A", "ZV32F403ARGT7", "LQFP64"));
    EXPECT_FALSE(design.apply({"clock", "pllrcs", "HEXT"})) << "no crystal yet";

    prompt.m_answer = 1;
    ASSERT_TRUE(design.apply({"mode", "CRM/HEXT", "HEXT-External-Oscillator"}));
    EXPECT_EQ(prompt.m_asked, QStringList("After enabling hext, should the PLL reference clock(pllrcs) in 'Clock "
                                          "Configuration' be switched to hext?"));
    EXPECT_EQ(design.clock().Get_PLLRC(), 1);
    EXPECT_TRUE(design.apply({"clock", "pllrcs", "HEXT"}));
    EXPECT_EQ(design.clock().Get_PLLRC(), 0);

    ASSERT_TRUE(design.apply({"mode", "CRM/HEXT", ""}));
    EXPECT_EQ(design.clock().Get_PLLRC(), 1) << "the PLL cannot stay on a crystal that is gone";

    prompt.m_answer = 0;
    ASSERT_TRUE(design.apply({"mode", "CRM/HEXT", "HEXT-External-Oscillator"}));
    EXPECT_EQ(design.clock().Get_PLLRC(), 0);
}

} // namespace
