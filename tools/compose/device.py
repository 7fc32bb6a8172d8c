"""Pins, packages and signal groups of a family, and the device files made from them."""

import re

from source import List, Map, Shape, Text
from xmlout import Element

PLAIN = {"GPIO_Input": "Input", "GPIO_Output": "Output", "GPIO_Analog": "Analog", "EVENTOUT": "EventOut"}
ROW_LETTERS = "ABCDEFGHJKLMNPRTUVWY"
GPIO_PIN = re.compile(r"^P([A-Z])(\d+)$")

PINS = Shape("the pin table", {"pins": "map", "packages": "map"}, {"eventout_mux": "text", "bound": "list"})
PIN = Shape("a pin", {}, {"structure": "text", "type": "text", "at": "text", "remarks": "pair", "fixed": "flag"})
GROUP = Shape("a signal group", {"at": "text"}, {"mux": "text", "when": "text"})

# Sizes in kilobytes as the fields of the device code know them.
FLASH_INDEX = {16: 0, 24: 1, 32: 2, 48: 3, 64: 4, 72: 5, 96: 6, 128: 7, 192: 8, 256: 9, 384: 10, 512: 11, 768: 12,
               1024: 13, 1536: 14, 2048: 15, 4096: 16, 5120: 17, 960: 19, 1984: 20, 4032: 21, 448: 22}
RAM_INDEX = {4: 0, 8: 1, 16: 2, 32: 3, 64: 4, 96: 5, 128: 6, 256: 7, 512: 8, 20: 9, 48: 10}
SECTOR_INDEX = {512: 1, 1024: 2, 2048: 3, 4096: 4}
FLASH_LETTER = {16: "4", 24: "5", 32: "6", 48: "7", 64: "8", 72: "9", 96: "A", 128: "B", 192: "Z", 256: "C", 384: "D",
                448: "D", 512: "E", 768: "F", 960: "P", 1024: "G", 1536: "H", 1984: "I", 2048: "I", 3072: "K",
                4032: "M", 4096: "M"}


def full_signal_name(instance, name):
    """The name of a peripheral's signal on the pins."""
    if any(mark in name for mark in ("EXINT", "WKUP", "IR_OUT")) or instance == "SYSTEM":
        return name
    return ("XMC" if "XMC" in instance else instance) + "_" + name


def expand_range(name):
    """`IN0--IN3` as single names; anything else as it stands."""
    parts = name.split("--")
    if len(parts) != 2:
        return [name]
    ends = [re.match(r"([A-Z]+)([0-9]+)", part) for part in parts]
    if not all(ends):
        return [name]
    return [f"{ends[0].group(1)}{number}" for number in range(int(ends[0].group(2)), int(ends[1].group(2)) + 1)]


class Function:
    """One alternate function of a pin: signal, multiplex number (mux families only)."""

    def __init__(self, signal, mux, place):
        self.signal = signal
        self.mux = mux
        self.place = place


