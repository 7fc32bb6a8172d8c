#include "Cli/DesignArguments.h"
#include "Cli/FileQuestions.h"

#include <QCoreApplication>

#include <limits>

namespace ChipLoom {

namespace {

ExitCode set(CommandContext &context)
{
    const QString path = context.arguments.first();
    CommandDesign design(context);
    ExitCode code = openDesignFile(context, path, design);
    if (code == ExitCode::Success && !mayDropProblems(context, design))
        code = ExitCode::Problem;
    if (code == ExitCode::Success)
        code = applySettings(context, context.arguments.mid(1), design);
    return code == ExitCode::Success ? saveDesignFile(path, design) : code;
}

} // namespace

extern const Command SetCommand;
const Command SetCommand{
    .name = "set",
    .arguments = "FILE [SETTING...]",
    .minArguments = 1,
    .maxArguments = std::numeric_limits<int>::max(),
    .summary = QT_TRANSLATE_NOOP("Cli", "Apply settings to a design file, all of them or none."),
    .details = SettingsHelp,
    .options = {},
    .run = set,
};

} // namespace ChipLoom
