#pragma once

#include "Model/ShareParameter.h"

#include <QString>

namespace ChipLoom {

// What holds for single vectors, by their names, and cannot be said in the database.

/// What the RTOS does with a vector while it runs.
enum class RtosRule {
    Peripheral,      ///< open ones may call it unless the user says no
    Never,           ///< may not call it
    LowestPriority,  ///< its own, at the end of the order
    HighestPriority, ///< its own, at the head of the order
    OnRequest        ///< may call it if the user says so
};
RtosRule rtosRule(const QString &nvicName);

/// Whether the RTOS brings the handler of a vector.
bool rtosHandles(const QString &nvicName);

/// Whether tokens leave a vector as it stands.
bool ignoresTokens(const MCUNVICSetting &vector);

/// The enumerator that a token "Semaphore_AutoEnable_<vector>_FromApp_<instance>" names; empty for other tokens.
QString vectorOfToken(const QString &token);

} // namespace ChipLoom
