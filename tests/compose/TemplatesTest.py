"""The code templates of the sample families: markers nest, names are unique, and faults are told with their place."""

import collections
import os
import pathlib
import re
import shutil
import tempfile
import unittest

from compose import firmware_packages, read
from source import Problems
from templates import check_sections, compose_templates

DATA = pathlib.Path(os.environ["CHIPLOOM_DATA"])
# The folders of the templates, as the families name them.
FOLDERS = {re.search(r"^folder: (\S+)", path.read_text(encoding="utf-8"), re.MULTILINE).group(1)
           for path in DATA.glob("families/*/code.yaml")}
# Names with a comma are not retained, so they may be what they like.
BLOCK = re.compile(r"/\* *add user code begin ([\w ]*?) *\*/")


def composed(root):
    sources, _, families, problems = read(root)
    return compose_templates(root, families, sources, problems), problems


class TemplatesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.products, cls.problems = composed(DATA)

    def test_the_sample_families_have_sound_templates(self):
        self.assertEqual(self.problems.sorted(), [])
        self.assertEqual({name.split("/")[1] for name in self.products if name.endswith("main.c")}, FOLDERS)
        for name, content in self.products.items():
            with self.subTest(name):
                if not name.endswith(".qrc"):
                    self.assertEqual(content.count(b"\n"), content.count(b"\r\n"))
                self.assertNotIn(b"{{", content)
                self.assertNotIn(b"{%", content)

    def test_a_user_block_has_its_name_to_itself_and_an_end(self):
        for name, content in self.products.items():
            text = content.decode("latin-1")
            for block, count in collections.Counter(BLOCK.findall(text)).items():
                with self.subTest(f"{name}: {block}"):
                    self.assertEqual(count, 1)
                    self.assertEqual(text.count(f"add user code end {block} */"), 1)

    def test_each_ranked_call_of_the_frame_stands_in_main(self):
        for folder in FOLDERS:
            rank = self.products[f"srcode/{folder}/FunctionCallRank.xml"].decode()
            main = self.products[f"srcode/{folder}/main.c"].decode("latin-1")
            fixed = re.findall(r'FixPos="TRUE" FuncName="(\w+)" InstanceName="\w+" CodeSection="([^"]+)"', rank)
            self.assertGreater(len(fixed), 6)
            for function, section in fixed:
                with self.subTest(f"{folder}: {function}"):
                    body = main.split(f"[#{section}]")[1].split(f"[/#{section}]")[0]
                    self.assertIn(f"  {function}(", body)

    def test_markers_that_do_not_nest_are_told(self):
        for text, cause in (("[#a]\n[#b]\n[/#a]\n[/#b]\n", "line 3 closes 'a'"),
                            ("[#a]\nx\n", "'a' is never closed"),
                            ("[#a]\n[#a]\n[/#a]\n[/#a]\n", "opens 'a' within itself"),
                            ("x [#a]\n[/#a]\n", "line 1 holds a marker")):
            with self.subTest(cause):
                problems = Problems()
                check_sections("file:1", text, problems)
                self.assertIn(cause, "\n".join(problems.sorted()))

    def test_what_code_yaml_forgets_is_told(self):
        """Names that are left out of its lists, and names that stand for nothing."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder) / "data"
            shutil.copytree(DATA, root)
            code = root / "families/f403a/code.yaml"
            text = code.read_text(encoding="utf-8")
            for old, new in (("DMA, USART, SPI,", "SPI,"), (", usb_app", ""), ("gpio, uart_printf", "uart_printf"),
                             ("[IOMUX, DMA1,", "[DMA1, DMA9,"), ("spim, tmr", "tmr")):
                self.assertIn(old, text)
                text = text.replace(old, new)
            code.write_text(text, encoding="utf-8")
            sources, _, families, problems = read(root)
            compose_templates(root, families, sources, problems)
            firmware_packages(families, sources, problems)
            told = sorted(line.partition(": ")[2] for line in problems.lines)
            self.assertEqual(told, [
                "'DMA' has a function that nobody calls; list it under 'movable', or under 'fixed'",
                "'DMA9' is not a clock of the memory map; leave it out, or correct the name",
                "'IOMUX' is a clock of the memory map, but not listed; list it under 'clocks'",
                "'USART' has a function that nobody calls; list it under 'movable', or under 'fixed'",
                "'spim' is a driver of the family, but not listed; list it under 'modules'",
                "'usb_app' has a function that nobody calls; list it under 'movable', or under 'fixed'",
                "the call 'gpio' is missing; list it under 'fixed'"])

    def test_faults_of_a_template_are_told_with_their_place(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder) / "data"
            shutil.copytree(DATA, root, ignore=shutil.ignore_patterns("firmware"))
            gpio = root / "templates/kinds/GPIO.j2"
            gpio.write_text(gpio.read_text().replace("family.style", "family.stile", 1))
            main = root / "templates/main.c.j2"
            main.write_text(main.read_text() + "\u4e2d\n", encoding="utf-8")
            products, problems = composed(root)
            told = "\n".join(problems.sorted())
            self.assertRegex(told, r"templates/kinds/GPIO\.j2:\d+: cannot be composed for GPIO of ZV32F421 .*'stile'")
            self.assertIn("templates/main.c.j2:1: holds a character that is not Latin-1", told)


if __name__ == "__main__":
    unittest.main()
