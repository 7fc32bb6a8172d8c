#!/usr/bin/env python3
"""Compares the composed code templates with the generators that edit them, and with the drivers that they call.

    check_templates.py --source data --topics FILE [--firmware FOLDER]

FILE ("-" for the standard input) is what the generators ask for, as tests/GenerateCode/DumpTopics prints it. For every
instance of every family: what a generator asks for is there where the instance has the feature that it takes, and
missing where it has not; every section is asked for. FOLDER holds the composed firmware packages; with it, every call
in a template is declared by the drivers of the family with that number of arguments.
"""

import argparse
import pathlib
import re
import sys

import compose as composer
from source import Problems
from templates import MARKER, TemplateFamily, compose_templates

CALL = re.compile(r"(?<![\w.>])([a-z]\w*|NVIC_\w+|SysTick_\w+)\(")
# Declared by what a middleware brings along.
MIDDLEWARE = {"lm_freertos_init", "lm_rtthread_init", "rt_thread_mdelay"}
KEYWORDS = {"if", "while", "for", "switch", "return", "sizeof", "void", "defined"}
DECLARATION = re.compile(r"^(?:static |inline |__\w+ |const |unsigned |struct )*\w+[\s*]+(\w+)\(([^;{]*)\)\s*[;{]",
                         re.MULTILINE)


class Asked:
    """One line of the dump."""

    def __init__(self, line):
        self.kind, self.file, around, self.form, self.target, count, self.when = line.split("\t")
        self.around = around.split("/") if around else []
        self.count = int(count)

    def sections(self):
        """The section that it asks for, or none."""
        if self.form == "pin":
            return self.target + " pin"
        return self.target if self.form == "section" else None


class Section:
    """A part of a template with the sections in it, by name."""

    def __init__(self, lines):
        self.text = []
        self.inner = {}
        while lines:
            line = lines.pop(0)
            marker = MARKER.match(line)
            if not marker:
                self.text.append(line)
                continue
            if marker.group(1):
                return
            self.inner.setdefault(marker.group(2), []).append(Section(lines))

    def all_text(self):
        parts = ["\n".join(self.text)]
        for sections in self.inner.values():
            parts += [section.all_text() for section in sections]
        return "\n".join(parts)

    def find(self, name):
        """All sections of a name, however deep."""
        found = list(self.inner.get(name, []))
        for sections in self.inner.values():
            for section in sections:
                found += section.find(name)
        return found

    def names(self, path=()):
        for name, sections in self.inner.items():
            yield path, name
            for section in sections:
                yield from section.names((*path, name))


def holds(when, instance, family):
    """A condition of a topic: features and the style, joined by | and &, or "list:value" for an entry of a list."""
    known = instance.features | {family.style}
    for part in when.split("&") if when else []:
        for term in part.split("|"):
            name = term.strip().lstrip("!")
            key, colon, value = name.partition(":")
            there = value in [str(one) for one in instance.vars.get(key, [])] if colon else name in known
            if there != term.strip().startswith("!"):
                break
        else:
            return False
    return True


def arguments_of(text, start):
    """The number of arguments of a call whose bracket opens at `start`."""
    depth, commas, empty = 0, 0, True
    for character in text[start:]:
        if character in "([{":
            depth += 1
        elif character in ")]}":
            depth -= 1
            if depth == 0:
                return 0 if empty else commas + 1
        elif character == "," and depth == 1:
            commas += 1
        if depth and character not in "( \n":
            empty = False
    return None


def calls_in(text):
    code = re.sub(r"/\*.*?\*/|//[^\n]*|\"[^\"\n]*\"|^#.*?$", "", text, flags=re.DOTALL | re.MULTILINE)
    for match in CALL.finditer(code):
        # what begins a line is a declaration: calls are indented
        indented = code[code.rfind("\n", 0, match.start()) + 1:][:1] == " "
        if indented and match.group(1) not in KEYWORDS:
            yield match.group(1), arguments_of(code, match.end() - 1)


