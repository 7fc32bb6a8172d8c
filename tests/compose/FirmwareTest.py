"""The sample firmware packages: everything compiles without a warning, links for each size, and does what it says."""

import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

import yaml

import compose as composer
import firmware

DATA = pathlib.Path(os.environ["CHIPLOOM_DATA"])
WARNINGS = ["-Wall", "-Wextra", "-Werror", "-Wstrict-prototypes", "-Wmissing-prototypes", "-std=gnu11"]
CORE = ["-mcpu=cortex-m4", "-mthumb"]
HARD_FLOAT = ["-mfpu=fpv4-sp-d16", "-mfloat-abi=hard"]


def described(folder, name):
    return yaml.load((DATA / f"families/{folder}/{name}.yaml").read_text(encoding="utf-8"), yaml.BaseLoader)


# Folder -> prefix of the package's files, and what its core can do.
FAMILIES = {path.parent.name: (described(path.parent.name, "code")["folder"].lower(),
                               HARD_FLOAT if described(path.parent.name, "memory")["fpu"] == "true" else [])
            for path in sorted(DATA.glob("families/*/memory.yaml"))}
# What the programs for the host expect stands in them for these; tests/Judge compares the registers of every family.
ON_THE_HOST = ("f421", "f403a")


def run(*command):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True)
    if done.returncode:
        raise AssertionError(" ".join(map(str, command)) + "\n" + done.stdout + done.stderr)
    return done.stdout


class Package:
    """One unpacked package and the folder for what is made of it."""

    def __init__(self, root, family):
        self.folder = family
        self.prefix, self.core = FAMILIES[family]
        self.root = next(root.glob(f"{self.prefix.upper()}_Firmware_Library_V*"))
        self.objects = root / "objects" / family
        self.objects.mkdir(parents=True)
        includes = {header.parent for header in self.root.rglob("*.h")}
        self.includes = [f"-I{folder}" for folder in sorted(includes)]

    def compile(self, source):
        target = self.objects / (source.name + ".o")
        run("arm-none-eabi-gcc", *CORE, *self.core, *WARNINGS, "-O2", "-ffunction-sections", "-fdata-sections",
            "-DUSE_STDPERIPH_DRIVER", *self.includes, "-c", source, "-o", target)
        return target

    def link(self, script, objects, target):
        run("arm-none-eabi-gcc", *CORE, *self.core, "--specs=nano.specs", "--specs=nosys.specs", "-T", script,
            "-Wl,--gc-sections,--fatal-warnings", *objects, "-o", target)
        return target


class FirmwareTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        _, files, problems = composer.compose_all(DATA)
        assert not problems, "\n".join(problems.lines)
        cls.temporary = tempfile.TemporaryDirectory()
        root = pathlib.Path(cls.temporary.name)
        composer.write(files, root, composer.PACKAGES)
        cls.packages = {family: Package(root, family) for family in FAMILIES}

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    def test_every_peripheral_has_a_driver(self):
        for package in self.packages.values():
            kinds = {entry["kind"] for entry in described(package.folder, "family")["peripherals"]}
            drivers = {path.stem.removeprefix(package.prefix + "_")
                       for path in package.root.glob("libraries/drivers/src/*.c")}
            self.assertEqual({firmware.module_of(kind) for kind in kinds - firmware.DRIVERLESS} - drivers, set())

    def test_compiles_and_links_for_each_size(self):
        """The linker fails where code or data do not fit the memories of the script."""
        for family, package in self.packages.items():
            with concurrent.futures.ThreadPoolExecutor(2) as pool:
                mains = sorted(package.root.glob("project/*/templates/src/main.c"))
                sources = [*sorted(package.root.glob("libraries/**/*.c")), mains[0],
                           *package.root.rglob("gcc/startup_*.s")]
                objects = list(pool.map(package.compile, sources))
            scripts = sorted(package.root.rglob("*_FLASH.ld"))
            self.assertEqual({script.name.removesuffix("_FLASH.ld") for script in scripts},
                             {f"{series['name']}x{device['name'][len(series['name']) + 1]}"
                              for series in described(family, "family")["series"] for device in series["devices"]})
            for script in scripts:
                package.link(script, objects, package.objects / (script.stem + ".elf"))
            self.assertEqual(len(list(package.root.rglob("*.icf"))), len(scripts))

    def test_a_driver_that_is_switched_off_leaves_nothing_behind(self):
        package = self.packages["f421"]
        conf = next(package.root.rglob("*_conf.h"))
        own = package.objects / "conf"
        own.mkdir()
        text = conf.read_text().replace("#define USART_MODULE_ENABLED", "")
        (own / conf.name).write_text(text)
        includes = [one for one in package.includes if one != f"-I{conf.parent}"]
        run("arm-none-eabi-gcc", *CORE, *WARNINGS, f"-I{own}", *includes, "-c",
            package.root / "libraries/drivers/src/zv32f421_usart.c", "-o", own / "usart.o")
        self.assertNotIn(" T ", run("arm-none-eabi-nm", own / "usart.o"))

    def test_handlers_stand_at_their_vectors(self):
        for package in self.packages.values():
            vectors = yaml.safe_load((DATA / "families" / package.folder / "vectors.yaml").read_text(encoding="utf-8"))
            places = {one["value"].replace("_IRQn", "_IRQHandler"): 16 + one["number"] for one in vectors}
            places.update({"HardFault_Handler": 3, "SVC_Handler": 11, "PendSV_Handler": 14, "SysTick_Handler": 15})
            program = package.objects / "handlers.c"
            program.write_text("volatile int last;\nint main(void) { return 0; }\n"
                               "void SystemInit(void);\nvoid SystemInit(void) {}\n"
                               + "".join(f"void {name}(void);\nvoid {name}(void) {{ last = {place}; }}\n"
                                         for name, place in places.items()))
            startup = next(package.root.rglob("gcc/startup_*.s"))
            script = next(package.root.rglob("*_FLASH.ld"))
            elf = package.link(script, [package.compile(startup), package.compile(program)],
                               package.objects / "handlers.elf")
            symbols = {name: int(address, 16) for address, _, name in re.findall(
                r"^(\w+) (\w) (\w+)$", run("arm-none-eabi-nm", elf), re.MULTILINE)}
            self.assertEqual(symbols["interrupt_vectors"], 0x08000000)
            binary = package.objects / "handlers.bin"
            run("arm-none-eabi-objcopy", "-O", "binary", elf, binary)
            content = binary.read_bytes()

            def word(index):
                return int.from_bytes(content[4 * index:4 * index + 4], "little")

            self.assertEqual(word(0), symbols["_estack"])
            self.assertEqual(word(1), symbols["Reset_Handler"] + 1)
            for name, place in places.items():
                self.assertEqual(word(place), symbols[name] + 1, name)
            holes = set(range(16, max(places.values()))) - set(places.values())
            self.assertEqual({word(place) for place in holes}, {0} if holes else set())

    def test_a_program_can_stand_behind_a_boot_loader(self):
        """The vectors are looked for where they are, and what outlives a reset takes no room in the flash memory."""
        package = self.packages["f421"]
        program = package.objects / "behind.c"
        program.write_text('__attribute__((section(".noinit"))) int kept[64];\n'
                           "void SystemInit(void);\nvoid SystemInit(void) {}\nint main(void) { return kept[1]++; }\n")
        script = package.objects / "behind.ld"
        script.write_text(next(package.root.rglob("*_FLASH.ld")).read_text().replace("0x08000000", "0x08002000"))
        startup = next(package.root.rglob("gcc/startup_*.s"))
        elf = package.link(script, [package.compile(startup), package.compile(program)], package.objects / "behind.elf")
        binary = package.objects / "behind.bin"
        run("arm-none-eabi-objcopy", "-O", "binary", elf, binary)
        self.assertLess(binary.stat().st_size, 4096)
        symbols = run("arm-none-eabi-nm", elf)
        self.assertIn("08002000 R interrupt_vectors", symbols)
        self.assertRegex(symbols, r"\n2000\w+ \w kept\n")
        system = package.compile(next(package.root.rglob("system_*.c")))
        self.assertIn("interrupt_vectors", run("arm-none-eabi-nm", "-u", system))

    def test_other_toolchains_have_the_same_vectors(self):
        for package in self.packages.values():
            def table(tools, pattern):
                text = next(package.root.rglob(f"{tools}/startup_*.s")).read_text()
                return re.findall(pattern, text, re.MULTILINE)[1:]

            gcc = table("gcc", r"^ +\.word (\w+)")
            self.assertGreater(len(gcc), 48)
            for tools in ("iar", "mdk"):
                self.assertEqual(table(tools, r"DCD +([\w()]+)"), gcc)

    def test_sizes_of_heap_and_stack_can_be_rewritten(self):
        """By the expressions with which the program sets them."""
        package = self.packages["f403a"]
        for pattern, place in (
                (r"_Min_Stack_Size(\s*)=(\s*)0x(\d*);", "gcc/linker/*.ld"),
                (r"_Min_Heap_Size(\s*)=(\s*)0x(\d*);", "gcc/linker/*.ld"),
                (r"define symbol __ICFEDIT_size_cstack__(\s*)=(\s*)0x(\d*);", "iar/linker/*.icf"),
                (r"define symbol __ICFEDIT_size_heap__(\s*)=(\s*)0x(\d*);", "iar/linker/*.icf"),
                (r"Stack_Size(\s*)EQU(\s*)0x(\d{8})", "mdk/startup_*.s"),
                (r"Heap_Size(\s*)EQU(\s{5})0x(\d{8})", "mdk/startup_*.s")):
            for file in package.root.rglob(place):
                self.assertEqual(len(re.findall(pattern, file.read_text())), 1, file)

    def test_drivers_do_on_the_host_what_they_say(self):
        source = pathlib.Path(__file__).with_name("firmware_host.c")
        for family in ON_THE_HOST:
            package = self.packages[family]
            for hext in (8000000, 25000000):
                with self.subTest(family=family, hext=hext):
                    program = package.objects / f"host{hext}"
                    drivers = [package.root / f"libraries/drivers/src/{package.prefix}_{name}.c"
                               for name in ("crm", "gpio", "usart", "i2c", "spi", "dma", "misc")]
                    drivers += list(package.root.glob("libraries/drivers/src/*_scfg.c"))
                    run("gcc", "-Wall", "-Wextra", "-Wno-int-to-pointer-cast", "-Wno-pointer-to-int-cast", "-O1",
                        "-DUSE_STDPERIPH_DRIVER", f"-DFAMILY_{family.upper()}", f"-DHEXT_VALUE={hext}u",
                        f'-DDEVICE_HEADER="{package.prefix}.h"', *package.includes, source, *drivers,
                        *package.root.rglob("system_*.c"), "-o", program)
                    run(program)

    def test_peripheral_registers_get_what_was_asked_for(self):
        source = pathlib.Path(__file__).with_name("firmware_peripherals.c")
        for family in ON_THE_HOST:
            package = self.packages[family]
            with self.subTest(family):
                program = package.objects / "peripherals"
                run("gcc", *WARNINGS[:3], "-Wno-int-to-pointer-cast", "-O1", "-DUSE_STDPERIPH_DRIVER",
                    f'-DDEVICE_HEADER="{package.prefix}.h"', *package.includes, source,
                    *package.root.glob("libraries/drivers/src/*.c"), *package.root.rglob("system_*.c"), "-o", program)
                run(program)

    def test_headers_declare_what_sources_define(self):
        function = re.compile(r"^(?!static|typedef|return)[a-z][\w *]*?\b(\w+)\([^;{]*?\)(;|\n\{)", re.MULTILINE)
        for package in self.packages.values():
            for header in package.root.glob("libraries/drivers/inc/*.h"):
                source = package.root / f"libraries/drivers/src/{header.stem}.c"
                declared = [name for name, end in function.findall(header.read_text()) if end == ";"]
                defined = [name for name, end in function.findall(source.read_text()) if end != ";"]
                self.assertEqual(sorted(declared), sorted(defined), header.stem)

    def problems_after(self, *changes):
        """What the composer says of the shipped data with some texts replaced."""
        with tempfile.TemporaryDirectory() as folder:
            copy = pathlib.Path(folder) / "data"
            shutil.copytree(DATA, copy)
            for name, old, new in changes:
                text = (copy / name).read_text(encoding="utf-8")
                self.assertIn(old, text)
                (copy / name).write_text(text.replace(old, new), encoding="utf-8")
            database, files, problems = composer.compose_all(copy)
            self.assertEqual((database, files), ({}, {}))
            return [re.sub(r":\d+: ", ": ", line) for line in problems.sorted()]

    def test_a_token_without_a_declaration_is_told(self):
        advice = "declare it below firmware/, or name the parameter in firmware.py if only generators read it"
        packages = sorted(package.prefix.upper() for package in self.packages.values())
        self.assertEqual(self.problems_after(("kinds/USART.yaml", "USART_BREAK_10BITS", "USART_BREAK_12BITS"),
                                             ("kinds/GPIO.yaml", "GPIO_PINS_SOURCE$", "GPIO_SOURCE$")),
                         [f"kinds/GPIO.yaml: no header of {package} declares 'GPIO_SOURCE{n}'; {advice}"
                          for package in packages for n in sorted(range(16), key=str)]
                         + [f"kinds/USART.yaml: no header of {package} declares 'USART_BREAK_12BITS'; {advice}"
                            for package in packages])

    def test_faults_of_a_memory_map_and_of_templates_are_told_at_once(self):
        map_file = "families/f421/memory.yaml"
        self.assertCountEqual(self.problems_after((map_file, "USART2, SPI2", "SPI2"),
                                                  (map_file, "[CRM, FLASH", "[CRM, CRM"),
                                                  (map_file, "DMA1, GPIOA, ", ""),
                                                  (map_file, '"40010000"', '"4000O000"')),
                         [f"{map_file}: '4000O000' is no address; write hexadecimal digits",
                          f"{map_file}: 'CRM' has two addresses; remove one",
                          f"{map_file}: 'FLASH' stands on no bus; list it under a bus, or leave it out",
                          f"{map_file}: 'DMA1' has no address; list it under a bus",
                          f"{map_file}: 'GPIOA' has no address; list it under a bus",
                          f"{map_file}: the peripheral 'USART2' has no address; list USART2 under a bus"])
        self.assertEqual(self.problems_after(("firmware/drivers/src/usart.c.j2", '{% if "swap" in features %}',
                                              "{% if swap %}")),
                         [f"firmware/drivers/src/usart.c.j2: cannot be filled in for {package} ('swap' is undefined); "
                          "correct the template, or the data that it asks for"
                          for package in sorted(self.packages[family].prefix.upper() for family in FAMILIES)])


if __name__ == "__main__":
    unittest.main()
