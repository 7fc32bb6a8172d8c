// What a clock page shows: texts, the blocks that matter now, frequencies.

#include "ClockConfig/ZV32MCUPLL.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

struct CrystalRow
{
    ClockField field;
    int choice;
    ClockRefusal whenOff; ///< which crystal, by what is said without it
};

// The choices that a crystal feeds. Both crystals are switched on among the modes of CRM; generated code would wait for
// one that is not there.
constexpr std::array<CrystalRow, 10> FedByCrystal{{
    {ClockField::PllRc, PLLRC_HEXT, ClockRefusal::HextOff},
    {ClockField::RtcSel, RTCSEL_HEXT, ClockRefusal::HextOff},
    {ClockField::RtcSel, RTCSEL_LEXT, ClockRefusal::LextOff},
    {ClockField::Clkout, CLKOUT_HEXT, ClockRefusal::HextOff},
    {ClockField::Clkout, CLKOUT_LEXT, ClockRefusal::LextOff},
    {ClockField::Clkout1, CLKOUT1_HEXT, ClockRefusal::HextOff},
    {ClockField::Clkout1, CLKOUT1_LEXT, ClockRefusal::LextOff},
    {ClockField::Clkout2, CLKOUT2_HEXT, ClockRefusal::HextOff},
    {ClockField::Clkout2, CLKOUT2_LEXT, ClockRefusal::LextOff},
    {ClockField::SclkSelect, SYSCLK_HEXT, ClockRefusal::HextOff},
}};

} // namespace

QString ZV32MCUPLL::text(ClockField field) const
{
    switch (field) {
    case ClockField::Hext:
        return m_state.hextText;
    case ClockField::Sclk:
        return m_state.sclkText;
    case ClockField::PllMs:
        return m_state.msText;
    case ClockField::PllNs:
        return m_state.nsText;
    case ClockField::I2sf5Clock:
        return m_state.i2sf5Text;
    default:
        return clockFieldText(clock(), field);
    }
}

ClockRefusal ZV32MCUPLL::optionRefusal(ClockField field, double value) const
{
    for (const CrystalRow &row : FedByCrystal) {
        const bool isOn = row.whenOff == ClockRefusal::HextOff ? clock().Get_HEXT_Enable() : clock().Get_LEXT_Enable();
        if (row.field == field && row.choice == int(value) && !isOn)
            return row.whenOff;
    }
    if (field == ClockField::SysticDiv && value == 8 && m_state.freertos)
        return ClockRefusal::SysTickTaken;
    return ClockRefusal::None;
}

std::vector<ClockOutcome> ZV32MCUPLL::leaveCrystal(ClockRefusal whenOff)
{
    std::vector<ClockOutcome> left;
    for (const CrystalRow &row : FedByCrystal) {
        if (row.whenOff != whenOff || !hasClockField(series(), row.field) ||
            int(clockFieldValue(clock(), row.field)) != row.choice ||
            optionRefusal(row.field, row.choice) == ClockRefusal::None)
            continue;
        double rest = clockOptions(clock(), row.field).front().value;
        if (row.field == ClockField::PllRc)
            rest = PLLRC_HICK;
        else if (row.field == ClockField::SclkSelect)
            rest = clock().clockOutputUsesPll() ? SYSCLK_PLL : SYSCLK_HICK;
        setClockFieldValue(m_state.clock, row.field, rest);
        left.push_back({whenOff, row.field});
    }
    return left;
}

std::vector<ClockOutcome> ZV32MCUPLL::leaveStoppedCrystals()
{
    std::vector<ClockOutcome> left = leaveCrystal(ClockRefusal::HextOff);
    for (const ClockOutcome &outcome : leaveCrystal(ClockRefusal::LextOff))
        left.push_back(outcome);
    if (!left.empty())
        UpdateParam_From_ResultCLK();
    return left;
}

bool ZV32MCUPLL::pllIsShown() const
{
    return clock().pll_isEnable() || (series().usbShowsPll && usbIsInUse());
}

