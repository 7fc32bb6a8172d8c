#pragma once

#include "Design/Design.h"
#include "Design/ModuleConfiguration.h"
#include "ScriptedPrompt.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>

namespace ChipLoom {

/// What is measured: the largest device beside one of a hundred pins, so that one sees what size costs. The argument of
/// a benchmark is the number of pins.
struct BenchDevice
{
    int pins;
    const char *series, *device, *package;
    const char *example; ///< a design of it with nearly everything on
};

inline constexpr std::array<BenchDevice, 2> BenchDevices{{
    {100, "ZV32F407", "ZV32F407VGT7", "LQFP100", CHIPLOOM_SOURCE_DIR "/examples/everything.ZVWP"},
    {144, "ZV32F437", "ZV32F437ZMT7", "LQFP144", CHIPLOOM_SOURCE_DIR "/examples/everything-144.ZVWP"},
}};

inline void onBothDevices(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgName("pins");
    for (const BenchDevice &device : BenchDevices)
        benchmark->Arg(device.pins);
}

inline const BenchDevice &deviceOf(const benchmark::State &state)
{
    return *std::find_if(BenchDevices.begin(), BenchDevices.end(),
                         [&](const BenchDevice &device) { return device.pins == state.range(0); });
}

inline AppPaths paths()
{
    return {QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)};
}

inline void openDevice(Design &design, benchmark::State &state)
{
    const BenchDevice &device = deviceOf(state);
    if (!design.NewDesign(device.series, device.device, device.package))
        state.SkipWithError("no device database beside the programs");
}

/// The example of the device, without its middlewares: only some have a generator.
inline bool openExample(Design &design, const BenchDevice &device)
{
    if (!design.OpenDesign(device.example))
        return false;
    for (const PeripheralsBaseInfo &entry : design.middlewares()) {
        for (const auto &control : design.module(entry.InstanceName)->controls())
            design.apply({"mode", entry.InstanceName + '/' + control->modeName(), {}});
    }
    design.scheduler().drain();
    return true;
}

/// The device, open, with nothing on.
struct OpenDesign
{
    explicit OpenDesign(benchmark::State &state)
    {
        openDevice(design, state);
        state.SetLabel(deviceOf(state).device);
    }

    ScriptedPrompt prompt;
    Design design{paths(), prompt};
};

} // namespace ChipLoom
