"""What the files GPIO, NVIC and DMA hold beside modes and parameters: pin defines, vectors, channels and requests."""

from device import GPIO_PIN
from source import Map, Shape, Text
from xmlout import Element

VECTOR = Shape("a vector", {"value": "text", "text": "pair"},
               {"number": "number", "handler": "text", "owners": "names", "lines": "names", "channels": "names",
                "core": "flag", "enabled": "flag", "generate": "flag", "free": "flag", "fixed": "names",
                "diagnostic": "pair"})
FIXED = ("enable", "preemption", "sub", "handler")
DMA = Shape("the DMA table", {"mapping": "text", "controllers": "list", "requests": "list"},
            {"also": "text", "without": "names"})
CONTROLLER = Shape("a DMA controller", {"name": "text", "channels": "number"}, {"handles": "map", "unit": "text"})
REQUEST = Shape("a DMA request", {"name": "text"},
                {"owner": "text", "to": "text", "turns": "flag", "width": "text", "on": "map", "condition": "text"})
WIDTHS = {"8": "BYTE", "16": "HALFWORD", "32": "WORD"}


class VectorTable:
    """The vectors of a series: those of the core stand in the kind NVIC, the others in the family."""

    def __init__(self, vectors, series, problems):
        self.series = series
        self.problems = problems
        self.vectors = [one for one in vectors if VECTOR.check(one, problems)]
        instances = {instance.name for instance in series.peripherals}
        channels = {name: table for table in series.dma_tables for name in table.channels}
        handles = {}
        seen = {}
        for one in self.vectors:
            for key in ("value", "number"):
                if key in one and seen.setdefault((key, one[key]), one) is not one:
                    problems.add(one.place, f"the vector {key} '{one[key]}' stands twice", "remove one of them")
            if not one["value"].endswith("_IRQn"):
                problems.add(one.place_of("value"), f"'{one['value']}' is no enumerator of a vector",
                             "end it with _IRQn")
            for owner in one.get("owners", []):
                if owner not in instances:
                    problems.add(one.place, f"the vector's owner '{owner}' is no peripheral of {series.name}",
                                 "correct it, or leave the vector out by 'when'")
            for channel in one.get("channels", []):
                if channel not in channels:
                    problems.add(one.place, f"'{channel}' is no DMA channel of {series.name}", "correct it")
                handles[channel] = one["value"]
            if not (one.get("owners") or one.get("channels") or one.get("free")):
                problems.add(one.place, f"nothing raises the vector '{one['value']}'",
                             "give it owners or channels, or mark it free")
        for channel in sorted(channels):
            expected = f"{channels[channel].channels[channel]}_IRQn"
            if handles.get(channel) != expected:
                problems.add(channels[channel].place, f"the vector of {channel} is not {expected}",
                             "correct the handle of the channel or the channels of the vector")

    def elements(self, content):
        core = [one for one in content.get("vectors", []) if VECTOR.check(one, self.problems)]
        return [self._element(one) for one in core + self.vectors]

    def _element(self, one):
        fixed = one.get("fixed", [])
        for name in fixed:
            if name not in FIXED:
                self.problems.add(one.place_of("fixed"), f"'{name}' is nothing that can be fixed",
                                  "use " + ", ".join(FIXED))
        handler = one.get("handler", one["value"][:-1] + "Handler")
        diagnostic = one.get("diagnostic", (None, None))

        def open_for(what):
            return "false" if what in fixed else "true"

        owners = list(one.get("owners", [])) + list(one.get("channels", []))
        return Element("NVICVector", {
            "Name": one["value"][:-1], "ValueName": one["value"], "HandlerName": handler,
            "Comment": one["text"][0], "CommentCH": one["text"][1], "Diagnostic": diagnostic[0],
            "DiagnosticCH": diagnostic[1], "Number": one.get("number"), "IpInstance": ",".join(owners) or None,
            "Lines": ",".join(one["lines"]) if "lines" in one else None, "CoreIRQ": one.get("core", "false"),
            "Free": one.get("free"), "EnabledCanBeSet": open_for("enable"), "Enabled": one.get("enabled", "false"),
            "PreemptionPriorityCanBeSet": open_for("preemption"), "SubPriorityCanBeSet": open_for("sub"),
            "HandlerCanBeSet": open_for("handler"),
            "Handler": one.get("generate", "false" if one.get("core") == "true" else "true")})


