// The commands of the editor and what enables each.
#include <windows.h>

#include <type_traits>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "app/helpcommands.h"
#include "app/viewcommands.h"
#include "resources/ids.h"

namespace {

// The handler that a member function of the editor is; those that serve one command only take no id.
template <auto Member>
void Call(CEditorDlg& editor, UINT id) {
  if constexpr (std::is_invocable_v<decltype(Member), CEditorDlg&>) {
    (editor.*Member)();
  } else {
    (editor.*Member)(id);
  }
}

template <int Command>
bool HasColor(const EditorState& state) {
  return state.color == Command - ID_VIEW_COLOR_FIRST;
}

}  // namespace

// Every command of the menu has its row here and nowhere else.
const std::vector<EditorCommand>& CEditorDlg::Commands() {
  using S = const EditorState&;
  static constexpr auto inPluginMode = [](S s) { return s.pluginMode; };
  static constexpr auto notInPluginMode = [](S s) { return !s.pluginMode; };
  static constexpr auto notYetAll = [](S s) { return s.pluginMode && !s.allSyllables; };
  static constexpr auto currentEdited = [](S s) { return s.currentEdited; };
  static constexpr auto anyEdited = [](S s) { return s.anyEdited; };
  static constexpr auto always = [](S) { return true; };
  static constexpr auto selectionEdited = [](S s) { return s.currentEdited && s.selectedFrames > 0; };
  static constexpr auto hasMaps = [](S s) { return s.maps > 0; };
  using E = CEditorDlg;
  // Through the message queue, so that the command has returned when the window goes.
  static constexpr auto exit = [](E& e, UINT) { PostMessageW(e.Hwnd, WM_COMMAND, IDCANCEL, 0); };
  // Through the list's selection, so that the syllable changes as by a click.
  static constexpr auto neighbour = [](E& e, UINT id) { e.ToList().PostSelectNeighbour(id == ID_VIEW_PREVIOUS); };
  static constexpr auto view = [](E& e, UINT id) {
    ChangeView(e.Table(), id);
    e.UpdateState();
  };
  static constexpr auto manual = [](E& e, UINT) { ShowManual(e.Hwnd); };
  static constexpr auto about = [](E& e, UINT) { ShowAbout(e.Hwnd); };
  static const std::vector<EditorCommand> commands = {
      {ID_FILE_OPEN, Call<&E::OnOpen>, notInPluginMode, inPluginMode},
      {ID_FILE_EDITALL, Call<&E::OnEditAllSyllables>, notYetAll, notInPluginMode},
      {ID_FILE_SAVE, Call<&E::OnSave>, currentEdited},
      {ID_FILE_SAVEALL, Call<&E::OnSaveAll>, anyEdited},
      {ID_FILE_EXIT, exit},
      {ID_EDIT_RELOADSELECTED, Call<&E::OnReloadSelection>, selectionEdited},
      {ID_EDIT_RELOAD, Call<&E::OnReloadSyllable>, currentEdited},
      {ID_EDIT_RELOADALL, Call<&E::OnReloadAll>, anyEdited},
      {ID_EDIT_SELECTALL, Call<&E::SelectAllFrames>},
      {ID_EDIT_INITIALIZE, Call<&E::OnMakeMaps>},
      {ID_EDIT_INITIALIZEALL, Call<&E::OnMakeMaps>},
      {ID_EDIT_CREATEMISSING, Call<&E::OnMakeMaps>, [](S s) { return s.maps < s.rows; }},
      {ID_EDIT_REMOVEALL, Call<&E::OnRemoveAll>, hasMaps},
      {ID_EDIT_CONVERT, Call<&E::OnMakeMaps>},
      {ID_VIEW_ZOOMIN, view, [](S s) { return s.zoom < s.zoomCount - 1; }},
      {ID_VIEW_ZOOMOUT, view, [](S s) { return s.zoom > 0; }},
      {ID_VIEW_PREVIOUS, neighbour, [](S s) { return s.selectedRow > 0; }},
      {ID_VIEW_NEXT, neighbour, [](S s) { return s.selectedRow < s.rows - 1; }},
      {ID_VIEW_SPECTRUM, view, nullptr, nullptr, [](S s) { return s.viewMode == 1; }},
      {ID_VIEW_COLOR_COOL, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_COOL>},
      {ID_VIEW_COLOR_PURPLE, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_PURPLE>},
      {ID_VIEW_COLOR_JADE, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_JADE>},
      {ID_VIEW_COLOR_GRASSY, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_GRASSY>},
      {ID_VIEW_COLOR_FLAME, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_FLAME>},
      {ID_VIEW_COLOR_RUBY, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_RUBY>},
      {ID_VIEW_BRIGHTEN, view, [](S s) { return s.brightness > kBrightest; }},
      {ID_VIEW_DARKEN, view, [](S s) { return s.brightness < kDarkest; }},
      {ID_VIEW_THUMBNAIL, Call<&E::OnThumbnail>, nullptr, nullptr, [](S s) { return s.hasThumbnails; }},
      {ID_TOOL_CHECK, Call<&E::OnCheck>, hasMaps},
      // Reached from the modify bar only: its item stands in the menu's template and goes at the first update.
      {ID_TOOL_MODIFYALL, Call<&E::OnModifyAll>, nullptr, always},
      {ID_TOOL_OPTION, Call<&E::OnOption>},
      {ID_HELP_MANUAL, manual},
      {ID_HELP_ABOUT, about},
  };
  return commands;
}

