// The device table with a catalogue of 10,000 devices, as a person feels it: the view is shown and takes the rows.
// The floor is one pass over the same names.

#include "Gui/Home/DeviceCatalogue.h"
#include "Gui/Home/DeviceTableModel.h"

#include <QApplication>
#include <QHeaderView>
#include <QTableView>

#include <benchmark/benchmark.h>

using namespace ChipLoom;

namespace {

constexpr int SeriesCount = 25;
constexpr int DevicesPerSeries = 400;

DeviceCatalogue largeCatalogue()
{
    const QStringList packages{"LQFP48", "LQFP64", "LQFP100", "QFN32", "QFN48", "TSSOP20"};
    QList<ProductLineStruct> lines;
    for (int i = 0; i < SeriesCount; ++i) {
        MCUSerialStruct series;
        series.SeriaName = QStringLiteral("ZV32F%1").arg(400 + i);
        for (int device = 0; device < DevicesPerSeries; ++device) {
            // Spread, so that neighbours in the table come from all over the catalogue.
            const int number = (device * 7919) % DevicesPerSeries;
            series.MCUDeviceList.append({series.SeriaName + QStringLiteral("R%1T7").arg(number, 3, 36, QChar('0')),
                                         packages.at(number % packages.size()),
                                         QString::number(16 << (number % 8)) + "KB", "32KB",
                                         number % 3 ? QString() : QStringLiteral("96KB"), "Cortex-M4",
                                         QString::number(120 + 24 * (number % 6)) + "MHz", QString::number(number)});
        }
        ProductLineStruct line;
        line.ProductLineName = QStringLiteral("Line %1").arg(i);
        line.MCUSerialList.append(series);
        lines.append(line);
    }
    return DeviceCatalogue(lines);
}

struct Table
{
    DeviceCatalogue catalogue = largeCatalogue();
    DeviceTableModel devices{catalogue};
    DeviceFilterProxy shown{devices};
    QTableView view;

    Table()
    {
        shown.setCheckedSeries(std::vector<bool>(SeriesCount, true));
        view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        view.setModel(&shown);
        view.sortByColumn(0, Qt::AscendingOrder);
        view.setSortingEnabled(true);
        view.resize(1000, 400);
        view.show();
        QApplication::processEvents();
    }
};

void BM_FloorPassOverNames(benchmark::State &state)
{
    Table table;
    for (auto _ : state) {
        int found = 0;
        for (const DeviceTableModel::Row &row : table.devices.rows())
            found += row.device.DeviceName.contains(QLatin1String("F41"));
        benchmark::DoNotOptimize(found);
    }
}

void BM_SearchAndBack(benchmark::State &state)
{
    Table table;
    for (auto _ : state) {
        table.shown.setSearch(QStringLiteral("A"));
        QApplication::processEvents();
        table.shown.setSearch({});
        QApplication::processEvents();
    }
}

void BM_FilterAndBack(benchmark::State &state)
{
    Table table;
    DeviceFilter filter;
    filter.minFlashKB = 256;
    for (auto _ : state) {
        table.shown.setFilter(filter);
        QApplication::processEvents();
        table.shown.setFilter({});
        QApplication::processEvents();
    }
}

void BM_UncheckASeriesAndBack(benchmark::State &state)
{
    Table table;
    std::vector<bool> some(SeriesCount, true);
    some[SeriesCount / 2] = false;
    for (auto _ : state) {
        table.shown.setCheckedSeries(some);
        QApplication::processEvents();
        table.shown.setCheckedSeries(std::vector<bool>(SeriesCount, true));
        QApplication::processEvents();
    }
}

void BM_SortByPackageAndBack(benchmark::State &state)
{
    Table table;
    for (auto _ : state) {
        table.view.sortByColumn(DeviceTableModel::Package, Qt::AscendingOrder);
        QApplication::processEvents();
        table.view.sortByColumn(DeviceTableModel::Device, Qt::AscendingOrder);
        QApplication::processEvents();
    }
}

BENCHMARK(BM_FloorPassOverNames)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchAndBack)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FilterAndBack)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UncheckASeriesAndBack)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SortByPackageAndBack)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
