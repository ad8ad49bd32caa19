"""What can be told of a running player from outside: its report, the window that it shows, and how its rows and keys look."""

import json
import os
import subprocess

from PIL import Image, ImageChops

from ear import Failure, wait_for
from player_hands import ROW_Y

PATIENCE_S = 20
KEY_CORNERS = {"stop": (66, 159), "play": (113, 159), "repeat": (207, 159), "shuffle": (254, 159)}
TITLE = (0, 0, 300, 26)
TITLE_WORDS = (0, 0, 50, 26)  # without the number of the page
ALERT_KEY = (160, 201)
ALERT_KEY_EDGE = (0, 0, 20, 32)  # its caption never comes so far
DARK = 0xC0


def in_screen_colours(picture):
    """Cut to the 65536 colours of the device's screen."""
    red, green, blue = picture.convert("RGB").split()
    return Image.merge("RGB", (red.point(lambda value: value & 0xF8), green.point(lambda value: value & 0xFC),
                               blue.point(lambda value: value & 0xF8)))


class Watcher:
    def __init__(self, window, control, device, tree):
        self.window, self.control, self.device, self.tree = window, control, device, tree
        self.title_words = {}

    # ---- the player's report ----

    def _control(self, *words):
        return subprocess.run([self.control, *words, "--device", self.device], capture_output=True, text=True,
                              env=self.window.stage.environment, timeout=PATIENCE_S, check=False)

    def tell(self, *words):
        done = self._control(*words)
        if (done.returncode, done.stdout, done.stderr) != (0, "", ""):
            raise Failure(f"cardsongctl {' '.join(words)}: {done}")

    def status(self):
        done = self._control("status", "--json")
        if done.returncode != 0:
            raise Failure(f"cardsongctl status: {done.stderr}")
        return json.loads(done.stdout)

    def expect(self, what, **expected):
        """Waits until the report says so; returns the whole report."""
        def matching():
            report = self.status()
            return report if all(report[name] == value for name, value in expected.items()) else None

        return self.await_report(f"{what}: {expected}", matching)

    def await_report(self, what, is_so):
        try:
            answer = wait_for(what, is_so, PATIENCE_S)
        except Failure as failure:
            raise Failure(f"{failure}; the player says {self.status()}") from None
        print(f"ok: {what}", flush=True)
        return answer

    # ---- pictures ----

    def look(self, box):
        return in_screen_colours(self.window.look().crop(box))

    def await_picture(self, what, is_so):
        try:
            wait_for(what, is_so, PATIENCE_S)
        except Failure:
            self._keep_picture()
            raise
        print(f"ok: {what}", flush=True)

    def _keep_picture(self):
        if "CARDSONG_PICTURE_OF_FAILURE" in os.environ:
            self.window.look().save(os.environ["CARDSONG_PICTURE_OF_FAILURE"])

    def await_face(self, picture, key):
        """The key wears the skin's own picture, pixel by pixel."""
        face = in_screen_colours(Image.open(self.tree / f"Windows/gui_musicplayer_{picture}.gif"))
        x, y = KEY_CORNERS[key]
        box = (x, y, x + face.width, y + face.height)
        self.await_picture(picture, lambda: ImageChops.difference(self.look(box), face).getbbox() is None)

    def title(self):
        return self.look(TITLE).tobytes()

    # ---- which window ----

    def remember_main_window(self):
        # A player that answers may not have shown anything yet.
        self.await_picture("the main window is drawn", lambda: len(self.look(TITLE_WORDS).getcolors()) > 1)
        self.title_words["main"] = self.look(TITLE_WORDS).tobytes()

    def await_window(self, name):
        """`name`: "main", "alert", or a list, whose title is new when it is seen for the first time."""
        is_so = {"alert": self._is_alert}.get(name, lambda: self._is_titled(name))
        self.await_picture(f"the window: {name}", is_so)

    def _is_titled(self, name):
        words = self.look(TITLE_WORDS).tobytes()
        if name not in self.title_words and words not in self.title_words.values():
            self.title_words[name] = words
        return words == self.title_words.get(name)

    def _is_alert(self):
        key = in_screen_colours(Image.open(self.tree / "Windows/gui_popup_but_normal.gif")).crop(ALERT_KEY_EDGE)
        x, y = ALERT_KEY
        return ImageChops.difference(self.look((x, y, x + key.width, y + key.height)), key).getbbox() is None

    # ---- rows of a list, from 1 ----

    def selected_rows(self):
        """Those whose ground is tinted."""
        ground = {number: self.look((252, y, 253, y + 1)).getpixel((0, 0)) for number, y in enumerate(ROW_Y, start=1)}
        return [number for number, (red, _, blue) in ground.items() if red < DARK < blue]

    def ticked_rows(self):
        """Those whose box holds more than its ground."""
        return [number for number, y in enumerate(ROW_Y, start=1) if len(self.look((15, y - 6, 29, y + 7)).getcolors()) > 1]
