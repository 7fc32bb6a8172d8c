#include "CompiledCode.h"
#include "DesignCode.h"
#include "GenerateCode/Peripherals/TimerStems.h"
#include "GenerateCode/SeriesGeneratorRow.h"
#include "GenerationFixture.h"
#include "PeripheralDesign.h"
#include "SampleFamilies.h"

#include <gmock/gmock.h>

#include <QMap>
#include <QRegularExpression>

#include <random>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

// ---- Stems ----

TEST(TimerStems, ServeEveryTimerOfEveryGroup)
{
    QSet<QString> groups;
    for (const SeriesGeneratorRow &row : seriesGeneratorRows()) {
        const QString group = QString(row.name).remove("GenerateCode_All_");
        groups.insert(group);
        for (const QString &instance : row.dispatchList().filter(QRegularExpression("^TMR"))) {
            EXPECT_NE(timerStem(row.series[0], instance), nullptr) << row.name << ' ' << qPrintable(instance);
            EXPECT_NE(generatorParts(row.series[0], instance).questions, nullptr);
        }
    }
    QSet<QString> names;
    for (const TimerStem &stem : timerStems()) {
        names.insert(stem.stem);
        for (const QString &group : QString(stem.groups).split(' '))
            EXPECT_TRUE(groups.contains(group)) << stem.stem << ' ' << qPrintable(group);
    }
    EXPECT_EQ(names.size(), int(timerStems().size()));
    EXPECT_STREQ(timerStem(ZV32F421, "TMR3")->stem, "TMR3");
    EXPECT_STREQ(timerStem(ZV32F407, "TMR3")->stem, "TMR3_4");
    EXPECT_STREQ(timerStem(ZV32F437, "TMR20")->stem, "TMR1_8_20");
    EXPECT_EQ(timerStem(ZV32F421, "USART1"), nullptr);
    EXPECT_EQ(timerStem(ZV32C421, "TMR1"), nullptr);
}

// ---- Texts ----

const QMap<QString, QString> TimeBase{{"DividerValue", "9"},
                                      {"Period", "999"},
                                      {"CounterDirection", "TMR_COUNT_DOWN"},
                                      {"ClockDivision", "TMR_CLOCK_DIV2"},
                                      {"RepetitionCounter", "0"},
                                      {"PrimaryTMROutput", "TMR_PRIMARY_SEL_RESET"},
                                      {"ChannelControlBitRefresh", "TMR_CHANNEL_CONTROL_BY_HALL"},
                                      {"OutputEnable", "TRUE"},
                                      {"DeadTime", "0"},
                                      {"WriteProtection", "TMR_WP_OFF"}};

class TimerText : public PeripheralDesign
{
protected:
    // The lines of code without user blocks and comments.
    QStringList lines(const QString &instance, const QMap<QString, QString> &further = {})
    {
        m_parameters.clear();
        QMap<QString, QString> values = TimeBase;
        for (auto value = further.begin(); value != further.end(); ++value)
            values[value.key()] = value.value();
        set(values);
        m_text = function("ZV32F421", ZV32F421, instance);
        EXPECT_FALSE(m_text.contains("\n\n\n") || m_text.contains("{\n\n")) << qPrintable(m_text);
        QStringList code;
        for (const QString &line : m_text.split('\n')) {
            if (line.startsWith("  ") && !line.startsWith("  /*") && !line.startsWith("  *"))
                code.append(line.trimmed());
        }
        return code;
    }

    QString m_text;
};

TEST_F(TimerText, OfATimeBaseHasNothingOfPinsAndChannels)
{
    EXPECT_EQ(lines("TMR1"),
              (QStringList{"tmr_base_init(TMR1, 999, 9);", "tmr_cnt_dir_set(TMR1, TMR_COUNT_DOWN);",
                           "tmr_clock_source_div_set(TMR1, TMR_CLOCK_DIV2);", "tmr_counter_enable(TMR1, TRUE);"}));
    EXPECT_EQ(lines("TMR6", {{"PeriodBuffer", "TRUE"}}),
              (QStringList{"tmr_base_init(TMR6, 999, 9);", "tmr_period_buffer_enable(TMR6, TRUE);",
                           "tmr_counter_enable(TMR6, TRUE);"}));
}

