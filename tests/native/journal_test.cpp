// Edits that are not saved outlast a kill at any moment: maps, edited marks and the way back are as they were then, and
// who has changed a file meanwhile is left alone.
#include "document/journal.h"

#include <chrono>
#include <cmath>
#include <random>

#include "document/documentediting.h"
#include "document/journalreplay.h"
#include "faultdisk.h"
#include "memoryfiles.h"

namespace {

constexpr auto kKeep = Document::OnFailure::KeepSaved;
constexpr int kEntries = 4;
constexpr int kCalls = 120;
const std::wstring kPath = L"C:\\Runs\\1\\journal";
const JournalHead kHead{FrqTypeMrq, L"C:\\Voice \u3042", L"C:\\r.exe", 77};
using Reason = RestoreReport::Reason;
using namespace std::string_literals;

// A kind of file that holds whole Hz alone.
struct RoundingFiles : MemoryFiles {
  int Save(FrqMap& map, const std::wstring& wavePath, std::uint32_t& error) override {
    const int result = MemoryFiles::Save(map, wavePath, error);
    if (result == 0) Round(wavePath);
    return result;
  }
  void Round(const std::wstring& wavePath) {
    for (FrqFrame& frame : Files[wavePath].Frames.Own()) frame.Frequency = std::round(frame.Frequency);
  }
};

FrqMap ProjectMap() {
  FrqMap map = PlainMap(30);
  map.Hop = 1;
  map.HasProject = map.DerivedAverage = true;
  map.Project.Items.resize(1);
  map.Project.ControlPoints = {std::vector<VsControlPoint>(30)};
  return map;
}

// A user at work, always in the same way; with a journal where there is a disk.
struct Session {
  explicit Session(FaultDisk* disk = nullptr) {
    if (disk) Writer = std::make_unique<Journal>(Maps, *disk, kPath, std::chrono::hours(1));
    const std::lock_guard locked(Maps);
    OpenMaps(Maps, Files, {PlainMap(20), ProjectMap(), PlainMap(25), PlainMap(10)});
    if (Writer) Writer->Begin(kHead);
  }

  void Set(int entry, double hz) { Maps.Change(Gesture::SetFrequency, entry, Setting(hz)); }

  void Call() {
    const int entry = Random(kEntries);
    const auto file = std::to_wstring(entry);
    std::uint32_t error = 0;
    Maps.SetCurrent(entry);
    for (int each = 0; each < kEntries; ++each) {
      Maps.SetHasMap(each, true, 20);
      if (each <= entry) Maps.EnsureLoaded(each, kKeep);
    }
    switch (Random(16)) {
      case 0: Maps.SetEdited(entry, Random(2) == 0); break;
      case 1: Maps.Reload(entry, kKeep, true); break;
      case 2: Maps.ReadAfresh(entry, kKeep, true); break;
      case 3: Maps.SetHasMap(entry, false, 0); break;
      case 4:
        ++Files.Files[file].Frames.Own()[3].Frequency, ++Files.Stamps[file], Maps.Reload(entry, kKeep, true);
        break;
      case 5: Files.Next = MemoryFiles::Fault::Fails, Maps.Save(entry, false, error); break;
      case 6:
      case 7: Maps.Save(entry, false, error), Random(2) == 0 ? Maps.RenewSaved(entry) : void(); break;
      case 8: Maps.Mark(entry, Marking(5, 300.5), false), Maps.ApplyMarks(Gesture::Modify, entry, -1, true); break;
      case 9: Many(entry); break;
      case 10: Maps.Undo(), Maps.Undo(); break;
      case 11: Maps.Undo(); break;
      case 12: Maps.Redo(); break;
      case 13: Stroke(entry); break;
      default: Change(entry); break;
    }
  }

  void Change(int entry) {
    Maps.Change(Gesture::Double, entry, [this](FrqMap& map) {
      if (Random(4) == 0) map.Average += 1.0;
      return Setting(100.25 + Random(300), Random(map.FrameCount))(map);
    });
  }

  void Many(int entry) {
    const Document::Scope scope(Maps, Gesture::ReloadAll);
    for (int each = 0; each <= entry; ++each) Random(3) == 0 ? void(Maps.Reload(each, kKeep, true)) : Change(each);
  }

