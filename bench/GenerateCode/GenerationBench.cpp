#include "GenerateCode/CodeGeneration.h"
#include "Middlewares/Middlewares.h"

#include "BenchDevices.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>

using namespace ChipLoom;

namespace {

// Where projects lie: on the disk of the build, unless the environment names another place. A folder for temporary
// files can be in memory, where making files costs nothing.
QString onDisk()
{
    return qEnvironmentVariable("TMPDIR", QStringLiteral(CHIPLOOM_BIN_DIR)) + "/generation-XXXXXX";
}

struct Example
{
    explicit Example(const BenchDevice &device)
    {
        registerMiddlewares(design);
        openExample(design, device);
    }

    ScriptedPrompt prompt{0};
    Design design{paths(), prompt};
};

Design &exampleOf(const benchmark::State &state)
{
    static Example examples[]{Example(BenchDevices[0]), Example(BenchDevices[1])};
    return examples[&deviceOf(state) - BenchDevices.data()].design;
}

QMap<QString, QByteArray> contentOf(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly))
            files.insert(QDir(folder).relativeFilePath(file.fileName()), file.readAll());
    }
    return files;
}

// The floor: the same files, opened, written and closed.
bool writePlainly(const QString &folder, const QMap<QString, QByteArray> &files)
{
    QDir().mkpath(folder + "/inc");
    QDir().mkpath(folder + "/src");
    return std::all_of(files.keyBegin(), files.keyEnd(), [&](const QString &name) {
        QFile target(folder + '/' + name);
        return target.open(QIODevice::WriteOnly) && target.write(files[name]) == files[name].size();
    });
}

// Into an empty folder, and in turns with it the same files plainly: what a disk takes changes from one second to the
// next.
void generate(benchmark::State &state)
{
    const QTemporaryDir folder(onDisk());
    const QString project = folder.path() + "/project";
    Design &design = exampleOf(state);
    generateCode(design, project, true);
    const QMap<QString, QByteArray> files = contentOf(project);
    bool ok = true;
    const auto secondsOf = [&](const auto &work) {
        QDir(project).removeRecursively();
        const auto start = std::chrono::steady_clock::now();
        ok = work() && ok;
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    double generated = 0;
    double written = 0;
    for (auto _ : state) {
        const double seconds = secondsOf([&] { return generateCode(design, project, true).ok; });
        state.SetIterationTime(seconds);
        generated += seconds;
        written += secondsOf([&] { return writePlainly(project, files); });
    }
    if (!ok)
        state.SkipWithError("cannot be written");
    qint64 bytes = 0;
    for (const QByteArray &content : files)
        bytes += content.size();
    state.SetLabel(std::to_string(bytes) + " bytes");
    state.counters["to_plain_writing"] = generated / written;
}

void writeTheSamePlainly(benchmark::State &state)
{
    const QTemporaryDir folder(onDisk());
    const QString project = folder.path() + "/project";
    generateCode(exampleOf(state), project, true);
    const QMap<QString, QByteArray> files = contentOf(project);
    for (auto _ : state) {
        state.PauseTiming();
        QDir(project).removeRecursively();
        state.ResumeTiming();
        if (!writePlainly(project, files))
            state.SkipWithError("cannot be written");
    }
}

// As its user does: a line of their own in every block.
void writeIntoEveryBlock(const QString &folder)
{
    const QMap<QString, QByteArray> files = contentOf(folder);
    for (auto file = files.begin(); file != files.end(); ++file) {
        QByteArray text;
        for (const QByteArray &line : file.value().split('\n'))
            text += (line.contains("add user code end") ? "  own_step();\n" : "") + line + '\n';
        text.chop(1);
        QFile target(folder + '/' + file.key());
        if (target.open(QIODevice::WriteOnly))
            target.write(text);
    }
}

// Over what its user wrote into: the blocks are read and put in, nothing is written.
void generateAgain(benchmark::State &state)
{
    const QTemporaryDir folder(onDisk());
    const QString project = folder.path() + "/project";
    Design &design = exampleOf(state);
    generateCode(design, project, true);
    writeIntoEveryBlock(project);
    const QMap<QString, QByteArray> files = contentOf(project);
    for (auto _ : state)
        generateCode(design, project, true);
    if (contentOf(project) != files)
        state.SkipWithError("a user's line was lost");
}

BENCHMARK(generate)->Apply(onBothDevices)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(writeTheSamePlainly)
    ->Apply(onBothDevices)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(generateAgain)->Apply(onBothDevices)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

} // namespace
