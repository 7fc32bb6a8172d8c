#include "Gui/ChipView/PackageGeometry.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

constexpr auto LQFP = PackageFamily::LQFP;
constexpr auto QFN = PackageFamily::QFN;
constexpr auto TSSOP = PackageFamily::TSSOP;
constexpr auto BGA = PackageFamily::BGA;

constexpr std::array<PackageRow, 13> Rows{{
    {"DrawChipLQFP_144", LQFP, 144, 28, 9, 25, 15, 32},
    {"DrawChipLQFP_100", LQFP, 100, 40, 10, 25, 18, 36},
    {"DrawChipLQFP_64", LQFP, 64, 30, 12, 22, 22, 42},
    {"DrawChipLQFP_48", LQFP, 48, 23, 12, 22, 25, 45},
    {"DrawChipLQFP_32", LQFP, 32, 23, 15, 36, 36, 52},
    {"DrawChipQFN_60", QFN, 60, 23, 12, 42, 28, 42},
    {"DrawChipQFN_48", QFN, 48, 23, 12, 45, 25, 45},
    {"DrawChipQFN_36", QFN, 36, 23, 15, 52, 36, 52},
    {"DrawChipQFN_32", QFN, 32, 23, 15, 52, 36, 52},
    {"DrawChipQFN_28", QFN, 28, 23, 15, 56, 40, 56},
    {"DrawChipQFN_20", QFN, 20, 23, 15, 56, 40, 56},
    {"DrawChipTSSOP_20", TSSOP, 20, 23, 16, 10, 40, 56},
    {"DrawChipBGA_100", BGA, 100, 40, 11, 20, 45, 45},
}};

struct FamilyRow
{
    const char *name;
    PackageFamily family;
    int fallbackPins;
};

constexpr std::array<FamilyRow, 4> Families{
    {{"LQFP", LQFP, 64}, {"QFN", QFN, 48}, {"TSSOP", TSSOP, 20}, {"BGA", BGA, 100}}};

constexpr int MaxPinsOnSide = 256;
constexpr int BallGap = 5;
/// The body of a two-sided package: as wide as seven pins are high, so that the device name fits between the numbers.
constexpr int TssopWidthInPitches = 7;
constexpr qreal TextMargin = 1;
constexpr qreal NumberMargin = 2; // between a number and the edge of the body
constexpr qreal LabelGap = 5;
constexpr qreal LargestMark = 22;
/// Room for a label, in heights of the pin font: eighteen capitals beside a mark, drawn a little smaller.
constexpr qreal LabelInFontHeights = 10;

/// A box of a pin that stands out of the body: it begins `from` away from the edge and is `length` long.
QRectF outward(const PinPosition &pin, qreal from, qreal length)
{
    const QRectF &r = pin.rect;
    switch (pin.direction) {
    case DIRECTION_LEFT:
        return {r.right() - from - length, r.top(), length, r.height()};
    case DIRECTION_RIGHT:
        return {r.left() + from, r.top(), length, r.height()};
    case DIRECTION_DOWN:
        return {r.left(), r.top() + from, r.width(), length};
    case DIRECTION_UP:
        return {r.left(), r.bottom() - from - length, r.width(), length};
    }
    return r;
}

/// A pin beside the body: the number inside, the name on the pin, mark and label outside.
void appendSidePin(PackageLayout &layout, int number, PINDIRECTION direction, const QRectF &rect, qreal numberLength)
{
    const qreal length = layout.row->PIN_BASEPIX_LENGTH2;
    const qreal mark = std::min<qreal>(layout.row->PIN_BASEPIX_LENGTH1, LargestMark);
    PinPosition pin;
    pin.number = number;
    pin.direction = direction;
    pin.rect = rect;
    pin.nameRect = outward(pin, TextMargin, length - 2 * TextMargin);
    pin.nameRectBesideLabel = pin.nameRect;
    pin.numberRect = outward(pin, -numberLength, numberLength - NumberMargin);
    pin.markRect = outward(pin, length + LabelGap, mark);
    pin.labelRect = outward(pin, length + LabelGap, layout.labelLength);
    pin.labelRectBesideMark = outward(pin, length + 2 * LabelGap + mark, layout.labelLength - LabelGap - mark);
    layout.positions.append(pin);
}

void layoutQuad(PackageLayout &layout, int xPins, int yPins)
{
    const qreal blank = layout.row->PIN_LEFTRIGHTPIX_BLANK;
    const qreal pitch = layout.row->PIN_BASEPIX_LENGTH1;
    const qreal length = layout.row->PIN_BASEPIX_LENGTH2;
    const qreal width = xPins * pitch + 2 * blank;
    const qreal height = yPins * pitch + 2 * blank;
    layout.body = QSizeF(width, height);
    layout.pinOneMark = QRectF(30, 30, 15, 15);

    int number = 1;
    for (int i = 0; i < yPins; ++i)
        appendSidePin(layout, number++, DIRECTION_LEFT, {-length, blank + pitch * i, length, pitch}, blank);
    for (int i = 0; i < xPins; ++i)
        appendSidePin(layout, number++, DIRECTION_DOWN, {blank + pitch * i, height, pitch, length}, blank);
    for (int i = 0; i < yPins; ++i)
        appendSidePin(layout, number++, DIRECTION_RIGHT, {width, height - blank - pitch * (i + 1), length, pitch},
                      blank);
    for (int i = 0; i < xPins; ++i)
        appendSidePin(layout, number++, DIRECTION_UP, {width - blank - pitch * (i + 1), -length, pitch, length}, blank);
}

