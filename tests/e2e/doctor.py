#!/usr/bin/env python3
"""Asks the program what this machine lacks for playing, on machines that lack one thing each, and on one where every server
hangs.

doctor.py PROGRAM     exit status 0, or 1 with a line that says what was wrong
"""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time

from ear import Failure
from stage import Stage

SUBJECTS = ["display", "sound", "MP3", "WMA", "card", "skin", "texts", "fonts", "device", "bus"]
PATIENCE_S = 60
HUNG_S = 5.0  # that a server is given
SLOW_S = 15.0  # that the program may take besides on a busy machine; the sound server's client alone would wait for 30
LATIN_FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"


class Machine:
    """A stage with a bus, a card and a program with files of its own, all of which the doctor finds in order."""

    def __init__(self, stage, program):
        self.stage = stage
        stage.start_bus()
        self.bus = stage.processes[-1]
        self.program = stage.root / "bin/cardsong"
        self.tree = stage.root / "bin/device/tree"
        shutil.copytree(program.parent / "device/tree", self.tree)
        shutil.copy(program, self.program)
        (stage.root / "card/song.mp3").write_bytes(b"")

    def ask(self, *options, without=(), under=(), **variables):
        """Exit status, and each line as its verdict and its text. `under`: a command that runs the program."""
        environment = {name: value for name, value in (self.stage.environment | variables).items() if name not in without}
        done = subprocess.run(
            [*under, self.program, "--doctor", "--device", self.stage.root / "device", "--card", self.stage.root / "card",
             "--language", "de", *options], env=environment, capture_output=True, text=True, timeout=PATIENCE_S)
        lines = [re.match(r"(\w+) +(ok|poor|BAD) +(.*)", line).groups() for line in done.stdout.splitlines()]
        if [line[0] for line in lines] != SUBJECTS or done.stderr:
            raise Failure(f"the doctor says\n{done.stdout}\nand\n{done.stderr}")
        return done.returncode, {subject: (verdict, text) for subject, verdict, text in lines}

    def expect(self, what, changed, *options, **how):
        """Those lines alone are not in order; the exit status says whether one is bad."""
        status, found = self.ask(*options, **how)
        faults = {subject: line for subject, line in found.items() if line[0] != "ok"}
        for subject, (verdict, text) in changed.items():
            if found[subject][0] != verdict or text not in found[subject][1]:
                raise Failure(f"{what}: {subject} is {found[subject]}, not {verdict} {text}")
        expected = {subject for subject, line in changed.items() if line[0] != "ok"}
        if set(faults) != expected or status != any(line[0] == "BAD" for line in changed.values()):
            raise Failure(f"{what}: exit status {status} with {faults}")
        print(f"ok: {what}", flush=True)

    def expect_without(self, what, changed, file):
        """The same, with a file of the device's tree away."""
        away = self.stage.root / "away"
        (self.tree / file).rename(away)
        self.expect(what, changed)
        away.rename(self.tree / file)

    def expect_nobody_left(self):
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if os.readlink(folder / "exe") == str(self.program):
                    raise Failure(f"process {folder.name} of the doctor is still there")
            except OSError:
                pass


def contents(folder):
    return {path: path.lstat().st_mtime_ns for path in folder.rglob("*")}


def a_machine_that_can_play(machine):
    stage = machine.stage
    settings = stage.root / "fonts.conf"  # whose list of fonts would be kept in the user's folder
    settings.write_text("<?xml version='1.0'?><fontconfig><dir>/usr/share/fonts</dir>"
                        "<cachedir prefix='xdg'>fontconfig</cachedir></fontconfig>")
    folders = [stage.root / name for name in ("user", "device", "card")]
    folders[0].mkdir()  # who has not yet spoken to a sound server, and gets no cookie now
    before = [contents(folder) for folder in folders]
    machine.expect("all is in order", {
        "display": ("ok", f"x11 (DISPLAY={stage.environment['DISPLAY']})"), "sound": ("ok", "the sound server"),
        "card": ("ok", str(stage.root / "card")), "skin": ("ok", str(machine.tree / "Windows")),
        "texts": ("ok", "TAVO_StringTable_0407.dll"), "fonts": ("ok", "WenQuanYi Micro Hei"),
        "device": ("ok", str(stage.root / "device"))}, without=("XDG_CACHE_HOME",),
        HOME=str(folders[0]), FONTCONFIG_FILE=str(settings))
    if [contents(folder) for folder in folders] != before:
        raise Failure("the doctor wrote to the user's folders")
    machine.expect("another skin", {"skin": ("ok", "Skins/amber")}, "--skin", "amber")
    machine.expect_nobody_left()


