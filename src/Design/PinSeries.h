#pragma once

#include <QString>

namespace ChipLoom {

/// What is particular to a series in the assignment of pins.
struct PinSeriesRules
{
    const char *series;
    bool complementaryChannel4Last; ///< TMR1 and TMR8 ask for their CH4C by itself, after the rest
};

/// The row of a series; a row without particulars for one that has none.
const PinSeriesRules &pinSeriesRules(const QString &series);

} // namespace ChipLoom
