#!/usr/bin/python3
"""Learns how a candidate for the pitch is weighed (src/pitch/candidatescore.h) from the voices of practice.py.

  learn.py [--epochs N] [--traits PROGRAM]

PROGRAM is traits_of_waves as it was built last. It writes src/pitch/candidateweights.inc, and tells how often the
candidate with the greatest score, or none, was right among voices that nothing was learned from. All is drawn from one
seed, so that the same voices give the same weights but for the rounding of another machine's multiplications.

A frame with a voice is learned from where a candidate lies within NEAR cents of the truth; the score of no voice is 0.
"""

import argparse
import os
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

import numpy as np

import practice
import waves

OUTPUT = waves.TREE / "src" / "pitch" / "candidateweights.inc"
TRAITS = 48
HIDDEN = (32, 16)
NEAR = 60.0  # [cents]
HELD_BACK = 10  # of so many voices one is not learned from
BATCH = 512  # frames
RATE, LAST_RATE, DECAY = 2e-3, 2e-5, 1e-5
BLUR = 0.2  # noise on the traits while learning, of their deviation: real voices are not quite like these
SEED = 5


def traits_of(program, paths):
    """Per path a list of frames, each an array with a row for a candidate: octaves over 1 Hz, then the traits."""
    cores = os.cpu_count() or 1
    listed = ["".join(f"{path}\n" for path in paths[first::cores]).encode() for first in range(cores)]
    run = lambda some: subprocess.run([program], input=some, capture_output=True, check=True).stdout
    with ThreadPoolExecutor(cores) as pool:
        outputs = [np.frombuffer(output, "<f4") for output in pool.map(run, listed)]
    places = [0] * cores
    for i in range(len(paths)):
        data, at = outputs[i % cores], places[i % cores]
        count, at = int(data[at]), at + 1
        frames = []
        for _ in range(count):
            size = int(data[at]) * (TRAITS + 1)
            frames.append(data[at + 1 : at + 1 + size].reshape(-1, TRAITS + 1))
            at += 1 + size
        places[i % cores] = at
        yield frames


class Frames:
    """Frames to learn from: the traits of all candidates, the first of each frame, and which of them is right."""

    def __init__(self):
        self.traits, self.sizes, self.right = [], [], []

    def add(self, frames, truth):
        for candidates, hz in zip(frames, truth):
            if np.isnan(hz) or not len(candidates):
                continue
            right = -1
            if hz > 0:
                cents = 1200 * np.abs(candidates[:, 0] - np.log2(hz))
                right = int(np.argmin(cents))
                if cents[right] > NEAR:
                    continue
            self.traits.append(candidates[:, 1:])
            self.sizes.append(len(candidates))
            self.right.append(right)

    def done(self):
        self.traits = np.concatenate(self.traits)
        self.sizes, self.right = np.array(self.sizes), np.array(self.right)
        self.first = np.concatenate([[0], np.cumsum(self.sizes)[:-1]])
        return self

    def batch(self, chosen):
        """Traits, the frame of each of their rows, and the row that is right in each frame, -1 for none."""
        sizes = self.sizes[chosen]
        first = np.concatenate([[0], np.cumsum(sizes)[:-1]])
        rows = np.repeat(self.first[chosen] - first, sizes) + np.arange(sizes.sum())
        right = np.where(self.right[chosen] >= 0, first + self.right[chosen], -1)
        return self.traits[rows], np.repeat(np.arange(len(chosen)), sizes), first, right


class Perceptron:
    """Layers of weights [in, out] and offsets; all but the last let only what is positive through."""

    def __init__(self, chance, mean, deviation):
        sizes = (TRAITS, *HIDDEN, 1)
        self.mean, self.deviation = mean, deviation
        self.parts = []
        for inputs, outputs in zip(sizes, sizes[1:]):
            self.parts.append(chance.normal(0.0, np.sqrt(2.0 / inputs), (inputs, outputs)).astype("f4"))
            self.parts.append(np.zeros(outputs, "f4"))

    def forward(self, traits):
        values = [(traits - self.mean) / self.deviation]
        for weights, offsets in zip(self.parts[:-2:2], self.parts[1:-2:2]):
            values.append(np.maximum(values[-1] @ weights + offsets, 0.0))
        return values, (values[-1] @ self.parts[-2] + self.parts[-1])[:, 0]

    def gradients(self, values, slope):
        """Of the parts, for the slope of the loss at each score."""
        found = []
        slope = slope[:, None]
        for i in range(len(values) - 1, -1, -1):
            found[:0] = [values[i].T @ slope, slope.sum(axis=0)]
            if i:
                slope = (slope @ self.parts[2 * i].T) * (values[i] > 0)
        return found

    def folded(self):
        """The parts with mean and deviation of the traits in the first of them."""
        first = self.parts[0] / self.deviation[:, None]
        return [first, self.parts[1] - self.mean @ first, *self.parts[2:]]


