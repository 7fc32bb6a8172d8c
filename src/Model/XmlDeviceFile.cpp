#include "Model/XmlRecords.h"
#include "Model/xmloperation.h"

#include <limits>

namespace ChipLoom {

using XmlRecords::findTerm;
using XmlRecords::inLanguage;

namespace {

QString baseInfo(const XMLElementInfo &root, const QString &term, QLatin1String attribute)
{
    const XMLElementInfo *entry = findTerm(root, term);
    if (!entry)
        return {};
    for (const XMLElementInfo &child : entry->subElementInfoList) {
        if (const QString *value = findAttribute(child, attribute))
            return *value;
    }
    return {};
}

QString baseInfo(const XMLElementInfo &root, const char *attribute)
{
    return baseInfo(root, QStringLiteral("MCUBaseInfo"), QLatin1String(attribute));
}

quint32 pidNumber(const QString &text)
{
    return text.toUInt(nullptr, 16);
}

PinSignalStruct readPinSignal(const XMLElementInfo &element, const QString &pinName)
{
    PinSignalStruct signal;
    signal.signalName = attributeValue(element, QLatin1String("Func"));
    signal.signalIOMode = attributeValue(element, QLatin1String("IOMode"));
    const QString *inPin = findAttribute(element, QLatin1String("InPin"));
    signal.signalInPinName = inPin ? *inPin : pinName;
    signal.pinSignalMultiUseFlag = attributeValue(element, QLatin1String("Multi")) == QLatin1String("true");
    signal.pinSignalMultiUseFlagBackup = signal.pinSignalMultiUseFlag;
    for (const XMLElementInfo &bound : element.subElementInfoList) {
        signal.pinSignalsBoundList.append(
            {attributeValue(bound, QLatin1String("PinNum")).toInt(), attributeValue(bound, QLatin1String("Func"))});
    }
    return signal;
}

QList<MCUPinsBaseInfo> readPins(const XMLElementInfo &root, const QString &package, int columns)
{
    QList<MCUPinsBaseInfo> pins;
    const XMLElementInfo *entry = findTerm(root, QStringLiteral("PinsList"));
    if (!entry)
        return pins;
    const bool labelled = package == QLatin1String("BGA");
    for (const XMLElementInfo &element : entry->subElementInfoList) {
        MCUPinsBaseInfo pin;
        pin.pinNumberStr = attributeValue(element, QLatin1String("PinNum"));
        pin.pinNumber = labelled ? XMLOperation::labelToNumber(pin.pinNumberStr, columns) : pin.pinNumberStr.toInt();
        pin.pinName = attributeValue(element, QLatin1String("PinName"));
        pin.fixedFlag = attributeValue(element, QLatin1String("PinFixed")) == QLatin1String("true");
        pin.remarks_EN = attributeValue(element, QLatin1String("Remarks_EN"));
        pin.remarks_CH = attributeValue(element, QLatin1String("Remarks_CH"));
        pin.remarks = inLanguage(pin.remarks_EN, pin.remarks_CH);
        pin.Variant = attributeValue(element, QLatin1String("Variant"));
        pin.validFlag = pin.Variant != QLatin1String("PINREMAP") && pin.Variant != QLatin1String("PINREMAP1");
        pin.pinType = attributeValue(element, QLatin1String("PinType"));
        pin.GPIOStructure = attributeValue(element, QLatin1String("GPIOStructure"));
        for (const XMLElementInfo &function : element.subElementInfoList)
            pin.pinSignalsList.append(readPinSignal(function, pin.pinName));
        pins.append(pin);
    }
    return pins;
}

QList<IPSignalGroupInfo> readGroups(const XMLElementInfo &root)
{
    QList<IPSignalGroupInfo> groups;
    const XMLElementInfo *entry = findTerm(root, QStringLiteral("PinsSignalsGroup"));
    if (!entry)
        return groups;
    for (const XMLElementInfo &element : entry->subElementInfoList) {
        IPSignalGroupInfo group;
        group.IPName = attributeValue(element, QLatin1String("IPName"));
        group.GroupNum = attributeValue(element, QLatin1String("GroupNum")).toInt();
        group.GMUX = attributeValue(element, QLatin1String("GMUX"));
        for (const XMLElementInfo &member : element.subElementInfoList) {
            IPSignal signal;
            signal.signalName = attributeValue(member, QLatin1String("SignalName"));
            signal.signalInPinName = attributeValue(member, QLatin1String("PinName"));
            signal.TMRIPCanUseFlag = attributeValue(member, QLatin1String("TMRIPCanUse")) != QLatin1String("NO");
            group.signalGroup.append(signal);
        }
        groups.append(group);
    }
    return groups;
}

QList<PeripheralsBaseInfo> readPeripherals(const XMLElementInfo &root, const QString &term)
{
    QList<PeripheralsBaseInfo> list;
    const XMLElementInfo *entry = findTerm(root, term);
    if (!entry)
        return list;
    for (const XMLElementInfo &element : entry->subElementInfoList) {
        PeripheralsBaseInfo info;
        info.InstanceName = attributeValue(element, QLatin1String("InstanceName"));
        info.Name = attributeValue(element, QLatin1String("Name"));
        info.GroupName = attributeValue(element, QLatin1String("GroupName"));
        info.GroupName_CH = attributeValue(element, QLatin1String("GroupNameCH"));
        info.VersionFile = attributeValue(element, QLatin1String("Version"));
        info.configFile = attributeValue(element, QLatin1String("Config"));
        info.AboutInfo_EN = attributeValue(element, QLatin1String("About"));
        info.AboutInfo_CH = attributeValue(element, QLatin1String("AboutCH"));
        info.AboutInfo = inLanguage(info.AboutInfo_EN, info.AboutInfo_CH);
        list.append(info);
    }
    return list;
}

} // namespace

const XMLElementInfo *XmlRecords::findTerm(const XMLElementInfo &root, const QString &term)
{
    for (const XMLElementInfo &child : root.subElementInfoList) {
        const QString *own = findAttribute(child, QLatin1String("term"));
        if (own && *own == term)
            return &child;
    }
    return nullptr;
}

MCUDeviceFile XMLOperation::GetDeviceFile(const QString &file) const
{
    const XMLElementInfo root = readXml(file).root;
    MCUDeviceFile device;
    device.MCUName = baseInfo(root, "MCUName");
    device.Package = baseInfo(root, "Package");
    device.PinNums = baseInfo(root, "PinNums").toInt();
    device.xPinNum = baseInfo(root, "xPinNum").toInt();
    device.yPinNum = baseInfo(root, "yPinNum").toInt();
    device.PID = pidNumber(baseInfo(root, "PID"));
    device.PinsList = readPins(root, device.Package, device.yPinNum);
    device.PinsSignalsGroup = readGroups(root);
    device.PeripheralsList = readPeripherals(root, QStringLiteral("PeripheralsList"));
    device.MiddlewaresList = readPeripherals(root, QStringLiteral("MiddlewaresList"));
    return device;
}

QString XMLOperation::GetNodeValue(const QString &file, const QString &term, const QString &attribute) const
{
    return baseInfo(readXml(file).root, term, QLatin1String(attribute.toLatin1()));
}

QString XMLOperation::GetMCUName(const QString &file) const
{
    return baseInfo(readXml(file).root, "MCUName");
}

QString XMLOperation::GetPackage(const QString &file) const
{
    return baseInfo(readXml(file).root, "Package");
}

int XMLOperation::GetAllPinNums(const QString &file) const
{
    return baseInfo(readXml(file).root, "PinNums").toInt();
}

int XMLOperation::GetXPinNum(const QString &file) const
{
    return baseInfo(readXml(file).root, "xPinNum").toInt();
}

int XMLOperation::GetYPinNum(const QString &file) const
{
    return baseInfo(readXml(file).root, "yPinNum").toInt();
}

quint32 XMLOperation::GetPID(const QString &file) const
{
    return pidNumber(baseInfo(readXml(file).root, "PID"));
}

QList<MCUPinsBaseInfo> XMLOperation::GetMCUPinsBaseInfo(const QString &file, const QString &package, int columns) const
{
    return readPins(readXml(file).root, package, columns);
}

QList<IPSignalGroupInfo> XMLOperation::GetMCUIPSignalGroupInfo(const QString &file) const
{
    return readGroups(readXml(file).root);
}

QList<PeripheralsBaseInfo> XMLOperation::GetMCUPeripheralsBaseInfo(const QString &term, const QString &file) const
{
    return readPeripherals(readXml(file).root, term);
}

int XMLOperation::labelToNumber(const QString &label, int columns)
{
    if (label.isEmpty())
        return -1;
    const ushort letter = label.at(0).toUpper().unicode();
    if (letter < 'A' || letter > 'Z')
        return -1;
    const int row = letter - 'A' - (letter > 'I' ? 1 : 0);
    bool isNumber = false;
    const int number = label.midRef(1).toInt(&isNumber);
    if (!isNumber || number < 1 || number > columns)
        return -1;
    const qint64 result = qint64(row) * columns + number;
    return result > std::numeric_limits<int>::max() ? -1 : static_cast<int>(result);
}

} // namespace ChipLoom
