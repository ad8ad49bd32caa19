#!/usr/bin/env python3
"""Starts the program without the device's files beside it: it must say what is missing and where it looked.

missing_tree.py PROGRAM     exit status 0, or 1 with a line that says what it did instead
"""

import pathlib
import shutil
import subprocess
import sys

from ear import Failure
from stage import Stage

MISSING = 1
PATIENCE_S = 60


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    with Stage() as stage:
        folder = stage.root / "elsewhere"
        folder.mkdir()
        alone = pathlib.Path(shutil.copy(program, folder))
        player = stage.start_player(alone, "--headless", stderr=subprocess.PIPE, text=True)
        _, said = player.communicate(timeout=PATIENCE_S)
        parts = ["cardsong: the device's files are missing", "share", "elsewhere", "tree"]
        if player.returncode != MISSING or not all(part in said for part in parts):
            raise Failure(f"the program ended with status {player.returncode} and said: {said}")
    print("ok: the program says what is missing")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