def chances_of(scores, owner, first):
    """Of each candidate and of none in each frame: the softmax of the scores and of 0."""
    highest = np.maximum(np.maximum.reduceat(scores, first), 0.0)
    powers, none = np.exp(scores - highest[owner]), np.exp(-highest)
    whole = np.add.reduceat(powers, first) + none
    return powers / whole[owner], none / whole


def learn(frames, epochs, perceptron, chance):
    momentum = [np.zeros_like(part) for part in perceptron.parts]
    squares = [np.zeros_like(part) for part in perceptron.parts]
    steps = epochs * (len(frames.sizes) // BATCH)
    step = 0
    for epoch in range(epochs):
        order = chance.permutation(len(frames.sizes))
        loss = 0.0
        for begin in range(0, len(order) - BATCH + 1, BATCH):
            traits, owner, first, right = frames.batch(order[begin : begin + BATCH])
            blur = BLUR * perceptron.deviation * chance.normal(size=traits.shape).astype("f4")
            values, scores = perceptron.forward(traits + blur)
            chances, none = chances_of(scores, owner, first)
            voiced = right >= 0
            loss -= np.sum(np.log(np.where(voiced, chances[right], none) + 1e-12))
            slope = chances.copy()
            slope[right[voiced]] -= 1.0
            step += 1
            rate = LAST_RATE + 0.5 * (RATE - LAST_RATE) * (1 + np.cos(np.pi * step / steps))
            # Adam (Kingma and Ba 2015).
            for i, gradient in enumerate(perceptron.gradients(values, slope / BATCH)):
                momentum[i] += 0.1 * (gradient - momentum[i])
                squares[i] += 0.001 * (gradient**2 - squares[i])
                change = momentum[i] / (1 - 0.9**step) / (np.sqrt(squares[i] / (1 - 0.999**step)) + 1e-8)
                perceptron.parts[i] -= (rate * (change + DECAY * perceptron.parts[i])).astype("f4")
        print(f"{epoch + 1}: {loss / len(order):.4f}", file=sys.stderr, flush=True)


def tell(frames, perceptron):
    traits, owner, first, right = frames.batch(np.arange(len(frames.sizes)))
    scores = perceptron.forward(traits)[1]
    highest = np.maximum.reduceat(scores, first)
    best = np.where(scores == highest[owner], np.arange(len(scores)), -1)
    chosen = np.where(highest > 0, np.maximum.reduceat(best, first), -1)
    voiced = right >= 0
    share = lambda mask, of: 100.0 * np.sum(mask & of) / np.sum(of)
    print(f"held back: {len(right)} frames; another pitch {share((chosen >= 0) & (chosen != right), voiced):.2f} %, "
          f"missed {share(chosen < 0, voiced):.2f} %, voiced by mistake {share(chosen >= 0, ~voiced):.2f} %")


def write(perceptron):
    names = [name for layer in ("First", "Second", "Last") for name in (f"k{layer}Weights", f"k{layer}Offsets")]
    lines = ["// Written by benchmarks/voices/learn.py; not to be changed by hand.\n"]
    for name, part in zip(names, perceptron.folded()):
        numbers = [f"{number:.5g}f" if "." in f"{number:.5g}" or "e" in f"{number:.5g}" else f"{number:.5g}.0f"
                   for number in part.flatten()]
        lines.append(f"constexpr float {name}[] = {{\n")
        line = "   "
        for number in numbers:
            if len(line) + len(number) + 2 > 120:
                lines.append(line + "\n")
                line = "   "
            line += f" {number},"
        lines.append(line + "};\n")
    # The example that a test weighs.
    example = (0.1 * (np.arange(TRAITS) * 7 % 11 - 5)).astype("f4")[None]
    lines.append(f"constexpr float kExampleScore = {perceptron.forward(example)[1][0]:.5f}f;\n")
    OUTPUT.write_text("".join(lines))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--epochs", type=int, default=12)
    parser.add_argument("--traits", default=waves.TREE / "build" / "native-bench" / "bin" / "traits_of_waves")
    wanted = parser.parse_args()
    paths = practice.need()
    learned, held_back = Frames(), Frames()
    for i, (path, frames) in enumerate(zip(paths, traits_of(wanted.traits, paths))):
        (learned if i % HELD_BACK else held_back).add(frames, np.load(path.with_suffix(".npy")))
    learned.done()
    chance = np.random.default_rng(SEED)
    perceptron = Perceptron(chance, learned.traits.mean(axis=0), learned.traits.std(axis=0) + 1e-3)
    learn(learned, wanted.epochs, perceptron, chance)
    tell(held_back.done(), perceptron)
    write(perceptron)


if __name__ == "__main__":
    main()
