#include "Gui/Clock/ArrowLineItem.h"

#include <QPainter>
#include <QPen>

namespace ChipLoom {

ArrowLineItem::ArrowLineItem(const QLineF &line, qreal size, QGraphicsItem *parent)
    : QGraphicsLineItem(line, parent), arrowSize(size)
{
}

void ArrowLineItem::setItemPen(const QPen &pen)
{
    setPen(pen);
}

QPolygonF ArrowLineItem::head() const
{
    const QLineF along = line();
    if (along.isNull())
        return {};
    const QPointF unit = (along.p2() - along.p1()) / along.length();
    const QPointF side(-unit.y(), unit.x());
    const QPointF base = along.p2() - unit * arrowSize;
    return {{along.p2(), base + side * arrowSize / 2, base - side * arrowSize / 2}};
}

QRectF ArrowLineItem::boundingRect() const
{
    return QGraphicsLineItem::boundingRect().united(head().boundingRect());
}

QPainterPath ArrowLineItem::shape() const
{
    QPainterPath path = QGraphicsLineItem::shape();
    path.addPolygon(head());
    return path;
}

void ArrowLineItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    // The line ends inside the head, so that a thick pen leaves the tip sharp.
    const QPolygonF tip = head();
    painter->setPen(pen());
    painter->drawLine(line().p1(), tip.isEmpty() ? line().p2() : (tip[1] + tip[2]) / 2);
    painter->setPen(Qt::NoPen);
    painter->setBrush(pen().color());
    painter->drawPolygon(tip);
}

} // namespace ChipLoom
