"""Generated designs do on a simulated chip what the design says.

Each program is compiled for the host with the drivers of its package and runs to its endless loop (chip.c is the chip).
Then the calls that it made and the registers that it left are compared with the design: order of the calls, clocks of
the peripherals before their use, frequencies of the buses, pins, baud rates, priorities, DMA channels.

    run_designs.py TOOL FIRMWARE FOLDER DATA [OPTION OF THE TOOL...]
"""

import hashlib
import pathlib
import re
import struct
import sys

import yaml

from designs import Fault, Package, Sources, generate, in_parallel, run

HERE = pathlib.Path(__file__).parent
FAMILIES = {"ZV32F421": "f421", "ZV32F403A_407": "f403a"}
HOST = ["gcc", "-std=gnu11", "-O0", "-no-pie", "-w", "-DUSE_STDPERIPH_DRIVER", "-finstrument-functions",
        "-finstrument-functions-exclude-file-list=core_cm4.h", "-Dmain=generated_main"]
SYSTEM = 0xE000E000
MODES = {"GPIO_MODE_INPUT": 0, "GPIO_MODE_OUTPUT": 1, "GPIO_MODE_MUX": 2, "GPIO_MODE_ANALOG": 3}
PULLS = {"GPIO_PULL_NONE": 0, "GPIO_PULL_UP": 1, "GPIO_PULL_DOWN": 2}
WIDTHS = {"BYTE": 0, "HALFWORD": 1, "WORD": 2}
LEVELS = {"LOW": 0, "MEDIUM": 1, "HIGH": 2, "VERY_HIGH": 3}


class Chip:
    """What the data say of one family, and its drivers for the host."""

    def __init__(self, firmware, data, folder, name):
        self.package = Package(firmware, name)
        family = data / "families" / FAMILIES[name]
        memory = yaml.safe_load((family / "memory.yaml").read_text(encoding="utf-8"))
        self.bases, self.clocks = {}, {}
        for index, bus in enumerate(memory["buses"]):
            for bit, instance in enumerate(bus["peripherals"]):
                self.bases[instance] = int(bus["base"], 16) + bit * int(bus["step"], 16)
                self.clocks[instance] = index << 8 | bit
        self.apb1 = memory["buses"][0]["peripherals"]
        ungated = set(memory["ungated"])
        self.vectors = {one["value"]: one["number"] for one in
                        yaml.safe_load((family / "vectors.yaml").read_text(encoding="utf-8"))}
        groups = family / "groups.yaml"
        self.groups = yaml.safe_load(groups.read_text(encoding="utf-8")) if groups.exists() else {}
        gpio = (self.package.root / f"libraries/drivers/inc/{self.package.prefix}_gpio.h").read_text()
        self.remaps = {found[0]: tuple(map(int, found[1:])) for found in
                       re.findall(r"#define (\w+) +IOMUX_REMAP\((\d+), +(\d+), (\d+)\)", gpio)}
        dma = (self.package.root / f"libraries/drivers/inc/{self.package.prefix}_dma.h").read_text()
        self.requests = {found[0]: int(found[1]) for found in re.findall(r"DMA_FLEXIBLE_(\w+) += (\d+)", dma)}
        self.folder = folder / ("host-" + self.package.hash[:12])
        self.folder.mkdir(parents=True, exist_ok=True)
        rows = [f'  {{"{instance}", 0x{base:X}u, {"NO_CLOCK" if instance in ungated else hex(self.clocks[instance])}, '
                f'{int(instance in ("ERTC", "RTC", "BPR"))}}},' for instance, base in self.bases.items()
                if instance not in ("CRM",)]
        (self.folder / "blocks.inc").write_text("\n".join(rows) + "\n")
        self.archive = self.folder / "drivers.a"

    def compile(self, source, target, *words):
        run([*HOST, *words, *self.package.includes, "-x", "c", "-c", source, "-o", target])
        return target

    def prepare(self):
        objects = [self.compile(source, self.folder / (source.stem + ".o"), f"-I{self.package.conf}")
                   for source in self.package.sources]
        self.archive.unlink(missing_ok=True)
        run(["ar", "rcs", self.archive, *objects])
        self.object = self.compile(HERE / "chip.c", self.folder / "chip.o", f"-I{self.package.conf}",
                                   f"-I{self.folder}", "-Umain",
                                   f'-DDEVICE_HEADER="{self.package.prefix}.h"')


