#include "ClockConfig/ZV32PLLConfig.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/TextEngine.h"

namespace ChipLoom {

namespace {

QString clockSource(const DeclaredGenerator &generator)
{
    const ZV32PLLConfig *clock = generator.clock();
    if (!clock || !clock->getMCUPLL())
        return {};
    // Where HEXT passes a divider of its own, one literal says both.
    const ZV32ConfigCLK &values = clock->getMCUPLL()->clock();
    return values.series().rtcDivider && values.Get_RTCSEL() == RTCSEL_HEXT
               ? clock->GenerateCode_Get_ERTC_Div()
               : clock->GenerateCode_Get_ERTC_ClockSource();
}

// The alarm counts from the present second, so that it stays true where the calendar is not set anew.
bool alarmSeconds(const DeclaredGenerator &generator, std::string &work)
{
    return rewriteAll(work, QStringLiteral(R"(rtc_counter_get\(\) \+ \w+\))"),
                      QLatin1String("rtc_counter_get() + ") +
                          generator.Get_DefineString_Param(QStringLiteral("AlarmSeconds")) + QLatin1Char(')'));
}

// The driver masks up to 511 pulses in 32 seconds and can add 512 to that: fewer than none become the rest of these.
std::string smoothCalibration(const DeclaredGenerator &generator, const QStringList &)
{
    const int masked = generator.Get_DefineString_Param(QStringLiteral("CalibrationPulses")).toInt();
    return callText(
        QStringLiteral("ertc_smooth_calibration_config"),
        {masked < 0 ? QStringLiteral("ERTC_SMOOTH_CAL_CLK_ADD_512") : QStringLiteral("ERTC_SMOOTH_CAL_CLK_ADD_0"),
         QString::number(masked < 0 ? masked + 512 : masked)});
}

QString alarmDay(const DeclaredGenerator &generator)
{
    const bool byWeek =
        generator.Get_DefineString_Param(QStringLiteral("AlarmDateMode_A")) == QLatin1String("ERTC_SLECT_WEEK");
    const QString day =
        generator.Get_DefineString_Param(byWeek ? QStringLiteral("AlarmWeek_A") : QStringLiteral("AlarmDay_A"));
    return day.isEmpty() ? QStringLiteral("1") : day; // the day is not compared
}

// Each event has a line of EXINT; an attack and the time stamp share one.
const QStringList TamperInterrupts{"Interrupt_TS", "Interrupt_TP"};
const QStringList ErtcInterrupts{"Interrupt_ALA", "Interrupt_WAT", "Interrupt_TS", "Interrupt_TP"};

const TopicTest FirstTamper = isOneOf("TamperPin", {"ERTC_TAMPER_1"});

} // namespace

const PeripheralTopics &ertcTopics()
{
    static const PeripheralTopics topics{
        .kind = "ERTC",
        .function =
            {
                section("GenerateCode_ERTC_exint", "exint declaration", isTrue(ErtcInterrupts)),
                call("GenerateCode_ERTC_clock", "crm_ertc_clock_select", {computed(&clockSource)}),
                call("GenerateCode_ERTC_divider", "ertc_divider_set", {"DivA", "DivB"}),
                section("GenerateCode_ERTC_calibration", "smooth calibration", isTrue("SmoothCalibration"),
                        {rewritten("GenerateCode_ERTC_calibration", "ertc_smooth_calibration_config", 2,
                                   &smoothCalibration)}),
                section("GenerateCode_ERTC_calendar", "calendar", isGiven("HourMode"),
                        {call("GenerateCode_ERTC_calendar", "ertc_hour_mode_set", {"HourMode"}),
                         call("GenerateCode_ERTC_calendar", "ertc_date_set", {"Year", "Month", "Date", "Week"}),
                         call("GenerateCode_ERTC_calendar", "ertc_time_set",
                              {"Hour", "Minute", "Second", orSample("AMPM")})}),
                section("GenerateCode_ERTC_alarm", "alarm a", isGiven("AlarmMask_A"),
                        {call("GenerateCode_ERTC_alarm", "ertc_alarm_mask_set", {"AlarmMask_A"}),
                         call("GenerateCode_ERTC_alarm", "ertc_alarm_week_date_select", {orSample("AlarmDateMode_A")}),
                         call("GenerateCode_ERTC_alarm", "ertc_alarm_set",
                              {computed(&alarmDay), orSample("AlarmHour_A"), orSample("AlarmMinute_A"),
                               orSample("AlarmSecond_A"), orSample("AlarmAMPM_A")})}),
                section("GenerateCode_ERTC_wakeup", "wake up timer", isGiven("WakeUpClock"),
                        {call("GenerateCode_ERTC_wakeup", "ertc_wakeup_clock_set", {"WakeUpClock"}),
                         call("GenerateCode_ERTC_wakeup", "ertc_wakeup_counter_set", {"WakeUpCounter"})}),
                section("GenerateCode_ERTC_timestamp", "time stamp", isGiven("TimeStampSource"),
                        {call("GenerateCode_ERTC_timestamp", "ertc_timestamp_pin_select", {"TimeStampSource"}),
                         call("GenerateCode_ERTC_timestamp", "ertc_timestamp_valid_edge_set", {"TimeStampEdge"})}),
                section("GenerateCode_ERTC_tamper", "tamper", isGiven("TamperPin"),
                        {call("GenerateCode_ERTC_tamper", "ertc_tamper_pull_up_enable", {"TamperPullUp"}),
                         call("GenerateCode_ERTC_tamper", "ertc_tamper_timestamp_enable", {"TamperStamp"}),
                         call("GenerateCode_ERTC_tamper", "ertc_tamper_valid_edge_set", {"TamperPin", "TamperEdge"}),
                         call("GenerateCode_ERTC_tamper", "ertc_tamper_enable", {"TamperPin", Keep})}),
                section("GenerateCode_ERTC_output", "calibration output", isGiven("CalibrationOutput"),
                        {call("GenerateCode_ERTC_output", "ertc_cal_output_select", {"CalibrationOutput"})}),
                section("GenerateCode_ERTC_output", "event output", isGiven("EventOutput"),
                        {call("GenerateCode_ERTC_output", "ertc_output_set",
                              {"EventOutput", "OutputPolarity", "OutputType"})}),
                interruptEnable("Interrupt_ALA"),
                interruptEnable("Interrupt_WAT"),
                interruptEnable("Interrupt_TS"),
                interruptEnable("Interrupt_TP"),
                section("GenerateCode_ERTC_exint", "exint lines", isTrue(ErtcInterrupts),
                        {section("GenerateCode_ERTC_exint", "alarm line", isTrue("Interrupt_ALA")),
                         section("GenerateCode_ERTC_exint", "wake up line", isTrue("Interrupt_WAT")),
                         section("GenerateCode_ERTC_exint", "tamper line", isTrue(TamperInterrupts))}),
                interruptRemarks(),
            },
        .branches = {{"_ALAF_FLAG", isTrue("Interrupt_ALA")},
                     {"_WATF_FLAG", isTrue("Interrupt_WAT")},
                     {"_TSF_FLAG", isTrue("Interrupt_TS")},
                     {"_TP1F_FLAG", both(isTrue("Interrupt_TP"), FirstTamper)},
                     {"_TP2F_FLAG", both(isTrue("Interrupt_TP"), isOneOf("TamperPin", {"ERTC_TAMPER_2"}))}},
    };
    return topics;
}

const PeripheralTopics &rtcTopics()
{
    static const PeripheralTopics topics{
        .kind = "RTC",
        .function =
            {
                // The tamper input works without a running clock.
                section("GenerateCode_RTC_clock", "clock", isGiven("Divider"),
                        {call("GenerateCode_RTC_clock", "crm_rtc_clock_select", {computed(&clockSource)}),
                         call("GenerateCode_RTC_divider", "rtc_divider_set", {"Divider"})}),
                section("GenerateCode_RTC_calendar", "calendar", isGiven("Year"),
                        {call("GenerateCode_RTC_calendar", "rtc_calendar_set",
                              {"Year", "Month", "Date", "Hour", "Minute", "Second"})}),
                section("GenerateCode_RTC_alarm", "alarm", isGiven("AlarmSeconds"),
                        {edit("GenerateCode_RTC_alarm", &alarmSeconds)}),
                section("GenerateCode_RTC_output", "output", isGiven("OutputSelect"),
                        {call("GenerateCode_RTC_output", "bpr_rtc_output_select", {"OutputSelect"})}),
                line("GenerateCode_RTC_calibration", "bpr_rtc_clock_calibration_value_set", isGiven("CalibrationValue"),
                     {"CalibrationValue"}),
                section("GenerateCode_RTC_tamper", "tamper", isGiven("TamperLevel"),
                        {call("GenerateCode_RTC_tamper", "bpr_tamper_pin_active_level_set", {"TamperLevel"})}),
                interruptEnable("Interrupt_TS"),
                interruptEnable("Interrupt_TA"),
                interruptEnable("Interrupt_OVF"),
                interruptEnable("Interrupt_TP"),
                interruptRemarks(),
            },
        .branches = {{"_TS_FLAG", isTrue("Interrupt_TS")},
                     {"_TA_FLAG", isTrue("Interrupt_TA")},
                     {"_OVF_FLAG", isTrue("Interrupt_OVF")},
                     {"_TA_EXINT_FLAG", isGiven("AlarmSeconds")},
                     {"_TPF_FLAG", isTrue("Interrupt_TP")}},
    };
    return topics;
}

} // namespace ChipLoom
