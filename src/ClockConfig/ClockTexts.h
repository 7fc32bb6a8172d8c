#pragma once

#include "Base/UserPrompt.h"
#include "ClockConfig/ZV32MCUPLL.h"

#include <QString>

namespace ChipLoom {

/// The texts of boxes that more than one place shows.
namespace ClockPrompt {
extern const char *const HextInput;
extern const char *const SclkInput;
extern const char *const PllMsInput;
extern const char *const PllNsInput;
extern const char *const I2sf5Input;
extern const char *const AdjustMs;
/// With the limit of the VCO of the series.
const char *adjustNs(const ClockSeries &series);
extern const char *const Reset;
extern const char *const UnknownSeries;

/// An error with the button "Ok".
PromptRequest error(const char *text);
/// A warning with "Yes" and "Cancel"; `goOn` says which of them whoever cannot ask takes.
PromptRequest question(const char *text, bool goOn = false);
} // namespace ClockPrompt

/// The box that tells a problem; warnings offer "Yes" and "Cancel". `pllInput` is in MHz.
PromptRequest clockProblemPrompt(const ClockSeries &series, const ClockProblem &problem, double pllInput);

/// One line for a list of problems, in the user's language, with the value and the limit that it breaks.
QString clockProblemText(const ClockSeries &series, const ClockProblem &problem, double pllInput);

/// Why a change was refused and what to do, in the user's language; empty if it was not.
QString clockRefusalText(const ClockSeries &series, const ClockOutcome &outcome);

/// "up to 288 MHz", "16 to 150 MHz", "48 MHz exactly"; empty without a limit. In the user's language.
QString clockLimitsText(const ClockReading &reading);

} // namespace ChipLoom
