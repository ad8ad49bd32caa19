#!/usr/bin/env python3
"""Listens to alerts: the one of a player without a card, answered and left alone, and one of a low battery.

alert_sounds.py SHOW_ALERT PLAYER INSTALLED     exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import subprocess
import sys

from ear import Failure, wait_for
from short_sounds import make_sound
from stage import Stage, Window

OK_BUTTON = (230, 217)
INFO_HZ, LOW_BATTERY_HZ = 500, 900


def start_without_card(stage, player):
    process = stage.start_player(player, "--card", stage.root / "nowhere")
    return process, Window(stage, process)


def is_answered(stage, ear, player):
    process, window = start_without_card(stage, player)
    ear.expect_tone("no card: the info sound", INFO_HZ)
    window.tap(*OK_BUTTON)
    wait_for("OK ends the player", lambda: process.poll() is not None, 3)
    ear.expect_silence("and its sound")


def closes_by_itself(stage, ear, player):
    process, _ = start_without_card(stage, player)
    ear.expect_tone("no card again: the info sound", INFO_HZ)
    wait_for("the alert closes by itself and ends the player", lambda: process.poll() is not None, 8)
    if process.returncode != 0:
        raise Failure(f"the player ended with status {process.returncode}")
    ear.expect_silence("and its sound")


def warns_of_the_battery(stage, ear, program, installed):
    process = stage.start([program, stage.root / "device", installed, "1"], stdin=subprocess.PIPE,
                          extra={"ASAN_OPTIONS": "detect_leaks=0"})  # the font library keeps what it read
    ear.expect_tone("the battery: its own sound", LOW_BATTERY_HZ)
    process.stdin.close()
    wait_for("the alert is closed", lambda: process.poll() is not None, 5)
    if process.returncode != 0:
        raise Failure(f"the alert's program ended with status {process.returncode}")
    ear.expect_silence("and its sound")


def main():
    program, player, installed = (pathlib.Path(name).resolve() for name in sys.argv[1:4])
    with Stage() as stage:
        windows = stage.root / "device/Windows"
        windows.mkdir()
        make_sound(windows / "TAVO_Audio_InfoMessage.wav", INFO_HZ, 20)
        make_sound(windows / "TAVO_Audio_LowBattery.WAV", LOW_BATTERY_HZ, 20)
        ear = stage.listen()
        ear.expect_silence("before an alert")
        is_answered(stage, ear, player)
        closes_by_itself(stage, ear, player)
        warns_of_the_battery(stage, ear, program, installed)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: alerts are heard while they show")
