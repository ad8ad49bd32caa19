"""The tests that the preset arm64 leaves out are there under the names that it gives.  left_out_test.py ROOT"""

import json
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(sys.argv.pop(1))
TESTS = ROOT / "tests"


class LeftOut(unittest.TestCase):
    def setUp(self):
        presets = json.loads((ROOT / "CMakePresets.json").read_text(encoding="utf-8"))
        self.preset = next(preset for preset in presets["testPresets"] if preset["name"] == "arm64")

    def test_each_test_is_there(self):
        left_out = self.preset["environment"]["GTEST_FILTER"].removeprefix("$penv{GTEST_FILTER}-").split(":")
        self.assertGreater(len(left_out), 1)
        sources = "".join(path.read_text(encoding="utf-8") for path in TESTS.rglob("*.cpp"))
        for name in left_out:
            suite, test = name.partition("/")[2].removesuffix("/*").split(".") if "/" in name else name.split(".")
            self.assertRegex(sources, rf"\nTEST(_[FP])?\({suite}, {test}\)")

    def test_each_program_is_there(self):
        names = re.fullmatch(r"\^\((.*)\)\$", self.preset["filter"]["exclude"]["name"])[1].split("|")
        lists = "".join(path.read_text(encoding="utf-8")
                        for folder in (TESTS, ROOT / "examples") for path in folder.rglob("CMakeLists.txt"))
        added = [name.replace("${example}", "x") for name in re.findall(r"(?:add_test\(NAME|cardsong_\w*test\() *(\S+)", lists)]
        for name in names:
            self.assertTrue(any(re.fullmatch(name, one) for one in added), f"no test program is called {name}")


if __name__ == "__main__":
    unittest.main()
