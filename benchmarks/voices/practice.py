#!/usr/bin/python3
"""Voices of known pitch that the weighing of candidates is learned from (learn.py), in build/voices/practice.

They are made of drawn numbers alone: mouths of drawn resonances, drawn melodies, breath, creak, rough and shouting
throats, consonants, rooms, noise and bad microphones, none of which is taken from a recording. So none of what
measure.py measures with has been seen by what it measures, known.py's voices neither: they have mouths of real vowels,
and another source. The shares and ranges are wider than what recordings hold, so that nothing of theirs lies at an
edge; those of growls and rough voices, which are one or the other by agreement, were chosen on the open recordings.
"""

import sys
from concurrent.futures import ProcessPoolExecutor

import numpy as np
import scipy.signal

import waves

FOLDER = waves.BUILD / "practice"
COUNT = 1600
SEED = 20260
RATE = 22050  # of most; some are taken to another rate at the end
OVER = 4  # pulses are laid out so many times as fine, against aliases
LOWEST, HIGHEST = 55.0, 1180.0  # [Hz]
AUDIBLE, SILENT = -30.0, -50.0  # [dB] under the loudest of a voice: truth is voiced above, unvoiced below, none between
OVER_NOISE = -6.0  # [dB] of a voice under the noise of its surroundings, which at least makes it unheard

CREAK_HZ = 140.0
GROWL_HZ = 180.0, 900.0  # pulses a second

rms = lambda signal: np.sqrt(np.mean(np.square(signal)) + 1e-20)
gain = lambda decibels: 10.0 ** (decibels / 20.0)


