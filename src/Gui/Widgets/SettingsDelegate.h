#pragma once

#include <QStyledItemDelegate>

namespace ChipLoom {

class SettingsTable;

/// Editors for the cells of a `SettingsTable`, by what the model says of each: a box for choices, a field for texts. An
/// edit goes to all selected rows.
class SettingsDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit SettingsDelegate(SettingsTable &table);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

private:
    SettingsTable &m_table;
};

} // namespace ChipLoom
