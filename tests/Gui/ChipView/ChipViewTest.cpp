#include "Gui/ChipView/ChipView.h"

#include "Design/Design.h"
#include "Gui/ChipView/ChipScene.h"
#include "Gui/ChipView/Enter_UserLabel_Dialog.h"
#include "Gui/ChipView/PinGraphicsView.h"
#include "Gui/ChipView/PinMenuView.h"
#include "Gui/ChipView/PinQGraphicsRectItem.h"
#include "Gui/ChipView/QGraphicsRectItemEXT.h"
#include "Gui/DesignFixture.h"
#include "Gui/Widgets/SearchBox.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <functional>

using namespace ChipLoom;

namespace {

class ChipViewTest : public testing::Test
{
protected:
    ChipViewTest() : design(fixture.xml().paths(), prompt), view(design) {}

    void SetUp() override
    {
        ASSERT_TRUE(design.NewDesign(QStringLiteral("ZV32F403A"), QStringLiteral("SMALL"), QStringLiteral("LQFP8")));
        view.resize(800, 700);
        view.show();
        view.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    }

    QPoint onView(const QRectF &sceneRect) const { return view.view()->mapFromScene(sceneRect.center()); }

    void clickPin(int pin, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(view.view()->viewport(), button, {}, onView(view.scene()->pinItem(pin)->sceneBoundingRect()));
    }

    /// The action of the open menu with this text.
    static QAction *entry(const QString &text)
    {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return nullptr;
        for (QAction *action : menu->actions()) {
            if (action->text() == text)
                return action;
        }
        return nullptr;
    }

    /// Opens the menu of a pin and chooses an entry with the keyboard.
    void choose(int pin, const QString &text, Qt::MouseButton button = Qt::LeftButton)
    {
        clickPin(pin, button);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        QAction *wanted = entry(text);
        ASSERT_TRUE(wanted) << text.toStdString();
        for (int i = 0; i < 50 && menu->activeAction() != wanted; ++i)
            QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    }

    Enter_UserLabel_Dialog *labelForm() const
    {
        for (Enter_UserLabel_Dialog *form : view.findChildren<Enter_UserLabel_Dialog *>()) {
            if (form->isVisible())
                return form;
        }
        return nullptr;
    }

    QColor colour(int pin) const { return view.scene()->pinItem(pin)->brush().color(); }
    QString shown(int pin) const { return design.pins().GetPinConfigedDisplayText(pin); }

