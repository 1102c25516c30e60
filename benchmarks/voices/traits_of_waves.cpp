// traits_of_waves: the traits of each candidate for the pitch of each wave whose path stands on a line of the standard
// input. learn.py learns from them how to weigh candidates.
//
// It writes 32-bit floats: for each wave the number of its frames, 256 samples of 44.1 kHz apart; for each frame the
// number of candidates; for each candidate the octaves over 1 Hz and its traits. Frames that are too silent for a voice
// have none.
#include <cmath>
#include <cstdio>
#include <iostream>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "pitch/candidatesearch.h"
#include "pitch/pitchsignals.h"
#include "readsound.h"

namespace {

void Write(double value) {
  const auto number = static_cast<float>(value);
  std::fwrite(&number, sizeof(number), 1, stdout);
}

void WriteTraits(const Sound& sound) {
  const PitchSignals signals(sound.samples, sound.rate);
  CandidateSearch search(signals);
  const double step = 256.0 / 44100.0, length = static_cast<double>(sound.samples.size()) / sound.rate;
  const auto frames = static_cast<int>(std::ceil(length / step));
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  Write(frames);
  for (int i = 0; i < frames; ++i) {
    const bool isSilent = search.LevelAt(i * step) < kSilentLevel;
    const auto& found = isSilent ? std::vector<FoundPitch>() : search.At(i * step, {-kInfinity, kInfinity});
    Write(static_cast<double>(found.size()));
    for (const FoundPitch& one : found) {
      Write(one.logHz);
      for (const float trait : one.traits) Write(trait);
    }
  }
}

}  // namespace

int main() {
  for (std::string path; std::getline(std::cin, path);) {
    const std::optional<Sound> sound = ReadSound(path);
    if (!sound) {
      std::fprintf(stderr, "traits_of_waves: cannot read %s\n", path.c_str());
      return 1;
    }
    WriteTraits(*sound);
  }
  return 0;
}
