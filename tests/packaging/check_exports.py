#!/usr/bin/env python3
"""What a program or a shared library exports is what packaging/exports.txt promises, no more and no less; and that is
every public operation that the headers declare.

check_exports.py ROOT FILE      FILE is an ELF shared library or a Windows program
"""
import pathlib
import re
import subprocess
import sys

VERSION = "CARDSONG_DEVICE_0"
HEADERS = ["containers/ptr_array_ctrl.h", "containers/ptr_list_ctrl.h", "encoding/big5_gb_text.h", "encoding/code_page.h",
           "encoding/gb_unicode_text.h"]


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def exported_by_library(path):
    names = set()
    for line in run("nm", "--dynamic", "--defined-only", path).splitlines():
        name = line.split()[-1]
        if name == f"{VERSION}@@{VERSION}" or line.split()[1] == "A":
            continue  # the version itself
        assert name.endswith(f"@@{VERSION}"), f"{name} has no version"
        names.add(name.split("@")[0])
    assert "Library soname: [libcardsong-device.so.0]" in run("readelf", "--dynamic", path), "the library's name"
    return names


def exported_by_program(path):
    table = run("x86_64-w64-mingw32-objdump", "-p", path).partition("[Ordinal/Name Pointer] Table")[2].partition("\n\n")[0]
    return {line.split()[-1] for line in table.splitlines() if re.match(r"\s*\[\s*\d+\]", line)}


def promised(root):
    lines = (root / "packaging/exports.txt").read_text(encoding="ascii").splitlines()
    return {line for line in lines if line and not line.startswith("#")}


def declared(root):
    """The operations of the headers, by class and name."""
    operations = set()
    for header in HEADERS:
        text = re.sub(r"//.*", "", (root / header).read_text(encoding="utf-8"))
        owner = re.search(r"^class (\w+)", text, re.MULTILINE)
        public = text.partition("public:")[2].partition("private:")[0] if owner else text
        prefix = owner[1] + "::" if owner else ""
        operations |= {prefix + name for name in re.findall(r"(operator\S+?|~?\w+)\(", public)}
    return operations


def main():
    root, path = pathlib.Path(sys.argv[1]), sys.argv[2]
    mangled = exported_by_program(path) if path.endswith(".exe") else exported_by_library(path)
    exported = set(run("c++filt", *sorted(mangled)).splitlines()) if mangled else set()
    wrong = sorted(exported ^ promised(root))
    operations = {text.split("(")[0] for text in promised(root) if not text.startswith("operator+(")}
    wrong += sorted(operations ^ declared(root))
    for name in wrong:
        print(f"not both promised and there: {name}")
    print(f"check_exports: {len(exported)} operations under {len(mangled)} names")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
