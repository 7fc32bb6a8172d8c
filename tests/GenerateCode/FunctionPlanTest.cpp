#include "GenerateCode/FunctionPlan.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QRandomGenerator>

#include <algorithm>

using namespace ChipLoom;

namespace {

DeclaredGenerator instance(const QMap<QString, QString> &values)
{
    static const PeripheralTopics none{.kind = "USART", .function = {}};
    DeclaredGenerator generator(ZV32F421, InstanceQuestions::of(none, "USART1"));
    QList<RefParameter> parameters;
    for (auto value = values.begin(); value != values.end(); ++value) {
        RefParameter parameter;
        parameter.Name = value.key();
        parameter.CurrentValue = value.value();
        parameters.append(parameter);
    }
    generator.SetRefParameterList(parameters);
    return generator;
}

/// A piece of a template, the topic that edits it, and what the edits of the whole text make of it.
struct Sample
{
    std::string text;
    Topic topic;
    std::string on, off; ///< with every parameter there, and with none
};

const std::vector<Sample> &samples()
{
    static const std::vector<Sample> all{
        {"  a_set(X1,  &s);\n", call("call", "a_set", {"P", Keep}), "  a_set(1, &s);\n", "  a_set(, &s);\n"},
        {"  long_b(1);\n\n", call("longer name", "b", {"P"}), "  long_b(1);\n\n", "  long_b();\n\n"},
        {"  c(0);\n\n\n", line("line", "c", isGiven("P"), {"P"}), "  c(1);\n\n", ""},
        {"  s.member =  X;\n", assignment("assignment", "s.member", "P"), "  s.member =  1;\n", "  s.member =  X;\n"},
        {"  d(1, 2);\n",
         rewritten("rewritten", "d", 2,
                   [](const DeclaredGenerator &generator, const QStringList &given) {
                       return generator.Get_DefineString_Param("P").isEmpty() ? std::string()
                                                                              : "e(" + toCode(given.at(1)) + ");";
                   }),
         "  e(2);\n", ""},
        {"[#kept]\n  f(0);\n[#inner]\n  g(0);\n[/#inner]\n\n[/#kept]\n\n",
         section("section", "kept", isGiven("P"),
                 {section("inner", "inner", isNoneOf("P", {"1"})), call("call", "f", {"P"})}),
         "  f(1);\n\n", ""},
        {"[#in]\n[#once]\n\n[/#once]\n[/#in]\n\n", section("empty", "in", {}, {section("empty", "once", {})}), "", ""},
        {"  plain(text + 1);\n", call("not there", "other", {}).onlyWhen("in the template"), "  plain(text + 1);\n",
         "  plain(text + 1);\n"},
    };
    return all;
}

TEST(FunctionPlan, WritesEachTopicInItsPlaceInWhateverOrder)
{
    std::vector<size_t> order(samples().size()), places(samples().size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = places[i] = i;
    QRandomGenerator random(5);
    for (int round = 0; round < 200; ++round) {
        std::shuffle(order.begin(), order.end(), random);
        std::shuffle(places.begin(), places.end(), random);
        std::string text, on, off;
        std::vector<Topic> topics;
        for (const size_t i : places) {
            // The blanks of what follows a line or section belong to it alone.
            text += samples()[i].text + "/* between */\n";
            on += samples()[i].on + "/* between */\n";
            off += samples()[i].off + "/* between */\n";
        }
        for (const size_t i : order)
            topics.push_back(samples()[i].topic);
        const TextCut cut(text, true);
        for (const bool isOn : {true, false}) {
            const DeclaredGenerator generator =
                instance(isOn ? QMap<QString, QString>{{"P", "1"}} : QMap<QString, QString>());
            std::string written = "before\n";
            ASSERT_TRUE(FunctionPlan::of(cut, topics, generator).write(generator, written));
            ASSERT_EQ(written, "before\n" + (isOn ? on : off)) << text;
        }
    }
}

TEST(FunctionPlan, TwoTopicsOfOneFunctionTakeItsCallsInTurnAndAThirdFindsNone)
{
    const TextCut cut("  f(0);\n  f(0);\n", true);
    const DeclaredGenerator generator = instance({{"A", "1"}, {"B", "2"}});
    std::vector<Topic> topics{call("first", "f", {"A"}), call("second", "f", {"B"})};
    std::string text;
    EXPECT_TRUE(FunctionPlan(cut, topics, generator).write(generator, text));
    EXPECT_EQ(text, "  f(1);\n  f(2);\n");
    topics.push_back(call("third", "f", {"A"}));
    EXPECT_FALSE(FunctionPlan(cut, topics, generator).write(generator, text));
}

TEST(InstanceQuestions, LooksAtAListAgainWhenAnotherCameInBetween)
{
    static const PeripheralTopics none{.kind = "USART", .function = {}};
    InstanceQuestions questions(none, "USART1");
    const int number = questions.numberOf("B");
    const auto listOf = [](const QStringList &names) {
        QList<RefParameter> list;
        for (const QString &name : names) {
            list.append(RefParameter());
            list.last().Name = name;
        }
        return list;
    };
    const QList<RefParameter> first = listOf({"A", "B"}), second = listOf({"B", "A"});
    const auto placeIn = [&](const QList<RefParameter> &list, quint64 generation) {
        return questions.placesIn(list, {}, generation)->byNumber[static_cast<size_t>(number)];
    };
    EXPECT_EQ(placeIn(first, 7), 1);
    EXPECT_EQ(placeIn(second, 8), 0);
    EXPECT_EQ(placeIn(first, 7), 1);
    EXPECT_EQ(placeIn(second, 0), 0) << "of none in particular";
    EXPECT_EQ(placeIn(first, 7), 1);
    EXPECT_EQ(questions.placesIn(first, {}, 7)->ofList.find(QStringLiteral("A")), 0);
}

// What a section lacks matters only where the section stays.
TEST(FunctionPlan, AFaultOfASectionThatGoesIsNone)
{
    const TextCut cut("[#a]\n  f(0);\n[/#a]\n", true);
    const std::vector<Topic> topics{section("a", "a", isGiven("A"), {call("missing", "g", {"A"})})};
    std::string text;
    EXPECT_TRUE(FunctionPlan(cut, topics, instance({})).write(instance({}), text));
    EXPECT_FALSE(FunctionPlan(cut, topics, instance({})).write(instance({{"A", "1"}}), text));
}

} // namespace