class FolderCheck:
    def __init__(self, family, files, asked, problems):
        self.family = family
        self.asked = asked
        self.problems = problems
        self.texts = {}
        for path, content in files.items():
            if path.startswith(f"srcode/{family.folder}/") and path.endswith((".c", ".h")):
                name = path.rsplit("/", 1)[1].replace(family.prefix + "_", "chip_")
                self.texts[name] = content.decode("latin-1").replace("\r\n", "\n")
        self.trees = {name: Section(text.split("\n")) for name, text in self.texts.items()}

    def complain(self, file, instance, cause, action):
        self.problems.add(f"{self.family.folder}/{file}:1", f"{instance.name}: {cause}", action)

    def run(self):
        for instance in self.family.instances:
            wanted = [one for one in self.asked if one.kind == instance.kind]
            if wanted:
                self._instance(instance, wanted)

    def _instance(self, instance, wanted):
        own = next(one for one in wanted if one.file == "own")
        name = f"{instance.key} function"
        for file in ("chip_lm_config.c", "chip_lm_config.h", "main.c"):
            there = self.trees[file].find(name)
            if bool(there) != holds(own.when, instance, self.family):
                self.complain(file, instance, f"the section '{name}' is {'there' if there else 'missing'}",
                              "let the fragment follow the feature that the generator asks for")
                continue
            part = "c" if file == "chip_lm_config.c" else "main" if file == "main.c" else "h"
            for section in there:
                self._section(instance, file, section, [one for one in wanted if one.file == part])
        self._handlers(instance, [one for one in wanted if one.file == "int"])

    def _section(self, instance, file, body, wanted):
        expected = set()
        for one in wanted:
            here = [body]
            for name in one.around:
                here = [section for outer in here for section in outer.inner.get(name, [])]
            present = holds(one.when, instance, self.family)
            if one.sections():
                there = any(one.sections() in section.inner for section in here)
                expected.add((tuple(one.around), one.sections()))
            elif one.form == "call":
                there = any((one.target, one.count) in set(calls_in(section.all_text())) for section in here)
            elif one.form == "assignment":
                there = any(re.search(rf"{re.escape(one.target)}\s*=\s*\w+;", section.all_text()) for section in here)
            else:
                continue
            if here and there != present:
                self.complain(file, instance, f"the {one.form} '{one.target}' is {'there' if there else 'missing'}",
                              "bring fragment and generator in step")
        for path, name in body.names():
            if (path, name) not in expected:
                self.complain(file, instance, f"no generator asks for the section '{name}'", "remove the section")

    def _handlers(self, instance, wanted):
        tree = self.trees["chip_int.c"]
        names = {instance.name + one.target for one in wanted}
        longer = [one.name for one in self.family.instances if one.name.startswith(instance.name + "_")]
        for one in wanted:
            there = bool(tree.find(instance.name + one.target))
            if there != holds(one.when, instance, self.family):
                self.complain("chip_int.c", instance,
                              f"the section '{instance.name + one.target}' is {'there' if there else 'missing'}",
                              "bring fragment and generator in step")
        for _, name in tree.names():
            if re.match(rf"{instance.name}_?\w*(_FLAG|_val_rx|_val_tx)$", name) and name not in names:
                mine = re.match(rf"{instance.name}(?![0-9])", name) or instance.kind == "EXINT"
                if mine and not name.startswith(tuple(longer)):
                    self.complain("chip_int.c", instance, f"no generator asks for the section '{name}'",
                                  "remove the section")

    def calls(self, package):
        declared = {}
        headers = [path.read_text(encoding="utf-8", errors="replace") for path in sorted(package.rglob("*.h"))]
        for text in headers + list(self.texts.values()):
            for name, arguments in DECLARATION.findall(re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL)):
                count = 0 if arguments.strip() in ("", "void") else arguments.count(",") + 1
                declared.setdefault(name, set()).add(count)
        for file, text in self.texts.items():
            for name, count in sorted(set(calls_in(text))):
                if name in MIDDLEWARE:
                    continue
                if name not in declared:
                    self.problems.add(f"{self.family.folder}/{file}:1", f"no driver declares {name}",
                                      "call what the drivers offer")
                elif count not in declared[name]:
                    wanted = " or ".join(str(one) for one in sorted(declared[name]))
                    self.problems.add(f"{self.family.folder}/{file}:1",
                                      f"{name} is called with {count} arguments and takes {wanted}", "correct the call")


def main():
    parser = argparse.ArgumentParser(description="Compares code templates with generators and drivers.")
    parser.add_argument("--source", required=True, help="folder of the sources")
    parser.add_argument("--topics", required=True, help="what the generators ask for")
    parser.add_argument("--firmware", help="folder of the composed firmware packages")
    arguments = parser.parse_args()
    sources, _, families, problems = composer.read(arguments.source)
    files = compose_templates(arguments.source, families, sources, problems)
    if problems:
        print("\n".join(problems.sorted()), file=sys.stderr)
        return 1
    text = sys.stdin.read() if arguments.topics == "-" else pathlib.Path(arguments.topics).read_text(encoding="utf-8")
    asked = [Asked(line) for line in text.splitlines()]
    problems = Problems()
    checked = 0
    for name, family in families.items():
        if not (pathlib.Path(arguments.source) / f"families/{name}/code.yaml").exists():
            continue
        code = sources.load(f"families/{name}/code.yaml")
        check = FolderCheck(TemplateFamily(family, code, None, problems), files, asked, problems)
        check.run()
        if arguments.firmware:
            packages = sorted(pathlib.Path(arguments.firmware).glob(f"{check.family.folder}_Firmware*"))
            for package in packages:
                check.calls(package)
                checked += 1
            if not packages:
                problems.add(f"{arguments.firmware}:1", f"holds no package of {check.family.folder}", "compose it")
    for line in problems.sorted():
        print(line, file=sys.stderr)
    print(f"{len(asked)} requests of generators, {checked} firmware packages compared, {len(problems.lines)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