TEST_F(TimerText, OfALoneComplementaryOutputHasItsPinOnly)
{
    place("TMR1_CH1C", "PA7");
    const QStringList code =
        lines("TMR1", {{"OutputPolarity_CH1C", "TMR_OUTPUT_ACTIVE_LOW"}, {"IdleState_CH1C", "TRUE"}});
    EXPECT_EQ(code.filter("gpio_init(").size(), 1);
    EXPECT_TRUE(m_text.contains("gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE7, GPIO_MUX_1);"));
    for (const char *line :
         {"tmr_output_struct.output_enable = FALSE;", "tmr_output_struct.complementary_enable = TRUE;",
          "tmr_output_struct.complementary_polarity = TMR_OUTPUT_ACTIVE_LOW;",
          "tmr_output_struct.complementary_idle_high = TRUE;",
          "tmr_output_channel_config(TMR1, TMR_SELECT_CHANNEL_1, &tmr_output_struct);"})
        EXPECT_TRUE(code.contains(line)) << line;
    EXPECT_TRUE(code.filter("tmr_channel_value_set").isEmpty());
    EXPECT_TRUE(code.filter("TMR_SELECT_CHANNEL_2").isEmpty());
}

TEST_F(TimerText, LocksWhenAllIsSetAndStartsLast)
{
    const QStringList code = lines("TMR15", {{"OutputMode_CH1", "TMR_OUTPUT_CONTROL_PWM_MODE_B"},
                                             {"OutputPolarity_CH1", "TMR_OUTPUT_ACTIVE_HIGH"},
                                             {"ChannelValue_CH1", "77"},
                                             {"OutputBuffer_CH1", "TRUE"},
                                             {"WriteProtection", "TMR_WP_LEVEL_3"},
                                             {"RepetitionCounter", "4"},
                                             {"SubModeInput", "TMR_SUB_INPUT_SEL_IS1"},
                                             {"TMR_SubMode_Control", "TMR_SUB_HANG_MODE"},
                                             {"Interrupt_Overflow", "TRUE"}});
    QList<int> places;
    for (const char *line :
         {"tmr_repetition_counter_set(TMR15, 4);", "tmr_base_init(TMR15, 999, 9);",
          "tmr_trigger_input_select(TMR15, TMR_SUB_INPUT_SEL_IS1);",
          "tmr_output_struct.mode = TMR_OUTPUT_CONTROL_PWM_MODE_B;",
          "tmr_channel_value_set(TMR15, TMR_SELECT_CHANNEL_1, 77);",
          "tmr_output_channel_buffer_enable(TMR15, TMR_SELECT_CHANNEL_1, TRUE);",
          "tmr_brkdt_struct.write_protection = TMR_WP_LEVEL_3;", "tmr_sub_mode_select(TMR15, TMR_SUB_HANG_MODE);",
          "tmr_interrupt_enable(TMR15, TMR_OVF_INT, TRUE);", "tmr_output_enable(TMR15, TRUE);",
          "tmr_counter_enable(TMR15, TRUE);"}) {
        places.append(code.indexOf(line));
        EXPECT_GE(places.last(), 0) << line;
    }
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    EXPECT_EQ(code.last(), "tmr_counter_enable(TMR15, TRUE);");
    // A trigger starts the counter by itself.
    EXPECT_TRUE(
        lines("TMR15", {{"TMR_SubMode_Control", "TMR_SUB_TRIGGER_MODE"}}).filter("tmr_counter_enable").isEmpty());
}

