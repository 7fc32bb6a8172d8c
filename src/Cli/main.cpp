#include "Cli/CommandLine.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    // Without a locale Qt would take file names and arguments for Latin text and spoil all others.
    if (qEnvironmentVariableIsEmpty("LC_ALL") && qEnvironmentVariableIsEmpty("LC_CTYPE") &&
        qEnvironmentVariableIsEmpty("LANG"))
        qputenv("LC_CTYPE", "C.UTF-8");
    const QCoreApplication application(argc, argv);
    return ChipLoom::runCommandLine(QCoreApplication::arguments(), ChipLoom::AppPaths::ofThisProcess());
}
