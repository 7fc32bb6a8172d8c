"""Generated designs compile without a warning and link for their device.

The drivers are compiled once for each core, each distinct text once: what compiled is remembered in the folder, by the
hash of the text, of its headers and of the package. Devices whose programs are the same and whose linker scripts differ
in sizes only share the program that is linked for the smallest of them. What has no code yet, and so is left out, is
printed with its reason.

    compile_designs.py TOOL FIRMWARE FOLDER DATA [OPTION OF THE TOOL...]
"""

import json
import pathlib
import sys

from designs import Chip, Designs, Fault, Sources, hash_of, in_parallel, run, say

WARNINGS = ["-Wall", "-Wextra", "-Werror", "-Wstrict-prototypes", "-std=gnu11"]
CORE = ["-mcpu=cortex-m4", "-mthumb", "-Os", "-ffunction-sections", "-fdata-sections", "-DUSE_STDPERIPH_DRIVER"]
FLOAT = {"true": ["-mfpu=fpv4-sp-d16", "-mfloat-abi=hard"], "false": []}


class Compiler:
    def __init__(self, chip, folder):
        self.chip = chip
        self.flags = CORE + FLOAT[str(chip.memory["fpu"]).lower()]
        self.objects = folder / "objects" / hash_of(chip.hash, self.flags, WARNINGS)
        self.objects.mkdir(parents=True, exist_ok=True)
        self.used = set()

    def compile(self, source, target, *includes):
        self.used.add(target)
        if target.exists():
            return
        made = target.with_suffix(".part")
        run(["arm-none-eabi-gcc", *self.flags, *WARNINGS, *includes, *self.chip.includes,
             *(["-x", "c"] if source.suffix not in (".s", ".c") else []), "-c", source, "-o", made])
        made.rename(target)

    def drivers(self):
        """Archives, so that the linker takes what is called; the start-up code must be there whatever is called."""
        archive, start = self.objects / "drivers.a", self.objects / "startup.o"
        self.compile(self.chip.startup, start)
        objects = [self.objects / (source.stem + ".o") for source in self.chip.sources]
        for source, target in zip(self.chip.sources, objects):
            self.compile(source, target, f"-I{self.chip.conf.parent}")
        if not archive.exists():
            run(["arm-none-eabi-ar", "rcs", archive, *objects])
        self.used.add(archive)
        self.always = [start, archive]

    def link(self, objects, scripts):
        """For the first of the scripts, or the next where it is too small."""
        for script in scripts:
            mark = self.objects / (hash_of(script.name, objects) + ".linked")
            self.used.add(mark)
            if mark.exists():
                return
            try:
                run(["arm-none-eabi-gcc", *self.flags, "--specs=nano.specs", "--specs=nosys.specs", "-T", script,
                     "-Wl,--gc-sections,--fatal-warnings", *objects, *self.always, "-o", "/dev/null"])
                mark.touch()
                return
            except Fault as fault:
                if "overflowed" not in str(fault) or script == scripts[-1]:
                    raise

    def tidy(self):
        """Forgets what no design has any longer."""
        for file in self.objects.iterdir():
            if file not in self.used:
                file.unlink()


def named(name, work, *arguments):
    try:
        work(*arguments)
    except Fault as fault:
        raise Fault(f"{name}:\n{fault}") from None


def main():
    tool, firmware, folder, data = sys.argv[1], *map(pathlib.Path, sys.argv[2:5])
    designs = Designs(tool, folder, *sys.argv[5:])
    say("designs are generated")
    compilers, jobs, links, left_out, count = {}, {}, {}, {}, 0
    for line in designs.lines():
        design = json.loads(line)
        for reason, times in design.get("left out", {}).items():
            left_out[reason] = left_out.get(reason, 0) + times
        if "files" not in design:
            continue
        count += 1
        name = design["folder"]
        if name not in compilers:
            compilers[name] = Compiler(Chip(firmware, data, name), folder)
            compilers[name].drivers()
        compiler, sources = compilers[name], Sources(designs, design)
        sources.lay_out()
        objects = []
        for file, text in sources.sources:
            objects.append(compiler.objects / f"{text}-{sources.headers_hash}.o")
            jobs.setdefault(objects[-1], (f"{design['name']}, {file}", compiler.compile, sources.texts / text,
                                          objects[-1], f"-I{sources.include}"))
        script = compiler.chip.script(design)
        # An empty design is linked for each device.
        scripts = [script] if design["name"].endswith(": empty") else [compiler.chip.smallest(script), script]
        links.setdefault((scripts[0], tuple(objects)), (design["name"], compiler.link, objects, scripts))

    fresh = sum(not target.exists() for target in jobs)
    say(f"{count} designs, {len(jobs)} distinct objects, {fresh} of them to be compiled, {len(links)} programs")
    faults = in_parallel(lambda job: named(*job), jobs.values()) or in_parallel(lambda job: named(*job), links.values())
    for compiler in compilers.values():
        compiler.tidy()
    say("done")
    for reason, times in left_out.items():
        print(f"left out {times} times: {reason}")
    for fault in faults[:10]:
        print(fault)
    if faults:
        print(f"{len(faults)} faults")
    return 1 if faults or not count else 0


if __name__ == "__main__":
    sys.exit(main())
