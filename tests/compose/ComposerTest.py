"""The composer on a tiny family: every complaint with its place, and an output that only changes where it must."""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

from compose import compose, write
from device import same_pad

TREE = {
    "catalogue.yaml": """\
families: [tiny]
lines:
- {name: Line, chinese: 产品线, info: [Line, 系列]}
packages:
- {name: QFN4, family: QFN, pins: 4, x: 1, y: 1}
- {name: BGA4, family: BGA, pins: 4, x: 2, y: 2}
groups: {Core: 内核, Links: 接口}
pin_letters: {4: X}
package_letters: {QFN: U, BGA: H}
""",
    "families/tiny/family.yaml": """\
family: TINY
style: mux
vars: {ports: [COM1, COM2]}
series:
- name: ZT1
  code: 1
  line: Line
  core: Core
  frequency: 10
  info: [Tiny, 小]
  about: [[About, 关于]]
  highlights: [[Small, 小巧]]
  devices:
  - {name: ZT1X8U7, package: QFN4, flash: 64, ram: 16}
  - {name: ZT1X8H7, package: BGA4, flash: 64, ram: 16}
peripherals:
- {kind: GPIO, group: Core, instances: [GPIO]}
- {kind: COM, group: Links, instances: [COM1, COM2], features: [flow]}
middlewares: []
""",
    "families/tiny/pins.yaml": """\
pins:
  VDD: {type: S, fixed: true}
  PA0: {structure: FT, at: COM1_TX@1 COM2_TX@2}
  PA1: {structure: FT, at: COM1_RX@1 COM2_RX@2}
  PA2: {structure: FT, at: COM1_CTS@1 COM2_CTS@2}
packages:
  QFN4: [VDD, PA0, PA1:NOPINREMAP|PA2:PINREMAP, VDD]
  BGA4: [PA0 PA1, PA2 VDD]
""",
    "kinds/GPIO.yaml": """\
kind: GPIO
about: [Pins, 引脚]
settings: true
refmodes:
- {name: MuxInput, params: []}
- {name: MuxOutput, params: []}
""",
    "kinds/COM.yaml": """\
kind: COM
about: [Port, 接口]
features:
  flow: flow control
  swap: swapped pins
signals:
- {TX: MuxOutput, RX: MuxInput}
- {when: flow, CTS: MuxInput}
groups:
  basic: [Basic, 基本]
modes:
- name: Mode
  user: [Mode, 模式]
  choices:
  - name: Both
    signals: [TX, RX]
    semaphores: [On_$IpInstance]
    params: [Rate, Limit, Width]
- when: flow
  name: Flow
  condition: On_$IpInstance
  check: {signals: [CTS], params: [Hold]}
parameters:
- {name: Rate, text: [Rate, 速率], group: basic, type: integer, default: "9600", min: "1", max: "=#Limit"}
- {name: Limit, text: [Limit, 上限], type: hexadecimal, default: FFFF, min: "0", max: FFFF}
- name: Width
  text: [Width, 宽度]
  default: W8
  condition: Rate > 100
  values:
  - {value: W8, text: [8, 8]}
  - {value: W9, text: [9, 9], condition: Rate = 9600 | On_$IpInstance}
- {name: Hold, text: [Hold, 保持], switch: ""}
""",
    "info/series.htm.j2": "{{ series.name }} {{ language }} {{ series.info[index] }} {{ devices | length }}\n",
    "families/tiny/vectors.yaml": """\
- {number: 0, value: COM1_IRQn, text: [COM1, COM1], owners: [COM1]}
""",
}

