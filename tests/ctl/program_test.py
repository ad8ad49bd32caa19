"""The control program as a user meets it.  program_test.py PROGRAM"""

import json
import os
import pathlib
import pty
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv.pop(1)

HELP = """\
usage: cardsongctl songs DIR [--json]
       cardsongctl play
       cardsongctl pause
       cardsongctl next
       cardsongctl previous
       cardsongctl stop
       cardsongctl mass-storage
       cardsongctl audio-state N
       cardsongctl lyrics-changed
       cardsongctl are-you-me
       cardsongctl status [--json]
       cardsongctl registry get KEY NAME | list [KEY] | set KEY NAME VALUE

songs prints a line for each MP3 and WMA song in DIR and its folders: path, length
in milliseconds, title, parted by tabs. In a path or title, \\t, \\n, \\r and \\\\ stand
for a tab, line ends and a backslash. A song without a title is called like its
file. The scan is the player's own: navigation maps at the top of a card are
left out, and a folder that links lead to is listed once.

  play            goes on with the song, or begins; one that plays goes on playing
  pause           pauses; a player that does not play stays as it is
  next            steps to the next song
  previous        steps to the song before
  stop            stops
  mass-storage    tells all programs that the card goes to a computer: the player ends
  audio-state N   tells all programs the audio manager's new state
  lyrics-changed  tells all programs that the settings of the lyrics have changed
  are-you-me      calls the player to the front

status prints what the player does: its state, the song and its place in the list, the
position in it, the play modes; with --json as one JSON object.

registry reads or writes a value of the device's registry. KEY is a path with
backslashes below HKEY_LOCAL_MACHINE; VALUE is a text, or a number as dword:5 or dword:0x1f.
A text that begins with dword: or text: is written with text: before it. list prints what
lies in a key: first the keys below it, a backslash behind each, then its values: name and
value, parted by a tab, written like the songs.

  --json      one JSON object a line instead: path, length_ms, title
  --device=DIR for every command but songs: the device, named as for the player
  -h, --help  print this
  --version   print the version

Exit status: 0 done; 1 no player runs, it does not answer, or the work failed; 2 wrong use.
"""


def run(*arguments):
    done = subprocess.run([PROGRAM, *arguments], capture_output=True, text=True)
    return done.returncode, done.stdout, done.stderr


