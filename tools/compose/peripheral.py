"""A kind of peripheral or middleware, written once, and its file for one family: modes, parameters, signals."""

from expand import Context, expand
from source import List, Map, Shape, Text, fits
from xmlout import Element

PARAMETER_TYPES = ("integer", "signedinteger", "hexadecimal", "double", "string", "string edit", "string text",
                   "mac address", "ip address", "integer text", "list")

KIND = Shape("a kind", {"kind": "text", "about": "pair"},
             {"features": "map", "vars": "map", "signals": "list", "modes": "list", "abstract": "map", "sets": "map",
              "groups": "map", "tabs": "map", "parameters": "list", "refmodes": "list",
              "settings": "flag", "content": "text", "vectors": "list", "request": "list", "generator": "names",
              "memory": "names", "pin_define": "list", "mux_define": "text"})
MODE = Shape("a mode", {"name": "text"},
             {"user": "pair", "remove": "names", "condition": "text", "and": "flag", "diagnostic": "pair",
              "note": "pair", "semaphores": "names", "choices": "list", "check": "map", "logic": "text"})
CHOICE = Shape("a choice", {},
               {"name": "text", "user": "pair", "remove": "names", "condition": "text", "and": "flag",
                "diagnostic": "pair", "semaphores": "names", "signals": "list", "params": "list", "config_for": "names",
                "hal": "text", "group": "text", "logic": "text", "comment": "text"})
PARAMETER = Shape("a parameter", {"name": "text", "text": "pair"},
                  {"group": "text", "tab": "text", "type": "text", "default": "text", "unit": "text", "min": "text",
                   "max": "text", "visible": "flag", "enable": "flag", "reload": "flag", "relevant": "flag",
                   "condition": "text", "and": "flag", "diagnostic": "pair", "note": "pair", "help": "text",
                   "values": "list", "switch": "text", "mode": "text"})
VALUE = Shape("a value", {"value": "text"},
              {"text": "pair", "semaphore": "text", "action": "text", "condition": "text", "and": "flag",
               "diagnostic": "pair", "error": "flag"})


class Kind:
    """The description as it stands in the source file, before any family."""

    def __init__(self, source, problems):
        self.source = source
        self.problems = problems
        self.valid = KIND.check(source, problems)
        self.name = str(source.get("kind", ""))

    def instantiate(self, features, known, variables, series):
        """The description for a set of features; `known` are the features that exist beside the kind's own."""
        known = set(known) | set(self.source.get("features", {})) | set(features)
        context = Context(features, known, self._variables(variables), self.problems, f" in {series}")
        return Description(self, context)

    def _variables(self, given):
        result = {name: (list(value) if isinstance(value, List) else str(value))
                  for name, value in self.source.get("vars", {}).items()}
        result.update(given)
        return result