# The tiny family with two controllers, of which the second serves the requests of the first too.
DMA_TREE = {
    **TREE,
    "families/tiny/family.yaml": TREE["families/tiny/family.yaml"].replace(
        "- {kind: COM,", "- {kind: DMA, group: Core, instances: [DMA]}\n"
        "- {kind: EDMA, group: Core, instances: [EDMA]}\n- {kind: COM,"),
    "kinds/COM.yaml": TREE["kinds/COM.yaml"].replace("[On_$IpInstance]", "[On_$IpInstance, Request_$IpInstance_TX]"),
    **{f"kinds/{kind}.yaml": f"""\
kind: {kind}
about: [Data, 数据]
content: dma
settings: true
request: [Direction]
generator: [Signal]
parameters:
- name: Direction
  text: [Direction, 方向]
  default: {kind}_DIR_MEMORY_TO_PERIPHERAL
  values:
  - {{value: {kind}_DIR_MEMORY_TO_PERIPHERAL, text: [Out, 出]}}
  - {{value: {kind}_DIR_MEMORY_TO_MEMORY, text: [Within, 内]}}
- {{include: signal}}
""" for kind in ("DMA", "EDMA")},
    "kinds/shared/signal.yaml": """\
- {name: Signal, text: [Signal, 信号], type: integer, default: "0"}
""",
    "families/tiny/dma.yaml": """\
mapping: flexible
controllers:
- {name: DMA1, channels: 1}
requests:
- {repeat: {n: 1..2}, name: COM<n>_TX, to: periph, width: 16}
- {name: COM1_COM2, owner: COM1, to: periph, condition: Request_COM1_TX & On_COM1}
- {name: GENERATOR2}
""",
    "families/tiny/edma.yaml": """\
mapping: flexible
controllers:
- {name: EDMA, unit: Stream, channels: 2}
also: DMA
requests:
- {name: GENERATOR1}
""",
    "families/tiny/vectors.yaml": TREE["families/tiny/vectors.yaml"] + """\
- {number: 1, value: DMA1_Channel1_IRQn, text: [DMA, DMA], channels: [DMA1_Channel1]}
- {number: 2, value: EDMA_Stream1_IRQn, text: [EDMA, EDMA], channels: [EDMA_Stream1]}
- {number: 3, value: EDMA_Stream2_IRQn, text: [EDMA, EDMA], channels: [EDMA_Stream2]}
""",
}
DMA_FAULTS = [
    ("families/tiny/edma.yaml", "also: DMA", "also: DMB",
     "families/tiny/edma.yaml:4: 'DMB' has no requests that could come here; name a table before this one; both must "
     "be flexible"),
    ("families/tiny/edma.yaml", "name: GENERATOR1", "name: COM1_TX",
     "families/tiny/edma.yaml:6: the request 'COM1_TX' is listed twice; remove one of them"),
    ("families/tiny/dma.yaml", "{n: 1..2}", "{n: 1..1}",
     "families/tiny/dma.yaml:1: COM2 opens the request 'COM2_TX', which no table has with 'to'; list it, or name it or "
     "COM2 under 'without'"),
    ("families/tiny/dma.yaml", "requests:", "without: [COM1]\nrequests:",
     "families/tiny/dma.yaml:1: 'COM1' under 'without' is no request that a mode opens and no table has; leave it out"),
    ("families/tiny/dma.yaml", "Request_COM1_TX & On_COM1", "Request_COM1_TX & On_COM2",
     "families/tiny/dma.yaml:6: COM1 never sends 'On_COM2' in ZT1, so that the request stays closed; add the token to "
     "a mode or a value of the peripheral"),
    ("families/tiny/dma.yaml", "COM1_COM2, owner: COM1, to: periph", "COM1_COM2, owner: COM1, to: nowhere",
     "families/tiny/dma.yaml:6: COM1_COM2 goes nowhere; use to: memory or periph, width: 8, 16 or 32"),
    ("families/tiny/dma.yaml", "COM<n>_TX, to: periph", "COM<n>_TX",
     "families/tiny/dma.yaml:1: COM1 opens the request 'COM1_TX', which no table has with 'to'; list it, or name it or "
     "COM1 under 'without'"),
    ("families/tiny/vectors.yaml", "channels: [EDMA_Stream2]", "channels: [EDMA_Stream1]",
     "families/tiny/edma.yaml:1: the vector of EDMA_Stream2 is not EDMA_Stream2_IRQn; correct the handle of the "
     "channel or the channels of the vector"),
    ("kinds/shared/signal.yaml", 'text: [Signal, 信号], type: integer, default: "0"',
     'text: [Signal, 信号], type: integer, default: "0", condition: EDMA_MUX_STREAM9_EVENT = TRUE',
     "kinds/shared/signal.yaml:1: the condition names no parameter: 'EDMA_MUX_STREAM9_EVENT'; name a parameter of the "
     "same file; there is no >= and no <="),
    ("kinds/shared/signal.yaml", "- {name", "{name",
     "kinds/EDMA.yaml:14: kinds/shared/signal.yaml holds no rows to include; write it as a list"),
    ("kinds/EDMA.yaml", "include: signal", "include: signals",
     "kinds/shared/signals.yaml:1: cannot be read (FileNotFoundError); add the file as UTF-8 text"),
]

