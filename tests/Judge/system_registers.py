"""What the registers of analog parts, watchdogs, real-time clocks and the like hold; see registers.py."""

import datetime

from registers import ALL, Kind, Row, events, given

# ---- Analog ----

def adc_rows():
    parts = lambda v: int(v["OrdinaryPartMode"])
    return [
        Row("ctrl", "ADC_CTRL_EN", lambda v: 1),
        Row("ctrl", "ADC_CTRL_SEQUENCE", "SequenceMode"),
        Row("ctrl", "ADC_CTRL_REPEAT", "RepeatMode"),
        Row("ctrl", "ADC_CTRL_LEFT", "DataAlign"),
        Row("ctrl", "ADC_CTRL_DMA", "OrdinaryDMA"),
        Row("ctrl", "ADC_CTRL_OPART", parts),
        Row("ctrl", "ADC_CTRL_PPART", "PreemptPartMode"),
        Row("ctrl", "ADC_CTRL_PAUTO", "PreemptAutoMode"),
        Row("ctrl", "ADC_CTRL_RES", "ResolutionSelect"),
        Row("trig", "ADC_TRIG_OSEL", "OrdinaryTriggerSource"),
        Row("trig", "ADC_TRIG_OEN", given("OrdinaryTriggerSource")),
        Row("trig", "ADC_TRIG_PSEL", "PreemptTriggerSource"),
        Row("trig", "ADC_TRIG_PEN", given("PreemptTriggerSource")),
        Row("trig", "ADC_TRIG_OEDGE", "OrdinaryTriggerEdge"),
        Row("trig", "ADC_TRIG_PEDGE", "PreemptTriggerEdge"),
        Row("ovsp", "ADC_OVSP_EN", "Oversampling"),
        Row("ovsp", "ADC_OVSP_RATIO", "OversampleRatio"),
        Row("ovsp", "ADC_OVSP_SHIFT", "OversampleShift"),
        Row("sqlen", "ADC_SQLEN_ORDINARY", "NbrOfOrdinarySequence"),
        Row("sqlen", "ADC_SQLEN_PREEMPT", "NbrOfPreemptSequence"),
        Row("sqlen", "ADC_SQLEN_PART", lambda v: v["OrdinaryPartCount"] if parts(v) else 0),
        Row("psq", ALL, lambda v: adc_sequence(v, "Preempt", 0)),
        *(Row(f"osq[{n}]", ALL, lambda v, n=n: adc_sequence(v, "Ordinary", n)) for n in range(4)),
        *(Row(f"spt[{n}]", ALL, lambda v, n=n: adc_sampling(v, n)) for n in range(3)),
        *(Row(f"pofs[{n - 1}]", ALL, f"PreemptOffset_{n}") for n in range(1, 5)),
        Row("vmon", "ADC_VMON_MODE", "VoltageMonitor"),
        Row("vmon", "ADC_VMON_CHANNEL", "VoltageMonitorChannel"),
        Row("vmhb", ALL, "VoltageMonitorHigh"),
        Row("vmlb", ALL, "VoltageMonitorLow"),
        Row("inten", ALL, events(CCE="ADC_CCE_INT", VMOR="ADC_VMOR_INT", PCCE="ADC_PCCE_INT")),
    ]


def adc_sequence(v, kind, register):
    return sum(v[f"Channel_{kind}Sequence_{4 * register + rank + 1}"] << 8 * rank for rank in range(4))


