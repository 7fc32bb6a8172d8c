#pragma once

#include "Model/Enumerations.h"

#include <QColor>

/// The colours that tell what a pin does.
namespace ChipLoom::PinColors {

inline constexpr QColor Fixed{220, 230, 241};
inline constexpr QColor NotInUse{190, 190, 190};
inline constexpr QColor NoMode{243, 233, 110};
inline constexpr QColor InUse{0, 200, 0};
inline constexpr QColor SearchHit{57, 169, 220};
inline constexpr QColor Edge{150, 150, 150};

/// `alwaysFixed` is a pin with a single entry that cannot be assigned.
inline QColor ofStatus(PINCONFIG_TYPE status, bool alwaysFixed)
{
    switch (status) {
    case Not_Config:
        return alwaysFixed ? Fixed : NotInUse;
    case Manual_Config:
        return NoMode;
    case IP_Config:
    case Manual_IP_Config:
        return InUse;
    }
    return NotInUse;
}

} // namespace ChipLoom::PinColors
