// A check of 1,000 maps of 500 frames: the library's time against all that the program does in the same run, which
// loads each map, makes its records and takes the marks. And a check that listens, against what a user waits.
#include <windows.h>

#include "base/files.h"
#include "base/filesystem.h"
#include "check/checkrecords.h"
#include "contours.h"
#include "frqmap/freq0003.h"
#include "frqmap/mapfiles.h"
#include "measuring.h"
#include "native/tone.h"
#include "rows.h"
#include "scratchfolder.h"
#include "voicebank/sound.h"

namespace {

constexpr int kMaps = 1000;
constexpr SampleCount kFrames = 500;

class Library {
 public:
  Library() { Require(entry_ != nullptr, "checkfrq.dll is not there"); }
  ~Library() { FreeLibrary(module_); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  void Check(CheckFrameRecord* frames, const CheckRegionRecord* regions) const {
    const CheckFrqSettings settings{.LowNote = 60, .HighNote = 60};
    Require(entry_(&settings, frames, regions) >= 0, "a map is refused");
  }

 private:
  const HMODULE module_ = LoadLibraryW(L"checkfrq.dll");
  const CheckFrequencyMapEntry entry_ =
      reinterpret_cast<CheckFrequencyMapEntry>(reinterpret_cast<void*>(GetProcAddress(module_, "CheckFrequencyMap")));
};

class CheckLibrary : public Work {
 public:
  CheckLibrary() {
    for (int i = 0; i < kMaps; ++i) {
      contours::Contour contour = contours::Generator(static_cast<std::uint32_t>(i)).Make(contours::Error::Run);
      contour.map.Frames.Own().resize(kFrames);
      contour.map.FrameCount = kFrames;
      const std::wstring path = folder_.PathOf(std::to_wstring(i) + L"_wav.frq");
      Require(WriteWholeFile(path, EncodeFreq0003(contour.map, FrqTypeFrq)), "a map cannot be written");
      paths_.push_back(path);
    }
    records_.resize(kMaps);
    regions_.resize(kMaps);
  }

  double Measured() override {
    if (!records_[0]) Yardstick();
    return MillisecondsOf([&] {
      for (std::size_t i = 0; i < kMaps; ++i) library_.Check(records_[i].get(), regions_[i].get());
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
  const Library library_;
  ScratchFolder folder_;
  std::vector<std::wstring> paths_;
  std::vector<CheckRecordPtr<CheckFrameRecord>> records_;
  std::vector<CheckRecordPtr<CheckRegionRecord>> regions_;
};

// A check of 1,000 maps of waves of 1.5 s, in a library that is loaded for it, against a user's longest wait. The
// second check is of the same waves, with another map for one in twenty.
class ListeningCheck : public Work {
 public:
  ListeningCheck(bool isSecond, double mostMs) : isSecond_(isSecond), mostMs_(mostMs) {
    SetEnvironmentVariableW(L"LOCALAPPDATA", folder_.PathOf(L"local").c_str());
    for (int i = 0; i < kMaps; ++i) {
      const std::wstring path = folder_.PathOf(std::to_wstring(1000 + i));
      if (i < kSounds) sounds_.push_back(WaveOf(i));
      Require(WriteWholeFile(path + L".wav", sounds_[static_cast<std::size_t>(i % kSounds)]),
              "a wave cannot be written");
      FrqMap map;
      map.Create(kSamples / kHop, FrqTypeFrq);
      map.Hop = kHop;
      for (FrqFrame& frame : map.Frames.Own()) frame.Frequency = 150.0 + 10.0 * (i % kSounds);
      records_.push_back(MakeCheckFrames(map, path + L"_wav.frq"));
    }
  }

  double Measured() override {
    if (!isSecond_) {
      ForgetWhatWasHeard();
    } else if (!hasRun_) {
      Run();
    }
    if (hasRun_) {
      for (std::size_t i = 0; i < kMaps; i += 20) records_[i]->Frames[100].Frequency *= 1.001;
    }
    hasRun_ = true;
    WaitUntilUnloaded();
    return MillisecondsOf([&] { Run(); });
  }
  double Yardstick() override { return mostMs_; }

 private:
  static constexpr int kSounds = 20;
  static constexpr SampleCount kSamples = 66150, kHop = 256;

  static Bytes WaveOf(int number) {
    std::vector<float> samples = SecondOfTone([=](double t) { return 150.0 + 10.0 * number + 20.0 * t; }, 0.1, 1.0);
    const std::vector<float> rest = SecondOfTone([](double) { return 200.0; }, 0.0, 0.4);
    samples.insert(samples.end(), rest.begin(), rest.begin() + kSamples - std::ssize(samples));
    return EncodeWaveFile(To16Bits(samples), 44100);
  }

  void Run() const {
    const Library library;
    for (const auto& record : records_) library.Check(record.get(), nullptr);
  }
  // The library's threads keep it for a moment longer, and write what they have heard.
  static void WaitUntilUnloaded() {
    while (GetModuleHandleW(L"checkfrq.dll")) Sleep(10);
  }
  void ForgetWhatWasHeard() const {
    WaitUntilUnloaded();
    const std::wstring heard = folder_.PathOf(L"local\\Marlit\\Heard");
    for (const std::wstring& name : Disk().List(heard)) Disk().Delete(heard + L"\\" + name);
  }

  const bool isSecond_;
  const double mostMs_;
  ScratchFolder folder_;
  std::vector<Bytes> sounds_;
  std::vector<CheckRecordPtr<CheckFrameRecord>> records_;
  bool hasRun_ = false;
};

struct FirstCheck : ListeningCheck {
  FirstCheck() : ListeningCheck(false, 8000.0) {}
};

struct SecondCheck : ListeningCheck {
  SecondCheck() : ListeningCheck(true, 500.0) {}
};

}  // namespace

std::vector<Row> CheckLibraryRows() {
  return {RowOf<CheckLibrary>("check_library", "ms", 2.0), RowOf<FirstCheck>("check_listening", "ms", 1.0),
          RowOf<SecondCheck>("check_again", "ms", 1.0)};
}
