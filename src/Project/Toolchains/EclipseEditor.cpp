#include "Project/Toolchains/EclipseEditor.h"

#include "Project/ProjectFiles.h"
#include "Project/Toolchains/LinkerSettings.h"
#include "Project/Toolchains/XmlProject.h"

#include <QMap>
#include <QRegularExpression>

#include <algorithm>

namespace ChipLoom {

namespace {

const QString Link = QStringLiteral("link");
const QString Name = QStringLiteral("name");
const QString Value = QStringLiteral("value");
const QString ListValue = QStringLiteral("listOptionValue");
const QString Option = QStringLiteral("ilg.gnuarmeclipse.managedbuild.cross.option.");
const QString LinkerFolder = QStringLiteral("\"${workspace_loc:/${ProjName}}/");

// ---- .cproject ----

std::vector<XmlNode *> FindDomNodeByNameAndAttrite(const XmlNode &root, const QString &superClass)
{
    std::vector<XmlNode *> found;
    for (XmlNode *option : root.descendants(QStringLiteral("option"))) {
        if (option->attribute(QStringLiteral("superClass")) == superClass)
            found.push_back(option);
    }
    return found;
}

QStringList valuesOf(const XmlNode &option)
{
    QStringList values;
    for (const XmlNode *one : option.children(ListValue))
        values.append(one->attribute(Value));
    return values;
}

/// Brings the list of an option to these values; entries that stay are not touched.
void modifyNodeCCprojectOptionValue(XmlNode &option, const QStringList &values)
{
    QMap<QString, const XmlNode *> present;
    for (XmlNode *one : option.children(ListValue)) {
        const QString value = one->attribute(Value);
        if (values.contains(value) && !present.contains(value))
            present.insert(value, one);
        else
            option.remove(one);
    }
    const XmlNode *next = nullptr;
    for (auto value = values.rbegin(); value != values.rend(); ++value) {
        const XmlNode *node = present.value(*value);
        if (!node)
            node = option.add(
                {ListValue, {}, {}, {{QStringLiteral("builtIn"), QStringLiteral("false")}, {Value, *value}}}, next);
        next = node;
    }
}

/// Paths stand in quotes and begin in the folder of the build, which lies in that of the toolchain.
QString includeValue(const QString &rootPath, const ProjectOrder &order)
{
    return QLatin1String("\"../") + fromToolchain(rootPath, order.toolchainFolder()) + QLatin1Char('"');
}

QString includeToRoot(QString value, const ProjectOrder &order)
{
    if (value.size() < 2 || !value.startsWith(QLatin1String("\"../../")))
        return value;
    value = value.mid(4, value.size() - 5);
    return rootRelative(value, order.toolchainFolder());
}

void modifyIncludePath_Eclipse(XmlNode &option, bool first, const ProjectOrder &order)
{
    QStringList listed;
    for (const QString &value : valuesOf(option))
        listed.append(includeToRoot(value, order));
    QStringList values;
    const QStringList merged = mergedIncludes(listed, order, first);
    const QStringList own = order.includeDirs();
    for (const QString &path : merged) {
        const int known = listed.indexOf(path);
        values.append(known >= 0 && !own.contains(path) ? valuesOf(option).at(known) : includeValue(path, order));
    }
    modifyNodeCCprojectOptionValue(option, values);
}

void editSettings(const XmlNode &root, const QString &script, bool first, const ProjectOrder &order)
{
    // The defines with those of CMSIS_DSP, if that is in use.
    for (XmlNode *option : FindDomNodeByNameAndAttrite(root, Option + QLatin1String("c.compiler.defs")))
        modifyNodeCCprojectOptionValue(*option, mergedDefines(valuesOf(*option), order, first));
    for (XmlNode *option : FindDomNodeByNameAndAttrite(root, Option + QLatin1String("c.compiler.include.paths")))
        modifyIncludePath_Eclipse(*option, first, order);
    for (const char *tool : {"c.linker.scriptfile", "cpp.linker.scriptfile"}) {
        for (XmlNode *option : FindDomNodeByNameAndAttrite(root, Option + QLatin1String(tool))) {
            QStringList scripts;
            for (const QString &value : valuesOf(*option)) {
                if (!first && !isPackageLinkerFile(value))
                    scripts.append(value);
            }
            modifyNodeCCprojectOptionValue(*option, scripts.isEmpty() ? QStringList{script} : scripts);
        }
    }
}

// ---- .project ----

QString locationOf(const QString &rootPath)
{
    const QString parent = QStringLiteral("project/");
    return rootPath.startsWith(parent) ? QLatin1String("PARENT-1-PROJECT_LOC/") + rootPath.mid(parent.size())
                                       : QLatin1String("PARENT-2-PROJECT_LOC/") + rootPath;
}

QString locationToRoot(const QString &location)
{
    const QString one = QStringLiteral("PARENT-1-PROJECT_LOC/");
    const QString two = QStringLiteral("PARENT-2-PROJECT_LOC/");
    if (location.startsWith(one))
        return QLatin1String("project/") + location.mid(one.size());
    return location.startsWith(two) ? location.mid(two.size()) : location;
}

/// What a link leads to: for a file outside of the workspace that a user has linked, its absolute path.
QString targetOf(const XmlNode &link)
{
    const QString location = link.childText(QStringLiteral("locationURI"));
    return location.isEmpty() ? link.childText(QStringLiteral("location")) : locationToRoot(location);
}

XmlPiece linkPiece(const QString &name, bool folder, const QString &location)
{
    return {Link,
            {},
            {{Name, name},
             {QStringLiteral("type"), folder ? QStringLiteral("2") : QStringLiteral("1")},
             {QStringLiteral("locationURI"), location}}};
}

XmlNode *linkByName(const XmlNode &links, const QString &name)
{
    for (XmlNode *link : links.children(Link)) {
        if (link->childText(Name) == name)
            return link;
    }
    return nullptr;
}

/// Virtual folders for a group and those above it.
void addFolders(XmlNode &links, const QString &group)
{
    for (int end = group.indexOf(QLatin1Char('/'));; end = group.indexOf(QLatin1Char('/'), end + 1)) {
        const QString folder = end < 0 ? group : group.left(end);
        if (!linkByName(links, folder))
            links.add(linkPiece(folder, true, QStringLiteral("virtual:/virtual")));
        if (end < 0)
            return;
    }
}

/// The other way, as long as nothing stands in them.
void removeFolders(XmlNode &links, QString folder)
{
    while (!folder.isEmpty()) {
        for (const XmlNode *link : links.children(Link)) {
            if (link->childText(Name).startsWith(folder + QLatin1Char('/')))
                return;
        }
        if (XmlNode *empty = linkByName(links, folder))
            links.remove(empty);
        folder.truncate(std::max(0, folder.lastIndexOf(QLatin1Char('/'))));
    }
}

void mergeLinks(XmlNode &links, const ProjectGroup &wanted, bool first, const ProjectOrder &order)
{
    QStringList listed;
    std::vector<XmlNode *> entries;
    for (XmlNode *link : links.children(Link)) {
        const QString name = link->childText(Name);
        if (link->childText(QStringLiteral("type")) == QLatin1String("1") &&
            name.left(name.lastIndexOf(QLatin1Char('/'))) == wanted.name) {
            entries.push_back(link);
            listed.append(targetOf(*link));
        }
    }
    const QStringList merged = mergedFiles(wanted, listed, order, first);
    for (int i = 0; i < listed.size(); ++i) {
        if (!merged.contains(listed.at(i)) || listed.indexOf(listed.at(i)) < i)
            links.remove(entries[size_t(i)]);
    }
    if (merged.isEmpty()) {
        if (!listed.isEmpty())
            removeFolders(links, wanted.name);
        return;
    }
    addFolders(links, wanted.name);
    for (const QString &path : merged) {
        if (!listed.contains(path))
            links.add(linkPiece(wanted.name + path.mid(path.lastIndexOf(QLatin1Char('/'))), false, locationOf(path)));
    }
}

void deleteProjectFile_Eclipse(XmlNode &links, const ProjectOrder &order)
{
    QStringList current;
    for (const ProjectGroup &group : projectGroups(order))
        current += group.files;
    for (XmlNode *link : links.children(Link)) {
        if (link->childText(QStringLiteral("type")) == QLatin1String("1") && isDeleted(targetOf(*link), current, order))
            links.remove(link);
    }
}

bool ConfigPreferencesFile(const ProjectOrder &order, BuilderAccount &account)
{
    const QString path = order.toolchainDir() + QLatin1String("/preferences.ini");
    ProjectText read = readProjectText(path);
    if (!read.ok) {
        account.detail = read.error;
        return false;
    }
    static const QRegularExpression expression(
        QStringLiteral("(chipSeries=)[^\\r\\n]*(\\s+chipTarget=)[^\\r\\n]*(\\s+chipSizeType)"));
    read.text.replace(expression,
                      QLatin1String("\\1") + order.series + QLatin1String("\\2") + order.device + QLatin1String("\\3"));
    return writeProjectText(order, path, read.text, account);
}

} // namespace

bool EclipseEditor::ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const
{
    return configLinkerSizes(order, account);
}

bool EclipseEditor::ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const
{
    XmlProjectFile settings;
    if (!readNamedXml(order, QStringLiteral(".cproject"), first, settings, account))
        return false;
    const QString script = LinkerFolder + order.linkerFile().mid(order.toolchainFolder().size() + 1) + QLatin1Char('"');
    editSettings(settings.xml->root(), script, first, order);
    if (!writeXmlProject(order, settings, account))
        return false;
    if (m_zv32Ide && !ConfigPreferencesFile(order, account))
        return false;

    XmlProjectFile project;
    if (!readNamedXml(order, QStringLiteral(".project"), first, project, account))
        return false;
    XmlNode &root = project.xml->root();
    XmlNode *links = root.child(QStringLiteral("linkedResources"));
    if (!links)
        links = root.add({QStringLiteral("linkedResources")});
    for (const ProjectGroup &group : projectGroups(order))
        mergeLinks(*links, group, first, order);
    deleteProjectFile_Eclipse(*links, order);
    return writeXmlProject(order, project, account);
}

} // namespace ChipLoom