bool ZV32MCUPLL::isShown(ClockField field) const
{
    if (!hasClockField(series(), field))
        return false;
    switch (field) {
    case ClockField::Hext:
        return clock().Get_HEXT_Enable();
    case ClockField::PllRc:
    case ClockField::PllHextDiv:
    case ClockField::PllHickDiv:
    case ClockField::HextDiv:
    case ClockField::PllMode:
        return pllIsShown();
    case ClockField::PllMult:
        return pllIsShown() && clock().Get_ConfigMode() == PLLMODE_NORMAL;
    case ClockField::PllMs:
    case ClockField::PllNs:
    case ClockField::PllFr:
    case ClockField::PllFp:
        return pllIsShown() && clock().Get_ConfigMode() == PLLMODE_FLEXIBLE;
    case ClockField::RtcDiv:
        return clock().Get_RTCSEL() == RTCSEL_HEXT;
    case ClockField::SclkHextDiv:
        return clock().Get_SYSCLKSelect() == SYSCLK_HEXT;
    case ClockField::SclkHickDiv:
    case ClockField::HickToSclk:
        return clock().Get_SYSCLKSelect() == SYSCLK_HICK;
    case ClockField::HickToUsb:
        return usbIsInUse();
    case ClockField::UsbDiv:
    case ClockField::PllFu:
        return clock().usbpll_isEnable();
    case ClockField::Clkout:
    case ClockField::ClkoutDiv:
    case ClockField::ClkoutDiv1:
    case ClockField::ClkoutDiv2:
        return clock().Get_CLKOUT_PinSelect() != CLKOUTPIN_NONE;
    case ClockField::Clkout1:
    case ClockField::Clkout1Div1:
    case ClockField::Clkout1Div2:
        return clock().Get_CLKOUT1_PinSelect() != CLKOUT1PIN_NONE;
    case ClockField::Clkout2:
    case ClockField::Clkout2Div1:
    case ClockField::Clkout2Div2:
        return clock().Get_CLKOUT2_PinSelect() != CLKOUT2PIN_NONE;
    case ClockField::AdcDiv:
    case ClockField::AdcSource:
        return adcIsInUse();
    case ClockField::Usart1Source:
        return clock().Get_USART1_Switch();
    case ClockField::Usart2Source:
        return clock().Get_USART2_Switch();
    case ClockField::Usart3Source:
        return clock().Get_USART3_Switch();
    case ClockField::I2c1Source:
        return clock().Get_I2C_Switch();
    case ClockField::Can1Source:
        return clock().Get_CAN1_Switch();
    case ClockField::Can2Source:
        return clock().Get_CAN2_Switch();
    case ClockField::Can3Source:
        return clock().Get_CAN3_Switch();
    case ClockField::I2sf5Source:
        return clock().Get_I2SF5_Switch();
    case ClockField::I2sf5Clock:
        return clock().Get_I2SF5_Switch() && clock().Get_I2SF5_ClockSource() == I2SF5_CLOCK_SOURCE_EXTERNAL;
    default:
        return true;
    }
}

bool ZV32MCUPLL::isShown(ClockBranch branch) const
{
    switch (branch) {
    case ClockBranch::Pll:
        return pllIsShown();
    case ClockBranch::Apb3:
        return series().apb3Max > 0;
    case ClockBranch::Adc:
        return (series().adcDivider || series().adcSource) && adcIsInUse();
    case ClockBranch::Usb:
        return usbIsInUse();
    case ClockBranch::I2sf5:
        return isShown(ClockField::I2sf5Source);
    case ClockBranch::Usart1:
        return isShown(ClockField::Usart1Source);
    case ClockBranch::Usart2:
        return isShown(ClockField::Usart2Source);
    case ClockBranch::Usart3:
        return isShown(ClockField::Usart3Source);
    case ClockBranch::I2c1:
        return isShown(ClockField::I2c1Source);
    case ClockBranch::Can1:
        return isShown(ClockField::Can1Source);
    case ClockBranch::Can2:
        return isShown(ClockField::Can2Source);
    case ClockBranch::Can3:
        return isShown(ClockField::Can3Source);
    case ClockBranch::Clkout:
        return isShown(ClockField::Clkout);
    case ClockBranch::Clkout1:
        return isShown(ClockField::Clkout1);
    case ClockBranch::Clkout2:
        return isShown(ClockField::Clkout2);
    default:
        return true;
    }
}

ClockReading ZV32MCUPLL::reading(ClockBranch branch) const
{
    return clockReading(clock(), branch, m_state.i2sf5Clock);
}

QString ZV32MCUPLL::pllRegisterText() const
{
    const bool form = series().hasFeedback() && clock().Get_ConfigMode() == PLLMODE_FLEXIBLE;
    return form && pllIsShown() ? clock().Get_CRM_PLLCFG_Value() : QString();
}

std::optional<double> ZV32MCUPLL::sclkErrorPpm() const
{
    const double sclk = clock().Get_SYSCLKValue();
    const double target = m_state.sclkTarget;
    if (clock().Get_SYSCLKSelect() != SYSCLK_PLL || target <= 0 || sclk != m_state.sclkReached || sclk == target)
        return std::nullopt;
    return clockErrorPpm(sclk, target);
}

std::vector<ClockSolution> ZV32MCUPLL::solutions(int count) const
{
    const bool missed = sclkErrorPpm().has_value();
    return solveClock(clock(), missed ? m_state.sclkTarget : clock().Get_SYSCLKValue(), count);
}

bool ZV32MCUPLL::hasError() const
{
    if (!inputProblems().empty())
        return true;
    if (isShown(ClockField::I2sf5Clock) && !i2sf5TextIsValid())
        return true;
    const std::vector<ClockProblem> limits = limitProblems(clock());
    if (std::any_of(limits.begin(), limits.end(), [](const ClockProblem &problem) {
            return problem.kind == ClockProblem::Kind::PllMsInput || problem.kind == ClockProblem::Kind::PllNsInput;
        }))
        return true;
    const std::vector<ClockBranch> branches = clockBranches(series());
    return std::any_of(branches.begin(), branches.end(),
                       [&](ClockBranch branch) { return isShown(branch) && !reading(branch).inRange(); });
}

double ZV32MCUPLL::Get_Peripherals_Clock(const QString &instance) const
{
    return reading(clockBranchOf(series(), instance)).mhz;
}

} // namespace ChipLoom
