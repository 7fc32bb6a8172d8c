#pragma once

#include <QString>
#include <QStringList>

namespace ChipLoom {

/// Something that must be asked or told. Titles, texts and buttons are the English source texts; whoever shows them
/// translates them (context "Prompt") and then fills `textArguments` into "%1", "%2". `detail` is already in the
/// user's language, or names files and reasons that have no translation.
struct PromptRequest
{
    enum class Kind { Information, Warning, Critical, Question };

    Kind kind = Kind::Information;
    QString title;
    QString text;
    QStringList textArguments;
    QString detail;
    QStringList buttons;   ///< at least one
    int defaultButton = 0; ///< what Return chooses, and the answer of whoever cannot ask
    int escapeButton = -1; ///< what closing the box means; -1 takes the last button
};

/// The text with its "%1" to "%9" replaced by the arguments, in one pass: an argument may itself hold "%1", as a path
/// can. A place without an argument stays as it is.
QString filledText(const QString &text, const QStringList &arguments);

/// The one voice of the program: the window shows a modal box, the command line answers by its flags, a test by a
/// script. Called on the interface thread only: a worker returns a record, and its caller tells.
class UserPrompt
{
public:
    virtual ~UserPrompt();

    /// Index into `request.buttons` of the chosen one.
    virtual int ask(const PromptRequest &request) = 0;

    /// A text with the single button "Ok".
    void tell(PromptRequest::Kind kind, const QString &title, const QString &text, const QString &detail = {});
};

} // namespace ChipLoom