class ControlProgram(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.card = pathlib.Path(folder.name)
        for name in ("b.mp3", "a.wma", "Music/C.MP3", "maps/map.mp3", "readme.txt"):
            (self.card / name).parent.mkdir(exist_ok=True)
            (self.card / name).write_bytes(b"no music")

    def test_prints_each_song_in_the_order_of_the_scan(self):
        status, out, err = run("songs", str(self.card))
        self.assertEqual((status, err), (0, ""))
        lines = [line.split("\t") for line in out.splitlines()]
        self.assertEqual([pathlib.Path(line[0]).relative_to(self.card).as_posix() for line in lines],
                         ["a.wma", "b.mp3", "Music/C.MP3"])
        self.assertEqual([line[1:] for line in lines], [["0", "a"], ["0", "b"], ["0", "C"]])

    def test_prints_json_that_a_parser_takes(self):
        status, out, _ = run("songs", "--json", str(self.card) + "/")
        self.assertEqual(status, 0)
        songs = [json.loads(line) for line in out.splitlines()]
        self.assertEqual([song["title"] for song in songs], ["a", "b", "C"])
        self.assertEqual(set(songs[0]), {"path", "length_ms", "title"})

    def test_a_folder_is_the_same_with_separators_at_its_end(self):
        self.assertEqual(run("songs", str(self.card) + "//"), run("songs", str(self.card)))

    def test_says_in_one_line_what_is_wrong(self):
        missing = str(self.card / "none")
        for arguments, status, what in (
                (("songs", missing), 1, f"{missing}: no such folder"), (("songs",), 2, "songs: takes one folder"),
                (("songs", "a", "b"), 2, "songs: takes one folder"), ((), 2, "no command; --help tells which there are"),
                (("sing",), 2, "unknown command sing"),
                (("songs", ""), 1, ": no such folder"),
                (("songs", "--xml", str(self.card)), 2, "songs: unknown option --xml"),
                (("play", "loud"), 2, "play: takes no loud"),
                (("play", "--device"), 2, "play: --device needs a value"),
                (("audio-state",), 2, "audio-state: takes a number from 0 to 65535"),
                (("audio-state", "65536"), 2, "audio-state: takes a number from 0 to 65535"),
                (("status", "--xml"), 2, "status: takes no --xml"),
                (("registry",), 2, "registry: takes get KEY NAME, list [KEY], or set KEY NAME VALUE"),
                (("registry", "get", "KEY"), 2, "registry: takes get KEY NAME, list [KEY], or set KEY NAME VALUE"),
                (("registry", "list", "KEY", "NAME"), 2,
                 "registry: takes get KEY NAME, list [KEY], or set KEY NAME VALUE"),
                (("registry", "set", "KEY", "NAME", "dword:x"), 2, "registry: dword:x is no number"),
                (("next", "--device", missing), 1, f"no player runs for {missing}"),
                (("status", f"--device={missing}"), 1, f"no player runs for {missing}")):
            self.assertEqual(run(*arguments), (status, "", f"cardsongctl: {what}\n"), arguments)

    def test_tells_on_a_terminal_how_many_songs_there_are(self):
        for number in range(100):
            (self.card / f"{number}.mp3").write_bytes(b"")
        terminal, end = pty.openpty()
        done = subprocess.run([PROGRAM, "songs", str(self.card)], stdout=subprocess.PIPE, stderr=end)
        os.close(end)
        self.assertEqual(done.stdout.count(b"\n"), 103)
        self.assertEqual(os.read(terminal, 1000), b"\r50 songs\r100 songs\r103 songs\r\n")
        os.close(terminal)

    def test_a_full_disk_is_an_error(self):
        with open("/dev/full", "w") as full:
            done = subprocess.run([PROGRAM, "songs", str(self.card)], stdout=full, stderr=subprocess.PIPE, text=True)
        self.assertEqual(done.returncode, 1)
        self.assertIn("cannot write", done.stderr)

    def store(self, text):
        device = str(self.card / "device")
        self.assertEqual(run("registry", "set", "Key", "Name", text, "--device", device), (0, "", ""))
        return device

    def test_a_full_disk_is_an_error_of_every_text_whatever_its_length(self):
        device = self.store("long " * 2000)
        for arguments in (("registry", "list", "Key"), ("registry", "get", "Key", "Name"), ("--help",), ("--version",)):
            with open("/dev/full", "w") as full:
                done = subprocess.run([PROGRAM, *arguments, "--device", device], stdout=full, stderr=subprocess.PIPE,
                                      text=True)
            self.assertEqual((done.returncode, done.stderr),
                             (1, "cardsongctl: cannot write: No space left on device\n"), arguments)

    def test_ends_quietly_when_nobody_reads_on(self):
        device = self.store("long " * 2000)
        for number in range(500):
            (self.card / f"{number}.mp3").write_bytes(b"")
        for arguments in (("registry", "list", "Key", "--device", device), ("songs", str(self.card))):
            with subprocess.Popen([PROGRAM, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
                process.stdout.close()
                self.assertEqual(process.stderr.read(), b"", arguments)
                self.assertNotEqual(process.wait(), 0, arguments)

    def test_a_closed_output_is_an_error_and_no_file_gets_its_place(self):
        device = self.store("text")
        registry = (pathlib.Path(device) / "registry.ini").read_bytes()
        for streams in ((1,), (0, 1), (0, 1, 2)):
            done = subprocess.run([PROGRAM, "registry", "get", "Key", "Name", "--device", device], stderr=subprocess.PIPE,
                                  preexec_fn=lambda: [os.close(stream) for stream in streams])
            self.assertEqual(done.returncode, 1, streams)
        self.assertEqual((pathlib.Path(device) / "registry.ini").read_bytes(), registry)

    def test_help_and_version(self):
        for arguments in (("--help",), ("-h",), ("songs", "--help")):
            self.assertEqual(run(*arguments), (0, HELP, ""), arguments)
        self.assertRegex(run("--version")[1], r"\Acardsongctl \d+\.\d+\.\d+\n\Z")


if __name__ == "__main__":
    unittest.main()
