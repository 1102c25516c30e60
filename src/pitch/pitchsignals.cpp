#include "pitch/pitchsignals.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kCoarseRate = 11025.0;      // candidates are sought at about this rate, in a sixteenth of the work,
constexpr double kFineRate = 22050.0;        // and weighed at this one, which leaves the noise above 6 kHz out;
                                             // a slow recording is raised to about that
constexpr double kNoiseFloor = 0.003;        // level, as part of the loudest one, whose correlation counts half
constexpr std::ptrdiff_t kLoudestStep = 64;  // [samples] at the coarse rate

// The voice at about a rate, or at its own if that is lower.
Repetition RepetitionAt(double rate, const Signal& voice, double voiceRate) {
  const auto factor = std::max<std::ptrdiff_t>(1, std::lround(voiceRate / rate));
  return Repetition(Decimated(voice, factor), voiceRate / static_cast<double>(factor));
}

}  // namespace

// A slow recording is raised: at 8 kHz a high voice has a period of ten samples, between which the height of its peak
// cannot be told.
PitchSignals::Voice PitchSignals::VoiceOf(std::span<const float> samples, double rate) {
  Signal voice = WithoutRumble(samples, rate);
  const std::ptrdiff_t factor = std::lround(kFineRate / rate);
  if (factor < 2) return {std::move(voice), rate};
  return {Raised(voice, factor), rate * static_cast<double>(factor)};
}

PitchSignals::PitchSignals(std::span<const float> samples, double rate)
    : PitchSignals(VoiceOf(samples, rate)) {}

PitchSignals::PitchSignals(const Voice& voice)
    : fine(RepetitionAt(kFineRate, voice.samples, voice.rate)),
      coarse(RepetitionAt(kCoarseRate, voice.samples, voice.rate)),
      loudest(coarse.LoudestPower(kLoudestStep)) {
  fine.SetNoisePower(loudest * kNoiseFloor * kNoiseFloor);
  coarse.SetNoisePower(loudest * kNoiseFloor * kNoiseFloor);
}
