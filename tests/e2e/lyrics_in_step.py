#!/usr/bin/env python3
"""Plays a song of tones with a lyrics file whose lines change with the tones: the program's own reports, the picture of its
window and the sound of the loudspeaker have to agree.

lyrics_in_step.py PROGRAM     exit status 0, or 1 with a line that says what did not happen
"""

import array
import pathlib
import re
import subprocess
import sys
import threading
import time

from ear import RATE, Failure, frequency_hz, wait_for
from stage import Stage, Window, make_tones

LINES = [(440, 3), (660, 5), (880, 4), (550, 2), (770, 5), (990, 3)]  # Hz, seconds
MOST_MS_LATE = 150
MOST_MS_APART = 250
STRIP = (34, 45, 284, 115)
WHITE = 230
JUMP_PX = 15
BLOCK = RATE // 50


def starts():
    """Milliseconds at which each line begins."""
    at = 0
    for _, seconds in LINES:
        yield at * 1000
        at += seconds


def make_card(card):
    make_tones(card / "tones.mp3", LINES)
    # A thin letter for every line: one that has been sung stands in the middle of the room at the left, one that is sung comes
    # to the end of that room. So the first letter from the left jumps to the right when a line changes.
    text = "".join(f"[{ms // 60000:02d}:{ms // 1000 % 60:02d}.00]I\r\n" for ms in starts())
    (card / "tones.lrc").write_text(text)


class Recording:
    """What the loudspeaker plays, and when each sample came."""

    def __init__(self, stage):
        self.recorder = stage.start(["parec", "--device=@DEFAULT_MONITOR@", "--format=s16le", f"--rate={RATE}",
                                     "--channels=1", "--latency-msec=20"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.samples = array.array("h")
        self.began = float("inf")
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()
        wait_for("the recorder hears the sound server", lambda: len(self.samples) > 0)

    def _read(self):
        rest = b""
        while sound := self.recorder.stdout.read1(65536):
            sound = rest + sound
            whole = len(sound) // 2 * 2
            self.samples.frombytes(sound[:whole])
            rest = sound[whole:]
            # No sample comes before it sounds: the quickest one tells when the first one was recorded.
            self.began = min(self.began, time.monotonic() - len(self.samples) / RATE)

    def changes(self):
        """When each tone but the first began to sound, in seconds of the monotonic clock."""
        self.recorder.terminate()
        self.reader.join()
        found, line = [], 0
        for at in range(0, len(self.samples) - BLOCK, BLOCK):
            heard = frequency_hz(self.samples[at:at + BLOCK])
            if line + 1 < len(LINES) and abs(heard - LINES[line + 1][0]) < 0.03 * heard:
                line += 1
                found.append(self.began + at / RATE)
        return found


class Watcher:
    """The first column of white in the strip, from one look to the next."""

    def __init__(self, window):
        self.window = window
        self.seen = []

    def look(self):
        before = time.monotonic()
        strip = self.window.look().crop(STRIP).convert("L").point(lambda value: 255 if value >= WHITE else 0)
        box = strip.getbbox()
        self.seen.append(((before + time.monotonic()) / 2, box[0] if box else None))

    def jumps(self):
        return [at for (_, before), (at, after) in zip(self.seen, self.seen[1:])
                if before is not None and after is not None and after - before > JUMP_PX]


def check_reports(log):
    reports = [(int(line), int(ms)) for line, ms in re.findall(r"lyrics line (\d+) at (\d+) ms", log)]
    if [line for line, _ in reports] != list(range(len(LINES))):
        raise Failure(f"the lines came as {reports}")
    late = [ms - stamp for (_, ms), stamp in zip(reports, starts())]
    print("ms after its stamp each line came, by the program's own time:", *late)
    if min(late) < 0 or max(late) > MOST_MS_LATE:
        raise Failure(f"a line came {max(late)} ms after its stamp")


def check_picture(jumps, changes):
    # The first two lines enter from the right: only from the third on does a letter jump.
    if len(changes) != len(LINES) - 1:
        raise Failure(f"{len(changes)} changes of tone were heard, not {len(LINES) - 1}")
    apart = []
    for heard in changes[1:]:
        nearest = min(jumps, key=lambda at: abs(at - heard), default=None)
        if nearest is None:
            raise Failure("no line changed in the picture")
        apart.append(round(1000 * (nearest - heard)))
    print("ms from the sound to the picture at each change:", *apart)
    if max(map(abs, apart)) > MOST_MS_APART:
        raise Failure(f"the picture is {max(apart, key=abs)} ms away from the sound")


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    with Stage() as stage:
        make_card(stage.root / "card")
        recording = Recording(stage)
        report = stage.root / "report"
        with report.open("wb") as log:
            player = stage.start_player(program, "--verbose", stdout=log, stderr=log)
            window = Window(stage, player)
            watcher = Watcher(window)
            window.press("Return")
            end = time.monotonic() + sum(seconds for _, seconds in LINES) + 1
            while time.monotonic() < end:
                watcher.look()
                time.sleep(0.02)  # the player draws ten times a second
            window.press("Escape")
            wait_for("Escape ends the player", lambda: player.poll() is not None)
        check_reports(report.read_text(errors="replace"))
        check_picture(watcher.jumps(), recording.changes())


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: words, picture and sound keep in step")
