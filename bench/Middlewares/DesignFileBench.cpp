// How long the examples with nearly everything on take to open and to save, without a window and with the command line
// program, beside reading and writing the same bytes.
#include "Base/AtomicFile.h"
#include "Middlewares/Middlewares.h"

#include "BenchDevices.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

using namespace ChipLoom;

namespace {

QString exampleOf(const benchmark::State &state)
{
    return deviceOf(state).example;
}

class OpenedDesign
{
public:
    OpenedDesign() : design(paths(), prompt) { registerMiddlewares(design); }
    ScriptedPrompt prompt;
    Design design;
    QTemporaryDir folder;
};

void BM_ReadTheSameBytes(benchmark::State &state)
{
    const QString file = exampleOf(state);
    qint64 bytes = 0;
    for (auto _ : state)
        bytes += readFile(file, 1 << 30).content.size();
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_ReadTheSameBytes)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

void BM_OpenTheExample(benchmark::State &state)
{
    OpenedDesign opened;
    const QString file = exampleOf(state);
    for (auto _ : state) {
        if (!opened.design.OpenDesign(file))
            state.SkipWithError("the example does not open");
    }
}
BENCHMARK(BM_OpenTheExample)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

/// What a design costs before anything is read into it.
void BM_NewDesignOfTheSameDevice(benchmark::State &state)
{
    OpenedDesign opened;
    opened.design.OpenDesign(exampleOf(state));
    const QString series = opened.design.series(), device = opened.design.device(), package = opened.design.package();
    for (auto _ : state)
        opened.design.NewDesign(series, device, package);
}
BENCHMARK(BM_NewDesignOfTheSameDevice)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

void BM_WriteTheSameBytes(benchmark::State &state)
{
    const QTemporaryDir folder;
    QByteArray content = readFile(exampleOf(state), 1 << 30).content;
    for (auto _ : state) {
        content[content.size() - 1] = content.endsWith('\n') ? ' ' : '\n'; // what is unchanged would not be written
        replaceFile(folder.filePath(QStringLiteral("a")), content);
    }
}
BENCHMARK(BM_WriteTheSameBytes)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

void BM_SaveTheExample(benchmark::State &state)
{
    OpenedDesign opened;
    opened.design.OpenDesign(exampleOf(state));
    bool other = false;
    for (auto _ : state) {
        opened.design.apply({QStringLiteral("project"), QStringLiteral("ProjectName"),
                             (other = !other) ? QStringLiteral("A") : QStringLiteral("B")});
        if (!opened.design.SaveProject(opened.folder.filePath(QStringLiteral("a.ZVWP"))))
            state.SkipWithError("the example cannot be saved");
    }
}
BENCHMARK(BM_SaveTheExample)->Apply(onBothDevices)->Unit(benchmark::kMillisecond);

void BM_CommandLineChecksTheExample(benchmark::State &state)
{
    const QString program = QStringLiteral(CHIPLOOM_BIN_DIR "/chiploom-cli");
    for (auto _ : state) {
        if (QProcess::execute(program, {QStringLiteral("check"), exampleOf(state)}) != 0)
            state.SkipWithError("the program failed");
    }
}
BENCHMARK(BM_CommandLineChecksTheExample)->Apply(onBothDevices)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
