#include "Cli/DesignArguments.h"
#include "Design/DesignTexts.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace ChipLoom {

namespace {

ExitCode check(CommandContext &context)
{
    CommandDesign design(context);
    if (!design.OpenDesign(context.arguments.first()))
        return design.file().fault() == DesignFile::Fault::Unreadable ? ExitCode::FileError : ExitCode::Problem;
    const QList<DesignProblem> problems = design.file().problems() + design.problems();
    if (context.json) {
        QJsonArray list;
        for (const DesignProblem &problem : problems)
            list.append(QJsonObject{{QStringLiteral("place"), problem.place},
                                    {QStringLiteral("reason"), answerText(problem.reason)}});
        context.out << QString::fromUtf8(
            QJsonDocument(QJsonObject{{QStringLiteral("device"), design.device()}, {QStringLiteral("problems"), list}})
                .toJson());
    } else if (problems.isEmpty()) {
        context.out << QCoreApplication::translate("Cli", "No problems.") << '\n';
    } else {
        for (const DesignProblem &problem : problems)
            context.out << problemText(problem) << '\n';
    }
    return problems.isEmpty() ? ExitCode::Success : ExitCode::Problem;
}

} // namespace

extern const Command CheckCommand;
const Command CheckCommand{
    .name = "check",
    .arguments = "FILE",
    .minArguments = 1,
    .maxArguments = 1,
    .summary = QT_TRANSLATE_NOOP("Cli", "Tell what is wrong in a design file."),
    .details = QT_TRANSLATE_NOOP("Cli", "Lists pins without effect, wrong parameters, problems of the clock, and what "
                                        "the file holds that cannot be taken;\neach with its place and its reason. "
                                        "The exit code is 1 if there is any."),
    .options = {},
    .run = check,
};

} // namespace ChipLoom
