#!/usr/bin/env python3
"""Makes the demo card: songs synthesised and encoded in every form the player reads, lyrics, and files it must skip."""

import argparse
import array
import json
import math
import multiprocessing
import os
import pathlib
import shutil
import subprocess

import song_tags
import melodies
import synth

# lame's options for each form of MP3; "wma" is ffmpeg's.
MP3_FORMS = {
    "mp3 cbr": ["--cbr", "-b", "128", "-m", "j", "--resample", "44.1"],
    "mp3 vbr": ["-V", "4", "-m", "j", "--resample", "44.1"],
    "mp3 mono": ["--cbr", "-b", "64", "-m", "m", "-a", "--resample", "44.1"],
    "mp3 mpeg-2": ["--cbr", "-b", "64", "-m", "j"],
}
TRADITIONAL = "Traditional"

# id3v1 and lrc (lyrics in a file beside the song) name an encoding; uslt and lyrics3 are lyrics in the song's own file. The longest songs come first, for the pool.
CARD = [
    dict(path="Music/送別.mp3", song=melodies.SONG_BIE, form="mp3 vbr", title="送別", artist="李叔同", id3v1="big5", lrc="big5"),
    dict(path="Music/Folk/Auld Lang Syne.MP3", song=melodies.AULD_LANG_SYNE, form="mp3 cbr", title="Auld Lang Syne", artist=TRADITIONAL, id3v1="ascii", lyrics3=True),
    dict(path="Music/Folk/Sakura 樱花.wma", song=melodies.SAKURA, form="wma", title="樱花", artist="日本民歌"),
    dict(path="Music/茉莉花.mp3", song=melodies.MO_LI_HUA, form="mp3 cbr", title="茉莉花", artist="江苏民歌", id3v1="gb2312", lrc="gb2312"),
    dict(path="Music/Classics/欢乐颂.wma", song=melodies.ODE_TO_JOY, form="wma", title="欢乐颂", artist="贝多芬"),
    dict(path="Music/Folk/Greensleeves.mp3", song=melodies.GREENSLEEVES, form="mp3 vbr", title="Greensleeves", artist=TRADITIONAL, id3v1="ascii", id3v2=True, uslt=True),
    dict(path="Music/小星星.mp3", song=melodies.TWINKLE, form="mp3 mpeg-2", title="小星星", artist="法国民歌", id3v1="gb2312"),
    dict(path="Music/Classics/Minuet in G.mp3", song=melodies.MINUET_IN_G, form="mp3 cbr", title="G大调小步舞曲", artist="佩措尔德", id3v1="gb2312", id3v2=True),
    dict(path="Music/兩隻老虎.mp3", song=melodies.TWO_TIGERS, form="mp3 mono", title="兩隻老虎", artist="法國民歌", id3v1="big5"),
    dict(path="00 demo tone.mp3", tones=[(440, 3), (880, 4), (1320, 5)], form="mp3 cbr", title="00 demo tone"),
    dict(path="01 second tone.mp3", tones=[(660, 12)], form="mp3 cbr", title="01 second tone"),
    dict(path="maps/turn signal.mp3", song=melodies.TURN_SIGNAL, form="mp3 cbr", title="turn signal", skipped="the folder is a map folder"),
]
NO_MUSIC = dict(path="Music/not a song.mp3", title="not a song", codec="none", durationMs=0)
TONE_RATE = 44100
TONE_LEVEL = 10 ** (-12 / 20)


def render_tones(tones):
    """Pure tones one after the other, without a jump between them, the same in both channels."""
    phase, left = 0.0, array.array("h")
    for pitch, seconds in tones:
        step = 2 * math.pi * pitch / TONE_RATE
        left.extend(round(32767 * TONE_LEVEL * math.sin(phase + step * i)) for i in range(seconds * TONE_RATE))
        phase = math.fmod(phase + step * seconds * TONE_RATE, 2 * math.pi)
    both = array.array("h", bytes(4 * len(left)))
    both[0::2] = both[1::2] = left
    return both


def lrc_text(entry):
    song = entry["song"]
    lines = [f"[ti:{entry['title']}]", f"[ar:{entry['artist']}]"]
    for beat, text in song["lyrics"]:
        seconds = synth.LEAD + beat * song["beat"]
        lines.append(f"[{int(seconds // 60):02d}:{seconds % 60:05.2f}]{text}")
    return "\r\n".join(lines + [""])


