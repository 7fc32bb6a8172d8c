#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVector>

namespace ChipLoom {

/// Which colour of the palette a stroke or a text takes.
enum class DiagramTone {
    Strong, ///< signals and values
    Muted,  ///< axes and dimensions
    Accent, ///< what the drawing is about: samples, resets, the window
    Panel   ///< ground of boxes
};

struct DiagramLine
{
    enum class Ends { Plain, Arrow, Arrows };

    QVector<QPointF> points;
    DiagramTone tone = DiagramTone::Strong;
    bool dashed = false;
    Ends ends = Ends::Plain; ///< a head at the end, or at both ends
};

/// Part of an ellipse; angles in degrees, counted against the clock from three o'clock.
struct ArcItem
{
    QRectF ellipse;
    qreal start = 0;
    qreal span = 0;
};

/// A box, or any other closed outline.
struct DiagramShape
{
    QVector<QPointF> corners;
    bool filled = true;
};

struct DiagramCaption
{
    QString text; ///< as shown
    QRectF rect;  ///< a wider text is drawn smaller
    Qt::Alignment alignment = Qt::AlignCenter;
    DiagramTone tone = DiagramTone::Strong;
    bool bold = false;
};

/// One drawing, in units of which a page shows about 400 side by side.
struct DiagramDescription
{
    QVector<DiagramShape> shapes;
    QVector<DiagramLine> lines;
    QVector<ArcItem> arcs;
    QVector<DiagramCaption> captions;

    void box(const QRectF &rect, const QString &caption, bool filled = true)
    {
        shapes.append({{rect.topLeft(), rect.topRight(), rect.bottomRight(), rect.bottomLeft()}, filled});
        captions.append({caption, rect.adjusted(2, 0, -2, 0), Qt::AlignCenter, DiagramTone::Strong, false});
    }
};

} // namespace ChipLoom
