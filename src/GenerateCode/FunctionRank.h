#pragma once

#include "Model/ShareParameter.h"

namespace ChipLoom {

/// The calls that `main` may make, in their default order, as a template folder ("ZV32F421") has them. Empty if there
/// is none.
QList<MainFuncNameForRank> readFunctionRank(const QString &folder);

/// Brings an order of calls to what is in use now. `names` holds functions and instances. Calls that are not in use any
/// more go; a new movable one comes last, fixed ones stand in their default places; the order of the others stays.
QList<MainFuncNameForRank> Set_Valid_PeripheralsAndMid_NameList_ForRank(const QList<MainFuncNameForRank> &table,
                                                                        const QList<MainFuncNameForRank> &validList,
                                                                        const QStringList &names);

/// The order of calls as the table has it, every call made.
QList<MainFuncNameForRank> resetFunctionRank(QList<MainFuncNameForRank> validList);

} // namespace ChipLoom
