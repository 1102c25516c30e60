// CWindow, the root of the class tree: one virtual operation for each window message that anything here answers.
//
// A window's object is bound to its handle by a window property (controlbase.h, dialogbase.h, subclass.h tell how for
// the three sorts of window). An object is used on the thread of its window alone.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <atomic>

class CWindow {
 public:
  CWindow() = default;
  CWindow(const CWindow&) = delete;
  CWindow& operator=(const CWindow&) = delete;
  virtual ~CWindow() = default;

  // The bound window, null until then. Written once, by the window's own thread; other threads read it to send to it.
  std::atomic<HWND> Hwnd{nullptr};

  // The handlers, each named after its message. Coordinates, wheel deltas and scroll positions are signed. The result
  // is the window procedure's.
  virtual LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  virtual LRESULT Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  virtual LRESULT OnCreate(CREATESTRUCTW* create);
  virtual LRESULT OnDestroy();
  virtual LRESULT OnActivate(UINT state, HWND other, bool minimized);
  virtual LRESULT OnPaint();
  virtual LRESULT OnSize(WPARAM kind, int width, int height);
  virtual LRESULT OnSetFont(HFONT font, bool redraw);
  virtual LRESULT OnGetFont();
  virtual LRESULT OnHScroll(UINT code, int position, HWND scrollBar);
  virtual LRESULT OnVScroll(UINT code, int position, HWND scrollBar);
  virtual LRESULT OnGetMinMaxInfo(MINMAXINFO* info);
  virtual LRESULT OnCommand(WPARAM wParam, UINT code, HWND control);
  virtual LRESULT OnMouseMove(WPARAM keys, int x, int y);
  virtual LRESULT OnLButtonDown(WPARAM keys, int x, int y);
  virtual LRESULT OnLButtonUp(WPARAM keys, int x, int y);
  virtual LRESULT OnLButtonDblClk(WPARAM keys, int x, int y);
  virtual LRESULT OnRButtonDown(WPARAM keys, int x, int y);
  virtual LRESULT OnRButtonUp(WPARAM keys, int x, int y);
  virtual LRESULT OnMouseWheel(WPARAM keys, int x, int y, int delta);
  virtual LRESULT OnDropFiles(HDROP drop);
  virtual LRESULT OnCtlColorStatic(HWND control, HDC dc);
  virtual LRESULT OnSetFocus(HWND other);
  virtual LRESULT OnKillFocus(HWND other);
  virtual LRESULT OnEnterSizeMove();
  virtual LRESULT OnExitSizeMove();
  virtual LRESULT OnTimer(UINT_PTR timer, LPARAM lParam);
  virtual LRESULT OnNotify(WPARAM wParam, NMHDR* header);
  virtual LRESULT OnGetDlgCode();
  virtual LRESULT OnKeyDown(WPARAM key, UINT low, UINT high);
  virtual LRESULT OnKeyUp(WPARAM key, UINT low, UINT high);
  virtual LRESULT OnChar(WPARAM character, UINT low, UINT high);
  virtual LRESULT OnContextMenu(HWND window, int x, int y);
  // Spare slots for a message to come; nothing calls them.
  virtual LRESULT OnSpareFirst(WPARAM wParam, LPARAM lParam, LRESULT result);
  virtual LRESULT OnSpareSecond(WPARAM wParam, LPARAM lParam, LRESULT result);

 protected:
  HFONT Font = nullptr;     // the last one that OnSetFont was given; not owned
  int LeftButtonDown = 0;   // 1 between press and release
  int RightButtonDown = 0;  // 1 between press and release
  int MouseX = 0;           // of the last move or left press, client coordinates
  int MouseY = 0;
  bool InSizeMove = false;  // the user is moving or sizing the window
};
