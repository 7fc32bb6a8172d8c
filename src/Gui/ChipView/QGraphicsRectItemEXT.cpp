#include "Gui/ChipView/QGraphicsRectItemEXT.h"

#include <QPainter>

namespace ChipLoom {

QGraphicsRectItemEXT::QGraphicsRectItemEXT(const QRectF &rect) : QGraphicsRectItem(rect)
{
    setPen(QPen(QColor(32, 40, 48), 1));
    setBrush(QColor(62, 73, 84));
    setTransformOriginPoint(rect.center());
}

void QGraphicsRectItemEXT::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->setPen(pen());
    painter->setBrush(brush());
    painter->drawRect(rect());
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(200, 208, 216));
    painter->setRenderHint(QPainter::Antialiasing);
    painter->drawEllipse(m_pinOneMark);
}

} // namespace ChipLoom
