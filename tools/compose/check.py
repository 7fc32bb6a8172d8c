"""Checks across a series: every name that is used is declared, every condition parses, every token has a sender."""

import re

from device import expand_range
from peripheral import Description
from source import Map

# Whose tokens the program carries to whom, as patterns of instance names; `#` stands for the same number on both sides.
ROUTES = [
    ("FREERTOS|RT-Thread_Nano", "SYSTEM|EMAC|USB_DEVICE|USB_HOST|LWIP"),
    ("LWIP", "EMAC"),
    ("I2C_Application", "I2C*"),
    ("TMR*|USART*|UART*", "SYSTEM"),
    ("SYSTEM", "TMR*|USART*|UART*|EMAC*|LWIP|USB_DEVICE|USB_HOST"),
    ("TMR10|TMR11|TMR16|TMR17|USART*|UART*", "IRTMR"),
    ("I2S#", "SPI#"),
    ("SPI#", "I2S#"),
    ("SCFG", "I2S2|I2S3"),
    ("EXINT", "ADC1|DAC"),
    ("ERTC", "EXINT"),
    ("EXINT|SCFG|ADC1", "DMA|EDMA"),
    ("SPI*|USART*|UART*|TMR*", "DMA|EDMA"),  # owners of requests
    ("USB_OTGFS1|USBFS", "ACC"),
    ("CMP1", "TMR*"),
    ("ADC2", "ADC1"),
    ("USB_OTGFS1|USB_OTGFS2|USB_OTGHS1|USBFS", "USB_DEVICE|USB_HOST"),
    ("SYSTEM|USB_DEVICE|USB_HOST|LWIP|FATFS", "FREERTOS|RT-Thread_Nano"),
    ("EMAC", "LWIP"),
    ("SDIO*|SPI*|USB_HOST", "FATFS"),
    ("I2C1|I2C2|I2C3|I2C4", "I2C_Application"),
    ("CAN1|CAN2", "USB_DEVICE|USBFS"),
]
NUMBERED = ("1", "2", "3", "4")

NUMBER_TYPES = {"integer": 10, "signedinteger": 10, "hexadecimal": 16}
OPERATORS = ("!=", "=", ">", "<")
# What the program tells of a channel of the DMA: whether its multiplexer gives events. This is the channel itself.
OWN_EVENT = "$DMATYPE_MUX_$ChannelNo_EVENT"
# A token of one request in the conditions that all share.
OWN_REQUEST = "$RequestName"


class Term:
    """One term of a condition, classified as the program does it."""

    def __init__(self, text):
        self.text = text.strip()
        self.operator = next((one for one in OPERATORS if one in self.text), None)
        if self.operator:
            left, _, right = self.text.partition(self.operator)
            self.name, self.value = left.strip(), right.strip()
        else:
            self.name, self.value = self.text.replace("!", "").strip(), None


def terms_of(expression):
    return [Term(term) for part in expression.split("&") for term in part.split("|")]


def number(text, base):
    try:
        return int(str(text).strip(), 16 if base == 16 or str(text).lower().startswith("0x") else 10)
    except ValueError:
        return None


def routed(sender, receiver):
    """Whether the program carries the sender's tokens to the receiver; everyone hears its own."""

    def fits(pattern, name):
        return any(name.startswith(one[:-1]) if one.endswith("*") else name == one for one in pattern.split("|"))

    if sender == receiver:
        return True
    for left, right in ROUTES:
        for number_text in NUMBERED if "#" in left else ("",):
            if fits(left.replace("#", number_text), sender) and fits(right.replace("#", number_text), receiver):
                return True
    return False


