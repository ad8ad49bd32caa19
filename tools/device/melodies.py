"""The songs of the demo card: traditional and other public-domain melodies, as note names with their beats, and words of our
own for some.

A voice is (instrument, gain, notes, beats to wait); see synth.parse_melody for the notation. Bars stand between bars.
"""

MO_LI_HUA = dict(
    beat=.44,
    voices=[("flute", 1.0, """
        E5 E5/.5 G5/.5 A5/.5 C6/.5 C6/.5 A5/.5 | G5 G5/.5 A5/.5 G5/2 |
        E5 E5/.5 G5/.5 A5/.5 C6/.5 C6/.5 A5/.5 | G5 G5/.5 A5/.5 G5/2 |
        G5 G5 G5 E5/.5 G5/.5 | A5 A5 G5/2 | E5 D5/.5 E5/.5 G5 E5/.5 D5/.5 | C5 C5/.5 D5/.5 C5/2 |
        E5/.5 D5/.5 C5/.5 E5/.5 D5/1.5 E5/.5 | G5 A5/.5 C6/.5 G5/2 |
        D5 E5/.5 G5/.5 D5/.5 E5/.5 C5/.5 A4/.5 | G4/2 A4 C5 | D5/1.5 E5/.5 C5/.5 D5/.5 C5/.5 A4/.5 | G4/4""", 0),
            ("pluck", .5, """
        C4 G4 E4 G4 | C4 G4 E4 G4 | C4 G4 E4 G4 | C4 G4 E4 G4 | C4 G4 E4 G4 | F4 A4 E4 G4 | C4 G4 E4 G4 | C4 G4 E4 G4 |
        A3 E4 D4 A4 | E4 A4 C4 G4 | D4 G4 D4 F4 | C4 E4 F4 A4 | D4 A4 F4 A4 | G3 D4 G4+B4/2""", 0),
            ("bass", .45, """
        C3/4 | C3/4 | C3/4 | C3/4 | C3/4 | F3/2 C3/2 | C3/4 | C3/4 | A2/2 D3/2 | A2/2 C3/2 | D3/2 G2/2 | C3/2 F3/2 | D3/4 | G2/4""", 0)],
    lyrics=[(0, "小院清风吹过来"), (8, "白花朵朵夜里开"), (16, "月亮走到我窗前"), (24, "把香气带进梦里来"),
            (32, "轻轻唱一首老歌"), (40, "等到天亮花还在"), (48, "等到天亮你也在")])

SONG_BIE = dict(
    beat=.46,
    voices=[("reed", .8, """
        G5 E5/.5 G5/.5 C6/2 | A5 C6 G5/2 | G5 C5/.5 D5/.5 E5 D5/.5 C5/.5 | D5/4 |
        G5 E5/.5 G5/.5 C6/1.5 B5/.5 | A5 C6 G5/2 | G5 D5/.5 E5/.5 F5/1.5 B4/.5 | C5/4 |
        A5 C6 C6/2 | B5 A5/.5 B5/.5 C6/2 | A5/.5 B5/.5 C6/.5 A5/.5 A5/.5 G5/.5 E5/.5 C5/.5 | D5/4 |
        G5 E5/.5 G5/.5 C6/1.5 B5/.5 | A5 C6 G5/2 | G5 D5/.5 E5/.5 F5/1.5 B4/.5 | C5/4""", 0),
            ("pluck", .55, """
        C4 G4 E4 G4 | F4 A4 E4 G4 | C4 G4 E4 A4 | G3 D4 B4 D4 | C4 G4 E4 G4 | F4 A4 E4 G4 | D4 G4 F4 G4 | C4 G4 E4 G4 |
        F4 A4 F4 A4 | G4 B4 E4 G4 | F4 A4 E4 A4 | G3 D4 B4 D4 | C4 G4 E4 G4 | F4 A4 E4 G4 | D4 G4 F4 G4 | C4 G4 E4+G4/2""", 0),
            ("bass", .45, """
        C3/4 | F3/2 C3/2 | C3/2 A2/2 | G2/4 | C3/4 | F3/2 C3/2 | G2/4 | C3/4 |
        F3/4 | G3/2 C3/2 | F3/2 A2/2 | G2/4 | C3/4 | F3/2 C3/2 | G2/4 | C3/4""", 0)],
    lyrics=[(0, "黃昏的車站燈初亮"), (8, "你背著行囊望遠方"), (16, "話還沒說完風已涼"), (24, "汽笛聲聲長又長"),
            (32, "山那邊會有新的月光"), (40, "照著你也照著故鄉"), (48, "等到花開的時候"), (56, "我們再一起歌唱")])

