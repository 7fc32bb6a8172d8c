#pragma once

#include "Design/Calculators/ParameterSheet.h"

namespace ChipLoom {

/// The bit timings that a controller can have at its clock: offers those that fit the wanted rate and sample point,
/// and sets segments, divider and real rate of the chosen one.
void CAN_Param_Operate(ParameterSheet &sheet);

/// The same for a controller with a nominal phase and, where it has a flexible data rate, a phase of data.
void CAN_Nominal_Param_Operate(ParameterSheet &sheet);

/// What a user's change of one parameter of a controller does to other inputs: name and new value of each.
QList<XMLAttributeInfo> modifyCanParameters(const QString &name, const QString &value);

} // namespace ChipLoom
