// CFrqCtrl: the layer, and the steps that draw into it. The curve has a source of its own.
#include "frqctrl/frqctrl.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "base/text.h"
#include "frqctrl/drawing.h"
#include "frqctrl/layerevictionlist.h"

namespace {

// As wide as the label strip and as high as a label, in the font that is selected.
SIZE LabelSize(HDC dc) {
  SIZE size{};
  GetTextExtentPoint32W(dc, L"C0", 2, &size);
  return size;
}

bool IsAccidental(int note) {
  const int step = note % 12;
  return step == 1 || step == 3 || step == 6 || step == 8 || step == 10;
}

}  // namespace

bool CFrqCtrl::Draw(HDC dc, const RECT& client) {
  // Under the box that tells of a failed analysis the layer is in the middle of being built.
  if (Analyzing) return false;
  const int stripWidth = Geometry.ThumbnailMode ? 0 : LabelSize(dc).cx;
  Geometry.PlotRect = {client.left + stripWidth, client.top, client.right, client.bottom};
  if (!LayerDC && !BuildLayer(dc, client)) return false;
  {
    const SelectGuard selectBitmap(LayerDC.get(), LayerBitmap.get());
    BitBlt(dc, 0, 0, client.right - client.left, client.bottom - client.top, LayerDC.get(), 0, 0, SRCCOPY);
  }
  if (IsMapLoaded()) DrawMap(dc, client);
  DrawCaption(dc, client);
  return true;
}

// The memory of the bitmap stays for the next layer, which is built at the next paint as a rule. That of a thumbnail
// does not: it is there to be given up.
void CFrqCtrl::DropLayer() {
  LayerDC.reset();
  if (Geometry.ThumbnailMode) LayerBitmap = {};
}

bool CFrqCtrl::BuildLayer(HDC dc, const RECT& client) {
  MemoryDc layer(CreateCompatibleDC(dc));
  const int width = client.right - client.left;
  const int height = client.bottom - client.top;
  if (!LayerBitmap.Is(width, height)) {
    LayerBitmap = {};  // ahead of the new one, so that both are never held
    LayerBitmap = PixelBitmap(width, height);
  }
  if (!layer || !LayerBitmap) return false;
  {
    const SelectGuard selectBitmap(layer.get(), LayerBitmap.get());
    const SelectGuard selectFont(layer.get(), GetCurrentObject(dc, OBJ_FONT));
    Fill(layer.get(), SolidBrush(GroundColor()), client);
    if (Geometry.ThumbnailMode) {
      if (IsMapLoaded()) DrawAverageLine(layer.get(), client, *Map, Colors[ColorAverage]);
    } else {
      DrawLayer(layer.get(), LayerBitmap, client);
    }
  }
  LayerDC = std::move(layer);
  if (LayerList) LayerList->Add(Hwnd);
  return true;
}

// A thumbnail tells by its ground what the user should look at: no map, or one without an average or with marks.
COLORREF CFrqCtrl::GroundColor() const {
  if (!Geometry.ThumbnailMode) return Colors[ColorBackground];
  if (!IsMapLoaded()) return GetSysColor(COLOR_3DFACE);
  return Map->Average == FrqNoPitch || Map->HasMarks ? Colors[ColorMarked] : Colors[ColorBackground];
}

void CFrqCtrl::DrawLayer(HDC dc, PixelBitmap& pixels, const RECT& client) {
  if (ViewMode == 0) {
    DrawNoteRows(dc, pixels);
    if (IsMapLoaded() && Map->HasMarks) DrawMarkedColumns(pixels);
  }
  // What comes next is drawn by the system, and over what is written by hand.
  DrawNoteLabels(dc, {client.left, client.top, Geometry.PlotRect.left, client.bottom});
  if (ViewMode == 1) DrawSpectrum(pixels);
  DrawBarLines(dc);
  if (!IsMapLoaded()) return;

  if (ReferenceMap) DrawAverageLine(dc, client, *ReferenceMap, Colors[ColorReferenceAverage]);
  if (!Map->DerivedAverage) DrawAverageLine(dc, client, *Map, Colors[ColorAverage]);
  if (ViewMode == 0) DrawAmplitude(pixels);
  if (ReferenceMap) {
    DrawCurve(dc, *ReferenceMap, Colors[ColorReferenceCurve], Colors[ColorReferenceCurve], false);
  }
}

void CFrqCtrl::DrawMap(HDC dc, const RECT& client) {
  // A derived average moves with each stroke, so it is drawn here and not in the layer.
  if (Map->DerivedAverage) DrawAverageLine(dc, client, *Map, Colors[ColorAverage]);
  DrawCurve(dc, *Map, Colors[ColorSuggested], Colors[ColorSuggestedSelected], true);
  DrawCurve(dc, *Map, Colors[ColorCurve], Colors[ColorCurveSelected], false);
}

