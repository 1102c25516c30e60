// The commands of the editor and what enables each.
#include <windows.h>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "resources/ids.h"

// Every command of the menu has its row here and nowhere else.
const std::vector<EditorCommand>& CEditorDlg::Commands() {
  using S = const EditorState&;
  static constexpr auto inPluginMode = [](S s) { return s.pluginMode; };
  static constexpr auto notInPluginMode = [](S s) { return !s.pluginMode; };
  static constexpr auto currentEdited = [](S s) { return s.currentEdited; };
  static constexpr auto anyEdited = [](S s) { return s.anyEdited; };
  static constexpr auto always = [](S) { return true; };
  using E = CEditorDlg;
  static const std::vector<EditorCommand> commands = {
      {ID_FILE_OPEN, &E::OnOpen, notInPluginMode, inPluginMode},
      {ID_FILE_EDITALL, &E::OnEditAllSyllables, [](S s) { return s.pluginMode && !s.allSyllables; }, notInPluginMode},
      {ID_FILE_SAVE, &E::OnSave, currentEdited},
      {ID_FILE_SAVEALL, &E::OnSaveAll, anyEdited},
      {ID_FILE_EXIT, &E::OnExit},
      {ID_EDIT_RELOADSELECTED, nullptr},
      {ID_EDIT_RELOAD, nullptr},
      {ID_EDIT_RELOADALL, nullptr},
      {ID_EDIT_SELECTALL, &E::OnSelectAllFrames},
      {ID_EDIT_INITIALIZE, nullptr},
      {ID_EDIT_INITIALIZEALL, nullptr},
      {ID_EDIT_CREATEMISSING, nullptr},
      {ID_EDIT_REMOVEALL, nullptr},
      {ID_EDIT_CONVERT, nullptr},
      {ID_VIEW_ZOOMIN, &E::OnZoom, [](S s) { return s.zoom < s.zoomCount - 1; }},
      {ID_VIEW_ZOOMOUT, &E::OnZoom, [](S s) { return s.zoom > 0; }},
      {ID_VIEW_PREVIOUS, &E::OnNeighbour, [](S s) { return s.selectedRow > 0; }},
      {ID_VIEW_NEXT, &E::OnNeighbour, [](S s) { return s.selectedRow < s.rows - 1; }},
      {ID_VIEW_SPECTRUM, nullptr},
      {ID_VIEW_COLOR_COOL, nullptr},
      {ID_VIEW_COLOR_PURPLE, nullptr},
      {ID_VIEW_COLOR_JADE, nullptr},
      {ID_VIEW_COLOR_GRASSY, nullptr},
      {ID_VIEW_COLOR_FLAME, nullptr},
      {ID_VIEW_COLOR_RUBY, nullptr},
      {ID_VIEW_BRIGHTEN, nullptr},
      {ID_VIEW_DARKEN, nullptr},
      {ID_VIEW_THUMBNAIL, nullptr},
      {ID_TOOL_CHECK, nullptr},
      // Reached from the modify bar only: its item stands in the menu's template and goes at the first update.
      {ID_TOOL_MODIFYALL, nullptr, nullptr, always},
      {ID_TOOL_OPTION, nullptr},
      {ID_HELP_MANUAL, nullptr},
      {ID_HELP_ABOUT, nullptr},
  };
  return commands;
}

EditorState CEditorDlg::CollectState() const {
  const FileListSender list = ToList();
  EditorState state;
  state.rows = list.Count();
  state.selectedRow = list.Selection();
  state.selectedHasMap = state.selectedRow >= 0 && list.HasMap(state.selectedRow);
  state.currentEdited = list.IsCurrentEdited();
  state.anyEdited = list.IsAnyEdited();
  state.zoomCount = Table().ZoomCount();
  state.zoom = Table().Zoom();
  state.pluginMode = PluginMode;
  state.allSyllables = AllSyllables;
  return state;
}

void CEditorDlg::UpdateState() {
  const EditorState state = CollectState();
  ApplyCommandState(GetMenu(Hwnd), Commands(), state);
  EnableWindow(Item(IDC_EDITOR_PITCH), state.selectedHasMap);
  EnableWindow(Item(IDC_EDITOR_PLAY), state.selectedHasMap);
}

LRESULT CEditorDlg::OnMenuSelect(UINT, int, HMENU, HMENU) {
  UpdateState();
  return 1;
}

LRESULT CEditorDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  const UINT id = LOWORD(wParam);
  if (RunCommand(id)) return 0;
  if (id >= ID_RECENT_FIRST && id <= ID_RECENT_LAST) {
    OnRecentFolder(id);
  } else if (id >= IDC_EDITOR_TABLE && id <= IDC_EDITOR_DIRECT) {
    RunControlCommand(id, code);
  } else {
    CDlgBase::OnCommand(wParam, code, control);
  }
  return 0;
}

bool CEditorDlg::RunCommand(UINT id) {
  for (const EditorCommand& command : Commands()) {
    if (command.id != id) continue;
    if (command.handler) (this->*command.handler)(id);
    return true;
  }
  return false;
}

// What the boxes, lists and buttons tell. The button "Update" is not here: it works by taking the focus from the key
// box, and that alone.
void CEditorDlg::RunControlCommand(UINT id, UINT code) {
  if (id == IDC_EDITOR_KEY && code == EN_KILLFOCUS) OnKeyEdited();
  if (id == IDC_EDITOR_FRAMES && code == LBN_SELCHANGE) OnFrameListSelChange();
  if (id == IDC_EDITOR_SET) OnSetFrequency();
}

// Through the message queue, so that the command has returned when the window goes.
void CEditorDlg::OnExit(UINT) {
  PostMessageW(Hwnd, WM_COMMAND, IDCANCEL, 0);
}

void CEditorDlg::OnZoom(UINT id) {
  Table().StepZoom(id == ID_VIEW_ZOOMOUT);
  UpdateState();
}

// Through the list's selection, so that the syllable changes as by a click.
void CEditorDlg::OnNeighbour(UINT id) {
  ToList().PostSelectNeighbour(id == ID_VIEW_PREVIOUS);
}
