#include "Project/Toolchains/IarEditor.h"

#include "Project/Toolchains/LinkerSettings.h"
#include "Project/Toolchains/XmlProject.h"

#include <QRegularExpression>

namespace ChipLoom {

namespace {

const QString ProjectDir = QStringLiteral("$PROJ_DIR$\\");
const QString State = QStringLiteral("state");
const QString Name = QStringLiteral("name");

QString iarPath(const QString &rootPath, const ProjectOrder &order)
{
    return ProjectDir + fromToolchain(rootPath, order.toolchainFolder()).replace(QLatin1Char('/'), QLatin1Char('\\'));
}

QString iarToRoot(const QString &path, const ProjectOrder &order)
{
    if (!path.startsWith(ProjectDir))
        return path;
    const QString relative = path.mid(ProjectDir.size());
    return relative.startsWith(QLatin1String("..")) ? rootRelative(relative, order.toolchainFolder()) : path;
}

const FileForm IarForm{QStringLiteral("group"),
                       Name,
                       {},
                       QStringLiteral("file"),
                       Name,
                       iarToRoot,
                       [](const QString &rootPath, const ProjectOrder &order) {
                           return XmlPiece{QStringLiteral("file"), {}, {{Name, iarPath(rootPath, order)}}};
                       }};

/// The options of one name in all configurations: below the settings of one name, or of any if that is empty.
std::vector<XmlNode *> options(const XmlNode &root, const QString &settings, const QString &name)
{
    std::vector<XmlNode *> found;
    for (const XmlNode *configuration : root.children(QStringLiteral("configuration"))) {
        for (const XmlNode *one : configuration->children(QStringLiteral("settings"))) {
            if (!settings.isEmpty() && one->childText(Name) != settings)
                continue;
            for (XmlNode *option : one->descendants(QStringLiteral("option"))) {
                if (option->childText(Name) == name)
                    found.push_back(option);
            }
        }
    }
    return found;
}

template <typename Edit> void modifyNodeOptionValue(const XmlNode &root, const char *name, Edit edit)
{
    for (XmlNode *option : options(root, {}, QLatin1String(name))) {
        QString value = option->childText(State);
        edit(value);
        option->setChildText(State, value);
    }
}

QStringList ReadNodeOptionValue(const XmlNode &option)
{
    QStringList values;
    for (const XmlNode *state : option.children(State))
        values.append(state->text());
    return values;
}

/// Replaces the list of an option; values that stay keep their elements.
void setStates(XmlNode &option, const QStringList &values)
{
    if (ReadNodeOptionValue(option) == values)
        return;
    for (XmlNode *state : option.children(State))
        option.remove(state);
    for (const QString &value : values)
        option.add({State, value});
}

void RegMCUName_MemFile(QString &text, const ProjectOrder &order)
{
    static const QRegularExpression expression(QStringLiteral("(\\\\ZevtraTek\\\\)\\w+(\\.ddf)"));
    text.replace(expression, QLatin1String("\\1") + order.device + QLatin1String("\\2"));
}

void RegMCUName_FlashLoadersV3(QString &text, const ProjectOrder &order)
{
    static const QRegularExpression expression(
        QStringLiteral("(\\\\ZevtraTek\\\\\\w+\\\\)\\w+(\\\\Flash)[^\\\\]*(\\.board)"));
    text.replace(expression, QLatin1String("\\1%1\\2%1\\3").arg(order.device));
}

/// "ZV32F421C8T7_v2<tab>ZevtraTek -ZV32F421C8T7", with or without the dash.
void RegOGChipSelectEditMenuMCUName(QString &text, const ProjectOrder &order)
{
    static const QRegularExpression expression(QStringLiteral("^.*(_v2\\tZevtraTek -?).*$"));
    text.replace(expression, order.device + QLatin1String("\\1") + order.device);
}

void modifyIncludePath_IAR(XmlNode &option, bool first, const ProjectOrder &order)
{
    QStringList listed;
    for (const QString &path : ReadNodeOptionValue(option))
        listed.append(iarToRoot(path, order));
    const QStringList own = order.includeDirs();
    QStringList paths;
    for (const QString &path : mergedIncludes(listed, order, first)) {
        const bool written = path.contains(QLatin1Char('$')) || path.contains(QLatin1Char(':'));
        paths.append(written && !own.contains(path) ? path : iarPath(path, order));
    }
    setStates(option, paths);
}

QString linkerFileOf(const ProjectOrder &order, bool v6_10)
{
    const QString name = order.linkerName() + QLatin1String(".icf");
    return v6_10 ? QLatin1String("$TOOLKIT_DIR$\\config\\linker\\ZevtraTek\\") + name : ProjectDir + name;
}

} // namespace

bool IarEditor::ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const
{
    return m_v6_10 || configLinkerSizes(order, account);
}

bool IarEditor::configDebugger(const ProjectOrder &order, bool first, BuilderAccount &account) const
{
    const QString suffix = QStringLiteral("ewd");
    if (!first && !hasXmlProject(order, suffix)) // the toolchain makes it anew
        return true;
    XmlProjectFile file;
    if (!readXmlProject(order, suffix, first, file, account))
        return false;
    modifyNodeOptionValue(file.xml->root(), "MemFile", [&](QString &text) { RegMCUName_MemFile(text, order); });
    modifyNodeOptionValue(file.xml->root(), "FlashLoadersV3",
                          [&](QString &text) { RegMCUName_FlashLoadersV3(text, order); });
    return writeXmlProject(order, file, account);
}

bool IarEditor::ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const
{
    if (!m_v6_10 && !configDebugger(order, first, account))
        return false;
    XmlProjectFile file;
    if (!readXmlProject(order, QStringLiteral("ewp"), first, file, account))
        return false;
    const bool fresh = first || !file.templatePath.isEmpty();
    XmlNode &root = file.xml->root();
    for (const char *name : {"OGChipSelectEditMenu", "GFPUDeviceSlave"})
        modifyNodeOptionValue(root, name, [&](QString &text) { RegOGChipSelectEditMenuMCUName(text, order); });
    for (XmlNode *option : options(root, QStringLiteral("ICCARM"), QStringLiteral("CCDefines")))
        setStates(*option, mergedDefines(ReadNodeOptionValue(*option), order, fresh));
    modifyNodeOptionValue(root, "IlinkIcfFile", [&](QString &text) {
        if (fresh || isPackageLinkerFile(text))
            text = linkerFileOf(order, m_v6_10);
    });
    if (!m_v6_10) {
        for (XmlNode *option : options(root, QStringLiteral("ICCARM"), QStringLiteral("CCIncludePath2")))
            modifyIncludePath_IAR(*option, fresh, order);
        mergeGroups(root, IarForm, order, fresh);
    }
    if (!writeXmlProject(order, file, account))
        return false;
    // These two hold nothing but the project's name; the toolchain makes them anew if a user has removed them.
    for (const char *suffix : {"ewt", "eww"}) {
        XmlProjectFile plain;
        if (!fresh && !hasXmlProject(order, QLatin1String(suffix)))
            continue;
        if (!readXmlProject(order, QLatin1String(suffix), first, plain, account) ||
            !writeXmlProject(order, plain, account))
            return false;
    }
    return true;
}

} // namespace ChipLoom
