#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace ChipLoom::Test {

/// What has to be set for a mode of the sample database that stands on other peripherals; "mode/..." and "param/...".
inline QStringList foundationsOf(const QString &instance, const QString &mode, const QString &item)
{
    static const QMap<QString, QStringList> ofInstances{
        {"IRTMR",
         {"mode/TMR17/Activated=TRUE", "mode/TMR16/Activated=TRUE", "mode/TMR11/Activated=TRUE",
          "mode/TMR10/Activated=TRUE", "mode/USART1/Mode=Asynchronous"}},
        {"DAC", {"mode/EXINT/EXINT9=TRUE"}},
        {"ADC1", {"mode/EXINT/EXINT11=TRUE", "mode/EXINT/EXINT15=TRUE"}},
        {"ACC",
         {"mode/USBFS/Mode=Device_Only", "param/USBFS/ClockTrimming=TRUE", "mode/USB_OTGFS1/Mode=Device_Only",
          "param/USB_OTGFS1/ClockTrimming=TRUE"}},
    };
    static const QMap<QString, QStringList> ofItems{
        {"TMR1/Activate_Break_Input=CMP1",
         {"mode/CMP1/Mode=Fast", "param/CMP1/Target=CMP_OUTPUT_TMR1BRK", "mode/TMR1/Activated=TRUE"}},
    };
    return ofItems.value(instance + '/' + mode + '=' + item, ofInstances.value(instance));
}

} // namespace ChipLoom::Test
