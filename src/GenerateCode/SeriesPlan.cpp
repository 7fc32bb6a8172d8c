#include "GenerateCode/SeriesPlan.h"

#include "GenerateCode/PeripheralGenerator.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "Model/SeriesHelpers.h"

#include <map>
#include <memory>
#include <mutex>

namespace ChipLoom {

namespace {

SeriesPlan::Clock clockOf(const QString &name)
{
    using Need = SeriesPlan::Clock::Need;
    const QString instance = name.toUpper();
    const auto clock = [&](Need need, const QStringList &instances = {}) {
        return SeriesPlan::Clock{name, name + QLatin1String(" periph clock"), kindOfInstance(instance), need,
                                 instances};
    };
    const auto is = [&](const char *other) { return name == QLatin1String(other); };
    if (name.startsWith(QLatin1String("gpio")))
        return clock(Need::Port);
    if (name.startsWith(QLatin1String("dma")) || is("edma"))
        return clock(Need::Channels);
    if (is("iomux"))
        return clock(Need::Pins);
    if (is("scfg"))
        return clock(Need::Router, {QStringLiteral("SCFG"), QStringLiteral("EXINT"), QStringLiteral("IRTMR")});
    // What the converters have in common stands in the registers of the first.
    if (is("adc1"))
        return clock(Need::Instances, {instance, QStringLiteral("ADC-Common")});
    if (is("cmp"))
        return clock(Need::Instances, {QStringLiteral("CMP1"), QStringLiteral("CMP2")});
    // The clock of the battery powered domain is set behind the power controller.
    if (is("pwc"))
        return clock(Need::Instances, {instance, QStringLiteral("ERTC"), QStringLiteral("RTC")});
    if (is("bpr"))
        return clock(Need::Instances, {QStringLiteral("RTC")});
    if (is("usb"))
        return clock(Need::Instances, {QStringLiteral("USBFS")});
    if (name.startsWith(QLatin1String("otg")))
        return clock(Need::Instances, {QLatin1String("USB_") + instance});
    if (is("xmc"))
        return clock(Need::Banks);
    if (name.startsWith(QLatin1String("spi")))
        return clock(Need::Instances, {instance, QLatin1String("I2S") + name.midRef(3)});
    return clock(Need::OwnInstance, {instance});
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
      dmaChannels(row.dmaChannelList()), edmaStreams(row.edmaStreamList())
{
    for (const QString &name : row.dispatchList()) {
        const GeneratorParts parts = generatorParts(series, name);
        instances.push_back({name, functionSection(name), parts.questions, parts.features});
    }
    m_numbers.reserve(static_cast<int>(instances.size()));
    for (size_t i = 0; i < instances.size(); ++i)
        m_numbers.insert(instances[i].name, static_cast<int>(i));
    for (const QString &name : row.clockList())
        clocks.push_back(clockOf(name));
}

} // namespace ChipLoom
