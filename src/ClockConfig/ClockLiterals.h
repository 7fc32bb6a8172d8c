#pragma once

#include "ClockConfig/ClockFields.h"

#include <QString>

namespace ChipLoom {

/// The driver's literal for the present value of a field ("CRM_ADC_DIV_6"); empty for a field that no code
/// names. A half-step divider spells its half as "_5": "CRM_USB_DIV_1_5".
QString clockLiteral(const ZV32ConfigCLK &clock, ClockField field);

} // namespace ChipLoom
