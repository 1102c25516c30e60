#!/usr/bin/python3
"""Makes recordings.txt, the list of what is measured. Run only when the list is to change.

The choice is by chance from a fixed beginning. What is thrown out is thrown out by a rule that does not look at our
analysis: too short, hardly any voice, or so little agreement between the others that there is no truth, as with music,
effects, and several voices at once.
"""

import collections
import random
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

import numpy as np

import vote
import waves

LIST = waves.TREE / "benchmarks" / "voices" / "recordings.txt"
UNPACKED = waves.BUILD / "unpacked"
EACH = 5  # recordings of a voice in a package
TRIED = 12
LEAST_SECONDS = 0.35
LEAST_VOICED = 20  # frames with a pitch
LOUD = 10 ** (-25 / 20)  # of the loudest frame: where there should be a truth
LEAST_AGREED = 0.6  # of the loud frames
# Signals, noises, nothing, and the one voice that went through a machine.
NO_VOICE = re.compile("silence|beep|monkey|ascending|descending|tone|Robot")
PACKAGES = """klettres-data ktuberling-data hedgewars-data asterisk-core-sounds-en-wav asterisk-core-sounds-es-wav
asterisk-core-sounds-fr-wav asterisk-core-sounds-it-wav asterisk-core-sounds-ru-wav asterisk-prompt-it-menardi-wav
asterisk-prompt-es-co asterisk-prompt-fr-armelle""".split()
# Folders of recordings, and what tells their voice. A language of the first two packages is taken for one voice, since
# the same person may have spoken in both.
PLACES = [
    (re.compile(r"/klettres/(\w+)/(?:alpha|syllab)/"), "letters {}"),
    (re.compile(r"/ktuberling/sounds/(\w+)[^/]*/"), "letters {}"),
    (re.compile(r"/hedgewars/Data/Sounds/voices/(\w+)/"), "game {}"),
    (re.compile(r"/asterisk/sounds/(?:\w+_)?(\w+)/"), "telephone {}"),
]


def voice_of(path):
    for place, name in PLACES:
        if found := place.search(path):
            return name.format(found[1])
    return None


def candidates():
    """Of each package and voice some recordings by chance: (package, voice) to paths below the package."""
    found = collections.defaultdict(list)
    for package in PACKAGES:
        for path in sorted(str(path.relative_to(UNPACKED / package)) for path in (UNPACKED / package).rglob("*.*")):
            voice = voice_of("/" + path)
            is_sound = path.endswith((".wav", ".ogg", ".gsm", ".opus"))
            if voice and is_sound and not NO_VOICE.search(path) and (UNPACKED / package / path).is_file():
                found[package, voice].append(path)
    for key, paths in found.items():
        random.Random(str(key)).shuffle(paths)
        del paths[TRIED:]
    return found


def decode(package, path):
    """As the script that fetches does it."""
    target = waves.BUILD / "tried" / package / (path.replace("/", "_") + ".wav")
    if not target.exists():
        target.parent.mkdir(parents=True, exist_ok=True)
        form = "-t 6 -ac 1 -ar 44100 -c:a pcm_s16le -bitexact".split()
        source = UNPACKED / package / path
        subprocess.run(["ffmpeg", "-nostdin", "-v", "error", "-y", "-i", source, *form, target], check=True)
    return target


def levels(path, grid):
    rate, samples = waves.read_wave(path)
    squares = np.concatenate([[0.0], np.cumsum(samples**2)])
    centre = (grid * rate).astype(int)
    first, last = np.clip(centre - rate // 80, 0, len(samples)), np.clip(centre + rate // 80, 0, len(samples))
    return np.sqrt((squares[last] - squares[first]) / np.maximum(last - first, 1))


def has_truth(path, truth):
    level = levels(path, waves.grid_of(path))
    loud = level > LOUD * level.max()
    return np.sum(truth > 0) >= LEAST_VOICED and np.mean(~np.isnan(truth[loud])) >= LEAST_AGREED


def chosen():
    """(package, voice, path) of each recording that is good, at most EACH of a kind."""
    found = candidates()
    tried = [(*key, path) for key, paths in found.items() for path in paths]
    with ThreadPoolExecutor(2) as pool:
        decoded = list(pool.map(lambda one: decode(one[0], one[2]), tried))
    tried, decoded = zip(*[pair for pair in zip(tried, decoded) if waves.seconds_of(pair[1]) >= LEAST_SECONDS])
    count = collections.Counter()
    for one, path, truth in zip(tried, decoded, vote.truths(decoded)):
        if count[one[:2]] < EACH and has_truth(path, truth):
            count[one[:2]] += 1
            yield one


def main():
    recordings = list(chosen())
    names = sorted({voice for _, voice, _ in recordings})
    random.Random("aside").shuffle(names)
    aside = set(names[::3])
    with LIST.open("w") as file:
        file.write("# What is measured, made by choose.py: open or aside by voice, voice, package, path in it.\n")
        file.write(f"# packages: {' '.join(PACKAGES)}\n")
        for package, voice, path in sorted(recordings, key=lambda one: (one[1], one)):
            file.write(f"{'aside' if voice in aside else 'open'}\t{voice}\t{package}\t{path}\n")
    print(f"{len(recordings)} recordings of {len(names)} voices, {len(aside)} of them aside", file=sys.stderr)


if __name__ == "__main__":
    main()
