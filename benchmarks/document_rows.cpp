// What the history of edits costs: the time of a step back against that of the edit itself, and the memory of a step.
#include <numeric>

#include "document/document.h"
#include "document/step.h"
#include "frqmap/edits.h"
#include "measuring.h"
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

// All frames doubled, and that undone, against the doubling by itself, of a map that nobody owns.
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
    return MillisecondsOf([&] { ScaleFrames(bare_, rows_, up_ ? 2.0 : 0.5, FrqTypeFrq); up_ = !up_; });
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

}  // namespace

std::vector<Row> DocumentRows() {
  return {RowOf<UndoScaling>("undo", "ms", 1.2), RowOf<StepMemory>("step_memory", "bytes", 1.0)};
}
