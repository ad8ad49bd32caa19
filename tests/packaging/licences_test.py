"""What is under another licence than the rest is told wherever Cardsong is passed on.  licences_test.py ROOT"""
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(sys.argv.pop(1))
FULL_TEXT = pathlib.Path("/usr/share/common-licenses/Apache-2.0")
APACHE = re.compile(r"Apache(-| License,? (Version )?)2\.0")


def text(name):
    return (ROOT / name).read_text(encoding="utf-8")


def files_in_the_notice():
    return set(re.findall(r"^ +(?:in +)?(\w[\w/]*\.\w+)$", text("NOTICE"), re.MULTILINE))


class Licences(unittest.TestCase):
    def test_the_notice_names_files_that_are_there(self):
        self.assertEqual(len(files_in_the_notice()), 4)
        for name in files_in_the_notice():
            self.assertTrue((ROOT / name).is_file(), name)

    def test_the_notice_names_each_source_that_says_so_itself_and_each_picture_with_letters_of_a_font(self):
        tables = {path for path in (ROOT / "encoding").glob("*.cpp") if APACHE.search(path.read_text(encoding="utf-8"))}
        lettered = {path for path in (ROOT / "device").rglob("*.svg") if "WenQuanYi" in path.read_text(encoding="utf-8")}
        self.assertEqual(files_in_the_notice(), {path.relative_to(ROOT).as_posix() for path in tables | lettered})

    def test_debian_is_told_the_same(self):
        told = set()
        for paragraph in text("packaging/debian/copyright").split("\n\n"):
            fields = dict(re.findall(r"^([\w-]+):((?:.|\n(?= ))*)", paragraph, re.MULTILINE))
            if "Files" in fields and "Apache-2.0" in fields["License"]:
                told |= set(fields["Files"].split())
        self.assertEqual(told, files_in_the_notice())

    def test_the_whole_licence_is_there(self):
        if not FULL_TEXT.exists():
            self.skipTest("this system keeps no licences")
        self.assertEqual(text("LICENSE-Apache-2.0"), FULL_TEXT.read_text(encoding="utf-8"))

    def test_both_pages_for_users_and_what_a_software_centre_shows_name_it(self):
        for page in ("README.md", "packaging/windows/README.txt.in"):
            for words in ("Apache License 2.0", "NOTICE", "LICENSE-Apache-2.0"):
                self.assertIn(words, text(page), page)
        self.assertIn("<project_license>MIT AND Apache-2.0</project_license>",
                      text("packaging/program/org.cardsong.cardsong.metainfo.xml.in"))
        self.assertIn("Apache License 2.0", text("device/windows/program.rc.in"))

    def test_the_notice_goes_with_each_debian_package_that_holds_something_of_it(self):
        for package in ("cardsong", "cardsong-data", "libcardsong-device0"):
            self.assertIn("NOTICE", text(f"packaging/debian/{package}.docs").split())

    def test_the_zip_holds_the_texts(self):
        installed = re.search(r"foreach\(text README ([^)]*)\)", text("packaging/windows/CMakeLists.txt"))[1].split()
        self.assertLessEqual({"LICENSE", "LICENSE-Apache-2.0", "NOTICE"}, set(installed))


if __name__ == "__main__":
    unittest.main()
