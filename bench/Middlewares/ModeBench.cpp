// How fast modes and parameters answer with every peripheral on that can be on, beside one pass over pins and modes. A
// change must stay below a frame (16 ms).
#include "Middlewares/Middlewares.h"

#include "BenchDevices.h"

#include <QCoreApplication>

#include <ctime>

using namespace ChipLoom;

namespace {

QString itemName(const ModeControl &control, int index)
{
    if (index == 0)
        return {};
    return control.isCheckBox() ? QStringLiteral("TRUE") : control.items().at(index - 1).Name;
}

/// Processor time, since other programs share the machine.
double microseconds()
{
    return double(std::clock()) * 1e6 / CLOCKS_PER_SEC;
}

/// The device with the first entry chosen of every mode that has one to choose, a port and a timer ahead.
struct FullDesign
{
    explicit FullDesign(benchmark::State &state)
    {
        registerMiddlewares(design);
        openDevice(design, state);
        for (const auto &part : design.parts()) {
            if (ModuleConfiguration *module = design.module(part->instanceName()))
                modules.push_back(module);
        }
        design.apply({"mode", "USART1/Mode", "Asynchronous"});
        design.apply({"mode", "TMR1/Activated", "TRUE"});
        int on = 0;
        for (ModuleConfiguration *module : modules) {
            for (const auto &control : module->controls()) {
                for (int index = 1; index < control->count() && !control->isOn(); ++index) {
                    if (control->itemCanbeChoosed(index))
                        module->chooseItem(control->modeName(), itemName(*control, index));
                }
            }
            on += module->GetIPValidFlag();
        }
        design.scheduler().drain();
        state.SetLabel(
            QStringLiteral("%1, %2 of %3 modules on").arg(design.device()).arg(on).arg(modules.size()).toStdString());
    }

    ScriptedPrompt prompt{0};
    Design design{paths(), prompt};
    std::vector<ModuleConfiguration *> modules;
};

void floorPassOverPinsAndModes(benchmark::State &state)
{
    FullDesign full(state);
    for (auto _ : state) {
        int count = 0;
        for (const MCUPinsBaseInfo &pin : full.design.pinInfo().m_deviceBaseInfoList) {
            for (const PinSignalStruct &signal : pin.pinSignalsList)
                count += signal.configStatus != Not_Config;
        }
        for (const ModuleConfiguration *module : full.modules) {
            for (const auto &control : module->controls()) {
                for (int index = 1; index < control->count(); ++index)
                    count += control->itemCanbeChoosed(index);
            }
        }
        benchmark::DoNotOptimize(count);
    }
}
BENCHMARK(floorPassOverPinsAndModes)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

/// A port off and on again: two changes.
void changeOneMode(benchmark::State &state)
{
    FullDesign full(state);
    bool on = true;
    for (auto _ : state) {
        on = !on;
        if (!full.design.apply({"mode", "USART1/Mode", on ? "Asynchronous" : "Disable"}))
            return state.SkipWithError("the port cannot be switched");
        full.design.scheduler().drain();
    }
}
BENCHMARK(changeOneMode)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

/// Every mode that is on goes off and the design is put back; the counter tells the slowest of these changes.
void slowestModeChange(benchmark::State &state)
{
    FullDesign full(state);
    const DesignSnapshot before = full.design.snapshot();
    double slowest = 0;
    QString place;
    for (auto _ : state) {
        for (const ModuleConfiguration *module : full.modules) {
            for (const auto &control : module->controls()) {
                if (!control->isOn())
                    continue;
                const double start = microseconds();
                full.design.apply({"mode", module->instanceName() + '/' + control->modeName(), {}});
                full.design.scheduler().drain();
                const double cost = microseconds() - start;
                if (cost > slowest) {
                    slowest = cost;
                    place = module->instanceName() + '/' + control->modeName();
                }
                full.design.restore(before);
            }
        }
    }
    state.counters["slowest_us"] = slowest;
    state.SetLabel(place.toStdString());
}
BENCHMARK(slowestModeChange)->Apply(onBothDevices)->Unit(benchmark::kMillisecond)->Iterations(3);

void rebuildParameters(benchmark::State &state, const char *instance)
{
    FullDesign full(state);
    ModuleConfiguration *module = full.design.module(QLatin1String(instance));
    if (!module)
        return state.SkipWithError("no such module on the device");
    state.SetLabel(
        QStringLiteral("%1 parameters").arg(module->parameters().GetRefParameterList().size()).toStdString());
    for (auto _ : state)
        module->parameters().RefreshParams();
}
BENCHMARK_CAPTURE(rebuildParameters, ofAPort, "USART1")->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(rebuildParameters, ofATimer, "TMR1")->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(rebuildParameters, ofTheKernel, "FREERTOS")->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

void editOneParameter(benchmark::State &state)
{
    FullDesign full(state);
    bool other = false;
    for (auto _ : state) {
        other = !other;
        full.design.apply({"param", "USART1/BaudRate", other ? "9600" : "115200"});
        full.design.scheduler().drain();
    }
}
BENCHMARK(editOneParameter)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
