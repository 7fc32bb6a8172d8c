#pragma once

#include "GenerateCode/Generatecode_DMA.h"
#include "GenerateCode/NameTable.h"
#include "GenerateCode/SeriesGeneratorRow.h"

#include <QStringList>

#include <string>
#include <vector>

namespace ChipLoom {

class InstanceQuestions;

/// What the row of a series comes to, found once for the whole run of the program.
struct SeriesPlan
{
    /// An instance that has functions.
    struct Instance
    {
        QString name;                           ///< "USART1"
        QString section;                        ///< "usart1 function"
        InstanceQuestions *questions = nullptr; ///< null where the kind has no generator
        QStringList features;
    };

    /// A line of the clock function.
    struct Clock
    {
        enum class Need {
            Port,       ///< a pin of it is used
            Channels,   ///< a channel of the controller has a request
            Pins,       ///< pins are routed at all
            Router,     ///< one of the instances or DMA1 is in use
            Banks,      ///< a bank of the external memory is in use
            Instances,  ///< one of the instances is in use
            OwnInstance ///< the same, or it gives the time base or the way out of printf
        };
        QString name;    ///< as in SeriesGeneratorRow::clocks: "usart1"
        QString section; ///< "usart1 periph clock"
        QString kind;    ///< "USART"
        Need need;
        QStringList instances;
    };

    /// Null for a series without a generator.
    static const SeriesPlan *of(ZV32MCUSERIALS series);
    SeriesPlan(ZV32MCUSERIALS series, const SeriesGeneratorRow &seriesRow);

    /// -1 for what has no functions.
    int numberOf(const QString &instance) const { return m_numbers.find(instance); }

    const SeriesGeneratorRow &row;
    QString folder; ///< of the templates: "ZV32F421"
    QString prefix; ///< of the files: "zv32f421"
    std::vector<Instance> instances;
    std::vector<Clock> clocks;
    QList<MainFuncNameForRank> calls; ///< that `main` may make, in their default order
    std::vector<DmaChannelNames> dmaChannels;
    std::vector<DmaChannelNames> edmaStreams;

private:
    NameTable m_numbers;
};

} // namespace ChipLoom
