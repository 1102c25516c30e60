// One map saved into the desc.mrq of a large voicebank, against one pass over the same file and a write.
#include <windows.h>

#include <cstring>

#include "base/files.h"
#include "base/handle.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqwriting.h"
#include "frqmap/mrqstore.h"
#include "measuring.h"
#include "rows.h"
#include "scratchfolder.h"

namespace {

constexpr std::int32_t kEntries = 5000;
constexpr SampleCount kFrames = 350;  // two seconds of voice
constexpr DWORD kPassBytes = 65536;   // read at a time

// The entries are named 1000.wav and on. They are copies of one: to save 5,000 would be to search 5,000 times.
Bytes LargeMrqFile() {
  MrqImage image(EmptyMrqFile());
  MrqEntry entry;
  entry.Hop = 256;
  entry.Frequencies.assign(kFrames, 110.0);
  WriteMrqEntry(image, u"0000.wav", entry, 0);
  const Bytes first(image.Content.begin() + static_cast<std::ptrdiff_t>(EmptyMrqFile().size()), image.Content.end());

  Bytes file = EmptyMrqFile();
  for (std::int32_t i = 0; i < kEntries; ++i) {
    const std::wstring digits = std::to_wstring(1000 + i);
    const std::size_t start = file.size();
    file.insert(file.end(), first.begin(), first.end());
    std::memcpy(file.data() + start + 4, digits.data(), digits.size() * sizeof(wchar_t));
  }
  std::memcpy(file.data() + 8, &kEntries, sizeof(kEntries));
  return file;
}

class SaveIntoMrq : public Work {
 public:
  SaveIntoMrq() {
    Require(WriteWholeFile(path_, file_), "a desc.mrq cannot be written");
    store_.LoadFolder(folder_.PathOf(L"."));
    map_.Create(kFrames, FrqTypeMrq);
  }

  // The last entry is saved: the way to it is the longest.
  double Measured() override {
    return MillisecondsOf([&] {
      Require(SaveMap(map_, folder_.PathOf(L"5999.wav"), FrqTypeMrq, &store_) == 0, "a map cannot be saved");
    });
  }

  double Yardstick() override {
    return MillisecondsOf([&] {
      const FileHandle file(CreateFileW(path_.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
      DWORD read = 0;
      std::size_t sum = 0;
      while (ReadFile(file.get(), block_.data(), kPassBytes, &read, nullptr) && read > 0) sum += read;
      Require(sum == file_.size(), "a desc.mrq cannot be read");
      SetFilePointer(file.get(), -kBodyBytes, nullptr, FILE_END);
      WriteFile(file.get(), block_.data(), kBodyBytes, &read, nullptr);
      Require(read == kBodyBytes, "a desc.mrq cannot be written");
    });
  }

 private:
  static constexpr LONG kBodyBytes = 20 + 4 * kFrames;

  ScratchFolder folder_;
  std::wstring path_ = folder_.PathOf(L"desc.mrq");
  Bytes file_ = LargeMrqFile();
  Bytes block_ = Bytes(kPassBytes);
  MrqStore store_;
  FrqMap map_;
};

}  // namespace

std::vector<Row> MrqRows() {
  return {RowOf<SaveIntoMrq>("save_mrq", "ms", 2.5)};
}
