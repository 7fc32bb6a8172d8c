#include "ClockConfig/ClockSolver.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <span>
#include <tuple>

namespace ChipLoom {

namespace {

// To either side of the real solution.
constexpr int NeighboursOfTarget = 4;
constexpr int NeighboursOfUsb = 1;

struct Candidate
{
    PLLCONFIGMODE mode;
    int mul = 0;
    int ms = 1;
    int ns = 1;
    int outputDivider = 1;
    double pll = 0.0;
    double usbDivider = 0.0;
    double sclkPpm = 0.0;
    double usbPpm = 0.0;
    bool otherMode = false;
    int order = 0;

    auto rank() const
    {
        return std::tuple(std::abs(usbPpm) > UsbTolerancePpm, std::abs(sclkPpm), std::abs(usbPpm), otherMode, order);
    }
};

class Solver
{
public:
    Solver(const ZV32ConfigCLK &clock, double target)
        : m_clock(clock), m_series(clock.series()), m_input(clock.GetPllInPutValue()), m_target(target)
    {
        m_clock.Set_SYSCLKSelect(SYSCLK_PLL);
    }

    std::vector<ClockSolution> solve(int count)
    {
        if (!(m_input > 0) || !(m_target > 0))
            return {};
        const double pllTarget = m_series.halfPllIsSclk ? 2 * m_target : m_target;
        if (m_series.hasMultiplier())
            tryMultipliers(pllTarget, NeighboursOfTarget);
        if (m_series.hasFeedback())
            tryFeedback([&](int) { return pllTarget; }, NeighboursOfTarget);
        if (m_clock.usbpll_isEnable())
            tryUsb();
        std::sort(m_candidates.begin(), m_candidates.end(),
                  [](const Candidate &a, const Candidate &b) { return a.rank() < b.rank(); });
        std::vector<ClockSolution> solutions;
        std::set<qint64> seenHz;
        for (const Candidate &candidate : m_candidates) {
            if (int(solutions.size()) >= count)
                break;
            if (seenHz.insert(std::llround(candidate.pll * 1e6)).second)
                solutions.push_back(solution(candidate));
        }
        return solutions;
    }

private:
    double sclkOf(double pll) const { return m_series.halfPllIsSclk ? pll / 2 : pll; }

    // What gives USB its 48 MHz, near the target or not.
    void tryUsb()
    {
        for (const double usbDivider : m_series.usbDividers) {
            const double source = USB_OUTPUT_CLK_VALUE * usbDivider;
            if (m_series.hasMultiplier())
                tryMultipliers(source, NeighboursOfUsb);
            if (m_series.hasFeedback()) {
                const bool fromVco = m_series.usb == UsbForm::VcoDivider;
                tryFeedback([&](int divider) { return fromVco ? source / divider : source; }, NeighboursOfUsb);
            }
        }
    }

    void tryMultipliers(double pllTarget, int neighbours)
    {
        ZV32ConfigCLK bounds = m_clock;
        bounds.UpdatePLLMULMinMaxValue(m_input);
        const int near = int(std::min(pllTarget / m_input, 1000.0));
        const int first = std::max(bounds.Get_PLL_MUL_Min(), std::min(near, bounds.Get_PLL_MUL_Max()) - neighbours);
        const int last = std::min(bounds.Get_PLL_MUL_Max(), near + neighbours);
        // From above: of two that are equally near, a typed SCLK takes the larger.
        for (int mul = last; mul >= std::max(first, 2); --mul)
            add({.mode = PLLMODE_NORMAL, .mul = mul, .pll = mul * m_input});
    }

    template <typename PllTarget> void tryFeedback(PllTarget pllTarget, int neighbours)
    {
        int msMin = 0;
        int msMax = 0;
        m_clock.Get_PLL_MS_ValidRange(m_input, msMax, msMin);
        const std::span<const int> dividers = pllOutputDividers(m_series);
        for (auto entry = dividers.rbegin(); entry != dividers.rend(); ++entry) {
            const int divider = *entry;
            for (int ms = msMin; ms <= msMax; ++ms) {
                int nsMin = 0;
                int nsMax = 0;
                m_clock.Get_PLL_NS_ValidRange(m_input, ms, nsMax, nsMin);
                const double real =
                    std::clamp(pllTarget(divider) * divider * ms / m_input, double(nsMin), double(nsMax));
                const int first = std::max(nsMin, int(real) - neighbours);
                const int last = std::min(nsMax, int(real) + 1 + neighbours);
                for (int ns = first; ns <= last; ++ns) {
                    add({.mode = PLLMODE_FLEXIBLE,
                         .ms = ms,
                         .ns = ns,
                         .outputDivider = divider,
                         .pll = ns * m_input / (divider * ms)});
                }
            }
        }
    }

    void add(Candidate candidate)
    {
        const double sclk = sclkOf(candidate.pll);
        if (sclk > m_series.sclkMax)
            return;
        candidate.sclkPpm = clockErrorPpm(sclk, m_target);
        candidate.otherMode = candidate.mode != m_clock.Get_ConfigMode();
        candidate.order = int(m_candidates.size());
        if (m_clock.usbpll_isEnable())
            chooseUsbDivider(candidate);
        m_candidates.push_back(candidate);
    }

    void chooseUsbDivider(Candidate &candidate) const
    {
        const double source =
            m_series.usb == UsbForm::VcoDivider ? candidate.pll * candidate.outputDivider : candidate.pll;
        double best = HUGE_VAL;
        for (const double divider : m_series.usbDividers) {
            const double ppm = clockErrorPpm(source / divider, USB_OUTPUT_CLK_VALUE);
            if (std::abs(ppm) < best) {
                best = std::abs(ppm);
                candidate.usbPpm = ppm;
                candidate.usbDivider = divider;
            }
        }
    }

    ClockSolution solution(const Candidate &candidate) const
    {
        ClockSolution result{m_clock, candidate.sclkPpm, candidate.usbPpm};
        ZV32ConfigCLK &clock = result.clock;
        clock.Set_ConfigMode(candidate.mode);
        if (candidate.mode == PLLMODE_NORMAL) {
            clock.Set_PLL_MUL(candidate.mul);
        } else {
            clock.Set_PLL_MS(candidate.ms);
            clock.Set_PLL_NS(candidate.ns);
            if (m_series.hasFp())
                clock.Set_PLL_FP(candidate.outputDivider);
            else
                clock.Set_PLL_FR(candidate.outputDivider);
        }
        if (m_clock.usbpll_isEnable()) {
            if (m_series.usb == UsbForm::VcoDivider)
                clock.Set_PLL_FU(int(candidate.usbDivider));
            else
                clock.Set_USBDIV(candidate.usbDivider);
        }
        clock.CalculateCLK();
        return result;
    }

    ZV32ConfigCLK m_clock;
    const ClockSeries &m_series;
    double m_input;
    double m_target;
    std::vector<Candidate> m_candidates;
};

} // namespace

double clockErrorPpm(double mhz, double target)
{
    return (mhz - target) / target * 1e6;
}

std::vector<ClockSolution> solveClock(const ZV32ConfigCLK &clock, double target, int count)
{
    return Solver(clock, target).solve(count);
}

} // namespace ChipLoom
