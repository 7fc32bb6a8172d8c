#include "Gui/Clock/ZV32MCUPLLView.h"

#include "Gui/App/Style.h"
#include "Gui/ChipView/PinGraphicsView.h"
#include "Gui/Clock/ClockControls.h"
#include "Gui/Clock/ClockMaps.h"
#include "Gui/Clock/ClockSolutionsDialog.h"
#include "Gui/Widgets/EntryField.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QFocusEvent>
#include <QGraphicsProxyWidget>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <utility>

namespace ChipLoom {

namespace {

const QColor GoodText(0, 100, 0);
const QColor OutOfRangeText(Qt::red);
const QColor AcceptedGround(208, 240, 208);
const QColor PendingGround(255, 255, 208);

QString shown(const QString &key)
{
    return QCoreApplication::translate("Clock", key.toUtf8().constData());
}

QColor textColor(ClockFace::Tone tone)
{
    switch (tone) {
    case ClockFace::Tone::Good:
        return GoodText;
    case ClockFace::Tone::OutOfRange:
        return OutOfRangeText;
    case ClockFace::Tone::Plain:
        break;
    }
    return Qt::black;
}

QColor groundColor(ClockFace::Ground ground)
{
    switch (ground) {
    case ClockFace::Ground::Accepted:
        return AcceptedGround;
    case ClockFace::Ground::Pending:
        return PendingGround;
    case ClockFace::Ground::Plain:
        break;
    }
    return Qt::white;
}

void setItems(QComboBox *box, const ClockFace &face)
{
    const QSignalBlocker quiet(box);
    if (box->count() != face.options.size() || [&] {
            for (int n = 0; n < box->count(); ++n)
                if (box->itemText(n) != face.options[n])
                    return true;
            return false;
        }()) {
        box->clear();
        box->addItems(face.options);
    }
    box->setCurrentIndex(face.choice);
    const auto *model = qobject_cast<QStandardItemModel *>(box->model());
    for (int n = 0; n < box->count(); ++n) {
        const QString refusal = face.refusals.value(n);
        model->item(n)->setEnabled(refusal.isEmpty());
        model->item(n)->setToolTip(refusal);
    }
}

/// The base walks its widgets by a chain in which it can get stuck at one that takes no focus by the key.
class ClockScene : public QGraphicsScene
{
public:
    ClockScene(std::function<bool(bool next)> moveFocus, QObject *parent)
        : QGraphicsScene(parent), m_moveFocus(std::move(moveFocus))
    {
    }

protected:
    bool event(QEvent *event) override
    {
        const auto *press = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event) : nullptr;
        if (!press || (press->key() != Qt::Key_Tab && press->key() != Qt::Key_Backtab))
            return QGraphicsScene::event(event);
        event->setAccepted(m_moveFocus(press->key() == Qt::Key_Tab && !(press->modifiers() & Qt::ShiftModifier)));
        return true;
    }

    void focusInEvent(QFocusEvent *event) override
    {
        const bool back = event->reason() == Qt::BacktabFocusReason;
        if (!back && event->reason() != Qt::TabFocusReason)
            return QGraphicsScene::focusInEvent(event);
        QFocusEvent withoutWalk(event->type(), Qt::OtherFocusReason);
        QGraphicsScene::focusInEvent(&withoutWalk);
        setFocusItem(nullptr);
        m_moveFocus(!back);
    }

private:
    std::function<bool(bool next)> m_moveFocus;
};

} // namespace

void SetLineEditColor(QLineEdit *edit, const QColor &color)
{
    QPalette palette = edit->palette();
    palette.setColor(QPalette::Active, QPalette::Text, color);
    palette.setColor(QPalette::Inactive, QPalette::Text, color);
    edit->setPalette(palette);
}

void SetLabelColor(QLabel *label, const QColor &color)
{
    QPalette palette = label->palette();
    palette.setColor(QPalette::Active, QPalette::WindowText, color);
    palette.setColor(QPalette::Inactive, QPalette::WindowText, color);
    label->setPalette(palette);
}

ZV32MCUPLLView::ZV32MCUPLLView(const ClockSeries &series, ClockPageModel &model, QWidget *parent)
    : QWidget(parent), m_series(series), m_map(describeClockMap(series)), m_model(model),
      m_GraphicsView(new PinGraphicsView(this)),
      m_GraphicsScene(new ClockScene([this](bool next) { return moveFocus(next); }, this)),
      pixmapItemRect(0, 0, ClockMapDescription::Width, ClockMapDescription::Height)
{
    m_GraphicsScene->setBackgroundBrush(Qt::white);
    m_GraphicsScene->setSceneRect(pixmapItemRect.adjusted(-2, -2, 2, 2));
    m_GraphicsView->setScene(m_GraphicsScene);
    Style::setRole(m_GraphicsView, Style::Role::Canvas);
    m_GraphicsView->setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
    m_GraphicsView->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_GraphicsView->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_GraphicsView->viewport()->installEventFilter(this);
    followMap(1.0);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_GraphicsView);

    drawMap();
    newControls();
    TranslatorUI();
    m_model.changed = [this] { refresh(); };
}

