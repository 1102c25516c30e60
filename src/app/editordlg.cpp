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
      argument_(argument),
      bank_(voicebank),
      syllables_(voicebank.Maps),
      map_(voicebank.Maps),
      PluginMode(!argument.empty() && IsPluginFile(argument)),
      frames_(voicebank.Maps, map_),
      recent_(!PluginMode) {
  syllables_.AddListener(*this);
}

INT_PTR CEditorDlg::OnInitDialog(LPARAM) {
  layout_.Remember(Hwnd);
  PrepareBoxes(Hwnd);
  TakeIntoTabOrder(Hwnd);
  preview_.Prepare(Hwnd);
  scratch_.Make();
  preview_.SetFolder(scratch_.Path());
  sounds_.Attach(Hwnd);
  frames_.Attach(Hwnd);
  edits_.Attach(Hwnd);
  Table().SetEditing(&bank_.Editing);
  Table().SetPitches(&pitches_);
  frames_.ShowFrames();
  history_.PutInto(GetSubMenu(GetMenu(Hwnd), kEditMenu));
  AppendAddedItems(GetMenu(Hwnd));
  AddPutBackItem(GetSubMenu(GetMenu(Hwnd), kEditMenu));
  isMenuShown_ = false;
  recent_.ShowIn(GetMenu(Hwnd));
  Table().SetViewMode(settings_.ViewMode);
  Table().SetBrightness(settings_.Brightness);
  Table().SetColorTable(settings_.Color);
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
  if (!edits_.ConfirmDiscard()) return;
  EndList(FileList->Hwnd);
  End(IDCANCEL);
}

// Nothing is asked where a dialog of ours stands in front: edits then hold up the end by themselves.
bool CEditorDlg::MayEndSession() {
  hasLetEditsGo_ = IsWindowEnabled(Hwnd) ? edits_.ConfirmDiscard() : syllables_.State().Edited == 0;
  return hasLetEditsGo_;
}

// The system ends the process as soon as this comes back, and the list has a host to answer. After an end in a hurry,
// without a question or in spite of the answer, the edits are left to the next start, as if the power had gone.
void CEditorDlg::OnEndSession(bool ending) {
  const bool isAgreed = std::exchange(hasLetEditsGo_, false) || syllables_.State().Edited == 0;
  if (!ending) return;
  const bool isOrderly = isAgreed && IsWindowEnabled(Hwnd);
  if (isOrderly) bank_.Run.GiveUpEdits();
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
  settings_.Save(Table());
  recent_.Save();
}

LRESULT CEditorDlg::OnDestroy() {
  KeepSettings();
  // The folder stays if a folder was put into it, or if a resampler does not come to its end.
  sounds_.Close();
  preview_.Close();
  scratch_.Remove();
  return CDlgBase::OnDestroy();
}

// Enter ends nothing. In the box of the frequency it sets what was typed.
void CEditorDlg::OnOK() {
  if (GetFocus() == Item(IDC_EDITOR_FREQUENCY)) RunControlCommand(IDC_EDITOR_SET, BN_CLICKED, 0);
}

LRESULT CEditorDlg::OnSize(WPARAM kind, int width, int height) {
  if (kind != SIZE_MINIMIZED) layout_.Arrange(Hwnd, width, height);
  return 0;
}

LRESULT CEditorDlg::OnGetMinMaxInfo(MINMAXINFO* info) {
  info->ptMinTrackSize = layout_.LeastSize();
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
  preview_.OnScrolled(scrollBar);
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
    case WM_PREVIEW_DONE: preview_.OnToldDone(settings_.FrqType); return Answered();
    case EDM_LISTENING: sounds_.OnTold(); return Answered();
    case EDM_SHOWFAILURE:
      frames_.ShowMarks(static_cast<SampleCount>(wParam), static_cast<SampleCount>(lParam));
      return Answered();
    case EDM_REFRESHMAP: OnRefreshMap(lParam != 0); return Answered();
    case EDM_PAINT: PaintWaiting(); return Answered();
    case EDM_ASKOFLEFTEDITS: OnAskOfLeftEdits(); return Answered();
    case FramePane::kShowKeyMessage: frames_.OnShowKey(); return Answered();
    case WM_QUERYENDSESSION: SetWindowLongPtrW(Hwnd, DWLP_MSGRESULT, MayEndSession()); return 1;
    case WM_ENDSESSION: OnEndSession(wParam != 0); return Answered();
    default: return CDlgBase::OnDialogMessage(message, wParam, lParam);
  }
}

std::unique_ptr<CDlgBase> CEditorDlg::CreateInstance() const {
  return std::make_unique<CEditorDlg>(argument_, bank_);
}
FileListSender CEditorDlg::ToList() const {
  return FileListSender(FileList->Hwnd);
}
