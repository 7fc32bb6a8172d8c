#include "Gui/ChipView/ChipScene.h"

#include "Design/PinAssignment.h"
#include "Gui/ChipView/PinColors.h"
#include "Gui/ChipView/PinQGraphicsRectItem.h"
#include "Gui/ChipView/PinQGraphicsTextItem.h"
#include "Gui/ChipView/QGraphicsRectItemEXT.h"

#include <QFocusEvent>
#include <QFontDatabase>
#include <QGraphicsPixmapItem>
#include <QKeyEvent>
#include <QPen>

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

constexpr QColor BodyText{236, 241, 245};
constexpr QColor FixedName{60, 76, 96};

constexpr qreal SwatchWidth = 120;
constexpr qreal SwatchHeight = 25;
constexpr qreal SwatchGap = 70;
constexpr qreal LegendDistance = 16;
constexpr qreal ContentMargin = 10;

/// Hover texts break behind this many letters.
constexpr int ToolTipWidth = 64;

QFont markFont(int points)
{
    static const QString family = [] {
        const int id = QFontDatabase::addApplicationFont(QStringLiteral(":/image/zv3_point Regular.ttf"));
        return QFontDatabase::applicationFontFamilies(id).value(0);
    }();
    QFont font = chipFont(points);
    if (!family.isEmpty())
        font.setFamilies({family});
    return font;
}

/// The joined names as a pin has room for them.
QString shortened(const QString &name)
{
    return name.size() > 5 ? name.left(4) + QLatin1Char('.') : name;
}

QString wrapped(const QStringList &words)
{
    QStringList lines;
    QString line;
    for (const QString &word : words) {
        if (!line.isEmpty() && line.size() + word.size() > ToolTipWidth) {
            lines.append(line);
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral("  ")) + word;
    }
    lines.append(line);
    return lines.join(QLatin1Char('\n'));
}

} // namespace

ChipScene::ChipScene(QObject *parent) : QGraphicsScene(parent)
{
    setBackgroundBrush(Qt::white);
}

void ChipScene::clearChip()
{
    m_pins = nullptr;
    m_layout = {};
    m_rectItem = nullptr;
    m_nameItem = nullptr;
    m_legend = nullptr;
    m_PinsRectItemList.clear();
    m_items.clear();
    m_marked.clear();
    m_RotatedValue = 0;
    clear();
    setSceneRect(QRectF());
}

void ChipScene::drawChip(const PinAssignment &pins)
{
    clearChip();
    const DevicePinInfo &info = pins.pinInfo();
    m_layout = layoutPackage(info.m_packageType, info.m_allPinNums, info.m_xPinNum, info.m_yPinNum, info.positions());
    if (!m_layout.row)
        return;
    m_pins = &pins;
    DrawMCURect();
    DrawMCUNameInMCURect();
    for (const PinPosition &position : m_layout.positions)
        NewPin(position);
    DrawChipPinConfigColor();
    refreshAllPins();
    // Room to drag the chip to every edge of the view.
    const QRectF content = contentRect();
    setSceneRect(content.adjusted(-content.width(), -content.height(), content.width(), content.height()));
}

void ChipScene::DrawMCURect()
{
    m_rectItem = new QGraphicsRectItemEXT(QRectF(QPointF(0, 0), m_layout.body));
    m_rectItem->setPinOneMark(m_layout.pinOneMark);
    addItem(m_rectItem);
}

void ChipScene::DrawMCUNameInMCURect()
{
    // Name and logo do not turn with the body: they take the square that is free of numbers however it stands.
    const QPointF center = m_rectItem->rect().center();
    const QString name = m_pins->pinInfo().m_MCUName;
    const QFont font = chipFont(m_layout.row->nameFont - 2);
    const qreal height = font.pixelSize() * 1.2;
    if (m_layout.row->family == PackageFamily::BGA) {
        const QRectF above(0, -height - LegendDistance, m_layout.body.width(), height);
        m_nameItem = new PinQGraphicsTextItem(above, false, nullptr);
        m_nameItem->setColor(Qt::black);
    } else {
        const qreal numbers = m_layout.positions.isEmpty() ? 0 : m_layout.positions.first().numberRect.width();
        const qreal side = std::min(m_layout.body.width(), m_layout.body.height()) - 2 * numbers - LegendDistance;
        m_nameItem = new PinQGraphicsTextItem(QRectF(center.x() - side / 2, center.y(), side, height), false, nullptr);
        m_nameItem->setColor(BodyText);
        DrawMCUATLogoInMCURect(QPointF(center.x(), center.y() - LegendDistance / 2), side);
    }
    m_nameItem->setFont(font);
    m_nameItem->setText(name);
    m_nameItem->setZValue(1);
    addItem(m_nameItem);
}

