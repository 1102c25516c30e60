// CFrqCtrl: the layer, and the steps that draw into it. The curve has a source of its own.
#include "frqctrl/frqctrl.h"

#include <algorithm>
#include <string>
#include <utility>

#include "frqctrl/drawing.h"

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
  const int stripWidth = LabelSize(dc).cx;
  Geometry.PlotRect = {client.left + stripWidth, client.top, client.right, client.bottom};
  if (!LayerDC && !BuildLayer(dc, client)) return false;
  {
    const SelectGuard selectBitmap(LayerDC.get(), LayerBitmap.get());
    BitBlt(dc, 0, 0, client.right - client.left, client.bottom - client.top, LayerDC.get(), 0, 0, SRCCOPY);
  }
  if (Map) DrawMap(dc, client);
  DrawCaption(dc, client);
  return true;
}

void CFrqCtrl::DropLayer() {
  LayerBitmap.reset();
  LayerDC.reset();
}

bool CFrqCtrl::BuildLayer(HDC dc, const RECT& client) {
  MemoryDc layer(CreateCompatibleDC(dc));
  Bitmap bitmap(CreateCompatibleBitmap(dc, client.right - client.left, client.bottom - client.top));
  if (!layer || !bitmap) return false;
  {
    const SelectGuard selectBitmap(layer.get(), bitmap.get());
    const SelectGuard selectFont(layer.get(), GetCurrentObject(dc, OBJ_FONT));
    DrawLayer(layer.get(), client);
  }
  LayerDC = std::move(layer);
  LayerBitmap = std::move(bitmap);
  return true;
}

void CFrqCtrl::DrawLayer(HDC dc, const RECT& client) {
  Fill(dc, SolidBrush(Colors[ColorBackground]), client);
  // The spectrum view stands on the note rows as well.
  DrawNoteRows(dc);
  if (Map && Map->HasMarks && ViewMode == 0) DrawMarkedColumns(dc);
  DrawNoteLabels(dc, {client.left, client.top, Geometry.PlotRect.left, client.bottom});
  DrawBarLines(dc);
  if (!Map || !Map->Loaded) return;

  if (ReferenceMap) DrawAverageLine(dc, client, *ReferenceMap, Colors[ColorReferenceAverage]);
  if (!Map->DerivedAverage) DrawAverageLine(dc, client, *Map, Colors[ColorAverage]);
  if (ViewMode == 0) DrawAmplitude(dc);
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

// Each line comes before the row above it, which covers the upper half of a line of more than one pixel.
void CFrqCtrl::DrawNoteRows(HDC dc) {
  const PixelRect& plot = Geometry.PlotRect;
  const Pen pen = SolidPen(Geometry.DpiScaleY, Colors[ColorRowLine]);
  const Brush natural = SolidBrush(Colors[ColorNaturalRow]);
  const Brush accidental = SolidBrush(Colors[ColorAccidentalRow]);
  const SelectGuard selectPen(dc, pen.get());
  const double height = Geometry.RowHeight();
  Geometry.WalkRows(plot.top, plot.bottom, [&](int note, double y) {
    const int bottom = static_cast<int>(y);
    const int top = std::max(static_cast<int>(y - height), plot.top);
    Line(dc, plot.left, bottom, plot.right, bottom);
    Fill(dc, IsAccidental(note) ? accidental : natural, {plot.left, top, plot.right, bottom});
    return true;
  });
}

void CFrqCtrl::DrawMarkedColumns(HDC dc) {
  const PixelRect& plot = Geometry.PlotRect;
  const Brush brush = SolidBrush(Colors[ColorMarked]);
  const double width = Geometry.ColumnWidth();
  WalkFrames(Geometry, *Map, [&](const FrqFrame& frame, double x) {
    if (frame.Mark == 0) return;
    const int right = std::min(plot.right, static_cast<int>(x + width));
    Fill(dc, brush, {static_cast<int>(x), plot.top, right, plot.bottom});
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

void CFrqCtrl::DrawAmplitude(HDC dc) {
  const PixelRect& plot = Geometry.PlotRect;
  const Brush brush = SolidBrush(Colors[ColorAmplitude]);
  const double barWidth = Geometry.ColumnWidth() * 8.0 / 10.0;
  const double scale = Geometry.RowHeight() / 1500.0;
  WalkFrames(Geometry, *Map, [&](const FrqFrame& frame, double x) {
    const int right = std::min(plot.right, static_cast<int>(barWidth + x));
    Fill(dc, brush, {static_cast<int>(x), ToPixel(plot.bottom - frame.Amplitude * scale), right, plot.bottom});
  });
}

// The line crosses the label strip, where it can be taken hold of. AverageGrip follows the last line that was drawn,
// which is the map's own unless that has none.
void CFrqCtrl::DrawAverageLine(HDC dc, const RECT& rect, const FrqMap& map, COLORREF color) {
  const double average = map.ShownAverage();
  // 55 Hz in a file stands for no average; a derived one is a pitch at any height.
  if (!map.DerivedAverage && average == FrqNoPitch) return;
  const Pen pen = SolidPen(Geometry.DpiScaleY, color);
  const SelectGuard selectPen(dc, pen.get());
  const int y = Geometry.FrequencyToY(average, rect.bottom);
  Line(dc, rect.left, y, rect.right, y);
  const double reach = 3 * Geometry.DpiScaleY;
  AverageGrip = {rect.left, static_cast<int>(y - reach), Geometry.PlotRect.left, static_cast<int>(y + reach)};
}

void CFrqCtrl::DrawCaption(HDC dc, const RECT& client) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Hwnd)) + 1, L'\0');
  GetWindowTextW(Hwnd, text.data(), static_cast<int>(text.size()));
  RECT rect = client;
  InflateRect(&rect, -static_cast<int>(Geometry.DpiScaleX), -static_cast<int>(Geometry.DpiScaleY));
  SetBkMode(dc, OPAQUE);
  SetTextColor(dc, Colors[ColorText]);
  DrawTextW(dc, text.c_str(), -1, &rect, DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}
