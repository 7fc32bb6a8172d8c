"""What the registers of serial ports, buses and cards hold; see registers.py."""

from registers import ALL, Kind, Row, events, given, if_given

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
        Row("baudr", ALL, lambda v: nearest_divider(v.bus_clock, v["BaudRate"])),
        Row("inten", ALL, events(**flags)),
    ]


def nearest_divider(clock, rate):
    """The whole divider whose rate is the nearest."""
    below = max(1, clock // rate)
    return min((below, below + 1), key=lambda divider: abs(clock / divider - rate))


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
        Row("ctrl", "SPI_CTRL_MDIV", if_given("ClkDivision")),
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
        v.near("clock in MHz", v.bus_clock / divider / 1e6, v.real("ClockFrequency"))


I2S_ROWS = [
    Row("i2sctrl", "SPI_I2SCTRL_I2SEN", lambda v: 1),
    Row("i2sctrl", "SPI_I2SCTRL_I2SMSEL", lambda v: 1),
    Row("i2sctrl", "SPI_I2SCTRL_MODE", "OperationMode"),
    Row("i2sctrl", "SPI_I2SCTRL_PROTO", "Standard"),
    Row("i2sctrl", "SPI_I2SCTRL_FORMAT", "DataFormat"),
    Row("i2sctrl", "SPI_I2SCTRL_CLKPOL", "CLKPolarity"),
    Row("i2sclk", "SPI_I2SCLK_MCLKOE", "MCLKOutput"),
    # A slave has no clock of its own.
    Row("i2sclk", "SPI_I2SCLK_DIV", if_given("I2S_DIV")),
    Row("i2sclk", "SPI_I2SCLK_ODD", if_given("I2S_ODD")),
    Row("inten", ALL, spi_events),
]

I2C_ROWS = [
    Row("ctrl", "I2C_CTRL_I2CEN", lambda v: 1),
    Row("ctrl", "I2C_CTRL_ACKEN", lambda v: 1),
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
    # The window warns of a bus that is too slow, and counts that are small come out far below.
    if clock > 50 * wanted and not 0.9 * wanted <= speed <= wanted:
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
    Row("clk", "SDIO_CLK_DIV", if_given("Clock_division")),
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
    v.near("clock in MHz", clock / 1e6, v.real("ClockFrequency"))


SPIM_ROWS = [
    Row("ctrl", "SPIM_CTRL_EN", lambda v: 1),
    Row("ctrl", "SPIM_CTRL_MODEL", "FlashType"),
]

KINDS = {
    "USART": Kind("usart_type", usart_rows(), check=usart_results, members=("dt",)),
    "SPI": Kind("spi_type", spi_rows(), check=spi_results, members=("dt",)),
    "I2S": Kind("spi_type", I2S_ROWS, block=lambda v: f"SPI{v.number}"),
    "I2C": Kind("i2c_type", I2C_ROWS, check=i2c_speed, members=("clkctrl", "dt")),
    "CAN": Kind("can_type", can_rows(), check=can_results, members=("fid",)),
    "SDIO": Kind("sdio_type", SDIO_ROWS, check=sdio_results, members=("buf",)),
    "SPIM": Kind("spim_type", SPIM_ROWS),
}
