// A whole voicebank at a glance: its thumbnails, from the command to the last curve in view, and a check of its maps.
#include <windows.h>
#include <psapi.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/files.h"
#include "check/checkrun.h"
#include "frqmap/freq0003.h"
#include "frqmap/mapfiles.h"
#include "measuring.h"
#include "resources/ids.h"
#include "rows.h"
#include "runningprogram.h"
#include "thumbnailview.h"

namespace {

constexpr SampleCount kFrames = 500;

// A voicebank of waves with maps, in folders of a hundred: a larger one would cost a look at all its files for each
// that is added. It is made once for all rows that want it.
class Voicebank {
 public:
  explicit Voicebank(int syllables)
      : path_(std::filesystem::temp_directory_path() /
              (L"marlit_bank_" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(syllables))) {
    const Bytes map = EncodeFreq0003(LongMap(kFrames), FrqTypeFrq);
    for (int i = 0; i < syllables; ++i) {
      const std::filesystem::path folder = path_ / std::to_wstring(1000 + i / 100);
      if (i % 100 == 0) std::filesystem::create_directories(folder);
      const std::wstring name = (folder / std::to_wstring(1000 + i)).wstring();
      WriteWholeFile(name + L".wav", {});
      WriteWholeFile(name + L"_wav.frq", map);
    }
  }
  ~Voicebank() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  Voicebank(const Voicebank&) = delete;
  Voicebank& operator=(const Voicebank&) = delete;

  std::wstring Path() const { return path_.wstring(); }
  std::wstring WaveOf(int i) const {
    return (path_ / std::to_wstring(1000 + i / 100) / (std::to_wstring(1000 + i) + L".wav")).wstring();
  }

 private:
  const std::filesystem::path path_;
};

const Voicebank& LargeVoicebank() {
  static const Voicebank voicebank(5000);
  return voicebank;
}

// As many thumbnails as in a window, in a bare one.
class BareThumbnails {
 public:
  BareThumbnails(int count, const FrqMap* maps, LayerEvictionList* layers = nullptr) {
    parent_ = CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 800, 600, nullptr, nullptr,
                            nullptr, nullptr);
    for (int i = 0; i < count; ++i) {
      const HWND window = CreateWindowExW(WS_EX_CLIENTEDGE, ThumbnailView::kClass, L"a.wav", WS_CHILD | WS_VISIBLE, 0,
                                          0, 1, 1, parent_, nullptr, nullptr, nullptr);
      const FrqCtrlSender control(window);
      control.SetThumbnail(true);
      control.SetMaps(nullptr, const_cast<FrqMap*>(maps));
      control.SetAutoSize(true);
      if (layers) control.SetLayerList(layers);
      Place(window, i);
      control.RepaintNow();
      windows_.push_back(window);
    }
  }
  ~BareThumbnails() { DestroyWindow(parent_); }
  BareThumbnails(const BareThumbnails&) = delete;
  BareThumbnails& operator=(const BareThumbnails&) = delete;

  void Hide() const {
    for (const HWND window : windows_) ShowWindow(window, SW_HIDE);
  }
  void Show() const {
    for (std::size_t i = 0; i < windows_.size(); ++i) {
      Place(windows_[i], static_cast<int>(i));
      FrqCtrlSender(windows_[i]).RepaintNow();
    }
  }

 private:
  static void Place(HWND window, int i) {
    SetWindowPos(window, nullptr, i % 3 * 260, i / 3 % 6 * 90, 254, 72, SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
  }

  HWND parent_;
  std::vector<HWND> windows_;
};

class ThumbnailWork : public Work {
 protected:
  // A folder that is opened anew has no maps in memory.
  void OpenVoicebank() const { program_.List().OpenFolder(LargeVoicebank().Path().c_str()); }

  const FrqMap map_ = LongMap(kFrames);
  RunningProgram program_;
  const ThumbnailView view_{program_};
};

// The way from the command to the first picture, or to the last curve in view, against making, reading and drawing no
// more than what is in view, in a bare window.
class OpenThumbnails : public ThumbnailWork {
 public:
  explicit OpenThumbnails(bool withCurves) : withCurves_(withCurves) {}

  double Measured() override {
    OpenVoicebank();
    const double ms = MillisecondsOf([&] {
      view_.Open();
      view_.WaitForPictures();
      if (withCurves_) view_.WaitForCurves();
    });
    count_ = static_cast<int>(view_.InView().size());
    Require(count_ > 4, "there are too few thumbnails in view");
    view_.Close();
    return ms;
  }