    DesignFixture fixture;
    ScriptedPrompt prompt;
    Design design;
    ChipView view;
};

TEST_F(ChipViewTest, TheMenuPlacesTicksMovesAndClears)
{
    clickPin(2);
    auto *menu = qobject_cast<PinMenuView *>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    QStringList functions;
    for (const QAction *action : menu->actions()) {
        if (!action->isSeparator())
            functions.append(action->text());
    }
    EXPECT_EQ(functions, QStringList({"Reset_State", "GPIO_Input", "GPIO_Output", "TMR1_CH2", "USART1_TX"}));
    menu->close();

    choose(2, QStringLiteral("USART1_TX"));
    EXPECT_EQ(shown(2), QStringLiteral("USART1_TX"));
    EXPECT_EQ(colour(2), QColor(243, 233, 110));
    choose(3, QStringLiteral("USART1_TX"));
    EXPECT_EQ(shown(2), QString());
    EXPECT_EQ(shown(3), QStringLiteral("USART1_TX"));
    clickPin(3);
    ASSERT_TRUE(entry(QStringLiteral("USART1_TX")));
    EXPECT_TRUE(entry(QStringLiteral("USART1_TX"))->isChecked());
    QApplication::activePopupWidget()->close();
    choose(3, QStringLiteral("Reset_State"));
    EXPECT_EQ(shown(3), QString());
    EXPECT_EQ(colour(3), QColor(190, 190, 190));
    EXPECT_TRUE(prompt.requests.isEmpty());
}

TEST_F(ChipViewTest, ARefusedFunctionSaysWhyAndChangesNothing)
{
    choose(2, QStringLiteral("USART1_TX"));
    clickPin(4);
    ASSERT_TRUE(entry(QStringLiteral("USART1_TX")));
    EXPECT_TRUE(entry(QStringLiteral("USART1_TX"))->isEnabled());
    const QString reason = entry(QStringLiteral("USART1_TX"))->toolTip();
    EXPECT_EQ(reason, QStringLiteral("No remap group offers USART1_TX on pin PB7; take it off its present pin first."));
    QApplication::activePopupWidget()->close();

    choose(4, QStringLiteral("USART1_TX"));
    ASSERT_EQ(prompt.requests.size(), 1);
    EXPECT_EQ(prompt.requests.first().title, QStringLiteral("Error"));
    EXPECT_EQ(prompt.requests.first().text, QStringLiteral("Unable to find signal group, switching failed!"));
    EXPECT_EQ(prompt.requests.first().buttons, QStringList("Ok"));
    EXPECT_EQ(prompt.requests.first().detail, reason);
    EXPECT_EQ(shown(2), QStringLiteral("USART1_TX"));
    EXPECT_EQ(shown(4), QString());
}

TEST_F(ChipViewTest, OnlyPinsWithFunctionsHaveMenusAndTheKeyboardReachesThem)
{
    view.searchBox()->setFocus();
    view.view()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(view.scene()->focusItem(), view.scene()->pinItem(1));
    QTest::keyClick(view.view(), Qt::Key_Down);
    QTest::keyClick(view.view(), Qt::Key_Down);
    EXPECT_EQ(view.scene()->focusItem(), view.scene()->pinItem(3));
    QTest::keyClick(view.view(), Qt::Key_Return);
    ASSERT_TRUE(entry(QStringLiteral("USART1_TX")));
    QApplication::activePopupWidget()->close();

    clickPin(1);
    EXPECT_FALSE(QApplication::activePopupWidget());
    clickPin(6, Qt::RightButton);
    ASSERT_TRUE(entry(QStringLiteral("Enter Label")));
    EXPECT_FALSE(entry(QStringLiteral("Enter Label"))->isEnabled());
    QApplication::activePopupWidget()->close();
}

TEST_F(ChipViewTest, ALabelIsTypedAndAWrongOneIsExplained)
{
    choose(6, QStringLiteral("GPIO_Output"));
    choose(6, QStringLiteral("Enter Label"), Qt::RightButton);
    ASSERT_TRUE(labelForm());
    auto *edit = labelForm()->findChild<QLineEdit *>();
    QTest::keyClicks(edit, QStringLiteral("2 LEDs"));
    QTest::keyClick(edit, Qt::Key_Return);
    ASSERT_TRUE(labelForm());
    EXPECT_EQ(shown(6), QStringLiteral("GPIO_Output"));
    edit->clear();
    QTest::keyClicks(edit, QStringLiteral("LED"));
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_FALSE(labelForm());
    EXPECT_EQ(shown(6), QStringLiteral("LED"));

    const QRect room = view.screen()->availableGeometry();
    view.move(room.right() - view.width() / 2, room.bottom() - view.height() / 2);
    view.EnterLabelAction(6);
    EXPECT_TRUE(room.contains(labelForm()->frameGeometry())) << "the pin stands at the edge of the screen";

    for (void (ChipView::*zoom)() : {&ChipView::ZoomIn, &ChipView::ZoomOut, &ChipView::ZoomReset}) {
        view.EnterLabelAction(6);
        ASSERT_TRUE(labelForm());
        (view.*zoom)();
        EXPECT_FALSE(labelForm());
    }
}

TEST_F(ChipViewTest, ASearchBlinksUntilItEnds)
{
    const QColor hit(57, 169, 220);
    QLineEdit *box = view.searchBox()->lineEdit();
    QTest::keyClicks(box, QStringLiteral("pb"));
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(colour(3), hit);
    EXPECT_EQ(colour(4), hit);
    EXPECT_NE(colour(2), hit);
    design.scheduler().drain(1);
    EXPECT_NE(colour(3), hit) << "the dark half";
    design.scheduler().drain(1);
    EXPECT_EQ(colour(3), hit);
    view.ZoomReset();
    EXPECT_NE(colour(3), hit);
    EXPECT_EQ(box->text(), QString());
    EXPECT_TRUE(design.scheduler().isIdle());

    QTest::keyClicks(box, QStringLiteral("USART1_RX"));
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(design.pins().search().hits(), QSet<int>({5}));
    // A new design takes the search along with the old one.
    design.clear();
    EXPECT_TRUE(design.scheduler().isIdle());
    EXPECT_EQ(box->text(), QString());
}

TEST_F(ChipViewTest, OnlyAChoiceReplacesWhatIsTypedIntoTheSearch)
{
    SearchBox *box = view.searchBox();
    QTest::keyClicks(box->lineEdit(), QStringLiteral("PA"));
    QTest::keyClick(box, Qt::Key_Up);
    QWheelEvent wheel(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5).toPoint()), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box, &wheel);
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(box->currentText(), QStringLiteral("PA"));
}

