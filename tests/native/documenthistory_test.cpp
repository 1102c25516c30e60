// Edits of a dozen syllables in any order, taken back to the very first and done again, and how much of it
// is kept.

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numeric>
#include <random>

#include "document/documentediting.h"
#include "document/mapimage.h"
#include "frqmap/edits.h"
#include "memoryfiles.h"

namespace {

constexpr int kEntries = 12;
constexpr int kGestures = 10000;

std::vector<int> AllRows(const FrqMap& map) {
  std::vector<int> rows(map.Frames.size());
  std::iota(rows.begin(), rows.end(), 0);
  return rows;
}

// Maps of stored and derived averages, of a project, with frames that contradict themselves.
FrqMap OddMap(int index) {
  FrqMap map = PlainMap(20 + 5 * index);
  map.DerivedAverage = index % 3 == 1;
  if (index == 5) {
    map.Hop = 1;
    map.HasProject = map.DerivedAverage = true;
    map.Project.Items.resize(1);
    map.Project.ControlPoints = {std::vector<VsControlPoint>(map.Frames.size() - 2)};
    for (VsControlPoint& point : map.Project.ControlPoints[0]) point.Pitch = 5001;
  }
  for (std::size_t i = 0; i < map.Frames.size(); ++i) map.Frames.Own()[i].Amplitude = 100.0 * static_cast<double>(i);
  map.Frames.Own()[3].Voiced = false;
  map.Frames.Own()[4].Frequency = std::nan("");
  map.Frames.Own()[5] = {.Frequency = -0.0, .Amplitude = std::nan(""), .Voiced = true};
  return map;
}

struct DocumentHistoryTest : testing::Test {
  void SetUp() override {
    std::vector<FrqMap> maps;
    for (int i = 0; i < kEntries; ++i) maps.push_back(OddMap(i));
    OpenMaps(document_, files_, maps);
    for (int i = 0; i < kEntries; ++i) versions_[static_cast<std::size_t>(i)].push_back(ContentOf(Map(i)));
    states_.push_back({});
  }

