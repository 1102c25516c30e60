#include "check/hearing.h"

#include "frqmap/frqtype.h"

namespace {

constexpr double kSilentStrength = 1.0;  // of there being no voice, where it is too silent for any

}  // namespace

HeardFrame Hearing::At(SampleCount frame) const {
  const auto index = static_cast<std::size_t>(frame);
  return frame >= 0 && index < Frames.size() ? Frames[index] : HeardFrame{static_cast<float>(FrqNoPitch), 0.0f, 1};
}

Hearing HearingOf(const PitchSearch& search, std::size_t samples, double rate, SampleCount hop) {
  const auto step = static_cast<std::size_t>(hop);
  const auto count = static_cast<SampleCount>((samples + step - 1) / step);
  const std::vector<PitchFrame> candidates = search.Candidates(hop, 0, count);
  const std::vector<double> pitch = BestPitchPath(candidates, hop / rate);
  Hearing hearing{hop, rate, static_cast<std::int64_t>(samples), {}};
  hearing.Frames.reserve(pitch.size());
  for (SampleCount i = 0; i < count; ++i) {
    const double hz = pitch[static_cast<std::size_t>(i)];
    const double support = hz > FrqNoPitch ? search.SupportAt(i * hop, hz, kSupportReach) : 0.0;
    const bool isSilent = candidates[static_cast<std::size_t>(i)].voiceless >= kSilentStrength;
    hearing.Frames.push_back({static_cast<float>(hz), static_cast<float>(support), isSilent ? 1 : 0});
  }
  return hearing;
}
