#!/usr/bin/env python3
"""Composes the device database from the sources in data/.

    compose.py --source data --output build/bin/ZV32DB [--check]

Everything is read and checked first; if anything is wrong all problems are printed, each with file, line, cause and
what to do, and nothing is written. Only files whose content changed are written, and files of an earlier run that
have no source any more are removed.
"""

import argparse
import os
import pathlib
import sys
import tempfile

from catalogue import Catalogue
from check import SeriesCheck
from family import Family, Kinds
from source import Problems, Sources


def compose(source):
    """The products as relative path -> bytes, and the problems found."""
    problems = Problems()
    sources = Sources(source, problems)
    catalogue = Catalogue(sources, problems)
    kinds = Kinds(sources, problems)
    kinds.learn(catalogue.families)
    families = [Family(folder, sources, catalogue, kinds, problems) for folder in catalogue.families]
    catalogue.check_devices(families)
    for family in families:
        for series in family.series:
            SeriesCheck(series, problems).run()
    if problems:
        return {}, problems
    products = {}

    def put(path, text):
        products[path] = text.encode("utf-8")

    put("MCUList.xml", catalogue.element(families).document())
    for family in families:
        for series in family.series:
            folder = f"device/{series.name}"
            for device in series.devices:
                put(f"{folder}/{device['name']}.xml", series.device_element(device, catalogue).document())
            for instance in series.peripherals + series.middlewares:
                put(f"{folder}/Peripherals/{instance.file}", series.peripheral_element(instance).document())
            for language, text in catalogue.info_pages(series):
                put(f"{folder}/{series.name}_Info_{language}.htm", text)
    return products, problems


def write(products, output):
    """Brings the output folder to the products; returns the number of files written and removed."""
    output = pathlib.Path(output)
    written = removed = 0
    for name in sorted(products):
        path = output / name
        content = products[name]
        try:
            if path.read_bytes() == content:
                continue
        except OSError:
            pass
        path.parent.mkdir(parents=True, exist_ok=True)
        handle, temporary = tempfile.mkstemp(dir=path.parent, prefix=".compose-")
        with os.fdopen(handle, "wb") as stream:
            stream.write(content)
        os.chmod(temporary, 0o644)
        os.replace(temporary, path)
        written += 1
    for path in sorted((output / "device").rglob("*"), reverse=True):
        if path.is_dir():
            if not any(path.iterdir()):
                path.rmdir()
        elif path.relative_to(output).as_posix() not in products:
            path.unlink()
            removed += 1
    return written, removed


def main():
    parser = argparse.ArgumentParser(description="Composes the device database.")
    parser.add_argument("--source", required=True, help="folder of the sources")
    parser.add_argument("--output", help="folder of the database")
    parser.add_argument("--check", action="store_true", help="only check the sources")
    arguments = parser.parse_args()
    products, problems = compose(arguments.source)
    if problems:
        for line in problems.sorted():
            print(line, file=sys.stderr)
        print(f"{len(problems.lines)} problems; nothing was written", file=sys.stderr)
        return 1
    if arguments.check or not arguments.output:
        print(f"{len(products)} files can be composed")
        return 0
    written, removed = write(products, arguments.output)
    print(f"{len(products)} files composed: {written} written, {removed} removed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
