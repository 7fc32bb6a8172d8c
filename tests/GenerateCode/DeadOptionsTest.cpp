// Every option that a page offers changes the code, in one of the modes at least.

#include "Design/GPIO_Configuration.h"
#include "Design/ModeFoundations.h"
#include "GenerateCode/CodeGeneration.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "Model/SeriesHelpers.h"
#include "ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <map>
#include <optional>

namespace ChipLoom::Test {

namespace {

struct OptionCase
{
    const char *series, *device, *package;
    QStringList idle; ///< what changes nothing by itself, and is meant to
};

class Options : public ::testing::TestWithParam<OptionCase>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_design.NewDesign(GetParam().series, GetParam().device, GetParam().package));
        m_design.scheduler().drain();
    }

    bool hasGenerator(const QString &instance) const
    {
        const ZV32MCUSERIALS series = MCUSerialString_To_ZV32MCUSERIALS(GetParam().series);
        return instance == "CRM" || instance == "SYSTEM" || generatorParts(series, instance).questions;
    }

    bool generates() { return checkBeforeGeneration(m_design) == GenerationStop::None; }

    /// Tries values until one makes other files than those that stand in the folder. What cannot be changed alone, or
    /// stops a generation, says nothing.
    void tryValues(const QString &option, const QStringList &values)
    {
        const DesignSnapshot before = m_design.snapshot();
        for (int i = 0; i < values.size() && !m_lives[option].value_or(false); ++i) {
            if (applySetting(m_design, option + '=' + values.at(i)) && generates()) {
                const QVector<GeneratedFileRecord> files = generateCode(m_design, m_folder.path(), false).files;
                m_lives[option] = std::any_of(files.begin(), files.end(), [](const GeneratedFileRecord &file) {
                    return file.state != GeneratedFileRecord::State::Unchanged;
                });
            }
            m_design.restore(before);
        }
    }

    static QStringList otherValues(const RefParameter &parameter)
    {
        QStringList values;
        for (const PossibleValue &value : parameter.PossibleValueList)
            values.append(value.Value);
        if (values.isEmpty())
            values = QStringList{parameter.MaxValue, parameter.MinValue, "1", "02:00:00:00:00:01"};
        values.removeAll(parameter.CurrentValue);
        return values;
    }

    void tryAll(const IP_ModeAndConfiguration &peripheral)
    {
        for (const auto &control : peripheral.controls()) {
            if (control->isOn())
                tryValues("mode/" + peripheral.instanceName() + '/' + control->modeName(),
                          {control->isCheckBox() ? "FALSE" : "Disable"});
        }
        const QList<RefParameter> parameters = peripheral.parameters().GetRefParameterList();
        for (const RefParameter &parameter : parameters) {
            if (parameter.Visible && parameter.Enable)
                tryValues("param/" + peripheral.instanceName() + '/' + parameter.Name, otherValues(parameter));
        }
        std::vector<SignalsGPIOSetting> rows;
        for (const SignalsGPIOSetting *row : m_design.gpio()->GetAllSignalsGPIOSettingList())
            rows.push_back(*row);
        for (const SignalsGPIOSetting &row : rows) {
            for (const RefParameter &setting : row.signalPinGPIOInfoList) {
                if (setting.Visible && setting.PossibleValueList.size() > 1)
                    tryValues("gpio/" + row.InPinName + '/' + setting.Name, otherValues(setting));
            }
        }
    }

    ScriptedPrompt m_prompt{0};
    Design m_design{AppPaths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)), m_prompt};
    QTemporaryDir m_folder;
    std::map<QString, std::optional<bool>> m_lives; ///< options, as the door takes them
};

TEST_P(Options, ChangeTheCode)
{
    const DesignSnapshot empty = m_design.snapshot();
    QStringList kinds;
    for (const PeripheralsBaseInfo &info : m_design.peripherals()) {
        const QString instance = info.InstanceName, kind = info.Name + info.VersionFile;
        const IP_ModeAndConfiguration *peripheral = m_design.peripheral(instance);
        if (!peripheral || !hasGenerator(instance) || kinds.contains(kind))
            continue;
        kinds.append(kind);
        const auto tryHere = [&] {
            completeModes(m_design, instance);
            applySetting(m_design, "dma/any=" + instance);
            applySetting(m_design, "clock/hext=8");
            if (!generates())
                return;
            ASSERT_TRUE(generateCode(m_design, m_folder.path(), true).ok);
            tryAll(*peripheral);
        };
        for (const auto &control : peripheral->controls()) {
            for (const QString &item : itemsOf(*control)) {
                m_design.restore(empty);
                for (const QString &other : foundationsOf(instance, control->modeName(), item))
                    applySetting(m_design, other);
                if (chooseItem(m_design, instance, control->modeName(), item))
                    tryHere();
            }
        }
        for (const auto &control : peripheral->controls())
            chooseItem(m_design, instance, control->modeName(), itemsOf(*control).first());
        tryHere();
    }
    QStringList idle;
    for (const auto &[option, lives] : m_lives) {
        if (!lives.value_or(true))
            idle.append(option);
    }
    EXPECT_EQ(idle, GetParam().idle) << idle.join(", ").toStdString();
}

// A line is offered as a trigger then; a timer without an external input has one clock only.
const QStringList Lines{"mode/ADC1/Ordinary_External_Trigger", "mode/ADC1/Preempt_External_Trigger"};
const QStringList LinesAndClocks =
    Lines + QStringList{"mode/TMR12/Clock_source", "mode/TMR5/Clock_source", "mode/TMR9/Clock_source"};

INSTANTIATE_TEST_SUITE_P(
    SlowFamilies, Options,
    ::testing::Values(OptionCase{"ZV32F421", "ZV32F421K8T7", "LQFP32", Lines + QStringList{"mode/TMR15/Clock_source"}},
                      OptionCase{"ZV32F407", "ZV32F407VGT7", "LQFP100", LinesAndClocks},
                      OptionCase{"ZV32F437", "ZV32F437ZMT7", "LQFP144", LinesAndClocks}),
    [](const ::testing::TestParamInfo<OptionCase> &info) { return std::string(info.param.device); });

} // namespace

} // namespace ChipLoom::Test
