#include "Model/XmlTree.h"
#include "DatabaseFolder.h"
#include "Limits.h"
#include "QtPrinters.h"

using namespace ChipLoom;

namespace {

QByteArray nested(int depth)
{
    return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
}

QByteArray utf16(const QString &text)
{
    return QByteArray("\xff\xfe") + QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

TEST(XmlTree, KeepsNamesAttributesAndOrder)
{
    const XMLElementInfo root = parseXml("<IP v='1' p:w='&lt;2&#x4e2d;'><B/>tail<A>\n <!-- n -->\n</A></IP>").root;
    EXPECT_EQ(root.tagName, "IP");
    ASSERT_EQ(root.attributeInfoList.size(), 2);
    EXPECT_EQ(root.attributeInfoList.at(1).attributeName, "p:w");
    EXPECT_EQ(root.attributeInfoList.at(1).attributeValue, QStringLiteral("<2中"));
    ASSERT_EQ(root.subElementInfoList.size(), 2);
    EXPECT_EQ(root.subElementInfoList.at(0).tagName, "B");
    EXPECT_EQ(root.subElementInfoList.at(1).tagName, "A");
}

TEST(XmlTree, TextIsThatOfASoleChildOrAll)
{
    struct Row
    {
        const char *content, *sole, *all;
    };
    const std::vector<Row> rows{
        {"<a>x &amp; y</a>", "x & y", "x & y"},
        {"<a><![CDATA[ <x> ]]></a>", " <x> ", " <x> "},
        {"<a>\n  </a>", "", ""},
        {"<a n='1'>x</a>", "", "x"},
        {"<a>x<!-- c -->y</a>", "", "xy"},
        {"<a>x<b/></a>", "", "x"},
        {"<a>x<![CDATA[y]]></a>", "", "xy"},
        {"<a> <!-- c --> </a>", "", ""},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(parseXml(row.content).root.tagText, row.sole) << row.content;
        EXPECT_EQ(parseXml(row.content, XmlText::All).root.tagText, row.all) << row.content;
    }
}

TEST(XmlTree, WhatIsNoGoodDocumentGivesNothingAndSaysWhere)
{
    struct Row
    {
        QByteArray content;
        XmlFault fault;
        qint64 line;
    };
    const std::vector<Row> rows{
        {"", XmlFault::Malformed, 1},
        {"no markup", XmlFault::Malformed, 1},
        {"<a>\n<b>\n</a>", XmlFault::Malformed, 3},
        {"<a/>\n<b/>", XmlFault::Malformed, 2},
        {"<a>&undeclared;</a>", XmlFault::Malformed, 1},
        {"<a b='1' b='2'/>", XmlFault::Malformed, 1},
        {"<a b='", XmlFault::Malformed, 1},
        {"<a><!-- ", XmlFault::Malformed, 1},
        {"\n<!DOCTYPE a [<!ENTITY e 'eeee'>]><a>&e;</a>", XmlFault::Declarations, 2},
        {"<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a/>", XmlFault::Declarations, 1},
        {"<a>\xff</a>", XmlFault::WrongEncoding, 0},
        {"<a>\xe4\xb8", XmlFault::WrongEncoding, 0},
        {"<?xml version='1.0' encoding='GB2312'?><a/>", XmlFault::WrongEncoding, 0},
        {"\xff\xfe<", XmlFault::WrongEncoding, 0},
        {QByteArray("<\0a/>", 5), XmlFault::Malformed, 1},
    };
    for (const Row &row : rows) {
        const XmlDocument document = parseXml(row.content);
        EXPECT_EQ(document.problem.fault, row.fault) << row.content.toStdString();
        EXPECT_EQ(document.problem.line, row.line) << row.content.toStdString();
        EXPECT_TRUE(document.root.tagName.isEmpty() && document.root.subElementInfoList.isEmpty());
    }
}

TEST(XmlTree, BothEncodingsAreRead)
{
    const QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<a>引脚</a>");
    EXPECT_EQ(parseXml(utf16(text)).root.tagText, QStringLiteral("引脚"));
    EXPECT_EQ(parseXml(QByteArray("\xef\xbb\xbf") + "<?xml version='1.0' encoding='utf-8'?><a>ok</a>").root.tagText,
              "ok");
}

TEST(XmlTree, BoundsHoldBeforeATreeIsBuilt)
{
    const XmlLimits limits{.bytes = 2000, .depth = 8, .nodes = 100, .attributes = 10};
    const auto faultOf = [&](const QByteArray &content) { return parseXml(content, XmlText::All, limits).problem; };
    EXPECT_FALSE(faultOf(nested(8)));
    EXPECT_EQ(faultOf(nested(9)).fault, XmlFault::TooDeep);
    EXPECT_FALSE(faultOf("<r>" + QByteArray("<a/>").repeated(99) + "</r>"));
    EXPECT_EQ(faultOf("<r>" + QByteArray("<a/>").repeated(100) + "</r>").fault, XmlFault::TooComplex);
    EXPECT_EQ(faultOf("<r>" + QByteArray("<a b='1'/>").repeated(50) + "</r>").fault, XmlFault::TooComplex);
    EXPECT_EQ(faultOf("<r>" + QByteArray(2000, 'x') + "</r>").fault, XmlFault::TooLarge);

    QByteArray attributes;
    for (int i = 0; i < 11; ++i)
        attributes += " a" + QByteArray::number(i) + "='>'";
    const XmlProblem many = faultOf("\n<r" + attributes + "/>");
    EXPECT_EQ(many.fault, XmlFault::TooComplex);
    EXPECT_EQ(many.line, 2);
    EXPECT_FALSE(faultOf("<!-- <r" + attributes + "/> --><r/>")) << "a comment has no attributes";
}

// What would take the parser minutes or gigabytes comes back at once; the time limit of the test tells.
TEST(XmlTree, HostileFilesComeBackAtOnce)
{
    QByteArray attributes;
    for (int i = 0; i < 1'000'000; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    EXPECT_EQ(parseXml("<r" + attributes + "/>").problem.fault, XmlFault::TooComplex);
    EXPECT_EQ(parseXml(nested(1'000'000)).problem.fault, XmlFault::TooDeep);
    EXPECT_EQ(parseXml("<r a='" + QByteArray(100 * 1024 * 1024, 'x') + "'/>").problem.fault, XmlFault::TooLarge);
    EXPECT_EQ(parseXml("<r>" + QByteArray("<a/>").repeated(2'000'000) + "</r>").problem.fault, XmlFault::TooComplex);
}

class XmlFile : public DatabaseFolder
{
};

TEST_F(XmlFile, WhyAFileGaveNothingIsToldInASentence)
{
    EXPECT_EQ(XmlProblemText(readXml(path("none.xml")).problem), "The file " + path("none.xml") + " does not exist.");
    EXPECT_EQ(XmlProblemText(readXml(m_folder.path()).problem),
              "The file " + m_folder.path() + " cannot be read: " + m_folder.path() + " is no regular file");
    const QString large = write("large.xml", "<a/>");
    EXPECT_EQ(XmlProblemText(readXml(large, XmlText::All, {.bytes = 3}).problem),
              "The file " + large + " is larger than 3 bytes and was not read.");
    const QString broken = write("broken.xml", "<a>\n</b>");
    EXPECT_TRUE(XmlProblemText(readXml(broken).problem).startsWith("The file " + broken + " is damaged in line 2: "));
    EXPECT_EQ(XmlProblemText(readXml(write("good.xml", "<a/>")).problem), "");

    AsOrdinaryUser user(m_folder.path());
    const QString secret = write("secret.xml", "<a/>");
    ASSERT_TRUE(QFile::setPermissions(secret, {}));
    EXPECT_EQ(readXml(secret).problem.fault, XmlFault::Unreadable);
}

} // namespace
