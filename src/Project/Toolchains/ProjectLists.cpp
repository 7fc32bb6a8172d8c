#include "Project/Toolchains/ProjectLists.h"

#include "Model/SeriesHelpers.h"
#include "Project/MiddlewareFolders.h"
#include "Project/ProjectFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace ChipLoom {

namespace {

const QString DriverDefine = QStringLiteral("USE_STDPERIPH_DRIVER");
const QStringList DspDefines{QStringLiteral("ARM_MATH_CM4"), QStringLiteral("ARM_MATH_MATRIX_CHECK"),
                             QStringLiteral("ARM_MATH_ROUNDING"), QStringLiteral("ARM_MATH_LOOPUNROLL")};
// Groups that the builder fills whatever the design uses.
constexpr int FixedGroups = 3;

QString fileName(const QString &path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

bool isBrought(const QString &path, const ProjectOrder &order)
{
    return isOfPackage(path) && !order.isDriverOfUser(path);
}

bool isMcuMacro(const QString &define)
{
    static const QRegularExpression expression(QStringLiteral("^ZV32(?:F|M|L|G|WB|A|C)\\d"));
    return expression.match(define).hasMatch();
}

} // namespace

bool isOfPackage(const QString &path)
{
    static const QRegularExpression expression(
        QStringLiteral("^libraries/(?:(?:cmsis|device)/|drivers/(?:src/zv32[^/]*|inc)$)"));
    return expression.match(path).hasMatch();
}

QStringList IniProjectGroupName()
{
    return {QStringLiteral("user"),
            QStringLiteral("firmware"),
            QStringLiteral("cmsis"),
            QStringLiteral("cmsis_dsp"),
            QStringLiteral("usbd_class"),
            QStringLiteral("usbh_class"),
            QStringLiteral("middlewares/usb_driver"),
            QStringLiteral("middlewares/usbd_driver"),
            QStringLiteral("middlewares/freertos"),
            QStringLiteral("middlewares/lwip"),
            QStringLiteral("middlewares/fatfs"),
            QStringLiteral("middlewares/i2c_application"),
            QStringLiteral("middlewares/rt-thread/kernel"),
            QStringLiteral("middlewares/rt-thread/libcpu"),
            QStringLiteral("middlewares/rt-thread/device"),
            QStringLiteral("middlewares/rt-thread/shell")};
}

QList<ProjectGroup> projectGroups(const ProjectOrder &order)
{
    QList<ProjectGroup> groups{
        {QStringLiteral("user"), order.applicationSources()},
        {QStringLiteral("firmware"), order.driverSources()},
        {QStringLiteral("cmsis"),
         {order.deviceSourceDir() + QLatin1String("/system_") + order.filePrefix() + QLatin1String(".c"),
          order.startupFile()}}};
    QStringList names = IniProjectGroupName();
    for (const MiddlewaresPojectFiles &entry : order.validMidProjectFileList) {
        if (!names.contains(entry.GroupName))
            names.append(entry.GroupName);
    }
    for (const QString &name : std::as_const(names)) {
        for (const MiddlewaresPojectFiles &entry : order.validMidProjectFileList) {
            if (entry.GroupName != name)
                continue;
            auto group = std::find_if(groups.begin(), groups.end(), [&](const auto &one) { return one.name == name; });
            if (group == groups.end())
                group = groups.insert(groups.end(), ProjectGroup{name, {}});
            for (const PojectFile &file : entry.PojectFileList) {
                const QString path = rootRelative(file.FilePath, QStringLiteral("project/IDE"));
                if (!group->files.contains(path))
                    group->files.append(path);
            }
        }
    }
    // A middleware that is off still has its group in the project, which is to be emptied.
    for (const QString &name : IniProjectGroupName().mid(FixedGroups)) {
        if (std::none_of(groups.begin(), groups.end(), [&](const auto &one) { return one.name == name; }))
            groups.append({name, {}});
    }
    return groups;
}

QStringList mergedFiles(const ProjectGroup &group, const QStringList &listed, const ProjectOrder &order, bool first)
{
    QStringList files;
    if (!first) {
        const bool off = group.files.isEmpty() && IniProjectGroupName().indexOf(group.name) >= FixedGroups;
        for (const QString &path : listed) {
            const bool wanted = group.files.contains(path);
            const bool stale =
                isBrought(path, order) || isDeleted(path, group.files, order) || (off && isOfMiddleware(path));
            if ((wanted || !stale) && !files.contains(path))
                files.append(path);
        }
    }
    for (const QString &path : group.files) {
        if (!files.contains(path))
            files.append(path);
    }
    return files;
}

QStringList mergedSources(const QStringList &wanted, const QStringList &listed, const ProjectOrder &order, bool first)
{
    QStringList files = wanted;
    if (first)
        return files;
    for (const QString &path : listed) {
        const bool stays = !isBrought(path, order) && !isOfMiddleware(path) && !isDeleted(path, wanted, order);
        if (stays && !files.contains(path))
            files.append(path);
    }
    return files;
}

bool isDeleted(const QString &rootPath, const QStringList &current, const ProjectOrder &order)
{
    return order.deleteProjectFileList.contains(fileName(rootPath)) && !current.contains(rootPath);
}

QStringList mergedIncludes(const QStringList &listed, const ProjectOrder &order, bool first)
{
    QStringList dirs = order.includeDirs();
    if (first)
        return dirs;
    QStringList stale;
    for (const QString &path : order.deleteProjectIncludePathList)
        stale.append(rootRelative(path, QStringLiteral("project/IDE")));
    for (const QString &path : listed) {
        if (!dirs.contains(path) && !stale.contains(path) && !isOfPackage(path) && !path.isEmpty())
            dirs.append(path);
    }
    return dirs;
}

QStringList mergedDefines(const QStringList &listed, const ProjectOrder &order, bool first)
{
    QStringList defines{order.mcuMacro(), DriverDefine};
    if (order.usesMiddleware(QStringLiteral("CMSIS_DSP")))
        defines += DspDefines;
    if (first)
        return defines;
    for (const QString &define : listed) {
        if (!define.isEmpty() && !isMcuMacro(define) && !DspDefines.contains(define) && !defines.contains(define))
            defines.append(define);
    }
    return defines;
}

QString rootRelative(const QString &path, const QString &toolchainFolder)
{
    QString plain = withoutBlanks(path);
    plain.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (QDir::isAbsolutePath(plain) || plain.contains(QLatin1Char(':')))
        return plain;
    // What does not begin in the toolchain's folder is told from the root.
    if (!plain.startsWith(QLatin1String("../")) && !plain.startsWith(QLatin1String("./")))
        return plain;
    return QDir::cleanPath(toolchainFolder + QLatin1Char('/') + plain);
}

QString fromToolchain(const QString &rootPath, const QString &toolchainFolder)
{
    const int slash = toolchainFolder.indexOf(QLatin1Char('/'));
    const QString parent = toolchainFolder.left(slash + 1);
    if (slash > 0 && rootPath.startsWith(parent))
        return QLatin1String("../") + rootPath.mid(parent.size());
    return QLatin1String("../../") + rootPath;
}

QRegularExpression usedOnce(const QString &expression, QRegularExpression::PatternOptions options)
{
    return QRegularExpression(QLatin1String("(*NO_JIT)") + expression, options);
}

bool replaceFirst(QString &text, const QString &expression, const QString &by, int group)
{
    const QRegularExpressionMatch match =
        usedOnce(expression, QRegularExpression::DotMatchesEverythingOption).match(text);
    if (!match.hasMatch())
        return false;
    text.replace(match.capturedStart(group), match.capturedLength(group), by);
    return true;
}

bool isPackageLinkerFile(const QString &path)
{
    static const QRegularExpression expression(
        QStringLiteral("(?:^|[/\\\\\"])ZV32[A-Z0-9]+x\\w(?:_FLASH\\.ld|\\.icf)\"?$"));
    return expression.match(path).hasMatch();
}

QString keilDeviceName(const ProjectOrder &order)
{
    return (DeviceNameHaveCrossingLine(order.series) ? QStringLiteral("-") : QString()) + order.device;
}

QString hexSize(quint32 bytes)
{
    return QLatin1String("0x") + QString::number(bytes, 16).toUpper();
}

void modifyFileByProjectName(QString &text, const QString &projectName, bool xml)
{
    QString name = utf8AsLatin1(projectName);
    if (xml)
        name = name.toHtmlEscaped();
    // A text that a stopped run has named already keeps its name.
    const QString named =
        name.contains(QLatin1String("emplate")) ? QRegularExpression::escape(name) + QLatin1Char('|') : QString();
    const QRegularExpression expression(named + QLatin1String("[tT]emplate"));
    QString result;
    int from = 0;
    QRegularExpressionMatchIterator matches = expression.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result += text.mid(from, match.capturedStart() - from) + name;
        from = match.capturedEnd();
    }
    text = result + text.mid(from);
}

} // namespace ChipLoom