class PinTable:
    """The pins of a family, whatever the package."""

    def __init__(self, source, groups, style, problems):
        self.problems = problems
        self.source = source
        self.style = style
        self.functions = {}
        self.groups = []
        self.valid = PINS.check(source, problems)
        if not self.valid:
            return
        for name, pin in source["pins"].items():
            if PIN.check(pin, problems):
                self.functions[name] = self._parse(name, pin)
            else:
                self.valid = False
        self._read_groups(groups or List())
        self._check_mux()

    def _parse(self, name, pin):
        result = []
        if "at" not in pin:
            return result
        place = pin.place_of("at")
        for word in pin["at"].split():
            signal, _, mux = word.partition("@")
            if any(one.signal == signal for one in result):
                self.problems.add(place, f"{name} lists '{signal}' twice", "remove one of them")
            if mux and not mux.isdigit():
                self.problems.add(place, f"'{word}' of {name} has no number behind @", "write SIGNAL@number")
            result.append(Function(signal, mux or None, place))
        return result

    def _read_groups(self, groups):
        for ip, members in groups.items() if isinstance(groups, Map) else []:
            for number, group in enumerate(members):
                if not GROUP.check(group, self.problems):
                    continue
                made = []
                for word in group["at"].split():
                    free = not word.endswith("!")
                    signal, _, pin = word.rstrip("!").partition("=")
                    signal = full_signal_name(ip, signal)
                    if pin not in self.functions:
                        self.problems.add(group.place, f"'{word}' of {ip} names no pin of the family",
                                          "write SIGNAL=PIN with a pin of the pin table")
                        continue
                    if all(one.signal != signal for one in self.functions[pin]):
                        self.functions[pin].append(Function(signal, None, group.place))
                    made.append((signal, pin, free))
                mux = group.get("mux", "")
                self.groups.append((ip, number, "" if mux == "none" else mux, made))

    def _check_mux(self):
        """On a mux family each digital signal of a pin has a number of its own."""
        if self.style != "mux":
            return
        for name, functions in self.functions.items():
            used = {}
            for one in functions:
                if one.mux is None:
                    continue
                other = used.get(one.mux)
                if other and not same_pad(other, one.signal):
                    self.problems.add(one.place, f"{name} offers {other} and {one.signal} under number {one.mux}",
                                      "give one of them another number")
                used[one.mux] = one.signal

    def all_functions(self):
        return [(pin, one) for pin, functions in self.functions.items() for one in functions]

    def pieces(self, pad):
        return [piece for piece in pad.split("/") if piece in self.functions]


# Signals of one block that never work at once: the two interfaces of Ethernet; lines of memories with addresses, and
# those that NAND flash or a PC card has in their place.
FACES = [(re.compile(r"EMAC_MII_\w+"), re.compile(r"EMAC_RMII_\w+")),
         (re.compile(r"XMC_(A|NE)\d+"), re.compile(r"XMC_(CLE|ALE|NCE\d\w*)"))]


def same_pad(first, second):
    """The faces of one block, as SPI1_SCK and I2S1_CK or those of a bus that is either, may stand under one number."""
    if any(one.fullmatch(left) and other.fullmatch(right) for one, other in FACES
           for left, right in ((first, second), (second, first))):
        return True
    blocks = {name.split("_")[0] for name in (first, second)}
    return {block[:3] for block in blocks} == {"SPI", "I2S"} and len({block[3:] for block in blocks}) == 1


class Package:
    """One package of a family: its positions, each with one or several pads."""

    def __init__(self, name, source, geometry, table, problems):
        self.name = name
        self.geometry = geometry
        self.positions = []
        rows = []
        if geometry["family"] == "BGA":
            for row, pads in enumerate(source):
                for column, pad in enumerate(pads.split()):
                    rows.append((f"{ROW_LETTERS[row]}{column + 1}", row * int(geometry["y"]) + column + 1, pad,
                                 pads.place))
        else:
            rows = [(str(index + 1), index + 1, pad, pad.place) for index, pad in enumerate(source)]
        for label, number, text, place in rows:
            if text == "-":
                continue
            entries = []
            for word in text.split("|"):
                pad, _, variant = word.partition(":")
                if len(table.pieces(pad)) != len(pad.split("/")):
                    problems.add(place, f"'{pad}' of {name} is no pin of the family", "add it to 'pins' or correct it")
                    continue
                entries.append((pad, variant or None))
            self.positions.append((label, number, entries))
        if len(self.positions) != int(geometry["pins"]):
            problems.add(source.place, f"{name} has {len(self.positions)} pins", f"list {geometry['pins']} of them")
        seen = set()
        for label, _, entries in self.positions:
            for pad, _ in entries:
                for piece in pad.split("/"):
                    if GPIO_PIN.match(piece) and piece in seen:
                        problems.add(source.place, f"{name} has {piece} twice (again on {label})",
                                     "leave one of them")
                    seen.add(piece)

    def pad_of(self, piece):
        """The number and name of the pad on which a pin of the family stands."""
        for _, number, entries in self.positions:
            for pad, _ in entries:
                if piece in pad.split("/"):
                    return number, pad
        return None

    def gpio_count(self):
        return sum(any(GPIO_PIN.match(piece) for pad, _ in entries for piece in pad.split("/"))
                   for _, _, entries in self.positions)


