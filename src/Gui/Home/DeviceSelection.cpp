#include "Gui/Home/DeviceSelection.h"

#include "Gui/App/Style.h"
#include "Gui/Home/DeviceFilterBar.h"
#include "Gui/Home/New_Design_Select.h"
#include "Gui/Home/SeriesInfoBrowser.h"
#include "Gui/Home/SeriesTree.h"
#include "Gui/Widgets/SearchBox.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSplitter>
#include <QStackedLayout>
#include <QStringListModel>
#include <QTableView>
#include <QVBoxLayout>

namespace ChipLoom {

DeviceSelection::DeviceSelection(const XMLOperation &xml, QWidget *parent)
    : QWidget(parent), m_xmlOperation(xml), m_catalogue(xml.GetProductLinesList()),
      m_catalogueProblem(xml.catalogueProblem()), m_devices(new DeviceTableModel(m_catalogue, this)),
      m_shownDevices(new DeviceFilterProxy(*m_devices, this))
{
    auto *panes = new QSplitter(Qt::Horizontal);
    panes->addWidget(createSeriesPane());
    panes->addWidget(createTablePane());
    panes->setStretchFactor(1, 1);
    panes->setChildrenCollapsible(false);
    panes->setSizes({230, 1070});

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(panes);

    connect(m_treeView, &SeriesTree::checkedSeriesChanged, this, &DeviceSelection::RefreshDeviceTable);
    connect(m_filterBar, &DeviceFilterBar::filterChanged, this, [this] {
        m_shownDevices->setFilter(m_filterBar->filter());
        showRows();
    });
    connect(m_QueryDevice_ComboBox, qOverload<int>(&QComboBox::activated), this, &DeviceSelection::QueryActived);
    connect(m_QueryDevice_ComboBox, &SearchBox::downPressed, m_DeviceTableWidget, qOverload<>(&QWidget::setFocus));
    // Each letter narrows the table; what is typed counts the same as what is confirmed.
    connect(m_QueryDevice_ComboBox->lineEdit(), &QLineEdit::textEdited, this, &DeviceSelection::QueryEditingFinished);
    connect(m_QueryDevice_ComboBox->lineEdit(), &QLineEdit::returnPressed, this, &DeviceSelection::takeFound);

    setFocusProxy(m_QueryDevice_ComboBox);
    TranslatorUI();
    RefreshDeviceTable();
}

QWidget *DeviceSelection::createSeriesPane()
{
    m_treeView = new SeriesTree(m_catalogue);
    m_checkAll_PushButton = new QPushButton;
    m_checkNone_PushButton = new QPushButton;
    connect(m_checkAll_PushButton, &QPushButton::clicked, this, [this] { m_treeView->checkAll(true); });
    connect(m_checkNone_PushButton, &QPushButton::clicked, this, [this] { m_treeView->checkAll(false); });

    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {m_checkAll_PushButton, m_checkNone_PushButton}) {
        Style::setRole(button, Style::Role::Link);
        buttons->addWidget(button);
    }
    buttons->addStretch();

    auto *pane = new QWidget;
    auto *layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_treeView, 1);
    layout->addLayout(buttons);
    return pane;
}

QWidget *DeviceSelection::createTablePane()
{
    m_filterBar = new DeviceFilterBar(*m_devices);
    createTable();
    m_emptyTable_Label = new QLabel;
    m_emptyTable_Label->setAlignment(Qt::AlignCenter);
    m_emptyTable_Label->setWordWrap(true);
    m_emptyTable_Label->setMargin(24);
    m_emptyTable_Label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Style::setRole(m_emptyTable_Label, Style::Role::Panel);

    auto *table = new QWidget;
    m_tableStack = new QStackedLayout(table);
    m_tableStack->addWidget(m_DeviceTableWidget);
    m_tableStack->addWidget(m_emptyTable_Label);
    table->setMinimumHeight(150);

    m_MCUSerialInfo_TextBrowser = new SeriesInfoBrowser(m_xmlOperation);
    m_MCUSerialInfo_TextBrowser->setMinimumHeight(70);

    auto *halves = new QSplitter(Qt::Vertical);
    halves->addWidget(table);
    halves->addWidget(m_MCUSerialInfo_TextBrowser);
    halves->setStretchFactor(0, 3);
    halves->setStretchFactor(1, 1);
    halves->setSizes({300, 140});
    halves->setChildrenCollapsible(false);

    auto *pane = new QWidget;
    auto *layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(createSearchRow());
    layout->addWidget(m_filterBar);
    layout->addWidget(halves, 1);
    layout->addLayout(createButtonRow());
    return pane;
}

