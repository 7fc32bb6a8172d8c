#include "Project/Toolchains/XmlProject.h"

#include "Project/ProjectFiles.h"

#include <QCoreApplication>
#include <QFile>

namespace ChipLoom {

namespace {

QString projectPath(const ProjectOrder &order, const QString &name, const QString &suffix)
{
    return order.toolchainDir() + QLatin1Char('/') + name + QLatin1Char('.') + suffix;
}

bool understand(const ProjectOrder &order, const QString &path, bool nameIt, XmlProjectFile &file,
                BuilderAccount &account)
{
    ProjectText read = readProjectText(path);
    if (!read.ok) {
        account.detail = read.error;
        return false;
    }
    if (nameIt)
        modifyFileByProjectName(read.text, order.projectName, true);
    QString error;
    file.xml = XmlText::parse(read.text, error);
    if (!file.xml)
        account.detail = QCoreApplication::translate("Project", "%1 is no readable project file (%2); correct it, or "
                                                                "remove its folder to have it made anew")
                             .arg(path, error);
    return bool(file.xml);
}

XmlNode *holderOf(XmlNode *group, const FileForm &form)
{
    return !group || form.holder.isEmpty() ? group : group->child(form.holder);
}

QStringList pathsOf(const std::vector<XmlNode *> &entries, const FileForm &form, const ProjectOrder &order)
{
    QStringList paths;
    for (const XmlNode *entry : entries)
        paths.append(form.toRoot(entry->childText(form.path), order));
    return paths;
}

void mergeGroup(XmlNode &groups, const FileForm &form, const ProjectGroup &wanted, const XmlNode *next,
                const ProjectOrder &order, bool first)
{
    XmlNode *group = groupByName(groups, form, wanted.name);
    XmlNode *holder = holderOf(group, form);
    std::vector<XmlNode *> entries;
    if (holder)
        entries = holder->children(form.file);
    const QStringList listed = pathsOf(entries, form, order);
    const QStringList merged = mergedFiles(wanted, listed, order, first);
    if (merged.isEmpty()) {
        if (group && !listed.isEmpty())
            groups.remove(group);
        return;
    }
    for (int i = 0; i < listed.size(); ++i) {
        if (!merged.contains(listed.at(i)) || listed.indexOf(listed.at(i)) < i)
            holder->remove(entries[size_t(i)]);
    }
    if (!group)
        group = groups.add({form.group, {}, {{form.groupName, wanted.name}}}, next);
    if (!holderOf(group, form))
        group->add({form.holder});
    for (const QString &path : merged) {
        if (!listed.contains(path))
            holderOf(group, form)->add(form.piece(path, order));
    }
}

} // namespace

XmlNode *groupByName(const XmlNode &groups, const FileForm &form, const QString &name)
{
    for (XmlNode *group : groups.children(form.group)) {
        if (group->childText(form.groupName) == name)
            return group;
    }
    return nullptr;
}

void mergeGroups(XmlNode &groups, const FileForm &form, const ProjectOrder &order, bool first)
{
    const QList<ProjectGroup> wanted = projectGroups(order);
    QStringList current;
    for (int i = 0; i < wanted.size(); ++i) {
        const XmlNode *next = nullptr;
        for (int behind = i + 1; behind < wanted.size() && !next; ++behind)
            next = groupByName(groups, form, wanted.at(behind).name);
        mergeGroup(groups, form, wanted.at(i), next, order, first);
        current += wanted.at(i).files;
    }
    for (XmlNode *group : groups.children(form.group)) {
        XmlNode *holder = holderOf(group, form);
        if (!holder)
            continue;
        const std::vector<XmlNode *> entries = holder->children(form.file);
        const QStringList paths = pathsOf(entries, form, order);
        for (int i = 0; i < paths.size(); ++i) {
            if (isDeleted(paths.at(i), current, order))
                holder->remove(entries[size_t(i)]);
        }
    }
}

bool readXmlProject(const ProjectOrder &order, const QString &suffix, bool first, XmlProjectFile &file,
                    BuilderAccount &account)
{
    file.path = projectPath(order, order.projectName, suffix);
    const QString skeleton = projectPath(order, QStringLiteral("template"), suffix);
    const bool useSkeleton = QFile::exists(skeleton) && (first || !QFile::exists(file.path));
    if (useSkeleton && skeleton != file.path)
        file.templatePath = skeleton;
    if (!useSkeleton && !QFile::exists(file.path)) {
        account.detail = QCoreApplication::translate("Project", "%1 is missing; put the project's file back under this "
                                                                "name, or remove its folder to have it made anew")
                             .arg(file.path);
        return false;
    }
    return understand(order, useSkeleton ? skeleton : file.path, useSkeleton, file, account);
}

bool hasXmlProject(const ProjectOrder &order, const QString &suffix)
{
    return QFile::exists(projectPath(order, order.projectName, suffix)) ||
           QFile::exists(projectPath(order, QStringLiteral("template"), suffix));
}

bool readNamedXml(const ProjectOrder &order, const QString &name, bool first, XmlProjectFile &file,
                  BuilderAccount &account)
{
    file.path = order.toolchainDir() + QLatin1Char('/') + name;
    return understand(order, file.path, first, file, account);
}

bool writeXmlProject(const ProjectOrder &order, const XmlProjectFile &file, BuilderAccount &account)
{
    if (!writeProjectText(order, file.path, file.xml->toText(), account))
        return false;
    if (!file.templatePath.isEmpty()) {
        QFile::remove(file.templatePath);
        account.written.removeOne(file.templatePath.mid(order.projectFullPath.size() + 1));
    }
    return true;
}

} // namespace ChipLoom
