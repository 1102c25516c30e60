#include "pitch/wavepitches.h"

#include <exception>
#include <utility>

#include "voicebank/waveheader.h"

namespace {

// What is made of a wave takes several times its bytes for a while, in a process of 32 bits.
constexpr std::uint32_t kMostBytes = 32 << 20;

std::optional<Sound> ReadSound(const std::wstring& path) {
  WaveHeader wave;
  if (wave.Load(path, true) != 0 || wave.dataSize > kMostBytes || wave.Load(path, false) != 0) return std::nullopt;
  return SoundOfWave(wave.format, wave.samples);
}

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
    if (std::optional<Sound> sound = ReadSound(path_)) sound_.emplace(std::move(*sound), hop);
  } catch (const std::exception&) {
    sound_.reset();  // without memory
  }
}
