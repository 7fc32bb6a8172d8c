#include "Base/AtomicFile.h"
#include "Design/Design.h"
#include "Middlewares/Middlewares.h"
#include "ScriptedPrompt.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

using namespace ChipLoom;

namespace {

// What must hold for any file whatever.
void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "broken promise: %s\n", what);
    std::abort();
}

AppPaths sample()
{
    AppPaths paths{QString(), QString()};
    paths.setDatabaseDir(QString::fromLocal8Bit(qgetenv("CHIPLOOM_DATABASE")));
    return paths;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int argc = 1;
    static char name[] = "DesignFuzz";
    static char *argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    // In memory: designs are read from files, and a disk would be the slowest part.
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/DesignFuzz"));
    static ScriptedPrompt prompt;
    static Design design(sample(), prompt);
    static bool first = true;
    if (first)
        registerMiddlewares(design);
    first = false;

    const QByteArray content(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QString file = folder.filePath(QStringLiteral("a.ZVWP"));
    require(replaceFile(file, content).ok(), "room in /dev/shm");
    const QByteArray before = design.file().content();
    prompt.requests.clear();
    if (!design.OpenDesign(file)) {
        require(!prompt.requests.isEmpty(), "a refusal is told");
        require(design.file().content() == before, "a refused file leaves the design alone");
        return 0;
    }
    design.problems();
    require(design.SaveProject(file), "what was opened can be saved");
    require(design.OpenDesign(file), "what was saved can be opened");
    return 0;
}
