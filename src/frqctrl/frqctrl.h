// CFrqCtrl, the frequency table control: a pitch curve over a table whose rows are semitones and whose columns are the
// frames of a map.
//
// The picture has two levels. What rarely changes is in the layer, a bitmap that is kept until it is dropped; the curve
// of the map is drawn on top at every paint, so that a stroke of the mouse costs one copy and one curve.
// Runs on the thread of its dialog. The maps are not owned, not locked, and read while painting.
#pragma once

#include <windows.h>

#include <span>
#include <string>

#include "base/handle.h"
#include "frqctrl/frqctrlmessages.h"
#include "frqctrl/geometry.h"
#include "frqctrl/palette.h"
#include "frqmap/frqmap.h"
#include "window/controlbase.h"

class CFrqCtrl : public CCtrlBase {
 public:
  CFrqCtrl();

  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnSize(WPARAM kind, int width, int height) override;
  LRESULT OnHScroll(UINT code, int position, HWND scrollBar) override;
  LRESULT OnVScroll(UINT code, int position, HWND scrollBar) override;
  LRESULT OnMouseWheel(WPARAM keys, int x, int y, int delta) override;

  bool Draw(HDC dc, const RECT& client) override;
  const wchar_t* GetWindowClassName() const override;
  UINT GetClassStyle(UINT defaultStyle) const override;

 private:
  // Columns between two vertical lines, whatever the map's hop; also the page of the horizontal scroll bar.
  static constexpr int BarInterval = 17;

  // What the private messages ask for.
  LRESULT SetLimits(const double* upper, const double* lower);
  LRESULT OnDropLayer();
  LRESULT SetMaps(const FrqMap* reference, FrqMap* map);
  LRESULT SetSelection(std::span<const int> frames);
  LRESULT StepZoom(bool down);
  LRESULT SetZoom(int zoom);
  LRESULT SetReadOnly(bool readOnly);
  LRESULT SetScrollColumn(SampleCount column);
  LRESULT SetWavePath(const wchar_t* path);
  LRESULT SetKind(FrqType kind);
  LRESULT SetViewMode(int mode);
  LRESULT SetBrightness(int brightness);
  LRESULT SetColorTable(int table);

  // Frames of the map, 0 without one.
  SampleCount ColumnCount() const;
  void SetUpScrollBars();
  void SetScrollPosition(int bar, int position);
  void ScrollByWheel(WPARAM keys, int delta);
  void ScrollColumnsByWheel(int delta);
  void ScrollNotesByWheel(int delta);
  void Notify(FrqCtrlNotification code, LPARAM lParam);

  // For a change of what the layer shows: drops it and repaints at once.
  void RebuildNow();
  void DropLayer();
  bool BuildLayer(HDC dc, const RECT& client);

  // The two levels of the picture.
  void DrawLayer(HDC dc, const RECT& client);
  void DrawMap(HDC dc, const RECT& client);

  // The drawing steps, from the bottom of the picture to its top. They draw into the plot unless they are given another
  // rectangle.
  void DrawNoteRows(HDC dc);
  void DrawMarkedColumns(HDC dc);
  void DrawNoteLabels(HDC dc, const RECT& strip);
  void DrawBarLines(HDC dc);
  void DrawAmplitude(HDC dc);
  void DrawAverageLine(HDC dc, const RECT& rect, const FrqMap& map, COLORREF color);
  void DrawCurve(HDC dc, const FrqMap& map, COLORREF color, COLORREF selectedColor, bool suggested);
  void DrawCaption(HDC dc, const RECT& client);

  FrqMap* Map = nullptr;                 // shown and edited
  const FrqMap* ReferenceMap = nullptr;  // last saved state, shown behind it
  StrokeLimits Limits;
  TablePalette Colors;
  bool ReadOnly = false;  // no edit by the left button
  TableGeometry Geometry;
  RECT AverageGrip{};                // where the average line can be taken hold of
  FrqType MapKind = FrqTypeUnknown;  // the kind that the editor works in
  int Brightness = 0;                // -3 to 3, a smaller value is brighter
  int ColorTable = 0;                // 0 to 5
  std::wstring WavePath;             // the wave of the spectrum
  int ViewMode = 0;                  // 0 grid, 1 spectrum
  MemoryDc LayerDC;                  // null: the next paint builds the layer
  Bitmap LayerBitmap;                // of the client size then, selected into LayerDC only while in use
};
