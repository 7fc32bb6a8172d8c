#include "Gui/Widgets/SettingsDelegate.h"

#include "Gui/App/Style.h"
#include "Gui/Widgets/SettingsTable.h"
#include "Gui/Widgets/WholeText.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTimer>
#include <QToolTip>

namespace ChipLoom {

namespace {

/// Set on a box in which an entry was chosen. One that is left without a choice still shows the value of its own row,
/// which the other selected rows need not have.
constexpr const char *Chosen = "chosen";

QRect tickRect(const QStyleOptionViewItem &option)
{
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    return style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, option.widget);
}

} // namespace

SettingsDelegate::SettingsDelegate(SettingsTable &table) : QStyledItemDelegate(&table), m_table(table) {}

QWidget *SettingsDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const
{
    const auto choices = index.data(SettingsModel::ChoicesRole).value<SettingsChoices>();
    if (choices.isEmpty())
        return QStyledItemDelegate::createEditor(parent, option, index);
    auto *box = new QComboBox(parent);
    for (const SettingsChoice &choice : choices)
        box->addItem(choice.text, choice.value);
    auto *self = const_cast<SettingsDelegate *>(this);
    connect(box, QOverload<int>::of(&QComboBox::activated), self, [self, box] {
        box->setProperty(Chosen, true);
        emit self->commitData(box);
        emit self->closeEditor(box);
    });
    // The list opens with the editor: one key or click less. By then the editor stands at its place.
    QTimer::singleShot(0, box, [box] { box->showPopup(); });
    return box;
}

void SettingsDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *box = qobject_cast<QComboBox *>(editor);
    if (!box)
        return QStyledItemDelegate::setEditorData(editor, index);
    box->setCurrentIndex(box->findData(index.data(Qt::EditRole)));
}

void SettingsDelegate::setModelData(QWidget *editor, QAbstractItemModel *, const QModelIndex &index) const
{
    if (auto *box = qobject_cast<QComboBox *>(editor)) {
        if (box->property(Chosen).toBool())
            m_table.setForSelection(index, box->currentData(), Qt::EditRole);
    } else if (auto *field = qobject_cast<QLineEdit *>(editor); field && field->isModified()) {
        m_table.setForSelection(index, field->text(), Qt::EditRole);
    }
}

void SettingsDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(SettingsModel::BadRole).toBool()) {
        option->palette.setColor(QPalette::Text, Style::Negative);
        option->palette.setColor(QPalette::HighlightedText, Style::Negative);
        option->font.setBold(true);
    } else if (index.data(SettingsModel::ClosedRole).toBool()) {
        option->palette.setColor(QPalette::Text, Style::Muted);
        if (option->features & QStyleOptionViewItem::HasCheckIndicator)
            option->state &= ~QStyle::State_Enabled;
    }
}

/// A text that its cell or the edge of the table cuts comes first in the tool tip.
bool SettingsDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                                 const QModelIndex &index)
{
    if (!event || event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QRect shown = option.rect & view->viewport()->rect();
    const bool isWhole = sizeHint(option, index).width() <= shown.width();
    if (isWhole || index.data().toString().isEmpty())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(event->globalPos(),
                       wholeTextTip(index.data().toString(), index.data(Qt::ToolTipRole).toString()), view);
    return true;
}

bool SettingsDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                                   const QModelIndex &index)
{
    if (!(index.flags() & Qt::ItemIsUserCheckable))
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    bool toggles = false;
    if (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::MouseButtonDblClick) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        QStyleOptionViewItem tick(option);
        initStyleOption(&tick, index);
        if (mouse->button() != Qt::LeftButton || !tickRect(tick).contains(mouse->pos()))
            return false;
        if (event->type() == QEvent::MouseButtonDblClick)
            return true; // the two releases toggle
        toggles = true;
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        toggles = key == Qt::Key_Space || key == Qt::Key_Select;
    }
    if (!toggles)
        return false;
    const bool on = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    m_table.setForSelection(index, on ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    return true;
}

} // namespace ChipLoom
