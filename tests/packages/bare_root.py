#!/usr/bin/env python3
"""The packages on a Debian system that holds nothing else: installed, used by an ordinary user, removed without a trace.

bare_root.py ROOT PACKAGES      PACKAGES is the folder with the .deb files; the root is made with mmdebstrap, thrown away
                                afterwards, and filled from where this machine has its own packages from
"""
import pathlib
import shlex
import subprocess
import sys

FOLDER = pathlib.Path(__file__).resolve().parent
DEBIAN = "bookworm"


def sources():
    """Lines for apt: Debian's own repositories among those of this machine."""
    listing = subprocess.run(["apt-get", "indextargets", "--format", "deb $(REPO_URI) $(RELEASE) $(COMPONENT)",
                              "Created-By: Packages", "Origin: Debian"], capture_output=True, text=True, check=True)
    return "\n".join(sorted(set(listing.stdout.splitlines()))) + "\n"


def main():
    root, packages = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
    architecture = subprocess.run(["dpkg", "--print-architecture"], capture_output=True, text=True, check=True).stdout.strip()
    debs = sorted(path for kind in (architecture, "all") for path in packages.glob(f"*_{kind}.deb") if "dbgsym" not in path.name)
    if not debs:
        sys.exit(f"bare_root: no packages in {packages}")
    copied = " ".join(shlex.quote(str(path)) for path in [*debs, root / "packaging/debian/tests", root / "docs/kiosk.md",
                                                          FOLDER / "use_and_remove"])
    story = ["mkdir \"$1/srv/cardsong\"", f"copy-in {copied} /srv/cardsong", "chroot \"$1\" /srv/cardsong/use_and_remove"]
    hooks = [f"--customize-hook={step}" for step in story]
    return subprocess.run(["mmdebstrap", "--quiet", "--variant=apt", *hooks, DEBIAN, "/dev/null", "-"], input=sources(),
                          text=True).returncode


if __name__ == "__main__":
    sys.exit(main())
