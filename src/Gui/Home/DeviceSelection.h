#pragma once

#include "Gui/Home/DeviceCatalogue.h"
#include "Gui/Home/DeviceTableModel.h"
#include "Model/xmloperation.h"

#include <QWidget>

class QLabel;
class QLayout;
class QPushButton;
class QStackedLayout;
class QStringListModel;
class QTableView;

namespace ChipLoom {

class DeviceFilterBar;
class SearchBox;
class SeriesInfoBrowser;
class SeriesTree;

/// The page of the home window on which a device is chosen: the tree of series, the search and the filters, the table
/// of devices and the information page of the chosen device's series.
class DeviceSelection : public QWidget
{
    Q_OBJECT
public:
    explicit DeviceSelection(const XMLOperation &xml, QWidget *parent = nullptr);

    void TranslatorUI();

    /// Devices of all checked series, in the order of the tree.
    QStringList GetSelectedDevicesList() const;

    const DeviceCatalogue &catalogue() const { return m_catalogue; }

signals:
    /// A row was double-clicked or confirmed with Enter or by the button.
    void deviceChosen(const QString &series, const QString &device, const QString &package);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *createSeriesPane();
    QWidget *createTablePane();
    QWidget *createSearchRow();
    QLayout *createButtonRow();
    void createTable();
    void setColumnWidths();

    void RefreshDeviceTable();
    void AddDeviceToQueryComboBox(const QStringList &devices);
    void QueryActived(int index);
    void QueryEditingFinished();
    bool searchFits() const;
    void takeFound();
    void TableLineClickedSlot(int row, int column);
    void TableLineDoubleClickedSlot(int row, int column);
    void NewDesign_PushButton_Clicked();
    void chooseFromLists();

    /// After the rows of the table changed: the first row, the count, or what stands in an empty table's place.
    void showRows();
    QString emptyTableText() const;
    QString cellText(int row, int column) const;

    XMLOperation m_xmlOperation;
    DeviceCatalogue m_catalogue;
    XmlProblem m_catalogueProblem;
    DeviceTableModel *m_devices;
    DeviceFilterProxy *m_shownDevices;

    QPushButton *m_checkAll_PushButton;
    QPushButton *m_checkNone_PushButton;
    SeriesTree *m_treeView;
    QLabel *m_query_Label;
    SearchBox *m_QueryDevice_ComboBox;
    QStringListModel *m_queryDevices;
    DeviceFilterBar *m_filterBar;
    QStackedLayout *m_tableStack;
    QTableView *m_DeviceTableWidget;
    QLabel *m_emptyTable_Label;
    QLabel *m_count_Label;
    SeriesInfoBrowser *m_MCUSerialInfo_TextBrowser;
    QPushButton *m_lists_PushButton;
    QPushButton *m_newDesign_PushButton;
};

} // namespace ChipLoom
