#!/usr/bin/env python3
"""Encodes songs as people do, with lame and ffmpeg, and asks ffprobe how long they play.

encode_songs.py --out DIR --lame LAME --ffmpeg FFMPEG --ffprobe FFPROBE
    DIR/NAME.mp3 and .wma, and DIR/durations.txt: a name and ffprobe's milliseconds a line
"""
import argparse
import concurrent.futures
import functools
import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from encoders import encode_mp3, run, write_wave

SECONDS = 2
SWEEP_HZ = 1500

# name: (sample rate, channels, options of lame)
LAME = {
    "mpeg1_stereo_64": (44100, 2, "-m s -b 64"),
    "mpeg1_stereo_128": (44100, 2, "-m s -b 128"),
    "mpeg1_stereo_320": (44100, 2, "-m s -b 320"),
    "mpeg1_joint_128": (44100, 2, "-m j -b 128"),
    "mpeg1_mono_64": (44100, 1, "-m m -b 64"),
    "mpeg1_48000_192": (48000, 2, "-m s -b 192"),
    "mpeg1_32000_96": (32000, 2, "-m j -b 96"),
    "mpeg1_without_info": (44100, 2, "-m s -b 128 -t"),
    "mpeg1_vbr_2": (44100, 2, "-m j -V 2"),
    "mpeg1_vbr_9": (44100, 2, "-m s -V 9"),
    "mpeg1_48000_vbr": (48000, 2, "-m j -V 4"),
    "mpeg1_abr": (44100, 2, "-m j --abr 140"),
    "mpeg1_mono_vbr": (44100, 1, "-m m -V 5"),
    "mpeg2_22050_64": (22050, 2, "-m s -b 64"),
    "mpeg2_24000_32": (24000, 1, "-m m -b 32"),
    "mpeg2_16000_24": (16000, 1, "-m m -b 24"),
    "mpeg2_22050_80": (22050, 2, "-m s -b 80"),
    "mpeg2_22050_40": (22050, 1, "-m m -b 40"),
    "mpeg2_22050_160": (22050, 2, "-m s -b 160"),
    "mpeg2_vbr": (22050, 2, "-m s -V 8"),
    "mpeg25_11025_32": (11025, 1, "-m m -b 32"),
    "mpeg25_8000_16": (8000, 1, "-m m -b 16"),
    "id3v1": (44100, 2, "-m s -b 128 --id3v1-only --tt Plain"),
    "id3v23_latin1": (44100, 2, "-m s -b 128 --id3v2-only --id3v2-latin1 --tt Déjà"),
    "id3v23_utf16": (44100, 2, "-m s -b 128 --id3v2-only --id3v2-utf16 --tt 茉莉花"),
    "both_tags": (44100, 2, "-m j -V 4 --add-id3v2 --tt Both"),
}
# name: (extension, options of ffmpeg)
FFMPEG = {
    "ffmpeg_cbr": ("mp3", "-c:a libmp3lame -b:a 128k -id3v2_version 0"),
    "ffmpeg_vbr": ("mp3", "-c:a libmp3lame -q:a 4 -id3v2_version 0"),
    "ffmpeg_id3v23": ("mp3", "-c:a libmp3lame -b:a 128k -id3v2_version 3 -metadata title=小星星"),
    "ffmpeg_id3v24": ("mp3", "-c:a libmp3lame -b:a 128k -id3v2_version 4 -metadata title=小星星"),
    "ffmpeg_all_tags": ("mp3", "-c:a libmp3lame -b:a 128k -id3v2_version 3 -write_id3v1 1 -metadata title=Tagged"),
    "wmav1": ("wma", "-c:a wmav1 -b:a 64k -metadata title=Version1"),
    "wmav2": ("wma", "-c:a wmav2 -b:a 128k -metadata title=欢乐颂 -metadata track=7"),
    "wmav2_untitled": ("wma", "-c:a wmav2 -b:a 48k"),
}


@functools.cache
def wave(ffmpeg, folder, rate, channels):
    path = folder / f"{rate}_{channels}.wav"
    write_wave(path, rate, channels, SECONDS, SWEEP_HZ, ffmpeg)
    return path


def encode(tools, name):
    if name in LAME:
        rate, channels, options = LAME[name]
        song = tools.out / f"{name}.mp3"
        encode_mp3(wave(tools.ffmpeg, tools.out, rate, channels), song, rate, options, tools.lame)
    else:
        extension, options = FFMPEG[name]
        song = tools.out / f"{name}.{extension}"
        run(tools.ffmpeg, "-v", "error", "-y", "-i", wave(tools.ffmpeg, tools.out, 44100, 2), "-map_metadata", -1, *options.split(),
            song)
    seconds = run(tools.ffprobe, "-v", "error", "-show_entries", "format=duration", "-of", "csv=p=0", song)
    return f"{song.name} {float(seconds) * 1000:.0f}\n"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--out", type=pathlib.Path, required=True)
    for tool in ("lame", "ffmpeg", "ffprobe"):
        parser.add_argument(f"--{tool}", required=True)
    tools = parser.parse_args()
    tools.out.mkdir(parents=True, exist_ok=True)
    for rate, channels in {(rate, channels) for rate, channels, _ in LAME.values()} | {(44100, 2)}:
        wave(tools.ffmpeg, tools.out, rate, channels)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        lines = list(pool.map(functools.partial(encode, tools), [*LAME, *FFMPEG]))
    (tools.out / "durations.txt").write_text("".join(lines), encoding="utf-8")


if __name__ == "__main__":
    main()
