#include "app/historymenu.h"

#include "base/text.h"
#include "resources/ids.h"

namespace {

std::wstring ItemText(std::optional<Gesture> gesture, UINT named, UINT bare) {
  if (!gesture) return LoadResString(bare);
  return FormatText(LoadResString(named).c_str(), GestureName(*gesture).c_str());
}

void SetText(HMENU menu, UINT command, std::wstring text) {
  MENUITEMINFOW item{};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_STRING;
  item.dwTypeData = text.data();
  SetMenuItemInfoW(menu, command, FALSE, &item);
}

}  // namespace

std::wstring GestureName(Gesture gesture) {
  return LoadResString(IDS_GESTURE_FIRST + static_cast<UINT>(gesture));
}

void HistoryMenu::PutInto(HMENU menu) {
  menu_ = menu;
  InsertMenuW(menu, 0, MF_BYPOSITION | MF_SEPARATOR, 0, nullptr);
  InsertMenuW(menu, 0, MF_BYPOSITION | MF_STRING, ID_EDIT_REDO, LoadResString(IDS_REDONOTHING).c_str());
  InsertMenuW(menu, 0, MF_BYPOSITION | MF_STRING, ID_EDIT_UNDO, LoadResString(IDS_UNDONOTHING).c_str());
}

void HistoryMenu::Show(std::optional<Gesture> undo, std::optional<Gesture> redo) {
  if (undo != undo_) SetText(menu_, ID_EDIT_UNDO, ItemText(undo, IDS_UNDO, IDS_UNDONOTHING));
  if (redo != redo_) SetText(menu_, ID_EDIT_REDO, ItemText(redo, IDS_REDO, IDS_REDONOTHING));
  undo_ = undo;
  redo_ = redo;
}
