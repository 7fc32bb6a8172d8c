"""One chip family: its series, their peripherals and middlewares, and the files that follow from them."""

from device import FLASH_INDEX, FLASH_LETTER, RAM_INDEX, DeviceFile, Package, PinTable, full_signal_name, pid
from expand import Context, expand
from source import List, Map, Shape, fits
from peripheral import Kind
from settings import DmaTable, VectorTable, pin_defines

FAMILY = Shape("a family", {"family": "text", "style": "text", "series": "list", "peripherals": "list",
                            "middlewares": "list"},
               {"features": "names", "vars": "map", "program_tokens": "names"})
SERIES = Shape("a series", {"name": "text", "code": "number", "line": "text", "info": "pair", "core": "text",
                            "frequency": "number", "devices": "list", "about": "list", "highlights": "list"},
               {"features": "names", "vars": "map"})
DEVICE = Shape("a device", {"name": "text", "package": "text", "flash": "number", "ram": "number"},
               {"max_ram": "number", "sector": "number"})
ENTRY = Shape("a peripheral", {"kind": "text", "group": "text", "instances": "names"},
              {"name": "text", "variant": "text", "features": "names", "vars": "map", "when": "text",
               "packages": "names"})


class Instance:
    """One peripheral or middleware of a series."""

    def __init__(self, name, entry, group, description, version, place):
        self.name = name
        self.entry = entry
        self.group = group  # English and Chinese
        self.description = description
        self.version = version
        self.place = place
        self.kind_name = str(entry.get("name", entry["kind"]))

    @property
    def file(self):
        return f"{self.kind_name}-{self.version}.xml"

    def fits(self, package):
        return "packages" not in self.entry or package in self.entry["packages"]

    def list_entry(self):
        about = self.description.content["about"]
        return {"InstanceName": self.name, "Name": self.kind_name, "GroupName": self.group[0],
                "GroupNameCH": self.group[1], "Version": self.version, "Config": self.file, "About": about[0],
                "AboutCH": about[1]}


