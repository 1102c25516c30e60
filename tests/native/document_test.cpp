// The voicebank in memory: what is true of it after a file has failed, which steps stay when a map becomes another one,
// where a stroke ends, and what its windows are told.
#include "document/document.h"

#include <future>

#include "memoryfiles.h"

namespace {

using Fault = MemoryFiles::Fault;

constexpr auto kKeep = Document::OnFailure::KeepSaved;
constexpr auto kEmpty = Document::OnFailure::EmptySaved;

// Counts how often it is told. Each call of it asks the document from another thread, which waits as long as anybody
// holds the lock.
struct Witness : DocumentListener {
  explicit Witness(Document& document) : document_(document) {}

  void OnChanged(const DocumentChanges& changes) override {
    ++Told;
    Last = changes;
    auto answer = std::async(std::launch::async, [this] { return document_.State().Entries; });
    EXPECT_EQ(answer.wait_for(std::chrono::seconds(20)), std::future_status::ready) << "told under the lock";
    document_.SetCurrent(document_.Current());
  }

  // The facts told of all entries together, a letter each in their order; then in a stroke, one of many, from the
  // history, the end of many, other steps.
  std::string Facts() const {
    unsigned facts = Last.OfMany << 12 | Last.History << 13;
    for (const EntryChange& entry : Last.Entries) {
      facts |= entry.Facts | entry.InStroke << 9 | entry.OneOfMany << 10 | entry.FromHistory << 11;
    }
    std::string letters;
    for (unsigned i = 0; i < 14; ++i) letters.append(facts >> i & 1, "RFKMEHSTUsobmh"[i]);
    return letters;
  }

  int Told = 0;
  DocumentChanges Last;

 private:
  Document& document_;
};

struct DocumentTest : testing::Test {
  void SetUp() override { Start({PlainMap(10), PlainMap(12), PlainMap(14)}); }

  void Start(const std::vector<FrqMap>& maps) {
    OpenMaps(document_, files_, maps);
    document_.SetCurrent(0);
  }

  FrqMap& Map(int entry) { return *document_.Maps(entry).Map; }
  FrqMap& Saved(int entry) { return *document_.Maps(entry).Saved; }
  FrqMap& File(int entry) { return files_.Files.at(std::to_wstring(entry)); }
  double Hz(int entry, int row = 2) { return Map(entry).Frames[static_cast<std::size_t>(row)].Frequency; }

  void Set(int entry, double hz, int row = 2) { document_.Change(Gesture::SetFrequency, entry, Setting(hz, row)); }
  static std::vector<int> Shrinking(FrqMap& map) { return {map.Create(5, FrqTypeFrq)}; }
  // How many steps there were, those among them whose map is another now.
  int UndoAll() {
    int steps = 0;
    while (document_.Undo().What != StepResult::Nothing) ++steps;
    return steps;
  }
  // One step over all entries.
  void SetAll(double hz) {
    const Document::Scope scope(document_, Gesture::ReloadAll);
    for (int entry = 0; entry < 3; ++entry) Set(entry, hz);
  }

  // All that a fault at the first entry must leave alone, here and in the files.
  Words Others() {
    Words words;
    for (const FrqMap* map : {&File(0), &Map(1), &Saved(1), &File(1), &Map(2), &Saved(2), &File(2)}) {
      for (const std::uint64_t word : ContentOf(*map)) words.push_back(word);
    }
    return words;
  }

