#include "Gui/Home/DeviceCatalogue.h"

#include <utility>

namespace ChipLoom {

DeviceCatalogue::DeviceCatalogue(QList<ProductLineStruct> lines) : m_lines(std::move(lines))
{
    for (int line = 0; line < m_lines.size(); ++line) {
        const QList<MCUSerialStruct> &series = m_lines.at(line).MCUSerialList;
        for (int i = 0; i < series.size(); ++i) {
            for (const MCUDeviceStruct &device : series.at(i).MCUDeviceList) {
                if (!m_homes.contains(device.DeviceName))
                    m_homes.insert(device.DeviceName, {line, i});
            }
        }
    }
}

QString DeviceCatalogue::GetDeviceSerialName(const QString &device) const
{
    const auto home = m_homes.constFind(device);
    return home == m_homes.cend() ? QString() : m_lines.at(home->line).MCUSerialList.at(home->series).SeriaName;
}

QString DeviceCatalogue::GetDeviceProductLinelInfo(const QString &device) const
{
    const auto home = m_homes.constFind(device);
    if (home == m_homes.cend())
        return {};
    const ProductLineStruct &line = m_lines.at(home->line);
    return shownName(line.ProductLineName, line.ProductLineName_CH);
}

QStringList DeviceCatalogue::GetAllDevicesName() const
{
    QStringList names;
    for (const ProductLineStruct &line : m_lines) {
        for (const MCUSerialStruct &series : line.MCUSerialList) {
            for (const MCUDeviceStruct &device : series.MCUDeviceList)
                names.append(device.DeviceName);
        }
    }
    return names;
}

const MCUSerialStruct *DeviceCatalogue::findSeries(const QString &series) const
{
    for (const ProductLineStruct &line : m_lines) {
        for (const MCUSerialStruct &candidate : line.MCUSerialList) {
            if (candidate.SeriaName == series)
                return &candidate;
        }
    }
    return nullptr;
}

void DeviceCatalogue::TranslatorUI()
{
    const bool chinese = GlobalLanguage::g_CurrentLanguage == UI_CH;
    for (ProductLineStruct &line : m_lines) {
        line.ProductLinelInfo = chinese ? line.ProductLinelInfo_CH : line.ProductLinelInfo_EN;
        for (MCUSerialStruct &series : line.MCUSerialList)
            series.SerialInfo = chinese ? series.SerialInfo_CH : series.SerialInfo_EN;
    }
}

} // namespace ChipLoom
