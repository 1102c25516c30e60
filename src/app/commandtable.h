// The commands of the editor's menu as rows of a table, and the walk that carries their state into the menu.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "document/gesture.h"

class CEditorDlg;

// The facts that the menu's state depends on, collected once for all commands.
struct EditorState {
  int Rows = 0;  // of the syllable list
  int SelectedRow = -1;
  int Maps = 0;  // syllables that have a map
  bool SelectedHasMap = false;
  bool HasThumbnails = false;  // their window is there
  bool Sounds = false;         // something is listened to
  bool CurrentEdited = false;
  bool AnyEdited = false;
  int SelectedFrames = 0;
  int ZoomCount = 0;
  int Zoom = 0;
  int ViewMode = 0;  // 1: the spectrum is shown
  int Color = 0;     // its colour table
  int Brightness = 0;
  bool PluginMode = false;
  bool AllSyllables = false;    // in plug-in mode: the whole voicebank is shown
  std::optional<Gesture> Undo;  // the gestures that would be undone and redone
  std::optional<Gesture> Redo;

  bool operator==(const EditorState&) const = default;
};

struct EditorCommand {
  using Test = bool (*)(const EditorState&);

  UINT Id;
  // The handler takes the editor, so that it may call a part of it. Null: nothing answers the command in this version,
  // and its item is grey.
  void (*Handler)(CEditorDlg& editor, UINT id);
  Test Enabled = nullptr;  // null: always
  Test Removed = nullptr;  // taken out of the menu for good; null: never
  Test Checked = nullptr;  // bears a check mark; null: never, and its mark is left alone
};

// The row of a command; null for none.
const EditorCommand* FindCommand(const std::vector<EditorCommand>& commands, UINT id);

// Enables, greys, checks and removes the items of the menu and all its submenus. Items without a row are left alone.
void ApplyCommandState(HMENU menu, const std::vector<EditorCommand>& commands, const EditorState& state);
