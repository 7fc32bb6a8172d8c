// What stands on the canvas of a clock page: the map with its wires, the controls and the lists of instances.

#include "ClockConfig/ClockReadings.h"
#include "Gui/App/Style.h"
#include "Gui/Clock/ArrowLineItem.h"
#include "Gui/Clock/ClockControls.h"
#include "Gui/Clock/TriangleItem.h"
#include "Gui/Clock/ZV32MCUPLLView.h"
#include "Gui/Widgets/EntryField.h"

#include <QAction>
#include <QDialog>
#include <QGraphicsProxyWidget>
#include <QGraphicsSimpleTextItem>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace ChipLoom {

namespace {

const QColor RestingWire(150, 150, 150);
const QColor RunningWire = Style::Accent.darker(140);

enum Layer { BoxLayer, WireLayer, RunningWireLayer, ShapeLayer, TextLayer, ControlLayer, PopupLayer };

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

} // namespace

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
    auto *edit = new EntryField(text);
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

} // namespace ChipLoom
