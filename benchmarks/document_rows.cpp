// The cost of the history of edits: the time of a step back against that of the edit itself, the memory of a step, the
// journal behind a stroke, and the pitches of a recording that a stroke snaps to.
#include <malloc.h>

#include <mutex>
#include <numeric>

#include "document/document.h"
#include "document/journal.h"
#include "document/step.h"
#include "figure.h"
#include "frqmap/edits.h"
#include "frqmap/freq0003.h"
#include "knownvoices.h"
#include "measuring.h"
#include "native/faultdisk.h"
#include "pitch/soundpitches.h"
#include "rows.h"

namespace {

constexpr SampleCount kFrames = 30000;

FrqMap VoicedMap() {
  FrqMap map;
  map.Create(kFrames, FrqTypeFrq);
  for (SampleCount i = 0; i < kFrames; ++i) map.SetFrequency(map.PositionOf(i), 220.0 + i % 7);
  map.Loaded = true;
  return map;
}

std::vector<int> AllRows() {
  std::vector<int> rows(kFrames);
  std::iota(rows.begin(), rows.end(), 0);
  return rows;
}

class OneMap : public DocumentFiles {
 public:
  int Load(FrqMap& map, const std::wstring&) override { return VoicedMap().CopyTo(map); }
  int Save(FrqMap&, const std::wstring&, std::uint32_t&) override { return -1; }
  std::uint64_t Stamp(const std::wstring&) override { return 1; }
  bool Delete(const std::wstring&) override { return false; }
  void DeleteAnalysis(const std::wstring&) override {}
};

// All frames doubled and that undone, against the bare doubling of a map that nobody owns.
class UndoScaling : public Work {
 public:
  UndoScaling() {
    document_.Open({{L"a.wav", true, kFrames}});
    document_.EnsureLoaded(0, Document::OnFailure::EmptySaved);
  }

  double Measured() override {
    if (!document_.State().Undo) Scale();
    StepResult result;
    const double ms = MillisecondsOf([&] { result = document_.Undo(); });
    Require(result.Frames.size() == rows_.size() && !document_.State().CurrentEdited, "a step back is not whole");
    return ms;
  }

  double Yardstick() override {
    return MillisecondsOf([&] {
      ScaleFrames(bare_, rows_, up_ ? 2.0 : 0.5, FrqTypeFrq);
      up_ = !up_;
    });
  }

 private:
  void Scale() {
    document_.Change(Gesture::Double, 0, [this](FrqMap& map) { return ScaleFrames(map, rows_, 2.0, FrqTypeFrq); });
  }

  std::vector<int> rows_ = AllRows();
  FrqMap bare_ = VoicedMap();
  bool up_ = true;
  OneMap files_;
  Document document_{files_};
};

// Bytes of a step that has doubled all frames, against 24 a frame and a little for itself.
class StepMemory : public Work {
 public:
  double Measured() override {
    FrqMap map = VoicedMap();
    const MapBefore before(map);
    ScaleFrames(map, AllRows(), 2.0, FrqTypeFrq);
    return static_cast<double>(Step{Gesture::Double, {MapChange(0, before, map)}}.Bytes());
  }

  double Yardstick() override { return kFrames * 24.0 + 256.0; }
};

// Memory [MB] that a document with a bank of loaded maps holds, each of a wave of 1.5 s and decoded from a file.
double MemoryOfLoadedMaps() {
  constexpr int kMaps = 5000;
  constexpr SampleCount kFramesOfOne = 258;
  class Decoded : public OneMap {
   public:
    int Load(FrqMap& map, const std::wstring&) override {
      map = DecodeFreq0003(file_).value();
      map.Loaded = true;
      return 0;
    }

   private:
    const Bytes file_ = [] {
      FrqMap map;
      map.Create(kFramesOfOne, FrqTypeFrq);
      return EncodeFreq0003(map, FrqTypeFrq);
    }();
  };
  Decoded files;
  Document document(files);
  const std::size_t before = mallinfo2().uordblks;
  std::vector<FoundSyllable> found;
  for (int i = 0; i < kMaps; ++i) found.push_back({std::to_wstring(i) + L".wav", true, kFramesOfOne});
  document.Open(std::move(found));
  for (int i = 0; i < kMaps; ++i) {
    Require(document.EnsureLoaded(i, Document::OnFailure::EmptySaved), "a map cannot be loaded");
  }
  return static_cast<double>(mallinfo2().uordblks - before) / 1e6;
}

// A document with the map open.
struct OpenDocument {
  OpenDocument() {
    Maps.Open({{L"a.wav", true, kFrames}});
    Maps.EnsureLoaded(0, Document::OnFailure::EmptySaved);
  }

  // A stroke as the hand feels it: each column comes back before the next one is drawn. `snapped`: the frequency that
  // is written where the hand draws one.
  double Stroke(const std::function<double(int, double)>& snapped = nullptr) {
    up_ = !up_;
    return MillisecondsOf([&] {
      Maps.BeginStroke(Gesture::Stroke, 0);
      for (int row = 0; row < 100; ++row) {
        const double drawn = up_ ? 300.0 : 310.0;
        const double hz = snapped ? snapped(row, drawn) : drawn;
        Maps.StrokeChange(0, [row, hz](FrqMap& map) {
          map.SetFrequency(map.PositionOf(row), hz);
          return std::vector<int>{row};
        });
      }
      Maps.EndStroke();
    });
  }

  OneMap Files;
  Document Maps{Files};

 private:
  bool up_ = false;
};

// A stroke of a hundred columns with a journal behind the document, against one without.
class JournaledStroke : public Work {
 public:
  JournaledStroke() {
    disk_.MakeFolder(L"C:\\run");
    const std::lock_guard locked(journaled_.Maps);
    journal_.Begin({});
    journaled_.Maps.ReadAfresh(0, Document::OnFailure::EmptySaved, true);
  }

  double Measured() override {
    const double ms = journaled_.Stroke();
    Require(journal_.Flush() && disk_.FactsOf(L"C:\\run\\journal"), "a stroke is not in the journal");
    return ms;
  }

  double Yardstick() override { return bare_.Stroke(); }

 private:
  FaultDisk disk_;
  OpenDocument bare_;
  OpenDocument journaled_;
  Journal journal_{journaled_.Maps, disk_, L"C:\\run\\journal"};
};

// A stroke of a hundred columns that snaps to the pitches of a recording, against the plain one.
class SnappedStroke : public Work {
 public:
  SnappedStroke() { Require(sound_.NearestAt(50, 300.0).has_value(), "nothing to snap to"); }
  double Measured() override {
    return snapped_.Stroke([this](int row, double hz) { return sound_.NearestAt(row, hz).value_or(hz); });
  }
  double Yardstick() override { return bare_.Stroke(); }

 private:
  static Sound Voice() {
    return {voices::Sound({"", [](double) { return 290.0; }, [](double) { return 1.0; }}), 44100};
  }

  OpenDocument bare_;
  OpenDocument snapped_;
  SoundPitches sound_{Voice(), voices::kHop};
};

}  // namespace

std::vector<Row> DocumentRows() {
  return {RowOf<UndoScaling>("undo", "ms", 1.2, Taken::Least), RowOf<StepMemory>("step_memory", "bytes", 1.0),
          FigureRow("maps_memory", "MB", 50.0, MemoryOfLoadedMaps),
          RowOf<JournaledStroke>("journal", "ms", 1.05, Taken::Least),
          RowOf<SnappedStroke>("snap_stroke", "ms", 2.0, Taken::Least)};
}
