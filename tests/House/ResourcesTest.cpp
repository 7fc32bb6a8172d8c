#include <QTranslator>

#include <gtest/gtest.h>

namespace {

TEST(Resources, BothTranslationsAreCompiledIn)
{
    QTranslator chinese;
    ASSERT_TRUE(chinese.load(":/image/tr_zh.qm"));
    EXPECT_EQ(chinese.translate("Prompt", "Ok"), QString::fromUtf8("确定"));

    QTranslator english;
    ASSERT_TRUE(english.load(":/image/tr_en.qm"));
    EXPECT_EQ(english.translate("Prompt", "Yes1"), "Yes");
    EXPECT_TRUE(english.translate("Prompt", "Ok").isEmpty());
}

} // namespace
