"""The sample firmware package of a family: core and device headers, start-up code, linker scripts and drivers.

Its sources in firmware/ are plain C with Jinja2 where families differ. A driver belongs to a package if the family has
the peripheral that it drives.
"""

import re

import jinja2

from device import FLASH_LETTER, GPIO_PIN
from settings import pin_defines
from source import Map, Shape, failing_line, traits

VERSION = "2.0.0"

MEMORY = Shape("a memory map", {"flash": "text", "sram": "text", "fpu": "flag", "buses": "list",
                                "ungated": "names"}, {"remaps": "list", "clocks": "map"})
BUS = Shape("a bus", {"name": "text", "base": "text", "step": "text", "peripherals": "names"})

# Modules of drivers that are named otherwise than the kind of peripheral that they drive.
MODULES = {"USBFS": "usb", "USB_OTGFS": "usb", "I2S": "spi", "IRTMR": "scfg", "NVIC": "misc", "ADC-Common": "adc"}
# Blocks of registers that are called otherwise than the instance.
BLOCKS = {"IRTMR": "SCFG", "ADC-Common": "ADCCOM"}
# Without a driver: SYSTEM is code of the project.
DRIVERLESS = {"SYSTEM"}
# Values that tell the generators something and never become text of a program.
NO_TOKENS = {("SYSTEM", "Time_Base"), ("SYSTEM", "UART_Printf"), ("CRM", "Clock-out"), ("CRM", "Clock-out1"),
             ("CRM", "Clock-out2"), ("DMA", "Mode"), ("EDMA", "Mode"), ("USART", "Mode"), ("USART", "VirtualMode"),
             ("I2C", "I2C_Mode"), ("CAN", "BaudRate_Result_Select"), ("EMAC", "PHYModel")}
# What each package has whatever its family lists.
ALWAYS = ["crm", "flash", "gpio", "misc", "pwc"]

# The packages of series up to this code, and of these others, keep the device's files among those of the core.
LAST_OLD_LAYOUT = 34
OTHER_OLD_LAYOUT = (37, 149)
CORE = "libraries/cmsis/cm4/core_support"
OLD_LAYOUT = {"inc": "libraries/cmsis/cm4/device_support", "src": "libraries/cmsis/cm4/device_support",
              "startup": "libraries/cmsis/cm4/device_support/startup"}
NEW_LAYOUT = {"inc": "libraries/device/inc", "src": "libraries/device/src", "startup": "libraries/device/src/startup"}
FIELDS_OF_REGISTER = 8

# Of a Cortex-M4, by their number, from 1.
CORE_HANDLERS = ["Reset_Handler", "NMI_Handler", "HardFault_Handler", "MemManage_Handler", "BusFault_Handler",
                 "UsageFault_Handler", None, None, None, None, "SVC_Handler", "DebugMon_Handler", None,
                 "PendSV_Handler", "SysTick_Handler"]


# The Keil name of a device of these series stands behind a dash.
KEIL_DASH = {"ZV32F403", "ZV32F403A", "ZV32F407", "ZV32F413", "ZV32F415", "ZV32F421", "ZV32F423", "ZV32F425",
             "ZV32F435", "ZV32F437", "ZV32WB415", "ZV32A403A"}

# Folder of a toolchain, file -> template below project/, and what the versions of one toolchain differ in.
ECLIPSE = {".project": "Eclipse/project.xml.j2", ".cproject": "Eclipse/cproject.xml.j2"}
IAR = {f"template.{suffix}": f"IAR/template.{suffix}.j2" for suffix in ("ewp", "ewd", "ewt", "eww")}
SKELETONS = [
    ("ZV32_IDE", {**ECLIPSE, "preferences.ini": "Eclipse/preferences.ini.j2"}, {}),
    ("Eclipse_gcc", ECLIPSE, {}),
    ("IAR_V7.4", IAR, {"iar": {"file": 2, "general": 22, "compiler": 31, "assembler": 9, "linker": 16, "cspy": 26}}),
    ("IAR_V8.2", IAR, {"iar": {"file": 3, "general": 29, "compiler": 34, "assembler": 10, "linker": 20, "cspy": 29}}),
    ("IAR_V9.3", IAR, {"iar": {"file": 4, "general": 35, "compiler": 37, "assembler": 11, "linker": 27, "cspy": 33}}),
    ("MDK_V4", {"template.uvopt": "MDK/options.xml.j2", "template.uvproj": "MDK/project.xml.j2"}, {"v5": False}),
    ("MDK_V5", {"template.uvoptx": "MDK/options.xml.j2", "template.uvprojx": "MDK/project.xml.j2"}, {"v5": True}),
    ("Makefile", {"Makefile": "Makefile/Makefile.j2"}, {}),
    ("CMake", {"CMakeLists.txt": "CMake/CMakeLists.txt.j2", "CMakePresets.json": "CMake/CMakePresets.json.j2",
               "cmake/gcc-arm-none-eabi.cmake": "CMake/gcc-arm-none-eabi.cmake.j2",
               "cmake/zv32_chiploom/CMakeLists.txt": "CMake/zv32_chiploom.txt.j2"}, {}),
]


