#pragma once

#include "Project/ProjectOrder.h"

#include <QRegularExpression>

namespace ChipLoom {

/// A group of files as the toolchains show it.
struct ProjectGroup
{
    QString name;
    QStringList files; ///< relative to the root of the project, with slashes
};

/// The groups that the builder knows, in their order: "user", "firmware", "cmsis", then those of the middlewares.
QStringList IniProjectGroupName();

/// What a project has to list: the generated sources, the drivers, start-up, and what the middlewares bring.
QList<ProjectGroup> projectGroups(const ProjectOrder &order);

/// The files of one group after this generation: of those that the project lists now, the ones that stay, in their
/// order, and behind them what is missing. A file of the package that the order does not list goes, a file on the
/// delete list too, and all that a middleware which is off has brought; whatever else stands in a group is the user's,
/// and so is a driver that no run has listed. `listed` is relative to the root as well. With `first` it is the
/// template's and nothing of it stays.
QStringList mergedFiles(const ProjectGroup &group, const QStringList &listed, const ProjectOrder &order, bool first);

/// The same for a list that holds all groups in one: those of the order, then the user's own.
QStringList mergedSources(const QStringList &wanted, const QStringList &listed, const ProjectOrder &order, bool first);

/// Whether a path, relative to the root, is one that the builder brings from the libraries of a package.
bool isOfPackage(const QString &path);

/// Whether a listed file is on the delete list and none that the project now has.
bool isDeleted(const QString &rootPath, const QStringList &current, const ProjectOrder &order);

/// Folders of headers after this generation, in the order of search: those of the order, then the user's.
QStringList mergedIncludes(const QStringList &listed, const ProjectOrder &order, bool first);

/// Defines after this generation: the macro of the device, those of drivers and middlewares, then the user's.
QStringList mergedDefines(const QStringList &listed, const ProjectOrder &order, bool first);

/// Of a path as a list of the generators or a project file has it, relative to the folder of the toolchain and with
/// either kind of slash.
QString rootRelative(const QString &path, const QString &toolchainFolder);

/// The other way, with slashes: "../../libraries/drivers/src/zv32f421_crm.c".
QString fromToolchain(const QString &rootPath, const QString &toolchainFolder);

/// An expression that is matched once or twice: without the machine code that is made of one otherwise, which takes
/// longer than the match itself.
QRegularExpression usedOnce(const QString &expression,
                            QRegularExpression::PatternOptions options = QRegularExpression::NoPatternOption);

/// A regular expression's first match, or what a group of it holds, replaced by text as it stands. False without a
/// match.
bool replaceFirst(QString &text, const QString &expression, const QString &by, int group = 0);

/// Whether a linker file is one of the package's, by its name: the user's own are left alone.
bool isPackageLinkerFile(const QString &path);

/// The name of a device in Keil MDK: behind a dash for the series that have it so.
QString keilDeviceName(const ProjectOrder &order);

/// A size as the toolchains write it: "0x4000".
QString hexSize(quint32 bytes);

/// The project's name for a Latin-1 text, in place of "template" and "Template"; for XML escaped.
void modifyFileByProjectName(QString &text, const QString &projectName, bool xml);

} // namespace ChipLoom