class Run:
    """One program: compiled, run, and compared with its design."""

    def __init__(self, chip, folder, design):
        self.chip, self.design, self.facts = chip, design, design["facts"]
        self.sources = Sources(folder, design)
        mark = hashlib.sha1(repr(sorted(design["files"].items())).encode()).hexdigest()
        self.folder = folder / "programs" / mark
        self.faults = []

    def __call__(self):
        self.folder.mkdir(parents=True, exist_ok=True)
        self.sources.lay_out()
        objects = []
        for name, text in self.sources.sources:
            source = self.folder / pathlib.Path(name).name
            content = (self.sources.texts / text).read_text(encoding="latin-1")
            if source.name == "main.c":
                content = content.replace("/* add user code begin private includes */",
                                          "/* add user code begin private includes */\nvoid judge_end(void);")
                content = content.replace("/* add user code begin 3 */", "/* add user code begin 3 */ judge_end();")
            # The library of the host has these already.
            content = re.sub(r"\b_(write|read|close|lseek|fstat|isatty|sbrk|exit|kill|getpid)\b", r"generated_\1", content)
            source.write_text(content, encoding="latin-1")
            objects.append(self.chip.compile(source, source.with_suffix(".o"), f"-I{self.sources.include}"))
        # The frequency of the crystal stands in the generated conf.h, which these read as well.
        for source in self.chip.package.sources:
            if source.stem.endswith("_crm") or source.stem.startswith("system_"):
                target = self.folder / (source.stem + ".o")
                objects.append(self.chip.compile(source, target, f"-I{self.sources.include}"))
        program = self.folder / "program"
        run(["gcc", "-no-pie", *objects, self.chip.object, self.chip.archive, "-o", program])
        run(["timeout", "20", program], self.folder)
        self.read(program)
        self.judge()
        for file in self.folder.iterdir():
            file.unlink()

    def read(self, program):
        names = {}
        for line in run(["nm", program]).splitlines():
            words = line.split()
            if len(words) == 3 and words[1] in "tT":
                names[int(words[0], 16)] = words[2]
        self.memory = (self.folder / "registers").read_bytes()
        self.calls, self.clocks, depth = [], [], 0
        for line in (self.folder / "record").read_text().splitlines():
            word, rest = line.split(" ", 1)
            if word == "enter":
                depth += 1
                if depth == 2:  # called by main itself
                    self.calls.append(names[int(rest, 16)])
            elif word == "exit":
                depth -= 1
            elif word == "clocks":
                self.clocks = [int(one) for one in rest.split()]
            elif word == "core":
                self.core = int(rest)
            else:
                self.faults.append(f"{word} {rest}")

    def word(self, address):
        offset = address - 0x40000000 if address < SYSTEM else address - SYSTEM + 0x40000
        return struct.unpack_from("<I", self.memory, offset)[0]

    def byte(self, address):
        return self.memory[address - SYSTEM + 0x40000]

    def expect(self, what, is_, expected):
        if is_ != expected:
            self.faults.append(f"{what} is {is_}, not {expected}")

    def judge(self):
        self.frequencies()
        self.order()
        for pin in self.facts["pins"]:
            self.pin(pin)
        self.remapped()
        self.priorities()
        for channel in self.facts["dma"]:
            self.channel(channel)
        self.baud_rates()

    def frequencies(self):
        for name, is_ in zip(("sclk", "ahb", "apb1", "apb2"), self.clocks):
            # A design shows megahertz with rounding; the drivers cut hertz off.
            if abs(is_ - self.facts["clocks"][name] * 1000000) > 20:
                self.faults.append(f"{name} is {is_} Hz, not {self.facts['clocks'][name]} MHz")
        self.expect("system_core_clock", self.core, self.clocks[1])

    def order(self):
        made = [call for call in self.calls if call.startswith("lm_") and call != "lm_dma_channel_config"]
        wanted = [call for call in self.facts["calls"] if call.startswith("lm_")]
        self.expect("calls of main", made, wanted)

    def pin(self, pin):
        found = re.search(r"\bP([A-H])(\d+)\b", pin["pin"].replace("_", " "))
        # The debug port has its pins from reset, and what the battery keeps alive drives its pins itself.
        if not found or "GPIO mode" not in pin or pin["signal"].startswith(("DEBUG_", "ERTC_", "RTC_")):
            return
        base, number = self.chip.bases["GPIO" + found[1]], int(found[2])
        name = f"{pin['pin']} as {pin['signal']}"

        def field(register, bits=2):
            return self.word(base + register) >> number * bits & (1 << bits) - 1

        self.expect("mode of " + name, field(0x00), MODES[pin["GPIO mode"]])
        if "Pull type" in pin:
            self.expect("pull of " + name, field(0x04), PULLS[pin["Pull type"]])
        if pin["GPIO mode"] in ("GPIO_MODE_OUTPUT", "GPIO_MODE_MUX") and "GPIO type" in pin:
            self.expect("type of " + name, field(0x0C, 1), int(pin["GPIO type"] == "GPIO_OUTPUT_OPEN_DRAIN"))
        if pin.get("GPIO type") == "GPIO_OUTPUT_PUSH_PULL" and "mux" in pin and pin["GPIO mode"] == "GPIO_MODE_MUX":
            mux = self.word(base + 0x28 + number // 8 * 4) >> number % 8 * 4 & 15
            self.expect("function of " + name, f"GPIO_MUX_{mux}", pin["mux"])

    def remapped(self):
        """Each peripheral's signals are where the group brings them that the remap registers choose."""
        places = {pin["signal"]: pin["pin"] for pin in self.facts["pins"]}
        for instance, groups in self.chip.groups.items():
            used = {signal.split("_", 1)[1]: re.match(r"P[A-H]\d+", pin) for signal, pin in places.items()
                    if signal.startswith(instance + "_")}
            used = {signal: pin[0] for signal, pin in used.items() if pin}
            if not used or instance not in self.facts["peripherals"]:
                continue
            chosen = groups[0]
            for group in groups[1:]:
                register, shift, value = self.chip.remaps[group["mux"]]
                if self.word(self.chip.bases["IOMUX"] + 0x20 + 4 * register) >> shift & 15 == value:
                    chosen = group
            at = dict(one.rstrip("!").split("=") for one in chosen["at"].split())
            for signal, pin in used.items():
                if signal in at:
                    self.expect(f"place of {instance}_{signal}", at[signal], pin)

    def priorities(self):
        group = int(self.facts["group"][-1])  # bits of the preemption
        for vector in self.facts["vectors"]:
            number = self.chip.vectors.get(vector["irq"])
            if number is None or number < 0:
                continue
            expected = (vector["preemption"] << 4 - group | vector["sub"] & (1 << 4 - group) - 1) << 4
            self.expect(f"priority of {vector['irq']}", self.byte(0xE000E400 + number), expected & 0xFF)
            enabled = self.word(0xE000E100 + number // 32 * 4) >> number % 32 & 1
            self.expect(f"enable of {vector['irq']}", enabled, 1)

    def data_register(self, request):
        owner, _, event = request.partition("_")
        kind = owner.rstrip("0123456789")
        owner = owner.replace("I2S", "SPI")
        return {"USART": ("dt", owner), "UART": ("dt", owner), "SPI": ("dt", owner), "I2S": ("dt", owner),
                "I2C": ("dt", owner), "ADC": ("odt", owner)}.get(kind)

    def channel(self, channel):
        controller, number = re.fullmatch(r"DMA(\d)_Channel(\d)", channel["channel"]).groups()
        base = self.chip.bases["DMA" + controller] + 32 * int(number)
        name, control = f"{channel['channel']} for {channel['request']}", self.word(base)
        self.expect("switch of " + name, control & 1, 1)
        direction = {"PERIPHERAL_TO_MEMORY": 0, "MEMORY_TO_PERIPHERAL": 1 << 4, "MEMORY_TO_MEMORY": 1 << 14}
        self.expect("direction of " + name, control & (1 << 4 | 1 << 14), direction[channel["Direction"][8:]])
        self.expect("repetition of " + name, control >> 5 & 1, int(channel.get("Mode") == "CIRCULAR"))
        self.expect("step at the peripheral of " + name, control >> 6 & 1, int(channel["PeriphInc"] == "TRUE"))
        self.expect("step in memory of " + name, control >> 7 & 1, int(channel["MemInc"] == "TRUE"))
        for key, shift in (("PeriphDataAlignment", 8), ("MemDataAlignment", 10)):
            self.expect(f"{key} of {name}", control >> shift & 3, WIDTHS[channel[key].split("_WIDTH_")[1]])
        self.expect("priority of " + name, control >> 12 & 3, LEVELS[channel["Priority"].split("PRIORITY_")[1]])
        register = self.data_register(channel["request"])
        if register:
            offset = self.offset(*register)
            self.expect("address of " + name, self.word(base + 8), self.chip.bases[register[1]] + offset)
        if self.chip.requests and not channel["request"].startswith("MEMTOMEM"):
            self.expect("request of " + name, self.word(base + 16), self.chip.requests[channel["request"]])

    def offset(self, field, instance):
        module = {"USA": "usart", "UAR": "usart", "SPI": "spi", "I2C": "i2c", "ADC": "adc"}[instance[:3]]
        header = self.chip.package.root / f"libraries/drivers/inc/{self.chip.package.prefix}_{module}.h"
        return int(re.search(rf"\b{field};\s*/\*[*<]* 0x(\w+)", header.read_text())[1], 16)

    def baud_rates(self):
        for instance, values in self.facts["peripherals"].items():
            if instance.rstrip("0123456789") not in ("USART", "UART") or not values.get("BaudRate", "").isdigit():
                continue
            clock = self.clocks[2] if instance in self.chip.apb1 else self.clocks[3]
            divider = self.word(self.chip.bases[instance] + self.offset("baudr", instance))
            baud = int(values["BaudRate"])
            self.expect(f"divider of {instance} for {baud} baud at {clock} Hz", divider, (clock * 2 // baud + 1) // 2)


def main():
    tool, firmware, folder, data = sys.argv[1], *map(pathlib.Path, sys.argv[2:5])
    made = generate(tool, folder, *sys.argv[5:])
    chips = {name: Chip(firmware, data, folder, name) for name in {design["folder"] for design in made["designs"]}}
    for chip in chips.values():
        chip.prepare()
    different = {repr(sorted(design["files"].items())): design for design in made["designs"]}
    runs = [Run(chips[design["folder"]], folder, design) for design in different.values()]
    broken = in_parallel(lambda one: one(), runs)
    faults = {}
    for one in runs:
        for fault in one.faults:
            faults.setdefault(fault, []).append(one.design["name"])
    print(f"{len(runs)} different programs ran; {len(broken)} could not, and {len(faults)} faults were found in others")
    for fault in broken[:5]:
        print(fault)
    for fault, names in list(faults.items())[:40]:
        print(f"{fault} ({len(names)} times, first in {names[0]})")
    return 1 if broken or faults or not runs else 0


if __name__ == "__main__":
    sys.exit(main())
