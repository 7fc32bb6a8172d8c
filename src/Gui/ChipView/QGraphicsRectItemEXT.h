#pragma once

#include <QGraphicsRectItem>
#include <QObject>

namespace ChipLoom {

/// The body of the package, parent of its pins and texts. A click on it (not a drag) shows or hides the pin numbers.
class QGraphicsRectItemEXT : public QObject, public QGraphicsRectItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    explicit QGraphicsRectItemEXT(const QRectF &rect);

    /// The circle that marks pin 1.
    void setPinOneMark(const QRectF &circle) { m_pinOneMark = circle; }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

signals:
    void ClickFinished();

private:
    QRectF m_pinOneMark;
};

} // namespace ChipLoom
