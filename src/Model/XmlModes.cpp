#include "Model/XmlRecords.h"
#include "Model/xmloperation.h"

#include <QRegularExpression>

namespace ChipLoom {

using XmlRecords::inLanguage;
using XmlRecords::readFlag;
using XmlRecords::withInstance;

namespace {

/// Replaces `$Index` by what the pattern finds in the instance name; it stays where nothing is found.
QString withIndex(QString expression, const QString &instance, const QString &pattern)
{
    const QRegularExpressionMatch match = QRegularExpression(pattern).match(instance);
    return match.hasMatch() ? expression.replace(QLatin1String("$Index"), match.captured()) : expression;
}

Condition readCondition(const XMLElementInfo &element, const QString &instance, const QString &indexPattern)
{
    Condition condition;
    condition.Diagnostic_EN = attributeValue(element, QLatin1String("Diagnostic"));
    condition.Diagnostic_CH = attributeValue(element, QLatin1String("DiagnosticCH"));
    condition.Diagnostic = inLanguage(condition.Diagnostic_EN, condition.Diagnostic_CH);
    condition.AndFlag = readFlag(element, "AndFlag", true);
    const QString expression = withInstance(attributeValue(element, QLatin1String("Expression")), instance);
    condition.Expression = withIndex(expression, instance, indexPattern);
    return condition;
}

QString fullSignalName(const QString &name, const QString &instance)
{
    const bool isGlobal = name.contains(QLatin1String("EXINT")) || name.contains(QLatin1String("WKUP")) ||
                          name.contains(QLatin1String("IR_OUT")) || instance == QLatin1String("SYSTEM");
    if (isGlobal)
        return name;
    if (instance.contains(QLatin1String("XMC")))
        return QLatin1String("XMC_") + name;
    return instance + QLatin1Char('_') + name;
}

/// Most names that a range gives; a longer one is a fault of the database and stands as a single name.
constexpr int MaxRange = 256;

/// "IN0--IN3" gives IN0, IN1, IN2, IN3; any other text gives itself.
QStringList expandRange(const QString &name)
{
    const QStringList ends = name.split(QLatin1String("--"));
    if (ends.size() != 2)
        return {name};
    static const QRegularExpression numbered(QStringLiteral("([A-Z]+)([0-9]+)"));
    const QRegularExpressionMatch first = numbered.match(ends.at(0));
    const QRegularExpressionMatch last = numbered.match(ends.at(1));
    if (!first.hasMatch() || !last.hasMatch())
        return {name};
    const qint64 start = first.capturedRef(2).toInt();
    const qint64 end = last.capturedRef(2).toInt();
    if (end - start >= MaxRange)
        return {name};
    QStringList names;
    for (qint64 number = start; number <= end; ++number)
        names.append(first.captured(1) + QString::number(number));
    return names;
}

QList<ModeSignal> readSignals(const XMLElementInfo &operation, const QString &instance)
{
    QList<ModeSignal> list;
    for (const XMLElementInfo &element : operation.subElementInfoList) {
        ModeSignal signal;
        signal.signalIOMode = attributeValue(element, QLatin1String("IOMode"));
        const QString *name = findAttribute(element, QLatin1String("Name"));
        if (!name)
            continue;
        for (const QString &single : expandRange(*name)) {
            signal.signalName = fullSignalName(single, instance);
            list.append(signal);
        }
    }
    return list;
}

ModeParamCofiguration readChoice(const XMLElementInfo &element, const QString &instance)
{
    ModeParamCofiguration choice;
    choice.modeParamName = attributeValue(element, QLatin1String("Name"));
    choice.modeParamUserName_EN = attributeValue(element, QLatin1String("UserName"));
    choice.modeParamUserName_CH = attributeValue(element, QLatin1String("UserNameCH"));
    choice.modeParamUserName = inLanguage(choice.modeParamUserName_EN, choice.modeParamUserName_CH);
    choice.modeParamRemoveCondition = withInstance(attributeValue(element, QLatin1String("RemoveCondition")), instance);
    for (const XMLElementInfo &child : element.subElementInfoList) {
        if (child.tagName == QLatin1String("SignalLogicalOp")) {
            choice.modeParamSignalLogicOp = attributeValue(child, QLatin1String("Name"));
            choice.modeParamSignalsList.append(readSignals(child, instance));
        } else if (child.tagName == QLatin1String("Condition")) {
            // A run of the letter d, not of digits: `$Index` stays in the expression of a choice.
            choice.modeParamCondition = readCondition(child, instance, QStringLiteral("d+"));
        } else if (child.tagName == QLatin1String("Semaphore")) {
            choice.modeParamSemaphoreList.append(withInstance(child.tagText, instance));
        }
    }
    return choice;
}

ModeCofiguration readMode(const XMLElementInfo &element, const QString &instance)
{
    ModeCofiguration mode;
    mode.modeName = attributeValue(element, QLatin1String("Name"));
    mode.modeUserName_EN = attributeValue(element, QLatin1String("UserName"));
    mode.modeUserName_CH = attributeValue(element, QLatin1String("UserNameCH"));
    mode.modeUserName = inLanguage(mode.modeUserName_EN, mode.modeUserName_CH);
    mode.modeRemoveCondition = withInstance(attributeValue(element, QLatin1String("RemoveCondition")), instance);
    for (const XMLElementInfo &child : element.subElementInfoList) {
        if (child.tagName == QLatin1String("ModeLogicOperator")) {
            mode.modeLogicOperator = attributeValue(child, QLatin1String("Name"));
            for (const XMLElementInfo &choice : child.subElementInfoList)
                mode.modeParam.append(readChoice(choice, instance));
        } else if (child.tagName == QLatin1String("Condition")) {
            mode.modeCondition = readCondition(child, instance, QStringLiteral("[0-9]+$"));
        } else if (child.tagName == QLatin1String("Annotation")) {
            mode.modeAnnotation.Note_EN = attributeValue(child, QLatin1String("Note"));
            mode.modeAnnotation.Note_CH = attributeValue(child, QLatin1String("NoteCH"));
            mode.modeAnnotation.Note = inLanguage(mode.modeAnnotation.Note_EN, mode.modeAnnotation.Note_CH);
        } else if (child.tagName == QLatin1String("Semaphore")) {
            mode.modeSemaphoreList.append(withInstance(child.tagText, instance));
        }
    }
    return mode;
}

} // namespace

QList<ModeCofiguration> XMLOperation::GetModeSettings(const QString &instance, const XMLElementInfo &tree)
{
    QList<ModeCofiguration> modes;
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (element.tagName != QLatin1String("ModeLogicOperator"))
            continue;
        for (const XMLElementInfo &mode : element.subElementInfoList) {
            if (mode.tagName == QLatin1String("Mode"))
                modes.append(readMode(mode, instance));
        }
    }
    return modes;
}

QList<ModeSignal> XMLOperation::GetModeSignals(const QString &instance, const XMLElementInfo &tree)
{
    QList<ModeSignal> list;
    for (const XMLElementInfo &element : tree.subElementInfoList) {
        if (element.tagName != QLatin1String("RefSignal"))
            continue;
        ModeSignal signal;
        signal.signalName = fullSignalName(attributeValue(element, QLatin1String("Name")), instance);
        signal.signalIOMode = attributeValue(element, QLatin1String("IOMode"));
        signal.Virtual = attributeValue(element, QLatin1String("Virtual")) == QLatin1String("true");
        list.append(signal);
    }
    return list;
}

} // namespace ChipLoom
