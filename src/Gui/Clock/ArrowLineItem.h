#pragma once

#include <QGraphicsLineItem>

namespace ChipLoom {

/// A line with a filled head at its end.
class ArrowLineItem : public QGraphicsLineItem
{
public:
    enum { Type = UserType + 1 };

    explicit ArrowLineItem(const QLineF &line, qreal size = 7, QGraphicsItem *parent = nullptr);

    /// The pen of the line; the head is filled with its colour.
    void setItemPen(const QPen &pen);

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    QPolygonF head() const;

    qreal arrowSize; ///< length of the head
};

} // namespace ChipLoom
