#pragma once

#include "Model/Enumerations.h"

#include <QStringList>

#include <array>
#include <span>

namespace ChipLoom {

/// Names parted by blanks. Split once for each list, which stays where it is.
QStringList splitNames(const char *names);

/// All that distinguishes the generator of one group of series. Lists of names are parted by blanks and stand in the
/// order of the templates.
struct SeriesGeneratorRow
{
    const char *name;                     ///< "GenerateCode_All_F421"
    std::array<ZV32MCUSERIALS, 3> series; ///< `ZV32ErrorMCU2` where there are fewer
    const char *dispatch;                 ///< instances that have functions: "USART1 USART2"
    const char *clocks;                   ///< lines of `lm_periph_clock_config`: "gpioa dma1"
    const char *modules;                  ///< driver modules: "crm usart"
    std::array<int, 2> dmaChannels;       ///< channels of DMA1 and DMA2
    const char *withoutCode = "DEBUG";    ///< peripherals that need no code
    int edmaStreams = 0;

    QStringList dispatchList() const { return splitNames(dispatch); }
    QStringList clockList() const { return splitNames(clocks); }
    QStringList moduleList() const { return splitNames(modules); }
    QStringList withoutCodeList() const { return splitNames(withoutCode); }
    /// "DMA1_Channel1" and so on.
    QStringList dmaChannelList() const;
    /// "EDMA_Stream1" and so on.
    QStringList edmaStreamList() const;
};

/// The row of a series, or null: two series have no generator.
const SeriesGeneratorRow *seriesGeneratorRow(ZV32MCUSERIALS series);
std::span<const SeriesGeneratorRow> seriesGeneratorRows();

/// Whether every project needs the driver module.
bool isAlwaysNeeded(const QString &module);

} // namespace ChipLoom