  double Yardstick() override {
    return MillisecondsOf([&] {
      FrqMap map;
      const BareThumbnails bare(count_, &map);
      for (int i = 0; withCurves_ && i < count_; ++i) {
        Require(LoadMap(map, LargeVoicebank().WaveOf(i), FrqTypeFrq, nullptr) == 0, "the map cannot be read");
      }
      if (withCurves_) bare.Show();
    });
  }

 private:
  const bool withCurves_;
  int count_ = 0;
};

// A page forth or back over thumbnails that have been in view before, against hiding and showing as many.
class ScrollThumbnails : public ThumbnailWork {
 public:
  ScrollThumbnails() {
    OpenVoicebank();
    view_.Open();
    view_.WaitForPictures();
    view_.WaitForCurves();
    count_ = static_cast<int>(view_.InView().size());
    Scroll(SB_PAGEDOWN);
    Sleep(500);  // for its maps
    Scroll(SB_PAGEUP);
    Sleep(500);
    bare_ = std::make_unique<BareThumbnails>(count_, &map_);
  }
  ~ScrollThumbnails() override { view_.Close(); }

  double Measured() override {
    down_ = !down_;
    return MillisecondsOf([&] { Scroll(down_ ? SB_PAGEDOWN : SB_PAGEUP); });
  }
  double Yardstick() override {
    return MillisecondsOf([&] {
      bare_->Hide();
      bare_->Show();
    });
  }

 private:
  void Scroll(UINT code) const { SendMessageW(view_.Window(), WM_VSCROLL, code, 0); }

  std::unique_ptr<BareThumbnails> bare_;
  int count_ = 0;
  bool down_ = false;
};

// The memory of a thousand thumbnails that were drawn, against their pixels.
class LayerMemory : public Work {
 public:
  LayerMemory() { RegisterControl<CFrqCtrl>(); }

  double Measured() override {
    const double before = Held();
    LayerEvictionList layers;
    const BareThumbnails bare(static_cast<int>(LayerEvictionList::Capacity), &map_, &layers);
    Require(layers.Count() == LayerEvictionList::Capacity, "there are not as many layers");
    return Held() - before;
  }
  double Yardstick() override {
    const PixelSize size = ThumbnailClientSize(kFrames, 1.0, 1.0);
    return 4.0 * size.width * size.height * static_cast<double>(LayerEvictionList::Capacity) / (1 << 20);
  }

 private:
  static double Held() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
    return static_cast<double>(counters.WorkingSetSize) / (1 << 20);
  }

  const FrqMap map_ = LongMap(kFrames);
};

// A check of a thousand maps in memory, against the time that the library itself takes for them.
class CheckMaps : public Work {
 public:
  CheckMaps() {
    program_.List().OpenFolder(voicebank_.Path().c_str());
    program_.List().RunCheck(settings_);  // reads the maps
    Require(library_.HasEntry(), "there is no check library");
  }

  double Measured() override {
    return MillisecondsOf([&] { program_.List().RunCheck(settings_); });
  }
  double Yardstick() override {
    const auto entry = reinterpret_cast<CheckFrequencyMapEntry>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"checkfrq.dll"), "CheckFrequencyMap")));
    const FrqMap map = LongMap(kFrames);
    const auto regions = MakeCheckRegions(map);
    // Each record has its own name: the library looks for the wave beside it.
    std::vector<CheckRecordPtr<CheckFrameRecord>> records;
    for (int i = 0; i < kMaps; ++i) {
      records.push_back(MakeCheckFrames(map, MapPathFromWaveW(voicebank_.WaveOf(i), FrqTypeFrq)));
    }
    return MillisecondsOf([&] {
      for (const auto& frames : records) entry(&settings_, frames.get(), regions.get());
    });
  }

 private:
  static constexpr int kMaps = 1000;

  const Voicebank voicebank_{kMaps};
  const CheckFrqSettings settings_;
  const CheckLibrary library_;
  RunningProgram program_;
};

}  // namespace

std::vector<Row> GlanceRows() {
  return {{"thumbnails_first_paint", "ms", 2.0, [] { return std::make_unique<OpenThumbnails>(false); }, Taken::Least},
          {"thumbnails_all_drawn", "ms", 2.0, [] { return std::make_unique<OpenThumbnails>(true); }, Taken::Least},
          RowOf<ScrollThumbnails>("thumbnails_page", "ms", 2.0, Taken::Least),
          RowOf<LayerMemory>("thumbnails_memory", "MB", 1.5),
          RowOf<CheckMaps>("check_1000_maps", "ms", 1.5)};
}
