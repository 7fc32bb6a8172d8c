// What the results beside the parameters cost: the solvers where they search longest, and one change of the clock with
// everything on, beside one pass over the same parameters.
#include "Design/Calculators/CanBitTiming.h"
#include "Design/Calculators/I2cTiming.h"
#include "Design/Calculators/TimerTiming.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/ModeControl.h"

#include "BenchDevices.h"

using namespace ChipLoom;

namespace {

// No sample point has a timing, so that all are tried, and then once more for the nearest.
void solveCanWorst(benchmark::State &state)
{
    const CanRequest request{.clockKHz = 999999,
                             .bitRate = 4997.3,
                             .samplePoint = 87.5,
                             .type = CAN_TYPE_NominalData,
                             .phase = CALC_Type_Nominal,
                             .tolerance = 1e-9};
    for (auto _ : state) {
        benchmark::DoNotOptimize(CAN_CalcResults(request));
        benchmark::DoNotOptimize(nearestCanTiming(request));
    }
}
BENCHMARK(solveCanWorst)->Unit(benchmark::kMicrosecond);

void solveI2cWorst(benchmark::State &state)
{
    // Every divider is tried; then what would fit is looked for.
    const I2cRequest request{
        .clockHz = 150e6, .mode = I2cMode::Standard, .speedHz = 50, .riseTime = 100, .fallTime = 50};
    for (auto _ : state)
        benchmark::DoNotOptimize(solveI2cTiming(request));
}
BENCHMARK(solveI2cWorst)->Unit(benchmark::kMicrosecond);

void solveTimerWorst(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(timerDivisionFor(240e6, 0.0123456789, 65535, 65535, false));
}
BENCHMARK(solveTimerWorst)->Unit(benchmark::kMicrosecond);

// Switches on whatever lets itself be switched on.
int switchEverythingOn(Design &design)
{
    int on = 0;
    for (const PeripheralsBaseInfo &entry : design.peripherals()) {
        ModuleConfiguration *module = design.module(entry.InstanceName);
        if (!module)
            continue;
        for (const std::unique_ptr<ModeControl> &control : module->controls()) {
            const QString item = control->isCheckBox()      ? QStringLiteral("TRUE")
                                 : control->items().empty() ? QString()
                                                            : control->items().front().Name;
            if (!item.isEmpty() && control->isEnabled())
                design.apply(
                    {QStringLiteral("mode"), entry.InstanceName + QLatin1Char('/') + control->modeName(), item});
        }
        on += module->GetIPValidFlag() ? 1 : 0;
    }
    design.scheduler().drain();
    return on;
}

void changeClockWithEverythingOn(benchmark::State &state)
{
    OpenDesign open(state);
    Design &design = open.design;
    state.counters["peripherals"] = switchEverythingOn(design);
    int turn = 0;
    for (auto _ : state) {
        design.apply({QStringLiteral("clock"), QStringLiteral("apb2div"), turn++ % 2 == 0 ? "4" : "8"});
        design.scheduler().drain();
    }
}
BENCHMARK(changeClockWithEverythingOn)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

void passOverParameters(benchmark::State &state)
{
    OpenDesign open(state);
    Design &design = open.design;
    switchEverythingOn(design);
    for (auto _ : state) {
        int parameters = 0;
        for (const PeripheralsBaseInfo &entry : design.peripherals()) {
            if (const ModuleConfiguration *module = design.module(entry.InstanceName)) {
                for (const RefParameter &parameter : module->parameters().GetRefParameterList())
                    parameters += parameter.CurrentValue.size();
            }
        }
        benchmark::DoNotOptimize(parameters);
    }
}
BENCHMARK(passOverParameters)->Apply(onBothDevices)->Unit(benchmark::kMicrosecond);

} // namespace