GREENSLEEVES = dict(
    beat=.235,
    voices=[("pluck", 1.0, """
        A4 | C5/2 D5 E5/1.5 F#5/.5 E5 | D5/2 B4 G4/1.5 A4/.5 B4 | C5/2 A4 A4/1.5 G#4/.5 A4 | B4/2 G#4 E4/2 A4 |
        C5/2 D5 E5/1.5 F#5/.5 E5 | D5/2 B4 G4/1.5 A4/.5 B4 | C5/1.5 B4/.5 A4 G#4/1.5 F#4/.5 G#4 | A4/3 A4/3 |
        G5/3 G5/1.5 F#5/.5 E5 | D5/2 B4 G4/1.5 A4/.5 B4 | C5/2 A4 A4/1.5 G#4/.5 A4 | B4/2 G#4 E4/3 |
        G5/3 G5/1.5 F#5/.5 E5 | D5/2 B4 G4/1.5 A4/.5 B4 | C5/1.5 B4/.5 A4 G#4/1.5 F#4/.5 G#4 | A4/6""", 0),
            ("strings", .4, """
        -/1 | A3+C4+E4/6 | G3+B3+D4/6 | F3+A3+C4/6 | E3+G#3+B3/6 | A3+C4+E4/6 | G3+B3+D4/6 | F3+A3+C4/3 E3+G#3+B3/3 | A3+C4+E4/6 |
        C4+E4+G4/6 | G3+B3+D4/6 | F3+A3+C4/6 | E3+G#3+B3/6 | C4+E4+G4/6 | G3+B3+D4/6 | F3+A3+C4/3 E3+G#3+B3/3 | A3+C4+E4/6""", 0)],
    lyrics=[(0, "The river runs beneath the bridge"), (13, "and carries leaves away,"),
            (25, "the evening lies upon the hills"), (37, "at the ending of the day."),
            (49, "O stay a while, the moon is high,"), (61, "the fields are silver-grey,"),
            (73, "and what the willow tells the wind"), (85, "it will not tell the day.")])

AULD_LANG_SYNE = dict(
    beat=.48,
    voices=[("reed", .8, """
        C4 | F4/1.5 F4/.5 F4 A4 | G4/1.5 F4/.5 G4 A4 | F4/1.5 F4/.5 A4 C5 | D5/3 D5 |
        C5/1.5 A4/.5 A4 F4 | G4/1.5 F4/.5 G4 A4 | F4/1.5 D4/.5 D4 C4 | F4/3 D5 |
        C5/1.5 A4/.5 A4 F4 | G4/1.5 F4/.5 G4 D5 | C5/1.5 A4/.5 A4 C5 | D5/3 F5 |
        C5/1.5 A4/.5 A4 F4 | G4/1.5 F4/.5 G4 A4 | F4/1.5 D4/.5 D4 C4 | F4/3""", 0),
            ("strings", .45, """
        -/1 | A3+C4+F4/4 | Bb3+C4+E4/4 | A3+C4+F4/4 | Bb3+D4+F4/4 | A3+C4+F4/4 | Bb3+C4+E4/4 | Bb3+D4/2 G3+Bb3+E4/2 | A3+C4+F4/4 |
        A3+C4+F4/4 | Bb3+C4+E4/4 | A3+C4+F4/4 | Bb3+D4+F4/4 | A3+C4+F4/4 | Bb3+C4+E4/4 | Bb3+D4/2 G3+Bb3+E4/2 | A3+C4+F4/3""", 0),
            ("bass", .4, """
        -/1 | F2/4 | C3/4 | F2/4 | Bb2/4 | F2/4 | C3/4 | Bb2/2 C3/2 | F2/4 | F2/4 | C3/4 | F2/4 | Bb2/4 | F2/4 | C3/4 | Bb2/2 C3/2 | F2/3""", 0)],
    lyrics=[(0, "The lamps are low, the night is long,"), (8, "our songs are nearly through,"),
            (16, "so fill the cup and raise it high"), (24, "to old friends and to new."),
            (32, "To all the roads we walked, my dear,"), (40, "to every sky of blue,"),
            (48, "we'll keep a light for those who roam"), (56, "until they come home too.")])

ODE_TO_JOY = dict(
    beat=.4,
    voices=[("strings", .9, """
        F#4 F#4 G4 A4 | A4 G4 F#4 E4 | D4 D4 E4 F#4 | F#4/1.5 E4/.5 E4/2 | F#4 F#4 G4 A4 | A4 G4 F#4 E4 | D4 D4 E4 F#4 | E4/1.5 D4/.5 D4/2 |
        E4 E4 F#4 D4 | E4 F#4/.5 G4/.5 F#4 D4 | E4 F#4/.5 G4/.5 F#4 E4 | D4 E4 A3 F#4 | F#4 F#4 G4 A4 | A4 G4 F#4 E4 | D4 D4 E4 F#4 | E4/1.5 D4/.5 D4/2""", 0),
            ("bell", .25, """
        -/32 | C#6/2 D6/2 | C#6/2 D6/2 | C#6/2 D6/2 | B5 B5 C#6/2 | D6/4 | C#6/4 | D6/2 B5/2 | C#6/2 D6/2""", 0),
            ("bass", .55, """
        D3/4 | A2/4 | B2/2 G2/2 | A2/4 | D3/4 | A2/4 | B2/2 G2/2 | A2/2 D3/2 |
        A2/2 D3/2 | A2/2 D3/2 | A2/2 D3/2 | B2 E3 A2/2 | D3/4 | A2/4 | B2/2 G2/2 | A2/2 D3/2""", 0)])

