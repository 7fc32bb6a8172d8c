#include "Gui/Home/SeriesTree.h"

#include "Gui/App/Style.h"
#include "Gui/Home/DeviceCatalogue.h"

#include <QHeaderView>
#include <QMenu>
#include <QScopedValueRollback>
#include <QStandardItemModel>

namespace ChipLoom {

SeriesTree::SeriesTree(const DeviceCatalogue &catalogue, QWidget *parent)
    : QTreeView(parent), m_catalogue(catalogue), m_model(new QStandardItemModel(this))
{
    for (const ProductLineStruct &line : catalogue.lines()) {
        auto *lineItem = new QStandardItem;
        lineItem->setEditable(false);
        lineItem->setCheckable(true);
        setState(lineItem, Qt::Checked);
        for (const MCUSerialStruct &series : line.MCUSerialList) {
            auto *item = new QStandardItem(series.SeriaName);
            item->setEditable(false);
            item->setCheckable(true);
            setState(item, Qt::Checked);
            lineItem->appendRow(item);
        }
        m_model->appendRow(lineItem);
    }
    setModel(m_model);
    header()->setSectionsMovable(false);
    setContextMenuPolicy(Qt::CustomContextMenu);
    TranslatorUI();
    expandAll();

    connect(m_model, &QStandardItemModel::itemChanged, this, &SeriesTree::onItemCheckedChanged);
    connect(this, &QWidget::customContextMenuRequested, this, &SeriesTree::slot_TreeViewMenu);
}

std::vector<bool> SeriesTree::checkedSeries() const
{
    std::vector<bool> checked;
    for (int line = 0; line < m_model->rowCount(); ++line) {
        const QStandardItem *lineItem = m_model->item(line);
        for (int i = 0; i < lineItem->rowCount(); ++i)
            checked.push_back(lineItem->child(i)->checkState() == Qt::Checked);
    }
    return checked;
}

void SeriesTree::checkAll(bool checked)
{
    const QScopedValueRollback<bool> updating(m_updating, true);
    const Qt::CheckState state = checked ? Qt::Checked : Qt::Unchecked;
    for (int line = 0; line < m_model->rowCount(); ++line) {
        QStandardItem *lineItem = m_model->item(line);
        setState(lineItem, state);
        for (int i = 0; i < lineItem->rowCount(); ++i)
            setState(lineItem->child(i), state);
    }
    emit checkedSeriesChanged();
}

void SeriesTree::TranslatorUI()
{
    const QScopedValueRollback<bool> updating(m_updating, true);
    m_model->setHorizontalHeaderLabels({tr("Please select MCU series")});
    int line = 0;
    for (const ProductLineStruct &lineInfo : m_catalogue.lines()) {
        QStandardItem *lineItem = m_model->item(line++);
        lineItem->setText(shownName(lineInfo.ProductLineName, lineInfo.ProductLineName_CH));
        lineItem->setToolTip(lineInfo.ProductLinelInfo);
        int row = 0;
        for (const MCUSerialStruct &series : lineInfo.MCUSerialList)
            lineItem->child(row++)->setToolTip(series.SerialInfo);
    }
}

void SeriesTree::ExpandAllTreeItem()
{
    expandAll();
}

void SeriesTree::FoldAllTreeItem()
{
    collapseAll();
}

void SeriesTree::onItemCheckedChanged(QStandardItem *item)
{
    if (m_updating || !item || item->column() != 0)
        return;
    const QScopedValueRollback<bool> updating(m_updating, true);
    setState(item, item->checkState());
    if (QStandardItem *line = item->parent()) {
        int checked = 0;
        for (int i = 0; i < line->rowCount(); ++i)
            checked += line->child(i)->checkState() == Qt::Checked;
        setState(line, checked == line->rowCount() ? Qt::Checked : checked > 0 ? Qt::PartiallyChecked : Qt::Unchecked);
    } else {
        for (int i = 0; i < item->rowCount(); ++i)
            setState(item->child(i), item->checkState());
    }
    emit checkedSeriesChanged();
}

void SeriesTree::slot_TreeViewMenu(const QPoint &position)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Expand All"), this, &SeriesTree::ExpandAllTreeItem);
    menu->addAction(tr("Fold All"), this, &SeriesTree::FoldAllTreeItem);
    menu->popup(viewport()->mapToGlobal(position));
}

void SeriesTree::setState(QStandardItem *item, Qt::CheckState state)
{
    item->setCheckState(state);
    item->setFont(Style::font(10, state == Qt::Checked));
}

} // namespace ChipLoom
