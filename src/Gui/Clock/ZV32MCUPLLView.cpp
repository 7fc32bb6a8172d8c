#include "Gui/Clock/ZV32MCUPLLView.h"

#include "ClockConfig/ClockReadings.h"
#include "Gui/App/Style.h"
#include "Gui/ChipView/PinGraphicsView.h"
#include "Gui/Clock/ArrowLineItem.h"
#include "Gui/Clock/ClockControls.h"
#include "Gui/Clock/ClockMaps.h"
#include "Gui/Clock/ClockSolutionsDialog.h"
#include "Gui/Clock/TriangleItem.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QGraphicsProxyWidget>
#include <QGraphicsSimpleTextItem>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRegularExpressionValidator>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QVBoxLayout>

namespace ChipLoom {

namespace {

const QColor RestingWire(150, 150, 150);
const QColor RunningWire = Style::Accent.darker(140);
const QColor GoodText(0, 100, 0);
const QColor OutOfRangeText(Qt::red);
const QColor AcceptedGround(208, 240, 208);
const QColor PendingGround(255, 255, 208);

enum Layer { BoxLayer, WireLayer, RunningWireLayer, ShapeLayer, TextLayer, ControlLayer, PopupLayer };

QString shown(const QString &key)
{
    return QCoreApplication::translate("Clock", key.toUtf8().constData());
}

QFont canvasFont(int pixels, bool bold = false)
{
    QFont font = Style::font(9, bold);
    font.setPixelSize(pixels);
    return font;
}

QPen wirePen(bool running)
{
    return QPen(running ? RunningWire : RestingWire, running ? 2 : 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
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

/// What may be typed.
QString pattern(ClockField field)
{
    switch (field) {
    case ClockField::PllNs:
        return QStringLiteral("[*]?[0-9]+$");
    case ClockField::PllMs:
        return QStringLiteral("[\\/]?[0-9]+$");
    default:
        return QStringLiteral("[0-9\\.]+$");
    }
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
      m_GraphicsView(new PinGraphicsView(this)), m_GraphicsScene(new QGraphicsScene(this)),
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

void ZV32MCUPLLView::drawMap()
{
    QPen framePen(Qt::black, 2);
    framePen.setCosmetic(true);
    m_GraphicsScene->addRect(pixmapItemRect, framePen)->setZValue(BoxLayer);

    for (const ClockMapBlock &block : m_map.blocks) {
        QGraphicsRectItem *box = m_GraphicsScene->addRect(
            block.rect, QPen(Style::Muted, 1), block.text.isEmpty() ? QColor(248, 250, 251) : QColor(Qt::white));
        box->setZValue(block.text.isEmpty() ? BoxLayer : ShapeLayer);
        if (block.text.isEmpty())
            continue;
        QGraphicsSimpleTextItem *text = m_GraphicsScene->addSimpleText(block.text, canvasFont(12));
        text->setPos(block.rect.center() - text->boundingRect().center());
        text->setZValue(TextLayer);
    }
    for (const ClockMapWire &wire : m_map.wires)
        m_wires.push_back({wire.paths, wire.form, DrawAnglePathItem(wire.points, wire.arrow)});
    for (const ClockMapPoint &point : m_map.points)
        m_wires.push_back({point.paths, ClockFormOnly::Both, {DrawBlackPoint(point.at.x(), point.at.y())}});
    for (const ClockMapMux &mux : m_map.muxes)
        DrawPolygonItem(mux.at.x(), mux.at.y(), mux.height);
    for (const ClockMapBuffer &buffer : m_map.buffers) {
        const QPointF tip = buffer.tip;
        auto *triangle = new TriangleItem(tip.x() - 16, tip.y() - 9, tip.x() - 16, tip.y() + 9, tip.x(), tip.y());
        triangle->setZValue(ShapeLayer);
        m_GraphicsScene->addItem(triangle);
        m_wires.push_back({buffer.paths, ClockFormOnly::Both, {triangle}});
    }
    for (const ClockMapText &text : m_map.texts) {
        using Kind = ClockMapText::Kind;
        const bool minor = text.kind == Kind::Caption || text.kind == Kind::Hint;
        QGraphicsSimpleTextItem *item =
            m_GraphicsScene->addSimpleText({}, canvasFont(minor ? 11 : 12, text.kind == Kind::Title));
        item->setBrush(minor ? Style::Muted : QColor(Qt::black));
        item->setZValue(TextLayer);
        m_texts.push_back({&text, item});
    }
}

QGraphicsItem *ZV32MCUPLLView::DrawPolygonItem(qreal x, qreal y, qreal height)
{
    constexpr qreal width = 26;
    const qreal slope = std::min<qreal>(20, height / 2 - 8) / 2;
    QGraphicsItem *item = m_GraphicsScene->addPolygon(
        {{{x, y}, {x + width, y + slope}, {x + width, y + height - slope}, {x, y + height}}}, QPen(Style::Muted, 1),
        QColor(226, 238, 241));
    item->setZValue(ShapeLayer);
    return item;
}

QGraphicsItem *ZV32MCUPLLView::DrawBlackPoint(qreal x, qreal y)
{
    constexpr qreal radius = 3;
    QGraphicsItem *item = m_GraphicsScene->addEllipse(x - radius, y - radius, 2 * radius, 2 * radius, Qt::NoPen);
    item->setZValue(ShapeLayer);
    return item;
}

QVector<QGraphicsItem *> ZV32MCUPLLView::DrawAnglePathItem(const QVector<QPointF> &points, bool arrow)
{
    QVector<QGraphicsItem *> items;
    const int straight = arrow ? points.size() - 1 : points.size();
    if (straight > 1) {
        QPainterPath path(points.first());
        for (int n = 1; n < straight; ++n)
            path.lineTo(points[n]);
        items.append(m_GraphicsScene->addPath(path));
    }
    if (arrow) {
        auto *line = new ArrowLineItem({points[points.size() - 2], points.last()});
        m_GraphicsScene->addItem(line);
        items.append(line);
    }
    return items;
}

void ZV32MCUPLLView::newControls()
{
    for (const ClockMapPlace &place : m_map.places)
        newControl(place);
    for (const ClockMapList &list : m_map.lists)
        newList(list);
}

void ZV32MCUPLLView::newControl(const ClockMapPlace &place)
{
    using Kind = ClockMapPlace::Kind;
    const QRectF &rect = place.rect;
    const int width = int(rect.width());
    const ClockField field =
        std::holds_alternative<ClockField>(place.subject) ? std::get<ClockField>(place.subject) : ClockField{};
    QWidget *widget = nullptr;
    switch (place.kind) {
    case Kind::Radio: {
        QRadioButton *radio = NewRadioButtonInScenePos(rect.x(), rect.y());
        const int option = place.option;
        connect(radio, &QRadioButton::clicked, this, [this, field, option] { m_model.choose(field, option); });
        connect(static_cast<CanvasRadioButton *>(radio), &CanvasRadioButton::stepped, this,
                [this, field, option](int direction) { step(field, option, direction); });
        widget = radio;
        break;
    }
    case Kind::Combo: {
        CustomComboBox1 *box = NewComboBoxInScenePos(rect.x(), rect.y(), width, 12);
        connect(box, QOverload<int>::of(&QComboBox::activated), this,
                [this, field](int option) { m_model.choose(field, option); });
        widget = box;
        break;
    }
    case Kind::Edit: {
        QLineEdit *edit = NewCustomLineEditInScenePos({}, rect.x(), rect.y(), width);
        edit->setValidator(new QRegularExpressionValidator(QRegularExpression(pattern(field)), edit));
        connect(edit, &QLineEdit::textEdited, this, [this, field](const QString &text) { m_model.type(field, text); });
        connect(edit, &QLineEdit::returnPressed, this, [this, field, edit] { m_model.enter(field, edit->text()); });
        widget = edit;
        break;
    }
    case Kind::Value:
        widget = New_toperipheralControl({}, rect.x(), rect.y(), width);
        break;
    case Kind::Label:
        widget = NewQLabelInScenePos({}, rect.x(), rect.y(), width, int(rect.height()));
        break;
    case Kind::Info:
        widget = New_InfoQuestionQAction(rect.x(), rect.y());
        break;
    case Kind::Button: {
        CanvasButton *button = New_toperipheralListButton(rect.x(), rect.y(), width);
        connect(button, &QPushButton::clicked, this, &ZV32MCUPLLView::openSolutions);
        widget = button;
        break;
    }
    }
    widget->setAccessibleName(accessibleName(place));
    QGraphicsProxyWidget *proxy = widget->graphicsProxyWidget();
    proxy->setZValue(ControlLayer);
    m_controls.push_back({place, widget, proxy, {}});
}

QString ZV32MCUPLLView::accessibleName(const ClockMapPlace &place) const
{
    if (const auto *branch = std::get_if<ClockBranch>(&place.subject))
        return QLatin1String(clockBranchName(*branch));
    const auto *field = std::get_if<ClockField>(&place.subject);
    if (!field)
        return {};
    const QString name = clockFieldName(m_series, *field);
    if (place.kind != ClockMapPlace::Kind::Radio)
        return name;
    return name + QLatin1Char(' ') +
           clockOptions(ZV32ConfigCLK(m_series.code), *field)[std::size_t(place.option)].text();
}

QRadioButton *ZV32MCUPLLView::NewRadioButtonInScenePos(qreal x, qreal y)
{
    auto *radio = new CanvasRadioButton;
    radio->setAutoExclusive(false);
    radio->setFixedSize(16, 16);
    radio->setAttribute(Qt::WA_TranslucentBackground);
    m_GraphicsScene->addWidget(radio)->setPos(x, y);
    return radio;
}

CustomComboBox1 *ZV32MCUPLLView::NewComboBoxInScenePos(qreal x, qreal y, int width, int fontSize)
{
    auto *box = new CustomComboBox1;
    box->setFont(canvasFont(fontSize));
    box->setFixedSize(width, 22);
    m_GraphicsScene->addWidget(box)->setPos(x, y);
    return box;
}

QLineEdit *ZV32MCUPLLView::NewCustomLineEditInScenePos(const QString &text, qreal x, qreal y, int width)
{
    auto *edit = new QLineEdit(text);
    edit->setFont(canvasFont(12));
    edit->setFixedSize(width, 22);
    edit->setAlignment(Qt::AlignCenter);
    m_GraphicsScene->addWidget(edit)->setPos(x, y);
    return edit;
}

QLabel *ZV32MCUPLLView::NewQLabelInScenePos(const QString &text, qreal x, qreal y, int width, int height)
{
    auto *label = new QLabel(text);
    label->setFont(canvasFont(11));
    label->setFixedSize(width, height);
    label->setAttribute(Qt::WA_TranslucentBackground);
    m_GraphicsScene->addWidget(label)->setPos(x, y);
    return label;
}

QLineEdit *ZV32MCUPLLView::New_toperipheralControl(const QString &text, qreal x, qreal y, int width)
{
    QLineEdit *edit = NewCustomLineEditInScenePos(text, x, y, width);
    edit->setReadOnly(true);
    edit->setFocusPolicy(Qt::ClickFocus);
    return edit;
}

CanvasButton *ZV32MCUPLLView::New_toperipheralListButton(qreal x, qreal y, int width)
{
    auto *button = new CanvasButton;
    button->setFont(canvasFont(11));
    button->setFixedSize(width, 22);
    button->setAttribute(Qt::WA_TranslucentBackground);
    QGraphicsProxyWidget *proxy = m_GraphicsScene->addWidget(button);
    proxy->setPos(x, y);
    proxy->setZValue(ControlLayer);
    return button;
}

QDialog *ZV32MCUPLLView::New_toperipheralListGroup(const QStringList &names, qreal x, qreal y, int width, int height)
{
    constexpr int columns = 3;
    auto *dialog = new QDialog(nullptr, Qt::FramelessWindowHint);
    auto *panel = new QFrame;
    Style::setRole(panel, Style::Role::Panel);
    auto *outer = new QVBoxLayout(dialog);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(panel);
    auto *grid = new QGridLayout(panel);
    for (int n = 0; n < names.size(); ++n) {
        auto *label = new QLabel(names[n]);
        label->setFont(canvasFont(12));
        grid->addWidget(label, n / columns, n % columns);
    }
    dialog->setMinimumSize(width, height);
    dialog->hide();
    QGraphicsProxyWidget *proxy = m_GraphicsScene->addWidget(dialog);
    proxy->setZValue(PopupLayer);
    proxy->setPos(x, y);
    return dialog;
}

QLineEdit *ZV32MCUPLLView::New_InfoQuestionQAction(qreal x, qreal y)
{
    auto *edit = new InfoQuestion;
    edit->setFont(canvasFont(11, true));
    edit->setAttribute(Qt::WA_TranslucentBackground);
    m_GraphicsScene->addWidget(edit)->setPos(x, y);
    return edit;
}

void ZV32MCUPLLView::newList(const ClockMapList &list)
{
    CanvasButton *button = New_toperipheralListButton(list.rect.x(), list.rect.y(), int(list.rect.width()));
    const int rows = (list.instances.size() + 2) / 3;
    const int width = 210;
    const int height = 20 + 22 * rows;
    const qreal y = std::min(list.rect.bottom() + 2, pixmapItemRect.height() - height - 4);
    QDialog *dialog = New_toperipheralListGroup(list.instances, list.rect.right() - width, y, width, height);
    connect(button, &QPushButton::clicked, this, [this, dialog] {
        hideLists(dialog);
        dialog->setVisible(!dialog->isVisible());
    });
    m_lists.push_back({&list, button, dialog});
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
        if (auto *edit = static_cast<QLineEdit *>(widget); edit->text() != face.text)
            edit->setText(face.text);
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

void ZV32MCUPLLView::showWires()
{
    const ClockPaths running = m_model.runningPaths();
    const ClockFormOnly form = m_model.pllForm();
    if (running == m_shownPaths && form == m_shownForm)
        return;
    m_shownPaths = running;
    m_shownForm = form;
    for (const PlacedWire &wire : m_wires) {
        const bool runs = running & wire.paths;
        for (QGraphicsItem *item : wire.items) {
            item->setVisible(wire.form == ClockFormOnly::Both || wire.form == form);
            if (auto *arrow = qgraphicsitem_cast<ArrowLineItem *>(item))
                arrow->setItemPen(wirePen(runs));
            else if (auto *path = qgraphicsitem_cast<QGraphicsPathItem *>(item))
                path->setPen(wirePen(runs));
            else if (auto *triangle = qgraphicsitem_cast<TriangleItem *>(item))
                triangle->setItemPen(wirePen(runs));
            else if (auto *point = qgraphicsitem_cast<QGraphicsEllipseItem *>(item)) {
                point->setBrush(runs ? RunningWire : RestingWire);
                continue;
            }
            if (item->type() != TriangleItem::Type)
                item->setZValue(runs ? RunningWireLayer : WireLayer);
        }
    }
    for (const PlacedText &text : m_texts)
        text.item->setVisible(text.text->form == ClockFormOnly::Both || text.text->form == form);
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
