#!/usr/bin/env python3
"""Encodes songs as people do, wears them with tags, and holds the lengths and the seeks of LOOK to what ffprobe counts.

song_lengths_test.py LOOK [--long]    --long: also songs of a minute with every tag, and of ten minutes
"""
import concurrent.futures
import os
import pathlib
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from encoders import encode_mp3, run, write_wave

SECONDS_OFF = 0.05
VARYING_SHARE_OFF = 0.02
FREE_BIT_RATE = 400_000
SWEEP_HZ = 15
# name: (sample rate, channels, options of lame)
KINDS = {
    "cbr": (44100, 2, "-m j -b 128 -t"),
    "cbr 320": (44100, 2, "-m s -b 320 -t"),
    "cbr mono": (44100, 1, "-m m -b 64 -t"),
    "cbr 48 kHz": (48000, 2, "-m j -b 192 -t"),
    "cbr 32 kHz": (32000, 2, "-m j -b 96 -t"),
    "info": (44100, 2, "-m j -b 128"),
    "abr": (44100, 2, "-m j --abr 140"),
    "vbr": (44100, 2, "-m j -V 4"),
    "vbr mono": (44100, 1, "-m m -V 6"),
    "vbri": (44100, 2, "-m j -V 4 -t"),
    "vbr without a header": (44100, 2, "-m j -V 4 -t"),
    "abr without a header": (44100, 2, "-m j --abr 140 -t"),
    "free format": (44100, 2, f"-m j -b {FREE_BIT_RATE // 1000} --freeformat -t"),
    "mpeg2": (22050, 2, "-m j -b 64 -t"),
    "mpeg2 mono vbr": (24000, 1, "-m m -V 5"),
    "mpeg2.5": (11025, 1, "-m m -b 32 -t"),
    "mpeg2.5 8 kHz": (8000, 1, "-m m -b 16 -t"),
}
TAGGED = ("cbr", "vbr")


def id3(body):
    size = bytes(len(body) >> shift & 0x7F for shift in (21, 14, 7, 0))
    return b"ID3\3\0\0" + size + body


def frame(name, content):
    return name + len(content).to_bytes(4, "big") + b"\0\0" + content


def cover(size):
    """Any bytes, as a picture's are; some of them look like sound."""
    picture = b"\xff\xd8\xff\xe0" + bytes((i * i * 31 + (i >> 7)) & 0xFF for i in range(size))
    return id3(frame(b"APIC", b"\0image/jpeg\0\3\0" + picture))


UTF16 = id3(b"".join(frame(name, b"\1\xff\xfe" + "茉莉花 Jasmine".encode("utf-16-le") * 40) for name in (b"TIT2", b"TPE1", b"TALB")))
TAGS = {
    "no tag": (b"", b""),
    "cover of 100 kB": (cover(100_000), b""),
    "cover of 1 MB": (cover(1_000_000), b""),
    "cover of 5 MB": (cover(5_000_000), b""),
    "padding": (id3(bytes(300_000)), b""),
    "two tags": (cover(50_000) + UTF16, b""),
    "utf-16": (UTF16, b"TAG" + bytes(125)),
}


def vbri(song):
    """The same song with a first frame that tells its length where other encoders do."""
    frames = round(counted(song) * 44100 / 1152)
    sound = song.read_bytes()
    head = bytearray(417)
    head[:4] = bytes((0xFF, 0xFB, 0x90, 0x64))
    told = b"VBRI" + (1).to_bytes(2, "big") + bytes(4) + (len(sound) + 417).to_bytes(4, "big") + frames.to_bytes(4, "big")
    head[36:36 + len(told)] = told
    song.write_bytes(bytes(head) + sound)


def counted(song):
    """The sum of the packets' durations."""
    listing = run("ffprobe", "-v", "error", "-show_entries", "packet=duration_time", "-of", "csv=p=0", song)
    return sum(float(line.strip(",")) for line in listing.split() if line.strip(","))


def encode(folder, name, seconds):
    rate, channels, options = KINDS[name]
    song = folder / f"{name.replace(' ', '_')}_{seconds}.mp3"
    wave = song.with_suffix(".wav")
    write_wave(wave, rate, channels, seconds, SWEEP_HZ)
    encode_mp3(wave, song, rate, options)
    wave.unlink()
    if name == "vbri":
        vbri(song)
    return song


def truth(name, song):
    """ffprobe does not read a free bit rate; there the bytes tell, which take as long as they were asked to."""
    return song.stat().st_size * 8 / FREE_BIT_RATE if name == "free format" else counted(song)


def judge(what, look, song, seconds):
    length, worst, _ = map(float, run(look, song).split())
    off = length - seconds
    allowed = VARYING_SHARE_OFF * seconds if "without a header" in what else SECONDS_OFF
    good = abs(off) <= allowed and worst <= SECONDS_OFF
    print(f"{'ok' if good else 'WRONG'}: {what}: {length:.3f} s, {1000 * off:+.1f} ms, seeks {1000 * worst:.1f} ms off", flush=True)
    return good


def hold(folder, look, name, seconds, is_tagged):
    song = encode(folder, name, seconds)
    expected = truth(name, song)
    if not 0.99 * seconds < expected < 1.03 * seconds + 0.2:
        sys.exit(f"{name}: ffprobe says {expected} of {seconds} s")
    sound = song.read_bytes()
    good = []
    for tags in TAGS if is_tagged else ("no tag",):
        before, behind = TAGS[tags]
        song.write_bytes(before + sound + behind)
        good.append(judge(f"{name}, {seconds} s, {tags}", look, song, expected))
    song.unlink()
    return all(good)


def main():
    look, long = pathlib.Path(sys.argv[1]).resolve(), "--long" in sys.argv
    lengths = (8, 60) if long else (8,)
    songs = [(name, seconds, name in TAGGED) for name in KINDS for seconds in lengths]
    songs += [("cbr", 60, False), ("vbr without a header", 60, False)] if not long else \
             [("cbr", 600, False), ("vbr", 600, False)]
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda song: hold(pathlib.Path(folder), look, *song), songs))
    if not all(results):
        sys.exit("FAILED: a length or a seek is off")


if __name__ == "__main__":
    main()
