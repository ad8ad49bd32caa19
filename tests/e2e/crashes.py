#!/usr/bin/env python3
"""Kills the program at any moment of its start, its play and its end, and looks at the files that it keeps.

crashes.py PROGRAM SONG [COUNT]     exit status 0, or 1 with what was neither the old nor the new file. With
                                    CARDSONG_LONG set there are ten times as many kills.
"""

import itertools
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import time

from ear import Failure

COUNT = 20
PATIENCE_S = 60
SONG_REPEATS = 6
SONGS = [f"{number:04}.mp3" for number in range(1000)]  # a list of several blocks
BAD = ("bad 1.mp3", "bad 2.mp3")  # in which nothing is music: they leave the list, which so is saved anew
FULL = [BAD[0], *SONGS[:500], BAD[1], *SONGS[500:]]
LISTS = [[name for name in FULL if name not in gone]
         for count in range(len(BAD) + 1) for gone in itertools.combinations(BAD, count)]
KEYS = "Enter wait:150 Right wait:50 Left wait:50 Left wait:100 Exit"

# The registry as a start without settings finds it: it writes them one after the other, all of them before the last key.
LYRICS = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\LyricsSetting]"
LAST = "[HKEY_LOCAL_MACHINE\\Last]\nLast=dword:00000001\n"
REGISTRY = f"[HKEY_LOCAL_MACHINE\\TAVO\\TAVO_BACKDOOR]\n\n[HKEY_LOCAL_MACHINE\\TAVO\\AudioManagement]\n\n{LYRICS}\n\n{LAST}"
ENTRY = re.compile(r"[A-Z][A-Za-z ]*=(dword:[0-9a-f]{8}|text:RGB\(\d+,\d+,\d+\)|text:\\\\My Documents\\\\Lyrics)")

KEPT = {"audioplayer.lock", "starting.lock", "registry.ini", "registry.lock", "Windows/play_list.txt"}
UNFINISHED = {"registry.ini.new", "Windows/play_list.new"}


def list_bytes(names):
    return b"".join(f"{number}${name}$\\SDMMC$30".encode("utf-16-le") + b"\r\n" for number, name in enumerate(names, 1))


class Device:
    def __init__(self, program, song, root):
        self.program = program
        self.root = root
        self.folder = root / "device"
        self.registry = self.folder / "registry.ini"
        self.list = self.folder / "Windows/play_list.txt"
        (root / "card").mkdir()
        self.list.parent.mkdir(parents=True)
        first = root / "card" / SONGS[0]
        first.write_bytes(song * SONG_REPEATS)
        for name in SONGS[1:]:
            os.link(first, root / "card" / name)
        for name in BAD:
            (root / "card" / name).write_text("none")

    def put_back(self):
        self.registry.write_text(REGISTRY)
        self.list.write_bytes(list_bytes(FULL))

    def start(self):
        command = [self.program, "--headless", "--audio-sink=null", "--device", self.folder, "--card",
                   self.root / "card", "--run-for=30", "--keys", KEYS]
        return subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)

    def run(self):
        """Returns the seconds that a whole run takes."""
        begin = time.monotonic()
        process = self.start()
        _, said = process.communicate(timeout=PATIENCE_S)
        if process.returncode != 0:
            raise Failure(f"a whole run ended with status {process.returncode} and said: {said}")
        return time.monotonic() - begin

    def files(self):
        return {str(path.relative_to(self.folder)) for path in self.folder.rglob("*") if path.is_file()}

    def look(self):
        if self.list.read_bytes() not in map(list_bytes, LISTS):
            raise Failure(f"the list of {self.list.stat().st_size} bytes is none of the whole ones")
        text = self.registry.read_text()
        bad = [line for line in text.splitlines() if line and line[0] != "[" and not ENTRY.fullmatch(line)]
        if bad or not text.endswith(LAST) or LYRICS not in text:
            raise Failure(f"the registry is not whole: {text}")
        if strange := self.files() - KEPT - UNFINISHED:
            raise Failure(f"files were left behind: {strange}")


def kill_after(process, seconds):
    try:
        process.wait(seconds)
    except subprocess.TimeoutExpired:
        pass


def look_of(path):
    try:
        facts = path.stat()
    except FileNotFoundError:
        return None
    return facts.st_ino, facts.st_size, facts.st_mtime_ns


def kill_while_writing(process, paths):
    """At the first change of any of the files."""
    before = [look_of(path) for path in paths]
    while process.poll() is None and [look_of(path) for path in paths] == before:
        pass


def crash(device, number, whole_run_s, chance):
    """Returns whether the program was still there to be killed."""
    device.put_back()
    process = device.start()
    if number % 3 == 0:
        kill_after(process, chance.uniform(0, whole_run_s))
    else:
        file = (device.list, device.registry)[number % 3 - 1]
        kill_while_writing(process, (file, *(device.folder / name for name in UNFINISHED if file.stem in name)))
        time.sleep(chance.choice((0, 0, 0.001, 0.01)))  # in the file, and at what follows it
    was_there = process.poll() is None
    process.kill()
    process.communicate()
    device.look()
    return was_there


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    song = pathlib.Path(sys.argv[2]).read_bytes()
    count = int(sys.argv[3]) if len(sys.argv) > 3 else COUNT * (10 if os.environ.get("CARDSONG_LONG") else 1)
    seed = random.randrange(10 ** 9)
    chance = random.Random(seed)
    with tempfile.TemporaryDirectory(prefix="cardsong-crash-") as folder:
        device = Device(program, song, pathlib.Path(folder))
        device.put_back()
        whole_run_s = device.run()
        device.look()
        if device.list.read_bytes() == list_bytes(FULL) or device.registry.read_text() == REGISTRY:
            raise Failure("a whole run changes nothing: there is nothing to spoil")
        killed = 0
        try:
            for number in range(count):
                killed += crash(device, number, whole_run_s, chance)
            if 2 * killed < count:
                raise Failure(f"only {killed} of {count} runs were killed")
            device.put_back()
            device.run()
            device.look()
            if left := device.files() & UNFINISHED:
                raise Failure(f"a whole run after the crashes leaves {left}")
        except Failure as failure:
            raise Failure(f"{failure} (seed {seed})") from None
    print(f"ok: every file was whole after {killed} kills in {count} runs")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
