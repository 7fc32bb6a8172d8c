#pragma once

#include "ClockConfig/ZV32MCUPLL.h"

#include <QJsonObject>
#include <QTextStream>

namespace ChipLoom {

/// The row of a series by its name in upper or lower case, with or without the leading "ZV32"; null, if there is none
/// with a clock page.
const ClockSeries *clockSeriesByText(const QString &text);

/// The names of all series with a clock page, for a message.
QString clockSeriesNames();

/// Applies one setting such as "sclk" and "120". Returns what is wrong, or an empty text. Without a design nobody else
/// can say what the chip's surroundings use: with `alone`, a setting that needs HEXT or LEXT assigns its pins, and
/// "usb" takes "on" or "off".
QString applyClockSetting(ZV32MCUPLL &page, const QString &name, const QString &value, bool alone);

/// The whole tree: every setting with its choices, every frequency with its limits, what is wrong.
void writeClock(QTextStream &out, const ZV32MCUPLL &page);
QJsonObject clockJson(const ZV32MCUPLL &page);

} // namespace ChipLoom
