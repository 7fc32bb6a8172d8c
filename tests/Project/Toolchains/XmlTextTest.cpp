#include "Project/Toolchains/XmlText.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace ChipLoom::Test {

namespace {

const QString Sample = QString::fromLatin1("\xef\xbb\xbf<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
                                           "<?fileVersion 4.0.0?>\r\n"
                                           "<a z='1' b = \"&quot;x&quot;\">\r\n"
                                           "\t<!-- <name>no</name> -->\r\n"
                                           "\t<name>M\xc3\xbcll &amp; <b/>S\xc3\xb6hne</name>\r\n"
                                           "\t<empty/>\r\n"
                                           "\t<list>\r\n"
                                           "\t\t<one>1</one>\r\n"
                                           "\t</list>\r\n"
                                           "</a>\r\n");

} // namespace

TEST(XmlText, WhatIsNotEditedKeepsItsBytes)
{
    QString error;
    const auto xml = XmlText::parse(Sample, error);
    ASSERT_TRUE(xml) << error.toStdString();
    EXPECT_EQ(xml->toText(), Sample);
    XmlNode &root = xml->root();
    EXPECT_EQ(root.attribute("b"), "\"x\"");
    EXPECT_EQ(root.childText("name"), QString::fromLatin1("M\xc3\xbcll & S\xc3\xb6hne"));

    root.setAttribute("z", "a<b");
    root.setChildText("empty", "&");
    XmlNode *list = root.child("list");
    list->add({"two", {}, {{"deep", "2"}}}, nullptr);
    list->remove(list->child("one"));
    QString expected = Sample;
    expected.replace("z='1'", "z=\"a&lt;b\"");
    expected.replace("<empty/>", "<empty>&amp;</empty>");
    expected.replace("\t\t<one>1</one>", "\t\t<two>\r\n\t\t\t<deep>2</deep>\r\n\t\t</two>");
    EXPECT_EQ(xml->toText(), expected);
}

TEST(XmlText, RefusesWhatItCannotKeepSafe)
{
    QString deep;
    for (int i = 0; i < 200; ++i)
        deep += "<a>";
    for (const QString &text : {QString(), QString("no xml"), QString("<a><b></a>"), QString("<a/><b/>"), deep,
                                QString("<!DOCTYPE a [<!ENTITY e \"eee\">]><a>&e;</a>")}) {
        QString error;
        EXPECT_FALSE(XmlText::parse(text, error)) << text.left(30).toStdString();
        EXPECT_FALSE(error.isEmpty());
    }
}

} // namespace ChipLoom::Test
