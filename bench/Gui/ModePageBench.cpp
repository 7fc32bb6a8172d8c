// The pages of modes and parameters against one frame (16 ms): opening every page of both devices, and
// one change on a page that is shown, beside repainting the page with nothing changed.
#include "Gui/Modes/ModePage.h"

#include "BenchDevices.h"
#include "Gui/App/Style.h"
#include "Middlewares/Middlewares.h"

#include <QApplication>
#include <QElapsedTimer>

using namespace ChipLoom;

namespace {

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
        page->resize(460, 860);
        page->show();
        QApplication::processEvents();
        page->repaint();
        return page;
    }

    ScriptedPrompt prompt;
    Design design{paths(), prompt};
    std::vector<ModuleConfiguration *> modules;
};

void openEveryPage(benchmark::State &state)
{
    FullDesign open(state);
    double slowest = 0;
    QString name;
    for (auto _ : state) {
        for (ModuleConfiguration *module : open.modules) {
            QElapsedTimer timer;
            timer.start();
            open.show(*module);
            if (timer.nsecsElapsed() / 1e6 > slowest) {
                slowest = timer.nsecsElapsed() / 1e6;
                name = module->instanceName();
            }
        }
    }
    state.counters["slowest_ms"] = slowest;
    state.SetLabel(QStringLiteral("%1 pages, slowest %2").arg(open.modules.size()).arg(name).toStdString());
}
BENCHMARK(openEveryPage)->Apply(onBothDevices)->Unit(benchmark::kMillisecond)->Iterations(3);

void floorOfRepaint(benchmark::State &state)
{
    FullDesign open(state);
    const auto page = open.show(*open.design.module("USART1"));
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
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
