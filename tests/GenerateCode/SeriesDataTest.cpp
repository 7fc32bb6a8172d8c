#include "ClockConfig/ClockLiterals.h"
#include "ClockConfig/ClockSeries.h"
#include "ClockConfig/ZV32PLLConfig.h"
#include "Design/Calculators/DerivedParameters.h"
#include "Design/DMA_Configuration.h"
#include "Design/DevicePinInfo.h"
#include "Design/ModuleConfiguration.h"
#include "GenerateCode/Peripherals/TimerStems.h"
#include "GenerateCode/SeriesGeneratorRow.h"
#include "GenerationFixture.h"
#include "SampleFamilies.h"

#include <algorithm>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

// What the program's rows say of a series is what the data say of its chips. A row that was forgotten shows here.
class SeriesData : public GenerationFixture, public testing::WithParamInterface<SampleFamily>
{
protected:
    void SetUp() override
    {
        open(GetParam().series, GetParam().device, GetParam().package);
        code = MCUSerialString_To_ZV32MCUSERIALS(GetParam().series);
        row = seriesGeneratorRow(code);
        ASSERT_NE(row, nullptr);
    }

    bool has(const QString &kind) const
    {
        return std::any_of(design.peripherals().begin(), design.peripherals().end(),
                           [&](const PeripheralsBaseInfo &entry) { return entry.InstanceName.startsWith(kind); });
    }
    bool offers(const QString &signal) const
    {
        const DevicePinInfo &info = design.pinInfo();
        for (int pin = 0; pin < info.m_deviceBaseInfoList.size(); ++pin) {
            if (!info.placeOnPin(signal, pin).isNull())
                return true;
        }
        return false;
    }
    QStringList namesIn(const QString &file, const char *pattern) const
    {
        const QString &folder = GetParam().folder;
        QFile source(QString(":/srcode/%1/%2_%3").arg(folder, folder.toLower(), file));
        EXPECT_TRUE(source.open(QIODevice::ReadOnly)) << source.fileName().toStdString();
        QStringList found;
        QRegularExpressionMatchIterator it =
            QRegularExpression(pattern).globalMatch(QString::fromLatin1(source.readAll()));
        while (it.hasNext())
            found.append(it.next().captured(1));
        return found;
    }

    ZV32MCUSERIALS code = ZV32ErrorMCU2;
    const SeriesGeneratorRow *row = nullptr;
};

class SeriesOfCatalogue : public GenerationFixture
{
};

TEST_P(SeriesData, RowAndTemplatesNameTheSame)
{
    const QStringList frame{"SYSTEM", "CRM", "GPIO", "NVIC", "DMA", "EDMA"};
    for (const PeripheralsBaseInfo &entry : design.peripherals()) {
        EXPECT_TRUE((frame + row->dispatchList() + row->withoutCodeList()).contains(entry.InstanceName))
            << entry.InstanceName.toStdString() << " has no place in " << row->name;
    }
    EXPECT_EQ(namesIn("lm_config.c", R"(\[#(?!config)(\w+) periph clock\])"), row->clockList());
    QStringList modules;
    for (const QString &module : namesIn("conf.h", R"(#define (\w+)_MODULE_ENABLED)"))
        modules.append(module.toLower());
    EXPECT_EQ(modules, row->moduleList());
}

TEST_P(SeriesData, ChannelsAndTimersAreThoseOfTheRow)
{
    const auto channels = [](const DMA_Configuration *part) {
        QStringList names;
        for (const DMA_Channel_Info *channel : part ? part->dmaInfo().m_ChannelInfoList : QList<DMA_Channel_Info *>())
            names.append(channel->channelComment);
        return names;
    };
    EXPECT_EQ(channels(design.dma()), row->dmaChannelList());
    EXPECT_EQ(channels(design.edma()), row->edmaStreamList());
    const QString group = QString(row->name).remove("GenerateCode_All_");
    for (const PeripheralsBaseInfo &entry : design.peripherals()) {
        if (entry.InstanceName.startsWith("TMR")) {
            const TimerStem *stem = timerStem(code, entry.InstanceName);
            EXPECT_TRUE(stem && stem->isOf(group))
                << entry.InstanceName.toStdString() << " has no stem of " << group.toStdString();
        }
    }
}

TEST_P(SeriesData, ClockTreeIsThatOfTheChips)
{
    const ClockSeries *clock = clockSeries(code);
    ASSERT_NE(clock, nullptr);
    EXPECT_EQ(clock->clkout == ClkoutForm::TwoOutputs, offers("CRM_CLKOUT2"));
    EXPECT_EQ(clock->hasUsb(), has("USB"));
    const QString literal = clockLiteral(design.clock().getMCUPLL()->clock(), ClockField::RtcSel);
    EXPECT_EQ(literal.startsWith("CRM_ERTC_"), has("ERTC")) << literal.toStdString();
    EXPECT_EQ(seriesTraits(code)->pinsRemapped, !design.pinInfo().m_deviceIPSignalGroupInfoList.isEmpty());
    for (const MCUSerialStruct &series : XMLOperation(paths).GetMCUSerialsList()) {
        if (MCUSerialString_To_MCUConSerialString(series.SeriaName) != GetParam().folder)
            continue;
        const ClockSeries *own = clockSeries(MCUSerialString_To_ZV32MCUSERIALS(series.SeriaName));
        ASSERT_NE(own, nullptr) << series.SeriaName.toStdString();
        for (const MCUDeviceStruct &device : series.MCUDeviceList)
            EXPECT_EQ(device.DeviceFrequency, QString("%1MHz").arg(own->sclkMax)) << device.DeviceName.toStdString();
    }
}

/// Where a series has no row it is treated as one that has nothing of its own, and nothing fails.
TEST_F(SeriesOfCatalogue, HaveRowsOfTheirOwn)
{
    for (const MCUSerialStruct &series : XMLOperation(paths).GetMCUSerialsList()) {
        SCOPED_TRACE(series.SeriaName.toStdString());
        const MCUDeviceStruct &device = series.MCUDeviceList.first();
        open(series.SeriaName, device.DeviceName, device.DevicePackage);
        EXPECT_FALSE(earlyInstances(series.SeriaName).isEmpty()) << "no row in src/Design/DesignFileSeries.cpp";
        EXPECT_STRNE(derivedSeries(series.SeriaName).name, "")
            << "no row in src/Design/Calculators/DerivedParameters.cpp";
        const auto &debug = design.module("DEBUG")->controls();
        EXPECT_TRUE(std::any_of(debug.begin(), debug.end(), [](const auto &control) { return control->isOn(); }))
            << "no row in src/Design/ModeFamilies.cpp says how the chip is debugged from reset";
        EXPECT_EQ(design.module("ADC1")->note().argument.contains("ADC-Common"), bool(design.module("ADC-Common")))
            << "another row in src/Design/ModeFamilies.cpp says whether converters have common settings";
    }
}

INSTANTIATE_TEST_SUITE_P(Families, SeriesData, testing::ValuesIn(sampleFamilies()), nameOfFamily);

} // namespace
