#include "Cli/DesignArguments.h"
#include "Design/DesignTexts.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

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
                                    {QStringLiteral("reason"), answerText(problem.reason)},
                                    {QStringLiteral("warning"), problem.isWarning}});
        context.out << QString::fromUtf8(
            QJsonDocument(QJsonObject{{QStringLiteral("device"), design.device()}, {QStringLiteral("problems"), list}})
                .toJson());
    } else if (problems.isEmpty()) {
        context.out << QCoreApplication::translate("Cli", "No problems.") << '\n';
    } else {
        for (const DesignProblem &problem : problems)
            context.out << problemText(problem) << '\n';
    }
    const bool good =
        std::all_of(problems.begin(), problems.end(), [](const DesignProblem &problem) { return problem.isWarning; });
    return good ? ExitCode::Success : ExitCode::Problem;
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
                                        "The exit code is 1 if there is any.\nWarnings, as of a rate that is far off, "
                                        "do not count."),
    .options = {},
    .run = check,
};

} // namespace ChipLoom
