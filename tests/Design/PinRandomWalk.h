#pragma once

#include "PinFixture.h"

#include <gtest/gtest.h>

#include <QMap>

#include <random>

namespace ChipLoom::Test {

/// Ticks, resets, remap flags, requests and withdrawals in a random but repeatable order. What the authority says
/// before an operation must be what it does, and its rules must hold after each `checkEvery` of them.
inline void randomWalk(PinAssignment &pins, int steps, int checkEvery)
{
    std::mt19937 random(20);
    const auto below = [&random](int count) { return int(random() % unsigned(count)); };
    QMap<QString, QStringList> ofPeripheral;
    for (const QString &name : pins.pinInfo().GetAllSignalsName()) {
        if (!isPlainFunction(name))
            ofPeripheral[name.section('_', 0, 0)].append(name);
    }
    const QStringList peripherals = ofPeripheral.keys();
    const QStringList ioModes = {"", ":Input", ":MuxOutputPushPull", ":MuxOutputOpenDrain"};
    const auto held = [&](const QString &ip) { return wanted(ofPeripheral.value(ip)); };
    for (int step = 0; step < steps; ++step) {
        const bool check = step % checkEvery == 0;
        const QString before = check ? printed(pins.pinInfo()) : QString();
        const MCUPinsBaseInfo &pin = pins.pinInfo().pin(below(int(pins.pinInfo().m_deviceBaseInfoList.size())));
        const QString pinName = pin.pinName;
        const QString ip = peripherals.at(below(int(peripherals.size())));
        switch (below(8)) {
        case 0:
        case 1:
        case 2:
            if (!pin.pinSignalsList.isEmpty()) {
                const QString name = pin.pinSignalsList.at(below(int(pin.pinSignalsList.size()))).signalName;
                const DesignAnswer expected = pins.canPlaceByHand(pinName, name);
                if (check) {
                    ASSERT_EQ(printed(pins.pinInfo()), before);
                }
                ASSERT_EQ(pins.checkedLibAction(pinName, name, true), expected);
            }
            break;
        case 3:
            pins.checkedLibAction(pinName, "Reset_State", true);
            break;
        case 4:
            pins.ReceivePinRemapFlag(below(2));
            break;
        case 5:
            pins.ReciveClearIPPinSignals(held(ip), false, ip);
            break;
        default: {
            QList<ModeSignal> asked;
            for (const QString &name : ofPeripheral.value(ip)) {
                if (asked.size() < 6 && below(2))
                    asked += wanted({name + ioModes.at(below(4))});
            }
            const QStringList unplaced = pins.unplacedByRequest(held(ip), asked, ip);
            if (check) {
                ASSERT_EQ(printed(pins.pinInfo()), before);
            }
            pins.ReciveIPPinSignals(held(ip), asked, false, ip);
            for (const ModeSignal &signal : asked) {
                const SignalPlace place = pins.rules().configuredPlace(signal.signalName);
                const bool placed = !place.isNull() && pins.pinInfo().signal(place).configStatus & IP_Config;
                ASSERT_EQ(placed, !unplaced.contains(signal.signalName)) << signal.signalName.toStdString();
            }
            break;
        }
        }
        if (check) {
            ASSERT_EQ(brokenInvariant(pins), "") << "step " << step << ": " << printed(pins.pinInfo()).toStdString();
        }
    }
    const QString before = printed(pins.pinInfo());
    const PinAssignment::Snapshot snapshot = pins.save();
    for (const MCUPinsBaseInfo &pin : pins.pinInfo().m_deviceBaseInfoList)
        pins.checkedLibAction(pin.pinName, "Reset_State", true);
    ASSERT_EQ(printed(pins.pinInfo()), "");
    ASSERT_EQ(brokenInvariant(pins), "");
    pins.restore(snapshot);
    ASSERT_EQ(printed(pins.pinInfo()), before);
    ASSERT_EQ(brokenInvariant(pins), "");
}

} // namespace ChipLoom::Test
