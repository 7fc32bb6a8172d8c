#include "Gui/ChipView/PackageGeometry.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

struct RoutineRow
{
    const char *package;
    int pins;
    const char *routine; ///< null: nothing is drawn
};

TEST(PackageGeometry, ChoosesTheDrawingByFamilyAndCount)
{
    const RoutineRow rows[] = {
        {"LQFP", 144, "DrawChipLQFP_144"},
        {"LQFP", 32, "DrawChipLQFP_32"},
        {"LQFP", 80, "DrawChipLQFP_64"},
        {"LQFP", 0, "DrawChipLQFP_64"},
        {"QFN", 60, "DrawChipQFN_60"},
        {"QFN", 64, "DrawChipQFN_48"},
        {"TSSOP", 28, "DrawChipTSSOP_20"},
        {"BGA", 169, "DrawChipBGA_100"},
        {"LQFP48", 48, nullptr},
        {"WLCSP", 48, nullptr},
        {"", 48, nullptr},
    };
    for (const RoutineRow &row : rows) {
        const PackageRow *found = packageRow(QLatin1String(row.package), row.pins);
        if (row.routine) {
            ASSERT_TRUE(found) << row.package << row.pins;
            EXPECT_STREQ(found->routine, row.routine) << row.package << row.pins;
        } else {
            EXPECT_FALSE(found) << row.package;
        }
    }
}

TEST(PackageGeometry, PinsRunCounterClockwiseFromTheUpperLeft)
{
    const PackageLayout layout = layoutPackage(QStringLiteral("LQFP"), 48, 12, 12, {});
    ASSERT_EQ(layout.positions.size(), 48);
    EXPECT_EQ(layout.body, QSizeF(344, 344));
    const struct
    {
        int number;
        QRectF rect;
    } corners[] = {{1, {-45, 22, 45, 25}},   {12, {-45, 297, 45, 25}}, {13, {22, 344, 25, 45}},
                   {24, {297, 344, 25, 45}}, {25, {344, 297, 45, 25}}, {36, {344, 22, 45, 25}},
                   {37, {297, -45, 25, 45}}, {48, {22, -45, 25, 45}}};
    for (const auto &corner : corners) {
        EXPECT_EQ(layout.positions.at(corner.number - 1).number, corner.number);
        EXPECT_EQ(layout.positions.at(corner.number - 1).rect, corner.rect) << corner.number;
    }
}

TEST(PackageGeometry, AFallbackKeepsTheCountsOfTheDevice)
{
    const PackageLayout layout = layoutPackage(QStringLiteral("LQFP"), 80, 16, 24, {});
    EXPECT_EQ(layout.positions.size(), 80);
    EXPECT_EQ(layout.body, QSizeF(16 * 22 + 44, 24 * 22 + 44));
}

TEST(PackageGeometry, BallsStandWhereTheTableNamesThem)
{
    const PackageLayout layout = layoutPackage(QStringLiteral("BGA"), 100, 10, 10, {1, 12, 100, 12, -3});
    ASSERT_EQ(layout.positions.size(), 3);
    EXPECT_EQ(layout.positions.at(1).rect, QRectF(20 + 50, 20 + 50, 45, 45));
    EXPECT_EQ(layout.positions.at(2).rect, QRectF(20 + 450, 20 + 450, 45, 45));
}

TEST(PackageGeometry, SenselessCountsAreBounded)
{
    for (const char *package : {"LQFP", "QFN", "TSSOP", "BGA"}) {
        for (const int count : {-1, 0, 2000000000}) {
            const PackageLayout layout =
                layoutPackage(QLatin1String(package), count, count, count, {0, 5, 2147483647, -2147483647});
            EXPECT_LE(layout.positions.size(), 1024) << package << count;
            EXPECT_LT(layout.body.width(), 20000) << package << count;
        }
    }
}

} // namespace
