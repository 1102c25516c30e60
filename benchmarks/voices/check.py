#!/usr/bin/python3
"""How well the check of maps finds errors, with the recordings and without, as a table and as rows of ./bench.

  check.py [--program PROGRAM] [--alone] [--worst N] [--aside] [--bench JSONFILE [NAME]]

PROGRAM is marks_of_maps as it was built last. --alone has it judge maps without the recordings. --worst tells the N
waves with the most frames that went wrong in each row.

Planted errors lie in maps of known voices and of recordings: the truth, and where the analyses that vote for it differ,
what one of them says, which counts neither way, as the two frames beside it do not. Maps by others are as they made them: `missed` is of their gross errors,
`suggested` of those that were found, `files` are those with a mark where the map is right.
"""

import json
import os
import subprocess
import zlib
from concurrent.futures import ThreadPoolExecutor

import numpy as np

import measure
import peers
import waves

KINDS = ("clean", "octave", "twelfth", "half", "whole", "noise", "wandering", "gap")
BASE = "Praat ac"
GROSS = 0.2
HALF_SEMITONE = 50.0
BESIDE = 2  # frames

# The rows of ./bench: name, row of the table, column, and the most that it should be [%].
ROWS = [
    *((f"voices_check_{kind}", f"planted {kind}", "worst", 3.0) for kind in KINDS[1:]),
    ("voices_check_clean", "planted clean", "files", 2.0),
    ("voices_check_found", "maps by others", "missed", 5.0),
    ("voices_check_right", "maps by others", "unsuggested", 5.0),
    ("voices_check_vain", "maps by others", "files", 5.0),
]


