#include "DatabaseFolder.h"
#include "Model/PeripheralFiles.h"
#include "Model/XmlTree.h"
#include "QtPrinters.h"

using namespace ChipLoom;

namespace {

XMLElementInfo tree(const QByteArray &content)
{
    return parseXml("<IP>" + content + "</IP>").root;
}

QStringList signalNames(const char *instance, const char *name)
{
    const XMLElementInfo ip = tree(QByteArray("<ModeLogicOperator><Mode><ModeLogicOperator><Choice><SignalLogicalOp>"
                                              "<S Name='") +
                                   name +
                                   "' IOMode='Alternate'/></SignalLogicalOp></Choice></ModeLogicOperator></Mode>"
                                   "</ModeLogicOperator>");
    QStringList names;
    const ModeParamCofiguration choice = XMLOperation::GetModeSettings(instance, ip).at(0).modeParam.at(0);
    for (const ModeSignal &signal : choice.modeParamSignalsList) {
        EXPECT_EQ(signal.signalIOMode, "Alternate");
        names.append(signal.signalName);
    }
    return names;
}

class PeripheralFile : public DatabaseFolder
{
};

TEST_F(PeripheralFile, HexadecimalValuesGetTheirPrefix)
{
    const RefParameter hex = XMLOperation::GetRefParameter(
        "CRC", "P", tree("<RefParameter Name='P' Type='Hexadecimal' DefaultValue=' FF ' Max='FFFF' Min=''/>"));
    EXPECT_EQ(hex.DefaultValue, "0xFF");
    EXPECT_EQ(hex.DefaultValueBackup, "0xFF");
    EXPECT_EQ(hex.CurrentValue, "0xFF");
    EXPECT_EQ(hex.MaxValue, "0xFFFF");
    EXPECT_EQ(hex.MinValue, "");
    EXPECT_EQ(hex.CurrentValueType, CURRENTVALUETYPE_HEX);
    const XMLElementInfo others = tree("<RefParameter Name='S' Type='SignedInteger' DefaultValue='-1'/>"
                                       "<RefParameter Name='T' Type='string' DefaultValue='FF'/>");
    EXPECT_EQ(XMLOperation::GetRefParameter("X", "S", others).CurrentValueType, CURRENTVALUETYPE_DEC);
    EXPECT_EQ(XMLOperation::GetRefParameter("X", "T", others).CurrentValueType, CURRENTVALUETYPE_NONE);
    EXPECT_EQ(XMLOperation::GetRefParameter("X", "T", others).CurrentValue, "FF");
}

TEST_F(PeripheralFile, ParametersHaveFlagsTextsAndConditions)
{
    const XMLElementInfo ip = tree(R"(
        <RefParameter Name="Baud" Comment="Rate" CommentCH="速率" Group="Basic" Visible="TRUE" Enable="no" Mode="Async">
          <Description>Bits per second</Description>
          <Condition Expression="$IpInstance_M=1&amp;$IpInstance" Diagnostic="Wrong" AndFlag="FALSE"/>
          <Annotation Note="Note"/>
          <PossibleValue Comment="Eight" Value="8" Semaphore="$IpInstance_ON" Action="Go" Condition="$IpInstance_X"/>
          <PossibleValue Comment="Nine" Value="9" ErrorFlag="true"/>
        </RefParameter>
        <RefParameter Name="Baud" Comment="Second"/>
        <RefParameter Name="Instance" DefaultValue="x"/>)");
    const RefParameter baud = XMLOperation::GetRefParameter("USART1", "Baud", ip);
    EXPECT_TRUE(baud.Visible);
    EXPECT_FALSE(baud.Enable);
    EXPECT_TRUE(baud.ReloadFlag);
    EXPECT_FALSE(baud.RelevantFlag);
    EXPECT_EQ(baud.Mode, "") << "only the list of all parameters has the mode";
    EXPECT_EQ(baud.Description, "Bits per second");
    EXPECT_EQ(baud.condition.Expression, "USART1_M=1&USART1");
    EXPECT_FALSE(baud.condition.AndFlag);
    ASSERT_EQ(baud.PossibleValueList.size(), 2);
    EXPECT_EQ(baud.PossibleValueList.at(0).Semaphore, "USART1_ON");
    EXPECT_EQ(baud.PossibleValueList.at(0).ValueCondition.Expression, "USART1_X");
    EXPECT_TRUE(baud.PossibleValueList.at(0).ValueCondition.AndFlag);
    EXPECT_TRUE(baud.PossibleValueList.at(1).ErrorFlag);

    EXPECT_EQ(XMLOperation::GetRefParameterList("USART1", "Baud", ip).size(), 2);
    EXPECT_EQ(XMLOperation::GetRefParameterList("USART1", "Instance", ip).at(0).CurrentValue, "USART1");
    EXPECT_EQ(XMLOperation::GetRefParameter("USART1", "Instance", ip).CurrentValue, "x");
    const QList<RefParameter> all = XMLOperation::GetXMLFileAllRefParameterList("USART1", ip);
    ASSERT_EQ(all.size(), 3);
    EXPECT_EQ(all.at(0).Mode, "Async");

    GlobalLanguage::g_CurrentLanguage = UI_CH;
    const RefParameter chinese = XMLOperation::GetRefParameter("USART1", "Baud", ip);
    EXPECT_EQ(chinese.Comment, QStringLiteral("速率"));
    EXPECT_EQ(chinese.Group, "Basic");
    EXPECT_EQ(chinese.Group_CH, "Basic");
    EXPECT_EQ(chinese.condition.Diagnostic, "Wrong");
    EXPECT_EQ(chinese.PossibleValueList.at(0).Comment, "Eight");
}

TEST_F(PeripheralFile, TabsComeInTheOrderOfFirstUse)
{
    const XMLElementInfo ip = tree(R"(
        <RefParameter TabName=" Two "/><RefParameter TabName="Hidden" Visible="false"/><RefParameter/>
        <RefParameter TabName="One" TabNameCH="一"/><RefParameter TabName="Two"/>)");
    const QList<ParameterTabName> english = XMLOperation::GetParameterTabNameList(ip);
    ASSERT_EQ(english.size(), 2);
    EXPECT_EQ(english.at(0).TabNameValue, "Two");
    GlobalLanguage::g_CurrentLanguage = UI_CH;
    EXPECT_EQ(XMLOperation::GetParameterTabNameList(ip).at(0).TabNameValue, "Two");
    EXPECT_EQ(XMLOperation::GetParameterTabNameList(ip).at(1).TabNameValue, QStringLiteral("一"));
}

TEST_F(PeripheralFile, SignalNamesOfAChoice)
{
    struct Row
    {
        const char *instance, *name;
        QStringList expected;
    };
    const std::vector<Row> rows{
        {"USART1", "TX", {"USART1_TX"}},
        {"ADC1", "IN9--IN11", {"ADC1_IN9", "ADC1_IN10", "ADC1_IN11"}},
        {"ADC1", "IN3--IN0", {}},
        {"ADC1", "A--B--C", {"ADC1_A--B--C"}},
        {"ADC1", "IN--IN3", {"ADC1_IN--IN3"}},
        {"ADC1", "IN0--IN999999999", {"ADC1_IN0--IN999999999"}},
        {"GPIO", "EXINT5", {"EXINT5"}},
        {"PWC", "WKUP1", {"WKUP1"}},
        {"IRTMR", "IR_OUT", {"IR_OUT"}},
        {"SYSTEM", "HEXT_IN", {"HEXT_IN"}},
        {"XMC1", "D0--D1", {"XMC_D0", "XMC_D1"}},
    };
    for (const Row &row : rows)
        EXPECT_EQ(signalNames(row.instance, row.name), row.expected) << row.name;

    const QList<ModeSignal> all = XMLOperation::GetModeSignals(
        "TMR1", tree("<RefSignal Name='CH1' IOMode='Alternate'/><RefSignal Name='A0--A1' Virtual='TRUE'/>"
                     "<RefSignal Name='V' Virtual='true'/>"));
    ASSERT_EQ(all.size(), 3);
    EXPECT_EQ(all.at(0).signalName, "TMR1_CH1");
    EXPECT_EQ(all.at(1).signalName, "TMR1_A0--A1");
    EXPECT_FALSE(all.at(1).Virtual);
    EXPECT_TRUE(all.at(2).Virtual);
}

TEST_F(PeripheralFile, ModesHaveChoicesWithConditionsAndNoFallback)
{
    const XMLElementInfo ip = tree(R"(
        <ModeLogicOperator><NoMode/><Mode Name="M" UserName="Mode" RemoveCondition="$IpInstance_R">
          <Condition Expression="TMR$Index&amp;$IpInstance" Diagnostic="No"/>
          <Semaphore>$IpInstance_S</Semaphore>
          <ModeLogicOperator Name="XOR">
            <One Name="C1"><Condition Expression="A$Index"/><Semaphore>S1</Semaphore><Semaphore>S2</Semaphore></One>
          </ModeLogicOperator>
        </Mode></ModeLogicOperator>)");
    const QList<ModeCofiguration> modes = XMLOperation::GetModeSettings("TMR16", ip);
    ASSERT_EQ(modes.size(), 1);
    const ModeCofiguration &mode = modes.at(0);
    EXPECT_EQ(mode.modeRemoveCondition, "TMR16_R");
    EXPECT_EQ(mode.modeCondition.Expression, "TMR16&TMR16");
    EXPECT_TRUE(mode.modeCondition.AndFlag);
    EXPECT_EQ(mode.modeSemaphoreList, QStringList{"TMR16_S"});
    EXPECT_EQ(mode.modeLogicOperator, "XOR");
    ASSERT_EQ(mode.modeParam.size(), 1);
    EXPECT_EQ(mode.modeParam.at(0).modeParamCondition.Expression, "A$Index");
    EXPECT_EQ(mode.modeParam.at(0).modeParamSemaphoreList, (QStringList{"S1", "S2"}));
    EXPECT_EQ(XMLOperation::GetModeSettings("SYSTEM", ip).at(0).modeCondition.Expression, "TMR$Index&SYSTEM");
    EXPECT_EQ(XMLOperation::GetModeSettings("add1", ip).at(0).modeParam.at(0).modeParamCondition.Expression, "Add");
    GlobalLanguage::g_CurrentLanguage = UI_CH;
    EXPECT_EQ(XMLOperation::GetModeSettings("TMR16", ip).at(0).modeUserName, "");
}

constexpr const char *Indexed = R"(<IP>
  <RefMode Name="A" BaseMode="B1"><ConfigForMode>X</ConfigForMode>
    <Parameter Name="P"><PossibleValue>1</PossibleValue><PossibleValue>2</PossibleValue></Parameter></RefMode>
  <RefMode Name="A" BaseMode="B2" HalMode="second"/>
  <RefMode Name="Base" Abstract="True"/><RefMode Name="Base2" Abstract="true"/>
  <RefParameter Name="P" Comment="first"/><RefParameter Name="P" Comment="second"/><RefParameter Name="Instance"/>
</IP>)";

