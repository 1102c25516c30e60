#include "app/commandtable.h"

#include <algorithm>

namespace {

void ShowItem(HMENU menu, int index, const EditorCommand& command, const EditorState& state) {
  const auto position = static_cast<UINT>(index);
  const bool enabled = command.Handler && (!command.Enabled || command.Enabled(state));
  EnableMenuItem(menu, position, MF_BYPOSITION | (enabled ? MF_ENABLED : MF_DISABLED | MF_GRAYED));
  if (!command.Checked) return;
  CheckMenuItem(menu, position, MF_BYPOSITION | (command.Checked(state) ? MF_CHECKED : MF_UNCHECKED));
}

void ShowItems(HMENU menu, const std::vector<EditorCommand>& commands, const EditorState& state) {
  for (int position = 0; position < GetMenuItemCount(menu); ++position) {
    if (const HMENU subMenu = GetSubMenu(menu, position)) {
      ShowItems(subMenu, commands, state);
      continue;
    }
    if (const EditorCommand* const command = FindCommand(commands, GetMenuItemID(menu, position))) {
      ShowItem(menu, position, *command, state);
    }
  }
}

}  // namespace

const EditorCommand* FindCommand(const std::vector<EditorCommand>& commands, UINT id) {
  const auto row = std::find_if(commands.begin(), commands.end(), [id](const auto& each) { return each.Id == id; });
  return row == commands.end() ? nullptr : &*row;
}

void ApplyCommandState(HMENU menu, const std::vector<EditorCommand>& commands, const EditorState& state) {
  ShowItems(menu, commands, state);
  for (const EditorCommand& command : commands) {
    if (command.Removed && command.Removed(state)) DeleteMenu(menu, command.Id, MF_BYCOMMAND);
  }
}
