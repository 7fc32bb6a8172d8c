// The last check before code is generated.

#include "Base/UserPrompt.h"
#include "ClockConfig/ClockTexts.h"
#include "ClockConfig/ZV32MCUPLL.h"

namespace ChipLoom {

namespace {

using Kind = ClockProblem::Kind;

bool outside(int number, int min, int max)
{
    return number < min || number > max;
}

/// Factors with which the PLL does not lock: its input or its oscillator runs too slow or too fast. Where SCLK comes
/// from the PLL the search rules them out; a PLL that runs for something else keeps its factors when its input changes.
void addFactorProblem(const ZV32ConfigCLK &clock, std::vector<ClockProblem> &problems)
{
    if (!clock.pll_isEnable() || clock.Get_ConfigMode() != PLLMODE_FLEXIBLE)
        return;
    int suggestion = 0;
    const double divided = clock.GetPllInPutValue() / clock.Get_PLL_MS();
    if (!clock.PLL_MS_Valid_Check(clock.Get_PLL_MS(), suggestion))
        problems.push_back({.kind = Kind::PllMsInput, .value = divided});
    else if (!clock.PLL_NS_Valid_Check(clock.Get_PLL_NS(), clock.Get_PLL_MS(), suggestion))
        problems.push_back({.kind = Kind::PllNsInput, .value = divided * clock.Get_PLL_NS()});
}

} // namespace

std::vector<ClockProblem> ZV32MCUPLL::inputProblems() const
{
    std::vector<ClockProblem> problems;
    // The code names the frequency of a crystal that is on, whether anything runs from it or not.
    if ((clock().Get_HEXT_Enable() || clock().hext_isEnable()) && !hextTextIsValid())
        problems.push_back({.kind = Kind::HextInput});
    if (!sclkTextIsValid())
        problems.push_back({.kind = Kind::SclkInput, .noMultiplier = noMultiplierExists(clock())});
    if (clock().pll_isEnable() && clock().Get_ConfigMode() == PLLMODE_FLEXIBLE) {
        if (outside(typedMs(), PLL_MS_MIN_VALUE, PLL_MS_MAX_VALUE))
            problems.push_back({.kind = Kind::PllMsInput});
        if (outside(typedNs(), PLL_NS_MIN_VALUE, PLL_NS_MAX_VALUE))
            problems.push_back({.kind = Kind::PllNsInput});
    }
    return problems;
}

std::vector<ClockProblem> ZV32MCUPLL::limitProblems(const ZV32ConfigCLK &clock) const
{
    const ClockSeries &s = series();
    std::vector<ClockProblem> problems;
    const auto above = [&](ClockBranch branch, double value, double limit) {
        if (limit > 0 && value > limit)
            problems.push_back({.kind = Kind::Above, .branch = branch, .value = value, .limit = limit});
    };
    addFactorProblem(clock, problems);
    above(ClockBranch::Sclk, clock.Get_SYSCLKValue(), s.sclkMax);
    above(ClockBranch::Apb1, clock.Get_APB1CLKValue(), s.apb1Max);
    above(ClockBranch::Apb2, clock.Get_APB2CLKValue(), s.apb2Max);
    above(ClockBranch::Apb3, clock.Get_APB3CLKValue(), s.apb3Max);
    if (pllIsShown()) {
        const double pll = s.halfPllIsSclk ? clock.Get_PLLCLKValue() / 2 : clock.Get_PLLCLKValue();
        above(ClockBranch::Pll, pll, s.pllMax);
        if (s.pllMin > 0 && pll < s.pllMin) {
            problems.push_back({.kind = Kind::PllBelow,
                                .branch = ClockBranch::Pll,
                                .value = pll,
                                .limit = double(s.pllMin),
                                .noMultiplier = noMultiplierExists(clock)});
        }
    }
    if (usbIsInUse() && clock.Get_USBCLKValue() != USB_OUTPUT_CLK_VALUE) {
        problems.push_back({.kind = Kind::UsbNot48,
                            .branch = ClockBranch::Usb,
                            .value = clock.Get_USBCLKValue(),
                            .limit = USB_OUTPUT_CLK_VALUE});
    }
    if (s.adcDivider && adcIsInUse()) {
        const double adc = clock.Get_ADCCLK_Value();
        if (adc > s.adcMax) {
            problems.push_back(
                {.kind = Kind::AdcAbove, .branch = ClockBranch::Adc, .value = adc, .limit = double(s.adcMax)});
        }
        if (s.adcBelowApb2 && adc >= clock.Get_APB2CLKValue()) {
            problems.push_back({.kind = Kind::AdcNotBelowApb2,
                                .branch = ClockBranch::Adc,
                                .value = adc,
                                .limit = clock.Get_APB2CLKValue()});
        }
    }
    if (s.i2sf5 && clock.Get_I2SF5_Switch()) {
        if (clock.Get_I2SF5_ClockSource() == I2SF5_CLOCK_SOURCE_EXTERNAL && !i2sf5TextIsValid())
            problems.push_back({.kind = Kind::I2sf5Input, .branch = ClockBranch::I2sf5});
        const ClockReading i2s = clockReading(clock, ClockBranch::I2sf5, m_state.i2sf5Clock);
        above(ClockBranch::I2sf5, i2s.mhz, i2s.limits.max);
    }
    return problems;
}

std::vector<ClockProblem> ZV32MCUPLL::problems() const
{
    std::vector<ClockProblem> problems = inputProblems();
    ZV32ConfigCLK solved = clock();
    updateParamFromResult(solved);
    for (const ClockProblem &problem : limitProblems(solved))
        problems.push_back(problem);
    return problems;
}

bool ZV32MCUPLL::tellProblems(const std::vector<ClockProblem> &problems)
{
    for (const ClockProblem &problem : problems) {
        const PromptRequest request = clockProblemPrompt(series(), problem, clock().GetPllInPutValue());
        const int answer = m_prompt.ask(request);
        if (!problem.isWarning() || answer != 0)
            return false;
    }
    return true;
}

bool ZV32MCUPLL::GenerateCodeCheck()
{
    if (!tellProblems(inputProblems())) {
        report();
        return false;
    }
    UpdateParam_From_ResultCLK();
    return tellProblems(limitProblems(clock()));
}

} // namespace ChipLoom
