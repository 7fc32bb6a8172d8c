"""What the registers of each kind of peripheral hold for its parameters.

A row is a register of the kind, the bits of a field and what stands in it: a parameter (0 where the design has none), or
a function of all values of the instance. Bits are expressions over the constants of the drivers. Bits of a register that
no row names must be clear.
"""

import dataclasses
import datetime
import re
from typing import Callable, NamedTuple

ALL = "0xFFFFFFFF"


class Row(NamedTuple):
    register: str
    bits: str
    value: str | Callable


@dataclasses.dataclass
class Kind:
    type: str
    rows: list
    first: Callable = lambda values: 0      # offset of the registers within the peripheral
    block: Callable = lambda values: values.instance  # whose registers these are
    check: Callable = None                  # compares what is no field


class Values:
    """The parameters of an instance as numbers; what is not there counts as 0."""

    def __init__(self, outcome, facts, instance):
        self.outcome, self.facts, self.instance = outcome, facts, instance
        self.texts = facts["peripherals"][instance]
        self.constants = outcome.chip.constants
        self.number = int(re.search(r"\d*$", instance)[0] or 0)

    def __contains__(self, name):
        return self.texts.get(name, "") != ""

    def __getitem__(self, name):
        return self.value_of(self.texts.get(name, ""))

    def value_of(self, text):
        if text in ("TRUE", "FALSE", ""):
            return int(text == "TRUE")
        if re.fullmatch(r"-?\d+", text):
            return int(text)
        return self.constants[text] if text in self.constants else int(text, 16)

    def hex(self, name):
        return int(self.texts.get(name) or "0", 16)

    def real(self, name):
        return float(self.texts.get(name) or 0)

    def text(self, name):
        return self.texts.get(name, "")

    def constant(self, name):
        return self.constants[name]

    def requested(self, *events):
        """A DMA channel serves one of these requests of the instance."""
        served = {channel["request"] for channel in self.facts["dma"]}
        return int(any(self.instance + event in served for event in events))

    @property
    def bus_clock(self):
        return self.outcome.clocks[2 if self.instance in self.outcome.chip.apb1 else 3]

    def word(self, register):
        chip = self.outcome.chip
        kind = REGISTERS[kind_of(self.instance)]
        return self.outcome.word(chip.bases[kind.block(self)] + kind.first(self) +
                                 chip.constants[f"{kind.type}.{register}"])

    def near(self, what, is_, expected, tolerance=1e-3):
        """What is shown has three digits behind the point."""
        self.outcome.compared += 1
        if abs(is_ - expected) > tolerance * abs(expected) + 6e-4:
            self.outcome.faults.append(f"{what} of {self.instance} is {is_:.6g}, not {expected:.6g} as shown")


def given(*names):
    return lambda values: int(any(name in values for name in names))


def events(**bits):
    """Interrupt enables: the constant of each parameter `Interrupt_<key>`."""
    return lambda values: sum(values.constant(bit) for name, bit in bits.items() if values[f"Interrupt_{name}"])


# ---- Timers ----

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
                lambda v, n=n: int(bool(timer_input(v, n)) or f"OutputPolarity_CH{n}" in v)),
            Row("cctrl", f"TMR_CCTRL_POL {shift}",
                lambda v, n=n: timer_input(v, n).get("edge", v[f"OutputPolarity_CH{n}"])),
            Row("cctrl", f"TMR_CCTRL_CEN {shift}", given(f"OutputPolarity_CH{n}C")),
            Row("cctrl", f"TMR_CCTRL_CPOL {shift}", f"OutputPolarity_CH{n}C"),
            Row(f"cdt[{n - 1}]", ALL, f"ChannelValue_CH{n}"),
        ]
    return rows


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


# ---- Serial ports ----

