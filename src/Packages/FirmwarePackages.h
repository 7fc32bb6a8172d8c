#pragma once

#include "Model/xmloperation.h"

#include <QList>
#include <QString>

namespace ChipLoom {

/// A firmware package on disk.
struct FirmwarePackage
{
    QString name;    ///< of its folder: "ZV32F403A_407_Firmware_Library_V2.0.0"
    QString version; ///< "V2.0.0"
    QString path;    ///< absolute, without a final slash
    bool bundled = false;
};

/// The family of a package by the name of its folder: "ZV32F403A_407"; empty for a name of another form.
QString familyOfPackage(const QString &name);

/// The setting that names the repository.
extern const QString PackageRepositoryKey;

/// The repository that the settings name, or else the one below the home folder.
QString packageRepository(const XMLOperation &xml);

/// Packages of the series of that name in a repository, the newest first; where it holds none, those that came with the
/// program. An empty folder is no package.
QList<FirmwarePackage> firmwarePackages(const AppPaths &paths, const QString &repository, const QString &series);

/// The package in a folder that a person named: the folder itself, whatever its name, or the newest package of the
/// series in it. An empty path if there is none.
FirmwarePackage firmwarePackageIn(const QString &folder, const QString &series);

} // namespace ChipLoom
