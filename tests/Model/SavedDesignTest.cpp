#include "DatabaseFolder.h"
#include "QtPrinters.h"

using namespace ChipLoom;

namespace {

class SavedDesign : public DatabaseFolder
{
};

TEST_F(SavedDesign, TheValuesOfASectionAreRead)
{
    const QString file = write("a.zvwp", R"(<Root><MCUInfo/><USART1>
        <Mode><ModeSub name="Mode" value="Async"/></Mode>
        <Parameters><ParametersSub name="BaudRate" value="9600"/><ParametersSub value="b" name="a"/></Parameters>
        <Interrupts/></USART1></Root>)");
    QList<XMLAttributeInfo> modes{{"stale", ""}}, params, interrupts;
    EXPECT_TRUE(m_reader.GetModeAndParamValue(file, "USART1", modes, params, interrupts));
    EXPECT_EQ(modes, (QList<XMLAttributeInfo>{{"Mode", "Async"}}));
    EXPECT_EQ(params, (QList<XMLAttributeInfo>{{"BaudRate", "9600"}, {"a", "b"}}));
    EXPECT_TRUE(interrupts.isEmpty());
    EXPECT_TRUE(m_reader.GetModeAndParamValue(file, "USART2", modes, params, interrupts));
    EXPECT_TRUE(modes.isEmpty() && params.isEmpty());
    EXPECT_FALSE(m_reader.GetModeAndParamValue(path("none"), "USART1", modes, params, interrupts));
}

TEST_F(SavedDesign, FunctionsAreRankedByTheirPlace)
{
    const QString file = write("rank.xml", R"(<Configuration><entry term="MainFuncNameList">
        <Member FixPos="TRUE" FuncName="lm_nvic_config" InstanceName="NVIC" CodeSection="nvic"/>
        <Member FixPos="true" FuncName="lm_usart1_init" InstanceName="USART1" CodeSection="usart1 function"/>
        </entry></Configuration>)");
    const QList<MainFuncNameForRank> functions = m_reader.GetMainAllFuncNameForRank(file, "MainFuncNameList");
    ASSERT_EQ(functions.size(), 2);
    EXPECT_EQ(functions.at(0).RankNum, 1);
    EXPECT_TRUE(functions.at(0).FixPosFlag);
    EXPECT_EQ(functions.at(1).RankNum, 2);
    EXPECT_FALSE(functions.at(1).FixPosFlag);
    EXPECT_EQ(functions.at(1).CodeSection, "usart1 function");
    EXPECT_TRUE(m_reader.GetMainAllFuncNameForRank(file, "Other").isEmpty());
}

} // namespace
