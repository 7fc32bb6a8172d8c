#pragma once

#include "Design/Calculators/ParameterSheet.h"

namespace ChipLoom {

/// Takes over what a peripheral shares with others of its kind and what one of them, the leader, sets for all: these
/// parameters are closed here and hold the leader's value while it is on. `leader` is its instance, `leading` its
/// set, empty while it is off. Nothing happens for a leader of a kind that shares nothing.
void UpdateParam_FromLeader_Operate(QList<RefParameter> &list, const QString &leader,
                                    const QList<RefParameter> &leading);

/// Remarks on each rank in which a converter samples the same pin at the same moment as the leader, which it disturbs.
void CombinedChannels_Operate(ParameterSheet &sheet, const QString &leader, const QList<RefParameter> &leading);

} // namespace ChipLoom
