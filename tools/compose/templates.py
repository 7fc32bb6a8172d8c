"""Composes the code templates: one folder per group of series, one text per generated file, written once for all."""

import pathlib
import re

import jinja2

from source import Map, Shape, failing_line, fits, traits

CODE = Shape("the code of a family",
             {"folder": "text", "order": "names", "clocks": "names", "modules": "names",
              "fixed": "names", "movable": "names", "clock": "map"})
CLOCK = Shape("the clock of a family",
              {"wait_states": "flag", "voltage": ("fixed", "kept", "follows"), "pll": ("feedback", "table", "flexible"),
               "pll_hick": "number", "hext_divider": "flag", "rtc_divider": "flag", "outputs": ("1", "2")},
              {"pll_vco": "number"})
MACROS = ("function", "prototype", "main_call", "interrupt", "defines")

# File of the folder <- its source; the prefix of the family takes the place of "chip".
FILES = {
    "chip_lm_config.c": "lm_config.c.j2",
    "chip_lm_config.h": "lm_config.h.j2",
    "main.c": "main.c.j2",
    "chip_conf.h": "conf.h.j2",
    "chip_int.c": "int.c.j2",
    "chip_int.h": "int.h.j2",
    "lm_system.c": "lm_system.c.j2",
    "lm_system.h": "lm_system.h.j2",
    "lm_instance.c": "lm_instance.c.j2",
    "lm_instance.h": "lm_instance.h.j2",
    "syscalls.c": "syscalls.c",
    "sysmem.c": "sysmem.c",
    "FunctionCallRank.xml": "FunctionCallRank.xml.j2",
}
# A marker line of a template: a section opens or closes.
MARKER = re.compile(r"^\[(/?)#([A-Za-z0-9_ <>=-]+)\] *$")


ALWAYS_MODULES = ("crm", "pwc", "flash", "misc")

# Calls of main that belong to no single peripheral: function, instance, section of main.c.
FIXED_CALLS = {
    "clock": ("lm_system_clock_config", "CRM", "clock_config"),
    "periph_clock": ("lm_periph_clock_config", "CRM", "config periph clock"),
    "systick": ("systick_interrupt_config", "SYSTEM", "systick_interrupt"),
    "nvic": ("lm_nvic_config", "NVIC", "config nvic"),
    "timebase": ("lm_timebase_init", "SYSTEM", "timebase_init"),
    "gpio": ("lm_gpio_config", "GPIO", "gpio function"),
    "uart_printf": ("lm_uart_printf_init", "SYSTEM", "uart_printf_init"),
}
MIDDLEWARE_CALLS = {
    "fatfs": ("fatfs_disk_init", "FATFS", "fatfs function"),
    "i2c_app": ("lm_i2c_app_init", "I2C_Application", "i2c_application function"),
    "lwip": ("lm_lwip_init", "LWIP", "lwip function"),
    "usb_app": ("lm_usb_app_init", "USB", "usb_app function"),
}
# Whose calls they are.
MIDDLEWARES = {"fatfs": {"FATFS"}, "i2c_app": {"I2C_Application"}, "lwip": {"LWIP"},
               "usb_app": {"USB_DEVICE", "USB_HOST"}}


def _instance_call(name):
    return f"lm_{c_name(name)}_init", name, f"{name.lower()} function"


def c_name(name):
    """An instance name as part of a C name: "xmc_nandflash"."""
    return re.sub(r"[^a-z0-9_]", "_", name.lower())


class Call:
    """One call of main that can be ranked."""

    def __init__(self, fixed, function, instance, section):
        self.fixed = fixed
        self.function = function
        self.instance = instance
        self.section = section


class Vector:
    """One interrupt vector: `handler` is the C function, `name` the vector as "USART1_IRQ"."""

    def __init__(self, source):
        self.value = str(source["value"])
        self.name = self.value[:-1]
        self.handler = str(source.get("handler", self.value[:-1] + "Handler"))
        self.owners = [str(one) for one in source.get("owners", [])]
        self.channels = [str(one) for one in source.get("channels", [])]
        self.lines = [int(one) for one in source.get("lines", [])]
        self.core = source.get("core") == "true"


class TemplateDma:
    """DMA or EDMA: `key` names its functions and types, `unit` is what it calls a channel ("channel", "stream")."""

    def __init__(self, table):
        self.name = table.name
        self.key = table.name.lower()
        self.unit = table.unit.lower()
        self.channels = list(table.channels)
        self.flexible = table.flexible
        self.requests = list(table.requests)
        self.generated = any(request.generated for request in table.requests)
        self.streams = table.name == "EDMA"

    def number(self, channel):
        return re.search(r"\d+$", channel).group()

    def moved_requests(self, channel):
        """What SCFG moves to the channel: "USART1_TX", or "TMR16" for all requests of a timer."""
        conditions = {one.channels.get(channel, "") for one in self.requests}
        return sorted(one[len("Semaphore_SCFG_"):-len("_Remap")] for one in conditions
                      if one.startswith("Semaphore_SCFG_"))


