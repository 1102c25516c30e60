// The sizes of the editor window and the scrolling in it.
#include <windows.h>
#include <commctrl.h>

#include <string>

#include "app/editordlg.h"
#include "resources/ids.h"

namespace {

RECT ItemRect(HWND dialog, int id) {
  RECT rect{};
  GetWindowRect(GetDlgItem(dialog, id), &rect);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

// What a control showed is not carried along: the window erases the ground under its new place afterwards.
void PlaceItem(HWND dialog, int id, const RECT& rect) {
  SetWindowPos(GetDlgItem(dialog, id), nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

}  // namespace

void CEditorDlg::RememberLayout() {
  RECT window{};
  GetWindowRect(Hwnd, &window);
  MinTrackWidth = window.right - window.left;
  MinTrackHeight = window.bottom - window.top;
  RECT client{};
  GetClientRect(Hwnd, &client);
  BottomMargin = client.bottom - ItemRect(Hwnd, IDC_EDITOR_FRAMES).bottom;
}

// The frame list grows downward, the table to the right and downward, and the flat buttons go with the bottom edge.
LRESULT CEditorDlg::OnSize(WPARAM kind, int width, int height) {
  if (kind == SIZE_MINIMIZED) return 0;
  RECT frames = ItemRect(Hwnd, IDC_EDITOR_FRAMES);
  frames.bottom = height - BottomMargin;
  PlaceItem(Hwnd, IDC_EDITOR_FRAMES, frames);

  RECT table = ItemRect(Hwnd, IDC_EDITOR_TABLE);
  table.right = width - table.top;
  table.bottom = height - table.top;
  PlaceItem(Hwnd, IDC_EDITOR_TABLE, table);

  for (int id = IDC_EDITOR_TRIPLE; id <= IDC_EDITOR_KEYFROMSELECTION; ++id) {
    RECT button = ItemRect(Hwnd, id);
    OffsetRect(&button, 0, height - table.top - button.bottom);
    PlaceItem(Hwnd, id, button);
  }
  return 0;
}

LRESULT CEditorDlg::OnGetMinMaxInfo(MINMAXINFO* info) {
  info->ptMinTrackSize = {MinTrackWidth, MinTrackHeight};
  return 0;
}

// The wheel belongs to what is under the pointer, not to what has the focus.
LRESULT CEditorDlg::OnMouseWheel(WPARAM keys, int x, int y, int delta) {
  POINT point{x, y};
  ScreenToClient(Hwnd, &point);
  const HWND under = ChildWindowFromPoint(Hwnd, point);
  if (under && (under == Item(IDC_EDITOR_TABLE) || under == Item(IDC_EDITOR_FRAMES))) {
    PostMessageW(under, WM_MOUSEWHEEL, MAKEWPARAM(keys, delta), MAKELPARAM(x, y));
  }
  return 0;
}

LRESULT CEditorDlg::OnHScroll(UINT, int, HWND scrollBar) {
  if (!scrollBar || GetDlgCtrlID(scrollBar) != IDC_EDITOR_PITCH) return 0;
  const auto position = static_cast<int>(SendMessageW(scrollBar, TBM_GETPOS, 0, 0));
  const int semitones = position - kPitchMiddle;
  SetDlgItemTextW(Hwnd, IDC_EDITOR_PITCHTEXT, std::to_wstring(semitones).c_str());
  return 0;
}
