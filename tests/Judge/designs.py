"""The designs that the tool JudgeDesigns generates, and the firmware packages they are compiled against."""

import concurrent.futures
import functools
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import threading
import time

import yaml

JOBS = os.cpu_count() or 1
# What is read at once again need not reach a disk: generated files are written with care.
FLEETING = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None


class Fault(Exception):
    """What a compiler, a linker or a program complained of."""


def run(command, folder=None, environment=None):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, cwd=folder, env=environment)
    if done.returncode:
        raise Fault(" ".join(map(str, command)) + "\n" + (done.stdout + done.stderr)[:3000])
    return done.stdout


def in_parallel(work, items):
    """The faults of work(item) over all items."""
    def one(item):
        try:
            work(item)
        except Fault as fault:
            return str(fault)
        return None

    with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
        return [fault for fault in pool.map(one, items) if fault]


def hash_of(*parts):
    digest = hashlib.sha1()
    for part in parts:
        digest.update(part if isinstance(part, bytes) else str(part).encode())
    return digest.hexdigest()


def say(text):
    print(f"{time.strftime('%H:%M:%S')} {text}", flush=True)


class Designs:
    """What JudgeDesigns generates for each device, a process for each. A second judge of the same folder finds it done.

    `texts` holds every distinct text under its hash, `<device>.jsonl` a line for each design.
    """

    def __init__(self, tool, folder, *options):
        self.folder, self.texts = folder, folder / "texts"
        self.texts.mkdir(parents=True, exist_ok=True)
        devices = run([tool, *options]).split()
        self.files = [folder / f"{device}.jsonl" for device in devices]
        database = [file.read_bytes() for file in sorted(pathlib.Path(tool).parent.glob("ZV32DB/**/*"))
                    if file.is_file()]
        mark = hash_of(pathlib.Path(tool).read_bytes(), *database, options)
        stamp = folder / "generated"
        if stamp.exists() and stamp.read_text() == mark:
            return
        stamp.unlink(missing_ok=True)
        environment = dict(os.environ, **({"TMPDIR": FLEETING} if FLEETING else {}))
        words = [word for word in options if not word.startswith("--device")]
        faults = in_parallel(lambda device: run([tool, folder, *words, f"--device=^{device}$"], None, environment),
                             devices)
        if faults:
            raise SystemExit("\n".join(faults))
        stamp.write_text(mark)

    def lines(self):
        """Each design as it stands in its file; what is left out stands in the last line of each."""
        for file in self.files:
            with file.open(encoding="utf-8") as text:
                yield from text


class Chip:
    """A family: where its package lies, what its core is, and what the data say of it."""

    def __init__(self, firmware, data, folder):
        for code in sorted(data.glob("families/*/code.yaml")):
            if yaml.safe_load(code.read_text(encoding="utf-8"))["folder"] == folder:
                self.data = code.parent
        self.memory = self.read("memory.yaml")
        self.prefix = folder.lower()
        self.root = next(firmware.glob(f"{folder}_Firmware_Library_V*"))
        headers = [header for header in self.root.rglob("*.h") if "templates" not in header.parts]
        self.includes = [f"-I{place}" for place in sorted({header.parent for header in headers})]
        self.conf = next(self.root.rglob("*_conf.h"))  # with every driver switched on
        self.sources = [source for source in sorted(self.root.rglob("*.c")) if "templates" not in source.parts]
        self.startup = next(self.root.rglob("gcc/startup_*.s"))
        self.hash = hash_of(*[file.read_bytes() for file in sorted(self.root.rglob("*")) if file.is_file()])
        self.scripts = list(self.root.rglob("*_FLASH.ld"))

    def read(self, name):
        file = self.data / name
        return yaml.safe_load(file.read_text(encoding="utf-8")) if file.exists() else None

    def header(self, module):
        return (self.root / f"libraries/drivers/inc/{self.prefix}_{module}.h").read_text(encoding="utf-8")

    def script(self, design):
        """The linker script of a device, by the letter of its flash size."""
        name = f"{design['series']}x{design['device'][-3]}_FLASH.ld"
        return next(script for script in self.scripts if script.name == name)

    @functools.cache
    def smallest(self, script):
        """Scripts that differ in sizes only share what links for the smallest of them."""
        def shape(one):
            return re.sub(r"/\*.*?\*/|LENGTH = \w+", "", one.read_text(encoding="utf-8"), flags=re.DOTALL)

        def sizes(one):
            return [int(size) for size in re.findall(r"LENGTH = (\d+)K", one.read_text(encoding="utf-8"))]
        return min((one for one in self.scripts if shape(one) == shape(script)), key=sizes)


class Sources:
    """The files of one design: a folder for its headers, shared by all designs with the same, and its sources."""

    def __init__(self, designs, design):
        self.texts = designs.texts
        files = sorted(design["files"].items())
        self.headers = [(name, text) for name, text in files if name.endswith(".h")]
        self.sources = [(name, text) for name, text in files if name.endswith(".c")]
        self.headers_hash = hash_of(self.headers)
        self.include = designs.folder / "headers" / self.headers_hash

    def lay_out(self):
        if self.include.exists():
            return
        made = self.include.with_name(f"{self.headers_hash}.{threading.get_ident()}")
        made.mkdir(parents=True, exist_ok=True)
        for name, text in self.headers:
            shutil.copyfile(self.texts / text, made / pathlib.Path(name).name)
        try:
            made.rename(self.include)
        except OSError:  # another thread was faster
            shutil.rmtree(made)


if __name__ == "__main__":
    Designs(sys.argv[1], pathlib.Path(sys.argv[2]), *sys.argv[3:])
