// The store of desc.mrq entries over files in memory: the names that its keys get there, and several threads and stores
// at one file.
#include "frqmap/mrqstore.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace {

// Lets several streams into a file, as a disk does.
struct MemoryDisk : MrqAccess {
  std::unique_ptr<MrqStream> Open(const std::wstring& path, MrqMode mode) override {
    const std::lock_guard lock(lock_);
    if (path.empty() || (mode == MrqMode::Read && !files_.contains(path))) return nullptr;
    MrqImage& image = files_.try_emplace(path, Bytes()).first->second;
    if (mode == MrqMode::Patch && image.Content.empty()) image.Content = EmptyMrqFile();
    return std::make_unique<Stream>(image, lock_);
  }
  void Delete(const std::wstring& path) override { Deleted.insert(path); }

  std::set<std::wstring> Deleted;

 private:
  struct Stream : MrqStream {
    Stream(MrqImage& image, std::mutex& lock) : image_(image), lock_(lock) {}
    std::int64_t Size() const override { return std::lock_guard(lock_), image_.Size(); }
    bool ReadAt(std::int64_t position, std::span<std::uint8_t> into) override {
      return std::lock_guard(lock_), image_.ReadAt(position, into);
    }
    bool WriteAt(std::int64_t position, ByteSpan bytes) override {
      return std::lock_guard(lock_), image_.WriteAt(position, bytes);
    }
    bool Truncate(std::int64_t size) override { return std::lock_guard(lock_), image_.Truncate(size); }
    MrqImage& image_;
    std::mutex& lock_;
  };

  std::mutex lock_;
  std::map<std::wstring, MrqImage> files_;
};

std::int32_t Noon() {
  return 12 * 60 * 60;
}

TEST(MrqStore, SavesOfManyThreadsReachTheFileAndASecondStore) {
  MemoryDisk disk;
  const std::wstring folder = L"C:\\voices\\bank";
  MrqStore store(&Noon, disk);
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
  MrqStore second(&Noon, disk);
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
  // The folder, a key of an entry, as it comes back, and the analysis that goes with the entry.
  const std::array<std::wstring, 4> tests[] = {
      {L"C:\\v", L"C:\\v\\_か.か", L"C:\\v\\_か", L"C:\\v\\_か.か"},  // the second dot
      {L"C:\\v", L"C:\\v\\a. b", L"C:\\v\\a. b", L"C:\\v\\a. b.wav.llsm"},
      {L"C:\\", L"C:\\ka", L"C:\\ka", L"C:\\ka.wav.llsm"},
      {L"\\\\server\\share", L"\\\\server\\share\\ka", L"\\\\server\\share\\ka", L"\\\\server\\share\\ka.wav.llsm"},
      {L"\\\\server\\share\\x\\..\\", L"\\\\server\\share\\ka", L"\\\\server\\share\\ka",
       L"\\\\server\\share\\ka.wav.llsm"},
      {L"C:\\v\\x\\..\\.\\w.d", L"C:\\v\\w.d\\ka", L"C:\\v\\w.d\\ka", L"C:\\v\\w.d\\ka.wav.llsm"},
      {deep, deep + L"\\" + std::wstring(15, L'k'), L"", deep + L"\\" + std::wstring(15, L'k')},  // fit as a key alone
  };
  for (const auto& [opened, key, back, analysis] : tests) {
    SCOPED_TRACE(testing::PrintToString(key));
    MemoryDisk disk;
    MrqStore store(&Noon, disk), second(&Noon, disk);
    EXPECT_EQ(store.SaveEntry(key, {256, 44100, {110.0}, 0, 0}), 0);
    second.LoadFolder(opened);
    EXPECT_EQ(second.Find(back).has_value(), !back.empty());
    EXPECT_EQ(second.Find(key).has_value(), key == back);
    second.RemoveEntry(key);
    EXPECT_EQ(disk.Deleted, std::set{analysis});
  }
  MemoryDisk disk;
  MrqStore store(&Noon, disk);
  EXPECT_EQ(store.AddFolder(deep + std::wstring(16, L'd')), -1) << "no file can have that path";
}

}  // namespace
