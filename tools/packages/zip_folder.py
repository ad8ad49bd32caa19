"""Packs a folder into a zip whose bytes depend only on the names and contents of its files.

zip_folder.py FOLDER ZIP      every file gets the time SOURCE_DATE_EPOCH, in UTC; ZIP is replaced when it is whole
"""
import os
import pathlib
import sys
import time
import zipfile

EARLIEST = (1980, 1, 1, 0, 0, 0)  # that the format can tell
PLAIN, PROGRAM = 0o100644, 0o100755


def entries(folder):
    """(name in the zip, file), in the order of the names' code points."""
    files = [path for path in folder.rglob("*") if path.is_file()]
    return sorted((f"{folder.name}/{path.relative_to(folder).as_posix()}", path) for path in files)


def main():
    folder, target = map(pathlib.Path, sys.argv[1:])
    when = max(EARLIEST, time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:6])
    unfinished = target.with_name(target.name + ".new")
    with zipfile.ZipFile(unfinished, "w") as archive:
        for name, path in entries(folder):
            entry = zipfile.ZipInfo(name, when)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3  # whose permissions follow
            entry.external_attr = (PROGRAM if path.suffix in (".exe", ".dll") else PLAIN) << 16
            archive.writestr(entry, path.read_bytes(), compresslevel=9)
    unfinished.replace(target)


if __name__ == "__main__":
    main()
