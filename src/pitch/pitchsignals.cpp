#include "pitch/pitchsignals.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kCoarseRate = 11025.0;      // candidates are sought at about this rate, in a sixteenth of the work,
constexpr double kFineRate = 22050.0;        // and weighed at this one, which leaves the noise above 6 kHz out
constexpr double kNoiseFloor = 0.003;        // level, as part of the loudest one, whose correlation counts half
constexpr std::ptrdiff_t kLoudestStep = 64;  // [samples] at the coarse rate

// About a rate, or at that of the voice if it is lower.
Repetition RepetitionAt(double rate, const Signal& voice, double voiceRate) {
  const auto factor = std::max<std::ptrdiff_t>(1, std::lround(voiceRate / rate));
  return Repetition(Decimated(voice, factor), voiceRate / static_cast<double>(factor));
}

}  // namespace

PitchSignals::PitchSignals(std::span<const float> samples, double rate)
    : PitchSignals(Voice{WithoutRumble(samples, rate), rate}) {}

PitchSignals::PitchSignals(const Voice& voice)
    : fine(RepetitionAt(kFineRate, voice.samples, voice.rate)),
      coarse(RepetitionAt(kCoarseRate, voice.samples, voice.rate)),
      loudest(coarse.LoudestPower(kLoudestStep)) {
  fine.SetNoisePower(loudest * kNoiseFloor * kNoiseFloor);
  coarse.SetNoisePower(loudest * kNoiseFloor * kNoiseFloor);
}
