#include "resampler/listensound.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/files.h"
#include "base/path.h"
#include "base/tempfolder.h"
#include "voicebank/sound.h"
#include "voicebank/wavecut.h"
#include "voicebank/waveheader.h"

namespace {

// A part of a sound, in samples.
struct SampleRange {
  std::int64_t First, End;
};

SampleRange SamplesOf(const ListenInput& input) {
  if (input.Part.Count <= 0) return {0, std::numeric_limits<std::int64_t>::max()};
  const std::int64_t hop = std::max<SampleCount>(input.Syllable.Map.Hop, 0);
  return {input.Part.First * hop, (std::int64_t{input.Part.First} + input.Part.Count) * hop};
}

// The same part of a sound of another rate.
SampleRange Scaled(SampleRange range, double factor) {
  const auto scale = [&](std::int64_t sample) {
    const double scaled = static_cast<double>(sample) * factor;
    return scaled < 0x1p62 ? std::llround(scaled) : std::numeric_limits<std::int64_t>::max();
  };
  return {scale(range.First), scale(range.End)};
}

// An AIFF file is taken with one channel of 16 bits. The samples of others lie in the file as they do in no wave.
std::optional<DecodedWave> ReadRecording(const std::wstring& path) {
  WaveHeader wave;
  if (wave.Load(path, false) != 0) return std::nullopt;
  const std::wstring name = FileNameOf(path);
  const std::wstring extension = name.substr(std::min(name.rfind(L'.'), name.size()));
  const bool isAiff = extension.size() > 1 && (extension[1] == L'a' || extension[1] == L'A');
  if (isAiff && (wave.format.bitsPerSample != 16 || wave.format.channels != 1)) return std::nullopt;
  return DecodedWave{wave.format, wave.dataSize, std::move(wave.samples), std::move(wave.extension)};
}

// Makes the sounds of one command, each as a file of its own.
class SoundMaker {
 public:
  SoundMaker(const std::wstring& folder, const ListenInput& input) : folder_(folder), input_(input) {}

  SoundEnd MakeRecording();
  SoundEnd MakeCurve();
  SoundEnd MakeBoth();
  SoundEnd MakeComparison(const std::function<bool()>& isStopped);

  std::vector<std::wstring> Files;

 private:
  SoundEnd Write(const wchar_t* name, const WaveFormat& format, ByteSpan extension, ByteSpan samples);
  SoundEnd WritePart(const wchar_t* name, const DecodedWave& wave, SampleRange range);
  std::vector<float> Tone(double rate) const;
  SoundEnd Render(const PreviewInput& side, double rate, DecodedWave& part) const;

