#pragma once

#include "Design/DesignReason.h"
#include "Model/ShareParameter.h"

#include <QString>
#include <QVector>

namespace ChipLoom {

class Design;

/// One function in the menu of a pin.
struct PinMenuEntry
{
    QString pinName; ///< the name under which the pin offers it; what a change names
    QString signalName;
    PINCONFIG_TYPE status = Not_Config; ///< configured means ticked
    DesignAnswer refusal;               ///< why a tick would be refused
    DesignAnswer conflict;              ///< what a tick would take off the position
    QString comesFrom;                  ///< the pin from which a tick would move the signal; empty for none
};

/// The functions of one peripheral; `peripheral` is empty for the plain functions, and the controller's name for what
/// its parts share.
struct PinMenuGroup
{
    QString peripheral;
    QVector<PinMenuEntry> entries;
};

/// The menu of a position for the window and the command line: plain functions first, then the peripherals by name.
struct PinMenu
{
    QVector<PinMenuGroup> groups;
    bool canReset = false; ///< something stands here
    QString labelPin;      ///< the pin that "Enter Label" labels; empty while nothing stands here
    QString label;         ///< its label
};

/// Empty for a position that offers nothing.
PinMenu pinMenu(Design &design, int pinNumber);

} // namespace ChipLoom