class Firmware:
    """The package of one family; nothing without the family's memory map."""

    def __init__(self, folder, family, sources, problems):
        self.family = family
        self.problems = problems
        self.root = sources.root / "firmware"
        self.source = None
        name = f"families/{folder}/memory.yaml"
        if not (sources.root / name).exists() or not family.series:
            return
        source = sources.load(name)
        if source is None or not MEMORY.check(source, problems):
            return
        code = sources.load(f"families/{folder}/code.yaml")
        if not isinstance(code, Map) or "folder" not in code:
            return  # told with the templates
        self.source = source
        self.name = str(code["folder"])
        self.clock = traits(code.get("clock", {}))
        self.instances = {}  # kind -> instances of any series, in the order of the family
        for series in family.series:
            for instance in series.peripherals:
                known = self.instances.setdefault(str(instance.entry["kind"]), [])
                if instance.name not in known:
                    known.append(instance.name)
        self.buses = [self._bus(index, bus) for index, bus in enumerate(source["buses"]) if BUS.check(bus, problems)]
        told = len(problems.lines)
        self._check_addresses()
        sound = len(problems.lines) == told
        self.modules = self._modules()
        self.prefix = self.name.lower()
        if sound:  # what has no address would be told a second time
            self._check_lists(code)

    def _check_lists(self, code):
        gated = {one["clock"] for bus in self.buses for one in bus["peripherals"] if one["gated"]}
        ports = {f"GPIO{port}" for port in self._ports()}  # their lines are made for every family
        self._check_listed(code, "clocks", gated - ports, gated - ports, "a clock of the memory map")
        drivers = set(self.modules)
        self._check_listed(code, "modules", drivers - set(ALWAYS), drivers, "a driver of the family")

    def _check_listed(self, code, key, needed, allowed, what):
        """A list of code.yaml names what the package has, all of it and nothing else."""
        listed = {str(name) for name in code.get(key, [])}
        for name in sorted(needed - listed):
            self.problems.add(code.place_of(key), f"'{name}' is {what}, but not listed", f"list it under '{key}'")
        for name in sorted(listed - allowed):
            self.problems.add(code.place_of(key), f"'{name}' is not {what}", "leave it out, or correct the name")

    @property
    def folder(self):
        return f"{self.name}_Firmware_Library_V{VERSION}"

    def _number(self, source, key):
        try:
            return int(source[key], 16)
        except ValueError:
            self.problems.add(source.place_of(key), f"'{source[key]}' is no address", "write hexadecimal digits")
            return 0

    def _bus(self, index, source):
        base, step = self._number(source, "base"), self._number(source, "step")
        if len(source["peripherals"]) > 32:
            self.problems.add(source.place, f"{source['name']} has more peripherals than a register has bits",
                              "move some to another bus")
        return {"name": str(source["name"]), "index": index, "base": base,
                "peripherals": [{"name": str(name), "offset": step * bit, "bit": bit,
                                 "clock": str(self.source.get("clocks", {}).get(name, name)),
                                 "gated": name not in self.source["ungated"]}
                                for bit, name in enumerate(source["peripherals"])]}

    def _check_addresses(self):
        """Each block of registers has one address, and each peripheral of the family a block."""
        placed = {}
        for bus, source in zip(self.buses, self.source["buses"]):
            for one in bus["peripherals"]:
                if one["name"] in placed:
                    self.problems.add(source.place_of("peripherals"), f"'{one['name']}' has two addresses",
                                      "remove one")
                address = bus["base"] + one["offset"]
                if address in placed.values():
                    self.problems.add(source.place_of("base"), f"'{one['name']}' stands where another peripheral is",
                                      "part the buses, or make their steps smaller")
                placed[one["name"]] = address
        for name in self.source["ungated"]:
            if name not in placed:
                self.problems.add(name.place, f"'{name}' stands on no bus", "list it under a bus, or leave it out")
        for kind, names in self.instances.items():
            for name in names:
                block = block_of(kind, name)
                if block and block not in placed:
                    self.problems.add(self.source.place_of("buses"), f"the peripheral '{name}' has no address",
                                      f"list {block} under a bus")
        for block in [*(f"GPIO{port}" for port in self._ports()), *(["IOMUX"] if self.family.style == "remap" else []),
                      *(str(one["name"]) for table in self.family.series[-1].dma_tables for one in table.controllers)]:
            if block not in placed:
                self.problems.add(self.source.place_of("buses"), f"'{block}' has no address", "list it under a bus")

    def _ports(self):
        return sorted({match.group(1) for match in map(GPIO_PIN.match, self.family.table.functions) if match})

    def _modules(self):
        """The drivers of the family; a header and its source come together."""
        found = {module_of(kind) for kind in self.instances if kind not in DRIVERLESS} | set(ALWAYS)
        result = []
        for module in sorted(found):
            present = [(self.root / path).exists()
                       for path in (f"drivers/inc/{module}.h.j2", f"drivers/src/{module}.c.j2")]
            if all(present):
                result.append(module)
            elif any(present):
                self.problems.add(self.source.place, f"the driver '{module}' is only half there",
                                  "write both its header and its source below firmware/drivers")
        return result

    # ---- what templates ask ----

    def variables(self):
        family = self.family
        series = family.series
        features = {family.name, family.style}
        entries = {}
        for one in series:
            features |= one.features
            for instance in one.peripherals:
                entries[instance.name] = instance.entry
                features |= {str(feature) for feature in instance.entry.get("features", [])}
        everything = {name for names in self.instances.values() for name in names}
        blocks = {one["name"] for bus in self.buses for one in bus["peripherals"]}
        remaps, registers = self._remaps()
        vectors = self._vectors()
        figures = {key: list(entry["vars"][key])
                   for name, key in (("PWC", "wkup"), ("EXINT", "lines"), ("SCFG", "ultra_pins"))
                   for entry in [entries.get(name, {})] if key in entry.get("vars", {})}
        return {
            "prefix": self.prefix, "family": family.name, "style": family.style, "features": features,
            "series": [one.name for one in series], "title": " and ".join(one.name for one in series),
            "has": lambda name: name in everything or name in blocks,
            "instances": lambda kind: self.instances.get(kind, []),
            "modules": self.modules, "vectors": vectors, "vector_table": _table(vectors),
            "core_handlers": CORE_HANDLERS, "ports": self._ports(),
            "memory": {"flash": self.source["flash"], "sram": self.source["sram"],
                       "fpu": self.source["fpu"] == "true", "buses": self.buses},
            "dma": self._dma("DMA"), "edma": self._dma("EDMA"), "scfg_requests": self._moved_requests(),
            "remaps": remaps, "remap_registers": registers, "wakeup_pins": figures.get("wkup", []),
            "exint_lines": figures.get("lines", []), "ultra_pins": figures.get("ultra_pins", []),
            "clock": self.clock, "muxes": self._muxes(),
            "debug_pauses": [name for kind in ("TMR", "I2C", "CAN", "ERTC", "RTC")
                             for name in self.instances.get(kind, [])],
        }

    def _muxes(self):
        """How many functions a pin can choose among; a power of two."""
        numbers = [int(one.mux) for _, one in self.family.table.all_functions() if one.mux is not None]
        numbers.append(int(self.family.table.source.get("eventout_mux", 0)))
        return 1 << max(numbers).bit_length()

    def _vectors(self):
        """Those of all series by number; a hole is a vector that no series has."""
        found = {}
        for series in self.family.series:
            for one in series.vectors.vectors:
                found[int(one["number"])] = {"value": str(one["value"]), "number": int(one["number"]),
                                             "handler": one["value"].removesuffix("_IRQn") + "_IRQHandler",
                                             "text": str(one["text"][0])}
        return [found[number] for number in sorted(found)]

    def _dma(self, name):
        table = next((table for table in self.family.series[-1].dma_tables if table.name == name), None)
        if table is None:
            return {"flexible": False, "requests": [], "generators": [], "controllers": []}
        return {"flexible": table.flexible, "requests": [request.name for request in table.requests],
                "generators": [request.name for request in table.requests if request.generated],
                "controllers": [{"name": str(one["name"]), "channels": int(one["channels"])}
                                for one in table.controllers]}

    def _moved_requests(self):
        """The requests that can move to another channel, with the numbers of both."""
        found = {}
        for request in [one for table in self.family.series[-1].dma_tables for one in table.requests]:
            for channel, condition in request.channels.items():
                match = re.fullmatch(r"(!?)Semaphore_SCFG_(\w+)_Remap", condition)
                if match:
                    one = found.setdefault(match.group(2), {"name": match.group(2)})
                    one["first" if match.group(1) else "second"] = channel.rpartition("Channel")[2]
        return list(found.values())

    def _remaps(self):
        """Each peripheral's groups share a field of four bits; blocks with two faces share theirs."""
        fields = [[str(name) for name in one] for one in self.source.get("remaps", [])]
        groups = {}
        for ip, _, mux, _ in self.family.table.groups:
            groups.setdefault(ip, []).append(str(mux))
        for names in groups.values():
            if any(names) and names not in fields:
                fields.append(names)
        result = []
        for index, names in enumerate(fields):
            for value, name in enumerate(names):
                if name:
                    result.append({"name": name, "register": index // FIELDS_OF_REGISTER,
                                   "shift": index % FIELDS_OF_REGISTER * 4, "value": value})
        return result, -(-len(fields) // FIELDS_OF_REGISTER)

    # ---- the files ----

    def products(self):
        """Relative path -> text. Tokens that no header declares become problems."""
        if self.source is None:
            return {}
        result = dict(self._files())
        headers = "".join(text for path, text in result.items() if path.endswith(".h"))
        self._check_tokens(set(re.findall(r"\w+", re.sub(r"/\*.*?\*/", "", headers, flags=re.DOTALL))))
        return result

    def _check_tokens(self, declared):
        """What the database gives to the generators as text of the program stands in a header."""
        for series in self.family.series:
            for instance in series.peripherals:
                kind = str(instance.entry["kind"])
                if module_of(kind) not in self.modules:
                    continue
                description = instance.description
                for parameter in description.parameters:
                    if (kind, str(parameter["name"])) not in NO_TOKENS:
                        for value in description.values_of(parameter):
                            self._check_token(value["value"], declared, parameter.place)
                if description.content.get("content") == "pins":
                    for pin in pin_defines(series, description.content):
                        defines = pin.attributes + [one for mux in pin.children for one in mux.attributes]
                        for name, token in defines:
                            if name not in ("Name", "SignalName"):
                                self._check_token(token, declared, description.content.place)

    def _check_token(self, token, declared, place):
        if token not in declared:
            self.problems.add(place, f"no header of {self.name} declares '{token}'",
                              "declare it below firmware/, or name the parameter in firmware.py if only generators "
                              "read it")

    def _files(self):
        environment = jinja2.Environment(loader=jinja2.FileSystemLoader(str(self.root)), trim_blocks=True,
                                         lstrip_blocks=True, keep_trailing_newline=True,
                                         undefined=jinja2.StrictUndefined)
        variables = self.variables()

        def made(target, template, **extra):
            try:
                text = environment.get_template(template).render({**variables, **extra})
            except jinja2.TemplateError as error:
                self.problems.add(failing_line(error, self.root.parent, f"firmware/{template}"),
                                  f"cannot be filled in for {self.name} ({error})",
                                  "correct the template, or the data that it asks for")
                text = ""
            return f"{self.folder}/{target}", text

        layout = self._layout()
        prefix = self.prefix
        yield f"{self.folder}/LICENSE", (self.root.parent / "LICENSE").read_text(encoding="utf-8")
        yield made(f"{CORE}/core_cm4.h", "cmsis/core_cm4.h.j2")
        yield made(f"{layout['inc']}/{prefix}.h", "device/device.h.j2")
        yield made(f"{layout['inc']}/system_{prefix}.h", "device/system.h.j2")
        yield made(f"{layout['src']}/system_{prefix}.c", "device/system.c.j2")
        for tools in ("gcc", "iar", "mdk"):
            yield made(f"{layout['startup']}/{tools}/startup_{prefix}.s", f"device/startup_{tools}.s.j2")
        for name, flash, ram in self._sizes():
            for tools, target in (("gcc", f"{name}_FLASH.ld"), ("iar", f"{name}.icf")):
                yield made(f"{layout['startup']}/{tools}/linker/{target}", f"device/linker.{target[-3:].strip('.')}.j2",
                           device=name, flash_size=flash * 1024, ram_size=ram * 1024)
        for module in self.modules:
            yield made(f"libraries/drivers/inc/{prefix}_{module}.h", f"drivers/inc/{module}.h.j2")
            yield made(f"libraries/drivers/src/{prefix}_{module}.c", f"drivers/src/{module}.c.j2")
        for series in self.family.series:
            board = f"project/zv_start_{series.name.lower().removeprefix('zv32')}"
            yield made(f"{board}/templates/inc/{prefix}_conf.h", "project/conf.h.j2")
            yield made(f"{board}/templates/src/main.c", "project/main.c.j2")
            for target, template, extra in self._skeletons(series, layout):
                yield made(f"{board}/templates/{target}", f"project/{template}", **extra)
        yield made("middlewares/README.md", "project/middlewares.md.j2")

    def _layout(self):
        code = int(self.family.series[0].source["code"])
        return OLD_LAYOUT if code <= LAST_OLD_LAYOUT or code in OTHER_OLD_LAYOUT else NEW_LAYOUT

    def _skeletons(self, series, layout):
        """The projects of all toolchains, filled in for the first device of the series."""
        device = series.devices[0]
        name = str(device["name"])
        common = {"device": name, "flash_size": int(device["flash"]) * 1024, "ram_size": int(device["ram"]) * 1024,
                  "linker": f"{series.name}x{FLASH_LETTER[int(device['flash'])]}", "startup_dir": layout["startup"],
                  "device_src_dir": layout["src"], "mdk_series": series.name,
                  "keil_device": f"-{name}" if series.name in KEIL_DASH else name}
        # The series of this file itself: elsewhere `series` is the list of those that share a package.
        common["series"] = series.name
        for folder, files, extra in SKELETONS:
            for target, template in files.items():
                yield f"{folder}/{target}", template, {**common, **extra}

    def _sizes(self):
        """(name, flash, memory in KB) for each flash size of each series; the name is as ZV32F421x8."""
        found = {}
        for series in self.family.series:
            for device in series.devices:
                flash, ram = int(device["flash"]), int(device["ram"])
                name = f"{series.name}x{FLASH_LETTER[flash]}"
                if found.setdefault(name, (flash, ram)) != (flash, ram):
                    self.problems.add(device.place, f"{device['name']} shares the linker script {name} with a device "
                                      "of other sizes", "give devices of one flash size the same memory")
        return [(name, *found[name]) for name in sorted(found)]


def _table(vectors):
    """The vectors by number, None where there is a hole."""
    table = [None] * (vectors[-1]["number"] + 1)
    for one in vectors:
        table[one["number"]] = one
    return table


def module_of(kind):
    """The driver of a kind of peripheral."""
    return "xmc" if kind.startswith("XMC") else MODULES.get(kind, kind.lower())


def block_of(kind, name):
    """The block of registers behind an instance; empty where there is none of its own."""
    if kind in ("SYSTEM", "NVIC", "GPIO", "DMA"):
        return ""
    if kind == "I2S":
        return name.replace("I2S", "SPI")
    return "XMC" if kind.startswith("XMC") else BLOCKS.get(name, name)