QWidget *DeviceSelection::createSearchRow()
{
    m_query_Label = new QLabel;
    m_QueryDevice_ComboBox = new SearchBox;
    // The table itself shows what fits; completing to the first name would search for that device alone.
    m_QueryDevice_ComboBox->setCompleter(nullptr);
    m_QueryDevice_ComboBox->lineEdit()->setClearButtonEnabled(true);
    m_queryDevices = new QStringListModel(m_QueryDevice_ComboBox);
    m_QueryDevice_ComboBox->setModel(m_queryDevices);
    m_QueryDevice_ComboBox->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_QueryDevice_ComboBox->setMinimumContentsLength(12);
    m_QueryDevice_ComboBox->setMaximumWidth(280);
    m_QueryDevice_ComboBox->setMaxVisibleItems(16);
    if (auto *popup = qobject_cast<QListView *>(m_QueryDevice_ComboBox->view()))
        popup->setUniformItemSizes(true);
    m_query_Label->setBuddy(m_QueryDevice_ComboBox);

    m_count_Label = new QLabel;
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_query_Label);
    layout->addWidget(m_QueryDevice_ComboBox, 3);
    layout->addWidget(m_count_Label);
    layout->addStretch(1);
    return row;
}

QLayout *DeviceSelection::createButtonRow()
{
    m_lists_PushButton = new QPushButton;
    Style::setRole(m_lists_PushButton, Style::Role::Link);
    connect(m_lists_PushButton, &QPushButton::clicked, this, &DeviceSelection::chooseFromLists);
    m_newDesign_PushButton = new QPushButton;
    Style::setRole(m_newDesign_PushButton, Style::Role::Action);
    connect(m_newDesign_PushButton, &QPushButton::clicked, this, &DeviceSelection::NewDesign_PushButton_Clicked);

    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_lists_PushButton);
    row->addWidget(m_newDesign_PushButton);
    return row;
}

void DeviceSelection::createTable()
{
    m_DeviceTableWidget = new QTableView;
    m_DeviceTableWidget->setModel(m_shownDevices);
    m_DeviceTableWidget->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_DeviceTableWidget->setSelectionMode(QAbstractItemView::SingleSelection);
    m_DeviceTableWidget->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_DeviceTableWidget->setAlternatingRowColors(true);
    m_DeviceTableWidget->setTabKeyNavigation(false);
    m_DeviceTableWidget->setShowGrid(false);
    m_DeviceTableWidget->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_DeviceTableWidget->verticalHeader()->hide();
    m_DeviceTableWidget->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_DeviceTableWidget->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 10);
    m_DeviceTableWidget->horizontalHeader()->setHighlightSections(false);
    m_DeviceTableWidget->horizontalHeader()->setStretchLastSection(true);
    m_DeviceTableWidget->horizontalHeader()->setSortIndicator(DeviceTableModel::Device, Qt::AscendingOrder);
    m_DeviceTableWidget->setSortingEnabled(true);

    connect(m_DeviceTableWidget->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { TableLineClickedSlot(current.row(), current.column()); });
    connect(m_DeviceTableWidget, &QTableView::doubleClicked, this,
            [this](const QModelIndex &index) { TableLineDoubleClickedSlot(index.row(), index.column()); });
    m_DeviceTableWidget->installEventFilter(this);
}

bool DeviceSelection::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_DeviceTableWidget && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            NewDesign_PushButton_Clicked();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void DeviceSelection::setColumnWidths()
{
    const QFontMetrics metrics(m_DeviceTableWidget->font());
    for (int column = 0; column < DeviceTableModel::ColumnCount; ++column) {
        QString longest;
        for (const DeviceTableModel::Row &row : m_devices->rows()) {
            const QString &text = row.text[static_cast<std::size_t>(column)];
            if (text.size() > longest.size())
                longest = text;
        }
        // A title that the table is not sorted by needs no room for the arrow: the margins are enough for one.
        const QString title = m_devices->headerData(column, Qt::Horizontal).toString().trimmed();
        const int header = m_DeviceTableWidget->horizontalHeader()->fontMetrics().horizontalAdvance(title) + 24;
        m_DeviceTableWidget->setColumnWidth(column, qMax(header, metrics.horizontalAdvance(longest) + 14));
    }
}

void DeviceSelection::TranslatorUI()
{
    m_catalogue.TranslatorUI();
    m_devices->TranslatorUI();
    m_treeView->TranslatorUI();
    m_filterBar->TranslatorUI();
    m_MCUSerialInfo_TextBrowser->TranslatorUI();
    m_checkAll_PushButton->setText(tr("Check all"));
    m_checkNone_PushButton->setText(tr("Check none"));
    m_query_Label->setText(tr("Device Search:"));
    m_newDesign_PushButton->setText(tr("New Design"));
    m_lists_PushButton->setText(tr("Choose from lists..."));
    m_count_Label->setText(tr("MCUs List: ") + QString::number(m_shownDevices->rowCount()) + tr(" items"));
    m_emptyTable_Label->setText(emptyTableText());
    setColumnWidths();
}

