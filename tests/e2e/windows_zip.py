#!/usr/bin/env python3
"""Makes the zip for Windows of a build, unpacks it where a user might, and plays its demo card there.

windows_zip.py ROOT BUILD     exit status 0, or 1 with a line that says what was wrong
"""

import os
import pathlib
import re
import struct
import subprocess
import sys
import zipfile

from PIL import Image, ImageChops

from ear import Failure
from stage import UNDER_WINE, Stage

PARTS_OF_WINDOWS = {"advapi32.dll", "gdi32.dll", "kernel32.dll", "msimg32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll",
                    "shell32.dll", "user32.dll", "winmm.dll"}
PROGRAMS = ("cardsong.exe", "cardsongctl.exe")
TITLE = (180, 45, 318, 115)  # left, top, right, bottom in the main window
FIXED_VERSION = struct.pack("<I", 0xFEEF04BD)  # with which the numbers of a version resource begin
TITLES = ["00 demo tone", "01 second tone", "G大调小步舞曲", "欢乐颂", "Auld Lang Syne", "Greensleeves", "樱花", "not a song",
          "兩隻老虎", "小星星", "茉莉花", "送別"]


TEXTS = ("README.txt", "LICENSE.txt", "LICENSE-Apache-2.0.txt", "LICENSE-runtime.txt", "NOTICE.txt")


def expect(what, held, found=""):
    """`found`: what tells more when it does not hold."""
    if not held:
        raise Failure(f"{what} {found}")
    print(f"ok: {what}", flush=True)


def make_zip(root, build, folder, epoch, **surroundings):
    folder.mkdir()
    environment = os.environ | {"CARDSONG_PACKAGES": str(folder), "SOURCE_DATE_EPOCH": str(epoch)} | surroundings
    subprocess.run([root / "tools/make-packages", "zip", "--built", build], env=environment, check=True,
                   stdout=subprocess.DEVNULL)
    made = list(folder.iterdir())
    if len(made) != 1:
        raise Failure(f"one zip and nothing else is made: {made}")
    return made[0]


def check_bytes(root, build, stage):
    """The same files give the same zip, whatever clock, time zone, language and permissions the machine has."""
    first = make_zip(root, build, stage.root / "first", 1_700_000_001, TZ="UTC", LC_ALL="C")
    previous = os.umask(0o077)
    again = make_zip(root, build, stage.root / "again", 1_700_000_001, TZ="Asia/Taipei", LC_ALL="C.UTF-8")
    os.umask(previous)
    expect("the same build gives the same bytes", first.read_bytes() == again.read_bytes())
    with zipfile.ZipFile(first) as archive:
        entries = archive.infolist()
        expect("every file has the time of the source", {e.date_time for e in entries} == {(2023, 11, 14, 22, 13, 20)})
        names = [entry.filename for entry in entries]
        expect("files stand in the order of their names", names == sorted(names))
        expect("everything lies in one folder named after the zip", {n.split("/")[0] for n in names} == {first.stem})
    old = make_zip(root, build, stage.root / "old", 0)
    with zipfile.ZipFile(old) as archive:
        expect("a time before the format's first is its first",
               {e.date_time for e in archive.infolist()} == {(1980, 1, 1, 0, 0, 0)})
    return first


def check_contents(folder, build, version):
    files = {path.relative_to(folder).as_posix(): path for path in folder.rglob("*") if path.is_file()}
    device = build / "device"
    wanted = {*PROGRAMS, *TEXTS}
    wanted |= {f"device/tree/{p.relative_to(device / 'tree').as_posix()}" for p in (device / "tree").rglob("*") if p.is_file()}
    wanted |= {f"Demo card/{p.relative_to(device / 'card').as_posix()}" for p in (device / "card").rglob("*") if p.is_file()}
    expect("it holds the programs, texts, tree and card, and nothing else", wanted == set(files), sorted(wanted ^ set(files)))
    for name in TEXTS:
        text = files[name].read_bytes()
        expect(f"{name} reads well in an old editor", text.isascii() and b"@" not in text and
               text.count(b"\n") == text.count(b"\r\n") and max(map(len, text.splitlines())) <= 130)
    expect("the README tells the version", files["README.txt"].read_text(encoding="ascii").startswith(f"Cardsong {version}\n"))