TWINKLE = dict(
    beat=.42,
    voices=[("bell", .8, """
        C5 C5 G5 G5 | A5 A5 G5/2 | F5 F5 E5 E5 | D5 D5 C5/2 | G5 G5 F5 F5 | E5 E5 D5/2 | G5 G5 F5 F5 | E5 E5 D5/2 |
        C5 C5 G5 G5 | A5 A5 G5/2 | F5 F5 E5 E5 | D5 D5 C5/2""", 0),
            ("pluck", .5, """
        C3 E4 C4 E4 | F3 C4 E3 C4 | D3 B3 C3 G3 | F3 G3 C3/2 | E3 C4 D3 B3 | C3 G3 G2 B3 | E3 C4 D3 B3 | C3 G3 G2 B3 |
        C3 E4 C4 E4 | F3 C4 E3 C4 | D3 B3 C3 G3 | F3 G3 C3/2""", 0)])

_TIGERS = """
        F4 G4 A4 F4 | F4 G4 A4 F4 | A4 Bb4 C5/2 | A4 Bb4 C5/2 | C5/.5 D5/.5 C5/.5 Bb4/.5 A4 F4 | C5/.5 D5/.5 C5/.5 Bb4/.5 A4 F4 |
        F4 C4 F4/2 | F4 C4 F4/2"""
TWO_TIGERS = dict(
    beat=.42,
    voices=[("pluck", 1.0, _TIGERS, 0), ("flute", .55, _TIGERS, 8),
            ("bass", .45, "F3 C3 F3 C3 | " * 9 + "F3 C3 F3/2", 0)])

MINUET_IN_G = dict(
    beat=.42,
    voices=[("pluck", 1.0, """
        D5 G4/.5 A4/.5 B4/.5 C5/.5 | D5 G4 G4 | E5 C5/.5 D5/.5 E5/.5 F#5/.5 | G5 G4 G4 | C5 D5/.5 C5/.5 B4/.5 A4/.5 | B4 C5/.5 B4/.5 A4/.5 G4/.5 |
        F#4 G4/.5 A4/.5 B4/.5 G4/.5 | A4/3 |
        D5 G4/.5 A4/.5 B4/.5 C5/.5 | D5 G4 G4 | E5 C5/.5 D5/.5 E5/.5 F#5/.5 | G5 G4 G4 | C5 D5/.5 C5/.5 B4/.5 A4/.5 | B4 C5/.5 B4/.5 A4/.5 G4/.5 |
        A4 B4/.5 A4/.5 G4/.5 F#4/.5 | G4/3""", 0),
            ("pluck", .6, """
        G3+B3/2 A3 | B3/3 | C4/3 | B3/3 | A3/3 | G3/3 | D4 B3 G3 | D4 D3/.5 C4/.5 B3/.5 A3/.5 |
        B3/2 A3 | G3 B3 G3 | C4/3 | B3 C4/.5 B3/.5 A3/.5 G3/.5 | A3/2 F#3 | G3/2 B3 | C4 D4 D3 | G3/2 G2""", 0)])

SAKURA = dict(
    beat=.5,
    voices=[("pluck", 1.0, """
        A4 A4 B4/2 | A4 A4 B4/2 | A4 B4 C5 B4 | A4 B4/.5 A4/.5 F4/2 | E4 C4 E4 F4 | E4 E4/.5 C4/.5 B3/2 |
        A4 B4 C5 B4 | A4 B4/.5 A4/.5 F4/2 | E4 C4 E4 F4 | E4 E4/.5 C4/.5 B3/2 | A4 A4 B4/2 | A4 A4 B4/2 | E4 F4 B4/.5 A4/.5 F4 | E4/4""", 0),
            ("flute", .3, """
        -/8 | E5/4 | F5/2 C5/2 | C5/4 | B4/4 | E5/4 | F5/2 C5/2 | C5/4 | B4/4 | E5/4 | E5/4 | C5/2 F5/2 | E5/4""", 0),
            ("bass", .4, "A2/4 | A2/4 | A2/4 | F2/4 | C3/4 | E2/4 | A2/4 | F2/4 | C3/4 | E2/4 | A2/4 | A2/4 | F2/4 | E2/4", 0)])

# What a navigation program keeps in its map folder: three notes before a turn.
TURN_SIGNAL = dict(beat=.4, voices=[("bell", 1.0, "G5 E5 C5/2", 0)])