def displays(machine):
    machine.expect("no display", {"display": ("BAD", "there is no display")}, without=("DISPLAY",))
    machine.expect("a display that is not there", {"display": ("BAD", "cannot open the X display :1977")}, DISPLAY=":1977")
    machine.expect("no display is needed", {"display": ("ok", "none is needed")}, "--headless", without=("DISPLAY",))


def sounds(machine):
    nowhere = str(machine.stage.root / "nowhere")
    machine.expect("no sound server", {"sound": ("BAD", "no sound server answers"), "bus": ("ok", "")},
                   XDG_RUNTIME_DIR=nowhere)
    machine.expect("a sound server that is not there", {"sound": ("BAD", "the sound server refuses sound")},
                   PULSE_SERVER=f"unix:{nowhere}")
    machine.expect("silence that was asked for", {"sound": ("ok", "null, as asked")}, "--audio-sink=null",
                   XDG_RUNTIME_DIR=nowhere)


def files(machine):
    card = machine.stage.root / "card"
    machine.expect("no card", {"card": ("BAD", "there is no folder")}, "--card", card / "none")
    machine.expect("an empty card", {"card": ("BAD", "is empty")}, "--card", machine.stage.root / "device")
    machine.expect("no such skin", {"skin": ("BAD", "there is no skin green")}, "--skin", "green")
    machine.expect_without("no skin", {"skin": ("BAD", "gui_musicplayer_background.gif")},
                           "Windows/gui_musicplayer_background.gif")
    machine.expect_without("a module of strings away", {"texts": ("poor", "TAVO_StringTable_0407.dll is missing")},
                           "Windows/TAVO_StringTable_0407.dll")
    machine.expect_without("the program's own texts away", {"texts": ("BAD", "cardsong.resources.dll")},
                           "Windows/cardsong.resources.dll")
    module = machine.tree / "Windows/TAVO_StringTable_0407.dll"
    whole = module.read_bytes()
    module.write_bytes(whole[:100])
    machine.expect("a module of strings cut off", {"texts": ("poor", "TAVO_StringTable_0407.dll is missing or damaged")})
    module.write_bytes(whole)
    machine.expect_without("all of the device's files away", {
        subject: ("BAD", "the device's files are missing") for subject in ("skin", "texts")}, "Windows")
    (machine.stage.root / "file").write_bytes(b"")
    full = ["unshare", "--map-root-user", "--mount", "sh", "-c",
            'mount -t tmpfs -o size=64k full "$0" && exec "$@"', machine.stage.root / "device"]
    if subprocess.run([*full, "true"], capture_output=True, check=False).returncode == 0:
        machine.expect("a full disk", {"device": ("poor", "is full")}, under=full)
    else:
        print("not looked at: a full disk, for nothing may be mounted here")
    machine.expect("no device folder", {"device": ("poor", "cannot be written")}, "--device", machine.stage.root / "file")


def fonts(machine):
    root = machine.stage.root
    for folder, font, line in (("none", None, ("BAD", "install fonts-wqy-microhei")),
                               ("latin", LATIN_FONT, ("poor", "none shows Chinese titles; install fonts-wqy-microhei"))):
        (root / folder).mkdir()
        if font:
            shutil.copy(font, root / folder)
        settings = root / f"{folder}.conf"
        settings.write_text(f"<?xml version='1.0'?><fontconfig><dir>{root / folder}</dir></fontconfig>")
        machine.expect(f"fonts: {folder}", {"fonts": line}, FONTCONFIG_FILE=str(settings))


def buses(machine):
    machine.expect("no bus", {"bus": ("poor", "there is no message bus")}, without=("DBUS_SESSION_BUS_ADDRESS",))
    machine.expect("a bus that is not there", {"bus": ("poor", "no message bus answers at unix:path=/none")},
                   DBUS_SESSION_BUS_ADDRESS="unix:path=/none")


def hung_servers(machine):
    servers = (machine.stage.display_server, machine.stage.sound_server, machine.bus)
    for server in servers:
        server.send_signal(signal.SIGSTOP)
    begin = time.monotonic()
    try:
        machine.expect("every server hangs", {
            "display": ("BAD", "does not answer"), "sound": ("BAD", "does not answer"), "bus": ("poor", "no message bus answers")})
        took = time.monotonic() - begin
    finally:
        for server in servers:
            server.send_signal(signal.SIGCONT)
    if took > HUNG_S + SLOW_S:
        raise Failure(f"the doctor took {took:.1f} s")
    machine.expect_nobody_left()


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    with Stage() as stage:
        machine = Machine(stage, program)
        for case in (a_machine_that_can_play, displays, sounds, files, fonts, buses, hung_servers):
            case(machine)
    print("ok: the doctor finds each fault and no other")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
