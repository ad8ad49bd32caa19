#!/usr/bin/env python3
"""Synthesises the two sounds of the alert window: a rising chime and a falling warning, 16-bit mono."""

import argparse
import pathlib

import synth

# (instrument, note, start in seconds, length in seconds, gain)
CHIME = [("bell", "E5", 0, .5, .8), ("bell", "A5", .14, .75, 1), ("bell", "C#6", .14, .75, .35)]
LOW_BATTERY = [("reed", "G5", 0, .17, .9), ("reed", "E5", .19, .17, .9), ("reed", "C5", .38, .42, 1), ("bass", "C4", .38, .42, .5)]
SOUNDS = {"TAVO_Audio_InfoMessage.wav": CHIME, "TAVO_Audio_LowBattery.WAV": LOW_BATTERY}


def render(notes, peak=.6):
    length = round(max(start + seconds for _, _, start, seconds, _ in notes) * synth.RATE)
    track = [0.0] * length
    for instrument, note, start, seconds, gain in notes:
        synth.mix(track, synth.render_note(instrument, note, seconds, gain), round(start * synth.RATE))
    return synth.to_16_bits(track, peak * 32767 / max(map(abs, track)))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    options = parser.parse_args()
    options.out.mkdir(parents=True, exist_ok=True)
    for file, notes in SOUNDS.items():
        (options.out / file).write_bytes(synth.wav(render(notes), 1))


if __name__ == "__main__":
    main()
