#include "Gui/Clock/TriangleItem.h"

#include <QPainter>

namespace ChipLoom {

TriangleItem::TriangleItem(qreal x1, qreal y1, qreal x2, qreal y2, qreal x3, qreal y3, QGraphicsItem *parent)
    : QGraphicsItem(parent), p1(x1, y1), p2(x2, y2), p3(x3, y3)
{
}

void TriangleItem::setItemPen(const QPen &pen)
{
    m_pen = pen;
    update();
}

QRectF TriangleItem::boundingRect() const
{
    return QPolygonF({p1, p2, p3}).boundingRect().adjusted(-2, -2, 2, 2);
}

QPainterPath TriangleItem::shape() const
{
    QPainterPath path;
    path.addPolygon({{p1, p2, p3, p1}});
    return path;
}

void TriangleItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->setPen(m_pen);
    painter->setBrush(Qt::white);
    const std::array corners{p1, p2, p3};
    painter->drawPolygon(corners.data(), static_cast<int>(corners.size()));
}

} // namespace ChipLoom
