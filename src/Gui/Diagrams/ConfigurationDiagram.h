#pragma once

#include "Gui/Diagrams/DiagramDescription.h"

#include <QColor>
#include <QList>
#include <QWidget>

class QGraphicsItem;
class QGraphicsScene;
class QGraphicsTextItem;
class QLabel;

namespace ChipLoom {

class PinGraphicsView;

/// A drawing of what the parameters of a peripheral mean, with the present values in it. It is made of vector items in
/// colours of the palette, is as wide as its page, and can be rendered to any painter from its scene. Items stay in
/// the scene; what does not belong to the present variant is hidden. A change of palette or language draws it anew.
class ConfigurationDiagram : public QWidget
{
    Q_OBJECT
public:
    explicit ConfigurationDiagram(QWidget *parent = nullptr);

    QGraphicsScene *getGraphicsScene() const { return m_GraphicsScene; }

protected:
    /// Makes all items; the scene is empty before.
    virtual void DrawMap() = 0;
    /// Writes the values as they are now and shows the variant that they ask for.
    virtual void ShowValues() = 0;
    /// Both, for the first time at the end of the constructor of the class that draws.
    void Redraw();

    /// Items of a description, all of one variant.
    QList<QGraphicsItem *> Draw(const DiagramDescription &description);
    /// A label for a value; its name is that of the field that holds it. The text is centred and never cut off.
    QLabel *NewQLabelInScenePos(const QString &text, qreal x, qreal y, qreal width, qreal height,
                                const char *name = "");
    QGraphicsItem *NewWidgetInScene(QWidget *widget, const QRectF &rect);
    QGraphicsTextItem *AddQGraphicsTextItem(const QString &text, qreal x, qreal y, const QFont &font,
                                            const QColor &colour);
    QGraphicsItem *AddQGraphicsPathItem(const ArcItem &arc, const QColor &colour);
    /// Puts a text into a label, smaller if it would not fit.
    static void SetLabelText(QLabel *label, const QString &text);
    static QGraphicsItem *itemOf(const QWidget *inScene);
    static void SetItemsVisible(const QList<QGraphicsItem *> &items, bool visible);
    /// The size of what is shown now, from the origin.
    void SetExtent(const QSizeF &extent);
    QColor colour(DiagramTone tone) const;
    PinGraphicsView *view() const { return m_GraphicsView; }

    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fit();
    void drawLine(const DiagramLine &line, QList<QGraphicsItem *> &items);
    QGraphicsItem *drawCaption(const DiagramCaption &caption);

    PinGraphicsView *m_GraphicsView;
    QGraphicsScene *m_GraphicsScene;
    QSizeF m_extent{400, 100};
    bool m_drawn = false;
};

/// A caption of the drawings in the current language; marked with QT_TRANSLATE_NOOP("Diagram", ...).
QString diagramText(const char *text);

/// "7.5 MHz", "100 kHz", "12 Hz".
QString frequencyText(double hz);
/// "0x7F", with two digits at least.
QString hexadecimalText(int value);
/// "409.6 ms"
QString millisecondText(double ms);

} // namespace ChipLoom