void ChipScene::DrawMCUATLogoInMCURect(const QPointF &bottomMiddle, qreal width)
{
    const QPixmap picture(QStringLiteral(":/image/zevtra.png"));
    if (picture.isNull())
        return;
    auto *logo = new QGraphicsPixmapItem(picture);
    const QRectF bounds = logo->boundingRect();
    const qreal scale = std::min<qreal>(1, width * 0.6 / bounds.width());
    logo->setTransformationMode(Qt::SmoothTransformation);
    logo->setScale(scale);
    logo->setPos(bottomMiddle.x() - bounds.width() * scale / 2, bottomMiddle.y() - bounds.height() * scale);
    logo->setZValue(1);
    logo->setAcceptedMouseButtons(Qt::NoButton);
    addItem(logo);
}

void ChipScene::NewPin(const PinPosition &position)
{
    const int points = m_layout.row->pinFont;
    PinItems pin;
    pin.position = position;
    pin.rect = new PinQGraphicsRectItem(position.number, m_rectItem);
    if (m_layout.row->family == PackageFamily::BGA)
        pin.rect->setEllipse(position.rect);
    else
        pin.rect->setRect(position.rect);

    const bool upward = position.runsUpward();
    const QList<MCUPinsBaseInfo> entries = m_pins->pinInfo().GetMCUPinBaseInfo(position.number);
    pin.name = new PinQGraphicsTextItem(position.nameRect, upward, m_rectItem);
    QStringList names;
    for (const MCUPinsBaseInfo &entry : entries)
        names.append(entry.pinName);
    const QString name = names.join(QStringLiteral("__"));
    const bool fixed = !entries.isEmpty() && entries.first().fixedFlag;
    pin.name->setFont(chipFont(fixed && name.size() > 4 ? points - 1 : points));
    pin.name->setColor(fixed ? FixedName : QColor(Qt::black));
    pin.name->setText(shortened(name));

    pin.number = new PinQGraphicsTextItem(position.numberRect, upward, m_rectItem);
    pin.number->setFont(chipFont(points + 1));
    const bool onBody = m_layout.row->family != PackageFamily::BGA;
    pin.number->setColor(onBody ? BodyText : FixedName);
    pin.number->setText(entries.isEmpty() ? QString::number(position.number) : entries.first().pinNumberStr);
    pin.number->setVisible(m_PinNumDisplay);

    pin.mark = new PinQGraphicsTextItem(position.markRect, upward, m_rectItem);
    pin.mark->setFont(markFont(points + 5));
    pin.mark->setColor(PinColors::SearchHit);
    pin.mark->setText(QString(QChar(0x25CF)));
    pin.mark->setVisible(false);

    pin.label = new PinQGraphicsTextItemConfigedInfo(position.number, position.labelRect, upward, m_rectItem);
    pin.label->setFont(chipFont(points));
    if (onBody) {
        const bool before = position.direction == DIRECTION_LEFT || position.direction == DIRECTION_DOWN;
        pin.label->setSmallestPixelSize(pin.label->shownFont().pixelSize() * 3 / 4);
        pin.label->setAlignment((before ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }

    connect(pin.rect, &PinQGraphicsRectItem::menuRequested, this, &ChipScene::menuRequested);
    connect(pin.rect, &PinQGraphicsRectItem::contextMenuRequested, this, &ChipScene::contextMenuRequested);
    connect(pin.label, &PinQGraphicsTextItemConfigedInfo::sendConfigedSignalInfo, this,
            &ChipScene::sendConfigedSignalInfo);
    connect(pin.label, &PinQGraphicsTextItemConfigedInfo::sendConfigedSignalInfoQueryImmediately, this,
            &ChipScene::sendConfigedSignalInfoQueryImmediately);
    m_PinsRectItemList.append(pin.rect);
    m_items.insert(position.number, pin);
}

void ChipScene::DrawChipPinConfigColor()
{
    struct Swatch
    {
        QColor color;
        QString text;
    };
    const std::array<Swatch, 3> swatches{{{PinColors::NotInUse, tr("Pin not in use")},
                                          {PinColors::InUse, tr("Pin in use")},
                                          {PinColors::NoMode, tr("Pin no mode")}}};
    const qreal textOffset = GlobalLanguage::g_CurrentLanguage == UI_CH ? 17 : 15;
    auto *legend = new QGraphicsRectItem;
    legend->setPen(Qt::NoPen);
    qreal x = 0;
    for (const Swatch &swatch : swatches) {
        auto *box = new QGraphicsRectItem(QRectF(x, 0, SwatchWidth, SwatchHeight), legend);
        box->setPen(QPen(PinColors::Edge, 1));
        box->setBrush(swatch.color);
        const QRectF inside(x + textOffset, 0, SwatchWidth - textOffset - 2, SwatchHeight);
        auto *text = new PinQGraphicsTextItem(inside, false, legend);
        text->setFont(chipFont(11));
        text->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        text->setText(swatch.text);
        x += SwatchWidth + SwatchGap;
    }
    legend->setRect(0, 0, x - SwatchGap, SwatchHeight);
    m_legend = legend;
    addItem(m_legend);
    placeLegend();
}

void ChipScene::placeLegend()
{
    const QPointF center = m_rectItem->rect().center();
    const QSizeF chip = turnedChipSize();
    m_legend->setPos(center.x() - m_legend->boundingRect().width() / 2,
                     center.y() + chip.height() / 2 + LegendDistance);
}

QSizeF ChipScene::turnedChipSize() const
{
    qreal beside = 0;
    if (m_layout.row->family != PackageFamily::BGA)
        beside = m_layout.row->PIN_BASEPIX_LENGTH2 + m_layout.labelLength;
    const bool twoSided = m_layout.row->family == PackageFamily::TSSOP;
    const QSizeF size = m_layout.body + QSizeF(2 * beside, twoSided ? 0 : 2 * beside);
    return m_RotatedValue % 180 == 0 ? size : size.transposed();
}

QRectF ChipScene::contentRect() const
{
    if (!m_rectItem)
        return {};
    const QSizeF chip = turnedChipSize();
    QRectF content(m_rectItem->rect().center() - QPointF(chip.width() / 2, chip.height() / 2), chip);
    content |= m_legend->mapRectToScene(m_legend->boundingRect());
    content |= m_nameItem->mapRectToScene(m_nameItem->boundingRect());
    return content.adjusted(-ContentMargin, -ContentMargin, ContentMargin, ContentMargin);
}

void ChipScene::refreshAllPins()
{
    for (PinItems &pin : m_items)
        refreshPin(pin);
}

void ChipScene::refreshPins(const QList<int> &pinNumbers)
{
    for (const int number : pinNumbers) {
        const auto pin = m_items.find(number);
        if (pin != m_items.end())
            refreshPin(*pin);
    }
}

void ChipScene::refreshPin(PinItems &pin)
{
    const int number = pin.position.number;
    const QList<MCUPinsBaseInfo> entries = m_pins->pinInfo().GetMCUPinBaseInfo(number);
    const bool alwaysFixed = entries.size() == 1 && entries.first().fixedFlag;
    pin.rect->SetBackgroundColor(m_pins->positionStatus(number), alwaysFixed);
    pin.rect->setToolTip(toolTipOf(number));

    QStringList configured;
    for (const MCUPinsBaseInfo &entry : entries) {
        for (const PinSignalStruct &signal : entry.pinSignalsList) {
            if (signal.configStatus != Not_Config)
                configured.append(signal.signalName);
        }
    }
    const QString label = m_pins->GetPinConfigedDisplayText(number);
    pin.label->SetConfigedSignals(configured.join(QLatin1Char(';')), label);
    const bool marked = m_marked.contains(number);
    pin.mark->setVisible(marked);
    pin.label->setBox(marked ? pin.position.labelRectBesideMark : pin.position.labelRect);
    pin.name->setBox(label.isEmpty() ? pin.position.nameRect : pin.position.nameRectBesideLabel);
    turnUpright(pin);
}

QString ChipScene::toolTipOf(int pinNumber) const
{
    const QList<MCUPinsBaseInfo> entries = m_pins->pinInfo().GetMCUPinBaseInfo(pinNumber);
    QStringList lines;
    const QString number = entries.isEmpty() ? QString::number(pinNumber) : entries.first().pinNumberStr;
    lines.append(tr("Pin ") + number + QStringLiteral("-----") + m_pins->GetRectDisplayPinName(pinNumber));
    const QString remarks = m_pins->GetRectDisplayPinRemarks(pinNumber);
    if (!remarks.isEmpty())
        lines.append(remarks);
    const QString label = m_pins->GetPinConfigedDisplayText(pinNumber);
    if (!label.isEmpty())
        lines.append(tr("Used as: %1").arg(label));
    for (const MCUPinsBaseInfo &entry : entries) {
        QStringList functions;
        for (const PinSignalStruct &signal : entry.pinSignalsList)
            functions.append(signal.signalName);
        if (functions.isEmpty())
            continue;
        const QString heading = entries.size() > 1 ? tr("Functions of %1:").arg(entry.pinName) : tr("Functions:");
        lines.append(heading + QLatin1Char('\n') + wrapped(functions));
    }
    return lines.join(QLatin1Char('\n'));
}

void ChipScene::showHits(const QSet<int> &pinNumbers, bool lit)
{
    for (PinItems &pin : m_items)
        pin.rect->showHit(lit && pinNumbers.contains(pin.position.number));
}

void ChipScene::markPins(const QSet<int> &pinNumbers)
{
    const QSet<int> changed = (m_marked - pinNumbers) + (pinNumbers - m_marked);
    m_marked = pinNumbers;
    refreshPins(changed.values());
}

void ChipScene::turnTextsUpright(int degrees)
{
    m_RotatedValue = degrees;
    if (!m_rectItem)
        return;
    for (const PinItems &pin : m_items)
        turnUpright(pin);
    placeLegend();
}

void ChipScene::turnUpright(const PinItems &pin)
{
    for (PinQGraphicsTextItem *text :
         std::initializer_list<PinQGraphicsTextItem *>{pin.name, pin.number, pin.mark, pin.label}) {
        if (m_layout.row->family == PackageFamily::BGA) {
            // The texts of a ball keep their order from top to bottom: they turn back together, about its centre.
            text->setTransformOriginPoint(pin.position.rect.center() - text->pos());
            text->setRotation(-m_RotatedValue);
        } else {
            const int angle = (m_RotatedValue + (text->runsUpward() ? 270 : 0)) % 360;
            text->SetMirrorFlag(angle == 90 || angle == 180);
        }
    }
}

void ChipScene::setPinNumDisplay(bool shown)
{
    m_PinNumDisplay = shown;
    for (const PinItems &pin : m_items)
        pin.number->setVisible(shown);
}

void ChipScene::TranslatorUI()
{
    if (!m_rectItem)
        return;
    delete m_legend;
    DrawChipPinConfigColor();
    refreshAllPins();
}

void ChipScene::focusInEvent(QFocusEvent *event)
{
    QGraphicsScene::focusInEvent(event);
    const bool byKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKey && !focusItem() && !m_PinsRectItemList.isEmpty())
        m_PinsRectItemList.first()->setFocus(event->reason());
}

void ChipScene::keyPressEvent(QKeyEvent *event)
{
    static const QHash<int, QPointF> directions{
        {Qt::Key_Left, {-1, 0}}, {Qt::Key_Right, {1, 0}}, {Qt::Key_Up, {0, -1}}, {Qt::Key_Down, {0, 1}}};
    auto *pin = dynamic_cast<PinQGraphicsRectItem *>(focusItem());
    if (pin && directions.contains(event->key())) {
        if (PinQGraphicsRectItem *next = neighbour(*pin, directions.value(event->key()))) {
            next->setFocus(Qt::OtherFocusReason);
            next->ensureVisible();
        }
        event->accept();
        return;
    }
    if (pin && event->key() == Qt::Key_Escape) {
        pin->clearFocus();
        event->accept();
        return;
    }
    QGraphicsScene::keyPressEvent(event);
}

PinQGraphicsRectItem *ChipScene::neighbour(const PinQGraphicsRectItem &pin, const QPointF &direction) const
{
    // Straight ahead counts once, aside twice: so the way leads along a side and round its corner.
    const QPointF from = pin.sceneBoundingRect().center();
    PinQGraphicsRectItem *nearest = nullptr;
    qreal least = 0;
    for (PinQGraphicsRectItem *other : m_PinsRectItemList) {
        const QPointF way = other->sceneBoundingRect().center() - from;
        const qreal ahead = QPointF::dotProduct(way, direction);
        if (ahead < 1)
            continue;
        const qreal cost = ahead + 2 * (way - ahead * direction).manhattanLength();
        if (!nearest || cost < least) {
            nearest = other;
            least = cost;
        }
    }
    return nearest;
}

PinQGraphicsRectItem *ChipScene::pinItem(int pinNumber) const
{
    return m_items.value(pinNumber).rect;
}

} // namespace ChipLoom