class Request:
    """One DMA request: its owner, direction and width, and the channels that serve it (all of them if empty). One
    without a direction belongs to no peripheral: a generator makes it, and its data go wherever the user says."""

    def __init__(self, source):
        self.place = source.place
        self.name = str(source["name"])
        self.generated = "to" not in source
        self.owner = "" if self.generated else str(source.get("owner", self.name.split("_")[0]))
        self.to_memory = source.get("to") == "memory"
        self.turns = source.get("turns") == "true"
        self.condition = str(source.get("condition", f"Request_{self.name}"))
        self.width = source.get("width", "8")
        self.channels = {}  # channel -> condition, empty for always


class DmaTable:
    """Controllers, channels and requests of a series: those of the kind `name`, DMA or EDMA."""

    def __init__(self, name, source, series, problems, others=()):
        self.name = name
        self.series = series
        self.problems = problems
        self.place = source.place
        self.channels = {}  # name -> handle
        self.requests = []
        self.flexible = False
        self.unit = "Channel"
        self.controllers = []
        self.without = []  # requests, or peripherals with theirs, that the chips do not have
        if not DMA.check(source, problems):
            return
        self.flexible = source["mapping"] == "flexible"
        self.without = source.get("without", [])
        if source["mapping"] not in ("fixed", "flexible"):
            problems.add(source.place_of("mapping"), f"'{source['mapping']}' is no mapping", "use fixed or flexible")
        self.controllers = [one for one in source["controllers"] if CONTROLLER.check(one, problems)]
        for controller in self.controllers:
            self.unit = str(controller.get("unit", self.unit))
            for number in range(1, int(controller["channels"]) + 1):
                channel = f"{controller['name']}_{self.unit}{number}"
                self.channels[channel] = str(controller.get("handles", {}).get(str(number), channel))
        self._read_requests(source, others)

    def _read_requests(self, source, others):
        """`also` names the table whose requests come here too, but those of its own generators."""
        if "also" in source:
            other = next((table for table in others if table.name == source["also"]), None)
            if other is None or not (other.flexible and self.flexible):
                self.problems.add(source.place_of("also"), f"'{source['also']}' has no requests that could come here",
                                  "name a table before this one; both must be flexible")
            else:
                self.requests += [one for one in other.requests if not one.generated]
        instances = {instance.name for instance in self.series.peripherals}
        seen = {request.name for request in self.requests}
        for one in source["requests"]:
            if not REQUEST.check(one, self.problems):
                continue
            request = Request(one)
            if request.name in seen:
                self.problems.add(one.place, f"the request '{request.name}' is listed twice", "remove one of them")
            seen.add(request.name)
            if not request.generated and request.owner not in instances:
                self.problems.add(one.place, f"the owner '{request.owner}' of {request.name} is no peripheral of "
                                  f"{self.series.name}", "name the peripheral under 'owner'")
            if one.get("to", "memory") not in ("memory", "periph") or request.width not in WIDTHS:
                self.problems.add(one.place, f"{request.name} goes nowhere",
                                  "use to: memory or periph, width: 8, 16 or 32")
            self._read_channels(one, request)
            self.requests.append(request)

    def _read_channels(self, source, request):
        if self.flexible:
            return
        for where, condition in source.get("on", {}).items():
            name = f"{self.controllers[0]['name']}_{self.unit}{where}" if where.isdigit() else where
            if name not in self.channels:
                self.problems.add(source.place, f"{request.name} stands on {name}, which does not exist", "correct it")
            request.channels[name] = "" if condition == "always" else str(condition)
        if not request.channels:
            self.problems.add(source.place, f"{request.name} has no channel", "list its channels under 'on'")

    def elements(self, content):
        result = [Element("DMAMapping", {"Name": "flexible" if self.flexible else "fixed"})]
        for name, handle in self.channels.items():
            channel = Element("DMAChannel", {"Name": name, "Value": name.upper(), "Handle": handle,
                                             "Controller": name.split("_")[0]})
            for request in self.requests:
                if name in request.channels:
                    channel.add("Request", {"Name": request.name, "Condition": request.channels[name] or None})
            result.append(channel)
        for request in self.requests:
            result.append(self._request_element(request, content))
        result.append(self._memory_element(content))
        return result

    def _flexible_name(self, request):
        return f"{self.name}_FLEXIBLE_{request.name}" if self.flexible else None

    def _request_element(self, request, content):
        """What a generator makes has the parameters of the generator first, and any direction."""
        parameters = list(content.get("request", []))
        if request.generated:
            element = Element("RefMode", {"Name": request.name, "BaseMode": "DMA_Request",
                                          "Flexible": self._flexible_name(request)})
            _add_parameters(element, list(content.get("generator", [])) + parameters, {}, {})
            return element
        element = Element("RefMode", {
            "Name": request.name, "BaseMode": "DMA_Request", "IpInstance": request.owner,
            "Condition": request.condition, "Semaphore": f"{self.name}Request_{request.name}",
            "Flexible": self._flexible_name(request)})
        for channel, condition in request.channels.items():
            element.add("InstanceCondition", {"ChannelName": channel, "Condition": condition or None})
        width = WIDTHS[request.width]
        ways = [f"{self.name}_DIR_PERIPHERAL_TO_MEMORY", f"{self.name}_DIR_MEMORY_TO_PERIPHERAL"]
        usual = ways[0 if request.to_memory else 1]
        defaults = {"PeriphDataAlignment": f"{self.name}_PERIPHERAL_DATA_WIDTH_{width}",
                    "MemDataAlignment": f"{self.name}_MEMORY_DATA_WIDTH_{width}", "Direction": usual}
        _add_parameters(element, parameters, {"Direction": ways if request.turns else [usual]}, defaults)
        return element

    def _memory_element(self, content):
        element = Element("RefMode", {"Name": "MEMTOMEM", "BaseMode": "DMA_Request"})
        parameters = content.get("memory", content.get("request", []))
        _add_parameters(element, parameters, {"Direction": [f"{self.name}_DIR_MEMORY_TO_MEMORY"], "Mode": ["NORMAL"]},
                        {"PeriphInc": "TRUE"})
        return element


