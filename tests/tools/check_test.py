"""tools/check on a small house of its own.  check_test.py ROOT"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(sys.argv.pop(1))

FORMATTED = "int Sum(int a, int b)\n{\n    return a + b;\n}\n"
UNFORMATTED = "int Sum( int a,int b ) { return a+b; }\n"


class Check(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.house = pathlib.Path(folder.name)
        subprocess.run(["git", "init", "--quiet", self.house], check=True)
        for name in ("tools/check", ".clang-format"):
            (self.house / name).parent.mkdir(exist_ok=True)
            shutil.copy(ROOT / name, self.house / name)
        self.write("gui/CMakeLists.txt", "cardsong_library(cardsong_gui SOURCES sum.cpp)\n")
        self.write("gui/sum.cpp", FORMATTED)

    def write(self, name, text):
        path = self.house / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    def check(self, *options):
        done = subprocess.run([sys.executable, "-B", self.house / "tools/check", *options], capture_output=True, text=True)
        return done.returncode, done.stdout

    def test_a_house_in_order_passes(self):
        self.assertEqual(self.check(), (0, "check: 1 files, 0 findings\n"))

    def test_code_in_another_format_is_a_finding_and_stays_as_it_is(self):
        source = self.write("gui/sum.cpp", UNFORMATTED)
        status, out = self.check()
        self.assertEqual(status, 1)
        self.assertIn("gui/sum.cpp:1:9: error: code should be clang-formatted", out)
        self.assertEqual(source.read_text(encoding="utf-8"), UNFORMATTED)

    def test_fix_formats_what_differs_and_touches_nothing_else(self):
        source = self.write("gui/sum.cpp", UNFORMATTED)
        others = [self.write("gui/other.h", "#pragma once\n"), self.write("gui/page.py", "a  =  1\n"),
                  self.write("gui/CMakeLists.txt", "cardsong_library(  cardsong_gui SOURCES sum.cpp)\n")]
        for other in others:
            os.utime(other, (1, 1))
        self.assertEqual(self.check("--fix"), (0, "gui/sum.cpp: formatted\ncheck: 2 files, 0 findings\n"))
        self.assertEqual(source.read_text(encoding="utf-8"), FORMATTED)
        self.assertEqual([other.stat().st_mtime for other in others], [1, 1, 1])

    def test_fix_checks_everything_else_afterwards(self):
        self.write("gui/sum.cpp", UNFORMATTED)
        self.write("gui/lost.cpp", FORMATTED)
        self.assertEqual(self.check("--fix"), (1, "gui/sum.cpp: formatted\ngui/lost.cpp: not listed in any CMakeLists.txt\n"
                                                  "check: 2 files, 1 findings\n"))

    def test_an_include_that_runs_up_is_a_finding(self):
        self.write("gui/sum.cpp", '#include "app/progress.h"\n')
        self.assertEqual(self.check(), (1, "gui/sum.cpp:1: gui/ may not include app/progress.h\ncheck: 1 files, 1 findings\n"))

    def test_a_system_header_outside_the_seam_is_a_finding(self):
        self.write("gui/sum.cpp", "#include <unistd.h>\n")
        self.assertEqual(self.check(), (1, "gui/sum.cpp:1: a system or library header outside the seam: #include <unistd.h>\n"
                                           "check: 1 files, 1 findings\n"))

    def test_shared_code_that_asks_for_the_system_is_a_finding(self):
        self.write("gui/sum.cpp", "#ifdef _WIN32\n#endif\n")
        self.assertEqual(self.check(), (1, "gui/sum.cpp:1: shared code asks for the system\ncheck: 1 files, 1 findings\n"))

    def test_help_names_each_choice(self):
        status, out = self.check("--help")
        self.assertEqual(status, 0)
        for option in ("--fix", "--tidy"):
            self.assertIn(f"tools/check {option} ", out)


if __name__ == "__main__":
    unittest.main()
