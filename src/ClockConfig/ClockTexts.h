#pragma once

#include "Base/UserPrompt.h"
#include "ClockConfig/ZV32MCUPLL.h"

#include <QString>

namespace ChipLoom {

/// The box that tells a problem; warnings offer "Yes" and "Cancel". `pllInput` is in MHz.
PromptRequest clockProblemPrompt(const ClockSeries &series, const ClockProblem &problem, double pllInput);

/// One line for a list of problems, in the user's language, with the value and the limit that it breaks.
QString clockProblemText(const ClockSeries &series, const ClockProblem &problem, double pllInput);

/// Why a change was refused and what to do, in the user's language; empty if it was not.
QString clockRefusalText(const ClockSeries &series, const ClockOutcome &outcome);

/// "up to 288 MHz", "16 to 150 MHz", "48 MHz exactly"; empty without a limit. In the user's language.
QString clockLimitsText(const ClockReading &reading);

} // namespace ChipLoom
