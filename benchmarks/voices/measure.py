#!/usr/bin/python3
"""How far analyses of pitch are from the truth, ours beside others, as a table and as build/voices.json.

  measure.py [--ours PROGRAM] [--quick] [--worst N [--of ANALYSIS]] [--aside] [--bench JSONFILE [NAME]]

PROGRAM is pitch_of_waves as it was built last. --quick leaves the others out, --worst tells the N waves that ours, or
another, is furthest off in, --aside looks at what was kept aside, --bench adds rows for ours to the table of ./bench.

All shares are of frames, over all waves of a set: gross (over 20 % off), by octaves (those of them that lie within a
tenth of one to a whole octave or two) and over 50 cents, of the frames that are voiced in truth and in the analysis;
`false`, voiced by mistake, of those that are unvoiced in truth; `missed` of those that are voiced; `median` is the
error in cents, gross ones left out.
"""

import argparse
import json
import os
import subprocess
from concurrent.futures import ThreadPoolExecutor

import numpy as np

import peers
import vote
import waves

TABLE = waves.TREE / "build" / "voices.json"
OURS = "ours"
# A voter is judged by the three others, who must all agree: a truth with fewer of the hard frames. So ours is judged by
# it as well, in a row of its own.
OURS_THERE = "  ours, by the truth for %s"
VOTED_SETS = ("recordings", "degraded")
COLUMNS = ("gross", "octave", "cents50", "false", "missed", "median")

# Name, set and share of a row of ./bench, and the most that it should be [%].
ROWS = [
    ("voices_gross", "recordings", "gross", 0.1),
    ("voices_cents", "recordings", "cents50", 1.0),
    ("voices_false", "recordings", "false", 1.7),
    ("voices_missed", "recordings", "missed", 1.0),
    ("voices_known_gross", "known", "gross", 0.1),
    ("voices_known_cents", "known", "cents50", 0.5),
]


def sets_of(entry):
    """The rows of the table that a wave counts in."""
    yield entry["set"]
    if entry["set"] == "known":
        kind = entry["kind"]
        yield "glides, onsets" if kind in ("glides", "onsets") else kind


def ours(program, paths):
    """Per path the pitch on the grid and the seconds of processor time."""
    cores = os.cpu_count() or 1
    listed = ["".join(f"{path}\n" for path in paths[first::cores]) for first in range(cores)]
    run = lambda some: subprocess.run([program], input=some, capture_output=True, text=True, check=True).stdout
    with ThreadPoolExecutor(cores) as pool:
        outputs = "".join(pool.map(run, listed))
    found = {}
    for line in outputs.splitlines():
        name, seconds, step, pitch = line.split("\t")
        hz = np.array(pitch.split(), float)
        grid = waves.grid_of(name)
        found[name] = waves.on_grid(np.arange(len(hz)) * float(step), hz, grid), float(seconds)
    return [found[str(path)] for path in paths]


def truths_for(name, entries):
    """What each wave's pitch is, as an analysis is judged by it."""
    origin = lambda one: waves.BUILD / one.get("origin", one["wave"])
    voted = [one for one in entries if "truth" not in one]
    votes = dict(zip((one["wave"] for one in voted), vote.truths([origin(one) for one in voted], without=name)))
    for one in entries:
        truth = votes[one["wave"]] if one["wave"] in votes else np.load(waves.BUILD / one["truth"])
        # A room goes on sounding where the voice has ended.
        yield np.where(truth == 0, np.nan, truth) if one["kind"] == "reverb" else truth


class Errors:
    """Counts of frames, and the cents of those that are voiced in truth and in an analysis."""

    def __init__(self):
        self.voiced = self.unvoiced = self.missed = self.false = 0
        self.cents = []

    def add(self, truth, found):
        length = min(len(truth), len(found))
        truth, found = truth[:length], np.nan_to_num(found[:length])
        voiced, unvoiced = truth > 0, truth == 0
        self.voiced += np.sum(voiced)
        self.unvoiced += np.sum(unvoiced)
        self.missed += np.sum(voiced & (found <= 0))
        self.false += np.sum(unvoiced & (found > 0))
        both = voiced & (found > 0)
        self.cents.append(1200 * np.log2(found[both] / truth[both]))

    def table(self):
        cents = np.concatenate([*self.cents, []])
        gross = np.abs(np.exp2(cents / 1200) - 1) > 0.2
        octaves = np.round(cents / 1200)
        octave = gross & (octaves != 0) & (np.abs(octaves) <= 2) & (np.abs(cents / 1200 - octaves) < 0.1)
        share = lambda count, whole: 100.0 * float(count) / max(float(whole), 1.0)
        values = [share(np.sum(wrong), len(cents)) for wrong in (gross, octave, np.abs(cents) > 50)]
        values += [share(self.false, self.unvoiced), share(self.missed, self.voiced)]
        return dict(zip(COLUMNS, values + [float(np.median(np.abs(cents[~gross]))) if np.any(~gross) else 0.0]))


