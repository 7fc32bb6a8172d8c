#include "Gui/Workspace/PeripheralsConfig.h"

#include "Gui/App/Style.h"
#include "Gui/Widgets/WholeText.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace ChipLoom {

namespace {

constexpr int InstanceRole = Qt::UserRole;
constexpr int Indentation = 9;    // leaves room for the longer names
constexpr int NarrowestTree = 20; // broad characters, which show most names as a whole

/// The picture of a state, in its own colours where the row is chosen too. An empty one keeps the names in one column.
QIcon stateIcon(const QString &file)
{
    QPixmap picture(16, 16);
    if (file.isEmpty() || !picture.load(file))
        picture.fill(Qt::transparent);
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected);
    return icon;
}

/// Names that are longer than the tree is wide take as many lines as they need.
class NameDelegate : public QStyledItemDelegate
{
public:
    explicit NameDelegate(QTreeWidget &tree) : QStyledItemDelegate(&tree), m_tree(tree) {}

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem whole = option;
        initStyleOption(&whole, index);
        whole.features &= ~QStyleOptionViewItem::WrapText;
        const QSize oneLine = m_tree.style()->sizeFromContents(QStyle::CT_ItemViewItem, &whole, {}, &m_tree);
        int levels = 1;
        for (QModelIndex above = index.parent(); above.isValid(); above = above.parent())
            ++levels;
        // The scroll bar counts whether it is there or not: the rows decide about it.
        const int room = m_tree.width() - 2 * m_tree.frameWidth() - m_tree.verticalScrollBar()->sizeHint().width() -
                         levels * m_tree.indentation();
        const QFontMetrics &metrics = whole.fontMetrics;
        const int textRoom = room - (oneLine.width() - metrics.horizontalAdvance(whole.text));
        if (oneLine.width() <= room || textRoom <= 0)
            return {oneLine.width(), metrics.lineSpacing()};
        const int height = metrics.boundingRect(QRect(0, 0, textRoom, 0), Qt::TextWordWrap, whole.text).height();
        return {room, height};
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->text = breakable(option->text);
    }

private:
    QTreeWidget &m_tree;
};

} // namespace

PeripheralsConfig::PeripheralsConfig(QWidget *parent) : QWidget(parent), m_title(new QLabel), m_tree(new QTreeWidget)
{
    Style::setRole(m_title, Style::Role::PanelTitle);
    m_title->setBuddy(m_tree);
    m_tree->setHeaderHidden(true);
    m_tree->setItemDelegate(new NameDelegate(*m_tree));
    m_tree->setWordWrap(true);
    m_tree->installEventFilter(this);
    m_tree->setIndentation(Indentation);
    m_tree->setMinimumWidth(fontMetrics().averageCharWidth() * NarrowestTree);
    m_tree->setTextElideMode(Qt::ElideMiddle); // what tells long names apart stands at their end
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_peripherals = new QTreeWidgetItem(m_tree);
    m_middlewares = new QTreeWidgetItem(m_tree);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_title);
    layout->addWidget(m_tree);
    setFocusProxy(m_tree);

    // The keyboard chooses as the mouse does; a click on what is chosen already shows it again.
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &PeripheralsConfig::ListItem_Clicked);
    connect(m_tree, &QTreeWidget::itemClicked, this, &PeripheralsConfig::ListItem_Clicked);
    connect(m_tree, &QTreeWidget::customContextMenuRequested, this, &PeripheralsConfig::showMenu);
    TranslatorUI();
}

void PeripheralsConfig::TranslatorUI()
{
    m_title->setText(tr("Module Categories"));
    m_peripherals->setText(0, tr("Peripherals"));
    m_middlewares->setText(0, tr("Middlewares"));
}