def check_program(path, version):
    table = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", path], capture_output=True, text=True, check=True).stdout
    libraries = {name.lower() for name in re.findall(r"DLL Name: (\S+)", table)}
    expect(f"{path.name} needs parts of Windows alone", libraries and libraries <= PARTS_OF_WINDOWS, sorted(libraries))
    content = path.read_bytes()
    header, = struct.unpack_from("<I", content, 0x3C)
    expect(f"{path.name} does not tell when it was made", struct.unpack_from("<I", content, header + 8) == (0,))
    major, minor, patch = map(int, version.split("."))
    place = content.find(FIXED_VERSION)
    expect(f"the version of {path.name} is a property of the file", place >= 0 and
           struct.unpack_from("<4H", content, place + 8) == (minor, major, 0, patch) and
           f"ProductVersion\0{version}\0".encode("utf-16-le") in content)


def listing(folder):
    """Every file and folder in it with its time."""
    return {str(path): path.stat().st_mtime_ns for path in (folder, *folder.rglob("*"))}


def protect(folder):
    for path in (folder, *folder.rglob("*")):
        path.chmod(0o555 if path.is_dir() else 0o444)


def unprotect(folder):
    for path in (folder, *folder.rglob("*")):
        if path.is_dir():
            path.chmod(0o755)


def run(stage, folder, program, *arguments):
    done = subprocess.run([UNDER_WINE, folder / program, *arguments], env=stage.environment, cwd=folder, encoding="utf-8",
                          capture_output=True, timeout=120)
    if done.returncode != 0:
        raise Failure(f"{program} {arguments} ended with status {done.returncode}: {done.stderr}")
    return done


def files_of_system(stage):
    """The parts of the paths on its disk."""
    disk = stage.root / "wine/drive_c"
    return {path.relative_to(disk).parts for path in disk.rglob("*")}


def play(stage, folder, version):
    """Started in its own folder, as from a desktop."""
    subprocess.run([UNDER_WINE, "cmd", "/c", "exit"], env=stage.environment, check=True)  # makes the prefix
    files_before, disk_before = listing(folder.parent), files_of_system(stage)
    for program in PROGRAMS:
        said = run(stage, folder, program, "--version").stdout
        expect(f"{program} --version tells {version}", said.splitlines() == [f"{program.removesuffix('.exe')} {version}"])

    lines = run(stage, folder, "cardsongctl.exe", "songs", "Demo card").stdout.splitlines()
    expect("cardsongctl lists the songs of the demo card by title", [line.split("\t")[2] for line in lines] == TITLES)

    at_rest, picture = stage.root / "at_rest.png", stage.root / "picture.png"
    said = run(stage, folder, "cardsong.exe", "--card", "Demo card", "--fill", "--headless", "--language", "en", "--scale", "1",
               "--audio-sink", "null", "--verbose", "--keys", f"wait:1000 shot:{at_rest} Enter wait:4000 Exit",
               "--screenshot", picture).stderr
    expect("the player plays the first song", "01.00 demo tone  0:01 of 0:12" in said.splitlines(), said)
    with Image.open(at_rest) as before, Image.open(picture) as shown:
        expect("its picture is that of the device", shown.size == (320, 240))
        difference = ImageChops.difference(before.convert("RGB").crop(TITLE), shown.convert("RGB").crop(TITLE)).convert("L")
        expect("the title has come into it", sum(difference.histogram()[16:]) >= 50)

    expect("nothing is written beside the unpacked files", listing(folder.parent) == files_before)
    new = files_of_system(stage) - disk_before
    own = {parts for parts in new if parts[0] == "users" and parts[2:5] == ("AppData", "Local", "Cardsong")}
    expect("the play list lies in the user's local data", any(parts[5:] == ("Windows", "play_list.txt") for parts in own))
    strangers = sorted("/".join(parts) for parts in new - own)
    expect("and nothing lies elsewhere", not strangers, strangers)


def main():
    root, build = (pathlib.Path(word).resolve() for word in sys.argv[1:])
    version = subprocess.run([root / "tools/project-version"], capture_output=True, text=True, check=True).stdout.strip()
    with Stage() as stage:
        made = check_bytes(root, build, stage)
        expect("the zip is named after the version", made.name == f"cardsong-{version}-windows-x64.zip")
        place = stage.root / "音樂 and 歌曲"
        with zipfile.ZipFile(made) as archive:
            archive.extractall(place)
        folder = place / made.stem
        check_contents(folder, build, version)
        for program in PROGRAMS:
            check_program(folder / program, version)
        protect(place)
        try:
            play(stage, folder, version)
        finally:
            unprotect(place)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
