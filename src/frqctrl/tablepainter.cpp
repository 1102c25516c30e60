#include "frqctrl/tablepainter.h"

#include <algorithm>
#include <cmath>

#include "base/notename.h"
#include "frqctrl/curvepainting.h"
#include "frqctrl/drawing.h"
#include "frqctrl/spectrumpicture.h"
#include "frqctrl/tablereading.h"

namespace {

// The width of the label strip and the height of a label, in the font that is selected.
SIZE LabelSize(HDC dc) {
  SIZE size{};
  GetTextExtentPoint32W(dc, L"C0", 2, &size);
  return size;
}

COLORREF MiddleOf(COLORREF one, COLORREF other) {
  return RGB((GetRValue(one) + GetRValue(other)) / 2, (GetGValue(one) + GetGValue(other)) / 2,
             (GetBValue(one) + GetBValue(other)) / 2);
}

bool IsAccidental(int note) {
  const int step = note % 12;
  return step == 1 || step == 3 || step == 6 || step == 8 || step == 10;
}

}  // namespace

TablePainter::TablePainter(TableModel& model, WaveSpectrum& spectrum)
    : model_(model), spectrum_(spectrum), colors_(PaletteFor(IsHighContrast())) {}

void TablePainter::LayOut(HDC dc, const RECT& client) {
  const int stripWidth = model_.Geometry.ThumbnailMode ? 0 : LabelSize(dc).cx;
  model_.Geometry.PlotRect = {client.left + stripWidth, client.top, client.right, client.bottom};
}

// A thumbnail tells by its ground what the user should look at: no map, or one without an average or with marks.
COLORREF TablePainter::GroundColor() const {
  if (!model_.Geometry.ThumbnailMode) return colors_[ColorBackground];
  if (!model_.IsMapLoaded()) return GetSysColor(COLOR_3DFACE);
  return model_.Map->Average == FrqNoPitch || model_.Map->HasMarks ? colors_[ColorMarked] : colors_[ColorBackground];
}

void TablePainter::DrawLayer(HDC dc, PixelBitmap& pixels, const RECT& client) {
  Fill(dc, SolidBrush(GroundColor()), client);
  if (model_.Geometry.ThumbnailMode) {
    if (model_.IsMapLoaded()) DrawAverageLine(dc, client, *model_.Map, ColorAverage);
    return;
  }
  if (model_.ViewMode == 0) {
    DrawNoteRows(dc, pixels);
    if (model_.IsMapLoaded() && model_.Map->HasMarks) DrawMarkedColumns(pixels);
  }
  // The labels are drawn by the system, over what is written by hand.
  DrawNoteLabels(dc, {client.left, client.top, model_.Geometry.PlotRect.left, client.bottom});
  if (model_.ShowsSpectrum()) DrawSpectrum(pixels);
  DrawBarLines(dc);
  if (model_.IsMapLoaded()) DrawLoadedMap(dc, pixels, client);
}

void TablePainter::DrawLoadedMap(HDC dc, PixelBitmap& pixels, const RECT& client) {
  const FrqMap* const reference = model_.ReferenceMap;
  if (reference) DrawAverageLine(dc, client, *reference, ColorReferenceAverage);
  if (!model_.Map->DerivedAverage) DrawAverageLine(dc, client, *model_.Map, ColorAverage);
  if (model_.ViewMode == 0) DrawAmplitude(pixels);
  if (!reference) return;
  const CurveColors colors = {colors_[ColorReferenceCurve], colors_[ColorReferenceCurve], colors_[ColorUnvoiced]};
  DrawCurve(dc, model_.Geometry, *reference, CurveOf::Frequencies, colors);
}

void TablePainter::DrawMap(HDC dc, const RECT& client) {
  if (!model_.IsMapLoaded()) return;
  const FrqMap& map = *model_.Map;
  // A derived average moves with each stroke, so it is drawn here and not in the layer.
  if (map.DerivedAverage) DrawAverageLine(dc, client, map, ColorAverage);
  const COLORREF unvoiced = colors_[ColorUnvoiced];
  DrawCurve(dc, model_.Geometry, map, CurveOf::Suggestions,
            {colors_[ColorSuggested], colors_[ColorSuggestedSelected], unvoiced});
  DrawCurve(dc, model_.Geometry, map, CurveOf::Frequencies,
            {colors_[ColorCurve], colors_[ColorCurveSelected], unvoiced});
}

