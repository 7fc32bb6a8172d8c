#pragma once

#include "Model/ShareParameter.h"

namespace ChipLoom {

class DevicePinInfo;
class ModuleConfiguration;
class ZV32PLLConfig;

// What the peripherals mean for the clock tree: crystals, clock outputs, and the blocks that a peripheral in use opens.

/// A peripheral's mode or status has changed. With `switchPll` the PLL moves to a crystal that was switched on.
void tellClock(const ModuleConfiguration &module, ZV32PLLConfig &clock, bool switchPll = false);

/// The parameters of an instance have changed: where converters divide the clock of their bus themselves, what they get
/// can be led to a clock output.
void tellConverterClock(const QList<RefParameter> &parameters, const QString &sender, ZV32PLLConfig &clock);

/// Signals have moved: the clock page shows the pins of the clock outputs.
void tellClockOutputs(const DevicePinInfo &pins, ZV32PLLConfig &clock);

/// Whether switching a mode on is the moment to ask if the PLL should follow: the high-speed crystal comes, and the PLL
/// runs on the internal clock.
bool offersPllSwitch(const QString &instance, const QString &modeName, const ZV32PLLConfig &clock);

} // namespace ChipLoom
