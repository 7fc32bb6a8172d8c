"""Generated designs compile without a warning and link for their device.

The drivers are compiled once for each core, each distinct text once: what compiled is remembered in the folder, by the
hash of the text, of its headers and of the package. What has no code yet, and so is left out, is printed with its
reason.

    compile_designs.py TOOL FIRMWARE FOLDER [OPTION OF THE TOOL...]
"""

import hashlib
import pathlib
import sys

from designs import Fault, Package, Sources, generate, in_parallel, run

WARNINGS = ["-Wall", "-Wextra", "-Werror", "-Wstrict-prototypes", "-std=gnu11"]
CORE = ["-mcpu=cortex-m4", "-mthumb", "-Os", "-ffunction-sections", "-fdata-sections", "-DUSE_STDPERIPH_DRIVER"]
FLOAT = {"ZV32F421": [], "ZV32F403A_407": ["-mfpu=fpv4-sp-d16", "-mfloat-abi=hard"]}


class Compiler:
    def __init__(self, firmware, folder, cache, name):
        self.package = Package(firmware, name)
        self.flags = CORE + FLOAT[name]
        self.folder = folder
        self.objects = cache / hashlib.sha1((self.package.hash + " ".join(self.flags + WARNINGS)).encode()).hexdigest()
        self.objects.mkdir(parents=True, exist_ok=True)

    def compile(self, source, target, *includes):
        if target.exists():
            return
        made = target.with_suffix(".part")
        run(["arm-none-eabi-gcc", *self.flags, *WARNINGS, *includes, *self.package.includes,
             *(["-x", "c"] if source.suffix not in (".s", ".c") else []), "-c", source, "-o", made])
        made.rename(target)

    def drivers(self):
        """Archives, so that the linker takes what is called; the start-up code must be there whatever is called."""
        archive = self.objects / "drivers.a"
        start = self.objects / "startup.o"
        self.compile(self.package.startup, start)
        if not archive.exists():
            objects = []
            for source in self.package.sources:
                objects.append(self.objects / (source.stem + ".o"))
                self.compile(source, objects[-1], f"-I{self.package.conf}")
            run(["arm-none-eabi-ar", "rcs", archive, *objects])
        return [start, archive]

    def object_of(self, sources, text):
        return self.objects / f"{text}-{sources.headers_hash}.o"

    def link(self, objects, script):
        mark = self.objects / (hashlib.sha1(repr((script.name, objects)).encode()).hexdigest() + ".linked")
        if not mark.exists():
            run(["arm-none-eabi-gcc", *self.flags, "--specs=nano.specs", "--specs=nosys.specs", "-T", script,
                 "-Wl,--gc-sections,--fatal-warnings", *objects, *self.drivers(), "-o", "/dev/null"])
            mark.touch()


def main():
    tool, firmware, folder = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    made = generate(tool, folder, *sys.argv[4:])
    designs = made["designs"]
    cache = folder.parent / "objects"
    compilers = {name: Compiler(firmware, folder, cache, name) for name in {design["folder"] for design in designs}}
    for compiler in compilers.values():
        compiler.drivers()

    jobs, links = {}, {}
    for design in designs:
        compiler, sources = compilers[design["folder"]], Sources(folder, design)
        sources.lay_out()
        objects = []
        for name, text in sources.sources:
            objects.append(compiler.object_of(sources, text))
            jobs.setdefault(objects[-1], (compiler, sources, folder / "texts" / text, f"{design['name']}, {name}"))
        script = compiler.package.script(design)
        links.setdefault((script, tuple(objects)), (compiler, design["name"]))

    def compile_one(item):
        target, (compiler, sources, text, name) = item
        try:
            compiler.compile(text, target, f"-I{sources.include}")
        except Fault as fault:
            raise Fault(f"{name}:\n{fault}") from None

    def link_one(item):
        (script, objects), (compiler, name) = item
        try:
            compiler.link(objects, script)
        except Fault as fault:
            raise Fault(f"{name}:\n{fault}") from None

    fresh = sum(not target.exists() for target in jobs)
    faults = in_parallel(compile_one, jobs.items()) or in_parallel(link_one, links.items())
    print(f"{len(designs)} designs, {len(jobs)} distinct objects, {fresh} of them compiled now, {len(links)} programs")
    for reason, count in made["left out"].items():
        print(f"left out {count} times: {reason}")
    for fault in faults[:10]:
        print(fault)
    if faults:
        print(f"{len(faults)} faults")
    return 1 if faults or not designs else 0


if __name__ == "__main__":
    sys.exit(main())