  // Some are left open. What the journal asks for each second is asked for here.
  void Stroke(int entry) {
    Maps.BeginStroke(Gesture::Stroke, entry);
    for (int row = 0; row < 3; ++row) {
      Maps.StrokeChange(entry, Setting(200.25 + Random(99), row));
      Maps.TellStroke();
    }
    if (Random(2) == 0) Maps.EndStroke();
  }

  int Random(int count) { return static_cast<int>(random_() % static_cast<unsigned>(std::max(count, 1))); }

  RoundingFiles Files;
  Document Maps{Files};
  std::unique_ptr<Journal> Writer;

 private:
  std::mt19937 random_{7};
};

// The next start, over the files as they are: the syllables stand in another order, one of them is new.
struct Restart {
  Restart(const Session& was, FaultDisk& disk, const std::wstring& journal) : Files(was.Files) {
    std::vector<FoundSyllable> found = {{L"new", true, 20}};
    for (int entry = kEntries - 1; entry >= 0; --entry) {
      const EntryFacts facts = was.Maps.Facts(entry);
      found.push_back({facts.Path, facts.HasMap, 20});
    }
    Files.Next = MemoryFiles::Fault::None;
    Maps.Open(found);
    Writer.Begin(kHead);
    if (auto content = ReadJournal(disk, journal)) Report = JournalReplay(Maps).Run(std::move(*content));
    EXPECT_TRUE(Writer.Flush());
  }
  static int IndexOf(int entry) { return entry < 0 ? entry : kEntries - entry; }

  RoundingFiles Files;
  FaultDisk Disk;
  Document Maps{Files};
  Journal Writer{Maps, (Disk.MakeFolder(L"C:\\Runs\\1"), Disk), kPath, std::chrono::hours(1)};
  RestoreReport Report;
};

Words PitchesOf(Document& document, int index) {
  document.EnsureLoaded(index, kKeep);
  FrqMap map;
  document.CopyMap(index, map);
  ClearMarks(map);
  return ContentOf(map);
}

void ExpectSame(Document& was, Document& is) {
  for (int entry = 0; entry < kEntries; ++entry) {
    ASSERT_EQ(PitchesOf(is, Restart::IndexOf(entry)), PitchesOf(was, entry)) << entry;
    ASSERT_EQ(is.Facts(Restart::IndexOf(entry)).Edited, was.Facts(entry).Edited) << entry;
  }
  ASSERT_EQ(is.State().Undo, was.State().Undo);
  ASSERT_EQ(is.State().Redo, was.State().Redo);
  ExpectCounts(is);
}

// All the way forth, back and forth again.
void ExpectSameWays(Document& was, Document& is) {
  for (const bool redo : {true, false, true}) {
    for (;;) {
      const StepResult before = redo ? was.Redo() : was.Undo();
      const StepResult now = redo ? is.Redo() : is.Undo();
      ASSERT_EQ(now.What, before.What);
      if (before.What == StepResult::Nothing) break;
      ASSERT_EQ(std::tuple(now.Of, now.Entry, now.Frames),
                std::tuple(before.Of, Restart::IndexOf(before.Entry), before.Frames));
      ASSERT_NO_FATAL_FAILURE(ExpectSame(was, is));
    }
  }
}

struct JournalTest : testing::Test {
  JournalTest() { disk_.MakeFolder(L"C:\\Runs\\1"); }

  Bytes File() { return disk_.ContentOf(kPath).value_or(Bytes()); }

  // Whether the start behind this journal, and the one behind that, find what the session holds.
  void ExpectRestored(Session& was, const Bytes& journal) {
    disk_.Put(L"C:\\Runs\\0", journal);
    Restart once(was, disk_, L"C:\\Runs\\0");
    was.Maps.EndStroke();
    ASSERT_NO_FATAL_FAILURE(ExpectSame(was.Maps, once.Maps));
    EXPECT_EQ(once.Report.Recovered, was.Maps.State().Edited);
    EXPECT_EQ(once.Report.Others.size(), 0u);
    Restart twice(was, once.Disk, kPath);
    ASSERT_NO_FATAL_FAILURE(ExpectSame(was.Maps, twice.Maps));
    ASSERT_NO_FATAL_FAILURE(ExpectSameWays(was.Maps, twice.Maps));
  }

