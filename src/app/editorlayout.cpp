#include "app/editorlayout.h"

#include "resources/ids.h"

namespace {

RECT ItemRect(HWND dialog, int id) {
  RECT rect{};
  GetWindowRect(GetDlgItem(dialog, id), &rect);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

// The picture of a control is not carried along: the window erases the ground under its new place afterwards.
void PlaceItem(HWND dialog, int id, const RECT& rect) {
  SetWindowPos(GetDlgItem(dialog, id), nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

}  // namespace

void EditorLayout::Remember(HWND dialog) {
  RECT window{};
  GetWindowRect(dialog, &window);
  leastSize_ = {window.right - window.left, window.bottom - window.top};
  RECT client{};
  GetClientRect(dialog, &client);
  bottomMargin_ = client.bottom - ItemRect(dialog, IDC_EDITOR_FRAMES).bottom;
}

void EditorLayout::Arrange(HWND dialog, int width, int height) const {
  RECT frames = ItemRect(dialog, IDC_EDITOR_FRAMES);
  frames.bottom = height - bottomMargin_;
  PlaceItem(dialog, IDC_EDITOR_FRAMES, frames);

  RECT table = ItemRect(dialog, IDC_EDITOR_TABLE);
  table.right = width - table.top;
  table.bottom = height - table.top;
  PlaceItem(dialog, IDC_EDITOR_TABLE, table);

  for (int id = IDC_EDITOR_TRIPLE; id <= IDC_EDITOR_KEYFROMSELECTION; ++id) {
    RECT button = ItemRect(dialog, id);
    OffsetRect(&button, 0, height - table.top - button.bottom);
    PlaceItem(dialog, id, button);
  }
}