class Series:
    """One series with everything instantiated."""

    def __init__(self, source, family, catalogue, kinds, problems):
        self.source = source
        self.family = family
        self.name = str(source["name"])
        self.problems = problems
        self.features = {self.name, family.name, family.style, *family.source.get("features", []),
                         *source.get("features", [])}
        self.variables = {**_plain(family.source.get("vars", {})), **_plain(source.get("vars", {}))}
        entries = []
        for term in ("peripherals", "middlewares"):
            for entry in family.source[term]:
                if ENTRY.check(entry, problems) and self._wanted(entry):
                    entries.append((term, entry))
        self.features |= {"has_" + name for _, entry in entries for name in entry["instances"]}
        self.peripherals = []
        self.middlewares = []
        for term, entry in entries:
            self._add(getattr(self, term), entry, kinds, catalogue)
        self._check_unique()
        self.signals = self._signals(self.peripherals)
        context = Context(self.features, family.known | self.features, self.variables, problems,
                          f" in {self.name}")
        self.dma_tables = []
        for name, table in family.dma.items():
            if isinstance(table, Map):
                self.dma_tables.append(DmaTable(name, expand(table, context), self, problems, self.dma_tables))
        self.vectors = VectorTable(expand(family.vectors, context), self, problems)
        self.devices = [device for device in source["devices"] if self._check_device(device, catalogue)]

    def _wanted(self, entry):
        if "when" not in entry:
            return True
        names = entry["when"].split("|")
        for name in names:
            if name.strip() not in self.family.known:
                self.problems.add(entry.place_of("when"), f"'{name.strip()}' is neither series nor feature here",
                                  "name a series or a feature of the family")
        return any(name.strip() in self.features for name in names)

    def _add(self, instances, entry, kinds, catalogue):
        kind = kinds.find(entry)
        if kind is None or not kind.valid:
            return
        own = kind.source.get("features", {})
        for feature in entry.get("features", []):
            if feature not in own:
                self.problems.add(feature.place, f"the kind {kind.name} has no feature '{feature}'",
                                  "declare it under 'features' of the kind, or correct it")
        group = str(entry["group"])
        if group not in catalogue.groups:
            self.problems.add(entry.place_of("group"), f"'{group}' is no group", "declare it in catalogue.yaml")
        variables = {**self.variables, **_plain(entry.get("vars", {}))}
        description = kind.instantiate(self.features | set(entry.get("features", [])), self.family.known, variables,
                                       self.name)
        version = "V1.0" if "variant" not in entry else f"{entry['variant']}_V1.0"
        for name in entry["instances"]:
            instances.append(Instance(str(name), entry, (group, catalogue.groups.get(group, "")), description, version,
                                      name.place))

    def _check_unique(self):
        seen = {}
        files = {}
        for instance in self.peripherals + self.middlewares:
            if instance.name in seen:
                self.problems.add(instance.place, f"the instance '{instance.name}' is listed twice", "remove one")
            seen[instance.name] = instance
            other = files.setdefault(instance.file, instance)
            if other.description.content != instance.description.content:
                self.problems.add(instance.place, f"'{instance.name}' and '{other.name}' share the file "
                                  f"{instance.file} with different content", "give one of them a 'variant'")

    @staticmethod
    def _signals(instances):
        """Full name -> (IO mode, several pins), virtual ones left out."""
        result = {}
        for instance in instances:
            for name, mode in instance.description.signals.items():
                if mode == "virtual":
                    continue
                words = mode.split()
                result[full_signal_name(instance.name, name)] = (words[0], "multi" in words[1:])
        return result

    def _check_device(self, device, catalogue):
        if not DEVICE.check(device, self.problems):
            return False
        good = True
        if device["package"] not in self.family.packages:
            self.problems.add(device.place_of("package"), f"the family has no package '{device['package']}'",
                              "add it to the pin table or choose another")
            good = False
        flash, ram = int(device["flash"]), int(device["ram"])
        if flash not in FLASH_INDEX:
            self.problems.add(device.place_of("flash"), f"{flash} KB is no flash size of the device code",
                              "use a size of the table in device.py")
            good = False
        if ram not in RAM_INDEX:
            self.problems.add(device.place_of("ram"), f"{ram} KB is no memory size of the device code",
                              "use a size of the table in device.py")
            good = False
        if not good:
            return False
        geometry = catalogue.packages[device["package"]]
        expected = (f"{self.name}{catalogue.pin_letters.get(geometry['pins'], '?')}{FLASH_LETTER[flash]}"
                    f"{catalogue.family_letters.get(geometry['family'], '?')}")
        if device["name"][:-1] != expected or not device["name"][-1].isdigit():
            self.problems.add(device.place, f"the name '{device['name']}' does not tell {device['package']} and "
                              f"{flash} KB", f"call it {expected} and a digit for the temperature grade")
        return True

    def peripheral_element(self, instance):
        """The peripheral's file; some kinds ask by `content` for what the family's other tables give."""
        content = instance.description.content.get("content")
        tables = {table.name: table.elements for table in self.dma_tables}
        extra = {"vectors": self.vectors.elements, "dma": tables.get(instance.name, lambda own: []),
                 "pins": lambda own: pin_defines(self, own), None: lambda own: []}.get(content)
        if extra is None:
            self.problems.add(instance.description.content.place_of("content"), f"'{content}' is no content to add",
                              "use vectors, dma or pins")
            return instance.description.element()
        return instance.description.element(extra(instance.description.content))

    def device_code(self, device, catalogue):
        flash = int(device["flash"])
        sector = int(device.get("sector", 1024 if flash <= 255 else 2048))
        index = list(catalogue.packages).index(device["package"])
        return pid(int(self.source["code"]), index, flash, int(device["ram"]), sector)

    def device_element(self, device, catalogue):
        present = [instance for instance in self.peripherals if instance.fits(device["package"])]
        file = DeviceFile(self.family.table, self.family.packages[device["package"]], self._signals(present))
        return file.element(device["name"], self.device_code(device, catalogue),
                            [instance.list_entry() for instance in present],
                            [instance.list_entry() for instance in self.middlewares])


