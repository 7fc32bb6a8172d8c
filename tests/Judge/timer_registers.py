"""What the registers of timers hold; see registers.py."""

from registers import ALL, Kind, Row, given

def timer_rows():
    rows = [
        Row("ctrl", "TMR_CTRL_EN", lambda v: int(v.text("TMR_SubMode_Control") != "TMR_SUB_TRIGGER_MODE")),
        Row("ctrl", "TMR_CTRL_DIR", "CounterDirection"),
        Row("ctrl", "TMR_CTRL_OVFDIS", "OverflowEventDisable"),
        Row("ctrl", "TMR_CTRL_OVFSRC", "OverflowRequestSource"),
        Row("ctrl", "TMR_CTRL_ONECYCLE", "OneCycleMode"),
        Row("ctrl", "TMR_CTRL_PRBUF", "PeriodBuffer"),
        Row("ctrl", "TMR_CTRL_CLKDIV", "ClockDivision"),
        Row("link", "TMR_LINK_PRIMARY", "PrimaryTMROutput"),
        Row("link", "TMR_LINK_SYNC", "SubTMRSync"),
        Row("link", "TMR_LINK_XOR", "XOR_Enable"),
        Row("link", "TMR_LINK_CCBUF", "ChannelBuffer"),
        Row("link", "TMR_LINK_CCREF", "ChannelControlBitRefresh"),
        Row("link", "TMR_LINK_SWSEL", lambda v: int(any(v[f"OutputSwitch_CH{n}"] for n in range(1, 5)))),
        Row("sub", "TMR_SUB_MODE", timer_sub_mode),
        Row("sub", "TMR_SUB_INPUT", timer_sub_input),
        Row("sub", "TMR_SUB_ESDIV", lambda v: v["ExternalClockDivider"] or v["SubModeInput_EXT_divider"]),
        Row("sub", "TMR_SUB_ESPOL", lambda v: v["ExternalClockPolarity"] or v["SubModeInput_EXT_polarity"]),
        Row("sub", "TMR_SUB_ESFILTER", lambda v: v["ExternalClockFilter"] or v["SubModeInput_EXT_filter"]),
        Row("sub", "TMR_SUB_ECMB", lambda v: int(v.text("ClockSource") == "TMR_CLOCKSOURCE_EXTMODEB")),
        Row("cval", ALL, lambda v: v["Period"] * int(v.text("CounterDirection") == "TMR_COUNT_DOWN")),
        Row("div", ALL, "DividerValue"),
        Row("pr", ALL, "Period"),
        Row("rpr", ALL, "RepetitionCounter"),
        Row("iden", ALL, timer_events),
        Row("brk", "TMR_BRK_DTC", "DeadTime"),
        Row("brk", "TMR_BRK_WP", "WriteProtection"),
        Row("brk", "TMR_BRK_FCSODIS", "FCSODISState"),
        Row("brk", "TMR_BRK_FCSOEN", "FCSOENState"),
        Row("brk", "TMR_BRK_EN", "BrakeEnable"),
        Row("brk", "TMR_BRK_HIGH", lambda v: int(v["BrakeEnable"] and v["BrakePolarity"])),
        Row("brk", "TMR_BRK_AOEN", "AutoOutputEnable"),
        Row("brk", "TMR_BRK_OEN", lambda v: int(v["OutputEnable"] and any(
            f"{name}_CH{n}{c}" in v for n in range(1, 5) for name, c in
            (("OutputMode", ""), ("OutputPolarity", "C"))))),
    ]
    for n in range(1, 5):
        mode, shift = f"cm[{n - 1}]", f"<< {8 * (n - 1)}"
        for bits, key in (("TMR_CM_MAP", "mapping"), ("TMR_CM_IDIV", "divider"), ("TMR_CM_IFILTER", "filter")):
            rows.append(Row(mode, bits, lambda v, n=n, key=key: timer_input(v, n).get(key, 0)))
        rows += [
            Row(mode, "TMR_CM_OMODE", f"OutputMode_CH{n}"),
            Row(mode, "TMR_CM_OBUF", f"OutputBuffer_CH{n}"),
            Row(mode, "TMR_CM_OFAST", f"OutputImmediately_CH{n}"),
            Row(mode, "TMR_CM_OSWITCH", f"OutputSwitch_CH{n}"),
            Row(mode, "TMR_CM_IDLE", f"IdleState_CH{n}"),
            Row(mode, "TMR_CM_CIDLE", f"IdleState_CH{n}C"),
            Row("cctrl", f"TMR_CCTRL_EN {shift}",
                lambda v, n=n: int(bool(timer_input(v, n)) or f"OutputPolarity_CH{n}" in v or drives_unseen(v, n))),
            Row("cctrl", f"TMR_CCTRL_POL {shift}",
                lambda v, n=n: timer_input(v, n).get("edge", v[f"OutputPolarity_CH{n}"])),
            Row("cctrl", f"TMR_CCTRL_CEN {shift}", given(f"OutputPolarity_CH{n}C")),
            Row("cctrl", f"TMR_CCTRL_CPOL {shift}", f"OutputPolarity_CH{n}C"),
            Row(f"cdt[{n - 1}]", ALL, f"ChannelValue_CH{n}"),
        ]
    return rows


