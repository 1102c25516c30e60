// The commands of the editor and what enables each.
#include <windows.h>

#include <type_traits>

#include "app/curveclipboard.h"
#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "app/finding.h"
#include "app/gocommands.h"
#include "app/helpcommands.h"
#include "app/suggestedchanges.h"
#include "app/viewcommands.h"
#include "app/words.h"
#include "base/text.h"
#include "resources/ids.h"

namespace {

constexpr UINT kFromKey = 1;  // the notification code of a command that an accelerator has sent

// Makes a handler of a member function of the editor. Functions that serve one command only take no id.
template <auto Member>
void Call(CEditorDlg& editor, UINT id) {
  if constexpr (std::is_invocable_v<decltype(Member), CEditorDlg&>) {
    (editor.*Member)();
  } else {
    (editor.*Member)(id);
  }
}

// The button whose work a command does by its key.
int ButtonOf(UINT command) {
  switch (command) {
    case ID_FRAMES_TRIPLE: return IDC_EDITOR_TRIPLE;
    case ID_FRAMES_DOUBLE: return IDC_EDITOR_DOUBLE;
    case ID_FRAMES_UNVOICE: return IDC_EDITOR_UNVOICE;
    case ID_FRAMES_HALVE: return IDC_EDITOR_HALVE;
    case ID_FRAMES_THIRD: return IDC_EDITOR_THIRD;
    case ID_FRAMES_INTERPOLATE: return IDC_EDITOR_INTERPOLATE;
    case ID_FRAMES_KEY: return IDC_EDITOR_KEYFROMSELECTION;
    default: return IDC_EDITOR_PLAY;
  }
}

template <int Command>
bool HasColor(const EditorState& state) {
  return state.Color == Command - ID_VIEW_COLOR_FIRST;
}

}  // namespace

// The document tells of what an edit changes, but not of the list's state, which is asked for here.
template <void (EditCommands::*Command)(const FileListSender&)>
void CEditorDlg::RunEdit(CEditorDlg& editor, UINT) {
  // Escape may have ended the list, which does the work.
  if (!IsWindow(editor.FileList->Hwnd)) return;
  (editor.edits_.*Command)(editor.ToList());
  editor.UpdateState();
}

