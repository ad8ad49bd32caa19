"""A small additive synthesiser for the sounds and songs that come with a device. Deterministic; standard library only."""

import array
import functools
import itertools
import math
import operator
import struct

RATE = 22050
TABLE_LENGTH = 2048          # a power of two
LONGEST_NOTE = 6             # seconds
LEAD = .3                    # seconds of silence before a song

# Each instrument: partials of the attack, partials of what rings on, seconds to a third of the strength for the two,
# attack and release in seconds. The brighter first table fades soon: that is what makes a pluck or a hammer.
INSTRUMENTS = {
    "pluck": ([1, .6, .45, .3, .22, .15, .1, .07], [1, .25, .08, .03], .10, .55, .003, .06),
    "bell": ([1, 0, .4, .9, 0, .25, 0, .12], [1, .05, .12, .1], .12, .7, .002, .08),
    "flute": ([1, .28, .1, .05], [1, .34, .16, .05, .02], .08, 6.0, .045, .07),
    "reed": ([1, .1, .5, .08, .28, .05, .14], [1, .12, .45, .1, .2], .2, 4.0, .02, .05),
    "strings": ([1, .55, .4, .28, .2, .12, .08], [1, .5, .34, .22, .14, .08], .3, 5.0, .07, .12),
    "bass": ([1, .5, .25, .1], [1, .3, .1], .12, .8, .006, .06),
}
NOTE_STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}


def frequency(note):
    """Hertz of a note name such as A4, F#5 or Bb3."""
    step = NOTE_STEPS[note[0]] + note.count("#") - note[1:].count("b")
    return 440.0 * 2 ** ((step - 9) / 12 + int(note[-1]) - 4)


@functools.lru_cache(maxsize=None)
def wave_table(partials, highest, peak):
    """One period of the partials that stay below half the sample rate."""
    kept = partials[:highest]
    total = sum(kept) / peak
    turn = 2 * math.pi / TABLE_LENGTH
    return [sum(level * math.sin(turn * i * (k + 1)) for k, level in enumerate(kept)) / total for i in range(TABLE_LENGTH)]


@functools.lru_cache(maxsize=None)
def decay_curve(seconds):
    """Falls to a third in `seconds`; as long as the longest note."""
    factor = math.exp(-1 / (seconds * RATE))
    return list(itertools.accumulate(itertools.repeat(factor, LONGEST_NOTE * RATE - 1), operator.mul, initial=1.0))


def shape_ends(samples, attack, release):
    for i in range(min(attack, len(samples))):
        samples[i] *= i / attack
    for i in range(min(release, len(samples))):
        samples[-1 - i] *= i / release


@functools.lru_cache(maxsize=None)
def render_note(instrument, note, seconds, gain):
    """The samples of one note, between -gain and gain."""
    first, second, first_decay, second_decay, attack, release = INSTRUMENTS[instrument]
    pitch, length = frequency(note), max(1, round(seconds * RATE))
    highest = max(1, min(int(RATE * .45 / pitch), len(first)))
    bright, mellow = wave_table(tuple(first), highest, .5 * gain), wave_table(tuple(second), highest, .5 * gain)
    step, mask = pitch * TABLE_LENGTH / RATE, TABLE_LENGTH - 1
    index = [int(i * step) & mask for i in range(length)]
    struck = map(operator.mul, map(bright.__getitem__, index), decay_curve(first_decay))
    rung = map(operator.mul, map(mellow.__getitem__, index), decay_curve(second_decay))
    samples = list(map(operator.add, struck, rung))
    shape_ends(samples, round(attack * RATE), round(release * RATE))
    return samples


def parse_melody(text):
    """[(note or None, beats)] of 'C4 D4/2 -/3 ...': a name, then its beats after a slash (1 when missing); - rests."""
    notes = []
    for word in text.replace("|", " ").split():
        name, _, beats = word.partition("/")
        notes.append((None if name == "-" else name, float(beats or 1)))
    return notes


def total_beats(text):
    return sum(beats for _, beats in parse_melody(text))


def mix(track, samples, start):
    """Adds samples to the track from `start` on; what does not fit is dropped."""
    end = min(len(track), start + len(samples))
    track[start:end] = map(operator.add, track[start:end], samples)


def play_voice(track, voice, beat_seconds, lead):
    """Adds a voice to the track. A ringing instrument sounds on past its note's end, as strings do."""
    instrument, gain, text, offset = voice
    ring = .35 if instrument in ("pluck", "bell", "bass") else .03
    at = lead + offset * beat_seconds
    for name, beats in parse_melody(text):
        if name:
            for part in name.split("+"):
                mix(track, render_note(instrument, part, round(beats * beat_seconds + ring, 4), gain), round(at * RATE))
        at += beats * beat_seconds


def delayed(track, seconds):
    return itertools.chain(itertools.repeat(0.0, round(seconds * RATE)), track)


def to_16_bits(track, scale):
    return array.array("h", [int(s * scale) for s in track])


def stereo(left, right, peak=.7):
    """Interleaved 16-bit samples, the loudest at `peak` of full scale."""
    scale = peak * 32767 / max(max(left), -min(left), max(right), -min(right))
    out = array.array("h", bytes(4 * len(left)))
    out[0::2], out[1::2] = to_16_bits(left, scale), to_16_bits(right, scale)
    return out


def render_song(voices, beat_seconds, lead=LEAD, tail=1.2):
    """Interleaved stereo samples: the first voice a little left, the others a little right, with a short room."""
    beats = max(offset + total_beats(text) for _, _, text, offset in voices)
    length = round((lead + beats * beat_seconds + tail) * RATE)
    melody, others = [0.0] * length, [0.0] * length
    for number, voice in enumerate(voices):
        play_voice(others if number else melody, voice, beat_seconds, lead)
    left = [m * .9 + o * .6 + e * .18 for m, o, e in zip(melody, others, delayed(others, .083))]
    right = [m * .6 + o * .9 + e * .22 for m, o, e in zip(melody, others, delayed(melody, .117))]
    return stereo(left, right)


def wav(samples, channels, rate=RATE):
    """A WAV file of 16-bit samples."""
    data = samples.tobytes()
    header = struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", 36 + len(data), b"WAVE", b"fmt ", 16, 1, channels, rate,
                         rate * channels * 2, channels * 2, 16, b"data", len(data))
    return header + data
