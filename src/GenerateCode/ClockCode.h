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

    /// Whether something in use runs on LICK.
    bool lick_isEnable() const;
    /// "FLASH_WAIT_CYCLE_3" for the present system clock.
    QString GetOutPutString_OscInitType_FlashPsr() const;
    /// "PWC_LDO_OUTPUT_1V3": the voltage that the core needs for the present system clock.
    QString GetOutPutString_PWC_LDO_OUTPUT() const;
    QString GetOutPutString_OscInitType_PLLRC() const;
    QString GetOutPutString_OscInitType_PLLOutputRange() const;

private:
    using Piece = bool (ClockCode::*)(QString &) const;
    struct Chain;
    struct Output;

    bool GenerateCode_lm_clock_config_lm_config_c(QString &text) const;
    bool GenerateCode_flashpsr(QString &text) const;
    bool GenerateCode_PWC_LDO_OUTPUT(QString &text) const;
    bool GenerateCode_lext(QString &text) const;
    bool GenerateCode_lick(QString &text) const;
    bool GenerateCode_hext(QString &text) const;
    bool GenerateCode_hextbypass(QString &text) const;
    bool GenerateCode_hick(QString &text) const;
    bool GenerateCode_hextdiv(QString &text) const;
    bool GenerateCode_pll(QString &text) const;
    bool GenerateCode_pll_normal(QString &text) const;
    bool GenerateCode_pll_flexible(QString &text) const;
    QStringList flexibleFactors() const;
    bool GenerateCode_autostepmode(QString &text) const;
    bool GenerateCode_pllsysclock(QString &text) const;
    bool GenerateCode_hextsysclock(QString &text) const;
    bool GenerateCode_hicksysclock(QString &text) const;
    bool GenerateCode_ahbclk(QString &text) const;
    bool GenerateCode_apb1clk(QString &text) const;
    bool GenerateCode_apb2clk(QString &text) const;
    bool GenerateCode_result(QString &text) const;
    bool GenerateCode_clockout(QString &text, const Output &output) const;

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
