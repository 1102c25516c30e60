// Things kept for the next start: writes that broke off, maps that were overwritten, journals of runs that died.
#include "recovery/recovery.h"

#include <gtest/gtest.h>

#include "base/inplace.h"
#include "faultdisk.h"

namespace {

const std::wstring kRoot = L"C:\\user\\Recovery";
const std::wstring kMap = L"C:\\bank\\a_wav.frq";

std::int64_t now = 1'800'000'000;
constexpr auto Now = [] { return now; };

struct Program : Recovery {
  Program(FaultDisk& disk, std::uint32_t process) : Recovery(disk, kRoot, process, Now) { Start(); }
};

Bytes Filled(std::size_t size, int seed) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 7 + static_cast<std::size_t>(seed));
  return bytes;
}

// Each call of a save is the last one of its process, at every length of its write. Of a map that was not there nothing
// is left, or all of it: an empty file would look like one that is there.
TEST(Recovery, AWriteThatBrokeOffIsOldOrNewAfterTheNextStart) {
  for (const std::optional<Bytes>& old : {std::optional(Filled(40, 1)), std::optional<Bytes>()}) {
    for (const Bytes& coming : {Filled(40, 2), Filled(64, 3), Filled(9, 4)}) {
      bool isThrough = false, wasCompleted = false;
      for (int call = 1; !isThrough; ++call) {
        for (const std::size_t bytes : {0, 1, 8, 9, 25, 40, 63, 200}) {
          FaultDisk disk;
          disk.MakeFolder(L"C:\\bank");
          if (old) disk.Put(kMap, *old);
          auto run = std::make_unique<Program>(disk, 1);
          run->Begin({L"C:\\bank\\other", 0, 1, {{0, {}, {1}}}});  // makes the slot
          run->End();
          SetPresentGuard(run.get());
          disk.Plan(call, Fault::Dies, bytes);
          WriteInPlace(disk, kMap, coming);
          SetPresentGuard(nullptr);
          isThrough = !disk.HasDied();
          disk.Revive();
          const std::optional<Bytes> broken = disk.ContentOf(kMap);
          ++now;
          const Program next(disk, 2);
          const std::optional<Bytes> found = disk.ContentOf(kMap);
          EXPECT_TRUE(found == old || found == coming) << call << ' ' << bytes;
          wasCompleted = wasCompleted || (found == coming && broken != coming);
          EXPECT_TRUE(old || disk.List(kRoot).size() == 1U) << "the dead run has left nothing behind";
        }
      }
      EXPECT_TRUE(wasCompleted);
    }
  }
}

TEST(Recovery, LeavesAloneWhatSomebodyElseHasWrittenSince) {
  FaultDisk disk;
  const Bytes old = Filled(40, 1), coming = Filled(50, 2), foreign = Filled(50, 3);
  const auto broken = [&](const FileChange& change, const Bytes& present) {
    disk.Put(kMap, present);
    Program(disk, 1).Begin(change);
    disk.Revive();
    ++now;
    const Program next(disk, 2);
    return *disk.ContentOf(kMap);
  };
  EXPECT_EQ(broken({kMap, 40, 50, {{0, old, coming}}}, foreign), foreign);
  Bytes cut = coming;
  cut.resize(30);
  EXPECT_EQ(broken({kMap, 40, 50, {{0, old, coming}}}, cut), cut);  // shorter than either: not of this write
  // A file that was made for a write and got nothing of it is no map of anybody's.
  EXPECT_EQ(broken({kMap, 0, 50, {{0, {}, coming}}}, Bytes()), coming);
  // A file that a library writes is taken back, whatever it has come to.
  EXPECT_EQ(broken({kMap, 40, 40, {{0, old, {}}}, true}, foreign), old);
}

