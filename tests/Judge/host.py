"""Generated programs on the host: drivers for a family that work on memory, and what a program leaves behind."""

import functools
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import threading

from designs import FLEETING, Chip, Fault, Sources, hash_of, run

HERE = pathlib.Path(__file__).parent
CC = ["gcc", "-std=gnu11", "-O0", "-no-pie", "-w", "-pipe", "-DUSE_STDPERIPH_DRIVER", "-finstrument-functions",
      "-finstrument-functions-exclude-file-list=core_cm4.h", "-fsanitize-coverage=trace-pc", "-Dmain=generated_main"]
SYSTEM = (0xE000E000, 0x1000)
REGION = 0x10000
SECONDS = 20


class HostChip(Chip):
    """A family's drivers for the host, the addresses of its peripherals and the values of its constants."""

    def __init__(self, firmware, data, folder, name):
        super().__init__(firmware, data, name)
        self.bases, self.clocks = {}, {}
        for index, bus in enumerate(self.memory["buses"]):
            for bit, instance in enumerate(bus["peripherals"]):
                self.bases[instance] = int(bus["base"], 16) + bit * int(bus["step"], 16)
                self.clocks[instance] = index << 8 | bit
        self.apb1 = self.memory["buses"][0]["peripherals"]
        self.vectors = {one["value"]: one["number"] for one in self.read("vectors.yaml")}
        self.groups = self.read("groups.yaml") or {}
        self.remaps = {found[0]: tuple(map(int, found[1:])) for found in
                       re.findall(r"#define (\w+) +IOMUX_REMAP\((\d+), +(\d+), (\d+)\)", self.header("gpio"))}
        self.ertc_lines = {name: int(line) for name, line in self.variables_of("ERTC").items()
                           if name.endswith("_line")}
        self.lock = threading.Lock()
        self.regions = [(base, REGION) for base in sorted({base & -REGION for base in self.bases.values()})] + [SYSTEM]
        self.folder = folder / "host" / hash_of(self.hash, CC, (HERE / "chip.c").read_bytes())
        self.folder.mkdir(parents=True, exist_ok=True)
        self.crystals = {}

    def variables_of(self, kind):
        """The figures of a kind of peripheral, those of the family before those of the kind."""
        family = self.read("family.yaml")
        own = next((one.get("vars", {}) for one in family["peripherals"] if one["kind"] == kind), {})
        common = (self.read(f"../../kinds/{kind}.yaml") or {}).get("vars", {})
        return {**common, **family.get("vars", {}), **own}

    @functools.cache
    def bits(self, expression):
        """An expression over the constants of the drivers."""
        return eval(expression, {}, self.constants)  # of the tables in registers.py

    @functools.cache
    def knows(self, expression):
        """Whether the drivers of the family have all constants of an expression."""
        return all(name in self.constants for name in re.findall(r"\b[A-Z_][A-Z]\w*", expression))

    def compile(self, source, target, *words):
        run([*CC, *words, *self.includes, "-x", "c", "-c", source, "-o", target])
        return target

    def prepare(self, members):
        """Compiles the drivers; `members` are the registers, as (type, member), whose places are asked for later."""
        ungated = set(self.memory["ungated"])
        rows = [f'  {{"{instance}", 0x{base:X}u, {"NO_CLOCK" if instance in ungated else hex(self.clocks[instance])}, '
                f'{int(instance in ("ERTC", "RTC", "BPR"))}}},' for instance, base in self.bases.items()
                if instance not in ("CRM",)]
        regions = [f"  {{0x{base:X}u, 0x{size:X}u}}," for base, size in self.regions]
        (self.folder / "blocks.inc").write_text("\n".join(
            ["static const struct block blocks[] = {", *rows, "};", "static const struct region regions[] = {",
             *regions, "};", ""]))
        self.archive = self.folder / "drivers.a"
        objects = [self.compile(source, self.folder / (source.stem + ".o"), f"-I{self.conf.parent}")
                   for source in self.sources if not self.knows_crystal(source)]
        self.archive.unlink(missing_ok=True)
        run(["ar", "rcs", self.archive, *objects])
        self.object = self.compile(HERE / "chip.c", self.folder / "chip.o", f"-I{self.conf.parent}",
                                   f"-I{self.folder}", "-Umain", f'-DDEVICE_HEADER="{self.prefix}.h"',
                                   "-fno-sanitize-coverage=trace-pc")
        self.constants = self.ask_drivers(members)

    @staticmethod
    def knows_crystal(source):
        return source.stem.endswith("_crm") or source.stem.startswith("system_")

    def with_crystal(self, conf):
        """The drivers that read the frequency of the crystal from a generated conf.h."""
        line = re.search(r"#define\s+HEXT_VALUE\s.*", conf)[0]
        with self.lock:
            if line in self.crystals:
                return self.crystals[line]
            place = self.folder / hash_of(line)
            place.mkdir(exist_ok=True)
            own = self.conf.read_text(encoding="utf-8")
            (place / self.conf.name).write_text(re.sub(r"#define\s+HEXT_VALUE\s.*", lambda found: line, own))
            self.crystals[line] = [self.compile(source, place / (source.stem + ".o"), f"-I{place}")
                                   for source in self.sources if self.knows_crystal(source)]
        return self.crystals[line]

    def ask_drivers(self, fields):
        """The values of all constants of the drivers, and the offsets of (type, member) in their registers."""
        headers = "\n".join(file.read_text(encoding="utf-8")
                            for file in sorted(self.root.glob("libraries/drivers/inc/*.h")))
        headers = re.sub(r"/\*.*?\*/", "", headers, flags=re.DOTALL)
        names = [name for name, value in re.findall(r"#define +([A-Z]\w+) +(\S.*)", headers)
                 if not re.search(r"\*\)|[{};]|\bstatic\b", value)]
        for body in re.findall(r"enum\s*\{(.*?)\}", headers, flags=re.DOTALL):
            names += re.findall(r"^\s*(\w+)\s*=", body, flags=re.MULTILINE)
        types = {kind: body for body, kind in re.findall(r"typedef struct\s*\{([^}]*)\}\s*(\w+);", headers)}
        questions = {name: name for name in names}
        for kind, member in fields:
            if re.search(rf"\b{re.match(r'[a-z]+[a-z0-9_]*', member)[0]}\b", types.get(kind, "")):
                questions[f"{kind}.{member}"] = f"offsetof({kind}, {member})"
        source = self.folder / "constants.c"
        source.write_text("\n".join(
            [f'#include "{self.prefix}.h"', "#include <stddef.h>", "#include <stdio.h>", "int main(void)", "{",
             *(f'  printf("{key} %lld\\n", (long long)({value}));' for key, value in questions.items()), "}", ""]))
        program = self.folder / "constants"
        run(["gcc", "-w", "-no-pie", "-DUSE_STDPERIPH_DRIVER", f"-I{self.conf.parent}", *self.includes, source, "-o",
             program])
        return {name: int(value) & 0xFFFFFFFF for name, value in
                (line.split(" ") for line in run([program]).splitlines())}


