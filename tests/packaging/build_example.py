#!/usr/bin/env python3
"""An example builds against the installed header and pkg-config file alone, and prints what it should.

build_example.py EXAMPLE BUILD COMPILER [FLAG...]
"""
import os
import pathlib
import subprocess
import sys
import tempfile

EXPECTED = {
    "song_titles.cpp": "GB2312\t爱的歌\nBig5\t爱的歌\nASCII\tYesterday\nfirst of 3, backwards: Yesterday\n",
}


def run(*command, **options):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, **options).stdout


def main():
    example, build, compiler, *flags = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        prefix = pathlib.Path(folder) / "usr"
        for component in ("device-library", "device-development"):
            run("cmake", "--install", build, "--prefix", str(prefix), "--component", component)
        package = next(prefix.rglob("cardsong-device.pc"))
        environment = os.environ | {"PKG_CONFIG_PATH": str(package.parent)}
        answer = run("pkg-config", "--cflags", "--libs", "cardsong-device", env=environment).split()
        program = str(pathlib.Path(folder) / "example")
        run(compiler, "-std=c++20", "-Wall", "-Wextra", "-Wconversion", "-Werror", *flags,
            example, *answer, "-o", program, cwd=folder)
        printed = run(program, env=environment | {"LD_LIBRARY_PATH": str(package.parent.parent)}, encoding="utf-8")
        if printed != EXPECTED[pathlib.Path(example).name]:
            sys.exit(f"the example prints\n{printed}")


if __name__ == "__main__":
    main()
