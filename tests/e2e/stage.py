"""A stage for the whole program: an X server of its own, a sound server of its own whose output is measured, a card of
tones, and the hands to tap and type. Everything lives in one temporary folder and ends with the stage."""

import array
import contextlib
import math
import os
import pathlib
import shutil
import subprocess
import tempfile
import time
import wave

from PIL import ImageGrab

from ear import Ear, Failure, wait_for

RATE = 44100
WIDTH, HEIGHT = 320, 240
UNDER_WINE = pathlib.Path(__file__).resolve().parents[2] / "tools/under-wine"
SOUND_SERVER = ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--log-level=error",
                "--load=module-null-sink norewinds=1", "--load=module-native-protocol-unix"]


def make_tones(path, tones):
    """An MP3 of pure tones, [(whole Hz, whole seconds)], one after the other without a jump."""
    frames = bytearray()
    for pitch, seconds in tones:  # whole periods, so that one tone goes over into the next
        second = array.array("h", (round(8000 * math.sin(2 * math.pi * pitch * i / RATE)) for i in range(RATE)))
        frames += second.tobytes() * seconds
    wav = path.with_suffix(".wav")
    with wave.open(str(wav), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(bytes(frames))
    subprocess.run(["lame", "--quiet", "--cbr", "-b", "128", wav, path], check=True)
    wav.unlink()


def under_wine(program):
    return [UNDER_WINE, program]


class Stage:
    def __init__(self):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="cardsong-stage-"))
        self.processes = []
        for folder in ("home", "run", "device", "card"):
            (self.root / folder).mkdir(mode=0o700)
        kept = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH", "ASAN_OPTIONS") if name in os.environ}
        self.environment = kept | {
            "HOME": str(self.root / "home"),
            "XDG_RUNTIME_DIR": str(self.root / "run"),
            "XDG_CACHE_HOME": str(self.root / "home/.cache"),
            "LANG": "C.UTF-8",
            "LSAN_OPTIONS": "print_suppressions=0",  # a clean end says nothing
            "CARDSONG_WINE_PREFIX": str(self.root / "wine"),
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.root}/no-bus",
        }

    def __enter__(self):
        try:
            self._start_display()
            self._start_sound_server()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        subprocess.run([UNDER_WINE, "--end"], env=self.environment, check=True)
        shutil.rmtree(self.root, ignore_errors=True)

    def start(self, command, **options):
        process = subprocess.Popen(command, env=self.environment | options.pop("extra", {}), **options)
        self.processes.append(process)
        return process

    def _start_display(self, size="640x480"):
        reading, writing = os.pipe()
        self.display_server = self.start(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{size}x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("Xvfb did not start")
        self.environment["DISPLAY"] = f":{number}"

    @contextlib.contextmanager
    def screen_of(self, size):
        """Another X server, with a screen of this size, takes the place of the stage's while the context lasts."""
        server, display = self.display_server, self.environment["DISPLAY"]
        self._start_display(size)
        try:
            yield
        finally:
            self.display_server.terminate()
            self.display_server.wait()
            self.display_server, self.environment["DISPLAY"] = server, display

    def _start_sound_server(self):
        self.sound_server = server = self.start(SOUND_SERVER, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        socket = self.root / "run/pulse/native"
        wait_for("the sound server answers", lambda: socket.exists() or server.poll() is not None)
        if server.poll() is not None:
            raise Failure(f"the sound server ended with status {server.returncode}")

    def start_bus(self):
        """A message bus; without one the player says that it is alone."""
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE,
                         stderr=subprocess.DEVNULL, text=True)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        bus.stdout.close()

    def listen(self):
        ear = Ear(self.environment)
        self.processes.append(ear.recorder)
        wait_for("the recorder hears the sound server", lambda: ear.count > 0)
        return ear

    def start_player(self, program, *options, **popen):
        """`program` may be a Windows program."""
        command = [program]
        if program.suffix == ".exe":
            command = under_wine(program)
            subprocess.run([UNDER_WINE, "cmd", "/c", "exit"], env=self.environment, check=True)  # makes the prefix
        return self.start([*command, "--device", self.root / "device", "--card", self.root / "card", "--fill", "--scale",
                           "1", "--language", "en", *options], **popen)

    def xdotool(self, *arguments):
        done = subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, capture_output=True, text=True)
        return done.stdout.split() if done.returncode == 0 else []


class Window:
    """The player's window, as a finger and a pair of eyes know it."""

    def __init__(self, stage, player):
        self.stage = stage

        def found():
            if player.poll() is not None:
                raise Failure(f"the player ended with status {player.returncode} before it showed a window")
            return stage.xdotool("search", "--onlyvisible", "--name", "^Cardsong$")

        self.id = wait_for("the player shows a window", found)[0]
        wait_for("the window takes the focus", lambda: self._take_focus())
        place = dict(line.split("=") for line in stage.xdotool("getwindowgeometry", "--shell", self.id))
        # Without a window manager a window may wear a frame of its own: a caption, and the same border elsewhere.
        border = (int(place["WIDTH"]) - WIDTH) // 2
        caption = int(place["HEIGHT"]) - HEIGHT - border
        if border < 0 or not (border <= caption <= 4 * border + 40):
            raise Failure(f"the window is {place['WIDTH']} x {place['HEIGHT']}, not {WIDTH} x {HEIGHT}")
        self.left, self.top = int(place["X"]) + border, int(place["Y"]) + caption

    def _take_focus(self):
        self.stage.xdotool("windowfocus", self.id)
        return self.stage.xdotool("getwindowfocus") == [self.id]

    def press(self, key):
        self.stage.xdotool("key", key)

    def tap(self, x, y):
        self.stage.xdotool("mousemove", self.left + x, self.top + y, "mousedown", 1)
        time.sleep(0.05)  # a finger rests on the glass for a moment
        self.stage.xdotool("mouseup", 1)

    def look(self):
        screen = ImageGrab.grab(xdisplay=self.stage.environment["DISPLAY"]).convert("RGB")
        return screen.crop((self.left, self.top, self.left + WIDTH, self.top + HEIGHT))