EditorState CEditorDlg::CollectState() const {
  const FileListSender list = ToList();
  EditorState state;
  state.rows = list.Count();
  state.selectedRow = list.Selection();
  state.maps = list.CountMaps();
  state.selectedHasMap = state.selectedRow >= 0 && list.HasMap(state.selectedRow);
  state.hasThumbnails = list.ThumbnailWindow() != nullptr;
  state.currentEdited = list.IsCurrentEdited();
  state.anyEdited = list.IsAnyEdited();
  state.selectedFrames = Frames().SelectedCount();
  state.zoomCount = Table().ZoomCount();
  state.zoom = Table().Zoom();
  state.viewMode = Table().ViewMode();
  state.color = Table().ColorTable();
  state.brightness = Table().Brightness();
  state.pluginMode = PluginMode;
  state.allSyllables = AllSyllables;
  return state;
}

// Questions to the list let other threads in, which may ask for an update themselves: theirs is the later state, and
// has been shown when this one comes to it.
void CEditorDlg::UpdateState() {
  const unsigned update = ++Updates;
  const EditorState state = CollectState();
  if (update != Updates) return;
  Shown = state;
  ApplyCommandState(GetMenu(Hwnd), Commands(), Shown);
  EnableWindow(Item(IDC_EDITOR_PITCH), Shown.selectedHasMap);
  EnableWindow(Item(IDC_EDITOR_PLAY), Shown.selectedHasMap);
}

LRESULT CEditorDlg::OnMenuSelect(UINT, int, HMENU, HMENU) {
  UpdateState();
  return 1;
}

LRESULT CEditorDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  const UINT id = LOWORD(wParam);
  if (const EditorCommand* const command = FindCommand(Commands(), id)) {
    if (command->handler) command->handler(*this, id);
  } else if (id >= ID_RECENT_FIRST && id <= ID_RECENT_LAST) {
    OnRecentFolder(id);
  } else if (id >= IDC_EDITOR_TABLE && id <= IDC_EDITOR_DIRECT) {
    RunControlCommand(id, code, reinterpret_cast<LPARAM>(control));
  } else {
    CDlgBase::OnCommand(wParam, code, control);
  }
  return 0;
}

// What the boxes, lists and buttons tell; the table tells a frame where others tell their window. The button "Update"
// is not here: it works by taking the focus from the key box, and that alone.
void CEditorDlg::RunControlCommand(UINT id, UINT code, LPARAM detail) {
  if (id == IDC_EDITOR_TABLE) OnTableNotification(code, static_cast<int>(detail));
  if (id == IDC_EDITOR_KEY && code == EN_KILLFOCUS) OnKeyEdited();
  if (id == IDC_EDITOR_FRAMES && code == LBN_SELCHANGE) OnFrameListSelChange();
  if (id == IDC_EDITOR_SET) OnSetFrequency();
  if (id >= IDC_EDITOR_TRIPLE && id <= IDC_EDITOR_KEYFROMSELECTION) OnFlatButton(id);
  if (id == IDC_EDITOR_PLAY) {
    Preview.OnPlayPressed({CurrentPath, CurrentMap, Settings.FrqType, Settings.ResamplerPath, FileList->Store});
  }
  if (id == IDC_EDITOR_DIRECT) Preview.OnDirectPressed();
}
