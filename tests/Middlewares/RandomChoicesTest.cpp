// Random choices over all modules of the sample devices: what they leave behind, and whether what is offered is taken.

#include "Middlewares/Middlewares.h"

#include "Design/DesignTexts.h"
#include "Design/PrintedDesign.h"
#include "Model/xmloperation.h"

#include <gtest/gtest.h>

#include <random>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

struct Walk
{
    QString series, device, package;
    int states;
};

void PrintTo(const Walk &walk, std::ostream *out)
{
    *out << walk.device.toStdString();
}

/// Every device of the sample database, or one of each `step`, with so many random states.
std::vector<Walk> walks(int step, int states)
{
    std::vector<Walk> all;
    int number = 0;
    for (const MCUSerialStruct &series : XMLOperation(samplePaths()).GetMCUSerialsList()) {
        for (const MCUDeviceStruct &device : series.MCUDeviceList) {
            if (number++ % step == 0)
                all.push_back({series.SeriaName, device.DeviceName, device.DevicePackage, states});
        }
    }
    return all;
}

class RandomChoices : public testing::TestWithParam<Walk>
{
protected:
    RandomChoices() : m_design(samplePaths(), m_prompt), m_random(unsigned(qHash(GetParam().device, 7)))
    {
        registerMiddlewares(m_design);
        EXPECT_TRUE(m_design.NewDesign(GetParam().series, GetParam().device, GetParam().package));
        for (const auto &part : m_design.parts()) {
            if (ModuleConfiguration *module = m_design.module(part->instanceName());
                module && !module->controls().empty())
                m_modules.push_back(module);
        }
    }

    int below(int count) { return int(m_random() % unsigned(count)); }

    static QString itemName(const ModeControl &control, int index)
    {
        if (index == 0)
            return {};
        return control.isCheckBox() ? QStringLiteral("TRUE") : control.items().at(index - 1).Name;
    }

    DesignAnswer choose(const ModuleConfiguration &module, const ModeControl &control, int index)
    {
        const DesignAnswer answer =
            m_design.apply({"mode", module.instanceName() + '/' + control.modeName(), itemName(control, index)});
        m_design.scheduler().drain();
        return answer;
    }

    DesignAnswer setValue(const ModuleConfiguration &module, const QString &name, const QString &value)
    {
        const DesignAnswer answer = m_design.apply({"param", module.instanceName() + '/' + name, value});
        m_design.scheduler().drain();
        return answer;
    }

    /// Some choices, on more often than off, and some values.
    int wander(int steps)
    {
        int taken = 0;
        for (int step = 0; step < steps; ++step) {
            const ModuleConfiguration &module = *m_modules.at(below(int(m_modules.size())));
            const ModeControl &control = *module.controls().at(below(int(module.controls().size())));
            taken += choose(module, control, below(4) ? 1 + below(control.count() - 1) : 0).accepted() ? 1 : 0;
            const QList<RefParameter> &parameters = module.parameters().GetRefParameterList();
            if (parameters.isEmpty())
                continue;
            const RefParameter parameter = parameters.at(below(parameters.size()));
            if (!parameter.PossibleValueList.isEmpty())
                setValue(module, parameter.Name,
                         parameter.PossibleValueList.at(below(parameter.PossibleValueList.size())).Value);
        }
        return taken;
    }

    ScriptedPrompt m_prompt{0};
    Design m_design;
    std::mt19937 m_random;
    std::vector<ModuleConfiguration *> m_modules;
};

/// A token that some path enables once more than it cancels stands in the print at the end.
TEST_P(RandomChoices, AResetLeavesTheStart)
{
    const QStringList start = printed(m_design);
    EXPECT_GT(wander(150 * GetParam().states), 50);
    m_design.AllConfigReset();
    m_design.scheduler().drain();
    EXPECT_EQ(difference(start, printed(m_design)), QStringList());
}

TEST_P(RandomChoices, WhatIsOfferedIsTaken)
{
    int tried = 0;
    for (int state = 0; state < GetParam().states; ++state) {
        wander(60);
        const DesignSnapshot before = m_design.snapshot();
        const QStringList shown = printed(m_design);
        const auto expectTaken = [&](const DesignAnswer &answer, const QString &what) {
            ++tried;
            EXPECT_TRUE(answer) << what.toStdString() << ": " << answerText(answer).toStdString();
            ASSERT_TRUE(m_design.restore(before));
        };
        for (const ModuleConfiguration *module : m_modules) {
            for (const auto &control : module->controls()) {
                for (int index = 0; index < control->count(); ++index) {
                    if (index == control->index() || !control->itemCanbeChoosed(index))
                        continue;
                    const QString what =
                        module->instanceName() + '/' + control->modeName() + '=' + itemName(*control, index);
                    const DesignAnswer answer = choose(*module, *control, index);
                    EXPECT_TRUE(!answer || control->index() == index) << what.toStdString() << " fell off again";
                    expectTaken(answer, what);
                }
            }
            const QList<RefParameter> parameters = module->parameters().GetRefParameterList();
            for (const RefParameter &parameter : parameters) {
                for (const PossibleValue &value : parameter.PossibleValueList) {
                    const bool offered = parameter.Visible && parameter.Enable && module->parameters().isOffered(value);
                    if (offered && value.Value != parameter.CurrentValue)
                        expectTaken(setValue(*module, parameter.Name, value.Value),
                                    module->instanceName() + '/' + parameter.Name + '=' + value.Value);
                }
            }
        }
        EXPECT_EQ(difference(shown, printed(m_design)), QStringList()) << "a snapshot put back is another design";
    }
    EXPECT_GT(tried, 100);
}

/// No value depends on the language, nor does what is offered.
TEST_P(RandomChoices, ALanguageLosesNoValue)
{
    wander(120);
    const QStringList before = printed(m_design);
    for (const LANGUAGE language : {UI_CH, UI_EN}) {
        GlobalLanguage::g_CurrentLanguage = language;
        m_design.updateLanguage();
        m_design.scheduler().drain();
        EXPECT_EQ(difference(before, printed(m_design)), QStringList());
    }
}

INSTANTIATE_TEST_SUITE_P(Sample, RandomChoices, testing::ValuesIn(walks(12, 1)));
INSTANTIATE_TEST_SUITE_P(Matrix, RandomChoices, testing::ValuesIn(walks(1, 2)));

} // namespace
