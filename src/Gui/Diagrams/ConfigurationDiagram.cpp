#include "Gui/Diagrams/ConfigurationDiagram.h"

#include "Design/Calculators/ParameterSheet.h"
#include "Gui/App/Style.h"
#include "Gui/ChipView/PinGraphicsView.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsItem>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QLabel>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace ChipLoom {

namespace {

constexpr double LargestScale = 1.5; // at 96 dots per inch
constexpr int TextPixels = 11;
constexpr int LeastTextPixels = 6;
constexpr double HeadLength = 6;

// Sizes in the scene are the drawing's own: the view scales them with everything else.
QFont captionFont(bool bold)
{
    QFont font = Style::font(9, bold);
    font.setPixelSize(TextPixels);
    return font;
}

QColor mixed(const QColor &a, const QColor &b, double partOfB)
{
    const auto mix = [partOfB](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * partOfB)); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QPolygonF headAt(const QPointF &tip, const QPointF &from)
{
    const QLineF line(tip, from);
    if (line.length() <= 0)
        return {};
    const QPointF along = (from - tip) / line.length() * HeadLength;
    const QPointF across(-along.y() / 2.5, along.x() / 2.5);
    return {{tip, tip + along + across, tip + along - across}};
}

} // namespace

QString diagramText(const char *text)
{
    return QCoreApplication::translate("Diagram", text);
}

QString frequencyText(double hz)
{
    if (hz >= 1e6)
        return shortNumber(hz / 1e6, 4) + QLatin1String(" MHz");
    if (hz >= 1e3)
        return shortNumber(hz / 1e3, 4) + QLatin1String(" kHz");
    return shortNumber(hz, 4) + QLatin1String(" Hz");
}

QString hexadecimalText(int value)
{
    return QLatin1String("0x") + QStringLiteral("%1").arg(value, 2, 16, QLatin1Char('0')).toUpper();
}

QString millisecondText(double ms)
{
    return shortNumber(ms, 4) + QLatin1String(" ms");
}

ConfigurationDiagram::ConfigurationDiagram(QWidget *parent)
    : QWidget(parent), m_GraphicsView(new PinGraphicsView(this)), m_GraphicsScene(new QGraphicsScene(this))
{
    m_GraphicsView->setScene(m_GraphicsScene);
    m_GraphicsView->setFocusPolicy(Qt::NoFocus);
    m_GraphicsView->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // The drawing always fits: the wheel belongs to the list in which it stands.
    m_GraphicsView->viewport()->installEventFilter(this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_GraphicsView);
}

void ConfigurationDiagram::Redraw()
{
    m_GraphicsScene->clear();
    m_GraphicsScene->setBackgroundBrush(palette().color(QPalette::Base));
    DrawMap();
    m_drawn = true;
    ShowValues();
}

QColor ConfigurationDiagram::colour(DiagramTone tone) const
{
    const QColor ground = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    switch (tone) {
    case DiagramTone::Muted:
        return mixed(text, ground, 0.4);
    case DiagramTone::Accent:
        return palette().color(QPalette::Highlight);
    case DiagramTone::Panel:
        return mixed(ground, palette().color(QPalette::Highlight), 0.12);
    case DiagramTone::Strong:
        break;
    }
    return text;
}

QList<QGraphicsItem *> ConfigurationDiagram::Draw(const DiagramDescription &description)
{
    QList<QGraphicsItem *> items;
    for (const DiagramShape &shape : description.shapes) {
        const QBrush ground = shape.filled ? QBrush(colour(DiagramTone::Panel)) : QBrush(Qt::NoBrush);
        items.append(m_GraphicsScene->addPolygon(shape.corners, QPen(colour(DiagramTone::Strong), 1), ground));
    }
    for (const DiagramLine &line : description.lines)
        drawLine(line, items);
    for (const ArcItem &arc : description.arcs)
        items.append(AddQGraphicsPathItem(arc, colour(DiagramTone::Strong)));
    for (const DiagramCaption &caption : description.captions)
        items.append(drawCaption(caption));
    return items;
}

void ConfigurationDiagram::drawLine(const DiagramLine &line, QList<QGraphicsItem *> &items)
{
    if (line.points.size() < 2)
        return;
    QPainterPath path(line.points.first());
    for (int i = 1; i < line.points.size(); ++i)
        path.lineTo(line.points.at(i));
    QPen pen(colour(line.tone), line.tone == DiagramTone::Strong ? 1.5 : 1);
    pen.setStyle(line.dashed ? Qt::DashLine : Qt::SolidLine);
    items.append(m_GraphicsScene->addPath(path, pen));
    const auto addHead = [&](const QPointF &tip, const QPointF &from) {
        items.append(m_GraphicsScene->addPolygon(headAt(tip, from), QPen(Qt::NoPen), colour(line.tone)));
    };
    if (line.ends != DiagramLine::Ends::Plain)
        addHead(line.points.last(), line.points.at(line.points.size() - 2));
    if (line.ends == DiagramLine::Ends::Arrows)
        addHead(line.points.first(), line.points.at(1));
}

