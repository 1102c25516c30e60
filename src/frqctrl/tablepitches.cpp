#include "frqctrl/tablepitches.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <mutex>
#include <optional>

#include "frqctrl/drawing.h"
#include "frqctrl/palette.h"
#include "frqmap/mapediting.h"
#include "pitch/wavepitches.h"

namespace {

constexpr std::size_t kShades = 8;

struct DotColors {
  COLORREF Faint, Strong;
};

// Both views have light grounds: rows of white and grey, or cells from a middle tone up to white.
DotColors ColorsOf(bool spectrum) {
  if (IsHighContrast()) return {RGB(160, 160, 160), RGB(0, 0, 0)};
  return spectrum ? DotColors{RGB(120, 120, 120), RGB(0, 0, 0)} : DotColors{RGB(232, 190, 232), RGB(136, 0, 136)};
}

COLORREF Mixed(const DotColors& colors, double share) {
  const auto mix = [share](BYTE faint, BYTE strong) {
    return static_cast<BYTE>(std::lround(faint + (strong - faint) * share));
  };
  return RGB(mix(GetRValue(colors.Faint), GetRValue(colors.Strong)),
             mix(GetGValue(colors.Faint), GetGValue(colors.Strong)),
             mix(GetBValue(colors.Faint), GetBValue(colors.Strong)));
}

std::array<Brush, kShades> BrushesOf(const DotColors& colors) {
  std::array<Brush, kShades> brushes;
  for (std::size_t i = 0; i < kShades; ++i) {
    brushes[i] = SolidBrush(Mixed(colors, static_cast<double>(i) / (kShades - 1)));
  }
  return brushes;
}

std::size_t ShadeOf(double strength) {
  return static_cast<std::size_t>(std::lround(std::clamp(strength, 0.0, 1.0) * (kShades - 1)));
}

// A key that is pressed in another program is none of the table's business.
bool IsShiftDown() {
  if (GetAsyncKeyState(VK_SHIFT) >= 0) return false;
  DWORD process = 0;
  GetWindowThreadProcessId(GetForegroundWindow(), &process);
  return process == GetCurrentProcessId();
}

bool IsMouseOver(HWND window) {
  POINT mouse{};
  GetCursorPos(&mouse);
  return WindowFromPoint(mouse) == window;
}

}  // namespace

void TablePitches::SetSource(WavePitches* source) {
  source_ = source;
  shown_ = false;
}

bool TablePitches::IsWanted(bool atWork) const {
  if (!source_ || !IsShiftDown() || model_.Geometry.ThumbnailMode || model_.ReadOnly) return false;
  return atWork || IsMouseOver(host_.Window());
}

SoundPitches* TablePitches::Sound() const {
  const std::lock_guard reading(host_.Editing());
  return source_ && model_.IsMapLoaded() ? source_->Loaded(model_.Map->Hop, model_.Map->FrameCount) : nullptr;
}

void TablePitches::Follow(bool atWork) {
  const bool wasShown = shown_;
  shown_ = IsWanted(atWork);
  if (!shown_ && !wasShown) return;
  const bool isNew = shown_ && PrepareView();
  if (isNew || shown_ != wasShown) host_.Repaint();
}

// Loads what another syllable or another file has brought, and seeks the columns in view.
bool TablePitches::PrepareView() const {
  SampleCount hop = 0, count = 0;
  {
    const std::lock_guard reading(host_.Editing());
    if (!model_.IsMapLoaded()) return false;
    hop = model_.Map->Hop;
    count = model_.Map->FrameCount;
  }
  SoundPitches* const sound = source_->Load(hop, count);
  const PixelRect& plot = model_.Geometry.PlotRect;
  const SampleCount first = std::clamp(model_.Geometry.ScrollColumn, 0, count);
  const auto columns = static_cast<SampleCount>((plot.right - plot.left) / model_.Geometry.ColumnWidth()) + 1;
  return sound && sound->Prepare(first, std::min(columns, count - first));
}

double TablePitches::Snapped(SampleCount column, double hz) {
  SoundPitches* const sound = shown_ && hz > FrqNoPitch ? Sound() : nullptr;
  const std::optional<double> nearest = sound ? sound->NearestAt(column, hz) : std::nullopt;
  if (!nearest || *nearest <= FrqNoPitch || *nearest < model_.Limits.LowerLimit ||
      *nearest > model_.Limits.UpperLimit) {
    return hz;
  }
  const std::lock_guard reading(host_.Editing());
  return model_.Map && model_.Map->SinglePrecision ? static_cast<double>(static_cast<float>(*nearest)) : *nearest;
}

void TablePitches::Draw(HDC dc) const {
  const SoundPitches* const sound = shown_ ? Sound() : nullptr;
  if (!sound) return;
  const TableGeometry& geometry = model_.Geometry;
  const PixelRect& plot = geometry.PlotRect;
  const double width = geometry.ColumnWidth();
  const int size = std::clamp(static_cast<int>(width / 2), 2, 6);
  const std::array<Brush, kShades> brushes = BrushesOf(ColorsOf(model_.ShowsSpectrum()));
  geometry.WalkColumns([&](std::int64_t column, double x) {
    if (column >= model_.ColumnCount()) return false;
    const PitchFrame* const frame = sound->Known(static_cast<SampleCount>(column));
    if (!frame) return true;
    const int left = static_cast<int>(x + (width - size) / 2);
    for (const PitchCandidate& one : BorneOut(*frame)) {
      const int y = geometry.FrequencyToY(std::exp2(one.logHz), plot.bottom);
      Fill(dc, brushes[ShadeOf(one.strength)], {left, y - size / 2, left + size, y - size / 2 + size});
    }
    return true;
  });
}
