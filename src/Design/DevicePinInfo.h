#pragma once

#include "Model/ShareParameter.h"

#include <QHash>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVector>

namespace ChipLoom {

/// Where a function stands in the pin table: entry of the pin list, entry of that pin's signal list.
struct SignalPlace
{
    int pin = -1;
    int signal = -1;

    bool isNull() const { return pin < 0; }
    bool operator==(const SignalPlace &) const = default;
};

/// Where a signal stands in the group list.
struct GroupPlace
{
    int group = -1;
    int member = -1;
};

/// One of the four functions that need no peripheral's mode: the name contains "GPIO_Input", "GPIO_Output",
/// "GPIO_Analog" or "EVENTOUT".
bool isPlainFunction(const QString &signal);

/// The pin table of the open design: geometry, pins with the state of every function on them, and remap groups.
///
/// Everybody reads it; only `PinAssignment` changes it. Names and order are fixed once it is built, which is what the
/// indexes rely on; they give places in table order, so that a look-up never changes which pin comes first.
class DevicePinInfo
{
public:
    /// A table without pins.
    DevicePinInfo() = default;
    /// The table of a device file that was read from `deviceFilePath`.
    explicit DevicePinInfo(const MCUDeviceFile &device, QString deviceFilePath = {});

    QString m_MCUName;
    int m_xPinNum = 0;
    int m_yPinNum = 0;
    int m_allPinNums = 0;
    QString m_packageType;
    int m_pinConfigRule = 0;
    /// Several entries with one `pinNumber` are variants of one position.
    QList<MCUPinsBaseInfo> m_deviceBaseInfoList;
    /// Only members whose pin the package has, and only groups that have members left.
    QList<IPSignalGroupInfo> m_deviceIPSignalGroupInfoList;
    QString m_deviceFilePath;

    bool isEmpty() const { return m_deviceBaseInfoList.isEmpty(); }
    const MCUPinsBaseInfo &pin(int index) const { return m_deviceBaseInfoList.at(index); }
    const PinSignalStruct &signal(SignalPlace place) const
    {
        return m_deviceBaseInfoList.at(place.pin).pinSignalsList.at(place.signal);
    }

    /// All entries of a position, bonded or not.
    QList<MCUPinsBaseInfo> GetMCUPinBaseInfo(int pinNumber) const;
    /// The same as indexes into the pin list.
    const QVector<int> &pinsAtPosition(int pinNumber) const;
    /// Positions in the order in which they first occur in the table.
    const QVector<int> &positions() const { return m_positions; }
    /// Every place of a function of exactly this name, on bonded and other variants.
    const QVector<SignalPlace> &placesOf(const QString &signal) const;
    /// All pins that share a name with `pinName` (`IsPinNameSame`).
    QVector<int> pinsNamed(const QString &pinName) const;
    /// The first bonded pin of that name, or -1.
    int validPinNamed(const QString &pinName) const;
    /// The place of a function on one pin; null if the pin does not offer it.
    SignalPlace placeOnPin(const QString &signal, int pin) const;
    /// The same where a pin with several names offers a function under each of them.
    SignalPlace placeOnPin(const QString &signal, int pin, const QString &inPinName) const;
    /// The pin that the chip gives to its crystal or to its port together with this one, or -1.
    int crystalPartner(int pin) const;
    /// Finds these two, for chips that switch both at once.
    void joinCrystalPins();
    /// Every membership of a signal in the groups.
    const QVector<GroupPlace> &groupsOf(const QString &signal) const;
    /// Names of all functions of the table, sorted, each once.
    QStringList GetAllSignalsName() const;

    /// Takes the texts of the current language.
    void updateLanguage();

private:
    void DeviceBaseInfoListRearrangement();
    void indexPins();
    void UpdateSignalGroupAccordingPackage();
    void UpdateSignalGroupInfoPinNum();
    void indexGroups();

    QHash<QString, QVector<SignalPlace>> m_placesBySignal;
    QHash<QString, QVector<int>> m_pinsByNamePart;
    QHash<int, QVector<int>> m_pinsByPosition;
    QHash<QString, QVector<GroupPlace>> m_groupsBySignal;
    QVector<int> m_positions;
    QVector<int> m_crystalPins; ///< joined ones: none or two
};

} // namespace ChipLoom

Q_DECLARE_METATYPE(const ChipLoom::DevicePinInfo *)