# file, text to replace, what takes its place, the complaint
FAULTS = [
    ("kinds/COM.yaml", "signals: [TX, RX]", "signals: [TX, RZ]",
     "kinds/COM.yaml:16: the signal 'RZ' is not declared; declare it under 'signals' of the kind"),
    ("kinds/COM.yaml", "TX: MuxOutput", "TX: MuxOut",
     "kinds/COM.yaml:7: 'MuxOut' is no IO mode; use one of Direct, MuxInput, MuxOutput or virtual"),
    ("kinds/COM.yaml", "params: [Rate, Limit, Width]", "params: [Rate, Limit, Width, Speed]",
     "kinds/COM.yaml:18: the parameter 'Speed' is not declared; declare it under 'parameters' of the kind"),
    ("kinds/COM.yaml", "params: [Rate, Limit, Width]", "params: [Rate, Limit, {Width: W7}]",
     "kinds/COM.yaml:18: 'Width' does not offer the value 'W7'; add it to its values or correct it"),
    ("kinds/COM.yaml", "params: [Hold]", "params: [Hold, Rate]",
     "kinds/COM.yaml:22: 'Rate' belongs to 'Mode' and to 'Flow'; list it in one of them only"),
    ("kinds/COM.yaml", "check: {signals: [CTS], params: [Hold]}", "check: {signals: [CTS]}",
     "kinds/COM.yaml:33: no mode uses the parameter 'Hold'; list it under 'params' of a choice or of 'abstract'"),
    ("kinds/COM.yaml", "condition: Rate > 100", "condition: Rate >= 100",
     "kinds/COM.yaml:29: the condition names no parameter: 'Rate >'; name a parameter of the same file; there is no >= "
     "and no <="),
    ("kinds/COM.yaml", "condition: Rate > 100", "condition: Rate > 100 &",
     "kinds/COM.yaml:29: the condition 'Rate > 100 &' has an empty term; complete it"),
    ("kinds/COM.yaml", "condition: On_$IpInstance", "condition: Off_$IpInstance",
     "kinds/COM.yaml:21: no one sends the token 'Off_COM1' in ZT1; add it to 'semaphores' of a mode or 'semaphore' of "
     "a value, or correct it"),
    ("kinds/COM.yaml", "condition: On_$IpInstance", "condition: On_COM1",
     "kinds/COM.yaml:21: the program does not carry 'On_COM1' from COM1 to COM2; ask for a token that reaches it"),
    ("kinds/COM.yaml", "condition: On_$IpInstance", "condition: Rate = 1",
     "kinds/COM.yaml:21: the condition compares 'Rate = 1', but a mode only knows tokens; name a token"),
    ("kinds/COM.yaml", 'max: "=#Limit"', 'max: "=#Top"',
     "kinds/COM.yaml:24: the bound names no parameter: 'Top'; name a parameter of the same file"),
    ("kinds/COM.yaml", "default: FFFF", "default: '10000'",
     "kinds/COM.yaml:25: the default '10000' of 'Limit' is no number within the bounds; correct the default or the "
     "bounds"),
    ("kinds/COM.yaml", "default: W8", "default: W7",
     "kinds/COM.yaml:28: the default 'W7' of 'Width' is none of its values; choose one of them"),
    ("kinds/COM.yaml", "group: basic", "group: advanced",
     "kinds/COM.yaml:24: 'advanced' is not declared under 'groups'; declare its two texts under 'groups' of the kind"),
    ("kinds/COM.yaml", "- when: flow\n", "- when: flaw\n",
     "kinds/COM.yaml:19: 'flaw' is no feature that 'when' can ask; declare it under 'features' of the kind, or correct "
     "the name"),
    ("kinds/COM.yaml", "text: [Hold, 保持]", "text: [<held>, 保持]",
     "kinds/COM.yaml:33: '<held>' stands for nothing in ZT1; declare it under 'vars' of the family, of its entry or of "
     "the kind, or repeat over it"),
    ("kinds/COM.yaml", "user: [Mode, 模式]", "user: [Mode]",
     "kinds/COM.yaml:13: 'user' of a mode must be a pair [English, Chinese]; rewrite it so"),
    ("kinds/COM.yaml", "  choices:", "  choice:",
     "kinds/COM.yaml:14: a mode has no key 'choice'; use one of and, check, choices, condition, diagnostic, logic, "
     "name, note, remove, semaphores, user"),
    ("families/tiny/pins.yaml", "COM2_TX@2", "COM2_TX@1",
     "families/tiny/pins.yaml:3: PA0 offers COM1_TX and COM2_TX under number 1; give one of them another number"),
    ("families/tiny/pins.yaml", "COM2_TX@2", "COM3_TX@2",
     "families/tiny/pins.yaml:3: PA0 offers 'COM3_TX', which no peripheral declares; declare it under 'signals' of its "
     "kind, or correct the name"),
    ("families/tiny/pins.yaml", " COM2_CTS@2", "",
     "families/tiny/family.yaml:18: the signal 'COM2_CTS' stands on no pin; place it in pins.yaml or groups.yaml, or "
     "leave it out by 'when'"),
    ("families/tiny/pins.yaml", "QFN4: [VDD, PA0,", "QFN4: [VDD, PA0, PA0,",
     "families/tiny/pins.yaml:7: QFN4 has 5 pins; list 4 of them"),
    ("families/tiny/pins.yaml", "PA2 VDD]", "PA2 PB9]",
     "families/tiny/pins.yaml:8: 'PB9' of BGA4 is no pin of the family; add it to 'pins' or correct it"),
    ("families/tiny/family.yaml", "name: ZT1X8U7", "name: ZT1X6U7",
     "families/tiny/family.yaml:14: the name 'ZT1X6U7' does not tell QFN4 and 64 KB; call it ZT1X8U and a digit for "
     "the temperature grade"),
    ("families/tiny/family.yaml", "flash: 64, ram: 16}\n  - {name: ZT1X8H7", "flash: 65, ram: 16}\n  - {name: ZT1X8H7",
     "families/tiny/family.yaml:14: 65 KB is no flash size of the device code; use a size of the table in device.py"),
    ("families/tiny/family.yaml", "features: [flow]", "features: [flow, glow]",
     "families/tiny/family.yaml:18: the kind COM has no feature 'glow'; declare it under 'features' of the kind, or "
     "correct it"),
    ("families/tiny/family.yaml", "group: Links", "group: Link",
     "families/tiny/family.yaml:18: 'Link' is no group; declare it in catalogue.yaml"),
    ("families/tiny/family.yaml", "kind: COM,", "kind: COMM,",
     "kinds/COMM.yaml:1: cannot be read (FileNotFoundError); add the file as UTF-8 text"),
    ("families/tiny/vectors.yaml", "owners: [COM1]", "owners: [COM9]",
     "families/tiny/vectors.yaml:1: the vector's owner 'COM9' is no peripheral of ZT1; correct it, or leave the vector "
     "out by 'when'"),
    ("catalogue.yaml", "families: [tiny]", "families: [tiny",
     "catalogue.yaml:2: is no valid YAML (did not find expected ',' or ']'); correct the syntax"),
    ("kinds/COM.yaml", "    signals: [TX, RX]", "    remove: [ZT1, ZT1X8H7, COM2, ZT1X9]\n    signals: [TX, RX]",
     "kinds/COM.yaml:16: 'ZT1X9' is no series and no device of the family and no peripheral; name one of them"),
    ("kinds/COM.yaml", "  user: [Mode, 模式]", "  user: [Mode, 模式]\n  remove: [COM2]",
     "kinds/COM.yaml:14: 'COM2' is no series and no device of the family; name one of them"),
    ("kinds/COM.yaml", "    signals: [TX, RX]", "    config_for: [Flow, Fly]\n    signals: [TX, RX]",
     "kinds/COM.yaml:16: 'Fly' is no mode of this peripheral; name one of its modes"),
    ("kinds/COM.yaml", "[On_$IpInstance]", "[On_$IpInstance, Semaphore_AutoEnable_COM9_IRQn_FromApp_COM1]",
     "families/tiny/family.yaml:18: COM1 forces on 'COM9_IRQn', which is no vector of ZT1; name one of vectors.yaml"),
    ("kinds/COM.yaml", "condition: Rate = 9600 | On_$IpInstance", "action: Remark, condition: On_COM1 & On_COM3",
     "kinds/COM.yaml:32: no one sends the token 'On_COM3' in ZT1; add it to 'semaphores' of a mode or 'semaphore' of a "
     "value, or correct it"),
]


