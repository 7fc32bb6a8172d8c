#pragma once

#include <QString>

namespace ChipLoom {

class DevicePinInfo;
class ModuleConfiguration;
class ZV32PLLConfig;

// What the peripherals mean for the clock tree: crystals, clock outputs, and the blocks that a peripheral in use opens.

/// A peripheral's mode or status has changed. With `switchPll` the PLL moves to a crystal that was switched on.
void tellClock(const ModuleConfiguration &module, ZV32PLLConfig &clock, bool switchPll = false);

/// Signals have moved: the clock page shows the pins of the clock outputs.
void tellClockOutputs(const DevicePinInfo &pins, ZV32PLLConfig &clock);

/// Whether switching a mode on is the moment to ask if the PLL should follow: the high-speed crystal comes, and the PLL
/// runs on the internal clock.
bool offersPllSwitch(const QString &instance, const QString &modeName, const ZV32PLLConfig &clock);

} // namespace ChipLoom
