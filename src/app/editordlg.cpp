#include "app/editordlg.h"

#include <commctrl.h>

#include "app/filelistdlg.h"
#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"
#include "voicebank/pluginfile.h"
#include "window/realnumberbox.h"
#include "window/subclassedlistbox.h"
#include "window/waitforwindow.h"

namespace {

constexpr wchar_t kPlacementValue[] = L"EditorDlg";
constexpr wchar_t kZoomValue[] = L"FrqCtrlZoom";

constexpr int kNumberBoxLimit = 16;  // characters

DWORD ProcessorCount() {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  return info.dwNumberOfProcessors;
}

}  // namespace

CEditorDlg::CEditorDlg(const std::wstring& argument)
    : ReadyEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      Argument(argument),
      MaxParallelCount(ProcessorCount()),
      PluginMode(!argument.empty() && IsPluginFile(argument)) {}

INT_PTR CEditorDlg::OnInitDialog(LPARAM) {
  RememberLayout();
  PrepareControls();
  MakeTempFolder();
  ReloadCurrentMap();
  ShowFrames();
  EnableWindow(Item(IDC_EDITOR_FREQUENCY), TRUE);
  EnableWindow(Item(IDC_EDITOR_SET), TRUE);
  BuildRecentMenu();
  Table().SetViewMode(ViewMode);
  Table().SetBrightness(Brightness);
  Table().SetColorTable(Color);
  RestoreWindowPlacement(Hwnd, kPlacementValue);
  int zoom = 0;
  if (RegReadValue(kZoomValue, zoom)) Table().SetZoom(zoom);
  SetEvent(ReadyEvent.get());
  return 1;
}

void CEditorDlg::PrepareControls() {
  for (const int box : {IDC_EDITOR_KEY, IDC_EDITOR_FREQUENCY}) {
    SendDlgItemMessageW(Hwnd, box, EM_LIMITTEXT, kNumberBoxLimit, 0);
    SubclassControl<CTextBoxRealNumberCtrl>(Item(box));
  }
  SubclassControl<CSubclassedListbox>(Item(IDC_EDITOR_FRAMES));
  SendDlgItemMessageW(Hwnd, IDC_EDITOR_PITCH, TBM_SETRANGE, TRUE, MAKELPARAM(0, 2 * kPitchMiddle));
  SendDlgItemMessageW(Hwnd, IDC_EDITOR_PITCH, TBM_SETPOS, TRUE, kPitchMiddle);
  SetDlgItemTextW(Hwnd, IDC_EDITOR_MODULATION, L"0");
}

void CEditorDlg::MakeTempFolder() {
  wchar_t folder[MAX_PATH + 1] = L"";
  GetTempPathW(MAX_PATH + 1, folder);
  TempFolder = folder + FormatText(L"marlit_%d_%d", GetCurrentProcessId(), GetCurrentThreadId());
  CreateDirectoryW(TempFolder.c_str(), nullptr);
  Preview.SetFolder(TempFolder);
}

// The folder stays if a folder was put into it, or if a resampler does not come to its end.
void CEditorDlg::RemoveTempFolder() {
  Preview.StopAndWait();
  Preview.ClearFolder();
  if (!TempFolder.empty()) RemoveDirectoryW(TempFolder.c_str());
}

// The one orderly way out: the close box, Exit and Escape all come here. The list goes first, then this window. Not
// while a dialog of ours stands in front: a job runs behind it, whose answers would have nowhere to go.
void CEditorDlg::OnCancel() {
  if (!IsWindowEnabled(Hwnd)) return;
  if (!ConfirmDiscard()) return;
  EndList();
  End(IDCANCEL);
}

void CEditorDlg::EndList() {
  ToList().Cancel();
  WaitForWindowToGo(FileList->Hwnd);
}

// Where a dialog of ours stands in front there is no asking: edits then hold up the end by themselves.
bool CEditorDlg::MayEndSession() {
  return IsWindowEnabled(Hwnd) ? ConfirmDiscard() : !ToList().IsAnyEdited();
}

// The system ends the process as soon as this comes back. The list has a host to answer.
void CEditorDlg::OnEndSession(bool ending) {
  if (!ending) return;
  EndList();
  if (IsWindowEnabled(Hwnd)) {
    End(IDCANCEL);
  } else {
    KeepSettings();  // a job runs, and its dialog is not ended from here
  }
}

void CEditorDlg::KeepSettings() {
  SaveWindowPlacement(Hwnd, kPlacementValue);
  RegWriteValue(kZoomValue, Table().Zoom());
  SaveSettings();
}

LRESULT CEditorDlg::OnDestroy() {
  KeepSettings();
  RemoveTempFolder();
  return CDlgBase::OnDestroy();
}

// Enter in the window ends nothing.
void CEditorDlg::OnOK() {}

INT_PTR CEditorDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case EDM_SETMAP: OnSetMap(reinterpret_cast<FrqMap*>(wParam), reinterpret_cast<FrqMap*>(lParam)); return Answered();
    case EDM_SETSYLLABLE: OnSetSyllable(reinterpret_cast<const wchar_t*>(lParam)); return Answered();
    case EDM_UPDATESTATE: UpdateState(); return Answered();
    case EDM_FOLDEROPENED: OnFolderOpened(reinterpret_cast<const wchar_t*>(lParam)); return Answered();
    case WM_PREVIEW_DONE: OnPreviewDone(); return Answered();
    case EDM_SHOWFAILURE:
      OnShowFailure(static_cast<SampleCount>(wParam), static_cast<SampleCount>(lParam));
      return Answered();
    case EDM_REFRESHMAP: OnRefreshMap(lParam != 0); return Answered();
    case kShowKeyMessage: OnShowKey(); return Answered();
    case WM_QUERYENDSESSION: SetWindowLongPtrW(Hwnd, DWLP_MSGRESULT, MayEndSession()); return 1;
    case WM_ENDSESSION: OnEndSession(wParam != 0); return Answered();
    default: return CDlgBase::OnDialogMessage(message, wParam, lParam);
  }
}

std::unique_ptr<CDlgBase> CEditorDlg::CreateInstance() const {
  return std::make_unique<CEditorDlg>(Argument);
}
int CEditorDlg::GetTemplateId() const {
  return IDD_EDITOR;
}
FileListSender CEditorDlg::ToList() const {
  return FileListSender(FileList->Hwnd);
}
FrqCtrlSender CEditorDlg::Table() const {
  return FrqCtrlSender(Item(IDC_EDITOR_TABLE));
}
