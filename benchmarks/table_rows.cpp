// The frequency table's picture: the spectrum painted anew, and a stroke of the mouse.
#include <windows.h>

#include <cmath>
#include <cstring>

#include "base/files.h"
#include "base/handle.h"
#include "base/note.h"
#include "frqctrl/frqctrl.h"
#include "measuring.h"
#include "rows.h"
#include "scratchfolder.h"

namespace {

Bytes WaveFile(const std::vector<std::int16_t>& samples) {
  const auto size = static_cast<std::uint32_t>(samples.size() * 2);
  ByteWriter file;
  const auto text = [&](const char* id) {
    for (int i = 0; i < 4; ++i) file.Write(id[i]);
  };
  text("RIFF");
  file.Write(size + 36);
  text("WAVE");
  text("fmt ");
  file.Write(std::uint32_t{16});
  for (const std::uint16_t field : {std::uint16_t{1}, std::uint16_t{1}}) file.Write(field);
  for (const std::uint32_t field : {44100u, 88200u}) file.Write(field);
  for (const std::uint16_t field : {std::uint16_t{2}, std::uint16_t{16}}) file.Write(field);
  text("data");
  file.Write(size);
  for (const std::int16_t sample : samples) file.Write(sample);
  return file.Take();
}

// Six seconds with partials all over the table.
std::vector<std::int16_t> Vowel() {
  std::vector<std::int16_t> samples(6 * 44100);
  double phase = 0.0;
  for (std::int16_t& sample : samples) {
    phase += 220.0 / 44100.0;
    sample = static_cast<std::int16_t>(20000.0 * std::fmod(phase, 1.0));
  }
  return samples;
}

FrqMap Singing(SampleCount frames) {
  FrqMap map;
  map.Create(frames, FrqTypeFrq);
  map.Loaded = true;
  map.Average = 220.0;
  for (SampleCount i = 0; i < frames; ++i) map.SetFrequency(map.PositionOf(i), 220.0 + 9.0 * std::sin(i / 20.0));
  return map;
}

// The control over the spectrum, at its smallest zoom, in a window of a given client size.
class Table : public Work {
 public:
  Table(int width, int height) : width_(width), height_(height) {
    [[maybe_unused]] static const bool registered = (RegisterControl<CFrqCtrl>(), true);
    Require(WriteWholeFile(path_, WaveFile(Vowel())), "a wave cannot be written");
    window_ = CreateWindowExW(0, L"FrequencyTableControl", L"", WS_POPUP | WS_VISIBLE, 0, 0, width, height, nullptr,
                              nullptr, GetModuleHandleW(nullptr), nullptr);
    const FrqCtrlSender table(window_);
    table.SetWavePath(path_.c_str());
    table.SetViewMode(1);
    table.SetMaps(&map_, &map_);
    table.RepaintNow();
    const HDC screen = GetDC(nullptr);
    for (int i = 0; i < 2; ++i) {
      contexts_[i].reset(CreateCompatibleDC(screen));
      bitmaps_[i].reset(CreateCompatibleBitmap(screen, width, height));
      SelectObject(contexts_[i].get(), bitmaps_[i].get());
    }
    ReleaseDC(nullptr, screen);
  }
  ~Table() override { DestroyWindow(window_); }

 protected:
  double Copy() const {
    return MillisecondsOf(
        [this] { BitBlt(contexts_[0].get(), 0, 0, width_, height_, contexts_[1].get(), 0, 0, SRCCOPY); });
  }
  double Rebuild() const {
    return MillisecondsOf([this] {
      FrqCtrlSender(window_).DropLayer();
      FrqCtrlSender(window_).RepaintNow();
    });
  }

  int width_;
  int height_;
  HWND window_;
  MemoryDc contexts_[2];

 private:
  ScratchFolder folder_;
  std::wstring path_ = folder_.PathOf(L"a.wav");
  FrqMap map_ = Singing(2000);
  Bitmap bitmaps_[2];
};

// All of a paint, of which the window's picture is copied twice, against one copy.
class RebuildAgainstCopy : public Table {
 public:
  using Table::Table;
  double Measured() override { return Rebuild(); }
  double Yardstick() override { return Copy(); }
};

// The same against a call for each cell of 2 by 3 pixels.
class RebuildAgainstFills : public Table {
 public:
  using Table::Table;
  double Measured() override { return Rebuild(); }
  double Yardstick() override {
    return MillisecondsOf([this] {
      Brush brushes[256];
      for (int i = 0; i < 256; ++i) brushes[i].reset(CreateSolidBrush(static_cast<COLORREF>(i * 0x010101)));
      for (int x = 0; x < width_; x += 2) {
        for (int y = 0; y < height_; y += 3) {
          const RECT cell{x, y, x + 2, y + 3};
          FillRect(contexts_[0].get(), &cell, brushes[(x + y) % 256].get());
        }
      }
    });
  }
};

// The view made for the curve, from the key to its paint, against the paint of that view by itself.
class FitView : public Table {
 public:
  using Table::Table;
  double Measured() override {
    return MillisecondsOf([this] { FrqCtrlSender(window_).Fit(); });
  }
  double Yardstick() override { return Rebuild(); }
};

// A column is drawn and shown.
class Stroke : public Table {
 public:
  using Table::Table;
  double Measured() override {
    const int x = 30 + step_++ % (width_ - 60);
    return MillisecondsOf([&] {
      SendMessageW(window_, WM_LBUTTONDOWN, 0, MAKELPARAM(x, height_ / 2));
      SendMessageW(window_, WM_LBUTTONUP, 0, MAKELPARAM(x, height_ / 2));
    });
  }
  double Yardstick() override { return Copy(); }

 private:
  int step_ = 0;
};

template <typename T>
Row TableRow(const char* name, double aim, int width, int height) {
  return {name, "ms", aim, [=] { return std::make_unique<T>(width, height); }, Taken::Least};
}

}  // namespace

std::vector<Row> TableRows() {
  return {TableRow<RebuildAgainstCopy>("layer_650", 70.0, 650, 560),
          TableRow<RebuildAgainstCopy>("layer_1900", 20.0, 1900, 1000),
          TableRow<RebuildAgainstFills>("layer_fills", 0.05, 1900, 1000), TableRow<Stroke>("stroke", 10.0, 1900, 1000),
          TableRow<FitView>("fit", 1.5, 650, 560)};
}
