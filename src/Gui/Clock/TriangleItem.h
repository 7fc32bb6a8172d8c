#pragma once

#include <QBrush>
#include <QGraphicsItem>
#include <QPen>

namespace ChipLoom {

/// A triangle, as of a driver.
class TriangleItem : public QGraphicsItem
{
public:
    enum { Type = UserType + 2 };

    TriangleItem(qreal x1, qreal y1, qreal x2, qreal y2, qreal x3, qreal y3, QGraphicsItem *parent = nullptr);

    void setItemPen(const QPen &pen);

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    QPointF p1;
    QPointF p2;
    QPointF p3;
    QPen m_pen;
};

} // namespace ChipLoom
