"""The catalogue: product lines, packages, the list of devices, and the information pages of the series."""

import jinja2

from source import Map, Shape
from xmlout import Element

CATALOGUE = Shape("the catalogue", {"families": "names", "lines": "list", "packages": "list", "groups": "map",
                                    "pin_letters": "map", "package_letters": "map"})
LINE = Shape("a product line", {"name": "text", "chinese": "text", "info": "pair"})
PACKAGE = Shape("a package", {"name": "text", "family": "text", "pins": "number", "x": "number", "y": "number"})


class Catalogue:
    def __init__(self, sources, problems):
        self.problems = problems
        self.sources = sources
        self.source = sources.load("catalogue.yaml")
        self.packages = {}
        self.lines = []
        self.groups = {}
        self.families = []
        if self.source is None or not CATALOGUE.check(self.source, problems):
            return
        self.families = list(self.source["families"])
        self.lines = [line for line in self.source["lines"] if LINE.check(line, problems)]
        self.groups = {str(name): str(title) for name, title in self.source["groups"].items()}
        for package in self.source["packages"]:
            if PACKAGE.check(package, problems):
                self.packages[str(package["name"])] = package
        self.pin_letters = self.source["pin_letters"]
        self.family_letters = self.source["package_letters"]

    def check_devices(self, families):
        """Names and codes are unique, and each series stands in a line of the catalogue."""
        seen = {}
        codes = {}
        for family in families:
            for series in family.series:
                if series.source["line"] not in [line["name"] for line in self.lines]:
                    self.problems.add(series.source.place_of("line"), f"'{series.source['line']}' is no product line",
                                      "declare it in catalogue.yaml")
                for device in series.devices:
                    if device["name"] in seen:
                        self.problems.add(device.place, f"the device '{device['name']}' is listed twice", "remove one")
                    seen[device["name"]] = device
                    code = series.device_code(device, self)
                    if code in codes:
                        self.problems.add(device.place, f"'{device['name']}' and '{codes[code]}' have the same code",
                                          "devices of a series must differ in package, flash or memory")
                    codes[code] = device["name"]

    def element(self, families):
        root = Element("Configuration")
        all_series = [series for family in families for series in family.series]
        lines = root.add("Entry", {"term": "ProductLinesList"})
        for line in self.lines:
            lines.add("ProductLine", {"Line": line["name"], "LineCH": line["chinese"], "InfoEN": line["info"][0],
                                      "InfoCH": line["info"][1]})
        for line in self.lines:
            entry = root.add("Entry", {"term": line["name"]})
            for series in all_series:
                if series.source["line"] == line["name"]:
                    info = series.source["info"]
                    entry.add("MCUSerial", {"Serial": series.name, "InfoEN": info[0], "InfoCH": info[1]})
        for series in all_series:
            entry = root.add("Entry", {"term": series.name})
            for device in series.devices:
                entry.add("Device", self._device(series, device))
        used = {device["package"] for series in all_series for device in series.devices}
        packages = root.add("Entry", {"term": "MCUPackageList"})
        for name in self.packages:
            if name in used:
                packages.add("Package", text=name)
        return root

    def _device(self, series, device):
        return {"Name": device["name"], "Package": device["package"], "Flash": device["flash"] + "KB",
                "SRAM": device["ram"] + "KB", "MaxSRAM": device["max_ram"] + "KB" if "max_ram" in device else "",
                "Core": series.source["core"], "Frequency": series.source["frequency"] + "MHz",
                "GPIO": str(series.family.packages[device["package"]].gpio_count())}

    def info_pages(self, series):
        """The information page of a series in both languages."""
        environment = jinja2.Environment(loader=jinja2.FileSystemLoader(str(self.sources.root / "info")),
                                         autoescape=True, trim_blocks=True, lstrip_blocks=True,
                                         keep_trailing_newline=True, undefined=jinja2.StrictUndefined)
        template = environment.get_template("series.htm.j2")
        groups = {}
        for instance in series.peripherals + series.middlewares:
            groups.setdefault(instance.group, []).append(instance.name)
        devices = [self._device(series, device) for device in series.devices]
        for index, language in enumerate(("EN", "CH")):
            yield language, template.render(series=series.source, language=language, index=index, groups=groups,
                                            devices=devices)
