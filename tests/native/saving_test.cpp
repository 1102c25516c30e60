// Saves of every kind over files whose n-th call fails, writes short, fills the disk or is the last one of the process:
// what a user finds then is the map of before or the new one, and nobody else's map has suffered.
#include <gtest/gtest.h>

#include "base/inplace.h"
#include "frqmap/mrqstore.h"
#include "native/family.h"
#include "native/faultdisk.h"

namespace {

// Does what the program does at its next start, and remembers what it was given.
struct Recovery : FileGuard {
  explicit Recovery(FaultDisk& disk) : Files(disk) { SetPresentGuard(this); }
  ~Recovery() override { SetPresentGuard(nullptr); }
  void Begin(const FileChange& change) override { Open = change; }
  void End() override {
    if (!Files.HasDied()) Open.reset();
  }
  void Mend(const std::wstring& path) override {
    if (Open && Open->Path == path) Recover(false);
  }
  bool Wants(const std::wstring& path) override { return !Kept.contains(path); }
  bool Keep(const std::wstring& path, ByteSpan bytes) override {
    if (HasRoom) Kept[path] = Bytes(bytes.begin(), bytes.end());
    return HasRoom;
  }

  void Recover(bool completes) {
    const auto file = Files.Open(Open->Path, FileMode::Patch);
    EXPECT_TRUE(completes || TakeBack(*file, *Open));
    for (const auto& piece : Open->Pieces) EXPECT_TRUE(!completes || file->WriteAt(piece.At, piece.After));
    EXPECT_TRUE(!completes || file->Truncate(Open->SizeAfter));
    Open.reset();
  }

