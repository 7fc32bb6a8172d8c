#include "Gui/Widgets/SearchField.h"

namespace ChipLoom {

SearchField::SearchField(const QString &placeholder, QWidget *parent) : QLineEdit(parent)
{
    setPlaceholderText(placeholder);
    setClearButtonEnabled(true);
}

} // namespace ChipLoom
