"""The designs that the tool JudgeDesigns generates, and the firmware packages they are compiled against."""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import subprocess

JOBS = os.cpu_count() or 1


class Fault(Exception):
    """What a compiler, a linker or a program complained of."""


def run(command, folder=None):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, cwd=folder)
    if done.returncode:
        raise Fault(" ".join(map(str, command)) + "\n" + (done.stdout + done.stderr)[:3000])
    return done.stdout


def generate(tool, folder, *options):
    """Runs the tool; its texts lie in folder/texts under the hash of their content."""
    folder.mkdir(parents=True, exist_ok=True)
    run([tool, folder, *options])
    return json.loads((folder / "designs.json").read_text(encoding="utf-8"))


def in_parallel(work, items):
    """The faults of work(item) over all items."""
    faults = []
    with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
        for future in [pool.submit(work, item) for item in items]:
            try:
                future.result()
            except Fault as fault:
                faults.append(str(fault))
    return faults


class Package:
    """The firmware package of one template folder, as the build composed it."""

    def __init__(self, firmware, folder):
        self.prefix = folder.lower()
        self.root = next(firmware.glob(f"{folder}_Firmware_Library_V*"))
        headers = [header for header in self.root.rglob("*.h") if "templates" not in header.parts]
        self.includes = [f"-I{place}" for place in sorted({header.parent for header in headers})]
        self.conf = next(self.root.rglob("*_conf.h")).parent  # with every driver switched on
        self.sources = [source for source in sorted(self.root.rglob("*.c")) if "templates" not in source.parts]
        self.startup = next(self.root.rglob("gcc/startup_*.s"))
        content = [file.read_bytes() for file in sorted(self.root.rglob("*")) if file.is_file()]
        self.hash = hashlib.sha1(b"".join(content)).hexdigest()

    def script(self, design):
        """The linker script of a device, by the letter of its flash size."""
        return next(self.root.rglob(f"{design['series']}x{design['device'][-3]}_FLASH.ld"))


class Sources:
    """The files of one design: a folder for its headers, shared by all designs with the same, and its sources."""

    def __init__(self, folder, design):
        self.texts = folder / "texts"
        files = sorted(design["files"].items())
        self.headers = [(name, text) for name, text in files if name.endswith(".h")]
        self.sources = [(name, text) for name, text in files if name.endswith(".c")]
        self.headers_hash = hashlib.sha1(repr(self.headers).encode()).hexdigest()
        self.include = folder / "headers" / self.headers_hash

    def lay_out(self):
        self.include.mkdir(parents=True, exist_ok=True)
        for name, text in self.headers:
            target = self.include / pathlib.Path(name).name
            if not target.exists():
                target.write_bytes((self.texts / text).read_bytes())
