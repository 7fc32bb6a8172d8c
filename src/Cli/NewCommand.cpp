#include "Cli/DesignArguments.h"
#include "Cli/FileQuestions.h"

#include <QCoreApplication>

#include <limits>

namespace ChipLoom {

namespace {

ExitCode makeNew(CommandContext &context)
{
    CommandDesign design(context);
    ExitCode code = openNewDesign(context, context.arguments.first(), design);
    if (code == ExitCode::Success)
        code = applySettings(context, context.arguments.mid(2), design);
    const QString path = withDesignSuffix(context.arguments.at(1));
    if (code == ExitCode::Success && !mayReplaceFile(context, path))
        code = ExitCode::Problem;
    return code == ExitCode::Success ? saveDesignFile(path, design) : code;
}

} // namespace

extern const Command NewCommand;
const Command NewCommand{
    .name = "new",
    .arguments = "DEVICE FILE [SETTING...]",
    .minArguments = 2,
    .maxArguments = std::numeric_limits<int>::max(),
    .summary = QT_TRANSLATE_NOOP("Cli", "Make a design file for a device, with settings applied."),
    .details = SettingsHelp,
    .options = {},
    .run = makeNew,
};

} // namespace ChipLoom
