#pragma once

#include "Base/UserPrompt.h"

#include <QCoreApplication>
#include <QLatin1String>

#include <initializer_list>

namespace ChipLoom {

/// The boxes of the workspace: English source texts, context "Prompt".
namespace WorkspacePrompts {

inline const QLatin1String ErrorTitle(QT_TRANSLATE_NOOP("Prompt", "Error"));
inline const QLatin1String WarningTitle(QT_TRANSLATE_NOOP("Prompt", "Warning"));
inline const QLatin1String InformationTitle(QT_TRANSLATE_NOOP("Prompt", "Information"));
inline const QLatin1String QuestionTitle(QT_TRANSLATE_NOOP("Prompt", "Question"));
inline const QLatin1String Yes(QT_TRANSLATE_NOOP("Prompt", "Yes"));
inline const QLatin1String Yes1(QT_TRANSLATE_NOOP("Prompt", "Yes1"));
inline const QLatin1String No(QT_TRANSLATE_NOOP("Prompt", "No"));
inline const QLatin1String Cancel(QT_TRANSLATE_NOOP("Prompt", "Cancel"));
inline const QLatin1String ResetQuestion(
    QT_TRANSLATE_NOOP("Prompt", "The current all configurations will be reset. Please confirm whether to continue?"));
inline const QLatin1String ResetDone(QT_TRANSLATE_NOOP("Prompt", "Reset succeed!"));
inline const QLatin1String
    CloseQuestion(QT_TRANSLATE_NOOP("Prompt", "The current design will be closed. Would you like to save the design?"));
inline const QLatin1String NewDesignQuestion(QT_TRANSLATE_NOOP(
    "Prompt", "The current design will be closed before creating a new design. Would you like to save the design?"));
inline const QLatin1String OpenDesignQuestion(QT_TRANSLATE_NOOP(
    "Prompt", "The current design will be closed before opening another design. Would you like to save the design?"));
inline const QLatin1String NoFile(QT_TRANSLATE_NOOP("Prompt", "File is not exists!"));
inline const QLatin1String OpenListedQuestion(QT_TRANSLATE_NOOP("Prompt", "Are you sure to open this design file?"));
inline const QLatin1String ChangedElsewhere(QT_TRANSLATE_NOOP(
    "Prompt", "Another program has changed the file of this design. Would you like to overwrite it?"));
inline const QLatin1String TypedClock(QT_TRANSLATE_NOOP(
    "Prompt",
    "A value typed on the clock page is not in effect: Return takes it. Would you like to go on without it?"));
inline const QLatin1String Saved(QT_TRANSLATE_NOOP("Prompt", "Save file finished!"));
inline const QLatin1String PartlyOpened(QT_TRANSLATE_NOOP(
    "Prompt", "A part of the file could not be taken over. Saving the design leaves out what is not said to stay."));

/// A box with buttons, of which the last is the default.
inline PromptRequest question(PromptRequest::Kind kind, QLatin1String title, QLatin1String text,
                              std::initializer_list<QLatin1String> buttons)
{
    PromptRequest request;
    request.kind = kind;
    request.title = title;
    request.text = text;
    for (const QLatin1String button : buttons)
        request.buttons.append(button);
    request.defaultButton = request.buttons.size() - 1;
    return request;
}

} // namespace WorkspacePrompts

} // namespace ChipLoom