void PeripheralsConfig::setModules(const QList<PeripheralsBaseInfo> &peripherals,
                                   const QList<PeripheralsBaseInfo> &middlewares)
{
    const QString chosenBefore = chosen();
    const QSignalBlocker blocker(m_tree);
    m_leaves.clear();
    for (QTreeWidgetItem *top : {m_peripherals, m_middlewares})
        qDeleteAll(top->takeChildren());
    addModules(m_peripherals, peripherals);
    addModules(m_middlewares, middlewares);
    m_peripherals->setHidden(peripherals.isEmpty());
    m_middlewares->setHidden(middlewares.isEmpty());
    for (auto status = m_status.begin(); status != m_status.end();)
        status = m_leaves.contains(status.key()) ? std::next(status) : m_status.erase(status);
    m_tree->expandAll();
    m_tree->setCurrentItem(m_leaves.value(chosenBefore));
    m_tree->scrollToItem(m_tree->currentItem());
}

void PeripheralsConfig::addModules(QTreeWidgetItem *top, const QList<PeripheralsBaseInfo> &modules)
{
    QHash<QString, QTreeWidgetItem *> groups;
    for (const PeripheralsBaseInfo &module : modules) {
        QTreeWidgetItem *&group = groups[module.GroupName];
        if (!group)
            group = new QTreeWidgetItem(top, {shownName(module.GroupName, module.GroupName_CH)});
        auto *leaf = new QTreeWidgetItem(group, {module.InstanceName});
        leaf->setData(0, InstanceRole, module.InstanceName);
        leaf->setToolTip(0, QStringList{module.InstanceName, module.AboutInfo}.join(QLatin1Char('\n')).trimmed());
        m_leaves.insert(module.InstanceName, leaf);
        showStatus(leaf, m_status.value(module.InstanceName, IPSTATUS_OFF));
    }
}

void PeripheralsConfig::ReceiveIPStatusFlag(const QString &instanceName, IPSTATUS status)
{
    QTreeWidgetItem *leaf = m_leaves.value(instanceName);
    if (!leaf)
        return;
    m_status.insert(instanceName, status);
    showStatus(leaf, status);
}

void PeripheralsConfig::showStatus(QTreeWidgetItem *leaf, IPSTATUS status)
{
    QString picture;
    if (status & IPSTATUS_ERROR)
        picture = QStringLiteral(":/image/danger32.png");
    else if (status & IPSTATUS_ON)
        picture = QStringLiteral(":/image/greenStone.png");
    leaf->setIcon(0, stateIcon(picture));
    QFont font = m_tree->font();
    font.setBold(status & IPSTATUS_ON);
    leaf->setFont(0, font);
}

bool PeripheralsConfig::choose(const QString &instanceName)
{
    QTreeWidgetItem *leaf = m_leaves.value(instanceName);
    if (!leaf)
        return false;
    m_tree->setCurrentItem(leaf);
    m_tree->scrollToItem(leaf);
    return true;
}

bool PeripheralsConfig::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        m_tree->doItemsLayout(); // other names need two lines now
    return QWidget::eventFilter(watched, event);
}

QString PeripheralsConfig::chosen() const
{
    const QTreeWidgetItem *item = m_tree->currentItem();
    return item ? item->data(0, InstanceRole).toString() : QString();
}

void PeripheralsConfig::ListItem_Clicked(QTreeWidgetItem *item)
{
    const QString instanceName = item ? item->data(0, InstanceRole).toString() : QString();
    if (!instanceName.isEmpty())
        emit SendIPName(instanceName);
}

void PeripheralsConfig::ExpandAll()
{
    m_tree->expandAll();
}

void PeripheralsConfig::FoldAll()
{
    m_tree->collapseAll();
}

void PeripheralsConfig::showMenu(const QPoint &position)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Expand All"), this, &PeripheralsConfig::ExpandAll);
    menu->addAction(tr("Fold All"), this, &PeripheralsConfig::FoldAll);
    menu->popup(m_tree->viewport()->mapToGlobal(position));
}

} // namespace ChipLoom