  MemoryFiles files_;
  Document document_{files_};
  std::uint32_t error_ = 77;
};

TEST_F(DocumentTest, AFileThatFailsOrThrowsLeavesTheTruthInMemory) {
  // The call, true where it says that it worked; of the entry behind it whether it is loaded, has a saved map and is
  // edited; the steps that stay, of the entry itself and of another one.
  const std::tuple<const char*, std::function<bool()>, bool, bool, bool, int> cases[] = {
      {"save", [&] { return document_.Save(0, true, error_) == 0; }, true, true, true, 2},
      {"remove", [&] { return document_.Remove(0); }, true, true, true, 2},
      {"reload", [&] { return document_.Reload(0, kKeep, false) == 0; }, false, true, true, 1},
      {"reload to empty", [&] { return document_.Reload(0, kEmpty, true) == 0; }, false, false, false, 1},
      {"read afresh", [&] { return document_.ReadAfresh(0, kEmpty, false) == 0; }, false, false, true, 1},
      {"load", [&] { return Map(0).Clear(), document_.EnsureLoaded(0, kEmpty); }, false, false, true, 1},
      {"undo", [&] { return Map(0).Clear(), document_.Undo().What == StepResult::Done; }, false, true, true, 1}};
  for (const auto& [what, call, loaded, saved, edited, undo] : cases) {
    for (const Fault fault : {Fault::Fails, Fault::Throws}) {
      SCOPED_TRACE(testing::Message() << what << " " << static_cast<int>(fault));
      Start({PlainMap(10), PlainMap(12), PlainMap(14)});
      Set(1, 300.0);
      Set(0, 400.0);
      const Words others = Others();
      files_.Next = fault;
      EXPECT_TRUE(!call() && files_.Next == Fault::None);
      const EntryFacts facts = document_.Facts(0);
      EXPECT_EQ(std::tuple(Map(0).Loaded, Map(0).Frames.size(), Saved(0).Loaded, facts.Edited, facts.HasMap),
                std::tuple(loaded, loaded ? 10u : 0u, saved, edited, true));
      EXPECT_EQ(facts.Unreadable, !loaded) << "its row in the list";
      EXPECT_EQ(Others(), others);
      ExpectCounts(document_);
      // The next attempt meets no fault and costs no other entry its steps.
      EXPECT_TRUE(loaded || (document_.Reload(0, kKeep, true) == 0 && !document_.Facts(0).Unreadable));
      EXPECT_EQ(UndoAll(), undo);
      EXPECT_EQ(Hz(1), 202.0);
      EXPECT_EQ(document_.State().Edited, 0);
    }
  }
  EXPECT_EQ(document_.State().Saved, 0);
  EXPECT_EQ(files_.AnalysesGone, 0);
  EXPECT_EQ(error_, 0u) << "no file was touched by one that throws";
}

// The random gestures of another test tell whether a step back is edited; here is what a save and a reload leave.
TEST_F(DocumentTest, ASaveTellsItsFaultsAndAReloadGoesBackToTheFile) {
  Set(0, 300.0);
  files_.Next = Fault::Fails;
  EXPECT_EQ(document_.Save(0, true, error_), 9);
  EXPECT_EQ(std::pair(error_, files_.AnalysesGone), std::pair(5u, 0));
  File(0).Frames.Own()[2].Frequency = 250.0;
  document_.Undo();
  EXPECT_TRUE(document_.Facts(0).Edited) << "the file is not what it was";
  document_.Redo();
  EXPECT_EQ(document_.Save(0, true, error_), 0);
  EXPECT_EQ(std::pair(document_.State().Saved, files_.AnalysesGone), std::pair(1, 1));
  document_.Undo();
  EXPECT_EQ(document_.Reload(0, kKeep, false), 0) << "the edits go";
  EXPECT_EQ(Hz(0), 300.0);
  EXPECT_EQ(document_.Undo().Of, Gesture::Reload);
  EXPECT_EQ(Hz(0), 202.0);
  File(0).Frames.Own()[7].Frequency = 333.0;
  document_.Reload(0, kKeep, false);
  Set(0, 400.0);
  document_.Undo();
  EXPECT_FALSE(document_.Facts(0).Edited) << "what was saved before counts no more";

  // A save alone makes another average where it is derived. To read that map again changes nothing to take back.
  FrqMap derived = PlainMap(10);
  derived.DerivedAverage = true;
  Start({derived});
  document_.Save(0, false, error_);
  EXPECT_EQ(files_.AnalysesGone, 1) << "if that is asked for";
  EXPECT_EQ(document_.Reload(0, kKeep, false), 0);
  EXPECT_FALSE(document_.State().Undo);
}

TEST_F(DocumentTest, ASaveStopsAtAMapThatAnotherProgramHasChanged) {
  using enum Document::OutsideChange;
  const auto save = [&](Document::OutsideChange change) { return document_.Save(0, false, error_, change); };
  const auto inFile = [&] { return std::pair(File(0).Frames[2].Frequency, File(0).Frames[5].Frequency); };
  const auto putOther = [&] {
    FrqMap other = File(0);
    other.SetFrequency(other.PositionOf(5), 500.0);
    files_.Put(L"0", other);
    Set(0, Hz(0) + 10.0);
  };
  Set(0, 300.0);
  files_.Put(L"0", FrqMap(File(0)));
  EXPECT_EQ(save(Refuse), 0) << "it was only written again";

  putOther();
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_EQ(save(Refuse), Document::kChangedOutside);
    EXPECT_TRUE(inFile() == std::pair(300.0, 500.0) && document_.Facts(0).Edited);
  }
  EXPECT_EQ(save(Overwrite), 0);
  EXPECT_EQ(inFile(), std::pair(310.0, 205.0));