class Description:
    """A kind instantiated for one family: plain maps and lists without conditions and repetitions."""

    def __init__(self, kind, context):
        self.kind = kind
        self.problems = kind.problems
        self.variables = context.variables
        self.features = context.features
        source = Map({key: value for key, value in kind.source.items() if key not in ("features", "vars")})
        source.place = kind.source.place
        source.key_places = kind.source.key_places
        self.content = expand(source, context)
        for key in ("groups", "tabs"):
            for name, texts in self.content.get(key, {}).items():
                if not fits(texts, "pair"):
                    self.problems.add(self.content[key].place_of(name), f"'{name}' of '{key}' must be a pair of texts",
                                      "write [English, Chinese]")
        if not fits(self.content.get("request", List()), "names"):
            self.problems.add(self.content.place_of("request"), "'request' must be a list of names", "write it so")
            del self.content["request"]
        self.signals = self._signals()
        self.modes = [mode for mode in self.content.get("modes", []) if self._check_mode(mode)]
        self.parameters = [one for one in self.content.get("parameters", []) if self._check_parameter(one)]

    def _signals(self):
        result = {}
        for item in self.content.get("signals", []):
            if not isinstance(item, Map):
                self.problems.add(item.place, "a signal must be written as name: IO mode", "write it so")
                continue
            for name, mode in item.items():
                if name in result:
                    self.problems.add(item.place, f"the signal '{name}' is declared twice", "remove one of them")
                result[name] = mode
        return result

    def _check_mode(self, mode):
        if not MODE.check(mode, self.problems):
            return False
        if ("choices" in mode) == ("check" in mode):
            self.problems.add(mode.place, f"the mode '{mode['name']}' must have either 'choices' or 'check'",
                              "give choices for a combo box, check for a check box")
            return False
        good = True
        for choice in self.choices(mode):
            good = CHOICE.check(choice, self.problems) and good
            if "choices" in mode and "name" not in choice:
                self.problems.add(choice.place, "a choice lacks 'name'", "add it")
                good = False
        return good

    def _check_parameter(self, parameter):
        if not PARAMETER.check(parameter, self.problems):
            return False
        for value in parameter.get("values", []):
            if not VALUE.check(value, self.problems):
                return False
        kind = self.type_of(parameter)
        if kind not in PARAMETER_TYPES:
            self.problems.add(parameter.place_of("type"), f"'{kind}' is no type of parameter",
                              "use one of " + ", ".join(PARAMETER_TYPES))
        if kind == "list" and not parameter.get("values") and "switch" not in parameter:
            self.problems.add(parameter.place, f"the list parameter '{parameter['name']}' has no values",
                              "add 'values' or 'switch'")
        for key, known in (("group", "groups"), ("tab", "tabs")):
            if key in parameter and parameter[key] not in self.content.get(known, {}):
                self.problems.add(parameter.place_of(key), f"'{parameter[key]}' is not declared under '{known}'",
                                  f"declare its two texts under '{known}' of the kind")
        return True

    def choices(self, mode):
        return mode["choices"] if "choices" in mode else [mode["check"]]

    def choice_name(self, mode, choice):
        return mode["name"] if "check" in mode else choice["name"]

    @staticmethod
    def type_of(parameter):
        return parameter.get("type", "list" if "values" in parameter or "switch" in parameter else "integer")

    @staticmethod
    def default_of(parameter):
        return parameter.get("default", "FALSE" if "switch" in parameter else "")

    # ---- the file ----

    def element(self, extra=()):
        root = Element("IP", {"Name": self.kind.name})
        for name, mode in self.signals.items():
            virtual = mode == "virtual"
            root.add("RefSignal", {"Name": name, "IOMode": None if virtual else mode.split()[0],
                                   "Virtual": "true" if virtual else None})
        if self.modes:
            operator = root.add("ModeLogicOperator", {"Name": "OR"})
            for mode in self.modes:
                self._mode_element(operator, mode)
        for made in self.ref_modes():
            root.children.append(made)
        for parameter in self.parameters:
            root.children.append(self._parameter_element(parameter))
        root.children.extend(extra)
        return root

    def _mode_element(self, parent, mode):
        user = mode.get("user", ("", ""))
        element = parent.add("Mode", {"Name": mode["name"], "UserName": user[0], "UserNameCH": user[1],
                                      "RemoveCondition": ",".join(mode.get("remove", [])) or None})
        _condition(element, mode)
        _annotation(element, mode)
        for semaphore in mode.get("semaphores", []):
            element.add("Semaphore", text=semaphore)
        inner = element.add("ModeLogicOperator", {"Name": mode.get("logic", "XOR")})
        for choice in self.choices(mode):
            user = choice.get("user", mode.get("user", ("", "")) if "check" in mode else ("", ""))
            made = inner.add("ModeParam", {
                "Name": self.choice_name(mode, choice), "UserName": user[0], "UserNameCH": user[1],
                "RemoveCondition": ",".join(choice.get("remove", [])) or None})
            _condition(made, choice)
            if choice.get("signals"):
                operator = made.add("SignalLogicalOp", {"Name": choice.get("logic", "AND")})
                for signal in choice["signals"]:
                    if isinstance(signal, Map):
                        for name, io_mode in signal.items():
                            operator.add("Signal", {"Name": name, "IOMode": io_mode})
                    else:
                        operator.add("Signal", {"Name": signal})
            for semaphore in choice.get("semaphores", []):
                made.add("Semaphore", text=semaphore)

    def ref_modes(self):
        result = []
        if "abstract" in self.content:
            abstract = self.content["abstract"]
            result.append(self._ref_mode(abstract, {"Name": abstract.get("name", "Abstract"), "Abstract": "true"}))
        for mode in self.modes:
            for choice in self.choices(mode):
                if "params" in choice:
                    result.append(self._ref_mode(choice, {"Name": self.choice_name(mode, choice),
                                                          "BaseMode": mode["name"]}))
        for one in self.content.get("refmodes", []):
            result.append(self._ref_mode(one, {"Name": one.get("name"), "BaseMode": one.get("base")}))
        return result

    def _ref_mode(self, source, attributes):
        group = self.content.get("groups", {}).get(source.get("group"), (None, None))
        element = Element("RefMode", {**attributes, "Comment": source.get("comment"), "Group": group[0],
                                      "GroupCH": group[1], "HalMode": source.get("hal")})
        for name in source.get("config_for", []):
            element.add("ConfigForMode", text=name)
        for name, values in self.params_of(source.get("params", [])):
            parameter = element.add("Parameter", {"Name": name})
            for value in values:
                parameter.add("PossibleValue", text=value)
        return element

    def params_of(self, items, seen=()):
        """The (name, values) pairs of a list of parameters, `@set` entries resolved."""
        result = []
        for item in items:
            if isinstance(item, Text) and item.startswith("@"):
                name = item[1:]
                found = self.content.get("sets", {}).get(name)
                if found is None or name in seen:
                    self.problems.add(item.place, f"'{item}' names no set of parameters",
                                      "declare it under 'sets', without a circle")
                    continue
                result.extend(self.params_of(found, (*seen, name)))
            elif isinstance(item, Map):
                for name, values in item.items():
                    result.append((name, values if isinstance(values, List) else [values]))
            else:
                result.append((item, []))
        return result

    def _parameter_element(self, parameter):
        group = self.content.get("groups", {}).get(parameter.get("group"), (None, None))
        tab = self.content.get("tabs", {}).get(parameter.get("tab"), (None, None))
        element = Element("RefParameter", {
            "Name": parameter["name"], "Comment": parameter["text"][0], "CommentCH": parameter["text"][1],
            "Group": group[0], "GroupCH": group[1], "TabName": tab[0], "TabNameCH": tab[1],
            "Type": self.type_of(parameter), "DefaultValue": self.default_of(parameter), "Unit": parameter.get("unit"),
            "Min": parameter.get("min"), "Max": parameter.get("max"), "Mode": parameter.get("mode"),
            "Visible": parameter.get("visible"), "Enable": parameter.get("enable"),
            "Reload": parameter.get("reload"), "Relevant": parameter.get("relevant")})
        _condition(element, parameter)
        _annotation(element, parameter)
        text = self._help_of(parameter)
        if text:
            element.add("Description", text=text.strip())
        for value in self.values_of(parameter):
            diagnostic = value.get("diagnostic", (None, None))
            element.add("PossibleValue", {
                "Comment": value.get("text", (value["value"],) * 2)[0],
                "CommentCH": value.get("text", (value["value"],) * 2)[1], "Value": value["value"],
                "Semaphore": value.get("semaphore"), "Action": value.get("action"),
                "Condition": value.get("condition"), "AndFlag": value.get("and"), "Diagnostic": diagnostic[0],
                "DiagnosticCH": diagnostic[1], "ErrorFlag": value.get("error")})
        return element

    def _help_of(self, parameter):
        """Its own description, else that of another declaration of the same name."""
        return parameter.get("help") or next((one["help"] for one in self.parameters
                                              if one["name"] == parameter["name"] and "help" in one), None)

    @staticmethod
    def values_of(parameter):
        """The declared values; `switch` stands for FALSE and TRUE, its text being the semaphore of TRUE."""
        if "switch" not in parameter:
            return parameter.get("values", [])
        semaphore = parameter["switch"]
        on = {"value": "TRUE", "text": ("Enable", "使能")}
        if semaphore:
            on["semaphore"] = semaphore
        return [{"value": "FALSE", "text": ("Disable", "禁用")}, on]


def _condition(element, source):
    if "condition" in source:
        diagnostic = source.get("diagnostic", (None, None))
        element.add("Condition", {"Diagnostic": diagnostic[0], "DiagnosticCH": diagnostic[1],
                                  "Expression": source["condition"], "AndFlag": source.get("and")})


def _annotation(element, source):
    if "note" in source:
        element.add("Annotation", {"Note": source["note"][0], "NoteCH": source["note"][1]})
