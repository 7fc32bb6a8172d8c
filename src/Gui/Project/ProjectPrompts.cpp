#include "Gui/Project/ProjectPrompts.h"

#include "Design/DesignTexts.h"

#include <QCoreApplication>

namespace ChipLoom::ProjectPrompts {

namespace {

using Kind = PromptRequest::Kind;

PromptRequest box(Kind kind, const char *title, const char *text, const QStringList &buttons)
{
    PromptRequest request;
    request.kind = kind;
    request.title = QLatin1String(title);
    request.text = QLatin1String(text);
    request.buttons = buttons;
    return request;
}

const char *const ErrorTitle = QT_TRANSLATE_NOOP("Prompt", "Error");
const char *const WarningTitle = QT_TRANSLATE_NOOP("Prompt", "Warning");
const QString Ok = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Ok"));
const QString OK = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "OK"));
const QString Yes = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Yes"));
const QString Cancel = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Cancel"));
const QString OpenFolder = QLatin1String(QT_TRANSLATE_NOOP("Prompt", " Open Folder  "));
const QString OpenProject = QLatin1String(QT_TRANSLATE_NOOP("Prompt", " Open Project  "));

bool confirmed(UserPrompt &prompt, PromptRequest request)
{
    request.defaultButton = 1;
    return prompt.ask(request) == 0;
}

} // namespace

void tellEmptyPlace(UserPrompt &prompt)
{
    prompt.ask(box(Kind::Critical, ErrorTitle,
                   QT_TRANSLATE_NOOP("Prompt", "Project name or project location is empty!"), {Ok}));
}

void tellWrongSize(UserPrompt &prompt, const DesignAnswer &answer)
{
    const bool heap = answer.arguments.value(0) == QLatin1String("MinHeapSize");
    const bool tooLarge = answer.reason == DesignReason::AboveMaximum;
    const char *text = heap ? QT_TRANSLATE_NOOP("Prompt", "\"Minimum Heap Size\" input error!")
                            : QT_TRANSLATE_NOOP("Prompt", "\"Minimum Stack Size\" input error!");
    if (tooLarge)
        text = heap ? QT_TRANSLATE_NOOP("Prompt", "\"Minimum Heap Size\" input error, cannot be greater than SRAM "
                                                  "size(0x%1)")
                    : QT_TRANSLATE_NOOP("Prompt", "\"Minimum Stack Size\" input error, cannot be greater than SRAM "
                                                  "size(0x%1)");
    PromptRequest request = box(Kind::Critical, ErrorTitle, text, {Ok});
    if (tooLarge)
        request.textArguments = QStringList{answer.arguments.value(2)};
    prompt.ask(request);
}

void tellWrongValue(UserPrompt &prompt, const DesignAnswer &answer)
{
    PromptRequest request =
        box(Kind::Critical, ErrorTitle, QT_TRANSLATE_NOOP("Prompt", "The project cannot have this value."), {Ok});
    request.detail = answerText(answer);
    prompt.ask(request);
}

void tellNoPackages(UserPrompt &prompt, const QString &folder, const QString &connected)
{
    PromptRequest request =
        box(Kind::Critical, ErrorTitle,
            QT_TRANSLATE_NOOP("Prompt", "The folder holds no firmware package of the series."), {Ok});
    request.detail = QCoreApplication::translate("ProjectSetting", "A package lies in a folder such as %1")
                         .arg(folder + QStringLiteral("/%1/%1_Firmware_Library_V2.0.0").arg(connected));
    prompt.ask(request);
}

void tellToolchainRefused(UserPrompt &prompt, const QString &reason)
{
    PromptRequest request =
        box(Kind::Critical, ErrorTitle, QT_TRANSLATE_NOOP("Prompt", "The toolchain cannot be used."), {Ok});
    request.detail = reason;
    prompt.ask(request);
}

void tellGenerateFailed(UserPrompt &prompt, const QString &detail)
{
    PromptRequest request = box(Kind::Critical, ErrorTitle, QT_TRANSLATE_NOOP("Prompt", "Generate code failed!"), {OK});
    request.detail = detail;
    prompt.ask(request);
}

bool mayOverwrite(UserPrompt &prompt, const QString &name, const QString &detail)
{
    PromptRequest request =
        box(Kind::Warning, WarningTitle, QT_TRANSLATE_NOOP("Prompt", "%1 already exists, do you want to overwrite it?"),
            {Yes, Cancel});
    request.textArguments = QStringList{name};
    request.detail = detail;
    return confirmed(prompt, request);
}

bool mayResetRanking(UserPrompt &prompt)
{
    return confirmed(prompt,
                     box(Kind::Question, QT_TRANSLATE_NOOP("Prompt", "Question"),
                         QT_TRANSLATE_NOOP("Prompt", "Are you sure you want to reset the ranking?"), {Yes, Cancel}));
}

Finished tellFinished(UserPrompt &prompt, bool projectCanBeOpened, const QStringList &notes)
{
    QStringList buttons{OpenFolder, OpenProject, OK};
    if (!projectCanBeOpened)
        buttons.removeAt(1);
    PromptRequest request = box(Kind::Information, QT_TRANSLATE_NOOP("Prompt", "Information"),
                                QT_TRANSLATE_NOOP("Prompt", "Generate code finished!"), buttons);
    request.defaultButton = buttons.size() - 1;
    request.detail = notes.join(QLatin1Char('\n'));
    const QString answer = buttons.value(prompt.ask(request));
    if (answer == OpenFolder)
        return Finished::OpenFolder;
    return answer == OpenProject ? Finished::OpenProject : Finished::Ok;
}

void tellProjectNotOpened(UserPrompt &prompt)
{
    prompt.ask(box(Kind::Warning, WarningTitle,
                   QT_TRANSLATE_NOOP("Prompt", "Open the project error! \n\nPlease install toolchain to open the "
                                               "project.\n"),
                   {Ok}));
}

} // namespace ChipLoom::ProjectPrompts
