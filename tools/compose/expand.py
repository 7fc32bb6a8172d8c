"""Instantiation of a description: `when` drops what a family lacks, `repeat` copies, `<name>` is filled in.

A key can depend on a feature too: `condition: {when: feature, is: text}`.
"""

import re

from source import List, Map, Text

_FILL = re.compile(r"<(\w+)([+-]\d+)?>")


class Context:
    """The features (names that `when` may ask) and variables (figures and lists) of one instantiation."""

    def __init__(self, features, known_features, variables, problems, whose=""):
        self.features = set(features)
        self.known = set(known_features)
        self.variables = dict(variables)
        self.problems = problems
        self.whose = whose  # " in ZV32F421"

    def meets(self, condition):
        """A conjunction of disjunctions of feature names, as `a|b & !c`."""
        if not isinstance(condition, Text):
            self.problems.add(condition.place, "'when' must be a text", "name features, as a|b & !c")
            return False
        condition = self.fill(condition)
        result = True
        for part in condition.split("&"):
            any_true = False
            for term in part.split("|"):
                name = term.strip().lstrip("!").strip()
                if name not in self.known:
                    self.problems.add(condition.place, f"'{name}' is no feature that 'when' can ask",
                                      "declare it under 'features' of the kind, or correct the name")
                any_true = any_true or ((name in self.features) != term.strip().startswith("!"))
            result = result and any_true
        return result

    def with_variables(self, extra):
        return Context(self.features, self.known, {**self.variables, **extra}, self.problems, self.whose)

    def fill(self, text):
        def value(match):
            name, shift = match.group(1), match.group(2)
            if name not in self.variables or isinstance(self.variables[name], (list, dict)):
                self.problems.add(text.place, f"'<{name}>' stands for nothing{self.whose}",
                                  "declare it under 'vars' of the family, of its entry or of the kind, or repeat "
                                  "over it")
                return match.group(0)
            found = str(self.variables[name])
            if shift:
                if not found.isdigit():
                    self.problems.add(text.place, f"'<{name}>' is no number", "leave the arithmetic out")
                    return found
                return str(int(found) + int(shift))
            return found

        filled = Text(_FILL.sub(value, text))
        filled.place = text.place
        return filled


def values_of(context, wanted):
    """The values of a `repeat` variable: a list, `$name`, or `1..4` with `$name` for either end."""
    if isinstance(wanted, List):
        return [value for value in (context.fill(item) for item in wanted)]
    text = str(context.fill(wanted))

    def end(part):
        if part.startswith("$"):
            return str(context.variables.get(part[1:], part))
        return part

    if ".." in text:
        first, last = (end(part.strip()) for part in text.split("..", 1))
        if first.isdigit() and last.isdigit():
            return [str(number) for number in range(int(first), int(last) + 1)]
    elif text.startswith("$") and isinstance(context.variables.get(text[1:]), list):
        return list(context.variables[text[1:]])
    context.problems.add(wanted.place, f"'{text}' is no range and no list to repeat over",
                         "write 1..4, 1..$variable, $variable or a list")
    return []


def expand(value, context):
    """A copy of the value with conditions, repetitions and variables resolved."""
    if isinstance(value, Text):
        return context.fill(value)
    if isinstance(value, List):
        result = List()
        result.place = value.place
        for item in value:
            result.extend(_expand_item(item, context))
        return result
    if isinstance(value, Map):
        result = Map()
        result.place = value.place
        result.key_places = {}
        for key, child in value.items():
            if isinstance(child, Map) and "when" in child and not context.meets(child["when"]):
                continue
            new_key = str(context.fill(_text(key, value.place_of(key))))
            new_child = expand(child, context)
            if isinstance(new_child, Map):
                new_child.pop("when", None)
                if list(new_child) == ["is"]:
                    new_child = new_child["is"]
            result[new_key] = new_child
            result.key_places[new_key] = value.place_of(key)
        return result
    return value


def _text(text, place):
    result = Text(text)
    result.place = place
    return result


def _expand_item(item, context):
    if not isinstance(item, Map):
        return [expand(item, context)]
    if "repeat" in item:
        contexts = [context]
        for name, wanted in item["repeat"].items():
            contexts = [one.with_variables({name: found, f"{name}_at": str(at)})
                        for one in contexts for at, found in enumerate(values_of(one, wanted))]
        body = Map({key: child for key, child in item.items() if key != "repeat"})
        body.place = item.place
        body.key_places = item.key_places
        return [done for one in contexts for done in _expand_item(body, one)]
    if "when" in item and not context.meets(item["when"]):
        return []
    if "each" in item:
        return [done for child in item["each"] for done in _expand_item(child, context)]
    done = expand(item, context)
    done.pop("when", None)
    return [done]
