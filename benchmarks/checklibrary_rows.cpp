// A check of 1,000 maps of 500 frames: what the library takes of it, against all that the program does in the same run,
// which loads each map, makes its records and takes the marks.
#include <windows.h>

#include "base/files.h"
#include "check/checkrecords.h"
#include "contours.h"
#include "frqmap/freq0003.h"
#include "frqmap/mapfiles.h"
#include "measuring.h"
#include "rows.h"
#include "scratchfolder.h"

namespace {

constexpr int kMaps = 1000;
constexpr SampleCount kFrames = 500;

class CheckLibrary : public Work {
 public:
  CheckLibrary() {
    Require(entry_ != nullptr, "checkfrq.dll is not there");
    for (int i = 0; i < kMaps; ++i) {
      contours::Contour contour = contours::Generator(static_cast<std::uint32_t>(i)).Make(contours::Error::Run);
      contour.map.Frames.resize(kFrames);
      contour.map.FrameCount = kFrames;
      const std::wstring path = folder_.PathOf(std::to_wstring(i) + L"_wav.frq");
      Require(WriteWholeFile(path, EncodeFreq0003(contour.map, FrqTypeFrq)), "a map cannot be written");
      paths_.push_back(path);
    }
    records_.resize(kMaps);
    regions_.resize(kMaps);
  }
  ~CheckLibrary() override { FreeLibrary(library_); }

  double Measured() override {
    if (!records_[0]) Yardstick();
    return MillisecondsOf([&] {
      for (std::size_t i = 0; i < kMaps; ++i) {
        Require(entry_(&settings_, records_[i].get(), regions_[i].get()) >= 0, "a map is refused");
      }
    });
  }

  double Yardstick() override {
    return MillisecondsOf([&] {
      for (std::size_t i = 0; i < kMaps; ++i) {
        FrqMap map;
        Require(map.Load(paths_[i], nullptr) == 0, "a map cannot be loaded");
        records_[i] = MakeCheckFrames(map, L"a_wav.frq");
        regions_[i] = MakeCheckRegions(map);
        TakeCheckResults(*records_[i], map);
      }
    });
  }

 private:
  const HMODULE library_ = LoadLibraryW(L"checkfrq.dll");
  const CheckFrequencyMapEntry entry_ =
      reinterpret_cast<CheckFrequencyMapEntry>(reinterpret_cast<void*>(GetProcAddress(library_, "CheckFrequencyMap")));
  const CheckFrqSettings settings_{.LowNote = 60, .HighNote = 60};
  ScratchFolder folder_;
  std::vector<std::wstring> paths_;
  std::vector<CheckRecordPtr<CheckFrameRecord>> records_;
  std::vector<CheckRecordPtr<CheckRegionRecord>> regions_;
};

}  // namespace

std::vector<Row> CheckLibraryRows() {
  return {RowOf<CheckLibrary>("check_library", "ms", 2.0)};
}
