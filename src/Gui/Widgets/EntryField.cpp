#include "Gui/Widgets/EntryField.h"

#include <QKeyEvent>

namespace ChipLoom {

void EntryField::giveBack()
{
    while (isUndoAvailable())
        undo();
    setModified(false);
}

void EntryField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape || !isModified())
        return QLineEdit::keyPressEvent(event);
    giveBack();
}

void EntryField::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (!hasAcceptableInput() && event->reason() != Qt::PopupFocusReason)
        emit editingFinished();
}

} // namespace ChipLoom
