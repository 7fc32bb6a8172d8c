#include "Model/XmlRecords.h"
#include "Model/xmloperation.h"

namespace ChipLoom {

using XmlRecords::inLanguage;
using XmlRecords::readFlag;
using XmlRecords::readListedParameter;
using XmlRecords::readRefMode;
using XmlRecords::readRefParameter;
using XmlRecords::withInstance;

namespace {

/// The three fields of a text; where the Chinese is empty the English takes its place.
void readText(const XMLElementInfo &element, const char *attributeEN, const char *attributeCH, QString &text,
              QString &textEN, QString &textCH)
{
    textEN = attributeValue(element, QLatin1String(attributeEN));
    textCH = attributeValue(element, QLatin1String(attributeCH));
    if (textCH.isEmpty() && GlobalLanguage::g_CurrentLanguage == UI_CH)
        textCH = textEN;
    text = inLanguage(textEN, textCH);
}

void readDiagnostic(const XMLElementInfo &element, Condition &condition)
{
    readText(element, "Diagnostic", "DiagnosticCH", condition.Diagnostic, condition.Diagnostic_EN,
             condition.Diagnostic_CH);
    condition.AndFlag = readFlag(element, "AndFlag", true);
}

PossibleValue readPossibleValue(const XMLElementInfo &element, const QString &instance)
{
    PossibleValue value;
    readText(element, "Comment", "CommentCH", value.Comment, value.Comment_EN, value.Comment_CH);
    value.Value = attributeValue(element, QLatin1String("Value"));
    value.Semaphore = withInstance(attributeValue(element, QLatin1String("Semaphore")), instance);
    value.Action = attributeValue(element, QLatin1String("Action"));
    readDiagnostic(element, value.ValueCondition);
    value.ValueCondition.Expression = withInstance(attributeValue(element, QLatin1String("Condition")), instance);
    value.ErrorFlag = readFlag(element, "ErrorFlag", false);
    return value;
}

/// Sets the number base; the database writes hexadecimal numbers without a prefix.
void applyType(RefParameter &parameter)
{
    const QString type = parameter.Type.toLower();
    if (type == QLatin1String("integer") || type == QLatin1String("signedinteger"))
        parameter.CurrentValueType = CURRENTVALUETYPE_DEC;
    if (type != QLatin1String("hexadecimal"))
        return;
    parameter.CurrentValueType = CURRENTVALUETYPE_HEX;
    for (QString *value : {&parameter.MinValue, &parameter.MaxValue, &parameter.DefaultValue,
                           &parameter.DefaultValueBackup, &parameter.CurrentValue}) {
        const QString digits = value->trimmed();
        if (!digits.isEmpty())
            *value = QLatin1String("0x") + digits;
    }
}

} // namespace

RefParameter XmlRecords::readRefParameter(const XMLElementInfo &element, const QString &instance)
{
    RefParameter parameter;
    parameter.Name = attributeValue(element, QLatin1String("Name"));
    readText(element, "Comment", "CommentCH", parameter.Comment, parameter.Comment_EN, parameter.Comment_CH);
    readText(element, "Group", "GroupCH", parameter.Group, parameter.Group_EN, parameter.Group_CH);
    readText(element, "TabName", "TabNameCH", parameter.TabName, parameter.TabName_EN, parameter.TabName_CH);
    parameter.Type = attributeValue(element, QLatin1String("Type"));
    parameter.DefaultValue = attributeValue(element, QLatin1String("DefaultValue"));
    parameter.DefaultValueBackup = parameter.DefaultValue;
    parameter.CurrentValue = parameter.DefaultValue;
    parameter.Unit = attributeValue(element, QLatin1String("Unit"));
    parameter.MaxValue = attributeValue(element, QLatin1String("Max"));
    parameter.MinValue = attributeValue(element, QLatin1String("Min"));
    parameter.Visible = readFlag(element, "Visible", parameter.Visible);
    parameter.Enable = readFlag(element, "Enable", parameter.Enable);
    parameter.ReloadFlag = readFlag(element, "Reload", parameter.ReloadFlag);
    parameter.RelevantFlag = readFlag(element, "Relevant", parameter.RelevantFlag);
    for (const XMLElementInfo &child : element.subElementInfoList) {
        if (child.tagName == QLatin1String("PossibleValue")) {
            parameter.PossibleValueList.append(readPossibleValue(child, instance));
        } else if (child.tagName == QLatin1String("Description")) {
            parameter.Description = child.tagText;
        } else if (child.tagName == QLatin1String("Condition")) {
            readDiagnostic(child, parameter.condition);
            parameter.condition.Expression = withInstance(attributeValue(child, QLatin1String("Expression")), instance);
        } else if (child.tagName == QLatin1String("Annotation")) {
            readText(child, "Note", "NoteCH", parameter.annotation.Note, parameter.annotation.Note_EN,
                     parameter.annotation.Note_CH);
        }
    }
    applyType(parameter);
    return parameter;
}

RefParameter XmlRecords::readListedParameter(const XMLElementInfo &element, const QString &instance)
{
    RefParameter parameter = readRefParameter(element, instance);
    if (parameter.Name == QLatin1String("Instance")) {
        parameter.DefaultValue = instance;
        parameter.DefaultValueBackup = instance;
        parameter.CurrentValue = instance;
    }
    return parameter;
}

RefMode XmlRecords::readRefMode(const XMLElementInfo &element)
{
    RefMode mode;
    mode.Name = attributeValue(element, QLatin1String("Name"));
    mode.Comment = attributeValue(element, QLatin1String("Comment"));
    mode.Group_EN = attributeValue(element, QLatin1String("Group"));
    mode.Group_CH = attributeValue(element, QLatin1String("GroupCH"));
    mode.Group = inLanguage(mode.Group_EN, mode.Group_CH);
    mode.BaseMode = attributeValue(element, QLatin1String("BaseMode"));
    mode.HalMode = attributeValue(element, QLatin1String("HalMode"));
    mode.Abstract = readFlag(element, "Abstract", false);
    for (const XMLElementInfo &child : element.subElementInfoList) {
        if (child.tagName == QLatin1String("ConfigForMode")) {
            mode.ConfigForMode.append(child.tagText);
        } else if (child.tagName == QLatin1String("Parameter")) {
            Parameter parameter{attributeValue(child, QLatin1String("Name")), {}};
            for (const XMLElementInfo &value : child.subElementInfoList) {
                if (value.tagName == QLatin1String("PossibleValue"))
                    parameter.PossibleValueList.append(value.tagText);
            }
            mode.ParamList.append(parameter);
        }
    }
    return mode;
}

namespace {

bool isNamed(const XMLElementInfo &element, QLatin1String tag, const QString &name)
{
    return element.tagName == tag && attributeValue(element, QLatin1String("Name")) == name;
}

} // namespace

RefParameter XMLOperation::GetRefParameter(const QString &instance, const QString &name, const XMLElementInfo &tree)
{
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (isNamed(element, QLatin1String("RefParameter"), name))
            return readRefParameter(element, instance);
    }
    return {};
}

