// Reading the database, beside the floor of each: reading the same file and tokenising it, keeping nothing.
// The names say what is read; a pair with the same ending belongs together. Needs the composed database in ZV32DB
// beside the programs, and chiploom-cli.

#include "Model/PeripheralTree.h"
#include "Model/XmlTree.h"
#include "Model/xmloperation.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

using namespace ChipLoom;

namespace {

constexpr int ManyDevices = 10'000;

AppPaths shippedPaths()
{
    return {QStringLiteral(CHIPLOOM_BIN_DIR), QDir::homePath()};
}

/// A catalogue with as many devices as a maker's whole range, in thirty series.
AppPaths manyPaths()
{
    static const QTemporaryDir folder;
    const AppPaths paths(folder.path(), folder.path());
    const QString file = XMLOperation(paths).mcuListFile();
    if (QFile::exists(file))
        return paths;
    QByteArray content = "<List><E term=\"ProductLinesList\"><L Line=\"All\" InfoEN=\"a\" InfoCH=\"b\"/></E>"
                         "<E term=\"All\">";
    for (int series = 0; series < 30; ++series)
        content += "<S Serial=\"ZV32F" + QByteArray::number(400 + series) + "\" InfoEN=\"Series\" InfoCH=\"x\"/>";
    content += "</E>";
    for (int series = 0; series < 30; ++series) {
        const QByteArray name = "ZV32F" + QByteArray::number(400 + series);
        content += "<E term=\"" + name + "\">";
        for (int i = series; i < ManyDevices; i += 30)
            content += "<Device Name=\"" + name + "X" + QByteArray::number(i) +
                       "\" Package=\"LQFP100\" Flash=\"1024KB\" SRAM=\"96KB\" MaxSRAM=\"224KB\" Core=\"Cortex-M4\" "
                       "Frequency=\"240MHz\" GPIO=\"80\"/>\n";
        content += "</E>";
    }
    QDir().mkpath(paths.databaseDir());
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(content + "</List>") < 0)
        qFatal("no room for the catalogue");
    return paths;
}

QString largestFile(const QString &pattern)
{
    QString largest;
    qint64 size = -1;
    QDirIterator files(shippedPaths().databaseDir() + "/device", {pattern}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        if (files.fileInfo().size() > size) {
            size = files.fileInfo().size();
            largest = files.filePath();
        }
    }
    return largest;
}

QString largestDevice()
{
    return largestFile(QStringLiteral("ZV32*.xml"));
}

QString largestPeripheral()
{
    return largestFile(QStringLiteral("*-V*.xml"));
}

void tokenise(benchmark::State &state, const QString &path)
{
    qint64 bytes = 0;
    for (auto _ : state) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return state.SkipWithError("no such file");
        QXmlStreamReader xml(file.readAll());
        while (!xml.atEnd())
            xml.readNext();
        bytes += xml.characterOffset();
    }
    state.SetBytesProcessed(bytes);
}

void floorCatalogueShipped(benchmark::State &state)
{
    tokenise(state, XMLOperation(shippedPaths()).mcuListFile());
}

void floorCatalogueOf10000(benchmark::State &state)
{
    tokenise(state, XMLOperation(manyPaths()).mcuListFile());
}

void floorLargestDevice(benchmark::State &state)
{
    tokenise(state, largestDevice());
}

void floorLargestPeripheral(benchmark::State &state)
{
    tokenise(state, largestPeripheral());
}

void readCatalogue(benchmark::State &state, const AppPaths &paths)
{
    const XMLOperation reader(paths);
    qint64 devices = 0;
    for (auto _ : state) {
        devices = 0;
        for (const ProductLineStruct &line : reader.GetProductLinesList()) {
            for (const MCUSerialStruct &series : line.MCUSerialList)
                devices += series.MCUDeviceList.size();
        }
        if (devices == 0)
            return state.SkipWithError("the catalogue lists nothing");
    }
    state.counters["devices"] = static_cast<double>(devices);
}

void readCatalogueShipped(benchmark::State &state)
{
    readCatalogue(state, shippedPaths());
}

void readCatalogueOf10000(benchmark::State &state)
{
    readCatalogue(state, manyPaths());
}

void readLargestDevice(benchmark::State &state)
{
    const XMLOperation reader(shippedPaths());
    const QString file = largestDevice();
    for (auto _ : state) {
        const MCUDeviceFile device = reader.GetDeviceFile(file);
        if (device.PinsList.isEmpty())
            return state.SkipWithError("the device has no pins");
    }
    state.SetLabel(QFileInfo(file).fileName().toStdString());
}

void readLargestPeripheral(benchmark::State &state)
{
    const XMLOperation reader(shippedPaths());
    const QString file = largestPeripheral();
    for (auto _ : state) {
        if (PeripheralTree(reader.GetIPXMLInfo(file)).isEmpty())
            return state.SkipWithError("the file is empty");
    }
    state.SetLabel(QFileInfo(file).fileName().toStdString());
}

// Every parameter of the largest peripheral looked up by name: walking the tree, and by the index.
template <class LookUp> void lookUp(benchmark::State &state, LookUp lookUp)
{
    const PeripheralTree tree(readXml(largestPeripheral()).root);
    const QList<RefParameter> all = XMLOperation::GetXMLFileAllRefParameterList(QString(), tree.root());
    for (auto _ : state) {
        for (const RefParameter &parameter : all)
            benchmark::DoNotOptimize(lookUp(tree, parameter.Name));
    }
    state.counters["parameters"] = all.size();
}

void lookUpByWalking(benchmark::State &state)
{
    lookUp(state, [](const PeripheralTree &tree, const QString &name) {
        return XMLOperation::GetRefParameter(QString(), name, tree.root());
    });
}

void lookUpByIndex(benchmark::State &state)
{
    lookUp(state, [](const PeripheralTree &tree, const QString &name) { return tree.GetRefParameter({}, name); });
}

void start(benchmark::State &state, const QStringList &arguments)
{
    for (auto _ : state) {
        QProcess process;
        process.start(QStringLiteral(CHIPLOOM_BIN_DIR "/chiploom-cli"), arguments);
        if (!process.waitForFinished() || process.exitCode() != 0)
            return state.SkipWithError("chiploom-cli failed");
    }
}

void floorStartCli(benchmark::State &state)
{
    start(state, {QStringLiteral("--version")});
}

void startCliDevices(benchmark::State &state)
{
    start(state, {QStringLiteral("devices")});
}

void startCliDevicesOf10000(benchmark::State &state)
{
    start(state, {QStringLiteral("--database"), manyPaths().databaseDir(), QStringLiteral("devices")});
}

} // namespace

BENCHMARK(floorCatalogueShipped);
BENCHMARK(readCatalogueShipped);
BENCHMARK(floorCatalogueOf10000)->Unit(benchmark::kMillisecond);
BENCHMARK(readCatalogueOf10000)->Unit(benchmark::kMillisecond);
BENCHMARK(floorLargestDevice)->Unit(benchmark::kMicrosecond);
BENCHMARK(readLargestDevice)->Unit(benchmark::kMicrosecond);
BENCHMARK(floorLargestPeripheral)->Unit(benchmark::kMicrosecond);
BENCHMARK(readLargestPeripheral)->Unit(benchmark::kMicrosecond);
BENCHMARK(lookUpByWalking)->Unit(benchmark::kMicrosecond);
BENCHMARK(lookUpByIndex)->Unit(benchmark::kMicrosecond);
BENCHMARK(floorStartCli)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(startCliDevices)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(startCliDevicesOf10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_MAIN();