TEST_F(TimerText, OfASharedVectorAnswersForEachTimerByItself)
{
    QString text = composed("ZV32F403A_407", "int.c");
    for (const auto &[instance, event] : {std::pair("TMR1", "Interrupt_Brake"), std::pair("TMR9", "Interrupt_CH2")}) {
        forget();
        set({{event, "TRUE"}});
        text = handlers(text, *generator(ZV32F407, instance));
    }
    const SectionSpan span = findSection(toCode(text), "TMR1_BRK_TMR9_IRQHandler");
    ASSERT_TRUE(span.found());
    QStringList asked;
    QRegularExpressionMatchIterator it =
        QRegularExpression("tmr_interrupt_flag_get\\(([^)]*)\\)").globalMatch(text.mid(span.start, span.length));
    while (it.hasNext())
        asked.append(it.next().captured(1));
    EXPECT_EQ(asked, (QStringList{"TMR1, TMR_BRK_FLAG", "TMR9, TMR_C2_FLAG"}));
}

// ---- Registers ----

// What the drivers write when the function of a design runs on the host, where registers are memory.
class TimerRegisters : public testing::TestWithParam<SampleFamily>, public DesignCode
{
protected:
    using Registers = QMap<QString, quint32>;

    struct Case
    {
        QString instance;
        QMap<QString, QString> set; ///< parameters as the design took them
        double overflowHz = 0;      ///< as shown
        double deadTimeNs = 0;
        double clockHz = 0;
        QString code;
    };

    static constexpr int CasesOfATimer = 12;

    int number(int least, int most) { return std::uniform_int_distribution<int>(least, most)(m_random); }

    void take(Case &made, const QString &parameter, const QString &value)
    {
        if (!shown(made.instance, parameter).isEmpty() &&
            apply("param/" + made.instance + '/' + parameter + '=' + value))
            made.set[parameter] = value;
    }
    QString oneOf(const QStringList &values) { return values.at(number(0, values.size() - 1)); }

    Case randomCase(const QString &instance)
    {
        Case made;
        made.instance = instance;
        EXPECT_TRUE(apply("mode/" + instance + "/Activated=TRUE"));
        for (int channel = 1; channel <= 4; ++channel) {
            const QString mode = oneOf({"PWM_Generation", "PWM_Generation", "PWM_Generation_No_Output"});
            apply(QStringLiteral("mode/%1/Channel%2_mode=%3").arg(instance).arg(channel).arg(mode));
            if (number(0, 1))
                apply(QStringLiteral("mode/%1/Channel%2C_output=TRUE").arg(instance).arg(channel));
        }
        if (number(0, 1) && !apply("mode/" + instance + "/Activate_Break_Input=TRUE"))
            apply("mode/" + instance + "/Activate_Break_Input=Pin");
        const int period = number(1, 65535);
        take(made, "Period", QString::number(period));
        take(made, "DividerValue", QString::number(number(0, 1) ? number(0, 20) : number(0, 65535)));
        take(made, "CounterDirection",
             oneOf({"TMR_COUNT_UP", "TMR_COUNT_DOWN", "TMR_COUNT_TWO_WAY_1", "TMR_COUNT_TWO_WAY_2",
                    "TMR_COUNT_TWO_WAY_3"}));
        take(made, "ClockDivision", oneOf({"TMR_CLOCK_DIV1", "TMR_CLOCK_DIV2", "TMR_CLOCK_DIV4"}));
        take(made, "RepetitionCounter", QString::number(number(0, 255)));
        take(made, "DeadTime", QString::number(number(0, 255)));
        take(made, "BrakePolarity", oneOf({"TMR_BRK_INPUT_ACTIVE_LOW", "TMR_BRK_INPUT_ACTIVE_HIGH"}));
        for (const char *name : {"OneCycleMode", "PeriodBuffer", "OutputEnable", "AutoOutputEnable"})
            take(made, name, oneOf({"TRUE", "FALSE"}));
        for (int channel = 1; channel <= 4; ++channel) {
            const QString of = QStringLiteral("_CH%1").arg(channel);
            take(made, "ChannelValue" + of, QString::number(number(0, period)));
            take(made, "OutputMode" + of, oneOf({"TMR_OUTPUT_CONTROL_PWM_MODE_A", "TMR_OUTPUT_CONTROL_PWM_MODE_B"}));
            take(made, "OutputBuffer" + of, oneOf({"TRUE", "FALSE"}));
            for (const QString &output : {of, of + 'C'}) {
                take(made, "OutputPolarity" + output, oneOf({"TMR_OUTPUT_ACTIVE_HIGH", "TMR_OUTPUT_ACTIVE_LOW"}));
                take(made, "IdleState" + output, oneOf({"TRUE", "FALSE"}));
            }
        }
        made.overflowHz = shown(instance, "OverflowFrequency").toDouble();
        made.deadTimeNs = shown(instance, "DeadTimeValue").toDouble();
        made.clockHz = m_design.clock().Get_Peripherals_Clock(instance) * 1e6;
        made.code = function(instance);
        return made;
    }

