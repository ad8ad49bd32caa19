#!/usr/bin/env python3
"""Runs the session of packaging/kiosk under its compositor, whose screen is a window that fills an X server's: the player fills
it, turned as the configuration says. When all of a session is told to end, as systemd does, the play list is saved. A card that
is pulled out ends the session in order, and the next one plays on when the card is back. The power goes off for the exit key, and
for no other end of the player.

kiosk.py PROGRAM CONTROL ROOT     exit status 0, or 1 with a line that says what did not happen

The compositor refuses to run as root, who lends it an ordinary user.
"""

import contextlib
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile

from ear import Failure, wait_for
from stage import Stage, make_tones
from turned import PATIENCE_S, Panel, own_pictures

NOBODY = 65534
NO_SCREEN = 1
SCREEN = "1024x768"
TURN, SHOWN_AT = 90, (640, 480)
OK_BUTTON = (230, 217)
EXIT_KEY = (50, 224)


class Unit:
    """A unit's files in a temporary folder, of its user."""

    def __init__(self, stage, root, program, control, kiosk):
        self.stage, self.root, self.sessions = stage, root, []
        self.user = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
        self.bin, self.card = root / "home/.local/bin", root / "card"
        for folder in (self.bin, root / "run"):
            folder.mkdir(parents=True)
        for file in (program, control, kiosk / "cardsong-kiosk"):
            shutil.copy(file, self.bin)
        shutil.copytree(program.parent / "device/tree", self.bin / "device/tree")
        (self.bin / "systemctl").write_text(f'#!/bin/sh\necho "$*" >>"{root}/home/asked"\n', encoding="utf-8")
        (self.bin / "systemctl").chmod(0o755)
        shutil.copytree(stage.root / "card", self.card)
        (root / "run").chmod(0o700)
        self.environment = {
            "HOME": str(root / "home"), "XDG_RUNTIME_DIR": str(root / "run"), "PATH": f"{self.bin}:{os.environ['PATH']}",
            "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman", "CARDSONG_CARD": str(self.card),
            "CARDSONG_OPTIONS": f"--language en --audio-sink null --fill --rotate {TURN}",
        }
        if self.user:
            for path in (root, *root.rglob("*")):
                os.chown(path, NOBODY, NOBODY)
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE, text=True)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        bus.stdout.close()

    def start(self, command, **options):
        return self.stage.start(command, extra=self.environment, start_new_session=True, stderr=subprocess.DEVNULL, **self.user,
                                **options)

    def start_session(self):
        session = self.start([self.bin / "cardsong-kiosk"], stdout=subprocess.DEVNULL)
        self.sessions.append(session)
        wait_for("the player answers", self.status, PATIENCE_S)
        return session

    def end_sessions(self):
        """A session that a failed test leaves has a compositor and a player of its own."""
        for session in self.sessions:
            with contextlib.suppress(ProcessLookupError):
                os.killpg(session.pid, signal.SIGKILL)

    def control(self, *words):
        return subprocess.run([self.bin / "cardsongctl", *words], env=self.stage.environment | self.environment,
                              capture_output=True, timeout=PATIENCE_S, **self.user)

    def status(self):
        done = self.control("status", "--json")
        return json.loads(done.stdout) if done.returncode == 0 else None

    def play(self):
        self.control("play")
        wait_for("the player plays", lambda: (self.status() or {}).get("state") == "playing", PATIENCE_S)

    def pull_card(self):
        """Leaves an empty mount point."""
        self.card.rename(self.root / "away")
        self.card.mkdir()

    def put_card(self):
        self.card.rmdir()
        (self.root / "away").rename(self.card)

    def asked_of_the_system(self):
        file = self.root / "home/asked"
        return file.read_text(encoding="utf-8").splitlines() if file.exists() else []

    def player(self):
        """The process that plays."""
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):
                if os.readlink(folder / "exe") == str(self.bin / "cardsong"):
                    return int(folder.name)
        raise Failure("no player runs")

    def saved_list(self):
        file = self.root / "home/.local/share/cardsong/Windows/play_list.txt"
        return file.read_text("utf-16-le") if file.exists() else ""


