#pragma once

#include "Gui/Widgets/SettingsDelegate.h"

namespace ChipLoom {

class UserPrompt;

/// Editors for the table of the pins: a label is checked at every keystroke, as in the field below the table.
class GPIOControlDelegate : public SettingsDelegate
{
    Q_OBJECT
public:
    /// `prompt` outlives the table.
    GPIOControlDelegate(SettingsTable &table, int labelColumn, UserPrompt &prompt);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    int m_labelColumn;
    UserPrompt &m_prompt;
};

} // namespace ChipLoom
