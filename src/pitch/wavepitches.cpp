#include "pitch/wavepitches.h"

#include <exception>
#include <utility>

#include "voicebank/soundfile.h"

namespace {

constexpr double kMostSeconds = 3600.0;

}  // namespace

void WavePitches::SetWave(const std::wstring& path) {
  if (path == path_) return;
  path_ = path;
  file_.reset();
  sound_.reset();
}

SoundPitches* WavePitches::Load(SampleCount hop, SampleCount frameCount) {
  const std::optional<FileFacts> now = path_.empty() ? std::nullopt : Disk().FactsOf(path_);
  if (hop <= 0 || !now || now != file_ || hop != hop_) {
    sound_.reset();
    if (hop > 0 && now) Read(hop);
    file_ = now;
    hop_ = hop;
  }
  return Loaded(hop, frameCount);
}

SoundPitches* WavePitches::Loaded(SampleCount hop, SampleCount frameCount) {
  return sound_ && sound_->CanBeOf(hop, frameCount) ? &*sound_ : nullptr;
}

void WavePitches::Read(SampleCount hop) {
  try {
    if (std::optional<Sound> sound = ReadSound(path_, kMostSeconds)) sound_.emplace(std::move(*sound), hop);
  } catch (const std::exception&) {
    sound_.reset();  // without memory
  }
}