// Each line comes before the row above it, which covers the upper half of a line of more than one pixel. Such a line
// has round ends, that reach out of the plot, and for their sake the pen draws all lines first.
void CFrqCtrl::DrawNoteRows(HDC dc, PixelBitmap& pixels) {
  const PixelRect& plot = Geometry.PlotRect;
  const double height = Geometry.RowHeight();
  const int thickness = std::max(1, static_cast<int>(Geometry.DpiScaleY));
  if (thickness > 1) {
    const Pen pen = SolidPen(thickness, Colors[ColorRowLine]);
    const SelectGuard selectPen(dc, pen.get());
    Geometry.WalkRows(plot.top, plot.bottom, [&](int, double y) {
      Line(dc, plot.left, static_cast<int>(y), plot.right, static_cast<int>(y));
      return true;
    });
  }
  GdiFlush();
  Geometry.WalkRows(plot.top, plot.bottom, [&](int note, double y) {
    const int bottom = static_cast<int>(y);
    const int top = std::max(static_cast<int>(y - height), plot.top);
    const int lineTop = bottom - thickness / 2;
    pixels.Fill({plot.left, lineTop, plot.right, lineTop + thickness}, Colors[ColorRowLine]);
    pixels.Fill({plot.left, top, plot.right, bottom},
                Colors[IsAccidental(note) ? ColorAccidentalRow : ColorNaturalRow]);
    return true;
  });
}

void CFrqCtrl::DrawMarkedColumns(PixelBitmap& pixels) {
  const PixelRect& plot = Geometry.PlotRect;
  const double width = Geometry.ColumnWidth();
  WalkFrames(Geometry, *Map, [&](const FrqFrame& frame, double x) {
    if (frame.Mark == 0) return;
    const int right = std::min(plot.right, static_cast<int>(x + width));
    pixels.Fill({static_cast<int>(x), plot.top, right, plot.bottom}, Colors[ColorMarked]);
  });
}

// The C of each octave, centred on its row; note 24 is C1.
void CFrqCtrl::DrawNoteLabels(HDC dc, const RECT& strip) {
  SetTextColor(dc, Colors[ColorText]);
  const double height = Geometry.RowHeight();
  const int textHeight = LabelSize(dc).cy;
  Geometry.WalkRows(strip.top, strip.bottom, [&](int note, double y) {
    if (note > kTopNote) return false;
    if (note % 12 != 0) return true;
    RECT rect = strip;
    rect.top = static_cast<int>((height - textHeight) * 0.5 + (y - height));
    const std::wstring label = L"C" + std::to_wstring((note - 12) / 12);
    DrawTextW(dc, label.c_str(), -1, &rect, DT_SINGLELINE);
    return true;
  });
}

void CFrqCtrl::DrawBarLines(HDC dc) {
  const PixelRect& plot = Geometry.PlotRect;
  const Pen pen = SolidPen(Geometry.DpiScaleX, Colors[ColorBarLine]);
  const SelectGuard selectPen(dc, pen.get());
  Geometry.WalkColumns([&](std::int64_t column, double x) {
    if (column % BarInterval == 0) Line(dc, static_cast<int>(x), plot.top, static_cast<int>(x), plot.bottom);
    return true;
  });
}

void CFrqCtrl::DrawAmplitude(PixelBitmap& pixels) {
  const PixelRect& plot = Geometry.PlotRect;
  const double barWidth = Geometry.ColumnWidth() * 8.0 / 10.0;
  const double scale = Geometry.RowHeight() / 1500.0;
  GdiFlush();
  WalkFrames(Geometry, *Map, [&](const FrqFrame& frame, double x) {
    const int right = std::min(plot.right, static_cast<int>(barWidth + x));
    const int top = ToPixel(plot.bottom - frame.Amplitude * scale);
    pixels.Fill({static_cast<int>(x), top, right, plot.bottom}, Colors[ColorAmplitude]);
  });
}

// The line crosses the label strip, where it can be taken hold of. AverageGrip follows the last line that was drawn,
// which is the map's own unless that has none.
void CFrqCtrl::DrawAverageLine(HDC dc, const RECT& rect, const FrqMap& map, COLORREF color) {
  const double average = map.ShownAverage();
  // 55 Hz in a file stands for no average; a derived one is a pitch at any height.
  if (!std::isfinite(average) || (!map.DerivedAverage && average == FrqNoPitch)) return;
  const Pen pen = Geometry.ThumbnailMode ? Pen(CreatePen(PS_DOT, 1, color)) : SolidPen(Geometry.DpiScaleY, color);
  const SelectGuard selectPen(dc, pen.get());
  const int y = Geometry.FrequencyToY(average, rect.bottom);
  Line(dc, rect.left, y, rect.right, y);
  const double reach = 3 * Geometry.DpiScaleY;
  AverageGrip = {rect.left, static_cast<int>(y - reach), Geometry.PlotRect.left, static_cast<int>(y + reach)};
}

void CFrqCtrl::DrawCaption(HDC dc, const RECT& client) {
  const std::wstring text = WindowText(Hwnd);
  RECT rect = client;
  InflateRect(&rect, -static_cast<int>(Geometry.DpiScaleX), -static_cast<int>(Geometry.DpiScaleY));
  SetBkMode(dc, Geometry.ThumbnailMode ? TRANSPARENT : OPAQUE);
  const bool blank = Geometry.ThumbnailMode && !IsMapLoaded();
  SetTextColor(dc, blank ? GetSysColor(COLOR_BTNTEXT) : Colors[ColorText]);
  DrawTextW(dc, text.c_str(), -1, &rect, DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}
