// The pages of modes, parameters, pins and interrupts against one frame (16 ms): opening every page of both devices,
// and one change on a page that is shown, beside repainting the page with nothing changed.
#include "Gui/Modes/ModePage.h"
#include "Gui/Settings/GPIO_ConfigurationPage.h"
#include "Gui/Settings/NVIC_Settings.h"

#include "BenchDevices.h"
#include "Design/GPIO_Configuration.h"
#include "Gui/App/Style.h"
#include "Middlewares/Middlewares.h"

#include <QApplication>
#include <QHash>

#include <algorithm>
#include <ctime>

using namespace ChipLoom;

namespace {

/// As a page is first painted; what is out of sight is made afterwards.
void paint(QWidget &page)
{
    page.resize(460, 860);
    page.show();
    QApplication::sendPostedEvents();
    page.grab();
}

struct FullDesign
{
    explicit FullDesign(benchmark::State &state)
    {
        registerMiddlewares(design);
        openDevice(design, state);
        design.apply({"mode", "USART1/Mode", "Asynchronous"});
        for (const auto &part : design.parts()) {
            ModuleConfiguration *module = design.module(part->instanceName());
            if (!module)
                continue;
            modules.push_back(module);
            for (const auto &control : module->controls()) {
                if (!control->isOn() && control->itemCanbeChoosed(1))
                    module->chooseItem(control->modeName(),
                                       control->isCheckBox() ? "TRUE" : control->items().front().Name);
            }
        }
        design.scheduler().drain();
    }

    std::unique_ptr<ModePage> show(ModuleConfiguration &module)
    {
        auto page = std::make_unique<ModePage>(design, module, module.baseInfo());
        paint(*page);
        return page;
    }

    ScriptedPrompt prompt;
    Design design{paths(), prompt};
    std::vector<ModuleConfiguration *> modules;
};

void openEveryPage(benchmark::State &state)
{
    FullDesign open(state);
    QHash<QString, double> best; // processor time of each page until it is painted
    for (auto _ : state) {
        for (ModuleConfiguration *module : open.modules) {
            const std::clock_t begin = std::clock();
            const auto page = open.show(*module);
            const double ms = 1e3 * double(std::clock() - begin) / CLOCKS_PER_SEC;
            double &time = best[module->instanceName()];
            time = time > 0 ? std::min(time, ms) : ms;
        }
    }
    const auto slowest = std::max_element(best.begin(), best.end());
    state.counters["slowest_ms"] = *slowest;
    state.SetLabel(QStringLiteral("%1 pages, slowest %2").arg(open.modules.size()).arg(slowest.key()).toStdString());
}
BENCHMARK(openEveryPage)->Apply(onBothDevices)->Unit(benchmark::kMillisecond)->Iterations(5);

void openAllPins(benchmark::State &state)
{
    FullDesign open(state);
    for (auto _ : state) {
        GPIO_ConfigurationPage page(open.design);
        paint(page);
    }
    state.SetLabel(std::to_string(open.design.gpio()->GetAllSignalsGPIOSettingList().size()) + " pins in use");
}
BENCHMARK(openAllPins)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

void openAllInterrupts(benchmark::State &state)
{
    FullDesign open(state);
    for (auto _ : state) {
        NVIC_Settings page(open.design, {});
        paint(page);
    }
}
BENCHMARK(openAllInterrupts)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

void floorOfRepaint(benchmark::State &state)
{
    FullDesign open(state);
    const auto page = open.show(*open.design.module("USART1"));
    QApplication::processEvents();
    for (auto _ : state)
        page->repaint();
}
BENCHMARK(floorOfRepaint)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

/// A mode that brings signals and a parameter set along, from the change to the painted page; off and on in turn.
void changeAModeShown(benchmark::State &state, const char *instance, const char *mode, const char *item)
{
    FullDesign open(state);
    const QString address = QLatin1String(instance) + QLatin1Char('/') + QLatin1String(mode);
    const auto page = open.show(*open.design.module(QLatin1String(instance)));
    QApplication::processEvents();
    bool on = true;
    for (auto _ : state) {
        on = !on;
        open.design.apply({"mode", address, on ? item : "Disable"});
        open.design.scheduler().drain();
        QApplication::processEvents();
        page->repaint();
    }
}
BENCHMARK_CAPTURE(changeAModeShown, ofAPort, "USART1", "Mode", "Asynchronous")
    ->Apply(onBothDevices)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(changeAModeShown, ofTheKernel, "FREERTOS", "Activated", "TRUE")
    ->Apply(onBothDevices)
    ->Unit(benchmark::kMillisecond);

void editAParameterShown(benchmark::State &state)
{
    FullDesign open(state);
    const auto page = open.show(*open.design.module("USART1"));
    QApplication::processEvents();
    bool other = false;
    for (auto _ : state) {
        other = !other;
        open.design.apply({"param", "USART1/BaudRate", other ? "9600" : "115200"});
        open.design.scheduler().drain();
        QApplication::processEvents();
        page->repaint();
    }
}
BENCHMARK(editAParameterShown)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Style::apply(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