    // Runs the functions one after the other, each on cleared memory.
    QList<Registers> run(const QList<Case> &cases)
    {
        const FirmwarePackage package(GetParam().folder);
        QString source =
            "#define _GNU_SOURCE\n#include <stdio.h>\n#include <string.h>\n#include <sys/mman.h>\n#include \"" +
            package.deviceHeader() + "\"\n";
        QString calls;
        for (int i = 0; i < cases.size(); ++i) {
            const QString timer = cases.at(i).instance;
            const QString own = QStringLiteral("case_%1(void)").arg(i);
            source += "static " + QString(cases.at(i).code)
                                      .replace("lm_" + timer.toLower() + "_init(void)", own)
                                      .remove(QRegularExpression("^/\\*\\*.*?\\*/\n",
                                                                 QRegularExpression::DotMatchesEverythingOption));
            calls +=
                QStringLiteral("  memset((void *)%1, 0, sizeof *%1);\n  case_%2();\n  show(%1);\n").arg(timer).arg(i);
        }
        source += R"(
static void show(const tmr_type *t)
{
  printf("ctrl=%u link=%u sub=%u iden=%u cctrl=%u ", t->ctrl, t->link, t->sub, t->iden, t->cctrl);
  printf("pr=%u div=%u rpr=%u brk=%u ", t->pr, t->div, t->rpr, t->brk);
  for(int i = 0; i < 4; i++)
    printf("cm%d=%u cdt%d=%u ", i + 1, t->cm[i], i + 1, t->cdt[i]);
  printf("\n");
}

int main(void)
{
  void *const base = (void *)0x40000000;

  if(mmap(base, 0x40000, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0) != base)
    return 2;
)" + calls + "  return 0;\n}\n";
        const QTemporaryDir folder;
        EXPECT_TRUE(writeFile(folder.filePath("cases.c"), source));
        const QString complaints = package.buildOnHost(
            {folder.filePath("cases.c"), package.driver("tmr"), package.driver("gpio"), package.driver("crm")},
            folder.filePath("cases"));
        EXPECT_TRUE(complaints.isEmpty()) << qPrintable(complaints);
        QList<Registers> found;
        for (const QString &line :
             FirmwarePackage::output(folder.filePath("cases"), {}).split('\n', Qt::SkipEmptyParts)) {
            Registers registers;
            for (const QString &entry : line.split(' ', Qt::SkipEmptyParts))
                registers[entry.section('=', 0, 0)] = entry.section('=', 1).toUInt();
            found.append(registers);
        }
        return found;
    }

    // The share of a period in which the level of an output is high, by walking the counter as the driver's header
    // tells.
    static double highShare(const Registers &registers, int channel)
    {
        const quint32 period = registers["pr"], value = registers[QStringLiteral("cdt%1").arg(channel)];
        const quint32 mode = registers[QStringLiteral("cm%1").arg(channel)] >> 8 & 0x7;
        const bool low = registers["cctrl"] >> (8 * (channel - 1)) & 0x2;
        const bool bothWays = (registers["ctrl"] >> 1 & 0x7) >= 2;
        quint64 high = 0, steps = 0;
        for (quint32 counter = 0; counter <= period; ++counter) {
            // up and down, each value but the two ends comes twice
            const int times = bothWays && counter != 0 && counter != period ? 2 : 1;
            const bool active = (mode == 6) == (counter < value);
            steps += times;
            high += active != low ? times : 0;
        }
        return double(high) / steps;
    }

    static double deadTimeNs(const Registers &registers, double clockHz)
    {
        const quint32 code = registers["brk"] & 0xFF;
        const double step = (1 << (registers["ctrl"] >> 8 & 0x3)) / clockHz * 1e9;
        if (code < 0x80)
            return step * code;
        if (code < 0xC0)
            return step * 2 * (64 + (code & 0x3F));
        return step * (code < 0xE0 ? 8 : 16) * (32 + (code & 0x1F));
    }

    void compare(const Case &made, const Registers &registers)
    {
        const auto is = [&](const QString &parameter, const char *token) { return made.set.value(parameter) == token; };
        const auto value = [&](const QString &parameter) { return made.set.value(parameter).toUInt(); };
        EXPECT_EQ(registers["ctrl"] & 1, 1u);
        EXPECT_EQ(registers["pr"], value("Period"));
        const bool bothWays = (registers["ctrl"] >> 1 & 0x7) >= 2;
        const double steps = bothWays ? 2.0 * registers["pr"] : registers["pr"] + 1.0;
        EXPECT_NEAR(made.clockHz / (registers["div"] + 1.0) / steps, made.overflowHz, 0.0006);
        EXPECT_EQ(registers["rpr"], value("RepetitionCounter"));
        EXPECT_EQ((registers["ctrl"] >> 7 & 1) != 0, is("PeriodBuffer", "TRUE"));
        if (made.set.contains("DeadTime")) {
            EXPECT_NEAR(deadTimeNs(registers, made.clockHz), made.deadTimeNs, 0.0006);
            EXPECT_EQ((registers["brk"] >> 12 & 1) != 0, made.set.contains("BrakePolarity"));
            EXPECT_EQ((registers["brk"] >> 13 & 1) != 0, is("BrakePolarity", "TMR_BRK_INPUT_ACTIVE_HIGH"));
            EXPECT_EQ((registers["brk"] >> 14 & 1) != 0, is("AutoOutputEnable", "TRUE"));
        }
        bool anyOutput = false;
        for (int channel = 1; channel <= 4; ++channel) {
            SCOPED_TRACE(channel);
            const QString of = QStringLiteral("_CH%1").arg(channel);
            const quint32 switches = registers["cctrl"] >> (8 * (channel - 1));
            const quint32 mode = registers[QStringLiteral("cm%1").arg(channel)];
            // PWM without a pin is there for others in the chip, but drives no pin beside another peripheral, and
            // leaves a complementary output as it is.
            const bool unseen = made.set.value("OutputMode" + of).contains("PWM") &&
                                !made.set.contains("OutputPolarity" + of + 'C') &&
                                GetParam().folder != QLatin1String("ZV32F403A_407");
            EXPECT_EQ(switches & 0x01, unseen || made.set.contains("OutputPolarity" + of) ? 0x01u : 0u);
            EXPECT_EQ(switches & 0x08, made.set.contains("OutputPolarity" + of + 'C') ? 0x08u : 0u);
            EXPECT_EQ(switches & 0x10, is("OutputPolarity" + of + 'C', "TMR_OUTPUT_ACTIVE_LOW") ? 0x10u : 0u);
            EXPECT_EQ((mode >> 14 & 1) != 0, is("IdleState" + of, "TRUE"));
            EXPECT_EQ((mode >> 15 & 1) != 0, is("IdleState" + of + 'C', "TRUE"));
            EXPECT_EQ((mode >> 11 & 1) != 0, is("OutputBuffer" + of, "TRUE"));
            anyOutput = anyOutput || (switches & 0x09) != 0 || made.set.contains("OutputMode" + of);
            if (!made.set.contains("OutputPolarity" + of))
                continue;
            // What a person reads from the page: compare value over period, turned round by mode B and by polarity.
            const double below =
                bothWays ? qMax(0.0, 2.0 * value("ChannelValue" + of) - 1) / steps : value("ChannelValue" + of) / steps;
            const bool turned = is("OutputMode" + of, "TMR_OUTPUT_CONTROL_PWM_MODE_B") !=
                                is("OutputPolarity" + of, "TMR_OUTPUT_ACTIVE_LOW");
            EXPECT_NEAR(highShare(registers, channel), turned ? 1 - below : below, 1e-9);
        }
        if (made.set.contains("OutputEnable")) {
            EXPECT_EQ((registers["brk"] >> 15 & 1) != 0, is("OutputEnable", "TRUE") && anyOutput);
        }
    }

    std::mt19937 m_random{20240607};
};