  int Random(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  double Pick(const std::array<double, 5>& values) { return values[static_cast<std::size_t>(Random(5))]; }
  FrqMap& Map(int entry) { return *document_.Maps(entry).Map; }

  std::vector<int> Edit(FrqMap& map) {
    std::vector<int> rows = AllRows(map);
    std::erase_if(rows, [this](int) { return Random(4) != 0; });
    switch (Random(6)) {
      case 0: return InterpolateFrames(map, rows, FrqTypeFrq);
      case 1:
        map.SetFrequency(map.PositionOf(Random(map.FrameCount)), Random(9) == 0 ? std::nan("") : 300.0);
        return {};
      case 2: map.Average = 200.0 + Random(3); return {};
      case 3: RestoreFrames(map, files_.Files[L"0"], rows, map.FrameCount); return rows;
      default: return ScaleFrames(map, rows, Pick({0.5, 2.0, 0.0, 1.0, 3.0}), FrqTypeFrq);
    }
  }

  void Change(int entry) {
    document_.Change(Gesture::Triple, entry, [this](FrqMap& map) { return Edit(map); });
  }

  // Some strokes are left open, for whatever comes next to end them.
  void Stroke(FrqMap& map) {
    const StrokeKind kind = static_cast<StrokeKind>(Random(3));
    editing_.BeginStroke(map, kind);
    const std::array gestures = {Gesture::Stroke, Gesture::Erase, Gesture::DragKey};
    EXPECT_EQ(document_.State().Undo, gestures[static_cast<std::size_t>(kind)]);
    for (int i = Random(6); i > 0; --i) {
      const double hz = kind == StrokeKind::Erase ? 0.0 : 100.0 + Random(300);
      EXPECT_TRUE(kind == StrokeKind::Average ? editing_.SetKey(map, hz)
                                              : editing_.SetFrequency(map, Random(map.FrameCount + 1), hz));
    }
    if (Random(2) == 0) return;
    editing_.EndStroke();
    EXPECT_FALSE(editing_.IsStrokeOpen());
  }

  void Many() {
    const Document::Scope scope(document_, Gesture::ReloadAll);
    const int first = Random(kEntries - 3);
    for (int entry = first; entry < first + 3; ++entry) {
      document_.Reload(entry, Document::OnFailure::KeepSaved, true);
      if (Random(2) == 0) Change(entry);
    }
    if (Random(2) == 0) Stroke(Map(first));
    Change(first);
  }

  void RandomGesture() {
    const int entry = Random(kEntries);
    FrqMap& map = Map(entry);
    const bool apply = Random(3) != 0;
    switch (Random(9)) {
      case 0:
        editing_.Flatten(map, 250.0 + Random(4));
        EXPECT_FALSE(editing_.IsStrokeOpen());
        break;
      case 1: document_.Reload(entry, Document::OnFailure::KeepSaved, false); break;
      case 2: Many(); break;
      case 3: document_.ApplyAllMarks(apply); break;
      case 4: document_.ApplyMarks(Gesture::Modify, entry, map.PositionOf(Random(map.FrameCount)), apply); break;
      case 5: Stroke(map); break;
      default: Change(entry); break;
    }
  }

  // A mark of a check is no gesture: it stays while one goes back. For each frame once, so that this is plain.
  void Plant(int entry) {
    const auto frame = static_cast<std::size_t>(planted_[static_cast<std::size_t>(entry)]++);
    if (frame >= Map(entry).Frames.size()) return;
    const double suggestion = Pick({300.0, 40.0, 0.0, std::nan(""), 260.0});
    document_.Mark(entry, Marking(frame, suggestion, 1 + static_cast<std::uint32_t>(Random(3))), false);
    const Words now = ContentOf(Map(entry));
    for (Words& words : versions_[static_cast<std::size_t>(entry)]) {
      for (const std::size_t word : {frame * kFrameWords + 2, frame * kFrameWords + 3}) words[word] = now[word];
    }
  }

  void InBetween() {
    const int entry = Random(kEntries);
    std::uint32_t error = 0;
    if (Random(4) == 0) Plant(entry);
    if (Random(4) == 0) document_.SetCurrent(entry);
    if (Random(8) != 0) return;
    if (Random(4) == 0) files_.Next = MemoryFiles::Fault::Fails;
    document_.Save(entry, false, error);
    files_.Next = MemoryFiles::Fault::None;
    if (Random(2) == 0) document_.RenewSaved(entry);
  }

  // Each change that made a difference is a state to come back to.
  void Keep() {
    State state = states_.back();
    for (std::size_t i = 0; i < kEntries; ++i) {
      Words words = ContentOf(Map(static_cast<int>(i)));
      if (words == versions_[i].back()) continue;
      versions_[i].push_back(std::move(words));
      ++state[i];
    }
    if (state != states_.back()) states_.push_back(state);
  }

  void ExpectStep(std::size_t from, std::size_t to) {
    const StepResult result = to < from ? document_.Undo() : document_.Redo();
    ASSERT_EQ(result.What, StepResult::Done);
    const auto again = std::ranges::adjacent_find(result.Frames, std::greater_equal());
    ASSERT_EQ(again, result.Frames.end()) << "a frame comes twice or out of order";
    for (std::size_t i = 0; i < kEntries; ++i) {
      if (states_[from][i] == states_[to][i]) continue;
      const int entry = static_cast<int>(i);
      const FrqMap& map = Map(entry);
      ASSERT_EQ(ContentOf(map), versions_[i][static_cast<std::size_t>(states_[to][i])]);
      const bool differs = ContentOf(map, true) != ContentOf(files_.Files[std::to_wstring(entry)], true);
      ASSERT_EQ(document_.Facts(entry).Edited, differs) << "entry " << i;
      ASSERT_EQ(map.HasMarks, std::ranges::any_of(map.Frames, [](const FrqFrame& f) { return f.Mark != 0; }));
    }
  }

  using State = std::array<int, kEntries>;  // of each entry, which of its versions

  std::mt19937 random_{20};
  MemoryFiles files_;
  Document document_{files_};
  DocumentEditing editing_{document_};
  std::array<std::vector<Words>, kEntries> versions_;
  std::vector<State> states_;
  std::array<int, kEntries> planted_{};
};

TEST_F(DocumentHistoryTest, TenThousandGesturesGoBackAndForthBitForBit) {
  for (int i = 0; i < kGestures; ++i) {
    InBetween();
    RandomGesture();
    Keep();
  }
  ASSERT_GT(states_.size(), std::size_t{kGestures / 2});
  const std::size_t last = states_.size() - 1;
  for (std::size_t k = last; k > 0; --k) ASSERT_NO_FATAL_FAILURE(ExpectStep(k, k - 1)) << "undo " << k;
  EXPECT_EQ(document_.Undo().What, StepResult::Nothing);
  for (std::size_t k = 0; k < last; ++k) ASSERT_NO_FATAL_FAILURE(ExpectStep(k, k + 1)) << "redo " << k;
  EXPECT_EQ(document_.Redo().What, StepResult::Nothing);
}

TEST(DocumentHistory, StepsCostWhatChangedAndTheOldestGoBeyondTheLimit) {
  FrqMap map = PlainMap(100'000);
  const MapBefore plain(map);
  ScaleFrames(map, AllRows(map), 2.0, FrqTypeFrq);
  const Step step{Gesture::Double, {MapChange(0, plain, map)}};
  const FrqFrame wrong{.Frequency = 300.0, .SuggestedFrequency = 310.0, .Mark = 1, .Voiced = true};
  std::ranges::fill(map.Frames.Own(), wrong);
  const MapBefore marked(map);
  map.ApplyMarks(-1, true);
  const Step taken{Gesture::Modify, {MapChange(0, marked, map)}};
  for (const Step* each : {&step, &taken}) EXPECT_LE(each->Bytes(), map.Frames.size() * 24 + 256);

  History history;
  for (int i = 0; i < 100; ++i) history.Add({static_cast<Gesture>(i % kGestureCount), step.Maps});
  EXPECT_LE(history.Bytes(), History::kMostBytes);
  EXPECT_GT(history.Bytes() + step.Bytes(), History::kMostBytes) << "no more goes than must";
  int count = 0;
  for (; history.NextUndo(); ++count, history.MoveToUndone()) {
    ASSERT_EQ(history.NextUndo()->What, static_cast<Gesture>((99 - count) % kGestureCount));
  }
  EXPECT_EQ(history.Bytes(), static_cast<std::size_t>(count) * step.Bytes()) << "what is undone still counts";
  history.Add(step);
  history.Add({Gesture::ReloadAll, std::vector(static_cast<std::size_t>(count) + 1, step.Maps.front())});
  EXPECT_EQ(history.NextUndo(), nullptr) << "one beyond the limit leaves none";
  EXPECT_EQ(history.Bytes(), 0u);
}

TEST(MapImages, TellProjectsApartByTheirPoints) {
  FrqMap map = OddMap(5);
  const std::uint64_t before = ImageHash(map);
  map.Project.ControlPoints[0][0].Dynamics += 0.5;
  EXPECT_NE(ImageHash(map), before);
}

TEST(MapImages, AreNearlyOfAMapWithinHalfASemitone) {
  FrqMap map = PlainMap(5);
  const MapImage image(map);
  const double hz = map.Frames[2].Frequency;
  for (const double factor : {1.0, 1.028, 1.0 / 1.028, 1.031, 1.0 / 1.031, 0.0}) {
    map.Frames.Own()[2].Frequency = hz * factor;
    EXPECT_EQ(image.IsNearly(map), std::fabs(factor - 1.0) < 0.03) << factor;
  }
}

}  // namespace
