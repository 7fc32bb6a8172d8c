#include "Design/IP_ParamSettingConfiguration.h"

#include "Model/xmloperation.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

using namespace ChipLoom;

namespace {

const char *const Timer = R"(<IP>
 <RefMode Name="All" Abstract="true" Group="Common"><Parameter Name="Period"/><Parameter Name="Limit"/></RefMode>
 <RefMode Name="Pwm" BaseMode="Channel1">
  <Parameter Name="Polarity"/><Parameter Name="Pulse"/><Parameter Name="DeadTime"/>
 </RefMode>
 <RefMode Name="Linked" BaseMode="Output">
  <Parameter Name="Copy"/><Parameter Name="Free"/><Parameter Name="Source"/>
 </RefMode>
 <RefMode Name="Capture" BaseMode="Channel1">
  <Parameter Name="Polarity"><PossibleValue>RISING</PossibleValue><PossibleValue>FALLING</PossibleValue></Parameter>
  <Parameter Name="Filter"><PossibleValue>FIXED</PossibleValue></Parameter>
 </RefMode>
 <RefParameter Name="Period" Type="integer" DefaultValue="1000" Min="1" Max="65535"/>
 <RefParameter Name="Limit" Type="hexadecimal" DefaultValue="FF" Min="0" Max="FFFF"/>
 <RefParameter Name="Pulse" Type="integer" DefaultValue="500" Min="0" Max="=#Period"/>
 <RefParameter Name="Polarity" Type="list" DefaultValue="HIGH">
  <PossibleValue Comment="High" Value="HIGH"/>
  <PossibleValue Comment="Low" Value="LOW" Condition="!FixedHigh"/>
  <PossibleValue Comment="Rising" Value="RISING"/><PossibleValue Comment="Falling" Value="FALLING"/>
 </RefParameter>
 <RefParameter Name="Filter" Type="list" DefaultValue="OTHER">
  <PossibleValue Comment="Fixed" Value="FIXED" Semaphore="$IpInstance_Filtered"/>
 </RefParameter>
 <RefParameter Name="DeadTime" Type="integer" DefaultValue="0" Max="10"/>
 <RefParameter Name="DeadTime" Type="integer" DefaultValue="7" Max="255">
  <Condition Expression="Polarity=LOW"/>
 </RefParameter>
 <RefParameter Name="Copy" Type="integer" DefaultValue="=#Period" Min="1" Max="10"/>
 <RefParameter Name="Free" Type="integer" DefaultValue="70000" Max="=#Nobody"/>
 <RefParameter Name="Source" Type="list" DefaultValue="PIN">
  <PossibleValue Comment="Pin" Value="PIN" Condition="PinThere"/>
  <PossibleValue Comment="Pin, gone" Value="LOST" ErrorFlag="true" Condition="!PinThere"/>
  <PossibleValue Comment="Clock" Value="CLOCK"/>
  <PossibleValue Comment="Fast" Value="FAST" Action="Remove" Condition="Period &lt; 100"/>
 </RefParameter>
</IP>)";

class ParameterEngine : public testing::Test
{
protected:
    ParameterEngine() : m_parameters("ZV32F421", "TMR1", tree(), m_scheduler)
    {
        QObject::connect(&m_parameters, &IP_ParamSettingConfiguration::paramTokensChanged, &m_parameters,
                         [this](const QStringList &cancelled, const QStringList &enabled) {
                             for (const QString &token : cancelled)
                                 m_heard.removeOne(token);
                             m_heard += enabled;
                             ++m_announcements;
                         });
    }

    std::shared_ptr<const PeripheralTree> tree()
    {
        const QString path = m_dir.filePath("timer.xml");
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(Timer);
        file.close();
        const XMLOperation reader{AppPaths(m_dir.path(), m_dir.path())};
        return std::make_shared<const PeripheralTree>(reader.GetIPXMLInfo(path));
    }

    QString value(const QString &name) const
    {
        const RefParameter *parameter = m_parameters.parameter(name);
        return parameter ? parameter->CurrentValue : QStringLiteral("absent");
    }

    QStringList names() const
    {
        QStringList names;
        for (const RefParameter &parameter : m_parameters.GetRefParameterList())
            names.append(parameter.Name);
        return names;
    }

