"""The shipped data, read as the program reads it: names, codes, pins and lists must agree with one another."""

import collections
import os
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as tree

import compose as composer

FLASH = [16, 24, 32, 48, 64, 72, 96, 128, 192, 256, 384, 512, 768, 1024, 1536, 2048, 4096, 5120, None, 960, 1984, 4032]
RAM = [4, 8, 16, 32, 64, 96, 128, 256, 512, 20, 48]
FLASH_CODE = {16: "4", 32: "6", 64: "8", 128: "B", 256: "C", 512: "E", 1024: "G", 4032: "M"}
PACKAGE_LETTER = {"TSSOP": "P", "QFN": "U", "LQFP": "T", "BGA": "H"}


def entries(text):
    return {entry.get("term"): entry for entry in tree.fromstring(text)}


class SampleDatabaseTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        _, listed, families, problems = composer.read(os.environ["CHIPLOOM_DATA"])
        assert not problems, "\n".join(problems.lines)
        cls.files = composer.database(listed, list(families.values()))
        cls.styles = {series.name: family.style for family in families.values() for series in family.series}
        catalogue = entries(cls.files["MCUList.xml"])
        cls.packages = [package.text for package in catalogue["MCUPackageList"]]
        cls.devices = {}  # name -> (series, catalogue attributes, file)
        for line in catalogue["ProductLinesList"]:
            for series in catalogue[line.get("Line")]:
                name = series.get("Serial")
                for device in catalogue[name]:
                    file = entries(cls.files[f"device/{name}/{device.get('Name')}.xml"])
                    cls.devices[device.get("Name")] = (name, device.attrib, file)

    def test_what_is_shipped(self):
        self.assertGreaterEqual(len(self.devices), 20)
        self.assertEqual({series for series, _, _ in self.devices.values()}, set(self.styles))
        for series in self.styles:
            for language in ("EN", "CH"):
                self.assertGreater(len(self.files[f"device/{series}/{series}_Info_{language}.htm"]), 2000)

    def test_names_codes_and_catalogue_agree(self):
        codes = set()
        for name, (series, row, file) in self.devices.items():
            with self.subTest(name):
                base = file["MCUBaseInfo"][0].attrib
                code = int(base["PID"], 16)
                codes.add(code)
                flash = FLASH[code >> 6 & 31]
                self.assertEqual(f"{flash}KB", row["Flash"])
                self.assertEqual(f"{RAM[code >> 16 & 15]}KB", row["SRAM"])
                self.assertEqual(code >> 12 & 7, 0)
                self.assertEqual(base["MCUName"], name)
                self.assertEqual(base["Package"] + base["PinNums"], row["Package"])
                self.assertIn(row["Package"], self.packages)
                self.assertEqual(name[len(series) + 1:-1], FLASH_CODE[flash] + PACKAGE_LETTER[base["Package"]])
                self.assertNotIn("-", name)
                self.assertRegex(row["Frequency"], r"^[1-9]\d+MHz$")
        self.assertEqual(len(codes), len(self.devices))

    def test_pins_are_complete(self):
        for name, (_, row, file) in self.devices.items():
            with self.subTest(name):
                base = file["MCUBaseInfo"][0].attrib
                positions = collections.defaultdict(list)
                for pin in file["PinsList"]:
                    positions[pin.get("PinNum")].append(pin)
                if base["Package"] == "BGA":
                    expected = {f"{row_letter}{column}" for row_letter in "ABCDEFGHJK" for column in range(1, 11)}
                else:
                    expected = {str(number) for number in range(1, int(base["PinNums"]) + 1)}
                self.assertEqual(set(positions), expected)
                ports = [number for number, pins in positions.items()
                         if any(re.match(r"P[A-H]\d", pin.get("PinName")) for pin in pins)]
                self.assertEqual(str(len(ports)), row["GPIO"])
                for pin in file["PinsList"]:
                    signals = [one.get("Func") for one in pin]
                    self.assertEqual(len(signals), len(set(signals)), pin.get("PinName"))
                    self.assertEqual(pin.get("PinFixed") == "true", not signals, pin.get("PinName"))
                names = {pin.get("PinName") for pin in file["PinsList"]}
                self.assertTrue({"NRST", "BOOT0", "VDD", "VSS", "VDDA"} <= names)
                for signal in ("CRM_HEXT_IN", "CRM_HEXT_OUT"):
                    self.assertEqual(sum(one.get("Func") == signal for pin in file["PinsList"] for one in pin), 1)

    def test_the_small_package_can_change_its_pads(self):
        _, _, file = self.devices["ZV32F421F8P7"]
        variants = {pin.get("PinName"): (pin.get("PinNum"), pin.get("Variant")) for pin in file["PinsList"]
                    if pin.get("Variant")}
        self.assertEqual({name: variant for name, (_, variant) in variants.items()},
                         {"PA9": "NOPINREMAP", "PA10": "NOPINREMAP", "PA11": "PINREMAP", "PA12": "PINREMAP"})
        self.assertEqual(variants["PA9"][0], variants["PA11"][0])
        self.assertEqual(variants["PA10"][0], variants["PA12"][0])

    def test_groups_name_pins_and_signals_of_the_device(self):
        for name, (series, _, file) in self.devices.items():
            offered = {(one.get("Func"), pin.get("PinName")) for pin in file["PinsList"] for one in pin}
            instances = {entry.get("InstanceName") for entry in file["PeripheralsList"]}
            with self.subTest(name):
                self.assertEqual(len(file["PinsSignalsGroup"]) > 0, self.styles[series] == "remap")
                for group in file["PinsSignalsGroup"]:
                    self.assertIn(group.get("IPName"), instances)
                    self.assertEqual(group.get("GMUX") == "", group.get("GroupNum") == "0")
                    for member in group:
                        self.assertIn((member.get("SignalName"), member.get("PinName")), offered)

    def test_each_listed_peripheral_has_its_file_and_no_file_is_left_over(self):
        used = set()
        for series, _, file in self.devices.values():
            listed = [entry for term in ("PeripheralsList", "MiddlewaresList") for entry in file[term]]
            names = [entry.get("InstanceName") for entry in listed]
            self.assertEqual(len(names), len(set(names)))
            self.assertTrue({"GPIO", "NVIC", "DMA"} <= set(names))
            for entry in listed:
                path = f"device/{series}/Peripherals/{entry.get('Name')}-{entry.get('Version')}.xml"
                self.assertEqual(tree.fromstring(self.files[path]).tag, "IP")
                used.add(path)
        self.assertEqual(used, {path for path in self.files if "/Peripherals/" in path})

    def test_each_io_mode_of_a_signal_has_its_settings(self):
        offered = {}
        for path, content in self.files.items():
            if "/Peripherals/GPIO-" in path:
                offered[path.split("/")[1]] = {mode.get("Name") for mode in tree.fromstring(content).iter("RefMode")}
        for path, content in self.files.items():
            if "/Peripherals/" not in path:
                continue
            for tag in ("RefSignal", "Signal"):
                for signal in tree.fromstring(content).iter(tag):
                    if signal.get("IOMode", "Direct") != "Direct":
                        self.assertIn(signal.get("IOMode"), offered[path.split("/")[1]], path)

    def test_texts_stand_in_both_languages(self):
        for path, content in self.files.items():
            if not path.endswith(".xml"):
                continue
            for element in tree.fromstring(content).iter():
                for english, chinese in (("Comment", "CommentCH"), ("Group", "GroupCH"), ("UserName", "UserNameCH"),
                                         ("Diagnostic", "DiagnosticCH"), ("Note", "NoteCH"), ("InfoEN", "InfoCH"),
                                         ("Remarks_EN", "Remarks_CH"), ("About", "AboutCH")):
                    if element.get(english):
                        self.assertTrue(element.get(chinese), f"{path}: {element.attrib}")

    def test_the_output_does_not_depend_on_the_run(self):
        command = [sys.executable, "-B", composer.__file__, "--source", os.environ["CHIPLOOM_DATA"], "--output"]
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(command + [folder], check=True, capture_output=True,
                           env={**os.environ, "PYTHONHASHSEED": "1", "LC_ALL": "C"})
            for path, content in self.files.items():
                with open(os.path.join(folder, path), "rb") as stream:
                    self.assertEqual(stream.read(), content, path)
            self.assertEqual(composer.write(self.files, folder), (0, 0))


if __name__ == "__main__":
    unittest.main()
