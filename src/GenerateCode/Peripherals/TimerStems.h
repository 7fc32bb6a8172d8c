#pragma once

#include "Model/Enumerations.h"

#include <QString>
#include <QStringList>

#include <span>

namespace ChipLoom {

/// A hardware class of timer as the groups of series have it. Which topics a timer writes follows from its features:
/// "basic" without channels; otherwise "channels" (at least one), "slave" (two or more, and something that drives the
/// counter from outside), "four", "external" (the input EXT), "brake" (brake, dead time, repetitions), "complementary1"
/// or "complementary3" (so many complementary outputs).
struct TimerStem
{
    const char *stem;     ///< "TMR3_4": the instances TMR3 and TMR4
    const char *groups;   ///< "F421 F425", parted by blanks
    const char *features; ///< parted by blanks

    QStringList instances() const;
    QStringList featureList() const;
    bool isOf(const QString &group) const;
};

std::span<const TimerStem> timerStems();

/// The stem that serves an instance in the group of a series. Where the group lists none for it, the first stem of any
/// group that has the instance: a timer of one number is the same hardware throughout. Null for what is no timer, and
/// for a series without a generator.
const TimerStem *timerStem(ZV32MCUSERIALS series, const QString &instanceName);

} // namespace ChipLoom
