#!/usr/bin/env python3
"""Shows the player on screens of several sizes and at every turn: the picture is whole and stands as asked for, a finger hits
the button that it sees, and a screenshot is never turned.

turned.py PROGRAM     exit status 0, or 1 with a line that says what was wrong. The Windows program refuses to turn.
"""

import fractions
import pathlib
import subprocess
import sys

from PIL import Image, ImageChops, ImageGrab

from ear import Failure, wait_for
from player_hands import MAIN, SOFT_KEYS
from stage import HEIGHT, WIDTH, Stage, make_tones, under_wine

BAD_OPTION = 2
PATIENCE_S = 20
LIST_KEY = (SOFT_KEYS[0][1] * MAIN.index("open_list") + SOFT_KEYS[0][1] // 2, 224)
CLOCKWISE = {90: Image.Transpose.ROTATE_270, 180: Image.Transpose.ROTATE_180, 270: Image.Transpose.ROTATE_90}
# A smaller picture has the screen's 65536 colours, too: half a step of red or blue, and one of rounding.
NEARLY = 5
# The screen, the wish, and the turn and the size of the picture, unturned, that come of it.
FULL_SCREENS = [
    ("240x320", None, 90, (320, 240)),
    ("240x320", 0, 0, (240, 180)),
    ("240x320", 90, 90, (320, 240)),
    ("240x320", 180, 180, (240, 180)),
    ("240x320", 270, 270, (320, 240)),
    ("160x120", None, 0, (160, 120)),
    ("160x120", 90, 90, (120, 90)),
    ("160x120", 180, 180, (160, 120)),
    ("160x120", 270, 270, (120, 90)),
    ("480x800", None, 0, (320, 240)),
    ("480x800", 90, 90, (640, 480)),
    ("480x800", 180, 180, (320, 240)),
    ("480x800", 270, 270, (640, 480)),
    ("320x240", None, 0, (320, 240)),
    ("320x240", 90, 90, (240, 180)),
    ("320x240", 180, 180, (320, 240)),
    ("320x240", 270, 270, (240, 180)),
]
# The screen, the options, the turn and the size of the window.
WINDOWS = [
    ("480x800", ["--scale", "2", "--rotate", "90"], 90, (480, 640)),
    ("240x320", [], 90, (240, 320)),
    ("160x120", [], 0, (160, 120)),
]


class Panel:
    """A screen without a desktop, on which the player runs; turns places and pictures on its own account."""

    def __init__(self, stage, size):
        self.stage = stage
        self.size = tuple(int(side) for side in size.split("x"))

    def look(self):
        return ImageGrab.grab(xdisplay=self.stage.environment["DISPLAY"]).convert("RGB")

    def expected(self, picture, turn, size):
        """The picture at `size`, turned, in the middle of black."""
        scale = fractions.Fraction(size[0], WIDTH)
        enlarged = [side * scale.numerator for side in picture.size]
        shown = picture.resize(enlarged, Image.Resampling.NEAREST).reduce(scale.denominator)
        if turn:
            shown = shown.transpose(CLOCKWISE[turn])
        whole = Image.new("RGB", self.size)
        whole.paste(shown, self.corner(shown.size))
        return whole, NEARLY if scale < 1 else 0

    def corner(self, turned_size):
        return tuple((side - length) // 2 for side, length in zip(self.size, turned_size))

    def await_picture(self, what, picture, turn, size):
        expected, tolerance = self.expected(picture, turn, size)

        def is_there():
            seen = self.look()
            worst = max(high for _, high in ImageChops.difference(seen, expected).getextrema())
            return seen.size == expected.size and worst <= tolerance

        wait_for(f"{what} on the screen of {self.size}, turned by {turn}, at {size}", is_there, PATIENCE_S)

    def tap(self, place, turn, size):
        """Where the eye sees `place` of the picture."""
        (x, y), (width, height) = (round(at * size[0] / WIDTH) for at in place), size
        x, y = {0: (x, y), 90: (height - 1 - y, x), 180: (width - 1 - x, height - 1 - y), 270: (y, width - 1 - x)}[turn]
        left, top = self.corner(size if turn in (0, 180) else size[::-1])
        self.stage.xdotool("mousemove", left + x, top + y, "mousedown", 1, "sleep", 0.05, "mouseup", 1)


def command_of(program, stage, name, *options):
    device = stage.root / f"device-{name}"
    command = under_wine(program) if program.suffix == ".exe" else [program]
    return [*command, "--device", device, "--card", stage.root / "card", "--language", "en", "--audio-sink", "null", *options]


def own_pictures(program, stage):
    """The main window and the play list, as a player without a display shows them."""
    paths = [stage.root / "main.png", stage.root / "list.png"]
    script = "wait:1500 shot:{} tap:{},{} wait:1500 shot:{} Exit Exit".format(paths[0], *LIST_KEY, paths[1])
    done = subprocess.run(command_of(program, stage, "headless", "--headless", "--rotate", "90", "--keys", script),
                          env=stage.environment, capture_output=True, text=True, timeout=60)
    if done.returncode != 0:
        raise Failure(f"without a display it ended with status {done.returncode}: {done.stderr}")
    pictures = [Image.open(path).convert("RGB") for path in paths]
    if any(picture.size != (WIDTH, HEIGHT) for picture in pictures) or pictures[0].tobytes() == pictures[1].tobytes():
        raise Failure("without a display its pictures are not the two windows")
    return pictures


def play(program, stage, panel, pictures, options, turn, size):
    name = "-".join(["x".join(map(str, panel.size)), *options])
    shot = stage.root / f"{name}.png"
    player = stage.start(command_of(program, stage, name, "--screenshot", shot, *options), stderr=subprocess.PIPE, text=True)
    panel.await_picture("the main window", pictures[0], turn, size)
    # At once: a tap in the very moment in which the window gets the focus is one, too.
    panel.tap(LIST_KEY, turn, size)
    panel.await_picture("the play list", pictures[1], turn, size)
    if turn == 90:
        expect_screenshot(player, shot, pictures[1])
    else:
        player.kill()  # an orderly end takes longer than all the rest
        player.communicate()
    print(f"ok: {name}", flush=True)


def expect_screenshot(player, shot, picture):
    player.terminate()
    _, complaints = player.communicate(timeout=PATIENCE_S)
    if (player.returncode, complaints) != (0, ""):
        raise Failure(f"{shot.stem}: ended with status {player.returncode}: {complaints}")
    if Image.open(shot).convert("RGB").tobytes() != picture.tobytes():
        raise Failure(f"{shot.stem}: the screenshot is not the picture as the player draws it")


def unturned(size, turn):
    return size if turn in (0, 180) else size[::-1]


def show_everywhere(program):
    with Stage() as stage:
        stage.start_bus()
        make_tones(stage.root / "card/tone.mp3", [(440, 2)])
        pictures = own_pictures(program, stage)
        for size in dict.fromkeys(row[0] for row in FULL_SCREENS):
            panel = Panel(stage, size)
            with stage.screen_of(size):
                for _, wish, turn, picture_size in (row for row in FULL_SCREENS if row[0] == size):
                    rotate = [] if wish is None else ["--rotate", str(wish)]
                    play(program, stage, panel, pictures, ["--fullscreen", *rotate], turn, picture_size)
                for _, options, turn, window_size in (row for row in WINDOWS if row[0] == size):
                    play(program, stage, panel, pictures, options, turn, unturned(window_size, turn))


def be_refused(program):
    with Stage() as stage:
        done = subprocess.run(command_of(program, stage, "turned", "--rotate", "90"), env=stage.environment,
                              capture_output=True, text=True, timeout=60)
        if done.returncode != BAD_OPTION or done.stderr.strip() != \
                "cardsong: --rotate: turn the screen itself, in the display settings of Windows":
            raise Failure(f"it ended with status {done.returncode} and said: {done.stderr}")


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    if program.suffix == ".exe":
        be_refused(program)
    else:
        show_everywhere(program)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
