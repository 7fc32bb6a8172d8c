#include "Gui/Settings/LabelField.h"

#include "Base/UserPrompt.h"

#include <QRegularExpression>
#include <QTimer>

namespace ChipLoom {

LabelField::LabelField(UserPrompt &prompt, QWidget *parent) : QLineEdit(parent), m_prompt(prompt)
{
    setClearButtonEnabled(true);
    connect(this, &QLineEdit::textEdited, this, &LabelField::UserLabel_LineEdit_textEdit);
}

QString LabelField::labelPart(QString text)
{
    static const QRegularExpression Label(QStringLiteral("\\A[a-zA-Z_][a-zA-Z0-9_]*\\z"));
    while (!text.isEmpty() && !Label.match(text).hasMatch())
        text.chop(1);
    return text;
}

void LabelField::focusInEvent(QFocusEvent *event)
{
    m_UserLabel_EditError_Flag = false;
    QLineEdit::focusInEvent(event);
}

void LabelField::UserLabel_LineEdit_textEdit(const QString &text)
{
    const QString good = labelPart(text);
    if (good != text) {
        setText(good);
        setModified(true); // what is left is the user's
    }
    emit labelEdited(good);
    if (good == text || m_UserLabel_EditError_Flag)
        return;
    m_UserLabel_EditError_Flag = true;
    // Behind the keystroke: a field in the cell of a table is closed, and so deleted, when the box takes the focus.
    QTimer::singleShot(0, this, [&prompt = m_prompt] {
        prompt.tell(PromptRequest::Kind::Critical, QStringLiteral(QT_TRANSLATE_NOOP("Prompt", "Error")),
                    QStringLiteral(QT_TRANSLATE_NOOP("Prompt", "Label must be letters/numbers/underscores, and start "
                                                               "with a letter or an underscore.")));
    });
}

} // namespace ChipLoom
