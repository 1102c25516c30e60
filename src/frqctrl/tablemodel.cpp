#include "frqctrl/tablemodel.h"

#include <algorithm>
#include <cmath>

#include "base/note.h"
#include "frqmap/mapkind.h"

namespace {

constexpr int kThumbnailBottomNote = 33;

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
  const MapKind* const row = FindMapKind(Kind);
  return row ? row->ColumnHop : FindMapKind(FrqTypeFrq)->ColumnHop;
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

void TableModel::HoldKeyLineAt(int left, int y) {
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
  const std::optional<Extent> extent = ExtentOf(first, last, false);
  const std::optional<double> note =
      extent ? std::optional((extent->LowestNote + extent->HighestNote) / 2) : std::nullopt;
  if (note && (*note < Geometry.BottomNote || *note >= Geometry.BottomNote + rows)) {
    Geometry.BottomNote = std::clamp(static_cast<int>(*note) - rows / 2, kBottomNote, kTopNote);
  }
  return Geometry.ScrollColumn != before.ScrollColumn || Geometry.BottomNote != before.BottomNote;
}

SampleCount TableModel::ColumnsInView() const {
  return static_cast<SampleCount>((Geometry.PlotRect.right - Geometry.PlotRect.left) / Geometry.ColumnWidth());
}

std::optional<TableModel::Extent> TableModel::ExtentOf(SampleCount first, SampleCount last, bool selectedOnly) const {
  std::optional<Extent> extent;
  double lowest = 0.0, highest = 0.0;
  for (SampleCount i = std::max(first, 0); Map && i <= last && i < Map->FrameCount; ++i) {
    const FrqFrame& frame = Map->Frames[static_cast<std::size_t>(i)];
    if (!(frame.Frequency > FrqNoPitch) || !std::isfinite(frame.Frequency) || (selectedOnly && !frame.Selected))
      continue;
    lowest = extent ? std::min(lowest, frame.Frequency) : frame.Frequency;
    highest = extent ? std::max(highest, frame.Frequency) : frame.Frequency;
    extent = {extent ? extent->First : i, i, 0.0, 0.0};
  }
  if (!extent) return std::nullopt;
  extent->LowestNote = HzToNote(lowest);
  extent->HighestNote = HzToNote(highest);
  return extent;
}

std::optional<TableModel::Extent> TableModel::ExtentOfCurve() const {
  return ExtentOf(0, ColumnCount() - 1, false);
}

std::optional<TableModel::Extent> TableModel::ExtentAtWork() const {
  const std::optional<Extent> selected = ExtentOf(0, ColumnCount() - 1, true);
  return selected ? selected : ExtentOfCurve();
}

void TableModel::PlaceAt(double x, double y, double column, double note) {
  const PixelRect& plot = Geometry.PlotRect;
  const double first = column + 0.5 - (x - plot.left) / Geometry.ColumnWidth();
  const double lowest = note + 0.5 - (plot.bottom - y) / Geometry.RowHeight();
  Geometry.ScrollColumn =
      static_cast<SampleCount>(std::lround(std::clamp(first, 0.0, std::max(0.0, ColumnCount() - 1.0))));
  Geometry.BottomNote = static_cast<int>(std::lround(std::clamp<double>(lowest, kBottomNote, kTopNote)));
}

bool TableModel::Fit() {
  constexpr double kNotesAround = 3.0;
  const std::optional<Extent> extent = ExtentOfCurve();
  if (!extent) return false;
  const PixelRect& plot = Geometry.PlotRect;
  const auto isAllSeen = [&] {
    return (extent->Last - extent->First + 1) * Geometry.ColumnWidth() <= plot.right - plot.left &&
           (extent->HighestNote - extent->LowestNote + kNotesAround) * Geometry.RowHeight() <= plot.bottom - plot.top;
  };
  Geometry.Zoom = kZoomCount - 1;
  while (Geometry.Zoom > 0 && !isAllSeen()) --Geometry.Zoom;
  FollowsCurve = true;
  // An extent that is too long is seen from its beginning.
  const double middle = std::min((extent->First + extent->Last) / 2.0, extent->First + ColumnsInView() / 2.0);
  PlaceAt((plot.left + plot.right) / 2.0, (plot.top + plot.bottom) / 2.0, middle,
          (extent->LowestNote + extent->HighestNote) / 2);
  return true;
}

bool TableModel::Centre() {
  const std::optional<Extent> extent = ExtentAtWork();
  if (!extent) return false;
  const PixelRect& plot = Geometry.PlotRect;
  FollowsCurve = true;
  PlaceAt((plot.left + plot.right) / 2.0, (plot.top + plot.bottom) / 2.0, (extent->First + extent->Last) / 2.0,
          (extent->LowestNote + extent->HighestNote) / 2);
  return true;
}

bool TableModel::ZoomInPlace(bool down) {
  const int zoom = std::clamp(Geometry.Zoom + (down ? -1 : 1), 0, kZoomCount - 1);
  if (zoom == Geometry.Zoom) return false;
  const std::optional<Extent> extent = ExtentAtWork();
  const PixelRect& plot = Geometry.PlotRect;
  // Without a curve the middle of the view stays.
  const double column = extent ? (extent->First + extent->Last) / 2.0 : Geometry.ScrollColumn + ColumnsInView() / 2.0;
  const double note = extent ? (extent->LowestNote + extent->HighestNote) / 2
                             : Geometry.BottomNote + (plot.bottom - plot.top) / Geometry.RowHeight() / 2;
  // A curve out of view comes to its edge at least.
  const double x = plot.left + (column + 0.5 - Geometry.ScrollColumn) * Geometry.ColumnWidth();
  const double y = plot.bottom - (note + 0.5 - Geometry.BottomNote) * Geometry.RowHeight();
  SetZoom(zoom);
  PlaceAt(std::clamp<double>(x, plot.left, plot.right), std::clamp<double>(y, plot.top, plot.bottom), column, note);
  FollowsCurve = true;
  return true;
}