class SeriesCheck:
    """All checks of one series. The problems go where all problems go."""

    def __init__(self, series, problems):
        self.series = series
        self.problems = problems
        self.instances = series.peripherals + series.middlewares
        self.program_tokens = set(series.family.source.get("program_tokens", []))
        self.sent = {}  # token -> names of its senders
        self.heard = {}  # (token, receiver) -> place
        self.asked = {}  # token of which a remark asks whether anyone raises it -> place
        self.io_modes = self._io_modes()
        self.channel_events = {f"{name}_EVENT".upper().replace("_", "_MUX_", 1) for table in series.dma_tables
                               for name in table.channels}

    def run(self):
        self._check_dma()
        done = set()
        requests = [request.name for table in self.series.dma_tables for request in table.requests]
        for instance in self.instances:
            self._gather_tokens(instance)
            description = instance.description
            if id(description) not in done:
                done.add(id(description))
                self._check_modes(description)
                self._check_parameters(description)
        for token, place in self.asked.items():
            if token not in self.sent:
                self.problems.add(place, f"no one sends the token '{token}' in {self.series.name}",
                                  "add it to 'semaphores' of a mode or 'semaphore' of a value, or correct it")
        for (token, receiver), place in self.heard.items():
            names = [token.replace(OWN_REQUEST, name) for name in requests] if OWN_REQUEST in token else [token]
            senders = set().union(*(self.sent.get(name, set()) for name in names))
            if token in self.program_tokens or any(routed(sender, receiver) for sender in senders):
                continue
            if senders:
                self.problems.add(place, f"the program does not carry '{token}' from {', '.join(sorted(senders))} to "
                                  f"{receiver}", "ask for a token that reaches it")
            else:
                self.problems.add(place, f"no one sends the token '{token}' in {self.series.name}",
                                  "add it to 'semaphores' of a mode or 'semaphore' of a value, or correct it")
        self._check_forced_vectors()
        self._check_owned_vectors()

    def _check_owned_vectors(self):
        """What can interrupt has a vector, and so has each pin's line of EXINT."""
        vectors = self.series.vectors.vectors
        owners = {str(name) for one in vectors for name in one.get("owners", [])}
        lines = {str(line) for one in vectors for line in one.get("lines", [])}
        for instance in self.series.peripherals:
            description = instance.description
            if instance.name not in owners and description.content.get("content") != "dma" and any(
                    str(one["name"]).startswith("Interrupt") for one in description.parameters):
                self.problems.add(instance.place, f"{instance.name} offers interrupts, but owns no vector of "
                                  f"{self.series.name}", "name it under 'owners' of a vector")
            for name in description.signals if instance.name == "EXINT" else ():
                if name.removeprefix("EXINT") not in lines:
                    self.problems.add(instance.place, f"line {name.removeprefix('EXINT')} of EXINT has no vector in "
                                      f"{self.series.name}", "name it under 'lines' of a vector")

    def _check_forced_vectors(self):
        """What a library forces on is a vector of the series."""
        vectors = {str(one["value"]) for one in self.series.vectors.vectors}
        for token, senders in self.sent.items():
            match = re.fullmatch(r"Semaphore_AutoEnable_(\w+)_FromApp_.*", token)
            if match and match.group(1) not in vectors:
                for instance in self.instances:
                    if instance.name in senders:
                        self.problems.add(instance.place, f"{instance.name} forces on '{match.group(1)}', which is no "
                                          f"vector of {self.series.name}", "name one of vectors.yaml")

    def _io_modes(self):
        for instance in self.series.peripherals:
            if instance.name == "GPIO":
                return {str(one["name"]) for one in instance.description.content.get("refmodes", [])} | {"Direct"}
        self.problems.add(self.series.source.place, f"{self.series.name} has no peripheral GPIO", "add it")
        return set()

    # ---- tokens ----

    def _gather_tokens(self, instance):
        def sends(text):
            self.sent.setdefault(text.replace("$IpInstance", instance.name), set()).add(instance.name)

        def hears(expression, place, with_parameters, asks=False):
            text = expression.replace("$IpInstance", instance.name)
            index = re.search(r"[0-9]+$", instance.name)
            if index:
                text = text.replace("$Index", index.group(0))
            for term in terms_of(text):
                if term.operator and not with_parameters:
                    self.problems.add(place, f"the condition compares '{term.text}', but a mode only knows tokens",
                                      "name a token")
                elif not term.name or (term.operator and not term.value):
                    self.problems.add(place, f"the condition '{expression}' has an empty term", "complete it")
                elif not term.operator:
                    if " " in term.name:
                        self.problems.add(place, f"'{term.name}' is no token: it holds a blank",
                                          "part terms by & or |")
                    if asks:
                        self.asked.setdefault(term.name, place)
                    else:
                        self.heard.setdefault((term.name, instance.name), place)

        description = instance.description
        for mode in description.modes:
            for semaphore in mode.get("semaphores", []):
                sends(semaphore)
            if "condition" in mode:
                hears(mode["condition"], mode.place_of("condition"), False)
            for choice in description.choices(mode):
                for semaphore in choice.get("semaphores", []):
                    sends(semaphore)
                if "condition" in choice:
                    hears(choice["condition"], choice.place_of("condition"), False)
        for parameter in description.parameters:
            if "condition" in parameter:
                hears(parameter["condition"], parameter.place_of("condition"), True)
            for value in description.values_of(parameter):
                if value.get("semaphore"):
                    sends(value["semaphore"])
                if "condition" in value:
                    hears(value["condition"], value.place_of("condition"), True, value.get("action") == "Remark")

    def _check_dma(self):
        """A request is opened by a token of its owner; what moves it to another channel may come from SCFG too."""
        requests = [request for table in self.series.dma_tables for request in table.requests]
        for request in requests:
            if request.generated:
                continue
            sent = {one for instance in self.instances if instance.name == request.owner
                    for one in self._tokens(instance)}
            for token in [term.name for term in terms_of(request.condition)]:
                if token not in sent:
                    self.problems.add(request.place, f"{request.owner} never sends '{token}' in {self.series.name}, so "
                                      "that the request stays closed",
                                      "add the token to a mode or a value of the peripheral")
            movers = {one for instance in self.instances if instance.name in ("SCFG", request.owner)
                      for one in self._tokens(instance)}
            for condition in request.channels.values():
                for term in terms_of(condition) if condition else []:
                    if term.name not in movers:
                        self.problems.add(request.place, f"neither SCFG nor {request.owner} sends '{term.name}'",
                                          "correct the condition of the channel")

        self._check_opened({request.name for request in requests if not request.generated})

    def _check_opened(self, names):
        """What the modes of a peripheral open is a request of a table, or left out on purpose."""
        tables = self.series.dma_tables
        if not tables or not all(table.controllers for table in tables):
            return
        without = {str(name) for table in tables for name in table.without}
        used = set()
        for instance in self.instances:
            opened = {token.removeprefix("Request_") for token in self._tokens(instance)
                      if token.startswith("Request_")}
            for name in sorted(opened - names):
                used |= {name, instance.name}
                if not without & {name, instance.name}:
                    self.problems.add(tables[0].place,
                                      f"{instance.name} opens the request '{name}', which no table has with 'to'",
                                      f"list it, or name it or {instance.name} under 'without'")
        for name in sorted(without - used):
            self.problems.add(tables[0].place, f"'{name}' under 'without' is no request that a mode "
                              "opens and no table has", "leave it out")

    @staticmethod
    def _tokens(instance):
        description = instance.description
        found = []
        for mode in description.modes:
            for source in [mode, *description.choices(mode)]:
                found.extend(source.get("semaphores", []))
        for parameter in description.parameters:
            found.extend(value["semaphore"] for value in description.values_of(parameter) if value.get("semaphore"))
        return [one.replace("$IpInstance", instance.name) for one in found]

    # ---- modes ----

    def _check_removal(self, source, instances=()):
        known = set(instances)
        for series in self.series.family.source["series"]:
            known |= {str(series["name"]), *(str(device["name"]) for device in series.get("devices", []))}
        for name in source.get("remove", []):
            if name and name not in known:
                self.problems.add(source.place_of("remove"), f"'{name}' is no series and no device of the family"
                                  + (" and no peripheral" if instances else ""), "name one of them")

    def _check_modes(self, description):
        names = set()
        for mode in description.modes:
            if mode["name"] in names:
                self.problems.add(mode.place, f"the mode '{mode['name']}' is declared twice", "remove one of them")
            names.add(mode["name"])
            self._check_removal(mode)
            choice_names = set()
            for choice in description.choices(mode):
                name = description.choice_name(mode, choice)
                if name in choice_names:
                    self.problems.add(choice.place, f"the choice '{name}' stands twice", "remove one of them")
                choice_names.add(name)
                self._check_removal(choice, [instance.name for instance in self.instances])
                if "choices" in mode and len(mode["choices"]) == 1 and name == mode["name"]:
                    self.problems.add(choice.place, f"a lone choice named as its mode makes a check box of '{name}'",
                                      "write it as 'check'")
                self._check_signals(description, choice)
        for mode in description.modes:
            for choice in description.choices(mode):
                for name in choice.get("config_for", []):
                    if name not in names:
                        self.problems.add(choice.place_of("config_for"), f"'{name}' is no mode of this peripheral",
                                          "name one of its modes")
        for name, mode in description.signals.items():
            for word in mode.split()[:1]:
                if word != "virtual" and word not in self.io_modes:
                    self.problems.add(mode.place, f"'{word}' is no IO mode",
                                      "use one of " + ", ".join(sorted(self.io_modes)) + " or virtual")

    def _check_signals(self, description, choice):
        for entry in choice.get("signals", []):
            pairs = entry.items() if isinstance(entry, Map) else [(entry, None)]
            for name, mode in pairs:
                for single in expand_range(name):
                    if single not in description.signals:
                        self.problems.add(entry.place, f"the signal '{single}' is not declared",
                                          "declare it under 'signals' of the kind")
                if mode is not None and mode not in self.io_modes:
                    self.problems.add(entry.place, f"'{mode}' is no IO mode",
                                      "use one of " + ", ".join(sorted(self.io_modes)))

    # ---- parameters ----

    def _check_parameters(self, description):
        declared = {}
        for parameter in description.parameters:
            declared.setdefault(str(parameter["name"]), []).append(parameter)
        used = set()
        for source in self._parameter_lists(description):
            for name, values in description.params_of(source.get("params", [])):
                used.add(str(name))
                place = getattr(name, "place", None) or source.place
                if name not in declared:
                    self.problems.add(place, f"the parameter '{name}' is not declared",
                                      "declare it under 'parameters' of the kind")
                    continue
                self._check_values_allowed(description, declared[name], values)
        self._check_one_mode_each(description)
        self._check_order(description, declared)
        for name, declarations in declared.items():
            if name not in used and description.content.get("settings") != "true":
                self.problems.add(declarations[0].place, f"no mode uses the parameter '{name}'",
                                  "list it under 'params' of a choice or of 'abstract'")
            plain = [one for one in declarations if "condition" not in one]
            if len(plain) > 1:
                self.problems.add(plain[1].place, f"'{name}' is declared twice without a condition",
                                  "give all but one of them a condition")
            for one in declarations:
                self._check_declaration(description, one, declared)

    def _check_one_mode_each(self, description):
        """Modes stand side by side, so that a parameter of two modes would stand twice in the list."""
        owners = {}
        if "abstract" in description.content:
            for name, _ in description.params_of(description.content["abstract"].get("params", [])):
                owners[name] = "abstract"
        for mode in description.modes:
            for choice in description.choices(mode):
                for name, _ in description.params_of(choice.get("params", [])):
                    if owners.setdefault(name, mode["name"]) != mode["name"]:
                        self.problems.add(choice.place, f"'{name}' belongs to '{owners[name]}' and to '{mode['name']}'",
                                          "list it in one of them only")

    def _check_order(self, description, declared):
        """A rebuild goes down the list of a mode: what a condition compares must stand above, or be always there."""
        lists = self._parameter_lists(description)
        always = []
        if "abstract" in description.content:
            always = [str(name) for name, _ in description.params_of(description.content["abstract"].get("params", []))]
        for source in lists:
            above = set() if source is description.content.get("abstract") else set(always)
            for name, _ in description.params_of(source.get("params", [])):
                for declaration in declared.get(str(name), []):
                    for term in terms_of(declaration["condition"]) if "condition" in declaration else []:
                        if term.operator and term.name in declared and term.name not in above:
                            self.problems.add(source.place,
                                              f"'{name}' asks for '{term.name}', which does not stand above it",
                                              "move it behind that parameter in the same list")
                above.add(str(name))

    @staticmethod
    def _parameter_lists(description):
        lists = [description.content["abstract"]] if "abstract" in description.content else []
        for mode in description.modes:
            lists.extend(choice for choice in Description.choices(description, mode) if "params" in choice)
        lists.extend(description.content.get("refmodes", []))
        return lists

    def _check_values_allowed(self, description, declarations, values):
        offered = {value["value"] for one in declarations for value in description.values_of(one)}
        for value in values:
            if offered and value not in offered:
                self.problems.add(getattr(value, "place", None) or declarations[0].place,
                                  f"'{declarations[0]['name']}' does not offer the value '{value}'",
                                  "add it to its values or correct it")

    def _check_declaration(self, description, parameter, declared):
        kind = description.type_of(parameter)
        default = description.default_of(parameter)
        values = [value["value"] for value in description.values_of(parameter)]
        unconditional = [value["value"] for value in description.values_of(parameter) if "condition" not in value]
        for value in set(unconditional):
            if unconditional.count(value) > 1:
                self.problems.add(parameter.place, f"'{parameter['name']}' offers '{value}' twice", "remove one")
        if kind == "list" and default not in values and not (default == "" and parameter.get("visible") == "false"):
            self.problems.add(parameter.place_of("default"), f"the default '{default}' of '{parameter['name']}' is "
                              "none of its values", "choose one of them")
        self._check_bounds(parameter, kind, default, declared)
        for source in [parameter, *parameter.get("values", [])]:
            if "condition" in source:
                self._check_comparisons(description, source, declared)

    def _check_bounds(self, parameter, kind, default, declared):
        bounds = []
        for key in ("min", "max"):
            bound = parameter.get(key)
            if bound is None:
                bounds.append(None)
            elif "=#" in bound:
                bounds.append(None)
                name = bound.split("=#", 1)[1].strip()
                if name not in declared:
                    self.problems.add(parameter.place_of(key), f"the bound names no parameter: '{name}'",
                                      "name a parameter of the same file")
            elif kind in NUMBER_TYPES:
                bounds.append(number(bound, NUMBER_TYPES[kind]))
                if bounds[-1] is None:
                    self.problems.add(parameter.place_of(key), f"the bound '{bound}' is no number", "write a number")
            else:
                bounds.append(None)
        if kind in NUMBER_TYPES:
            value = number(default, NUMBER_TYPES[kind])
            if value is None or (bounds[0] is not None and value < bounds[0]) or \
                    (bounds[1] is not None and value > bounds[1]):
                self.problems.add(parameter.place_of("default"), f"the default '{default}' of '{parameter['name']}' is "
                                  "no number within the bounds", "correct the default or the bounds")
        elif kind == "list" and ("min" in parameter or "max" in parameter):
            self.problems.add(parameter.place, f"the list '{parameter['name']}' has bounds", "remove them")

    def _check_comparisons(self, description, source, declared):
        place = source.place_of("condition")
        for term in terms_of(source["condition"]):
            if not term.operator or term.name == OWN_EVENT or term.name in self.channel_events:
                continue
            if term.name not in declared:
                self.problems.add(place, f"the condition names no parameter: '{term.name}'",
                                  "name a parameter of the same file; there is no >= and no <=")
                continue
            if term.operator in ("=", "!="):
                offered = {value["value"] for one in declared[term.name] for value in description.values_of(one)}
                if offered and term.value not in offered:
                    self.problems.add(place, f"'{term.name}' never has the value '{term.value}'",
                                      "compare with one of its values")
