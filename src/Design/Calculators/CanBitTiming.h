#pragma once

#include "Model/Enumerations.h"

#include <QList>

#include <optional>

namespace ChipLoom {

/// One way to divide the clock into the bits of a bus.
struct CANValue
{
    int nDiv = 0;       ///< clocks per time quantum
    unsigned uiBS1 = 0; ///< quanta before the sample point; without the synchronisation quantum for classic CAN
    unsigned uiBS2 = 0; ///< quanta behind the sample point
    unsigned uiSJW = 0; ///< quanta by which a bit may be lengthened or shortened
    unsigned uiSJWMax = 0;
    unsigned uiBitDuration = 0; ///< quanta of a whole bit
    double dSamplePoint = 0;    ///< percent of the bit
    double dBitRate = 0;        ///< kbit/s

    bool operator==(const CANValue &) const = default;
};

/// What is asked of a bit timing.
struct CanRequest
{
    double clockKHz = 0;
    double bitRate = 0;     ///< kbit/s
    double samplePoint = 0; ///< percent, wanted; may be missed by up to 5
    CAN_TYPE type = CAN_TYPE_1;
    CALC_Type phase = CALC_Type_CAN;
    double tolerance = 0.005;  ///< of the bit rate, as a part of one
    bool sjwFollowsBS2 = true; ///< classic CAN: the widest resynchronisation is the start value, else 1
};

/// All timings within the tolerance at the sample point nearest to the wanted one that has any, the longest first.
/// Empty if nothing fits or the request makes no sense.
QList<CANValue> CAN_CalcResults(const CanRequest &request);

/// The timing whose rate is nearest to the wanted one, whatever the tolerance, at a sample point that the search above
/// tries; nothing if no rate can be reached at all.
std::optional<CANValue> nearestCanTiming(const CanRequest &request);

/// The sample point that suits a bit rate in kbit/s, in percent.
double canSamplePointFor(double bitRate);

} // namespace ChipLoom
