#pragma once

#include "Design/Calculators/ParameterSheet.h"

namespace ChipLoom {

/// What differs by series in the results that stand beside the parameters: one row for each group of series.
struct DerivedSeries
{
    const char *name = "";         ///< as "ZV32F421_SpecialParam_Operate"
    const char *series = "";       ///< with blanks between them
    double canTolerance = 0.005;   ///< of a bit rate, as a part of one
    bool canSjwFollowsBS2 = false; ///< the widest resynchronisation is the start value, else one quantum
};

/// The row of a series; a row of its own kind for a series that has none.
const DerivedSeries &derivedSeries(const QString &series);

/// Computes every result of the peripheral from its other parameters and its clock. Run at each rebuild of the set,
/// before its values are checked.
void SpecialParam_Operate(ParameterSheet &sheet);

/// What a user's change of one parameter does to other inputs, before the set is rebuilt: name and new value of each.
QList<XMLAttributeInfo> ModifyParam_Operate(const QString &instance, const QString &name, const QString &value);

/// Takes over what banks of SDRAM share (clock, reading and the interrupt) from the first, whose list is `leader`,
/// while that is on.
void UpdateParam_FromFirstBank_Operate(QList<RefParameter> &list, const QList<RefParameter> &leader);

/// Takes over what the leader of a group of converters sets for all of them.
void UpdateParam_FromLeader_Operate(QList<RefParameter> &list, const QList<RefParameter> &leader);

/// Size of an error above which a rate is marked, in percent.
double allowedRateError(const QString &parameter);

} // namespace ChipLoom
