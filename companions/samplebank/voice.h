// A singing voice by rule: one syllable, together with the pitch it was sung at.
//
// The pitch is known and not measured, so a map made from it is right by construction: whatever differs from it in the
// sample voicebank was put there on purpose.
#pragma once

#include <vector>

#include "base/sample.h"
#include "noise.h"

enum class Vowel { A, I, U, E, O };

// The ways to make a consonant: a stop's burst (k), hiss (s), a hum through the nose (m, n), a touch of the tongue (r).
enum class Consonant { None, Burst, Hiss, Nasal, Tap };

enum class Ornament { Plain, Vibrato, Fall };

struct Syllable {
  Consonant consonant;
  Vowel vowel;
  Ornament ornament;
  double note;     // note number
  double seconds;  // length of the whole wave, the silence at both ends included
};

struct SungSyllable {
  std::vector<double> samples;  // at FrqSampleRate, of no particular level
  std::vector<double> pitch;    // [Hz] at every sample, FrqNoPitch where there is no voice
  SampleCount consonantStart;   // equal to vowelStart where there is no consonant
  SampleCount vowelStart;       //
  SampleCount end;              // first sample of the silence behind
};

// `noise` gives the breath, the hiss of consonants and the unevenness of the pulses.
SungSyllable Sing(const Syllable& syllable, Noise& noise);
