#include "app/addedmenu.h"

#include <iterator>

#include "base/handle.h"
#include "resources/ids.h"

namespace {

constexpr int kFirstMenu = 1;  // Edit: the first one that gets items

// A submenu changes its owner with its item.
void MoveFirstItem(HMENU from, HMENU to) {
  wchar_t text[128] = L"";
  MENUITEMINFOW item{};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_FTYPE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
  item.dwTypeData = text;
  item.cch = static_cast<UINT>(std::size(text));
  GetMenuItemInfoW(from, 0, TRUE, &item);
  RemoveMenu(from, 0, MF_BYPOSITION);
  InsertMenuItemW(to, static_cast<UINT>(GetMenuItemCount(to)), TRUE, &item);
}

}  // namespace

void AppendAddedItems(HMENU bar) {
  const Menu added(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ADDEDMENU)));
  for (int i = 0; i < GetMenuItemCount(added.get()); ++i) {
    const HMENU from = GetSubMenu(added.get(), i), to = GetSubMenu(bar, kFirstMenu + i);
    if (GetMenuItemCount(from) > 0) AppendMenuW(to, MF_SEPARATOR, 0, nullptr);
    while (GetMenuItemCount(from) > 0) MoveFirstItem(from, to);
  }
}
