"""Generated designs run on the host, and what they leave behind is what the design says.

Each program runs to its endless loop against registers that are memory (chip.c): the calls of main and their order,
clocks on before use, frequencies of the buses, pins, priorities, DMA channels, and the registers of the peripherals.

    run_designs.py TOOL FIRMWARE FOLDER DATA [OPTION OF THE TOOL...]
"""

import json
import pathlib
import re
import sys
import threading

from designs import Designs, Fault, hash_of, in_parallel, say
from host import HostChip, Outcome
import memory_registers
import port_registers
import registers
import system_registers
import timer_registers

EXINT = ("inten", "evten", "rising", "falling")
MODES = {"GPIO_MODE_INPUT": 0, "GPIO_MODE_OUTPUT": 1, "GPIO_MODE_MUX": 2, "GPIO_MODE_ANALOG": 3}
PULLS = {"GPIO_PULL_NONE": 0, "GPIO_PULL_UP": 1, "GPIO_PULL_DOWN": 2}
WIDTHS = {"BYTE": 0, "HALFWORD": 1, "WORD": 2}
KINDS = {**timer_registers.KINDS, **port_registers.KINDS, **memory_registers.KINDS, **system_registers.KINDS}
NO_PERIPHERAL = ("MEMTOMEM", "GENERATOR")
LEVELS = {"LOW": 0, "MEDIUM": 1, "HIGH": 2, "VERY_HIGH": 3}


def frequencies(outcome, facts):
    for name, is_ in zip(("sclk", "ahb", "apb1", "apb2"), outcome.clocks):
        # A design shows megahertz with rounding; the drivers cut hertz off.
        if abs(is_ - facts["clocks"][name] * 1000000) > 20:
            outcome.faults.append(f"{name} is {is_} Hz, not {facts['clocks'][name]} MHz")
    outcome.expect("system_core_clock", outcome.core, outcome.clocks[1])
    if facts["clocks"]["pllcfg"]:
        outcome.expect("the register of the PLL as the clock page shows it", f"0x{outcome.clocks[4]:08x}",
                       facts["clocks"]["pllcfg"])


def order(outcome, facts):
    made = [call for call in outcome.calls
            if call.startswith("lm_") and call not in ("lm_dma_channel_config", "lm_edma_stream_config")]
    outcome.expect("calls of main", made, [call for call in facts["calls"] if call.startswith("lm_")])


def port_of(pin):
    found = re.search(r"\bP([A-Z])(\d+)\b", pin.replace("_", " "))
    return found and ("GPIO" + found[1], int(found[2]))


