#include "Design/ProjectSettings.h"

#include "Design/DesignFile.h"
#include "Model/SeriesHelpers.h"
#include "Model/XmlTree.h"

#include <QDir>
#include <QFileInfo>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

const QString ValuesSection = QStringLiteral("ProjectInfomation");
const QString RankSection = QStringLiteral("FunctionRankInfo");
const QString RankRow = QStringLiteral("RankSub");
const QString True = QStringLiteral("true");
const QString False = QStringLiteral("false");
const QStringList Compilers{QStringLiteral("Use default complier version 5"),
                            QStringLiteral("Use default complier version 6")};

/// Neither can a file hold control characters, nor does anybody type them on purpose.
bool isPrintable(const QString &text)
{
    return text.isValidUtf16() && std::all_of(text.begin(), text.end(), [](QChar c) {
               return c >= QLatin1Char(' ') && c.unicode() != 0x7F && c.unicode() < 0xFFFE;
           });
}

DesignAnswer anyText(const QString &name, const QString &value)
{
    return isPrintable(value) ? DesignAnswer() : DesignAnswer{DesignReason::InvalidText, {name, value}};
}

// A name on the disk has 255 bytes; suffixes stand behind this one.
constexpr int LongestName = 200;

/// The name becomes a folder's and a file's.
DesignAnswer fileName(const QString &name, const QString &value)
{
    const bool usable =
        isPrintable(value) && !value.trimmed().isEmpty() && !value.startsWith(QLatin1Char('.')) &&
        value.toUtf8().size() <= LongestName &&
        std::none_of(value.begin(), value.end(), [](QChar c) { return QStringLiteral("/\\:*?\"<>|").contains(c); });
    return usable ? DesignAnswer() : DesignAnswer{DesignReason::InvalidText, {name, value}};
}

DesignAnswer toolchain(const QString &name, const QString &value)
{
    for (int type = IDE_ZV32_IDE; type <= IDE_CMAKE; ++type) {
        if (!value.isEmpty() && getIDEPathName(IDE_TYPE(type)) == value)
            return {};
    }
    return {DesignReason::ValueNotInList, {name, value}};
}

DesignAnswer compiler(const QString &name, const QString &value)
{
    return Compilers.contains(value) ? DesignAnswer() : DesignAnswer{DesignReason::ValueNotInList, {name, value}};
}

DesignAnswer size(const QString &name, const QString &value)
{
    bool isNumber = false;
    value.toUInt(&isNumber, 16);
    const bool usable = isNumber && std::all_of(value.begin(), value.end(), [](QChar c) {
                            return QStringLiteral("0123456789abcdefABCDEFxX").contains(c);
                        });
    return usable ? DesignAnswer() : DesignAnswer{DesignReason::NotANumber, {name, value}};
}

struct ProjectField
{
    const char *name;
    QString ProjectValues::*text; ///< null for a switch
    DesignAnswer (*check)(const QString &name, const QString &value);
    bool ProjectValues::*flag;
};

constexpr std::array<ProjectField, 14> Fields{{
    {"ProjectName", &ProjectValues::ProjectName, fileName, nullptr},
    {"ProjectLocation", &ProjectValues::ProjectLocation, anyText, nullptr},
    {"ToolchainIDE", &ProjectValues::ToolchainIDE, toolchain, nullptr},
    {"ARMCompiler", &ProjectValues::ARMCompiler, compiler, nullptr},
    {"BackupCode", nullptr, nullptr, &ProjectValues::BackupCode},
    {"KeepUserCode", nullptr, nullptr, &ProjectValues::KeepUserCode},
    {"NotUsedPinAnalog", nullptr, nullptr, &ProjectValues::NotUsedPinAnalog},
    {"CodeSplitIP", nullptr, nullptr, &ProjectValues::CodeSplitIP},
    {"AddNecessaryFileFlag", nullptr, nullptr, &ProjectValues::AddNecessaryFileFlag},
    {"DeletePriviousFiles", nullptr, nullptr, &ProjectValues::DeletePriviousFiles},
    {"MinHeapSize", &ProjectValues::MinHeapSize, size, nullptr},
    {"MinStackSize", &ProjectValues::MinStackSize, size, nullptr},
    {"UseFirmware", nullptr, nullptr, &ProjectValues::UseFirmware},
    {"PackageVersion", &ProjectValues::PackageVersion, anyText, nullptr},
}};

const ProjectField *fieldNamed(const QString &name)
{
    const auto found = std::find_if(Fields.begin(), Fields.end(),
                                    [&name](const ProjectField &field) { return name == QLatin1String(field.name); });
    return found == Fields.end() ? nullptr : &*found;
}

QString valueOf(const ProjectValues &values, const ProjectField &field)
{
    if (field.text)
        return values.*field.text;
    return values.*field.flag ? True : False;
}

QString upperFlag(bool on)
{
    return on ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}

void readRank(const XMLElementInfo &section, QList<MainFuncNameForRank> &rank)
{
    rank.clear();
    for (const XMLElementInfo &row : section.subElementInfoList) {
        MainFuncNameForRank function;
        function.RankNum = attributeValue(row, QLatin1String("RankNum")).toInt();
        function.FixPosFlag = attributeValue(row, QLatin1String("FixPosFlag")) == QLatin1String("TRUE");
        function.FuncName = attributeValue(row, QLatin1String("FuncName"));
        function.InstanceName = attributeValue(row, QLatin1String("InstanceName"));
        function.CodeSection = attributeValue(row, QLatin1String("CodeSection"));
        function.MainDoNotCallFlag = attributeValue(row, QLatin1String("MainDoNotCallFlag")) == QLatin1String("TRUE");
        if (row.tagName == RankRow && !function.FuncName.isEmpty())
            rank.append(function);
    }
}

} // namespace

