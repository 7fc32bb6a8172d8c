#include "Cli/DesignArguments.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <limits>

namespace ChipLoom {

namespace {

/// Asks before a file is replaced by a new design.
bool mayReplace(const CommandContext &context, const QString &path)
{
    if (!QFileInfo::exists(path))
        return true;
    PromptRequest request;
    request.kind = PromptRequest::Kind::Warning;
    request.title = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Warning"));
    request.text = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "%1 already exists. Would you like to replace it?"));
    request.textArguments = QStringList{QDir::toNativeSeparators(path)};
    request.buttons = QStringList{QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Yes")),
                                  QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Cancel"))};
    request.defaultButton = 1;
    return context.prompt.ask(request) == 0;
}

ExitCode makeNew(CommandContext &context)
{
    CommandDesign design(context);
    ExitCode code = openNewDesign(context, context.arguments.first(), design);
    if (code == ExitCode::Success)
        code = applySettings(context, context.arguments.mid(2), design);
    const QString path = withDesignSuffix(context.arguments.at(1));
    if (code == ExitCode::Success && !mayReplace(context, path))
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
