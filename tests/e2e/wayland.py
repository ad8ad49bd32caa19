#!/usr/bin/env python3
"""Shows the player on a Wayland desktop without a graphics card: its picture is the one that it draws, finger and keys work it,
and a compositor that dies, hangs or is not there spoils nothing.

wayland.py PROGRAM     exit status 0, or 1 with a line that says what was wrong

The compositor's own screen is a window that fills an X server's. It refuses to run as root, who lends it an ordinary user.
"""

import os
import pathlib
import signal
import socket
import subprocess
import sys
import tempfile

from ear import Failure, wait_for
from stage import Stage, make_tones
from turned import LIST_KEY, PATIENCE_S, Panel, command_of, expect_screenshot, own_pictures

NOBODY = 65534
SCREEN = "1024x768"
SHOWN_AT = (960, 720)  # three times as large
LOST = 3
NOT_OPENED = 1
END_S = 5  # far less than the compositor is stopped for


class Compositor:
    def __init__(self, stage):
        self.folder = tempfile.TemporaryDirectory(prefix="cardsong-wayland-")
        user = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
        if user:
            os.chown(self.folder.name, NOBODY, NOBODY)
        self.socket = pathlib.Path(self.folder.name) / "wayland-0"
        self.process = stage.start(["cage", "sleep", "600"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **user, extra={
            "XDG_RUNTIME_DIR": self.folder.name, "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman"})
        wait_for("the compositor stands by", lambda: self.socket.exists() or self.process.poll() is not None)
        if self.process.poll() is not None:
            raise Failure(f"the compositor ended with status {self.process.returncode}")

    def end(self):
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()
        self.folder.cleanup()


class Scene:
    """A player on a Wayland desktop, and nothing else there."""

    def __init__(self, program, stage, pictures):
        self.program, self.stage, self.pictures = program, stage, pictures
        self.panel = Panel(stage, SCREEN)
        self.compositor = Compositor(stage)

    def start(self, name, *options):
        return self.stage.start(command_of(self.program, self.stage, name, "--fill", *options), stderr=subprocess.PIPE, text=True,
                                extra={"WAYLAND_DISPLAY": str(self.compositor.socket), "DISPLAY": ""})

    def expect(self, what, picture, turn=0, size=SHOWN_AT):
        self.panel.await_picture(what, picture, turn, size)

    def press(self, key):
        self.stage.xdotool("key", key)  # goes to the window under the pointer


def works_by_touch_and_keys(scene):
    main, play_list = scene.pictures
    shot = scene.stage.root / "wayland.png"
    player = scene.start("works", "--screenshot", shot)
    scene.expect("the main window", main)
    scene.panel.tap(LIST_KEY, 0, SHOWN_AT)
    scene.expect("the play list after a tap", play_list)
    scene.press("Escape")
    scene.expect("the main window after a key", main)
    scene.press("l")
    scene.expect("the play list after a key", play_list)
    expect_screenshot(player, shot, play_list)


def turns(scene):
    main, play_list = scene.pictures
    size = (640, 480)
    player = scene.start("turned", "--rotate", "90")
    scene.expect("the main window", main, 90, size)
    scene.panel.tap(LIST_KEY, 90, size)
    scene.expect("the play list", play_list, 90, size)
    player.kill()
    player.communicate()


def outlives_a_compositor_that_hangs(scene):
    player = scene.start("hangs")
    scene.expect("the main window", scene.pictures[0])
    scene.compositor.process.send_signal(signal.SIGSTOP)
    try:
        player.terminate()
        _, complaints = player.communicate(timeout=END_S)
    finally:
        scene.compositor.process.send_signal(signal.SIGCONT)
    if (player.returncode, complaints) != (0, ""):
        raise Failure(f"it ended with status {player.returncode} and said: {complaints}")


def saves_its_list_when_the_compositor_dies(scene):
    ear = scene.stage.listen()
    player = scene.start("lost", "--audio-sink=")  # sound that can be heard
    scene.expect("the main window", scene.pictures[0])
    play_list = scene.stage.root / "device-lost/Windows/play_list.txt"
    scene.press("Return")  # fills the list
    if play_list.exists():
        raise Failure("the play list is saved before the player ends: this test would see nothing")
    ear.expect_tone("the player plays", 440)
    scene.compositor.end()
    _, complaints = player.communicate(timeout=PATIENCE_S)
    if (player.returncode, complaints) != (LOST, "cardsong: the display went away; the play list is saved\n"):
        raise Failure(f"it ended with status {player.returncode} and said: {complaints}")
    saved = play_list.read_bytes().decode("utf-16", "replace") if play_list.exists() else ""
    if "tone.mp3" not in saved:
        raise Failure(f"the play list was not saved: {saved!r}")


def says_which_display_is_missing(scene):
    for display in ("", ":4711"):
        done = subprocess.run(command_of(scene.program, scene.stage, "missing"), capture_output=True, text=True, timeout=PATIENCE_S,
                              env=scene.stage.environment | {"WAYLAND_DISPLAY": "wayland-7", "DISPLAY": display})
        start = "cardsong: cannot open the Wayland display wayland-7: No such file or directory"
        is_told = done.stderr == start + "\n" if not display else done.stderr.startswith(start + "; ")
        if done.returncode != NOT_OPENED or not is_told or done.stderr.count("\n") != 1:
            raise Failure(f"for {display!r} it ended with status {done.returncode} and said: {done.stderr}")


def shows_on_x_where_there_is_no_wayland(scene):
    player = scene.stage.start(command_of(scene.program, scene.stage, "on-x", "--scale", "3"), stderr=subprocess.PIPE, text=True,
                               extra={"WAYLAND_DISPLAY": "wayland-7"})
    scene.expect("the main window on X", scene.pictures[0])
    player.terminate()
    _, complaints = player.communicate(timeout=PATIENCE_S)
    if (player.returncode, complaints) != (0, ""):
        raise Failure(f"it ended with status {player.returncode} and said: {complaints}")


def shows_on_x_where_wayland_does_not_answer(scene):
    """By then the player has drawn its picture and rests: nothing makes it draw anew."""
    path = scene.stage.root / "silent"
    with socket.socket(socket.AF_UNIX) as silent:
        silent.bind(str(path))
        silent.listen()
        player = scene.stage.start(command_of(scene.program, scene.stage, "silent", "--scale", "3"), stderr=subprocess.PIPE, text=True,
                                   extra={"WAYLAND_DISPLAY": str(path)})
        scene.expect("the main window on X after a while", scene.pictures[0])
        player.terminate()
        _, complaints = player.communicate(timeout=PATIENCE_S)
    if (player.returncode, complaints) != (0, ""):
        raise Failure(f"it ended with status {player.returncode} and said: {complaints}")


CASES = (works_by_touch_and_keys, turns, outlives_a_compositor_that_hangs, saves_its_list_when_the_compositor_dies,
         says_which_display_is_missing, shows_on_x_where_there_is_no_wayland, shows_on_x_where_wayland_does_not_answer)


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    with Stage() as stage:
        stage.start_bus()
        make_tones(stage.root / "card/tone.mp3", [(440, 20)])
        pictures = own_pictures(program, stage)
        with stage.screen_of(SCREEN):
            scene = Scene(program, stage, pictures)
            for case in CASES:  # the compositor dies in one of the last
                try:
                    case(scene)
                except Failure as failure:
                    raise Failure(f"{case.__name__}: {failure}") from None
                print(f"ok: {case.__name__}", flush=True)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
