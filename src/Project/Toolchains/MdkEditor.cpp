#include "Project/Toolchains/MdkEditor.h"

#include "Project/ProjectFiles.h"
#include "Project/Toolchains/LinkerSettings.h"
#include "Project/Toolchains/ProjectLists.h"
#include "Project/Toolchains/XmlProject.h"

namespace ChipLoom {

namespace {

const QStringList Debuggers{QStringLiteral("CMSIS_AGDI"), QStringLiteral("JL2CM3"), QStringLiteral("UL2CM3")};
constexpr quint32 Kilobyte = 1024;

// ---- Texts of single options ----

/// The size in the name of a flash algorithm: "ZV32F421_64".
void RegMCUSerials_FlashSize(QString &text, const ProjectOrder &order)
{
    static const QRegularExpression expression(QStringLiteral("ZV32[A-Z]+\\d+[A-Z]?_(\\d{1,4})\\b"));
    text.replace(expression, order.series + QLatin1Char('_') + QString::number(order.flashSize / Kilobyte));
}

/// The size of the memory that the algorithm writes: "-FL010000".
void RegFL_FlashSize(QString &text, const ProjectOrder &order)
{
    static const QRegularExpression expression(QStringLiteral("(-FL)[0-9A-Fa-f]{6,8}"));
    const QString size = QString::number(order.flashSize, 16).toUpper().rightJustified(5, QLatin1Char('0'));
    text.replace(expression, QLatin1String("\\1") + QLatin1Char('0') + size);
}

/// The device that a file belongs to: "$$Device:-ZV32F421C8T7$".
void RegMCUName(QString &text, const ProjectOrder &order)
{
    static const QRegularExpression expression(QStringLiteral("(Device:)-?[^$]*(\\$)"));
    text.replace(expression, QLatin1String("\\1") + keilDeviceName(order) + QLatin1String("\\2"));
}

/// The same without the word in front: "-ZV32F421C8T7$".
void RegMCUName2(QString &text, const ProjectOrder &order)
{
    static const QRegularExpression expression(QStringLiteral("^-?ZV32[^$]*(\\$)"));
    text.replace(expression, keilDeviceName(order) + QLatin1String("\\1"));
}

/// The series in the names of its pack and of its description: "ZevtraTek.ZV32F421_DFP.2.0.0", "...$SVD\ZV32F421.svd".
void RegSeries(QString &text, const ProjectOrder &order)
{
    static const QRegularExpression expression(QStringLiteral("\\bZV32[A-Z]+\\d+[A-Z]?(?=_DFP\\b|\\.svd)"));
    text.replace(expression, order.series);
}

/// Sizes of the memories in the text that describes the processor, parted from the origin by `separator`.
void RegCPU_IRAM_IROM(QString &text, QChar separator, const ProjectOrder &order)
{
    const QString expression = QStringLiteral("(%1\\(0x[0-9a-fA-F]{8}%2)0x\\s*[0-9a-fA-F]*");
    text.replace(usedOnce(expression.arg(QStringLiteral("IRAM"), separator)),
                 QLatin1String("\\1") + hexSize(order.sramSize));
    text.replace(usedOnce(expression.arg(QStringLiteral("IROM"), separator)),
                 QLatin1String("\\1") + hexSize(order.flashSize));
}

template <typename Edit> void editChild(XmlNode &node, const char *name, Edit edit)
{
    if (XmlNode *child = node.child(QLatin1String(name))) {
        QString text = child->text();
        edit(text);
        child->setText(text);
    }
}

// ---- Parts of a target ----

void editCommonOptions(XmlNode &common, bool v5, const ProjectOrder &order)
{
    common.setChildText(QStringLiteral("Device"), keilDeviceName(order));
    editChild(common, "FlashDriverDll", [&](QString &text) {
        RegMCUSerials_FlashSize(text, order);
        RegFL_FlashSize(text, order);
        RegMCUName(text, order);
    });
    if (v5) {
        for (const char *name : {"SFDFile", "RegisterFile", "RegisterFilePath", "DBRegisterFilePath"})
            editChild(common, name, [&](QString &text) {
                RegMCUName(text, order);
                RegMCUName2(text, order);
            });
        for (const char *name : {"PackID", "SFDFile"})
            editChild(common, name, [&](QString &text) { RegSeries(text, order); });
    }
    editChild(common, "Cpu", [&](QString &text) { RegCPU_IRAM_IROM(text, QLatin1Char(v5 ? ',' : '-'), order); });
}

/// The chip's own memories follow the device. What is linked into them does so too, unless the user has chosen another
/// part of the memory.
void modifyNodeOnChipMemoriesValue(XmlNode &memories, const char *chipArea, const char *linkedArea, quint32 bytes,
                                   bool first)
{
    const QString size = QStringLiteral("Size");
    const QString start = QStringLiteral("StartAddress");
    XmlNode *chip = memories.child(QLatin1String(chipArea));
    XmlNode *linked = memories.child(QLatin1String(linkedArea));
    const bool whole = first || !chip || !linked ||
                       (chip->childText(start) == linked->childText(start) &&
                        chip->childText(size).compare(linked->childText(size), Qt::CaseInsensitive) == 0);
    if (chip)
        chip->setChildText(size, hexSize(bytes));
    if (linked && whole)
        linked->setChildText(size, hexSize(bytes));
}

QStringList commaList(const QString &text, const QRegularExpression &separator)
{
    QStringList list;
    for (const QString &one : text.split(separator, Qt::SkipEmptyParts)) {
        if (const QString entry = withoutBlanks(one); !entry.isEmpty())
            list.append(entry);
    }
    return list;
}

/// Keil parts defines by commas and by blanks.
void RegMDKVariousControlsMCUName(QString &text, bool first, const ProjectOrder &order)
{
    static const QRegularExpression separator(QStringLiteral("[,\\s]+(?=(?:[^\"]*\"[^\"]*\")*[^\"]*$)"));
    text = mergedDefines(commaList(text, separator), order, first).join(QLatin1String(", "));
}

void modifyIncludePath_MDK(QString &text, bool first, const ProjectOrder &order)
{
    static const QRegularExpression separator(QStringLiteral(";"));
    QStringList listed;
    for (const QString &path : commaList(text, separator))
        listed.append(rootRelative(path, order.toolchainFolder()));
    QStringList paths;
    const QStringList own = order.includeDirs();
    for (const QString &path : mergedIncludes(listed, order, first)) {
        const int known = listed.indexOf(path);
        // A path of the user's stays as it was written.
        const QString written = !own.contains(path) && known >= 0 ? commaList(text, separator).at(known)
                                                                  : fromToolchain(path, order.toolchainFolder());
        paths.append(QString(written).replace(QLatin1Char('/'), QLatin1Char('\\')));
    }
    text = paths.join(QLatin1Char(';'));
}

void editCompiler(XmlNode &cads, bool first, const ProjectOrder &order)
{
    if (XmlNode *controls = cads.child(QStringLiteral("VariousControls"))) {
        editChild(*controls, "Define", [&](QString &text) { RegMDKVariousControlsMCUName(text, first, order); });
        editChild(*controls, "IncludePath", [&](QString &text) { modifyIncludePath_MDK(text, first, order); });
    }
}

void chooseCompiler(XmlNode &target, XmlNode *cads, ARM_AC_Set compiler)
{
    if (compiler == ARM_AC_NotSet)
        return;
    const bool version6 = compiler == ARM_AC_6;
    const auto digit = [version6](int six, int five) { return QString::number(version6 ? six : five); };
    target.setChildText(QStringLiteral("uAC6"), digit(1, 0));
    if (cads) {
        cads->setChildText(QStringLiteral("wLevel"), digit(3, 2));
        cads->setChildText(QStringLiteral("v6Lang"), digit(3, 1));
    }
}

// ---- Groups and their files ----

int fileType(const QString &name)
{
    const QString suffix = name.mid(name.lastIndexOf(QLatin1Char('.')) + 1).toLower();
    if (suffix == QLatin1String("c"))
        return 1;
    if (suffix == QLatin1String("s"))
        return 2;
    if (suffix == QLatin1String("o"))
        return 3;
    if (suffix == QLatin1String("lib") || suffix == QLatin1String("a"))
        return 4;
    return suffix == QLatin1String("cpp") ? 8 : 5;
}

XmlPiece filePiece_MDK(const QString &rootPath, const ProjectOrder &order)
{
    const QString name = rootPath.mid(rootPath.lastIndexOf(QLatin1Char('/')) + 1);
    QString path = fromToolchain(rootPath, order.toolchainFolder());
    path.replace(QLatin1Char('/'), QLatin1Char('\\'));
    return {QStringLiteral("File"),
            {},
            {{QStringLiteral("FileName"), name},
             {QStringLiteral("FileType"), QString::number(fileType(name))},
             {QStringLiteral("FilePath"), path}}};
}

const FileForm MdkForm{
    QStringLiteral("Group"),
    QStringLiteral("GroupName"),
    QStringLiteral("Files"),
    QStringLiteral("File"),
    QStringLiteral("FilePath"),
    [](const QString &path, const ProjectOrder &order) { return rootRelative(path, order.toolchainFolder()); },
    filePiece_MDK};

} // namespace

bool MdkEditor::ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const
{
    return configLinkerSizes(order, account);
}

bool MdkEditor::configOptions(const ProjectOrder &order, bool first, BuilderAccount &account) const
{
    const QString suffix = m_v5 ? QStringLiteral("uvoptx") : QStringLiteral("uvopt");
    if (!first && !hasXmlProject(order, suffix)) // it holds a person's settings, which need not be shared with others
        return true;
    XmlProjectFile file;
    if (!readXmlProject(order, suffix, first, file, account))
        return false;
    for (XmlNode *entry : file.xml->root().descendants(QStringLiteral("SetRegEntry"))) {
        if (!Debuggers.contains(entry->childText(QStringLiteral("Key"))))
            continue;
        editChild(*entry, "Name", [&](QString &text) {
            RegFL_FlashSize(text, order);
            RegMCUSerials_FlashSize(text, order);
            RegMCUName(text, order);
        });
    }
    return writeXmlProject(order, file, account);
}

bool MdkEditor::ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const
{
    if (!configOptions(order, first, account))
        return false;
    XmlProjectFile file;
    if (!readXmlProject(order, m_v5 ? QStringLiteral("uvprojx") : QStringLiteral("uvproj"), first, file, account))
        return false;
    const bool fresh = first || !file.templatePath.isEmpty();
    for (XmlNode *target : file.xml->root().descendants(QStringLiteral("Target"))) {
        XmlNode *option = target->child(QStringLiteral("TargetOption"));
        if (!option)
            continue;
        if (XmlNode *common = option->child(QStringLiteral("TargetCommonOption")))
            editCommonOptions(*common, m_v5, order);
        if (XmlNode *memories = option->at(
                {QStringLiteral("TargetArmAds"), QStringLiteral("ArmAdsMisc"), QStringLiteral("OnChipMemories")})) {
            modifyNodeOnChipMemoriesValue(*memories, "IROM", "OCR_RVCT4", order.flashSize, fresh);
            modifyNodeOnChipMemoriesValue(*memories, "IRAM", "OCR_RVCT9", order.sramSize, fresh);
        }
        XmlNode *cads = option->at({QStringLiteral("TargetArmAds"), QStringLiteral("Cads")});
        if (cads)
            editCompiler(*cads, fresh, order);
        if (m_v5)
            chooseCompiler(*target, cads, order.armCompiler);
        XmlNode *groups = target->child(QStringLiteral("Groups"));
        if (!groups)
            groups = target->add({QStringLiteral("Groups")});
        mergeGroups(*groups, MdkForm, order, fresh);
    }
    return writeXmlProject(order, file, account);
}

} // namespace ChipLoom
