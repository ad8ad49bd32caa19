"""Songs as people make them: a sound from ffmpeg, encoded by lame."""
import os
import subprocess


def run(*command):
    """What the command prints. One that fails ends the test."""
    return subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True,
                          env={**os.environ, "LC_ALL": "C.UTF-8"}).stdout


def write_wave(wave, rate, channels, seconds, sweep_hz, ffmpeg="ffmpeg"):
    """Loud and quiet in turn and a little of everything, so that a variable bit rate varies. The sweep's pitch rises by
    twice `sweep_hz` each second."""
    sound = f"0.3*sin(2*PI*440*t)*(1+sin(2*PI*t))+0.2*sin(2*PI*{sweep_hz}*t*t)+0.05*(random(0)-0.5)*gt(sin(3*t)\\,0)"
    run(ffmpeg, "-v", "error", "-y", "-f", "lavfi", "-i", f"aevalsrc=exprs={sound}:s={rate}:d={seconds}", "-ac", channels, wave)


def encode_mp3(wave, song, rate, options, lame="lame"):
    """`options`: a text of lame's own options."""
    run(lame, "--quiet", "--resample", rate / 1000, *options.split(), wave, song)
