#include "Packages/FirmwarePackages.h"

#include "Model/SeriesHelpers.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QVersionNumber>

#include <algorithm>

namespace ChipLoom {

const QString PackageRepositoryKey = QStringLiteral("PackagePath");

namespace {

const QString NamePart = QStringLiteral("_Firmware_Library_");

QString versionOf(const QString &name)
{
    const int at = name.indexOf(NamePart);
    return at < 0 ? QString() : name.mid(at + NamePart.size());
}

QList<FirmwarePackage> packagesBelow(const QString &folder, const QString &series, bool bundled)
{
    static const QRegularExpression versionForm(QStringLiteral("^V\\d+(\\.\\d+)*$"));
    const QString start = MCUSerialString_To_MCUConSerialString(series) + NamePart;
    QList<FirmwarePackage> packages;
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &entry : entries) {
        const QString name = entry.fileName();
        if (name.startsWith(start) && versionForm.match(name.mid(start.size())).hasMatch() &&
            !QDir(entry.filePath()).isEmpty())
            packages.append({name, name.mid(start.size()), entry.absoluteFilePath(), bundled});
    }
    std::stable_sort(packages.begin(), packages.end(), [](const FirmwarePackage &a, const FirmwarePackage &b) {
        return QVersionNumber::fromString(a.version.mid(1)) > QVersionNumber::fromString(b.version.mid(1));
    });
    return packages;
}

} // namespace

QString familyOfPackage(const QString &name)
{
    return name.left(qMax(0, name.indexOf(NamePart)));
}

QString packageRepository(const XMLOperation &xml)
{
    QString path;
    if (!xml.GetConfigValueFromXml(xml.paths().configFile(), PackageRepositoryKey, path) || path.isEmpty())
        path = xml.paths().defaultPackageDir();
    return path;
}

QList<FirmwarePackage> firmwarePackages(const AppPaths &paths, const QString &repository, const QString &series)
{
    const QString connected = MCUSerialString_To_MCUConSerialString(series);
    const QList<FirmwarePackage> installed = packagesBelow(repository + QLatin1Char('/') + connected, series, false);
    if (!installed.isEmpty())
        return installed;
    return packagesBelow(paths.executableDir() + QLatin1String("/firmware"), series, true);
}

FirmwarePackage firmwarePackageIn(const QString &folder, const QString &series)
{
    const QFileInfo info(QDir(folder).absolutePath());
    if (QFileInfo(info.filePath() + QLatin1String("/libraries")).isDir())
        return {info.fileName(), versionOf(info.fileName()), info.filePath(), false};
    const QString connected = MCUSerialString_To_MCUConSerialString(series);
    for (const QString &place : {info.filePath(), info.filePath() + QLatin1Char('/') + connected}) {
        const QList<FirmwarePackage> packages = packagesBelow(place, series, false);
        if (!packages.isEmpty())
            return packages.first();
    }
    return {};
}

} // namespace ChipLoom
