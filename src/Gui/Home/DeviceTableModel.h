#pragma once

#include "Model/ShareParameter.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

#include <array>
#include <vector>

namespace ChipLoom {

class DeviceCatalogue;

/// Sum of the decimal numbers in a text such as "64KB+32KB", "240MHz" or "LQFP48"; a piece that is no number counts 0.
int getSortNumber(const QString &text);

/// Sort key of such a text: the sum in five digits, and behind it the package family "LQFP", "QFN" or "TSSOP" with
/// which the text begins.
QString getSortString(const QString &text);

/// The memory as the catalogue writes it, with the largest size first where the device has a choice.
QString sramText(const MCUDeviceStruct &device);

/// All devices of the catalogue, in its order, one row each.
class DeviceTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Device, Series, ProductLine, Core, Frequency, Package, Flash, Sram, Gpios, ColumnCount };

    struct Row
    {
        MCUDeviceStruct device;
        int seriesIndex; ///< of the series that lists the device, counted over all lines
        std::array<QString, ColumnCount> text;
        std::array<QString, ColumnCount> sortKey;
        int flashKB;
        int sramKB; ///< the largest
        int pinCount;
        int frequencyMHz;
    };

    /// The catalogue must outlive the model.
    explicit DeviceTableModel(const DeviceCatalogue &catalogue, QObject *parent = nullptr);

    const std::vector<Row> &rows() const { return m_rows; }
    /// Renews headings and cells after a change of language.
    void TranslatorUI();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void fillTexts(Row &row) const;

    const DeviceCatalogue &m_catalogue;
    std::vector<Row> m_rows;
};

/// What a device must meet beside its series and the search. An empty or zero field lets all pass.
struct DeviceFilter
{
    QString package;
    int minFlashKB = 0;
    int minSramKB = 0;
    int pinCount = 0;
    int minFrequencyMHz = 0;

    bool operator==(const DeviceFilter &) const = default;
};

/// The rows of checked series whose name contains the search text and which pass the filter, sorted by key.
class DeviceFilterProxy : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit DeviceFilterProxy(DeviceTableModel &devices, QObject *parent = nullptr);

    /// One flag for each series of the catalogue, counted over all lines. Forgets the search text.
    void setCheckedSeries(std::vector<bool> checked);
    /// Case-sensitive; empty for all.
    void setSearch(const QString &text);
    void setFilter(const DeviceFilter &filter);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    void refilter();

    const DeviceTableModel &m_devices;
    std::vector<bool> m_checked;
    QString m_search;
    DeviceFilter m_filter;
};

} // namespace ChipLoom
