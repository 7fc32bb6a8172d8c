#include "Design/Calculators/CanBitTiming.h"

#include <array>
#include <cmath>

namespace ChipLoom {

namespace {

constexpr double Whole = 0.000001; // how far a number may lie from an integer

struct CanLimits
{
    int bs1Min, bs1Max, bs2Max;
    int lengthMin, lengthMax; // of BS1 + BS2 + 1
    int divMax;
    int sync; // quanta of a bit beside BS1 and BS2
};

CanLimits limitsOf(const CanRequest &request)
{
    const bool classic = request.type == CAN_TYPE_1;
    const int divMax = classic ? 4096 : request.type == CAN_TYPE_NominalData ? 2 : 32;
    // The longest classic bit, 25 quanta, needs 16 before the sample point and 8 behind it.
    switch (request.phase) {
    case CALC_Type_CAN:
        return {1, 16, 8, 8, 25, divMax, classic ? 1 : 0};
    case CALC_Type_Nominal:
        return {2, 512, 128, 8, 641, divMax, classic ? 1 : 0};
    case CALC_Type_Data:
        break;
    }
    return {2, 256, 128, 8, 385, divMax, classic ? 1 : 0};
}

double GetIncrementValue(int i)
{
    if (i >= 20)
        return i == 20 ? 0.0 : -5.0;
    const double size = ((i + 1) / 2) * 0.5;
    return i % 2 == 1 ? size : -size;
}

std::optional<int> integerOf(double value)
{
    const double rounded = std::round(value);
    if (std::abs(value - rounded) > Whole)
        return std::nullopt;
    return static_cast<int>(rounded);
}

bool JudgeSamplePiont(double part)
{
    for (int v = 1; v <= 4; ++v) {
        if (integerOf(v * part / (1.0 - part)))
            return true;
    }
    return false;
}

// Calls `visit(bs1, bs2, n)` for every pair of segments that meets a sample point, shortest bit first.
template <typename Visit> void forSegments(const CanRequest &request, double samplePoint, Visit visit)
{
    const CanLimits limits = limitsOf(request);
    const double part = samplePoint / 100.0;
    if (part <= 0.0 || part >= 1.0 || !JudgeSamplePiont(part))
        return;
    for (int bs2 = 1; bs2 <= limits.bs2Max; ++bs2) {
        const std::optional<int> before = integerOf(bs2 * part / (1.0 - part));
        if (!before)
            continue;
        const int bs1 = *before - limits.sync;
        if (bs1 < limits.bs1Min || bs1 > limits.bs1Max)
            continue;
        const int length = bs1 + bs2 + 1;
        if (length < limits.lengthMin || length > limits.lengthMax)
            continue;
        visit(bs1, bs2, bs1 + bs2 + limits.sync);
    }
}

CANValue timingOf(const CanRequest &request, int bs1, int bs2, int n, int div, double samplePoint)
{
    CANValue value;
    value.nDiv = div;
    value.uiBS1 = static_cast<unsigned>(bs1);
    value.uiBS2 = static_cast<unsigned>(bs2);
    value.uiBitDuration = static_cast<unsigned>(n);
    value.dSamplePoint = samplePoint;
    value.dBitRate = request.clockKHz / (double(n) * div);
    const unsigned capped = std::min(value.uiBS2, 4u);
    if (request.type != CAN_TYPE_1) {
        value.uiSJW = value.uiSJWMax = value.uiBS2;
    } else if (request.sjwFollowsBS2) {
        value.uiSJW = capped;
        value.uiSJWMax = 4;
    } else {
        value.uiSJW = 1;
        value.uiSJWMax = capped;
    }
    return value;
}

bool makesSense(const CanRequest &request)
{
    return request.clockKHz > 0 && request.bitRate > 0 && std::isfinite(request.clockKHz / request.bitRate);
}

} // namespace

QList<CANValue> CAN_CalcResults(const CanRequest &request)
{
    QList<CANValue> results;
    if (!makesSense(request))
        return results;
    const int divMax = limitsOf(request).divMax;
    for (int i = 0; i <= 21 && results.isEmpty(); ++i) {
        const double samplePoint = request.samplePoint + GetIncrementValue(i);
        forSegments(request, samplePoint, [&](int bs1, int bs2, int n) {
            const double div = std::round(request.clockKHz / (n * request.bitRate));
            if (div < 1 || div > divMax)
                return;
            const CANValue value = timingOf(request, bs1, bs2, n, static_cast<int>(div), samplePoint);
            if (value.dBitRate >= (1 - request.tolerance) * request.bitRate &&
                value.dBitRate <= (1 + request.tolerance) * request.bitRate)
                results.prepend(value);
        });
    }
    return results;
}

std::optional<CANValue> nearestCanTiming(const CanRequest &request)
{
    std::optional<CANValue> best;
    if (!makesSense(request))
        return best;
    const int divMax = limitsOf(request).divMax;
    for (int i = 0; i <= 21; ++i) {
        const double samplePoint = request.samplePoint + GetIncrementValue(i);
        forSegments(request, samplePoint, [&](int bs1, int bs2, int n) {
            const double exact = request.clockKHz / (n * request.bitRate);
            for (const double div : {std::floor(exact), std::floor(exact) + 1}) {
                const int inRange = static_cast<int>(std::min(std::max(div, 1.0), double(divMax)));
                const CANValue value = timingOf(request, bs1, bs2, n, inRange, samplePoint);
                if (!best || std::abs(value.dBitRate - request.bitRate) < std::abs(best->dBitRate - request.bitRate))
                    best = value;
            }
        });
    }
    return best;
}

double canSamplePointFor(double bitRate)
{
    return bitRate > 800 ? 75.0 : bitRate > 500 ? 80.0 : 87.5;
}

} // namespace ChipLoom
