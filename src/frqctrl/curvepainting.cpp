#include "frqctrl/curvepainting.h"

#include <algorithm>
#include <array>
#include <vector>

#include "frqctrl/drawing.h"

namespace {

enum CurveInk { InkPlain, InkSelected, InkUnvoiced, CurveInkCount };
using CurveInks = std::array<COLORREF, CurveInkCount>;

struct CurveValue {
  double Hz;  // shown if it is above FrqNoPitch
  bool Voiced;
};

CurveValue ValueOf(const FrqFrame& frame, CurveOf values) {
  if (values == CurveOf::Frequencies) return {frame.Frequency, frame.Voiced};
  return {frame.Mark != 0 ? frame.SuggestedFrequency : FrqNoPitch, true};
}

CurveInk InkOf(bool voiced, bool selected) {
  if (!voiced) return InkUnvoiced;
  return selected ? InkSelected : InkPlain;
}

// Joins points, with one Polyline for as long as the ink stays the same: the same pixels as a LineTo for each segment
// gives, in a quarter of the time.
class CurveLine {
 public:
  CurveLine(HDC dc, const CurveInks& colors, double penWidth) : dc_(dc) {
    for (std::size_t i = 0; i < pens_.size(); ++i) pens_[i] = SolidPen(penWidth, colors[i]);
  }

  bool HasPoint() const { return !points_.empty(); }

  // A segment is selected if either end is, and unvoiced if its right end is.
  void Add(const POINT& point, bool voiced, bool selected) {
    const CurveInk ink = InkOf(voiced, selected || lastSelected_);
    if (points_.size() > 1 && ink != ink_) {
      const POINT joint = points_.back();
      Break();
      points_.push_back(joint);
    }
    points_.push_back(point);
    ink_ = ink;
    lastSelected_ = selected;
  }

  // Draws what is pending; the next point begins a new line.
  void Break() {
    if (points_.size() > 1) {
      const SelectGuard selectPen(dc_, pens_[ink_].get());
      Polyline(dc_, points_.data(), static_cast<int>(points_.size()));
    }
    points_.clear();
  }

 private:
  HDC dc_;
  std::array<Pen, CurveInkCount> pens_;
  std::vector<POINT> points_;
  CurveInk ink_ = InkPlain;    // of the segments of points_
  bool lastSelected_ = false;  // the last point's frame is selected
};

// One curve: what it shows and how large its markers are.
struct Curve {
  const TableGeometry& Table;
  const FrqMap& Map;
  CurveOf Values;
  int MarkerSize;  // pixels

  int ToY(double hz) const { return Table.FrequencyToY(hz, Table.PlotRect.bottom); }
};

// Fills rectangles, all that touch side by side in one call: at the smallest zoom a steady note is one bar, and the
// calls for its markers would be most of a stroke's time.
class MarkerBars {
 public:
  MarkerBars(HDC dc, const CurveInks& colors) : dc_(dc) {
    for (std::size_t i = 0; i < brushes_.size(); ++i) brushes_[i] = SolidBrush(colors[i]);
  }
  ~MarkerBars() { Finish(); }
  MarkerBars(const MarkerBars&) = delete;
  MarkerBars& operator=(const MarkerBars&) = delete;

  void Add(const RECT& marker, CurveInk ink) {
    if (ink == ink_ && marker.left == bar_.right && marker.top == bar_.top) {
      bar_.right = marker.right;
      return;
    }
    Finish();
    bar_ = marker;
    ink_ = ink;
  }

 private:
  void Finish() {
    if (!IsRectEmpty(&bar_)) Fill(dc_, brushes_[ink_], bar_);
  }

  HDC dc_;
  std::array<Brush, CurveInkCount> brushes_;
  RECT bar_{};
  CurveInk ink_ = InkPlain;  // of bar_
};

void DrawMarkers(HDC dc, const Curve& curve, const CurveInks& colors) {
  MarkerBars bars(dc, colors);
  const int size = curve.MarkerSize;
  WalkFrames(curve.Table, curve.Map, [&](const FrqFrame& frame, double x) {
    const CurveValue value = ValueOf(frame, curve.Values);
    if (!(value.Hz > FrqNoPitch)) return;
    const int top = curve.ToY(value.Hz) - size / 2;
    bars.Add({static_cast<int>(x), top, static_cast<int>(x + size), top + size}, InkOf(value.Voiced, frame.Selected));
  });
}

// A frame without a shown value breaks the line; an unvoiced one does not. A thumbnail has no markers, so that a pixel
// stands for a point that no line may reach.
void DrawLines(HDC dc, const Curve& curve, const CurveInks& colors) {
  CurveLine line(dc, colors, curve.Table.DpiScaleY);
  WalkFrames(curve.Table, curve.Map, [&](const FrqFrame& frame, double x) {
    const CurveValue value = ValueOf(frame, curve.Values);
    if (!(value.Hz > FrqNoPitch)) {
      line.Break();
      return;
    }
    const POINT point{static_cast<int>(x + curve.MarkerSize / 2), curve.ToY(value.Hz)};
    if (curve.Table.ThumbnailMode && !line.HasPoint()) SetPixelV(dc, point.x, point.y, colors[InkPlain]);
    line.Add(point, value.Voiced, frame.Selected);
  });
  line.Break();
}

}  // namespace

void DrawCurve(HDC dc, const TableGeometry& geometry, const FrqMap& map, CurveOf values, const CurveColors& colors) {
  const bool thumbnail = geometry.ThumbnailMode;
  const CurveInks inks = {colors.Plain, thumbnail ? colors.Plain : colors.Selected, colors.Unvoiced};
  const int markerSize = std::max(static_cast<int>(geometry.ColumnWidth() * 8.0 / 10.0), 2);
  const Curve curve{geometry, map, values, markerSize};
  // All lines lie over all markers.
  if (!thumbnail) DrawMarkers(dc, curve, inks);
  DrawLines(dc, curve, inks);
}