TEST_F(ChipViewTest, TheSearchStaysInSightInANarrowPane)
{
    for (const int width : {450, 1200}) {
        view.resize(width, 600);
        QApplication::processEvents();
        const QComboBox *box = view.searchBox();
        EXPECT_TRUE(box->isVisible());
        EXPECT_TRUE(view.rect().contains(QRect(box->mapTo(&view, QPoint()), box->size()))) << width;
        EXPECT_EQ(view.width(), width) << "and asks for no wider pane";
    }
}

TEST_F(ChipViewTest, TurnsInQuartersAndShowsNumbersOnAClickOnTheBody)
{
    for (const int degrees : {90, 180, 270, 0}) {
        view.Rotated_Clockwise();
        EXPECT_EQ(view.rotatedValue(), degrees);
        EXPECT_EQ(view.scene()->body()->rotation(), degrees);
    }
    view.Rotated_AnitClockwise();
    EXPECT_EQ(view.rotatedValue(), 270);

    const QPoint body = onView(view.scene()->body()->sceneBoundingRect());
    QTest::mouseClick(view.view()->viewport(), Qt::LeftButton, {}, body);
    EXPECT_FALSE(view.scene()->pinNumDisplay());
    QTest::mouseClick(view.view()->viewport(), Qt::LeftButton, {}, body);
    EXPECT_TRUE(view.scene()->pinNumDisplay());
}

TEST_F(ChipViewTest, FollowsTheWindowUntilTheUserTakesTheDrawingInHand)
{
    PinGraphicsView &drawing = *view.view();
    const auto follows = [&] {
        view.resize(800, 700);
        QApplication::processEvents();
        const double before = drawing.scaleFactor();
        view.resize(800, 250);
        QApplication::processEvents();
        return drawing.scaleFactor() < before;
    };
    EXPECT_TRUE(follows());
    view.Rotated_Clockwise();
    EXPECT_TRUE(follows());
    const std::function<void()> takings[] = {[&] { view.ZoomOut(); }, [&] { view.ZoomReset(); },
                                             [&] { QTest::keyClick(&drawing, Qt::Key_Left); }};
    for (const auto &take : takings) {
        take();
        EXPECT_FALSE(follows());
        view.Rotated_Clockwise();
        EXPECT_FALSE(follows()) << "what the user chose to see stays";
        view.FitToWindow();
        EXPECT_TRUE(follows());
    }
    view.ZoomIn();
    ASSERT_TRUE(design.NewDesign(QStringLiteral("ZV32F403A"), QStringLiteral("SMALL"), QStringLiteral("LQFP8")));
    EXPECT_TRUE(follows());
}

} // namespace
