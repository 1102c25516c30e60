#!/usr/bin/python3
"""Copies of a third of the open recordings as bad rooms, microphones and files make them.

Their truth is the original's. Each recording is spoilt in two ways, which go round, so that each way has as many.
"""

import numpy as np
import scipy.signal

import waves


def chance_of(place):
    return np.random.default_rng(list(place.encode()))


def noise(decibels):
    """White noise that lies so far under the mean power of the recording."""

    def spoil(samples, rate, chance):
        power = np.mean(samples**2) * 10 ** (-decibels / 10)
        return samples + chance.normal(0.0, np.sqrt(power), len(samples)), rate

    return spoil


def reverb(samples, rate, chance):
    """A room of half a second (60 dB), as loud as the direct sound half a metre away: noise that dies away."""
    time = np.arange(int(0.5 * rate)) / rate
    room = chance.normal(size=len(time)) * 10 ** (-3.0 * time / 0.5) * (time > 0.005)
    room *= 0.7 / np.sqrt(np.sum(room**2))
    return (samples + scipy.signal.fftconvolve(samples, room)[: len(samples)]) * 0.7, rate


def low(samples, rate, _):
    return samples * 10 ** (-40 / 20), rate


def offset(samples, rate, _):
    return samples * 0.7 + 6000.0, rate


def clipped(samples, rate, _):
    """The loudest twentieth of the samples at the limit."""
    return samples * 32767.0 / max(np.percentile(np.abs(samples), 95), 1.0), rate


def at(wanted):
    return lambda samples, rate, _: (waves.at_rate(samples, rate, wanted), wanted)


def stereo(samples, rate, chance):
    """The other channel later, softer, and with noise of its own."""
    late = np.concatenate([np.zeros(40), samples])[: len(samples)] * 0.5
    return np.stack([samples, late + chance.normal(0.0, 50.0, len(samples))], axis=1), rate


WAYS = {
    "noise 20 dB": noise(20),
    "noise 10 dB": noise(10),
    "reverb": reverb,
    "low level": low,
    "offset": offset,
    "clipped": clipped,
    "8 kHz": at(8000),
    "16 kHz": at(16000),
    "48 kHz": at(48000),
    "stereo": stereo,
}


def main():
    names = list(WAYS)
    entries = []
    for i, one in enumerate([one for one in waves.recordings() if not one["aside"]][::3]):
        rate, samples = waves.read_wave(waves.BUILD / one["wave"])
        for kind in (names[2 * i % len(names)], names[(2 * i + 1) % len(names)]):
            place = f"degraded/{kind.replace(' ', '_')}/{one['wave'].replace('/', '_')}"
            spoilt, new_rate = WAYS[kind](samples, rate, chance_of(place))
            waves.write_wave(waves.BUILD / place, new_rate, spoilt)
            entries.append(
                {"wave": place, "set": "degraded", "kind": kind, "voice": one["voice"], "aside": False}
                | {"origin": one["wave"]}
            )
    waves.put_made("degraded", entries)


if __name__ == "__main__":
    main()
