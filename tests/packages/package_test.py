"""The Debian packages as they were built.

package_test.py BUILT AGAIN ARM      the folders in which tools/make-packages built them: here, once more in another folder, and
                                     for 64-bit ARM
"""
import filecmp
import pathlib
import subprocess
import sys
import tempfile
import unittest

BUILT, AGAIN, ARM = (pathlib.Path(path).resolve() for path in sys.argv[1:4])
del sys.argv[1:4]
ELF_MACHINE_ARM64 = 183
NAMES = {"cardsong", "cardsong-data", "libcardsong-device0", "libcardsong-device-dev"}


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, encoding="utf-8", **options)


def own_architecture():
    return run("dpkg", "--print-architecture").stdout.strip()


def debs(folder, architecture):
    """The packages for a machine of `architecture`, by name."""
    found = [path for kind in (architecture, "all") for path in folder.glob(f"*_{kind}.deb")]
    return {path.name.partition("_")[0]: path for path in found}


def unpacked(deb):
    folder = tempfile.TemporaryDirectory(prefix="cardsong-package-")
    subprocess.run(["dpkg-deb", "--extract", deb, folder.name], check=True)
    return folder


class Packages(unittest.TestCase):
    def setUp(self):
        self.debs = debs(BUILT, own_architecture())

    def version(self):
        return self.debs["cardsong"].name.split("_")[1]

    def test_there_are_four_and_their_debug_symbols(self):
        symbols = {name for name in self.debs if name.endswith("-dbgsym")}
        self.assertEqual(set(self.debs) - symbols, NAMES)
        self.assertEqual(symbols, {"cardsong-dbgsym", "libcardsong-device0-dbgsym"})

    def test_lintian_finds_no_errors_and_no_warnings(self):
        for folder, architecture in ((BUILT, own_architecture()), (ARM, "arm64")):
            changes = folder / f"cardsong_{self.version()}_{architecture}.changes"
            done = run("lintian", "--allow-root", "--fail-on", "error,warning", changes)
            self.assertEqual((done.returncode, done.stdout), (0, ""), done.stderr)

    def test_everything_was_compiled_with_the_flags_of_hardening(self):
        done = run("blhc", "--ignore-line", ".*-mingw32-windres .*", BUILT / "build.log")  # which compiles texts
        self.assertEqual((done.returncode, done.stdout), (0, ""))

    def test_every_program_and_the_library_are_hardened(self):
        # The library keeps no buffer on the stack and calls nothing that could be made safer.
        harmless = ["--nostackprotector", "--nofortify"]
        for package, pattern, options in (("cardsong", "usr/bin/*", []), ("libcardsong-device0", "usr/lib/*/*.so.*.*", harmless)):
            folder = unpacked(self.debs[package])
            self.addCleanup(folder.cleanup)
            programs = list(pathlib.Path(folder.name).glob(pattern))
            self.assertTrue(programs)
            for program in programs:
                done = run("hardening-check", "--nocfprotection", *options, program)
                self.assertEqual(done.returncode, 0, done.stdout)

    def test_a_second_build_in_another_folder_gives_the_same_bytes(self):
        again = debs(AGAIN, own_architecture())
        self.assertEqual(set(again), set(self.debs))
        for name, deb in self.debs.items():
            self.assertTrue(filecmp.cmp(deb, again[name], shallow=False), f"{name} came out another way")
        for source in BUILT.glob("*.tar.xz"):
            self.assertTrue(filecmp.cmp(source, AGAIN / source.name, shallow=False), f"{source.name} came out another way")

    def test_those_for_arm_hold_programs_for_arm(self):
        arm = debs(ARM, "arm64")
        self.assertEqual(set(arm), set(self.debs))
        for package, pattern, count in (("cardsong", "usr/bin/*", 2), ("libcardsong-device0", "usr/lib/*/*.so.*.*", 1)):
            folder = unpacked(arm[package])
            self.addCleanup(folder.cleanup)
            programs = list(pathlib.Path(folder.name).glob(pattern))
            self.assertEqual(len(programs), count)
            for program in programs:
                self.assertEqual(int.from_bytes(program.read_bytes()[18:20], "little"), ELF_MACHINE_ARM64, program)

    def test_the_data_are_the_same_whatever_machine_they_are_built_for(self):
        arm = debs(ARM, "arm64")["cardsong-data"]
        self.assertTrue(filecmp.cmp(self.debs["cardsong-data"], arm, shallow=False))

    def test_the_library_is_installed_for_two_architectures_beside_each_other(self):
        for package in ("libcardsong-device0", "libcardsong-device-dev"):
            folders = [unpacked(deb[package]) for deb in (self.debs, debs(ARM, "arm64"))]
            one, other = (pathlib.Path(folder.name) for folder in folders)
            shared = [path.relative_to(one) for path in one.rglob("*") if path.is_file() and (other / path.relative_to(one)).exists()]
            self.assertGreater(len(shared), 1)
            for name in shared:
                self.assertTrue(filecmp.cmp(one / name, other / name, shallow=False), name)
            for folder in folders:
                folder.cleanup()


if __name__ == "__main__":
    unittest.main()