def adc_sampling(v, register):
    """The last rank that converts a channel decides its sampling time."""
    times = {}
    for kind, ranks in (("Ordinary", 16), ("Preempt", 4)):
        for rank in range(1, ranks + 1):
            if f"Channel_{kind}Sequence_{rank}" in v:
                times[v[f"Channel_{kind}Sequence_{rank}"]] = v[f"SamplingTime_{kind}Sequence_{rank}"]
    return sum(time << channel % 8 * 4 for channel, time in times.items() if channel // 8 == register)


def adc_combined(v):
    """Where the first converter holds what is common."""
    if v.instance != "ADC1" or "adc_type.comb" not in v.constants:
        return
    v.outcome.expect("combination of the converters", v.word("comb") & v.constant("ADC_COMB_MODE"), v["CombineMode"])
    v.outcome.expect("inner channels", int(v.word("comb") & v.constant("ADC_COMB_INNER") != 0), v["TemperatureVINTRV"])


ADC_COMMON_ROWS = [
    Row("ctrl", "ADC_COMMON_DIV", "ClockDivision"),
    Row("ctrl", "ADC_COMMON_MODE", "CombineMode"),
    Row("ctrl", "ADC_COMMON_INTV", "SampleInterval"),
    Row("ctrl", "ADC_COMMON_DMA", "CommonDMAMode"),
    Row("ctrl", "ADC_COMMON_INNER",
        lambda v: int(v.facts["peripherals"].get("ADC1", {}).get("TemperatureVINTRV") == "TRUE")),
]


def dvp_rows():
    rows = [
        Row("ctrl", "DVP_CTRL_EN", lambda v: 1),
        Row("ctrl", "DVP_CTRL_SINGLE", "CaptureMode"),
        Row("ctrl", "DVP_CTRL_FALLING", "PixelClockEdge"),
        Row("ctrl", "DVP_CTRL_HHIGH", "HorizontalBlanking"),
        Row("ctrl", "DVP_CTRL_VHIGH", "VerticalBlanking"),
        Row("ctrl", "DVP_CTRL_EMBEDDED", "SyncMode"),
        Row("ctrl", "DVP_CTRL_WINDOW", "WindowCrop"),
        Row("ctrl", "DVP_CTRL_WIDTH", "DataWidth"),
        Row("ctrl", "DVP_CTRL_DMA", lambda v: v.requested("")),
        Row("wstart", ALL, lambda v: v["CropX"] | v["CropY"] << 16),
        Row("wsize", ALL, lambda v: v["CropWidth"] | v["CropHeight"] << 16),
        Row("inten", ALL, events(CFD="DVP_CFD_INT", OVR="DVP_OVR_INT", ESE="DVP_ESE_INT", VS="DVP_VS_INT",
                                 HS="DVP_HS_INT")),
    ]
    for index, code in enumerate(("FrameStart", "LineStart", "LineEnd", "FrameEnd")):
        rows.append(Row("codes", f"0xFF << {8 * index}", lambda v, code=code: v.hex(f"{code}Code")))
    for stem, bits in (("Horizontal_Scaling_Resize", "DVP_SCALE_H"), ("Vertical_Scaling_Resize", "DVP_SCALE_V"),
                       ("Frame_Rate_Contorl", "DVP_SCALE_F")):
        rows.append(Row("scale", bits, lambda v, stem=stem: max(0, v[f"{stem}_Source_Factor"] - 1) |
                        max(0, v[f"{stem}_Target_Factor"] - 1) << 5))
    return rows


def dac_rows():
    rows = []
    for n in (1, 2):
        on = lambda v, n=n: int(f"InitialValue_{n}" in v)
        rows += [
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_EN", on),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_UNBUFFERED",
                lambda v, n=n: int(v.text(f"OutputBuffer_{n}") == "FALSE")),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_TRIGGER", f"TriggerSource_{n}"),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_WAVE", f"WaveGeneration_{n}"),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_AMPLITUDE", f"Amplitude_{n}"),
            # The first also by the request of both.
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_DMA", lambda v, n=n: v.requested(str(n), f"{n}_DAC2")),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_LATEINT", f"Interrupt_UDR{n}"),
            Row(f"out[{n - 1}].dth", ALL, f"InitialValue_{n}"),
        ]
    return rows


CMP_ROWS = [
    Row("ctrl", "CMP_CTRL_EN", lambda v: 1),
    Row("ctrl", "CMP_CTRL_SPEED", "Speed"),
    Row("ctrl", "CMP_CTRL_INP", "NonInverting"),
    Row("ctrl", "CMP_CTRL_INM", "Inverting"),
    Row("ctrl", "CMP_CTRL_TARGET", "Target"),
    Row("ctrl", "CMP_CTRL_POL", "Polarity"),
    Row("ctrl", "CMP_CTRL_HYST", "Hysteresis"),
    Row("flt", ALL, "Filter"),
]

