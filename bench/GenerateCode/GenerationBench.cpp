#include "Design/Design.h"
#include "Design/ModuleConfiguration.h"
#include "GenerateCode/CodeGeneration.h"
#include "Middlewares/Middlewares.h"
#include "ScriptedPrompt.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

using namespace ChipLoom;

namespace {

// The largest example, without what has no generator yet.
class LargestExample
{
public:
    LargestExample() : m_design(AppPaths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)), m_prompt)
    {
        registerMiddlewares(m_design);
        m_design.OpenDesign(QStringLiteral(CHIPLOOM_SOURCE_DIR "/examples/everything.ZVWP"));
        const auto generator = GenerateCode_ALL::Get_GenerateCode_All(generationInput(m_design));
        for (const QString &name : generator->withoutGenerator()) {
            for (const auto &control : m_design.module(name)->controls())
                m_design.apply({"mode", name + '/' + control->modeName(), control->isCheckBox() ? "FALSE" : "Disable"});
        }
        m_design.scheduler().drain();
    }
    Design &design() { return m_design; }

private:
    ScriptedPrompt m_prompt{0};
    Design m_design;
};

Design &largest()
{
    static LargestExample example;
    return example.design();
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

// Into an empty folder.
void generate(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString project = folder.path() + "/project";
    Design &design = largest();
    for (auto _ : state) {
        state.PauseTiming();
        QDir(project).removeRecursively();
        state.ResumeTiming();
        const GenerationRecord record = generateCode(design, project, true);
        if (!record.ok)
            state.SkipWithError(record.error.toUtf8().constData());
    }
    qint64 bytes = 0;
    for (const QByteArray &content : contentOf(project))
        bytes += content.size();
    state.SetLabel(std::to_string(bytes) + " bytes");
}

// The floor: the same files, opened, written and closed.
void writeTheSamePlainly(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString project = folder.path() + "/project";
    generateCode(largest(), project, true);
    const QMap<QString, QByteArray> files = contentOf(project);
    for (auto _ : state) {
        state.PauseTiming();
        QDir(project).removeRecursively();
        state.ResumeTiming();
        QDir().mkpath(project + "/inc");
        QDir().mkpath(project + "/src");
        for (auto file = files.begin(); file != files.end(); ++file) {
            QFile target(project + '/' + file.key());
            if (!target.open(QIODevice::WriteOnly) || target.write(file.value()) != file.value().size())
                state.SkipWithError("cannot be written");
        }
    }
}

// Over what the last one wrote: the user's blocks are read, nothing is written.
void generateAgain(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString project = folder.path() + "/project";
    for (auto _ : state)
        generateCode(largest(), project, true);
}

// The generation runs in a thread of its own, so the clock on the wall is what counts.
BENCHMARK(generate)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(writeTheSamePlainly)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(generateAgain)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

} // namespace
