#!/usr/bin/env python3
"""Starts the program with the developers' log switched on, off, and not yet switched, and reads what it logs.

debug_log.py PROGRAM     exit status 0, or 1 with a line that says what was logged instead
"""

import os
import pathlib
import subprocess
import sys
import tempfile

from bus import Bus
from ear import Failure

KEY = "[HKEY_LOCAL_MACHINE\\TAVO\\TAVO_BACKDOOR]\nActivate=dword:0000000"
FIRST_LINE = b"[AP][Music][FunName]Run!\r\n\n"
PATIENCE_S = 60


def logged(program, root, *options):
    command = [program, "--headless", "--audio-sink=null", "--device", root / "device", "--card", root / "card",
               "--keys", "Exit", *options]
    done = subprocess.run(command, capture_output=True, timeout=PATIENCE_S)
    if done.returncode != 0:
        raise Failure(f"the player ended with status {done.returncode} and said: {done.stderr}")
    return done.stderr


def expect(what, met):
    if not met:
        raise Failure(what)


def main():
    bus = Bus()  # a player without one says so, maybe before its first words in the log
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.address
    try:
        look_at_the_log()
    finally:
        bus.end()


def look_at_the_log():
    program = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory(prefix="cardsong-log-") as folder:
        root = pathlib.Path(folder)
        registry = root / "device/registry.ini"
        for name in ("device", "card"):
            (root / name).mkdir()
        said = logged(program, root, "--verbose")
        expect(f"not yet switched, the log says {said}", b"[AP" not in said)
        expect(f"the first start leaves {registry.read_text()}", KEY + "0\n" in registry.read_text())
        registry.write_text(KEY + "1\n")
        said = logged(program, root, "--verbose")
        expect(f"switched on, the log begins with {said[:80]}", said.startswith(FIRST_LINE))
        expect(f"one start logs {said}", said.count(b"Run!") == 1)
        said = logged(program, root)
        expect(f"without --verbose the log says {said}", b"[AP" not in said)
        registry.write_text(KEY + "0\n")
        said = logged(program, root, "--verbose")
        expect(f"switched off, the log says {said}", b"[AP" not in said)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: the log begins with the start, where it is switched on")
