#include "Middlewares/Middlewares.h"

#include "Design/DesignTexts.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/PrintedDesign.h"
#include "Design/SectionRoundTrip.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

struct Device
{
    const char *series;
    const char *device;
    const char *package;
};

void PrintTo(const Device &device, std::ostream *out)
{
    *out << device.device;
}

class DesignSections : public testing::Test
{
protected:
    std::unique_ptr<Design> open(const Device &device)
    {
        auto design = std::make_unique<Design>(samplePaths(), prompt);
        registerMiddlewares(*design);
        EXPECT_TRUE(design->NewDesign(device.series, device.device, device.package));
        return design;
    }

    static XMLElementInfo root(const QByteArray &text)
    {
        const XmlDocument document = parseXml(text);
        EXPECT_EQ(document.problem.fault, XmlFault::None);
        return document.root;
    }

    static QStringList named(const QList<DesignProblem> &problems)
    {
        QStringList list;
        for (const DesignProblem &problem : problems)
            list.append(problem.place + ": " + answerText(problem.reason));
        return list;
    }

    ScriptedPrompt prompt{0};
};

const Device Medium{"ZV32F407", "ZV32F407VGT7", "LQFP100"};

// Another value that the parameter may have, or nothing.
QString otherValue(const IP_ParamSettingConfiguration &parameters, const RefParameter &parameter)
{
    QStringList candidates{parameter.MaxValue, parameter.MinValue};
    for (const PossibleValue &value : parameter.PossibleValueList) {
        if (!value.ErrorFlag)
            candidates.append(value.Value);
    }
    for (const QString &value : qAsConst(candidates)) {
        if (!value.isEmpty() && value != parameter.CurrentValue && parameters.canTake(parameter.Name, value))
            return value;
    }
    return {};
}

// The last choice of everything that still has one, and every third parameter at another value.
void fill(Design &design)
{
    for (const auto &part : design.parts()) {
        auto *module = dynamic_cast<ModuleConfiguration *>(part.get());
        if (!module)
            continue;
        for (const auto &control : module->controls()) {
            int index = control->count() - 1;
            while (index > 0 && !control->itemCanbeChoosed(index))
                --index;
            if (index > 0 && !control->isOn())
                module->chooseItem(control->modeName(),
                                   control->isCheckBox() ? "TRUE" : control->items().at(index - 1).Name);
        }
    }
    int count = 0;
    for (const auto &part : design.parts()) {
        auto *module = dynamic_cast<ModuleConfiguration *>(part.get());
        if (!module)
            continue;
        QStringList names;
        for (const RefParameter &parameter : module->parameters().GetRefParameterList()) {
            if (++count % 3 == 0)
                names.append(parameter.Name);
        }
        for (const QString &name : qAsConst(names)) {
            const RefParameter *parameter = module->parameters().parameter(name);
            const QString value = parameter ? otherValue(module->parameters(), *parameter) : QString();
            if (!value.isEmpty())
                design.apply({"param", module->instanceName() + '/' + name, value});
            design.scheduler().drain();
        }
    }
}

class SectionsOfDevices : public DesignSections, public testing::WithParamInterface<Device>
{
};

TEST_P(SectionsOfDevices, ReopenIdenticallyInAnyOrderOfTheirEntries)
{
    const auto design = open(GetParam());
    EXPECT_LT(writtenSections(*design).size(), 600) << "a new design writes next to nothing";
    fill(*design);
    const QByteArray text = writtenSections(*design);
    EXPECT_GT(text.size(), 3000);

    XMLElementInfo reversed = root(text);
    reverseEntries(reversed);
    for (const XMLElementInfo &sections : {root(text), reversed}) {
        const auto again = open(GetParam());
        EXPECT_EQ(named(readSections(*again, sections)), QStringList());
        EXPECT_EQ(difference(QString(text).split('>'), QString(writtenSections(*again)).split('>')), QStringList());
    }
}

INSTANTIATE_TEST_SUITE_P(Sample, SectionsOfDevices,
                         testing::Values(Medium, Device{"ZV32F421", "ZV32F421C8T7", "LQFP48"},
                                         Device{"ZV32F403A", "ZV32F403ARGT7", "LQFP64"}));

