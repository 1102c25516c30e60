// The commands of the editor's menu as rows of a table, and the walk that carries their state into the menu.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "document/gesture.h"

class CEditorDlg;

// The facts that the menu's state depends on, collected once for all commands.
struct EditorState {
  int rows = 0;  // of the syllable list
  int selectedRow = -1;
  int maps = 0;  // syllables that have a map
  bool selectedHasMap = false;
  bool hasThumbnails = false;  // their window is there
  bool sounds = false;         // something is listened to
  bool currentEdited = false;
  bool anyEdited = false;
  int selectedFrames = 0;
  int zoomCount = 0;
  int zoom = 0;
  int viewMode = 0;  // 1: the spectrum is shown
  int color = 0;     // its colour table
  int brightness = 0;
  bool pluginMode = false;
  bool allSyllables = false;  // in plug-in mode: the whole voicebank is shown
  std::optional<Gesture> undo;  // the gestures that would be undone and redone
  std::optional<Gesture> redo;

  bool operator==(const EditorState&) const = default;
};

struct EditorCommand {
  using Test = bool (*)(const EditorState&);

  UINT id;
  // The handler takes the editor, so that it may call a part of it. Null: nothing answers the command in this version,
  // and its item is grey.
  void (*handler)(CEditorDlg& editor, UINT id);
  Test enabled = nullptr;  // null: always
  Test removed = nullptr;  // taken out of the menu for good; null: never
  Test checked = nullptr;  // bears a check mark; null: never, and its mark is left alone
};

// The row of a command; null for none.
const EditorCommand* FindCommand(const std::vector<EditorCommand>& commands, UINT id);

// Enables, greys, checks and removes the items of the menu and all its submenus. Items without a row are left alone.
void ApplyCommandState(HMENU menu, const std::vector<EditorCommand>& commands, const EditorState& state);
