"""Listens to the loudspeaker: a recorder on the sound server, and what its sound is made of."""

import array
import collections
import math
import subprocess
import threading
import time

PATIENCE_S = 10.0
RATE = 48000
WINDOW = RATE // 10  # samples
SILENCE_DB = -120.0
AUDIBLE_DB = -60.0


class Failure(Exception):
    pass


def wait_for(what, condition, patience_s=PATIENCE_S):
    """Returns the first true answer of `condition`; says what did not happen otherwise."""
    limit = time.monotonic() + patience_s
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > limit:
            raise Failure(f"within {patience_s:.0f} s: {what}")
        time.sleep(0.02)


def level_db(samples):
    """Below full scale."""
    rms = math.sqrt(sum(sample * sample for sample in samples) / len(samples)) / 32768.0
    return max(20.0 * math.log10(rms), SILENCE_DB) if rms > 0.0 else SILENCE_DB


def frequency_hz(samples):
    """Of a pure tone: the mean distance of the rising passages through zero, each placed between two samples by a straight
    line; 0 where there are too few of them."""
    passages = [at - before / (after - before)
                for at, (before, after) in enumerate(zip(samples, samples[1:])) if before < 0 <= after]
    return (len(passages) - 1) * RATE / (passages[-1] - passages[0]) if len(passages) > 2 else 0.0


class StampedEar:
    """When the loudspeaker was heard, to ten milliseconds and what the recorder needs, and what it played."""

    def __init__(self, environment):
        self.samples = array.array("h")
        self.last_sound = 0.0  # by the monotonic clock
        self.sound_end = 0  # in samples
        self.recorder = subprocess.Popen(
            ["parec", "--device=@DEFAULT_MONITOR@", "--format=s16le", f"--rate={RATE}", "--channels=1", "--latency-msec=10"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=environment)
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        size = 2 * (RATE // 100)
        while len(sound := self.recorder.stdout.read(size)) == size:
            block = array.array("h", sound)
            self.samples += block
            if level_db(block) > AUDIBLE_DB:
                self.last_sound, self.sound_end = time.monotonic(), len(self.samples)

    def expect_sound(self, what):
        """From now on; returns about where in the samples it began."""
        since, place = time.monotonic(), len(self.samples)
        wait_for(f"{what}: sound", lambda: self.last_sound > since)
        return place

    def silent_for(self, seconds):
        return time.monotonic() - self.last_sound > seconds


class Ear:
    """What the loudspeaker plays: the last tenths of a second as (Hz, dB)."""

    def __init__(self, environment):
        self.recorder = subprocess.Popen(
            ["parec", "--device=@DEFAULT_MONITOR@", "--format=s16le", f"--rate={RATE}", "--channels=1", "--latency-msec=50"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=environment)
        self.heard = collections.deque(maxlen=600)
        self.count = 0
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        samples = array.array("h")
        while len(sound := self.recorder.stdout.read(WINDOW * samples.itemsize)) == WINDOW * samples.itemsize:
            samples = array.array("h", sound)
            level = level_db(samples)
            self.heard.append((frequency_hz(samples) if level >= AUDIBLE_DB else 0.0, level))
            self.count += 1

    def _fresh(self, windows, since):
        return list(self.heard)[-windows:] if self.count - since >= windows else []

    def expect_tone(self, what, hz, patience_s=PATIENCE_S):
        """Three tenths of a second in a row, all heard from now on."""
        since = self.count

        def sounds():
            fresh = self._fresh(3, since)
            return fresh and all(abs(heard - hz) < hz * 0.02 for heard, _ in fresh)

        self._expect(f"{what}: {hz} Hz", sounds, patience_s)

    def expect_silence(self, what, patience_s=PATIENCE_S):
        since = self.count

        def silent():
            fresh = self._fresh(5, since)
            return fresh and all(level < -70 for _, level in fresh)

        self._expect(f"{what}: silence", silent, patience_s)

    def _expect(self, what, condition, patience_s):
        try:
            wait_for(what, condition, patience_s)
        except Failure as failure:
            last = ", ".join(f"{hz:.0f} Hz {level:.0f} dB" for hz, level in list(self.heard)[-5:])
            raise Failure(f"{failure}; heard at the end: {last or 'nothing at all'}") from None
        print(f"ok: {what}", flush=True)
