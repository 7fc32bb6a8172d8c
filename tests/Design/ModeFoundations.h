#pragma once

#include "Design/Design.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/ModeControl.h"

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
         {"mode/CMP1/Mode=Fast", "mode/CMP1/Output_select=Internal", "mode/CMP1/INP_channel_select=INP0",
          "mode/CMP1/INM_channel_select=VREF", "param/CMP1/Target=CMP_OUTPUT_TMR1BRK", "mode/TMR1/Activated=TRUE"}},
    };
    return ofItems.value(instance + '/' + mode + '=' + item, ofInstances.value(instance));
}

inline bool applySetting(Design &design, const QString &setting)
{
    const auto change = DesignChange::fromSetting(setting);
    const bool accepted = change && design.apply(*change).accepted();
    design.scheduler().drain();
    return accepted;
}

/// What a control takes, but "Disable".
inline QStringList itemsOf(const ModeControl &control)
{
    if (control.isCheckBox())
        return {"TRUE"};
    QStringList names;
    for (const ItemInfoStruct &item : control.items())
        names.append(item.Name);
    return names;
}

/// Chooses an item, with whatever the modes of its peripheral before it have to be for it.
inline bool chooseItem(Design &design, const QString &instance, const QString &mode, const QString &item)
{
    const QString setting = "mode/" + instance + '/' + mode + '=' + item;
    if (applySetting(design, setting))
        return true;
    for (const bool firstOnly : {true, false}) {
        for (const auto &control : design.peripheral(instance)->controls()) {
            if (control->modeName() == mode)
                break;
            for (const QString &before : itemsOf(*control)) {
                const bool accepted =
                    applySetting(design, "mode/" + instance + '/' + control->modeName() + '=' + before);
                if (accepted && applySetting(design, setting))
                    return true;
                if (accepted && firstOnly)
                    break;
            }
        }
    }
    return false;
}

/// Chooses what a mode asks for beside it, as the input of a subordinate mode or the boxes of an Ethernet interface.
inline void completeModes(Design &design, const QString &instance)
{
    const IP_ModeAndConfiguration *peripheral = design.peripheral(instance);
    for (const auto &control : peripheral->controls()) {
        if (peripheral->GetIPValidFlag() && (peripheral->GetIPStatusFlag() & IPSTATUS_ERROR) == 0)
            return;
        if (control->isOn())
            continue;
        for (const QString &item : itemsOf(*control)) {
            if (applySetting(design, "mode/" + instance + '/' + control->modeName() + '=' + item))
                break;
        }
    }
}

} // namespace ChipLoom::Test
