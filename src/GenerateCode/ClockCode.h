#pragma once

#include "ClockConfig/ZV32ConfigCLK.h"

#include <QString>

#include <span>

namespace ChipLoom {

class SectionedText;
struct GenerationInput;
struct GPIO_Pin_Define_Info;

/// Writes the function that starts the clock tree, and those of the clock outputs. Each piece keeps or takes out what
/// its condition says, or puts the design's value into a call; it is false where it does not find what it must change.
class ClockCode
{
public:
    /// Both outlive this object. `input` tells what is in use and on which pin.
    ClockCode(const ZV32ConfigCLK &clock, const GenerationInput &input);

    /// The section "clock_config" and those of the clock outputs in the configuration source.
    bool GenerateCode_lm_config_c(SectionedText &text) const;
    bool GenerateCode_lm_config_h(SectionedText &text) const;
    bool GenerateCode_main_c(SectionedText &text) const;
    /// The branch for a crystal that fails, where one is in use.
    bool GenerateCode_interrupt_int_c(SectionedText &text) const;

    /// Whether something in use runs on LICK.
    bool lick_isEnable() const;
    /// "FLASH_WAIT_CYCLE_3" for the present system clock.
    QString GetOutPutString_OscInitType_FlashPsr() const;
    /// "PWC_LDO_OUTPUT_1V3": the voltage that the core needs for the present system clock.
    QString GetOutPutString_PWC_LDO_OUTPUT() const;
    QString GetOutPutString_OscInitType_PLLRC() const;
    QString GetOutPutString_OscInitType_PLLOutputRange() const;

private:
    using Piece = bool (ClockCode::*)(std::string &) const;
    struct Chain;
    struct Output;

    bool GenerateCode_lm_clock_config_lm_config_c(std::string &text) const;
    bool GenerateCode_flashpsr(std::string &text) const;
    bool GenerateCode_PWC_LDO_OUTPUT(std::string &text) const;
    bool GenerateCode_lext(std::string &text) const;
    bool GenerateCode_lick(std::string &text) const;
    bool GenerateCode_hext(std::string &text) const;
    bool GenerateCode_hextbypass(std::string &text) const;
    bool GenerateCode_hick(std::string &text) const;
    bool GenerateCode_hextdiv(std::string &text) const;
    bool GenerateCode_pll(std::string &text) const;
    bool GenerateCode_pll_normal(std::string &text) const;
    bool GenerateCode_pll_flexible(std::string &text) const;
    QStringList flexibleFactors() const;
    bool GenerateCode_autostepmode(std::string &text) const;
    bool GenerateCode_pllsysclock(std::string &text) const;
    bool GenerateCode_hextsysclock(std::string &text) const;
    bool GenerateCode_hicksysclock(std::string &text) const;
    bool GenerateCode_ahbclk(std::string &text) const;
    bool GenerateCode_apb1clk(std::string &text) const;
    bool GenerateCode_apb2clk(std::string &text) const;
    bool GenerateCode_result(std::string &text) const;
    bool GenerateCode_clockout(std::string &text, const Output &output) const;

    std::span<const Output> outputs() const;
    /// The pin of an output, empty while it has none.
    QLatin1String outputPin(const Output &output) const;
    /// Keeps or drops the section of each output in a file that only names its function.
    bool keepOutputs(SectionedText &text) const;
    QString formula() const;
    QString pllInput() const;

    const ZV32ConfigCLK &m_clock;
    const GenerationInput &m_input;
};

} // namespace ChipLoom