    DesignReason set(const QString &name, const QString &value)
    {
        const DesignReason reason = m_parameters.ParamModefySlot(name, value, CURRENTVALUETYPE_NONE).reason;
        EXPECT_TRUE(m_scheduler.drain());
        return reason;
    }

    QTemporaryDir m_dir;
    Scheduler m_scheduler;
    QStringList m_heard;
    int m_announcements = 0;
    IP_ParamSettingConfiguration m_parameters;
};

TEST_F(ParameterEngine, TheSetFollowsTheModesAndValuesSurviveLeavingOne)
{
    m_parameters.ModeChange("Channel1", "Pwm");
    EXPECT_EQ(names(), QStringList({"Period", "Limit", "Polarity", "Pulse", "DeadTime"}));
    EXPECT_EQ(value("Limit"), "0xFF");
    EXPECT_EQ(m_parameters.parameter("Period")->Group, "Common");
    EXPECT_EQ(set("Pulse", "300"), DesignReason::None);

    m_parameters.ModeChange("Channel1", "Capture");
    EXPECT_EQ(names(), QStringList({"Period", "Limit", "Polarity", "Filter"}));
    EXPECT_EQ(value("Polarity"), "RISING") << "HIGH is none of the mode's values: the first is taken";
    EXPECT_EQ(value("Filter"), "FIXED");
    EXPECT_EQ(m_heard, QStringList("TMR1_Filtered"));

    m_parameters.ModeChange("Channel1", "Pwm");
    EXPECT_EQ(value("Pulse"), "300");
    EXPECT_EQ(m_heard, QStringList());

    m_parameters.ModeChange("Channel1", "");
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(ParameterEngine, AConditionalDeclarationWinsWhileItIsMet)
{
    m_parameters.ModeChange("Channel1", "Pwm");
    EXPECT_EQ(m_parameters.parameter("DeadTime")->MaxValue, "10");
    set("Polarity", "LOW");
    EXPECT_EQ(m_parameters.parameter("DeadTime")->MaxValue, "255");
    set("DeadTime", "200");
    set("Polarity", "HIGH");
    EXPECT_EQ(value("DeadTime"), "10") << "a value beyond the new bound goes to it";
}

TEST_F(ParameterEngine, ABoundFollowsTheParameterThatItNames)
{
    m_parameters.ModeChange("Channel1", "Pwm");
    EXPECT_EQ(m_parameters.ParamModefySlot("Pulse", "1001", CURRENTVALUETYPE_NONE),
              (DesignAnswer{DesignReason::AboveMaximum, {"Pulse", "1001", "1000"}}));
    set("Period", "2000");
    EXPECT_EQ(set("Pulse", "1001"), DesignReason::None);
    set("Period", "800");
    EXPECT_EQ(value("Pulse"), "800");
}

TEST_F(ParameterEngine, AValueThatNamesAnotherIsNotJudgedAndABoundThatNamesNobodyIsNone)
{
    m_parameters.ModeChange("Output", "Linked");
    EXPECT_EQ(value("Copy"), "=#Period");
    EXPECT_EQ(value("Free"), "70000");
    EXPECT_EQ(m_parameters.GetOneParamStatus(*m_parameters.parameter("Copy")), true);
    EXPECT_EQ(set("Copy", "=#Limit"), DesignReason::NotANumber) << "nobody types such a value";
    EXPECT_EQ(set("Copy", "11"), DesignReason::AboveMaximum);
    EXPECT_EQ(set("Copy", "7"), DesignReason::None);
    m_parameters.RefreshParams();
    EXPECT_EQ(value("Copy"), "7");
}

TEST_F(ParameterEngine, AMarkedValueIsTheUsersAlone)
{
    m_parameters.EnableSemaphore({"PinThere"});
    m_parameters.ModeChange("Output", "Linked");
    EXPECT_EQ(value("Source"), "PIN");
    EXPECT_EQ(set("Source", "LOST"), DesignReason::ValueNotOffered);
    m_parameters.CancelSemaphore({"PinThere"});
    m_parameters.RefreshParams();
    EXPECT_EQ(value("Source"), "CLOCK") << "the marked value stands before it, but is not chosen";
    EXPECT_EQ(m_parameters.GetParamStatusFlag(), IPPARAMSTATUS_NORMAL);
    EXPECT_EQ(set("Source", "LOST"), DesignReason::None);
    EXPECT_EQ(m_parameters.GetParamStatusFlag(), IPPARAMSTATUS_ERROR);
    EXPECT_EQ(m_parameters.valueAnswer(*m_parameters.parameter("Source")).reason, DesignReason::ValueMarked);
    m_parameters.RefreshParams();
    EXPECT_EQ(value("Source"), "LOST") << "nor is it taken away";

    EXPECT_EQ(set("Source", "FAST"), DesignReason::ValueNotOffered);
    const ParameterCondition::Unmet unmet =
        m_parameters.unmetTerms("Period < 100 & !Away | PinThere & Nothing | Limit = 5");
    EXPECT_EQ(unmet.parameters, QStringList({"Period", "Limit"}));
    EXPECT_EQ(unmet.words, QStringList("Nothing"));
    set("Period", "50");
    EXPECT_EQ(set("Source", "FAST"), DesignReason::None);
}

TEST_F(ParameterEngine, ATokenClosesAValueAndTheNextRebuildLeavesIt)
{
    m_parameters.ModeChange("Channel1", "Pwm");
    set("Polarity", "LOW");
    m_parameters.EnableSemaphore({"FixedHigh", "FixedHigh"});
    EXPECT_EQ(m_parameters.GetParamStatusFlag(), IPPARAMSTATUS_ERROR);
    m_parameters.RefreshParams();
    EXPECT_EQ(value("Polarity"), "HIGH");
    EXPECT_EQ(m_parameters.GetParamStatusFlag(), IPPARAMSTATUS_NORMAL);
    EXPECT_EQ(set("Polarity", "LOW"), DesignReason::ValueNotOffered);

    m_parameters.CancelSemaphore({"FixedHigh"});
    EXPECT_EQ(set("Polarity", "LOW"), DesignReason::ValueNotOffered) << "enabled twice, cancelled once";
    m_parameters.CancelSemaphore({"FixedHigh"});
    EXPECT_EQ(set("Polarity", "LOW"), DesignReason::None);
}

TEST_F(ParameterEngine, EditsAreRefusedWithTheirReason)
{
    EXPECT_EQ(set("Period", "5"), DesignReason::UnknownParameter) << "no mode is chosen";
    m_parameters.ModeChange("Channel1", "Pwm");
    EXPECT_EQ(set("Period", "0"), DesignReason::BelowMinimum);
    EXPECT_EQ(set("Period", "12x"), DesignReason::NotANumber);
    EXPECT_EQ(set("Polarity", "SIDEWAYS"), DesignReason::ValueNotInList);
    EXPECT_EQ(set("Limit", "0x10000"), DesignReason::AboveMaximum);
    EXPECT_EQ(m_parameters.ParamModefySlot("Limit", "16", CURRENTVALUETYPE_HEX).reason, DesignReason::None);
    EXPECT_EQ(value("Limit"), "0x10");
}

TEST_F(ParameterEngine, ABurstOfEditsCostsOneRebuildAndTokensDoNotFlicker)
{
    m_parameters.ModeChange("Channel1", "Capture");
    const int announcements = m_announcements;
    for (const char *period : {"10", "20", "30"})
        m_parameters.ParamModefySlot("Period", period, CURRENTVALUETYPE_NONE);
    EXPECT_TRUE(m_scheduler.drain());
    m_parameters.RefreshParams();
    m_parameters.SetParametersDefaultValue();
    EXPECT_EQ(value("Period"), "1000");
    EXPECT_EQ(m_heard, QStringList("TMR1_Filtered"));
    EXPECT_EQ(m_announcements, announcements);

    m_parameters.ClearAllParameters();
    EXPECT_EQ(m_heard, QStringList());
}

TEST_F(ParameterEngine, ASavedStateComesBackWhole)
{
    m_parameters.ModeChange("Channel1", "Pwm");
    set("Pulse", "123");
    const auto state = m_parameters.save();
    m_parameters.ModeChange("Channel1", "Capture");
    m_parameters.restore(state);
    EXPECT_EQ(value("Pulse"), "123");
    m_parameters.RefreshParams();
    EXPECT_EQ(value("Pulse"), "123");
}

} // namespace
