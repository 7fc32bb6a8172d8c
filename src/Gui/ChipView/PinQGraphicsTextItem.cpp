#include "Gui/ChipView/PinQGraphicsTextItem.h"

#include "Gui/App/Style.h"

#include <QFontMetricsF>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace ChipLoom {

namespace {

/// Below this a text cannot be read at zoom 1.
constexpr int LegiblePixelSize = 7;

} // namespace

QFont chipFont(int points)
{
    QFont font = Style::font(points);
    font.setPixelSize(std::max(1, qRound(points * 96.0 / 72.0)));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

PinQGraphicsTextItem::PinQGraphicsTextItem(const QRectF &box, bool upward, QGraphicsItem *parent)
    : QGraphicsItem(parent), m_font(chipFont(9)), m_smallestPixelSize(LegiblePixelSize), m_upward(upward)
{
    m_shown.setTextFormat(Qt::PlainText);
    m_shown.setPerformanceHint(QStaticText::AggressiveCaching);
    setAcceptedMouseButtons(Qt::NoButton);
    setBox(box);
    SetMirrorFlag(false);
}

void PinQGraphicsTextItem::setBox(const QRectF &box)
{
    setPos(box.center());
    const QSizeF size = m_upward ? box.size().transposed() : box.size();
    if (size == m_box.size())
        return;
    prepareGeometryChange();
    m_box = QRectF(QPointF(-size.width() / 2, -size.height() / 2), size);
    fit();
}

void PinQGraphicsTextItem::setFont(const QFont &font)
{
    m_font = font;
    fit();
}

void PinQGraphicsTextItem::setSmallestPixelSize(int pixels)
{
    m_smallestPixelSize = std::max(pixels, LegiblePixelSize);
    fit();
}

void PinQGraphicsTextItem::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    fit();
}

void PinQGraphicsTextItem::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

void PinQGraphicsTextItem::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    update();
}

void PinQGraphicsTextItem::SetMirrorFlag(bool mirrored)
{
    m_mirrored = mirrored;
    setRotation((m_upward ? -90 : 0) + (mirrored ? 180 : 0));
}

void PinQGraphicsTextItem::fit()
{
    update();
    m_shownFont = m_font;
    if (m_text.isEmpty()) {
        m_shown.setText(QString());
        return;
    }
    QString shown = m_text;
    QFont font = m_font;
    QRectF tight;
    double width = 0;
    for (;;) {
        const QFontMetricsF metrics(font);
        width = metrics.horizontalAdvance(shown);
        tight = metrics.tightBoundingRect(shown);
        if (width <= m_box.width() && tight.height() <= m_box.height())
            break;
        if (font.pixelSize() <= m_smallestPixelSize) {
            shown = metrics.elidedText(m_text, Qt::ElideRight, m_box.width());
            break;
        }
        font.setPixelSize(font.pixelSize() - 1);
    }
    m_shownFont = font;
    m_shown.setText(shown);
    m_shown.prepare(QTransform(), font);
    // A face that stands in for missing letters may be higher than the font that was asked for.
    QTextLayout layout(shown, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    m_baseline = line.isValid() ? line.ascent() : 0;
}

QRectF PinQGraphicsTextItem::textRect() const
{
    // Centred by the height of a capital letter, so that a column of names stands on even lines; a font of signs has
    // none.
    const QFontMetricsF metrics(m_shownFont);
    const QRectF body = metrics.tightBoundingRect(metrics.inFont(QLatin1Char('H')) ? QStringLiteral("H") : m_text);
    const QSizeF size = m_shown.size();
    const double top = m_box.center().y() - body.center().y() - m_baseline;
    Qt::Alignment horizontal = m_alignment & Qt::AlignHorizontal_Mask;
    if (m_mirrored && horizontal == Qt::AlignLeft)
        horizontal = Qt::AlignRight;
    else if (m_mirrored && horizontal == Qt::AlignRight)
        horizontal = Qt::AlignLeft;
    double left = m_box.center().x() - size.width() / 2;
    if (horizontal == Qt::AlignLeft)
        left = m_box.left();
    else if (horizontal == Qt::AlignRight)
        left = m_box.right() - size.width();
    return QRectF(QPointF(left, top), size);
}

void PinQGraphicsTextItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    if (m_shown.text().isEmpty())
        return;
    painter->setFont(m_shownFont);
    painter->setPen(m_color);
    painter->drawStaticText(textRect().topLeft(), m_shown);
}

PinQGraphicsTextItemConfigedInfo::PinQGraphicsTextItemConfigedInfo(int pinNumber, const QRectF &box, bool upward,
                                                                   QGraphicsItem *parent)
    : PinQGraphicsTextItem(box, upward, parent), m_pinNumber(pinNumber)
{
    setAcceptedMouseButtons(Qt::LeftButton);
}

void PinQGraphicsTextItemConfigedInfo::SetConfigedSignals(const QString &signalName, const QString &shownLabel)
{
    m_signalName = signalName;
    setText(shownLabel);
    setToolTip(shownLabel == signalName || shownLabel.isEmpty() ? signalName : shownLabel + " (" + signalName + ")");
}

QPainterPath PinQGraphicsTextItemConfigedInfo::shape() const
{
    QPainterPath path;
    if (!m_signalName.isEmpty())
        path.addRect(textRect());
    return path;
}

void PinQGraphicsTextItemConfigedInfo::mousePressEvent(QGraphicsSceneMouseEvent *)
{
    emit sendConfigedSignalInfo(m_signalName, m_pinNumber);
}

void PinQGraphicsTextItemConfigedInfo::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *)
{
    emit sendConfigedSignalInfoQueryImmediately(m_signalName, m_pinNumber);
}

} // namespace ChipLoom
