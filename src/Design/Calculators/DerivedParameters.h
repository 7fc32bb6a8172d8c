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

/// Size of an error above which a rate is marked, in percent.
double allowedRateError(const QString &parameter);

} // namespace ChipLoom
