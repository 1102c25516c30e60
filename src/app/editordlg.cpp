#include "app/editordlg.h"

#include <utility>

#include "app/addedmenu.h"
#include "app/filelistdlg.h"
#include "app/puttingback.h"
#include "base/foreignpointer.h"
#include "base/registry.h"
#include "resources/ids.h"
#include "voicebank/pluginfile.h"
#include "window/paintwaiting.h"
#include "window/realnumberbox.h"
#include "window/subclassedlistbox.h"
#include "window/waitforwindow.h"

namespace {

constexpr wchar_t kPlacementValue[] = L"EditorDlg";
constexpr wchar_t kZoomValue[] = L"FrqCtrlZoom";

constexpr int kNumberBoxLimit = 16;  // characters
constexpr int kEditMenu = 1;         // its place in the menu bar

// The templates give these controls to the mouse alone.
void TakeIntoTabOrder(HWND dialog) {
  const auto take = [dialog](int id) {
    const HWND control = GetDlgItem(dialog, id);
    SetWindowLongW(control, GWL_STYLE, GetWindowLongW(control, GWL_STYLE) | WS_TABSTOP);
  };
  for (int id = IDC_EDITOR_TRIPLE; id <= IDC_EDITOR_KEYFROMSELECTION; ++id) take(id);
  take(IDC_EDITOR_TABLE);
}

void PrepareBoxes(HWND dialog) {
  for (const int id : {IDC_EDITOR_KEY, IDC_EDITOR_FREQUENCY}) {
    const HWND box = GetDlgItem(dialog, id);
    SendMessageW(box, EM_LIMITTEXT, kNumberBoxLimit, 0);
    SubclassControl<CTextBoxRealNumberCtrl>(box);
  }
  SubclassControl<CSubclassedListbox>(GetDlgItem(dialog, IDC_EDITOR_FRAMES));
}

void EndList(HWND list) {
  FileListSender(list).End();
  WaitForWindowToGo(list);
}

}  // namespace

CEditorDlg::CEditorDlg(const std::wstring& argument, Voicebank& voicebank)
    : ReadyEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      Argument(argument),
      Bank(voicebank),
      Syllables(voicebank.Maps),
      Map(voicebank.Maps),
      PluginMode(!argument.empty() && IsPluginFile(argument)),
      Frames(voicebank.Maps, Map),
      Recent(!PluginMode) {
  Syllables.AddListener(*this);
}

INT_PTR CEditorDlg::OnInitDialog(LPARAM) {
  Layout.Remember(Hwnd);
  PrepareBoxes(Hwnd);
  TakeIntoTabOrder(Hwnd);
  Preview.Prepare(Hwnd);
  Scratch.Make();
  Preview.SetFolder(Scratch.Path());
  Sounds.Attach(Hwnd);
  Frames.Attach(Hwnd);
  Edits.Attach(Hwnd);
  Table().SetEditing(&Bank.Editing);
  Table().SetPitches(&Pitches);
  Frames.ShowFrames();
  History.PutInto(GetSubMenu(GetMenu(Hwnd), kEditMenu));
  AppendAddedItems(GetMenu(Hwnd));
  AddPutBackItem(GetSubMenu(GetMenu(Hwnd), kEditMenu));
  IsMenuShown = false;
  Recent.ShowIn(GetMenu(Hwnd));
  Table().SetViewMode(Settings.ViewMode);
  Table().SetBrightness(Settings.Brightness);
  Table().SetColorTable(Settings.Color);
  RestoreWindowPlacement(Hwnd, kPlacementValue);
  int zoom = 0;
  if (RegReadValue(kZoomValue, zoom)) Table().SetZoom(zoom);
  SetEvent(ReadyEvent.get());
  return 1;
}

// The one orderly way out: the close box, Exit and Escape all come here. The list goes first, then this window. Nothing
// happens while a dialog of ours stands in front: the answers of a job behind it would have nowhere to go.
void CEditorDlg::OnCancel() {
  if (!IsWindowEnabled(Hwnd)) return;
  if (!Edits.ConfirmDiscard()) return;
  EndList(FileList->Hwnd);
  End(IDCANCEL);
}

// Nothing is asked where a dialog of ours stands in front: edits then hold up the end by themselves.
bool CEditorDlg::MayEndSession() {
  HasLetEditsGo = IsWindowEnabled(Hwnd) ? Edits.ConfirmDiscard() : Syllables.State().Edited == 0;
  return HasLetEditsGo;
}