QList<RefParameter> XMLOperation::GetRefParameterList(const QString &instance, const QString &name,
                                                      const XMLElementInfo &tree)
{
    QList<RefParameter> list;
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (isNamed(element, QLatin1String("RefParameter"), name))
            list.append(readListedParameter(element, instance));
    }
    return list;
}

QList<RefParameter> XMLOperation::GetXMLFileAllRefParameterList(const QString &instance, const XMLElementInfo &tree)
{
    QList<RefParameter> list;
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (element.tagName != QLatin1String("RefParameter"))
            continue;
        RefParameter parameter = readListedParameter(element, instance);
        parameter.Mode = attributeValue(element, QLatin1String("Mode"));
        list.append(parameter);
    }
    return list;
}

QList<ParameterTabName> XMLOperation::GetParameterTabNameList(const XMLElementInfo &tree)
{
    QList<ParameterTabName> tabs;
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (element.tagName != QLatin1String("RefParameter"))
            continue;
        if (attributeValue(element, QLatin1String("Visible")).toLower() == QLatin1String("false"))
            continue;
        ParameterTabName tab;
        tab.TabName_EN = attributeValue(element, QLatin1String("TabName")).trimmed();
        tab.TabName_CH = attributeValue(element, QLatin1String("TabNameCH")).trimmed();
        if (tab.TabName_EN.isEmpty())
            continue;
        if (tab.TabName_CH.isEmpty())
            tab.TabName_CH = tab.TabName_EN;
        tab.TabName = inLanguage(tab.TabName_EN, tab.TabName_CH);
        tab.TabNameValue = tab.TabName;
        const bool known = std::any_of(tabs.cbegin(), tabs.cend(), [&](const ParameterTabName &other) {
            return other.TabNameValue == tab.TabNameValue;
        });
        if (!known)
            tabs.append(tab);
    }
    return tabs;
}

RefMode XMLOperation::GetRefMode(const XMLElementInfo &tree, const QString &name)
{
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (isNamed(element, QLatin1String("RefMode"), name))
            return readRefMode(element);
    }
    return {};
}

RefMode XMLOperation::GetRefMode(const QString &baseMode, const QString &name, const XMLElementInfo &tree)
{
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (isNamed(element, QLatin1String("RefMode"), name) &&
            attributeValue(element, QLatin1String("BaseMode")) == baseMode)
            return readRefMode(element);
    }
    return {};
}

RefMode XMLOperation::GetRefMode_Abstract(const XMLElementInfo &tree)
{
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (element.tagName == QLatin1String("RefMode") && readFlag(element, "Abstract", false))
            return readRefMode(element);
    }
    return {};
}

} // namespace ChipLoom