# ---- Watchdogs, clocks, power, sums, lines ----

WDT_ROWS = [
    Row("div", ALL, "Prescaler"),
    Row("rld", ALL, "Counter"),
    Row("win", ALL, lambda v: v["Window"] if v["WindowEnable"] else 0),
]

WWDT_ROWS = [
    Row("ctrl", "WWDT_CTRL_EN", lambda v: 1),
    Row("ctrl", "WWDT_CTRL_COUNTER", lambda v: v.hex("Counter")),
    Row("cfg", "WWDT_CFG_WINDOW", lambda v: v.hex("Window")),
    Row("cfg", "WWDT_CFG_DIV", "Prescaler"),
    Row("cfg", "WWDT_CFG_INT", "Interrupt_RLDF"),
]


def wwdt_results(v):
    step = (4096 << (v.word("cfg") >> 7 & 3)) / v.outcome.clocks[2] * 1000
    v.near("time-out", step * ((v.word("ctrl") & 0x7F) - 0x3F), v.real("Time_Timeout"))


def digits(number):
    return number // 10 << 4 | number % 10


def ertc_time(v, suffix=""):
    names = [f"Alarm{name}_A" for name in ("Second", "Minute", "Hour", "AMPM")] if suffix else \
        ["Second", "Minute", "Hour", "AMPM"]
    second, minute, hour, afternoon = (v[name] for name in names)
    return digits(second) | digits(minute) << 8 | digits(hour) << 16 | afternoon << 22


def ertc_alarm(v):
    if "AlarmMask_A" not in v:
        return 0
    masks = v["AlarmMask_A"]
    week = v.text("AlarmDateMode_A") == "ERTC_SLECT_WEEK"
    day = v["AlarmWeek_A"] if week else v["AlarmDay_A"] if "AlarmDay_A" in v else 1
    return (ertc_time(v, "_A") | digits(day) << 24 | week << 30 | (masks >> 3) << 31 | (masks >> 2 & 1) << 23 |
            (masks >> 1 & 1) << 15 | (masks & 1) << 7)


def ertc_tamper(v):
    if "TamperPin" not in v:
        return 0
    place = 4 * v["TamperPin"]
    return (v["TamperPullUp"] << 8 | v["TamperStamp"] << 9 | (1 | v["TamperEdge"] << 1) << place)


ERTC_ROWS = [
    Row("div", ALL, lambda v: v["DivA"] << 16 | v["DivB"]),
    Row("scal", ALL, lambda v: v["CalibrationPulses"] if v["CalibrationPulses"] >= 0 else
        v["CalibrationPulses"] + 512 | v.constant("ERTC_SCAL_ADD")),
    Row("ctrl", "ERTC_CTRL_HOUR12", "HourMode"),
    Row("ctrl", "ERTC_CTRL_ALEN", given("AlarmMask_A")),
    Row("ctrl", "ERTC_CTRL_WATEN", given("WakeUpClock")),
    Row("ctrl", "ERTC_CTRL_WATCLK", "WakeUpClock"),
    Row("ctrl", "ERTC_CTRL_TSEN", given("TimeStampSource")),
    Row("ctrl", "ERTC_CTRL_TSEDGE", "TimeStampEdge"),
    Row("ctrl", "ERTC_CTRL_TSPIN", "TimeStampSource"),
    Row("ctrl", "ERTC_CTRL_CALOEN", given("CalibrationOutput")),
    Row("ctrl", "ERTC_CTRL_CALOSEL", "CalibrationOutput"),
    Row("ctrl", "ERTC_CTRL_OUTSEL", "EventOutput"),
    Row("ctrl", "ERTC_CTRL_OUTP", "OutputPolarity"),
    Row("ctrl", "ERTC_CTRL_OUTTYPE", "OutputType"),
    Row("wat", ALL, "WakeUpCounter"),
    Row("date", ALL, lambda v: digits(v["Date"]) | digits(v["Month"]) << 8 | v["Week"] << 13 | digits(v["Year"]) << 16),
    Row("time", ALL, ertc_time),
    Row("ala", ALL, ertc_alarm),
    Row("tamp", ALL, ertc_tamper),
    Row("inten", ALL, events(ALA="ERTC_ALA_INT", WAT="ERTC_WAT_INT", TS="ERTC_TS_INT", TP="ERTC_TP_INT")),
]

