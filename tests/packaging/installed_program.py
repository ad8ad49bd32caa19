#!/usr/bin/env python3
"""What `cmake --install` installs: each file in its component, valid for the desktop that reads it, true to the programs, and
a player that runs from wherever it was put.

installed_program.py ROOT BUILD
"""
import fnmatch
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

ROOT, BUILD = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
del sys.argv[1:3]
FOLDER = tempfile.TemporaryDirectory(prefix="cardsong-install-")
PREFIX = pathlib.Path(FOLDER.name) / "prefix"
PATIENCE_S = 60

ICON_SIZES = (16, 24, 32, 48, 64, 128, 256)
KIOSK = "share/doc/cardsong/examples/kiosk/"
PROGRAM = {"bin/cardsong", "bin/cardsongctl", "share/applications/cardsong.desktop",
           "share/bash-completion/completions/cardsong", "share/bash-completion/completions/cardsongctl",
           "share/man/man1/cardsong.1", "share/man/man1/cardsongctl.1",
           "share/metainfo/org.cardsong.cardsong.metainfo.xml", "share/doc/cardsong/kiosk.md"} | {KIOSK + name for name in (
               "autologin.conf", "cardsong-kiosk", "cardsong-kiosk.service", "kiosk.conf", "media-card.mount", "profile")}
ICONS = {f"share/icons/hicolor/{size}x{size}/apps/cardsong.png" for size in ICON_SIZES}
DATA = ICONS | {"share/icons/hicolor/scalable/apps/cardsong.svg"}
HEADERS = {f"include/cardsong/{name}" for name in (
    "containers/ptr_array_ctrl.h", "containers/ptr_list_ctrl.h", "device.h", "encoding/big5_gb_text.h",
    "encoding/code_page.h", "encoding/gb_unicode_text.h", "encoding/utf16_unit.h")}


