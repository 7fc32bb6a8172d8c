#pragma once

#include "ClockConfig/ZV32MCUPLL.h"

namespace ChipLoom {

// Clock values in words, as the command line takes and prints them.

/// The row of a series by its name in upper or lower case, with or without the leading "ZV32"; null, if there is none
/// with a clock page.
const ClockSeries *clockSeriesByText(const QString &text);

/// The names of all series with a clock page, for a message.
QString clockSeriesNames();

/// What a field can be now: "HEXT, HICK" or "4 to 25".
QString clockChoicesText(const ZV32MCUPLL &page, ClockField field);

/// Applies one setting such as "sclk" and "120". Returns what is wrong, in the user's language, or an empty text.
/// Without a design nobody else can say what the chip's surroundings use: with `alone`, a setting that needs HEXT or
/// LEXT assigns its pins, "usb" takes "on" or "off", and the pin of a clock output can be chosen.
QString applyClockSetting(ZV32MCUPLL &page, const QString &name, const QString &value, bool alone);

} // namespace ChipLoom
