"""The comparison of templates with generators and drivers: each way of being out of step is told."""

import pathlib
import tempfile
import types
import unittest

from check_templates import Asked, FolderCheck
from source import Problems

FUNCTION = """[#crc function]
void lm_crc_init(void)
{
  crc_init_data_set(0xFFFF);
[#outer]
[#poly]
  crc_poly_value_set(0x7, TRUE);
[/#poly]
  crc_struct.size = CRC_8B;
[/#outer]
}
[/#crc function]
"""
HANDLER = """void CRC_IRQHandler(void)
{
[#CRC_DONE_FLAG]
  crc_init_data_set(1);
[/#CRC_DONE_FLAG]
}
"""
PLAIN = "[#crc function]\nvoid lm_crc_init(void);\n[/#crc function]\n"
TOPICS = ["own\t\tsection\tfunction\t0\t", "c\t\tcall\tcrc_init_data_set\t1\t", "c\t\tsection\touter\t0\t",
          "c\touter\tsection\tpoly\t0\tpoly", "c\touter/poly\tcall\tcrc_poly_value_set\t2\t",
          "c\touter\tassignment\tcrc_struct.size\t1\tsizes:8", "int\t\tsection\t_DONE_FLAG\t0\t"]


class TemplateCheckTest(unittest.TestCase):
    def problems(self, topics=tuple(TOPICS), function=FUNCTION, handler=HANDLER, features=("poly",), headers=None):
        instance = types.SimpleNamespace(name="CRC", key="crc", kind="CRC", features=set(features),
                                         vars={"sizes": ["8"]})
        family = types.SimpleNamespace(folder="F", prefix="f", style="mux", instances=[instance])
        files = {"srcode/F/f_lm_config.c": function, "srcode/F/f_lm_config.h": PLAIN, "srcode/F/main.c": PLAIN,
                 "srcode/F/f_int.c": handler}
        found = Problems()
        check = FolderCheck(family, {name: text.replace("\n", "\r\n").encode() for name, text in files.items()},
                            [Asked("CRC\t" + line) for line in topics], found)
        check.run()
        if headers is not None:
            with tempfile.TemporaryDirectory() as folder:
                (pathlib.Path(folder) / "f_crc.h").write_text(headers)
                check.calls(pathlib.Path(folder))
        return "\n".join(found.sorted())

    def test_nothing_is_told_of_what_is_in_step(self):
        self.assertEqual(self.problems(), "")

    def test_what_a_generator_asks_for_is_missing(self):
        self.assertIn("the section 'poly' is missing", self.problems(function=FUNCTION.replace("poly]", "pol]")))
        self.assertIn("the call 'crc_poly_value_set' is missing",
                      self.problems(function=FUNCTION.replace("0x7, TRUE", "0x7")))
        self.assertIn("the assignment 'crc_struct.size' is missing",
                      self.problems(function=FUNCTION.replace(".size", ".length")))
        self.assertIn("'CRC_DONE_FLAG' is missing", self.problems(handler="void CRC_IRQHandler(void)\n"))

    def test_what_no_generator_asks_for_is_there(self):
        self.assertIn("no generator asks for the section 'poly'",
                      self.problems(topics=[line for line in TOPICS if "\tpoly" not in line and "/poly" not in line]))
        self.assertIn("no generator asks for the section 'CRC_DONE_FLAG'", self.problems(topics=TOPICS[:-1]))

    def test_features_decide_what_an_instance_has(self):
        self.assertIn("the section 'poly' is there", self.problems(features=()))
        self.assertIn("the assignment 'crc_struct.size' is there",
                      self.problems(topics=[line.replace("sizes:8", "sizes:16") for line in TOPICS]))

    def test_drivers_declare_every_call_with_its_arguments(self):
        declared = "void crc_init_data_set(uint32_t value);\n"
        both = declared + "void crc_poly_value_set(uint32_t value,\n                        confirm_state state);\n"
        self.assertEqual(self.problems(headers=both), "")
        self.assertIn("no driver declares crc_poly_value_set", self.problems(headers=declared))
        self.assertIn("crc_init_data_set is called with 1 arguments and takes 0",
                      self.problems(headers=both.replace("(uint32_t value);", "(void);")))


if __name__ == "__main__":
    unittest.main()
