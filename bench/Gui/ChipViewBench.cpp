// The chip view and the workspace against one frame (16 ms): drawing, repainting, placing and searching on 144 pins;
// opening a device.

#include "BenchDevices.h"
#include "Gui/ChipView/ChipFixture.h"
#include "Gui/ChipView/ChipScene.h"
#include "Gui/ChipView/PinGraphicsView.h"
#include "Gui/Workspace/FormConfiguration.h"

#include <QApplication>
#include <QFile>
#include <QPainter>

using namespace ChipLoom;

namespace {

constexpr QSize ViewSize{1000, 900};

/// 144 pins, a third of them in use.
struct LargeChip
{
    LargeChip()
    {
        pins.load(QStringLiteral("ZV32F421"), DevicePinInfo(fixtureChip(QStringLiteral("LQFP"), 144, 36, 36)));
        for (const int position : pins.pinInfo().positions()) {
            const MCUPinsBaseInfo pin = pins.pinInfo().GetMCUPinBaseInfo(position).first();
            if (!pin.fixedFlag && position % 3 == 0)
                pins.checkedLibAction(pin.pinName, pin.pinSignalsList.at(position % 8).signalName, true);
        }
        scene.drawChip(pins);
        view.setScene(&scene);
        view.resize(ViewSize);
        view.fitToWindow(scene.contentRect());
    }

    PinAssignment pins;
    ChipScene scene;
    PinGraphicsView view;
};

/// Paints what has become dirty at once; the platform would wait for its next beat.
void repaintNow(QWidget &window)
{
    QApplication::processEvents();
    QEvent request(QEvent::UpdateRequest);
    QApplication::sendEvent(&window, &request);
}

/// What painting cannot go below: one pass over the picture and one rectangle for each pin.
void FloorOfRedraw(benchmark::State &state)
{
    QImage image(ViewSize, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter painter(&image);
        for (int i = 0; i < 144; ++i)
            painter.fillRect(20 + i * 6, 20 + i * 5, 32, 15, Qt::gray);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(FloorOfRedraw)->Unit(benchmark::kMillisecond);

void RedrawAllPins(benchmark::State &state)
{
    LargeChip chip;
    QImage image(ViewSize, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QPainter painter(&image);
        chip.view.render(&painter);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(RedrawAllPins)->Unit(benchmark::kMillisecond);

void DrawTheChipAnew(benchmark::State &state)
{
    LargeChip chip;
    for (auto _ : state)
        chip.scene.drawChip(chip.pins);
}
BENCHMARK(DrawTheChipAnew)->Unit(benchmark::kMillisecond);

/// One placement by hand, from the change to the repainted window.
void PlaceAndRepaint(benchmark::State &state)
{
    LargeChip chip;
    QObject::connect(&chip.pins, &PinAssignment::pinsChanged, &chip.scene, &ChipScene::refreshPins);
    chip.view.show();
    QApplication::processEvents();
    bool on = false;
    for (auto _ : state) {
        on = !on;
        chip.pins.checkedLibAction(QStringLiteral("PA2"), QStringLiteral("USART1_TX"), on);
        repaintNow(chip.view);
    }
}
BENCHMARK(PlaceAndRepaint)->Unit(benchmark::kMillisecond);

void SearchAndRepaint(benchmark::State &state)
{
    LargeChip chip;
    QObject::connect(&chip.pins.search(), &PinSearch::hitsChanged, &chip.scene,
                     [&] { chip.scene.showHits(chip.pins.search().hits(), true); });
    chip.view.show();
    QApplication::processEvents();
    bool other = false;
    for (auto _ : state) {
        other = !other;
        chip.pins.search().QuerySignalName(other ? QStringLiteral("PA") : QStringLiteral("PB"));
        repaintNow(chip.view);
    }
}
BENCHMARK(SearchAndRepaint)->Unit(benchmark::kMillisecond);

void TurnAndRepaint(benchmark::State &state)
{
    LargeChip chip;
    chip.view.SetGraphicsItem(chip.scene.items(Qt::AscendingOrder).first());
    chip.view.show();
    QApplication::processEvents();
    int degrees = 0;
    for (auto _ : state) {
        degrees = (degrees + 90) % 360;
        chip.view.rotateView(degrees);
        chip.scene.turnTextsUpright(degrees);
        repaintNow(chip.view);
    }
}
BENCHMARK(TurnAndRepaint)->Unit(benchmark::kMillisecond);

/// Opening a device: the design alone, then with the window over it.
struct Database
{
    XMLOperation xml{AppPaths::ofThisProcess()};
    ScriptedPrompt prompt;
};

void FloorOfOpening(benchmark::State &state)
{
    const Database database;
    const QString path = database.xml.deviceFile(deviceOf(state).series, deviceOf(state).device);
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        benchmark::DoNotOptimize(file.readAll());
    }
}
BENCHMARK(FloorOfOpening)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

void OpenTheModel(benchmark::State &state)
{
    Database database;
    Design design(database.xml.paths(), database.prompt);
    for (auto _ : state)
        openDevice(design, state);
}
BENCHMARK(OpenTheModel)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

void OpenWithTheWindow(benchmark::State &state)
{
    Database database;
    Settings settings(database.xml, database.prompt);
    FormConfiguration window(database.xml, settings, database.prompt);
    window.show();
    const BenchDevice &device = deviceOf(state);
    for (auto _ : state) {
        window.NewDesign(device.series, device.device, device.package);
        repaintNow(window);
    }
}
BENCHMARK(OpenWithTheWindow)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

/// An example with nearly everything on, from its file into the window. `DesignFileBench` measures the same without
/// one.
void OpenAFileWithTheWindow(benchmark::State &state)
{
    Database database;
    Settings settings(database.xml, database.prompt);
    FormConfiguration window(database.xml, settings, database.prompt);
    window.show();
    for (auto _ : state) {
        if (!window.OpenDesign(deviceOf(state).example))
            state.SkipWithError("the example does not open");
        repaintNow(window);
    }
}
BENCHMARK(OpenAFileWithTheWindow)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
