// From a wanted frequency to the PLL's fields. Several combinations reach the same frequency: the loops' order
// and the strict comparison decide which, and design files and generated code rely on that choice.

#include "ClockConfig/ZV32ConfigCLK.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace ChipLoom {

namespace {

constexpr double FarthestDifference = 10000.0; // MHz; a candidate farther away is none
constexpr double SclkTargetOffPll = 192.0;     // what the PLL aims at while SCLK runs from elsewhere

struct NsRange
{
    int min;
    int max;
};

/// The NS that can be nearest to the real solution `x`, inside `range`. Candidates rise with NS and lie far apart
/// compared with rounding errors, so everything outside this window is farther from the target.
NsRange around(double x, NsRange range)
{
    if (!(x > range.min)) // also for no number
        return {range.min, std::min(range.min + 1, range.max)};
    if (x >= range.max)
        return {std::max(range.max - 1, range.min), range.max};
    const int below = int(x);
    return {std::max(below - 1, range.min), std::min(below + 2, range.max)};
}

} // namespace

struct ZV32ConfigCLK::FeedbackFields
{
    int ms;
    int ns;
    int divider; ///< FR or FP
};

double ZV32ConfigCLK::vcoSearchMax() const
{
    return m_series->usb == UsbForm::VcoDivider && usbpll_isEnable() ? PLL_NS_SEARCH_MAX_VALUE_USB : m_series->vcoMax;
}

void ZV32ConfigCLK::Get_PLL_MS_ValidRange(double input, int &max, int &min) const
{
    min = PLL_MS_MIN_VALUE;
    max = PLL_MS_MAX_VALUE;
    bool found = false;
    for (int ms = PLL_MS_MIN_VALUE; ms <= PLL_MS_MAX_VALUE; ++ms) {
        const double quotient = input / ms;
        if (quotient < PLL_MS_CHECK_MIN_VALUE || quotient > PLL_MS_CHECK_MAX_VALUE)
            continue;
        if (!found)
            min = ms;
        max = ms;
        found = true;
    }
}

void ZV32ConfigCLK::Get_PLL_NS_ValidRange(double input, int ms, int &max, int &min) const
{
    const double vcoMax = vcoSearchMax();
    min = PLL_NS_MIN_VALUE;
    max = PLL_NS_MAX_VALUE;
    const auto vco = [&](int ns) { return ns * input / ms; };
    if (!(vco(max) >= PLL_NS_CHECK_MIN_VALUE_OTHER && vco(min) <= vcoMax))
        return;
    // The bounds from the quotient, then put right by the comparison itself.
    int low = std::clamp(int(PLL_NS_CHECK_MIN_VALUE_OTHER * ms / input), min, max);
    int high = int(std::clamp(vcoMax * ms / input, double(min), double(max)));
    while (low > min && vco(low - 1) >= PLL_NS_CHECK_MIN_VALUE_OTHER)
        --low;
    while (low < max && vco(low) < PLL_NS_CHECK_MIN_VALUE_OTHER)
        ++low;
    while (high < max && vco(high + 1) <= vcoMax)
        ++high;
    while (high > min && vco(high) > vcoMax)
        --high;
    if (low > high)
        return;
    min = low;
    max = high;
}

void ZV32ConfigCLK::CalculateParam_From_SYSCLK()
{
    if (m_sclk_select == SYSCLK_PLL)
        CalculateParam_From_ResultCLK(GetPllInPutValue(), false);
    calculateBuses();
    if (usbpll_isEnable())
        solveUsbDivider();
}

void ZV32ConfigCLK::CalculateParam_From_USBCLK()
{
    if (!usbpll_isEnable())
        return;
    CalculateParam_From_ResultCLK(GetPllInPutValue(), true);
    calculateUsb();
}

void ZV32ConfigCLK::solveUsbDivider()
{
    const ClockSeries &s = *m_series;
    if (s.usb == UsbForm::VcoDivider) {
        const int n = m_PLL_FP * int(m_SYSCLK_Value);
        if (n % 48 == 0)
            m_PLL_FU = n / 48;
        m_PLL_FU = std::clamp(m_PLL_FU, s.usbSearchMin, s.usbSearchMax);
        if (m_PLL_FU == 15 || m_PLL_FU == 17 || m_PLL_FU == 19)
            ++m_PLL_FU;
        m_USBCLK_Value = m_PLL_FP * m_SYSCLK_Value / m_PLL_FU;
        return;
    }
    const double pll = s.halfPllIsSclk ? m_SYSCLK_Value * 2 : m_SYSCLK_Value;
    const int n = int(pll);
    if (n % (s.halfPllIsSclk ? 48 : 24) == 0)
        m_USBDIV = n / 48.0;
    m_USBDIV = std::clamp(m_USBDIV, double(s.usbSearchMin), double(s.usbSearchMax));
    m_USBCLK_Value = pll / m_USBDIV;
}

void ZV32ConfigCLK::CalculateParam_From_ResultCLK(double input, bool fromUsb)
{
    if (m_ConfigMode == PLLMODE_NORMAL) {
        UpdatePLLMULMinMaxValue(input);
        CalculateParam_From_ResultCLK_Normal(input, fromUsb);
    } else {
        CalculateParam_From_ResultCLK_Flexible(input, fromUsb);
    }
}