ZV32MCUPLLView::~ZV32MCUPLLView()
{
    m_model.changed = nullptr;
}

void ZV32MCUPLLView::TranslatorUI()
{
    for (const PlacedText &placed : m_texts) {
        placed.item->setText(shown(placed.text->key));
        const QRectF text = placed.item->boundingRect();
        const QRectF &rect = placed.text->rect;
        const Qt::Alignment alignment = placed.text->alignment;
        qreal x = rect.left();
        if (alignment & Qt::AlignRight)
            x = rect.right() - text.width();
        else if (alignment & Qt::AlignHCenter)
            x = rect.center().x() - text.width() / 2;
        placed.item->setPos(x, rect.center().y() - text.height() / 2);
    }
    for (const PlacedList &list : m_lists) {
        list.button->setText(tr("List"));
        list.dialog->setAccessibleName(shown(list.list->title));
    }
    refresh();
}

void ZV32MCUPLLView::refresh()
{
    for (PlacedControl &placed : m_controls)
        apply(placed, m_model.face(placed.place.subject));
    showWires();
}

void ZV32MCUPLLView::apply(PlacedControl &placed, const ClockFace &face)
{
    const bool inForm = placed.place.form == ClockFormOnly::Both || placed.place.form == m_model.pllForm();
    placed.proxy->setVisible(face.shown && inForm);
    QWidget *widget = placed.widget;
    switch (placed.place.kind) {
    case ClockMapPlace::Kind::Radio: {
        const QSignalBlocker quiet(widget);
        static_cast<QRadioButton *>(widget)->setChecked(face.choice == placed.place.option);
        break;
    }
    case ClockMapPlace::Kind::Combo:
        if (auto *box = static_cast<CustomComboBox1 *>(widget);
            box->currentIndex() != face.choice || face != placed.face)
            setItems(box, face);
        break;
    case ClockMapPlace::Kind::Edit:
    case ClockMapPlace::Kind::Value:
        // What is in effect is no longer typed: Esc leads back to it, and not behind it.
        if (auto *edit = static_cast<QLineEdit *>(widget);
            edit->text() != face.text || (edit->isModified() && face.ground != ClockFace::Ground::Pending)) {
            const int cursor = edit->cursorPosition();
            edit->setText(face.text);
            edit->setCursorPosition(cursor);
        }
        break;
    case ClockMapPlace::Kind::Label:
    case ClockMapPlace::Kind::Info:
        break;
    case ClockMapPlace::Kind::Button:
        static_cast<CanvasButton *>(widget)->setText(face.text);
        break;
    }
    if (face == placed.face)
        return;

    if (placed.place.kind == ClockMapPlace::Kind::Label) {
        auto *label = static_cast<QLabel *>(widget);
        label->setText(face.text);
        SetLabelColor(label, textColor(face.tone));
    }
    if (placed.place.kind == ClockMapPlace::Kind::Edit || placed.place.kind == ClockMapPlace::Kind::Value) {
        auto *edit = static_cast<QLineEdit *>(widget);
        QPalette palette = edit->palette();
        palette.setColor(QPalette::Active, QPalette::Base, groundColor(face.ground));
        palette.setColor(QPalette::Inactive, QPalette::Base, groundColor(face.ground));
        palette.setColor(QPalette::Disabled, QPalette::Base, QColor(244, 246, 247));
        edit->setPalette(palette);
        SetLineEditColor(edit, textColor(face.tone));
    }
    const QString refusal =
        placed.place.kind == ClockMapPlace::Kind::Radio ? face.refusals.value(placed.place.option) : QString();
    widget->setEnabled(face.enabled && refusal.isEmpty());
    widget->setToolTip(refusal.isEmpty() ? face.toolTip : refusal);
    placed.face = face;
}

void ZV32MCUPLLView::step(ClockField field, int from, int direction)
{
    std::vector<const PlacedControl *> inputs;
    for (const PlacedControl &placed : m_controls) {
        if (placed.place.subject == ClockSubject(field) && placed.widget->isEnabled())
            inputs.push_back(&placed);
    }
    std::sort(inputs.begin(), inputs.end(),
              [](const PlacedControl *a, const PlacedControl *b) { return a->place.rect.y() < b->place.rect.y(); });
    const auto at = std::find_if(inputs.begin(), inputs.end(),
                                 [from](const PlacedControl *placed) { return placed->place.option == from; });
    const auto next = static_cast<std::size_t>(at - inputs.begin() + direction);
    if (next >= inputs.size())
        return;
    m_model.choose(field, inputs[next]->place.option);
    inputs[next]->widget->setFocus(Qt::TabFocusReason);
}

