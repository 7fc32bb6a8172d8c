#pragma once

#include "ClockConfig/ZV32ConfigCLK.h"

#include <QString>

#include <optional>
#include <span>
#include <vector>

namespace ChipLoom {

/// Everything that can be chosen or typed on a clock page. The order is that of the design file.
enum class ClockField {
    LextBypass,
    RtcSel,
    RtcDiv,
    Hext, ///< typed, MHz
    HextBypass,
    HextDiv,
    SclkHextDiv,
    SclkHickDiv,
    PllHextDiv,
    PllHickDiv,
    PllRc,
    PllMode,
    PllMult,
    PllMs, ///< typed
    PllNs, ///< typed
    PllFr,
    PllFp,
    SclkSelect,
    AhbDiv,
    Apb1Div,
    Apb2Div,
    Apb3Div,
    UsbDiv,
    PllFu,
    HickToUsb,
    HickToSclk,
    Clkout,
    ClkoutDiv,
    ClkoutDiv1,
    ClkoutDiv2,
    Clkout1,
    Clkout1Div1,
    Clkout1Div2,
    Clkout2,
    Clkout2Div1,
    Clkout2Div2,
    ClkoutPin,
    AdcSwitch,
    AdcDiv,
    AdcSource,
    Usart1Source,
    Usart2Source,
    Usart3Source,
    I2c1Source,
    Can1Source,
    Can2Source,
    Can3Source,
    I2sf5Source,
    I2sf5Clock, ///< typed, MHz
    SysticDiv,
    Clkout1Pin,
    Clkout2Pin,
    Sclk, ///< typed, MHz: the target of the search
};

/// One value that a field can take. `name` is null where the number is the name; where it is a word it is a key of the
/// context "Clock".
struct ClockOption
{
    double value;
    const char *name = nullptr;

    QString text() const;
};

/// All fields, in order.
std::span<const ClockField> allClockFields();

/// Whether the field is on the page of the series.
bool hasClockField(const ClockSeries &series, ClockField field);
/// Whether the design file holds the field for the series.
bool isStoredClockField(const ClockSeries &series, ClockField field);
/// Whether the field is typed rather than chosen.
bool isTypedClockField(ClockField field);

/// The name of the field in the design file and on the command line: "apb1div". Two names differ by series.
QString clockFieldName(const ClockSeries &series, ClockField field);
/// The field of a name, or nothing if the series has none of that name.
std::optional<ClockField> clockFieldByName(const ClockSeries &series, const QString &name);

/// The values that can be chosen, in the order of the box; empty for a typed field. The multipliers are those for
/// the present PLL input.
std::vector<ClockOption> clockOptions(const ZV32ConfigCLK &clock, ClockField field);

/// The option of a text: its name in upper or lower case, or its number.
std::optional<double> clockOptionByText(const ZV32ConfigCLK &clock, ClockField field, const QString &text);

/// The place of a pin ("PA8") among the options of a pin field, as `Set_clockoutPinSelectComboBox` and its like take
/// it; 0, none, for a pin that the series has not there.
int clockPinIndex(const ClockSeries &series, ClockField field, const QString &pin);

/// The present value as a number; the external I2S clock is kept elsewhere and reads 0.
double clockFieldValue(const ZV32ConfigCLK &clock, ClockField field);
/// Stores a number as the field's type. The caller has made sure that it is one of the options.
void setClockFieldValue(ZV32ConfigCLK &clock, ClockField field, double value);
/// The present value as a person reads it: the option's name, or the number.
QString clockFieldText(const ZV32ConfigCLK &clock, ClockField field);

} // namespace ChipLoom
