// export and import: curves as files of other programs, beside the waves or in a folder of their own with the same
// names.
#include "base/files.h"
#include "base/filesystem.h"
#include "base/inplace.h"
#include "base/path.h"
#include "batch/commands.h"
#include "batch/curvecsv.h"
#include "batch/keeping.h"
#include "batch/machine.h"
#include "batch/mapchange.h"
#include "batch/pitchtier.h"
#include "batch/survey.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mapkind.h"
#include "frqmap/wavelevels.h"

namespace {

std::wstring_view EndingOf(CurveFormat format) {
  return format == CurveFormat::Csv ? L".csv" : L".PitchTier";
}

// a.wav has the curve a.csv.
std::wstring CurvePathOf(const Context& context, const WaveTask& task) {
  const Order& call = context.Call;
  const std::wstring place =
      call.Output.empty() ? task.Wave : PathIn(FullPathOfTyped(call.Output), task.Of.NameOf(task.Wave));
  return PathWithExtension(place, std::wstring(EndingOf(call.Format)));
}

std::optional<FrqType> FirstKindOf(const Context& context, const WaveTask& task) {
  for (const FrqType kind : KindNumbers()) {
    if ((!context.Call.Kind || kind == *context.Call.Kind) && task.Of.HasMap(task.Wave, kind)) return kind;
  }
  return std::nullopt;
}

Outcome ExportOne(const Context& context, const WaveTask& task) {
  Outcome outcome;
  outcome.Sum.Syllables = 1;
  const std::optional<FrqType> kind = FirstKindOf(context, task);
  if (!kind) return outcome;
  FrqMap map;
  if (!ReadMap(task, *kind, map, outcome)) return outcome;
  const std::vector<CurvePoint> points = CurvePointsOf(map);
  const std::string text =
      context.Call.Format == CurveFormat::Csv ? CurveCsv(points) : PitchTier(points, SecondsOf(map));
  const std::wstring path = CurvePathOf(context, task);
  if (!context.Call.IsDryRun) {
    Disk().MakeFolder(FolderOf(path));
    if (!WriteInPlace(Disk(), path, {text.begin(), text.end()})) {
      outcome.Faults.push_back(Printable(TypedForm(path)) + ": cannot be written: " + LastFault());
      return outcome;
    }
  }
  outcome.Sum.Maps = 1;
  outcome.Lines = LineOfChange(context, task, *kind, "to " + Printable(TypedForm(path)));
  return outcome;
}

std::string TextOfLost(const LostValues& lost) {
  std::string text;
  const auto add = [&](std::size_t count, const char* what) {
    if (count > 0) text += (text.empty() ? "; " : ", ") + TextOfCount(static_cast<std::int64_t>(count)) + what;
  };
  add(lost.TooLow, " pitches too low for the kind, without pitch now");
  add(lost.TooHigh, " too high for it, at its highest now");
  add(lost.Levels, " levels that it does not hold");
  add(lost.Beyond, " points beyond the end of the map");
  return text;
}

class Import {
 public:
  Import(const Context& context, FrqType kind) : context_(context), kind_(kind) {}

  Outcome One(const WaveTask& task) const {
    Outcome outcome;
    outcome.Sum.Syllables = 1;
    const std::wstring path = CurvePathOf(context_, task);
    if (!FileExists(path)) return outcome;
    const std::string fault = Take(task, path, outcome);
    if (!fault.empty()) outcome.Faults.push_back(Printable(TypedForm(path)) + ": " + fault);
    return outcome;
  }

 private:
  // The fault in words; empty if all went well.
  std::string Take(const WaveTask& task, const std::wstring& path, Outcome& outcome) const {
    const std::optional<Bytes> bytes = ReadWholeFile(path);
    if (!bytes) return "cannot be read: " + LastFault();
    const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    const CurveReading curve = context_.Call.Format == CurveFormat::Csv ? ReadCurveCsv(text) : ReadPitchTier(text);
    if (curve.Fault.Why != CurveFault::None) return TextOf(curve.Fault);

    FrqMap map;
    const std::optional<MapFacts> facts = LookAtMap(task.Of, task.Wave, kind_, map);
    if (facts && facts->Fault.Why != MapFault::None) {
      return "the " + NameOfKind(kind_) + " map cannot be read: " + FaultText(facts->Fault);
    }
    std::string what = "from " + Printable(FileNameOf(path));
    if (facts) {
      what += TextOfLost(LostIn(map, curve.Points, kind_));
      if (LayOver(map, curve.Points, kind_) == 0) return "no frame of the map lies under its points";
    } else if (const std::string fault = MakeMap(task, curve.Points, map); !fault.empty()) {
      return fault;
    } else {
      what += TextOfLost(LostIn(map, curve.Points, kind_)) + "; a new map";
    }
    MrqStore* const entries = kind_ == FrqTypeMrq ? &task.Of.Entries() : nullptr;
    if (!context_.Call.IsDryRun && SaveMap(map, task.Wave, kind_, entries) != 0) return WriteFault(task, kind_);
    outcome.Sum.Maps = 1;
    outcome.Lines = LineOfChange(context_, task, kind_, what);
    return {};
  }

  // As long as the wave, where it can be read.
  std::string MakeMap(const WaveTask& task, const std::vector<CurvePoint>& points, FrqMap& map) const {
    const std::uint32_t samples = ReadSamplesPerChannel(task.Wave);
    constexpr std::uint32_t kHop = 256;
    std::optional<FrqMap> made = MapOfPoints(points, kind_, static_cast<SampleCount>((samples + kHop - 1) / kHop));
    if (!made) return "no map reaches so far";
    map = std::move(*made);
    return {};
  }

  const Context& context_;
  const FrqType kind_;
};

}  // namespace

void ExportCurves(Context& context) {
  const auto banks = BanksOf(context);
  ForEachWave(context, banks, "exporting", [&](const WaveTask& task) { return ExportOne(context, task); });
  SayChanges(context, "exported");
}

void ImportCurves(Context& context, Keeping& keeping) {
  const FrqType kind = context.Call.Kind.value_or(FrqTypeFrq);
  if (kind == FrqTypeVs4ufrq) {
    return context.Fail("maps of the kind vs4ufrq are made by a library that this program does not use");
  }
  const auto banks = BanksOf(context);
  const Import import(context, kind);
  const KeptBecauseScope because(keeping.Safety(), KeptBecause::Saved);
  ForEachWave(context, banks, "importing", [&](const WaveTask& task) { return import.One(task); });
  SayChanges(context, "imported");
}