def marks_of(program, alone, jobs):
    """Per (path, pitches) the reasons and the suggestions of the frames."""
    lines = [f"{path}\t{' '.join(f'{hz:.3f}' for hz in track)}\n" for path, track in jobs]
    cores = os.cpu_count() or 1
    command = [program, *(["--alone"] if alone else [])]
    run = lambda some: subprocess.run(command, input="".join(some), capture_output=True, text=True, check=True).stdout
    with ThreadPoolExecutor(cores) as pool:
        outputs = [output.splitlines() for output in pool.map(run, (lines[first::cores] for first in range(cores)))]
    for i, (_, track) in enumerate(jobs):
        numbers = np.array(outputs[i % cores][i // cores].split(), float).reshape(-1, 2)
        yield numbers[:, 0] != 0, numbers[:, 1]


def runs_of(mask):
    """First frame of each run and the one behind its last."""
    edges = np.flatnonzero(np.diff(np.concatenate([[0], mask.astype(int), [0]])))
    return edges.reshape(-1, 2)


def multiplied(chance, hz, first, end, factors):
    """Frames from the first to the end by one of the factors that stays in the range of an analysis."""
    some = hz[first:end][hz[first:end] > 0]
    fitting = [one for one in factors if len(some) and some.min() * one >= 60 and some.max() * one <= 1200]
    if fitting:
        hz[first:end] *= fitting[chance.integers(len(fitting))]


def spoiled(kind, truth, base, chance):
    """A map with errors of a kind."""
    hz = base.copy()
    voiced, unvoiced = np.flatnonzero(truth > 0), np.flatnonzero((truth == 0) & (base == 0))
    octaves, twelfths = (2.0, 0.5), (3.0, 1.0 / 3.0)
    for _ in range(chance.integers(1, 4)):
        if kind in ("octave", "twelfth") and len(voiced):
            first = voiced[chance.integers(len(voiced))]
            multiplied(chance, hz, first, first + chance.integers(1, 21), octaves if kind == "octave" else twelfths)
        if kind in ("noise", "wandering") and len(unvoiced):
            first = unvoiced[chance.integers(len(unvoiced))]
            end = next(end for begin, end in runs_of((truth == 0) & (base == 0)) if begin <= first < end)
            end = min(end, first + chance.integers(1, 13))
            note = chance.uniform(np.log2(60), np.log2(900))
            for i in range(first, end):
                hz[i] = 2.0**note
                far = chance.uniform(np.log2(60), np.log2(900))
                note = np.clip(note + chance.uniform(-1, 1) / 12, np.log2(60), 10) if kind == "wandering" else far
        if kind == "gap" and len(voiced) > 12:
            count = chance.integers(1, 5)
            inside = [(b, e) for b, e in runs_of((truth > 0) & (base > 0)) if e - b >= count + 6]
            if inside:
                begin, end = inside[chance.integers(len(inside))]
                first = chance.integers(begin + 3, end - count - 2)
                hz[first : first + count] = 0.0
    middle = voiced[len(voiced) // 2] if len(voiced) else 0
    if kind == "half":
        multiplied(chance, hz, *((0, middle) if chance.integers(2) else (middle, len(hz))), octaves + twelfths)
    if kind == "whole":
        multiplied(chance, hz, 0, len(hz), octaves + twelfths)
    return hz


def cents(a, b):
    with np.errstate(divide="ignore", invalid="ignore"):
        return np.abs(1200.0 * np.log2(a / b))


class Tally:
    """Counts of frames and files, with the waves that frames went wrong in."""

    def __init__(self):
        self.wrong = self.found = self.marked = self.suggested = self.files = self.vain = 0
        self.by_wave = {}

    def add(self, wave, wrong, marked, counted, suggested, in_vain):
        self.wrong += np.sum(wrong)
        self.found += np.sum(wrong & marked)
        self.marked += np.sum(marked & counted)
        self.suggested += np.sum(wrong & marked & suggested)
        self.files += 1
        self.vain += np.any(in_vain)
        self.by_wave[wave] = np.sum(wrong & ~marked), np.sum(in_vain), np.sum(wrong & marked & ~suggested)

    def table(self):
        share = lambda part, whole: 100.0 * float(part) / max(float(whole), 1.0)
        missed, false = share(self.wrong - self.found, self.wrong), share(self.marked - self.found, self.marked)
        return {
            "frames": int(self.wrong),
            "missed": missed,
            "false": false,
            "worst": max(missed, false),
            "unsuggested": share(self.found - self.suggested, self.found),
            "files": share(self.vain, self.files),
        }


def planted(wanted, entries, truths, tallies):
    jobs, known = [], []
    peers.need(BASE, [waves.BUILD / one["wave"] for one in entries])
    for entry, truth in zip(entries, truths):
        path = waves.BUILD / entry["wave"]
        said = np.nan_to_num(peers.result(BASE, path)[0])
        length = min(len(said), len(truth))
        # No map can hold a pitch so low, and no analysis looks for it.
        truth = np.where((truth[:length] > 0) & (truth[:length] < 60), np.nan, truth[:length])
        base = np.where(np.isnan(truth), said[:length], truth)
        for kind in KINDS:
            chance = np.random.default_rng(zlib.crc32(f"{kind} {entry['wave']}".encode()))
            hz = spoiled(kind, truth, base, chance)
            jobs.append((path, hz))
            known.append((kind, entry["wave"], truth, base, hz))
    for (kind, wave, truth, base, hz), (marked, suggestion) in zip(known, marks_of(wanted.program, wanted.alone, jobs)):
        unsure = np.convolve(np.isnan(truth), np.ones(2 * BESIDE + 1), "same") > 0
        counted = ~unsure | ((hz != base) & ~np.isnan(truth))
        wrong = (hz != base) & counted
        right = np.where(truth > 0, cents(suggestion, truth) <= HALF_SEMITONE, suggestion <= 55.0)
        tally = tallies.setdefault(f"planted {kind}", Tally())
        tally.add(wave, wrong, marked, counted, right, marked & counted & ~wrong)


def by_others(wanted, entries, tallies):
    for name in peers.ANALYSES:
        paths = [waves.BUILD / one["wave"] for one in entries]
        peers.need(name, paths)
        tracks = [np.nan_to_num(peers.result(name, path)[0]) for path in paths]
        answers = marks_of(wanted.program, wanted.alone, list(zip(paths, tracks)))
        truths = measure.truths_for(name, entries)
        for entry, hz, truth, (marked, suggestion) in zip(entries, tracks, truths, answers):
            length = min(len(hz), len(truth))
            hz, truth, marked, suggestion = hz[:length], truth[:length], marked[:length], suggestion[:length]
            both = (truth > 0) & (hz > 0)
            with np.errstate(divide="ignore", invalid="ignore"):
                wrong = both & (np.abs(hz / truth - 1) > GROSS)
            right = (both & (cents(hz, truth) <= HALF_SEMITONE)) | ((truth == 0) & (hz <= 0))
            suggested = cents(suggestion, truth) <= HALF_SEMITONE
            for row in ("maps by others", f"  by {name}"):
                tally = tallies.setdefault(row, Tally())
                counted = wrong | right
                tally.add(f"{entry['wave']} ({name})", wrong, marked, counted, suggested, marked & right)


def print_table(table, tallies, worst):
    columns = ("frames", "missed", "false", "unsuggested", "files")
    print(f"{'':24}" + "".join(f"{column:>12}" for column in columns))
    for row, values in table.items():
        print(f"{row:24}" + "".join(f"{values[column]:12.2f}" for column in columns))
    for row in tallies if worst else []:
        print(f"\n{row}: frames missed, marked in vain and with a wrong suggestion")
        by_wave = tallies[row].by_wave
        for wave in sorted(by_wave, key=lambda wave: -sum(by_wave[wave]))[:worst]:
            print("  %5d %5d %5d" % by_wave[wave], wave)


def arguments():
    parser = measure.common_arguments("--program", "marks_of_maps")
    parser.add_argument("--alone", action="store_true")
    return parser.parse_args()


def main():
    wanted = arguments()
    entries = [one for one in [*waves.recordings(), *waves.made()] if one["aside"] == wanted.aside]
    entries = [one for one in entries if one["set"] in ("recordings", "known")]
    tallies = {}
    planted(wanted, entries, measure.truths_for(measure.OURS, entries), tallies)
    by_others(wanted, [one for one in entries if one["set"] == "recordings"], tallies)
    table = {row: tally.table() for row, tally in tallies.items()}
    print_table(table, tallies, wanted.worst)
    if wanted.bench:
        measure.report_rows({measure.OURS: table}, wanted.bench[0], "".join(wanted.bench[1:2]), ROWS)


if __name__ == "__main__":
    main()
