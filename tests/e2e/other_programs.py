#!/usr/bin/env python3
"""The player among other programs of its device, on a message bus that only this test has: a second start, the control
program, strangers' messages, and a bus that is missing, dies or hangs.

other_programs.py PROGRAM CONTROL SONG [PAIRS]     exit status 0, or 1 with a line that says what did not happen
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

NAMES = ("a.mp3", "b.mp3", "c.mp3")
SONG_REPEATS = 40  # long enough to outlast each run
PAIRS = 50
PATIENCE_S = 30
ALONE = "cardsong: no message bus: other programs cannot reach this one\n"


class Stage:
    """A bus, devices, a card, and the programs on them."""

    def __init__(self, program, control, song):
        self.program, self.control = program, control
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="cardsong-bus-"))
        self.processes = []
        self.bus = Bus()
        (self.root / "card").mkdir()
        for name in NAMES:
            (self.root / "card" / name).write_bytes(song * SONG_REPEATS)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in self.processes:
            if process.poll() is None:
                process.send_signal(signal.SIGCONT)
                process.kill()
                process.communicate()
        self.bus.end()
        shutil.rmtree(self.root)

    def environment(self, bus=True):
        kept = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH", "ASAN_OPTIONS") if name in os.environ}
        address = self.bus.address if bus else f"unix:path={self.root}/no-bus"
        return kept | {"HOME": str(self.root), "LANG": "C.UTF-8", "LSAN_OPTIONS": "print_suppressions=0",
                       "DBUS_SESSION_BUS_ADDRESS": address}

    def start(self, *options, device="device", bus=True):
        process = subprocess.Popen(
            [self.program, "--headless", "--audio-sink=null", "--fill", "--language=en", "--device", self.root / device,
             "--card", self.root / "card", *options], env=self.environment(bus), text=True,
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        self.processes.append(process)
        return process

    def ask(self, *arguments, device="device", bus=True):
        """Exit status, output, complaints."""
        done = subprocess.run([self.control, *arguments, "--device", self.root / device], env=self.environment(bus),
                              capture_output=True, text=True, timeout=PATIENCE_S)
        return done.returncode, done.stdout, done.stderr

    def status(self, device="device"):
        status, out, _ = self.ask("status", "--json", device=device)
        return json.loads(out) if status == 0 else None

    def await_player(self, device="device"):
        wait_for("the player answers", lambda: self.status(device))

    def do(self, *arguments, device="device"):
        result = self.ask(*arguments, device=device)
        if result != (0, "", ""):
            raise Failure(f"cardsongctl {' '.join(arguments)}: {result}")

    def await_status(self, what, **expected):
        def is_so():
            status = self.status()
            return status is not None and all(status[name] == value for name, value in expected.items())
        wait_for(what, is_so)

    def emit(self, member, *arguments):
        identity = (self.root / "device").stat()
        subprocess.run(["dbus-send", "--session", "--type=signal", "/org/cardsong/Device",
                        f"org.cardsong.Device1.{member}", f"string:{identity.st_dev}-{identity.st_ino}", *arguments],
                       env=self.environment(), check=True)


def expect_end(process, complaint=""):
    _, errors = process.communicate(timeout=PATIENCE_S)
    if (process.returncode, errors) != (0, complaint):
        raise Failure(f"the program ended with {process.returncode}: {errors!r}")


def end(process, complaint=""):
    process.send_signal(signal.SIGTERM)
    expect_end(process, complaint)


def expect(what, found, expected):
    if found != expected:
        raise Failure(f"{what}: {found!r}, not {expected!r}")


def every_command_does_what_it_says(stage):
    player = stage.start()
    stage.await_player()
    expect("a stopped player", stage.status(), {"state": "stopped", "song": "", "number": 0, "count": 0, "position_ms": 0,
                                                "length_ms": 0, "shuffle": False, "repeat": "off"})
    stage.do("pause")
    stage.await_status("pause leaves a stopped player alone", state="stopped")
    stage.do("play")
    stage.await_status("play begins", state="playing", song="01.a", number=1, count=3)
    stage.do("play")
    stage.await_status("play lets a player play", state="playing", number=1)
    stage.do("pause")
    stage.await_status("pause pauses", state="paused", number=1)
    stage.do("pause")
    stage.await_status("pause stays paused", state="paused", number=1)
    stage.do("play")
    stage.do("next")
    stage.await_status("next steps", state="playing", song="02.b", number=2)
    stage.do("previous")
    stage.await_status("previous steps back", state="playing", number=1)
    lines = stage.ask("status")[1].splitlines()
    expect("the first lines for people", lines[:2], ["state: playing", "song: 01.a"])
    for command in (("are-you-me",), ("lyrics-changed",), ("audio-state", "0")):
        stage.do(*command)
    stage.await_status("news of others change nothing", state="playing", number=1)
    stage.do("stop")
    stage.await_status("stop stops", state="stopped", number=0, count=3)
    stage.do("mass-storage")
    expect_end(player)
    expect("status without a player", stage.ask("status"), (1, "", f"cardsongctl: no player runs for {stage.root}/device\n"))


def lyrics_settings_are_read_again_when_they_changed(stage):
    player = stage.start()
    stage.await_player()
    key = r"SOFTWARE\Microsoft\LyricsSetting"
    expect("the setting that the player wrote", stage.ask("registry", "get", key, "Play Color"), (0, "RGB(0,0,0)\n", ""))
    shutil.rmtree(stage.root / "device/My Documents/Lyrics")
    stage.do("lyrics-changed")
    wait_for("the player reads the settings again", lambda: (stage.root / "device/My Documents/Lyrics").is_dir())
    end(player)


def the_registry_is_read_and_written_without_a_player(stage):
    stage.do("registry", "set", r"TAVO\AudioManagement", "Priority", "dword:0x3")
    expect("a number", stage.ask("registry", "get", r"TAVO\AudioManagement", "Priority"), (0, "3\n", ""))
    stage.do("registry", "set", r"Test\Key", "Name", "text:dword:歌")
    expect("a text", stage.ask("registry", "get", r"Test\Key", "Name"), (0, "dword:歌\n", ""))
    stage.do("registry", "set", r"Test\Key", "a\tb", r"c\d")
    stage.do("registry", "set", r"Test\Key\Below", "", "1")
    expect("a list", stage.ask("registry", "list", r"test\key"), (0, "Below\\\nName\tdword:歌\na\\tb\tc\\\\d\n", ""))
    expect("no key", stage.ask("registry", "list", r"Test\None"), (1, "", "cardsongctl: no such key\n"))
    expect("no value", stage.ask("registry", "get", r"Test\Key", "None"), (1, "", "cardsongctl: no such value\n"))


def a_second_start_calls_the_first_and_ends(stage):
    first = stage.start("--keys", "Enter")
    stage.await_status("the first plays", state="playing")
    expect_end(stage.start())
    stage.await_status("the first goes on", state="playing", number=1)
    end(first)
    third = stage.start()
    stage.await_player()
    end(third)


def of_two_started_together_one_survives(stage, pairs):
    for number in range(pairs):
        pair = [stage.start(), stage.start()]
        wait_for(f"one of pair {number} ends", lambda: any(player.poll() is not None for player in pair))
        stage.await_player()
        running = [player for player in pair if player.poll() is None]
        expect(f"survivors of pair {number}", len(running), 1)
        for player in pair:
            end(player) if player in running else expect_end(player)


def a_crashed_player_is_not_in_the_way(stage):
    crashed = stage.start()
    stage.await_player()
    crashed.kill()
    crashed.communicate()
    expect("status after the crash", stage.ask("status")[0], 1)
    player = stage.start()
    stage.await_player()
    end(player)


def players_of_two_devices_do_not_meet(stage):
    here, there = stage.start(), stage.start(device="other")
    stage.await_player()
    stage.await_player("other")
    stage.do("play", device="other")
    wait_for("the other plays", lambda: stage.status("other")["state"] == "playing")
    expect("the one that was not asked", stage.status()["state"], "stopped")
    stage.do("mass-storage", device="other")
    expect_end(there)
    stage.await_player()
    end(here)


def strangers_can_command_and_do_no_harm(stage):
    player = stage.start("--keys", "Enter")
    stage.await_status("the player plays", state="playing")
    for member, arguments in (
            ("Command", ["string:audioplayer", "int32:260"]), ("Command", ["string:", "uint64:260"]),
            ("Command", ["string:nobody", "uint64:260"]), ("Message", []),
            ("Message", ["string:", "string:No Such Message", "uint64:1", "int64:2"]),
            ("Message", ["string:audioplayer", "string:" + "x" * 10000, "uint64:1", "int64:2"]),
            ("Message", ["string:", "string:CARDSONG_STATUS_REQUEST", "uint64:18446744073709551615", "int64:-1"])):
        stage.emit(member, *arguments)
    stage.await_status("the player plays on", state="playing", number=1)
    stage.emit("Command", "string:AUDIOPLAYER", "uint64:260")
    stage.await_status("a stranger stops the player", state="stopped")
    end(player)


def without_a_bus_the_player_is_alone(stage):
    first = stage.start(bus=False)
    wait_for("the player holds its device", lambda: stage.ask("status", bus=False)[2].startswith("cardsongctl: the player"))
    expect("a command", stage.ask("next", bus=False), (1, "", "cardsongctl: the player cannot be reached: no message bus\n"))
    expect_end(stage.start(bus=False),
               f"cardsong: a player for {stage.root}/device runs, and could not be called: no message bus\n")
    end(first, ALONE)


def a_bus_that_dies_is_no_loss(stage):
    player = stage.start("--keys", "Enter")
    stage.await_status("the player plays", state="playing")
    stage.bus.end()
    expect("a command", stage.ask("next")[0], 1)
    if player.poll() is not None:
        raise Failure("the player ended with its bus")
    end(player, ALONE)


def a_bus_that_hangs_holds_nobody(stage):
    stage.bus.send(signal.SIGSTOP)
    player = stage.start("--keys", "Enter wait:500 tap:89,183 Enter wait:500 Exit")
    expect_end(player)
    stage.bus.send(signal.SIGCONT)
    player = stage.start("--keys", "Enter")
    stage.await_status("the player plays", state="playing")
    stage.bus.send(signal.SIGSTOP)
    expect("a command", stage.ask("stop"), (1, "", "cardsongctl: the player cannot be reached: no message bus\n"))
    end(player)


def a_player_that_hangs_is_told_so(stage):
    player = stage.start()
    stage.await_player()
    player.send_signal(signal.SIGSTOP)
    expect("status", stage.ask("status"), (1, "", "cardsongctl: the player does not answer\n"))
    player.send_signal(signal.SIGCONT)
    stage.await_player()
    end(player)


def main():
    program, control = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    song = pathlib.Path(sys.argv[3]).read_bytes()
    pairs = int(sys.argv[4]) if len(sys.argv) > 4 else PAIRS
    for case in (every_command_does_what_it_says, lyrics_settings_are_read_again_when_they_changed,
                 the_registry_is_read_and_written_without_a_player, a_second_start_calls_the_first_and_ends,
                 lambda stage: of_two_started_together_one_survives(stage, pairs), a_crashed_player_is_not_in_the_way,
                 players_of_two_devices_do_not_meet, strangers_can_command_and_do_no_harm,
                 without_a_bus_the_player_is_alone, a_bus_that_dies_is_no_loss, a_bus_that_hangs_holds_nobody,
                 a_player_that_hangs_is_told_so):
        with Stage(program, control, song) as stage:
            try:
                case(stage)
            except Failure as failure:
                raise Failure(f"{case.__name__}: {failure}") from None


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: the player and its neighbours")
