// How likely each candidate of a frame is its pitch, and that it has one at all: a small perceptron that is shared by
// all candidates, with weights that benchmarks/voices/learn.py learned from made voices of known pitch
// (candidateweights.inc), and what real recordings ask for beyond it.
#pragma once

#include <span>
#include <vector>

#include "pitch/candidatesearch.h"

// The strength of there being no pitch, which those of the candidates stand against.
inline constexpr double kVoiceless = 0.42;

// The logarithm of the odds that a candidate is the pitch and not that there is none, by itself: about -15 to 15.
float ScoreOf(const Traits& traits);

// How much speaks for each candidate of a frame: about -0.5 to 1.
std::vector<double> StrengthsOf(std::span<const FoundPitch> pitches);
