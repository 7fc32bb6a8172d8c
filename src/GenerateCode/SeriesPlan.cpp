#include "GenerateCode/SeriesPlan.h"

#include "GenerateCode/FunctionRank.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "Model/SeriesHelpers.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <mutex>

namespace ChipLoom {

namespace {

using Need = SeriesPlan::Clock::Need;

/// Lines of the clock function that do not stand with the instance of their name alone.
struct ClockRule
{
    const char *name; ///< of the line, or its beginning
    Need need;
    const char *instances = ""; ///< "%" is what follows the beginning
};
constexpr std::array ClockRules{
    ClockRule{"gpio", Need::Port},
    ClockRule{"dma", Need::Channels},
    ClockRule{"edma", Need::Channels},
    ClockRule{"iomux", Need::Pins},
    ClockRule{"scfg", Need::Router, "SCFG EXINT IRTMR"},
    // What the converters have in common stands in the registers of the first.
    ClockRule{"adc1", Need::Instances, "ADC1 ADC-Common"},
    ClockRule{"cmp", Need::Instances, "CMP1 CMP2"},
    // The clock of the battery powered domain is set behind the power controller.
    ClockRule{"pwc", Need::Instances, "PWC ERTC RTC"},
    ClockRule{"bpr", Need::Instances, "RTC"},
    ClockRule{"usb", Need::Instances, "USBFS"},
    ClockRule{"otg", Need::Instances, "USB_OTG%"},
    ClockRule{"xmc", Need::Banks},
    ClockRule{"spi", Need::Instances, "SPI% I2S%"},
};

SeriesPlan::Clock clockOf(const QString &name)
{
    const QString instance = name.toUpper();
    SeriesPlan::Clock clock{
        name, name + QLatin1String(" periph clock"), kindOfInstance(instance), Need::OwnInstance, {instance}};
    const auto rule = std::find_if(ClockRules.begin(), ClockRules.end(),
                                   [&](const ClockRule &one) { return name.startsWith(QLatin1String(one.name)); });
    if (rule == ClockRules.end())
        return clock;
    clock.need = rule->need;
    clock.instances = splitNames(rule->instances);
    clock.instances.replaceInStrings(QStringLiteral("%"), instance.mid(QLatin1String(rule->name).size()));
    return clock;
}

} // namespace

const SeriesPlan *SeriesPlan::of(ZV32MCUSERIALS series)
{
    static std::mutex mutex;
    static std::map<ZV32MCUSERIALS, std::unique_ptr<const SeriesPlan>> plans;
    const SeriesGeneratorRow *row = seriesGeneratorRow(series);
    if (!row)
        return nullptr;
    const std::lock_guard lock(mutex);
    std::unique_ptr<const SeriesPlan> &plan = plans[series];
    if (!plan)
        plan = std::make_unique<const SeriesPlan>(series, *row);
    return plan.get();
}

SeriesPlan::SeriesPlan(ZV32MCUSERIALS series, const SeriesGeneratorRow &seriesRow)
    : row(seriesRow), folder(ZV32MCUSERIALS_To_MCUConSerialString(series)), prefix(folder.toLower()),
      calls(readFunctionRank(folder))
{
    for (const QString &name : row.dispatchList()) {
        const GeneratorParts parts = generatorParts(series, name);
        instances.push_back({name, functionSection(name), parts.questions, parts.features});
    }
    m_numbers.reserve(static_cast<int>(instances.size()));
    for (size_t i = 0; i < instances.size(); ++i)
        m_numbers.insert(instances[i].name, static_cast<int>(i));
    for (const QString &channel : row.dmaChannelList())
        dmaChannels.emplace_back(channel);
    for (const QString &stream : row.edmaStreamList())
        edmaStreams.emplace_back(stream);
    for (const QString &name : row.clockList())
        clocks.push_back(clockOf(name));
}

} // namespace ChipLoom
