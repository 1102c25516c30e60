// The scan of a large voicebank, as the list fills itself, against a bare pass over the same folder.
#include <windows.h>
#include <shlwapi.h>

#include <algorithm>
#include <set>

#include "app/mapsearch.h"
#include "document/syllable.h"
#include "base/handle.h"
#include "measuring.h"
#include "rows.h"
#include "voicebank/folderlisting.h"

namespace {

constexpr int kWaves = 5000;

bool IsWave(const std::wstring& name) {
  return lstrcmpiW(PathFindExtensionW(name.c_str()), L".wav") == 0;
}

class ScanFolder : public Work {
 public:
  explicit ScanFolder(const std::wstring& voicebank) : voicebank_(voicebank) {}

  // Every wave gets its entry, with what is known of its map without reading it.
  double Measured() override {
    std::vector<FoundSyllable> entries;
    const double ms = MillisecondsOf([&] { entries = Scan(); });
    const auto isWhole = [](const FoundSyllable& entry) { return entry.HasMap && entry.FrameEstimate == 1; };
    Require(std::ranges::count_if(entries, isWhole) == kWaves, "the voicebank is not all there");
    return ms;
  }

  double Yardstick() override {
    return MillisecondsOf([&] {
      WIN32_FIND_DATAW item;
      const FindHandle find(FindFirstFileW((voicebank_ + L"\\*.*").c_str(), &item));
      int count = 0;
      do {
        ++count;
      } while (FindNextFileW(find.get(), &item));
      Require(count >= 2 * kWaves, "the voicebank cannot be listed");
    });
  }

 private:
  std::vector<FoundSyllable> Scan() const {
    std::vector<FoundSyllable> entries;
    std::set<std::wstring> seen;
    ListedFolders listed;
    const FolderListing* const listing = listed.Find(voicebank_);
    Require(listing, "the voicebank cannot be listed");
    for (const std::wstring& name : listing->Files()) {
      const std::wstring path = voicebank_ + L"\\" + name;
      if (!IsWave(name) || !seen.insert(path).second) continue;
      FoundSyllable& entry = entries.emplace_back();
      entry.Path = path;
      const FoundMap found = FindMap(path, FrqTypeFrq, listed, store_);
      entry.HasMap = found.Exists;
      entry.FrameEstimate = found.FrameEstimate;
    }
    return entries;
  }

  std::wstring voicebank_;
  MrqStore store_;
};

}  // namespace

std::vector<Row> FolderRows(const std::wstring& voicebank) {
  return {{"scan_folder", "ms", 3.0, [voicebank] { return std::make_unique<ScanFolder>(voicebank); }}};
}