def measured(entries, results, truths):
    """Errors by set, and per wave."""
    by_set, by_wave = {}, {}
    for entry, (found, _), truth in zip(entries, results, truths):
        for name in sets_of(entry):
            by_set.setdefault(name, Errors()).add(truth, found)
        by_wave[entry["wave"]] = Errors()
        by_wave[entry["wave"]].add(truth, found)
    return by_set, by_wave


def print_table(table, speeds, sizes):
    for name in sizes:
        print(f"\n{name}: {sizes[name]}")
        print(f"  {'':36}" + "".join(f"{column:>9}" for column in COLUMNS))
        for analysis, sets in table.items():
            if name in sets:
                print(f"  {analysis:36}" + "".join(f"{sets[name][column]:9.2f}" for column in COLUMNS))
    print("\nspeed, seconds of sound in a second of one core")
    for analysis, speed in speeds.items():
        print(f"  {analysis:36}{speed:9.0f}")


def print_worst(by_wave, count):
    """For each kind of error the waves that most of its frames are in."""
    kinds = {
        "gross": lambda one: np.sum(np.abs(np.exp2(np.concatenate(one.cents) / 1200) - 1) > 0.2),
        "over 50 cents": lambda one: np.sum(np.abs(np.concatenate(one.cents)) > 50),
        "false": lambda one: one.false,
        "missed": lambda one: one.missed,
    }
    for kind, frames_of in kinds.items():
        total = sum(frames_of(one) for one in by_wave.values())
        print(f"\n{kind}: {total} frames; the worst waves, with frames that are voiced and unvoiced in truth")
        for wave in sorted(by_wave, key=lambda wave: -frames_of(by_wave[wave]))[:count]:
            one = by_wave[wave]
            print(f"  {frames_of(one):5} of {one.voiced:4} {one.unvoiced:4}  {wave}")


def report_rows(table, file, beginning, of=ROWS):
    """As the other rows of ./bench are reported; the yardstick is the most that is good enough."""
    rows = json.loads(open(file).read()) if os.path.exists(file) else []
    head = f"{'name':<24} {'value':>10} {'yardstick':>10} {'unit':<4} {'ratio':>8} {'aim':>6}  holds"
    print(f"\n{head}")
    for name, of_set, column, most in of:
        if not name.startswith(beginning):
            continue
        value = table[OURS][of_set][column]
        row = {"name": name, "value": value, "unit": "%", "yardstick": most, "ratio": value / most}
        row |= {"spread": 0.0, "aim": 1.0}  # the same each time
        row["holds"] = row["ratio"] <= row["aim"]
        rows.append(row)
        holds = "yes" if row["holds"] else "NO"
        print(f"{name:<24} {value:10.3f} {most:10.3f} {'%':<4} {row['ratio']:8.2f} {1.0:6.2f}  {holds}")
    with open(file, "w") as out:
        out.write(json.dumps(rows, indent=2) + "\n")


def common_arguments(option, program):
    """A parser for what each measure takes: the program of ours that it runs, and what it shows of it."""
    parser = argparse.ArgumentParser()
    parser.add_argument(option, default=waves.TREE / "build" / "native-bench" / "bin" / program)
    parser.add_argument("--worst", type=int, default=0)
    parser.add_argument("--aside", action="store_true")
    parser.add_argument("--bench", nargs="+")
    return parser


def arguments():
    parser = common_arguments("--ours", "pitch_of_waves")
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--of", default=OURS)
    return parser.parse_args()


def main():
    wanted = arguments()
    entries = [one for one in [*waves.recordings(), *waves.made()] if one["aside"] == wanted.aside]
    paths = [waves.BUILD / one["wave"] for one in entries]
    seconds = sum(waves.seconds_of(path) for path in paths)
    sizes = {}
    for entry, path in zip(entries, paths):
        for name in sets_of(entry):
            count, length = sizes.get(name, (0, 0.0))
            sizes[name] = count + 1, length + waves.seconds_of(path)
    sizes = {name: f"{count} waves, {length:.0f} s" for name, (count, length) in sizes.items()}

    own = ours(wanted.ours, paths)
    table, speeds = {}, {}
    for name in [OURS] if wanted.quick else [OURS, *peers.ANALYSES]:
        if name != OURS:
            peers.need(name, paths)
        results = own if name == OURS else [peers.result(name, path) for path in paths]
        truths = list(truths_for(name, entries))
        by_set, by_wave = measured(entries, results, truths)
        table[name] = {of_set: errors.table() for of_set, errors in by_set.items()}
        speeds[name] = seconds / sum(taken for _, taken in results)
        if name in peers.VOTERS:
            table[OURS_THERE % name] = {
                of_set: errors.table()
                for of_set, errors in measured(entries, own, truths)[0].items()
                if of_set in VOTED_SETS
            }
        if name == wanted.of and wanted.worst:
            print_worst(by_wave, wanted.worst)
    print_table(table, speeds, sizes)
    TABLE.write_text(json.dumps({"sizes": sizes, "speeds": speeds, "errors": table}, indent=2) + "\n")
    if wanted.bench:
        report_rows(table, wanted.bench[0], "".join(wanted.bench[1:2]))


if __name__ == "__main__":
    main()