TEST_P(TimerRegisters, SayWhatThePageShows)
{
    const SampleFamily &family = GetParam();
    ASSERT_TRUE(open(family.folder, family.series, family.device, family.package));
    for (const char *setting :
         {"mode/CRM/HEXT=HEXT-External-Oscillator", "clock/hext=8", "clock/pllrcs=HEXT", "clock/sclk=120"})
        ASSERT_TRUE(apply(setting)) << setting;
    const DesignSnapshot empty = m_design.snapshot();
    QList<Case> cases;
    int channels = 0, deadTimes = 0;
    for (const PeripheralsBaseInfo &entry : m_design.peripherals()) {
        for (int i = 0; entry.InstanceName.startsWith("TMR") && i < CasesOfATimer; ++i) {
            ASSERT_TRUE(m_design.restore(empty));
            cases.append(randomCase(entry.InstanceName));
            for (auto it = cases.last().set.begin(); it != cases.last().set.end(); ++it)
                channels += it.key().startsWith("ChannelValue_CH");
            deadTimes += cases.last().deadTimeNs > 0;
        }
    }
    EXPECT_GT(channels, 100);
    EXPECT_GT(deadTimes, 15);
    const QList<Registers> registers = run(cases);
    ASSERT_EQ(registers.size(), cases.size());
    for (int i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(qPrintable(cases.at(i).code));
        compare(cases.at(i), registers.at(i));
        if (HasFailure())
            break; // one function tells enough
    }
}

