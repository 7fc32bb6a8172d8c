#include "Gui/ChipView/PinGraphicsView.h"

#include "QtPrinters.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

class PinGraphicsViewTest : public testing::Test
{
protected:
    void SetUp() override
    {
        scene.setSceneRect(-2000, -2000, 4000, 4000);
        view.setScene(&scene);
        view.resize(400, 300);
        view.show();
        view.centerOn(0, 0);
    }

    void turnWheel(const QPoint &at, int eighths)
    {
        QWheelEvent event(at, view.viewport()->mapToGlobal(at), {}, QPoint(0, eighths), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.viewport(), &event);
    }

    QGraphicsScene scene;
    PinGraphicsView view;
};

TEST_F(PinGraphicsViewTest, StopsAtTheLimitsWithoutAPartialStep)
{
    for (int i = 0; i < 40; ++i)
        view.zoomIn();
    const double largest = view.scaleFactor();
    EXPECT_LE(largest, 5.0);
    EXPECT_GT(largest * 1.2, 5.0);
    EXPECT_NEAR(view.transform().m11(), largest, 1e-5);
    for (int i = 0; i < 40; ++i)
        QTest::keyClick(&view, Qt::Key_Minus);
    EXPECT_GE(view.scaleFactor(), 0.2);
    EXPECT_LT(view.scaleFactor() * 0.8, 0.2);
    view.zoomReset();
    EXPECT_EQ(view.scaleFactor(), 1.0);
    EXPECT_EQ(view.transform(), QTransform());
}

TEST_F(PinGraphicsViewTest, TheWheelZoomsAboutTheCursor)
{
    const QPoint cursor(310, 70);
    const QPointF held = view.mapToScene(cursor);
    turnWheel(cursor, 60);
    EXPECT_EQ(view.scaleFactor(), 1.0) << "half a notch of a touchpad";
    turnWheel(cursor, 60);
    turnWheel(cursor, 240);
    EXPECT_NEAR(view.scaleFactor(), 1.2 * 1.2 * 1.2, 1e-5);
    const QPointF now = view.mapToScene(cursor);
    EXPECT_NEAR(now.x(), held.x(), 1.5);
    EXPECT_NEAR(now.y(), held.y(), 1.5);
}

TEST_F(PinGraphicsViewTest, DraggingMovesAndAClickDoesNot)
{
    int clicks = 0;
    QObject::connect(&view, &PinGraphicsView::clicked, &view, [&] { ++clicks; });
    const QPointF before = view.mapToScene(QPoint(100, 100));
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, QPoint(100, 100));
    QMouseEvent move(QEvent::MouseMove, QPoint(150, 130), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &move);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, QPoint(150, 130));
    EXPECT_EQ(view.mapToScene(QPoint(150, 130)), before);
    EXPECT_EQ(clicks, 0);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(100, 100));
    EXPECT_EQ(clicks, 1);
}

TEST_F(PinGraphicsViewTest, FitsARectangleWithinTheLimits)
{
    view.fitToWindow(QRectF(-400, -100, 800, 200));
    EXPECT_NEAR(view.scaleFactor(), 0.5, 0.01);
    view.fitToWindow(QRectF(0, 0, 4, 4));
    EXPECT_EQ(view.scaleFactor(), 5.0);
    view.fitToWindow(QRectF(0, 0, 4, 4), 1.0);
    EXPECT_EQ(view.scaleFactor(), 1.0);
}

} // namespace
