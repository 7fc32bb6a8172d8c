#pragma once

#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QStringList>

namespace ChipLoom::Test {

/// What the compiler for the chips has against sources that stand on the firmware package of a template folder
/// ("ZV32F421"); `folders` are searched for headers before the package. Empty if nothing.
inline QString complaintsOfCompiler(const QString &templates, const QStringList &sources, const QStringList &folders)
{
    const QDir packages(QStringLiteral(CHIPLOOM_BIN_DIR "/firmware"));
    const QString package = packages.filePath(packages.entryList({templates + "_Firmware*"}).value(0));
    QStringList arguments{"-mcpu=cortex-m4", "-mthumb", "-std=gnu11",    "-Wall",
                          "-Wextra",         "-Werror", "-fsyntax-only", "-DUSE_STDPERIPH_DRIVER"};
    for (const QString &folder : folders)
        arguments.append("-I" + folder);
    QDirIterator headers(package, {"*.h"}, QDir::Files, QDirIterator::Subdirectories);
    while (headers.hasNext()) {
        headers.next();
        const QString include = "-I" + headers.fileInfo().path();
        if (!arguments.contains(include))
            arguments.append(include);
    }
    QProcess compiler;
    compiler.start("arm-none-eabi-gcc", arguments + sources);
    if (!compiler.waitForStarted() || !compiler.waitForFinished(120000))
        return compiler.errorString();
    const QString told = QString::fromUtf8(compiler.readAllStandardError()).left(4000);
    return compiler.exitCode() == 0 ? told : "failed\n" + told;
}

} // namespace ChipLoom::Test
