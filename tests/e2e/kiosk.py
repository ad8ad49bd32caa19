#!/usr/bin/env python3
"""Runs the session of packaging/kiosk under a real compositor without a screen: the player plays, and when all of it is told to
end, as systemd does, the play list is saved.

kiosk.py PROGRAM CONTROL ROOT     exit status 0, or 1 with a line that says what did not happen

The compositor refuses to run as root; root lends the session an ordinary user.
"""

import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile

from ear import Failure, wait_for
from stage import make_tones

NOBODY = 65534
PATIENCE_S = 30
NO_SCREEN = 1
# A compositor with neither graphics card nor seat.
WITHOUT_SCREEN = {"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1"}


class Unit:
    """A unit's files in a temporary folder, of its user."""

    def __init__(self, root, program, control, kiosk):
        self.root = root
        self.processes = []
        self.user = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
        for folder in ("home/.local/bin", "run", "card"):
            (root / folder).mkdir(parents=True)
        self.bin = root / "home/.local/bin"
        for file in (program, control, kiosk / "cardsong-kiosk"):
            shutil.copy(file, self.bin)
        shutil.copytree(program.parent / "device/tree", self.bin / "device/tree")
        make_tones(root / "card/tone.mp3", [(440, 30)])
        (root / "run").chmod(0o700)
        kept = {name: os.environ[name] for name in ("LD_LIBRARY_PATH", "ASAN_OPTIONS") if name in os.environ}
        self.environment = kept | WITHOUT_SCREEN | {
            "HOME": str(root / "home"), "XDG_RUNTIME_DIR": str(root / "run"), "PATH": f"{self.bin}:{os.environ['PATH']}",
            "LANG": "C.UTF-8", "LSAN_OPTIONS": "print_suppressions=0", "CARDSONG_CARD": str(root / "card"),
        }
        if self.user:
            for path in (root, *root.rglob("*")):
                os.chown(path, NOBODY, NOBODY)

    def start(self, command, **options):
        process = subprocess.Popen(command, env=self.environment, start_new_session=True, **(self.user | options))
        self.processes.append(process)
        return process

    def start_bus(self):
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE,
                         stderr=subprocess.DEVNULL, text=True)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        bus.stdout.close()

    def run(self, *command, **more):
        return subprocess.run(command, env=self.environment | more, capture_output=True, timeout=PATIENCE_S, **self.user)

    def status(self):
        done = self.run(self.bin / "cardsongctl", "status", "--json")
        return json.loads(done.stdout) if done.returncode == 0 else None

    def end(self):
        for process in reversed(self.processes):
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()


def expect_list_saved_at_the_end(unit, session):
    unit.run(unit.bin / "cardsongctl", "play")
    wait_for("the player plays", lambda: (unit.status() or {}).get("state") == "playing", PATIENCE_S)
    play_list = unit.root / "home/.local/share/cardsong/Windows/play_list.txt"
    if play_list.exists():
        raise Failure("the play list is saved before the end: this test would see nothing")
    os.killpg(session.pid, signal.SIGTERM)
    session.wait(PATIENCE_S)
    wait_for("the play list is saved", lambda: play_list.exists() and "tone" in play_list.read_text("utf-16-le"), PATIENCE_S)
    print("ok: the play list outlives the end of the unit", flush=True)


def expect_refusal_as_root(kiosk, root):
    """Else the screen would belong to a player that may do anything."""
    done = subprocess.run([kiosk / "cardsong-kiosk"], capture_output=True, text=True, timeout=PATIENCE_S,
                          env=WITHOUT_SCREEN | {"PATH": os.environ["PATH"], "XDG_RUNTIME_DIR": str(root)})
    if done.returncode != NO_SCREEN or "root" not in done.stderr:
        raise Failure(f"as root the session ended with status {done.returncode} and said: {done.stderr}")
    print("ok: root gets no session", flush=True)


def main():
    program, control, root = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
    kiosk = root / "packaging/kiosk"
    with tempfile.TemporaryDirectory(prefix="cardsong-kiosk-") as folder:
        if os.geteuid() == 0:
            expect_refusal_as_root(kiosk, folder)
        pathlib.Path(folder).chmod(0o755)
        unit = Unit(pathlib.Path(folder) / "unit", program, control, kiosk)
        try:
            unit.start_bus()
            unit.environment["CARDSONG_OPTIONS"] = "--language en --audio-sink null --fill --rotate 90"
            session = unit.start([unit.bin / "cardsong-kiosk"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            wait_for("the player answers", unit.status, PATIENCE_S)
            expect_list_saved_at_the_end(unit, session)
        finally:
            unit.end()


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
