#!/usr/bin/python3
"""Voices whose pitch is known since they are made from it, with the mouths of real vowels.

A mouth is the linear prediction of a vowel of the recordings. What sounds in it are pulses of a glottis (Klatt and
Klatt 1990, "Analysis, synthesis, and perception of voice quality variations among female and male talkers": the flow
opens as a t^2 - b t^3 for a part of the period and closes at once), and breath. The truth is the pitch that was put in;
a frame is voiced where the level of the voice is above -30 dB of its greatest, unvoiced where it is below -50 dB, and
does not count between. Nothing here is shared with the product.
"""

import itertools
import math
import sys

import numpy as np
import scipy.linalg
import scipy.signal

import vote
import waves

RATE = 22050  # of the mouth; most recordings hold no more
OVER = 8  # pulses are laid out so many times as fine, against aliases
ORDER = 24
SECONDS = 1.3
PREEMPHASIS = 0.97
# A prediction can settle on single harmonics of the vowel. A whistle is no mouth: breath alone sounds a pitch in it.
# So each resonance is made a little wider, and none may have been narrower, or lie where no mouth has one.
WIDER_HZ = 30.0
NARROWEST_HZ = 30.0
LOWEST_HZ = 230.0
SYLLABLES = ((0.15, 0.75), (0.85, 1.2))
VOICED, UNVOICED = 10 ** (-30 / 20), 10 ** (-50 / 20)
ROOM = 10 ** (-55 / 20)  # noise of a quiet room under the voice


def geometric(low, high, count):
    return [low * (high / low) ** (i / max(count - 1, 1)) for i in range(count)]


def prediction(samples):
    """Coefficients of the all-pole filter of a stretch (autocorrelation method), tilt of the voice taken out."""
    flat = scipy.signal.lfilter([1.0, -PREEMPHASIS], [1.0], samples) * np.hanning(len(samples))
    correlation = np.correlate(flat, flat, "full")[len(flat) - 1 :][: ORDER + 1]
    correlation[0] *= 1.0 + 1e-6
    return np.concatenate([[1.0], -scipy.linalg.solve_toeplitz(correlation[:-1], correlation[1:])])


def is_mouth(filter_):
    poles = np.roots(filter_)
    hz, width = np.angle(poles) * RATE / (2 * np.pi), -np.log(np.abs(poles)) * RATE / np.pi
    of_voice = (hz > 0) & (hz < LOWEST_HZ) & (width < LOWEST_HZ)
    return not np.any(of_voice) and np.all(width[hz > 0] > NARROWEST_HZ)


def wider(filter_):
    return filter_ * np.exp(-np.pi * WIDER_HZ / RATE) ** np.arange(ORDER + 1)


def steady_vowel(samples, truth):
    """The middle [frame] of the loudest 70 ms with a low and steady pitch; a high one hides the mouth."""
    length = 12
    best, loudest = None, 0.0
    for first in range(len(truth) - length):
        run = truth[first : first + length]
        if not np.all((run > 75) & (run < 230)) or run.max() / run.min() > 2 ** (1 / 12):
            continue
        centre = int((first + length / 2) * waves.HOP_SECONDS * RATE)
        power = np.mean(samples[max(0, centre - 300) : centre + 300] ** 2)
        if power > loudest:
            best, loudest = centre, power
    return best


def mouths(aside):
    """Filters of real vowels, one a recording; those over the telephone hold too little of the spectrum."""
    entries = [one for one in waves.recordings() if one["aside"] == aside and "telephone" not in one["voice"]]
    paths = [waves.BUILD / one["wave"] for one in entries]
    for path, truth in zip(paths, vote.truths(paths)):
        rate, samples = waves.read_wave(path)
        samples = waves.at_rate(samples, rate, RATE)
        centre = steady_vowel(samples, truth)
        if centre is None or centre < 500:
            continue
        mouth = prediction(samples[centre - 441 : centre + 441])
        if is_mouth(mouth):
            yield wider(mouth)


class Voice:
    """What a voice does: pitch [Hz] at a time, breath under it [dB], and how its periods differ."""

    def __init__(self, name, hz, breath=40.0, jitter=0.0, shimmer=0.0, alternate=0.0, opened=0.6):
        self.name, self.hz, self.breath = name, hz, breath
        self.jitter, self.shimmer, self.alternate, self.opened = jitter, shimmer, alternate, opened


def steady(hz):
    return lambda t: hz


def glide(low, high):
    return lambda t: low * (high / low) ** min(max((t - 0.15) / 1.05, 0.0), 1.0)


def vibrato(hz, rate, cents):
    return lambda t: hz * 2 ** (cents / 1200 * math.sin(2 * math.pi * rate * t))


def onset(hz, cents):
    """From above or below within 50 ms, in each syllable."""

    def at(t):
        since = min((t - start for start, _ in SYLLABLES if t >= start), default=0.0)
        return hz * 2 ** (cents / 1200 * max(0.0, 1.0 - since / 0.05))

    return at


def tone(hz, fifths):
    """Pitch on the scale of five that tones are written in, an octave in all, anew in each syllable."""

    def at(t):
        first, last = min(SYLLABLES, key=lambda one: abs(t - sum(one) / 2))
        place = min(max((t - first) / (last - first), 0.0), 1.0) * (len(fifths) - 1)
        return hz * 2 ** (np.interp(place, range(len(fifths)), fifths) / 5.0)

    return at


