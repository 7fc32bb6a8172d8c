#pragma once

#include <QLineEdit>

namespace ChipLoom {

/// Takes a value: Esc gives back what stood there before the typing. A text that its mask does not accept is offered as
/// well when the field is left, so that it is refused and not left standing.
class EntryField : public QLineEdit
{
    Q_OBJECT
public:
    using QLineEdit::QLineEdit;

    /// What stood there before the typing.
    void giveBack();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
};

} // namespace ChipLoom