RTC_ROWS = [
    Row("ctrl", ALL, events(TS="RTC_TS_INT", TA="RTC_TA_INT", OVF="RTC_OVF_INT")),
    Row("div", ALL, "Divider"),
]


def rtc_results(v):
    seconds = 0
    if "Year" in v:
        moment = datetime.datetime(*(v[name] for name in ("Year", "Month", "Date", "Hour", "Minute", "Second")))
        seconds = int((moment - datetime.datetime(1970, 1, 1)).total_seconds())
    v.outcome.expect("seconds of RTC", v.word("cnt"), seconds)
    if "AlarmSeconds" in v:
        v.outcome.expect("alarm of RTC", v.word("ta"), seconds + v["AlarmSeconds"] & 0xFFFFFFFF)
    base = v.outcome.chip.bases["BPR"]
    v.outcome.expect("output of RTC", v.outcome.word(base), v["OutputSelect"] | v["CalibrationValue"] << 8)
    tamper = v.outcome.word(base + 4) & 7
    v.outcome.expect("tamper input of RTC", tamper,
                     ("TamperLevel" in v) | v["TamperLevel"] << 1 | v["Interrupt_TP"] << 2)


CRC_ROWS = [
    Row("ctrl", "CRC_CTRL_RESET", lambda v: v.word("ctrl") & 1),
    Row("ctrl", "CRC_CTRL_REVIN", "ReverseInput"),
    Row("ctrl", "CRC_CTRL_REVOUT", "ReverseOutput"),
    Row("ctrl", "CRC_CTRL_POLYSIZE", "CRCPolySize"),
    Row("idt", ALL, lambda v: v.hex("CRCInitValue")),
    Row("poly", ALL, lambda v: v.hex("CRCPolyValue")),
]

PWC_ROWS = [
    Row("ctrl", "PWC_CTRL_PVMEN", given("PVMSelect")),
    Row("ctrl", "PWC_CTRL_PVMSEL", "PVMSelect"),
    Row("ctrl", "PWC_CTRL_BPWEN", lambda v: v.word("ctrl") >> 4 & 1),  # open for the real-time clock
    Row("ctrl", "PWC_CTRL_LDOVOLT", lambda v: v.word("ctrl") >> 8 & 3),  # follows the clock
    Row("wkup", ALL, lambda v: sum(1 << n - 1 for n in range(1, 9) if v[f"WakeUpPin_{n}"])),
]

ACC_ROWS = [
    Row("ctrl", "ACC_CTRL_EN", lambda v: 1),
    Row("ctrl", "ACC_CTRL_TRIM", "CalibrationMode"),
    Row("ctrl", "ACC_CTRL_STEP", "StepTrim"),
    Row("ctrl", "ACC_CTRL_INT", lambda v: events(CALRDY="ACC_CALRDY_INT", EIEN="ACC_EIEN_INT")(v)),
    Row("c1", ALL, "C1"),
    Row("c2", ALL, "C2"),
    Row("c3", ALL, "C3"),
]

KINDS = {
    "ADC": Kind("adc_type", adc_rows(), check=adc_combined, members=("comb", "odt")),
    "ADC-Common": Kind("adc_common_type", ADC_COMMON_ROWS, block=lambda v: "ADCCOM", members=("codt",)),
    "DAC": Kind("dac_type", dac_rows(), members=("dual",)),
    "DVP": Kind("dvp_type", dvp_rows(), members=("dt",)),
    "CMP": Kind("cmp_type", CMP_ROWS),
    "WDT": Kind("wdt_type", WDT_ROWS),
    "WWDT": Kind("wwdt_type", WWDT_ROWS, check=wwdt_results),
    "ERTC": Kind("ertc_type", ERTC_ROWS),
    "RTC": Kind("rtc_type", RTC_ROWS, check=rtc_results, members=("cnt", "ta")),
    "CRC": Kind("crc_type", CRC_ROWS),
    "PWC": Kind("pwc_type", PWC_ROWS),
    "ACC": Kind("acc_type", ACC_ROWS),
}
