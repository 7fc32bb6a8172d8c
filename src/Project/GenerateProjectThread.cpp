#include "Project/GenerateProjectThread.h"

#include "Base/FileState.h"
#include "GenerateCode/Generatecode_ALL.h"
#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/UserBlocks.h"
#include "Model/SeriesHelpers.h"
#include "Packages/FirmwarePackages.h"
#include "Project/MiddlewareFolders.h"
#include "Project/PackageListing.h"
#include "Project/ProjectFolder.h"
#include "Project/ToolchainEditor.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>

#include <algorithm>

namespace ChipLoom {

namespace {

const QString Libraries = QStringLiteral("libraries");
const QString ProjectInc = QStringLiteral("project/inc");
const QString ProjectSrc = QStringLiteral("project/src");
const QString DriverHeaders = QStringLiteral("libraries/drivers/inc");
const QString FileHead = QStringLiteral("Header");
// A run takes seconds; what is older was left by one that was killed.
constexpr int LockHeldMs = 3600 * 1000;

enum BuilderCode { Done = 0, CopyFailed = 1, LinkerFailed = 2, ProjectFileFailed = 3 };

/// The drivers of a package, by their headers, without extension.
QStringList GetIpNameListFromPackage(const PackageListing &package)
{
    QStringList names;
    for (const QString &header : package.listedNames(DriverHeaders)) {
        if (header.endsWith(QLatin1String(".h")))
            names.append(header.chopped(2));
    }
    return names;
}

bool isGenerated(const std::string &text)
{
    return userBlockNames(text).contains(FileHead); // every file is made with one
}

/// What the user wrote into a generated file that goes.
QStringList remarksOnRemoval(const std::string &text, const QString &path)
{
    GeneratedFileRecord file{path, GeneratedFileRecord::State::Removed, {}, {}};
    file.lostBlocks = lostUserBlocks(text, {});
    file.lostBlocks.removeAll(FileHead);
    QStringList remarks = remarksOn(file);
    for (QString &remark : remarks)
        remark.prepend(path + QLatin1String(": "));
    return remarks;
}

} // namespace

GenerateProjectThread::GenerateProjectThread(ProjectOrder order, QObject *parent)
    : QThread(parent), m_order(std::move(order)), m_editor(ToolchainEditor::of(m_order.ideType))
{
}

void GenerateProjectThread::run()
{
    build();
    emitResult(m_account.code);
}

const BuilderAccount &GenerateProjectThread::build()
{
    m_account = {};
    m_done = 0;
    if (m_order.nothingChanged) {
        m_account.unchanged = m_order.unchanged;
        return m_account;
    }
    // Of two runs at once, each would take the other's files for the user's, and move them over what the user had.
    QLockFile lock(m_order.projectFullPath + QLatin1String("/.chiploom-lock"));
    lock.setStaleLockTime(LockHeldMs);
    if (!lock.tryLock() && lock.error() == QLockFile::LockFailedError) {
        m_account.code = CopyFailed;
        fail(QCoreApplication::translate("Project", "Another program is writing the project in %1; try again later")
                 .arg(m_order.projectFullPath));
        return m_account;
    }
    ProjectFolder folder(
        m_order.projectFullPath, m_account, [this] { return m_stop.load(); },
        [this] { emit progress(++m_done, m_total); });
    m_account.code = GenerateProject(folder);
    // What has been copied is known to the next run, whatever stopped this one.
    const QString detail = m_account.detail;
    const bool kept = folder.finish();
    if (!kept && m_account.code == Done)
        m_account.code = CopyFailed;
    else if (!kept)
        m_account.detail = detail;
    return m_account;
}

int GenerateProjectThread::GenerateProject(ProjectFolder &folder)
{
    for (const QString &place : {QString(), ProjectInc, ProjectSrc, m_order.toolchainFolder()})
        folder.clearFolder(place);
    if (m_order.backupCode && !BackupOldProjectFile(folder))
        return CopyFailed;
    if (!CopyProjectDirAndFile(folder))
        return CopyFailed;
    DeleteMiddlewaresFile(folder);
    if (!CopyMiddlewaresFile(folder))
        return CopyFailed;
    // Without a package there is a project to edit only if an earlier run made one.
    if (QFileInfo::exists(m_order.skeletonMark())) {
        if (!ConfigLinkerSettings())
            return LinkerFailed;
        if (!ConfigProjectFile())
            return ProjectFileFailed;
        folder.manifest().setDrivers(getIDEPathName(m_order.ideType), m_order.drivers());
    }
    folder.manifest().setUnfinished(getIDEPathName(m_order.ideType), false);
    return Done;
}

bool GenerateProjectThread::BackupOldProjectFile(ProjectFolder &folder)
{
    for (const QString &source : {ProjectInc, ProjectSrc}) {
        const QDir dir(m_order.projectFullPath + QLatin1Char('/') + source);
        for (const QString &name : dir.entryList(QDir::Files, QDir::Name)) {
            if (!folder.copyInside(source + QLatin1Char('/') + name,
                                   source + QLatin1String("/backup/") + name + BackupSuffix))
                return false;
        }
    }
    return true;
}

bool GenerateProjectThread::CopyProjectDirAndFile(ProjectFolder &folder)
{
    const QFileInfo root(m_order.projectFullPath);
    if (root.exists() && !root.isDir())
        return fail(QCoreApplication::translate("Project", "%1 is no folder").arg(m_order.projectFullPath));
    ProjectManifest &manifest = folder.manifest();
    const QString toolchain = getIDEPathName(m_order.ideType);
    const bool interrupted = manifest.isUnfinished(toolchain);
    m_order.formerDrivers = manifest.drivers(toolchain);
    m_isFirstGenerateProject = interrupted || !QFileInfo::exists(m_order.skeletonMark());
    if (m_order.packagePath.isEmpty())
        return true;

    const QString packageName = QFileInfo(m_order.packagePath).fileName();
    const QString family = familyOfPackage(packageName);
    const QString formerFamily = familyOfPackage(manifest.package());
    if (!family.isEmpty() && !formerFamily.isEmpty() && family != formerFamily)
        return fail(QCoreApplication::translate("Project",
                                                "The project in %1 was made for %2, and its files would not fit "
                                                "%3: choose another folder")
                        .arg(m_order.projectFullPath, formerFamily, family));

    PackageListing package(m_order.packagePath);
    PackageListing templates(m_order.templatePath);
    PackageListing components(m_order.componentsPath);
    // All of it is looked at before anything is written.
    if (!listLibraries(package))
        return fail(package.error());
    const int libraryFiles = package.items().size();
    if (!listLinkerScript(package))
        return fail(package.error());
    if (m_isFirstGenerateProject && !listSkeleton(package, templates, !interrupted))
        return fail(templates.error().isEmpty() ? package.error() : templates.error());
    if (!listMiddlewareFolders(m_order, package, components))
        return fail(package.error().isEmpty() ? components.error() : package.error());
    m_order.ipNameList = GetIpNameListFromPackage(package);
    tellMissingDrivers(package);
    m_account.sources = package.lookedAt() + templates.lookedAt() + components.lookedAt();

    const QVector<CopyItem> libraries = package.items().mid(0, libraryFiles);
    const QVector<CopyItem> rest = package.items().mid(libraryFiles) + templates.items() + components.items();
    m_total = libraries.size() + rest.size() + m_order.validMidFileNameList.size();

    const bool otherPackage = manifest.isKnown() && !manifest.package().isEmpty() ? manifest.package() != packageName
                                                                                  : m_order.updatePackageVersion;
    if (folder.hasFolder(Libraries) && otherPackage) {
        if (!folder.replaceFolder(Libraries, libraries))
            return false;
    } else if (!folder.copy(libraries)) {
        return false;
    }
    manifest.setPackage(packageName);
    if (m_isFirstGenerateProject) {
        // Until the editor is done with it, a skeleton is no project.
        manifest.setUnfinished(toolchain, true);
        if (!folder.makeFolder(QString()) || !folder.finish())
            return false;
    }
    DeleteLDFileInFolder(folder, package);
    return folder.copy(rest);
}

bool GenerateProjectThread::listLibraries(PackageListing &package) const
{
    const QString core = m_order.coreIncludeDir().section(QLatin1Char('/'), 2, 2); // "cm4"
    const QStringList cores{QStringLiteral("cm4"), QStringLiteral("cm0plus")};
    const bool withDsp = m_order.usesMiddleware(QStringLiteral("CMSIS_DSP"));
    const auto skip = [&](const QString &folder) {
        if (!folder.contains(QLatin1Char('/')) && folder.compare(QLatin1String("dsp"), Qt::CaseInsensitive) == 0)
            return !withDsp;
        return cores.contains(folder) && folder != core;
    };
    const QString cmsis = QStringLiteral("libraries/cmsis");
    const QString device = QStringLiteral("libraries/device");
    const QString drivers = QStringLiteral("libraries/drivers");
    if (!package.copyDirectory(cmsis, cmsis, false, skip) ||
        (Is_NewBSP_DirStruct(m_order.series) && !package.copyDirectory(device, device)) ||
        !package.copyDirectory(drivers, drivers))
        return false;
    // Part of what was listed; asked for again because a project without it cannot start.
    return package.hasFile(m_order.startupFile()) || package.copyFile(m_order.startupFile(), m_order.startupFile());
}

void GenerateProjectThread::tellMissingDrivers(const PackageListing &package)
{
    for (const QString &name : qAsConst(m_order.validIPFileNameList)) {
        for (const QString &file : {DriverHeaders + QLatin1Char('/') + name + QLatin1String(".h"),
                                    QLatin1String("libraries/drivers/src/") + name + QLatin1String(".c")}) {
            if (!package.hasFile(file))
                m_account.notes.append(QCoreApplication::translate("Project", "The firmware package has no file %1")
                                           .arg(m_order.packagePath + QLatin1Char('/') + file));
        }
    }
}

bool GenerateProjectThread::listLinkerScript(PackageListing &package) const
{
    const QString script = m_order.linkerFile();
    if (script.isEmpty())
        return true;
    const QString folder = QFileInfo(m_order.startupFile()).path() + QLatin1String("/linker/");
    return package.copyFile(folder + QFileInfo(script).fileName(), script);
}

bool GenerateProjectThread::listSkeleton(PackageListing &package, PackageListing &templates, bool keepExisting) const
{
    const QString name = getIDEPathName(m_order.ideType);
    const QString board = QLatin1String("project/") + ZV32MCUSERIALS_To_ZVStartString(m_order.series);
    const QString folder = board + QLatin1String("/templates/") + name;
    // Makefile and CMake keep what stands in the root; a toolchain's folder is new as a whole.
    if (!package.hasFolder(folder) && templates.hasFolder(name))
        return templates.copyDirectory(name, m_order.toolchainFolder(), keepExisting);
    return package.copyDirectory(folder, m_order.toolchainFolder(), keepExisting);
}

void GenerateProjectThread::DeleteLDFileInFolder(ProjectFolder &folder, const PackageListing &package) const
{
    const QString script = m_order.linkerFile();
    if (script.isEmpty())
        return;
    // Scripts of another device of the package go; what the user put beside them stays.
    const QString source = QFileInfo(m_order.startupFile()).path() + QLatin1String("/linker");
    for (const QString &name : package.listedNames(source)) {
        const QString other = QFileInfo(script).path() + QLatin1Char('/') + name;
        if (other != script)
            folder.retire(other);
    }
}

void GenerateProjectThread::DeleteMiddlewaresFile(ProjectFolder &folder)
{
    if (!m_order.deletePriviousFiles)
        return;
    for (const QString &place : {ProjectInc, ProjectSrc}) {
        for (const FolderEntry &entry : folderEntries(m_order.projectFullPath + QLatin1Char('/') + place)) {
            if (!m_order.deleteProjectFileList.contains(entry.name))
                continue;
            const QString path = place + QLatin1Char('/') + entry.name;
            const std::string text = readSourceText(m_order.projectFullPath + QLatin1Char('/') + path).text;
            const QStringList remarks = remarksOnRemoval(text, path);
            if (remarks.isEmpty() && isGenerated(text) ? folder.remove(path) : folder.setAside(path)) {
                m_account.notes += remarks;
            } else { // it stays; the project does not list it
                m_account.notes.append(m_account.detail);
                m_account.detail.clear();
            }
        }
    }
}

bool GenerateProjectThread::CopyMiddlewaresFile(ProjectFolder &folder)
{
    if (m_order.packagePath.isEmpty())
        return true;
    PackageListing package(m_order.packagePath);
    for (const MiddlewaresCopyFile &file : qAsConst(m_order.validMidFileNameList)) {
        QString target = file.DestDIr;
        target.replace(QLatin1Char('\\'), QLatin1Char('/'));
        target = QDir::cleanPath(QLatin1String("project/") + target + QLatin1Char('/') +
                                 (file.DestFileName.isEmpty() ? file.FileName : file.DestFileName));
        if (target.startsWith(QLatin1String("..")))
            return fail(QCoreApplication::translate("Project", "%1 lies outside of the project").arg(target));
        if (!package.copyFile(middlewareFilePath(file), target))
            return fail(package.error());
    }
    m_account.sources += package.lookedAt();
    return folder.copy(package.items());
}

bool GenerateProjectThread::ConfigLinkerSettings()
{
    return m_editor ? m_editor->ConfigLinkerSettings(m_order, m_account) : true;
}

bool GenerateProjectThread::ConfigProjectFile()
{
    if (m_editor)
        return m_editor->ConfigProjectFile(m_order, m_isFirstGenerateProject, m_account);
    return fail(QCoreApplication::translate("Project", "There is no editor for projects of %1")
                    .arg(getIDEPathName(m_order.ideType)));
}

bool GenerateProjectThread::fail(const QString &detail)
{
    m_account.detail = detail;
    return false;
}

} // namespace ChipLoom