def voices(scale):
    """All of them by kind; `scale`: their number as part of that of the open set."""
    many = lambda count: round(count * scale)
    turn = itertools.cycle
    yield from (("plain", Voice(f"{hz:.0f}", steady(hz))) for hz in geometric(50, 1100, many(16)))
    for hz, breath, opened in zip(geometric(80, 700, many(28)), turn((20, 15, 10, 5)), turn((0.85, 0.6, 0.7))):
        yield "breathy", Voice(f"{hz:.0f} by {breath} dB", steady(hz), breath=breath, opened=opened)
    for hz, apart in zip(geometric(65, 110, many(12)), turn((0.05, 0.1, 0.15, 0.2))):
        yield "creaky", Voice(f"{hz:.0f} by {apart}", steady(hz), alternate=apart, opened=0.4)
    for hz, jitter, shimmer in zip(geometric(80, 600, many(12)), turn((0.005, 0.01)), turn((0.03, 0.04, 0.05))):
        yield "rough", Voice(f"{hz:.0f} by {jitter}", steady(hz), jitter=jitter, shimmer=shimmer)
    for i, hz in enumerate(geometric(80, 500, many(10))):
        yield "glides", Voice(f"{hz:.0f}", glide(*((hz, 2 * hz) if i % 2 else (2 * hz, hz))), breath=30)
    for hz, cents in zip(geometric(90, 700, many(10)), turn((-100, 200, -300, 100, -200, 300))):
        yield "onsets", Voice(f"{hz:.0f} by {cents}", onset(hz, cents), breath=30)
    for hz, rate, cents in zip(geometric(100, 900, many(10)), turn((5, 6, 7)), turn((30, 60, 100, 80))):
        yield "vibrato", Voice(f"{hz:.0f} by {cents}", vibrato(hz, rate, cents), jitter=0.003, shimmer=0.02)
    for hz, fifths in zip(geometric(80, 260, many(10)), turn(((5, 5), (3, 5), (2, 1, 4), (5, 1)))):
        yield "tones", Voice(f"{hz:.0f} {'-'.join(map(str, fifths))}", tone(hz, fifths), breath=30, jitter=0.005)


def level_at(times, attack, release):
    """0 to 1: syllables that rise and fall as half a cosine."""
    level = np.zeros(len(times))
    for start, end in SYLLABLES:
        edge = np.clip(np.minimum((times - start) / attack, (end - times) / release), 0.0, 1.0)
        level = np.maximum(level, 0.5 - 0.5 * np.cos(np.pi * edge))
    return level


def pulses(voice, chance):
    """The derivative of the glottal flow, and whether the glottis is open, at RATE."""
    fine = RATE * OVER
    flow, opened = np.zeros(int(SECONDS * fine)), np.zeros(int(SECONDS * fine))
    t, sign = 0.0, 1.0
    while True:
        period = 1.0 / voice.hz(t)
        period = 1.0 / voice.hz(t + 0.5 * period) * (1.0 + sign * voice.alternate / 2.0)
        period *= 1.0 + voice.jitter * chance.normal()
        sign = -sign
        first, last = math.ceil(t * fine), math.ceil((t + voice.opened * period) * fine)
        if math.ceil((t + period) * fine) >= len(flow):
            break
        place = (np.arange(first, last) / fine - t) / (voice.opened * period)
        flow[first:last] = (2.0 * place - 3.0 * place**2) * (1.0 + voice.shimmer * chance.normal())
        opened[first:last] = 1.0
        t += period
    return tuple(scipy.signal.resample_poly(signal, 1, OVER) for signal in (flow, opened))


def rms(signal):
    return np.sqrt(np.mean(signal**2))


def sound_and_truth(voice, mouth, chance):
    flow, opened = pulses(voice, chance)
    # Air hisses loudest while the glottis is open.
    breath = chance.normal(size=len(flow)) * (0.4 + 0.6 * opened)
    tract = lambda source: scipy.signal.lfilter([1.0], mouth, source)
    sung, hiss = tract(flow), tract(breath)
    sung /= rms(sung)
    sung += hiss * 10 ** (-voice.breath / 20) / rms(hiss)

    attack, release = chance.uniform(0.02, 0.06), chance.uniform(0.05, 0.12)
    times = np.arange(len(sung)) / RATE
    out = sung * level_at(times, attack, release) + ROOM * chance.normal(size=len(sung))
    if chance.random() < 0.5:  # a consonant before the first vowel
        s = chance.normal(size=len(sung)) * ((times > 0.06) & (times < 0.15))
        out += 0.2 * scipy.signal.lfilter(*scipy.signal.butter(2, 3000, "high", fs=RATE), s)
    samples = waves.at_rate(out * 12000.0 / np.max(np.abs(out)), RATE, waves.RATE)

    grid = np.arange(0.0, len(samples) / waves.RATE, waves.HOP_SECONDS)
    level = level_at(grid, attack, release)
    truth = np.array([voice.hz(t) for t in grid])
    truth[level <= VOICED] = np.nan
    truth[level < UNVOICED] = 0.0
    return samples, truth


def make(aside):
    filters = list(mouths(aside))
    print(f"{len(filters)} mouths", file=sys.stderr)
    for i, (kind, voice) in enumerate(voices(0.4 if aside else 1.0)):
        place = f"known/{'aside' if aside else 'open'}/{kind}_{voice.name.replace(' ', '_')}"
        chance = np.random.default_rng(list(place.encode()))
        samples, truth = sound_and_truth(voice, filters[i * 7 % len(filters)], chance)
        waves.write_wave(waves.BUILD / f"{place}.wav", waves.RATE, samples)
        np.save(waves.BUILD / f"{place}.npy", truth)
        yield {"wave": f"{place}.wav", "kind": kind, "voice": voice.name, "truth": f"{place}.npy"} | {
            "set": "known",
            "aside": aside,
        }


if __name__ == "__main__":
    waves.put_made("known", [*make(False), *make(True)])