  FaultDisk disk_;
};

TEST_F(JournalTest, AKillAtAnyMomentBringsBackWhatWasThere) {
  std::vector<Bytes> journals;
  for (Session session(&disk_); journals.size() <= kCalls; session.Call()) {
    ASSERT_TRUE(session.Writer->Flush());
    journals.push_back(File());
  }
  EXPECT_TRUE(journals.front().empty()) << "nothing is edited yet";
  std::mt19937 random(3);
  for (std::size_t call = 0; call < kCalls; ++call) {
    // Whole; with a bit wrong in the frame behind; with some of that frame.
    std::vector<Bytes> cuts = {journals[call]};
    if (const std::size_t size = journals[call].size(); journals[call + 1].size() > size) {
      Bytes longer = journals[call + 1];
      ByteReader head(ByteSpan(longer).subspan(size + 4));
      const std::size_t frame = kFrameHead + head.Read<std::uint32_t>();
      cuts.emplace_back(longer.begin(), longer.begin() + static_cast<std::ptrdiff_t>(size + random() % frame));
      longer[size + random() % frame] ^= 1 << random() % 8;
      cuts.push_back(std::move(longer));
    }
    for (const Bytes& cut : cuts) {
      SCOPED_TRACE(testing::Message() << "call " << call << ", " << cut.size() << " bytes");
      Session was;
      for (std::size_t i = 0; i < call; ++i) was.Call();
      ASSERT_NO_FATAL_FAILURE(ExpectRestored(was, cut));
    }
  }
}

TEST_F(JournalTest, WhatSomebodyElseHasWrittenIsLeftAlone) {
  Session was(&disk_);
  std::uint32_t error = 0;
  for (int entry = 0; entry < kEntries; ++entry) was.Set(entry, 300.0);
  ASSERT_TRUE(was.Writer->Flush());
  const Bytes unsaved = File();
  for (int entry = 0; entry < kEntries; ++entry) was.Maps.Save(entry, false, error), was.Set(entry, 400.0);
  ASSERT_TRUE(was.Writer->Flush());
  const Bytes saved = File();

  Session old;
  ++old.Files.Files[L"1"].Frames.Own()[7].Frequency;  // another program has been there
  ++old.Files.Stamps[L"1"];
  ++old.Files.Stamps[L"2"];  // a save that was taken back
  old.Maps.SetHasMap(3, false, 0);
  disk_.Put(kPath, unsaved);
  Restart start(old, disk_, kPath);
  EXPECT_EQ(start.Report.Recovered, 2);
  ASSERT_EQ(start.Report.Others.size(), 2u);
  EXPECT_EQ(std::pair(start.Report.Others[0].Path, start.Report.Others[0].Why), std::pair(L"1"s, Reason::Changed));
  EXPECT_EQ(std::pair(start.Report.Others[1].Path, start.Report.Others[1].Why), std::pair(L"3"s, Reason::Gone));
  const int changed = Restart::IndexOf(1);
  EXPECT_EQ(PitchesOf(start.Maps, changed), ContentOf(old.Files.Files[L"1"]));
  EXPECT_FALSE(start.Maps.Facts(changed).Edited);
  EXPECT_EQ(start.Maps.Undo().Entry, Restart::IndexOf(2)) << "the steps of the others have gone";
  EXPECT_EQ(start.Maps.Undo().Entry, Restart::IndexOf(0));
  EXPECT_EQ(start.Maps.State().Edited, 0);

  // A kill between a save and the record of it: the files hold what the journal ends with.
  was.Maps.Save(0, false, error);
  ++was.Files.Files[L"1"].Frames.Own()[7].Frequency, ++was.Files.Stamps[L"1"];
  ++was.Files.Stamps[L"2"];  // written again as it was saved
  disk_.Put(kPath, saved);
  Restart behind(was, disk_, kPath);
  EXPECT_EQ(behind.Report.Recovered, kEntries - 2);
  EXPECT_FALSE(behind.Maps.Facts(Restart::IndexOf(0)).Edited);
  behind.Maps.Change(Gesture::SetFrequency, changed, Setting(500.0));
  behind.Maps.Undo();
  EXPECT_FALSE(behind.Maps.Facts(changed).Edited) << "it is what is in the file";
  behind.Files.Next = MemoryFiles::Fault::Throws;
  disk_.Put(kPath, saved);
  EXPECT_EQ(JournalReplay(behind.Maps).Run(*ReadJournal(disk_, kPath)).Others[0].Why, Reason::Unreadable);
  int steps = 0;
  while (behind.Maps.Undo().What != StepResult::Nothing) ++steps;
  EXPECT_EQ(steps, 4) << "of two syllables, and none from before";
}

TEST_F(JournalTest, ADiskThatFailsAtAnyCallCostsNoEditAndEndsWithTheNextFolder) {
  const auto work = [](Session& session) {
    for (int entry = 0; entry < kEntries; ++entry) session.Set(entry, 300.0);
    return session.Writer->Flush();
  };
  for (const Fault fault : {Fault::Fails, Fault::Full, Fault::FailsOn}) {
    bool isThrough = false;
    for (int call = 1; !isThrough; ++call) {
      Session session(&disk_);
      ASSERT_TRUE(session.Writer->Flush());
      disk_.Plan(call, fault, 30);
      const bool isWritten = work(session);
      isThrough = disk_.Calls() < call;
      EXPECT_EQ(isWritten, isThrough);
      EXPECT_EQ(session.Maps.State().Edited, kEntries);
      disk_.Plan();
      session.Maps.Open({{L"0", true, 20}, {L"1", true, 20}});
      session.Writer->Begin(kHead);
      for (const int entry : {0, 1}) session.Maps.EnsureLoaded(entry, kKeep);
      session.Set(0, 400.0);
      EXPECT_TRUE(session.Writer->Flush());
      const auto content = ReadJournal(disk_, kPath);
      ASSERT_TRUE(content);
      EXPECT_EQ(content->Edited, std::vector{L"0"s}) << "of the new folder alone, and not what was only read";
    }
  }
}

TEST_F(JournalTest, AMapThatWasOnlyWrittenAgainIsUnchanged) {
  JournalContent content;
  for (const int entry : {0, 1, 2}) {
    const std::wstring wave = std::to_wstring(entry);
    content.Records.push_back({.What = JournalRecord::Read, .Entry = entry, .Path = wave, .Stamp = 5, .Image = 7});
    if (entry < 2) content.Records.push_back({.What = JournalRecord::Edited, .Entry = entry});
  }
  const auto unchanged = [&](std::uint64_t stamp, std::uint64_t image) {
    return JournalReplay::UnchangedOf(
        content, [=](const std::wstring& wave) { return wave == L"0" ? stamp : 5; },
        [=](const std::wstring&) { return image; });
  };
  EXPECT_EQ(unchanged(5, 0), (std::vector{L"0"s, L"1"s}));
  EXPECT_EQ(unchanged(6, 7), (std::vector{L"0"s, L"1"s}));
  EXPECT_EQ(unchanged(6, 8), std::vector{L"1"s});
}

TEST_F(JournalTest, AnOpenStrokeIsWrittenInTimeAndAnOrderlyEndLeavesNothing) {
  MemoryFiles files;
  Document maps(files);
  Journal journal(maps, disk_, kPath, std::chrono::milliseconds(1));
  OpenMaps(maps, files, {PlainMap(20), PlainMap(20)});
  journal.Begin(kHead);
  maps.BeginStroke(Gesture::Erase, 1);
  maps.StrokeChange(1, Setting(300.0));
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  std::optional<JournalContent> content;
  while (!content || content->Records.back().What != JournalRecord::Stroke) {
    ASSERT_LT(std::chrono::steady_clock::now(), deadline);
    content = ReadJournal(disk_, kPath);
  }
  EXPECT_EQ(content->Edited, std::vector{L"1"s});
  EXPECT_EQ(std::tuple(content->Head.Kind, content->Head.Folder, content->Head.Resampler, content->Head.Time),
            std::tuple(kHead.Kind, kHead.Folder, kHead.Resampler, kHead.Time));
  EXPECT_GT(content->Time, 1'500'000'000);
  journal.Close(true);
  EXPECT_EQ(disk_.FactsOf(kPath), std::nullopt);
  maps.EndStroke();
  EXPECT_EQ(maps.Undo().Of, Gesture::Erase) << "the document goes on without it";
}

}  // namespace
