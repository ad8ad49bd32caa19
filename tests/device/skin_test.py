"""Every picture of every skin that ships: its size, its see-through parts, and whether what stands on it can be read.

skin_test.py TREE CONTACT_SHEET     TREE: the device's file tree; CONTACT_SHEET: the program that draws the controls
"""

import pathlib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools" / "device"))
import gif  # noqa: E402

SCREEN = (320, 240)
KEY_SIZES = {"back": (66, 49), "stop": (47, 49), "play": (47, 49), "pause": (47, 49), "next": (47, 49), "repeat": (47, 49),
             "shuffle": (66, 49), "reverse": (47, 49), "forward": (47, 49)}
SOFT_KEY_SIZES = {"3but": (106, 32), "4but": (80, 32), "5but": (64, 32), "6but": (53, 32)}
PLAIN_STATES = ("normal", "down", "disable")
WHITE, BLACK = (255, 255, 255), (0, 0, 0)
LIST_TITLE = (0x00, 0xBE, 0xF2)
SELECTED_ROW = (0x9F, 0xE3, 0xFA)
READABLE, SEEN = 4.5, 3.0  # of a text, of a sign
SMALLEST_TARGET = 38       # pixels, in one direction
PRINTED = 30               # pictures of CONTACT_SHEET


def expected_sizes():
    sizes = {"gui_musicplayer_background": SCREEN, "gui_full_bg2": SCREEN, "popup_mainzone_info_bg": SCREEN,
             "popup_mainzone_error_bg": SCREEN, "gui_softkey_zone_bg": (320, 32), "Processing": (125, 125),
             "gui_musicplayer_progress_but_normal": (286, 15), "gui_musicplayer_progress_but_full": (286, 15),
             "gui_checkbox_check": (45, 44), "gui_checkbox_uncheck": (45, 44)}
    buttons = {}
    for name in ("back", "stop", "play", "pause", "next", "repeat", "shuffle"):
        buttons |= {f"gui_musicplayer_{name}_but_{state}": KEY_SIZES[name] for state in PLAIN_STATES}
    for name in ("repeat", "shuffle"):
        buttons[f"gui_musicplayer_{name}_but_on"] = KEY_SIZES[name]
    for state in ("on", "down"):
        buttons[f"gui_musicplayer_repeat_single_but_{state}"] = KEY_SIZES["repeat"]
    for name in ("back", "reverse", "play", "pause", "stop", "forward", "next"):
        buttons |= {f"gui_videoplayer_{name}_but_{state}": KEY_SIZES[name] for state in ("normal", "down")}
    for state in PLAIN_STATES:
        buttons |= {f"gui_{name}_{state}": size for name, size in SOFT_KEY_SIZES.items()}
        buttons |= {f"gui_4but_{half}_{state}": (40, 32) for half in ("up", "down")}
        buttons |= {f"gui_listscroll{half}_{state}": (62, 91) for half in ("up", "down")}
        buttons[f"gui_popup_but_{state}"] = (140, 32)
    for state in ("normal", "down"):
        buttons[f"gui_3but_volume_ctrl_{state}"] = (106, 32)
    return sizes | buttons, buttons


