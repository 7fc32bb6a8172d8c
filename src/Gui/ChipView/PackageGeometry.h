#pragma once

#include "Model/Enumerations.h"

#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QVector>

namespace ChipLoom {

enum class PackageFamily { LQFP, QFN, TSSOP, BGA };

/// How one package is drawn. Lengths are scene units (pixels at zoom 1), fonts are points at 96 dots per inch.
struct PackageRow
{
    const char *routine; ///< name of the drawing: "DrawChipLQFP_64"
    PackageFamily family;
    int pins; ///< the count of pins for which the row is made
    int nameFont;
    int pinFont;
    int PIN_LEFTRIGHTPIX_BLANK;
    int PIN_BASEPIX_LENGTH1; ///< pitch of the pins, or diameter of a ball
    int PIN_BASEPIX_LENGTH2; ///< how far a pin stands out
};

/// The row for a package: exact by count, else the family's fallback. Null for a family that is not drawn.
const PackageRow *packageRow(const QString &packageType, int allPinNums);

/// One position of the package, in coordinates of the body. Texts of pins on the lower and upper side run upward.
struct PinPosition
{
    int number = 0;
    PINDIRECTION direction = DIRECTION_LEFT;
    QRectF rect;                ///< the pin itself
    QRectF nameRect;            ///< its name
    QRectF nameRectBesideLabel; ///< its name while the pin has a label
    QRectF numberRect;
    QRectF labelRect;           ///< what the pin is used for
    QRectF labelRectBesideMark; ///< the same while the pin is marked
    QRectF markRect;            ///< the mark of a peripheral's pins

    bool runsUpward() const { return direction == DIRECTION_DOWN || direction == DIRECTION_UP; }
};

/// The geometry of one package; the body's top left corner is the origin. No row: nothing to draw.
struct PackageLayout
{
    const PackageRow *row = nullptr;
    QSizeF body;
    QRectF pinOneMark;
    qreal labelLength = 0; ///< room outside the pins
    QVector<PinPosition> positions;
};

/// `xPinNum` and `yPinNum` are the pins on a horizontal and on a vertical side; a ball grid has `yPinNum` columns and
/// only the balls in `numbers`. Counts outside 0..256 are taken as the nearest of these.
PackageLayout layoutPackage(const QString &packageType, int allPinNums, int xPinNum, int yPinNum,
                            const QVector<int> &numbers);

} // namespace ChipLoom
