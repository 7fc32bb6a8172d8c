#include "Gui/ChipView/PinQGraphicsRectItem.h"

#include "Gui/App/Style.h"
#include "Gui/ChipView/PinColors.h"

#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QPainter>

namespace ChipLoom {

PinQGraphicsRectItem::PinQGraphicsRectItem(int pinNumber, QGraphicsItem *parent)
    : QGraphicsPathItem(parent), m_pinNumber(pinNumber), m_statusColor(PinColors::NotInUse)
{
    setPen(QPen(PinColors::Edge, 1));
    setBrush(m_statusColor);
    setFlag(ItemIsFocusable);
    setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
    setCursor(Qt::PointingHandCursor);
}

void PinQGraphicsRectItem::setRect(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    setPath(path);
}

void PinQGraphicsRectItem::setEllipse(const QRectF &rect)
{
    QPainterPath path;
    path.addEllipse(rect);
    setPath(path);
    m_round = true;
}

void PinQGraphicsRectItem::SetBackgroundColor(PINCONFIG_TYPE status, bool alwaysFixed)
{
    m_statusColor = PinColors::ofStatus(status, alwaysFixed);
    fill();
}

void PinQGraphicsRectItem::showHit(bool lit)
{
    m_lit = lit;
    fill();
}

void PinQGraphicsRectItem::fill()
{
    const QColor color = m_lit ? PinColors::SearchHit : m_statusColor;
    if (brush().color() != color)
        setBrush(color);
}

void PinQGraphicsRectItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->setPen(pen());
    painter->setBrush(brush());
    painter->drawPath(path());
    if (!hasFocus())
        return;
    painter->setPen(QPen(Style::Highlight, 2));
    painter->setBrush(Qt::NoBrush);
    const QRectF frame = path().boundingRect().adjusted(1.5, 1.5, -1.5, -1.5);
    if (m_round)
        painter->drawEllipse(frame);
    else
        painter->drawRect(frame);
}

void PinQGraphicsRectItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    if (event->button() == Qt::RightButton)
        emit contextMenuRequested(m_pinNumber, event->scenePos());
    else
        emit menuRequested(m_pinNumber, event->scenePos());
}

void PinQGraphicsRectItem::keyPressEvent(QKeyEvent *event)
{
    const QPointF corner = mapToScene(boundingRect().center());
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        emit menuRequested(m_pinNumber, corner);
        return;
    case Qt::Key_Menu:
        emit contextMenuRequested(m_pinNumber, corner);
        return;
    case Qt::Key_F10:
        if (event->modifiers() & Qt::ShiftModifier) {
            emit contextMenuRequested(m_pinNumber, corner);
            return;
        }
        break;
    default:
        break;
    }
    QGraphicsPathItem::keyPressEvent(event);
}

} // namespace ChipLoom