void layoutTwoSided(PackageLayout &layout, int allPins)
{
    const qreal blank = layout.row->PIN_LEFTRIGHTPIX_BLANK;
    const qreal pitch = layout.row->PIN_BASEPIX_LENGTH1;
    const qreal length = layout.row->PIN_BASEPIX_LENGTH2;
    const int left = (allPins + 1) / 2;
    const qreal width = TssopWidthInPitches * pitch;
    const qreal height = left * pitch + 2 * blank;
    layout.body = QSizeF(width, height);
    layout.pinOneMark = QRectF(pitch + 10, 20, 15, 15);

    for (int i = 0; i < left; ++i)
        appendSidePin(layout, i + 1, DIRECTION_LEFT, {-length, blank + pitch * i, length, pitch}, pitch);
    for (int i = 0; i < allPins - left; ++i)
        appendSidePin(layout, left + i + 1, DIRECTION_RIGHT, {width, height - blank - pitch * (i + 1), length, pitch},
                      pitch);
}

/// A ball holds all its texts: the number above, the name in the middle; a label takes the middle and moves the name
/// below.
void appendBall(PackageLayout &layout, int number, const QRectF &ball)
{
    const auto band = [&](qreal top, qreal height, qreal width) {
        return QRectF(ball.center().x() - width / 2, ball.top() + top, width, height);
    };
    PinPosition pin;
    pin.number = number;
    pin.rect = ball;
    pin.numberRect = band(5, 8, 26);
    pin.nameRect = band(17, 15, ball.width() - 4);
    pin.nameRectBesideLabel = band(30, 9, 28);
    pin.labelRect = band(15, 14, ball.width() - 2);
    pin.labelRectBesideMark = pin.labelRect;
    pin.markRect = QRectF(ball.right() - 12, ball.top() - BallGap / 2.0, 14, 14);
    layout.positions.append(pin);
}

void layoutBalls(PackageLayout &layout, int columns, QVector<int> numbers)
{
    const qreal blank = layout.row->PIN_LEFTRIGHTPIX_BLANK;
    const qreal diameter = layout.row->PIN_BASEPIX_LENGTH1;
    const qreal step = diameter + BallGap;
    columns = std::max(columns, 1);
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());

    int rows = 1;
    for (const int number : numbers) {
        const int row = (number - 1) / columns;
        if (number < 1 || row >= MaxPinsOnSide)
            continue;
        rows = std::max(rows, row + 1);
        const int column = (number - 1) % columns;
        appendBall(layout, number, {blank + step * column, blank + step * row, diameter, diameter});
    }
    layout.body = QSizeF(2 * blank + step * columns - BallGap, 2 * blank + step * rows - BallGap);
    layout.pinOneMark = QRectF(5, 5, 10, 10);
}

} // namespace

const PackageRow *packageRow(const QString &packageType, int allPinNums)
{
    const auto family = std::find_if(Families.begin(), Families.end(),
                                     [&](const FamilyRow &row) { return packageType == QLatin1String(row.name); });
    if (family == Families.end())
        return nullptr;
    const auto rowFor = [&](int pins) {
        return std::find_if(Rows.begin(), Rows.end(),
                            [&](const PackageRow &row) { return row.family == family->family && row.pins == pins; });
    };
    const auto exact = rowFor(allPinNums);
    return exact != Rows.end() ? &*exact : &*rowFor(family->fallbackPins);
}

PackageLayout layoutPackage(const QString &packageType, int allPinNums, int xPinNum, int yPinNum,
                            const QVector<int> &numbers)
{
    PackageLayout layout;
    layout.row = packageRow(packageType, allPinNums);
    if (!layout.row)
        return layout;
    const int xPins = std::clamp(xPinNum, 0, MaxPinsOnSide);
    const int yPins = std::clamp(yPinNum, 0, MaxPinsOnSide);
    layout.labelLength = layout.row->pinFont * LabelInFontHeights * 96 / 72;
    switch (layout.row->family) {
    case PackageFamily::LQFP:
    case PackageFamily::QFN:
        layoutQuad(layout, xPins, yPins);
        break;
    case PackageFamily::TSSOP:
        layoutTwoSided(layout, std::clamp(allPinNums, 0, MaxPinsOnSide));
        break;
    case PackageFamily::BGA:
        layoutBalls(layout, yPins, numbers);
        break;
    }
    return layout;
}

} // namespace ChipLoom
