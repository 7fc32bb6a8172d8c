#include "Gui/Clock/ClockMaps.h"

#include <QtGlobal>

namespace ChipLoom {

namespace {

constexpr ClockBusRow SclkRows[]{
    {QT_TRANSLATE_NOOP("Clock", "i2s (MHz)"), ClockBranch::Sclk},
};

constexpr ClockBusRow AhbRows[]{
    {QT_TRANSLATE_NOOP("Clock", "systick(MHz)"), ClockBranch::SysTick},
    {QT_TRANSLATE_NOOP("Clock", "sdio (MHz)"), ClockBranch::Ahb},
    {QT_TRANSLATE_NOOP("Clock", "dma (MHz)"), ClockBranch::Ahb},
    {QT_TRANSLATE_NOOP("Clock", "xmc (MHz)"), ClockBranch::Ahb},
    {QT_TRANSLATE_NOOP("Clock", "gpio (MHz)"), ClockBranch::Ahb},
    {QT_TRANSLATE_NOOP("Clock", "dvp (MHz)"), ClockBranch::Ahb},
    {QT_TRANSLATE_NOOP("Clock", "qspi (MHz)"), ClockBranch::Ahb},
    {QT_TRANSLATE_NOOP("Clock", "adc (MHz)"), ClockBranch::Ahb},
};

constexpr ClockListRun Apb1[]{
    {"WWDT", 0, 0}, {"SPI", 2, 3}, {"I2S", 2, 3}, {"USART", 2, 3}, {"UART", 4, 5},
    {"UART", 7, 8}, {"I2C", 1, 3}, {"CAN", 1, 2}, {"DAC", 0, 0},
};

constexpr ClockListRun Apb1Timers[]{
    {"TMR", 2, 7},
    {"TMR", 12, 14},
};

constexpr ClockListRun Apb2[]{
    {"USART", 1, 1}, {"USART", 6, 6}, {"SPI", 1, 1}, {"SPI", 4, 4},
    {"I2S", 1, 1},   {"I2S", 4, 4},   {"ACC", 0, 0}, {"EXINT", 0, 0},
};

constexpr ClockListRun Apb2Timers[]{
    {"TMR", 1, 1},
    {"TMR", 8, 11},
    {"TMR", 20, 20},
};

} // namespace

const ClockMapTable DrawF435F437PLLMap{
    .map = ClockMap::F435,
    .sclkRows = SclkRows,
    .ahbRows = AhbRows,
    .apb1 = Apb1,
    .apb1Timers = Apb1Timers,
    .apb2 = Apb2,
    .apb2Timers = Apb2Timers,
    .sclkLimitNote = true,
};

} // namespace ChipLoom