// Each line comes before the row above it, which covers the upper half of a line of more than one pixel. Such a line
// has round ends, that reach out of the plot, and for their sake the pen draws all lines first.
void TablePainter::DrawNoteRows(HDC dc, PixelBitmap& pixels) const {
  const PixelRect& plot = model_.Geometry.PlotRect;
  const double height = model_.Geometry.RowHeight();
  const int thickness = std::max(1, static_cast<int>(model_.Geometry.DpiScaleY));
  if (thickness > 1) {
    const Pen pen = SolidPen(thickness, colors_[ColorRowLine]);
    const SelectGuard selectPen(dc, pen.get());
    model_.Geometry.WalkRows(plot.top, plot.bottom, [&](int, double y) {
      Line(dc, plot.left, static_cast<int>(y), plot.right, static_cast<int>(y));
      return true;
    });
  }
  GdiFlush();
  model_.Geometry.WalkRows(plot.top, plot.bottom, [&](int note, double y) {
    const int bottom = static_cast<int>(y);
    const int top = std::max(static_cast<int>(y - height), plot.top);
    const int lineTop = bottom - thickness / 2;
    pixels.Fill({plot.left, lineTop, plot.right, lineTop + thickness}, colors_[ColorRowLine]);
    pixels.Fill({plot.left, top, plot.right, bottom},
                colors_[IsAccidental(note) ? ColorAccidentalRow : ColorNaturalRow]);
    return true;
  });
}

void TablePainter::DrawMarkedColumns(PixelBitmap& pixels) const {
  const PixelRect& plot = model_.Geometry.PlotRect;
  const double width = model_.Geometry.ColumnWidth();
  WalkFrames(model_.Geometry, *model_.Map, [&](const FrqFrame& frame, double x) {
    if (frame.Mark == 0) return;
    const int right = std::min(plot.right, static_cast<int>(x + width));
    pixels.Fill({static_cast<int>(x), plot.top, right, plot.bottom}, colors_[ColorMarked]);
  });
}

// The C of each octave, centred on its row; note 24 is C1.
void TablePainter::DrawNoteLabels(HDC dc, const RECT& strip) const {
  SetTextColor(dc, colors_[ColorText]);
  const double height = model_.Geometry.RowHeight();
  const int textHeight = LabelSize(dc).cy;
  model_.Geometry.WalkRows(strip.top, strip.bottom, [&](int note, double y) {
    if (note > kTopNote) return false;
    if (note % 12 != 0) return true;
    RECT rect = strip;
    rect.top = static_cast<int>((height - textHeight) * 0.5 + (y - height));
    const std::wstring label = L"C" + std::to_wstring((note - 12) / 12);
    DrawTextW(dc, label.c_str(), -1, &rect, DT_SINGLELINE);
    return true;
  });
}

void TablePainter::DrawBarLines(HDC dc) const {
  const PixelRect& plot = model_.Geometry.PlotRect;
  const Pen pen = SolidPen(model_.Geometry.DpiScaleX, colors_[ColorBarLine]);
  const SelectGuard selectPen(dc, pen.get());
  model_.Geometry.WalkColumns([&](std::int64_t column, double x) {
    if (column % TableModel::BarInterval == 0)
      Line(dc, static_cast<int>(x), plot.top, static_cast<int>(x), plot.bottom);
    return true;
  });
}

void TablePainter::DrawAmplitude(PixelBitmap& pixels) const {
  const PixelRect& plot = model_.Geometry.PlotRect;
  const double barWidth = model_.Geometry.ColumnWidth() * 8.0 / 10.0;
  const double scale = model_.Geometry.RowHeight() / 1500.0;
  const COLORREF paler = MiddleOf(colors_[ColorAmplitude], colors_[ColorBackground]);
  GdiFlush();
  WalkFrames(model_.Geometry, *model_.Map, [&](const FrqFrame& frame, double x) {
    const int right = std::min(plot.right, static_cast<int>(barWidth + x));
    const int top = ToPixel(plot.bottom - frame.Amplitude * scale);
    const bool isInTheWay = model_.FollowsCurve && frame.Frequency > FrqNoPitch &&
                            model_.Geometry.FrequencyToY(frame.Frequency, plot.bottom) >= top;
    pixels.Fill({static_cast<int>(x), top, right, plot.bottom}, isInTheWay ? paler : colors_[ColorAmplitude]);
  });
}

