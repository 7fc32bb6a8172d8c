#include "Design/PinMenu.h"

#include "Design/Design.h"

#include <QCollator>

#include <algorithm>

namespace ChipLoom {

namespace {

PinMenuEntry menuEntry(PinAssignment &pins, SignalPlace place)
{
    const MCUPinsBaseInfo &pin = pins.pinInfo().pin(place.pin);
    const PinSignalStruct &state = pins.pinInfo().signal(place);
    PinMenuEntry entry{state.signalInPinName.isEmpty() ? pin.pinName : state.signalInPinName,
                       state.signalName,
                       state.configStatus,
                       {},
                       {},
                       {}};
    if (!pin.validFlag) {
        entry.refusal = {DesignReason::InactiveVariant, {pin.pinName}};
        return entry;
    }
    if (state.configStatus != Not_Config)
        return entry;
    entry.refusal = pins.canPlaceByHand(entry.pinName, state.signalName);
    if (!entry.refusal)
        return entry;
    entry.conflict = pins.rules().SignalCanbeUseInPin(state.signalName, place.pin);
    const SignalPlace standing = pins.rules().configuredPlace(state.signalName);
    if (!isPlainFunction(state.signalName) && !standing.isNull())
        entry.comesFrom = pins.pinInfo().pin(standing.pin).pinName;
    return entry;
}

QString groupOf(const Design &design, const QString &signal)
{
    if (isPlainFunction(signal))
        return {};
    const QStringList owners = design.ownersOf(signal);
    return owners.size() == 1 ? owners.first() : signal.section(QLatin1Char('_'), 0, 0);
}

} // namespace

PinMenu pinMenu(Design &design, int pinNumber)
{
    PinMenu menu;
    const DevicePinInfo &info = design.pinInfo();
    for (int pin : info.pinsAtPosition(pinNumber)) {
        for (int s = 0; s < info.pin(pin).pinSignalsList.size() && !info.pin(pin).fixedFlag; ++s) {
            const PinSignalStruct &state = info.signal({pin, s});
            if (state.configStatus != Not_Config) {
                menu.canReset = true;
                menu.labelPin = info.pin(pin).pinName;
                if (menu.label.isEmpty())
                    menu.label = state.signalUserLabel;
            }
            const QString peripheral = groupOf(design, state.signalName);
            auto group = std::find_if(menu.groups.begin(), menu.groups.end(),
                                      [&](const PinMenuGroup &known) { return known.peripheral == peripheral; });
            if (group == menu.groups.end())
                group = menu.groups.insert(menu.groups.end(), {peripheral, {}});
            group->entries.append(menuEntry(design.pins(), {pin, s}));
        }
    }
    QCollator byNumber;
    byNumber.setNumericMode(true);
    std::stable_sort(menu.groups.begin(), menu.groups.end(), [&](const PinMenuGroup &a, const PinMenuGroup &b) {
        return byNumber.compare(a.peripheral, b.peripheral) < 0;
    });
    return menu;
}

} // namespace ChipLoom
