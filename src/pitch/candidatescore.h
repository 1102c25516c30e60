// The likelihood that a candidate is the pitch of its frame, and that the frame has one at all: a small perceptron that
// all candidates share, with weights that benchmarks/voices/learn.py learned from made voices of known pitch
// (candidateweights.inc), and corrections that real recordings ask for beyond it.
#pragma once

#include <span>
#include <vector>

#include "pitch/candidatesearch.h"

// The strength of there being no pitch, against which the candidates' strengths are held.
inline constexpr double kVoiceless = 0.42;

// The logarithm of the odds that a candidate is the pitch and not that there is none, by itself: about -15 to 15.
float ScoreOf(const Traits& traits);

// How much speaks for each candidate of a frame: about -0.5 to 1.
std::vector<double> StrengthsOf(std::span<const FoundPitch> pitches);
