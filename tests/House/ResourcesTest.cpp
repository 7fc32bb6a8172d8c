#include <QFontDatabase>
#include <QIcon>
#include <QImage>
#include <QRawFont>
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

TEST(Resources, PicturesComeAtTwoSizes)
{
    const QVector<QPair<QString, QString>> pictures = {{":/image/ZevtraIcon", ":/image/ZevtraIcon@2x"},
                                                       {":/image/PPT cover.png", ":/image/PPT cover@2x.png"},
                                                       {":/image/icon-search.png", ":/image/icon-search@2x.png"}};
    for (const auto &[once, twice] : pictures) {
        const QImage image(once);
        ASSERT_FALSE(image.isNull()) << qPrintable(once);
        EXPECT_EQ(QImage(twice).size(), image.size() * 2) << qPrintable(twice);
        EXPECT_TRUE(QIcon(once).availableSizes().contains(image.size())) << qPrintable(once);
    }
}

TEST(Resources, FontsHoldTheirSigns)
{
    const QVector<QPair<QString, QString>> fonts = {{":/image/downArrowRegular.ttf", QString::fromUtf8("▼▶")},
                                                    {":/image/zv3_point Regular.ttf", QString::fromUtf8("●▼▲▶◀")}};
    for (const auto &[path, signs] : fonts) {
        EXPECT_GE(QFontDatabase::addApplicationFont(path), 0) << qPrintable(path);
        const QRawFont font(path, 16);
        for (const QChar sign : signs)
            EXPECT_TRUE(font.supportsCharacter(sign)) << qPrintable(path) << ' ' << sign.unicode();
    }
}

} // namespace