  files_.Next = Fault::Fails;
  EXPECT_EQ(save(Overwrite), 9) << "nobody knows what it has left";
  document_.Reload(0, kKeep, false);
  putOther();
  EXPECT_EQ(save(Refuse), Document::kChangedOutside) << "but what was read since is known";

  putOther();
  files_.Next = Fault::Fails;
  EXPECT_EQ(save(Refuse), 0) << "what cannot be read is no map that would be lost";
  Set(0, 340.0);
  files_.Files.clear();
  EXPECT_EQ(save(Refuse), 0) << "a file that has gone is made again";
  Map(0).Clear();
  files_.Put(L"0", FrqMap(PlainMap(3)));
  EXPECT_EQ(save(Refuse), -1) << "it has no map to lose, and none to save";
}

TEST_F(DocumentTest, AMapThatBecameAnotherTakesItsOwnStepsAlong) {
  const auto readInGesture = [&] {
    const Document::Scope scope(document_, Gesture::ReloadAll);
    Set(0, 500.0);
    document_.ReadAfresh(0, kKeep, true);
  };
  // The steps that are left to be undone: of the other entries, and none of this one that would lead nowhere.
  const std::tuple<const char*, int, std::function<void()>> ways[] = {
      {"changed, reloaded", 2, [&] { File(0).Frames.Own()[7].Frequency = 333.0, document_.Reload(0, kKeep, true); }},
      {"shrunk, reloaded", 2, [&] { files_.Put(L"0", PlainMap(4)), document_.Reload(0, kKeep, true); }},
      {"gone, reloaded", 2, [&] { files_.Files.erase(L"0"), document_.Reload(0, kEmpty, true); }},
      {"grown, out of memory", 1, [&] { files_.Put(L"0", PlainMap(40)), Map(0).Clear(), document_.Undo(); }},
      {"changed, out of memory", 1, [&] { Map(0).Clear(), document_.Undo(); }},
      {"resized", 2, [&] { document_.Change(Gesture::Flatten, 0, Shrinking); }},
      {"no map", 2, [&] { document_.SetHasMap(0, false, 0); }},
      {"removed", 2, [&] { EXPECT_TRUE(document_.Remove(0)); }},
      {"read afresh", 2, [&] { document_.ReadAfresh(0, kKeep, true); }},
      {"read in a gesture", 2, readInGesture}};
  for (const auto& [what, steps, way] : ways) {
    SCOPED_TRACE(what);
    Start({PlainMap(10), PlainMap(12), PlainMap(14)});
    Set(1, 250.0);
    Set(0, 300.0);
    SetAll(400.0);
    way();
    const Words now = ContentOf(Map(0));
    EXPECT_EQ(UndoAll(), steps);
    EXPECT_EQ(ContentOf(Map(0)), now);
    EXPECT_EQ(std::pair(Hz(1), Hz(2)), std::pair(202.0, 202.0));
    EXPECT_FALSE(document_.Facts(1).Edited);
    EXPECT_EQ(document_.Redo().What, StepResult::Done);
    EXPECT_EQ(document_.Redo().What, StepResult::Done) << "of the step over all, what is left";
    EXPECT_EQ(document_.Redo().What, StepResult::Nothing);
    EXPECT_EQ(std::pair(Hz(1), Hz(2)), std::pair(400.0, 400.0));
    EXPECT_EQ(ContentOf(Map(0)), now);
    ExpectCounts(document_);
  }
  EXPECT_EQ(document_.Open({}).size(), 3u);
  EXPECT_EQ(document_.Undo().What, StepResult::Nothing);
  EXPECT_EQ(document_.Current(), -1);
}

