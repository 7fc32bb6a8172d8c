// How fast the state of a design answers, beside what one pass over the same pins or bytes costs.
#include "Design/PinMenu.h"

#include "BenchDevices.h"

#include <QCoreApplication>
#include <QFile>

using namespace ChipLoom;

namespace {

int passOverPins(const DevicePinInfo &info)
{
    int configured = 0;
    for (const MCUPinsBaseInfo &pin : info.m_deviceBaseInfoList) {
        for (const PinSignalStruct &signal : pin.pinSignalsList)
            configured += signal.configStatus != Not_Config;
    }
    return configured;
}

void openTheDevice(benchmark::State &state)
{
    OpenDesign open(state);
    for (auto _ : state) {
        openDevice(open.design, state);
        benchmark::DoNotOptimize(open.design.pinInfo().positions().size());
    }
}
BENCHMARK(openTheDevice)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

void openFloorReadFile(benchmark::State &state)
{
    OpenDesign open(state);
    for (auto _ : state) {
        QFile file(open.design.deviceFile());
        if (!file.open(QIODevice::ReadOnly))
            state.SkipWithError("cannot read the device file");
        benchmark::DoNotOptimize(file.readAll().size());
    }
}
BENCHMARK(openFloorReadFile)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

/// The pins of the device without peripherals that listen.
struct PinsAlone
{
    explicit PinsAlone(benchmark::State &state)
    {
        const XMLOperation database(paths());
        const BenchDevice &device = deviceOf(state);
        const QString file = database.deviceFile(device.series, device.device);
        pins.load(device.series, DevicePinInfo(database.GetDeviceFile(file), file));
        if (pins.pinInfo().isEmpty())
            state.SkipWithError("no device database beside the programs");
        state.SetLabel(device.device);
    }

    PinAssignment pins;
};

/// A signal placed by hand, to and fro. When told, a receiver for each peripheral walks the pins once, as a peripheral
/// does that has nothing else to decide.
void placeByHand(benchmark::State &state, int receivers)
{
    PinsAlone alone(state);
    for (int i = 0; i < receivers; ++i) {
        QObject::connect(&alone.pins, &PinAssignment::SendAllConfigedSignals, &alone.pins,
                         [](const DevicePinInfo *info) { benchmark::DoNotOptimize(passOverPins(*info)); });
    }
    bool there = false;
    for (auto _ : state) {
        alone.pins.checkedLibAction(there ? "PB6" : "PA9", "USART1_TX", true);
        there = !there;
    }
}
BENCHMARK_CAPTURE(placeByHand, stateAlone, 0)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(placeByHand, sixtyReceiversTold, 60)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

/// The same with the peripherals of the design.
void placeByHandInDesign(benchmark::State &state)
{
    OpenDesign open(state);
    bool there = false;
    for (auto _ : state) {
        open.design.apply(DesignChange::placeSignal(there ? "PB6" : "PA9", "USART1_TX"));
        there = !there;
    }
}
BENCHMARK(placeByHandInDesign)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

const QList<ModeSignal> usart{{true, "USART1_TX", "MuxOutputPushPull", false}, {true, "USART1_RX", "Input", false}};

void requestAndWithdraw(benchmark::State &state)
{
    PinsAlone alone(state);
    for (auto _ : state) {
        alone.pins.ReciveIPPinSignals({}, usart, false, "USART1");
        alone.pins.ReciveClearIPPinSignals(usart, false, "USART1");
    }
}
BENCHMARK(requestAndWithdraw)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

void tryRequest(benchmark::State &state)
{
    PinsAlone alone(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(alone.pins.unplacedByRequest({}, usart, "USART1").size());
}
BENCHMARK(tryRequest)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

void menuOfAPin(benchmark::State &state)
{
    OpenDesign open(state);
    const int pin = open.design.pinInfo().validPinNamed("PA9");
    const int position = pin < 0 ? 0 : open.design.pinInfo().pin(pin).pinNumber;
    for (auto _ : state)
        benchmark::DoNotOptimize(pinMenu(open.design, position).groups.size());
}
BENCHMARK(menuOfAPin)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

void searchText(benchmark::State &state)
{
    OpenDesign open(state);
    PinSearch &search = open.design.pins().search();
    for (auto _ : state) {
        search.QuerySignalName("usart");
        search.CancelQuerySignalNameAllPin();
    }
}
BENCHMARK(searchText)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

void saveChangeRestore(benchmark::State &state)
{
    OpenDesign open(state);
    for (auto _ : state) {
        const DesignSnapshot snapshot = open.design.snapshot();
        open.design.apply(DesignChange::placeSignal("PA9", "USART1_TX"));
        open.design.restore(snapshot);
    }
}
BENCHMARK(saveChangeRestore)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

/// What the receivers' passes cost at least.
void floorPassOverPins(benchmark::State &state, int passes)
{
    PinsAlone alone(state);
    for (auto _ : state) {
        for (int i = 0; i < passes; ++i)
            benchmark::DoNotOptimize(passOverPins(alone.pins.pinInfo()));
    }
}
BENCHMARK_CAPTURE(floorPassOverPins, once, 1)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(floorPassOverPins, sixtyTimes, 60)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
