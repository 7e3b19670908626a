#!/usr/bin/env python3
"""Makes the six sounds, 48 kHz 16-bit mono, the same bytes every time.

make_sounds.py [folder]    default: the folder of this script
"""

import math
import struct
import sys
import wave
from pathlib import Path

RATE = 48000
PEAK = 10 ** (-12 / 20)  # of full scale
FADE_IN = 0.003
FADE_OUT = 0.020


def decay(time, half_life):
    return 0.5 ** (time / half_life)


def partials(time, tones):
    """Decaying sines: (frequency, amplitude, half-life) each."""
    return sum(a * decay(time, half) * math.sin(2 * math.pi * f * time) for f, a, half in tones)


def bump(time, start, length, edge=0.006):
    """1 between start and start + length, with raised-cosine edges, 0 elsewhere."""
    inside = min(time - start, start + length - time)
    return 0.0 if inside <= 0 else 0.5 - 0.5 * math.cos(math.pi * min(inside / edge, 1.0))


def pop(time):
    """A drop of water: a short tone that glides up."""
    phase = 2 * math.pi * (330 * time + 0.5 * 5200 * time * time)
    return decay(time, 0.022) * (math.sin(phase) + 0.25 * math.sin(2 * phase))


def tink(time):
    """A fingernail on a thin cup: high and short, with tones that are no harmonics."""
    return partials(time, ((2637, 1.0, 0.035), (4186, 0.55, 0.022), (6645, 0.3, 0.012), (8372, 0.12, 0.006)))


def glass(time):
    """A struck wine glass: a long ring that beats slowly."""
    return partials(time, ((1046.5, 1.0, 0.13), (1050.5, 0.6, 0.13), (2428, 0.45, 0.08), (4448, 0.22, 0.045),
                           (6938, 0.08, 0.02)))


def ping(time):
    """A bell of few tones: clean and round."""
    return partials(time, ((1568, 1.0, 0.075), (3136, 0.3, 0.04), (4704, 0.08, 0.02)))


def morse(time):
    """A dot and a dash."""
    keyed = bump(time, 0.0, 0.055) + bump(time, 0.1, 0.15)
    return keyed * (math.sin(2 * math.pi * 740 * time) + 0.12 * math.sin(2 * math.pi * 2220 * time))


def purr(time):
    """A low tone in soft, quick pulses."""
    pulse = (0.5 - 0.5 * math.cos(2 * math.pi * 24 * time)) ** 1.5
    swell = math.sin(math.pi * min(time / 0.5, 1.0)) ** 0.7
    tone = sum(math.sin(2 * math.pi * 147 * n * time + n) / n ** 1.2 for n in range(1, 6))
    return pulse * swell * tone


SOUNDS = {"Pop": (pop, 0.14), "Tink": (tink, 0.22), "Glass": (glass, 0.60), "Ping": (ping, 0.40),
          "Morse": (morse, 0.26), "Purr": (purr, 0.50)}


def faded(sample, time, length):
    ramp = min(time / FADE_IN, (length - time) / FADE_OUT, 1.0)
    return sample * (0.5 - 0.5 * math.cos(math.pi * max(ramp, 0.0)))


def render(voice, length):
    count = round(length * RATE)
    end = (count - 1) / RATE
    samples = [faded(voice(n / RATE), n / RATE, end) for n in range(count)]
    scale = PEAK * 32767 / max(abs(sample) for sample in samples)
    return [round(sample * scale) for sample in samples]


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parent
    folder.mkdir(parents=True, exist_ok=True)
    for name, (voice, length) in SOUNDS.items():
        samples = render(voice, length)
        with wave.open(str(folder / f"{name}.wav"), "wb") as file:
            file.setnchannels(1)
            file.setsampwidth(2)
            file.setframerate(RATE)
            file.writeframes(struct.pack(f"<{len(samples)}h", *samples))


if __name__ == "__main__":
    main()
