#include "Gui/ChipView/ChipScene.h"

#include "Gui/ChipView/ChipFixture.h"
#include "Gui/ChipView/PinColors.h"
#include "Gui/ChipView/PinQGraphicsRectItem.h"
#include "Gui/ChipView/PinQGraphicsTextItem.h"
#include "Gui/ChipView/QGraphicsRectItemEXT.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace ChipLoom;

namespace {

QList<PinQGraphicsTextItem *> shownTexts(const ChipScene &scene)
{
    QList<PinQGraphicsTextItem *> texts;
    for (QGraphicsItem *item : scene.items()) {
        auto *text = dynamic_cast<PinQGraphicsTextItem *>(item);
        if (text && text->isVisible() && !text->text().isEmpty())
            texts.append(text);
    }
    return texts;
}

/// The angle of a text on the screen, 0 to 359.
int shownAngle(const QGraphicsItem &item)
{
    const QPointF right = item.mapToScene(QPointF(1, 0)) - item.mapToScene(QPointF(0, 0));
    return (qRound(std::atan2(right.y(), right.x()) * 180 / M_PI) + 360) % 360;
}

class ChipSceneOfPackage : public testing::TestWithParam<FixturePackage>
{
protected:
    void SetUp() override
    {
        const FixturePackage &row = GetParam();
        pins.load(QStringLiteral("ZV32F421"),
                  DevicePinInfo(fixtureChip(QLatin1String(row.package), row.pins, row.xPins, row.yPins)));
        // Every third pin in use, some with labels longer than any room.
        for (const int position : pins.pinInfo().positions()) {
            const MCUPinsBaseInfo pin = pins.pinInfo().GetMCUPinBaseInfo(position).first();
            if (pin.fixedFlag || position % 3 != 0)
                continue;
            pins.checkedLibAction(pin.pinName, pin.pinSignalsList.at(position % 8).signalName, true);
            if (position % 2 == 0)
                pins.UserLabelEditFinished_Slot(pin.pinName, QStringLiteral("A_LABEL_THAT_IS_LONGER_THAN_THE_ROOM"));
        }
        scene.drawChip(pins);
        scene.markPins({2, 3, 6});
    }

