"""tools/translations over a source tree of its own: each kind of fault is named, and an update loses no translation."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOL = sys.argv.pop()


class Translations(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.addCleanup(self.scratch.cleanup)
        self.root = Path(self.scratch.name)
        (self.root / "tr").mkdir()
        self.source("Base", 'auto a = QT_TRANSLATE_NOOP("Prompt", "Ok"); '
                            'auto b = QT_TRANSLATE_NOOP("Prompt", "%1 of %2");')
        self.source("Gui/Home", 'auto c = QT_TRANSLATE_NOOP("Prompt", "Ok"); '
                                'auto d = QT_TRANSLATE_NOOP("Home", "Save & <b>");')

    def source(self, folder, text):
        (self.root / "src" / folder).mkdir(parents=True, exist_ok=True)
        (self.root / "src" / folder / "a.cpp").write_text(f"#include <QObject>\n{text}\n")

    def run_tool(self, action):
        return subprocess.run([sys.executable, TOOL, action, "--source", self.root / "src", "--translations",
                               self.root / "tr"], capture_output=True, text=True)

    def fill(self, name, source, chinese):
        path = self.root / "tr" / name
        before = path.read_text()
        head, tail = before.split(f"<source>{source}</source>")
        tail = tail.replace('<translation type="unfinished"></translation>', f"<translation>{chinese}</translation>", 1)
        path.write_text(f"{head}<source>{source}</source>{tail}")
        self.assertNotEqual(before, path.read_text())

    def fill_all(self):
        self.run_tool("update")
        self.fill("Base_zh.ts", "Ok", "好")
        self.fill("Base_zh.ts", "%1 of %2", "%2 之 %1")
        self.fill("Gui_Home_zh.ts", "Save &amp; &lt;b&gt;", "存 &amp; &lt;b&gt;")

    def test_a_text_once_translated_is_taken_over_and_kept(self):
        self.assertIn('Base_zh.ts: Prompt: "Ok" has no Chinese translation', self.run_tool("check").stderr)
        self.fill_all()
        self.assertIn('Gui_Home_zh.ts: Prompt: "Ok" has no Chinese translation', self.run_tool("check").stderr)
        self.run_tool("update")
        self.assertEqual(self.run_tool("check").returncode, 0)
        before = (self.root / "tr" / "Gui_Home_zh.ts").read_text()
        self.run_tool("update")
        self.assertEqual(before, (self.root / "tr" / "Gui_Home_zh.ts").read_text())

    def test_each_fault_is_named(self):
        self.fill_all()
        self.run_tool("update")
        path = self.root / "tr" / "Base_zh.ts"
        path.write_text(path.read_text().replace("%2 之 %1", "%2 之").replace("好", "行"))
        self.source("Gui/Home", 'auto c = QT_TRANSLATE_NOOP("Prompt", "Ok");')
        self.source("Design", 'void f(PromptRequest &r) { r.title = QStringLiteral("Error"); '
                              'r.text = "That went wrong"; s.schedule(this, "no text here"); '
                              'r.buttons = {QT_TRANSLATE_NOOP("Prompt", "Ok")}; }')
        self.source("Model", 'struct M : QObject { QString s() { return tr("x"); } };')
        run = self.run_tool("check")
        self.assertEqual(run.returncode, 1)
        for fault in ('Base_zh.ts: Prompt: "%1 of %2": placeholders differ',
                      'Gui_Home_zh.ts: Prompt: "Ok" is translated differently in Base_zh.ts',
                      'Gui_Home_zh.ts: Home: "Save & <b>" is no longer in Home',
                      'Design/a.cpp:2: "Error" is not marked for translation',
                      'Design/a.cpp:2: "That went wrong" is not marked for translation',
                      "Class 'M' lacks Q_OBJECT macro"):
            self.assertIn(fault, run.stderr)
        self.assertNotIn("no text here", run.stderr)


if __name__ == "__main__":
    unittest.main()