TEST_F(DocumentTest, AStrokeEndsWithWhateverElseComesIn) {
  const std::vector<std::pair<const char*, std::function<void()>>> others = {
      {"undo", [&] { EXPECT_EQ(document_.Undo().What, StepResult::Done); }},
      {"another syllable", [&] { document_.SetCurrent(1); }},
      {"save", [&] { document_.Save(1, false, error_); }},
      {"another gesture", [&] { document_.ApplyAllMarks(true); }},
      {"another stroke", [&] { document_.BeginStroke(Gesture::Erase, 1); }},
      {"reload", [&] { document_.Reload(1, kKeep, true); }},
      {"read afresh", [&] { document_.ReadAfresh(2, kKeep, true); }},
      {"marks", [&] { document_.Mark(0, Marking(4, 305.0), true); }}};
  for (const auto& [what, other] : others) {
    SCOPED_TRACE(what);
    Start({PlainMap(10), PlainMap(12), PlainMap(14)});
    document_.BeginStroke(Gesture::Stroke, 0);
    for (int row = 0; row < 4; ++row) EXPECT_TRUE(document_.StrokeChange(0, Setting(400.0, row)));
    EXPECT_FALSE(document_.StrokeChange(1, Setting(400.0)));
    EXPECT_EQ(document_.State().Undo, Gesture::Stroke);
    document_.SetCurrent(0);
    const DocumentState state = document_.State();
    EXPECT_EQ(std::pair(state.StrokeEntry, state.UndoEntry), std::pair(0, 0)) << "the same syllable ends nothing";
    other();
    EXPECT_FALSE(document_.StrokeChange(0, Setting(500.0)));
    UndoAll();
    EXPECT_EQ(std::pair(Hz(0, 0), Hz(0, 3)), std::pair(200.0, 203.0));
    EXPECT_FALSE(document_.Facts(0).Edited);
    EXPECT_EQ(Map(0).Frames[4].Mark != 0, std::string_view(what) == "marks") << "marks are no part of a stroke";
    EXPECT_EQ(document_.Redo().Of, Gesture::Stroke);
    EXPECT_EQ(Hz(0, 3), 400.0);
  }
  // An open one goes with its map.
  document_.BeginStroke(Gesture::Stroke, 0);
  document_.SetHasMap(0, false, 0);
  EXPECT_FALSE(document_.StrokeChange(0, Setting(500.0)) || Saved(0).Loaded);
  EXPECT_EQ(document_.State().Undo, std::nullopt);
  document_.BeginStroke(Gesture::Stroke, 1);
  document_.Open({});
  EXPECT_EQ(document_.State().StrokeEntry, -1);
}

TEST_F(DocumentTest, AMapThatSomebodyElseHasReadIsKeptWhereNoneIsShownOrKnown) {
  FrqMap read = PlainMap(30);
  document_.Adopt(1, L"1", read, 7);
  EXPECT_EQ(std::pair(read.FrameCount, document_.Facts(1).FrameEstimate), std::pair(12, 20u)) << "the document's own";
  for (const int entry : {0, 1}) Map(entry).Clear();
  for (const auto& [entry, path, kept] : {std::tuple(0, L"0", false), {1, L"elsewhere", false}, {1, L"1", true}}) {
    document_.Adopt(entry, path, read = PlainMap(30), 7);
    EXPECT_EQ(Map(entry).Loaded, kept) << entry;
  }
}

TEST_F(DocumentTest, WhatMakesAStepAndWhatEndsTheWayForward) {
  Set(0, 300.0);
  Set(1, Hz(1));
  EXPECT_TRUE(document_.Facts(1).Edited) << "no difference, but somebody has set it";
  document_.Undo();
  Set(1, Hz(1));
  EXPECT_EQ(document_.State().Redo, Gesture::SetFrequency) << "no step, so the way forward stays";
  Set(1, 300.0);
  EXPECT_EQ(document_.State().Redo, std::nullopt);
  EXPECT_EQ(document_.State().UndoEntry, 1);
  {
    const Document::Scope scope(document_, Gesture::ReloadAll);
    SetAll(400.0);
    document_.BeginStroke(Gesture::Stroke, 0);
    document_.StrokeChange(0, Setting(600.0));
    EXPECT_EQ(document_.Undo().What, StepResult::Nothing) << "not in the middle of a gesture";
    Set(0, 700.0, 3);
  }
  EXPECT_EQ(document_.Undo().Of, Gesture::ReloadAll);
  EXPECT_EQ(std::pair(Hz(0), Hz(2)), std::pair(202.0, 202.0));
  EXPECT_EQ(document_.State().Undo, Gesture::SetFrequency) << "all of it was one step";
  document_.Redo();
  EXPECT_EQ(std::pair(Hz(0), Hz(0, 3)), std::pair(600.0, 700.0));
  // The voicebank may become another one in the middle of a gesture.
  {
    const Document::Scope scope(document_, Gesture::ReloadAll);
    SetAll(410.0);
    Start({PlainMap(3)});
  }
  EXPECT_EQ(document_.Undo().What, StepResult::Nothing);
  EXPECT_EQ(Hz(0), 202.0);
}

