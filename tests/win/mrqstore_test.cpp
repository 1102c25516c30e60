// The store of desc.mrq entries over real files: several threads and several stores at one file, and files that cannot
// be written.
#include "frqmap/mrqstore.h"

#include <gtest/gtest.h>

#include <thread>

#include "native/testdata.h"
#include "win/scratch.h"

namespace {

TEST(MrqStore, SavesOfManyThreadsReachTheFileAndASecondStore) {
  const ScratchFolder folder;
  folder.Write(L"other file");
  MrqStore store;
  store.LoadFolder(folder.Path());
  const auto key = [&](int thread, int save) { return folder.Path(std::to_wstring(thread * 10 + save % 10)); };
  MrqEntry entries[30];
  for (std::size_t save = 0; save < 30; ++save) entries[save].Frequencies.assign(save * 900 + 1, 99.0);
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 6; ++thread) {
    threads.emplace_back([&, thread] {
      for (int save = 0; save < 30; ++save) {
        EXPECT_EQ(store.SaveEntry(key(thread, save), entries[save]), 0);
        if (save % 10 == 5) store.CompactFiles();
        if (save % 10 == 7) store.LoadFolder(folder.Path());
      }
    });
  }
  threads.clear();
  MrqStore second;
  second.LoadFolder(folder.Path());
  for (int last = 0; last < 60; ++last) {
    const std::optional<MrqEntry> found = second.Find(key(last / 10, last));
    EXPECT_TRUE(found && found->Frequencies == entries[20 + last % 10].Frequencies) << last;
  }
  second.RemoveEntry(key(0, 0));
  store.Reload();
  EXPECT_TRUE(!store.Find(key(0, 0)) && store.Find(key(0, 1)));
}

TEST(MrqStore, ASaveThatFailsTellsWhyAndLeavesTheFileAsItWas) {
  const std::tuple<const char*, DWORD, DWORD> tests[] = {
      {"mrq/02-in-place/desc.mrq", FILE_ATTRIBUTE_READONLY, ERROR_ACCESS_DENIED},
      {"mrq/22-five-bytes/desc.mrq", FILE_ATTRIBUTE_NORMAL, ERROR_HANDLE_EOF}};
  for (const auto& [start, attributes, error] : tests) {
    const ScratchFolder folder;
    folder.Write(L"desc.mrq", testdata::FileBytes(start));
    SetFileAttributesW(folder.Path(L"desc.mrq").c_str(), attributes);
    MrqStore store;
    store.SetEntry(folder.Path(L"na"), {256, 44100, {110.0}, 0, 0});
    EXPECT_EQ(store.WriteEntry(folder.Path(L"na")), -1);
    EXPECT_EQ(GetLastError(), error);
    EXPECT_EQ(ReadWholeFile(folder.Path(L"desc.mrq")), testdata::FileBytes(start));
    SetFileAttributesW(folder.Path(L"desc.mrq").c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

}  // namespace