QStringList DeviceSelection::GetSelectedDevicesList() const
{
    const std::vector<bool> checked = m_treeView->checkedSeries();
    QStringList devices;
    for (const DeviceTableModel::Row &row : m_devices->rows()) {
        if (checked[static_cast<std::size_t>(row.seriesIndex)])
            devices.append(row.device.DeviceName);
    }
    return devices;
}

void DeviceSelection::RefreshDeviceTable()
{
    AddDeviceToQueryComboBox(GetSelectedDevicesList());
    m_shownDevices->setCheckedSeries(m_treeView->checkedSeries());
    showRows();
}

void DeviceSelection::AddDeviceToQueryComboBox(const QStringList &devices)
{
    const QSignalBlocker blocker(m_QueryDevice_ComboBox);
    m_queryDevices->setStringList(devices);
    m_QueryDevice_ComboBox->setCurrentIndex(-1);
    m_QueryDevice_ComboBox->clearEditText();
    Style::setInvalid(m_QueryDevice_ComboBox, false);
}

void DeviceSelection::QueryActived(int)
{
    QueryEditingFinished();
}

void DeviceSelection::QueryEditingFinished()
{
    if (m_QueryDevice_ComboBox->view()->isVisible())
        return;
    const bool fits = searchFits();
    Style::setInvalid(m_QueryDevice_ComboBox, !fits);
    if (!fits)
        return;
    m_shownDevices->setSearch(m_QueryDevice_ComboBox->currentText().toUpper());
    showRows();
}

bool DeviceSelection::searchFits() const
{
    const QString wanted = m_QueryDevice_ComboBox->currentText().toUpper();
    const QStringList devices = m_queryDevices->stringList();
    return wanted.isEmpty() ||
           std::any_of(devices.begin(), devices.end(), [&](const QString &device) { return device.contains(wanted); });
}

/// The one device that is found is chosen; of several the first is selected, for a second Return or the arrow keys.
void DeviceSelection::takeFound()
{
    if (!searchFits() || m_shownDevices->rowCount() == 0)
        return;
    if (m_shownDevices->rowCount() == 1)
        NewDesign_PushButton_Clicked();
    else
        m_DeviceTableWidget->setFocus();
}

void DeviceSelection::showRows()
{
    const int count = m_shownDevices->rowCount();
    m_count_Label->setText(tr("MCUs List: ") + QString::number(count) + tr(" items"));
    m_newDesign_PushButton->setEnabled(count > 0);
    if (count == 0) {
        m_emptyTable_Label->setText(emptyTableText());
        m_tableStack->setCurrentWidget(m_emptyTable_Label);
        return;
    }
    m_tableStack->setCurrentWidget(m_DeviceTableWidget);
    m_DeviceTableWidget->selectRow(0);
    m_DeviceTableWidget->scrollToTop();
    TableLineClickedSlot(0, 0);
}

QString DeviceSelection::emptyTableText() const
{
    if (m_catalogue.isEmpty())
        return tr("There are no devices to choose from.") + QLatin1String("\n\n") + XmlProblemText(m_catalogueProblem);
    if (m_queryDevices->rowCount() == 0)
        return tr("No series is checked. Check one in the tree on the left to list its devices.");
    return tr("No device of the checked series passes the search and the filters.");
}

void DeviceSelection::TableLineClickedSlot(int row, int)
{
    const QString series = cellText(row, DeviceTableModel::Series);
    if (m_catalogue.findSeries(series))
        m_MCUSerialInfo_TextBrowser->showSeries(series);
}

void DeviceSelection::TableLineDoubleClickedSlot(int row, int)
{
    const QString device = cellText(row, DeviceTableModel::Device);
    const QString series = cellText(row, DeviceTableModel::Series);
    const QString package = cellText(row, DeviceTableModel::Package);
    if (!device.isEmpty() && !series.isEmpty() && !package.isEmpty())
        emit deviceChosen(series, device, package);
}

void DeviceSelection::NewDesign_PushButton_Clicked()
{
    const QModelIndex current = m_DeviceTableWidget->currentIndex();
    if (current.isValid())
        TableLineDoubleClickedSlot(current.row(), current.column());
}

void DeviceSelection::chooseFromLists()
{
    New_Design_Select dialog(m_catalogue, m_xmlOperation, this);
    if (dialog.exec() == QDialog::Accepted)
        emit deviceChosen(dialog.Get_MCUSerialName(), dialog.Get_MCUName(), dialog.Get_MCUPackage());
}

QString DeviceSelection::cellText(int row, int column) const
{
    return m_shownDevices->index(row, column).data().toString();
}

} // namespace ChipLoom
