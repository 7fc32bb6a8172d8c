#pragma once

#include <QLineEdit>

namespace ChipLoom {

class UserPrompt;

/// A field for a label: letters, digits and underscores, not beginning with a digit. At every keystroke what does not
/// fit is cut off again from the end, and the reason told once for each edit.
class LabelField : public QLineEdit
{
    Q_OBJECT
public:
    /// `prompt` outlives the field.
    explicit LabelField(UserPrompt &prompt, QWidget *parent = nullptr);

    /// The text without the characters at its end that keep it from being a label.
    static QString labelPart(QString text);

signals:
    /// At every keystroke, with what is left of the text.
    void labelEdited(const QString &label);

protected:
    void focusInEvent(QFocusEvent *event) override;

private:
    void UserLabel_LineEdit_textEdit(const QString &text);

    UserPrompt &m_prompt;
    bool m_UserLabel_EditError_Flag = false; ///< told in this edit
};

} // namespace ChipLoom
