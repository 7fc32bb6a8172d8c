#pragma once

#include "Base/AppPaths.h"
#include "Model/SeriesHelpers.h"
#include "Model/xmloperation.h"

#include <QRegularExpression>

#include <ostream>
#include <vector>

namespace ChipLoom::Test {

/// A family of the sample database by its largest device: most pins, the later series, most flash memory.
struct SampleFamily
{
    QString folder; ///< of its templates
    QString series, device, package;
};

inline void PrintTo(const SampleFamily &family, std::ostream *out)
{
    *out << family.device.toStdString();
}

/// All families, in the order of the catalogue: tests that walk them hear of a new one by themselves.
inline std::vector<SampleFamily> sampleFamilies()
{
    const auto number = [](const QString &text) {
        static const QRegularExpression digits("\\d+");
        return digits.match(text).captured().toInt();
    };
    std::vector<SampleFamily> families;
    const AppPaths paths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR));
    int pins = 0, flash = 0;
    for (const MCUSerialStruct &series : XMLOperation(paths).GetMCUSerialsList()) {
        const QString folder = MCUSerialString_To_MCUConSerialString(series.SeriaName);
        if (families.empty() || families.back().folder != folder) {
            families.push_back({folder, {}, {}, {}});
            pins = 0;
        }
        SampleFamily &family = families.back();
        for (const MCUDeviceStruct &device : series.MCUDeviceList) {
            const int devicePins = number(device.DevicePackage), deviceFlash = number(device.DeviceFlash);
            const bool larger = devicePins == pins && (series.SeriaName != family.series || deviceFlash > flash);
            if (devicePins > pins || larger) {
                family = {folder, series.SeriaName, device.DeviceName, device.DevicePackage};
                pins = devicePins;
                flash = deviceFlash;
            }
        }
    }
    return families;
}

inline std::string nameOfFamily(const ::testing::TestParamInfo<SampleFamily> &info)
{
    return info.param.device.toStdString();
}

} // namespace ChipLoom::Test
