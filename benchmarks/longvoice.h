// A wave as long as one likes, of voices whose pitch is known, one after the other and round again.
#pragma once

#include <vector>

#include "knownvoices.h"

inline constexpr int kVoiceRate = 44100;

// The samples are in 16-bit units.
inline std::vector<float> VoicesOf(int seconds) {
  static const std::vector<float> round = [] {
    std::vector<float> samples;
    for (const voices::KnownVoice& known : voices::All()) {
      if (known.sampleRate != kVoiceRate) continue;
      const std::vector<float> voice = voices::Sound(known);
      samples.insert(samples.end(), voice.begin(), voice.end());
    }
    return samples;
  }();
  std::vector<float> samples(static_cast<std::size_t>(seconds) * kVoiceRate);
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = round[i % round.size()];
  return samples;
}
