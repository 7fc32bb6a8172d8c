#pragma once

#include "Cli/Command.h"
#include "Design/Design.h"

namespace ChipLoom {

/// An empty design with all that the program can put into one.
class CommandDesign : public Design
{
public:
    explicit CommandDesign(const CommandContext &context);
};

/// What settings look like, for the help of commands that take them; English, context "Cli".
extern const char SettingsHelp[];

/// Opens a new design for a device of the catalogue (its name in any case). Tells why it cannot.
ExitCode openNewDesign(const CommandContext &context, const QString &device, Design &design);

/// Opens a design file. Tells why it cannot, and what the file holds that cannot be taken.
ExitCode openDesignFile(const CommandContext &context, const QString &path, Design &design);

/// Opens a design file if the text is the name of one by its suffix, or of a file with another suffix, and else a new
/// design for a device.
ExitCode openDesignOrDevice(const CommandContext &context, const QString &text, Design &design);

/// Saves the design, and says why it cannot.
ExitCode saveDesignFile(const QString &path, Design &design);

/// "USART1/BaudRate: 1 is too small ...", in the user's language.
QString problemText(const DesignProblem &problem);

/// Applies settings such as "pin/PA9=USART1_TX" in order, up to the first that is refused; tells why it is.
ExitCode applySettings(const CommandContext &context, const QStringList &settings, Design &design);

} // namespace ChipLoom
