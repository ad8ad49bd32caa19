"""A release: what tells of it agrees, and tools/make-release makes it, here of a small project whose packages say where they
were made.  release_test.py ROOT BUILD"""

import hashlib
import importlib.machinery
import importlib.util
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tarfile
import tempfile
import unittest

ROOT, BUILD = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
del sys.argv[1:3]

TOOLS = ("check-release", "make-packages", "make-release", "project-version")
PROJECT = 'project(Cardsong VERSION 1.2.3 DESCRIPTION "x")\nset(CARDSONG_RELEASE_DATE 2027-01-02) # of this version\n'
CHANGES = "# Changes\n\n## Unreleased\n\n## 1.2.3 (2027-01-02)\n\n- It plays.\n\n## 1.2.2 (2026-12-01)\n\n- It starts.\n"
DEBIAN = """cardsong (1.2.3) unstable; urgency=medium

  * It plays.

 -- nobody <nobody@localhost>  Sat, 02 Jan 2027 12:00:00 +0000

cardsong (1.2.2) unstable; urgency=medium
"""
PACKAGE = """#!/bin/sh
echo "$SOURCE_DATE_EPOCH $(umask) $(cat note.txt)" >"$CARDSONG_PACKAGES/cardsong-$CARDSONG_VERSION-%s"
"""
FAILING = '#!/bin/sh\necho half >"$CARDSONG_PACKAGES/half"\nexit 3\n'
TAGGED_AT = 1_800_000_000
PARTS = ["cardsong-1.2.3-amd64.deb", "cardsong-1.2.3-arm64.deb", "cardsong-1.2.3-windows.zip", "cardsong-1.2.3.tar.xz"]


def module(path):
    loader = importlib.machinery.SourceFileLoader("check_release", str(path))
    made = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_release", loader))
    loader.exec_module(made)
    return made


class Agreement(unittest.TestCase):
    def findings(self, project=PROJECT, changes=CHANGES, debian=DEBIAN, final=True):
        return module(ROOT / "tools/check-release").findings(project, changes, debian, final)

    def test_holds_between_the_version_the_date_and_the_change_log_of_this_source(self):
        subprocess.run([ROOT / "tools/check-release"], check=True)

    def test_holds_for_what_a_software_centre_shows(self):
        project = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
        version = re.search(r"Cardsong VERSION (\S+)", project)[1]
        date = re.search(r"CARDSONG_RELEASE_DATE (\S+)\)", project)[1]
        shown = (BUILD / "packaging/program/org.cardsong.cardsong.metainfo.xml").read_text(encoding="utf-8")
        self.assertEqual(re.findall(r"<release (.*?)/?>", shown), [f'version="{version}" date="{date}"'])

    def test_holds_where_everything_is_said_once(self):
        self.assertEqual(self.findings(), [])

    def test_fails_for_a_release_of_another_version_or_day(self):
        wanted = ['the newest release in CHANGELOG.md is not "## 1.2.4 (2027-01-02)"']
        self.assertEqual(self.findings(PROJECT.replace("1.2.3", "1.2.4"), debian=DEBIAN.replace("1.2.3", "1.2.4")), wanted)
        wanted = ['the newest release in CHANGELOG.md is not "## 1.2.3 (2027-01-03)"']
        self.assertEqual(self.findings(PROJECT.replace("01-02", "01-03")), wanted)

    def test_fails_for_debian_packages_of_another_version(self):
        wanted = "the newest release in packaging/debian/changelog is {}, not 1.2.3"
        self.assertEqual(self.findings(debian=DEBIAN.replace("1.2.3", "1.2.4")), [wanted.format("1.2.4")])
        self.assertEqual(self.findings(debian=""), [wanted.format(None)])

    def test_fails_for_a_release_that_nothing_is_said_of(self):
        self.assertEqual(self.findings(changes=CHANGES.replace("- It plays.\n", "")), ["CHANGELOG.md says nothing about 1.2.3"])

    def test_fails_for_a_release_that_is_told_twice(self):
        self.assertEqual(self.findings(changes=CHANGES.replace("1.2.2", "1.2.3")), ["CHANGELOG.md has 1.2.3 more than once"])

    def test_allows_unreleased_changes_until_the_release(self):
        changes = CHANGES.replace("## Unreleased\n", "## Unreleased\n\n- It sings.\n")
        self.assertEqual(self.findings(changes=changes, final=False), [])
        self.assertEqual(len(self.findings(changes=changes)), 1)

    def test_fails_without_room_for_unreleased_changes(self):
        changes = CHANGES.replace("## Unreleased\n", "")
        self.assertEqual(self.findings(changes=changes), ['CHANGELOG.md does not begin with "## Unreleased"'])
        self.assertEqual(self.findings(changes=""), ['CHANGELOG.md does not begin with "## Unreleased"'])

    def test_fails_without_a_version(self):
        self.assertEqual(self.findings(project=""), ["CMakeLists.txt names no version or no date of the release"])


