"""What the registers of external memories, Ethernet and the USB of both ends hold; see registers.py."""

from registers import ALL, Kind, Row, events, given

# ---- External memory controller ----

def nor_timing(v, write):
    own = write and v["ExtendedMode"]
    setup, data = (("WriteAddressSetupTime", "WriteDataSetupTime") if own else ("AddressSetupTime", "DataSetupTime"))
    hold = v["AddressHoldTime"] if "AddressHoldTime" in v else 15
    clock, latency = (v["ClockDivision"], v["DataLatency"]) if "ClockDivision" in v else (16, 17)
    return (v[setup] | hold << 4 | v[data] << 8 | v["BusLatency"] << 16 | clock - 1 << 20 | latency - 2 << 24 |
            v["AccessMode"] << 28)


NOR_ROWS = [
    Row("ctrl", "XMC_NORSRAM_EN", lambda v: 1),
    Row("ctrl", "XMC_NORSRAM_WRITE", lambda v: v["WriteOperation"] if "WriteOperation" in v else 1),
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
NOR = Kind("xmc_norsram_bank_type", NOR_ROWS, first=lambda v: 16 * (v.number - 1), block=lambda v: "XMC")


def space_timing(space):
    """Of NAND flash and PC card; what a space without a choice holds is the driver's own."""
    return lambda v: (v[f"{space}SetupTime"] | v[f"{space}WaitTime"] - 1 << 8 | v[f"{space}HoldTime"] << 16 |
                      v[f"{space}HiZTime"] << 24)


LINE_EVENTS = events(RisingEdge="XMC_RISING_EDGE_INT", HighLevel="XMC_HIGH_LEVEL_INT",
                     FallingEdge="XMC_FALLING_EDGE_INT")
BUS_ROWS = [
    Row("ctrl", "XMC_NAND_EN", lambda v: 1),
    Row("ctrl", "XMC_NAND_WAIT", "WaitFeature"),
    Row("ctrl", "XMC_NAND_WIDTH", "DataBusWidth"),
    Row("ctrl", "XMC_NAND_DELAYC", lambda v: v["DelayTimeCycle"] - 1),
    Row("ctrl", "XMC_NAND_DELAYA", lambda v: v["DelayTimeAR"] - 1),
    Row("events.inten", ALL, LINE_EVENTS),
]
NAND_ROWS = BUS_ROWS + [
    Row("ctrl", "XMC_NAND_ECC", "ECCEnable"),
    Row("ctrl", "XMC_NAND_ECCPAGE", "ECCPageSize"),
    Row("tmgrg", ALL, space_timing("Regular")),
    Row("tmgsp", ALL, space_timing("Special")),
]
CARD_ROWS = BUS_ROWS + [
    Row("tmgcm", ALL, space_timing("Common")),
    Row("tmgat", ALL, space_timing("Attribute")),
    Row("tmgio", ALL, lambda v: space_timing("IO")(v) if "IOSetupTime" in v else 0xFCFCFBFC),
]

SDRAM_TIMES = ["LoadToActive", "ExitSelfRefresh", "RowActive", "RowCycle", "WriteRecovery", "RowPrecharge",
               "RowToColumn"]
SDRAM_ROWS = [
    Row("ctrl[0]", "XMC_SDRAM_COLUMN", lambda v: v["ColumnAddress"] - 8),
    Row("ctrl[0]", "XMC_SDRAM_ROW", lambda v: v["RowAddress"] - 11),
    Row("ctrl[0]", "XMC_SDRAM_WIDTH", "DataBusWidth"),
    Row("ctrl[0]", "XMC_SDRAM_BANKS", "InternalBanks"),
    Row("ctrl[0]", "XMC_SDRAM_CAS", "CASLatency"),
    Row("ctrl[0]", "XMC_SDRAM_PROTECT", "WriteProtection"),
    Row("ctrl[0]", "XMC_SDRAM_COMMON",
        lambda v: 0 if v.number == 2 else sdram_common(v)),
    Row("tmg[0]", ALL, lambda v: sum(v[name] - 1 << 4 * place for place, name in enumerate(SDRAM_TIMES))),
]


def sdram_common(v):
    return v["ReadDelay"] | v["BurstRead"] << 2 | v["ClockDivision"] << 3


def sdram_results(v):
    start, constants = v.outcome.chip.bases["XMC"] + 0x100, v.outcome.chip.constants
    count = v.outcome.word(start + constants["xmc_sdram_type.rcnt"])
    banks = [texts for name, texts in v.facts["peripherals"].items() if name.startswith("XMC_SDRAM")]
    asked = [int(texts["RefreshCount"]) for texts in banks if texts["RefreshCount"] != "0"]
    v.outcome.expect("refresh counter", count, min(asked, default=0))
    opened = any(texts.get("Interrupt_RefreshError") == "TRUE" for texts in banks)
    v.outcome.expect("refresh interrupt", v.outcome.word(start + constants["xmc_sdram_type.events.inten"]), int(opened))
    v.outcome.expect("shared settings", v.outcome.word(start) >> 9 & 0x1F, sdram_common(v))
    # the divider of both banks, which stands at the first
    clock = v.outcome.clocks[1] / ((v.outcome.word(start) >> 12 & 3) + 1)
    v.near("clock in MHz", clock / 1e6, v.real("ClockFrequency"))
    # all rows are refreshed in time, and not needlessly often
    needed = clock * v["RefreshTime"] / 1e3 / (1 << v["RowAddress"]) - 20
    if needed < 1:
        # no counter refreshes in time: the design has been told
        v.outcome.expect("refreshes of this bank", int(v.text("RefreshCount")), 0)
        return
    v.outcome.expect("refresh in time", 0 < count <= needed, True)
    v.outcome.expect("refreshes of this bank", 0 <= needed - int(v.text("RefreshCount")) < 1 or
                     int(v.text("RefreshCount")) == 8191, True)


# ---- QSPI ----

def access(direction):
    return lambda v: (v.hex(direction + "Instruction") | v[direction + "Lines"] << 8 |
                      v[direction + "DummyCycles"] << 11)


def mapped(value, otherwise=0):
    return lambda v: value(v) if "ReadInstruction" in v else otherwise


QSPI_DIVIDERS = [2, 3, 4, 5, 6, 8, 10, 12]
QSPI_ROWS = [
    Row("ctrl", "QSPI_CTRL_EN", lambda v: 1),
    Row("ctrl", "QSPI_CTRL_DIV", "ClkDivision"),
    Row("ctrl", "QSPI_CTRL_MODE", "ClockMode"),
    Row("ctrl", "QSPI_CTRL_BUSY", "BusyOffset"),
    Row("ctrl", "QSPI_CTRL_DMA", lambda v: v.requested("")),
    Row("ctrl", "QSPI_CTRL_DMALEVEL", lambda v: v["DMAThreshold"] if v.requested("") else 0),
    Row("size", ALL, "FlashSize"),
    Row("inten", ALL, events(CMDCMPL="QSPI_CMDCMPL_INT", ERR="QSPI_ERR_INT")),
    Row("xip", "QSPI_XIP_EN", given("ReadInstruction")),
    Row("xip", "QSPI_XIP_WRITE", "WriteEnable"),
    Row("xip", "QSPI_XIP_CACHE", "Cache"),
    Row("xip", "QSPI_XIP_KEEP", "KeepSelected"),
    Row("xip", "QSPI_XIP_IDLE", mapped(lambda v: v["IdleTime"] if "IdleTime" in v else 16)),
    Row("xip", "QSPI_XIP_ADDRESS", "ReadAddressLength"),
    Row("xipr", ALL, mapped(access("Read"))),
    Row("xipw", ALL, mapped(lambda v: access("Write")(v) if v["WriteEnable"] else 2)),
]


def qspi_results(v):
    v.near("clock in MHz", v.outcome.clocks[1] / QSPI_DIVIDERS[v["ClkDivision"]] / 1e6, v.real("ClockFrequency"))


# ---- Ethernet ----

def address_bytes(v, first, count):
    octets = [int(byte, 16) for byte in v.text("MACAddress").split(":")]
    return sum(octet << 8 * place for place, octet in enumerate(octets[first:first + count]))


def phy_clock(v):
    if "PHYClockSource" not in v:
        return 0
    return 1 | v["PHYClockSource"] << 1 | (v["PHYClockDivision"] - 1 << 2 if v["PHYClockSource"] else 0)


def time_step(v):
    if "TimeStampUpdate" not in v:
        return 0
    hclk = v.outcome.clocks[1]
    if not v["TimeStampUpdate"]:
        return (1000000000 + hclk // 2) // hclk
    return 20 if hclk > 100000000 else 2000000000 // hclk + 1


# The reset bit stays: on the host nothing clears it while the driver waits.
EMAC_ROWS = [
    Row("ctrl", "EMAC_CTRL_TX | EMAC_CTRL_RX", lambda v: 3),
    Row("ctrl", "EMAC_CTRL_FULL", lambda v: v["DuplexMode"] if "DuplexMode" in v else 1),
    Row("ctrl", "EMAC_CTRL_100M", lambda v: v["Speed"] if "Speed" in v else 1),
    Row("ctrl", "EMAC_CTRL_RMII", "MediaInterface"),
    Row("ctrl", "EMAC_CTRL_CHECKSUM", "ChecksumMode"),
    Row("filter", ALL, lambda v: 0),
    Row("addrl", ALL, lambda v: address_bytes(v, 0, 4)),
    Row("addrh", ALL, lambda v: address_bytes(v, 4, 2)),
    Row("pps", ALL, lambda v: v["PPSFrequency"] | v["PPSForm"] << 3),
    Row("phyclk", ALL, phy_clock),
    Row("wake", ALL, lambda v: 1 | v["WakeUpFrame"] << 1 if "WakeUpFrame" in v else 0),
    Row("tsctrl", ALL, lambda v: 1 | v["TimeStampUpdate"] << 1 if "TimeStampUpdate" in v else 0),
    Row("tsinc", ALL, time_step),
    Row("dmactrl", "EMAC_DMA_RESET | EMAC_DMA_TX | EMAC_DMA_RX", lambda v: 7),
    Row("dmaie", ALL, lambda v: v.constant("EMAC_RX_INT") * v["ReceiveMode"] |
        v.constant("EMAC_TX_INT") * v["Interrupt_TX"]),
]


def emac_results(v):
    bus, hclk = v.word("miictrl"), v.outcome.clocks[1]
    divider = 8 << (bus >> 2 & 7)
    v.outcome.expect("management bus at 2.5 MHz or less", hclk / divider <= 2.5e6 or divider == 128, True)
    v.outcome.expect("management bus as fast as it may", divider == 8 or hclk / (divider / 2) > 2.5e6, True)
    if v.text("PHYModel") == "PHY_GENERIC":
        v.outcome.expect("PHY that is spoken to", bus >> 16 & 31, v["PHYAddress"])
    else:
        v.outcome.expect("PHY that nobody speaks to", bus & ~0x1C, 0)
    rings = v.word("txlist"), v.word("rxlist")
    v.outcome.expect("rings of descriptors", len({0, *rings}), 3)
    if "TimeStampUpdate" in v and v["TimeStampUpdate"]:
        seconds = v.word("tsadd") / 2 ** 32 * hclk * time_step(v) / 1e9
        v.near("second of the time stamps", seconds, 1, 1e-6)
    if "PHYClockDivision" in v:
        v.near("clock of the PHY in MHz", hclk / v["PHYClockDivision"] / 1e6, v.real("PHYClockFrequency"))


# ---- USB of both ends ----

def placed(signal):
    return lambda v: int(any(pin["signal"] == f"{v.instance}_{signal}" for pin in v.facts["pins"]))


USB_ROWS = [
    Row("ctrl", "USB_CTRL_EN", lambda v: 1),
    Row("ctrl", "USB_CTRL_HOST", lambda v: int(v.text("Role") == "USB_ROLE_HOST")),
    Row("ctrl", "USB_CTRL_ID", lambda v: int(v.text("Role") == "USB_ROLE_DUAL")),
    Row("ctrl", "USB_CTRL_VBUS", placed("VBUS")),
    Row("ctrl", "USB_CTRL_SOFOUT", placed("SOF")),
    Row("inten", ALL, lambda v: 0),
]

KINDS = {
    "XMC_NORFlash-PSRAM-LCD": NOR,
    "XMC_NORFlash-PSRAM-SRAM-ROM-LCD": NOR,
    "XMC_NANDFlash": Kind("xmc_nand_bank_type", NAND_ROWS, first=lambda v: 0x80 + 0x18 * max(v.number - 1, 0),
                          block=lambda v: "XMC"),
    "XMC_PCCard": Kind("xmc_pccard_bank_type", CARD_ROWS, first=lambda v: 0xB0, block=lambda v: "XMC"),
    "XMC_SDRAM": Kind("xmc_sdram_type", SDRAM_ROWS, first=lambda v: 0x100 + 4 * (v.number - 1), block=lambda v: "XMC",
                      check=sdram_results, members=("rcnt", "events.inten")),
    "QSPI": Kind("qspi_type", QSPI_ROWS, check=qspi_results, members=("dt",)),
    "EMAC": Kind("emac_type", EMAC_ROWS, check=emac_results, members=("miictrl", "txlist", "rxlist", "tsadd")),
    "USB_OTGFS": Kind("usb_type", USB_ROWS),
}