def luminance(colour):
    parts = [value / 255 for value in colour]
    linear = [part / 12.92 if part <= 0.03928 else ((part + 0.055) / 1.055) ** 2.4 for part in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    dark, light = sorted((luminance(one), luminance(other)))
    return (light + 0.05) / (dark + 0.05)


def is_near_key(colour):
    return colour[0] >= 160 and colour[2] >= 160 and colour[1] <= 80


class Picture:
    def __init__(self, path):
        self.width, self.height, self.frames = gif.decode(path.read_bytes())

    def pixel(self, x, y, frame=0):
        return gif.to_888(self.frames[frame][y * self.width + x])

    def colours(self, left, top, right, bottom):
        return {self.pixel(x, y) for y in range(top, bottom) for x in range(left, right)}


class SkinTests:
    """The tests of one skin."""
    pictures = {}
    overlay = ""  # the folder laid over the installed one
    tree = contact_sheet = None
    sizes, buttons = expected_sizes()

    def assert_contrast(self, text, colours, least, what):
        self.assertTrue(colours)
        worst = min(colours, key=lambda colour: contrast(text, colour))
        self.assertGreaterEqual(contrast(text, worst), least, f"{what}: {text} on {worst}")

    def test_every_picture_is_there_in_the_size_of_its_place_and_no_other(self):
        self.assertEqual({name: (picture.width, picture.height) for name, picture in self.pictures.items()}, self.sizes)

    def test_every_button_is_large_enough_to_hit(self):
        for name, size in self.buttons.items():
            self.assertGreaterEqual(max(size), SMALLEST_TARGET, name)

    def test_only_check_boxes_are_see_through_and_only_in_the_key_colour_itself(self):
        key = gif.to_888(gif.KEY_COLOUR)
        for name, picture in self.pictures.items():
            found = {gif.to_888(word) for frame in picture.frames for word in set(frame)}
            near = {colour for colour in found if is_near_key(colour)}
            self.assertEqual(near, {key} if name.startswith("gui_checkbox_") else set(), name)

    def test_a_check_box_is_solid_within_and_its_corners_are_see_through(self):
        key = gif.to_888(gif.KEY_COLOUR)
        for name in ("gui_checkbox_check", "gui_checkbox_uncheck"):
            picture = self.pictures[name]
            for x, y in ((0, 0), (44, 0), (0, 43), (44, 43)):
                self.assertEqual(picture.pixel(x, y), key, name)
            self.assertNotIn(key, picture.colours(14, 14, 30, 30), name)
        self.assertNotEqual(self.pictures["gui_checkbox_check"].frames, self.pictures["gui_checkbox_uncheck"].frames)

    def test_a_white_caption_is_readable_on_every_face_that_carries_one(self):
        for name, (width, _) in (SOFT_KEY_SIZES | {"popup_but": (140, 32)}).items():
            for state in PLAIN_STATES:
                what = f"gui_{name}_{state}"
                self.assert_contrast(WHITE, self.pictures[what].colours(5, 4, width - 5, 28), READABLE, what)

    def test_title_times_and_lyrics_are_readable_on_the_panel(self):
        panel = self.pictures["gui_musicplayer_background"]
        self.assert_contrast(WHITE, panel.colours(44, 45, 274, 137), READABLE, "panel")
        self.assert_contrast(WHITE, panel.colours(34, 55, 284, 127), READABLE, "the panel's sides")

    def test_lists_are_readable_title_rows_and_selected_row(self):
        ground = self.pictures["gui_full_bg2"]
        self.assert_contrast(LIST_TITLE, ground.colours(0, 0, 300, 26), READABLE, "list title")
        self.assert_contrast(BLACK, ground.colours(0, 27, 258, 208), READABLE, "list rows")
        self.assert_contrast(BLACK, {SELECTED_ROW}, READABLE, "selected row")

    def test_alerts_are_readable_title_and_message(self):
        for name in ("popup_mainzone_info_bg", "popup_mainzone_error_bg"):
            self.assert_contrast(WHITE, self.pictures[name].colours(32, 10, 288, 36), READABLE, f"title on {name}")
            self.assert_contrast(BLACK, self.pictures[name].colours(35, 48, 285, 192), READABLE, f"message on {name}")

    def test_a_sign_stands_out_from_its_face(self):
        captioned = tuple(f"gui_{name}_{state}" for name in (*SOFT_KEY_SIZES, "popup_but") for state in PLAIN_STATES)
        for name, (width, height) in self.buttons.items():
            if name in captioned:
                continue
            inner = sorted(self.pictures[name].colours(6, 4, width - 6, height - 4), key=luminance)
            least = SEEN if name.endswith("_disable") else READABLE
            self.assertGreaterEqual(contrast(inner[0], inner[-1]), least, name)

    def test_the_played_part_of_the_bar_stands_out_from_the_rest(self):
        played, rest = (self.pictures[f"gui_musicplayer_progress_but_{name}"].pixel(143, 7) for name in ("full", "normal"))
        self.assertGreaterEqual(contrast(played, rest), SEEN)
        self.assertEqual(self.pictures["gui_musicplayer_progress_but_full"].pixel(285, 7), played)  # cut off square

    def test_the_states_of_a_button_look_different(self):
        faces = {}
        for name in self.buttons:
            button, state = name.rsplit("_", 1)
            faces.setdefault(button, {})[state] = tuple(self.pictures[name].frames[0])
        for button, states in faces.items():
            self.assertEqual(len(set(states.values())), len(states), button)

    def test_neighbouring_faces_do_not_touch(self):
        ground = self.pictures["gui_softkey_zone_bg"].pixel(0, 0)
        for name, (_, height) in self.buttons.items():
            left_column = {self.pictures[name].pixel(0, y) for y in range(height)}
            self.assertEqual(left_column, {ground}, name)

    def test_the_waiting_animation_moves_at_every_step(self):
        frames = self.pictures["Processing"].frames
        self.assertEqual(len(frames), 8)
        self.assertTrue(all(one != other for one, other in zip(frames, frames[1:] + frames[:1])))

    def test_nothing_on_the_screen_is_pink(self):
        for language in ("en", "zh-TW", "zh-CN"):
            drawn = subprocess.run([self.contact_sheet, self.tree, self.overlay, language], stdout=subprocess.PIPE, check=True)
            count = 0
            for name, pixels in printed_pictures(drawn.stdout):
                pink = [i for i in range(0, len(pixels), 3) if is_near_key(pixels[i:i + 3])]
                self.assertEqual(pink, [], f"{name}, {language}")
                count += 1
            self.assertEqual(count, PRINTED)


def printed_pictures(data):
    """(name, RGB bytes) of every picture that the program printed."""
    at = 0
    while at < len(data):
        end = data.index(b"\n", at)
        name, width, height = data[at:end].decode().split()
        at = end + 1 + int(width) * int(height) * 3
        if at > len(data):
            raise ValueError(f"{name} is cut short")
        yield name, data[end + 1:at]


def tests_of(name, folder, overlay):
    pictures = {path.stem: Picture(path) for path in sorted(folder.glob("*.gif"))}
    return type(f"Skin_{name}", (SkinTests, unittest.TestCase), {"pictures": pictures, "overlay": overlay})


def main():
    SkinTests.contact_sheet = pathlib.Path(sys.argv.pop())
    SkinTests.tree = tree = pathlib.Path(sys.argv.pop())
    cases = [tests_of("default", tree / "Windows", "")]
    cases += [tests_of(path.name, path, path) for path in sorted((tree / "Skins").iterdir())]
    load = unittest.defaultTestLoader.loadTestsFromTestCase
    result = unittest.TextTestRunner().run(unittest.TestSuite(load(case) for case in cases))
    sys.exit(not (result.wasSuccessful() and len(cases) > 1))


if __name__ == "__main__":
    main()
