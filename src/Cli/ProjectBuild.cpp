#include "Cli/ProjectBuild.h"

#include "Design/DesignTexts.h"
#include "Design/ToolchainRules.h"
#include "Model/SeriesHelpers.h"
#include "Packages/FirmwarePackages.h"
#include "Project/GenerateProjectThread.h"
#include "Project/ProjectGeneration.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace ChipLoom {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("Cli", text);
}

ExitCode wrongUsage(const CommandContext &context, const QString &message)
{
    context.tell(message);
    return ExitCode::WrongUsage;
}

QString toolchainNamed(const QString &text)
{
    for (const IDE_TYPE type : offeredToolchains()) {
        if (getIDEPathName(type).compare(text, Qt::CaseInsensitive) == 0)
            return getIDEPathName(type);
    }
    return {};
}

QString hexadecimal(const QString &text)
{
    bool isNumber = false;
    const uint value = text.toUInt(&isNumber, text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive) ? 16 : 10);
    return isNumber ? QLatin1String("0x") + QString::number(value, 16).toUpper() : QString();
}

/// The package of the options, or else that of the design, or the newest.
FirmwarePackage choosePackage(const CommandContext &context, const Design &design)
{
    if (context.isSet("firmware"))
        return firmwarePackageIn(context.value("firmware"), design.series());
    const QList<FirmwarePackage> packages =
        firmwarePackages(context.paths, packageRepository(XMLOperation(context.paths)), design.series());
    for (const FirmwarePackage &package : packages) {
        if (package.version == design.project().PackageVersion)
            return package;
    }
    return packages.value(0);
}

} // namespace

ExitCode applyProjectOptions(const CommandContext &context, const QString &folder, Design &design)
{
    const auto set = [&](const char *name, const QString &value) {
        return design.apply({QStringLiteral("project"), QLatin1String(name), value});
    };
    if (context.isSet("split"))
        set("CodeSplitIP", QStringLiteral("true"));
    if (!context.isSet("toolchain")) {
        for (const char *option : {"firmware", "heap", "stack", "compiler", "all-drivers"}) {
            if (context.isSet(option))
                return wrongUsage(context,
                                  translated(QT_TRANSLATE_NOOP("Cli", "--%1 is for a project: give --toolchain too."))
                                      .arg(QLatin1String(option)));
        }
        return ExitCode::Success;
    }
    if (context.isSet("dry-run") || context.isSet("check"))
        return wrongUsage(context,
                          translated(QT_TRANSLATE_NOOP("Cli", "--dry-run and --check are for the sources: leave out "
                                                              "--toolchain.")));
    const QString toolchain = toolchainNamed(context.value("toolchain"));
    if (toolchain.isEmpty()) {
        QStringList names;
        for (const IDE_TYPE type : offeredToolchains())
            names.append(getIDEPathName(type));
        return wrongUsage(context, translated(QT_TRANSLATE_NOOP("Cli", "There is no toolchain \"%1\"; there are: %2"))
                                       .arg(context.value("toolchain"), names.join(QLatin1String(", "))));
    }
    set("ToolchainIDE", toolchain);
    for (const auto &[option, name] : {std::pair("heap", "MinHeapSize"), std::pair("stack", "MinStackSize")}) {
        if (!context.isSet(option))
            continue;
        const QString value = hexadecimal(context.value(option));
        if (value.isEmpty())
            return wrongUsage(context, translated(QT_TRANSLATE_NOOP("Cli", "\"%1\" is no size for --%2."))
                                           .arg(context.value(option), QLatin1String(option)));
        set(name, value);
    }
    if (context.isSet("compiler")) {
        if (!set("ARMCompiler", QLatin1String("Use default complier version ") + context.value("compiler")))
            return wrongUsage(context, translated(QT_TRANSLATE_NOOP("Cli", "--compiler is 5 or 6, not \"%1\"."))
                                           .arg(context.value("compiler")));
    }
    if (context.isSet("all-drivers"))
        set("AddNecessaryFileFlag", QStringLiteral("false"));

    const IDE_TYPE type = design.project().getProjectIDE();
    ToolchainReason reason = toolchainReason(type, design.series(), validMiddlewares(design));
    if (reason == ToolchainReason::None)
        reason = folderReason(type, folder);
    if (reason != ToolchainReason::None) {
        context.tell(toolchain + QLatin1String(": ") + toolchainReasonText(reason));
        return ExitCode::Problem;
    }
    const DesignAnswer sizes = HeapAndStackCheck(design.project(), sramSizeOf(design));
    if (!sizes) {
        context.tell(QLatin1String("project/") + sizes.arguments.value(0) + QLatin1String(": ") + answerText(sizes));
        return ExitCode::Problem;
    }
    return ExitCode::Success;
}

ExitCode buildProject(const CommandContext &context, Design &design, const QString &folder, CodeGeneration &code,
                      ProjectOrder &order, BuilderAccount &account)
{
    const bool withFirmware = design.project().UseFirmware || context.isSet("firmware");
    FirmwarePackage package;
    if (withFirmware) {
        package = choosePackage(context, design);
        const QString missing = checkPackagePathValid(package, design.series(), design.project().getProjectIDE(),
                                                      projectTemplatePath(context.paths, design.series()));
        if (!missing.isEmpty() && !goesOnWithoutPackage(context.prompt, design.series(), missing))
            return ExitCode::Problem;
    }
    const QString repository = packageRepository(XMLOperation(context.paths));
    if (!checkComponentsPathValid(repository, validMiddlewares(design)) && !goesOnWithoutComponents(context.prompt))
        return ExitCode::Problem;

    // The copy of the design in the project tells what it was made with, and where.
    const bool updatePackageVersion = design.project().PackageVersion != package.version;
    design.apply({QStringLiteral("project"), QStringLiteral("PackageVersion"), package.version});
    design.apply({QStringLiteral("project"), QStringLiteral("ProjectLocation"), folder});
    order = projectOrder(design, folder, package, repository, code);
    if (!code.record().ok) {
        context.tell(QCoreApplication::translate("Prompt", "Generate code failed!"));
        context.tell(code.record().error);
        return ExitCode::FileError;
    }
    order.updatePackageVersion = updatePackageVersion;
    GenerateProjectThread builder(order);
    account = builder.build();
    if (!showGenerateProjectError(context.prompt, account))
        return ExitCode::FileError;
    for (const QString &note : qAsConst(account.notes))
        context.tell(note);
    return ExitCode::Success;
}

void reportProject(const CommandContext &context, const BuilderAccount &account)
{
    int copied = 0;
    QStringList lines;
    const auto list = [&](const QStringList &files, const char *state) {
        for (const QString &file : files) {
            const bool ofPackage =
                file.startsWith(QLatin1String("libraries/")) || file.startsWith(QLatin1String("middlewares/"));
            copied += ofPackage && files == account.written;
            if (!ofPackage)
                lines.append(translated(state).leftJustified(10) + file);
        }
    };
    list(account.written, QT_TRANSLATE_NOOP("Cli", "written"));
    list(account.removed, QT_TRANSLATE_NOOP("Cli", "removed"));
    list(account.unchanged, QT_TRANSLATE_NOOP("Cli", "unchanged"));
    context.out << translated(QT_TRANSLATE_NOOP("Cli", "Files of the firmware package written: %1")).arg(copied)
                << '\n';
    for (const QString &line : qAsConst(lines))
        context.out << line << '\n';
}

} // namespace ChipLoom
