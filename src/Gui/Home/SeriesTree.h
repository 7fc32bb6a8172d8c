#pragma once

#include <QTreeView>

#include <vector>

class QStandardItem;
class QStandardItemModel;

namespace ChipLoom {

class DeviceCatalogue;

/// The catalogue's lines and, below them, their series, each with a check box. A line shows whether all, some or none
/// of its series are checked, and checks them all.
class SeriesTree : public QTreeView
{
    Q_OBJECT
public:
    /// All series are checked at first. The catalogue must outlive the tree.
    explicit SeriesTree(const DeviceCatalogue &catalogue, QWidget *parent = nullptr);

    /// One flag for each series, counted over all lines.
    std::vector<bool> checkedSeries() const;
    void checkAll(bool checked);
    void TranslatorUI();

public slots:
    void ExpandAllTreeItem();
    void FoldAllTreeItem();

signals:
    void checkedSeriesChanged();

private:
    void onItemCheckedChanged(QStandardItem *item);
    void slot_TreeViewMenu(const QPoint &position);
    void setState(QStandardItem *item, Qt::CheckState state);

    const DeviceCatalogue &m_catalogue;
    QStandardItemModel *m_model;
    bool m_updating = false; // our own changes of items are not the user's
};

} // namespace ChipLoom