void TablePainter::DrawSpectrum(PixelBitmap& pixels) {
  const PixelRect& plot = model_.Geometry.PlotRect;
  const SpectrumPalette colors = SpectrumColors(model_.ColorTable, IsHighContrast());
  GdiFlush();
  pixels.Fill({plot.left, plot.top, plot.right, plot.bottom}, colors[0]);
  if (plot.left >= plot.right || spectrum_.EntryCount() == 0) return;
  DrawSpectrumCells(pixels, model_.Geometry,
                    {spectrum_.Steps(), spectrum_.EntryCount(), model_.ColumnHop(), model_.Brightness, colors});
}

// The line crosses the label strip, where it can be taken hold of. The grip follows the last line that was drawn, which
// is the map's own unless that has none.
void TablePainter::DrawAverageLine(HDC dc, const RECT& rect, const FrqMap& map, TableColor color) {
  const double average = map.ShownAverage();
  // 55 Hz in a file stands for no average; a derived one is a pitch at any height.
  if (!std::isfinite(average) || (!map.DerivedAverage && average == FrqNoPitch)) return;
  const TableGeometry& geometry = model_.Geometry;
  const Pen pen =
      geometry.ThumbnailMode ? Pen(CreatePen(PS_DOT, 1, colors_[color])) : SolidPen(geometry.DpiScaleY, colors_[color]);
  const SelectGuard selectPen(dc, pen.get());
  const int y = geometry.FrequencyToY(average, rect.bottom);
  Line(dc, rect.left, y, rect.right, y);
  model_.HoldKeyLineAt(rect.left, y);
}

void TablePainter::DrawPointers(HDC dc) const {
  const TableGeometry& geometry = model_.Geometry;
  const PixelRect& plot = geometry.PlotRect;
  if (model_.CaretColumn >= 0) {
    const int left = ToPixel(plot.left + (model_.CaretColumn - geometry.ScrollColumn) * geometry.ColumnWidth());
    const RECT column{left - 1, plot.top, left + std::max(2, static_cast<int>(geometry.ColumnWidth())) + 1,
                      plot.bottom};
    SetTextColor(dc, RGB(0, 0, 0));
    SetBkColor(dc, RGB(255, 255, 255));
    if (column.left >= plot.left - 1) DrawFocusRect(dc, &column);
  }
  if (model_.RulerY >= 0) DrawRuler(dc);
}

// The ruler's label keeps clear of the line: above it or, where there is no room, below.
void TablePainter::DrawRuler(HDC dc) const {
  const PixelRect& plot = model_.Geometry.PlotRect;
  SetBkColor(dc, colors_[ColorBackground]);
  SetBkMode(dc, OPAQUE);
  SetTextColor(dc, colors_[ColorText]);
  {
    const Pen pen(CreatePen(PS_DOT, 1, colors_[ColorText]));
    const SelectGuard selectPen(dc, pen.get());
    Line(dc, plot.left, model_.RulerY, plot.right, model_.RulerY);
  }
  const auto pitch = ReadPitch(model_.FrequencyAtY(model_.RulerY));
  const std::wstring name = pitch ? NoteNameFromNumber(pitch->Note) : std::wstring();
  if (name.empty()) return;
  const int height = LabelSize(dc).cy;
  const int top = model_.RulerY - height - 1 >= plot.top ? model_.RulerY - height - 1 : model_.RulerY + 2;
  RECT place{plot.left + 2, top, plot.right, top + height};
  DrawTextW(dc, name.c_str(), -1, &place, DT_SINGLELINE | DT_NOPREFIX | DT_RIGHT);
}

void TablePainter::DrawCaption(HDC dc, const RECT& client, const std::wstring& text) const {
  const TableGeometry& geometry = model_.Geometry;
  RECT rect = client;
  InflateRect(&rect, -static_cast<int>(geometry.DpiScaleX), -static_cast<int>(geometry.DpiScaleY));
  SetBkMode(dc, geometry.ThumbnailMode ? TRANSPARENT : OPAQUE);
  const bool blank = geometry.ThumbnailMode && !model_.IsMapLoaded();
  SetTextColor(dc, blank ? GetSysColor(COLOR_BTNTEXT) : colors_[ColorText]);
  DrawTextW(dc, text.c_str(), -1, &rect, DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}