def pid(series_code, package_index, flash, ram, sector):
    """Series in bits 24 to 31, package in bits 0 to 5, and the size fields between them."""
    sector_code = 0 if sector == (1024 if flash <= 255 else 2048) else SECTOR_INDEX[sector]
    return series_code << 24 | RAM_INDEX[ram] << 16 | sector_code << 12 | FLASH_INDEX[flash] << 6 | package_index


class DeviceFile:
    """The file of one device: base information, pins, groups and the lists of peripherals and middlewares."""

    def __init__(self, table, package, signals):
        self.table = table
        self.package = package
        self.signals = signals  # full name -> (IO mode, may stand on several pins)

    def element(self, name, code, peripherals, middlewares):
        root = Element("Configuration")
        base = root.add("Entry", {"term": "MCUBaseInfo"})
        geometry = self.package.geometry
        base.add("Info", {"MCUName": name, "PID": f"0x{code:08X}", "Package": geometry["family"],
                          "PinNums": geometry["pins"], "xPinNum": geometry["x"], "yPinNum": geometry["y"]})
        self._pins(root.add("Entry", {"term": "PinsList"}))
        self._groups(root.add("Entry", {"term": "PinsSignalsGroup"}))
        for term, entries in (("PeripheralsList", peripherals), ("MiddlewaresList", middlewares)):
            element = root.add("Entry", {"term": term})
            for entry in entries:
                element.add("IP", entry)
        return root

    def _pins(self, element):
        bound = self._bound()
        for label, _, entries in self.package.positions:
            for pad, variant in entries:
                pieces = pad.split("/")
                first = self.table.source["pins"][pieces[0]]
                remarks = first.get("remarks", ("", ""))
                fixed = first.get("fixed") == "true"
                pin = element.add("Pin", {
                    "PinNum": label, "PinName": pad, "PinFixed": "true" if fixed else "false",
                    "PinType": first.get("type", "I/O"), "GPIOStructure": first.get("structure", ""),
                    "Variant": variant, "Remarks_EN": remarks[0], "Remarks_CH": remarks[1]})
                for piece in pieces:
                    in_pin = piece if piece != pieces[0] else None
                    for one in self.table.functions[piece]:
                        if one.signal not in self.signals:
                            continue
                        multi = self.signals[one.signal][1]
                        made = pin.add("Function", {"Func": one.signal, "Multi": "true" if multi else None,
                                                    "InPin": in_pin})
                        for partner in bound.get(one.signal, []):
                            made.add("Bound", partner)
                    match = GPIO_PIN.match(piece)
                    if match:
                        if f"EXINT{match.group(2)}" in self.signals:
                            pin.add("Function", {"Func": f"EXINT{match.group(2)}", "Multi": "true", "InPin": in_pin})
                        for plain, mode in PLAIN.items():
                            pin.add("Function", {"Func": plain, "IOMode": mode, "InPin": in_pin})

    def _bound(self):
        """Signals that go together, as the two ends of a crystal: signal -> its partners with their pin numbers."""
        result = {}
        for pair in self.table.source.get("bound", []):
            ends = [word.partition("=") for word in pair.split()]
            places = [self.package.pad_of(pin) for _, _, pin in ends]
            if len(ends) != 2 or None in places or any(signal not in self.signals for signal, _, _ in ends):
                continue
            for this, other in ((0, 1), (1, 0)):
                result.setdefault(ends[this][0], []).append({"Func": ends[other][0], "PinNum": places[other][0]})
        return result

    def _groups(self, element):
        for ip, number, mux, members in self.table.groups:
            here = [(signal, self.package.pad_of(pin), free) for signal, pin, free in members
                    if signal in self.signals and self.package.pad_of(pin)]
            if not here:
                continue
            group = element.add("Group", {"IPName": ip, "GroupNum": str(number), "GMUX": mux})
            for signal, (_, pad), free in here:
                group.add("Member", {"SignalName": signal, "PinName": pad, "TMRIPCanUse": None if free else "NO"})
