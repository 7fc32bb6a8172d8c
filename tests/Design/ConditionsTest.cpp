#include "Design/Conditions.h"

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

struct ControlCase
{
    const char *expression;
    bool andFlag;
    QStringList tokens;
    bool met;
};

TEST(ControlCondition, BothForms)
{
    const ControlCase cases[] = {
        {"A|B&C", true, {"B", "C"}, true},   // (A or B) and C
        {"A|B&C", true, {"A"}, false},       //
        {"A|B&C", false, {"A"}, true},       // A or (B and C)
        {"A|B&C", false, {"B"}, false},      //
        {"!A & B", true, {"B"}, true},       //
        {"!A & B", true, {"A", "B"}, false}, //
        {"! A !", true, {}, true},           // every "!" goes
        {"A&", true, {"A"}, false},          // an empty piece matches nothing
        {"A|", false, {"A"}, true},          //
        {"AB", true, {"A"}, false},          // whole words
        {"", true, {}, true},                //
    };
    for (const ControlCase &row : cases)
        EXPECT_EQ(ControlCondition(row.expression, row.andFlag).isMet(row.tokens), row.met)
            << row.expression << " " << row.tokens.join(',').toStdString();
}

TEST(ControlCondition, AControlListensToTheWordsOfItsCondition)
{
    const ControlCondition condition("!USART1_On|TMR2_On", true);
    EXPECT_TRUE(condition.mentions("USART1_On"));
    EXPECT_FALSE(condition.mentions("USART1"));
}

struct ParameterCase
{
    const char *expression;
    bool met;
};

TEST(ParameterCondition, ComparesValuesAndLooksForTokens)
{
    ParameterValues values;
    values.set("Baud", "0x10");
    values.set("Mode", " ABC");
    values.set("Count", "-3");
    const QStringList tokens{"FREERTOS_On"};

    const ParameterCase cases[] = {
        {"Baud = 16", true},
        {"Baud = 0X10", true},
        {"Baud != 16", false},
        {"Mode = ABC", true},
        {"Mode = abc", false},
        {"Count > -4 & Count < 0", true},
        {"Mode > 1", false},
        {"Baud >= 16", false}, // no such operator: the name would be "Baud >"
        {"Missing != 5", false},
        {"Missing = 5 | Mode = ABC & Baud = 16", true},
        {"Mode = ABC | Baud = 16 & Missing = 1", false},
        {"FREERTOS_On", true},
        {"FREERTOS", false},
        {"!FREERTOS_On", false},
        {"!RTTHREAD_On & Baud = 16", true},
        {"", false},
        {"FREERTOS_On & ", false},
    };
    for (const ParameterCase &row : cases)
        EXPECT_EQ(ParameterCondition(row.expression).isMet(values, tokens), row.met) << row.expression;
    EXPECT_TRUE(ParameterCondition("!RTTHREAD_On").isMet({}, {}));
}

} // namespace
