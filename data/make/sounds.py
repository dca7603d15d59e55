"""Makes the three sounds of the picture list: soft, short, each with its own shape."""

import math
import random
import struct
import sys
import wave

RATE = 44100  # samples a second


def tone(pitch, seconds, decay, partials):
    """A struck note. partials: strength of each harmonic; the higher ones die sooner."""
    out = []
    for i in range(round(seconds * RATE)):
        t = i / RATE
        out.append(
            sum(
                strength * math.exp(-t * k / decay) * math.sin(math.tau * pitch * k * t)
                for k, strength in enumerate(partials, 1)
            )
        )
    return out


def tick():
    """A wooden click: a low knock with a breath of filtered noise at its start."""
    out = tone(620, 0.085, 0.014, (1.0, 0.35, 0.0, 0.12))
    rng = random.Random(3)
    soft = 0.0
    for i in range(len(out)):
        soft += 0.18 * (rng.random() * 2 - 1 - soft)
        out[i] += 0.9 * soft * math.exp(-i / RATE / 0.006)
    return out


def two_notes(first, second):
    """The second note enters while the first still rings."""
    head = tone(first, 0.24, 0.055, (1.0, 0.22, 0.08))
    tail = tone(second, 0.15, 0.050, (1.0, 0.22, 0.08))
    start = round(0.09 * RATE)
    rise = round(0.004 * RATE)
    for i, v in enumerate(tail):
        head[start + i] += v * min(1.0, i / rise)
    return head


def faded(samples, rise, fall):
    """Starts and ends at silence, so that no edge clicks. rise, fall: seconds."""
    up, down, last = round(rise * RATE), round(fall * RATE), len(samples) - 1
    gain = lambda left, over: 0.5 - 0.5 * math.cos(math.pi * min(1.0, left / over))
    return [v * gain(i, up) * gain(last - i, down) for i, v in enumerate(samples)]


def write(path, samples, peak):
    """peak: greatest amplitude, of full scale 1."""
    scale = peak * 32767 / max(abs(v) for v in samples)
    with wave.open(path, "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes(b"".join(struct.pack("<h", round(v * scale)) for v in samples))


def main(folder):
    write(f"{folder}/picture.wav", faded(tick(), 0.0015, 0.030), 0.30)
    write(f"{folder}/picture_last.wav", faded(two_notes(659.26, 493.88), 0.003, 0.060), 0.30)
    write(f"{folder}/picture_copy.wav", faded(two_notes(523.25, 783.99), 0.003, 0.060), 0.30)


if __name__ == "__main__":
    main(sys.argv[1])
