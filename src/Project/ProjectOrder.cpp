#include "Project/ProjectOrder.h"

#include "Model/SeriesHelpers.h"

#include <algorithm>
#include <iterator>

namespace ChipLoom {

namespace {

/// The folder of the core in a firmware package.
QString coreFolder(const QString &series)
{
    const SeriesTraits *traits = seriesTraits(series);
    return traits && traits->cortexM0Plus ? QStringLiteral("libraries/cmsis/cm0plus")
                                          : QStringLiteral("libraries/cmsis/cm4");
}

QString driverSource(const QString &name)
{
    return QLatin1String("libraries/drivers/src/") + name + QLatin1String(".c");
}

QString startupFolder(const ProjectOrder &order)
{
    return Is_NewBSP_DirStruct(order.series) ? QStringLiteral("libraries/device/src/startup")
                                             : coreFolder(order.series) + QLatin1String("/device_support/startup");
}

} // namespace

bool ProjectOrder::isIar() const
{
    return ideType >= IDE_IAR_V6_10 && ideType <= IDE_IAR_V9_3;
}

bool ProjectOrder::isMdk() const
{
    return ideType == IDE_MDK_V4 || ideType == IDE_MDK_V5;
}

QString ProjectOrder::toolchainFolder() const
{
    return isTextForm() ? QString() : QLatin1String("project/") + getIDEPathName(ideType);
}

QString ProjectOrder::toolchainDir() const
{
    return isTextForm() ? projectFullPath : projectFullPath + QLatin1Char('/') + toolchainFolder();
}

QString ProjectOrder::skeletonMark() const
{
    if (ideType == IDE_MAKEFILE)
        return projectFullPath + QLatin1String("/Makefile");
    if (ideType == IDE_CMAKE)
        return projectFullPath + QLatin1String("/cmake");
    return toolchainDir();
}

QString ProjectOrder::filePrefix() const
{
    return QLatin1String("zv32") + GetMCUSerialsSimple(series, false);
}

QString ProjectOrder::linkerName() const
{
    return series + QLatin1Char('x') + flashSizeFlag;
}

QString ProjectOrder::coreIncludeDir() const
{
    return coreFolder(series) + QLatin1String("/core_support");
}

QString ProjectOrder::deviceIncludeDir() const
{
    return Is_NewBSP_DirStruct(series) ? QStringLiteral("libraries/device/inc")
                                       : coreFolder(series) + QLatin1String("/device_support");
}

QString ProjectOrder::deviceSourceDir() const
{
    return Is_NewBSP_DirStruct(series) ? QStringLiteral("libraries/device/src")
                                       : coreFolder(series) + QLatin1String("/device_support");
}

QString ProjectOrder::startupFile() const
{
    const QLatin1String branch(isIar() ? "/iar/startup_" : isMdk() ? "/mdk/startup_" : "/gcc/startup_");
    return startupFolder(*this) + branch + filePrefix() + QLatin1String(".s");
}

QString ProjectOrder::linkerFile() const
{
    if (isMdk())
        return {};
    if (isIar())
        return toolchainFolder() + QLatin1Char('/') + linkerName() + QLatin1String(".icf");
    const QString folder = isTextForm() ? QStringLiteral("project") : toolchainFolder();
    return folder + QLatin1String("/ldscripts/") + linkerName() + QLatin1String("_FLASH.ld");
}

QStringList ProjectOrder::drivers() const
{
    const QStringList &wanted = addNecessaryFile ? validIPFileNameList : allIPFileNameList;
    QStringList names;
    std::copy_if(wanted.begin(), wanted.end(), std::back_inserter(names),
                 [&](const QString &name) { return ipNameList.isEmpty() || ipNameList.contains(name); });
    return names;
}

QStringList ProjectOrder::driverSources() const
{
    QStringList sources;
    for (const QString &name : drivers())
        sources.append(driverSource(name));
    return sources;
}

bool ProjectOrder::isDriverOfUser(const QString &path) const
{
    const QString name = path.section(QLatin1Char('/'), -1).section(QLatin1Char('.'), 0, 0);
    const bool exists = ipNameList.isEmpty() || ipNameList.contains(name);
    return exists && path == driverSource(name) && !formerDrivers.isEmpty() && !formerDrivers.contains(name) &&
           !drivers().contains(name);
}

QStringList ProjectOrder::applicationSources() const
{
    QStringList sources;
    if (needsSystemFiles)
        sources += {QStringLiteral("project/src/syscalls.c"), QStringLiteral("project/src/sysmem.c")};
    for (const QString &name : projectSources)
        sources.append(QLatin1String("project/src/") + name);
    return sources;
}

QStringList ProjectOrder::includeDirs() const
{
    QStringList dirs{QStringLiteral("project/inc"), coreIncludeDir(), deviceIncludeDir(),
                     QStringLiteral("libraries/drivers/inc")};
    for (QString path : validProjectIncludePathList) {
        path.replace(QLatin1Char('\\'), QLatin1Char('/'));
        // As from a toolchain's folder in "project".
        if (path.startsWith(QLatin1String("../../")))
            path.remove(0, 6);
        else if (path.startsWith(QLatin1String("../")))
            path.replace(0, 2, QStringLiteral("project"));
        if (!dirs.contains(path))
            dirs.append(path);
    }
    return dirs;
}

} // namespace ChipLoom
