// A full CMake project of the examples with nearly everything on, made the first time and again, beside a plain copy of
// the same files in the same run. The builder's part is measured alone too: what is left is the generation of the code.

#include "BenchDevices.h"
#include "Middlewares/Middlewares.h"
#include "Project/GenerateProjectThread.h"
#include "Project/ProjectGeneration.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <filesystem>

using namespace ChipLoom;

namespace {

class Example
{
public:
    explicit Example(const benchmark::State &state)
    {
        registerMiddlewares(m_design);
        openExample(m_design, deviceOf(state));
        m_design.apply({QStringLiteral("project"), QStringLiteral("ToolchainIDE"), QStringLiteral("CMake")});
    }

    ProjectOrder order(const QString &folder)
    {
        CodeGeneration code(m_design, folder + QLatin1String("/project"));
        return order(folder, code);
    }
    bool generate(const QString &folder)
    {
        CodeGeneration code(m_design, folder + QLatin1String("/project"));
        const ProjectOrder order = this->order(folder, code);
        GenerateProjectThread builder(order);
        const bool done = builder.build().code == 0 && code.run(true).ok;
        rememberProject(order, builder.account(), code);
        return done;
    }

private:
    ProjectOrder order(const QString &folder, CodeGeneration &code)
    {
        const QString package = QStringLiteral(CHIPLOOM_BIN_DIR "/firmware");
        return projectOrder(m_design, folder, firmwarePackageIn(package, m_design.series()), {}, code);
    }

    ScriptedPrompt m_prompt;
    Design m_design{AppPaths(QStringLiteral(CHIPLOOM_BIN_DIR), QDir::tempPath()), m_prompt};
};

/// Counts the time of `work` on a folder that `prepare` has left as it is to be.
template <typename Prepare, typename Work>
void measure(benchmark::State &state, const Prepare &prepare, const Work &work)
{
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("project"));
        prepare(folder);
        state.ResumeTiming();
        if (!work(folder))
            state.SkipWithError("the project was not made");
        state.PauseTiming();
        dir.remove();
        state.ResumeTiming();
    }
}

void copyOfTheSameFiles(benchmark::State &state)
{
    Example example(state);
    QTemporaryDir source;
    example.generate(source.path());
    measure(
        state, [](const QString &) {},
        [&](const QString &folder) {
            std::filesystem::copy(source.path().toStdString(), folder.toStdString(),
                                  std::filesystem::copy_options::recursive);
            return true;
        });
}

void builderFirst(benchmark::State &state)
{
    Example example(state);
    const ProjectOrder order = example.order(QStringLiteral("/nowhere"));
    measure(
        state, [](const QString &) {},
        [&](const QString &folder) {
            ProjectOrder here = order;
            here.projectFullPath = folder;
            return GenerateProjectThread(here).build().code == 0;
        });
}

void builderAgain(benchmark::State &state)
{
    Example example(state);
    const ProjectOrder order = example.order(QStringLiteral("/nowhere"));
    QTemporaryDir dir;
    example.generate(dir.path());
    for (auto _ : state) {
        ProjectOrder here = order;
        here.projectFullPath = dir.path();
        if (GenerateProjectThread(here).build().code != 0)
            state.SkipWithError("the project was not made");
    }
}

void wholeProjectFirst(benchmark::State &state)
{
    Example example(state);
    measure(
        state, [](const QString &) {}, [&](const QString &folder) { return example.generate(folder); });
}

void wholeProjectAgain(benchmark::State &state)
{
    Example example(state);
    QTemporaryDir dir;
    example.generate(dir.path());
    for (auto _ : state) {
        if (!example.generate(dir.path()))
            state.SkipWithError("the project was not made");
    }
}

/// Real time, and the processor time of all threads: the code is made in one of its own.
void asMeasured(benchmark::internal::Benchmark *benchmark)
{
    onBothDevices(benchmark);
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
}

BENCHMARK(copyOfTheSameFiles)->Apply(asMeasured);
BENCHMARK(builderFirst)->Apply(asMeasured);
BENCHMARK(builderAgain)->Apply(asMeasured);
BENCHMARK(wholeProjectFirst)->Apply(asMeasured);
BENCHMARK(wholeProjectAgain)->Apply(asMeasured);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
