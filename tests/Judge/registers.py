"""What the registers of each kind of peripheral hold for its parameters.

A row is a register of the kind, the bits of a field and what stands in it: a parameter (0 where the design has none),
or a function of all values of the instance; None leaves open what stands there. Bits are expressions over the constants
of the drivers. Bits of a register that no row names must be clear.
"""

import dataclasses
import re
from typing import Callable, NamedTuple

ALL = "0xFFFFFFFF"


class Row(NamedTuple):
    register: str
    bits: str
    value: str | Callable


@dataclasses.dataclass
class Kind:
    type: str
    rows: list
    first: Callable = lambda values: 0      # offset of the registers within the peripheral
    block: Callable = lambda values: values.instance  # whose registers these are
    check: Callable = None                  # compares what is no field
    members: tuple = ()                     # registers that others ask for


class Values:
    """The parameters of an instance as numbers; what is not there counts as 0."""

    def __init__(self, kind, outcome, facts, instance):
        self.kind, self.outcome, self.facts, self.instance = kind, outcome, facts, instance
        self.texts = facts["peripherals"][instance]
        self.constants = outcome.chip.constants
        self.number = int(re.search(r"\d*$", instance)[0] or 0)

    def __contains__(self, name):
        return self.texts.get(name, "") != ""

    def __getitem__(self, name):
        return self.value_of(self.texts.get(name, ""))

    def value_of(self, text):
        if text in ("TRUE", "FALSE", ""):
            return int(text == "TRUE")
        if re.fullmatch(r"-?\d+", text):
            return int(text)
        return self.constants[text] if text in self.constants else int(text, 16)

    def hex(self, name):
        return int(self.texts.get(name) or "0", 16)

    def real(self, name):
        return float(self.texts.get(name) or 0)

    def text(self, name):
        return self.texts.get(name, "")

    def constant(self, name):
        return self.constants[name]

    def requested(self, *events):
        """A DMA channel serves one of these requests of the instance."""
        served = {channel["request"] for channel in self.facts["dma"]}
        return int(any(self.instance + event in served for event in events))

    @property
    def bus_clock(self):
        return self.outcome.clocks[2 if self.instance in self.outcome.chip.apb1 else 3]

    def word(self, register):
        chip = self.outcome.chip
        return self.outcome.word(chip.bases[self.kind.block(self)] + self.kind.first(self) +
                                 chip.constants[f"{self.kind.type}.{register}"])

    def near(self, what, is_, expected, tolerance=1e-3):
        """What is shown has three digits behind the point."""
        self.outcome.compared += 1
        if abs(is_ - expected) > tolerance * abs(expected) + 6e-4:
            self.outcome.faults.append(f"{what} of {self.instance} is {is_:.6g}, not {expected:.6g} as shown")


def given(*names):
    return lambda values: int(any(name in values for name in names))


def if_given(name):
    return lambda values: values[name] if name in values else None


def events(**bits):
    """Interrupt enables: the constant of each parameter `Interrupt_<key>`."""
    return lambda values: sum(values.constant(bit) for name, bit in bits.items() if values[f"Interrupt_{name}"])


def kind_of(instance):
    name = re.sub(r"_?\d+$", "", instance)
    return {"UART": "USART"}.get(name, name)


def registers_of(kinds):
    """All registers that the tables name, as (type, member)."""
    return [(kind.type, member) for kind in kinds.values()
            for member in (*(row.register for row in kind.rows), *kind.members)]


def compare_registers(kinds, outcome, facts):
    chip = outcome.chip
    for instance in facts["peripherals"]:
        kind = kinds.get(kind_of(instance))
        if not kind:
            continue
        values, seen = Values(kind, outcome, facts, instance), {}
        for row in kind.rows:
            if f"{kind.type}.{row.register}" not in chip.constants or not chip.knows(row.bits):
                continue
            bits = chip.bits(row.bits)
            word = values.word(row.register)
            seen[row.register] = seen.get(row.register, 0) | bits
            expected = row.value(values) if callable(row.value) else values[row.value]
            if expected is None:
                continue
            shift = (bits & -bits).bit_length() - 1
            outcome.expect(f"{instance}.{row.register} {row.bits if bits != 0xFFFFFFFF else ''}",
                           (word & bits) >> shift, expected)
        for register, bits in seen.items():
            outcome.expect(f"what nobody set in {instance}.{register}", values.word(register) & ~bits, 0)
        if kind.check:
            kind.check(values)
