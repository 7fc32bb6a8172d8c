#include "Gui/Widgets/SearchBox.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace ChipLoom {

SearchBox::SearchBox(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
}

void SearchBox::keyPressEvent(QKeyEvent *event)
{
    const bool down = event->key() == Qt::Key_Down || event->key() == Qt::Key_PageDown;
    const bool up = event->key() == Qt::Key_Up || event->key() == Qt::Key_PageUp;
    // With Alt they open the list, as in any box.
    if ((!down && !up) || event->modifiers() & Qt::AltModifier)
        return QComboBox::keyPressEvent(event);
    if (down)
        emit downPressed();
}

void SearchBox::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace ChipLoom
