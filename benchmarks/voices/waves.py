"""Waves, tracks of pitch and the index of the sets: what the scripts of this folder share.

Everything that they make lies in build/voices, beside the waves themselves.
"""

import json
import pathlib
import wave

import numpy as np
import scipy.signal

TREE = pathlib.Path(__file__).resolve().parents[2]
BUILD = TREE / "build" / "voices"
INDEX = BUILD / "index.json"

# Each analysis is compared at these times: the frames of a map at the usual rate.
HOP = 256
RATE = 44100
HOP_SECONDS = HOP / RATE


def read_wave(path):
    """Rate and the first channel in units of 16-bit samples, which is the channel that we analyse."""
    with wave.open(str(path)) as file:
        samples = np.frombuffer(file.readframes(file.getnframes()), "<i2")
        return file.getframerate(), samples[:: file.getnchannels()].astype(float)


def write_wave(path, rate, samples):
    """`samples`: 16-bit units, a column a channel where there are several. What is too loud is cut off."""
    path.parent.mkdir(parents=True, exist_ok=True)
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1 if samples.ndim == 1 else samples.shape[1])
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(np.clip(np.round(samples), -32768, 32767).astype("<i2").tobytes())


def at_rate(samples, rate, wanted):
    if rate == wanted:
        return samples
    common = np.gcd(rate, wanted)
    return scipy.signal.resample_poly(samples, wanted // common, rate // common, axis=0)


def seconds_of(path):
    with wave.open(str(path)) as file:
        return file.getnframes() / file.getframerate()


def grid_of(path):
    """The times [s] at which a wave is compared."""
    return np.arange(0.0, seconds_of(path), HOP_SECONDS)


def on_grid(times, hz, grid):
    """A track at the times of `grid`: between two near pitches along the line between them, else the nearest frame.

    0 is no voice, NaN where the track has no frame.
    """
    if len(times) < 2:
        return np.full(len(grid), np.nan)
    step = times[1] - times[0]
    place = (grid - times[0]) / step
    low = np.clip(np.floor(place).astype(int), 0, len(hz) - 2)
    below, above = hz[low], hz[low + 1]
    nearest = np.where(place - low < 0.5, below, above)
    with np.errstate(divide="ignore", invalid="ignore"):
        along = below * (above / below) ** np.clip(place - low, 0.0, 1.0)
        joined = (below > 0) & (above > 0) & (np.abs(np.log2(above / below)) < 1 / 6)
    out = np.where(joined, along, nearest)
    out[(place < -0.5) | (place > len(hz) - 0.5)] = np.nan
    return out


def recordings():
    """The entries of the recordings, which the list tells."""
    for line in (TREE / "benchmarks" / "voices" / "recordings.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            side, voice, package, path = line.split("\t")
            place = f"{side}/{package}/{path.replace('/', '_')}.wav"
            yield {"wave": place, "set": "recordings", "kind": "", "voice": voice, "aside": side == "aside"}


def made():
    return json.loads(INDEX.read_text()) if INDEX.exists() else []


def put_made(name, entries):
    """Puts the entries of a set that was made in place of those that it had.

    An entry: `wave` (path below BUILD), `set`, `kind` within it, `voice`, `aside`, and whence its truth comes: `truth`,
    a file of pitches on the grid, or `origin`, the recording that it is a copy of.
    """
    INDEX.write_text(json.dumps([one for one in made() if one["set"] != name] + entries, indent=1) + "\n")
