#pragma once

#include "Cli/Command.h"
#include "Design/Design.h"

namespace ChipLoom {

/// What settings look like, for the help of commands that take them; English, context "Cli".
extern const char SettingsHelp[];

/// Opens a new design for a device of the catalogue (its name in any case). Tells why it cannot.
ExitCode openNewDesign(const CommandContext &context, const QString &device, Design &design);

/// Applies settings such as "pin/PA9=USART1_TX" in order, up to the first that is refused; tells why it is.
ExitCode applySettings(const CommandContext &context, const QStringList &settings, Design &design);

} // namespace ChipLoom
