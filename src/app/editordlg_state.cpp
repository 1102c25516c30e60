// The commands of the editor and what enables each.
#include <windows.h>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "resources/ids.h"

namespace {

// Of the spectrum; a smaller value is brighter.
constexpr int kBrightest = -3;
constexpr int kDarkest = 3;

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
  static constexpr auto currentEdited = [](S s) { return s.currentEdited; };
  static constexpr auto anyEdited = [](S s) { return s.anyEdited; };
  static constexpr auto always = [](S) { return true; };
  static constexpr auto selectionEdited = [](S s) { return s.currentEdited && s.selectedFrames > 0; };
  static constexpr auto hasMaps = [](S s) { return s.maps > 0; };
  using E = CEditorDlg;
  static const std::vector<EditorCommand> commands = {
      {ID_FILE_OPEN, &E::OnOpen, notInPluginMode, inPluginMode},
      {ID_FILE_EDITALL, &E::OnEditAllSyllables, [](S s) { return s.pluginMode && !s.allSyllables; }, notInPluginMode},
      {ID_FILE_SAVE, &E::OnSave, currentEdited},
      {ID_FILE_SAVEALL, &E::OnSaveAll, anyEdited},
      {ID_FILE_EXIT, &E::OnExit},
      {ID_EDIT_RELOADSELECTED, &E::OnReloadSelection, selectionEdited},
      {ID_EDIT_RELOAD, &E::OnReloadSyllable, currentEdited},
      {ID_EDIT_RELOADALL, &E::OnReloadAll, anyEdited},
      {ID_EDIT_SELECTALL, &E::OnSelectAllFrames},
      {ID_EDIT_INITIALIZE, &E::OnInitialize},
      {ID_EDIT_INITIALIZEALL, &E::OnInitializeAll},
      {ID_EDIT_CREATEMISSING, &E::OnCreateMissing, [](S s) { return s.maps < s.rows; }},
      {ID_EDIT_REMOVEALL, &E::OnRemoveAll, hasMaps},
      {ID_EDIT_CONVERT, &E::OnConvert},
      {ID_VIEW_ZOOMIN, &E::OnZoom, [](S s) { return s.zoom < s.zoomCount - 1; }},
      {ID_VIEW_ZOOMOUT, &E::OnZoom, [](S s) { return s.zoom > 0; }},
      {ID_VIEW_PREVIOUS, &E::OnNeighbour, [](S s) { return s.selectedRow > 0; }},
      {ID_VIEW_NEXT, &E::OnNeighbour, [](S s) { return s.selectedRow < s.rows - 1; }},
      {ID_VIEW_SPECTRUM, &E::OnSpectrum, nullptr, nullptr, [](S s) { return s.viewMode == 1; }},
      {ID_VIEW_COLOR_COOL, &E::OnColor, nullptr, nullptr, HasColor<ID_VIEW_COLOR_COOL>},
      {ID_VIEW_COLOR_PURPLE, &E::OnColor, nullptr, nullptr, HasColor<ID_VIEW_COLOR_PURPLE>},
      {ID_VIEW_COLOR_JADE, &E::OnColor, nullptr, nullptr, HasColor<ID_VIEW_COLOR_JADE>},
      {ID_VIEW_COLOR_GRASSY, &E::OnColor, nullptr, nullptr, HasColor<ID_VIEW_COLOR_GRASSY>},
      {ID_VIEW_COLOR_FLAME, &E::OnColor, nullptr, nullptr, HasColor<ID_VIEW_COLOR_FLAME>},
      {ID_VIEW_COLOR_RUBY, &E::OnColor, nullptr, nullptr, HasColor<ID_VIEW_COLOR_RUBY>},
      {ID_VIEW_BRIGHTEN, &E::OnBrightness, [](S s) { return s.brightness > kBrightest; }},
      {ID_VIEW_DARKEN, &E::OnBrightness, [](S s) { return s.brightness < kDarkest; }},
      {ID_VIEW_THUMBNAIL, &E::OnThumbnail, nullptr, nullptr, [](S s) { return s.hasThumbnails; }},
      {ID_TOOL_CHECK, &E::OnCheck, hasMaps},
      // Reached from the modify bar only: its item stands in the menu's template and goes at the first update.
      {ID_TOOL_MODIFYALL, &E::OnModifyAll, nullptr, always},
      {ID_TOOL_OPTION, &E::OnOption},
      {ID_HELP_MANUAL, &E::OnManual},
      {ID_HELP_ABOUT, &E::OnAbout},
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
  if (RunCommand(id)) return 0;
  if (id >= ID_RECENT_FIRST && id <= ID_RECENT_LAST) {
    OnRecentFolder(id);
  } else if (id >= IDC_EDITOR_TABLE && id <= IDC_EDITOR_DIRECT) {
    RunControlCommand(id, code, reinterpret_cast<LPARAM>(control));
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

// What the boxes, lists and buttons tell; the table tells a frame where others tell their window. The button "Update"
// is not here: it works by taking the focus from the key box, and that alone.
void CEditorDlg::RunControlCommand(UINT id, UINT code, LPARAM detail) {
  if (id == IDC_EDITOR_TABLE) OnTableNotification(code, static_cast<int>(detail));
  if (id == IDC_EDITOR_KEY && code == EN_KILLFOCUS) OnKeyEdited();
  if (id == IDC_EDITOR_FRAMES && code == LBN_SELCHANGE) OnFrameListSelChange();
  if (id == IDC_EDITOR_SET) OnSetFrequency();
  if (id >= IDC_EDITOR_TRIPLE && id <= IDC_EDITOR_KEYFROMSELECTION) OnFlatButton(id);
  if (id == IDC_EDITOR_PLAY) OnPlayPressed();
  if (id == IDC_EDITOR_DIRECT) OnDirectPressed();
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

void CEditorDlg::OnSpectrum(UINT) {
  Table().SetViewMode(Table().ViewMode() == 1 ? 0 : 1);
  Table().DropLayer();
  Table().RepaintNow();
  UpdateState();
}

void CEditorDlg::OnColor(UINT id) {
  Table().SetColorTable(static_cast<int>(id) - ID_VIEW_COLOR_FIRST);
  UpdateState();
}

void CEditorDlg::OnBrightness(UINT id) {
  Table().SetBrightness(Table().Brightness() + (id == ID_VIEW_BRIGHTEN ? -1 : 1));
  UpdateState();
}
