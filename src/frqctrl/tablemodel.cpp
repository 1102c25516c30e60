#include "frqctrl/tablemodel.h"

#include <algorithm>
#include <cmath>

#include "base/note.h"

namespace {

constexpr int kThumbnailBottomNote = 33;

// What a column is in samples where no map tells it.
constexpr double kUsualHop = 256.0;
constexpr double kProjectHop = 220.5;

bool Contains(const PixelRect& rect, int x, int y) {
  return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

}  // namespace

bool TableModel::SetViewMode(int mode) {
  if (mode != 0 && mode != 1) return false;
  ViewMode = mode;
  return true;
}

bool TableModel::SetBrightness(int brightness) {
  if (brightness < Brightest || brightness > Darkest) return false;
  Brightness = brightness;
  return true;
}

bool TableModel::SetColorTable(int table) {
  if (table < 0 || table >= ColorTableCount) return false;
  ColorTable = table;
  return true;
}

void TableModel::SetZoom(int zoom) {
  Geometry.Zoom = std::clamp(zoom, 0, kZoomCount - 1);
}

void TableModel::SetLimits(const double* highest, const double* lowest) {
  if (highest) Limits.UpperLimit = *highest;
  if (lowest) Limits.LowerLimit = *lowest;
}

void TableModel::SetThumbnail(bool on) {
  Geometry.ThumbnailMode = on;
  Geometry.BottomNote = on ? kThumbnailBottomNote : kBottomNote;
}

void TableModel::SetMaps(const FrqMap* reference, FrqMap* map) {
  Map = map;
  ReferenceMap = reference;
  Geometry.ScrollColumn = 0;
}

double TableModel::ColumnHop() const {
  if (IsMapLoaded()) return Map->Hop;
  return Kind == FrqTypeVs4ufrq ? kProjectHop : kUsualHop;
}

double TableModel::FrequencyAtY(int y) const {
  return Geometry.YToFrequency(y, Limits, Map && Map->SinglePrecision);
}

TableSpot TableModel::SpotAt(int x, int y) const {
  const SampleCount column = Geometry.XToColumn(x, true, ColumnCount());
  // An average that is derived follows the frames, and cannot be dragged.
  if (Map && !Map->DerivedAverage && Contains(AverageGrip, x, y)) return {TableSpot::Grip, column};
  return {Contains(Geometry.PlotRect, x, y) ? TableSpot::Plot : TableSpot::Nothing, column};
}

SampleCount TableModel::NearestColumn(int x) const {
  const SampleCount count = ColumnCount();
  return count > 0 ? std::clamp(Geometry.XToColumn(x, false, 0), 0, count - 1) : -1;
}

void TableModel::HoldAverageAt(int left, int y) {
  const double reach = 3 * Geometry.DpiScaleY;
  AverageGrip = {left, static_cast<int>(y - reach), Geometry.PlotRect.left, static_cast<int>(y + reach)};
}

void TableModel::ScrollColumnsByWheel(int delta) {
  const std::int64_t last = std::max(0, ColumnCount() - 1);
  // Counted wider, as the view may have been scrolled to any number.
  const std::int64_t column = std::int64_t{Geometry.ScrollColumn} - delta * 4 / WheelNotch;
  Geometry.ScrollColumn = static_cast<SampleCount>(std::clamp<std::int64_t>(column, 0, last));
}

void TableModel::ScrollNotesByWheel(int delta) {
  Geometry.BottomNote = std::clamp(Geometry.BottomNote + delta / WheelNotch, kBottomNote, kTopNote);
}

std::optional<SampleCount> TableModel::FirstColumnToShow(SampleCount column, SampleCount first) const {
  const auto visible = static_cast<int>((Geometry.PlotRect.right - Geometry.PlotRect.left) / Geometry.ColumnWidth());
  if (column > first + 3 && column < first + visible - 3) return std::nullopt;
  // In a view of few columns both may hold; the right edge counts then.
  if (column >= first + visible) return column - visible + 2;
  return column < first ? column - 2 : first;
}

bool TableModel::ScrollToFrames(SampleCount first, SampleCount last) {
  constexpr SampleCount kColumnsBefore = 5;  // so that what comes ahead of the place is seen too
  const PixelRect& plot = Geometry.PlotRect;
  const auto columns = static_cast<SampleCount>((plot.right - plot.left) / Geometry.ColumnWidth());
  const auto rows = static_cast<int>((plot.bottom - plot.top) / Geometry.RowHeight());
  const TableGeometry before = Geometry;
  const SampleCount end = std::min(last, first + columns - 2 * kColumnsBefore);
  if (first < Geometry.ScrollColumn || end >= Geometry.ScrollColumn + columns) {
    Geometry.ScrollColumn = std::max(0, first - kColumnsBefore);
  }
  const std::optional<double> note = MiddleNoteOf(first, last);
  if (note && (*note < Geometry.BottomNote || *note >= Geometry.BottomNote + rows)) {
    Geometry.BottomNote = std::clamp(static_cast<int>(*note) - rows / 2, kBottomNote, kTopNote);
  }
  return Geometry.ScrollColumn != before.ScrollColumn || Geometry.BottomNote != before.BottomNote;
}

std::optional<double> TableModel::MiddleNoteOf(SampleCount first, SampleCount last) const {
  double lowest = 0.0, highest = 0.0;
  bool found = false;
  for (SampleCount i = std::max(first, 0); Map && i <= last && i < Map->FrameCount; ++i) {
    const double hz = Map->Frames[static_cast<std::size_t>(i)].Frequency;
    if (!(hz > FrqNoPitch) || !std::isfinite(hz)) continue;
    lowest = found ? std::min(lowest, hz) : hz;
    highest = found ? std::max(highest, hz) : hz;
    found = true;
  }
  return found ? std::optional((HzToNote(lowest) + HzToNote(highest)) / 2) : std::nullopt;
}