void ZV32ConfigCLK::CalculateParam_From_ResultCLK_Normal(double input, bool fromUsb)
{
    const int inputKHz = int(1000 * input);
    const int targetKHz = fromUsb ? int(48.0 * m_USBDIV * 1000) : int(m_SYSCLK_Value * 1000);
    int multiplier = inputKHz > 0 ? qRound(double(targetKHz) / inputKHz) : 0;
    if (inputKHz > 0)
        multiplier = std::min(multiplier, GetSYSCLKValidMaxValue() * 1000 / inputKHz);
    if (multiplier < m_PLL_MUL_Min)
        multiplier = m_PLL_MUL_Min;
    else if (multiplier > m_PLL_MUL_Max)
        multiplier = m_PLL_MUL_Max;
    m_PLL_MUL = multiplier;
    m_PLLCLK_Value = double(m_PLL_MUL) * inputKHz / 1000.0;
    if (!fromUsb)
        m_SYSCLK_Value = m_PLLCLK_Value;
}

void ZV32ConfigCLK::CalculateParam_From_ResultCLK_Flexible(double input, bool fromUsb)
{
    if (fromUsb)
        CalculateParam_From_ResultCLK_Flexible_USBCLK(input);
    else
        CalculateParam_From_ResultCLK_Flexible_SYSCLK(input);
}

void ZV32ConfigCLK::storeFeedback(const FeedbackFields &best)
{
    m_PLL_MS = best.ms;
    m_PLL_NS = best.ns;
    m_PLL_FR = m_series->hasFp() ? 0 : best.divider;
    m_PLL_FP = m_series->hasFp() ? best.divider : 0;
}

// Takes the candidate of each divider and MS that lies nearest to the target, in the order of the full triple loop.
ZV32ConfigCLK::FeedbackFields ZV32ConfigCLK::nearestPllClock(double input, double target) const
{
    int msMin = 0;
    int msMax = 0;
    Get_PLL_MS_ValidRange(input, msMax, msMin);
    std::array<NsRange, PLL_MS_MAX_VALUE + 1> ns{};
    for (int ms = msMin; ms <= msMax; ++ms)
        Get_PLL_NS_ValidRange(input, ms, ns[ms].max, ns[ms].min);

    FeedbackFields best{m_PLL_MS, m_PLL_NS, m_series->hasFp() ? m_PLL_FP : m_PLL_FR};
    double bestDifference = FarthestDifference;
    const std::span<const int> dividers = pllOutputDividers(*m_series);
    for (auto entry = dividers.rbegin(); entry != dividers.rend(); ++entry) {
        const int divider = *entry;
        for (int ms = msMin; ms <= msMax; ++ms) {
            const NsRange window = around(target * (divider * ms) / input, ns[ms]);
            for (int n = window.min; n <= window.max; ++n) {
                const double difference = std::abs(n * input / (divider * ms) - target);
                if (difference < bestDifference) {
                    bestDifference = difference;
                    best = {ms, n, divider};
                }
            }
            if (bestDifference == 0.0)
                return best;
        }
    }
    return best;
}

// The VCO first, from the largest NS down, then the output divider that suits SCLK.
ZV32ConfigCLK::FeedbackFields ZV32ConfigCLK::nearestVco(double input, double vcoTarget, double pllTarget) const
{
    int msMin = 0;
    int msMax = 0;
    Get_PLL_MS_ValidRange(input, msMax, msMin);

    FeedbackFields best{m_PLL_MS, m_PLL_NS, m_PLL_FP};
    double bestDifference = FarthestDifference;
    for (int ms = msMin; ms <= msMax; ++ms) {
        NsRange ns{};
        Get_PLL_NS_ValidRange(input, ms, ns.max, ns.min);
        const NsRange window = around(vcoTarget * ms / input, ns);
        for (int n = window.max; n >= window.min; --n) {
            const double difference = std::abs(n * input / ms - vcoTarget);
            if (difference < bestDifference) {
                bestDifference = difference;
                best.ms = ms;
                best.ns = n;
            }
        }
    }
    bestDifference = FarthestDifference;
    const std::span<const int> dividers = pllOutputDividers(*m_series);
    for (auto entry = dividers.rbegin(); entry != dividers.rend(); ++entry) {
        const int divider = *entry;
        const double difference = std::abs(best.ns * input / (divider * best.ms) - pllTarget);
        if (difference < bestDifference) {
            bestDifference = difference;
            best.divider = divider;
        }
    }
    return best;
}

void ZV32ConfigCLK::CalculateParam_From_ResultCLK_Flexible_SYSCLK(double input)
{
    const bool half = m_series->halfPllIsSclk;
    const double sclk = std::min(m_SYSCLK_Value, double(GetSYSCLKValidMaxValue()));
    const FeedbackFields best = nearestPllClock(input, half ? sclk * 2 : sclk);
    storeFeedback(best);
    m_PLLCLK_Value = best.ns * input / (best.divider * best.ms);
    m_SYSCLK_Value = half ? m_PLLCLK_Value / 2 : m_PLLCLK_Value;
}

void ZV32ConfigCLK::CalculateParam_From_ResultCLK_Flexible_USBCLK(double input)
{
    const bool half = m_series->halfPllIsSclk;
    const bool sclkOnPll = m_sclk_select == SYSCLK_PLL;
    const int usbTarget = int(48.0 * (m_series->usb == UsbForm::VcoDivider ? m_PLL_FU : m_USBDIV));
    FeedbackFields best{};
    if (m_series->hasFp()) {
        const double sclk = sclkOnPll ? std::min(m_SYSCLK_Value, double(GetSYSCLKValidMaxValue())) : SclkTargetOffPll;
        best = nearestVco(input, usbTarget, sclk);
    } else {
        best = nearestPllClock(input, usbTarget);
    }
    storeFeedback(best);
    m_PLLCLK_Value = best.ns * input / (best.divider * best.ms);
    if (sclkOnPll)
        m_SYSCLK_Value = half ? m_PLLCLK_Value / 2 : m_PLLCLK_Value;
}

} // namespace ChipLoom
