#include "Gui/Clock/ClockControls.h"

#include "Gui/App/Style.h"

#include <QGraphicsProxyWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

namespace ChipLoom {

namespace {

const QColor DisabledGround(244, 246, 247);

QColor frameColor(const QWidget &widget)
{
    if (widget.hasFocus())
        return Style::Highlight;
    return widget.underMouse() && widget.isEnabled() ? Style::Accent : QColor(140, 152, 160);
}

void drawFrame(QPainter &painter, const QWidget &widget, const QColor &ground)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(widget.isEnabled() ? frameColor(widget) : Style::Line, widget.hasFocus() ? 2 : 1));
    painter.setBrush(widget.isEnabled() ? ground : DisabledGround);
    const qreal inset = widget.hasFocus() ? 1 : 0.5;
    painter.drawRoundedRect(QRectF(widget.rect()).adjusted(inset, inset, -inset, -inset), 2, 2);
}

QColor textColor(const QWidget &widget)
{
    return widget.palette().color(widget.isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text);
}

} // namespace

void CustomComboBox1::showPopup()
{
    // In a scene the list is a child of the box: the box goes above its neighbours with it.
    if (QGraphicsProxyWidget *proxy = graphicsProxyWidget(); proxy && !m_raised) {
        m_raised = true;
        m_restingLayer = proxy->zValue();
        proxy->setZValue(m_restingLayer + 1);
    }
    QComboBox::showPopup();
}

void CustomComboBox1::hidePopup()
{
    QComboBox::hidePopup();
    if (QGraphicsProxyWidget *proxy = graphicsProxyWidget(); proxy && m_raised) {
        m_raised = false;
        proxy->setZValue(m_restingLayer);
    }
}

void CustomComboBox1::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawFrame(painter, *this, Qt::white);
    constexpr int arrow = 14;
    painter.setPen(textColor(*this));
    painter.drawText(rect().adjusted(5, 0, -arrow, 0), Qt::AlignVCenter | Qt::AlignLeft, currentText());
    const QPointF middle(width() - 9.0, height() / 2.0);
    painter.setPen(QPen(isEnabled() ? Style::Muted : Style::Line, 1.5));
    painter.drawPolyline(QPolygonF({middle + QPointF(-3.5, -2), middle + QPointF(0, 2), middle + QPointF(3.5, -2)}));
}

void CustomComboBox1::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

void CanvasButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawFrame(painter, *this, isDown() ? Style::WindowBackground.darker(110) : Style::WindowBackground);
    painter.setPen(textColor(*this));
    painter.drawText(rect(), Qt::AlignCenter, text());
}

InfoQuestion::InfoQuestion(QWidget *parent) : QLineEdit(QStringLiteral("?"), parent)
{
    setReadOnly(true);
    setFixedSize(16, 16);
    setCursor(Qt::WhatsThisCursor);
}

void InfoQuestion::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen(Style::Highlight, 2) : QPen(Qt::NoPen));
    painter.setBrush(Style::PageIdle);
    painter.drawEllipse(QRectF(rect()).center(), 6.5, 6.5);
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

void CanvasRadioButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF middle = QRectF(rect()).center();
    painter.setPen(QPen(isEnabled() ? frameColor(*this) : Style::Line, hasFocus() ? 2 : 1.2));
    painter.setBrush(isEnabled() ? QColor(Qt::white) : DisabledGround);
    painter.drawEllipse(middle, 6.2, 6.2);
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(isEnabled() ? Style::Accent.darker(130) : QColor(Qt::gray));
        painter.drawEllipse(middle, 3.4, 3.4);
    }
}

void CanvasRadioButton::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Left:
        emit stepped(-1);
        return;
    case Qt::Key_Down:
    case Qt::Key_Right:
        emit stepped(1);
        return;
    default:
        QRadioButton::keyPressEvent(event);
    }
}

bool CanvasRadioButton::hitButton(const QPoint &position) const
{
    return rect().contains(position);
}

} // namespace ChipLoom
