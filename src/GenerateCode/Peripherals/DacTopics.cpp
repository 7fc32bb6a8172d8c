#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

namespace {

Topic output(const QString &number)
{
    const auto named = [&number](const char *stem) { return TopicValue(QLatin1String(stem) + number); };
    const QByteArray buffer = "OutputBuffer_" + number.toLatin1();
    const QByteArray wave = "WaveGeneration_" + number.toLatin1();
    const QByteArray interrupt = "Interrupt_UDR" + number.toLatin1();
    const QByteArray amplitude = "Amplitude_" + number.toLatin1();
    return section(
        "GenerateCode_DAC_output", "output " + number, isGiven(buffer.constData()),
        {call("GenerateCode_DAC_output_buffer", "dac_output_buffer_enable", {Keep, named("OutputBuffer_")}),
         call("GenerateCode_DAC_trigger", "dac_trigger_select", {Keep, named("TriggerSource_")}),
         section("GenerateCode_DAC_wave", "wave " + number, isOther(wave.constData(), {"DAC_WAVE_GENERATE_NONE"}),
                 {call("GenerateCode_DAC_wave", "dac_wave_generate", {Keep, named("WaveGeneration_")}),
                  call("GenerateCode_DAC_wave", "dac_amplitude_select", {Keep, orSample(amplitude.constData())})}),
         // By its own request, or the first by that of both.
         section("GenerateCode_DAC_DMA", "dma " + number, isRequested({number, number + "_DAC2"})),
         interruptEnable(interrupt.constData()).onlyWhen("underrun"),
         call("GenerateCode_DAC_data", "dac_data_set", {Keep, Keep, named("InitialValue_")})});
}

} // namespace

const PeripheralTopics &dacTopics()
{
    static const QStringList pins{"OUT1", "OUT2"};
    static const PeripheralTopics topics{
        .kind = "DAC",
        .function = {onlyPinDeclaration(pins), pinDefaults(pins), pin("out1", "OUT1"), output("1"), pin("out2", "OUT2"),
                     output("2")},
        .branches = {{"_UDR1_FLAG", isTrue("Interrupt_UDR1"), "underrun"},
                     {"_UDR2_FLAG", isTrue("Interrupt_UDR2"), "underrun"}},
    };
    return topics;
}

} // namespace ChipLoom
