// What every reader of files must take: any bytes at all. Each target is this file built with FUZZ_TARGET set to one of
// the functions; beyond "no crash" they hold what is read to what writing it again makes of it.
#include <algorithm>
#include <set>

#include "frqmap/dio.h"
#include "frqmap/edits.h"
#include "frqmap/freq0003.h"
#include "frqmap/mrqwriting.h"
#include "frqmap/pmk.h"
#include "native/wavebytes.h"
#include "voicebank/inifile.h"
#include "voicebank/otoini.h"

namespace {

[[maybe_unused]] void Expect(bool holds) {
  if (!holds) __builtin_trap();
}

// What the program does with each map that it has read; the bytes that it becomes again.
template <typename Encode>
[[maybe_unused]] std::optional<Bytes> Use(std::optional<FrqMap> map, Encode encode) {
  if (!map) return std::nullopt;
  map->ComputeAverage(-1);
  map->ComputeAverage(2);
  map->ComputeSoundRegions();
  return encode(*map);
}

// The lines of a text file, a byte being a character.
struct Lines {
  explicit Lines(ByteSpan file) : rest_(SkipByteOrderMark({reinterpret_cast<const char*>(file.data()), file.size()})) {}

  bool operator()(std::wstring& line) {
    std::string_view bytes;
    if (!CutLine(rest_, bytes)) return false;
    line.assign(bytes.begin(), bytes.end());
    return true;
  }

 private:
  std::string_view rest_;
};

[[maybe_unused]] void Freq0003(ByteSpan file) {
  const auto again = Use(DecodeFreq0003(file), [](const FrqMap& map) { return EncodeFreq0003(map, FrqTypeFrq); });
  Expect(!again || DecodeFreq0003(*again));
}

[[maybe_unused]] void Dio(ByteSpan file) {
  if (const auto again = Use(DecodeDio(file), [](const FrqMap& map) { return EncodeDio(map, 44100); }))
    DecodeDio(*again);
}

// Few bytes may ask for hours of map, which is looked at no further: each would cost as much as thousands of others.
[[maybe_unused]] void Pmk(ByteSpan file) {
  constexpr SampleCount kHours = 20000;
  auto map = DecodePmk(file);
  if (map && map->FrameCount > kHours) return;
  if (const auto again = Use(std::move(map), EncodePmk)) DecodePmk(*again);
}

[[maybe_unused]] std::set<std::u16string> MrqNames(MrqImage& image) {
  std::set<std::u16string> names;
  ReadAllMrqEntries(image, [&](const std::u16string& name, MrqEntry&&) { names.insert(name); });
  return names;
}

// Neither a writing nor a compaction costs a map that was there.
[[maybe_unused]] void Mrq(ByteSpan file) {
  MrqImage image(Bytes(file.begin(), file.end()));
  const std::set<std::u16string> before = MrqNames(image);
  MrqEntry entry;
  entry.Frequencies.assign(3, 110.0);
  WriteMrqEntry(image, u"new.wav", entry, 1);
  CompactMrqEntries(image, 1);
  Expect(std::ranges::includes(MrqNames(image), before));
}

[[maybe_unused]] void Wav(ByteSpan file) {
  WaveBytes source(file);
  const auto wave = DecodeWav(source, false);
  Expect(!wave || (wave->samples.size() == wave->dataSize && wave->dataSize <= file.size()));
}

[[maybe_unused]] void Aiff(ByteSpan file) {
  const auto wave = DecodeAiff(file);
  Expect(!wave ||
         (wave->samples.size() == wave->dataSize && wave->dataSize <= std::max<std::size_t>(2 * file.size(), 1 << 20)));
}

[[maybe_unused]] void NoteList(ByteSpan file) {
  UtauCommon::NOTELIST list;
  list.Parse(Lines(file));
  UtauCommon::OTOINI oto;
  for (const UtauCommon::NOTE* note = list.FindFirstNumbered(); note; note = note->next) {
    ResolveNoteWavePath(*note, oto);
  }
}

[[maybe_unused]] void OtoIni(ByteSpan file) {
  UtauCommon::OTOINI oto;
  oto.Parse(Lines(file), L"sub");
  for (const auto& entry : oto.entries) Expect(entry.alias.empty() || oto.Find(entry.alias)->alias == entry.alias);
}

[[maybe_unused]] void IniFile(ByteSpan file) {
  UtauCommon::INIFILE ini;
  ini.Parse(Lines(file));
}

[[maybe_unused]] void Frequency(ByteSpan text) {
  ParseFrequency(std::wstring(text.begin(), text.end()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FUZZ_TARGET(ByteSpan(data, size));
  return 0;
}
