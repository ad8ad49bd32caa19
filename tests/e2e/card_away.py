#!/usr/bin/env python3
"""Takes the card's folder away from the running program, by hand and by signal, and looks at the saved list.

card_away.py PROGRAM SONG     exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile

from ear import Failure, wait_for

NAMES = ("a.mp3", "b.mp3", "c.mp3")
SONG_REPEATS = 40  # long enough to outlast each run


def saved_list():
    return b"".join(f"{number}${name}$\\SDMMC$30".encode("utf-16-le") + b"\r\n"
                    for number, name in enumerate(NAMES, start=1))


class Run:
    """One run of the program on a card of its own."""

    def __init__(self, program, song, root, keys, card="card"):
        for folder in ("card", "empty", "other", "device/Windows"):
            (root / folder).mkdir(parents=True)
        for name in NAMES:
            (root / "card" / name).write_bytes(song * SONG_REPEATS)
        (root / "other/x.mp3").write_bytes(song)
        self.root = root
        self.list = root / "device/Windows/play_list.txt"
        self.list.write_bytes(saved_list())
        self.output = root / "output"
        with self.output.open("wb") as output:
            self.process = subprocess.Popen(
                [program, "--headless", "--audio-sink=null", "--verbose", "--device", root / "device", "--card",
                 root / card, "--run-for=20", "--keys", keys], stdout=output, stderr=output)

    def await_song(self):
        wait_for("the first song plays", lambda: b"01.a" in self.output.read_bytes())

    def rename_card_away(self):
        (self.root / "card").rename(self.root / "away")

    def expect_list_kept(self):
        status = self.process.wait(30)
        if status != 0:
            raise Failure(f"the player ended with status {status}")
        if self.list.read_bytes() != saved_list():
            raise Failure(f"of {len(saved_list())} bytes of the list {self.list.stat().st_size} are left")


def renamed_away(start):
    run = start("Enter wait:4000 Right wait:300 Right Enter wait:300 Exit")
    run.await_song()
    run.rename_card_away()
    run.expect_list_kept()


def emptied(start):
    run = start("Enter wait:4000 Right wait:300 Right Enter wait:300 Exit")
    run.await_song()
    run.rename_card_away()
    (run.root / "card").mkdir()
    run.expect_list_kept()


def ended_by_a_signal_while_away(start):
    run = start("Enter")
    run.await_song()
    run.rename_card_away()
    run.process.send_signal(signal.SIGTERM)
    run.expect_list_kept()


def started_with_an_empty_folder(start):
    start("Enter wait:300 Right Exit", "empty").expect_list_kept()


def started_with_another_card(start):
    start("Enter wait:300 Right Exit", "other").expect_list_kept()


def started_without_a_folder(start):
    start("Enter Exit", "nowhere").expect_list_kept()


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    song = pathlib.Path(sys.argv[2]).read_bytes()
    for case in (renamed_away, emptied, ended_by_a_signal_while_away, started_with_an_empty_folder,
                 started_with_another_card, started_without_a_folder):
        root = pathlib.Path(tempfile.mkdtemp(prefix="cardsong-card-"))
        runs = []

        def start(keys, card="card"):
            runs.append(Run(program, song, root, keys, card))
            return runs[-1]
        try:
            case(start)
        except Failure as failure:
            raise Failure(f"{case.__name__}: {failure}") from None
        finally:
            for run in runs:
                if run.process.poll() is None:
                    run.process.kill()
                    run.process.wait()
            shutil.rmtree(root)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: the saved list outlived its card")