// The system ends the process as soon as this comes back, and the list has a host to answer. After an end in a hurry,
// without a question or in spite of the answer, the edits are left to the next start, as if the power had gone.
void CEditorDlg::OnEndSession(bool ending) {
  const bool isAgreed = std::exchange(HasLetEditsGo, false) || Syllables.State().Edited == 0;
  if (!ending) return;
  const bool isOrderly = isAgreed && IsWindowEnabled(Hwnd);
  if (isOrderly) Bank.Run.GiveUpEdits();
  EndList(FileList->Hwnd);
  if (isOrderly) {
    End(IDCANCEL);
  } else {
    KeepSettings();  // a job's dialog, if one runs, is not ended from here
  }
}

void CEditorDlg::KeepSettings() {
  SaveWindowPlacement(Hwnd, kPlacementValue);
  RegWriteValue(kZoomValue, Table().Zoom());
  Settings.Save(Table());
  Recent.Save();
}

LRESULT CEditorDlg::OnDestroy() {
  KeepSettings();
  // The folder stays if a folder was put into it, or if a resampler does not come to its end.
  Sounds.Close();
  Preview.Close();
  Scratch.Remove();
  return CDlgBase::OnDestroy();
}

// Enter ends nothing. In the box of the frequency it sets what was typed.
void CEditorDlg::OnOK() {
  if (GetFocus() == Item(IDC_EDITOR_FREQUENCY)) RunControlCommand(IDC_EDITOR_SET, BN_CLICKED, 0);
}

LRESULT CEditorDlg::OnSize(WPARAM kind, int width, int height) {
  if (kind != SIZE_MINIMIZED) Layout.Arrange(Hwnd, width, height);
  return 0;
}

LRESULT CEditorDlg::OnGetMinMaxInfo(MINMAXINFO* info) {
  info->ptMinTrackSize = Layout.LeastSize();
  return 0;
}

// The wheel belongs to what is under the pointer, not to what has the focus.
LRESULT CEditorDlg::OnMouseWheel(WPARAM keys, int x, int y, int delta) {
  POINT point{x, y};
  ScreenToClient(Hwnd, &point);
  const HWND under = ChildWindowFromPoint(Hwnd, point);
  if (under && (under == Item(IDC_EDITOR_TABLE) || under == Item(IDC_EDITOR_FRAMES))) {
    PostMessageW(under, WM_MOUSEWHEEL, MAKEWPARAM(keys, delta), MAKELPARAM(x, y));
  }
  return 0;
}

LRESULT CEditorDlg::OnHScroll(UINT, int, HWND scrollBar) {
  Preview.OnScrolled(scrollBar);
  return 0;
}

INT_PTR CEditorDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case EDM_SETMAP: OnSetMap(reinterpret_cast<FrqMap*>(wParam), reinterpret_cast<FrqMap*>(lParam)); return Answered();
    case EDM_SETSYLLABLE:
      if (const wchar_t* const path = PathAt(lParam)) OnSetSyllable(path);
      return Answered();
    case EDM_UPDATESTATE: UpdateState(); return Answered();
    case EDM_FOLDEROPENED:
      if (const wchar_t* const folder = PathAt(lParam)) OnFolderOpened(folder);
      return Answered();
    case WM_PREVIEW_DONE: Preview.OnToldDone(Settings.FrqType); return Answered();
    case EDM_LISTENING: Sounds.OnTold(); return Answered();
    case EDM_SHOWFAILURE:
      Frames.ShowMarks(static_cast<SampleCount>(wParam), static_cast<SampleCount>(lParam));
      return Answered();
    case EDM_REFRESHMAP: OnRefreshMap(lParam != 0); return Answered();
    case EDM_PAINT: PaintWaiting(); return Answered();
    case EDM_ASKOFLEFTEDITS: OnAskOfLeftEdits(); return Answered();
    case FramePane::kShowKeyMessage: Frames.OnShowKey(); return Answered();
    case WM_QUERYENDSESSION: SetWindowLongPtrW(Hwnd, DWLP_MSGRESULT, MayEndSession()); return 1;
    case WM_ENDSESSION: OnEndSession(wParam != 0); return Answered();
    default: return CDlgBase::OnDialogMessage(message, wParam, lParam);
  }
}

std::unique_ptr<CDlgBase> CEditorDlg::CreateInstance() const {
  return std::make_unique<CEditorDlg>(Argument, Bank);
}
FileListSender CEditorDlg::ToList() const {
  return FileListSender(FileList->Hwnd);
}
