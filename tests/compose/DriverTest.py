"""The drivers of the sample firmware: every token of a description stands in them, and they do what they declare."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as tree

import compose as composer
import firmware

PACKAGES = {"zv32f421": ["ZV32F421"], "zv32f403a_407": ["ZV32F403A", "ZV32F407"]}

# Values that no driver takes: the window's own modes, and what chooses code instead of a setting.
OTHER_VALUES = re.compile(r"CAN_RESULT_0|PHY_\w+|MODE_\w+|VM_\w+|CLKOUT_\w+|NORMAL|CIRCULAR|I2C_(Standard|Fast\w*)|TRUE|FALSE")
DECLARED_VALUE = re.compile(r"^ *(?:#define )?([A-Z]\w+)\b(?!_)", re.MULTILINE)
FUNCTION = re.compile(r"^(?!static|typedef|return)[a-z][\w *]*?\b(\w+)\([^;{]*?\)(;|\n\{)", re.MULTILINE)
WARNINGS = ["-Wall", "-Wextra", "-Werror"]


class DriverTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.database, products, problems = composer.compose_all(os.environ["CHIPLOOM_DATA"])
        assert not problems, "\n".join(problems.lines)
        cls.packages = {}  # prefix -> path -> text
        for prefix in PACKAGES:
            cls.packages[prefix] = {pathlib.PurePath(path): text.decode() for path, text in products.items()
                                    if path.startswith(prefix.upper() + "_")}

    def modules(self, prefix):
        """The files of each driver: module -> suffix -> text."""
        found = {}
        for path, text in self.packages[prefix].items():
            if "drivers" in path.parts:
                found.setdefault(path.stem.removeprefix(prefix + "_"), {})[path.suffix] = text
        return found

    def test_every_value_of_a_peripheral_is_declared(self):
        for prefix, series_names in PACKAGES.items():
            modules = self.modules(prefix)
            declared = set().union(*(DECLARED_VALUE.findall(files[".h"]) for files in modules.values()))
            checked = set()
            for series in series_names:
                for name, text in self.database.items():
                    if not name.startswith(f"device/{series}/Peripherals/"):
                        continue
                    root = tree.fromstring(text)
                    kind = "USART" if root.get("Name") == "UART" else root.get("Name")
                    if firmware.module_of(kind) not in modules:
                        continue
                    values = {value.get("Value", "") for value in root.iter("PossibleValue")}
                    values = {value for value in values
                              if re.fullmatch(r"[A-Za-z]\w*", value) and not OTHER_VALUES.fullmatch(value)}
                    self.assertEqual(values - declared, set(), f"{name}: unknown to the drivers of {prefix}")
                    checked.add(kind)
            self.assertGreaterEqual(checked, {"ADC", "TMR", "USART", "SPI", "I2C", "CRC", "WDT", "WWDT", "GPIO", "DMA"})

    def test_headers_and_sources_agree(self):
        for prefix in PACKAGES:
            for module, files in self.modules(prefix).items():
                with self.subTest(f"{prefix} {module}"):
                    declared = [name for name, end in FUNCTION.findall(files[".h"]) if end == ";"]
                    defined = [name for name, end in FUNCTION.findall(files[".c"]) if end != ";"]
                    self.assertEqual(sorted(declared), sorted(defined))
                    self.assertIn(f"#ifdef {module.upper()}_MODULE_ENABLED", files[".c"])

    def test_the_registers_get_what_was_asked_for(self):
        harness = pathlib.Path(__file__).with_name("drivers.c")
        for prefix, files in self.packages.items():
            with self.subTest(prefix), tempfile.TemporaryDirectory() as folder:
                folder = pathlib.Path(folder)
                sources = [str(harness)]
                for path, text in files.items():
                    if path.suffix == ".h" or "drivers" in path.parts:
                        (folder / path.name).write_text(text)
                        if path.suffix == ".c":
                            sources.append(str(folder / path.name))
                program = str(folder / "drivers")
                subprocess.run(["cc", "-std=gnu11", "-O1", *WARNINGS, "-Wno-int-to-pointer-cast",
                                "-DUSE_STDPERIPH_DRIVER", f'-DDEVICE_HEADER="{prefix}.h"', f"-I{folder}", *sources,
                                "-o", program], check=True)
                run = subprocess.run([program], capture_output=True, text=True)
                self.assertEqual((run.stdout, run.returncode), ("", 0))


if __name__ == "__main__":
    unittest.main()
