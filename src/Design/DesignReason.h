#pragma once

#include <QStringList>

namespace ChipLoom {

/// Why a change or a placement is refused. The arguments that go with a reason stand behind it, in order; the text is
/// made from both where it is shown (DesignTexts.h).
enum class DesignReason {
    None,
    NoDesign,              ///< nothing is open
    UnknownSetting,        ///< setting
    UnknownPin,            ///< pin
    FixedPin,              ///< pin
    InactiveVariant,       ///< pin: another variant of its position is the bonded one
    SignalNotOnPin,        ///< signal, pin
    UnknownSignal,         ///< signal: no bonded pin offers it
    NotPlaced,             ///< signal, pin
    HeldBySignal,          ///< pin, signals that stand on it
    VariantHeld,           ///< pin, other variant of the position, signals that stand there
    CrystalPinsParted,     ///< pin, other pin of the crystal, signals that stand there
    NoGroupOnPin,          ///< signal, pin: no remap group offers the signal there
    NoGroupFits,           ///< peripheral: no remap group has room for all signals
    OccupiedByRemap,       ///< pin, member of a remap group that is hidden there
    OutputKindDiffers,     ///< pin, signal with another kind of output
    TimerOutputOnGroupPin, ///< pin, timer signal that drives it
    BoundSignalBlocked,    ///< signal, bound signal that cannot follow, pin number
    NothingToLabel,        ///< pin
    InvalidLabel,          ///< label
    Cancelled,             ///< by the user, at a question
    UnknownMode,           ///< peripheral, mode
    UnknownItem,           ///< peripheral, mode, entry
    ModeClosed,            ///< peripheral, mode: its condition is not met
    SignalsNotOnPackage,   ///< signals that stand on no bonded pin
    ItemConditionNotMet,   ///< entry, expression
    PinsTaken,             ///< entry, signals without a free pin
    UnknownParameter,      ///< peripheral, parameter: not shown in the present modes
    ParameterClosed,       ///< parameter: shown, but fixed by the present modes
    NotANumber,            ///< parameter, value
    NotAnAddress,          ///< parameter, value
    BelowMinimum,          ///< parameter, value, least value
    AboveMaximum,          ///< parameter, value, greatest value
    ValueNotInList,        ///< parameter, value
    ValueNotOffered,       ///< parameter, value: its condition is not met
    ValueMarked,           ///< parameter, value: offered, but it contradicts other settings
    ModeIncomplete,        ///< peripheral, mode that must be chosen too
    SysTickShared,         ///< kernel that counts with SysTick, instance whose delays do too
    TwoKernels,            ///< kernel, other kernel
    EdgeOnAnalogPin,       ///< line, pin, analog function that stands there too
    RateOff,               ///< parameter, error and allowed error in percent
    SamplingTimeShared,    ///< parameter, the one of the same channel that holds
    ChannelAtOnce,         ///< parameter, converter that samples the same channel at the same moment
    EventsUnheard,         ///< peripheral whose events interrupt, its vectors, none of which is on
    VectorLineClosed,      ///< vector, line of EXINT that raises it and does not interrupt
    ValueDoubtful,         ///< parameter, what its value lacks to have an effect, in words
    NoBitTiming,           ///< parameter, bit rate in kbit/s, nearest that can be had
    NoI2cTiming,           ///< parameter, limit of the bus that fails, nearest bus clock
    ClockRefused,          ///< what is wrong, in words
    NoSettingsOnPin,       ///< pin: nothing in effect stands there
    UnknownVector,         ///< vector
    VectorClosed,          ///< vector: nothing that raises it is on
    VectorHeldOn,          ///< vector: a middleware needs it
    VectorFieldFixed,      ///< vector, field
    PriorityGroupFixed,    ///< by the RTOS
    NoDmaChannel,
    NoDmaRequest, ///< no request waits for a channel
    UnknownDmaRequest,
    UnknownDmaChannel,       ///< channel
    DmaRequestClosed,        ///< request, peripheral whose settings do not raise it
    DmaRequestUsed,          ///< request, its channel
    DmaRequestNotUsed,       ///< request or channel that a setting is for
    DmaChannelTaken,         ///< channel, request that has it
    DmaChannelNotForRequest, ///< request, channel
    NoChannelForDmaRequest,  ///< what is taken: all channels of the request, or a request that excludes it
    InvalidText,             ///< project value, text that it cannot be
    NotUsedByModes,          ///< signal: placed by hand, and no mode uses it
    DuplicateEntry,          ///< section, or entry of one, that a design file holds more than once
    NoSuchModule,            ///< instance of which a design file has settings, and the device has none
    DmaRequestElsewhere,     ///< what was asked for, the controller that has it, and its section
};

/// The answer to a change or a question: accepted, or the reason why not.
struct DesignAnswer
{
    DesignReason reason = DesignReason::None;
    QStringList arguments;

    bool accepted() const { return reason == DesignReason::None; }
    explicit operator bool() const { return accepted(); }
    bool operator==(const DesignAnswer &) const = default;
};

} // namespace ChipLoom