ProjectValues ProjectValues::ofDevice(const QString &device)
{
    ProjectValues values;
    values.ProjectName = device + QLatin1String("_ChipLoom");
    return values;
}

IDE_TYPE ProjectValues::getProjectIDE() const
{
    return IDETypeString2Enum(ToolchainIDE);
}

ARM_AC_Set ProjectValues::getARM_AC_Set() const
{
    if (getProjectIDE() != IDE_MDK_V5)
        return ARM_AC_NotSet;
    return ARMCompiler == Compilers.last() ? ARM_AC_6 : ARM_AC_5;
}

quint32 ProjectValues::getMinHeapSize() const
{
    return MinHeapSize.toUInt(nullptr, 16);
}

quint32 ProjectValues::getMinStackSize() const
{
    return MinStackSize.toUInt(nullptr, 16);
}

QString ProjectValues::getProjectFullPath(const QString &designFile) const
{
    if (ProjectName.isEmpty() || ProjectLocation.isEmpty())
        return {};
    const QString location = QDir(ProjectLocation).absolutePath();
    const QString beside = location + QLatin1Char('/') + ProjectName + DesignSuffix;
    const bool isHere = QFileInfo::exists(beside) && !designFile.isEmpty() &&
                        QFileInfo(location + QLatin1String("/project")).isDir() &&
                        QFileInfo(beside).canonicalFilePath() == QFileInfo(designFile).canonicalFilePath();
    return isHere ? location : QDir::cleanPath(location + QLatin1Char('/') + ProjectName);
}

QString ProjectValues::getDesignFilePath(const QString &designFile) const
{
    const QString folder = getProjectFullPath(designFile);
    return folder.isEmpty() ? folder : folder + QLatin1Char('/') + ProjectName + DesignSuffix;
}

DesignAnswer HeapAndStackCheck(const ProjectValues &values, quint32 sramSize)
{
    for (const auto &[name, text] :
         {std::pair("MinHeapSize", values.MinHeapSize), std::pair("MinStackSize", values.MinStackSize)}) {
        const DesignAnswer answer = size(QLatin1String(name), text);
        if (!answer)
            return answer;
        if (text.toUInt(nullptr, 16) > sramSize)
            return {DesignReason::AboveMaximum, {QLatin1String(name), text, QString::number(sramSize, 16)}};
    }
    return {};
}

QStringList projectValueNames()
{
    QStringList names;
    for (const ProjectField &field : Fields)
        names.append(QLatin1String(field.name));
    return names;
}

QString projectValue(const ProjectValues &values, const QString &name)
{
    const ProjectField *field = fieldNamed(name);
    return field ? valueOf(values, *field) : QString();
}

DesignAnswer setProjectValue(ProjectValues &values, const QString &name, const QString &value)
{
    const ProjectField *field = fieldNamed(name);
    if (!field)
        return {DesignReason::UnknownSetting, {QLatin1String("project/") + name}};
    if (field->text) {
        const DesignAnswer answer = field->check(name, value);
        if (answer)
            values.*field->text = value;
        return answer;
    }
    if (value != True && value != False)
        return {DesignReason::ValueNotInList, {name, value}};
    values.*field->flag = value == True;
    return {};
}

bool isProjectSection(const QString &elementName)
{
    return elementName == ValuesSection || elementName == RankSection;
}

void writeProjectSections(QXmlStreamWriter &xml, const ProjectValues &values)
{
    xml.writeStartElement(ValuesSection);
    for (const ProjectField &field : Fields)
        xml.writeTextElement(QLatin1String(field.name), valueOf(values, field));
    xml.writeEndElement();
    xml.writeStartElement(RankSection);
    for (const MainFuncNameForRank &function : values.functionRank) {
        xml.writeStartElement(RankRow);
        xml.writeAttribute(QStringLiteral("RankNum"), QString::number(function.RankNum));
        xml.writeAttribute(QStringLiteral("FixPosFlag"), upperFlag(function.FixPosFlag));
        xml.writeAttribute(QStringLiteral("FuncName"), function.FuncName);
        xml.writeAttribute(QStringLiteral("InstanceName"), function.InstanceName);
        xml.writeAttribute(QStringLiteral("CodeSection"), function.CodeSection);
        xml.writeAttribute(QStringLiteral("MainDoNotCallFlag"), upperFlag(function.MainDoNotCallFlag));
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

void readProjectSections(const XMLElementInfo &root, ProjectValues &values, QList<DesignProblem> &problems)
{
    if (const XMLElementInfo *section = findChild(root, QLatin1String("ProjectInfomation"))) {
        for (const ProjectField &field : Fields) {
            const XMLElementInfo *element = findChild(*section, QLatin1String(field.name));
            if (!element)
                continue;
            const QString name = QLatin1String(field.name);
            const DesignAnswer answer = setProjectValue(values, name, element->tagText);
            if (!answer)
                problems.append({QLatin1String("project/") + name, answer});
        }
        if (const XMLElementInfo *element = findChild(*section, QLatin1String("FirmwarePath")))
            values.FirmwarePath = element->tagText;
    }
    if (const XMLElementInfo *section = findChild(root, QLatin1String("FunctionRankInfo")))
        readRank(*section, values.functionRank);
}

} // namespace ChipLoom
