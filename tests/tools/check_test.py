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
    """In a house that is an unpacked archive."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.house = pathlib.Path(folder.name)
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

    def check(self, *options, **surroundings):
        done = subprocess.run([sys.executable, "-B", self.house / "tools/check", *options], capture_output=True, text=True,
                              env=os.environ | surroundings)
        return done.returncode, done.stdout

    def check_tidy(self, clang_tidy, cmake="true"):
        """With two readers of foreign bytes, and a clang-tidy of our own."""
        for name in ("one", "two"):
            self.write(f"tags/{name}.cpp", FORMATTED)
        self.write("tags/CMakeLists.txt", "cardsong_library(cardsong_tags SOURCES one.cpp two.cpp)\n")
        for name, text in (("clang-tidy", clang_tidy), ("cmake", cmake)):
            self.write(f"bin/{name}", f"#!/bin/sh\n{text}\n").chmod(0o755)
        return self.check("--tidy", PATH=f"{self.house / 'bin'}:{os.environ['PATH']}")

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

    def test_tidy_looks_at_each_reader_of_foreign_bytes(self):
        self.assertEqual(self.check_tidy("true"), (0, "check: 3 files, 0 findings\n"))
        status, out = self.check_tidy('for source in "$@"; do :; done; echo "$source:1:1: warning: odd"')
        self.assertEqual((status, out), (1, "tags/one.cpp:1:1: warning: odd\ntags/two.cpp:1:1: warning: odd\n"
                                            "check: 3 files, 2 findings\n"))

    def test_tidy_tells_what_is_wrong_with_a_header_of_many_once(self):
        self.assertEqual(self.check_tidy('echo "tags/header.h:1:1: warning: odd"'),
                         (1, "tags/header.h:1:1: warning: odd\ncheck: 3 files, 1 findings\n"))

    def test_tidy_that_gives_up_is_a_finding(self):
        self.assertEqual(self.check_tidy("echo no such build >&2; exit 1"),
                         (1, "tags/one.cpp: clang-tidy gave up: no such build\ntags/two.cpp: clang-tidy gave up: no such build\n"
                             "check: 3 files, 2 findings\n"))

    def test_what_a_build_made_is_no_part_of_the_house(self):
        self.write("build/asan/made.cpp", UNFORMATTED)
        self.write("gui/build/other.cpp", FORMATTED)
        self.assertEqual(self.check(), (1, "gui/build/other.cpp: not listed in any CMakeLists.txt\ncheck: 2 files, 1 findings\n"))

    def test_tidy_needs_no_make(self):
        self.check_tidy("true", cmake=f'echo "$CMAKE_GENERATOR" >"{self.house}/generator"')
        self.assertEqual((self.house / "generator").read_text(), os.environ.get("CMAKE_GENERATOR", "Ninja") + "\n")

    def test_help_names_each_choice(self):
        status, out = self.check("--help")
        self.assertEqual(status, 0)
        for option in ("--fix", "--tidy"):
            self.assertIn(f"tools/check {option} ", out)

    def test_works_where_git_is_not_installed(self):
        programs = self.house / "programs"
        programs.mkdir()
        (programs / "clang-format").symlink_to(shutil.which("clang-format"))
        (self.house / ".git").mkdir()
        self.write("gui/lost.cpp", FORMATTED)
        self.assertEqual(self.check(PATH=str(programs)),
                         (1, "gui/lost.cpp: not listed in any CMakeLists.txt\ncheck: 2 files, 1 findings\n"))

    @unittest.skipUnless(shutil.which("git"), "git is not installed")
    def test_is_complete_in_a_foreign_repository_that_ignores_it(self):
        shutil.rmtree(self.house / ".git", ignore_errors=True)
        around = self.house.with_name(f"{self.house.name}.around")
        self.addCleanup(shutil.rmtree, around)
        subprocess.run(["git", "init", "--quiet", around], check=True)
        (around / ".gitignore").write_text("/house/\n", encoding="utf-8")
        self.house = self.house.rename(around / "house")
        self.assertEqual(self.check(), (0, "check: 1 files, 0 findings\n"))


@unittest.skipUnless(shutil.which("git"), "git is not installed")
class CheckInARepository(Check):
    """The same in a repository."""

    def setUp(self):
        super().setUp()
        subprocess.run(["git", "init", "--quiet", self.house], check=True)
        self.write(".gitignore", "/build/\n")

    def test_works_where_git_is_not_installed(self):
        shutil.rmtree(self.house / ".git")
        super().test_works_where_git_is_not_installed()

    def test_what_git_ignores_is_no_part_of_the_house(self):
        self.write(".gitignore", "/build/\n/gui/made.cpp\n")
        self.write("gui/made.cpp", UNFORMATTED)
        self.assertEqual(self.check(), (0, "check: 1 files, 0 findings\n"))


if __name__ == "__main__":
    unittest.main()
