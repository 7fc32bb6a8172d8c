#pragma once

#include "ClockConfig/ClockSeries.h"
#include "Gui/Clock/ClockPageModel.h"

#include <QGraphicsScene>
#include <QWidget>

#include <map>
#include <vector>

class QDialog;
class QGraphicsProxyWidget;
class QGraphicsSimpleTextItem;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace ChipLoom {

class ArrowLineItem;
class CanvasButton;
class ClockSolutionsDialog;
class CustomComboBox1;
class EntryField;
class PinGraphicsView;
class TriangleItem;

/// The clock page of one series: the drawing of its tree with live controls on it. It shows what the model says and
/// hands over what the user does; it decides nothing.
class ZV32MCUPLLView : public QWidget
{
    Q_OBJECT

public:
    /// `model` must outlive the canvas.
    ZV32MCUPLLView(const ClockSeries &series, ClockPageModel &model, QWidget *parent = nullptr);
    ~ZV32MCUPLLView() override;

    /// Sets all texts anew, in the present language.
    void TranslatorUI();
    /// Shows the present state of the model.
    void refresh();

    void ZoomIn();
    void ZoomOut();
    void ZoomReset();
    void FitToWindow();

    PinGraphicsView *getGraphicsView() const { return m_GraphicsView; }
    QGraphicsScene *getGraphicsScene() const { return m_GraphicsScene; }
    /// The frame of the drawing, in scene units.
    QRectF getPixmapRect() const { return pixmapItemRect; }

    const ClockMapDescription &description() const { return m_map; }
    /// The control of a subject, or of one option of a field with radio buttons. Null if the map has none.
    QWidget *control(const ClockSubject &subject, int option = -1) const;
    /// Whether something is typed that waits for Return.
    bool hasTypedValue() const;
    /// Puts what is in effect back into the fields in which something waits.
    void giveBackTyped();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct PlacedControl
    {
        ClockMapPlace place;
        QWidget *widget;
        QGraphicsProxyWidget *proxy;
        ClockFace face;
    };
    struct PlacedText
    {
        const ClockMapText *text;
        QGraphicsSimpleTextItem *item;
    };
    struct PlacedWire
    {
        ClockPaths paths;
        ClockFormOnly form;
        QVector<QGraphicsItem *> items;
    };
    struct PlacedList
    {
        const ClockMapList *list;
        CanvasButton *button;
        QDialog *dialog;
    };

    void drawMap();
    void newControls();
    void newControl(const ClockMapPlace &place);
    QString accessibleName(const ClockMapPlace &place) const;
    void newList(const ClockMapList &list);

    // The shapes of a drawing.
    QGraphicsItem *DrawPolygonItem(qreal x, qreal y, qreal height);
    QGraphicsItem *DrawBlackPoint(qreal x, qreal y);
    QVector<QGraphicsItem *> DrawAnglePathItem(const QVector<QPointF> &points, bool arrow);

    // The controls; each stands in the scene at the given position.
    QRadioButton *NewRadioButtonInScenePos(qreal x, qreal y);
    CustomComboBox1 *NewComboBoxInScenePos(qreal x, qreal y, int width, int fontSize);
    QLineEdit *NewCustomLineEditInScenePos(const QString &text, qreal x, qreal y, int width);
    QLabel *NewQLabelInScenePos(const QString &text, qreal x, qreal y, int width, int height);
    QLineEdit *New_toperipheralControl(const QString &text, qreal x, qreal y, int width);
    CanvasButton *New_toperipheralListButton(qreal x, qreal y, int width);
    QDialog *New_toperipheralListGroup(const QStringList &names, qreal x, qreal y, int width, int height);
    QLineEdit *New_InfoQuestionQAction(qreal x, qreal y);

    void apply(PlacedControl &placed, const ClockFace &face);
    void showWires();
    void step(ClockField field, int from, int direction);
    /// The Tab key: to the next control in the order of the tree. False at the ends.
    bool moveFocus(bool next);
    std::vector<EntryField *> typedFields() const;
    void openSolutions();
    void followMap(double largest);
    void hideLists(const QDialog *except = nullptr);

    const ClockSeries &m_series;
    const ClockMapDescription m_map;
    ClockPageModel &m_model;
    PinGraphicsView *m_GraphicsView = nullptr;
    QGraphicsScene *m_GraphicsScene = nullptr;
    QRectF pixmapItemRect;

    std::vector<PlacedControl> m_controls;
    std::vector<PlacedText> m_texts;
    std::vector<PlacedWire> m_wires;
    std::vector<PlacedList> m_lists;
    ClockSolutionsDialog *m_solutions = nullptr;
    ClockPaths m_shownPaths;
    ClockFormOnly m_shownForm = ClockFormOnly::Both;
};

/// Sets the colour of the text through the palette.
void SetLineEditColor(QLineEdit *edit, const QColor &color);
void SetLabelColor(QLabel *label, const QColor &color);

} // namespace ChipLoom