class TemplateInstance:
    """One peripheral as the fragments see it. A family's templates hold the instances of all its series."""

    def __init__(self, instance, family):
        self.name = instance.name
        self.key = instance.name.lower()
        self.c_name = c_name(self.name)
        self.kind = str(instance.entry["kind"])
        digits = re.search(r"(\d+)$", self.name)
        self.number = int(digits.group(1)) if digits else None
        self.features = instance.description.features
        self.vars = instance.description.variables
        self.signals = set(instance.description.signals)
        self.remaps = [mux for owner, _, mux, _ in family.groups if owner == self.name and mux]
        self.parameters = {str(one["name"]) for one in instance.description.parameters}
        self.family = family

    def _text(self, macro, *arguments):
        try:
            return self.family.fragment(self.kind, macro, self, *arguments)
        except jinja2.TemplateError as error:
            error.instance = self.name
            raise

    def function(self):
        return self._text("function")

    def prototype(self):
        return self._text("prototype")

    def main_call(self):
        return self._text("main_call")

    def interrupt(self, vector):
        return self._text("interrupt", vector)

    def defines(self):
        return self._text("defines")


class SharedInstance:
    """What several kinds have in common: "XMC" for the kinds XMC_..., whose banks share pins."""

    def __init__(self, kind, members, family):
        self.name = self.kind = kind
        self.key = self.c_name = c_name(kind)
        self.number = None
        self.features = set()
        self.signals = set().union(*(member.signals for member in members))
        self.vars = {"signals": sorted(self.signals)}
        self.remaps = []
        self.parameters = set()
        self.family = family

    _text = TemplateInstance._text
    function = TemplateInstance.function
    prototype = TemplateInstance.prototype
    main_call = TemplateInstance.main_call
    interrupt = TemplateInstance.interrupt
    defines = TemplateInstance.defines


class TemplateFamily:
    """What the templates may ask of a family; `instances` stand in the order of their functions."""

    def __init__(self, family, code, environment, problems):
        self.name = family.name
        self.style = family.style
        self.folder = str(code["folder"])
        self.prefix = self.folder.lower()
        self.code = code
        self.vars = {name: value for series in family.series for name, value in series.variables.items()}
        self.groups = family.table.groups
        self.ports = sorted({pin[1] for pin in family.table.functions if re.fullmatch(r"P[A-Z][0-9]+", pin)})
        self.series = [series.name for series in family.series]
        self.environment = environment
        self.problems = problems
        self.modules = {}
        self.place = code.place
        found = {}
        vectors = {}
        for series in family.series:
            for instance in series.peripherals:
                found.setdefault(instance.name, TemplateInstance(instance, self))
            for one in series.vectors.vectors:
                vectors.setdefault(int(one["number"]), Vector(one))
        nvic = next((instance for instance in family.series[0].peripherals if instance.name == "NVIC"), None)
        core = nvic.description.content.get("vectors", []) if nvic else []
        self.core_vectors = [Vector(one) for one in core]
        self.vectors = [vectors[number] for number in sorted(vectors)]
        self.dma_tables = [TemplateDma(table) for table in family.series[0].dma_tables]
        self.middlewares = {one.name for series in family.series for one in series.middlewares}
        order = [str(kind) for kind in code["order"]]
        kinds = [str(instance.kind) for instance in found.values()]
        for kind in order:
            members = [instance for instance in found.values() if instance.kind.startswith(f"{kind}_")]
            if kind not in kinds and members:
                found[kind] = SharedInstance(kind, members, self)
            elif kind not in kinds:
                problems.add(code.place_of("order"), f"the family has no peripheral of the kind '{kind}'", "remove it")

        def rank(instance):
            return order.index(instance.kind) if instance.kind in order else len(order)

        self.instances = sorted(found.values(), key=rank)
        self.clocks = [f"GPIO{port}" for port in self.ports] + [str(name) for name in code["clocks"]]
        self.all_modules = self._modules(code)
        self.clock = traits(code["clock"])
        # What stands behind the name of each clock output.
        self.clock_outputs = ["1", "2"] if self.clock.get("outputs") == "2" else [""]
        self.calls = [Call(True, *call) for one in code["fixed"] for call in self._fixed_calls(str(one))]
        for one in code["movable"]:
            self.calls += [Call(False, *call) for call in self._movable_calls(one)]

    def _modules(self, code):
        names = [str(name) for name in code["modules"]]
        for name in ALWAYS_MODULES:
            if name not in names:
                self.problems.add(code.place_of("modules"), f"every project needs the driver module '{name}'",
                                  f"add {name}")
        return names

    def check_calls(self):
        """What has a function is called: forgotten in the lists of code.yaml, it would never run."""
        fixed, movable = ({str(name) for name in self.code[key]} for key in ("fixed", "movable"))
        wanted = [name for name, owners in MIDDLEWARES.items() if owners & self.middlewares]
        wanted += [table.name for table in self.dma_tables]
        called = {call.instance for call in self.calls} | {instance for _, instance, _ in FIXED_CALLS.values()}
        wanted += [one.kind for one in self.instances if one.name not in called and one.main_call()]
        for name in sorted({*FIXED_CALLS, "clkout"} - fixed):
            self.problems.add(self.code.place_of("fixed"), f"the call '{name}' is missing", "list it under 'fixed'")
        for name in sorted(set(wanted) - movable):
            self.problems.add(self.code.place_of("movable"), f"'{name}' has a function that nobody calls",
                              "list it under 'movable', or under 'fixed'")

    def _fixed_calls(self, name):
        if name == "clkout":
            return [(f"lm_clkout{n}_init", "CRM", f"clkout{n} function") for n in self.clock_outputs]
        return [FIXED_CALLS.get(name) or _instance_call(name)]

    def _movable_calls(self, name):
        if name in MIDDLEWARE_CALLS:
            return [MIDDLEWARE_CALLS[name]]
        for table in self.dma_tables:
            if name == table.name:
                return [(f"lm_{one.lower()}_init", one, f"{one.lower()}_init") for one in table.channels]
        found = self.of_kind(str(name)) + [one for one in self.instances if one.kind.startswith(f"{name}_")]
        if not found:
            self.problems.add(self.code.place_of("movable"), f"the family has no peripheral of the kind '{name}'",
                              "remove it")
        return [_instance_call(instance.name) for instance in found]

    def has(self, name):
        """Whether the family has an instance, or a peripheral of a kind, of that name."""
        return any(name in (instance.name, instance.kind) for instance in self.instances)

    def of_kind(self, kind):
        return [instance for instance in self.instances if instance.kind == kind]

    def owners(self, vector):
        """The instances that raise a vector, in the order of the vector's own list."""
        known = {instance.name: instance for instance in self.instances}
        return [known[name] for name in vector.owners if name in known]

    def fragment(self, kind, macro, *arguments):
        """A macro of the kind's fragment as text that ends in one blank line; empty where there is none."""
        if kind not in self.modules:
            name = f"kinds/{kind}.j2"
            try:
                self.modules[kind] = self.environment.get_template(name).make_module({"family": self})
            except jinja2.TemplateNotFound as error:
                if error.name != name:
                    raise
                self.modules[kind] = None
        written = getattr(self.modules[kind], macro, None)
        text = str(written(*arguments, self)).strip("\n") if written is not None else ""
        return text + "\n\n" if text else ""