TEST_F(PeripheralFile, TheIndexGivesWhatTheWalkGives)
{
    const PeripheralTree indexed(parseXml(Indexed).root);
    const XMLElementInfo &root = indexed.root();
    for (const QString name : {"A", "Base", "P", "Instance", "none", ""}) {
        EXPECT_EQ(indexed.GetRefParameter("U1", name).Comment, XMLOperation::GetRefParameter("U1", name, root).Comment);
        const QList<RefParameter> walked = XMLOperation::GetRefParameterList("U1", name, root);
        const QList<RefParameter> found = indexed.GetRefParameterList("U1", name);
        ASSERT_EQ(found.size(), walked.size());
        for (int i = 0; i < walked.size(); ++i) {
            EXPECT_EQ(found.at(i).Comment, walked.at(i).Comment);
            EXPECT_EQ(found.at(i).CurrentValue, walked.at(i).CurrentValue);
        }
        EXPECT_EQ(indexed.GetRefMode(name).BaseMode, XMLOperation::GetRefMode(root, name).BaseMode);
        for (const QString base : {"B1", "B2", ""})
            EXPECT_EQ(indexed.GetRefMode(base, name).HalMode, XMLOperation::GetRefMode(base, name, root).HalMode);
    }
    EXPECT_EQ(indexed.GetRefMode("B2", "A").HalMode, "second");
    EXPECT_EQ(indexed.GetRefMode_Abstract().Name, "Base");
    EXPECT_EQ(XMLOperation::GetRefMode_Abstract(root).Name, "Base");
    const RefMode mode = indexed.GetRefMode("A");
    EXPECT_EQ(mode.ConfigForMode, QStringList{"X"});
    ASSERT_EQ(mode.ParamList.size(), 1);
    EXPECT_EQ(mode.ParamList.at(0).PossibleValueList, (QStringList{"1", "2"}));
}

TEST_F(PeripheralFile, AFileIsReadOnceForADesign)
{
    const QString file = write("ZV32DB/device/ZV32F421/Peripherals/USART-V1.0.xml", Indexed);
    PeripheralFiles files(m_reader, "ZV32F421");
    const auto first = files.get("USART", "V1.0");
    EXPECT_FALSE(first->isEmpty());
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_EQ(files.get("USART", "V1.0"), first);
    EXPECT_TRUE(files.get("USART", "V2.0")->isEmpty());

    write("ZV32DB/device/ZV32F421/Peripherals/I2C-V1.0.xml", "<Other/>");
    EXPECT_TRUE(files.get("I2C", "V1.0")->isEmpty()) << "the root must be named IP";
}

} // namespace