// Every command of the menu has its row here and nowhere else.
const std::vector<EditorCommand>& CEditorDlg::Commands() {
  using S = const EditorState&;
  static constexpr auto inPluginMode = [](S s) { return s.PluginMode; };
  static constexpr auto notInPluginMode = [](S s) { return !s.PluginMode; };
  static constexpr auto notYetAll = [](S s) { return s.PluginMode && !s.AllSyllables; };
  static constexpr auto currentEdited = [](S s) { return s.CurrentEdited; };
  static constexpr auto anyEdited = [](S s) { return s.AnyEdited; };
  static constexpr auto always = [](S) { return true; };
  static constexpr auto selectionEdited = [](S s) { return s.CurrentEdited && s.SelectedFrames > 0; };
  static constexpr auto hasMaps = [](S s) { return s.Maps > 0; };
  using E = CEditorDlg;
  // This goes through the message queue, so that the command has returned when the window goes.
  static constexpr auto exit = [](E& e, UINT) { PostMessageW(e.Hwnd, WM_COMMAND, IDCANCEL, 0); };
  // This goes through the list's selection, so that the syllable changes as by a click.
  static constexpr auto neighbour = [](E& e, UINT id) { e.ToList().PostSelectNeighbour(id == ID_VIEW_PREVIOUS); };
  static constexpr auto view = [](E& e, UINT id) {
    ChangeView(e.Table(), id);
    e.UpdateState();
  };
  static constexpr auto press = [](E& e, UINT id) {
    e.RunControlCommand(static_cast<UINT>(ButtonOf(id)), BN_DOUBLECLICKED, 0);
    e.UpdateState();
  };
  static constexpr auto reread = [](E& e, UINT id) {
    e.edits_.Tell(CommandName(GetMenu(e.Hwnd), id), e.readings_.Read());
  };
  static constexpr auto find = [](E& e, UINT) {
    if (!IsWindowEnabled(e.Hwnd) || !IsWindow(e.FileList->Hwnd)) return;
    FindSyllable(e.Hwnd, e.ToList(), e.bank_, e.FileList->Folder);
    e.UpdateState();
  };
  static constexpr auto curve = [](E& e, UINT id) {
    const CurveWork work{e.Hwnd, e.syllables_, e.map_, e.frames_, e.edits_, e.settings_.FrqType};
    if (id == ID_EDIT_COPYCURVE) return CopyCurve(work);
    PasteCurve(work, id == ID_EDIT_PASTESHAPE ? PasteAs::Shape : PasteAs::Curve);
    e.UpdateState();
  };
  static constexpr auto goToSyllable = [](E& e, UINT id) {
    if (!GoToSyllable(id, e.ToList(), e.bank_))
      e.edits_.Tell(CommandName(GetMenu(e.Hwnd), id), LoadResString(IDS_NOWHERE));
  };
  static constexpr auto goToMark = [](E& e, UINT id) {
    const bool forward = id == ID_GO_NEXTMARK;
    if (GoToMark(forward, e.ToList(), e.map_.Index(), e.frames_.Position())) return;
    e.edits_.Tell(CommandName(GetMenu(e.Hwnd), id), LoadResString(IDS_NOMOREMARKS));
  };
  static constexpr auto suggestions = [](E& e, UINT id) {
    if (ShowSuggestions(e.Hwnd, e.ToList(), e.syllables_, e.frames_)) return e.UpdateState();
    e.edits_.Tell(CommandName(GetMenu(e.Hwnd), id), LoadResString(IDS_NOSUGGESTIONS));
  };
  static constexpr auto listen = [](E& e, UINT id) { e.sounds_.OnCommand(id, e.CurrentPath); };
  static constexpr auto manual = [](E& e, UINT) { ShowManual(e.Hwnd); };
  static constexpr auto about = [](E& e, UINT) { ShowAbout(e.Hwnd); };
  static const std::vector<EditorCommand> commands = {
      {ID_FILE_OPEN, Call<&E::OnOpen>, notInPluginMode, inPluginMode},
      {ID_FILE_EDITALL, Call<&E::OnEditAllSyllables>, notYetAll, notInPluginMode},
      {ID_FILE_SAVE, RunEdit<&EditCommands::Save>, currentEdited},
      {ID_FILE_SAVEALL, RunEdit<&EditCommands::SaveAll>, anyEdited},
      {ID_FILE_EXIT, exit},
      {ID_EDIT_UNDO, RunEdit<&EditCommands::Undo>, [](S s) { return s.Undo.has_value(); }},
      {ID_EDIT_REDO, RunEdit<&EditCommands::Redo>, [](S s) { return s.Redo.has_value(); }},
      {ID_EDIT_RELOADSELECTED, [](E& e, UINT) { e.frames_.ReloadSelection(); }, selectionEdited},
      {ID_EDIT_RELOAD, RunEdit<&EditCommands::ReloadSyllable>, currentEdited},
      {ID_EDIT_RELOADALL, RunEdit<&EditCommands::ReloadAll>, anyEdited},
      {ID_EDIT_SELECTALL, [](E& e, UINT) { e.frames_.SelectAllFrames(); }},
      {ID_EDIT_INITIALIZE, Call<&E::OnMakeMaps>},
      {ID_EDIT_INITIALIZEALL, Call<&E::OnMakeMaps>},
      {ID_EDIT_CREATEMISSING, Call<&E::OnMakeMaps>, [](S s) { return s.Maps < s.Rows; }},
      {ID_EDIT_REMOVEALL, RunEdit<&EditCommands::RemoveAll>, hasMaps},
      {ID_EDIT_CONVERT, Call<&E::OnMakeMaps>},
      {ID_EDIT_PUTBACK, Call<&E::OnPutBack>},
      {ID_EDIT_FIND, find, [](S s) { return s.Rows > 0; }},
      {ID_EDIT_COPYCURVE, curve, [](S s) { return s.SelectedHasMap; }},
      {ID_EDIT_PASTECURVE, curve, [](S s) { return s.SelectedHasMap; }},
      {ID_EDIT_PASTESHAPE, curve, [](S s) { return s.SelectedHasMap; }},
      {ID_FRAMES_DOUBLE, press},
      {ID_FRAMES_HALVE, press},
      {ID_FRAMES_TRIPLE, press},
      {ID_FRAMES_THIRD, press},
      {ID_FRAMES_UNVOICE, press},
      {ID_FRAMES_INTERPOLATE, press},
      {ID_FRAMES_REREAD, reread},
      {ID_FRAMES_KEY, press},
      {ID_FRAMES_PLAY, press, [](S s) { return s.SelectedHasMap; }},
      {ID_GO_NEXTMARK, goToMark},
      {ID_GO_PREVIOUSMARK, goToMark},
      {ID_GO_NEXTUNSAVED, goToSyllable},
      {ID_GO_NEXTUNREADABLE, goToSyllable},
      {ID_GO_NEXTMISSING, goToSyllable},
      {ID_VIEW_FIT, view},
      {ID_VIEW_CENTRE, view},
      {ID_VIEW_LARGER, view, [](S s) { return s.Zoom < s.ZoomCount - 1; }},
      {ID_VIEW_SMALLER, view, [](S s) { return s.Zoom > 0; }},
      {ID_TOOL_SUGGESTIONS, suggestions},
      {ID_LISTEN_RECORDING, listen},
      {ID_LISTEN_CURVE, listen},
      {ID_LISTEN_BOTH, listen},
      {ID_LISTEN_COMPARE, listen},
      {ID_LISTEN_STOP, listen, [](S s) { return s.Sounds; }},
      {ID_VIEW_ZOOMIN, view, [](S s) { return s.Zoom < s.ZoomCount - 1; }},
      {ID_VIEW_ZOOMOUT, view, [](S s) { return s.Zoom > 0; }},
      {ID_VIEW_PREVIOUS, neighbour, [](S s) { return s.SelectedRow > 0; }},
      {ID_VIEW_NEXT, neighbour, [](S s) { return s.SelectedRow < s.Rows - 1; }},
      {ID_VIEW_SPECTRUM, view, nullptr, nullptr, [](S s) { return s.ViewMode == 1; }},
      {ID_VIEW_COLOR_COOL, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_COOL>},
      {ID_VIEW_COLOR_PURPLE, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_PURPLE>},
      {ID_VIEW_COLOR_JADE, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_JADE>},
      {ID_VIEW_COLOR_GRASSY, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_GRASSY>},
      {ID_VIEW_COLOR_FLAME, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_FLAME>},
      {ID_VIEW_COLOR_RUBY, view, nullptr, nullptr, HasColor<ID_VIEW_COLOR_RUBY>},
      {ID_VIEW_BRIGHTEN, view, [](S s) { return s.Brightness > kBrightest; }},
      {ID_VIEW_DARKEN, view, [](S s) { return s.Brightness < kDarkest; }},
      {ID_VIEW_THUMBNAIL, Call<&E::OnThumbnail>, nullptr, nullptr, [](S s) { return s.HasThumbnails; }},
      {ID_TOOL_CHECK, Call<&E::OnCheck>, hasMaps},
      // Reached from the modify bar only: its item stands in the menu's template and goes at the first update.
      {ID_TOOL_MODIFYALL, [](E& e, UINT) { e.ToList().Modify(-1, 0); }, nullptr, always},
      {ID_TOOL_OPTION, Call<&E::OnOption>},
      {ID_HELP_MANUAL, manual},
      {ID_HELP_ABOUT, about},
  };
  return commands;
}

