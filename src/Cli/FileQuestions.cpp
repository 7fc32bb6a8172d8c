#include "Cli/FileQuestions.h"

#include "Design/Design.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace ChipLoom {

namespace {

/// Without anybody to answer, the file stays.
bool goesOn(const CommandContext &context, const char *text, const QStringList &arguments = {})
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Warning;
    request.title = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Warning"));
    request.text = QLatin1String(text);
    request.textArguments = arguments;
    request.buttons = QStringList{QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Yes")),
                                  QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Cancel"))};
    request.defaultButton = 1;
    return context.prompt.ask(request) == 0;
}

} // namespace

bool mayReplaceFile(const CommandContext &context, const QString &path)
{
    return !QFileInfo::exists(path) ||
           goesOn(context, QT_TRANSLATE_NOOP("Prompt", "%1 already exists. Would you like to replace it?"),
                  {QDir::toNativeSeparators(path)});
}

bool mayDropProblems(const CommandContext &context, const Design &design)
{
    return !design.file().dropsOnSaving() ||
           goesOn(context, QT_TRANSLATE_NOOP("Prompt", "A part of the file could not be taken over. Would you like to "
                                                       "save the design without what is not said to stay?"));
}

} // namespace ChipLoom
