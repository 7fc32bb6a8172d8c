#include "Gui/Clock/ClockMaps.h"

#include <QtGlobal>

namespace ChipLoom {

namespace {

constexpr ClockBusRow SclkRows[]{
    {QT_TRANSLATE_NOOP("Clock", "i2s (MHz)"), ClockBranch::Sclk},
};

constexpr ClockBusRow AhbRows[]{
    {QT_TRANSLATE_NOOP("Clock", "systick(MHz)"), ClockBranch::SysTick},
    {QT_TRANSLATE_NOOP("Clock", "dma (MHz)"), ClockBranch::Ahb},
    {QT_TRANSLATE_NOOP("Clock", "gpio (MHz)"), ClockBranch::Ahb},
};

constexpr ClockListRun Apb1[]{
    {"WWDT", 0, 0}, {"SPI", 2, 2}, {"I2S", 2, 2}, {"USART", 2, 2}, {"I2C", 1, 2},
};

constexpr ClockListRun Apb1Timers[]{
    {"TMR", 3, 3},
    {"TMR", 6, 6},
    {"TMR", 14, 14},
};

constexpr ClockListRun Apb2[]{
    {"USART", 1, 1}, {"SPI", 1, 1}, {"I2S", 1, 1}, {"CMP", 0, 0}, {"EXINT", 0, 0},
};

constexpr ClockListRun Apb2Timers[]{
    {"TMR", 1, 1},
    {"TMR", 15, 17},
};

} // namespace

const ClockMapTable DrawF421PLLMap{
    .map = ClockMap::F421,
    .sclkRows = SclkRows,
    .ahbRows = AhbRows,
    .apb1 = Apb1,
    .apb1Timers = Apb1Timers,
    .apb2 = Apb2,
    .apb2Timers = Apb2Timers,
};

} // namespace ChipLoom