TEST_F(DesignSections, WhatCannotBeTakenKeepsItsDefaultAndIsNamed)
{
    const auto design = open(Medium);
    const QStringList problems = named(readSections(*design, root(R"(<Root><USART1>
        <Mode><ModeSub name="Mode" value="Asynchronous"/><ModeSub name="No such mode" value="TRUE"/></Mode>
        <Parameters><ParametersSub name="BaudRate" value="fast"/><ParametersSub name="Databitnum" value="USART_DATA_9BITS"/>
        </Parameters></USART1>
        <USART99/><LWIP><Mode><ModeSub name="Activated" value="TRUE"/></Mode></LWIP></Root>)")));
    EXPECT_EQ(problems, QStringList({"USART1/No such mode: USART1 has no mode \"No such mode\" on this device.",
                                     "USART1/BaudRate: \"fast\" is no value for BaudRate.",
                                     "LWIP/Activated: The mode \"Activated\" of LWIP is closed by the settings of "
                                     "another peripheral."}));
    EXPECT_EQ(design->module("USART1")->parameters().parameter("BaudRate")->CurrentValue, "115200");
    EXPECT_EQ(design->module("USART1")->parameters().parameter("Databitnum")->CurrentValue, "USART_DATA_9BITS");
}

TEST_F(DesignSections, ChoicesFromResetAndFromPinsStayOffWhereTheyWereOff)
{
    const auto design = open(Medium);
    ASSERT_TRUE(design->apply({"mode", "SYSTEM/Time_Base", ""}));
    ASSERT_TRUE(design->apply({"mode", "DEBUG/Debug interface", ""}));
    ASSERT_TRUE(design->apply(DesignChange::placeSignal("PA9", "USART1_TX")));
    ASSERT_TRUE(design->apply(DesignChange::placeSignal("PA10", "USART1_RX")));
    const ModeControl *usart = design->module("USART1")->control("Mode");
    const QString byPins = usart->currentName();
    ASSERT_TRUE(design->apply({"mode", "USART1/Mode", ""}));
    const QByteArray text = writtenSections(*design);

    const auto again = open(Medium);
    ASSERT_TRUE(again->apply(DesignChange::placeSignal("PA9", "USART1_TX")));
    ASSERT_TRUE(again->apply(DesignChange::placeSignal("PA10", "USART1_RX")));
    EXPECT_EQ(again->module("USART1")->control("Mode")->currentName(), byPins);
    EXPECT_EQ(named(readSections(*again, root(text))), QStringList());
    EXPECT_EQ(writtenSections(*again), text);
    EXPECT_FALSE(again->module("SYSTEM")->control("Time_Base")->isOn());
}

TEST_F(DesignSections, DebugIsOneModeOnEverySeries)
{
    const Device small{"ZV32F421", "ZV32F421C8T7", "LQFP48"};
    const auto design = open(small);
    EXPECT_TRUE(writtenSections(*design).contains(R"(<ModeSub name="Debug interface" value="TRUE"/>)"));
    readSections(*design,
                 root(R"(<Root><DEBUG><Mode><ModeSub name="Debug interface" value="FALSE"/></Mode></DEBUG></Root>)"));
    EXPECT_FALSE(design->module("DEBUG")->GetIPValidFlag());

    const auto large = open(Medium);
    readSections(*large,
                 root(R"(<Root><DEBUG><Mode><ModeSub name="Debug interface" value="TRUE"/></Mode></DEBUG></Root>)"));
    EXPECT_EQ(large->module("DEBUG")->control("Debug interface")->currentName(), "SWD");
}

TEST_F(DesignSections, ValuesKeepTheirBase)
{
    const auto design = open(Medium);
    ASSERT_TRUE(design->apply({"mode", "FREERTOS/Activated", "TRUE"}));
    ASSERT_TRUE(
        design->module("FREERTOS")->parameters().ParamModefySlot("TOTAL_HEAP_SIZE", "4096", CURRENTVALUETYPE_HEX));
    EXPECT_FALSE(design->apply({"param", "USB_DEVICE/ProductString", QString(QChar(1))}));
    const auto again = open(Medium);
    EXPECT_EQ(named(readSections(*again, root(writtenSections(*design)))), QStringList());
    const RefParameter *heap = again->module("FREERTOS")->parameters().parameter("TOTAL_HEAP_SIZE");
    EXPECT_EQ(heap->CurrentValue, "0x1000");
    EXPECT_EQ(heap->CurrentValueType, CURRENTVALUETYPE_HEX);
}

} // namespace
