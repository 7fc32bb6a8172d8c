#include "Cli/DesignArguments.h"

#include <QCoreApplication>

#include <limits>

namespace ChipLoom {

namespace {

/// What the file held and this version cannot take is not in the design, and saving drops it.
bool mayDropProblems(const CommandContext &context, const Design &design)
{
    if (design.file().problems().isEmpty())
        return true;
    PromptRequest request;
    request.kind = PromptRequest::Kind::Warning;
    request.title = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Warning"));
    request.text = QLatin1String(QT_TRANSLATE_NOOP(
        "Prompt", "A part of the file could not be taken over. Would you like to save the design without it?"));
    request.buttons = QStringList{QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Yes")),
                                  QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Cancel"))};
    request.defaultButton = 1;
    return context.prompt.ask(request) == 0;
}

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
