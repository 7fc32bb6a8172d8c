// The search for a typed SCLK beside the same search as three plain loops, and whole edits of a page.
//
//   cmake --build --preset release --target ClockConfigBench && build/release/bin/ClockConfigBench

#include "Base/Scheduler.h"
#include "Base/UserPrompt.h"
#include "ClockConfig/LiteralSearch.h"
#include "ClockConfig/ZV32MCUPLL.h"
#include "ScriptedPrompt.h"

#include <benchmark/benchmark.h>

using namespace ChipLoom;

namespace {

constexpr double Unreachable = 191.33719; // no early end: nothing hits it exactly

/// F455 has the largest table of output dividers. `hext` 25 MHz is the largest input of a page; 300 MHz fits no range,
/// so that all 16 * 15 * 470 combinations are tried.
ZV32ConfigCLK clockWith(double hext)
{
    ZV32ConfigCLK clock(ZV32F455);
    clock.InitSeriesValues();
    clock.Set_PLLRC(PLLRC_HEXT);
    clock.Set_HEXT_Value(hext);
    clock.Set_SYSCLKValue(Unreachable);
    return clock;
}

void plainLoops(benchmark::State &state)
{
    const ZV32ConfigCLK clock = clockWith(double(state.range(0)));
    for (auto _ : state) {
        LiteralSearch search(clock);
        search.fromSysclk();
        benchmark::DoNotOptimize(search.sclk);
    }
}

void search(benchmark::State &state)
{
    const ZV32ConfigCLK clock = clockWith(double(state.range(0)));
    for (auto _ : state) {
        ZV32ConfigCLK fast = clock;
        fast.CalculateParam_From_SYSCLK();
        benchmark::DoNotOptimize(fast);
    }
}

struct Page
{
    Page() : page(*clockSeries(ZV32F455), scheduler, prompt)
    {
        page.Set_hext_enable_flag(true, false);
        page.apply(ClockChange::enter(ClockField::Hext, QStringLiteral("25")));
        page.apply(ClockChange::choose(ClockField::PllRc, PLLRC_HEXT));
        page.Set_USB_Flag(true);
        page.apply(ClockChange::choose(ClockField::HickToUsb, HICK_TO_USB_DISABLE));
    }

    Scheduler scheduler;
    ScriptedPrompt prompt{ScriptedPrompt::Last};
    ZV32MCUPLL page;
};

void editTypedSclk(benchmark::State &state)
{
    Page page;
    const QString texts[] = {QStringLiteral("191.33719"), QStringLiteral("77.77777")};
    int turn = 0;
    for (auto _ : state)
        page.page.apply(ClockChange::enter(ClockField::Sclk, texts[turn ^= 1]));
}

void editUsbDivider(benchmark::State &state)
{
    Page page;
    page.page.apply(ClockChange::choose(ClockField::SclkSelect, SYSCLK_HICK));
    const double dividers[] = {13, 20};
    int turn = 0;
    for (auto _ : state)
        page.page.apply(ClockChange::choose(ClockField::PllFu, dividers[turn ^= 1]));
}

void listOfSolutions(benchmark::State &state)
{
    Page page;
    page.page.apply(ClockChange::enter(ClockField::Sclk, QStringLiteral("191.33719")));
    for (auto _ : state)
        benchmark::DoNotOptimize(page.page.solutions(8));
}

} // namespace

BENCHMARK(plainLoops)->Arg(25)->Arg(300)->Unit(benchmark::kMicrosecond);
BENCHMARK(search)->Arg(25)->Arg(300)->Unit(benchmark::kMicrosecond);
BENCHMARK(editTypedSclk)->Unit(benchmark::kMicrosecond);
BENCHMARK(editUsbDivider)->Unit(benchmark::kMicrosecond);
BENCHMARK(listOfSolutions)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
