#pragma once

#include "Model/Enumerations.h"

#include <QGraphicsPathItem>
#include <QObject>

namespace ChipLoom {

/// One position of the package: its colour, its hover text, and the places where menus open. It stands for all entries
/// of the pin table with its number.
class PinQGraphicsRectItem : public QObject, public QGraphicsPathItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    PinQGraphicsRectItem(int pinNumber, QGraphicsItem *parent);

    void setRect(const QRectF &rect);    ///< a square pin
    void setEllipse(const QRectF &rect); ///< a ball

    int pinNumber() const { return m_pinNumber; }

    /// `alwaysFixed`: the position has a single entry, which cannot be assigned.
    void SetBackgroundColor(PINCONFIG_TYPE status, bool alwaysFixed);
    /// While a search hits the pin it shows the colour of hits in one half of the blinking, and its own in the other.
    void showHit(bool lit);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

signals:
    /// The pin's functions are asked for; `corner` is where the menu goes, in scene coordinates.
    void menuRequested(int pinNumber, const QPointF &corner);
    /// The menu of the right button.
    void contextMenuRequested(int pinNumber, const QPointF &corner);

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fill();

    int m_pinNumber;
    QColor m_statusColor;
    bool m_lit = false;
    bool m_round = false;
};

} // namespace ChipLoom