def plant(folder, **changes):
    """Writes the tiny family, some of its files changed, and returns its root."""
    root = pathlib.Path(folder)
    for name, text in {**TREE, **changes}.items():
        path = root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
    return root


def composed(**changes):
    with tempfile.TemporaryDirectory() as folder:
        return compose(plant(folder, **changes))


class ComposerTest(unittest.TestCase):
    def test_the_tiny_family_is_composed(self):
        products, problems = composed()
        self.assertEqual(problems.lines, [])
        quad = products["device/ZT1/ZT1X8U7.xml"].decode()
        for pin, variant in (("PA1", "NOPINREMAP"), ("PA2", "PINREMAP")):
            self.assertIn(f'<Pin PinNum="3" PinName="{pin}" PinFixed="false" PinType="I/O" GPIOStructure="FT" '
                          f'Variant="{variant}"', quad)
        ball = products["device/ZT1/ZT1X8H7.xml"].decode()
        self.assertIn('<Pin PinNum="B1" PinName="PA2"', ball)
        port = products["device/ZT1/Peripherals/COM-V1.0.xml"].decode()
        self.assertIn('Type="hexadecimal" DefaultValue="FFFF" Min="0" Max="FFFF"', port)
        self.assertIn('<Condition Expression="On_$IpInstance"/>', port)

    def test_each_fault_is_told_with_its_place(self):
        for file, old, new, expected in FAULTS:
            with self.subTest(expected):
                self.assertIn(old, TREE[file])
                products, problems = composed(**{file: TREE[file].replace(old, new, 1)})
                self.assertIn(expected, problems.lines)
                self.assertEqual(products, {})

    def test_a_second_controller_takes_the_requests_of_the_first(self):
        products, problems = composed(**DMA_TREE)
        self.assertEqual(problems.lines, [])
        first, second = (products[f"device/ZT1/Peripherals/{kind}-V1.0.xml"].decode() for kind in ("DMA", "EDMA"))
        self.assertIn('IpInstance="COM2" Condition="Request_COM2_TX" Semaphore="DMARequest_COM2_TX" '
                      'Flexible="DMA_FLEXIBLE_COM2_TX"', first)
        self.assertIn('Condition="Request_COM1_TX &amp; On_COM1"', second)
        self.assertIn('Semaphore="EDMARequest_COM2_TX" Flexible="EDMA_FLEXIBLE_COM2_TX"', second)
        self.assertIn('<DMAChannel Name="EDMA_Stream2" Value="EDMA_STREAM2" Handle="EDMA_Stream2" Controller="EDMA"/>',
                      second)
        self.assertIn('<RefMode Name="GENERATOR1" BaseMode="DMA_Request" Flexible="EDMA_FLEXIBLE_GENERATOR1">', second)
        self.assertEqual(second.count('<Parameter Name="Signal"'), 1, "only what a generator makes has its signal")
        self.assertNotIn("GENERATOR1", first)
        self.assertNotIn("GENERATOR2", second, "each table has generators of its own")
        for file, old, new, expected in DMA_FAULTS:
            with self.subTest(expected):
                self.assertIn(old, DMA_TREE[file])
                _, problems = composed(**{**DMA_TREE, file: DMA_TREE[file].replace(old, new, 1)})
                self.assertIn(expected, problems.lines)

    def test_an_interrupt_without_a_vector_is_told(self):
        family = TREE["families/tiny/family.yaml"]
        changes = {
            "kinds/COM.yaml": TREE["kinds/COM.yaml"].replace("Hold", "Interrupt_Hold"),
            "kinds/EXINT.yaml": "kind: EXINT\nabout: [Lines, 线]\nsignals:\n- {EXINT0: MuxInput, EXINT1: MuxInput}\n"
                                "settings: true\n",
            "families/tiny/family.yaml": family.replace("- {kind: COM,", "- {kind: EXINT, group: Core, instances: "
                                                        "[EXINT]}\n- {kind: COM,"),
            "families/tiny/vectors.yaml": TREE["families/tiny/vectors.yaml"].replace("owners: [COM1]",
                                                                                     "owners: [COM1], lines: [1]")}
        _, problems = composed(**changes)
        self.assertEqual(problems.lines, [
            "families/tiny/family.yaml:18: line 0 of EXINT has no vector in ZT1; name it under 'lines' of a vector",
            "families/tiny/family.yaml:19: COM2 offers interrupts, but owns no vector of ZT1; name it under 'owners' "
            "of a vector"])

    def test_a_fixed_request_stands_on_a_channel_of_any_controller(self):
        changes = {"families/tiny/dma.yaml": """\
mapping: fixed
controllers:
- {name: DMA1, channels: 1}
- {name: DMA2, channels: 2}
requests:
- {name: COM1_TX, to: periph, on: {1: always, DMA2_Channel2: On_COM1}}
without: [COM2]
""", "families/tiny/edma.yaml": DMA_TREE["families/tiny/edma.yaml"].replace("also: DMA\n", ""),
                   "families/tiny/vectors.yaml": DMA_TREE["families/tiny/vectors.yaml"] + """\
- {number: 4, value: DMA2_Channel1_IRQn, text: [DMA, DMA], channels: [DMA2_Channel1]}
- {number: 5, value: DMA2_Channel2_IRQn, text: [DMA, DMA], channels: [DMA2_Channel2]}
"""}
        products, problems = composed(**{**DMA_TREE, **changes})
        self.assertEqual(problems.lines, [])
        table = products["device/ZT1/Peripherals/DMA-V1.0.xml"].decode()
        self.assertRegex(table, r'Name="DMA2_Channel2"[^>]*Controller="DMA2">\s*<Request Name="COM1_TX" '
                                r'Condition="On_COM1"')
        self.assertRegex(table, r'<InstanceCondition ChannelName="DMA1_Channel1"/>\s*<InstanceCondition '
                                r'ChannelName="DMA2_Channel2" Condition="On_COM1"')

    def test_only_what_never_works_at_once_shares_a_number(self):
        for first, second, shared in [("EMAC_MII_TXD0", "EMAC_RMII_TXD0", True), ("XMC_CLE", "XMC_A16", True),
                                      ("XMC_NE4", "XMC_NCE4_1", True), ("SPI1_SCK", "I2S1_CK", True),
                                      ("EMAC_MII_TXD0", "EMAC_MII_TXD1", False), ("EMAC_MDC", "EMAC_MDIO", False),
                                      ("XMC_A16", "XMC_A17", False), ("XMC_CLE", "XMC_ALE", False),
                                      ("XMC_D0", "XMC_NCE2", False), ("SPI1_SCK", "I2S2_CK", False)]:
            self.assertEqual(same_pad(first, second), shared, f"{first} and {second}")

    def test_all_faults_are_told_at_once(self):
        changes = {}
        expected = []
        for file, old, new, complaint in (FAULTS[0], FAULTS[12], FAULTS[19]):
            changes[file] = changes.get(file, TREE[file]).replace(old, new, 1)
            expected.append(complaint)
        _, problems = composed(**changes)
        self.assertTrue(set(expected) <= set(problems.lines), problems.lines)

    def test_no_damage_of_a_source_ends_in_a_crash(self):
        """Each line of each file is left out, each value is of another kind: composed or told, never raised."""
        for file, text in DMA_TREE.items():
            if file.endswith(".j2"):
                continue
            lines = text.splitlines(keepends=True)
            for index, line in enumerate(lines):
                damaged = [""] + [re.sub(r": \S.*", f": {wrong}", line) for wrong in ("[a, {b: c}]", "{a: [b]}", "")]
                for instead in damaged if ": " in line else damaged[:1]:
                    with self.subTest(f"{file}:{index + 1}: {instead!r}"):
                        composed(**{**DMA_TREE, file: "".join(lines[:index] + [instead] + lines[index + 1:])})

    def test_only_what_changed_is_written_and_leftovers_go(self):
        with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as output:
            source = plant(folder)
            products, _ = compose(source)
            root = pathlib.Path(output)
            (root / "CodeView").mkdir()
            (root / "CodeView" / "kept").write_text("of the program")
            self.assertEqual(write(products, output), (len(products), 0))
            stamps = {path: path.stat().st_mtime_ns for path in root.rglob("*") if path.is_file()}
            self.assertEqual(write(products, output), (0, 0))
            self.assertEqual(stamps, {path: path.stat().st_mtime_ns for path in root.rglob("*") if path.is_file()})

            family = source / "families/tiny/family.yaml"
            family.write_text(family.read_text(encoding="utf-8").replace(
                "  - {name: ZT1X8H7, package: BGA4, flash: 64, ram: 16}\n", ""), encoding="utf-8")
            products, problems = compose(source)
            self.assertEqual(problems.lines, [])
            self.assertEqual(write(products, output), (3, 1))  # the catalogue and both information pages
            self.assertFalse((root / "device/ZT1/ZT1X8H7.xml").exists())
            self.assertTrue((root / "CodeView" / "kept").exists())

    def test_the_command_fails_loudly_and_writes_nothing(self):
        command = pathlib.Path(sys.modules["compose"].__file__)
        with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as output:
            source = plant(folder, **{"catalogue.yaml": TREE["catalogue.yaml"].replace("x: 1,", "", 1)})
            done = subprocess.run([sys.executable, "-B", str(command), "--source", str(source), "--output", output],
                                  capture_output=True, text=True, check=False)
            self.assertEqual(done.returncode, 1)
            self.assertIn("catalogue.yaml:5: a package lacks 'x'; add it\n", done.stderr)
            self.assertIn("nothing was written", done.stderr)
            self.assertEqual(os.listdir(output), [])


if __name__ == "__main__":
    unittest.main()
