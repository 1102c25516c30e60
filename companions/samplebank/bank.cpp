// The list of the syllables, the spoiling of their maps, and the making of the files of a folder.
#include "bank.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

#include "encode.h"
#include "frqmap/frqtype.h"
#include "noise.h"
#include "voice.h"

namespace {

constexpr SampleCount kHopSamples = 256;
constexpr std::uint32_t kNoiseSeed = 20240;

enum class MapState { Missing, Faultless, OctaveUp, OctaveDown, PitchInHiss };

struct Entry {
  std::u8string_view name;  // of the wave, without extension
  Syllable syllable;
  MapState map;
  bool stereo = false;
};

constexpr std::array<Entry, 12> kMainEntries = {{
    {u8"あ", {Consonant::None, Vowel::A, Ornament::Vibrato, 60.0, 1.8}, MapState::Faultless},
    {u8"い", {Consonant::None, Vowel::I, Ornament::Plain, 62.0, 1.2}, MapState::Faultless},
    {u8"う", {Consonant::None, Vowel::U, Ornament::Fall, 64.0, 1.0}, MapState::Faultless},
    {u8"え", {Consonant::None, Vowel::E, Ornament::Vibrato, 65.0, 1.6}, MapState::Faultless},
    {u8"お", {Consonant::None, Vowel::O, Ornament::Plain, 57.0, 0.9}, MapState::Missing},
    {u8"か", {Consonant::Burst, Vowel::A, Ornament::Plain, 62.0, 1.4}, MapState::OctaveUp},
    {u8"さ", {Consonant::Hiss, Vowel::A, Ornament::Vibrato, 64.0, 1.5}, MapState::PitchInHiss},
    {u8"ま", {Consonant::Nasal, Vowel::A, Ornament::Fall, 60.0, 1.3}, MapState::Faultless, true},
    {u8"ら", {Consonant::Tap, Vowel::A, Ornament::Plain, 57.0, 1.5}, MapState::OctaveDown},
    {u8"ra", {Consonant::Tap, Vowel::A, Ornament::Vibrato, 67.0, 2.0}, MapState::Faultless},
    {u8"mi", {Consonant::Nasal, Vowel::I, Ornament::Fall, 69.0, 1.1}, MapState::Missing},
    {u8"na_2", {Consonant::Nasal, Vowel::A, Ornament::Vibrato, 65.0, 1.7}, MapState::Faultless},
}};

// The same vowels sung strongly, in a folder of their own as voicebanks have it.
constexpr std::u8string_view kStrong = u8"強";
constexpr std::array<Entry, 2> kStrongEntries = {{
    {u8"あ", {Consonant::None, Vowel::A, Ornament::Plain, 69.0, 1.2}, MapState::Faultless},
    {u8"い", {Consonant::None, Vowel::I, Ornament::Fall, 67.0, 0.8}, MapState::Missing},
}};

// Records a voice in 16 bits, at a level that leaves room, over the faint noise of a quiet room: a recording is never
// wholly silent.
std::vector<std::int16_t> Record(const std::vector<double>& voice, Noise& noise) {
  constexpr double kPeak = 20000.0;
  constexpr double kRoom = 3.0;
  double peak = 0.0;
  for (const double value : voice) peak = std::max(peak, std::abs(value));
  std::vector<std::int16_t> samples;
  for (const double value : voice) {
    samples.push_back(static_cast<std::int16_t>(std::lround(value * kPeak / peak + kRoom * noise.Next())));
  }
  return samples;
}

// A wave with the same sound on both channels, softer on the right one, so that a mix-up of channels shows.
std::vector<std::int16_t> ToStereo(const std::vector<std::int16_t>& mono) {
  std::vector<std::int16_t> both;
  for (const std::int16_t sample : mono) {
    both.push_back(sample);
    both.push_back(static_cast<std::int16_t>(sample / 2));
  }
  return both;
}

// The root mean square of each hop; the last one may be short.
std::vector<double> HopLevels(const std::vector<std::int16_t>& samples) {
  std::vector<double> levels;
  const auto count = static_cast<SampleCount>(samples.size());
  for (SampleCount first = 0; first < count; first += kHopSamples) {
    const SampleCount last = std::min(first + kHopSamples, count);
    double sum = 0.0;
    for (SampleCount i = first; i < last; ++i) sum += static_cast<double>(samples[i]) * samples[i];
    levels.push_back(std::sqrt(sum / (last - first)));
  }
  return levels;
}

std::vector<double> HopPitch(const std::vector<double>& pitch) {
  std::vector<double> frames;
  for (std::size_t i = 0; i < pitch.size(); i += kHopSamples) frames.push_back(pitch[i]);
  return frames;
}

void ScaleMiddle(std::vector<double>& frames, std::ptrdiff_t count, double factor) {
  const std::ptrdiff_t first = (std::ssize(frames) - count) / 2;
  for (double& hz : std::span(frames).subspan(first, count)) hz *= factor;
}

// Spoils a map as an analysis does that takes the hiss of a consonant for a voice: with anything from 200 to 900 Hz.
void PitchTheHiss(std::vector<double>& frames, const SungSyllable& sung, Noise& noise) {
  const SampleCount first = sung.consonantStart / kHopSamples + 1;
  const SampleCount last = sung.vowelStart / kHopSamples;
  for (double& hz : std::span(frames).subspan(first, last - first)) hz = 550.0 + 350.0 * noise.Next();
}

std::vector<double> MapPitch(const SungSyllable& sung, MapState state, Noise& noise) {
  std::vector<double> frames = HopPitch(sung.pitch);
  if (state == MapState::OctaveUp) ScaleMiddle(frames, 12, 2.0);
  if (state == MapState::OctaveDown) ScaleMiddle(frames, 20, 0.5);
  if (state == MapState::PitchInHiss) PitchTheHiss(frames, sung, noise);
  return frames;
}

// A line of oto.ini: wave=alias,offset,consonant,cutoff,preutterance,overlap, all five in ms. The alias must tell the
// folders apart.
std::string OtoLine(std::u8string_view folder, std::u8string_view name, const SungSyllable& sung) {
  const auto toMs = [](std::ptrdiff_t samples) { return std::lround(samples * 1000.0 / FrqSampleRate); };
  const long preutterance = toMs(sung.vowelStart - sung.consonantStart);
  const long cutoff = toMs(std::ssize(sung.samples) - sung.end);
  std::string line = EncodeCp932(name) + ".wav=" + EncodeCp932(name) + EncodeCp932(folder);
  for (const long ms : {toMs(sung.consonantStart), preutterance + 80, cutoff, preutterance, preutterance / 2}) {
    line += "," + std::to_string(ms);
  }
  return line + "\r\n";
}

void AddText(std::vector<BankFile>& files, std::u8string path, std::string_view text) {
  files.push_back({std::move(path), Bytes(text.begin(), text.end())});
}

void AddFolder(std::vector<BankFile>& files, std::u8string_view folder, std::span<const Entry> entries, Noise& noise) {
  const std::u8string prefix = folder.empty() ? u8"" : std::u8string(folder) + u8"/";
  std::string oto;
  for (const Entry& entry : entries) {
    const std::u8string stem = prefix + std::u8string(entry.name);
    const SungSyllable sung = Sing(entry.syllable, noise);
    const std::vector<std::int16_t> mono = Record(sung.samples, noise);
    files.push_back({stem + u8".wav", entry.stereo ? EncodeWave(ToStereo(mono), 2) : EncodeWave(mono, 1)});
    if (entry.map != MapState::Missing) {
      const std::vector<double> pitch = MapPitch(sung, entry.map, noise);
      files.push_back({stem + u8"_wav.frq", EncodeMap(kHopSamples, pitch, HopLevels(mono))});
    }
    oto += OtoLine(folder, entry.name, sung);
  }
  AddText(files, prefix + u8"oto.ini", oto);
}

}  // namespace

std::vector<BankFile> MakeSampleBank() {
  Noise noise(kNoiseSeed);
  std::vector<BankFile> files;
  AddText(files, u8"character.txt", "name=Marlit sample\r\nauthor=Marlit\r\n");
  AddFolder(files, u8"", kMainEntries, noise);
  AddFolder(files, kStrong, kStrongEntries, noise);
  return files;
}
