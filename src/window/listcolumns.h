// The columns of a report list in a dialog, in units of the dialog, so that they grow with its font.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "base/text.h"

// Whole rows are selected, and drawn without flicker. To be called once, before the first column.
inline void PrepareReport(HWND view) {
  constexpr LPARAM kStyles = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
  SendMessageW(view, LVM_SETEXTENDEDLISTVIEWSTYLE, kStyles, kStyles);
}

// Appends a column behind those that are there. `title` is a string of the resources.
inline void AppendColumn(HWND dialog, HWND view, UINT title, int width, int format = LVCFMT_LEFT) {
  RECT place{0, 0, width, 0};
  MapDialogRect(dialog, &place);
  std::wstring text = LoadResString(title);
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
  column.pszText = text.data();
  column.cx = place.right;
  column.fmt = format;
  const HWND header = ListView_GetHeader(view);
  SendMessageW(view, LVM_INSERTCOLUMNW, static_cast<WPARAM>(Header_GetItemCount(header)),
               reinterpret_cast<LPARAM>(&column));
}
