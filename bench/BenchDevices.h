#pragma once

#include "Design/Design.h"
#include "Model/xmloperation.h"
#include "ScriptedPrompt.h"

#include <benchmark/benchmark.h>

#include <QRegularExpression>

namespace ChipLoom {

struct LargestDevice
{
    QString series, device, package;
    int pins = 0;
};

inline AppPaths paths()
{
    return {QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)};
}

inline const LargestDevice &largestDevice()
{
    static const LargestDevice largest = [] {
        LargestDevice best;
        const QRegularExpression number(QStringLiteral("\\d+$"));
        for (const MCUSerialStruct &series : XMLOperation(paths()).GetMCUSerialsList()) {
            for (const MCUDeviceStruct &device : series.MCUDeviceList) {
                const int pins = number.match(device.DevicePackage).captured().toInt();
                if (pins > best.pins)
                    best = {series.SeriaName, device.DeviceName, device.DevicePackage, pins};
            }
        }
        return best;
    }();
    return largest;
}

/// The largest device, open.
struct OpenDesign
{
    explicit OpenDesign(benchmark::State &state)
    {
        const LargestDevice &largest = largestDevice();
        if (!design.NewDesign(largest.series, largest.device, largest.package))
            state.SkipWithError("no device database beside the programs");
        state.SetLabel(largest.device.toStdString());
    }

    ScriptedPrompt prompt;
    Design design{paths(), prompt};
};

} // namespace ChipLoom
