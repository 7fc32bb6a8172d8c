#include "Project/ProjectGeneration.h"

#include "Base/FileState.h"
#include "Base/Fingerprint.h"
#include "Design/Design.h"
#include "Design/ModuleConfiguration.h"
#include "Model/SeriesHelpers.h"
#include "Project/MiddlewareFolders.h"
#include "Project/PackageListing.h"
#include "Project/ProjectStamp.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <optional>

namespace ChipLoom {

namespace {

constexpr quint32 KB = 1024;
const QString CodeFolder = QStringLiteral("project/");
const QString RtThread = QStringLiteral("RT-Thread_Nano");

bool goesOn(UserPrompt &prompt, const char *text, const QStringList &arguments, const QString &detail)
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Warning;
    request.title = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Warning"));
    request.text = QLatin1String(text);
    request.textArguments = arguments;
    request.detail = detail;
    request.buttons = QStringList{QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Yes")),
                                  QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Cancel"))};
    request.defaultButton = 1;
    return prompt.ask(request) == 0;
}

void addGeneratedSources(ProjectOrder &order, const GenerationRecord &record)
{
    for (const GeneratedFileRecord &file : record.files) {
        const QFileInfo info(file.path);
        if (file.state == GeneratedFileRecord::State::Removed || info.suffix() != QLatin1String("c"))
            continue;
        if (info.fileName() == QLatin1String("syscalls.c") || info.fileName() == QLatin1String("sysmem.c"))
            order.needsSystemFiles = true;
        else if (info.path() == QLatin1String("src"))
            order.projectSources.append(info.fileName());
    }
}

quint64 fingerprintOf(const ProjectOrder &order, quint64 code)
{
    Fingerprint sum;
    sum.addAll(order.series, order.device, order.projectName, order.projectFullPath, order.packagePath,
               order.templatePath, order.componentsPath, QString(order.flashSizeFlag), order.ideType, order.pid,
               order.flashSize, order.sramSize, order.minHeapSize, order.minStackSize, order.armCompiler,
               order.deletePriviousFiles, order.addNecessaryFile);
    sum.add(qint64(code));
    return sum.value();
}

constexpr std::array<const char *, 4> CodeTexts{
    "",
    QT_TRANSLATE_NOOP("Prompt", "Failed to copy firmware package file, Please confirm whether to continue?"),
    QT_TRANSLATE_NOOP("Prompt", "Failure to Config Linker Setting! Please confirm whether to continue?"),
    QT_TRANSLATE_NOOP("Prompt", "Failure to Config Project file! Please confirm whether to continue?"),
};

} // namespace

quint32 flashSizeOf(const Design &design)
{
    return quint32(GetFlashSizeFromMCUPID(design.pid())) * KB;
}

quint32 sramSizeOf(const Design &design)
{
    return quint32(GetRAMSizeFromMCUPID(design.pid())) * KB;
}

QStringList validMiddlewares(const Design &design)
{
    QStringList names;
    for (const PeripheralsBaseInfo &entry : design.middlewares()) {
        const ModuleConfiguration *module = design.module(entry.InstanceName);
        if (module && (module->GetIPStatusFlag() & IPSTATUS_ON) != 0)
            names.append(entry.InstanceName);
    }
    return names;
}

QString checkPackagePathValid(const FirmwarePackage &package, const QString &series, IDE_TYPE type,
                              const QString &templatePath)
{
    if (package.path.isEmpty())
        return QCoreApplication::translate("Project", "No firmware package of the series is installed.");
    const QString board = QLatin1String("project/") + ZV32MCUSERIALS_To_ZVStartString(series);
    const QString skeleton = board + QLatin1String("/templates/") + getIDEPathName(type);
    const bool elsewhere = QFileInfo(templatePath + QLatin1Char('/') + getIDEPathName(type)).isDir();
    QStringList missing;
    for (const QString &folder : {QStringLiteral("libraries"), QStringLiteral("middlewares"), skeleton}) {
        const QString path = package.path + QLatin1Char('/') + folder;
        if (!QFileInfo(path).isDir() && !(folder == skeleton && elsewhere))
            missing.append(QCoreApplication::translate("Project", "The firmware package has no folder %1").arg(path));
    }
    return missing.join(QLatin1Char('\n'));
}

bool checkComponentsPathValid(const QString &repository, const QStringList &middlewares)
{
    return !middlewares.contains(RtThread) || !rtThreadFolder(PackageListing(repository)).isEmpty();
}

QString projectTemplatePath(const AppPaths &paths, const QString &series)
{
    return paths.databaseDir() + QLatin1String("/projectTemplate/") + series.toUpper();
}

QList<MainFuncNameForRank> validFunctionRank(const Design &design)
{
    const std::unique_ptr<GenerateCode_ALL> generator =
        GenerateCode_ALL::Get_GenerateCode_All(generationInput(design, generationOptions(design)));
    return generator ? generator->functionRank() : QList<MainFuncNameForRank>();
}

ProjectOrder projectOrder(const Design &design, const QString &fullPath, const FirmwarePackage &package,
                          const QString &repository, CodeGeneration &code)
{
    const ProjectValues &values = design.project();
    ProjectOrder order;
    order.started = fileClock();
    order.ideType = values.getProjectIDE();
    order.series = design.series();
    order.device = design.device();
    order.pid = design.pid();
    order.projectName = values.ProjectName;
    order.projectFullPath = fullPath;
    order.packagePath = package.path;
    order.templatePath = projectTemplatePath(design.paths(), design.series());
    order.componentsPath = repository;
    order.flashSize = flashSizeOf(design);
    order.sramSize = sramSizeOf(design);
    order.flashSizeFlag = GetFlashSizeFlagFromSize(int(order.flashSize / KB));
    order.minHeapSize = values.getMinHeapSize();
    order.minStackSize = values.getMinStackSize();
    order.armCompiler = values.getARM_AC_Set();
    order.backupCode = values.BackupCode;
    order.deletePriviousFiles = values.DeletePriviousFiles;
    order.addNecessaryFile = values.AddNecessaryFileFlag;

    order.fingerprint = fingerprintOf(order, code.fingerprint());
    const ProjectStamp stamp(fullPath);
    if (const int place = stamp.matches(order.fingerprint); place >= 0 && !order.backupCode) {
        order.nothingChanged = true;
        order.unchanged = stamp.files().project;
        QStringList sources = stamp.files().generated;
        for (QString &path : sources)
            path.remove(0, CodeFolder.size());
        code.setUnchanged(sources, place == 0);
        return order;
    }
    code.run(false);
    const GenerateCode_ALL *generator = code.generator();
    if (!generator)
        return order;
    order.validIPFileNameList = generator->GenerateCode_Get_Valid_IP_FileNameList();
    order.allIPFileNameList = generator->GenerateCode_Get_All_IP_FileNameList();
    order.validMidNameList = generator->GenerateCode_Get_Valid_Mid_NameList();
    order.validMidFileNameList = generator->GenerateCode_Get_Valid_Mid_FileNameList();
    order.validMidProjectFileList = generator->GenerateCode_Get_Valid_Mid_ProjectFilesList();
    order.validProjectIncludePathList = generator->Get_Valid_ProjectIncludePathList();
    order.deleteProjectFileList = generator->GenerateCode_Get_Delete_ProjectFilesList();
    order.deleteProjectIncludePathList = generator->Get_Delete_ProjectIncludePathList();
    addGeneratedSources(order, code.record());
    return order;
}

void rememberProject(const ProjectOrder &order, const BuilderAccount &account, const CodeGeneration &code)
{
    const QVector<GeneratedFileRecord> &made = code.record().files;
    // What has no effect is told at every run.
    const bool hasRemark = std::any_of(made.begin(), made.end(), [](const GeneratedFileRecord &file) {
        return !file.portWithoutPin.isEmpty() || !file.portsWithoutPrintf.isEmpty() || !file.repeatedBlocks.isEmpty();
    });
    const bool whole = account.code == 0 && !account.cancelled && code.record().ok && !hasRemark;
    const std::optional<quint64> settled = code.settledFingerprint();
    if (!whole || order.nothingChanged || order.backupCode || !account.notes.isEmpty() || !settled)
        return;
    // The program stands for its templates and rules.
    ProjectStamp::Files files{account.sources + QStringList{QCoreApplication::applicationFilePath()},
                              account.written + account.unchanged,
                              {}};
    for (const GeneratedFileRecord &file : code.record().files) {
        if (file.state != GeneratedFileRecord::State::Removed)
            files.generated.append(CodeFolder + file.path);
    }
    // First the design as this run leaves it, then as it was before.
    ProjectStamp::leave(order.projectFullPath, order.started, {fingerprintOf(order, *settled), order.fingerprint},
                        files);
}

bool goesOnWithoutPackage(UserPrompt &prompt, const QString &series, const QString &detail)
{
    const QString name = MCUSerialString_To_MCUConSerialString(series) + QLatin1String("_Firmware_Library_V2.x.x");
    return goesOn(prompt,
                  QT_TRANSLATE_NOOP("Prompt", "The Firmware Package(%1) by the Project is not available, Please "
                                              "confirm whether to continue?"),
                  {name}, detail);
}

bool goesOnWithoutComponents(UserPrompt &prompt)
{
    return goesOn(prompt,
                  QT_TRANSLATE_NOOP("Prompt", "The middleware component of RT-Thread_Nano does not exist, you can "
                                              "click \"Package Manager-Components\" to install. Please confirm "
                                              "whether to continue?"),
                  {}, {});
}

bool showGenerateProjectError(UserPrompt &prompt, const BuilderAccount &account)
{
    if (account.cancelled)
        return false;
    return account.code == 0 || goesOn(prompt, CodeTexts.at(account.code), {}, account.detail);
}

} // namespace ChipLoom
