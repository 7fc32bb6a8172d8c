#include "ClockConfig/ZV32PLLConfig.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/TextEngine.h"

namespace ChipLoom {

namespace {

constexpr int LastChannel = 15; // further channels are inside the chip

QString adcDivider(const DeclaredGenerator &generator)
{
    return generator.clock() ? generator.clock()->GenerateCode_Get_ADCDiv() : QString();
}

// One call for each rank up to the number that a parameter holds.
std::string sequence(const DeclaredGenerator &generator, const QString &lengthParameter,
                     const std::function<std::string(const QString &rank)> &callOf)
{
    const int length = generator.Get_DefineString_Param(lengthParameter).toInt();
    std::string calls;
    for (int rank = 1; rank <= length; ++rank)
        calls += (rank > 1 ? "\n  " : "") + callOf(QString::number(rank));
    return calls;
}

// Of the "Ordinary" or the "Preempt" sequence.
std::string channels(const DeclaredGenerator &generator, const QStringList &samples, const QString &function,
                     const QString &name)
{
    const QString key = name + QLatin1String("Sequence");
    return sequence(generator, QLatin1String("NbrOf") + key, [&](const QString &rank) {
        const auto valueOf = [&](const char *stem) {
            return generator.Get_DefineString_Param(QLatin1String(stem) + key + QLatin1Char('_') + rank);
        };
        return callText(function, {samples.first(), valueOf("Channel_"), rank, valueOf("SamplingTime_")});
    });
}

std::string ordinarySequence(const DeclaredGenerator &generator, const QStringList &samples)
{
    return channels(generator, samples, QStringLiteral("adc_ordinary_channel_set"), QStringLiteral("Ordinary"));
}

std::string preemptSequence(const DeclaredGenerator &generator, const QStringList &samples)
{
    return channels(generator, samples, QStringLiteral("adc_preempt_channel_set"), QStringLiteral("Preempt"));
}

std::string preemptOffsets(const DeclaredGenerator &generator, const QStringList &samples)
{
    return sequence(generator, QStringLiteral("NbrOfPreemptSequence"), [&](const QString &rank) {
        return callText(QStringLiteral("adc_preempt_offset_value_set"),
                        {samples.first(), QLatin1String("ADC_PREEMPT_CHANNEL_") + rank,
                         generator.Get_DefineString_Param(QLatin1String("PreemptOffset_") + rank)});
    });
}

QStringList channelPins()
{
    QStringList pins;
    for (int channel = 0; channel <= LastChannel; ++channel)
        pins.append(QLatin1String("IN") + QString::number(channel));
    return pins;
}

std::vector<Topic> adcFunction()
{
    std::vector<Topic> topics{
        pinDeclaration(channelPins()),
        pinDefaults(channelPins()),
    };
    for (int channel = 0; channel <= LastChannel; ++channel) {
        const QString number = QString::number(channel);
        topics.push_back(pin("in" + number, "IN" + number).onlyWhen(QLatin1String("channels:") + number));
    }
    const TopicTest monitored = isOther("VoltageMonitor", {"ADC_VMONITOR_NONE"});
    const std::vector<Topic> rest{
        call("GenerateCode_ADC_div", "crm_adc_clock_div_set", {computed(&adcDivider)}).onlyWhen("!common"),
        call("GenerateCode_ADC_combine_mode", "adc_combine_mode_select", {"CombineMode"}).onlyWhen("leader & !common"),
        section("GenerateCode_ADC_tempersensor_vintrv", "temperature sensor VINTRV channel",
                isTrue("TemperatureVINTRV"))
            .onlyWhen("single|leader"),
        assignment("GenerateCode_ADC_GeneralParam", "adc_base_struct.sequence_mode", "SequenceMode"),
        assignment("GenerateCode_ADC_GeneralParam", "adc_base_struct.repeat_mode", "RepeatMode"),
        assignment("GenerateCode_ADC_GeneralParam", "adc_base_struct.data_align", "DataAlign"),
        assignment("GenerateCode_ADC_ordinary_conversions", "adc_base_struct.ordinary_channel_length",
                   "NbrOfOrdinarySequence"),
        call("GenerateCode_ADC_GeneralParam", "adc_resolution_set", {Keep, "ResolutionSelect"}),
        rewritten("GenerateCode_ADC_ordinary_sequence", "adc_ordinary_channel_set", 4, &ordinarySequence),
        call("GenerateCode_ADC_ordinary_trigger_source", "adc_ordinary_conversion_trigger_set",
             {Keep, "OrdinaryTriggerSource", Keep}),
        line("GenerateCode_ADC_ordinary_trigger_edge", "adc_ordinary_trigger_edge_set", isGiven("OrdinaryTriggerEdge"),
             {Keep, "OrdinaryTriggerEdge"})
            .onlyWhen("common"),
        section(
            "GenerateCode_ADC_ordinary_part_mode", "ordinary part mode", isTrue("OrdinaryPartMode"),
            {call("GenerateCode_ADC_ordinary_part_count", "adc_ordinary_part_count_set", {Keep, "OrdinaryPartCount"})}),
        // Combined results go by the request of the first converter alone.
        section("GenerateCode_ADC_ordinary_DMA", "dma_mode",
                both(isRequested({""}), isNoneOf("OrdinaryDMA", {"FALSE"})))
            .onlyWhen("!follower|common"),
        section("GenerateCode_ADC_preempt_conversions", "preempt conversions", isTrue("PreemptConversions"),
                {call("GenerateCode_ADC_preempt_channel_length", "adc_preempt_channel_length_set",
                      {Keep, "NbrOfPreemptSequence"}),
                 rewritten("GenerateCode_ADC_preempt_sequence", "adc_preempt_channel_set", 4, &preemptSequence),
                 rewritten("GenerateCode_ADC_preempt_offset", "adc_preempt_offset_value_set", 3, &preemptOffsets)}),
        line("GenerateCode_ADC_preempt_ConvMode", "adc_preempt_part_mode_enable", isTrue("PreemptPartMode"),
             {Keep, Keep}),
        line("GenerateCode_ADC_preempt_ConvMode", "adc_preempt_auto_mode_enable", isTrue("PreemptAutoMode"),
             {Keep, Keep}),
        line("GenerateCode_ADC_preempt_trigger_source", "adc_preempt_conversion_trigger_set",
             isGiven("PreemptTriggerSource"), {Keep, "PreemptTriggerSource", Keep}),
        line("GenerateCode_ADC_preempt_trigger_edge", "adc_preempt_trigger_edge_set", isGiven("PreemptTriggerEdge"),
             {Keep, "PreemptTriggerEdge"})
            .onlyWhen("common"),
        section("GenerateCode_ADC_oversampling", "oversampling", isTrue("Oversampling"),
                {call("GenerateCode_ADC_oversampling", "adc_oversample_config",
                      {Keep, "OversampleRatio", "OversampleShift"})})
            .onlyWhen("common"),
        section(
            "GenerateCode_ADC_voltage_monitoring", "voltage monitoring", monitored,
            {call("GenerateCode_ADC_voltage_monitor_threshold_value", "adc_voltage_monitor_threshold_value_set",
                  {Keep, "VoltageMonitorHigh", "VoltageMonitorLow"}),
             line("GenerateCode_ADC_voltage_monitor_single_channel", "adc_voltage_monitor_single_channel_select",
                  isGiven("VoltageMonitorChannel"), {Keep, "VoltageMonitorChannel"}),
             call("GenerateCode_ADC_voltage_monitor_enable", "adc_voltage_monitor_enable", {Keep, "VoltageMonitor"})}),
        interruptEnable("Interrupt_CCE"),
        interruptEnable("Interrupt_VMOR"),
        interruptEnable("Interrupt_PCCE"),
        interruptRemarks(),
    };
    append(topics, rest);
    return topics;
}

} // namespace

const PeripheralTopics &adcTopics()
{
    static const PeripheralTopics topics{
        .kind = "ADC",
        .function = adcFunction(),
        .branches = {{"_CCE_FLAG", isTrue("Interrupt_CCE")},
                     {"_VMOR_FLAG", isTrue("Interrupt_VMOR")},
                     {"_PCCE_FLAG", isTrue("Interrupt_PCCE")}},
    };
    return topics;
}

const PeripheralTopics &adcCommonTopics()
{
    static const PeripheralTopics topics{
        .kind = "ADC-Common",
        .function = {assignment("GenerateCode_ADC_common", "adc_common_struct.clock_division", "ClockDivision"),
                     assignment("GenerateCode_ADC_common", "adc_common_struct.combine_mode", "CombineMode"),
                     assignment("GenerateCode_ADC_common", "adc_common_struct.sample_interval",
                                orSample("SampleInterval")),
                     assignment("GenerateCode_ADC_common", "adc_common_struct.common_dma_mode",
                                orSample("CommonDMAMode"))},
    };
    return topics;
}

} // namespace ChipLoom