bool ZV32MCUPLLView::moveFocus(bool next)
{
    std::vector<QWidget *> stops;
    const auto add = [&stops](QWidget *widget) {
        // Of radio buttons the arrow keys reach the others.
        const auto *radio = qobject_cast<QRadioButton *>(widget);
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled() && widget->isVisible() &&
            (!radio || radio->isChecked() || widget->hasFocus()))
            stops.push_back(widget);
    };
    for (const PlacedControl &placed : m_controls)
        add(placed.widget);
    for (const PlacedList &list : m_lists)
        add(list.button);
    const auto *present = qgraphicsitem_cast<QGraphicsProxyWidget *>(m_GraphicsScene->focusItem());
    const auto at = std::find(stops.begin(), stops.end(), present ? present->widget() : nullptr);
    const auto last = stops.end() - (stops.empty() ? 0 : 1);
    auto stop = stops.end();
    if (at == stops.end())
        stop = next ? stops.begin() : last;
    else if (at != (next ? last : stops.begin()))
        stop = next ? at + 1 : at - 1;
    if (stop == stops.end())
        return false; // on to what stands beside the drawing
    (*stop)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    m_GraphicsView->ensureVisible((*stop)->graphicsProxyWidget());
    return true;
}

void ZV32MCUPLLView::openSolutions()
{
    if (!m_solutions) {
        m_solutions = new ClockSolutionsDialog(this);
        connect(m_solutions, &ClockSolutionsDialog::chosen, this, [this](int row) {
            m_model.chooseSolution(row);
            refresh();
        });
    }
    m_solutions->setSolutions(m_model.solutions());
    const QWidget *button = control(ClockExtra::Solutions);
    const QPointF below = button->graphicsProxyWidget()->sceneBoundingRect().bottomLeft();
    m_solutions->move(m_GraphicsView->viewport()->mapToGlobal(m_GraphicsView->mapFromScene(below)));
    m_solutions->show();
}

void ZV32MCUPLLView::hideLists(const QDialog *except)
{
    for (const PlacedList &list : m_lists) {
        if (list.dialog != except)
            list.dialog->hide();
    }
}

QWidget *ZV32MCUPLLView::control(const ClockSubject &subject, int option) const
{
    const auto found = std::find_if(m_controls.begin(), m_controls.end(), [&](const PlacedControl &placed) {
        return placed.place.subject == subject && (option < 0 || placed.place.option == option);
    });
    return found == m_controls.end() ? nullptr : found->widget;
}

std::vector<EntryField *> ZV32MCUPLLView::typedFields() const
{
    std::vector<EntryField *> fields;
    for (const PlacedControl &placed : m_controls) {
        auto *field = qobject_cast<EntryField *>(placed.widget);
        if (field && field->isModified() && placed.face.ground == ClockFace::Ground::Pending)
            fields.push_back(field);
    }
    return fields;
}

bool ZV32MCUPLLView::hasTypedValue() const
{
    return !typedFields().empty();
}

void ZV32MCUPLLView::giveBackTyped()
{
    for (EntryField *field : typedFields())
        field->giveBack();
}

void ZV32MCUPLLView::ZoomIn()
{
    m_GraphicsView->zoomIn();
}

void ZV32MCUPLLView::ZoomOut()
{
    m_GraphicsView->zoomOut();
}

void ZV32MCUPLLView::ZoomReset()
{
    m_GraphicsView->zoomReset();
}

void ZV32MCUPLLView::FitToWindow()
{
    followMap(PinGraphicsView::MaximumScale);
}

void ZV32MCUPLLView::followMap(double largest)
{
    m_GraphicsView->follow([this] { return m_GraphicsScene->sceneRect(); }, largest);
}

void ZV32MCUPLLView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        TranslatorUI();
    QWidget::changeEvent(event);
}

bool ZV32MCUPLLView::eventFilter(QObject *watched, QEvent *event)
{
    // A click beside an open list closes it; the buttons and the lists themselves handle their own clicks.
    if (event->type() == QEvent::MouseButtonPress) {
        const QPoint position = static_cast<QMouseEvent *>(event)->pos();
        const auto *proxy = qgraphicsitem_cast<QGraphicsProxyWidget *>(m_GraphicsView->itemAt(position));
        const bool own = proxy && std::any_of(m_lists.begin(), m_lists.end(), [proxy](const PlacedList &list) {
                             return proxy->widget() == list.button || proxy->widget() == list.dialog;
                         });
        if (!own)
            hideLists();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace ChipLoom