def pin_settings(outcome, facts):
    for pin in facts["pins"]:
        # The debug port has its pins from reset.
        if "GPIO mode" not in pin or not port_of(pin["pin"]) or pin["signal"].startswith("DEBUG_"):
            continue
        port, number = port_of(pin["pin"])
        base, mode = outcome.chip.bases[port], pin["GPIO mode"]
        name = f"{pin['pin']} as {pin['signal']}"

        def field(register, bits=2):
            return outcome.word(base + register) >> number * bits & (1 << bits) - 1

        outcome.expect("mode of " + name, field(0x00), MODES[mode])
        if "Pull type" in pin:
            outcome.expect("pull of " + name, field(0x04), PULLS[pin["Pull type"]])
        if mode in ("GPIO_MODE_OUTPUT", "GPIO_MODE_MUX") and "GPIO type" in pin:
            outcome.expect("type of " + name, field(0x0C, 1), int(pin["GPIO type"] == "GPIO_OUTPUT_OPEN_DRAIN"))
        if mode in ("GPIO_MODE_OUTPUT", "GPIO_MODE_MUX") and "Driver capability" in pin:
            outcome.expect("strength of " + name, field(0x08), outcome.chip.constants[pin["Driver capability"]])
        if mode == "GPIO_MODE_OUTPUT":
            outcome.expect("level of " + name, field(0x14, 1), int(pin["Output level"].endswith("_HIGH")))
        if "mux" in pin and mode == "GPIO_MODE_MUX":
            mux = outcome.word(base + 0x28 + number // 8 * 4) >> number % 8 * 4 & 15
            outcome.expect("function of " + name, f"GPIO_MUX_{mux}", pin["mux"])


def remapped(outcome, facts):
    """Each peripheral's signals are where the group brings them that the remap registers choose."""
    chip = outcome.chip
    places = {pin["signal"]: pin["pin"] for pin in facts["pins"]}
    if "PD01_GMUX" in chip.remaps:
        register, shift, value = chip.remaps["PD01_GMUX"]
        taken = any("/HEXT" in pin["pin"] and not pin["signal"].startswith("CRM_") for pin in facts["pins"])
        outcome.expect("PD0 and PD1 on the pins of the crystal",
                       outcome.word(chip.bases["IOMUX"] + 0x20 + 4 * register) >> shift & 15, value if taken else 0)
    for instance, groups in chip.groups.items():
        used = {signal.split("_", 1)[1]: re.match(r"P[A-Z]\d+", pin) for signal, pin in places.items()
                if signal.startswith(instance + "_")}
        used = {signal: pin[0] for signal, pin in used.items() if pin}
        if not used or instance not in facts["peripherals"]:
            continue
        chosen = groups[0]
        for group in groups[1:]:
            register, shift, value = chip.remaps[group["mux"]]
            if outcome.word(chip.bases["IOMUX"] + 0x20 + 4 * register) >> shift & 15 == value:
                chosen = group
        at = dict(one.rstrip("!").split("=") for one in chosen["at"].split())
        for signal, pin in used.items():
            if signal in at:
                outcome.expect(f"place of {instance}_{signal}", at[signal], pin)


def priorities(outcome, facts):
    group = int(facts["group"][-1])  # bits of the preemption
    for vector in facts["vectors"]:
        number = outcome.chip.vectors.get(vector["irq"])
        if number is None or number < 0:
            continue
        expected = (vector["preemption"] << 4 - group | vector["sub"] & (1 << 4 - group) - 1) << 4
        outcome.expect(f"priority of {vector['irq']}", outcome.byte(0xE000E400 + number), expected & 0xFF)
        enabled = outcome.word(0xE000E100 + number // 32 * 4) >> number % 32 & 1
        outcome.expect(f"enable of {vector['irq']}", enabled, 1)


def data_register(chip, facts, request):
    """The address that a request serves."""
    if request == "DAC1_DAC2":
        return chip.bases["DAC"] + chip.constants["dac_type.dual"]
    together = facts["peripherals"].get("ADC-Common", {}).get("CommonDMAMode", "")
    if request == "ADC1" and together not in ("", "ADC_COMMON_DMA_DISABLE"):
        return chip.bases["ADCCOM"] + chip.constants["adc_common_type.codt"]
    owner, _, event = request.partition("_")
    kind, number = re.fullmatch(r"([A-Z0-9]*?)(\d*)", owner).groups()
    kind = {"UART": "USART", "I2S": "SPI"}.get(kind, kind)
    if owner.startswith("I2S"):
        owner = "SPI" + number
    if kind == "TMR":
        return chip.bases[owner] + (chip.constants["tmr_type.cdt[0]"] + 4 * (int(event[2:]) - 1)
                                    if event.startswith("CH") else chip.constants["tmr_type.pr"])
    if kind == "DAC":
        return chip.bases["DAC"] + chip.constants["dac_type.out[0].dth"] + (int(number) - 1) * 16
    member = {"ADC": "odt", "SDIO": "buf"}.get(kind, "dt")
    return chip.bases[owner] + chip.constants[f"{kind.lower()}_type.{member}"]


def in_number(chip, settings, name):
    """A setting of a channel as it stands in registers; 0 if the channel does not have it."""
    text = settings.get(name, "")
    if text in ("TRUE", "FALSE", ""):
        return int(text == "TRUE")
    return chip.constants[text] if text in chip.constants else int(text if re.fullmatch(r"-?\d+", text) else 0)


def compare_fields(outcome, name, word, register, fields):
    for field, wanted in fields.items():
        bits = outcome.chip.constants[f"{register}_{field}"]
        outcome.expect(f"{register}.{field} of {name}", (word & bits) // (bits & -bits), wanted)


def multiplexer(outcome, settings, name, controller, word, generators):
    """What the multiplexer of a controller does with the request of a channel; `word` belongs to the channel."""
    chip = outcome.chip

    def value(parameter):
        return in_number(chip, settings, parameter)

    request = settings["request"]
    fields = {"REQUEST": chip.constants.get(f"{controller}_FLEXIBLE_{request}", 0)}
    if f"{controller}_MUX_SYNCEN" in chip.constants:
        fields |= {"SYNCEN": value("SyncEnable"), "EVENTEN": value("EventEnable"), "EDGE": value("SyncPolarity"),
                   "SIGNAL": value("SyncSignalID"), "COUNT": max(0, value("SyncRequestCount") - 1)}
    compare_fields(outcome, name, word, f"{controller}_MUX", fields)
    if request.startswith("GENERATOR"):
        compare_fields(outcome, name, outcome.word(generators + 4 * chip.constants[f"{controller}_{request}"]),
                       f"{controller}_GEN", {"EN": 1, "EDGE": value("GeneratorPolarity"),
                                             "SIGNAL": value("GeneratorSignalID"),
                                             "COUNT": value("GeneratorRequestCount") - 1})


def channels(outcome, facts):
    chip = outcome.chip
    for channel in facts["dma"]:
        found = re.fullmatch(r"(DMA\d)_Channel(\d)", channel["channel"])
        if not found:
            continue
        base = chip.bases[found[1]] + 32 * int(found[2])
        name, control = f"{channel['channel']} for {channel['request']}", outcome.word(base)
        outcome.expect("switch of " + name, control & 1, 1)
        for bit, event in enumerate(("FDT", "HDT", "DTERR"), 1):
            outcome.expect(f"interrupt {event} of {name}", control >> bit & 1,
                           int(channel.get("Interrupt_" + event) == "TRUE"))
        direction = {"PERIPHERAL_TO_MEMORY": 0, "MEMORY_TO_PERIPHERAL": 1 << 4, "MEMORY_TO_MEMORY": 1 << 14}
        outcome.expect("direction of " + name, control & (1 << 4 | 1 << 14), direction[channel["Direction"][8:]])
        outcome.expect("repetition of " + name, control >> 5 & 1, int(channel.get("Mode") == "CIRCULAR"))
        outcome.expect("step at the peripheral of " + name, control >> 6 & 1, int(channel["PeriphInc"] == "TRUE"))
        outcome.expect("step in memory of " + name, control >> 7 & 1, int(channel["MemInc"] == "TRUE"))
        for key, shift in (("PeriphDataAlignment", 8), ("MemDataAlignment", 10)):
            outcome.expect(f"{key} of {name}", control >> shift & 3, WIDTHS[channel[key].split("_WIDTH_")[1]])
        outcome.expect("priority of " + name, control >> 12 & 3, LEVELS[channel["Priority"].split("PRIORITY_")[1]])
        if "DMA_MUX_REQUEST" in chip.constants:
            multiplexer(outcome, channel, name, "DMA", outcome.word(base + 16), chip.bases.get("DMAMUX"))
        if not channel["request"].startswith(NO_PERIPHERAL):
            outcome.expect("address of " + name, outcome.word(base + 8),
                           data_register(chip, facts, channel["request"]))


def streams(outcome, facts):
    """The streams of the EDMA: by the members and the bits that the driver names."""
    chip = outcome.chip
    for stream in facts["dma"]:
        found = re.fullmatch(r"EDMA_Stream(\d)", stream["channel"])
        if not found:
            continue
        base, name = chip.bases["EDMA"] + 64 * int(found[1]), f"{stream['channel']} for {stream['request']}"

        def value(parameter):
            return in_number(chip, stream, parameter)

        expected = {
            0x00: {"EN": 1, "FDTIEN": value("Interrupt_FDT"), "HDTIEN": value("Interrupt_HDT"),
                   "DTERRIEN": value("Interrupt_DTERR"), "DMERRIEN": value("Interrupt_DMERR"),
                   "FERRIEN": value("Interrupt_FERR"), "DIR": value("Direction"),
                   "LM": int(stream.get("Mode") == "CIRCULAR"), "PINCM": value("PeriphInc"),
                   "MINCM": value("MemInc"), "PWIDTH": value("PeriphDataAlignment"),
                   "MWIDTH": value("MemDataAlignment"), "PRIO": value("Priority"), "MBURST": value("MemBurst"),
                   "PBURST": value("PeriphBurst"), "DMM": value("DoubleMemoryMode"), "CM": value("CurrentMemory"),
                   "2DM": value("2DMode"), "LLM": value("LinkedTableTransferMode")},
            0x14: {"EN": value("FIFOMode"), "THRESHOLD": value("FIFOThreshold")},
        }
        for (offset, fields), register in zip(expected.items(), ("CTRL", "FIFO")):
            compare_fields(outcome, name, outcome.word(base + offset), f"EDMA_{register}", fields)
        multiplexer(outcome, stream, name, "EDMA", outcome.word(base + 0x24), chip.bases["EDMA"] + 0x10)
        outcome.expect("plane of " + name, outcome.word(base + 0x18), value("XAxisCount") | value("YAxisCount") << 16)
        outcome.expect("strides of " + name, outcome.word(base + 0x1C),
                       value("SourceStride") & 0xFFFF | (value("DestinationStride") & 0xFFFF) << 16)
        if not stream["request"].startswith(NO_PERIPHERAL):
            outcome.expect("address of " + name, outcome.word(base + 8), data_register(chip, facts, stream["request"]))


def lines(outcome, facts):
    """The external interrupt lines: interrupt or event, edges, and the port whose pin raises each."""
    chip, parameters = outcome.chip, facts["peripherals"].get("EXINT", {})
    own = {int(name[20:]) for name in parameters if name.startswith("InterruptEvent_EXINT")}
    words = {member: outcome.word(chip.bases["EXINT"] + chip.constants[f"exint_type.{member}"])
             for member in EXINT}
    clock = facts["peripherals"].get("ERTC", {})
    for name, line in {"ALA": "alarm_line", "WAT": "wake_line", "TS": "tamper_line", "TP": "tamper_line"}.items():
        number = chip.ertc_lines.get(line)
        if clock.get(f"Interrupt_{name}") == "TRUE" and number not in own:
            outcome.expect(f"interrupt and edge of EXINT line {number} for {name}",
                           (words["inten"] >> number & 1, words["rising"] >> number & 1), (1, 1))
    for line in own:
        if line > 15 and clock:
            continue  # the clock may have set it since
        edge, event = parameters[f"Polarity_EXINT{line}"], "EVENT" in parameters[f"InterruptEvent_EXINT{line}"]
        expected = (int(not event), int(event), int("FALLING" not in edge), int("RISING" not in edge))
        outcome.expect(f"interrupt, event and edges of EXINT line {line}",
                       tuple(word >> line & 1 for word in words.values()), expected)
    selector = "SCFG" if "SCFG" in chip.bases else "IOMUX"
    ports = [name for name in chip.bases if name.startswith("GPIO")]
    for pin in facts["pins"]:
        if pin["signal"].startswith("EXINT") and port_of(pin["pin"]):
            port, number = port_of(pin["pin"])
            chosen = outcome.word(chip.bases[selector] + 0x10 + number // 4 * 4) >> number % 4 * 4 & 15
            outcome.expect(f"port of EXINT line {number}", ports[chosen] if chosen < len(ports) else chosen, port)


def peripherals(outcome, facts):
    registers.compare_registers(KINDS, outcome, facts)


CHECKS = [frequencies, order, pin_settings, remapped, priorities, channels, streams, lines, peripherals]


def main():
    tool, firmware, folder, data = sys.argv[1], *map(pathlib.Path, sys.argv[2:5])
    designs = Designs(tool, folder, *sys.argv[5:])
    say("designs are generated")
    chips, different = {}, {}
    for line in designs.lines():
        start = line.find('"files":{')
        if start >= 0:
            # Same texts, same program: the design that a judge reads then is the first that has them.
            different.setdefault(hash_of(line[start:line.index("}", start)]), line)
    for line in different.values():
        name = re.search(r'"folder":"(\w+)"', line)[1]
        if name not in chips:
            chips[name] = HostChip(firmware, data, folder, name)
            chips[name].prepare(registers.registers_of(KINDS) + [("exint_type", member) for member in EXINT])
    say(f"{len(different)} different programs")
    faults, compared, lock = {}, [], threading.Lock()

    def one(line):
        design = json.loads(line)
        try:
            outcome = Outcome(chips[design["folder"]], designs, design)
            # A call that is not made leaves its peripheral as it was.
            for check in CHECKS if design.get("all called", True) else CHECKS[:2]:
                check(outcome, design["facts"])
        except Fault as fault:
            raise Fault(f"{design['name']}: {fault}") from None
        with lock:
            compared.append(outcome.compared)
            for fault in outcome.faults:
                faults.setdefault(fault, []).append(design["name"])

    broken = in_parallel(one, different.values())
    say(f"{len(compared)} programs ran, {len(broken)} could not; "
        f"{sum(compared)} comparisons found {len(faults)} faults")
    for fault in broken[:5]:
        print(fault)
    for fault, names in sorted(faults.items(), key=lambda item: -len(item[1]))[:60]:
        print(f"{fault} ({len(names)} times, first in {names[0]})")
    return 1 if broken or faults or not different else 0


if __name__ == "__main__":
    sys.exit(main())
