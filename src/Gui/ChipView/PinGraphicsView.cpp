#include "Gui/ChipView/PinGraphicsView.h"

#include <QApplication>
#include <QGraphicsItem>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

constexpr int WheelNotch = 120;
constexpr int KeyStep = 40;

} // namespace

PinGraphicsView::PinGraphicsView(QWidget *parent) : QGraphicsView(parent)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setRenderHint(QPainter::Antialiasing);
    setRenderHint(QPainter::TextAntialiasing);
    setFrameShape(QFrame::NoFrame);
    setTransformationAnchor(QGraphicsView::NoAnchor);
    setResizeAnchor(QGraphicsView::AnchorViewCenter);
    setViewportUpdateMode(QGraphicsView::SmartViewportUpdate);
    setMouseTracking(true);
}

void PinGraphicsView::rotateView(double degrees)
{
    if (m_item)
        m_item->setRotation(degrees);
}

void PinGraphicsView::zoomIn()
{
    zoom(static_cast<float>(1 + m_zoomDelta));
}

void PinGraphicsView::zoomOut()
{
    zoom(static_cast<float>(1 - m_zoomDelta));
}

void PinGraphicsView::zoomReset()
{
    const QPointF middle = mapToScene(viewport()->rect().center());
    setTransform(QTransform());
    m_scale = 1.0;
    centerOn(middle);
    m_followed = nullptr;
}

void PinGraphicsView::zoom(float factor)
{
    const QPoint cursor = viewport()->mapFromGlobal(QCursor::pos());
    zoomAbout(viewport()->rect().contains(cursor) ? cursor : viewport()->rect().center(), factor);
}

void PinGraphicsView::zoomAbout(const QPoint &position, float factor)
{
    const double width = transform().scale(factor, factor).mapRect(QRectF(0, 0, 1, 1)).width();
    if (width < MinimumScale || width > MaximumScale)
        return;
    const QPointF held = mapToScene(position);
    scale(factor, factor);
    m_scale *= factor;
    translateEx((position - mapFromScene(held)) / m_translateSpeed);
}

void PinGraphicsView::translateEx(const QPointF &delta)
{
    const QPoint distance = (delta * m_translateSpeed).toPoint();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - distance.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - distance.y());
    m_followed = nullptr;
}

void PinGraphicsView::fitToWindow(const QRectF &rect, double largest)
{
    // Scroll bars that are there now go. A pixel less than there is, lest rounding brings them back.
    const QSize room = maximumViewportSize() - QSize(1, 1);
    if (rect.isEmpty() || room.width() <= 0 || room.height() <= 0)
        return;
    const double fitting = std::min(room.width() / rect.width(), room.height() / rect.height());
    m_scale = std::clamp(fitting, MinimumScale, std::min(largest, MaximumScale));
    setTransform(QTransform::fromScale(m_scale, m_scale));
    centerOn(rect.center());
}

void PinGraphicsView::follow(std::function<QRectF()> content, double largest)
{
    m_followed = std::move(content);
    m_largestFollowed = largest;
    fitFollowed();
}

void PinGraphicsView::fitFollowed()
{
    if (m_followed && isVisible())
        fitToWindow(m_followed(), m_largestFollowed);
}

void PinGraphicsView::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    fitFollowed();
}

void PinGraphicsView::showEvent(QShowEvent *event)
{
    QGraphicsView::showEvent(event);
    fitFollowed();
}

void PinGraphicsView::mousePressEvent(QMouseEvent *event)
{
    QGraphicsView::mousePressEvent(event);
    if (event->isAccepted() && scene() && scene()->mouseGrabberItem())
        return; // the item handles the click itself
    if (event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton) {
        m_pressed = true;
        m_dragging = false;
        m_pressedAt = m_draggedTo = event->pos();
        event->accept();
    }
}

void PinGraphicsView::mouseMoveEvent(QMouseEvent *event)
{
    if (m_pressed && !m_dragging &&
        (event->pos() - m_pressedAt).manhattanLength() >= QApplication::startDragDistance()) {
        m_dragging = true;
        viewport()->setCursor(Qt::ClosedHandCursor);
    }
    if (m_dragging) {
        translateEx(event->pos() - m_draggedTo);
        m_draggedTo = event->pos();
        event->accept();
        return;
    }
    QGraphicsView::mouseMoveEvent(event);
}

void PinGraphicsView::mouseReleaseEvent(QMouseEvent *event)
{
    const bool wasClick = m_pressed && !m_dragging && event->button() == Qt::LeftButton;
    if (m_dragging)
        viewport()->unsetCursor();
    m_pressed = m_dragging = false;
    QGraphicsView::mouseReleaseEvent(event);
    if (wasClick)
        emit clicked(mapToScene(event->pos()));
}

void PinGraphicsView::wheelEvent(QWheelEvent *event)
{
    m_wheelRest += event->angleDelta().y();
    for (; m_wheelRest >= WheelNotch; m_wheelRest -= WheelNotch)
        zoomAbout(event->position().toPoint(), static_cast<float>(1 + m_zoomDelta));
    for (; m_wheelRest <= -WheelNotch; m_wheelRest += WheelNotch)
        zoomAbout(event->position().toPoint(), static_cast<float>(1 - m_zoomDelta));
    event->accept();
}

void PinGraphicsView::keyPressEvent(QKeyEvent *event)
{
    // What has the focus in the drawing comes first.
    if (scene() && scene()->focusItem()) {
        QGraphicsView::keyPressEvent(event);
        if (event->isAccepted())
            return;
    }
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomIn();
        return;
    case Qt::Key_Minus:
        zoomOut();
        return;
    case Qt::Key_0:
        zoomReset();
        return;
    case Qt::Key_Left:
        translateEx(QPointF(KeyStep, 0));
        return;
    case Qt::Key_Right:
        translateEx(QPointF(-KeyStep, 0));
        return;
    case Qt::Key_Up:
        translateEx(QPointF(0, KeyStep));
        return;
    case Qt::Key_Down:
        translateEx(QPointF(0, -KeyStep));
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace ChipLoom
