#include "GenerateCode/SourceTree.h"
#include "GenerateCode/UserBlocks.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <random>

using namespace ChipLoom;

namespace {

class UserBlockFuzz : public testing::Test
{
protected:
    int below(int count) { return int(m_random() % unsigned(count)); }
    template <typename List> auto oneOf(const List &list) { return list[below(int(list.size()))]; }

    // What users write, and what could be mistaken for a marker.
    QByteArray userText()
    {
        static const std::vector<QByteArray> pieces{
            "  counter += 1;\n",
            "\xE6\x97\xB6\xE9\x92\x9F /* UTF-8 */\n",
            "\xCA\xB1\xD6\xD3 // GBK\n",
            "\xFF\x80\xA0 any bytes\n",
            "  printf(\"\\r\\n\\t\\\\ \\0 \\2 \\x41\");\n",
            "  s = \"/* add user code begin nobody */\";\n",
            "  s = \"/* add user code end nobody */\";\n",
            "/* add user code begin */ /* add user code */\n",
            "add user code begin usart1_init 0\n",
            "[#usart1 function]\n[/#usart1 function]\n",
            "\n\n\n",
            "}{ ( $1 & \\",
            "\t \t",
            "#define MACRO(x) \\\n  do { x; } while(0)\n",
        };
        QByteArray text;
        if (below(1000) == 0)
            return QByteArray(300000, 'x') + "\n";
        for (int count = below(6); count > 0; --count)
            text += oneOf(pieces);
        return text;
    }

    std::mt19937 m_random{11};
};

// What is expected follows from how the former file was made, not from searching in it.
TEST_F(UserBlockFuzz, TenThousandBlocksSurviveOrAreDroppedAsTheFormerFileSays)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("main.c");
    int kept = 0;
    for (int round = 0; round < 500; ++round) {
        QByteArray former, fresh, expected;
        for (int i = 0; i < 20; ++i) {
            const QByteArray name = oneOf(std::vector<QByteArray>{"usart1_init ", "private ", "A", "gpio_config 1"}) +
                                    "b" + QByteArray::number(i);
            const QByteArray begin = "  /* add user code begin " + name + " */", end = "/* add user code end " + name;
            const QByteArray frame = "void f" + QByteArray::number(i) + "(void);\n";
            const QByteArray sample = below(2) ? "\n\n  " : "\n  sample();\n  ";
            fresh += frame + begin + sample + end + " */\n";
            expected += frame;
            // The lines of the former file may have other blanks, which stay with the block.
            const QByteArray own = below(4) ? begin : "  /*   add user code begin " + name + "*/";
            const QByteArray body = (below(3) ? "\n" : "\r\n") + userText() + "\n";
            const QByteArray block = own.mid(2) + body + end + (below(4) ? " */" : "    */");
            switch (below(6)) {
            case 0: // switched on only now
                expected += begin + sample + end + " */\n";
                break;
            case 1: // the end line is gone
                former += frame + own + body;
                expected += begin + sample + end + " */\n";
                break;
            case 2: // another name
                former += "  /* add user code begin " + name + "x */" + body + end + "x */\n";
                expected += begin + sample + end + " */\n";
                break;
            default:
                former += "lost();\n  " + block + "\nlost();\n";
                expected += "  " + QByteArray(block).replace("\r", "") + "\n";
                ++kept;
                break;
            }
        }
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(former);
        file.close();
        SourceTree tree(folder.path(), true);
        tree.putKeepingUserBlocks("main.c", fresh.toStdString(), SectionedText());
        ASSERT_EQ(tree.write(tree.compare()), "");
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray outcome = file.readAll();
        ASSERT_TRUE(outcome == expected) << "round " << round << "\n" << outcome.left(3000).toStdString();
    }
    EXPECT_GT(kept, 4000);
}

// The rule as expressions, slow and literal.
void keepByExpressions(const QString &former, QString &fresh)
{
    const auto options =
        QRegularExpression::DotMatchesEverythingOption | QRegularExpression::UseUnicodePropertiesOption;
    const QRegularExpression begins(R"(\/\* *add user code begin ((\w+ *)+) *\*\/\n+)", options);
    const QString copy = fresh;
    QRegularExpressionMatchIterator names = begins.globalMatch(copy);
    while (names.hasNext()) {
        const QString name = names.next().captured(1).trimmed();
        const QRegularExpression block(R"(\/\* *add user code begin )" + name +
                                           R"( *\*\/(.+)\/\* *add user code end )" + name + R"( *\*\/)",
                                       options);
        const QRegularExpressionMatch kept = block.match(former);
        const QRegularExpressionMatch place = block.match(fresh);
        if (!kept.hasMatch() || !place.hasMatch())
            continue;
        QString replacement = kept.captured();
        replacement.replace("\\1", place.captured(1));
        fresh.replace(place.capturedStart(), place.capturedLength(), replacement);
    }
}

// Blocks in blocks, names twice, ends before begins: whatever stands there, the rule is followed.
TEST_F(UserBlockFuzz, TangledBlocksFollowTheRule)
{
    const auto tangle = [this] {
        static const QStringList names{"a", "b", "a b", "b 1", "c", QString::fromLatin1("\xE9"), "a, b"};
        QString text;
        for (int count = below(14); count > 0; --count) {
            const QString name = oneOf(names);
            switch (below(8)) {
            case 0:
            case 1:
                text += "/* add user code begin " + name + " */\n";
                break;
            case 2:
            case 3:
                text += "/* add user code end " + name + " */\n";
                break;
            case 4:
                text += "/* add user code begin " + name + " */\n" + QString::number(below(9)) +
                        "\n/*add user code end " + name + "*/\n";
                break;
            case 5:
                text += oneOf(QStringList{"/*", "*/", "\\1", "\n", " ", "/* add user code begin", "\\", "*"});
                break;
            case 6:
                text += "/*  add user code begin " + name + "   */" + oneOf(QStringList{"", "\n", " "});
                break;
            default:
                text += "/* add user code begin " + name + " *//* add user code end " + name + " */";
                break;
            }
        }
        return text;
    };
    for (int round = 0; round < 8000; ++round) {
        const QString former = tangle(), fresh = tangle();
        std::string is = toCode(fresh);
        QString expected = fresh;
        GenerateCode_Handle_KeepUserCode_EXT(toCode(former), is);
        keepByExpressions(former, expected);
        ASSERT_EQ(is, toCode(expected)) << "former:\n"
                                        << former.toStdString() << "\nfresh:\n"
                                        << fresh.toStdString() << "\nround " << round;
    }
}

} // namespace