def encode_mp3(entry, wav, file, lame):
    # Into a file, not a pipe: lame goes back to the first frame to write its table of contents.
    subprocess.run([lame, "--quiet", "-q", "7", *MP3_FORMS[entry["form"]], "-", str(file)], input=wav, check=True)
    data = file.read_bytes()
    if entry["form"] == "mp3 vbr" and data[36:40] != b"Xing":
        raise ValueError(f"{file}: no Xing header")
    if entry.get("id3v2"):
        data = song_tags.id3v2(entry["title"], entry["artist"], lrc_text(entry) if entry.get("uslt") else None) + data
    if entry.get("lyrics3"):
        data += song_tags.lyrics3(lrc_text(entry))
    if "id3v1" in entry:
        data += song_tags.id3v1(entry["title"], entry["artist"], entry["id3v1"])
    file.write_bytes(data)


def encode_wma(entry, wav, file, ffmpeg):
    subprocess.run([ffmpeg, "-nostdin", "-v", "error", "-y", "-f", "wav", "-i", "pipe:0", "-map_metadata", "-1",
                    "-metadata", f"title={entry['title']}", "-metadata", f"artist={entry['artist']}",
                    "-c:a", "wmav2", "-b:a", "96k", "-ar", "44100", "-fflags", "+bitexact", "-flags:a", "+bitexact",
                    "-f", "asf", str(file)], input=wav, check=True)
    song_tags.check_asf(file.read_bytes())


def make_song(job):
    """Makes one file; returns its row of the manifest."""
    entry, card, lame, ffmpeg = job
    if "tones" in entry:
        samples, rate = render_tones(entry["tones"]), TONE_RATE
    else:
        samples, rate = synth.render_song(entry["song"]["voices"], entry["song"]["beat"]), synth.RATE
    wav = synth.wav(samples, 2, rate)
    file = card / entry["path"]
    if entry["form"] == "wma":
        encode_wma(entry, wav, file, ffmpeg)
    else:
        encode_mp3(entry, wav, file, lame)
    if "lrc" in entry:
        file.with_suffix(".lrc").write_bytes(lrc_text(entry).encode(entry["lrc"]))
    return manifest_row(entry, round(len(samples) / 2 / rate * 1000))


def manifest_row(entry, duration):
    encodings = [f"id3v1 {entry['id3v1']}"] if "id3v1" in entry else []
    if entry.get("id3v2"):
        encodings.append("id3v2.3 utf-16")
    if entry["form"] == "wma":
        encodings.append("asf utf-16")
    row = dict(path=entry["path"], title=entry["title"], durationMs=duration, codec=entry["form"], tags=encodings)
    if "lrc" in entry:
        row["lyrics"] = dict(path=str(pathlib.PurePath(entry["path"]).with_suffix(".lrc")), encoding=entry["lrc"],
                             lines=len(entry["song"]["lyrics"]))
    for place, encoding in (("uslt", "utf-16"), ("lyrics3", "ascii")):
        if entry.get(place):
            row["lyrics"] = dict(path=entry["path"], place=place, encoding=encoding, lines=len(entry["song"]["lyrics"]))
    if "skipped" in entry:
        row["skipped"] = entry["skipped"]
    return row


def write_no_music(card):
    text = "This file is named like a song and holds none: a player must pass over it without a fuss.\r\n"
    (card / NO_MUSIC["path"]).write_bytes(text.encode("ascii") * 40)
    return dict(NO_MUSIC, tags=[])


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--out", type=pathlib.Path, required=True, help="the card's folder; what it held is removed")
    parser.add_argument("--manifest", type=pathlib.Path, required=True, help="JSON list of what the card holds, for tests")
    parser.add_argument("--lame", default="lame")
    parser.add_argument("--ffmpeg", default="ffmpeg")
    options = parser.parse_args()

    if options.out.name != "card":
        parser.error("--out: the folder's name must be card, for it is emptied first")
    shutil.rmtree(options.out, ignore_errors=True)
    for entry in CARD:
        (options.out / entry["path"]).parent.mkdir(parents=True, exist_ok=True)
    with multiprocessing.Pool(os.cpu_count()) as pool:
        rows = pool.map(make_song, [(entry, options.out, options.lame, options.ffmpeg) for entry in CARD], chunksize=1)
    rows.append(write_no_music(options.out))
    rows.sort(key=lambda row: row["path"])
    options.manifest.write_text(json.dumps(rows, ensure_ascii=False, indent=2) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
