"""The folder packaging/debian keeps up with the project.  debian_test.py ROOT"""
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(sys.argv.pop(1))
DEBIAN = ROOT / "packaging/debian"
# Part of every Debian system that builds packages, or needed to fetch the source alone.
ALWAYS_THERE = {"g++", "ca-certificates"}


def group(name):
    """The packages of a group of tools/install-packages."""
    text = (ROOT / "tools/install-packages").read_text(encoding="utf-8")
    return set(re.search(rf"^{name}=\(([^)]*)\)", text, re.MULTILINE)[1].split())


def paragraphs():
    """(name of the package, nothing for the source; its fields)"""
    for text in (DEBIAN / "control").read_text(encoding="utf-8").strip().split("\n\n"):
        fields = dict(re.findall(r"^([\w-]+):((?:.|\n(?= ))*)", text, re.MULTILINE))
        yield fields.get("Package", "").strip(), fields


def names(field):
    """The packages that a field names, without versions and architectures."""
    return {re.match(r"[\w.+${}:-]+", item.strip())[0].partition(":")[0] for item in field.split(",") if item.strip()}


class Debian(unittest.TestCase):
    def setUp(self):
        self.packages = dict(paragraphs())

    def test_the_change_log_begins_with_the_version_of_the_project(self):
        version = re.search(r"project\(Cardsong VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"))[1]
        first = (DEBIAN / "changelog").read_text(encoding="utf-8").splitlines()[0]
        self.assertEqual(first, f"cardsong ({version}) unstable; urgency=medium")

    def test_a_build_is_given_all_that_the_project_is_built_with(self):
        wanted = (group("build") | group("libraries") | group("device")) - ALWAYS_THERE
        given = names(self.packages[""]["Build-Depends"]) - {"debhelper-compat"}
        self.assertEqual(given, wanted)

    def test_the_player_names_all_that_playing_wants(self):
        named = set().union(*(names(self.packages["cardsong"][field]) for field in ("Depends", "Recommends", "Suggests")))
        self.assertLessEqual(group("playing"), named)

    def test_the_symbols_are_the_exported_names(self):
        exported = set(re.findall(r"^    (\w+)$", (ROOT / "packaging/cardsong-device.def").read_text(encoding="ascii"),
                                  re.MULTILINE))
        listed = set(re.findall(r"^ (\w+)@CARDSONG_DEVICE_0 ",
                                (DEBIAN / "libcardsong-device0.symbols").read_text(encoding="ascii"), re.MULTILINE))
        self.assertEqual(listed, exported | {"CARDSONG_DEVICE_0"})

    def test_the_copyright_file_names_files_that_are_there(self):
        text = (DEBIAN / "copyright").read_text(encoding="utf-8")
        for patterns in re.findall(r"^Files:((?:.|\n(?= ))*)", text, re.MULTILINE):
            for pattern in patterns.split():
                self.assertTrue(any(ROOT.glob(pattern)), f"{pattern} names no file")

    def test_the_copyright_file_names_each_picture_with_letters_of_a_font(self):
        text = (DEBIAN / "copyright").read_text(encoding="utf-8")
        lettered = [path for path in (ROOT / "device").rglob("*.svg") if "WenQuanYi" in path.read_text(encoding="utf-8")]
        self.assertTrue(lettered)
        for path in lettered:
            self.assertIn(path.relative_to(ROOT).as_posix(), text)

    def test_the_licence_is_the_projects(self):
        lines = (ROOT / "LICENSE").read_text(encoding="utf-8").splitlines()[4:]
        licence = "\n".join(f" {line or '.'}" for line in lines)
        self.assertIn(f"License: Expat\n{licence}\n", (DEBIAN / "copyright").read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()
