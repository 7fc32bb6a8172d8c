#pragma once

#include "Design/DesignReason.h"
#include "Model/ShareParameter.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <vector>

namespace ChipLoom {

class DevicePinInfo;
class ModeControl;

// What differs by series and peripheral in the modes and cannot be said in the database: rows, evaluated by one routine
// for each of the families.

/// What the families look at: one peripheral with its controls in creation order.
struct ModeFamilyInput
{
    QString series;
    const PeripheralsBaseInfo &info;
    std::vector<const ModeControl *> comboBoxes;
    std::vector<const ModeControl *> checkBoxes;
    int allPinNums = 0;
};

/// `UpdateIPValidFlag`: whether the peripheral counts as in use.
bool isPeripheralValid(const ModeFamilyInput &input);

/// Whether FreeRTOS is on, as SYSTEM's box of the time base hears it, and whether both then count with SysTick.
bool hearsFreeRtos(const ModeControl &timeBase);
bool kernelSharesSysTick(const ModeControl &timeBase);

/// The line beside the modes, as an English text to translate (context "Modes") with its argument.
struct ModeNote
{
    enum class Kind { None, SelectBox, Fixed, Reason };

    Kind kind = Kind::None;
    QString argument; ///< `SelectBox`: name of the mode that must be chosen too; `Fixed`: the text
    bool error = false;
    DesignAnswer reason = {}; ///< `Reason`

    bool operator==(const ModeNote &) const = default;
};

/// `ModeSpecialOperation`: the note, and whether it is an error.
ModeNote modeNote(const ModeFamilyInput &input, bool valid);

/// `HandleConfigurationTabWidget`: what a valid peripheral shows beside its modes, from which each takes what it has.
enum class ConfigurationTab { Parameters, Dma, Nvic, Interrupts, Gpio };
QList<ConfigurationTab> configurationTabs(const ModeFamilyInput &input);

/// Whether a virtual signal of a mode exists on a device, for those that stand for a property of the package; real
/// signals and unknown virtual ones are none of its business.
enum class VirtualSignal { NotNamed, Absent, Present };
VirtualSignal virtualSignalPresence(const QString &series, const QString &signal, const DevicePinInfo &pins);

/// The choices that a chip has from reset: mode and entry, "TRUE" for a check box.
QList<IP_MODE_Struct> specialItems(const ModeFamilyInput &input);

/// The check box that is ticked along with an entry of a box; empty for none.
QString checkedAlong(const ModeFamilyInput &input, const QString &modeName, const QString &itemName);

/// The name under which a mode stands in design files, and a choice of a design file as modes and entries are named
/// now.
QString savedModeName(const ModeFamilyInput &input, const QString &modeName);
XMLAttributeInfo modernMode(const ModeFamilyInput &input, const XMLAttributeInfo &saved);

/// Whether a mode switches bonding variants of the package, and which.
enum class PinRemapMode { None, PinRemap, PinRemap1 };
PinRemapMode pinRemapMode(const PeripheralsBaseInfo &info, const QString &modeName);

/// Whether tokens of other peripherals tick and untick the first check box: ticked while its condition is met.
bool isSwitchedByTokens(const ModeFamilyInput &input);

} // namespace ChipLoom
