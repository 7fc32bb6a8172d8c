#pragma once

#include "Design/PinAssignment.h"
#include "QtPrinters.h"

#include <QSet>

namespace ChipLoom::Test {

/// A pin with the four plain functions and those named: "ADC1_IN1*" marks multi-use.
inline MCUPinsBaseInfo gpioPin(int number, const QString &name, const QStringList &functions,
                               const QString &variant = {})
{
    MCUPinsBaseInfo pin;
    pin.pinNumber = number;
    pin.pinNumberStr = QString::number(number);
    pin.pinName = name;
    pin.Variant = variant;
    pin.validFlag = variant != QLatin1String("PINREMAP") && variant != QLatin1String("PINREMAP1");
    const auto add = [&](const QString &signal, const QString &ioMode) {
        PinSignalStruct state;
        state.signalName = signal.endsWith(QLatin1Char('*')) ? signal.chopped(1) : signal;
        state.pinSignalMultiUseFlag = state.pinSignalMultiUseFlagBackup = signal.endsWith(QLatin1Char('*'));
        state.signalIOMode = ioMode;
        state.signalInPinName = name;
        pin.pinSignalsList.append(state);
    };
    for (const QString &function : functions)
        add(function, {});
    for (const char *plain : {"GPIO_Input", "GPIO_Output", "GPIO_Analog", "EVENTOUT"})
        add(QString::fromLatin1(plain), QStringLiteral("Mode_") + QString::fromLatin1(plain));
    return pin;
}

inline MCUPinsBaseInfo fixedPin(int number, const QString &name)
{
    MCUPinsBaseInfo pin;
    pin.pinNumber = number;
    pin.pinNumberStr = QString::number(number);
    pin.pinName = name;
    pin.fixedFlag = true;
    return pin;
}

inline void bind(MCUPinsBaseInfo &pin, const QString &signal, const QString &bound, int toPin)
{
    for (PinSignalStruct &state : pin.pinSignalsList) {
        if (state.signalName == signal)
            state.pinSignalsBoundList.append({toPin, bound});
    }
}

/// Members as "TMR1_CH1=PA8"; an "!" behind the pin denies it to timers.
inline IPSignalGroupInfo remapGroup(const QString &ip, int number, const QStringList &members)
{
    IPSignalGroupInfo group;
    group.IPName = ip;
    group.GroupNum = number;
    for (const QString &text : members) {
        IPSignal member;
        member.signalName = text.section(QLatin1Char('='), 0, 0);
        member.signalInPinName = text.section(QLatin1Char('='), 1);
        if (member.signalInPinName.endsWith(QLatin1Char('!'))) {
            member.signalInPinName.chop(1);
            member.TMRIPCanUseFlag = false;
        }
        group.signalGroup.append(member);
    }
    return group;
}

inline DevicePinInfo pinTable(const QList<MCUPinsBaseInfo> &pins, const QList<IPSignalGroupInfo> &groups)
{
    MCUDeviceFile file;
    file.Package = QStringLiteral("LQFP");
    file.PinsList = pins;
    file.PinsSignalsGroup = groups;
    return DevicePinInfo(file);
}

/// Signals of a request: "USART1_TX", or "USART1_TX:MuxOutputPushPull" with its I/O mode.
inline QList<ModeSignal> wanted(const QStringList &signalNames)
{
    QList<ModeSignal> list;
    for (const QString &text : signalNames)
        list.append({true, text.section(QLatin1Char(':'), 0, 0), text.section(QLatin1Char(':'), 1), false});
    return list;
}

/// What stands where, in table order: "PA9=USART1_TX:manual+mode PA10=...".
inline QString printed(const DevicePinInfo &info)
{
    static const char *const words[] = {"none", "manual", "mode", "manual+mode"};
    QStringList lines;
    for (const MCUPinsBaseInfo &pin : info.m_deviceBaseInfoList) {
        for (const PinSignalStruct &state : pin.pinSignalsList) {
            if (state.configStatus != Not_Config) {
                lines.append(pin.pinName + QLatin1Char('=') + state.signalName + QLatin1Char(':') +
                             QLatin1String(words[state.configStatus]));
            }
        }
    }
    return lines.join(QLatin1Char(' '));
}

/// What must hold after every operation; empty if it does.
inline QString brokenInvariant(const PinAssignment &pins)
{
    const DevicePinInfo &info = pins.pinInfo();
    QSet<QString> standing;
    QSet<QString> marked;
    for (int p = 0; p < info.m_deviceBaseInfoList.size(); ++p) {
        const MCUPinsBaseInfo &pin = info.pin(p);
        const QStringList here = pins.rules().configuredOnPin(p);
        if (!pin.validFlag && !here.isEmpty())
            return QStringLiteral("%1 is not bonded and holds %2").arg(pin.pinName, here.join(QLatin1Char(',')));
        for (int variant : info.pinsAtPosition(pin.pinNumber)) {
            if (variant != p && !here.isEmpty() && !pins.rules().configuredOnPin(variant).isEmpty())
                return QStringLiteral("two variants of position %1 are in use").arg(pin.pinNumber);
        }
        for (const QString &signal : here) {
            if (!pins.rules().SignalCanbeUseInPin(signal, p))
                return QStringLiteral("%1 excludes what else stands on %2").arg(signal, pin.pinName);
            if (isPlainFunction(signal))
                continue;
            if (standing.contains(signal))
                return QStringLiteral("%1 stands twice").arg(signal);
            standing.insert(signal);
        }
        for (const PinSignalStruct &state : pin.pinSignalsList) {
            for (const QString &occupied : state.occupySignalsList)
                marked.insert(pin.pinName + occupied);
        }
        for (const PinSignalStruct &state : pin.pinSignalsList) {
            if (state.signalOtherIPOccupy != marked.contains(pin.pinName + state.signalName))
                return QStringLiteral("the mark of %1 on %2 has no reason").arg(state.signalName, pin.pinName);
        }
    }
    return {};
}

} // namespace ChipLoom::Test
