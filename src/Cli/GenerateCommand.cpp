#include "Cli/DesignArguments.h"
#include "Cli/FileQuestions.h"
#include "Cli/ProjectBuild.h"
#include "Design/DesignFile.h"
#include "Middlewares/Middlewares.h"
#include "Project/ProjectGeneration.h"

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

constexpr std::array<CommandOption, 10> Options{{
    {"o", "DIR", QT_TRANSLATE_NOOP("Cli", "Write the source tree into DIR/project. Without it: the current folder.")},
    {"dry-run", nullptr,
     QT_TRANSLATE_NOOP("Cli", "Write nothing; list what would be new, changed or left, and which user code would go.")},
    {"check", nullptr,
     QT_TRANSLATE_NOOP("Cli", "Write nothing; exit with 1 if the files differ from what the design gives.")},
    {"toolchain", "NAME",
     QT_TRANSLATE_NOOP("Cli", "Make the whole project for CMake, Makefile, Eclipse_gcc, ZV32_IDE, MDK_V4, MDK_V5, "
                              "IAR_V7.4, IAR_V8.2 or IAR_V9.3; DIR is its root.")},
    {"firmware", "DIR",
     QT_TRANSLATE_NOOP("Cli", "Firmware package, or a folder that holds one. Without it: the newest of the repository, "
                              "or else the one that comes with the program.")},
    {"split", nullptr, QT_TRANSLATE_NOOP("Cli", "One pair of files for each kind of peripheral.")},
    {"heap", "N", QT_TRANSLATE_NOOP("Cli", "Least size of the heap in bytes, decimal or 0x and hexadecimal.")},
    {"stack", "N", QT_TRANSLATE_NOOP("Cli", "Least size of the stack, in the same way.")},
    {"compiler", "5|6", QT_TRANSLATE_NOOP("Cli", "The Arm compiler of MDK V5.")},
    {"all-drivers", nullptr, QT_TRANSLATE_NOOP("Cli", "List all drivers in the project, not only those in use.")},
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

void report(const CommandContext &context, const GenerationRecord &record, const BuilderAccount *project)
{
    if (context.json) {
        QJsonArray files;
        for (const GeneratedFileRecord &file : record.files) {
            const QString root = project ? QStringLiteral("project/") : QString();
            const QString path = root + file.path;
            const QString formerCopy = file.formerCopy.isEmpty() ? QString() : root + file.formerCopy;
            files.append(QJsonObject{
                {QStringLiteral("path"), path},
                {QStringLiteral("state"), QLatin1String(stateName(file.state))},
                {QStringLiteral("lostBlocks"), QJsonArray::fromStringList(file.lostBlocks)},
                {QStringLiteral("expandedBlocks"), QJsonArray::fromStringList(file.expandedBlocks)},
                {QStringLiteral("formerCopy"), formerCopy},
                {QStringLiteral("repeatedBlocks"), QJsonArray::fromStringList(file.repeatedBlocks)},
                {QStringLiteral("portWithoutPin"), file.portWithoutPin},
                {QStringLiteral("portsWithoutPrintf"), QJsonArray::fromStringList(file.portsWithoutPrintf)}});
        }
        QJsonObject result{{QStringLiteral("files"), files}};
        if (project)
            result.insert(QStringLiteral("project"),
                          QJsonObject{{QStringLiteral("written"), QJsonArray::fromStringList(project->written)},
                                      {QStringLiteral("removed"), QJsonArray::fromStringList(project->removed)},
                                      {QStringLiteral("unchanged"), QJsonArray::fromStringList(project->unchanged)},
                                      {QStringLiteral("notes"), QJsonArray::fromStringList(project->notes)}});
        context.out << QString::fromUtf8(QJsonDocument(result).toJson());
        return;
    }
    if (project)
        reportProject(context, *project);
    for (const GeneratedFileRecord &file : record.files) {
        const QString path = project ? QLatin1String("project/") + file.path : file.path;
        context.out << QCoreApplication::translate("Cli", stateName(file.state)).leftJustified(10) << path << '\n';
        for (const QString &remark : remarksOn(file))
            context.out << QString(12, QLatin1Char(' ')) << remark << '\n';
    }
}

/// The copy of the design, with its order of calls, beside the sources; the file that it came from stays as it is.
struct DesignCopy
{
    QString path;   ///< empty if the file itself lies there
    QString origin; ///< seen from the copy, so that both can be moved together
};

DesignCopy copyOf(const QString &folder, const QString &name, const QString &argument, const Design &design)
{
    const QString path = folder + QLatin1Char('/') + name + DesignSuffix;
    const bool isItself =
        QFileInfo::exists(path) && QFileInfo(path).canonicalFilePath() == QFileInfo(argument).canonicalFilePath();
    const QString origin = design.file().path().isEmpty()
                               ? design.device()
                               : QDir(folder).relativeFilePath(QFileInfo(argument).absoluteFilePath());
    return {isItself ? QString() : path, origin};
}

ExitCode mayPut(const CommandContext &context, const DesignCopy &copy, const Design &design)
{
    const QFileInfo former(copy.path);
    // What it leads to may be anything.
    if (former.isSymLink()) {
        context.tell(QCoreApplication::translate("Project", "%1 is a link; it is not replaced").arg(copy.path));
        return ExitCode::FileError;
    }
    const bool mayReplace = copy.path.isEmpty() || design.file().isGeneratedCopy(copy.path, copy.origin) ||
                            mayReplaceFile(context, copy.path);
    return mayReplace ? ExitCode::Success : ExitCode::Problem;
}

ExitCode generate(CommandContext &context)
{
    // As from a script whose variable is not set: the current folder is hardly meant.
    if (context.isSet("o") && context.value("o").isEmpty()) {
        context.tell(QCoreApplication::translate("Cli", "-o names no folder."));
        return ExitCode::WrongUsage;
    }
    Design design(context.paths, context.prompt);
    registerMiddlewares(design);
    ExitCode code = openDesignOrDevice(context, context.arguments.first(), design);
    if (code == ExitCode::Success)
        code = applySettings(context, context.arguments.mid(1), design);
    if (code != ExitCode::Success)
        return code;
    const QString output = context.isSet("o") ? context.value("o") : QStringLiteral(".");
    const QString folder = QDir(output).absolutePath();
    code = applyProjectOptions(context, folder, design);
    if (code != ExitCode::Success)
        return code;
    if (checkBeforeGeneration(design) != GenerationStop::None)
        return ExitCode::Problem;

    const bool write = !context.isSet("dry-run") && !context.isSet("check");
    const bool isProject = context.isSet("toolchain");
    const QString name =
        isProject ? design.project().ProjectName : QFileInfo(context.arguments.first()).completeBaseName();
    const DesignCopy copy = copyOf(folder, name, context.arguments.first(), design);
    if (write)
        code = mayPut(context, copy, design);
    if (code != ExitCode::Success)
        return code;
    ProjectOrder order;
    BuilderAccount project;
    CodeGeneration generation(design, folder + QLatin1String("/project"));
    if (isProject)
        code = buildProject(context, design, folder, generation, order, project);
    if (code != ExitCode::Success)
        return code;
    const GenerationRecord &record = generation.run(write);
    if (!record.ok) {
        context.tell(QCoreApplication::translate("Prompt", "Generate code failed!"));
        context.tell(record.error);
        return ExitCode::FileError;
    }
    report(context, record, isProject ? &project : nullptr);
    if (isProject)
        rememberProject(order, project, generation);
    if (write && !copy.path.isEmpty() && !design.file().SaveGeneratedCopy(copy.path, copy.origin))
        return ExitCode::FileError;
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
    .summary =
        QT_TRANSLATE_NOOP("Cli", "Write the C sources or the whole project of a design, keeping the user's code."),
    .details = QT_TRANSLATE_NOOP(
        "Cli",
        "FILE stays as it is; a copy in DIR holds the order of the calls in main. If another design has its name\n"
        "there, you are asked before anything is written."),
    .options = Options,
    .run = generate,
};

} // namespace ChipLoom
