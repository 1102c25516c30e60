#include "frqctrl/tablemodel.h"

#include <algorithm>

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
