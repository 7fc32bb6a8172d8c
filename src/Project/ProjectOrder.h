#pragma once

#include "Model/ShareParameter.h"

#include <QString>
#include <QStringList>

namespace ChipLoom {

/// Everything that the builder of a project is told: a plain record, filled before the run, so that the builder neither
/// looks at the design nor asks anybody. Paths have no final slash.
struct ProjectOrder
{
    IDE_TYPE ideType = IDE_ZV32_IDE;
    QString series; ///< "ZV32F421"
    QString device; ///< "ZV32F421C8T7"
    quint32 pid = 0;
    QString projectName;
    QString projectFullPath; ///< root of the project: "libraries", "middlewares" and "project" lie in it
    QString packagePath;     ///< root of the firmware package; empty for a project without one
    QString templatePath; ///< skeletons that are used where the package has none: "<database>/projectTemplate/ZV32F421"
    QString componentsPath;       ///< repository with the component folders ("LM_RT-Thread_Nano")
    quint32 flashSize = 0;        ///< bytes
    quint32 sramSize = 0;         ///< bytes
    QChar flashSizeFlag;          ///< letter of the flash size in device names: '8' for 64 KB
    quint32 minHeapSize = 0x200;  ///< bytes
    quint32 minStackSize = 0x400; ///< bytes
    ARM_AC_Set armCompiler = ARM_AC_NotSet;
    bool backupCode = false;
    bool deletePriviousFiles = true;      ///< files of the delete lists go
    bool addNecessaryFile = true;         ///< only drivers in use are listed in the project
    bool updatePackageVersion = false;    ///< another package than that of the former generation
    bool needsSystemFiles = false;        ///< "syscalls.c" and "sysmem.c" stand among the generated sources
    QStringList projectSources = {};      ///< generated files in "project/src" in the order of making: "main.c";
                                          ///< without the system files
    QStringList validIPFileNameList = {}; ///< drivers in use, without extension: "zv32f421_crm"
    QStringList allIPFileNameList = {};   ///< drivers of the series
    QStringList ipNameList = {};          ///< drivers that the package has; filled in by the builder
    QStringList formerDrivers = {};       ///< that the last run listed, or empty; filled in by the builder
    QStringList validMidNameList = {};    ///< "FREERTOS", "CMSIS_DSP"
    QList<MiddlewaresCopyFile> validMidFileNameList = {};
    QList<MiddlewaresPojectFiles> validMidProjectFileList = {}; ///< paths are relative to a toolchain's folder
    QStringList validProjectIncludePathList = {};
    QStringList deleteProjectFileList = {}; ///< names of generated files that this configuration does not have
    QStringList deleteProjectIncludePathList = {};
    qint64 started = 0;          ///< when the package had not been looked at yet; see `fileClock`
    quint64 fingerprint = 0;     ///< of the order and of what the code is made from; for `rememberProject`
    bool nothingChanged = false; ///< since the last run: there is nothing to build
    QStringList unchanged = {};  ///< the project's files then, relative to its root

    bool usesMiddleware(const QString &name) const { return validMidNameList.contains(name); }
    bool isIar() const;
    bool isMdk() const;
    /// Makefile and CMake: their files lie in the root of the project, not in a toolchain's folder.
    bool isTextForm() const { return ideType == IDE_MAKEFILE || ideType == IDE_CMAKE; }

    /// "project/MDK_V5"; empty for the text forms, whose folder is the root itself.
    QString toolchainFolder() const;
    /// Absolute; the root for the text forms.
    QString toolchainDir() const;
    /// Whose presence means that the project has been made before: the toolchain's folder, "Makefile" or "cmake";
    /// absolute.
    QString skeletonMark() const;

    /// File names as the series has them: "zv32f421", of the package's token: "zv32f403a_407".
    QString filePrefix() const;
    /// The macro that names the device to the headers: "ZV32F421C8T7".
    QString mcuMacro() const { return device; }
    /// Name of the linker script without suffix: "ZV32F421x8".
    QString linkerName() const;

    // Relative to the root of the project and with slashes, as the files lie after the copy.
    QString coreIncludeDir() const;   ///< "libraries/cmsis/cm4/core_support"
    QString deviceIncludeDir() const; ///< with "zv32f421.h" and "system_zv32f421.h"
    QString deviceSourceDir() const;  ///< with "system_zv32f421.c"
    /// The assembly start-up file of the toolchain.
    QString startupFile() const;
    /// The linker script or ".icf" that the project uses; empty for MDK.
    QString linkerFile() const;
    /// Drivers that the project lists, without extension.
    QStringList drivers() const;
    /// The same with their folder: "libraries/drivers/src/zv32f421_crm.c".
    QStringList driverSources() const;
    /// Whether a file is a driver of the package that the user has listed, as neither this run nor the last one does.
    bool isDriverOfUser(const QString &path) const;
    /// Generated sources and, where needed, the system files, with their folder: "project/src/main.c".
    QStringList applicationSources() const;
    /// All folders of headers in the order of search: generated, core, device, drivers, middlewares.
    QStringList includeDirs() const;
};

/// What came of a build.
struct BuilderAccount
{
    int code = 0; ///< 0 done, 1 the copy failed, 2 the linker settings, 3 the project file
    bool cancelled = false;
    QStringList written = {};   ///< files made or changed, relative to the root of the project
    QStringList removed = {};   ///< files taken away, as above
    QStringList unchanged = {}; ///< files that stood as they are to be, as above
    QStringList sources = {};   ///< files and folders of packages that were looked at; absolute
    QStringList notes = {};     ///< for a person: what was left undone and why, though nothing failed
    QString detail = {};        ///< for a person: what stopped the build, where, and what to do; empty if nothing did
};

} // namespace ChipLoom
