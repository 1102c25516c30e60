#include "app/commandtable.h"

#include <algorithm>

namespace {

void EnableItem(HMENU menu, int position, const EditorCommand& command, const EditorState& state) {
  const bool enabled = command.handler && (!command.enabled || command.enabled(state));
  const UINT flags = MF_BYPOSITION | (enabled ? MF_ENABLED : MF_DISABLED | MF_GRAYED);
  EnableMenuItem(menu, static_cast<UINT>(position), flags);
}

void EnableItems(HMENU menu, const std::vector<EditorCommand>& commands, const EditorState& state) {
  for (int position = 0; position < GetMenuItemCount(menu); ++position) {
    if (const HMENU subMenu = GetSubMenu(menu, position)) {
      EnableItems(subMenu, commands, state);
      continue;
    }
    const UINT id = GetMenuItemID(menu, position);
    const auto row = std::find_if(commands.begin(), commands.end(), [id](const auto& each) { return each.id == id; });
    if (row != commands.end()) EnableItem(menu, position, *row, state);
  }
}

}  // namespace

void ApplyCommandState(HMENU menu, const std::vector<EditorCommand>& commands, const EditorState& state) {
  EnableItems(menu, commands, state);
  for (const EditorCommand& command : commands) {
    if (command.removed && command.removed(state)) DeleteMenu(menu, command.id, MF_BYCOMMAND);
  }
}