    PinAssignment pins;
    ChipScene scene;
};

TEST_P(ChipSceneOfPackage, TextsStayUprightInTheirCellsAndApartInEveryRotation)
{
    for (const LANGUAGE language : {UI_EN, UI_CH}) {
        GlobalLanguage::g_CurrentLanguage = language;
        scene.TranslatorUI();
        QHash<const QGraphicsItem *, QPair<QPointF, int>> atStart;
        for (const int degrees : {0, 90, 180, 270, 0}) {
            scene.body()->setRotation(degrees);
            scene.turnTextsUpright(degrees);
            QVector<QRectF> taken;
            for (const PinQGraphicsTextItem *text : shownTexts(scene)) {
                const std::string where = text->text().toStdString() + " at " + std::to_string(degrees);
                const int angle = shownAngle(*text);
                EXPECT_TRUE(angle == 0 || angle == 270) << where << " stands at " << angle;
                EXPECT_GE(text->shownFont().pixelSize(), 7) << where;
                const QRectF shown = text->textRect();
                EXPECT_GE(shown.left(), text->boundingRect().left() - 1) << where;
                EXPECT_LE(shown.right(), text->boundingRect().right() + 1) << where;
                // The font's line is higher than its letters: neighbours may share that air.
                const QRectF inScene =
                    text->mapRectToScene(shown.adjusted(1, shown.height() / 4, -1, -shown.height() / 4));
                for (const QRectF &other : taken)
                    EXPECT_FALSE(other.intersects(inScene)) << where << " lies over another text";
                taken.append(inScene);
                if (degrees == 0 && atStart.contains(text))
                    EXPECT_EQ(atStart.value(text), qMakePair(text->mapToScene(QPointF()), angle)) << where;
                else if (degrees == 0)
                    atStart.insert(text, qMakePair(text->mapToScene(QPointF()), angle));
            }
        }
    }
    GlobalLanguage::g_CurrentLanguage = UI_EN;
}

INSTANTIATE_TEST_SUITE_P(Packages, ChipSceneOfPackage, testing::ValuesIn(FixturePackages), [](const auto &info) {
    return std::string(info.param.package) + std::to_string(info.param.pins);
});

TEST(ChipScene, ColoursTellFixedUnusedAndUsedPins)
{
    MCUDeviceFile file = fixtureChip(QStringLiteral("LQFP"), 32, 8, 8);
    MCUPinsBaseInfo variant = file.PinsList.first(); // a second entry of the supply pin's position
    variant.pinName = QStringLiteral("PF7");
    file.PinsList.append(variant);
    PinAssignment pins;
    pins.load(QStringLiteral("ZV32F421"), DevicePinInfo(file));
    ChipScene scene;
    scene.drawChip(pins);
    const auto colour = [&](int pin) { return scene.pinItem(pin)->brush().color(); };

    EXPECT_EQ(colour(9), QColor(220, 230, 241));
    EXPECT_EQ(colour(1), QColor(190, 190, 190)) << "two variants";
    EXPECT_EQ(colour(2), QColor(190, 190, 190));
    pins.checkedLibAction(QStringLiteral("PA2"), QStringLiteral("USART1_TX"), true);
    pins.checkedLibAction(QStringLiteral("PA3"), QStringLiteral("GPIO_Output"), true);
    scene.refreshPins({2, 3, 99});
    EXPECT_EQ(colour(2), QColor(243, 233, 110));
    EXPECT_EQ(colour(3), QColor(0, 200, 0));
    scene.showHits({2}, true);
    EXPECT_EQ(colour(2), QColor(57, 169, 220));
    scene.showHits({2}, false);
    EXPECT_EQ(colour(2), QColor(243, 233, 110));
}

TEST(ChipScene, NamesAreJoinedAndCutAndHoverTextTellsAll)
{
    PinAssignment pins;
    pins.load(QStringLiteral("ZV32F421"), DevicePinInfo(fixtureChip(QStringLiteral("LQFP"), 32, 8, 8)));
    ChipScene scene;
    scene.drawChip(pins);
    QStringList texts;
    for (const PinQGraphicsTextItem *text : shownTexts(scene))
        texts.append(text->text());
    EXPECT_TRUE(texts.contains(QStringLiteral("PA6/.")));
    EXPECT_TRUE(texts.contains(QStringLiteral("Pin no mode")));

    pins.checkedLibAction(QStringLiteral("PA2"), QStringLiteral("USART1_TX"), true);
    scene.refreshPins({2});
    const QString hover = scene.pinItem(2)->toolTip();
    EXPECT_TRUE(hover.startsWith(QStringLiteral("Pin 2-----PA2\n"))) << hover.toStdString();
    const QList<PinSignalStruct> functions = pins.pinInfo().GetMCUPinBaseInfo(2).first().pinSignalsList;
    for (const PinSignalStruct &signal : functions)
        EXPECT_TRUE(hover.contains(signal.signalName)) << signal.signalName.toStdString();
    EXPECT_EQ(scene.pinItem(1)->toolTip(), QStringLiteral("Pin 1-----VDDA\nSupply"));
}

TEST(ChipScene, DrawsWhatThereIs)
{
    ChipScene scene;
    PinAssignment pins;
    scene.drawChip(pins);
    EXPECT_TRUE(scene.items().isEmpty()) << "no package";

    pins.load(QStringLiteral("ZV32F421"), DevicePinInfo(fixtureChip(QStringLiteral("WLCSP"), 36, 6, 6)));
    scene.drawChip(pins);
    EXPECT_TRUE(scene.items().isEmpty()) << "unknown package";

    pins.load(QStringLiteral("ZV32F421"), DevicePinInfo(fixtureChip(QStringLiteral("LQFP"), 0, 8, 8)));
    scene.drawChip(pins);
    ASSERT_TRUE(scene.pinItem(1));
    EXPECT_EQ(scene.pinItem(1)->toolTip(), QStringLiteral("Pin 1-----"));
    scene.clearChip();
    EXPECT_TRUE(scene.items().isEmpty());
    EXPECT_FALSE(scene.pinItem(1));
}

} // namespace
