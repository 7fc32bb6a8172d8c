#pragma once

#include "Design/PinAssignment.h"

#include <memory>

namespace ChipLoom {

/// An invented package: mostly I/O pins with a handful of functions each, and a supply pin in every eighth place.
inline MCUDeviceFile fixtureChip(const QString &package, int pins, int xPins, int yPins)
{
    QList<MCUPinsBaseInfo> table;
    for (int number = 1; number <= pins; ++number) {
        MCUPinsBaseInfo pin;
        pin.pinNumber = number;
        pin.pinNumberStr = QString::number(number);
        if (package == QLatin1String("BGA"))
            pin.pinNumberStr = QChar('A' + (number - 1) / yPins) + QString::number((number - 1) % yPins + 1);
        if (number % 8 == 1) {
            pin.pinName = number % 16 == 1 ? QStringLiteral("VDDA") : QStringLiteral("VSS");
            pin.fixedFlag = true;
            pin.remarks = pin.remarks_EN = QStringLiteral("Supply");
        } else {
            const int port = number / 16;
            pin.pinName = QStringLiteral("P%1%2").arg(QChar('A' + port)).arg(number % 16);
            if (number % 16 == 6)
                pin.pinName += QStringLiteral("/HEXT_IN");
            const QString unit = QString::number(port + 1);
            const QString half = QString::number(number % 4 + 1);
            for (const QString &name :
                 {QStringLiteral("GPIO_Input"), QStringLiteral("GPIO_Output"), QStringLiteral("GPIO_Analog"),
                  QStringLiteral("EVENTOUT"), "USART" + unit + "_TX", "TMR" + unit + "_CH" + half,
                  "TMR" + unit + "_CH" + half + "C", "SPI" + unit + "_MOSI"}) {
                PinSignalStruct signal;
                signal.signalName = name;
                signal.signalInPinName = pin.pinName;
                pin.pinSignalsList.append(signal);
            }
        }
        table.append(pin);
    }
    MCUDeviceFile file;
    file.MCUName = QStringLiteral("ZV32F421F8P7");
    file.Package = package;
    file.PinNums = pins;
    file.xPinNum = xPins;
    file.yPinNum = yPins;
    file.PinsList = table;
    return file;
}

/// The packages that are drawn, each with a count that has a drawing of its own and one that falls back.
struct FixturePackage
{
    const char *package;
    int pins, xPins, yPins;
};

inline constexpr FixturePackage FixturePackages[] = {
    {"LQFP", 144, 36, 36}, {"LQFP", 100, 25, 25}, {"LQFP", 80, 20, 20}, {"LQFP", 64, 16, 16}, {"LQFP", 48, 12, 12},
    {"LQFP", 32, 8, 8},    {"QFN", 60, 15, 15},   {"QFN", 48, 12, 12},  {"QFN", 36, 9, 9},    {"QFN", 32, 8, 8},
    {"QFN", 28, 7, 7},     {"QFN", 20, 5, 5},     {"TSSOP", 20, 0, 10}, {"BGA", 100, 10, 10},
};

} // namespace ChipLoom