def check_sections(place, text, problems):
    """Each marker stands alone on its line, and sections nest."""
    open_sections = []
    for number, line in enumerate(text.split("\n"), 1):
        match = MARKER.match(line)
        if not match:
            if "[#" in line or "[/#" in line:
                problems.add(place, f"line {number} holds a marker that is no marker line: {line.strip()}",
                             "give the marker a line of its own")
            continue
        name = match.group(2)
        if not match.group(1):
            if name in open_sections:
                problems.add(place, f"line {number} opens '{name}' within itself", "close it first")
            open_sections.append(name)
        elif not open_sections or open_sections.pop() != name:
            problems.add(place, f"line {number} closes '{name}', which is not the innermost open section",
                         "let the sections nest")
            return
    for name in open_sections:
        problems.add(place, f"the section '{name}' is never closed", f"add [/#{name}]")


def compose_templates(root, families, sources, problems):
    """Relative path -> bytes of all templates; line ends are CR LF."""
    folder = pathlib.Path(root) / "templates"
    environment = jinja2.Environment(loader=jinja2.FileSystemLoader(folder), undefined=jinja2.StrictUndefined,
                                     trim_blocks=True, lstrip_blocks=True, keep_trailing_newline=True,
                                     autoescape=False, extensions=["jinja2.ext.do"])
    products = {}
    for name, family in families.items():
        if not (pathlib.Path(root) / f"families/{name}/code.yaml").exists():
            continue
        code = sources.load(f"families/{name}/code.yaml")
        if not isinstance(code, Map) or not CODE.check(code, problems) or not CLOCK.check(code["clock"], problems) \
                or not family.series:
            continue
        one = TemplateFamily(family, code, environment, problems)
        for target, source in FILES.items():
            try:
                text = environment.get_template(source).render(family=one)
            except jinja2.TemplateError as error:
                whose = f"{error.instance} of {one.folder}" if hasattr(error, "instance") else one.folder
                problems.add(failing_line(error, root, f"templates/{source}"),
                             f"cannot be composed for {whose} ({error})",
                             "correct the template, or the data that it asks for")
                continue
            check_sections(f"templates/{source}:1", text, problems)
            try:
                content = text.replace("\n", "\r\n").encode("latin-1")
            except UnicodeEncodeError:
                problems.add(f"templates/{source}:1", "holds a character that is not Latin-1", "write plain text")
                continue
            products[f"srcode/{one.folder}/{target.replace('chip_', one.prefix + '_')}"] = content
        if not problems:
            one.check_calls()
    products["srcode/templates.qrc"] = _collection(products)
    return products


def _collection(names):
    """The list from which the build makes a resource."""
    files = "".join(f'    <file>{name[len("srcode/"):]}</file>\n' for name in sorted(names))
    return f'<RCC>\n<qresource prefix="/srcode">\n{files}</qresource>\n</RCC>\n'.encode()
