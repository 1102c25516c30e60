// What every reader must take: any bytes at all. Each function is the target of a program of its own; beyond "no crash"
// they hold what is read to what writing it again makes of it.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <map>

#include "check/checkrules.h"
#include "companions/resampler/arguments.h"
#include "frqmap/dio.h"
#include "frqmap/edits.h"
#include "frqmap/freq0003.h"
#include "frqmap/mrqstore.h"
#include "frqmap/mrqwriting.h"
#include "frqmap/pmk.h"
#include "native/faultdisk.h"
#include "native/wavebytes.h"
#include "voicebank/inifile.h"
#include "voicebank/otoini.h"

namespace {

void Expect(bool holds) {
  if (!holds) __builtin_trap();
}

// A NaN stays the one that it is.
bool Same(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// What the program does with each map that it has read, whose memory is in proportion to what it was read from.
std::optional<FrqMap> Use(std::optional<FrqMap> map, std::size_t fileSize) {
  if (!map) return map;
  Expect(map->Frames.capacity() * sizeof(FrqFrame) <= 64 * fileSize + 16384);
  map->ComputeAverage(-1);
  map->ComputeAverage(2);
  map->ComputeSoundRegions();
  return map;
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

using MrqEntries = std::map<std::u16string, MrqEntry>;
MrqEntries EntriesOf(MrqImage file) {
  MrqEntries entries;
  std::int64_t taken = 0;
  ReadAllMrqEntries(file, [&](const std::u16string& name, MrqEntry&& entry) {
    taken += std::ssize(entry.Frequencies) * 8;
    entries.insert_or_assign(name, std::move(entry));
  });
  Expect(taken <= 2 * file.Size());
  return entries;
}

}  // namespace

void Freq0003(ByteSpan file) {
  const std::optional<FrqMap> map = Use(DecodeFreq0003(file), file.size());
  if (!map) return;
  for (const FrqType kind : {FrqTypeFrq, FrqTypeFrc}) {
    const std::optional<FrqMap> again = DecodeFreq0003(EncodeFreq0003(*map, kind));
    Expect(again && again->Hop == map->Hop && Same(again->Average, map->Average) && again->Tag == Freq0003Tag(kind));
    Expect(std::ranges::equal(map->Frames, again->Frames, [](const FrqFrame& a, const FrqFrame& b) {
      return Same(a.Frequency, b.Frequency) && Same(a.Amplitude, b.Amplitude) && a.Voiced == b.Voiced;
    }));
  }
}

// The rate in the file is whole, so that many a hop comes back a sample shorter.
void Dio(ByteSpan file) {
  const std::optional<FrqMap> map = Use(DecodeDio(file), file.size());
  if (!map) return;
  const std::optional<Bytes> written = EncodeDio(*map, 44100);
  Expect(written.has_value() == (map->Hop > 0));
  if (!written) return;
  const std::optional<FrqMap> again = DecodeDio(*written);
  Expect(again && again->FrameCount == map->FrameCount);
  Expect(again->Hop == map->Hop || (again->Hop == map->Hop - 1 && map->Hop % 64 != 0));
}

void Pmk(ByteSpan file) {
  const std::optional<FrqMap> map = Use(DecodePmk(file, std::ssize(file)), 2 * file.size());
  if (!map || map->FrameCount == 0) return;
  const std::optional<Bytes> written = EncodePmk(*map);
  Expect(written.has_value());
  const std::optional<FrqMap> again = DecodePmk(*written, 0);
  Expect(again && again->Hop == map->Hop && again->FrameCount >= map->FrameCount);
}

// Neither a writing nor a compaction costs a map that was there.
void Mrq(ByteSpan file) {
  FaultDisk disk;
  disk.Put(L"C:\\v\\desc.mrq", Bytes(file.begin(), file.end()));
  const MrqEntries before = EntriesOf(MrqImage(*disk.ContentOf(L"C:\\v\\desc.mrq")));
  MrqStore store([] { return std::int32_t{43200}; }, disk);
  store.LoadFolder(L"C:\\v");
  store.SaveEntry(L"C:\\v\\new", {.Hop = 256, .Frequencies = {110.0, 0.0}});
  store.RemoveEntry(L"C:\\v\\none");
  store.CompactFiles();
  const MrqEntries after = EntriesOf(MrqImage(*disk.ContentOf(L"C:\\v\\desc.mrq")));
  for (const auto& [name, map] : before) Expect(name == u"none.wav" || after.contains(name));
}

void Wav(ByteSpan file) {
  WaveBytes source(file);
  const auto wave = DecodeWav(source, false);
  Expect(!wave || (wave->samples.size() == wave->dataSize && wave->dataSize <= file.size()));
}

void Aiff(ByteSpan file) {
  const auto wave = DecodeAiff(file);
  Expect(!wave ||
         (wave->samples.size() == wave->dataSize && wave->dataSize <= std::max<std::size_t>(2 * file.size(), 1 << 20)));
}

void NoteList(ByteSpan file) {
  UtauCommon::NOTELIST list;
  list.Parse(Lines(file));
  UtauCommon::OTOINI oto;
  for (const UtauCommon::NOTE* note = list.FindFirstNumbered(); note; note = note->next) {
    ResolveNoteWavePath(*note, oto);
  }
}

void OtoIni(ByteSpan file) {
  UtauCommon::OTOINI oto;
  oto.Parse(Lines(file), L"sub");
  for (const auto& entry : oto.entries) Expect(entry.alias.empty() || oto.Find(entry.alias)->alias == entry.alias);
}

void IniFile(ByteSpan file) {
  UtauCommon::INIFILE ini;
  ini.Parse(Lines(file));
}

void Frequency(ByteSpan text) {
  ParseFrequency(std::wstring(text.begin(), text.end()));
}

// A library's answers: rate, points per second, the count that it claims, and the points.
void Project(ByteSpan answers) {
  ByteReader reader(answers);
  VsProject project;
  const auto rate = project.ProjectInfo.SampleRate = reader.Read<std::int32_t>();
  VsItemInfo& item = project.Items.emplace_back();
  item.PointsPerSecond = reader.Read<std::int32_t>();
  item.PointCount = reader.Read<std::int32_t>();
  std::vector<VsControlPoint>& points = project.ControlPoints.emplace_back();
  bool sung = true;  // by a voice
  while (reader.Holds(1, 16)) {
    VsControlPoint& point = points.emplace_back();
    point.Pitch = reader.Read<std::int32_t>();
    point.HasPitch = reader.Read<std::int32_t>();
    point.Dynamics = reader.Read<double>();
    sung = sung && point.Pitch >= 3600 && point.Pitch <= 12000;
  }
  project.AverageCents();

  const bool isLong = static_cast<double>(rate) / 256 * item.PointCount / item.PointsPerSecond > 20000.0;
  for (const auto& map : {Use(MapOfProject(project), 5 * answers.size() + 512),
                          isLong ? std::nullopt : ResampledMap(project, FrqTypeFrq)}) {
    VsProject sampled = project;
    if (map) SampleOntoProject(*map, sampled);
  }
  // Periods of no length have a test of their own: they take seconds.
  if (!sung || rate < 8000 || rate > 96000) return;
  const std::optional<Bytes> periods = PmkOfProject(project);
  Expect(periods && (points.empty() || DecodePmk(*periods, 0)));
}

// A map as any library may get it: settings from the tag of a .frq.
void Check(ByteSpan file) {
  std::optional<FrqMap> map = DecodeFreq0003(file);
  if (!map) return;
  CheckFrqSettings settings;
  std::memcpy(&settings.LowNote, map->Tag.data(), map->Tag.size());
  const auto frames = MakeCheckFrames(*map, std::wstring(file.begin(), file.end()));
  const std::int32_t count = CheckMap(&settings, frames.get(), MakeCheckRegions(*map).get());
  Expect(count >= 0 && count == TakeCheckResults(*frames, *map));
  map->ApplyMarks(-1, true);
}

void PitchBend(ByteSpan text) {
  const std::vector<double> cents = DecodePitchBend(std::wstring(text.begin(), text.end()));
  Expect(cents.size() <= 1'000'000 && std::ranges::all_of(cents, [](double c) { return c >= -2048 && c <= 2047; }));
}

// Each line is an argument that the resampler takes apart.
void CommandLine(ByteSpan file) {
  std::vector<std::wstring> arguments;
  Lines lines(file);
  for (std::wstring line; lines(line);) arguments.push_back(line);
  const std::optional<ResamplerCall> call = ParseCall(arguments);
  if (!call || !call->note) return;
  const auto& note = *call->note;
  Expect(note.hz > 0.0 && note.lengthMs > 0.0 && !note.pitchBend.empty() && !call->output.empty());
}
