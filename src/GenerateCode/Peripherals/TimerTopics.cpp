#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

namespace {

constexpr int Channels = 4;
constexpr int ComplementaryChannels = 3;

const QString HasComplementary = QStringLiteral("complementary1|complementary3");

// The feature that it takes to have a channel.
QString channelFeature(int channel)
{
    return channel == 1 ? QStringLiteral("channels") : channel == 2 ? QStringLiteral("slave") : QStringLiteral("four");
}

QString complementaryFeature(int channel)
{
    return channel == 1 ? HasComplementary : QStringLiteral("complementary3");
}

QString ofChannel(const char *parameter, int channel)
{
    return QLatin1String(parameter) + QLatin1String("_CH") + QString::number(channel);
}

QStringList ofChannels(const char *parameter)
{
    QStringList names;
    for (int channel = 1; channel <= Channels; ++channel)
        names.append(ofChannel(parameter, channel));
    return names;
}

QString complementaryPolarity(int channel)
{
    return ofChannel("OutputPolarity", channel) + QLatin1Char('C');
}

// A complementary output needs its channel to compare, whether the channel has a pin of its own or not.
TopicTest isOutput(int channel)
{
    return isGiven(QStringList{ofChannel("OutputMode", channel), complementaryPolarity(channel)});
}

TopicTest hasOutputs()
{
    QStringList names = ofChannels("OutputMode");
    for (int channel = 1; channel <= ComplementaryChannels; ++channel)
        names.append(complementaryPolarity(channel));
    return isGiven(names);
}

TopicTest hasInputThatDrives()
{
    return either(
        isGiven(QStringList{"PWMInputPolarity", "HallFilter"}),
        isOneOf("SubModeInput", {"TMR_SUB_INPUT_SEL_C1INC", "TMR_SUB_INPUT_SEL_C1DF1", "TMR_SUB_INPUT_SEL_C2DF2"}));
}

TopicTest hasBrakeOrDeadTime()
{
    return either(isTrue({"BrakeEnable", "AutoOutputEnable", "FCSOENState", "FCSODISState"}),
                  either(isOther("DeadTime", {"0"}), isOther("WriteProtection", {"TMR_WP_OFF"})));
}

// "TRUE" where one of the parameters is there: an output is on where a mode gives it a polarity.
TopicValue trueIfGiven(const QString &parameter)
{
    return computed([parameter](const DeclaredGenerator &generator) {
        return generator.Get_DefineString_Param(parameter).isEmpty() ? QStringLiteral("FALSE") : QStringLiteral("TRUE");
    });
}

// PWM without a pin serves others inside the chip, as the infrared transmitter. Where functions are not chosen pin by
// pin it would drive the pin beside whoever has it, and it would turn a complementary output round.
TopicValue trueIfDriven(int channel)
{
    return computed([channel](const DeclaredGenerator &generator) {
        const bool hasPin = !generator.Get_DefineString_Param(ofChannel("OutputPolarity", channel)).isEmpty();
        const bool servesInside =
            generator.hasFeatures(QStringLiteral("mux")) &&
            generator.Get_DefineString_Param(complementaryPolarity(channel)).isEmpty() &&
            generator.Get_DefineString_Param(ofChannel("OutputMode", channel)).contains(QLatin1String("PWM"));
        return hasPin || servesInside ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    });
}

QStringList signalNames()
{
    QStringList names;
    for (int channel = 1; channel <= Channels; ++channel) {
        names.append(QLatin1String("CH") + QString::number(channel));
        if (channel <= ComplementaryChannels)
            names.append(names.last() + QLatin1Char('C'));
    }
    return names << QStringLiteral("EXT") << QStringLiteral("BRK");
}

std::vector<Topic> pinsAndDeclarations()
{
    const QStringList names = signalNames();
    std::vector<Topic> topics{
        section(
            "GenerateCode_TMR_lm_config_c", QStringLiteral("declarations"), {},
            {pinDeclaration(names),
             declaration("GenerateCode_tmr_input_struct", "tmr input struct", isGiven(ofChannels("InputPolarity"))),
             declaration("GenerateCode_tmr_output_struct", "tmr output struct", hasOutputs()),
             declaration("GenerateCode_tmr_ic_init_struct", "tmr ic init struct", hasInputThatDrives())
                 .onlyWhen("slave"),
             declaration("GenerateCode_tmr_brkdt_struct", "tmr brkdt struct", hasBrakeOrDeadTime()).onlyWhen("brake")})
            .onlyWhen("channels"),
        pinDefaults(names).onlyWhen("channels"),
    };
    for (int channel = 1; channel <= Channels; ++channel) {
        const QString name = QLatin1String("CH") + QString::number(channel);
        topics.push_back(pin(name.toLower(), name).onlyWhen(channelFeature(channel)));
        if (channel <= ComplementaryChannels)
            topics.push_back(pin(name.toLower() + QLatin1Char('c'), name + QLatin1Char('C'))
                                 .onlyWhen(complementaryFeature(channel)));
    }
    topics.push_back(pin("ext", "EXT").onlyWhen("external"));
    topics.push_back(pin("brk", "BRK").onlyWhen("brake"));
    topics.push_back(remap(names).onlyWhen("remap & channels"));
    return topics;
}

std::vector<Topic> timeBase()
{
    return {
        section("GenerateCode_TMR_counter_settings", "repetition counter", isOther("RepetitionCounter", {"0"}),
                {call("GenerateCode_TMR_counter_settings", "tmr_repetition_counter_set", {Keep, "RepetitionCounter"})})
            .onlyWhen("brake"),
        call("GenerateCode_TMR_counter_settings", "tmr_base_init", {Keep, "Period", "DividerValue"}),
        call("GenerateCode_TMR_counter_settings", "tmr_cnt_dir_set", {Keep, "CounterDirection"}).onlyWhen("!basic"),
        call("GenerateCode_TMR_counter_settings", "tmr_clock_source_div_set", {Keep, "ClockDivision"})
            .onlyWhen("!basic"),
        section("GenerateCode_TMR_overflow", "period buffer", isTrue("PeriodBuffer")),
        section("GenerateCode_TMR_one_cycle_mode", "one cycle mode", isTrue("OneCycleMode")).onlyWhen("channels"),
        section("GenerateCode_TMR_overflow_event_disable", "overflow event disable", isTrue("OverflowEventDisable")),
        section("GenerateCode_TMR_overflow_request_source", "overflow request source", isTrue("OverflowRequestSource")),
        section("GenerateCode_TMR_primary_mode_settings", "primary mode",
                isOther("PrimaryTMROutput", {"TMR_PRIMARY_SEL_RESET"}),
                {call("GenerateCode_TMR_primary_mode_settings", "tmr_primary_mode_select", {Keep, "PrimaryTMROutput"})})
            .onlyWhen("slave|basic"),
        section("GenerateCode_TMR_primary_mode_settings", "sub sync mode", isTrue("SubTMRSync")).onlyWhen("slave"),
    };
}

// What the channel's pin passes through on its way to the counter.
Topic drivingInput(const char *name, const char *form, const char *token, QStringList polarityAndFilter)
{
    std::vector<Topic> inner;
    if (polarityAndFilter.size() > 1)
        inner.push_back(assignment(name, "tmr_ic_init_struct.edge", polarityAndFilter.takeFirst()));
    inner.push_back(assignment(name, "tmr_ic_init_struct.filter", polarityAndFilter.first()));
    return section(name, QLatin1String("sub mode input ") + QLatin1String(form), isOneOf("SubModeInput", {token}),
                   std::move(inner));
}

Topic encoderFilter(const char *sectionName, const char *parameter)
{
    return section("GenerateCode_TMR_encoder", QString::fromLatin1(sectionName), isOther(parameter, {"0"}),
                   {call("GenerateCode_TMR_encoder", "tmr_input_channel_filter_set", {Keep, Keep, parameter})});
}

std::vector<Topic> counterDrivers()
{
    return {
        section("GenerateCode_TMR_external_clock_modeb", "external clock mode b",
                isOneOf("ClockSource", {"TMR_CLOCKSOURCE_EXTMODEB"}),
                {call("GenerateCode_TMR_external_clock_modeb", "tmr_external_clock_config",
                      {Keep, "ExternalClockDivider", "ExternalClockPolarity", "ExternalClockFilter"})})
            .onlyWhen("external"),
        section(
            "GenerateCode_TMR_sub_mode_input", "sub mode input", isGiven("SubModeInput"),
            {section("GenerateCode_TMR_sub_mode_input_ext", "sub mode input ext",
                     isOneOf("SubModeInput", {"TMR_SUB_INPUT_SEL_EXTIN"}),
                     {call("GenerateCode_TMR_sub_mode_input_ext", "tmr_external_clock_config",
                           {Keep, "SubModeInput_EXT_divider", "SubModeInput_EXT_polarity", "SubModeInput_EXT_filter"})})
                 .onlyWhen("external"),
             drivingInput("GenerateCode_TMR_sub_mode_input_c1inc", "c1inc", "TMR_SUB_INPUT_SEL_C1INC",
                          {"SubModeInput_C1INC_filter"}),
             drivingInput("GenerateCode_TMR_sub_mode_input_c1df1", "c1df1", "TMR_SUB_INPUT_SEL_C1DF1",
                          {"SubModeInput_C1DF1_polarity", "SubModeInput_C1DF1_filter"}),
             drivingInput("GenerateCode_TMR_sub_mode_input_c2df2", "c2df2", "TMR_SUB_INPUT_SEL_C2DF2",
                          {"SubModeInput_C2DF2_polarity", "SubModeInput_C2DF2_filter"}),
             call("GenerateCode_TMR_sub_mode_input", "tmr_trigger_input_select", {Keep, "SubModeInput"})})
            .onlyWhen("slave"),
        section("GenerateCode_TMR_encoder", "encoder", isGiven("EncoderMode"),
                {encoderFilter("encoder filter 1", "EncoderFilter_CH1"),
                 encoderFilter("encoder filter 2", "EncoderFilter_CH2"),
                 call("GenerateCode_TMR_encoder", "tmr_encoder_mode_config",
                      {Keep, "EncoderMode", "EncoderPolarity_CH1", "EncoderPolarity_CH2"})})
            .onlyWhen("slave"),
        section("GenerateCode_TMR_pwm_input", "pwm input", isGiven("PWMInputPolarity"),
                {assignment("GenerateCode_TMR_pwm_input", "tmr_ic_init_struct.edge", "PWMInputPolarity"),
                 assignment("GenerateCode_TMR_pwm_input", "tmr_ic_init_struct.filter", "PWMInputFilter")})
            .onlyWhen("slave"),
        section("GenerateCode_TMR_enable_xor", "xor input", isTrue("XOR_Enable"),
                {assignment("GenerateCode_TMR_enable_xor", "tmr_ic_init_struct.filter", "HallFilter")})
            .onlyWhen("four"),
    };
}

Topic channelInput(int channel)
{
    static const char *names[] = {"GenerateCode_TMR_channel_1_input", "GenerateCode_TMR_channel_2_input",
                                  "GenerateCode_TMR_channel_3_input", "GenerateCode_TMR_channel_4_input"};
    const char *name = names[channel - 1];
    return section(name, QStringLiteral("channel %1 input").arg(channel), isGiven(ofChannel("InputPolarity", channel)),
                   {assignment(name, "tmr_input_struct.edge", ofChannel("InputPolarity", channel)),
                    assignment(name, "tmr_input_struct.mapping", ofChannel("InputMapping", channel)),
                    assignment(name, "tmr_input_struct.filter", ofChannel("InputFilter", channel)),
                    call(name, "tmr_input_channel_init", {Keep, Keep, ofChannel("InputDivider", channel)})})
        .onlyWhen(channelFeature(channel));
}

Topic channelOutput(int channel)
{
    static const char *names[] = {"GenerateCode_TMR_channel_1_output", "GenerateCode_TMR_channel_2_output",
                                  "GenerateCode_TMR_channel_3_output", "GenerateCode_TMR_channel_4_output"};
    const char *name = names[channel - 1];
    const QString value = ofChannel("ChannelValue", channel);
    std::vector<Topic> inner{
        assignment(name, "tmr_output_struct.mode", ofChannel("OutputMode", channel)),
        assignment(name, "tmr_output_struct.output_enable", trueIfDriven(channel)),
        assignment(name, "tmr_output_struct.polarity", ofChannel("OutputPolarity", channel)),
        assignment(name, "tmr_output_struct.idle_high", ofChannel("IdleState", channel)).onlyWhen("brake"),
    };
    if (channel <= ComplementaryChannels) {
        const QString when = complementaryFeature(channel);
        append(inner,
               {assignment(name, "tmr_output_struct.complementary_enable", trueIfGiven(complementaryPolarity(channel)))
                    .onlyWhen(when),
                assignment(name, "tmr_output_struct.complementary_polarity", complementaryPolarity(channel))
                    .onlyWhen(when),
                assignment(name, "tmr_output_struct.complementary_idle_high",
                           ofChannel("IdleState", channel) + QLatin1Char('C'))
                    .onlyWhen(when)});
    }
    append(inner, {line(name, "tmr_channel_value_set", isGiven(value), {Keep, Keep, value}),
                   line("GenerateCode_TMR_channel_output_pwm", "tmr_output_channel_buffer_enable",
                        isTrue(QStringList{ofChannel("OutputBuffer", channel)}), {Keep, Keep, Keep}),
                   line("GenerateCode_TMR_channel_output_pwm", "tmr_output_channel_immediately_set",
                        isTrue(QStringList{ofChannel("OutputImmediately", channel)}), {Keep, Keep, Keep})});
    return section(name, QStringLiteral("channel %1 output").arg(channel), isOutput(channel), std::move(inner))
        .onlyWhen(channelFeature(channel));
}

Topic outputSwitch()
{
    static const char *names[] = {
        "GenerateCode_TMR_output_channel_switch_set_CHANNEL_1", "GenerateCode_TMR_output_channel_switch_set_CHANNEL_2",
        "GenerateCode_TMR_output_channel_switch_set_CHANNEL_3", "GenerateCode_TMR_output_channel_switch_set_CHANNEL_4"};
    std::vector<Topic> inner;
    for (int channel = 1; channel <= Channels; ++channel)
        inner.push_back(section(names[channel - 1], QStringLiteral("output switch channel %1").arg(channel),
                                isTrue(QStringList{ofChannel("OutputSwitch", channel)}))
                            .onlyWhen(channelFeature(channel)));
    return section("GenerateCode_TMR_channel_output_switch", "output switch", isTrue(ofChannels("OutputSwitch")),
                   std::move(inner))
        .onlyWhen("external");
}

std::vector<Topic> brakeAndDeadTime()
{
    const char *name = "GenerateCode_TMR_brkdt_config";
    return {
        section("GenerateCode_TMR_channel_control_bit_refresh", "channel control bit refresh",
                isOther("ChannelControlBitRefresh", {"TMR_CHANNEL_CONTROL_BY_HALL"}),
                {call("GenerateCode_TMR_channel_control_bit_refresh", "tmr_channel_control_refresh_select",
                      {Keep, "ChannelControlBitRefresh"})})
            .onlyWhen("brake"),
        section("GenerateCode_TMR_channel_buffer", "channel buffer", isTrue("ChannelBuffer")).onlyWhen("brake"),
        section(name, "brkdt", hasBrakeOrDeadTime(),
                {assignment(name, "tmr_brkdt_struct.brake_enable", "BrakeEnable"),
                 assignment(name, "tmr_brkdt_struct.brake_polarity", "BrakePolarity"),
                 assignment(name, "tmr_brkdt_struct.auto_output_enable", "AutoOutputEnable"),
                 assignment(name, "tmr_brkdt_struct.fcsoen_state", "FCSOENState"),
                 assignment(name, "tmr_brkdt_struct.fcsodis_state", "FCSODISState"),
                 assignment(name, "tmr_brkdt_struct.deadtime", "DeadTime"),
                 assignment(name, "tmr_brkdt_struct.write_protection", "WriteProtection")})
            .onlyWhen("brake"),
    };
}

// An event: what follows the timer in the section of its handler, the parameters that let it raise an interrupt, the
// feature that it takes.
struct TimerEvent
{
    QString section;
    QString flag;
    QStringList parameters;
    QString when;
};

const std::vector<TimerEvent> &timerEvents()
{
    static const std::vector<TimerEvent> events{
        {"Interrupt_Overflow", "_OVF_FLAG", {"Interrupt_Overflow"}, {}},
        {"Interrupt_Brake", "_BRK_FLAG", {"Interrupt_Brake"}, "brake"},
        {"Interrupt_Trigger", "_TRIGGER_FLAG", {"Interrupt_Trigger"}, "slave"},
        {"Interrupt_Hall", "_HALL_FLAG", {"Interrupt_Hall"}, "brake"},
        {"Interrupt_CH1",
         "_C1_FLAG",
         {"Interrupt_CH1", "Interrupt_PWMInputPeriod", "Interrupt_HallChange"},
         channelFeature(1)},
        {"Interrupt_CH2", "_C2_FLAG", {"Interrupt_CH2", "Interrupt_PWMInputPulse"}, channelFeature(2)},
        {"Interrupt_CH3", "_C3_FLAG", {"Interrupt_CH3"}, channelFeature(3)},
        {"Interrupt_CH4", "_C4_FLAG", {"Interrupt_CH4"}, channelFeature(4)},
    };
    return events;
}

std::vector<Topic> requestsAndInterrupts()
{
    std::vector<Topic> topics{section("GenerateCode_TMR_DMA", "dma overflow", isRequested({"_OVERFLOW"}))};
    for (int channel = 1; channel <= Channels; ++channel)
        topics.push_back(section("GenerateCode_TMR_DMA", QStringLiteral("dma ch%1").arg(channel),
                                 isRequested({QStringLiteral("_CH%1").arg(channel)}))
                             .onlyWhen(channelFeature(channel)));
    topics.push_back(section("GenerateCode_TMR_DMA", "dma trigger", isRequested({"_TRIG"})).onlyWhen("slave"));
    topics.push_back(section("GenerateCode_TMR_DMA", "dma hall", isRequested({"_HALL"})).onlyWhen("brake"));
    for (const TimerEvent &event : timerEvents())
        topics.push_back(section("GenerateCode_Interrupt_enable_sub1", event.section, isTrue(event.parameters))
                             .onlyWhen(event.when));
    topics.push_back(interruptRemarks());
    return topics;
}

std::vector<Topic> tmrFunction()
{
    std::vector<Topic> topics = pinsAndDeclarations();
    append(topics, timeBase());
    append(topics, counterDrivers());
    for (int channel = 1; channel <= Channels; ++channel)
        append(topics, {channelInput(channel), channelOutput(channel)});
    topics.push_back(outputSwitch());
    append(topics, brakeAndDeadTime());
    topics.push_back(section("GenerateCode_TMR_sub_mode", "sub mode", isGiven("TMR_SubMode_Control"),
                             {call("GenerateCode_TMR_sub_mode", "tmr_sub_mode_select", {Keep, "TMR_SubMode_Control"})})
                         .onlyWhen("slave"));
    append(topics, requestsAndInterrupts());
    topics.push_back(line("GenerateCode_TMR_output_enable", "tmr_output_enable",
                          both(isTrue("OutputEnable"), hasOutputs()), {Keep, Keep})
                         .onlyWhen("brake"));
    // In the trigger mode the trigger starts the counter.
    topics.push_back(line("GenerateCode_TMR_counter_enable", "tmr_counter_enable",
                          isNoneOf("TMR_SubMode_Control", {"TMR_SUB_TRIGGER_MODE"}), {Keep, Keep}));
    return topics;
}

std::vector<InterruptBranch> tmrBranches()
{
    std::vector<InterruptBranch> branches;
    for (const TimerEvent &event : timerEvents())
        branches.push_back({event.flag, isTrue(event.parameters), event.when});
    return branches;
}

} // namespace

const PeripheralTopics &tmrTopics()
{
    static const PeripheralTopics topics{.kind = "TMR", .function = tmrFunction(), .branches = tmrBranches()};
    return topics;
}

} // namespace ChipLoom
