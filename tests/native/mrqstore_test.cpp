// The store of desc.mrq entries over files in memory: the names that its keys get there, and several threads and stores
// at one file.
#include "frqmap/mrqstore.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "base/path.h"
#include "frqmap/mrqwriting.h"
#include "native/faultdisk.h"

namespace {

constexpr auto Noon = [] { return std::int32_t{12 * 60 * 60}; };

TEST(MrqStore, SavesOfManyThreadsReachTheFileAndASecondStore) {
  FaultDisk disk;
  const std::wstring folder = L"C:\\voices\\bank";
  disk.MakeFolder(folder);
  MrqStore store(Noon, disk);
  store.LoadFolder(folder);
  const auto key = [&](int thread, int save) { return folder + L"\\" + std::to_wstring(thread * 10 + save % 10); };
  MrqEntry entries[30];
  for (std::size_t save = 0; save < 30; ++save) entries[save].Frequencies.assign(save * 20 + 1, 99.0);
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 6; ++thread) {
    threads.emplace_back([&, thread] {
      for (int save = 0; save < 30; ++save) {
        EXPECT_EQ(store.SaveEntry(key(thread, save), entries[save]), 0);
        if (save % 10 == 5) store.CompactFiles();
        if (save % 10 == 7) store.LoadFolder(folder);
      }
    });
  }
  threads.clear();
  MrqStore second(Noon, disk);
  second.LoadFolder(folder);
  for (int last = 0; last < 60; ++last) {
    const std::optional<MrqEntry> found = second.Find(key(last / 10, last));
    EXPECT_TRUE(found && found->Frequencies == entries[20 + last % 10].Frequencies) << last;
  }
  second.RemoveEntry(key(0, 0));
  store.Reload();
  EXPECT_TRUE(!store.Find(key(0, 0)) && store.Find(key(0, 1)));
}

TEST(MrqStore, KeysComeBackFromTheFileAsUsersFilesHaveThem) {
  const std::wstring deep = L"C:\\" + std::wstring(240, L'd');
  // The folder, a key of an entry, and as it comes back.
  const std::array<std::wstring, 3> tests[] = {
      {L"C:\\v", L"C:\\v\\_か.か", L"C:\\v\\_か"},  // the second dot
      {L"C:\\v", L"C:\\v\\a. b", L"C:\\v\\a. b"},
      {L"C:\\", L"C:\\ka", L"C:\\ka"},
      {L"\\\\server\\share", L"\\\\server\\share\\ka", L"\\\\server\\share\\ka"},
      {L"\\\\server\\share\\x\\..\\", L"\\\\server\\share\\ka", L"\\\\server\\share\\ka"},
      {L"C:\\v\\x\\..\\.\\w.d", L"C:\\v\\w.d\\ka", L"C:\\v\\w.d\\ka"},
      {deep, deep + L"\\" + std::wstring(300, L'k'), deep + L"\\" + std::wstring(300, L'k')},
      {L"C:\\v", L"C:\\v\\\xD83C", L"C:\\v\\\xD83C"},  // half a character
  };
  for (const auto& [opened, key, back] : tests) {
    SCOPED_TRACE(testing::PrintToString(key));
    FaultDisk disk;
    disk.MakeFolder(FolderOf(key));
    MrqStore store(Noon, disk), second(Noon, disk);
    // Its analysis, and what has the names that a key leads to when it is cut or its extension taken for one of a file.
    const std::wstring analysis = key + L".wav.llsm";
    for (const std::wstring& file : {analysis, key, PathWithoutExtension(key) + L".wav.llsm"}) disk.Put(file, {});
    EXPECT_EQ(store.SaveEntry(key, {256, 44100, {110.0}, 0, 0}), 0);
    second.LoadFolder(opened);
    EXPECT_EQ(second.Find(back).has_value(), !back.empty());
    EXPECT_EQ(second.Find(key).has_value(), key == back);
    second.RemoveEntry(key);
    EXPECT_FALSE(disk.FactsOf(analysis));
    EXPECT_TRUE(disk.FactsOf(key));
    EXPECT_NE(disk.FactsOf(PathWithoutExtension(key) + L".wav.llsm").has_value(), PathWithoutExtension(key) == key);
  }
}

// A file that names waves of other folders must not have them changed.
TEST(MrqStore, NamesThatLeadOutOfTheFolderAreNobodys) {
  FaultDisk disk;
  disk.MakeFolder(L"C:\\v\\w");
  MrqImage image(EmptyMrqFile());
  const MrqEntry entry = {256, 44100, {110.0}, 0, 0};
  for (const std::u16string name : {u"..\\a.wav", u"/b.wav", u"C:\\v\\c.wav", u"C:d.wav", u"..", u"e..wav"}) {
    WriteMrqEntry(image, name, entry, 1);
  }
  disk.Put(L"C:\\v\\w\\desc.mrq", image.Content);
  MrqStore store(Noon, disk);
  store.LoadFolder(L"C:\\v\\w");
  for (const std::wstring key : {L"C:\\v\\a", L"C:\\b", L"C:\\v\\w\\/b", L"C:\\v\\c", L"C:d", L"C:\\v", L"C:\\v\\w"}) {
    EXPECT_FALSE(store.Find(key)) << testing::PrintToString(key);
  }
  EXPECT_TRUE(store.Find(L"C:\\v\\w\\e."));
  EXPECT_EQ(store.SaveEntry(L"C:\\v\\w\\f", entry), 0);
  EXPECT_TRUE(store.CompactFiles());
  MrqImage after(*disk.ContentOf(L"C:\\v\\w\\desc.mrq"));
  int found = 0;
  ReadAllMrqEntries(after, [&](const std::u16string&, MrqEntry&&) { ++found; });
  EXPECT_EQ(found, 7) << "they stay in the file";
}

}  // namespace