// What drives the counter from outside, and what a channel takes in.
TEST_P(TimerRegisters, HoldTheInputs)
{
    struct Row
    {
        QStringList modes, parameters;
        Registers expected;
    };
    const QList<Row> rows{
        {{"Combined_Channels=Encoder_Mode"},
         {"EncoderMode=TMR_ENCODER_MODE_A", "EncoderPolarity_CH2=TMR_INPUT_FALLING_EDGE", "EncoderFilter_CH1=5"},
         {{"sub", 0x1}, {"cm1", 0x51}, {"cm2", 0x01}, {"cctrl", 0x0301}, {"ctrl", 0x1}}},
        {{"Combined_Channels=PWM_Input"},
         {"PWMInputPolarity=TMR_INPUT_FALLING_EDGE", "PWMInputFilter=3", "Interrupt_PWMInputPulse=TRUE"},
         {{"sub", 0x54}, {"cm1", 0x31}, {"cm2", 0x32}, {"cctrl", 0x0103}, {"iden", 0x4}}},
        {{"Combined_Channels=Hall_Sensor"},
         {"HallFilter=2", "Interrupt_HallChange=TRUE"},
         {{"sub", 0x44}, {"link", 0x10}, {"cm1", 0x23}, {"cctrl", 0x01}, {"iden", 0x2}}},
        {{"Subordinate mode=Hang", "Sub-mode input selection=EXT"},
         {"SubModeInput_EXT_divider=TMR_ES_FREQUENCY_DIV_4", "SubModeInput_EXT_polarity=TMR_ES_POLARITY_INVERTED",
          "SubModeInput_EXT_filter=9"},
         {{"sub", 0x6975}, {"ctrl", 0x1}}},
        {{"Subordinate mode=External_Clock_A", "Sub-mode input selection=C1INC"},
         {"SubModeInput_C1INC_filter=1"},
         {{"sub", 0x47}, {"cm1", 0x11}, {"cctrl", 0x07}}},
        {{"Subordinate mode=Trigger", "Sub-mode input selection=C2DF2"},
         {"SubModeInput_C2DF2_filter=4", "SubModeInput_C2DF2_polarity=TMR_INPUT_FALLING_EDGE"},
         {{"sub", 0x66}, {"cm2", 0x41}, {"cctrl", 0x0300}, {"ctrl", 0x0}}}, // the trigger starts it
        {{"Clock_source=External_Clock_B"},
         {"ExternalClockDivider=TMR_ES_FREQUENCY_DIV_8", "ExternalClockFilter=1"},
         {{"sub", 0xB100}}},
        {{"Subordinate mode=Reset", "Sub-mode input selection=IS1", "Channel2_mode=Input_Capture"},
         {"InputMapping_CH2=TMR_CC_CHANNEL_MAPPED_STI", "InputPolarity_CH2=TMR_INPUT_BOTH_EDGE",
          "InputDivider_CH2=TMR_CHANNEL_INPUT_DIV_8", "InputFilter_CH2=15", "PrimaryTMROutput=TMR_PRIMARY_SEL_OVERFLOW",
          "SubTMRSync=TRUE"},
         {{"sub", 0x14}, {"cm2", 0xFF}, {"cctrl", 0x0700}, {"link", 0xA}}},
        {{"Channel3_mode=Forced_Output", "One_Cycle_Mode=TRUE", "Output_Channel_Switch=TRUE"},
         {"OutputMode_CH3=TMR_OUTPUT_CONTROL_FORCE_HIGH", "OutputSwitch_CH3=TRUE", "OverflowRequestSource=TRUE"},
         {{"cm3", 0x2500}, {"cctrl", 0x010000}, {"link", 0x80}, {"ctrl", 0x61}}},
    };
    const SampleFamily &family = GetParam();
    ASSERT_TRUE(open(family.folder, family.series, family.device, family.package));
    const DesignSnapshot empty = m_design.snapshot();
    QList<Case> cases;
    for (const Row &row : rows) {
        ASSERT_TRUE(m_design.restore(empty));
        for (const QString &mode : QStringList{"Activated=TRUE"} + row.modes)
            EXPECT_TRUE(apply("mode/TMR3/" + mode)) << qPrintable(mode);
        for (const QString &parameter : row.parameters)
            EXPECT_TRUE(apply("param/TMR3/" + parameter)) << qPrintable(parameter);
        Case made;
        made.instance = "TMR3";
        made.code = function("TMR3");
        cases.append(made);
    }
    const QList<Registers> found = run(cases);
    ASSERT_EQ(found.size(), rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        for (auto expected = rows.at(i).expected.begin(); expected != rows.at(i).expected.end(); ++expected)
            EXPECT_EQ(found.at(i)[expected.key()], expected.value())
                << std::hex << expected.value() << ' ' << qPrintable(expected.key() + '\n' + cases.at(i).code);
    }

    // An input cannot compare: the complementary output goes with the capture, and comes back without it.
    ASSERT_TRUE(m_design.restore(empty));
    for (const char *setting : {"Activated=TRUE", "Channel1_mode=Input_Capture"})
        EXPECT_TRUE(apply(QLatin1String("mode/TMR1/") + setting));
    EXPECT_FALSE(apply("mode/TMR1/Channel1C_output=TRUE"));
    EXPECT_TRUE(apply("mode/TMR1/Channel1_mode=PWM_Generation_No_Output"));
    EXPECT_TRUE(apply("mode/TMR1/Channel1C_output=TRUE"));
}

INSTANTIATE_TEST_SUITE_P(Families, TimerRegisters, testing::ValuesIn(sampleFamilies()), nameOfFamily);

} // namespace
