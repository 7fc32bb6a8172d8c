// Which branch of the tree clocks which peripheral.

#include "ClockConfig/ClockSeries.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

// What holds for every series; a series' own list is looked up first.
constexpr std::array<ClockedInstances, 53> CommonInstances{{
    {"TMR", 1, 1, ClockBranch::Apb2Timer},
    {"TMR", 2, 7, ClockBranch::Apb1Timer},
    {"TMR", 8, 11, ClockBranch::Apb2Timer},
    {"TMR", 12, 14, ClockBranch::Apb1Timer},
    {"TMR", 15, 17, ClockBranch::Apb2Timer},
    {"TMR", 20, 20, ClockBranch::Apb2Timer},
    {"USART", 1, 1, ClockBranch::Apb2},
    {"USART", 2, 5, ClockBranch::Apb1},
    {"USART", 6, 6, ClockBranch::Apb2},
    {"USART", 7, 8, ClockBranch::Apb1},
    {"UART", 4, 5, ClockBranch::Apb1},
    {"UART", 7, 8, ClockBranch::Apb1},
    {"SPI", 1, 1, ClockBranch::Apb2},
    {"SPI", 2, 3, ClockBranch::Apb1},
    {"SPI", 4, 4, ClockBranch::Apb2},
    {"I2S", 1, 1, ClockBranch::Apb2},
    {"I2S", 2, 3, ClockBranch::Apb1},
    {"I2S", 4, 4, ClockBranch::Apb2},
    {"I2SF", 5, 5, ClockBranch::Apb2},
    {"I2C", 1, 4, ClockBranch::Apb1},
    {"CAN", 1, 3, ClockBranch::Apb1},
    {"ADC", 1, 3, ClockBranch::Adc},
    {"ADC", -1, -1, ClockBranch::Adc},
    {"ADC-Common", -1, -1, ClockBranch::Adc},
    {"DAC", -1, -1, ClockBranch::Apb1},
    {"DAC", 1, 2, ClockBranch::Apb1},
    {"CMP", -1, -1, ClockBranch::Apb2},
    {"CMP", 1, 2, ClockBranch::Apb2},
    {"WWDT", -1, -1, ClockBranch::Apb1},
    {"WDT", -1, -1, ClockBranch::Lick},
    {"RTC", -1, -1, ClockBranch::Rtc},
    {"ERTC", -1, -1, ClockBranch::Rtc},
    {"SysTick", -1, -1, ClockBranch::SysTick},
    {"SDIO", 1, 2, ClockBranch::Ahb},
    {"XMC", -1, -1, ClockBranch::Ahb},
    {"QSPI", 1, 2, ClockBranch::Ahb},
    {"XMC_NORFlash-PSRAM-LCD_", 1, 4, ClockBranch::Ahb},
    {"XMC_NANDFlash", -1, -1, ClockBranch::Ahb},
    {"XMC_NORFlash-PSRAM-SRAM-ROM-LCD_", 1, 4, ClockBranch::Ahb},
    {"XMC_NANDFlash_", 1, 2, ClockBranch::Ahb},
    {"XMC_PCCard", -1, -1, ClockBranch::Ahb},
    {"XMC_SDRAM_", 1, 2, ClockBranch::Ahb},
    {"SPIM", -1, -1, ClockBranch::Ahb},
    {"DMA", 1, 2, ClockBranch::Ahb},
    {"EMAC", -1, -1, ClockBranch::Ahb},
    {"DVP", -1, -1, ClockBranch::Ahb},
    {"CRC", -1, -1, ClockBranch::Ahb},
    {"USBFS", -1, -1, ClockBranch::Usb},
    {"USB_OTGFS", 1, 2, ClockBranch::Usb},
    {"USB_OTGHS", 1, 1, ClockBranch::Usb},
    {"ACC", -1, -1, ClockBranch::Apb2},
    {"SDIO", -1, -1, ClockBranch::Ahb},
    {"HEXT", -1, -1, ClockBranch::Hext},
}};

ClockBranch find(std::span<const ClockedInstances> table, const QString &kind, int number)
{
    const auto row = std::find_if(table.begin(), table.end(), [&](const ClockedInstances &entry) {
        return kind == QLatin1String(entry.kind) && entry.first <= number && number <= entry.last;
    });
    return row == table.end() ? ClockBranch::None : row->branch;
}

} // namespace

ClockBranch clockBranchOf(const ClockSeries &series, const QString &instance)
{
    static const QRegularExpression form(QStringLiteral("^(.*?)([0-9]*)$"));
    const QRegularExpressionMatch match = form.match(instance);
    const QString kind = match.captured(1);
    const int number = match.captured(2).isEmpty() ? -1 : match.captured(2).toInt();

    constexpr auto offset = [](ClockBranch first, int n) { return static_cast<ClockBranch>(int(first) + n - 1); };
    if (kind == QLatin1String("USART") && number >= 1 && number <= series.usartSources)
        return offset(ClockBranch::Usart1, number);
    if (kind == QLatin1String("CAN") && number >= 1 && number <= series.canSources)
        return offset(ClockBranch::Can1, number);
    if (kind == QLatin1String("I2C") && number == 1 && series.i2c1Source)
        return ClockBranch::I2c1;
    if (kind == QLatin1String("I2SF") && number == 5 && series.i2sf5)
        return ClockBranch::I2sf5;
    ClockBranch branch = find(series.instances, kind, number);
    if (branch == ClockBranch::None)
        branch = find(CommonInstances, kind, number);
    if (branch == ClockBranch::Adc && !series.adcDivider && !series.adcSource)
        return ClockBranch::Ahb;
    if (branch == ClockBranch::Usb && !series.hasUsb())
        return ClockBranch::None;
    return branch;
}

} // namespace ChipLoom
