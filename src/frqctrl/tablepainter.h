// TablePainter: draws what the model tells, in the two levels of the table's picture. Things that rarely change go into
// the layer (DrawLayer); the map itself is drawn on top at every paint (DrawMap, DrawCaption).
//
// A step that is to be seen is a function here, called where it lies between the others. The curve and the cells of the
// spectrum, which are longer than that, have sources of their own. Maps are read without a lock: the caller holds it.
#pragma once

#include <windows.h>

#include <string>

#include "frqctrl/palette.h"
#include "frqctrl/pixelbitmap.h"
#include "frqctrl/tablemodel.h"
#include "frqctrl/wavespectrum.h"

class TablePainter {
 public:
  // The picture is laid out in the model as it is drawn: where the plot is, and the grip of the average line.
  TablePainter(TableModel& model, WaveSpectrum& spectrum);

  // Parts the client area into label strip and plot, by the font of `dc`.
  void LayOut(HDC dc, const RECT& client);

  void DrawLayer(HDC dc, PixelBitmap& pixels, const RECT& client);
  void DrawMap(HDC dc, const RECT& client);
  // Draws the caret of the keys, and the ruler at the mouse.
  void DrawPointers(HDC dc) const;
  void DrawCaption(HDC dc, const RECT& client, const std::wstring& text) const;

 private:
  // The drawing steps, from the bottom of the picture to its top. They draw into the plot unless they are given another
  // rectangle.
  COLORREF GroundColor() const;
  void DrawNoteRows(HDC dc, PixelBitmap& pixels) const;
  void DrawMarkedColumns(PixelBitmap& pixels) const;
  void DrawNoteLabels(HDC dc, const RECT& strip) const;
  void DrawSpectrum(PixelBitmap& pixels);
  void DrawBarLines(HDC dc) const;
  void DrawLoadedMap(HDC dc, PixelBitmap& pixels, const RECT& client);
  void DrawAmplitude(PixelBitmap& pixels) const;
  void DrawRuler(HDC dc) const;
  void DrawAverageLine(HDC dc, const RECT& rect, const FrqMap& map, TableColor color);

  TableModel& model_;
  WaveSpectrum& spectrum_;
  const TablePalette colors_;
};