TEST(Recovery, KeepsAMapOnceARunAndForTheNextRuns) {
  FaultDisk disk;
  for (std::uint32_t process = 1; process <= 7; ++process) {
    now += 60;
    Program run(disk, process);
    EXPECT_TRUE(run.Wants(kMap));
    run.SetReason(KeptBecause::MadeAnew);
    run.Keep(kMap, Filled(30, static_cast<int>(process)));
    EXPECT_FALSE(run.Wants(kMap));
    run.Keep(kMap, Filled(30, 99));
    if (process == 7) {
      run.Kept().Forget(kMap);
      ++now;
      run.Keep(kMap, Filled(20, 8));
      run.SetReason(KeptBecause::Saved);
      EXPECT_FALSE(run.Wants(kMap));
      run.SetReason(KeptBecause::Removed);
      EXPECT_TRUE(run.Wants(kMap)) << "what was saved before it";
    }
    run.Close();
  }
  Program run(disk, 8);
  const std::vector<KeptMap> list = run.Kept().List();
  ASSERT_EQ(list.size(), 5U);  // four runs, and the last of them twice
  EXPECT_EQ(*run.Kept().Read(list[0]), Filled(20, 8));
  EXPECT_EQ(*run.Kept().Read(list[4]), Filled(30, 4));
  EXPECT_TRUE(list[4].MapPath == kMap && list[4].Because == KeptBecause::MadeAnew &&
              list[4].Time == list[0].Time - 181);

  // A damaged content is none; a torn record hides nothing that is before it.
  Bytes file = *disk.ContentOf(list[0].File);
  file[file.size() - 1] ^= 1;
  disk.Put(list[0].File, file);
  EXPECT_FALSE(run.Kept().Read(list[0]));
  file.pop_back();
  disk.Put(list[0].File, file);
  EXPECT_EQ(run.Kept().List().size(), 4U);

  now += 31 * 24 * 60 * 60;
  Program later(disk, 9);
  EXPECT_TRUE(later.Kept().List().empty());
}

TEST(Recovery, KeepsNoMoreThanItsLimitAndNothingOnAFullDisk) {
  FaultDisk disk;
  const std::wstring own = PathIn(kRoot, L"1-1");
  disk.MakeFolder(own);
  KeptFiles kept(disk, kRoot, own, {.MostBytes = 4000, .FileBytes = 1000});
  const auto path = [](int i) { return L"C:\\bank\\" + std::to_wstring(i); };
  for (int i = 0; i < 60; ++i) kept.Keep(path(i), KeptBecause::Removed, now + i, Filled(200, i));
  std::int64_t bytes = 0;
  for (const std::wstring& name : disk.List(own)) bytes += disk.FactsOf(PathIn(own, name))->Size;
  EXPECT_LE(bytes, 4000);
  const std::vector<KeptMap> list = kept.List();
  ASSERT_GT(list.size(), 8U);
  for (std::size_t i = 0; i < list.size(); ++i) EXPECT_EQ(list[i].MapPath, path(59 - static_cast<int>(i)));

  disk.Plan(1, Fault::Full, 50);
  kept.Keep(L"C:\\bank\\b", KeptBecause::Saved, now, Filled(200, 1));
  disk.Plan();
  EXPECT_TRUE(kept.Wants(L"C:\\bank\\b"));
  kept.Keep(L"C:\\bank\\c", KeptBecause::Saved, now + 99, Filled(10, 5));
  EXPECT_EQ(*kept.Read(kept.List().front()), Filled(10, 5));
}

TEST(Recovery, SaysOnceThatAMapHadNoRoom) {
  FaultDisk disk;
  Program run(disk, 1);
  EXPECT_TRUE(run.Keep(kMap, Filled(30, 1)) && !run.TakeKeepFailure());
  for (const bool isFirst : {true, false}) {
    disk.Plan(1, Fault::FailsOn);
    EXPECT_FALSE(run.Keep(L"C:\\bank\\b", Filled(30, 2)));
    EXPECT_EQ(run.TakeKeepFailure(), isFirst);
  }
}

TEST(Recovery, TheJournalOfARunThatDiedWaitsForTheNextAndThatOfALivingOneIsItsOwn) {
  FaultDisk disk;
  std::wstring journal;
  {
    Program died(disk, 1);
    journal = died.JournalPath();
    disk.Put(journal, Filled(10, 1));
  }
  now += 5;
  Program first(disk, 2);
  EXPECT_EQ(first.Journals(), std::vector{journal});
  disk.Put(first.JournalPath(), Filled(10, 2));
  now += 5;
  Program second(disk, 3);
  EXPECT_TRUE(second.Journals().empty());  // both are held
  first.Close();
  EXPECT_FALSE(disk.ContentOf(first.JournalPath()));
  now += 5;
  Program third(disk, 4);
  EXPECT_EQ(third.Journals(), std::vector{journal});  // not answered yet
  third.Drop(journal);
  EXPECT_TRUE(third.Journals().empty() && !disk.ContentOf(journal));
  second.Close();
  third.Close();
  EXPECT_TRUE(disk.List(kRoot).empty());
}

}  // namespace
