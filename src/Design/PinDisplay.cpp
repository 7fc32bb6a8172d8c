// What a pin shows.
#include "Design/PinAssignment.h"

namespace ChipLoom {

PINCONFIG_TYPE PinAssignment::positionStatus(int pinNumber) const
{
    PINCONFIG_TYPE shown = Not_Config;
    for (int pin : m_info.pinsAtPosition(pinNumber)) {
        for (const PinSignalStruct &state : m_info.pin(pin).pinSignalsList) {
            if (state.configStatus != Not_Config && shown != Manual_Config)
                shown = state.configStatus;
        }
    }
    return shown;
}

QString PinAssignment::GetPinConfigedDisplayText(int pinNumber) const
{
    QStringList texts;
    for (int pin : m_info.pinsAtPosition(pinNumber)) {
        for (const PinSignalStruct &state : m_info.pin(pin).pinSignalsList) {
            if (state.configStatus != Not_Config)
                texts.append(state.signalUserLabel.isEmpty() ? state.signalName : state.signalUserLabel);
        }
    }
    return texts.join(QLatin1Char(';'));
}

QString PinAssignment::GetRectDisplayPinName(int pinNumber) const
{
    QStringList names;
    for (int pin : m_info.pinsAtPosition(pinNumber)) {
        if (m_info.pin(pin).validFlag)
            names.append(m_info.pin(pin).pinName);
    }
    return names.join(QLatin1String("__"));
}

QString PinAssignment::GetRectDisplayPinRemarks(int pinNumber) const
{
    QStringList remarks;
    for (int pin : m_info.pinsAtPosition(pinNumber)) {
        const MCUPinsBaseInfo &entry = m_info.pin(pin);
        if (entry.validFlag && !entry.remarks.isEmpty() && !remarks.contains(entry.remarks))
            remarks.append(entry.remarks);
    }
    return remarks.join(QLatin1Char('\n'));
}

} // namespace ChipLoom
