#pragma once

#include "Gui/Diagrams/DiagramDescription.h"

namespace ChipLoom {

/// The course of a watchdog's counter from one reload to the reset. Where there is a window, a refresh before it resets
/// too.
namespace WatchdogMap {

inline constexpr QSizeF Size{400, 222};

// Places of the values.
inline constexpr QRectF CounterValue{0, 30, 84, 16};
inline constexpr QRectF WindowValue{0, 84, 84, 16};
inline constexpr QRectF ResetValue{0, 124, 84, 16};
inline constexpr QRectF RefreshNotAllowed{116, 174, 114, 16};
inline constexpr QRectF RefreshWindow{232, 174, 114, 16};
inline constexpr QRectF Timeout{116, 204, 230, 16};

/// The counter between its marks.
DiagramDescription counter();
/// A reload is taken at any time.
DiagramDescription withoutWindow();
DiagramDescription withWindow();
/// The last counter value before the reset stands beside the plot.
DiagramDescription lastValue();

} // namespace WatchdogMap

} // namespace ChipLoom