QGraphicsItem *ConfigurationDiagram::AddQGraphicsPathItem(const ArcItem &arc, const QColor &colour)
{
    QPainterPath path;
    path.arcMoveTo(arc.ellipse, arc.start);
    path.arcTo(arc.ellipse, arc.start, arc.span);
    return m_GraphicsScene->addPath(path, QPen(colour, 1.5));
}

QGraphicsTextItem *ConfigurationDiagram::AddQGraphicsTextItem(const QString &text, qreal x, qreal y, const QFont &font,
                                                              const QColor &colour)
{
    QGraphicsTextItem *item = m_GraphicsScene->addText(text, font);
    item->document()->setDocumentMargin(0);
    item->setDefaultTextColor(colour);
    item->setPos(x, y);
    return item;
}

QGraphicsItem *ConfigurationDiagram::drawCaption(const DiagramCaption &caption)
{
    QGraphicsTextItem *item = AddQGraphicsTextItem(caption.text, 0, 0, captionFont(caption.bold), colour(caption.tone));
    const QSizeF natural = item->boundingRect().size();
    const qreal scale = std::min(1.0, caption.rect.width() / std::max(1.0, natural.width()));
    item->setScale(scale);
    const QSizeF size = natural * scale;
    qreal x = caption.rect.center().x() - size.width() / 2;
    if (caption.alignment & Qt::AlignLeft)
        x = caption.rect.left();
    else if (caption.alignment & Qt::AlignRight)
        x = caption.rect.right() - size.width();
    item->setPos(x, caption.rect.center().y() - size.height() / 2);
    return item;
}

QGraphicsItem *ConfigurationDiagram::NewWidgetInScene(QWidget *widget, const QRectF &rect)
{
    widget->setFont(captionFont(false));
    QGraphicsProxyWidget *proxy = m_GraphicsScene->addWidget(widget);
    proxy->setMinimumSize(0, 0);
    widget->setMinimumSize(1, 1);
    proxy->setGeometry(rect);
    return proxy;
}

QLabel *ConfigurationDiagram::NewQLabelInScenePos(const QString &text, qreal x, qreal y, qreal width, qreal height,
                                                  const char *name)
{
    auto *label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setAlignment(Qt::AlignCenter);
    label->setTextFormat(Qt::PlainText);
    label->setAttribute(Qt::WA_TranslucentBackground);
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, colour(DiagramTone::Strong));
    colours.setColor(QPalette::Window, Qt::transparent);
    label->setPalette(colours);
    NewWidgetInScene(label, QRectF(x, y, width, height));
    SetLabelText(label, text);
    return label;
}

void ConfigurationDiagram::SetLabelText(QLabel *label, const QString &text)
{
    QFont font = captionFont(true);
    while (font.pixelSize() > LeastTextPixels && QFontMetrics(font).horizontalAdvance(text) > label->width())
        font.setPixelSize(font.pixelSize() - 1);
    label->setFont(font);
    label->setText(text);
}

QGraphicsItem *ConfigurationDiagram::itemOf(const QWidget *inScene)
{
    return inScene->graphicsProxyWidget();
}

void ConfigurationDiagram::SetItemsVisible(const QList<QGraphicsItem *> &items, bool visible)
{
    for (QGraphicsItem *item : items)
        item->setVisible(visible);
}

void ConfigurationDiagram::SetExtent(const QSizeF &extent)
{
    m_extent = extent;
    m_GraphicsScene->setSceneRect(QRectF(QPointF(), m_extent));
    fit();
}

void ConfigurationDiagram::fit()
{
    const double largest = LargestScale * std::max(1.0, logicalDpiX() / 96.0);
    const double scale =
        std::clamp((width() - 8) / m_extent.width(), PinGraphicsView::MinimumScale, std::max(1.0, largest));
    m_GraphicsView->setFixedHeight(static_cast<int>(std::ceil(m_extent.height() * scale)) + 2);
    m_GraphicsView->setTransform(QTransform::fromScale(scale, scale));
}

void ConfigurationDiagram::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fit();
}

void ConfigurationDiagram::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (m_drawn && (event->type() == QEvent::PaletteChange || event->type() == QEvent::LanguageChange))
        Redraw();
}

bool ConfigurationDiagram::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace ChipLoom
