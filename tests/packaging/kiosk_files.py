"""The files of packaging/kiosk: units that systemd understands, and scripts that do what docs/kiosk.md says.

kiosk_files.py ROOT
"""

import configparser
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(sys.argv.pop(1))
KIOSK = ROOT / "packaging/kiosk"
PAGE = ROOT / "docs/kiosk.md"
EXIT_WAS_PRESSED = "10"  # the status of a player that was told --tell-exit


class KioskFiles(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name)
        self.bin = self.home / ".local/bin"
        self.bin.mkdir(parents=True)
        self.card = self.home / "card"
        self.card.mkdir()
        (self.card / "song.mp3").touch()
        self.log = self.home / "log"
        shutil.copy(KIOSK / "cardsong-kiosk", self.bin)
        # Each writes down how it was called.
        self.fake("cage", '[ "$1 $2" = "-d --" ] || exit 9; shift 2; "$@"; exit 0')
        self.fake("cardsong", 'exit "${FAKE_STATUS:-0}"')
        self.fake("systemctl")
        (self.bin / "id").write_text("#!/bin/sh\necho ${FAKE_ID:-1000}\n")
        (self.bin / "id").chmod(0o755)

    def fake(self, name, *lines):
        path = self.bin / name
        path.write_text("\n".join(["#!/bin/sh", f'echo "{name} $*" >>"{self.log}"', *lines, ""]), encoding="utf-8")
        path.chmod(0o755)

    def environment(self, **more):
        return {"HOME": str(self.home), "XDG_RUNTIME_DIR": str(self.home), "PATH": f"{self.bin}:{os.environ['PATH']}",
                "CARDSONG_CARD": str(self.card)} | more

    def run_session(self, **more):
        done = subprocess.run([self.bin / "cardsong-kiosk"], env=self.environment(**more), capture_output=True, text=True)
        return done.returncode, self.log.read_text(encoding="utf-8").splitlines()

    def test_root_gets_no_screen(self):
        done = subprocess.run([self.bin / "cardsong-kiosk"], env=self.environment(FAKE_ID="0"), capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stderr),
                         (1, "cardsong-kiosk: not as root: log in as the user whose session it is to be\n"))
        self.assertFalse(self.log.exists())

    def settings(self, file):
        """NAME=VALUE lines of a unit, by section."""
        parser = configparser.ConfigParser(strict=False, interpolation=None)
        parser.optionxform = str
        parser.read(KIOSK / file, encoding="utf-8")
        return parser

    def complaints(self, unit, text, *options, path=""):
        """What systemd says about a unit of this text."""
        file = self.home / unit
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        done = subprocess.run(["systemd-analyze", "verify", "--man=no", *options, file], capture_output=True, text=True,
                              env=self.environment() | ({"SYSTEMD_UNIT_PATH": path} if path else {}))
        return done.stdout + done.stderr + (f"status {done.returncode}" if done.returncode else "")

    # ---- units ----

    def test_systemd_understands_the_player_s_unit(self):
        text = (KIOSK / "cardsong-kiosk.service").read_text(encoding="utf-8")
        self.assertEqual(self.complaints("cardsong-kiosk.service", text, "--user"), "")

    def test_a_fault_in_the_player_s_unit_would_be_seen(self):
        text = (KIOSK / "cardsong-kiosk.service").read_text(encoding="utf-8")
        self.assertIn("Restart", self.complaints("cardsong-kiosk.service", text.replace("Restart=", "Restarts="), "--user"))
        (self.bin / "cardsong-kiosk").unlink()
        self.assertIn("is not executable", self.complaints("cardsong-kiosk.service", text, "--user"))

    def test_systemd_understands_the_mount_of_the_card(self):
        text = (KIOSK / "media-card.mount").read_text(encoding="utf-8")
        self.assertEqual(self.complaints("media-card.mount", text), "")

    def test_a_mount_elsewhere_would_be_seen(self):
        text = (KIOSK / "media-card.mount").read_text(encoding="utf-8")
        self.assertIn("Where=", self.complaints("media-card.mount", text.replace("/media/card", "/media/other")))

    def test_systemd_understands_the_log_in_at_the_panel(self):
        getty = "[Service]\nExecStart=-/sbin/agetty %I $TERM\n"
        folder = self.home / "getty@tty1.service.d"
        folder.mkdir()
        shutil.copy(KIOSK / "autologin.conf", folder)
        self.assertEqual(self.complaints("getty@tty1.service", getty, path=f"{self.home}:"), "")
        (folder / "autologin.conf").write_text("[Service]\nExecStart=agetty\nExecStart=/none\n", encoding="utf-8")
        self.assertIn("ExecStart", self.complaints("getty@tty1.service", getty, path=f"{self.home}:"))

    def test_however_often_the_player_or_the_log_in_ends_it_is_started_again(self):
        for file in ("cardsong-kiosk.service", "autologin.conf"):
            settings = self.settings(file)
            self.assertEqual((settings["Unit"]["StartLimitIntervalSec"], settings["Service"]["RestartSec"]), ("0", "2"), file)
        self.assertEqual(self.settings("cardsong-kiosk.service")["Service"]["Restart"], "always")

    def test_the_mount_point_of_the_card_is_the_player_s_card(self):
        where = re.search("^Where=(.*)$", (KIOSK / "media-card.mount").read_text(encoding="utf-8"), re.M).group(1)
        card = re.search("^CARDSONG_CARD=(.*)$", (KIOSK / "kiosk.conf").read_text(encoding="utf-8"), re.M).group(1)
        self.assertEqual(where, card)
        self.assertIn(f"CARDSONG_CARD:-{card}}}", (KIOSK / "cardsong-kiosk").read_text(encoding="utf-8"))

    # ---- the session ----

    def test_the_player_fills_the_screen_and_plays_the_card(self):
        status, calls = self.run_session(CARDSONG_OPTIONS="--rotate 90 --fill")
        self.assertEqual(status, 0)
        self.assertEqual(calls[1:], [f"cardsong --tell-exit --fullscreen --card {self.card} --rotate 90 --fill"])

    def test_a_mount_point_may_have_blanks(self):
        self.fake("cardsong", f'echo "its card: $4" >>"{self.log}"')
        self.assertEqual(self.run_session(CARDSONG_CARD="/media/my card")[1][-1], "its card: /media/my card")

    def test_without_a_word_the_usual_card_is_played_and_exit_starts_again(self):
        environment = self.environment()
        del environment["CARDSONG_CARD"]
        done = subprocess.run([self.bin / "cardsong-kiosk"], env=environment, capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(self.log.read_text(encoding="utf-8").splitlines()[1:],
                         ["cardsong --tell-exit --fullscreen --card /media/card"])

    def test_it_ends_with_the_status_of_the_player(self):
        self.assertEqual(self.run_session(FAKE_STATUS="3")[0], 3)

    def test_without_a_screen_it_fails_even_after_a_session_that_did_not(self):
        self.assertEqual(self.run_session()[0], 0)
        self.fake("cage", "exit 0")
        self.assertEqual(self.run_session()[0], 1)

    def test_the_exit_key_starts_again(self):
        status, calls = self.run_session(FAKE_STATUS=EXIT_WAS_PRESSED)
        self.assertEqual((status, calls[2:]), (0, []))

    def test_the_exit_key_may_power_off(self):
        status, calls = self.run_session(CARDSONG_AT_EXIT="poweroff", FAKE_STATUS=EXIT_WAS_PRESSED)
        self.assertEqual((status, calls[2:]), (0, ["systemctl poweroff"]))

    def test_the_exit_key_may_power_off_with_a_card_on_which_nothing_lies(self):
        (self.card / "song.mp3").unlink()
        _, calls = self.run_session(CARDSONG_AT_EXIT="poweroff", FAKE_STATUS=EXIT_WAS_PRESSED)
        self.assertEqual(calls[2:], ["systemctl poweroff"])

    def test_a_player_that_ends_in_order_by_itself_powers_nothing_off(self):
        """One whose card is pulled out and put back before it ends, one that is told to end by a signal, and one that ends for
        songs that are opened elsewhere."""
        status, calls = self.run_session(CARDSONG_AT_EXIT="poweroff", FAKE_STATUS="0")
        self.assertEqual((status, calls[2:]), (0, []))

    def test_a_player_that_dies_of_a_signal_powers_nothing_off(self):
        self.fake("cardsong", "kill -KILL $$")
        status, calls = self.run_session(CARDSONG_AT_EXIT="poweroff")
        self.assertEqual((status, calls[2:]), (128 + signal.SIGKILL, []))

    def test_an_exit_of_the_session_before_powers_nothing_off(self):
        self.run_session(FAKE_STATUS=EXIT_WAS_PRESSED)
        self.fake("cage", "exit 0")
        status, calls = self.run_session(CARDSONG_AT_EXIT="poweroff")
        self.assertEqual((status, calls[3:]), (1, []))

    def test_a_player_that_fails_powers_nothing_off(self):
        self.assertEqual(len(self.run_session(CARDSONG_AT_EXIT="poweroff", FAKE_STATUS="1")[1]), 2)

    def test_the_configuration_names_what_the_session_reads(self):
        session = (KIOSK / "cardsong-kiosk").read_text(encoding="utf-8")
        configured = re.findall("^(CARDSONG_[A-Z_]+)=", (KIOSK / "kiosk.conf").read_text(encoding="utf-8"), re.M)
        self.assertEqual(sorted(configured), sorted(set(re.findall("CARDSONG_[A-Z_]+", session))))

    def test_the_play_key_of_a_new_unit_plays(self):
        configured = re.search("^CARDSONG_OPTIONS=(.*)$", (KIOSK / "kiosk.conf").read_text(encoding="utf-8"), re.M).group(1)
        self.assertIn("--fill", configured.split())

    # ---- the log-in ----

    def log_in(self, terminal):
        self.fake("tty", f"echo {terminal}")
        subprocess.run(["sh", KIOSK / "profile"], env=self.environment(), check=True)
        return [call for call in self.log.read_text(encoding="utf-8").splitlines() if not call.startswith("tty")]

    def test_a_log_in_at_the_panel_starts_the_player(self):
        self.assertEqual(self.log_in("/dev/tty1"),
                         ["systemctl --user import-environment XDG_SESSION_ID XDG_SEAT XDG_VTNR",
                          "systemctl --user start --wait cardsong-kiosk.service"])

    def test_a_log_in_from_elsewhere_does_not(self):
        self.assertEqual(self.log_in("/dev/pts/0"), [])

    # ---- the page ----

    def test_the_page_names_what_the_bare_unit_lacks(self):
        line = re.search("apt install cage (.*)", PAGE.read_text(encoding="utf-8"))[1].split()
        # Cage ends without Xwayland and asks for no package that has it; without a sound server songs go to ALSA.
        for package in ("xwayland", "libgl1-mesa-dri", "gstreamer1.0-alsa", "dbus-user-session", "libpam-systemd", "polkitd"):
            self.assertIn(package, line)

    def test_the_page_installs_the_packages_that_are_made_here(self):
        named = re.findall(r"apt install (.*)", PAGE.read_text(encoding="utf-8"))
        ours = [word for words in named for word in words.split() if "cardsong" in word]
        self.assertEqual(ours, ["./cardsong_*.deb", "./cardsong-data_*.deb"])

    def test_the_page_tells_how_to_stop_what_starts_itself(self):
        page = PAGE.read_text(encoding="utf-8")
        self.assertRegex(page, r"systemctl stop getty@tty1 .*\n *systemctl --user stop cardsong-kiosk")
        for words in ("mkdir -p /etc/systemd/system/getty@tty1.service.d", "systemctl reenable media-card.mount"):
            self.assertIn(words, page)

    def test_the_page_tells_of_every_file(self):
        page = PAGE.read_text(encoding="utf-8")
        for file in KIOSK.iterdir():
            if file.name != "CMakeLists.txt":
                self.assertRegex(page, rf"[ `]{re.escape(file.name)}[ `]")


if __name__ == "__main__":
    unittest.main()
