#!/usr/bin/env python3
"""Composes the device database, the code templates and the sample firmware packages from the sources in data/.

    compose.py --source data [--output build/bin/ZV32DB] [--templates build/data]
        [--firmware build/bin/firmware] [--check]

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
from firmware import Firmware
from source import Problems, Sources
from templates import compose_templates

# The folders of either output that hold nothing but what is composed.
DATABASE = "device"
PACKAGES = "*_Firmware_Library_V*"


def read(source):
    """The sources as sources, catalogue, folder -> family, and the problems found."""
    problems = Problems()
    sources = Sources(source, problems)
    catalogue = Catalogue(sources, problems)
    kinds = Kinds(sources, problems)
    kinds.learn(catalogue.families)
    families = {folder: Family(folder, sources, catalogue, kinds, problems) for folder in catalogue.families}
    catalogue.check_devices(list(families.values()))
    for family in families.values():
        for series in family.series:
            SeriesCheck(series, problems).run()
    return sources, catalogue, families, problems


def compose(source):
    """The files of the database as relative path -> bytes, and the problems found."""
    _, catalogue, families, problems = read(source)
    return ({} if problems else database(catalogue, list(families.values()))), problems


def compose_all(source):
    """The files of the database and of the firmware packages, and the problems found."""
    sources, catalogue, families, problems = read(source)
    packages = firmware_packages(families, sources, problems)
    return ({}, {}, problems) if problems else (database(catalogue, list(families.values())), packages, problems)


def firmware_packages(families, sources, problems):
    """The files of the firmware packages as relative path -> bytes."""
    packages = [Firmware(folder, family, sources, problems) for folder, family in families.items()]
    products = {}
    if not problems:
        for package in packages:
            products.update((path, text.encode("utf-8")) for path, text in package.products().items())
    return products


def database(catalogue, families):
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
    return products


def write(products, output, owned=DATABASE):
    """Brings the output folder to the products; returns the number of files written and removed.

    In the folders that the pattern `owned` names, files without a source are removed.
    """
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
    left = [path for folder in output.glob(owned) for path in [folder, *folder.rglob("*")]]
    for path in sorted(left, reverse=True):
        if path.is_dir():
            if not any(path.iterdir()):
                path.rmdir()
        elif path.relative_to(output).as_posix() not in products:
            path.unlink()
            removed += 1
    return written, removed


def main():
    parser = argparse.ArgumentParser(description="Composes database, templates and firmware packages.")
    parser.add_argument("--source", required=True, help="folder of the sources")
    parser.add_argument("--output", help="folder of the database")
    parser.add_argument("--templates", help="folder in which srcode/ is written")
    parser.add_argument("--firmware", help="folder of the firmware packages")
    parser.add_argument("--check", action="store_true", help="only check the sources")
    arguments = parser.parse_args()
    sources, catalogue, families, problems = read(arguments.source)
    # Templates are made of sound families only: what is wrong with a family would be told twice.
    templates = {} if problems else compose_templates(arguments.source, families, sources, problems)
    firmware = {} if problems else firmware_packages(families, sources, problems)
    if problems:
        for line in problems.sorted():
            print(line, file=sys.stderr)
        print(f"{len(problems.lines)} problems; nothing was written", file=sys.stderr)
        return 1
    products = database(catalogue, list(families.values()))
    if arguments.check:
        print(f"{len(products) + len(templates) + len(firmware)} files can be composed")
        return 0
    for wanted, folder, owned in ((products, arguments.output, DATABASE), (templates, arguments.templates, "srcode"),
                                  (firmware, arguments.firmware, PACKAGES)):
        if folder:
            written, removed = write(wanted, folder, owned)
            print(f"{len(wanted)} files composed in {folder}: {written} written, {removed} removed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