  FaultDisk& Files;
  std::optional<FileChange> Open;
  std::map<std::wstring, Bytes> Kept;
  bool HasRoom = true;
};

struct Case {
  std::wstring Path;
  std::optional<Bytes> Before;
  std::function<bool(FaultDisk&)> Save;
};

// Saves once for each call, fault and way to recover. `judge` is told whether it must find the new state.
void ForEachFault(const Case& test, const std::function<void(FaultDisk&, Recovery&, bool)>& judge) {
  for (const Fault fault : {Fault::Fails, Fault::FailsOn, Fault::Full, Fault::Dies}) {
    for (const unsigned variant : {0u, 1u, 2u, 3u, 4u, 5u}) {
      // The last time no call is left to meet the fault.
      bool isMet = true;
      for (int call = 1; isMet; ++call) {
        FaultDisk disk;
        disk.MakeFolder(L"C:\\v");
        if (test.Before) disk.Put(test.Path, *test.Before);
        Recovery recovery(disk);
        disk.Plan(call, fault, variant / 2 * 35);
        const bool isSaved = test.Save(disk);
        isMet = disk.Calls() >= call;
        SCOPED_TRACE("fault " + std::to_string(static_cast<int>(fault)) + " at call " + std::to_string(call) +
                     ", variant " + std::to_string(variant));
        EXPECT_TRUE(isSaved || (isMet && disk.LastError() != 0));
        disk.Revive();
        EXPECT_TRUE(!recovery.Open || fault == Fault::FailsOn || fault == Fault::Dies)
            << "the old bytes can be put back";
        // A file that is not there has not been begun, and an empty one has nothing to be put back.
        const bool isOpen = recovery.Open && disk.ContentOf(test.Path);
        const bool completes = variant % 2 || (isOpen && recovery.Open->SizeBefore == 0);
        if (isOpen) recovery.Recover(completes);
        judge(disk, recovery, isSaved || (isOpen && completes));
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

TEST(Saving, AMapInAFileIsTheOldOneOrTheNewOne) {
  const auto encoded = [](int frames) {
    FrqMap map = MapOf(testdata::Json(std::vector<double>(static_cast<std::size_t>(frames), 220.0 + frames)));
    return std::array<std::optional<Bytes>, 4>{EncodeFreq0003(map, FrqTypeFrq), EncodeFreq0003(map, FrqTypeFrc),
                                               EncodePmk(map), EncodeDio(map, 4410)};
  };
  const auto before = encoded(20);
  for (const int frames : {4, 20, 50}) {
    const auto after = encoded(frames);
    for (std::size_t kind = 0; kind < after.size() * 2; ++kind) {
      const Bytes& map = after[kind / 2].value();
      Case test = {L"C:\\v\\a", before[kind / 2],
                   [&](FaultDisk& disk) { return WriteInPlace(disk, L"C:\\v\\a", map); }};
      if (kind % 2) test.Before.reset();
      ForEachFault(test, [&](FaultDisk& disk, Recovery& recovery, bool isNew) {
        const std::optional<Bytes> found = disk.ContentOf(test.Path);
        EXPECT_TRUE(found == (isNew ? std::optional(map) : test.Before)) << frames;
        const auto kept = recovery.Kept.find(test.Path);
        const bool isKept = kept != recovery.Kept.end();
        EXPECT_TRUE(isKept ? kept->second == test.Before : !isNew || !test.Before || map == test.Before);
      });
    }
  }
}

constexpr auto Noon = [] { return std::int32_t{12 * 60 * 60}; };

using Maps = std::map<std::wstring, std::vector<double>>;
const std::wstring kMrq = L"C:\\v\\desc.mrq";

Maps MapsOf(FaultDisk& disk) {
  Maps maps;
  if (const auto file = OpenMrqFile(disk, kMrq)) {
    ReadAllMrqEntries(*file, [&](const std::u16string& name, MrqEntry&& entry) {
      maps[L"C:\\v\\" + std::wstring(name.begin(), name.end() - 4)] = entry.Frequencies;
    });
  }
  return maps;
}

MrqEntry EntryOf(std::size_t frames) {
  return {256, 44100, std::vector<double>(frames, 99.0), 0, 0};
}

TEST(Saving, AMapAmongOthersIsTheOldOneOrTheNewOneAndTheOthersAreWhole) {
  Bytes stray = testdata::FileBytes("mrq/02-in-place/desc.mrq");
  stray.insert(stray.end(), {6, 0, 0, 0, 'x', 0});
  for (const Bytes& before : {testdata::FileBytes("mrq/02-in-place/desc.mrq"), stray, Bytes()}) {
    for (const std::wstring key : {L"C:\\v\\new", L"C:\\v\\na", L"C:\\v\\i へ"}) {
      for (const std::size_t frames : {0u, 5u, 50u}) {  // none to remove it
        bool inMemory = false;
        FaultDisk untouched;
        untouched.Put(kMrq, before);
        Maps old = MapsOf(untouched), now = old;
        const Case test = {kMrq, before, [&](FaultDisk& disk) {
                             MrqStore store(Noon, disk);
                             for (const auto& [name, map] : old) store.SetEntry(name, {256, 44100, map, 0, 0});
                             const bool isDone =
                                 frames ? store.SaveEntry(key, EntryOf(frames)) == 0 : store.Remove(key);
                             inMemory = store.Find(key).has_value();
                             return isDone;
                           }};
        if (frames) now[key] = EntryOf(frames).Frequencies;
        if (!frames) now.erase(key);
        ForEachFault(test, [&](FaultDisk& disk, Recovery& recovery, bool isNew) {
          const Maps found = MapsOf(disk);
          EXPECT_EQ(found, isNew ? now : old);
          EXPECT_TRUE(isNew || disk.ContentOf(kMrq) == before);
          EXPECT_TRUE(frames || inMemory || !old.contains(key) || !found.contains(key));
          if (!isNew || !old.contains(key)) return;
          const auto kept = DecodeMrqEntry(recovery.Kept[key + L".mrq"]);
          EXPECT_TRUE(kept && kept->Frequencies == old[key]) << "the map that has gone";
        });
        if (HasFailure()) FAIL() << testing::PrintToString(key) << " " << frames << " " << before.size();
      }
    }
  }
}

TEST(Saving, ACompactionLeavesAllMapsOrTheWholeFile) {
  const Bytes before = testdata::FileBytes("mrq/06-dead-entries/desc.mrq");
  Maps maps;
  const Case test = {kMrq, before, [&](FaultDisk& disk) {
                       MrqStore store(Noon, disk);
                       store.LoadFolder(L"C:\\v");
                       return store.CompactFiles();
                     }};
  FaultDisk untouched;
  untouched.Put(kMrq, before);
  maps = MapsOf(untouched);
  ForEachFault(test, [&](FaultDisk& disk, Recovery&, bool isNew) {
    EXPECT_EQ(MapsOf(disk), maps);
    EXPECT_EQ(disk.ContentOf(kMrq) == before, !isNew);
  });
}

// Nobody knows what a resampler makes of it.
TEST(Saving, AnEntryIsKeptAheadOfAResampler) {
  FaultDisk disk;
  disk.Put(kMrq, testdata::FileBytes("mrq/02-in-place/desc.mrq"));
  Recovery recovery(disk);
  const MrqStore store(Noon, disk);
  recovery.HasRoom = false;
  EXPECT_FALSE(store.KeepEntry(L"C:\\v\\na"));
  recovery.HasRoom = true;
  EXPECT_TRUE(store.KeepEntry(L"C:\\v\\na"));
  EXPECT_TRUE(store.KeepEntry(L"C:\\v\\none"));
  ASSERT_EQ(recovery.Kept.size(), 1U);
  const auto kept = DecodeMrqEntry(recovery.Kept[L"C:\\v\\na.mrq"]);
  EXPECT_TRUE(kept && kept->Frequencies == MapsOf(disk)[L"C:\\v\\na"]);
}

TEST(Saving, TwoProgramsAtOneFileLoseNothing) {
  for (int call = 1;; ++call) {
    FaultDisk disk;
    disk.Put(kMrq, testdata::FileBytes("mrq/02-in-place/desc.mrq"));
    Maps expected = MapsOf(disk);
    MrqStore one(Noon, disk), two(Noon, disk);
    int result = 1;
    disk.Plan();
    disk.Meanwhile(call, [&] {
      result = two.SaveEntry(L"C:\\v\\two", EntryOf(30));
      EXPECT_TRUE(result == 0 || disk.LastError() == FaultDisk::Locked);
    });
    EXPECT_EQ(one.SaveEntry(L"C:\\v\\na", EntryOf(40)), 0);
    if (result == 1) break;
    EXPECT_EQ(result, call == 1 ? 0 : -1) << call;
    expected[L"C:\\v\\na"] = EntryOf(40).Frequencies;
    if (result == 0) expected[L"C:\\v\\two"] = EntryOf(30).Frequencies;
    EXPECT_EQ(MapsOf(disk), expected) << call;
    EXPECT_EQ(two.SaveEntry(L"C:\\v\\three", EntryOf(3)), 0) << "the lock has gone";
  }
}

// Half a compaction cannot be put back on a drive that has gone; when it is there again, the next save mends the file
// first.
TEST(Saving, AChangeLeftUnfinishedIsMendedAheadOfTheNext) {
  bool isMet = true;
  for (int call = 1; isMet; ++call) {
    FaultDisk disk;
    disk.Put(kMrq, testdata::FileBytes("mrq/06-dead-entries/desc.mrq"));
    Maps expected = MapsOf(disk);
    Recovery recovery(disk);
    disk.Plan(call, Fault::FailsOn, 150);
    CompactMrqFile(kMrq, Noon(), disk);
    isMet = disk.Calls() >= call;
    disk.Plan();
    MrqStore store(Noon, disk);
    EXPECT_EQ(store.SaveEntry(L"C:\\v\\new", EntryOf(7)), 0);
    expected[L"C:\\v\\new"] = EntryOf(7).Frequencies;
    EXPECT_EQ(MapsOf(disk), expected) << call;
    EXPECT_FALSE(recovery.Open);
  }
}

}  // namespace
