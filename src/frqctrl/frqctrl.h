// CFrqCtrl, the frequency table control: a pitch curve over a table whose rows are semitones and whose columns are the
// frames of a map, over note rows or over the spectrum of the recording.
//
// The picture has two levels. What rarely changes is in the layer, a bitmap that is kept until it is dropped; the curve
// of the map is drawn on top at every paint, so that a stroke of the mouse costs one copy and one curve.
// Runs on the thread of its dialog. The maps are not owned, not locked, and read while painting; the mouse writes into
// the one that is edited.
//
// Sources: frqctrl.cpp is messages and state, _children the button, label and trackbar over the plot, _mouse drawing
// and selecting, _scroll scroll bars and wheel, _thumbnail the control as a thumbnail, _painting the layer and its
// steps, _curve the curve, _spectrum the picture of the recording.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string>

#include "base/handle.h"
#include "frqctrl/frqctrlmessages.h"
#include "frqctrl/geometry.h"
#include "frqctrl/palette.h"
#include "frqctrl/pixelbitmap.h"
#include "frqctrl/spectrumbands.h"
#include "frqmap/frqmap.h"
#include "window/controlbase.h"

class LayerEvictionList;

// Dots per inch of the screen / 96.
struct ScreenScale {
  double X = 1.0;
  double Y = 1.0;
};
ScreenScale CurrentScreenScale();

// Size of a thumbnail's window with a whole map in it, in pixels, with or without scroll bars.
PixelSize ThumbnailWindowSize(SampleCount frameCount, DWORD style, DWORD exStyle, bool hasHBar, bool hasVBar);

class CFrqCtrl : public CCtrlBase {
 public:
  CFrqCtrl();

  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnCreate(CREATESTRUCTW* create) override;
  LRESULT OnDestroy() override;
  LRESULT OnSize(WPARAM kind, int width, int height) override;
  LRESULT OnHScroll(UINT code, int position, HWND scrollBar) override;
  LRESULT OnVScroll(UINT code, int position, HWND scrollBar) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  LRESULT OnMouseMove(WPARAM keys, int x, int y) override;
  LRESULT OnLButtonDown(WPARAM keys, int x, int y) override;
  LRESULT OnLButtonUp(WPARAM keys, int x, int y) override;
  LRESULT OnLButtonDblClk(WPARAM keys, int x, int y) override;
  LRESULT OnRButtonDown(WPARAM keys, int x, int y) override;
  LRESULT OnRButtonUp(WPARAM keys, int x, int y) override;
  LRESULT OnMouseWheel(WPARAM keys, int x, int y, int delta) override;
  LRESULT OnCtlColorStatic(HWND control, HDC dc) override;
  LRESULT OnTimer(UINT_PTR timer, LPARAM lParam) override;

  bool Draw(HDC dc, const RECT& client) override;
  const wchar_t* GetWindowClassName() const override;
  const wchar_t* GetCursorName() const override;
  UINT GetClassStyle(UINT defaultStyle) const override;
  void OnClassRegistered() const override;

 private:
  enum DragMode { DragNone, DragDraw, DragAverage, DragSelect, DragErase };

  // Columns between two vertical lines, whatever the map's hop; also the page of the horizontal scroll bar.
  static constexpr int BarInterval = 17;
  static constexpr UINT_PTR kCursorTimer = 100;
  static constexpr int kBrightest = -3;  // of Brightness
  static constexpr int kDarkest = 3;

  static Menu MakeColorMenu();

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
  LRESULT SetThumbnail(bool on);
  LRESULT SetAutoSize(bool on);
  LRESULT SetLayerList(LayerEvictionList* list);
  LRESULT OnToggleBrightness();
  LRESULT OnColorMenu();

  bool IsMapLoaded() const { return Map && Map->Loaded; }
  // Frames of the map, 0 without one.
  SampleCount ColumnCount() const;
  // Columns that the scroll bar reaches: those of the map, or, where there is none, of the spectrum that is shown.
  SampleCount ScrollableColumns();
  // Fills Spectrum if it is empty. -1 if the wave cannot be read; 0 otherwise, also where it has no spectrum.
  int EnsureSpectrum();
  void ForgetSpectrum();
  // Samples of a column of the spectrum.
  double ColumnHop() const;
  void FitToMap();
  LRESULT SendToTrackbar(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
  void ShowChild(int id, bool shown) const;
  void OnTrackbarMoved();

  // A drag, from its press to its release.
  void BeginLeftDrag(int x, int y);
  void BeginDrag(DragMode mode);
  void FollowDrag(int x, int y);
  void EndDrag();
  void SetFrameFrequency(SampleCount column, bool repaint, double frequency);
  void DrawStroke(int x0, int y0, int x1, int y1, bool erase);
  void SetAverage(int y);
  void ExtendSelection(int x);
  void SelectColumns(SampleCount first, SampleCount last);
  void ShowSelectionChange();
  void EnsureColumnVisible(SampleCount column);
  void TellThumbnailClick(int pressed);
  double FrequencyAtY(int y) const;
  void UpdateCursor();
  HCURSOR CursorAt(POINT screen) const;

  void SetUpScrollBars(SampleCount columns);
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
  void DrawLayer(HDC dc, PixelBitmap& pixels, const RECT& client);
  void DrawMap(HDC dc, const RECT& client);

  // The drawing steps, from the bottom of the picture to its top. They draw into the plot unless they are given another
  // rectangle.
  COLORREF GroundColor() const;
  void DrawNoteRows(HDC dc, PixelBitmap& pixels);
  void DrawMarkedColumns(PixelBitmap& pixels);
  void DrawNoteLabels(HDC dc, const RECT& strip);
  void DrawSpectrum(PixelBitmap& pixels);
  void DrawBarLines(HDC dc);
  void DrawAmplitude(PixelBitmap& pixels);
  void DrawAverageLine(HDC dc, const RECT& rect, const FrqMap& map, COLORREF color);
  void DrawCurve(HDC dc, const FrqMap& map, COLORREF color, COLORREF selectedColor, bool suggested);
  void DrawCaption(HDC dc, const RECT& client);

  FrqMap* Map = nullptr;                 // shown and edited
  const FrqMap* ReferenceMap = nullptr;  // last saved state, shown behind it
  StrokeLimits Limits;
  TablePalette Colors;
  bool ReadOnly = false;  // no edit by the left button
  TableGeometry Geometry;
  RECT AverageGrip{};                  // where the average line can be taken hold of
  FrqType MapKind = FrqTypeUnknown;    // the kind that the editor works in
  int Brightness = 0;                  // -3 to 3, a smaller value is brighter
  int ColorTable = 0;                  // 0 to 5
  std::wstring WavePath;               // the wave of the spectrum
  SpectrumTable Spectrum;              // of that wave, empty until it is needed
  std::uint32_t SampleRate = 0;        // [Hz] of that wave, 0 until it was read
  std::optional<SpectrumSteps> Steps;  // of Spectrum
  bool Analyzing = false;
  int ViewMode = 0;       // 0 grid, 1 spectrum
  bool AutoSize = false;  // the window takes the size of the map
  DragMode Drag = DragNone;
  bool Captured = false;                   // the mouse, for a drag
  SampleCount SelectAnchor = -1;           // column where a drag of the selection began
  MemoryDc LayerDC;                        // null: the next paint builds the layer
  PixelBitmap LayerBitmap;                 // selected into LayerDC only while in use
  LayerEvictionList* LayerList = nullptr;  // of the thumbnails; not owned
  Menu ColorMenu;
};
