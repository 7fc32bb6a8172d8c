#pragma once

#include "Project/ProjectOrder.h"
#include "Project/Toolchains/ProjectLists.h"
#include "Project/Toolchains/XmlText.h"

namespace ChipLoom {

/// One file of a toolchain's project between reading and writing.
struct XmlProjectFile
{
    QString path;         ///< absolute, under the project's name
    QString templatePath; ///< taken away once the file stands; empty if the file was the project's already
    std::unique_ptr<XmlText> xml;
};

/// Reads "<project>.<suffix>" in the toolchain's folder. On the first run, and where a former one was broken off, that
/// is "template.<suffix>", in which the project's name has been put. False, with `account.detail`, if neither can be
/// read or understood.
bool readXmlProject(const ProjectOrder &order, const QString &suffix, bool first, XmlProjectFile &file,
                    BuilderAccount &account);
/// Whether there is such a file, under the project's name or the template's.
bool hasXmlProject(const ProjectOrder &order, const QString &suffix);
bool writeXmlProject(const ProjectOrder &order, const XmlProjectFile &file, BuilderAccount &account);

/// The same for a file that has one name for all projects.
bool readNamedXml(const ProjectOrder &order, const QString &name, bool first, XmlProjectFile &file,
                  BuilderAccount &account);

/// How a toolchain writes the files of a group.
struct FileForm
{
    QString group;     ///< element of a group
    QString groupName; ///< its child with the name
    QString holder;    ///< child of a group that holds the files; empty if they stand in the group itself
    QString file;      ///< element of a file
    QString path;      ///< its child with the path
    QString (*toRoot)(const QString &path, const ProjectOrder &order);
    XmlPiece (*piece)(const QString &rootPath, const ProjectOrder &order);
};

XmlNode *groupByName(const XmlNode &groups, const FileForm &form, const QString &name);

/// Brings all groups of the builder into line with the order (`mergedFiles`): groups that are missing are added in the
/// builder's order, emptied ones of middlewares go. In the user's own groups only files on the delete list go.
void mergeGroups(XmlNode &groups, const FileForm &form, const ProjectOrder &order, bool first);

} // namespace ChipLoom
