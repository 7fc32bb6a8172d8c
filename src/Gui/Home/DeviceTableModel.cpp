#include "Gui/Home/DeviceTableModel.h"

#include "Gui/Home/DeviceCatalogue.h"

#include <utility>

namespace ChipLoom {

int getSortNumber(const QString &text)
{
    int sum = 0;
    for (QString piece : text.split(QLatin1Char('+'))) {
        for (const char *word : {"KB", "MHz", "LQFP", "QFN", "TSSOP", "(MCU)", "(BLE)"})
            piece.remove(QLatin1String(word));
        sum += piece.trimmed().toInt();
    }
    return sum;
}

QString getSortString(const QString &text)
{
    QString key = QStringLiteral("%1").arg(getSortNumber(text), 5, 10, QLatin1Char('0'));
    for (const char *family : {"LQFP", "QFN", "TSSOP"}) {
        if (text.startsWith(QLatin1String(family)))
            return key + QLatin1String(family);
    }
    return key;
}

QString sramText(const MCUDeviceStruct &device)
{
    if (device.DeviceMaxSRAM.isEmpty())
        return device.DeviceSRAM;
    return DeviceTableModel::tr("Max: ") + device.DeviceMaxSRAM + QLatin1String("    ") +
           DeviceTableModel::tr("Default: ") + device.DeviceSRAM;
}

namespace {

/// The first number in a package text: "LQFP48" has 48 pins.
int pinCountOf(const QString &package)
{
    QString digits;
    for (const QChar c : package) {
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            digits.append(c);
        else if (!digits.isEmpty())
            break;
    }
    return digits.toInt();
}

} // namespace

DeviceTableModel::DeviceTableModel(const DeviceCatalogue &catalogue, QObject *parent)
    : QAbstractTableModel(parent), m_catalogue(catalogue)
{
    int seriesIndex = 0;
    for (const ProductLineStruct &line : catalogue.lines()) {
        for (const MCUSerialStruct &series : line.MCUSerialList) {
            for (const MCUDeviceStruct &device : series.MCUDeviceList) {
                Row row;
                row.device = device;
                row.seriesIndex = seriesIndex;
                const QString sram = device.DeviceMaxSRAM.isEmpty() ? device.DeviceSRAM : device.DeviceMaxSRAM;
                row.flashKB = getSortNumber(device.DeviceFlash);
                row.sramKB = getSortNumber(sram);
                row.pinCount = pinCountOf(device.DevicePackage);
                row.frequencyMHz = getSortNumber(device.DeviceFrequency);
                fillTexts(row);
                m_rows.push_back(std::move(row));
            }
            ++seriesIndex;
        }
    }
}

void DeviceTableModel::fillTexts(Row &row) const
{
    const MCUDeviceStruct &device = row.device;
    row.text = {device.DeviceName,
                m_catalogue.GetDeviceSerialName(device.DeviceName),
                m_catalogue.GetDeviceProductLinelInfo(device.DeviceName),
                device.DeviceCore,
                device.DeviceFrequency,
                device.DevicePackage,
                device.DeviceFlash,
                sramText(device),
                device.DeviceGPIOs};
    row.sortKey = row.text;
    for (const Column column : {Frequency, Package, Flash, Gpios})
        row.sortKey[column] = getSortString(row.text[column]);
    row.sortKey[Sram] = getSortString(device.DeviceMaxSRAM.isEmpty() ? device.DeviceSRAM : device.DeviceMaxSRAM);
}

void DeviceTableModel::TranslatorUI()
{
    for (Row &row : m_rows)
        fillTexts(row);
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    if (!m_rows.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

int DeviceTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int DeviceTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant DeviceTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows[static_cast<std::size_t>(index.row())];
    const auto column = static_cast<std::size_t>(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return row.text[column];
    case Qt::UserRole:
        return row.sortKey[column];
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    default:
        return {};
    }
}

QVariant DeviceTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Device:
        return tr("Device");
    case Series:
        return tr("Device Serials");
    case ProductLine:
        return tr("Product Line");
    case Core:
        return tr("  Core  ");
    case Frequency:
        return tr("Frequency");
    case Package:
        return tr("Package");
    case Flash:
        return tr("Flash");
    case Sram:
        return tr("SRAM");
    case Gpios:
        return tr("GPIOs");
    default:
        return {};
    }
}

DeviceFilterProxy::DeviceFilterProxy(DeviceTableModel &devices, QObject *parent)
    : QSortFilterProxyModel(parent), m_devices(devices)
{
    setSourceModel(&devices);
}

void DeviceFilterProxy::setCheckedSeries(std::vector<bool> checked)
{
    m_checked = std::move(checked);
    m_search.clear();
    refilter();
}

void DeviceFilterProxy::setSearch(const QString &text)
{
    m_search = text;
    refilter();
}

void DeviceFilterProxy::setFilter(const DeviceFilter &filter)
{
    m_filter = filter;
    refilter();
}

void DeviceFilterProxy::refilter()
{
    // From the ground up: rows that come and go one by one cost each view a pass for every gap.
    invalidate();
}

bool DeviceFilterProxy::filterAcceptsRow(int sourceRow, const QModelIndex &) const
{
    const DeviceTableModel::Row &row = m_devices.rows()[static_cast<std::size_t>(sourceRow)];
    const auto series = static_cast<std::size_t>(row.seriesIndex);
    if (series >= m_checked.size() || !m_checked[series])
        return false;
    if (row.flashKB < m_filter.minFlashKB || row.sramKB < m_filter.minSramKB ||
        row.frequencyMHz < m_filter.minFrequencyMHz)
        return false;
    if (m_filter.pinCount != 0 && row.pinCount != m_filter.pinCount)
        return false;
    if (!m_filter.package.isEmpty() && row.device.DevicePackage != m_filter.package)
        return false;
    return m_search.isEmpty() || row.device.DeviceName.contains(m_search);
}

bool DeviceFilterProxy::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const auto column = static_cast<std::size_t>(left.column());
    const std::vector<DeviceTableModel::Row> &rows = m_devices.rows();
    return rows[static_cast<std::size_t>(left.row())].sortKey[column] <
           rows[static_cast<std::size_t>(right.row())].sortKey[column];
}

} // namespace ChipLoom