def smooth(chance, length, seconds):
    """A random curve of mean 0 and deviation about 1 that changes within `seconds`."""
    step = max(int(seconds * RATE), 1)
    points = chance.normal(size=length // step + 4)
    return np.interp(np.arange(length) / step, np.arange(len(points)), points)


def resonator(hz, width):
    """Of unit gain at 0 Hz."""
    radius, angle = np.exp(-np.pi * width / RATE), 2 * np.pi * hz / RATE
    poles = [1.0, -2.0 * radius * np.cos(angle), radius**2]
    return [sum(poles)], poles


def mouth(chance):
    """Filters in a row: five resonances where vowels have them for a throat of a drawn length, now and then a dip."""
    length = chance.uniform(0.8, 1.5)
    centres = [(250, 950), (750, 2500), (2000, 3300), (3000, 4300), (4000, 5400)]
    filters = []
    for i, (low, high) in enumerate(centres):
        hz = length * chance.uniform(low, high)
        if hz < 0.46 * RATE:
            filters.append(resonator(hz, chance.uniform(45, 130) * (1 + 0.4 * i)))
    if chance.random() < 0.2:  # the nose takes some out
        zero, pole = chance.uniform(400, 2000), chance.uniform(250, 400)
        dip, _ = resonator(zero, 120)[1], None
        filters.append((np.array(dip) / sum(dip), [1.0]))
        filters.append(resonator(pole, 100))
    return filters


def through(filters, signal):
    for b, a in filters:
        signal = scipy.signal.lfilter(b, a, signal)
    return signal


def melody(chance, length, base):
    """Pitch [Hz] at each sample of a syllable."""
    place = np.linspace(0.0, 1.0, length)
    octaves = np.log2(base) + chance.normal(0.0, 0.15)
    kind = chance.random()
    if kind < 0.5:
        octaves = octaves + chance.normal(0.0, 0.3) * (place - 0.5) + chance.normal(0.0, 0.2) * (place - 0.5) ** 2 * 4
    elif kind < 0.6:
        octaves = octaves + chance.uniform(-1.0, 1.0) * (1 - np.cos(np.pi * place)) / 2
    times = np.arange(length) / RATE
    if chance.random() < 0.4:
        octaves = octaves + chance.uniform(-300, 300) / 1200 * np.clip(1 - times / chance.uniform(0.02, 0.1), 0, None)
    if chance.random() < 0.35:
        depth = chance.uniform(10, 120) / 1200 * np.clip(times / 0.15, 0, 1)
        octaves = octaves + depth * np.sin(2 * np.pi * chance.uniform(4, 8) * times + chance.uniform(0, 6))
    octaves = octaves + chance.uniform(0, 0.02) * smooth(chance, length, 0.03)
    return np.clip(2.0**octaves * np.ones(length), LOWEST, HIGHEST)


def pulses_of(chance, base, shout):
    """How many pulses make a period: more than one in a growl or a hoarse shout, where they differ."""
    count = int(chance.choice([2, 2, 3, 3, 4]))
    if GROWL_HZ[0] < base * count < GROWL_HZ[1] and chance.random() < (0.4 if shout else 0.1):
        return count
    return 1


def pattern(chance, hz, pulses):
    """How pulses differ in turn: their distances over the mean, and how much softer they are.

    In a low creak every other pulse is early, and perhaps softer, but each counts for the pitch. In a growl the
    pattern of several fast pulses is what repeats itself, and its rate is the pitch.
    """
    if pulses > 1:
        apart = 1 + chance.uniform(0, 0.2) * chance.uniform(-1, 1, pulses)
        softer = chance.uniform(0, 1, pulses)
        softer = (softer - softer.min()) / np.ptp(softer) * np.exp(chance.uniform(np.log(0.4), np.log(0.9)))
        return apart / np.mean(apart), softer
    if hz < CREAK_HZ and chance.random() < 0.3:
        apart = chance.uniform(0.03, 0.22) / 2
        return np.array([1 + apart, 1 - apart]), np.array([0.0, chance.uniform(0, 0.25) * (chance.random() < 0.5)])
    if chance.random() < 0.15:  # a rough voice, which is no growl yet
        apart = chance.uniform(-0.015, 0.015)
        return np.array([1 + apart, 1 - apart]), np.array([0.0, chance.uniform(0, 0.3)])
    return np.ones(1), np.zeros(1)


def source(chance, hz, pulses, shout):
    """Derivative of the glottal flow and how far the glottis is open, for a pitch at each sample."""
    length = len(hz)
    fine = RATE * OVER
    flow, opened = np.zeros(length * OVER), np.zeros(length * OVER)
    jitter = chance.choice([0.002, 0.005, 0.01, 0.02]) * (1.5 if shout else 1.0)
    shimmer = chance.choice([0.01, 0.03, 0.06]) * (2.0 if shout else 1.0)
    apart, softer = pattern(chance, np.mean(hz), pulses)
    part, skew = chance.uniform(0.3, 0.9), chance.uniform(0.5, 0.85)
    klatt = chance.random() < 0.5
    t, number = 0.0, 0
    while True:
        at = min(int(t * RATE), length - 1)
        middle = min(int((t + 0.5 / pulses / hz[at]) * RATE), length - 1)
        period = 1.0 / hz[middle] / pulses * apart[number % len(apart)] * (1.0 + jitter * chance.normal())
        height = (1.0 + shimmer * chance.normal()) * (1.0 - softer[number % len(apart)])
        number += 1
        first, last = int(np.ceil(t * fine)), int(np.ceil((t + part * period) * fine))
        if int(np.ceil((t + period) * fine)) >= len(flow):
            break
        place = (np.arange(first, last) / fine - t) / (part * period)
        if klatt:
            shape = 2.0 * place - 3.0 * place**2
        else:  # opens as half a sine, closes as a quarter of one
            rise = np.cos(np.pi * place / skew) * np.pi / skew / 2
            fall = -np.sin(0.5 * np.pi * (place - skew) / (1 - skew)) * 0.5 * np.pi / (1 - skew)
            shape = np.where(place < skew, rise, fall)
        flow[first:last] = shape * height
        opened[first:last] = 1.0
        t += period
    signals = [scipy.signal.resample_poly(signal, 1, OVER)[:length] for signal in (flow, opened)]
    tilt = chance.uniform(0.0, 0.9)
    return scipy.signal.lfilter([1.0 - tilt], [1.0, -tilt], signals[0]), signals[1]


def colour(chance, base, shout):
    """What weakens or stresses a part of the spectrum: throats that shout, telephones, shelves."""
    filters = []
    if chance.random() < (0.7 if shout else 0.3):
        harmonic = chance.choice([1, 2, 2, 2, 3, 4]) * base * chance.uniform(0.9, 1.1)
        if harmonic < 0.4 * RATE:
            stress = gain(chance.uniform(10, 50))
            b, a = scipy.signal.iirpeak(harmonic, harmonic / chance.uniform(40, 250), fs=RATE)
            filters.append((np.polyadd(a, stress * np.array(b)), a))
    if chance.random() < (0.5 if shout else 0.2):
        order, corner = int(chance.choice([1, 2])), chance.uniform(100, max(120, min(1.8 * base, 900)))
        filters.append(scipy.signal.butter(order, corner, "high", fs=RATE))
    if chance.random() < 0.25:
        filters.append(scipy.signal.butter(int(chance.choice([1, 2])), chance.uniform(800, 5000), fs=RATE))
    return filters


def hiss(chance, length):
    """Noise of a consonant, a breath or a whisper."""
    noise = chance.normal(size=length)
    kind = chance.random()
    if kind < 0.35:
        corner = chance.uniform(1500, 6000)
        return scipy.signal.lfilter(*scipy.signal.butter(2, corner, "high", fs=RATE), noise)
    if kind < 0.6:
        low = chance.uniform(150, 3000)
        band = scipy.signal.butter(1, [low, min(low * chance.uniform(1.3, 4), 9000)], "band", fs=RATE)
        return scipy.signal.lfilter(*band, noise)
    return through(mouth(chance), noise)


def edges(times, start, end, attack, release):
    edge = np.clip(np.minimum((times - start) / attack, (end - times) / release), 0.0, 1.0)
    return 0.5 - 0.5 * np.cos(np.pi * edge)


def voice(chance, length, base, shout):
    """A syllable: two mouths that change into each other, voice and breath."""
    pulses = pulses_of(chance, base / 3 if shout else base, shout)
    if shout and pulses > 1:
        base = max(base / pulses, LOWEST)
    hz = melody(chance, length, base)
    flow, opened = source(chance, hz, pulses, shout)
    breath = chance.normal(size=length) * (chance.uniform(0.2, 1.0) + opened * chance.uniform(0.0, 1.0))
    breath *= gain(5.0 * smooth(chance, length, 0.08))
    under = chance.uniform(1, 15) if pulses == 1 and chance.random() < 0.4 else chance.uniform(13, 45)
    shape = colour(chance, base, shout)
    change = np.clip((np.linspace(0, 1, length) - chance.uniform(0, 1)) * chance.uniform(1, 10) + 0.5, 0, 1)
    sung, breathed = 0.0, 0.0
    for weight in (change, 1.0 - change):
        filters = mouth(chance)
        one, other = through(filters, flow), through(filters, breath)
        sung = sung + weight * one / rms(one)
        breathed = breathed + weight * other / rms(other)
    sung, breathed = through(shape, sung), through(shape, breathed)
    sound = sung + breathed * rms(sung) / rms(breathed) * gain(-under)
    return hz, sound / rms(sound)


def surroundings(chance, length):
    noise = chance.normal(size=length)
    kind = chance.random()
    if kind < 0.4:
        noise = scipy.signal.lfilter([1.0], [1.0, -chance.uniform(0.5, 0.99)], noise)
    elif kind < 0.5:  # the mains
        times = np.arange(length) / RATE
        tone = lambda k: chance.uniform(0, 1) / k * np.sin(2 * np.pi * chance.choice([50, 60]) * k * times)
        noise = 0.3 * noise + sum(tone(k) for k in range(1, 6))
    return noise / rms(noise)


def room(chance, samples):
    times = np.arange(int(0.6 * RATE)) / RATE
    tail = chance.normal(size=len(times)) * 10 ** (-3 * times / chance.uniform(0.15, 0.7)) * (times > 0.004)
    tail *= chance.uniform(0.2, 0.9) / np.sqrt(np.sum(tail**2))
    return samples + scipy.signal.fftconvolve(samples, tail)[: len(samples)]


def utterance(chance):
    """Samples at RATE and the truth of each: pitch [Hz], 0 for none, NaN where it does not count."""
    base = np.exp(chance.uniform(np.log(LOWEST), np.log(1100.0)))
    shout = chance.random() < 0.2
    if shout:
        base = max(base, chance.uniform(150, 500))
    length = int(RATE * 2.2)
    times = np.arange(length) / RATE
    out, pitch, level = np.zeros(length), np.zeros(length), np.zeros(length)
    t = chance.uniform(0.0, 0.3)
    while t < 2.0:
        size = int(RATE * min(np.exp(chance.uniform(np.log(0.06), np.log(0.9))), 2.15 - t))
        if size < 900:
            break
        first = int(t * RATE)
        part = slice(first, first + size)
        kind = chance.random()
        if kind < 0.72:
            jump = 2.0 ** chance.choice([0, 0, 0, 0, -1, 1])
            hz, sound = voice(chance, size, np.clip(base * jump, LOWEST, HIGHEST), shout)
            shape = edges(times[part], t, t + size / RATE, chance.uniform(0.003, 0.07), chance.uniform(0.008, 0.15))
            shape = shape * gain(chance.uniform(-14, 0)) * gain(2.0 * smooth(chance, size, 0.05))
            out[part] += sound * shape
            pitch[part], level[part] = hz, shape
        if kind > 0.6:
            shape = edges(times[part], t, t + size / RATE, chance.uniform(0.002, 0.05), chance.uniform(0.005, 0.1))
            sound = hiss(chance, size)
            sound = sound / rms(sound) * shape * gain(chance.uniform(-35, 0 if kind > 0.72 else -10))
            if kind < 0.72 and chance.random() < 0.5:  # beside the voice and not under it
                begin = max(0, first - size // 6)
                sound, part = sound[: size // 3], slice(begin, begin + size // 3)
            out[part] += sound
        t += size / RATE + (0.0 if chance.random() < 0.3 else chance.exponential(0.12))

    loudest = max(level.max(), 1e-3)
    under = chance.uniform(-75, -15) if chance.random() < 0.5 else chance.uniform(-75, -45)
    noise = loudest * gain(under)
    heard = 20 * np.log10(np.maximum(level, 1e-9) / loudest)
    truth = np.where(heard > AUDIBLE, pitch, np.nan)
    truth[heard < max(SILENT, min(under - 10, AUDIBLE))] = 0.0
    truth[(heard < under + OVER_NOISE) & (truth > 0)] = np.nan
    out += noise * surroundings(chance, length)
    if chance.random() < 0.15:
        out = room(chance, out)
        # A room goes on sounding where the voice has ended.
        sounded = np.convolve(level > 0, np.ones(int(0.4 * RATE)))[:length] > 0
        truth[sounded & (truth == 0)] = np.nan
    return out, truth


def recorded(chance, out):
    """As a microphone and a file have it: rate and samples in 16-bit units."""
    out = out * 30000.0 / np.max(np.abs(out)) * gain(-chance.uniform(0, 45) * (chance.random() < 0.4))
    if chance.random() < 0.06:
        out = out * chance.uniform(1.5, 4.0)  # too loud: cut off
    if chance.random() < 0.05:
        out = out + chance.uniform(-8000, 8000)
    rate = chance.choice([RATE, RATE, RATE, RATE, RATE, 8000, 16000, 44100])
    return int(rate), waves.at_rate(out, RATE, int(rate))


def make(number):
    chance = np.random.default_rng([SEED, number])
    out, truth = utterance(chance)
    rate, samples = recorded(chance, out)
    waves.write_wave(FOLDER / f"{number}.wav", rate, samples)
    grid = waves.grid_of(FOLDER / f"{number}.wav")
    np.save(FOLDER / f"{number}.npy", truth[np.minimum((grid * RATE).astype(int), len(truth) - 1)])


def need():
    """Makes those that are not there yet; their paths."""
    missing = [number for number in range(COUNT) if not (FOLDER / f"{number}.npy").exists()]
    if missing:
        print(f"practice: {len(missing)} voices", file=sys.stderr)
        with ProcessPoolExecutor() as pool:
            list(pool.map(make, missing, chunksize=16))
    return [FOLDER / f"{number}.wav" for number in range(COUNT)]


if __name__ == "__main__":
    need()