// The list gives its state in one answer, the document and the table give the rest.
EditorState CEditorDlg::CollectState() const {
  const ListState list = ToList().State();
  const DocumentState syllables = syllables_.State();
  EditorState state;
  state.Rows = list.Rows;
  state.SelectedRow = list.SelectedRow;
  // Without rows there is no list, or none yet: nothing can be asked of it.
  if (list.Rows > 0) {
    state.Maps = syllables.Maps;
    state.CurrentEdited = syllables.CurrentEdited;
    state.AnyEdited = syllables.Edited > 0;
  }
  state.SelectedHasMap = syllables_.Facts(list.SelectedIndex).HasMap;
  state.HasThumbnails = list.ThumbnailWindow != nullptr;
  state.Sounds = sounds_.IsSounding();
  state.Undo = syllables.Undo;
  state.Redo = syllables.Redo;
  state.SelectedFrames = frames_.SelectedCount();
  state.ZoomCount = Table().ZoomCount();
  state.Zoom = Table().Zoom();
  state.ViewMode = Table().ViewMode();
  state.Color = Table().ColorTable();
  state.Brightness = Table().Brightness();
  state.PluginMode = PluginMode;
  state.AllSyllables = AllSyllables;
  return state;
}

// The question to the list lets other threads in, which may ask for an update themselves. Theirs is the later state and
// has been shown by then, so this one ends.
void CEditorDlg::UpdateState() {
  const unsigned update = ++updates_;
  const EditorState state = CollectState();
  if (update != updates_) return;
  if (!isMenuShown_ || state != shown_) ApplyCommandState(GetMenu(Hwnd), Commands(), state);
  isMenuShown_ = true;
  shown_ = state;
  history_.Show(state.Undo, state.Redo);
  EnableWindow(Item(IDC_EDITOR_PITCH), shown_.SelectedHasMap);
  EnableWindow(Item(IDC_EDITOR_PLAY), shown_.SelectedHasMap);
}

