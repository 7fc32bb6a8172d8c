#include "GenerateCode/UserBlocks.h"

#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/SourceTree.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace ChipLoom;

namespace {

std::string block(const std::string &name, const std::string &body)
{
    return "/* add user code begin " + name + " */\n" + body + "/* add user code end " + name + " */\n";
}

struct KeepCase
{
    const char *what;
    std::string oldText;
    std::string newText;
    std::string expected;
};

TEST(UserBlocks, SurviveOrGoAsTold)
{
    const std::string empty = block("0", "\n");
    const std::string commaName = "USART1_NERR, USART1_FERR";
    const KeepCase cases[] = {
        {"plain", block("0", "mine\n"), "a\n" + empty + "b\n", "a\n" + block("0", "mine\n") + "b\n"},
        {"the user's spacing of the markers stays", "/*add user code begin 0*/\nmine\n/*  add user code end 0  */",
         empty, "/*add user code begin 0*/\nmine\n/*  add user code end 0  */\n"},
        {"two blanks before the name are another marker", "/* add user code begin  0 */\nx\n/* add user code end 0 */",
         empty, empty},
        {"the end line is gone", "/* add user code begin 0 */\nmine\n", empty, empty},
        {"the name was changed", block("zero", "mine\n"), empty, empty},
        {"0 is not 0 1", block("0 1", "mine\n"), empty, empty},
        {"a repeated name spans to the last end line", block("0", "a\n") + "generated\n" + block("0", "b\n"), empty,
         block("0", "a\n") + "generated\n" + block("0", "b\n")},
        {"backslash 1 stands for the new body", block("0", "\\1 \\2 \\n\n"), block("0", "new\n"),
         block("0", "\nnew\n \\2 \\n\n")},
        {"a name with a comma is not retained", block(commaName, "mine\n"), block(commaName, "\n"),
         block(commaName, "\n")},
        {"a begin line at the very end is skipped", block("0", "mine\n"), "/* add user code begin 0 */",
         "/* add user code begin 0 */"},
        {"one block inside another goes in as plain text", block("0", block("1", "x\n")), empty,
         block("0", block("1", "x\n"))},
    };
    for (const KeepCase &row : cases) {
        std::string text = row.newText;
        GenerateCode_Handle_KeepUserCode_EXT(row.oldText, text);
        EXPECT_EQ(text, row.expected) << row.what;
    }
}

TEST(UserBlocks, NamesMayHoldLatin1LettersAndManyWords)
{
    const std::string name = "caf\xe9 one two three four five six seven eight nine ten \xb2";
    EXPECT_EQ(userBlockNames(block(name, "\n") + block("Header", "\n")), QStringList({toText(name), "Header"}));

    // What makes a backtracking search of nested repetitions give up must not cost the blocks behind it.
    const std::string endless = "/* add user code begin " + std::string(5000, 'a') + "! */\n";
    EXPECT_EQ(userBlockNames(endless + block("after", "\n")), QStringList("after"));
}

TEST(UserBlocks, LostBlocksAreNamedOnlyWhenTheyHoldText)
{
    EXPECT_EQ(lostUserBlocks(block("usart1_init 0", "mine\n") + block("usart1_init 1", "  \n") + block("0", "kept\n"),
                             block("0", "\n")),
              QStringList("usart1_init 0"));
}

TEST(UserBlocks, LostBlocksAreNamedAlsoWhereTheirMarkersDoNotCount)
{
    const std::string file = block("0", "\n") + block("1", "\n") + block("A, B or C", "\n") + block("2", "\n");
    const auto edited = [](std::string text, std::string_view what, std::string_view with) {
        EXPECT_TRUE(replaceAll(text, what, with)) << what;
        return text;
    };
    const auto lostOf = [&](const std::string &oldText) {
        std::string text = file;
        GenerateCode_Handle_KeepUserCode_EXT(oldText, text);
        EXPECT_EQ(indexOf(text, "mine"), -1) << oldText;
        return lostUserBlocks(oldText, text);
    };
    EXPECT_EQ(lostOf(file), QStringList());
    const std::string comma = edited(file, "begin A, B or C */\n", "begin A, B or C */\nmine");
    EXPECT_EQ(lostOf(comma), QStringList("A, B or C"));
    // As the composer of the handlers writes it: two blanks in front of the name at the end.
    EXPECT_EQ(lostOf(edited(comma, "end A, B", "end  A, B")), QStringList("A, B or C"));
    EXPECT_EQ(lostOf(edited(file, "begin 1 */\n\n/* add user code end 1 */\n", "begin 1 */\nmine\n")),
              QStringList("1"));
    EXPECT_EQ(lostOf(edited(file, "begin 1 */\n", "begin  1 */\nmine\n")), QStringList("1"));
    EXPECT_EQ(lostOf(edited(file, "begin 1 */\n", "begin 1\t*/\nmine\n")), QStringList("1"));
    EXPECT_EQ(lostOf(file + "/* add user code begin 3 *//* add user code end 3 */"), QStringList());
    EXPECT_EQ(lostOf(edited(file, "/* add user code begin 1 */\n", "mine\n")), QStringList("1"));

    // What only looks like a marker within a block that survives is the user's text.
    EXPECT_EQ(lostUserBlocks(edited(file, "begin 1 */\n", "begin 1 */\n/* add user code begin of my day */\n"), file),
              QStringList());
    EXPECT_EQ(lostUserBlocks("/* add user code begin 0", file), QStringList("0"));

    // What the template itself holds in a block is not the user's.
    EXPECT_EQ(lostUserBlocks(block("Header", "head\n") + block("0", "mine\n"), {}, block("Header", "head\n") + file),
              QStringList("0"));
}

TEST(UserBlocks, BlocksThatHoldBackslashOneAreNamedWhereTheyChange)
{
    const std::string mine = block("0", "puts(\"\\177\");\n") + block("1", "\\2\n");
    std::string text = block("0", "\n") + block("1", "\n");
    GenerateCode_Handle_KeepUserCode_EXT(mine, text);
    EXPECT_EQ(expandedUserBlocks(mine, text), QStringList("0"));
    EXPECT_EQ(expandedUserBlocks(text, text), QStringList());
}

TEST(UserBlocks, AnyBytesOfAUserSurviveAGeneration)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("main.c");
    const QByteArray pieces[] = {"\xe4\xbd\xa0",
                                 "\xc4\xe3\x5c",
                                 "\r\n",
                                 "\\",
                                 "\\2",
                                 "\"/* add user code begin */\"",
                                 "[#usart1 function]",
                                 "x",
                                 "\t",
                                 QByteArray(1, '\0')};
    const auto put = [&dir](const std::string &code) {
        SourceTree tree(dir.path(), true);
        tree.putKeepingUserBlocks("main.c", code, SectionedText(code));
        EXPECT_EQ(tree.write(tree.compare()), "");
        return tree.compare().first().state;
    };
    QRandomGenerator random(22);
    for (int round = 0; round < 200; ++round) {
        QByteArray body;
        for (int i = random.bounded(20); i > 0; --i)
            body += pieces[random.bounded(int(std::size(pieces)))];
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("old\n/* add user code begin 0 */" + body + "\r\n/* add user code end 0 */\nold\n");
        file.close();

        const std::string generated = "new\n" + block("0", "\n") + "new\n";
        ASSERT_EQ(put(generated), GeneratedFileRecord::State::Changed);

        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ASSERT_EQ(file.readAll(),
                  "new\n/* add user code begin 0 */" + body.replace("\r", "") + "\n/* add user code end 0 */\nnew\n");
        file.close();
        ASSERT_EQ(put(generated), GeneratedFileRecord::State::Unchanged);
        ASSERT_TRUE(QFile::remove(path));
    }
}

TEST(GeneratedFile, APreviousFileThatIsNoFileStopsTheGeneration)
{
    QTemporaryDir dir;
    EXPECT_FALSE(readSourceText(dir.filePath("none.c")).exists);
    EXPECT_TRUE(readSourceText(dir.path()).error.contains("is no regular file"));
    EXPECT_NE(writeGeneratedFile(dir.path(), "text"), "");
}

} // namespace
