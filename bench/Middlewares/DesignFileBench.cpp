// How long the largest example takes to open and to save, without a window and with the command line program, beside
// reading and writing the same bytes.
#include "Base/AtomicFile.h"
#include "Design/Design.h"
#include "Middlewares/Middlewares.h"
#include "ScriptedPrompt.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using namespace ChipLoom;

namespace {

QString largestExample()
{
    const QDir examples(QStringLiteral(CHIPLOOM_SOURCE_DIR "/examples"));
    return examples.entryInfoList({QStringLiteral("*.ZVWP")}, QDir::Files, QDir::Size).value(0).absoluteFilePath();
}

class OpenedDesign
{
public:
    OpenedDesign() : design({QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)}, prompt)
    {
        registerMiddlewares(design);
    }
    ScriptedPrompt prompt;
    Design design;
    QTemporaryDir folder;
};

void BM_ReadTheSameBytes(benchmark::State &state)
{
    const QString file = largestExample();
    qint64 bytes = 0;
    for (auto _ : state)
        bytes += readFile(file, 1 << 30).content.size();
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_ReadTheSameBytes)->Unit(benchmark::kMillisecond);

void BM_OpenTheLargestExample(benchmark::State &state)
{
    OpenedDesign opened;
    const QString file = largestExample();
    for (auto _ : state) {
        if (!opened.design.OpenDesign(file))
            state.SkipWithError("the example does not open");
    }
}
BENCHMARK(BM_OpenTheLargestExample)->Unit(benchmark::kMillisecond);

/// What a design costs before anything is read into it.
void BM_NewDesignOfTheSameDevice(benchmark::State &state)
{
    OpenedDesign opened;
    opened.design.OpenDesign(largestExample());
    const QString series = opened.design.series(), device = opened.design.device(), package = opened.design.package();
    for (auto _ : state)
        opened.design.NewDesign(series, device, package);
}
BENCHMARK(BM_NewDesignOfTheSameDevice)->Unit(benchmark::kMillisecond);

void BM_WriteTheSameBytes(benchmark::State &state)
{
    const QTemporaryDir folder;
    QByteArray content = readFile(largestExample(), 1 << 30).content;
    for (auto _ : state) {
        content[content.size() - 1] = content.endsWith('\n') ? ' ' : '\n'; // what is unchanged would not be written
        replaceFile(folder.filePath(QStringLiteral("a")), content);
    }
}
BENCHMARK(BM_WriteTheSameBytes)->Unit(benchmark::kMillisecond);

void BM_SaveTheLargestExample(benchmark::State &state)
{
    OpenedDesign opened;
    opened.design.OpenDesign(largestExample());
    bool other = false;
    for (auto _ : state) {
        opened.design.apply({QStringLiteral("project"), QStringLiteral("ProjectName"),
                             (other = !other) ? QStringLiteral("A") : QStringLiteral("B")});
        if (!opened.design.SaveProject(opened.folder.filePath(QStringLiteral("a.ZVWP"))))
            state.SkipWithError("the example cannot be saved");
    }
}
BENCHMARK(BM_SaveTheLargestExample)->Unit(benchmark::kMillisecond);

void BM_CommandLineChecksTheLargestExample(benchmark::State &state)
{
    const QString program = QStringLiteral(CHIPLOOM_BIN_DIR "/chiploom-cli");
    for (auto _ : state) {
        if (QProcess::execute(program, {QStringLiteral("check"), largestExample()}) != 0)
            state.SkipWithError("the program failed");
    }
}
BENCHMARK(BM_CommandLineChecksTheLargestExample)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
