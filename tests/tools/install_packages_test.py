"""tools/install-packages on a machine that only pretends.  install_packages_test.py ROOT"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(sys.argv.pop(1))

# Each writes down how it was called; dpkg-query tells what is said to be installed.
DPKG = """#!/bin/sh
case "$1" in
    --print-architecture) echo amd64 ;;
    *) echo "dpkg $*" >>"$CALLS" ;;
esac
"""
DPKG_QUERY = '#!/bin/sh\ncat "$INSTALLED"\n'
OTHERS = '#!/bin/sh\necho "${0##*/} $*" >>"$CALLS"\n'
TABLES = "ii  python3:amd64\nii  opencc:amd64\nii  libopencc-data:all\n"


class InstallPackages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name, text in (("dpkg", DPKG), ("dpkg-query", DPKG_QUERY), ("apt-get", OTHERS), ("id", "#!/bin/sh\necho 0\n")):
            (self.folder / name).write_text(text)
            (self.folder / name).chmod(0o755)

    def install(self, group, installed):
        """The calls that changed the machine."""
        calls, listing = self.folder / "calls", self.folder / "installed"
        calls.write_text("")
        listing.write_text(installed)
        environment = os.environ | {"PATH": f"{self.folder}:{os.environ['PATH']}", "CALLS": str(calls), "INSTALLED": str(listing)}
        subprocess.run([ROOT / "tools/install-packages", group], check=True, env=environment, stdout=subprocess.DEVNULL)
        return calls.read_text().splitlines()

    def test_what_is_there_is_left_alone(self):
        self.assertEqual(self.install("tables", TABLES), [])

    def test_a_package_of_another_architecture_does_not_stand_for_the_machines_own(self):
        calls = self.install("tables", TABLES.replace("opencc:amd64", "opencc:arm64"))
        self.assertEqual(calls, ["apt-get install -y --no-install-recommends opencc"])

    def test_a_package_that_was_removed_and_left_its_settings_is_not_there(self):
        calls = self.install("tables", TABLES.replace("ii  opencc", "rc  opencc"))
        self.assertEqual(calls, ["apt-get install -y --no-install-recommends opencc"])

    def test_a_package_on_hold_is_there(self):
        self.assertEqual(self.install("tables", TABLES.replace("ii  opencc", "hi  opencc")), [])

    def test_the_machine_learns_of_an_architecture_before_its_packages_are_asked_for(self):
        calls = self.install("arm64", TABLES)
        self.assertEqual(calls[0], "dpkg --add-architecture arm64")
        self.assertEqual(len(calls), 2)
        for package in ("libcairo2-dev", "libcairo2-dev:arm64", "gstreamer1.0-libav:arm64"):
            self.assertIn(f" {package}", calls[1])

    def test_other_groups_ask_for_packages_of_the_machine_alone(self):
        calls = self.install("test", "")
        self.assertEqual(len(calls), 1)
        self.assertNotIn(":", calls[0])


if __name__ == "__main__":
    unittest.main()
