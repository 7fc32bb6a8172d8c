#pragma once

#include "Model/Enumerations.h"

#include <QFont>
#include <QGraphicsItem>
#include <QObject>
#include <QStaticText>

namespace ChipLoom {

/// The scene's font at a size in points of 96 dots per inch, whatever the display says: the cells that the texts must
/// fit do not grow with the display's resolution either.
QFont chipFont(int points);

/// One line of text in a box: name, number or marker of a pin. A text that does not fit is drawn smaller, and
/// shortened where it would become illegible. The box is centred on the item's position and turns about its centre.
class PinQGraphicsTextItem : public QGraphicsItem
{
public:
    /// `box` in the parent's coordinates as it stands there; a text that runs upward fills it from the bottom.
    PinQGraphicsTextItem(const QRectF &box, bool upward, QGraphicsItem *parent);

    void setBox(const QRectF &box);
    void setFont(const QFont &font);
    /// How small a text may become before it is shortened.
    void setSmallestPixelSize(int pixels);
    void setText(const QString &text);
    void setColor(const QColor &color);
    void setAlignment(Qt::Alignment alignment);

    QString text() const { return m_text; }
    QString shownText() const { return m_shown.text(); } ///< after shortening
    QFont shownFont() const { return m_shownFont; }      ///< after fitting
    /// Where the text stands, in the item's coordinates.
    QRectF textRect() const;

    /// A mirrored text is turned by 180 degrees, so that it stands upright although its chip is turned.
    void SetMirrorFlag(bool mirrored);
    bool GetMirrorFlag() const { return m_mirrored; }
    bool runsUpward() const { return m_upward; }

    QRectF boundingRect() const override { return m_box; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    void fit();

    QRectF m_box; ///< centred on the origin, the text's own direction to the right
    QString m_text;
    QFont m_font;
    QFont m_shownFont;
    int m_smallestPixelSize;
    QStaticText m_shown;
    qreal m_baseline = 0; ///< below the top of the shown text
    QColor m_color = Qt::black;
    Qt::Alignment m_alignment = Qt::AlignCenter;
    bool m_upward = false;
    bool m_mirrored = false;
};

/// The label outside a pin: what the pin is used for. A click asks for the settings of that signal.
class PinQGraphicsTextItemConfigedInfo : public QObject, public PinQGraphicsTextItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    PinQGraphicsTextItemConfigedInfo(int pinNumber, const QRectF &box, bool upward, QGraphicsItem *parent);

    /// The signal that stands on the pin, and the text that is shown for it. Both empty for none.
    void SetConfigedSignals(const QString &signalName, const QString &shownLabel);
    QString configedSignal() const { return m_signalName; }

    QPainterPath shape() const override;

signals:
    /// A click: show where the signal comes from.
    void sendConfigedSignalInfo(const QString &signalName, int pinNumber);
    /// A double click: show it and search it on the chip.
    void sendConfigedSignalInfoQueryImmediately(const QString &signalName, int pinNumber);

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

private:
    int m_pinNumber;
    QString m_signalName;
};

} // namespace ChipLoom
