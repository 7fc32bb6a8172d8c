#pragma once

#include "Model/ShareParameter.h"

#include <QHash>
#include <QWidget>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace ChipLoom {

/// The module tree of a design: peripherals and middlewares, each under the heading of its group, in list order.
class PeripheralsConfig : public QWidget
{
    Q_OBJECT
public:
    explicit PeripheralsConfig(QWidget *parent = nullptr);

    /// Fills the tree anew, all open. Marks and choice of instances that are still there stay.
    void setModules(const QList<PeripheralsBaseInfo> &peripherals, const QList<PeripheralsBaseInfo> &middlewares);
    /// Chooses a leaf as a click does. False if there is no such instance.
    bool choose(const QString &instanceName);
    QString chosen() const;
    QTreeWidget *tree() const { return m_tree; }
    void TranslatorUI();

public slots:
    /// Marks a leaf: in use, faulty, or neither. Unknown instances are ignored.
    void ReceiveIPStatusFlag(const QString &instanceName, ChipLoom::IPSTATUS status);
    void ExpandAll();
    void FoldAll();

signals:
    void SendIPName(const QString &instanceName);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void ListItem_Clicked(QTreeWidgetItem *item);
    void addModules(QTreeWidgetItem *top, const QList<PeripheralsBaseInfo> &modules);
    void showStatus(QTreeWidgetItem *leaf, IPSTATUS status);
    void showMenu(const QPoint &position);

    QLabel *m_title;
    QTreeWidget *m_tree;
    QTreeWidgetItem *m_peripherals;
    QTreeWidgetItem *m_middlewares;
    QHash<QString, QTreeWidgetItem *> m_leaves;
    QHash<QString, IPSTATUS> m_status;
};

} // namespace ChipLoom