def run(*command, **options):
    done = subprocess.run(command, capture_output=True, text=True, timeout=PATIENCE_S, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def install(prefix, component=None, destination=None):
    environment = os.environ | ({"DESTDIR": str(destination)} if destination else {})
    chosen = ["--component", component] if component else []
    run("cmake", "--install", BUILD, "--prefix", prefix, *chosen, env=environment)
    return files_below(pathlib.Path(f"{destination or ''}{prefix}"))


def files_below(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}


def version():
    return re.search(r"project\(Cardsong VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text())[1]


def holds(package, name):
    """Whether the Debian package takes an installed file. The folder of libraries has another name for each machine there."""
    def plain(path):
        return re.sub(r"^lib/[^/]+/(?=[^/]*lib|pkgconfig)", "lib/", path)
    wanted = (ROOT / f"packaging/debian/{package}.install").read_text(encoding="utf-8").split()
    patterns = [plain(pattern.removeprefix("usr/")) for pattern in wanted]
    return any(pathlib.PurePath(plain(name)).match(pattern) or fnmatch.fnmatch(plain(name), f"{pattern}/*") for pattern in patterns)


def setUpModule():
    install(PREFIX)


def tearDownModule():
    FOLDER.cleanup()


class Components(unittest.TestCase):
    def test_divide_everything_and_share_nothing(self):
        root = pathlib.Path(FOLDER.name)
        parts = {name: install(root / name, name) for name in ("program", "data", "device-library", "device-development")}
        self.assertEqual(parts["program"], PROGRAM)
        given = {name for name in parts["data"] if name.startswith("share/cardsong/")}
        self.assertEqual(parts["data"] - given, DATA)
        libraries = {pathlib.Path(name).name for name in parts["device-library"]}
        self.assertEqual(libraries, {"libcardsong-device.so.0", f"libcardsong-device.so.{version()}"})
        rest = {name for name in parts["device-development"] - HEADERS if not name.endswith((".pc", ".so"))}
        self.assertEqual(rest, {"share/man/man3/cardsong-device.3"})
        self.assertLessEqual(HEADERS, parts["device-development"])
        self.assertEqual(sum(map(len, parts.values())), len(files_below(PREFIX)))
        self.assertEqual(set().union(*parts.values()), files_below(PREFIX))

    def test_each_goes_into_the_debian_package_that_is_said_to_hold_it(self):
        page = (ROOT / "packaging/README.md").read_text(encoding="utf-8")
        packages = re.findall(r"^\| `([\w-]+)` \| `([\w-]+)` \|", page, re.MULTILINE)
        self.assertEqual(len(packages), 4)
        for package, component in packages:
            for name in install(pathlib.Path(FOLDER.name) / f"for {package}", component):
                self.assertEqual([other for other, _ in packages if holds(other, name)], [package], name)

    def test_data_are_the_tree_and_the_demo_card_as_built(self):
        for made, installed in (("tree", "device"), ("card", "demo-card")):
            found = PREFIX / "share/cardsong" / installed
            self.assertGreater(len(files_below(found)), 10)
            self.assertEqual(files_below(found), files_below(BUILD / "device" / made))

    def test_everybody_may_read_every_file_and_only_programs_run(self):
        for name in files_below(PREFIX):
            path = PREFIX / name
            mode = 0o755 if name.startswith("bin/") or name == KIOSK + "cardsong-kiosk" else 0o644
            if not path.is_symlink() and ".so" not in name:
                self.assertEqual(path.stat().st_mode & 0o7777, mode, name)

    def test_data_are_open_to_everybody_whatever_new_folders_are_for_who_installs(self):
        prefix = pathlib.Path(FOLDER.name) / "closed"
        old = os.umask(0o077)
        try:
            install(prefix, "data")
        finally:
            os.umask(old)
        data = prefix / "share/cardsong"
        for folder in (data, *data.rglob("*/")):
            self.assertEqual(folder.stat().st_mode & 0o7777, 0o755, folder)


class Desktop(unittest.TestCase):
    def test_entry_is_valid_and_starts_what_is_installed(self):
        entry = PREFIX / "share/applications/cardsong.desktop"
        self.assertEqual(run("desktop-file-validate", entry), "")
        lines = dict(line.split("=", 1) for line in entry.read_text().splitlines() if "=" in line)
        program, *options, _ = lines["Exec"].split()
        self.assertTrue((PREFIX / "bin" / program).exists())
        self.assertTrue((PREFIX / "bin" / lines["TryExec"]).exists())
        run(PREFIX / "bin" / program, *options, "--version")
        self.assertIn(f"share/icons/hicolor/scalable/apps/{lines['Icon']}.svg", files_below(PREFIX))

    def test_entry_claims_the_songs_that_the_player_opens(self):
        lines = (PREFIX / "share/applications/cardsong.desktop").read_text().splitlines()
        self.assertIn("MimeType=audio/mpeg;audio/x-ms-wma;", lines)
        self.assertIn("Exec=cardsong --fill %F", lines)

    def test_metainfo_is_valid(self):
        told = run("appstreamcli", "validate", "--no-net", "--no-color",
                   PREFIX / "share/metainfo/org.cardsong.cardsong.metainfo.xml")
        self.assertIn("Validation was successful", told)

    def test_icons_are_as_large_as_their_folders_say(self):
        for size in ICON_SIZES:
            png = (PREFIX / f"share/icons/hicolor/{size}x{size}/apps/cardsong.png").read_bytes()
            self.assertEqual(struct.unpack(">II", png[16:24]), (size, size))


class Version(unittest.TestCase):
    def test_is_the_same_everywhere(self):
        for program in ("cardsong", "cardsongctl"):
            self.assertEqual(run(PREFIX / "bin" / program, "--version"), f"{program} {version()}\n")
        self.assertIn(f"X-Cardsong-Version={version()}\n", (PREFIX / "share/applications/cardsong.desktop").read_text())
        self.assertIn(f'<release version="{version()}"',
                      (PREFIX / "share/metainfo/org.cardsong.cardsong.metainfo.xml").read_text())
        for page in (PREFIX / "share/man").rglob("*.[13]"):
            self.assertIn(f'"Cardsong {version()}"', page.read_text())
        package = next(PREFIX.rglob("cardsong-device.pc")).read_text()
        self.assertIn(f"Version: {version()}\n", package)


def page_text(name):
    """A manual page as a reader sees it; whatever the formatter finds wrong is an error."""
    path = next((PREFIX / "share/man").rglob(name))
    done = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", path], capture_output=True, text=True,
                          env=os.environ | {"LC_ALL": "C.UTF-8", "MANWIDTH": "100"}, timeout=PATIENCE_S, check=True)
    if done.stderr:
        raise AssertionError(done.stderr)
    return done.stdout


def section(text, name):
    return re.search(rf"^{name}\n(.*?)(?=^\S|\Z)", text, re.MULTILINE | re.DOTALL)[1]


def options_of(help_text):
    return re.findall(r"^  (?:-., )?--\S+", help_text, re.MULTILINE)


class ManualPages(unittest.TestCase):
    def test_name_exactly_the_options_of_the_program(self):
        for program, ending in (("cardsong", ""), ("cardsongctl", "")):
            with self.subTest(program):
                told = [option.strip() for option in options_of(run(PREFIX / "bin" / program, "--help"))]
                page = section(page_text(f"{program}.1"), "OPTIONS")
                self.assertEqual(re.findall(r"^ {7}((?:-\S, )?--\S+)", page, re.MULTILINE), told)

    def test_name_exactly_the_commands_of_the_control_program(self):
        page = section(page_text("cardsongctl.1"), "COMMANDS")
        self.assertEqual(re.findall(r"^ {7}([a-z-]+)", page, re.MULTILINE), commands())

    def test_name_exactly_the_exit_statuses_of_the_player(self):
        told = run(PREFIX / "bin/cardsong", "--help").partition("Exit status: ")[2].partition("\n--")[0].replace("\n", " ")
        page = section(page_text("cardsong.1"), "EXIT STATUS")
        self.assertEqual(re.findall(r"^ {7}(\d+)", page, re.MULTILINE), re.findall(r"\b(\d+) [a-z]", told))

    def test_tell_of_every_word_of_the_environment_that_chooses_the_display(self):
        chosen = (ROOT / "platform/linux/display/display_choice.cpp").read_text(encoding="utf-8")
        asked = [name for name in re.findall(r'Variable\("(\w+)"\)', chosen) if name != "XDG_RUNTIME_DIR"]
        told = re.findall(r"^ {7}([A-Z_, ]+)$", section(page_text("cardsong.1"), "ENVIRONMENT"), re.MULTILINE)
        self.assertEqual(", ".join(told).split(", ")[:len(asked)], asked)

    def test_tell_of_every_function_that_the_library_exports(self):
        page = page_text("cardsong-device.3")
        for line in (ROOT / "packaging/exports.txt").read_text().splitlines():
            name = line.split("::")[0]
            if line and not line.startswith(("#", "operator")):
                self.assertIn(name, page)


def commands():
    return re.findall(r"^(?:usage:|      ) cardsongctl (\S+)", run(PREFIX / "bin/cardsongctl", "--help"), re.MULTILINE)


def complete(*words):
    """What bash offers for the last of the words, the first of which is a program."""
    program = words[0]
    script = f"""
        compopt() {{ :; }}
        source {PREFIX}/share/bash-completion/completions/{program}
        COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
        _{program} "$1" "${{@: -1}}" "${{@: -2:1}}"
        printf '%s\\n' "${{COMPREPLY[@]}}"
    """
    environment = {"PATH": f"{PREFIX}/bin:{os.environ['PATH']}", "HOME": FOLDER.name}
    found = run("bash", "-c", script, "bash", *words, env=environment, cwd=FOLDER.name)
    return [line for line in found.splitlines() if line]


class Completion(unittest.TestCase):
    def test_offers_every_option_of_the_player(self):
        told = options_of(run(PREFIX / "bin/cardsong", "--help"))
        self.assertEqual(complete("cardsong", "--"), [re.sub(r".*--", "--", re.sub("=.*", "=", option)) for option in told])
        self.assertEqual(complete("cardsong", "--headless", "--ly"), ["--lyrics-utf8"])

    def test_offers_what_an_option_takes(self):
        (PREFIX.parent / "a file").touch()
        self.assertEqual(complete("cardsong", "--language", "="), ["zh-TW", "zh-CN", "en", "de", "fr", "ja", "es"])
        self.assertEqual(complete("cardsong", "--language", "=", "z"), ["zh-TW", "zh-CN"])
        self.assertEqual(complete("cardsong", "--card", "pre"), ["prefix"])
        self.assertEqual(complete("cardsong", "--device", "=", "./pre"), ["./prefix"])
        self.assertEqual(complete("cardsong", "--card", "a"), [])
        self.assertEqual(complete("cardsong", "--screenshot", "=", "a"), ["a file"])
        self.assertEqual(complete("cardsong", "--headless", "a"), ["a file"])
        self.assertEqual(complete("cardsong", "--skin", ""), ["amber"])
        self.assertEqual(complete("cardsong", "--audio-sink", "n"), ["null"])
        self.assertEqual(complete("cardsong", "--scale", ""), [])

    def test_offers_every_command_of_the_control_program(self):
        self.assertEqual(complete("cardsongctl", ""), [*commands(), "--help", "--version"])
        self.assertEqual(complete("cardsongctl", "s"), ["songs", "stop", "status"])

    def test_offers_what_a_command_takes(self):
        self.assertIn("prefix", complete("cardsongctl", "songs", ""))
        self.assertEqual(complete("cardsongctl", "songs", "-"), ["--json"])
        self.assertEqual(complete("cardsongctl", "status", "-"), ["--json", "--device="])
        self.assertEqual(complete("cardsongctl", "registry", ""), ["get", "list", "set", "--device="])
        self.assertEqual(complete("cardsongctl", "registry", "get", ""), ["--device="])
        self.assertEqual(complete("cardsongctl", "play", "--device", "=", "pre"), ["prefix"])
        self.assertEqual(complete("cardsongctl", "play", ""), ["--device="])


class Player(unittest.TestCase):
    """Starts from an installed tree and leaves it as it was."""

    def play(self, prefix, command=None):
        with tempfile.TemporaryDirectory() as folder:
            home = pathlib.Path(folder)
            environment = {"HOME": folder, "LANG": "C.UTF-8", "PATH": os.environ["PATH"],
                           "LSAN_OPTIONS": "print_suppressions=0"}
            picture = home / "picture.png"
            before = {name: (prefix / name).stat().st_mtime_ns for name in files_below(prefix)}
            run(command or prefix / "bin/cardsong", "--headless", "--audio-sink=null", "--fill", "--card",
                prefix / "share/cardsong/demo-card", "--keys", "wait:300 Enter wait:700", "--screenshot", picture,
                "--run-for", "1.5", env=environment, cwd="/")
            self.assertEqual({name: (prefix / name).stat().st_mtime_ns for name in files_below(prefix)}, before)
            saved = (home / ".local/share/cardsong/Windows/play_list.txt").read_bytes().decode("utf-16-le", "replace")
            self.assertIn("00 demo tone.mp3", saved)
            self.assertEqual(picture.read_bytes()[:4], b"\x89PNG")

    def test_runs_from_its_prefix(self):
        self.play(PREFIX)

    def test_runs_from_a_prefix_that_was_moved(self):
        moved = pathlib.Path(FOLDER.name) / "moved to 卡 歌"
        shutil.copytree(PREFIX, moved, symlinks=True, copy_function=shutil.copy2)
        self.play(moved)

    def test_runs_from_a_folder_that_it_was_staged_in(self):
        staged = pathlib.Path(FOLDER.name) / "staged"
        install("/usr", destination=staged)
        self.play(staged / "usr")

    def test_runs_through_a_link_to_it(self):
        link = pathlib.Path(FOLDER.name) / "link"
        link.symlink_to(PREFIX / "bin/cardsong")
        self.play(PREFIX, link)


if __name__ == "__main__":
    unittest.main()
