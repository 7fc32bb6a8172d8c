#pragma once

#include "ClockConfig/ClockSeries.h"
#include "Gui/Clock/ClockMapDescription.h"

#include <span>

namespace ChipLoom {

/// A result box of a bus, with the name beside it.
struct ClockBusRow
{
    const char *label; ///< English text, context "Clock"
    ClockBranch branch;
};

/// A run of instances such as "TMR2" to "TMR7"; `first` 0 is a kind without a number.
struct ClockListRun
{
    const char *kind;
    int first;
    int last;
};

/// What one drawing shows beyond what the row of the series says: its result boxes and the peripherals of each bus.
/// Blocks, dividers and multiplexers follow from the row.
struct ClockMapTable
{
    ClockMap map;
    std::span<const ClockBusRow> sclkRows = {}; ///< fed before the AHB divider
    std::span<const ClockBusRow> ahbRows = {};
    std::span<const ClockListRun> apb1 = {};
    std::span<const ClockListRun> apb1Timers = {};
    std::span<const ClockListRun> apb2 = {};
    std::span<const ClockListRun> apb2Timers = {};
    std::span<const ClockListRun> apb3 = {};
    bool ertc = true;           ///< the real-time clock is an ERTC
    bool sclkLimitNote = false; ///< room for the conditions of a high SCLK
};

extern const ClockMapTable DrawF403EF407EPLLMap;
extern const ClockMapTable DrawF435F437PLLMap;
extern const ClockMapTable DrawF455F456F457PLLMap;
extern const ClockMapTable DrawF403AF407A403APLLMap;
extern const ClockMapTable DrawF423A423PLLMap;
extern const ClockMapTable DrawF413PLLMap;
extern const ClockMapTable DrawF415WB415PLLMap;
extern const ClockMapTable DrawF402F405F490PLLMap;
extern const ClockMapTable DrawF425PLLMap;
extern const ClockMapTable DrawL021F011PLLMap;
extern const ClockMapTable DrawF422F426PLLMap;
extern const ClockMapTable DrawF406F408PLLMap;
extern const ClockMapTable DrawF421PLLMap;
extern const ClockMapTable DrawM412M416PLLMap;

const ClockMapTable &clockMapTable(ClockMap map);

/// The drawing of a series.
ClockMapDescription describeClockMap(const ClockSeries &series);

} // namespace ChipLoom