def drives_unseen(v, n):
    """PWM without any pin, where it does not stand beside another function on the channel's."""
    return (not v.outcome.chip.groups and "PWM" in v.text(f"OutputMode_CH{n}")
            and f"OutputPolarity_CH{n}C" not in v)


def timer_input(v, n):
    """What an input channel is set to, or nothing for another channel."""
    rising, falling, both = (v.constant(f"TMR_INPUT_{edge}_EDGE") for edge in ("RISING", "FALLING", "BOTH"))
    direct, indirect, trigger = 1, 2, 3
    if f"InputPolarity_CH{n}" in v:
        return {"mapping": v[f"InputMapping_CH{n}"], "divider": v[f"InputDivider_CH{n}"],
                "filter": v[f"InputFilter_CH{n}"], "edge": v[f"InputPolarity_CH{n}"]}
    if "EncoderMode" in v and n <= 2:
        return {"mapping": direct, "filter": v[f"EncoderFilter_CH{n}"], "edge": v[f"EncoderPolarity_CH{n}"]}
    if "PWMInputPolarity" in v and n <= 2:
        edge = v["PWMInputPolarity"]
        return {"mapping": direct if n == 1 else indirect, "filter": v["PWMInputFilter"],
                "edge": edge if n == 1 else rising + falling - edge}
    if v["XOR_Enable"] and n == 1:
        return {"mapping": trigger, "filter": v["HallFilter"], "edge": rising}
    form = {"TMR_SUB_INPUT_SEL_C1INC": (1, "C1INC"), "TMR_SUB_INPUT_SEL_C1DF1": (1, "C1DF1"),
            "TMR_SUB_INPUT_SEL_C2DF2": (2, "C2DF2")}.get(v.text("SubModeInput"))
    if form and form[0] == n:
        name = f"SubModeInput_{form[1]}"
        return {"mapping": direct, "filter": v[f"{name}_filter"],
                "edge": both if form[1] == "C1INC" else v[f"{name}_polarity"]}
    return {}


def timer_sub_mode(v):
    if "PWMInputPolarity" in v or v["XOR_Enable"]:
        return v.constant("TMR_SUB_RESET_MODE")
    return v["EncoderMode"] or v["TMR_SubMode_Control"]


def timer_sub_input(v):
    if "PWMInputPolarity" in v:
        return v.constant("TMR_SUB_INPUT_SEL_C1DF1")
    return v.constant("TMR_SUB_INPUT_SEL_C1INC") if v["XOR_Enable"] else v["SubModeInput"]


def timer_events(v):
    interrupts = {"Overflow": "OVF", "Brake": "BRK", "Trigger": "TRIGGER", "Hall": "HALL", "PWMInputPeriod": "C1",
                  "PWMInputPulse": "C2", "HallChange": "C1", **{f"CH{n}": f"C{n}" for n in range(1, 5)}}
    requests = {"_OVERFLOW": "OVERFLOW", "_TRIG": "TRIGGER", "_HALL": "HALL",
                **{f"_CH{n}": f"C{n}" for n in range(1, 5)}}
    word = 0
    for name, bit in interrupts.items():
        word |= v.constant(f"TMR_{bit}_INT") if v[f"Interrupt_{name}"] else 0
    for event, bit in requests.items():
        word |= v.constant(f"TMR_{bit}_DMA_REQUEST") if v.requested(event) else 0
    return word


def timer_results(v):
    """The frequency and the dead time that the window shows follow from the registers."""
    ahb, bus = v.outcome.clocks[1], v.bus_clock
    clock = bus if bus == ahb else 2 * bus
    two_way = v["CounterDirection"] >= v.constant("TMR_COUNT_TWO_WAY_1")
    steps = 2 * v.word("pr") if two_way else v.word("pr") + 1
    if steps and "OverflowFrequency" in v:
        v.near("overflow frequency", clock / (v.word("div") + 1) / steps, v.real("OverflowFrequency"))
    if "DeadTimeValue" in v:
        code = v.word("brk") & v.constant("TMR_BRK_DTC")
        step = (1 << v["ClockDivision"]) / clock * 1e9
        count = (code if code < 128 else (64 + (code & 63)) * 2 if code < 192 else
                 (32 + (code & 31)) * (8 if code < 224 else 16))
        v.near("dead time", count * step, v.real("DeadTimeValue"))


KINDS = {"TMR": Kind("tmr_type", timer_rows(), check=timer_results)}
