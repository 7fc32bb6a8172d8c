#include "Cli/DesignArguments.h"
#include "Cli/FileQuestions.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <limits>

namespace ChipLoom {

namespace {

ExitCode makeNew(CommandContext &context)
{
    const QString name = context.arguments.at(1);
    if (QFileInfo(name).fileName().isEmpty()) { // a suffix alone would be hidden
        context.tell(QCoreApplication::translate("Cli", "\"%1\" names no file.").arg(name));
        return ExitCode::WrongUsage;
    }
    CommandDesign design(context);
    ExitCode code = openNewDesign(context, context.arguments.first(), design);
    if (code == ExitCode::Success)
        code = applySettings(context, context.arguments.mid(2), design);
    const QString path = withDesignSuffix(name);
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
