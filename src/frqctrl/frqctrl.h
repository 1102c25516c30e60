// CFrqCtrl, the frequency table control: a pitch curve over a table whose rows are semitones and whose columns are the
// frames of a map, over note rows or over the spectrum of the recording.
//
// The window holds the parts and translates its messages for them. Each part has a header and a source of its own:
//   tablemodel     what is shown, and all its arithmetic      wavespectrum   the analysis of the recording
//   tablepainter   how it is drawn                            tablelayer     the lower level of the picture
//   tablemouse     what the mouse does                        tableviewport  scroll bars, wheel and zoom
//   tablechildren  button, label, trackbar and menu           tabletip       what is told of the place under the mouse
//   tablekeys      the selection by keys                      tableruler     the line at the mouse
//   tablepitches   what the recording offers to the pencil
// The parts reach the window by TableHost only.
//
// Runs on the thread of its dialog. The maps are not owned. All writes to the one that is edited go through MapEditing,
// and its lock is held over each reading of more than one call: a paint, above all.
#pragma once

#include <windows.h>

#include <cstddef>

#include "frqctrl/frqctrlmessages.h"
#include "frqctrl/tablechildren.h"
#include "frqctrl/tablehost.h"
#include "frqctrl/tablekeys.h"
#include "frqctrl/tablelayer.h"
#include "frqctrl/tablemodel.h"
#include "frqctrl/tablemouse.h"
#include "frqctrl/tablepainter.h"
#include "frqctrl/tablepitches.h"
#include "frqctrl/tableruler.h"
#include "frqctrl/tablesize.h"
#include "frqctrl/tabletip.h"
#include "frqctrl/tableviewport.h"
#include "frqctrl/wavespectrum.h"
#include "frqmap/mapediting.h"
#include "window/controlbase.h"

class CFrqCtrl : public CCtrlBase, private TableHost {
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
  LRESULT OnKeyDown(WPARAM key, UINT low, UINT high) override;
  LRESULT OnTimer(UINT_PTR timer, LPARAM lParam) override;

  bool Draw(HDC dc, const RECT& client) override;
  const wchar_t* GetWindowClassName() const override;
  const wchar_t* GetCursorName() const override;
  UINT GetClassStyle(UINT defaultStyle) const override;
  void OnClassRegistered() const override;

 private:
  HWND Window() const override { return Hwnd; }
  MapEditing& Editing() override { return *currentEditing_; }
  void Repaint() override { Refresh(); }
  void Rebuild() override;
  void Notify(FrqCtrlNotification code, LPARAM lParam) override;

  friend void FrqCtrlSender::SetEditing(MapEditing* editing) const;
  void SetEditing(MapEditing* editing);
  friend void FrqCtrlSender::SetPitches(WavePitches* pitches) const;

  // The answers to private messages that no part gives by itself.
  void SetMaps(const FrqMap* reference, FrqMap* map);
  void SetSelection(const int* frames, std::size_t count);
  LRESULT SetViewMode(int mode);
  void SetBrightness(int brightness);
  void SetColorTable(int table);
  void SetThumbnail(bool on);
  void SetAutoSize(bool on);

  void PrintInto(HDC dc);
  void OnCaptureChanged(HWND owner);
  void TellThumbnailClick(int pressed);
  // The columns that the scroll bar reaches, those of the spectrum among them.
  SampleCount ScrollableColumns();
  void DropLayer();

  DirectEditing ownEditing_;
  MapEditing* currentEditing_ = &ownEditing_;
  TableModel model_;
  WaveSpectrum spectrum_;
  TablePainter painter_{model_, spectrum_};
  TableLayer layer_;
  TableViewport viewport_{model_, *this};
  TablePitches pitches_{model_, *this};
  TableMouse mouse_{model_, viewport_, pitches_, *this};
  TableChildren children_;
  TableTip tip_;
  TableRuler ruler_{model_};
  TableKeys keys_{model_, viewport_, *this};
};
