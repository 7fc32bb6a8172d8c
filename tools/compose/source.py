"""Reading of the YAML sources: every value knows its file and line, and problems are gathered, not raised."""

import pathlib
import traceback

import yaml


class Place:
    """A file and a line of the sources."""

    def __init__(self, file, line):
        self.file = file
        self.line = line

    def __str__(self):
        return f"{self.file}:{self.line}"


class Text(str):
    """A scalar. All scalars are texts: YAML's guesses (NO, 012, 1e3) would spoil names and figures."""

    place = None


class Map(dict):
    place = None

    def place_of(self, key):
        return self.key_places.get(key, self.place)


class List(list):
    place = None


class Problems:
    """All complaints of a run, each with place, cause and what to do."""

    def __init__(self):
        self.lines = []

    def add(self, place, cause, advice):
        line = f"{place}: {cause}; {advice}"
        if line not in self.lines:
            self.lines.append(line)

    def __bool__(self):
        return bool(self.lines)

    def sorted(self):
        def key(line):
            file, number, _ = line.split(":", 2)
            return file, int(number), line

        return sorted(self.lines, key=key)


class Sources:
    """The files below the data folder. Remembers what was read, so that leftovers can be reported."""

    def __init__(self, root, problems):
        self.root = pathlib.Path(root)
        self.problems = problems
        self.read = set()

    def load(self, name):
        """The content of one file as Map, List and Text; None (and a problem) if it cannot be read."""
        self.read.add(name)
        try:
            text = (self.root / name).read_text(encoding="utf-8")
        except (OSError, UnicodeDecodeError) as error:
            self.problems.add(Place(name, 1), f"cannot be read ({type(error).__name__})", "add the file as UTF-8 text")
            return None
        try:
            node = yaml.compose(text, Loader=getattr(yaml, "CBaseLoader", yaml.BaseLoader))
        except yaml.MarkedYAMLError as error:
            line = (error.problem_mark or error.context_mark).line + 1
            self.problems.add(Place(name, line), f"is no valid YAML ({error.problem})", "correct the syntax")
            return None
        return self._value(name, node) if node is not None else None

    def _value(self, name, node):
        place = Place(name, node.start_mark.line + 1)
        if isinstance(node, yaml.MappingNode):
            result = Map()
            result.key_places = {}
            for key_node, value_node in node.value:
                key = str(key_node.value)
                key_place = Place(name, key_node.start_mark.line + 1)
                if key in result:
                    self.problems.add(key_place, f"the key '{key}' stands twice", "remove one of them")
                result[key] = self._value(name, value_node)
                result.key_places[key] = key_place
        elif isinstance(node, yaml.SequenceNode):
            result = List(self._value(name, child) for child in node.value)
        else:
            result = Text(node.value)
        result.place = place
        return result


def failing_line(error, data, name):
    """Where an error of Jinja2 arose: the innermost line of a template below the data folder that it went through."""
    if getattr(error, "lineno", None):  # of the syntax
        return Place((pathlib.Path(name).parent / (error.name or name)).as_posix(), error.lineno)
    for frame in reversed(traceback.extract_tb(error.__traceback__)):
        if pathlib.Path(data) in pathlib.Path(frame.filename).parents:
            return Place(pathlib.Path(frame.filename).relative_to(data).as_posix(), frame.lineno)
    return Place(name, 1)


class Shape:
    """What a map may hold: key -> kind. Kinds: text, number, pair, list, map, names (a list of texts), flag, any, or a
    tuple of the words of which it is one."""

    def __init__(self, what, required, optional=None):
        self.what = what
        self.required = required
        self.kinds = dict(required)
        self.kinds.update(optional or {})

    def check(self, value, problems):
        """True if the value is a map of this shape; every departure is a problem."""
        if not isinstance(value, Map):
            problems.add(value.place, f"{self.what} must be a map", "write it as key: value lines")
            return False
        good = True
        for key in value:
            if key not in self.kinds:
                problems.add(value.place_of(key), f"{self.what} has no key '{key}'",
                             "use one of " + ", ".join(sorted(self.kinds)))
                good = False
        for key in self.required:
            if key not in value:
                problems.add(value.place, f"{self.what} lacks '{key}'", "add it")
                good = False
        for key, kind in self.kinds.items():
            if key in value and not fits(value[key], kind):
                problems.add(value.place_of(key), f"'{key}' of {self.what} must be "
                             + (" or ".join(kind) if isinstance(kind, tuple) else KIND_TEXTS[kind]), "rewrite it so")
                good = False
        return good


KIND_TEXTS = {
    "text": "a text",
    "number": "a whole number",
    "pair": "a pair [English, Chinese]",
    "list": "a list",
    "map": "a map",
    "names": "a list of names",
    "flag": "true or false",
    "any": "a value",
}


def traits(source):
    """A map of plain values as templates ask for it: true and false as such, all else as text."""
    return {key: (value == "true" if value in ("true", "false") else str(value)) for key, value in source.items()}


def fits(value, kind):
    if isinstance(kind, tuple):
        return value in kind
    if kind == "text":
        return isinstance(value, Text)
    if kind == "number":
        return isinstance(value, Text) and value.lstrip("-").isdigit()
    if kind == "flag":
        return isinstance(value, Text) and value in ("true", "false")
    if kind == "pair":
        return isinstance(value, List) and len(value) == 2 and all(isinstance(text, Text) for text in value)
    if kind == "list":
        return isinstance(value, List)
    if kind == "map":
        return isinstance(value, Map)
    if kind == "names":
        return isinstance(value, List) and all(isinstance(text, Text) for text in value)
    return True