class Outcome:
    """What a program of a design leaves behind: registers, the calls of main, its clocks, and what went wrong."""

    def __init__(self, chip, designs, design):
        self.chip = chip
        self.faults, self.calls, self.clocks, self.core, self.compared = [], [], [], 0, 0
        sources = Sources(designs, design)
        sources.lay_out()
        folder = pathlib.Path(tempfile.mkdtemp(prefix="judge", dir=FLEETING))
        try:
            self.run(folder, sources)
        finally:
            shutil.rmtree(folder)

    def run(self, folder, sources):
        texts = {name: (sources.texts / text).read_text(encoding="latin-1") for name, text in sources.sources}
        program = []
        for name, text in texts.items():
            if name.endswith("/main.c"):
                text = text.replace("/* add user code begin private includes */",
                                    "/* add user code begin private includes */\nvoid judge_end(void);")
                text = text.replace("/* add user code begin 3 */", "/* add user code begin 3 */ judge_end();")
            # The library of the host has these already.
            text = re.sub(r"\b_(write|read|close|lseek|fstat|isatty|sbrk|exit|kill|getpid)\b", r"generated_\1", text)
            program.append(f'#line 1 "{name}"\n{text}')
        (folder / "program.c").write_text("\n".join(program), encoding="latin-1")
        conf = next(text for name, text in sources.headers if name.endswith("_conf.h"))
        crystal = self.chip.with_crystal((sources.texts / conf).read_text(encoding="latin-1"))
        run([*CC, f"-I{sources.include}", *self.chip.includes, folder / "program.c", *crystal, self.chip.object,
             self.chip.archive, "-rdynamic", "-o", folder / "program"])
        try:
            done = subprocess.run([folder / "program"], cwd=folder, timeout=SECONDS, capture_output=True, text=True)
        except subprocess.TimeoutExpired:
            raise Fault(f"does not reach its endless loop within {SECONDS} s") from None
        if done.returncode:
            raise Fault(f"ends with {done.returncode}: {done.stderr[:300]}")
        self.memory = (folder / "registers").read_bytes()
        for line in (folder / "record").read_text().splitlines():
            word, rest = line.split(" ", 1)
            if word == "call":
                self.calls.append(rest)
            elif word == "clocks":
                self.clocks = [int(one) for one in rest.split()]
            elif word == "core":
                self.core = int(rest)
            else:
                self.faults.append(f"{word} {rest}")

    def place(self, address):
        offset = 0
        for base, size in self.chip.regions:
            if base <= address < base + size:
                return offset + address - base
            offset += size
        raise KeyError(hex(address))

    def word(self, address):
        return struct.unpack_from("<I", self.memory, self.place(address))[0]

    def byte(self, address):
        return self.memory[self.place(address)]

    def expect(self, what, is_, expected):
        self.compared += 1
        if is_ != expected:
            self.faults.append(f"{what} is {is_}, not {expected}")
