// One edit of the clock page as a person feels it: from the key to the last pixel, on the map with most controls. The
// whole edit must stay below a frame (16 ms). The floor is the repaint alone, with nothing changed.

#include "Base/Scheduler.h"
#include "Base/UserPrompt.h"
#include "ClockConfig/ZV32PLLConfig.h"
#include "Gui/App/Style.h"
#include "Gui/ChipView/PinGraphicsView.h"
#include "Gui/Clock/ClockMaps.h"
#include "Gui/Clock/ZV32MCUPLLView.h"
#include "Gui/Clock/ZV32PLLConfigPage.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

#include <benchmark/benchmark.h>

using namespace ChipLoom;

namespace {

struct FirstAnswer : UserPrompt
{
    int ask(const PromptRequest &) override { return 0; }
};

ZV32MCUSERIALS largestSeries()
{
    const auto series = allClockSeries();
    return std::max_element(series.begin(), series.end(),
                            [](const ClockSeries &a, const ClockSeries &b) {
                                return describeClockMap(a).places.size() < describeClockMap(b).places.size();
                            })
        ->code;
}

struct OpenPage
{
    OpenPage()
    {
        clock.newConfig(largestSeries());
        clock.SetHextFlag(true, false, false);
        clock.SetUSBFS1Flag(true);
        page.resize(1440, 900);
        page.show();
        QApplication::processEvents();
    }
    template <typename Widget> Widget *get(ClockField field)
    {
        return qobject_cast<Widget *>(page.view()->control(field));
    }
    void repaint() { page.view()->getGraphicsView()->viewport()->repaint(); }

    Scheduler scheduler;
    FirstAnswer prompt;
    ZV32PLLConfig clock{scheduler, prompt};
    ZV32PLLConfigPage page{clock};
};

void repaintOnly(benchmark::State &state)
{
    OpenPage open;
    for (auto _ : state)
        open.repaint();
}
BENCHMARK(repaintOnly)->Unit(benchmark::kMillisecond);

void typeOneDigit(benchmark::State &state)
{
    OpenPage open;
    auto *sclk = open.get<QLineEdit>(ClockField::Sclk);
    for (auto _ : state) {
        sclk->selectAll();
        QTest::keyClick(sclk, Qt::Key_9);
        open.repaint();
    }
}
BENCHMARK(typeOneDigit)->Unit(benchmark::kMillisecond);

// The worst edit: Return searches all fields of the PLL, for targets that cannot be met exactly.
void solveTypedTarget(benchmark::State &state)
{
    OpenPage open;
    auto *sclk = open.get<QLineEdit>(ClockField::Sclk);
    int n = 0;
    for (auto _ : state) {
        sclk->setText(QString::number(90 + (n++ % 7) * 13.7));
        QTest::keyClick(sclk, Qt::Key_Return);
        open.repaint();
    }
}
BENCHMARK(solveTypedTarget)->Unit(benchmark::kMillisecond);

void turnABox(benchmark::State &state)
{
    OpenPage open;
    auto *ahb = open.get<QComboBox>(ClockField::AhbDiv);
    bool down = true;
    for (auto _ : state) {
        QTest::keyClick(ahb, down ? Qt::Key_Down : Qt::Key_Up);
        down = !down;
        open.repaint();
    }
}
BENCHMARK(turnABox)->Unit(benchmark::kMillisecond);

void openThePage(benchmark::State &state)
{
    for (auto _ : state)
        OpenPage open;
}
BENCHMARK(openThePage)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Style::apply(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
