#include "GenerateCode/FunctionRank.h"
#include "GenerationFixture.h"

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

class CallOrder : public GenerationFixture
{
};

QList<MainFuncNameForRank> table()
{
    QList<MainFuncNameForRank> list;
    const QStringList names{"clock", "scfg", "nvic", "adc", "usart1", "usart2"};
    for (int i = 0; i < names.size(); ++i)
        list.append({i + 1, names.at(i), names.at(i).toUpper(), i < 3, false, names.at(i) + " function"});
    return list;
}

QStringList order(const QList<MainFuncNameForRank> &list)
{
    QStringList names;
    for (const MainFuncNameForRank &entry : list)
        names.append(entry.FuncName + (entry.MainDoNotCallFlag ? "!" : ""));
    return names;
}

TEST(FunctionRank, KeepsTheUsersOrderAndPutsFixedCallsInTheirPlace)
{
    QList<MainFuncNameForRank> list =
        Set_Valid_PeripheralsAndMid_NameList_ForRank(table(), {}, {"clock", "NVIC", "USART1", "ADC"});
    EXPECT_EQ(order(list), (QStringList{"clock", "nvic", "adc", "usart1"}));
    list.swapItemsAt(2, 3);
    list.append(list.at(2)); // as in a file that was merged by hand
    list[2].MainDoNotCallFlag = true;
    list[2].CodeSection = "of an older file";
    list.swapItemsAt(0, 1); // what may not move stands in its place again
    list = Set_Valid_PeripheralsAndMid_NameList_ForRank(table(), list,
                                                        {"clock", "NVIC", "USART1", "ADC", "SCFG", "USART2"});
    EXPECT_EQ(order(list), (QStringList{"clock", "scfg", "nvic", "usart1!", "adc", "usart2"}));
    EXPECT_EQ(list.at(3).CodeSection, "usart1 function");
    list = Set_Valid_PeripheralsAndMid_NameList_ForRank(table(), list, {"clock", "NVIC", "USART1", "USART2"});
    EXPECT_EQ(order(list), (QStringList{"clock", "nvic", "usart1!", "usart2"}));
    list.swapItemsAt(2, 3);
    EXPECT_EQ(order(resetFunctionRank(list)), (QStringList{"clock", "nvic", "usart1", "usart2"}));
}

TEST_F(CallOrder, MakesTheCallsThatTheUserWants)
{
    openSmall();
    set({"pin/PB0=GPIO_Output"});
    ASSERT_TRUE(generate().ok);
    QList<MainFuncNameForRank> rank = design.project().functionRank;
    for (MainFuncNameForRank &entry : rank)
        entry.MainDoNotCallFlag = entry.FuncName == "lm_gpio_config" || entry.FuncName == "lm_nvic_config";
    design.setFunctionRank(rank);
    ASSERT_TRUE(generate().ok);
    const QString main = text("src/main.c");
    EXPECT_FALSE(main.contains("lm_gpio_config") || main.contains("lm_nvic_config") || main.contains("not made"));
    EXPECT_TRUE(text("src/zv32f421_lm_config.c").contains("void lm_gpio_config(void)"));
    EXPECT_LT(main.indexOf("lm_system_clock_config();"), main.indexOf("lm_periph_clock_config();"));

    static SeriesPlan plan = *SeriesPlan::of(ZV32F421); // templates keep what they found for it
    plan.calls.append({plan.calls.size() + 1, "lm_none", "NVIC", false, false, "no such section"});
    GenerateCode_ALL generator(plan, generationInput(design));
    const GenerationRecord record = generator.generate(folder.path() + "/project", true);
    EXPECT_FALSE(record.ok);
    EXPECT_TRUE(record.error.contains("lm_none"));

    // A generation that fails leaves the order as it was.
    set({"mode/USART1/Mode=Asynchronous"});
    ASSERT_TRUE(QFile::remove(path("src/main.c")) && QDir().mkpath(path("src/main.c")));
    EXPECT_FALSE(generate().ok);
    EXPECT_EQ(design.project().functionRank.size(), rank.size());
    ASSERT_TRUE(QDir().rmdir(path("src/main.c")) && generate().ok);
    EXPECT_EQ(design.project().functionRank.size(), rank.size() + 1);
}

} // namespace
