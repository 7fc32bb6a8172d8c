#include "GenerateCode/TextEngine.h"
#include "GenerateCode/NameTable.h"
#include "GenerateCode/PinIndex.h"
#include "GenerateCode/SectionedText.h"
#include "Model/ShareParameter.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QRandomGenerator>

using namespace ChipLoom;

namespace {

struct SectionCase
{
    const char *what;
    const char *text;
    const char *kept; // null: the section is absent
    const char *dropped;
};

class Section : public testing::TestWithParam<SectionCase>
{
};

TEST_P(Section, IsKeptOrDroppedWithItsBlankLines)
{
    for (const bool keep : {true, false}) {
        std::string text = GetParam().text;
        const std::string before = text;
        const char *expected = keep ? GetParam().kept : GetParam().dropped;
        EXPECT_EQ(GenerateCode_Handle_Function(text, "a b", keep), expected != nullptr);
        EXPECT_EQ(text, expected ? expected : before) << GetParam().what;

        SectionedText cut(before);
        EXPECT_EQ(GenerateCode_Handle_Function(cut, "a b", keep), expected != nullptr);
        EXPECT_EQ(cut.joined(), text) << GetParam().what;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Section,
    testing::Values(SectionCase{"three blank lines behind", "x\n[#a b]\nbody\n[/#a b]\n\n\n\ny", "x\nbody\n\ny",
                                "x\ny"},
                    SectionCase{"blanks behind the markers", "[#a b]  \n  b\n[/#a b] \ny", "  b\n\ny", "y"},
                    SectionCase{"a repeated name is one span", "[#a b]\n1\n[/#a b]\nmid\n[#a b]\n2\n[/#a b]\n",
                                "1\n[/#a b]\nmid\n[#a b]\n2\n\n", ""},
                    SectionCase{"an opening line that is none comes first", "[#a b] x\n[#a b]\n1\n[/#a b]\n",
                                "[#a b] x\n1\n\n", "[#a b] x\n"},
                    SectionCase{"the last closing line lacks its line break", "[#a b]\n1\n[/#a b]\n2[/#a b]",
                                "1\n\n2[/#a b]", "2[/#a b]"},
                    SectionCase{"an empty body", "[#a b]\n[/#a b]\n", nullptr, nullptr},
                    SectionCase{"closing before opening", "[/#a b]\n[#a b]\n1\n", nullptr, nullptr},
                    SectionCase{"another name that begins alike", "[#a b c]\n1\n[/#a b c]\n", nullptr, nullptr}));

// The hand-written scans must give what the patterns that they stand for give.
TEST(TextEngine, BlankLineRulesAgreeWithTheirPatterns)
{
    struct Rule
    {
        bool (*apply)(std::string &);
        const char *pattern;
        const char *replacement;
    };
    const Rule rules[] = {{GenerateCode_DeleteBlankLine_FunctionEnd, R"( *\n+\})", "\n}"},
                          {GenerateCode_DeleteBlankLine_FunctionStart, R"(\{ *\n+)", "{\n"},
                          {GenerateCode_DeleteMultiBlankLine, R"(\n *\n *\n)", "\n\n"}};
    QRandomGenerator random(20);
    for (int round = 0; round < 5000; ++round) {
        QString text;
        for (int i = random.bounded(14); i > 0; --i)
            text += QStringLiteral(" \n{}a").at(random.bounded(5));
        for (const Rule &rule : rules) {
            std::string edited = toCode(text);
            rule.apply(edited);
            QString expected = text;
            expected.replace(QRegularExpression(rule.pattern), rule.replacement);
            ASSERT_EQ(edited, toCode(expected)) << rule.pattern << " on " << text.toStdString();
        }
    }
    std::string four = "a\n\n\n\nb";
    GenerateCode_DeleteMultiBlankLine(four);
    EXPECT_EQ(four, "a\n\n\nb");
}

TEST(TextEngine, SectionsAgreeWithTheirPattern)
{
    const QRegularExpression section(R"(\[#n\] *\n(.+)\[/#n\] *\n+)", QRegularExpression::DotMatchesEverythingOption);
    const QStringList pieces{"[#n]", "[/#n]", " ", "\n", "x"};
    QRandomGenerator random(21);
    for (int round = 0; round < 5000; ++round) {
        QString text;
        for (int i = random.bounded(14); i > 0; --i)
            text += pieces.at(random.bounded(pieces.size()));
        const QRegularExpressionMatch match = section.match(text);
        const SectionSpan span = findSection(toCode(text), "n");
        ASSERT_EQ(span.found(), match.hasMatch()) << text.toStdString();
        if (!span.found())
            continue;
        ASSERT_EQ(span.start, match.capturedStart()) << text.toStdString();
        ASSERT_EQ(span.length, match.capturedLength()) << text.toStdString();
        ASSERT_EQ(text.mid(span.bodyStart, span.bodyLength), match.captured(1)) << text.toStdString();
    }
}

// A text of sections within sections, whose names may stand in several places. As in the templates no body begins with
// a blank line, which the section in front of it would take along.
std::string nestedSections(QRandomGenerator &random, int depth)
{
    std::string text;
    for (int i = random.bounded(4); i > 0; --i) {
        const char name = "abcdef"[random.bounded(6)];
        text += "x\n";
        if (depth > 0)
            text += std::string("[#") + name + "]\nx\n" + nestedSections(random, depth - 1) + "[/#" + name + "] \n" +
                    std::string(static_cast<size_t>(random.bounded(3)), '\n');
    }
    return text;
}

// By names, or where the names stood before any edit; one piece in a copy, whose edits are then taken over.
TEST(SectionedText, IsEditedAsTheWholeTextIs)
{
    QRandomGenerator random(22);
    int edited = 0;
    int taken = 0;
    for (int round = 0; round < 10000; ++round) {
        std::string text = nestedSections(random, 3);
        SectionedText cut(text);
        ASSERT_EQ(cut.joined(), text);
        QMap<QString, SectionedText::Spot> spots;
        for (const char *name : {"a", "b", "c", "f"})
            spots.insert(name, cut.spotOf(name));
        SectionedText copy = cut;
        int place = -1; // of the piece that is edited in the copy
        for (const QString name : {"b", "a", "c", "f"}) {
            const SectionedText::Spot &spot = spots[name];
            if (place < 0)
                place = spot.outer.piece;
            SectionedText &one = spot.outer.piece == place ? copy : cut;
            const bool keep = random.bounded(2) == 0;
            const bool written = random.bounded(4) == 0;
            const bool byName = round % 2 == 0;
            const bool done = written  ? byName ? one.replaceSection(name, "new\n") : one.replaceSection(spot, "new\n")
                               : byName ? GenerateCode_Handle_Function(one, name, keep)
                                       : one.handleSection(spot, keep);
            if (!done)
                continue; // absent, or in several places
            const SectionSpan span = findSection(text, name);
            ASSERT_TRUE(span.found()) << text;
            replaceSection(text, span, written ? "new\n" : keep ? keptBody(text, span) : std::string());
            ++edited;
        }
        taken += place >= 0;
        cut.takeEdits(std::move(copy));
        ASSERT_EQ(cut.joined(), text) << round;
    }
    EXPECT_GT(edited, 2000);
    EXPECT_GT(taken, 500);
}

TEST(SectionedText, TellsWhatIsGoneWithTheSectionAround)
{
    SectionedText text("[#a]\n[#in]\n1\n[/#in]\n[/#a]\n[#b]\n2\n[/#b]\n");
    const SectionedText::Spot in = text.spotOf("in");
    const SectionedText::Spot absent = text.spotOf("absent");
    EXPECT_FALSE(text.isGone(in));
    EXPECT_TRUE(text.handleSection(text.spotOf("a"), false));
    EXPECT_TRUE(text.isGone(in));
    EXPECT_FALSE(text.isGone(text.spotOf("b")));
    EXPECT_FALSE(text.isGone(absent)) << "it would be a fault of the template";
    EXPECT_FALSE(text.handleSection(absent, false));
    text.unwrapSection(text.spotOf("b"));
    EXPECT_EQ(text.joined(), "2\n");
}

TEST(SectionedText, TakesNothingInUserBlocksForMarkers)
{
    const std::string user = "/* add user code begin 0 */\n[#b]\n[/#a]\n/* add user code end 0 */\n";
    SectionedText text("[#a]\n" + user + "[/#a]\n\n[#b]\n2\n[/#b]\n");
    EXPECT_TRUE(GenerateCode_Handle_Function(text, "b", false));
    EXPECT_EQ(text.joined(), "[#a]\n" + user + "[/#a]\n\n");
}

TEST(SectionedText, NamesOutermostSectionsAndFindsThoseWithin)
{
    SectionedText text("head\n[#a]\n1\n[#in]\n2\n[/#in]\n[#twice]\n3\n[/#twice]\n[/#a]\n\n[#b]\n[#twice]\n4\n"
                       "[/#twice]\n[/#b]\ntail");
    QStringList names = text.names();
    names.sort();
    EXPECT_EQ(names, QStringList({"a", "b"}));
    EXPECT_TRUE(text.contains("a"));
    EXPECT_FALSE(text.contains("in"));
    EXPECT_TRUE(text.section("twice").empty()) << "its name alone does not tell which";
    EXPECT_TRUE(text.section("none").empty());

    const SectionedText before = text;
    EXPECT_TRUE(GenerateCode_Handle_Function(text, "in", false));
    text.section("b") = "B\n";
    EXPECT_EQ(text.joined(), "head\n[#a]\n1\n[#twice]\n3\n[/#twice]\n[/#a]\n\nB\ntail");
    EXPECT_NE(before.joined(), text.joined()) << "a copy keeps its text";
}

TEST(CodeText, TakesTheLettersOfLatin1ForThoseOfWords)
{
    for (int code = 0; code < 256; ++code) {
        const char c = static_cast<char>(code);
        EXPECT_EQ(isWord(c), c == '_' || QChar(QLatin1Char(c)).isLetterOrNumber()) << code;
    }
}

TEST(NameTable, FindsNamesOfAnyLengthWithTheFirstNumberThatTheyWereGiven)
{
    QStringList names;
    for (const char *piece : {"", "P", "TX", "PA1", "PA10", "USART1", "USART1_TX", "usart1 function"}) {
        for (const char *more : {"", "0", "12", "_FDT", "_CH1"})
            names.append(QString(piece) + more);
    }
    NameTable table;
    QHash<QString, int> first;
    EXPECT_EQ(table.find(QStringView()), -1);
    for (int i = 0; i < names.size(); ++i) {
        EXPECT_EQ(table.find(names.at(i)), first.value(names.at(i), -1)) << i;
        table.insert(names.at(i), i);
        if (!first.contains(names.at(i)))
            first.insert(names.at(i), i);
    }
    for (const QString &name : qAsConst(names))
        EXPECT_EQ(table.find(QString(name.constData(), name.size())), first.value(name)) << name.toStdString();
    EXPECT_EQ(table.find(u"USART1_T"), -1);
}

TEST(PinIndex, FindsTheFirstNameThatIsTheSame)
{
    const QStringList pins{"PA1", "PD0/HEXT_IN", "HEXT_IN", "PA1/X", " PB2 ", "PC3 [a/b]", "a", "PD0", "PC3", "PA"};
    const QStringList signalNames{"SPI1_SCK", "SPI1_SCK;I2S1_CK", "A; B", "B", "I2S1_CK", "SPI1", ""};
    const auto first = [](const QStringList &names, const QString &wanted,
                          bool (*same)(const QString &, const QString &)) {
        for (int i = 0; i < names.size(); ++i) {
            if (same(names.at(i), wanted))
                return i;
        }
        return -1;
    };
    PinNames pinNames;
    for (const QString &pin : pins)
        pinNames.append(pin);
    for (const QString &pin : pins + QStringList{"HEXT_IN/PD0", "PB2", "X", "PZ9"})
        EXPECT_EQ(pinNames.find(pin), first(pins, pin, IsPinNameSame)) << qPrintable(pin);

    std::vector<SignalsGPIOSetting> settings(static_cast<size_t>(signalNames.size()));
    QList<SignalsGPIOSetting *> list;
    for (SignalsGPIOSetting &setting : settings) {
        setting.signalName = signalNames.at(list.size());
        list.append(&setting);
    }
    const SignalNumber early = numberOfSignal("I2S1_CK");
    const PinIndex index(std::make_shared<const PinDefines>(QList<GPIO_Pin_Define_Info *>()), list);
    const SignalNumber late = numberOfSignal("SPI1_SCK");
    EXPECT_EQ(index.settingOf(early), &settings[1]);
    EXPECT_EQ(index.settingOf(late), &settings[0]) << "whenever the number was given";
    for (const QString &signal : signalNames + QStringList{"B;A", "I2S1_CK;X", "nothing", " SPI1"}) {
        const int expected = first(signalNames, signal, IsSignalSame);
        EXPECT_EQ(index.settingOf(signal), list.value(expected)) << qPrintable(signal);
    }
}

TEST(TextEngine, CallsAreFoundByNameAndNumberOfArguments)
{
    const std::string text = toCode(QStringLiteral("  f(USART1, 1);\n\n  f(USART1,\n    B, \u00b5);\n\ng(1);x"));

    const CallMatch three = findCall(text, "f", 3);
    ASSERT_TRUE(three.found());
    EXPECT_EQ(three.arguments, QStringList({"USART1", "B", QStringLiteral("\u00b5")}));
    EXPECT_FALSE(findCall(text, "f", 1).found());
    EXPECT_EQ(findCall(text, "f", 2).start, 2);
    EXPECT_FALSE(findCall(text, "f", 2, 3).found()) << "it begins in front";
}

TEST(TextEngine, AWordIsReplacedWhereItStandsByItself)
{
    std::string text = "TMR1 TMR10 _TMR1 x(TMR1);TMR1";
    EXPECT_TRUE(rewriteWord(text, "TMR1", "TMR1TMR1"));
    EXPECT_EQ(text, "TMR1TMR1 TMR10 _TMR1 x(TMR1TMR1);TMR1TMR1");
    EXPECT_FALSE(rewriteWord(text, "TMR", "X"));
}

} // namespace