def _add_parameters(element, names, forced, defaults):
    for name in names:
        parameter = element.add("Parameter", {"Name": name, "DefaultValue": defaults.get(name)})
        for value in forced.get(name, []):
            parameter.add("PossibleValue", text=value)


def pin_defines(series, content):
    """One element for each port pin of the family, with the driver's names and the numbers of its signals."""
    attributes = Map()
    for one in content.get("pin_define", []):
        attributes.update(one)
    mux_define = content.get("mux_define", Text(""))
    family = series.family
    result = []
    for name, functions in family.table.functions.items():
        match = GPIO_PIN.match(name)
        if not match:
            continue

        def filled(text):
            return text.replace("$Port", match.group(1)).replace("$Number", match.group(2))

        element = Element("GPIOPinDefine", {"Name": name, **{key: filled(text) for key, text in attributes.items()}})
        for one in functions:
            if one.mux is not None and one.signal in series.signals:
                element.add("PinSignalMux",
                            {"SignalName": one.signal, "GPIO_Mux_x": mux_define.replace("$Mux", one.mux)})
        event_mux = family.table.source.get("eventout_mux")
        if event_mux is not None:
            element.add("PinSignalMux", {"SignalName": "EVENTOUT", "GPIO_Mux_x": mux_define.replace("$Mux", event_mux)})
        result.append(element)
    return result