TEST_F(DocumentTest, WindowsAreToldEachChangeOnceAndNotUnderTheLock) {
  Witness witness(document_);
  document_.AddListener(witness);
  const auto hold = [&] {
    const std::lock_guard locked(document_);
    document_.SetEdited(1, true, true);
    EXPECT_EQ(witness.Told, 0);
  };
  const auto askForNobody = [&] {
    for (const int none : {-1, 3}) {
      document_.Change(Gesture::Halve, none, Setting(1.0));
      document_.Mark(none, Marking(4, 305.0), true), document_.SetEdited(none, true), document_.RenewSaved(none);
      EXPECT_FALSE(document_.EnsureLoaded(none, kKeep) || document_.Remove(none) ||
                   document_.ApplyMarks(Gesture::Modify, none, 0, true));
      EXPECT_EQ(document_.Save(none, true, error_) + document_.Reload(none, kKeep, true), -2);
      EXPECT_EQ(document_.ReadAfresh(none, kKeep, true), -1);
    }
  };
  const auto lowerKey = [&] {
    document_.Change(Gesture::DragKey, 0, [](FrqMap& map) { return map.Average -= 1.0, std::vector<int>(); });
  };
  // A step; how often it is told and what, the entries that it is told of, and their rows.
  const std::tuple<std::function<void()>, int, std::string, std::size_t, std::vector<int>> steps[] = {
      {[&] { Set(0, 300.0); }, 1, "FETh", 1, {2}},
      {[&] { document_.BeginStroke(Gesture::Stroke, 0); }, 1, "h", 0, {}},
      {[&] { document_.StrokeChange(0, Setting(310.0, 1)); }, 1, "FTs", 1, {1}},
      {[&] { document_.EndStroke(); }, 1, "h", 0, {}},
      {[&] { document_.Undo(); }, 1, "FTbh", 1, {1}},
      {[&] { EXPECT_EQ(document_.Undo().Frames, std::vector{2}); }, 1, "FETbh", 1, {2}},
      {[&] { document_.Undo(); }, 0, "", 0, {}},
      {lowerKey, 1, "FKETh", 1, {}},
      {[&] { document_.Undo(); }, 1, "FKETbh", 1, {}},
      {[&] { document_.Mark(0, Marking(4, 305.0), true), document_.Mark(2, Marking(4, 305.0), false); }, 1, "M", 1, {}},
      {[&] { document_.Mark(2, Marking(6, 306.0), false); }, 0, "", 0, {}},
      {[&] { document_.ApplyAllMarks(true); }, 1, "FKMETomh", 2, {}},
      {[&] { document_.Undo(); }, 1, "FKMETobmh", 2, {4, 6, 4}},
      {[&] { document_.Save(0, false, error_); }, 1, "T", 1, {}},
      {[&] { document_.RenewSaved(0); }, 1, "S", 1, {}},
      {hold, 1, "ETom", 1, {}},
      {[&] { document_.Reload(1, kKeep, false); }, 1, "REST", 1, {}},
      {[&] { document_.Remove(1); }, 1, "RMHS", 1, {}},
      {[&] { Set(2, 300.0), document_.Remove(2); }, 2, "RMEHSh", 1, {}},
      {askForNobody, 0, "", 0, {}}};
  for (const auto& [step, told, facts, entries, rows] : steps) {
    SCOPED_TRACE(&told - &std::get<1>(steps[0]));
    witness.Told = 0, witness.Last = {};
    step();
    std::vector<int> toldRows;
    for (const auto& entry : witness.Last.Entries)
      toldRows.insert(toldRows.end(), entry.Rows.begin(), entry.Rows.end());
    EXPECT_EQ(std::tuple(witness.Told, witness.Facts(), witness.Last.Entries.size(), toldRows),
              std::tuple(told, facts, entries, rows));
  }
}

}  // namespace
