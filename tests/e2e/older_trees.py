#!/usr/bin/env python3
"""Plays from a user's tree that an older version left: the list and the settings are still there, and stay.

older_trees.py PROGRAM CONTROL TREES SONG     exit status 0, or 1 with a line that says what was lost
"""

import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile

from bus import Bus
from ear import Failure, wait_for

CARD = ["00 demo tone.mp3", "01 second tone.mp3", "Music/Folk/Auld Lang Syne.MP3", "Music/茉莉花.mp3"]
SONG_REPEATS = 40  # long enough to outlast each run
LISTS = {"first": ["01.00 demo tone", "02.01 second tone", "03.auld lang syne", "04.茉莉花"],
         "0.1.0": ["01.00 demo tone", "02.auld lang syne", "03.茉莉花"]}
SETTINGS = {"first": {("TAVO\\TAVO_BACKDOOR", "Activate"): "0"},
            "0.1.0": {("TAVO\\AudioManagement", "Priority"): "2", ("TAVO\\Songs", "Place"): "歌"}}
DROP_THE_FIRST = "wait:500 List wait:1000 tap:100,40 wait:500 tap:80,225 wait:500 Exit wait:500 Exit"  # the first Exit closes the list
PATIENCE_S = 60


class Update:
    """One old tree under the new programs."""

    def __init__(self, root, program, control, bus):
        self.device, self.card = root / "device", root / "card"
        self.program, self.control = program, control
        kept = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH", "ASAN_OPTIONS") if name in os.environ}
        self.environment = kept | {"HOME": str(root), "LANG": "C.UTF-8", "LSAN_OPTIONS": "print_suppressions=0",
                                   "DBUS_SESSION_BUS_ADDRESS": bus.address}

    def start(self, *options):
        return subprocess.Popen([self.program, "--headless", "--audio-sink=null", "--language=en", "--device", self.device,
                                 "--card", self.card, *options], env=self.environment)

    def ask(self, *arguments):
        done = subprocess.run([self.control, *arguments, "--device", self.device], env=self.environment,
                              capture_output=True, text=True, timeout=PATIENCE_S)
        return done.stdout if done.returncode == 0 else ""

    def status(self):
        return json.loads(self.ask("status", "--json") or "{}")

    def await_song(self, number, song):
        def plays():
            status = self.status()
            return (status.get("state"), status.get("number"), status.get("song")) == ("playing", number, song)
        wait_for(f"song {number} is {song}", plays)

    def play_through(self, songs):
        player = self.start()
        try:
            wait_for("the player answers", self.status)
            self.ask("play")
            for number, song in enumerate(songs, 1):
                if number > 1:
                    self.ask("next")
                self.await_song(number, song)
            if self.status()["count"] != len(songs):
                raise Failure(f"the list has {self.status()['count']} songs")
            player.send_signal(signal.SIGTERM)
            self.expect_end(player)
        finally:
            player.kill()
            player.wait()

    def expect_end(self, player):
        try:
            if player.wait(PATIENCE_S) != 0:
                raise Failure(f"the player ended with status {player.returncode}")
        except subprocess.TimeoutExpired:
            player.kill()
            raise Failure("the player does not end") from None

    def expect_settings(self, settings):
        for (key, name), value in settings.items():
            found = self.ask("registry", "get", key, name)
            if found != value + "\n":
                raise Failure(f"the setting {key} {name} is {found!r}, not {value!r}")


def renumbered(songs):
    return [f"{number:02}.{song.partition('.')[2]}" for number, song in enumerate(songs, 1)]


def update(name, tree, song, programs, bus):
    with tempfile.TemporaryDirectory(prefix="cardsong-older-") as folder:
        root = pathlib.Path(folder)
        shutil.copytree(tree, root / "device")
        for path in CARD:
            (root / "card" / path).parent.mkdir(parents=True, exist_ok=True)
            (root / "card" / path).write_bytes(song * SONG_REPEATS)
        case = Update(root, *programs, bus)
        case.play_through(LISTS[name])
        play_list = "Windows/play_list.txt"
        if (case.device / play_list).read_bytes() != (tree / play_list).read_bytes():
            raise Failure("a list that nobody changed was written anew")
        case.expect_settings(SETTINGS[name])
        case.expect_end(case.start("--keys", DROP_THE_FIRST))
        case.play_through(renumbered(LISTS[name][1:]))
        case.expect_settings(SETTINGS[name])


def main():
    *programs, trees, song = (pathlib.Path(path).resolve() for path in sys.argv[1:5])
    found = sorted(path.name for path in trees.iterdir() if path.is_dir())
    if found != sorted(LISTS):
        raise Failure(f"the old trees are {found}, those known here {sorted(LISTS)}")
    bus = Bus()
    try:
        for name in LISTS:
            try:
                update(name, trees / name, song.read_bytes(), programs, bus)
            except Failure as failure:
                raise Failure(f"{name}: {failure}") from None
            print(f"ok: the tree {name} keeps its list and its settings", flush=True)
    finally:
        bus.end()


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