@unittest.skipUnless(shutil.which("git"), "git is not installed")
class MakeRelease(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.repository = pathlib.Path(folder.name) / "a repository"
        self.temporary = pathlib.Path(folder.name) / "temporary"
        self.temporary.mkdir()
        (self.repository / "tools").mkdir(parents=True)
        for name in TOOLS:
            shutil.copy(ROOT / "tools" / name, self.repository / "tools")
        self.write("CMakeLists.txt", PROJECT)
        self.write("CHANGELOG.md", CHANGES)
        self.write("packaging/debian/changelog", DEBIAN)
        self.write("note.txt", "tagged\n")
        self.write("歌曲.txt", "songs\n")
        self.write(".gitignore", "/build/\n")
        self.write("tools/packages/make-zip", PACKAGE % "windows.zip")
        self.write("tools/packages/make-deb", PACKAGE % '${2:-amd64}.deb')
        self.git("init", "--quiet")
        self.commit()
        self.git("tag", "v1.2.3")

    def write(self, name, text):
        path = self.repository / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        if text.startswith("#!"):
            path.chmod(0o755)

    def git(self, *arguments):
        made = f"{TAGGED_AT} +0800"
        environment = os.environ | {"GIT_AUTHOR_DATE": made, "GIT_COMMITTER_DATE": made, "GIT_CONFIG_GLOBAL": "/dev/null"}
        subprocess.run(["git", "-c", "user.name=nobody", "-c", "user.email=nobody@localhost", *arguments], cwd=self.repository,
                       env=environment, check=True, stdout=subprocess.DEVNULL)

    def commit(self):
        self.git("add", "--all")
        self.git("commit", "--quiet", "--allow-empty", "--message", "a change")

    def release(self, *arguments, **surroundings):
        environment = os.environ | {"TMPDIR": str(self.temporary)} | surroundings
        done = subprocess.run(["tools/make-release", *arguments], cwd=self.repository, env=environment, text=True,
                              capture_output=True)
        self.assertEqual(list(self.temporary.iterdir()), [], "nothing is left in the folder for temporary files")
        return done

    def made(self, version="1.2.3"):
        """The files of a release by name; none when there is none. Nothing else is in the folder of releases."""
        releases = self.repository / "build/releases"
        self.assertLessEqual({path.name for path in releases.glob("*")} | {path.name for path in releases.glob(".*")}, {version})
        return {path.name: path.read_bytes() for path in sorted((releases / version).glob("*"))}

    def refused(self, why, *arguments):
        done = self.release(*arguments)
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn(why, done.stderr)
        self.assertEqual(self.made(), {})

    def test_makes_every_part_with_its_checksum(self):
        done = self.release()
        self.assertEqual(done.returncode, 0, done.stderr)
        made = self.made()
        self.assertEqual(list(made), ["SHA256SUMS", *PARTS])
        sums = "".join(f"{hashlib.sha256(made[name]).hexdigest()}  {name}\n" for name in PARTS)
        self.assertEqual(made["SHA256SUMS"].decode(), sums)
        self.assertTrue(done.stdout.endswith(sums))

    def test_makes_the_named_parts_alone(self):
        self.assertEqual(self.release("v1.2.3", "--only", "source,deb-arm64").returncode, 0)
        self.assertEqual(list(self.made()), ["SHA256SUMS", "cardsong-1.2.3-arm64.deb", "cardsong-1.2.3.tar.xz"])

    def test_source_holds_what_the_tag_holds_and_nothing_else(self):
        self.write("note.txt", "changed\n")
        self.write("new.txt", "new\n")
        self.assertEqual(self.release("--only", "source").returncode, 0)
        with tarfile.open(self.repository / "build/releases/1.2.3/cardsong-1.2.3.tar.xz") as archive:
            files = {entry.name: entry for entry in archive.getmembers() if entry.isfile()}
            tagged = subprocess.run(["git", "-c", "core.quotePath=off", "ls-tree", "-r", "--name-only", "v1.2.3"], cwd=self.repository,
                                    check=True, capture_output=True, text=True).stdout.splitlines()
            self.assertEqual(set(files), {f"cardsong-1.2.3/{name}" for name in tagged})
            self.assertEqual(archive.extractfile("cardsong-1.2.3/note.txt").read(), b"tagged\n")
            self.assertEqual({(entry.mtime, entry.uid, entry.gid) for entry in files.values()}, {(TAGGED_AT, 0, 0)})
            self.assertEqual(files["cardsong-1.2.3/tools/make-release"].mode, 0o755)
            self.assertEqual(files["cardsong-1.2.3/note.txt"].mode, 0o644)

    def test_source_tells_its_own_version_and_time(self):
        self.assertEqual(self.release("--only", "source").returncode, 0)
        with tarfile.open(self.repository / "build/releases/1.2.3/cardsong-1.2.3.tar.xz") as archive:
            archive.extractall(self.repository / "build")
        tool = self.repository / "build/cardsong-1.2.3/tools/project-version"
        self.assertEqual(subprocess.run([tool], check=True, capture_output=True, text=True).stdout, "1.2.3\n")
        self.assertEqual(subprocess.run([tool, "--time"], check=True, capture_output=True, text=True).stdout, f"{TAGGED_AT}\n")

    def test_packages_are_made_of_the_tag_at_its_time_whatever_the_user_has_set(self):
        self.write("note.txt", "changed\n")
        self.git("config", "core.autocrlf", "true")
        previous = os.umask(0o077)
        done = self.release("--only", "zip", SOURCE_DATE_EPOCH="1", CARDSONG_PACKAGES="/nowhere")
        os.umask(previous)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.made()["cardsong-1.2.3-windows.zip"], f"{TAGGED_AT} 0022 tagged\n".encode())

    def test_is_the_same_to_the_byte_when_it_is_made_again(self):
        self.assertEqual(self.release(TZ="UTC").returncode, 0)
        first = self.made()
        shutil.rmtree(self.repository / "build/releases/1.2.3")
        self.commit()
        self.git("config", "tar.umask", "0077")
        self.assertEqual(self.release("v1.2.3", TZ="Asia/Taipei", LC_ALL="C").returncode, 0)
        self.assertEqual(self.made(), first)

    def test_takes_an_annotated_tag(self):
        self.git("tag", "--force", "--annotate", "--message", "the release", "v1.2.3")
        self.assertEqual(self.release("--only", "source").returncode, 0)

    def test_refuses_a_tag_that_is_not_there(self):
        self.git("tag", "--delete", "v1.2.3")
        self.refused("there is no tag v1.2.3")
        self.refused("there is no tag HEAD", "HEAD")

    def test_refuses_a_tag_that_differs_from_the_version(self):
        self.git("tag", "v1.2.4")
        self.refused("the tag v1.2.4 differs from the project's version, 1.2.3", "v1.2.4")
        self.git("tag", "1.2.3")
        self.refused("the tag 1.2.3 differs from the project's version, 1.2.3", "1.2.3")

    def test_refuses_a_name_that_is_a_branch_elsewhere_too(self):
        self.git("checkout", "--quiet", "-b", "v1.2.3")
        self.commit()
        self.refused("a branch is called v1.2.3, too", "v1.2.3")

    def test_refuses_a_tag_whose_change_log_is_not_ready(self):
        self.write("CHANGELOG.md", CHANGES.replace("## Unreleased\n", "## Unreleased\n\n- It sings.\n"))
        self.commit()
        self.git("tag", "--force", "v1.2.3")
        self.refused("the tag v1.2.3 is not ready for a release")

    def test_refuses_to_write_over_a_release(self):
        self.assertEqual(self.release("--only", "source").returncode, 0)
        first = self.made()
        done = self.release("--only", "zip")
        self.assertEqual(done.returncode, 1)
        self.assertIn("build/releases/1.2.3 is there already", done.stderr)
        self.assertEqual(self.made(), first)

    def test_leaves_nothing_when_a_part_fails(self):
        self.write("tools/packages/make-zip", FAILING)
        self.commit()
        self.git("tag", "--force", "v1.2.3")
        self.assertEqual(self.release().returncode, 3)
        self.assertEqual(self.made(), {})

    def test_knows_no_other_words(self):
        for words in (["--only"], ["--only", ""], ["--only", "source,rpm"], ["v1.2.3", "v1.2.4"], ["--help"], ["-x", "zip"]):
            with self.subTest(words):
                done = self.release(*words)
                self.assertEqual(done.returncode, 2)
                self.assertIn("usage: tools/make-release", done.stderr)
                self.assertFalse((self.repository / "build").exists())


if __name__ == "__main__":
    unittest.main()
