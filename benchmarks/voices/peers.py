"""Other analyses of pitch: Praat's two, RAPT and SWIPE' of SPTK, YIN in the form that aubio has it by default.

Their results are kept by the content of the waves, so that they run once. All search from 60 to 1,200 Hz, as ours does,
aubio excepted, which knows no range; all else is as each has it by default.
"""

import functools
import hashlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

import numpy as np

import waves

CACHE = waves.BUILD / "cache"
LOWEST, HIGHEST = 60, 1200
SPTK_PITCH = "/usr/libexec/sptk/bin/pitch"
CORES = os.cpu_count() or 1

PRAAT_SCRIPT = """
form Pitch of waves
  sentence List
  sentence Folder
endform
list = Read Strings from raw text file: list$
count = Get number of strings
for i to count
  selectObject: list
  file$ = Get string: i
  sound = Read from file: file$
  pitch = %s
  matrix = To Matrix
  Save as matrix text file: folder$ + "/" + string$ (i) + ".txt"
  removeObject: sound, pitch, matrix
endfor
"""


def timed(command, stdin=None):
    """Output of a command and the seconds of processor time that it took."""
    process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    # All of the input is taken before the first output comes, in each program that is run here.
    if stdin is not None:
        process.stdin.write(stdin)
    process.stdin.close()
    output = process.stdout.read()
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode:
        sys.exit(f"{command[0]} failed")
    return output, usage.ru_utime + usage.ru_stime


def mono(path, rate):
    own, samples = waves.read_wave(path)
    return waves.at_rate(samples, own, rate)


def praat(call, late):
    def analyse(paths):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            copies = []
            for i, path in enumerate(paths):
                copies.append(folder / f"{i}.wav")
                rate, samples = waves.read_wave(path)
                waves.write_wave(copies[-1], rate, samples)
            (folder / "script").write_text(PRAAT_SCRIPT % call)
            (folder / "list").write_text("".join(f"{copy}\n" for copy in copies))
            _, seconds = timed(["praat", "--run", str(folder / "script"), str(folder / "list"), name])
            whole = sum(waves.seconds_of(path) for path in paths)
            for i, path in enumerate(paths):
                times, hz = praat_matrix((folder / f"{i + 1}.txt").read_text())
                yield times + late, hz, seconds * waves.seconds_of(path) / whole

    return analyse


def praat_matrix(text):
    """Times and values of a matrix of one row: two words, xmin xmax nx dx x1, five numbers of the row, the values."""
    numbers = text.split()[2:]
    count, step, first = int(numbers[2]), float(numbers[3]), float(numbers[4])
    return first + step * np.arange(count), np.array(numbers[10 : 10 + count], float)


def sptk(algorithm, rate, hop, late):
    def analyse(paths):
        for path in paths:
            command = [SPTK_PITCH, "-a", str(algorithm), "-s", str(rate / 1000), "-p", str(hop), "-o", "1"]
            command += ["-L", str(LOWEST), "-H", str(HIGHEST)]
            output, seconds = timed(command, mono(path, rate).astype("<f4").tobytes())
            hz = np.frombuffer(output, "<f4").astype(float)
            yield np.arange(len(hz)) * hop / rate + late, hz, seconds

    return analyse


def aubio(late):
    def analyse(paths):
        with tempfile.TemporaryDirectory() as name:
            for path in paths:
                copy = pathlib.Path(name) / "one.wav"
                waves.write_wave(copy, waves.RATE, mono(path, waves.RATE))
                output, seconds = timed(["aubiopitch", "-i", str(copy), "-p", "yinfft", "-H", str(waves.HOP)])
                table = np.array([line.split()[:2] for line in output.decode().splitlines()], float).reshape(-1, 2)
                yield table[:, 0] + late, table[:, 1], seconds

    return analyse


AC = f"To Pitch (ac): {waves.HOP_SECONDS!r}, {LOWEST}, 15, \"no\", 0.03, 0.45, 0.01, 0.35, 0.14, {HIGHEST}"
CC = f"To Pitch (cc): {waves.HOP_SECONDS!r}, {LOWEST}, 15, \"no\", 0.03, 0.45, 0.01, 0.35, 0.14, {HIGHEST}"

# The last argument is how much later than it says an analysis looks [s]: what took the median error to its least on
# four voices that glide up and down between 100 and 600 Hz. Of the two correlations it is half a period, so a mean.
# Both of SPTK are better at 16 kHz than at 44.1: tried on a quarter of the open recordings and a third of the known
# voices.
ANALYSES = {
    "Praat ac": praat(AC, 0.0),
    "Praat cc": praat(CC, -0.006),
    "RAPT": sptk(0, 16000, 80, 0.006),
    "SWIPE'": sptk(1, 16000, 80, 0.0),
    "aubio yinfft": aubio(-0.0175),
}
# The voters for a truth. Their agreement means something because they look at different things.
VOTERS = ("Praat ac", "Praat cc", "RAPT", "SWIPE'")


@functools.cache
def content_of(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def kept_at(name, path):
    return CACHE / name.replace(" ", "_") / f"{content_of(path)}.npz"


def run(name, jobs):
    """Runs an analysis on (path, place in the cache) and keeps what comes out."""
    for (_, place), (times, hz, seconds) in zip(jobs, ANALYSES[name]([path for path, _ in jobs])):
        place.parent.mkdir(parents=True, exist_ok=True)
        whole = place.with_suffix(".new.npz")
        np.savez(whole, times=times, hz=hz, seconds=seconds)
        whole.rename(place)


def need(name, paths):
    """Runs an analysis on those of the paths that it never ran on."""
    missing = {kept_at(name, path): path for path in paths}
    missing = [(path, place) for place, path in missing.items() if not place.exists()]
    if missing:
        print(f"{name}: {len(missing)} waves", file=sys.stderr)
        with ThreadPoolExecutor(CORES) as pool:
            list(pool.map(lambda first: run(name, missing[first::CORES]), range(CORES)))


@functools.cache
def result(name, path):
    """The pitch of a wave on its grid, and the seconds of processor time; `need` has been called."""
    with np.load(kept_at(name, path)) as kept:
        return waves.on_grid(kept["times"], kept["hz"], waves.grid_of(path)), float(kept["seconds"])
