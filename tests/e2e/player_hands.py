"""Two ways to work the player: a finger that knows the places of the screen, and a keyboard. Both know the same words."""

SLIDER_LEFT, SLIDER_WIDTH, SLIDER_Y = 17, 286, 147
TRANSPORT = {"previous": 33, "stop": 89, "play_or_pause": 136, "next": 183, "repeat": 230, "shuffle": 287}
MAIN = ("exit", "open_list", "audio_settings")
PLAY_LIST = ("play_row", "drop", "open_library", "add_all", "clear", "back")
LIBRARY = ("check_all", "done")
SOFT_KEYS = [(MAIN, 106), (PLAY_LIST, 53), (LIBRARY, 80)]  # what a bar holds, and the width of a key
ROW_Y = (49, 95, 141, 187)


class Touch:
    def __init__(self, window):
        self.window = window
        self.places = {word: (x, 183) for word, x in TRANSPORT.items()}
        self.places |= {word: (width * number + width // 2, 224)
                        for words, width in SOFT_KEYS for number, word in enumerate(words)}
        self.places |= {"page_up": (289, 71), "page_down": (289, 162), "ok": (230, 217)}

    def do(self, word):
        self.window.tap(*self.places[word])

    def row(self, number):
        """Of this page, from 1."""
        self.window.tap(110, ROW_Y[number - 1])

    def seek(self, part):
        self.window.tap(SLIDER_LEFT + round(SLIDER_WIDTH * part), SLIDER_Y)


class Keys:
    KEYS = {"previous": "Left", "stop": "s", "play_or_pause": "Return", "next": "Right", "repeat": "r", "shuffle": "z",
            "open_list": "l", "audio_settings": "m", "page_up": "Prior", "page_down": "Next", "ok": "F1", "exit": "Escape",
            "back_5": "comma", "forward_5": "period"}

    def __init__(self, window):
        self.window = window
        self.keys = {word: f"F{number}" for words, _ in SOFT_KEYS for number, word in enumerate(words, start=1)} | self.KEYS

    def do(self, word):
        self.window.press(self.keys[word])

    def row(self, number):
        self.window.press(str(number))