LRESULT CEditorDlg::OnMenuSelect(UINT, int, HMENU, HMENU) {
  UpdateState();
  return 1;
}

LRESULT CEditorDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  const UINT id = LOWORD(wParam);
  // A key of another window may have been under way when a box of this one came up.
  if (code == kFromKey && !IsWindowEnabled(Hwnd)) return 0;
  if (const EditorCommand* const command = FindCommand(Commands(), id)) {
    if (command->Handler) command->Handler(*this, id);
    edits_.TellIfNotKept();
  } else if (id >= ID_RECENT_FIRST && id <= ID_RECENT_LAST) {
    OnRecentFolder(id);
  } else if (id >= IDC_EDITOR_TABLE && id <= IDC_EDITOR_DIRECT) {
    RunControlCommand(id, code, reinterpret_cast<LPARAM>(control));
  } else {
    CDlgBase::OnCommand(wParam, code, control);
  }
  return 0;
}

// Ctrl+Z belongs to a box that has something of its own to take back, and is not seen by the menu then.
bool CEditorDlg::TranslateKey(const MSG& message) {
  if (sounds_.TakeKey(message)) return true;
  if (TranslateClipboardKey(message)) return true;
  const bool isLetter = message.message == WM_KEYDOWN && (message.wParam == 'Z' || message.wParam == 'Y');
  if (!isLetter || GetKeyState(VK_CONTROL) >= 0 || GetKeyState(VK_MENU) < 0) return false;
  const bool redo = message.wParam == 'Y' || GetKeyState(VK_SHIFT) < 0;
  if (redo || !SendMessageW(message.hwnd, EM_CANUNDO, 0, 0)) {
    edits_.TellIfNothing(redo);
    return false;
  }
  SendMessageW(message.hwnd, EM_UNDO, 0, 0);
  SendMessageW(message.hwnd, EM_EMPTYUNDOBUFFER, 0, 0);  // else the next one would do it again
  return true;
}

// Boxes, lists and buttons tell their window in `detail`, the table tells a frame. The button "Update" is not here: it
// works by taking the focus from the key box, and that alone.
void CEditorDlg::RunControlCommand(UINT id, UINT code, LPARAM detail) {
  if (frames_.OnControl(id, code, detail)) return;
  if (id == IDC_EDITOR_RELOAD) RunEdit<&EditCommands::PressReload>(*this, id);
  if (id == IDC_EDITOR_PLAY) {
    sounds_.Stop();
    const std::wstring fault = TextOfUnreadable(bank_, map_.Index());
    preview_.OnPlayPressed(
        {CurrentPath, map_, settings_.FrqType, settings_.ResamplerInUse(), bank_.Files.Store, fault});
  }
  if (id == IDC_EDITOR_DIRECT) preview_.OnDirectPressed();
}
