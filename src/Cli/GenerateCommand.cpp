#include "Cli/DesignArguments.h"
#include "GenerateCode/CodeGeneration.h"
#include "Middlewares/Middlewares.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <limits>

namespace ChipLoom {

namespace {

using State = GeneratedFileRecord::State;

constexpr std::array<CommandOption, 3> Options{{
    {"o", "DIR", QT_TRANSLATE_NOOP("Cli", "Write the source tree into DIR/project. Without it: the current folder.")},
    {"dry-run", nullptr,
     QT_TRANSLATE_NOOP("Cli", "Write nothing; list what would be new, changed or left, and which user code would go.")},
    {"check", nullptr,
     QT_TRANSLATE_NOOP("Cli", "Write nothing; exit with 1 if the files differ from what the design gives.")},
}};

const char *stateName(State state)
{
    switch (state) {
    case State::New:
        return QT_TRANSLATE_NOOP("Cli", "new");
    case State::Changed:
        return QT_TRANSLATE_NOOP("Cli", "changed");
    case State::Removed:
        return QT_TRANSLATE_NOOP("Cli", "removed");
    case State::Unchanged:
        break;
    }
    return QT_TRANSLATE_NOOP("Cli", "unchanged");
}

void report(const CommandContext &context, const GenerationRecord &record)
{
    if (context.json) {
        QJsonArray files;
        for (const GeneratedFileRecord &file : record.files)
            files.append(QJsonObject{{QStringLiteral("path"), file.path},
                                     {QStringLiteral("state"), QLatin1String(stateName(file.state))},
                                     {QStringLiteral("lostBlocks"), QJsonArray::fromStringList(file.lostBlocks)}});
        context.out << QString::fromUtf8(QJsonDocument(QJsonObject{{QStringLiteral("files"), files}}).toJson());
        return;
    }
    for (const GeneratedFileRecord &file : record.files) {
        context.out << QCoreApplication::translate("Cli", stateName(file.state)).leftJustified(10) << file.path << '\n';
        for (const QString &block : file.lostBlocks)
            context.out << QString(12, QLatin1Char(' '))
                        << QCoreApplication::translate("Cli", "not carried over: the user code of \"%1\"").arg(block)
                        << '\n';
    }
}

/// Puts the design with its order of calls beside the sources; the file that it came from stays as it is.
ExitCode saveCopy(const QString &folder, const QString &origin, Design &design)
{
    const QString copy = folder + QLatin1Char('/') + withDesignSuffix(QFileInfo(origin).completeBaseName());
    const QFileInfo former(copy);
    if (former.exists() && former.canonicalFilePath() == QFileInfo(origin).canonicalFilePath())
        return ExitCode::Success;
    return saveDesignFile(copy, design);
}

ExitCode generate(CommandContext &context)
{
    Design design(context.paths, context.prompt);
    registerMiddlewares(design);
    ExitCode code = openDesignOrDevice(context, context.arguments.first(), design);
    if (code == ExitCode::Success)
        code = applySettings(context, context.arguments.mid(1), design);
    if (code != ExitCode::Success)
        return code;
    if (checkBeforeGeneration(design) != GenerationStop::None)
        return ExitCode::Problem;

    const bool write = !context.isSet("dry-run") && !context.isSet("check");
    const QString output = context.isSet("o") ? context.value("o") : QStringLiteral(".");
    const QString folder = QDir(output).absolutePath();
    const GenerationRecord record = generateCode(design, folder + QLatin1String("/project"), write);
    if (!record.ok) {
        context.tell(QCoreApplication::translate("Prompt", "Generate code failed!"));
        context.tell(record.error);
        return ExitCode::FileError;
    }
    report(context, record);
    if (write)
        return saveCopy(folder, context.arguments.first(), design);
    for (const GeneratedFileRecord &file : record.files) {
        if (context.isSet("check") && file.state != State::Unchanged)
            return ExitCode::Problem;
    }
    return ExitCode::Success;
}

} // namespace

extern const Command GenerateCommand;
const Command GenerateCommand{
    .name = "generate",
    .arguments = "FILE|DEVICE [SETTING...]",
    .minArguments = 1,
    .maxArguments = std::numeric_limits<int>::max(),
    .summary = QT_TRANSLATE_NOOP("Cli", "Write the C sources of a design, keeping the user's code in them."),
    .details = QT_TRANSLATE_NOOP("Cli", "FILE stays as it is; a copy in DIR holds the order of the calls in main."),
    .options = Options,
    .run = generate,
};

} // namespace ChipLoom
