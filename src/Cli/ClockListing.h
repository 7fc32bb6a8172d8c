#pragma once

#include "ClockConfig/ZV32MCUPLL.h"

#include <QJsonObject>
#include <QTextStream>

namespace ChipLoom {

/// The whole tree: every setting with its choices, every frequency with its limits, what is wrong.
void writeClock(QTextStream &out, const ZV32MCUPLL &page);
QJsonObject clockJson(const ZV32MCUPLL &page);

} // namespace ChipLoom