class Family:
    def __init__(self, folder, sources, catalogue, kinds, problems):
        self.problems = problems
        self.series = []
        self.packages = {}
        self.source = kinds.family_source(folder)
        pins = sources.load(f"families/{folder}/pins.yaml")
        if not isinstance(self.source, Map) or not isinstance(pins, Map) or not FAMILY.check(self.source, problems):
            return
        self.name = str(self.source["family"])
        self.style = str(self.source["style"])
        if self.style not in ("mux", "remap"):
            problems.add(self.source.place_of("style"), f"'{self.style}' is no way to route pins", "use mux or remap")
        groups = sources.load(f"families/{folder}/groups.yaml") if self.style == "remap" else None
        self.vectors = sources.load(f"families/{folder}/vectors.yaml") or List()
        kinds_here = {str(entry.get("kind")) for entry in self.source["peripherals"]}
        self.dma = {name: sources.load(f"families/{folder}/{name.lower()}.yaml") for name in ("DMA", "EDMA")
                    if name in kinds_here}
        self.table = PinTable(pins, groups, self.style, problems)
        if not self.table.valid:
            return
        for name, pads in pins["packages"].items():
            if name not in catalogue.packages:
                problems.add(pins["packages"].place_of(name), f"'{name}' is no package of the catalogue",
                             "declare its geometry in catalogue.yaml")
                continue
            if not fits(pads, "names"):
                problems.add(pins["packages"].place_of(name), f"{name} is no list of pads",
                             "write the pads in the order of their numbers")
                continue
            self.packages[name] = Package(name, pads, catalogue.packages[name], self.table, problems)
        wanted = [one for one in self.source["series"] if SERIES.check(one, problems)]
        self.known = {self.name, "mux", "remap", *self.source.get("features", []), *kinds.instance_features}
        for one in wanted:
            self.known |= {str(one["name"]), *one.get("features", [])}
        self.series = [Series(one, self, catalogue, kinds, problems) for one in wanted]
        self._check_functions()

    def _check_functions(self):
        """Each function of a pin is a signal of some series, and each signal stands on some pin."""
        declared = {}
        for series in self.series:
            declared.update(series.signals)
        placed = {one.signal for _, one in self.table.all_functions()}
        for pin, one in self.table.all_functions():
            if one.signal not in declared:
                self.problems.add(one.place, f"{pin} offers '{one.signal}', which no peripheral declares",
                                  "declare it under 'signals' of its kind, or correct the name")
        for series in self.series:
            for instance in series.peripherals:
                for name, mode in instance.description.signals.items():
                    full = full_signal_name(instance.name, name)
                    automatic = full.startswith("EXINT") or full.startswith("GPIO_")
                    if mode != "virtual" and full not in placed and not automatic:
                        self.problems.add(instance.place, f"the signal '{full}' stands on no pin",
                                          "place it in pins.yaml or groups.yaml, or leave it out by 'when'")


class Kinds:
    """The descriptions of kinds, read when first asked for."""

    def __init__(self, sources, problems):
        self.sources = sources
        self.problems = problems
        self.found = {}
        self.families = {}
        self.instance_features = set()

    def learn(self, folders):
        """Reads the families beforehand, so that `has_X` may name whatever peripheral some family has."""
        for folder in folders:
            source = self.sources.load(f"families/{folder}/family.yaml")
            self.families[folder] = source
            for term in ("peripherals", "middlewares"):
                for entry in source.get(term, []) if isinstance(source, Map) else []:
                    if isinstance(entry, Map) and fits(entry.get("instances"), "names"):
                        self.instance_features |= {f"has_{name}" for name in entry["instances"]}

    def family_source(self, folder):
        return self.families[folder]

    def find(self, entry):
        name = str(entry["kind"])
        if name not in self.found:
            source = self.sources.load(f"kinds/{name}.yaml")
            if isinstance(source, Map):
                self._include(source)
            self.found[name] = Kind(source, self.problems) if isinstance(source, Map) else None
        return self.found[name]

    def _include(self, kind):
        """An item `include: x` of a list of the kind becomes `each` of the rows in kinds/shared/x.yaml."""
        items = [item for rows in kind.values() if isinstance(rows, List) for item in rows if isinstance(item, Map)]
        for item in items:
            if "include" in item:
                name = f"kinds/shared/{item.pop('include')}.yaml"
                rows = self.sources.load(name)
                if not isinstance(rows, List):
                    self.problems.add(item.place, f"{name} holds no rows to include", "write it as a list")
                    rows = List()
                item["each"] = rows


def _plain(variables):
    return {name: (list(value) if isinstance(value, List) else str(value)) for name, value in variables.items()}