def save_the_list_when_all_is_told_to_end(unit, panel, picture):
    session = unit.start_session()
    panel.await_picture("the main window", picture, TURN, SHOWN_AT)
    unit.play()  # fills the list
    if unit.saved_list():
        raise Failure("the play list is saved before the end: this test would see nothing")
    os.killpg(session.pid, signal.SIGTERM)
    session.wait(PATIENCE_S)
    wait_for("the play list is saved", lambda: "tone" in unit.saved_list(), PATIENCE_S)
    print("ok: the player fills the screen, turned, and its list outlives the end of the unit", flush=True)


def end_in_order_without_a_card(unit, panel):
    session = unit.start_session()
    unit.play()
    unit.pull_card()
    wait_for("the notice is answered", lambda: panel.tap(OK_BUTTON, TURN, SHOWN_AT) or session.poll() is not None, PATIENCE_S)
    if session.returncode != 0:
        raise Failure(f"without its card the session ended with status {session.returncode}")
    if "tone" not in unit.saved_list():
        raise Failure(f"the list went with the card: {unit.saved_list()!r}")
    print("ok: a session whose card is pulled out ends in order", flush=True)


def play_on_with_the_card_back(unit, panel, picture):
    session = unit.start_session()
    panel.await_picture("the main window without a card", picture, TURN, SHOWN_AT)
    unit.put_card()
    unit.play()
    song = unit.status()["song"]
    if song != "01.tone":
        raise Failure(f"it plays {song}")
    os.killpg(session.pid, signal.SIGTERM)
    session.wait(PATIENCE_S)
    print("ok: the next session plays on when the card is back", flush=True)


def tap_until_the_end(unit, panel, session, place):
    wait_for("the session ends", lambda: panel.tap(place, TURN, SHOWN_AT) or session.poll() is not None, PATIENCE_S)
    if session.returncode != 0:
        raise Failure(f"the session ended with status {session.returncode}")


def power_off_for_the_exit_key_alone(unit, panel, picture):
    """A card that is back before the notice is answered, and an end that the player is told to make, are no wish of the user's."""
    unit.environment["CARDSONG_AT_EXIT"] = "poweroff"
    session = unit.start_session()
    unit.play()
    unit.pull_card()
    wait_for("the song stops", lambda: (unit.status() or {}).get("state") != "playing", PATIENCE_S)
    unit.put_card()
    tap_until_the_end(unit, panel, session, OK_BUTTON)
    session = unit.start_session()
    os.kill(unit.player(), signal.SIGTERM)
    session.wait(PATIENCE_S)
    if session.returncode != 0:
        raise Failure(f"told to end, the session ended with status {session.returncode}")
    if unit.asked_of_the_system():
        raise Failure(f"nobody pressed exit, and the system was asked to {unit.asked_of_the_system()}")
    session = unit.start_session()
    panel.await_picture("the main window of a unit that powers off", picture, TURN, SHOWN_AT)
    tap_until_the_end(unit, panel, session, EXIT_KEY)
    if unit.asked_of_the_system() != ["poweroff"]:
        raise Failure(f"for the exit key the system was asked to {unit.asked_of_the_system()}")
    print("ok: the exit key powers off, a card that was away and an end from outside do not", flush=True)


def refuse_root(kiosk, folder):
    """Else the screen would belong to a player that may do anything."""
    done = subprocess.run([kiosk / "cardsong-kiosk"], capture_output=True, text=True, timeout=PATIENCE_S,
                          env={"PATH": os.environ["PATH"], "XDG_RUNTIME_DIR": folder})
    if done.returncode != NO_SCREEN or "root" not in done.stderr:
        raise Failure(f"as root the session ended with status {done.returncode} and said: {done.stderr}")
    print("ok: root gets no session", flush=True)


def main():
    program, control, root = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
    kiosk = root / "packaging/kiosk"
    with Stage() as stage, tempfile.TemporaryDirectory(prefix="cardsong-kiosk-") as folder, stage.screen_of(SCREEN):
        if os.geteuid() == 0:
            refuse_root(kiosk, folder)
        pathlib.Path(folder).chmod(0o755)
        make_tones(stage.root / "card/tone.mp3", [(440, 30)])
        picture = own_pictures(program, stage)[0]
        unit = Unit(stage, pathlib.Path(folder) / "unit", program, control, kiosk)
        panel = Panel(stage, SCREEN)
        try:
            save_the_list_when_all_is_told_to_end(unit, panel, picture)
            end_in_order_without_a_card(unit, panel)
            play_on_with_the_card_back(unit, panel, picture)
            power_off_for_the_exit_key_alone(unit, panel, picture)
        finally:
            unit.end_sessions()


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
