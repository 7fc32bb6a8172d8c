#include "Cli/Command.h"

#include <array>

namespace ChipLoom {

extern const Command CheckCommand;
extern const Command DevicesCommand;
extern const Command DiffCommand;
extern const Command GenerateCommand;
extern const Command NewCommand;
extern const Command SetCommand;
extern const Command ShowCommand;
extern const Command SolveClockCommand;

std::span<const Command *const> commands()
{
    static constexpr std::array<const Command *, 8> table{&DevicesCommand,  &NewCommand,       &SetCommand,
                                                          &ShowCommand,     &CheckCommand,     &DiffCommand,
                                                          &GenerateCommand, &SolveClockCommand};
    return table;
}

void CommandContext::tell(const QString &message) const
{
    err << "chiploom-cli: " << message << '\n';
}

ExitCode CommandContext::tell(const XmlProblem &problem) const
{
    tell(XmlProblemText(problem));
    switch (problem.fault) {
    case XmlFault::Missing:
    case XmlFault::Unreadable:
    case XmlFault::TooLarge:
        return ExitCode::FileError;
    default:
        return ExitCode::Problem;
    }
}

} // namespace ChipLoom