  const std::wstring& folder_;
  const ListenInput& input_;
};

ByteSpan BytesOf(const std::vector<std::int16_t>& samples) {
  return {reinterpret_cast<const std::uint8_t*>(samples.data()), samples.size() * sizeof(std::int16_t)};
}

SoundEnd SoundMaker::Write(const wchar_t* name, const WaveFormat& format, ByteSpan extension, ByteSpan samples) {
  const std::wstring file = PathIn(folder_, name);
  if (!WriteWholeFile(file, EncodeWave(format, extension, samples))) return SoundEnd::NotPrepared;
  Files.push_back(file);
  return SoundEnd::Well;
}

// A format that cannot be cut is heard as a whole.
SoundEnd SoundMaker::WritePart(const wchar_t* name, const DecodedWave& wave, SampleRange range) {
  const DecodedWave part = CutWave(wave, range.First, range.End).value_or(wave);
  if (part.samples.empty()) return SoundEnd::Behind;
  return Write(name, part.format, part.extension, part.samples);
}

std::vector<float> SoundMaker::Tone(double rate) const {
  const FrqMap& map = input_.Syllable.Map;
  const FrameRange whole{0, static_cast<SampleCount>(map.Frames.size())};
  return CurveTone(map, input_.Part.Count > 0 ? input_.Part : whole, rate);
}

SoundEnd SoundMaker::MakeRecording() {
  const auto wave = ReadRecording(input_.Syllable.WavePath);
  return wave ? WritePart(L"recording.wav", *wave, SamplesOf(input_)) : SoundEnd::NoWave;
}

// The curve is heard without a recording too.
SoundEnd SoundMaker::MakeCurve() {
  WaveHeader wave;
  const bool hasRate = wave.Load(input_.Syllable.WavePath, true) == 0 && wave.format.samplesPerSec > 0;
  const int rate = hasRate ? static_cast<int>(wave.format.samplesPerSec) : FrqSampleRate;
  const std::vector<std::int16_t> tone = To16Bits(Tone(rate));
  return tone.empty() ? SoundEnd::NoCurve : Write(L"curve.wav", PlainFormat(1, rate), {}, BytesOf(tone));
}

SoundEnd SoundMaker::MakeBoth() {
  const auto wave = ReadRecording(input_.Syllable.WavePath);
  const auto sound = wave ? SoundOfWave(wave->format, wave->samples) : std::nullopt;
  if (!sound) return SoundEnd::NoWave;
  const std::vector<std::int16_t> tone = To16Bits(Tone(sound->rate));
  if (tone.empty()) return SoundEnd::NoCurve;
  const SampleRange range = SamplesOf(input_);
  const std::int64_t size = std::ssize(sound->samples);
  const std::int64_t first = std::min(range.First, size), end = std::min(range.End, size);
  if (first == end) return SoundEnd::Behind;
  const std::vector<std::int16_t> recording =
      To16Bits({sound->samples.begin() + first, static_cast<std::size_t>(end - first)});
  std::vector<std::int16_t> both(2 * std::max(tone.size(), recording.size()));
  for (std::size_t i = 0; i < recording.size(); ++i) both[2 * i] = recording[i];
  for (std::size_t i = 0; i < tone.size(); ++i) both[2 * i + 1] = tone[i];
  return Write(L"both.wav", PlainFormat(2, sound->rate), {}, BytesOf(both));
}

// Both maps are rendered before the first one is heard, so that they follow each other closely. Each has the folder for
// itself: resamplers keep more beside a wave than its map.
SoundEnd SoundMaker::MakeComparison(const std::function<bool()>& isStopped) {
  WaveHeader wave;
  const bool hasRate = wave.Load(input_.Syllable.WavePath, true) == 0 && wave.format.samplesPerSec > 0;
  if (!hasRate) return SoundEnd::NoWave;
  PreviewInput saved = input_.Syllable, edited = input_.Syllable;
  input_.Saved.CopyTo(saved.Map);
  edited.IgnoresEntry = true;
  DecodedWave parts[2];
  for (DecodedWave& part : parts) {
    const SoundEnd end = Render(&part == parts ? saved : edited, wave.format.samplesPerSec, part);
    if (end != SoundEnd::Well || isStopped()) return end;
  }
  for (const DecodedWave& part : parts) {
    const SoundEnd end =
        Write(&part == parts ? L"saved.wav" : L"edited.wav", part.format, part.extension, part.samples);
    if (end != SoundEnd::Well) return end;
  }
  return SoundEnd::Well;
}

// The rendered sound is as long as the recording, at a rate of its own. It is heard as a whole where it ends before the
// part.
SoundEnd SoundMaker::Render(const PreviewInput& side, double rate, DecodedWave& part) const {
  TempFolder::Empty(folder_);
  PreviewEnd end = PreviewEnd::NotPrepared;
  RenderPreview(folder_, side, end);
  switch (end) {
    case PreviewEnd::NotPrepared: return SoundEnd::NotPrepared;
    case PreviewEnd::NotStarted: return SoundEnd::NotStarted;
    case PreviewEnd::Silent: return SoundEnd::Silent;
    default: break;
  }
  WaveHeader wave;
  const int error = wave.LoadWav(PathIn(folder_, kRenderedName), false);
  TempFolder::Empty(folder_);
  if (error != 0) return SoundEnd::NotPlayed;
  part = {wave.format, wave.dataSize, std::move(wave.samples), std::move(wave.extension)};
  const SampleRange range = Scaled(SamplesOf(input_), part.format.samplesPerSec / rate);
  auto cut = CutWave(part, range.First, range.End);
  if (cut && !cut->samples.empty()) part = *std::move(cut);
  return SoundEnd::Well;
}

}  // namespace

std::vector<std::wstring> MakeSounds(const std::wstring& folder, const ListenInput& input,
                                     const std::function<bool()>& isStopped, SoundEnd& end) {
  SoundMaker maker(folder, input);
  switch (input.What) {
    case ListenTo::Recording: end = maker.MakeRecording(); break;
    case ListenTo::Curve: end = maker.MakeCurve(); break;
    case ListenTo::Both: end = maker.MakeBoth(); break;
    case ListenTo::Compare: end = maker.MakeComparison(isStopped); break;
  }
  if (end != SoundEnd::Well) maker.Files.clear();
  return maker.Files;
}