def usart_rows():
    flags = {"RDBF": "USART_RDBF_INT", "TDBE": "USART_TDBE_INT", "TDC": "USART_TDC_INT", "IDLE": "USART_IDLE_INT",
             "ERR": "USART_ERR_INT", "PERR": "USART_PERR_INT", "BF": "USART_BF_INT", "CTSCF": "USART_CTSCF_INT"}
    return [
        Row("ctrl", "USART_CTRL_UEN", lambda v: 1),
        Row("ctrl", "USART_CTRL_TEN", lambda v: int(v.text("Mode") in ("MODE_TX_RX", "MODE_TX"))),
        Row("ctrl", "USART_CTRL_REN", lambda v: int(v.text("Mode") in ("MODE_TX_RX", "MODE_RX"))),
        Row("ctrl", "USART_CTRL_DBN", "Databitnum"),
        Row("ctrl", "USART_CTRL_STOPBN", "STOPbitnum"),
        Row("ctrl", "USART_CTRL_PSEL", "Parityselection"),
        Row("ctrl", "USART_CTRL_HWFLOW", "HwFlowCtl"),
        Row("ctrl", "USART_CTRL_DMATEN", lambda v: v.requested("_TX")),
        Row("ctrl", "USART_CTRL_DMAREN", lambda v: v.requested("_RX")),
        Row("ctrl", "USART_CTRL_SWAP", "PinsSwapping"),
        Row("mode", "USART_MODE_CLKEN", "Clockenable"),
        Row("mode", "USART_MODE_CLKPOL", "CLKPolarity"),
        Row("mode", "USART_MODE_CLKPHA", "CLKPhase"),
        Row("mode", "USART_MODE_LBCP", "Lastbitclockpulse"),
        Row("mode", "USART_MODE_HALFDUP", lambda v: int(v.text("VirtualMode") == "VM_HALFDUPLEX")),
        Row("mode", "USART_MODE_IRDA", lambda v: int(v.text("VirtualMode") == "VM_IRDA")),
        Row("mode", "USART_MODE_IRDALP", "IrDALowPower"),
        Row("mode", "USART_MODE_LIN", lambda v: int(v.text("VirtualMode") == "VM_LIN")),
        Row("mode", "USART_MODE_BFBN", "LINBreakLength"),
        Row("mode", "USART_MODE_SCARD", lambda v: int(v.text("VirtualMode") == "VM_SMARTCARD")),
        Row("mode", "USART_MODE_SCNACK", "SmartcardNACK"),
        Row("mode", "USART_MODE_MUTE", lambda v: int(v.text("VirtualMode") == "VM_MUTE")),
        Row("mode", "USART_MODE_WUM", "WakeUpMethod"),
        Row("mode", "USART_MODE_ID", "USART_ID"),
        Row("gdiv", "USART_GDIV_DIV", lambda v: v["IrDADivision"] or v["SmartcardDivision"]),
        Row("gdiv", "USART_GDIV_GUARD", "GuardTime"),
        Row("baudr", ALL, lambda v: (v.bus_clock * 2 // v["BaudRate"] + 1) // 2),
        Row("inten", ALL, events(**flags)),
    ]


def usart_results(v):
    v.near("baud rate", v.bus_clock / max(v.word("baudr"), 1), v.real("RealBaudRate"))


def spi_rows():
    software = lambda v: int(v.text("CSMode") == "SPI_CS_SOFTWARE_MODE")
    return [
        Row("ctrl", "SPI_CTRL_SPIEN", lambda v: 1),
        Row("ctrl", "SPI_CTRL_MSTEN", lambda v: int(v.text("MasterSlaveMode") == "SPI_MODE_MASTER")),
        Row("ctrl", "SPI_CTRL_CLKPOL", "CLKPolarity"),
        Row("ctrl", "SPI_CTRL_CLKPHA", "CLKPhase"),
        Row("ctrl", "SPI_CTRL_LSB", "FirstBit"),
        Row("ctrl", "SPI_CTRL_FBN", "FrameFormat"),
        Row("ctrl", "SPI_CTRL_SWCS", software),
        # A master is not selected by others, a slave without a pin always is.
        Row("ctrl", "SPI_CTRL_SWCSIL", lambda v: int(v.text("MasterSlaveMode") == "SPI_MODE_MASTER")),
        Row("ctrl", "SPI_CTRL_HWCSOE", "CSOutput"),
        Row("ctrl", "SPI_CTRL_TRANS", "TransmissionMode"),
        Row("ctrl", "SPI_CTRL_TIEN", "TIMode"),
        Row("ctrl", "SPI_CTRL_CCEN", "CRCCalculation"),
        Row("ctrl", "SPI_CTRL_MDIV", lambda v: v["ClkDivision"] if "ClkDivision" in v else
            v.word("ctrl") >> 16 & 15),
        Row("inten", ALL, spi_events),
        Row("cpoly", ALL, lambda v: v.hex("CRCPolynomial")),
    ]


def spi_events(v):
    return (events(RDBF="SPI_I2S_RDBF_INT", TDBE="SPI_I2S_TDBE_INT", ERR="SPI_I2S_ERROR_INT")(v) |
            (v.constant("SPI_INTEN_DMATEN") if v.requested("_TX") else 0) |
            (v.constant("SPI_INTEN_DMAREN") if v.requested("_RX") else 0))


def spi_results(v):
    if "ClockFrequency" in v:
        divider = int(v.text("ClkDivision").rsplit("_", 1)[1])
        v.near("clock", v.bus_clock / divider, v.real("ClockFrequency") * 1e6)


I2S_ROWS = [
    Row("i2sctrl", "SPI_I2SCTRL_I2SEN", lambda v: 1),
    Row("i2sctrl", "SPI_I2SCTRL_I2SMSEL", lambda v: 1),
    Row("i2sctrl", "SPI_I2SCTRL_MODE", "OperationMode"),
    Row("i2sctrl", "SPI_I2SCTRL_PROTO", "Standard"),
    Row("i2sctrl", "SPI_I2SCTRL_FORMAT", "DataFormat"),
    Row("i2sctrl", "SPI_I2SCTRL_CLKPOL", "CLKPolarity"),
    Row("i2sclk", "SPI_I2SCLK_MCLKOE", "MCLKOutput"),
    # A slave has no clock of its own.
    Row("i2sclk", "SPI_I2SCLK_DIV", lambda v: v["I2S_DIV"] if "I2S_DIV" in v else v.word("i2sclk") & 0x3FF),
    Row("i2sclk", "SPI_I2SCLK_ODD", lambda v: v["I2S_ODD"] if "I2S_DIV" in v else v.word("i2sclk") >> 10 & 1),
    Row("inten", ALL, spi_events),
]

I2C_ROWS = [
    Row("ctrl", "I2C_CTRL_I2CEN | I2C_CTRL_ACKEN", lambda v: v.constant("I2C_CTRL_I2CEN") | v.constant("I2C_CTRL_ACKEN")),
    Row("ctrl", "I2C_CTRL_STRETCH", "ClockStretching"),
    Row("ctrl", "I2C_CTRL_GCAEN", "GeneralCall"),
    Row("ctrl", "I2C_CTRL_PERMODE", given("SMBusMode")),
    Row("ctrl", "I2C_CTRL_SMBHOST", "SMBusMode"),
    Row("ctrl", "I2C_CTRL_SMBALERT", "SMBusAlert"),
    Row("ctrl", "I2C_CTRL_PECEN", "PEC"),
    Row("inten", ALL, lambda v: events(EVT="I2C_EVT_INT", DATA="I2C_DATA_INT", ERR="I2C_ERR_INT")(v) |
        (v.constant("I2C_INTEN_DMAEN") if v.requested("_TX", "_RX") else 0)),
    Row("oaddr1", "0x3FF", lambda v: v.hex("OwnAddress1")),
    Row("oaddr1", "I2C_OADDR_MODE", lambda v: int(v.text("AddressMode") == "I2C_ADDRESS_MODE_10BIT")),
    Row("oaddr2", "0x7F", lambda v: v.hex("OwnAddress2")),
    Row("oaddr2", "I2C_OADDR_MODE", "DualAddress"),
]


def i2c_speed(v):
    clkctrl, clock = v.word("clkctrl"), v.outcome.clocks[2]
    parts = 2 if not clkctrl & v.constant("I2C_CLKCTRL_FAST") else 25 if clkctrl & v.constant("I2C_CLKCTRL_DUTY") else 3
    speed, wanted = clock / parts / (clkctrl & v.constant("I2C_CLKCTRL_SPEED")), v["ClockSpeed"]
    v.outcome.expect(f"{v.instance} is fast", parts != 2, v.text("I2C_Mode") != "I2C_Standard")
    v.outcome.expect(f"{v.instance} has a long low time", parts == 25, v.text("DutyCycle") == "I2C_FSMODE_DUTY_16_9")
    if not 0.8 * wanted <= speed <= wanted:
        v.outcome.faults.append(f"speed of {v.instance} is {speed:.0f}, not {wanted}")


def can_rows():
    interrupts = {name: f"CAN_{name}_INT" for name in
                  ("TCIEN", "RF0MIEN", "RF0FIEN", "RF0OIEN", "RF1MIEN", "RF1FIEN", "RF1OIEN", "EAIEN", "EPIEN", "BOIEN",
                   "ETRIEN", "QDZIEN", "EDZIEN", "EOIEN")}
    at_filter = lambda name: lambda v: v[name] << v["FilterNumber"] if v["FilterEnable"] else 0
    return [
        Row("ctrl", "CAN_CTRL_FREEZE | CAN_CTRL_DOZE", lambda v: 0),
        Row("ctrl", "CAN_CTRL_TIMED", "TimeTriggered"),
        Row("ctrl", "CAN_CTRL_BUSON", "AutoBusOff"),
        Row("ctrl", "CAN_CTRL_WAKEUP", "AutoWakeUp"),
        Row("ctrl", "CAN_CTRL_ONCE", "ProhibitRetransmission"),
        Row("ctrl", "CAN_CTRL_DROPNEW", "DiscardRule"),
        Row("ctrl", "CAN_CTRL_INORDER", "SendingSequence"),
        Row("ctrl", "CAN_CTRL_MODE", "OperatingMode"),
        Row("btmg", "CAN_BTMG_DIV", lambda v: v["Baudrate_Division"] - 1),
        Row("btmg", "CAN_BTMG_BTS1", "BS1_Size"),
        Row("btmg", "CAN_BTMG_BTS2", "BS2_Size"),
        Row("btmg", "CAN_BTMG_RSAW", "RSAW_Size"),
        Row("inten", ALL, events(**interrupts)),
        Row("fctrl", ALL, lambda v: 0),
        Row("fact", ALL, at_filter("FilterEnable")),
        Row("fmode", ALL, at_filter("FilterMode")),
        Row("fbits", ALL, at_filter("FilterBits")),
        Row("ffifo", ALL, at_filter("FilterFIFO")),
    ]


def can_results(v):
    timing = v.word("btmg")
    quanta = 3 + (timing >> 16 & 15) + (timing >> 20 & 7)
    v.near("baud rate", v.bus_clock / ((timing & 0xFFF) + 1) / quanta / 1000, v.real("RealBaudRate"))
    if v["FilterEnable"]:
        for place in (0, 1):
            at = v.outcome.chip.bases[v.instance] + v.constant("can_type.fid") + 8 * v["FilterNumber"] + 4 * place
            v.outcome.expect(f"word {place + 1} of the filter of {v.instance}", v.outcome.word(at),
                             v.hex(f"FilterId{place + 1}"))


SDIO_ROWS = [
    Row("pwr", ALL, lambda v: v.constant("SDIO_POWER_ON")),
    Row("clk", "SDIO_CLK_EN", lambda v: 1),
    Row("clk", "SDIO_CLK_DIV", lambda v: v["Clock_division"] if "Clock_division" in v else v.word("clk") & 0x3FF),
    Row("clk", "SDIO_CLK_BYPASS", "Clock_divider_bypass"),
    Row("clk", "SDIO_CLK_SAVE", "Clock_power_save"),
    Row("clk", "SDIO_CLK_EDGE", lambda v: int(v.text("Clock_edge") == "SDIO_CLOCK_EDGE_RISING")),
    Row("clk", "SDIO_CLK_FLOW", "Hardware_flow_control"),
    Row("clk", "SDIO_CLK_WIDTH", "BusWidth"),
    Row("dtctrl", ALL, lambda v: v.constant("SDIO_DTCTRL_DMA") if v.requested("") else 0),
    Row("inten", ALL, events(CMDCMPL="SDIO_CMDCMPL_INT", DTCMPL="SDIO_DTCMPL_INT", ERR="SDIO_ERR_INT")),
]


def sdio_results(v):
    clock, word = v.outcome.clocks[1], v.word("clk")
    if not word & v.constant("SDIO_CLK_BYPASS"):
        clock /= (word & 0x3FF) + 2
    v.near("clock", clock, v.real("ClockFrequency") * 1e6)


# ---- External memories ----

def nor_timing(v, write):
    own = write and v["ExtendedMode"]
    setup, data = (("WriteAddressSetupTime", "WriteDataSetupTime") if own else ("AddressSetupTime", "DataSetupTime"))
    hold = v["AddressHoldTime"] if "AddressHoldTime" in v else 15
    clock, latency = (v["ClockDivision"], v["DataLatency"]) if "ClockDivision" in v else (16, 17)
    return (v[setup] | hold << 4 | v[data] << 8 | v["BusLatency"] << 16 | clock - 1 << 20 | latency - 2 << 24 |
            v["AccessMode"] << 28)


NOR_ROWS = [
    Row("ctrl", "XMC_NORSRAM_EN | XMC_NORSRAM_WRITE",
        lambda v: v.constant("XMC_NORSRAM_EN") | v.constant("XMC_NORSRAM_WRITE")),
    Row("ctrl", "XMC_NORSRAM_MUX", "DataAddressMux"),
    Row("ctrl", "XMC_NORSRAM_DEVICE", "MemoryType"),
    Row("ctrl", "XMC_NORSRAM_WIDTH", "DataBusWidth"),
    Row("ctrl", "XMC_NORSRAM_BURST", given("ClockDivision")),
    Row("ctrl", "XMC_NORSRAM_WAITLV", "WaitPolarity"),
    Row("ctrl", "XMC_NORSRAM_WAIT", "WaitSignal"),
    Row("ctrl", "XMC_NORSRAM_WRTMG", "ExtendedMode"),
    Row("tmg", ALL, lambda v: nor_timing(v, False)),
    Row("tmgwr", ALL, lambda v: nor_timing(v, True) if v["ExtendedMode"] else v.word("tmgwr")),
]


def nand_timing(space):
    return lambda v: (v[f"{space}SetupTime"] | v[f"{space}WaitTime"] - 1 << 8 | v[f"{space}HoldTime"] << 16 |
                      v[f"{space}HiZTime"] << 24)


NAND_ROWS = [
    Row("ctrl", "XMC_NAND_EN", lambda v: 1),
    Row("ctrl", "XMC_NAND_WAIT", "WaitFeature"),
    Row("ctrl", "XMC_NAND_WIDTH", "DataBusWidth"),
    Row("ctrl", "XMC_NAND_ECC", "ECCEnable"),
    Row("ctrl", "XMC_NAND_ECCPAGE", "ECCPageSize"),
    Row("ctrl", "XMC_NAND_DELAYC", lambda v: v["DelayTimeCycle"] - 1),
    Row("ctrl", "XMC_NAND_DELAYA", lambda v: v["DelayTimeAR"] - 1),
    Row("tmgrg", ALL, nand_timing("Regular")),
    Row("tmgsp", ALL, nand_timing("Special")),
    Row("inten", ALL, events(RisingEdge="XMC_RISING_EDGE_INT", HighLevel="XMC_HIGH_LEVEL_INT",
                             FallingEdge="XMC_FALLING_EDGE_INT")),
]

# ---- Analog ----

def adc_rows():
    parts = lambda v: int(v["OrdinaryPartMode"])
    return [
        Row("ctrl", "ADC_CTRL_EN", lambda v: 1),
        Row("ctrl", "ADC_CTRL_SEQUENCE", "SequenceMode"),
        Row("ctrl", "ADC_CTRL_REPEAT", "RepeatMode"),
        Row("ctrl", "ADC_CTRL_LEFT", "DataAlign"),
        Row("ctrl", "ADC_CTRL_DMA", lambda v: v.requested("")),
        Row("ctrl", "ADC_CTRL_OPART", parts),
        Row("ctrl", "ADC_CTRL_PPART", "PreemptPartMode"),
        Row("ctrl", "ADC_CTRL_PAUTO", "PreemptAutoMode"),
        Row("ctrl", "ADC_CTRL_RES", "ResolutionSelect"),
        Row("trig", "ADC_TRIG_OSEL", "OrdinaryTriggerSource"),
        Row("trig", "ADC_TRIG_OEN", given("OrdinaryTriggerSource")),
        Row("trig", "ADC_TRIG_PSEL", "PreemptTriggerSource"),
        Row("trig", "ADC_TRIG_PEN", given("PreemptTriggerSource")),
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


def adc_common(v):
    if v.instance != "ADC1":
        return
    v.outcome.expect("combination of the converters", v.word("comb") & v.constant("ADC_COMB_MODE"), v["CombineMode"])
    v.outcome.expect("inner channels", int(v.word("comb") & v.constant("ADC_COMB_INNER") != 0), v["TemperatureVINTRV"])


def dac_rows():
    rows = []
    for n in (1, 2):
        on = lambda v, n=n: int(f"InitialValue_{n}" in v)
        rows += [
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_EN", on),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_UNBUFFERED", lambda v, n=n: int(v.text(f"OutputBuffer_{n}") == "FALSE")),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_TRIGGER", f"TriggerSource_{n}"),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_WAVE", f"WaveGeneration_{n}"),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_AMPLITUDE", f"Amplitude_{n}"),
            Row(f"out[{n - 1}].ctrl", "DAC_CTRL_DMA", lambda v, n=n: v.requested(str(n))),
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

SPIM_ROWS = [
    Row("ctrl", "SPIM_CTRL_EN", lambda v: 1),
    Row("ctrl", "SPIM_CTRL_MODEL", "FlashType"),
]

REGISTERS = {
    "TMR": Kind("tmr_type", timer_rows(), check=timer_results),
    "USART": Kind("usart_type", usart_rows(), check=usart_results),
    "SPI": Kind("spi_type", spi_rows(), check=spi_results),
    "I2S": Kind("spi_type", I2S_ROWS, block=lambda v: f"SPI{v.number}"),
    "I2C": Kind("i2c_type", I2C_ROWS, check=i2c_speed),
    "CAN": Kind("can_type", can_rows(), check=can_results),
    "SDIO": Kind("sdio_type", SDIO_ROWS, check=sdio_results),
    "XMC_NORFlash-PSRAM-LCD": Kind("xmc_norsram_bank_type", NOR_ROWS, first=lambda v: 16 * (v.number - 1),
                                   block=lambda v: "XMC"),
    "XMC_NANDFlash": Kind("xmc_nand_bank_type", NAND_ROWS, first=lambda v: 0x80, block=lambda v: "XMC"),
    "ADC": Kind("adc_type", adc_rows(), check=adc_common),
    "DAC": Kind("dac_type", dac_rows()),
    "CMP": Kind("cmp_type", CMP_ROWS),
    "WDT": Kind("wdt_type", WDT_ROWS),
    "WWDT": Kind("wwdt_type", WWDT_ROWS, check=wwdt_results),
    "ERTC": Kind("ertc_type", ERTC_ROWS),
    "RTC": Kind("rtc_type", RTC_ROWS, check=rtc_results),
    "CRC": Kind("crc_type", CRC_ROWS),
    "PWC": Kind("pwc_type", PWC_ROWS),
    "ACC": Kind("acc_type", ACC_ROWS),
    "SPIM": Kind("spim_type", SPIM_ROWS),
}
# Further members that the checks above read.
MEMBERS = [(kind.type, row.register) for kind in REGISTERS.values() for row in kind.rows] + [
    ("adc_type", "comb"), ("adc_type", "odt"), ("can_type", "fid"), ("i2c_type", "clkctrl"), ("i2c_type", "dt"),
    ("rtc_type", "cnt"), ("rtc_type", "ta"), ("sdio_type", "buf"), ("spi_type", "dt"), ("usart_type", "dt"),
    ("exint_type", "inten"), ("exint_type", "evten"), ("exint_type", "rising"), ("exint_type", "falling"),
    ("dac_type", "out[0].dth"), ("tmr_type", "pr"), ("tmr_type", "cdt[0]")]


def kind_of(instance):
    name = re.sub(r"_?\d+$", "", instance)
    return {"UART": "USART"}.get(name, name)


def compare_registers(outcome, facts):
    chip = outcome.chip
    for instance in facts["peripherals"]:
        kind = REGISTERS.get(kind_of(instance))
        if not kind:
            continue
        values, seen = Values(outcome, facts, instance), {}
        for row in kind.rows:
            if f"{kind.type}.{row.register}" not in chip.constants:
                continue
            bits = chip.bits(row.bits)
            word = values.word(row.register)
            seen[row.register] = seen.get(row.register, 0) | bits
            expected = row.value(values) if callable(row.value) else values[row.value]
            shift = (bits & -bits).bit_length() - 1
            outcome.expect(f"{instance}.{row.register} {row.bits if bits != 0xFFFFFFFF else ''}",
                           (word & bits) >> shift, expected)
        for register, bits in seen.items():
            outcome.expect(f"what nobody set in {instance}.{register}", values.word(register) & ~bits, 0)
        if kind.check:
            kind.check(values)
