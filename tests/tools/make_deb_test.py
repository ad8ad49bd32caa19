"""Which version tools/make-packages deb gives to Debian packages, here of a small project whose packages hold the change log that
they are built with.  make_deb_test.py ROOT"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(sys.argv.pop(1)).resolve()

PROJECT = 'project(Cardsong VERSION 1.2.3 DESCRIPTION "x")\n'
RELEASE = """cardsong (1.2.3) unstable; urgency=medium

  * It plays.

 -- nobody <nobody@localhost>  Fri, 15 Jan 2027 08:00:00 +0000
"""
RELEASED_AT = 1_800_000_000
BUILD = """#!/bin/sh
version=$(dpkg-parsechangelog --show-field Version)
{ echo "$SOURCE_DATE_EPOCH"; cat debian/changelog; } >"../cardsong_${version}_all.deb"
"""
TOOLS = ("make-packages", "project-version", "packages/make-deb")


@unittest.skipUnless(shutil.which("git") and shutil.which("dpkg-parsechangelog"), "git or dpkg-dev is not installed")
class MakeDeb(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.repository = pathlib.Path(folder.name) / "a repository"
        self.programs = pathlib.Path(folder.name) / "programs"
        (self.repository / "tools/packages").mkdir(parents=True)
        for name in TOOLS:
            shutil.copy(ROOT / "tools" / name, self.repository / "tools" / name)
        self.write(self.repository / "tools/install-packages", "#!/bin/sh\n")
        self.write(self.programs / "dpkg-buildpackage", BUILD)
        self.write(self.repository / "CMakeLists.txt", PROJECT)
        self.write(self.repository / "packaging/debian/changelog", RELEASE)
        self.write(self.repository / ".gitignore", "/build/\n")
        self.git("init", "--quiet")
        self.commit(RELEASED_AT)

    def write(self, path, text):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        if text.startswith("#!"):
            path.chmod(0o755)

    def git(self, *arguments, at=RELEASED_AT):
        when = f"{at} +0800"
        environment = os.environ | {"GIT_AUTHOR_DATE": when, "GIT_COMMITTER_DATE": when, "GIT_CONFIG_GLOBAL": "/dev/null"}
        done = subprocess.run(["git", "-c", "user.name=nobody", "-c", "user.email=nobody@localhost", *arguments],
                              cwd=self.repository, env=environment, check=True, capture_output=True, text=True)
        return done.stdout.strip()

    def commit(self, at):
        self.git("add", "--all")
        self.git("commit", "--quiet", "--allow-empty", "--message", "a change", at=at)

    def make(self, **surroundings):
        """(version, content) of what is made."""
        shutil.rmtree(self.repository / "build", ignore_errors=True)
        environment = os.environ | {"PATH": f"{self.programs}:{os.environ['PATH']}"} | surroundings
        subprocess.run(["tools/make-packages", "deb"], cwd=self.repository, env=environment, check=True, capture_output=True)
        made, = (self.repository / "build/packages").iterdir()
        return made.name.split("_")[1], made.read_text(encoding="utf-8")

    def version_of_head(self, time):
        return f"1.2.3+git{time}.{self.git('rev-parse', 'HEAD')[:8]}"

    def test_without_a_tag_it_is_the_projects(self):
        self.commit(RELEASED_AT + 60)
        self.assertEqual(self.make(), ("1.2.3", f"{RELEASED_AT}\n{RELEASE}"))

    def test_of_the_tag_it_is_the_projects(self):
        self.git("tag", "--annotate", "--message", "the release", "v1.2.3")
        self.assertEqual(self.make(), ("1.2.3", f"{RELEASED_AT}\n{RELEASE}"))

    def test_past_the_tag_it_tells_the_commit(self):
        self.git("tag", "--annotate", "--message", "the release", "v1.2.3")
        self.commit(RELEASED_AT + 60)
        version, content = self.make()
        self.assertEqual(version, self.version_of_head("20270115080100"))
        self.assertEqual(content, f"{RELEASED_AT + 60}\ncardsong ({version}) unstable; urgency=medium\n\n  * Between two releases."
                                  f"\n\n -- nobody <nobody@localhost>  Fri, 15 Jan 2027 08:01:00 +0000\n\n{RELEASE}")

    def test_past_the_tag_it_is_the_same_again_to_the_byte(self):
        self.git("tag", "v1.2.3")
        self.commit(RELEASED_AT + 60)
        self.assertEqual(self.make(TZ="UTC", LC_ALL="C"), self.make(TZ="Asia/Taipei", LC_ALL="C.UTF-8"))

    def test_it_grows_from_the_release_to_later_commits_and_to_the_next_release(self):
        self.git("tag", "v1.2.3")
        versions = ["1.2.3"]
        for later in (60, 3600):
            self.commit(RELEASED_AT + later)
            versions.append(self.make()[0])
        versions.append("1.2.4")
        for lower, higher in zip(versions, versions[1:]):
            subprocess.run(["dpkg", "--compare-versions", lower, "lt", higher], check=True)

    def test_the_entry_of_a_commit_is_never_older_than_the_release(self):
        self.git("tag", "v1.2.3")
        self.commit(RELEASED_AT - 7200)
        version, content = self.make()
        self.assertEqual(version, self.version_of_head("20270115060000"))
        self.assertEqual(content.splitlines()[0], str(RELEASED_AT + 1))

    def test_it_tells_of_what_was_changed_since_the_commit(self):
        self.git("tag", "v1.2.3")
        self.commit(RELEASED_AT + 60)
        self.write(self.repository / "new.txt", "new\n")
        self.assertEqual(self.make()[0], self.version_of_head("20270115080100") + ".changed")

    def test_a_tag_on_another_branch_is_not_behind_the_commit(self):
        self.git("checkout", "--quiet", "-b", "other")
        self.commit(RELEASED_AT + 30)
        self.git("tag", "v1.2.3")
        self.git("checkout", "--quiet", "-")
        self.commit(RELEASED_AT + 60)
        self.assertEqual(self.make()[0], "1.2.3")

    def test_of_an_unpacked_archive_it_is_the_projects(self):
        self.git("tag", "v1.2.3")
        self.commit(RELEASED_AT + 60)
        shutil.rmtree(self.repository / ".git")
        self.assertEqual(self.make(), ("1.2.3", f"{RELEASED_AT}\n{RELEASE}"))

    def test_a_change_log_of_another_version_is_refused(self):
        self.write(self.repository / "packaging/debian/changelog", re.sub("1.2.3", "1.2.4", RELEASE))
        with self.assertRaises(subprocess.CalledProcessError) as refused:
            self.make()
        self.assertIn(b"packaging/debian/changelog is of version 1.2.4, the project of 1.2.3", refused.exception.stderr)


if __name__ == "__main__":
    unittest.main()
