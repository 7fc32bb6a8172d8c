#include "Gui/Settings/GPIOControlDelegate.h"

#include "Gui/Settings/LabelField.h"
#include "Gui/Widgets/SettingsTable.h"

namespace ChipLoom {

GPIOControlDelegate::GPIOControlDelegate(SettingsTable &table, int labelColumn, UserPrompt &prompt)
    : SettingsDelegate(table), m_labelColumn(labelColumn), m_prompt(prompt)
{
}

QWidget *GPIOControlDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                           const QModelIndex &index) const
{
    if (index.column() != m_labelColumn)
        return SettingsDelegate::createEditor(parent, option, index);
    auto *field = new LabelField(m_prompt, parent);
    field->setFrame(false);
    return field;
}

} // namespace ChipLoom
