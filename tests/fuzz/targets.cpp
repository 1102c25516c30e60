// Every reader must take any bytes at all. Each function is the target of a program of its own; beyond "no crash"
// they hold what is read to what writing it again makes of it.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <map>

#include "batch/curvecsv.h"
#include "batch/pitchtier.h"
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
#include "resampler/commandline.h"
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

// The frequency that is left where a kind writes none for a frame without pitch.
double PitchOf(const FrqFrame& frame) {
  return frame.Frequency <= FrqNoPitch ? FrqNoPitch : frame.Frequency;
}

// All that the program does with each map that it has read, whose memory is in proportion to what it was read from.
std::optional<FrqMap> Use(std::optional<FrqMap> map, std::size_t fileSize) {
  if (!map) return map;
  Expect(map->Frames.Own().capacity() * sizeof(FrqFrame) <= 64 * fileSize + 16384);
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

// The arguments of a command line; quotes keep blanks together.
std::vector<std::wstring> ArgumentsOf(const std::wstring& line) {
  std::vector<std::wstring> arguments(1);
  bool quoted = false;
  for (const wchar_t c : line) {
    if (c == L'"') quoted = !quoted;
    if (c == L' ' && !quoted) arguments.emplace_back();
    if (c != L'"' && (c != L' ' || quoted)) arguments.back() += c;
  }
  return arguments;
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
  Expect(again && (again->Hop == map->Hop || (again->Hop == map->Hop - 1 && map->Hop % 64 != 0)));
  Expect(std::ranges::equal(map->Frames, again->Frames, {}, PitchOf, &FrqFrame::Frequency) ||
         std::ranges::any_of(map->Frames, [](const FrqFrame& frame) { return std::isnan(frame.Frequency); }));
}

// Periods keep no grid: a map comes back longer, with the pitches that it had in their order.
void Pmk(ByteSpan file) {
  const std::optional<FrqMap> map = Use(DecodePmk(file, std::ssize(file)), 2 * file.size());
  if (!map || map->FrameCount == 0) return;
  const std::optional<Bytes> written = EncodePmk(*map);
  Expect(written.has_value());
  SampleCount reached = 0;
  const std::optional<FrqMap> again = DecodePmk(*written, 0, &reached);
  Expect(again && again->Hop == map->Hop && again->FrameCount >= map->FrameCount);
  const double average = map->Average > FrqNoPitch ? map->Average : FrqNoPitch;
  Expect(std::fabs(again->Average - average) <= 1e-12 * average);
  auto source = map->Frames.begin();
  for (const FrqFrame& frame : std::span(again->Frames).first(static_cast<std::size_t>(reached))) {
    source = std::ranges::find(source, map->Frames.end(), frame.Frequency, PitchOf);
    Expect(source != map->Frames.end());
  }
}

// Neither a writing nor a compaction costs a map that was there, and each one comes back from a file of its own as it
// was.
void Mrq(ByteSpan file) {
  constexpr std::int32_t kNoon = 43200;
  const std::wstring path = L"C:\\v\\desc.mrq";
  FaultDisk disk;
  disk.Put(path, Bytes(file.begin(), file.end()));
  MrqImage own(EmptyMrqFile());
  const MrqEntries before = EntriesOf(MrqImage(*disk.ContentOf(path)));
  MrqStore store([] { return kNoon; }, disk);
  store.LoadFolder(L"C:\\v");
  store.SaveEntry(L"C:\\v\\new", {.Hop = 256, .Frequencies = {110.0, 0.0}});
  store.RemoveEntry(L"C:\\v\\none");
  store.CompactFiles();
  const MrqEntries after = EntriesOf(MrqImage(*disk.ContentOf(path)));
  for (const auto& [name, map] : before) {
    Expect(name == u"none.wav" || after.contains(name));
    Expect(WriteMrqEntry(own, name, map, kNoon));
  }
  Expect(std::ranges::equal(before, EntriesOf(MrqImage(own.Content)), [](const auto& a, const auto& b) {
    return a.first == b.first && a.second.Hop == b.second.Hop && a.second.SampleRate == b.second.SampleRate &&
           a.second.Unedited == b.second.Unedited && b.second.Timestamp == kNoon &&
           std::ranges::equal(a.second.Frequencies, b.second.Frequencies, Same);
  }));
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

  // A map gives points only pitches that it has from them, but for a cent that a logarithm may cost.
  const bool isLong = static_cast<double>(rate) / 256 * item.PointCount / item.PointsPerSecond > 20000.0;
  for (const auto& map : {Use(MapOfProject(project), 5 * answers.size() + 512),
                          isLong ? std::nullopt : ResampledMap(project, FrqTypeFrq)}) {
    VsProject sampled = project;
    if (!map || !SampleOntoProject(*map, sampled) || !sung) continue;
    for (const VsControlPoint& point : sampled.Points()) {
      Expect(!point.HasPitch || std::ranges::any_of(points, [&](const VsControlPoint& source) {
        return source.HasPitch && std::abs(source.Pitch - point.Pitch) <= 1;
      }));
    }
  }
  // Periods of no length have a test of their own: they take seconds.
  if (!sung || rate < 8000 || rate > 96000) return;
  const std::optional<Bytes> periods = PmkOfProject(project);
  Expect(periods && (points.empty() || DecodePmk(*periods, 0)));
}

// A map and regions as any library may get them: settings from the tag of a .frq, a count that lies, and regions of
// nonsense.
void Check(ByteSpan file) {
  std::optional<FrqMap> map = DecodeFreq0003(file);
  if (!map) return;
  CheckFrqSettings settings;
  std::memcpy(&settings.LowNote, map->Tag.data(), map->Tag.size());
  const auto frames = MakeCheckFrames(*map, std::wstring(file.begin(), file.end()));
  const std::int32_t count = CheckMap(&settings, frames.get(), MakeCheckRegions(*map).get());
  Expect(count >= 0 && count == TakeCheckResults(*frames, *map));
  map->ApplyMarks(-1, true);

  const std::size_t room = map->Frames.size() / 2 + 2;
  const CheckRecordPtr<CheckRegionRecord> lies(
      static_cast<CheckRegionRecord*>(std::calloc(room, sizeof(CheckRegionRecord))));
  std::memcpy(lies->Regions, file.data(), std::min(file.size(), room * sizeof(CheckRegion)));
  for (const std::uint32_t claimed : {file.back() % 8u, ~0u}) {
    lies->RegionCount = claimed;
    Expect(CheckMap(&settings, frames.get(), lies.get()) <= map->FrameCount);
  }
}

void PitchBend(ByteSpan text) {
  const std::vector<double> cents = DecodePitchBend(std::wstring(text.begin(), text.end()));
  Expect(cents.size() <= 1'000'000 && std::ranges::all_of(cents, [](double c) { return c >= -2048 && c <= 2047; }));
}

// Each line is an argument that the resampler takes apart; and what the program asks for with such texts is what the
// resampler understands.
void CommandLine(ByteSpan file) {
  std::vector<std::wstring> arguments;
  Lines lines(file);
  for (std::wstring line; lines(line);) arguments.push_back(line);
  const std::optional<ResamplerCall> call = ParseCall(arguments);
  if (!call || !call->note || NoteToRender(call->note->hz, 0) > 119) return;
  const auto& note = *call->note;
  Expect(note.hz > 0.0 && note.lengthMs > 0.0 && !note.pitchBend.empty() && !call->output.empty());

  const RenderSettings settings{0, ModulationFromText(arguments.back()), WithoutQuotes(arguments[4])};
  const std::wstring wave = WithoutQuotes(call->input), output = WithoutQuotes(call->output);
  const double hz = std::max(note.hz, FrqNoPitch);
  const auto again = ParseCall(ArgumentsOf(RenderCommandLine(wave, output, hz, note.lengthMs, settings)));
  Expect(again && again->note && again->input == wave && again->output == output);
  Expect(std::fabs(again->note->lengthMs / note.lengthMs - 1.0) < 1e-5 && again->note->hz == hz);
  Expect(again->note->modulation == settings.Modulation && again->note->pitchBend == std::vector{0.0, 0.0});
}

// As a table and as a tier: what is read goes in order, comes back from a table of ours, and lies in a map within its
// limits.
void Curve(ByteSpan file) {
  for (const auto read : {ReadCurveCsv, ReadPitchTier}) {
    const CurveReading reading = read({reinterpret_cast<const char*>(file.data()), file.size()});
    Expect((reading.Fault.Why == CurveFault::None) != reading.Points.empty());
    if (reading.Points.empty()) continue;
    Expect(std::ranges::is_sorted(reading.Points, {}, &CurvePoint::Seconds));
    Expect(ReadCurveCsv(CurveCsv(reading.Points)).Points == reading.Points);
    const auto map = MapOfPoints(reading.Points, FrqTypePmk, 100);
    if (!map) continue;
    const double most = MaxFrequencyOfKind(FrqTypePmk);
    Expect(
        std::ranges::all_of(map->Frames, [&](const FrqFrame& f) { return f.Frequency >= 55 && f.Frequency <= most; }));
  }
}
