#pragma once

#include "Base/AppPaths.h"
#include "Base/UserPrompt.h"
#include "Model/XmlProblem.h"

#include <QMap>
#include <QStringList>
#include <QTextStream>

#include <span>

namespace ChipLoom {

/// What the process returns. Whatever is not `Success` has been explained on standard error.
enum class ExitCode {
    Success = 0,
    Problem = 1,    ///< the design or the data has a problem, or a question had nobody to answer it
    WrongUsage = 2, ///< the command line is wrong
    FileError = 3   ///< a file cannot be read or written
};

/// One option of a command, or one that all commands have.
struct CommandOption
{
    const char *name;  ///< without the dashes
    const char *value; ///< name of its value in the help, as "DIR"; null for an option without a value
    const char *help;  ///< English; context "Cli"
};

/// What a command works with.
struct CommandContext
{
    AppPaths paths;
    UserPrompt &prompt;
    QTextStream &out; ///< the result, and nothing else
    QTextStream &err;
    bool json = false;            ///< the result is wanted as JSON
    QStringList arguments;        ///< what stands behind the command beside the options; the number is checked
    QMap<QString, QString> given; ///< options that were given, with their values

    bool isSet(const char *option) const { return given.contains(QLatin1String(option)); }
    QString value(const char *option) const { return given.value(QLatin1String(option)); }

    /// A message on standard error.
    void tell(const QString &message) const;
    /// The message of a file that gave nothing, and the exit code that belongs to it.
    ExitCode tell(const XmlProblem &problem) const;
};

/// One command. Each lies in a file of its own and stands in the table of `Commands.cpp`.
struct Command
{
    const char *name;
    const char *arguments; ///< as the help shows them, "FILE"; empty for none
    int minArguments;
    int maxArguments;
    const char *summary; ///< one line, English; context "Cli"
    const char *details; ///< further lines of the command's own help; may be empty
    std::span<const CommandOption> options;
    ExitCode (*run)(CommandContext &context);
};

/// All commands in the order of the help.
std::span<const Command *const> commands();

} // namespace ChipLoom
