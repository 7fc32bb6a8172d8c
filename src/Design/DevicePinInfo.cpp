#include "Design/DevicePinInfo.h"

#include <algorithm>

namespace ChipLoom {

namespace {

/// The texts of which two pin names must share one to be the same pin.
QStringList nameParts(const QString &pinName)
{
    const QString trimmed = pinName.trimmed();
    QStringList parts = trimmed.section(QLatin1Char(' '), 0, 0).trimmed().split(QLatin1Char('/'));
    if (!parts.contains(trimmed))
        parts.append(trimmed);
    return parts;
}

} // namespace

bool isPlainFunction(const QString &signal)
{
    return signal.contains(QLatin1String("GPIO_Input")) || signal.contains(QLatin1String("GPIO_Output")) ||
           signal.contains(QLatin1String("GPIO_Analog")) || signal.contains(QLatin1String("EVENTOUT"));
}

DevicePinInfo::DevicePinInfo(const MCUDeviceFile &device, QString deviceFilePath)
    : m_MCUName(device.MCUName), m_xPinNum(device.xPinNum), m_yPinNum(device.yPinNum), m_allPinNums(device.PinNums),
      m_packageType(device.Package), m_deviceBaseInfoList(device.PinsList),
      m_deviceIPSignalGroupInfoList(device.PinsSignalsGroup), m_deviceFilePath(std::move(deviceFilePath))
{
    if (m_packageType == QLatin1String("BGA"))
        DeviceBaseInfoListRearrangement();
    indexPins();
    UpdateSignalGroupAccordingPackage();
    UpdateSignalGroupInfoPinNum();
    indexGroups();
}

QList<MCUPinsBaseInfo> DevicePinInfo::GetMCUPinBaseInfo(int pinNumber) const
{
    QList<MCUPinsBaseInfo> entries;
    for (int index : pinsAtPosition(pinNumber))
        entries.append(pin(index));
    return entries;
}

const QVector<int> &DevicePinInfo::pinsAtPosition(int pinNumber) const
{
    static const QVector<int> none;
    const auto found = m_pinsByPosition.constFind(pinNumber);
    return found == m_pinsByPosition.constEnd() ? none : found.value();
}

const QVector<SignalPlace> &DevicePinInfo::placesOf(const QString &signal) const
{
    static const QVector<SignalPlace> none;
    const auto found = m_placesBySignal.constFind(signal);
    return found == m_placesBySignal.constEnd() ? none : found.value();
}

QVector<int> DevicePinInfo::pinsNamed(const QString &pinName) const
{
    QVector<int> pins;
    for (const QString &part : nameParts(pinName)) {
        for (int index : m_pinsByNamePart.value(part)) {
            if (!pins.contains(index) && IsPinNameSame(pin(index).pinName, pinName))
                pins.append(index);
        }
    }
    std::sort(pins.begin(), pins.end());
    return pins;
}

int DevicePinInfo::validPinNamed(const QString &pinName) const
{
    for (int index : pinsNamed(pinName)) {
        if (pin(index).validFlag)
            return index;
    }
    return -1;
}

SignalPlace DevicePinInfo::placeOnPin(const QString &signal, int pin) const
{
    for (const SignalPlace &place : placesOf(signal)) {
        if (place.pin == pin)
            return place;
    }
    return {};
}

SignalPlace DevicePinInfo::placeOnPin(const QString &signal, int pin, const QString &inPinName) const
{
    for (const SignalPlace &place : placesOf(signal)) {
        if (place.pin == pin && IsPinNameSame(this->signal(place).signalInPinName, inPinName))
            return place;
    }
    return {};
}

int DevicePinInfo::crystalPartner(int pin) const
{
    const int at = m_crystalPins.indexOf(pin);
    return at < 0 ? -1 : m_crystalPins.at(1 - at);
}

void DevicePinInfo::joinCrystalPins()
{
    m_crystalPins.clear();
    for (int p = 0; p < m_deviceBaseInfoList.size(); ++p) {
        const QStringList parts = nameParts(pin(p).pinName);
        const bool isCrystal = parts.contains(QStringLiteral("HEXT_IN")) || parts.contains(QStringLiteral("HEXT_OUT"));
        if (isCrystal && parts.size() > 1)
            m_crystalPins.append(p);
    }
    if (m_crystalPins.size() != 2)
        m_crystalPins.clear();
}

const QVector<GroupPlace> &DevicePinInfo::groupsOf(const QString &signal) const
{
    static const QVector<GroupPlace> none;
    const auto found = m_groupsBySignal.constFind(signal);
    return found == m_groupsBySignal.constEnd() ? none : found.value();
}

QStringList DevicePinInfo::GetAllSignalsName() const
{
    QStringList names = m_placesBySignal.keys();
    names.sort();
    return names;
}

void DevicePinInfo::updateLanguage()
{
    const bool chinese = GlobalLanguage::g_CurrentLanguage == UI_CH;
    for (MCUPinsBaseInfo &pin : m_deviceBaseInfoList)
        pin.remarks = chinese ? pin.remarks_CH : pin.remarks_EN;
}

void DevicePinInfo::DeviceBaseInfoListRearrangement()
{
    std::stable_sort(m_deviceBaseInfoList.begin(), m_deviceBaseInfoList.end(),
                     [](const MCUPinsBaseInfo &a, const MCUPinsBaseInfo &b) { return a.pinNumber < b.pinNumber; });
}

void DevicePinInfo::indexPins()
{
    for (int p = 0; p < m_deviceBaseInfoList.size(); ++p) {
        const MCUPinsBaseInfo &entry = pin(p);
        QVector<int> &atPosition = m_pinsByPosition[entry.pinNumber];
        if (atPosition.isEmpty())
            m_positions.append(entry.pinNumber);
        atPosition.append(p);
        for (const QString &part : nameParts(entry.pinName))
            m_pinsByNamePart[part].append(p);
        for (int s = 0; s < entry.pinSignalsList.size(); ++s)
            m_placesBySignal[entry.pinSignalsList.at(s).signalName].append({p, s});
    }
}

void DevicePinInfo::UpdateSignalGroupAccordingPackage()
{
    for (IPSignalGroupInfo &group : m_deviceIPSignalGroupInfoList) {
        const auto missing = [this](const IPSignal &member) { return pinsNamed(member.signalInPinName).isEmpty(); };
        group.signalGroup.erase(std::remove_if(group.signalGroup.begin(), group.signalGroup.end(), missing),
                                group.signalGroup.end());
    }
    const auto empty = [](const IPSignalGroupInfo &group) { return group.signalGroup.isEmpty(); };
    m_deviceIPSignalGroupInfoList.erase(
        std::remove_if(m_deviceIPSignalGroupInfoList.begin(), m_deviceIPSignalGroupInfoList.end(), empty),
        m_deviceIPSignalGroupInfoList.end());
}

void DevicePinInfo::UpdateSignalGroupInfoPinNum()
{
    for (IPSignalGroupInfo &group : m_deviceIPSignalGroupInfoList) {
        for (IPSignal &member : group.signalGroup)
            member.signalInPinNum = pin(pinsNamed(member.signalInPinName).first()).pinNumber;
    }
}

void DevicePinInfo::indexGroups()
{
    for (int g = 0; g < m_deviceIPSignalGroupInfoList.size(); ++g) {
        const QList<IPSignal> &members = m_deviceIPSignalGroupInfoList.at(g).signalGroup;
        for (int m = 0; m < members.size(); ++m)
            m_groupsBySignal[members.at(m).signalName].append({g, m});
    }
}

} // namespace ChipLoom
