#include "app/filelistdlg.h"

#include <commctrl.h>

#include "app/editordlg.h"
#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"
#include "voicebank/pluginfile.h"

namespace {

constexpr wchar_t kPlacementValue[] = L"FileListDlg";

void PlaceBeside(HWND editor, HWND list) {
  RECT beside{};
  GetWindowRect(editor, &beside);
  RECT window{};
  GetWindowRect(list, &window);
  const int left = beside.left - (window.right - window.left);
  SetWindowPos(list, nullptr, left < 0 ? 0 : left, beside.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

CFileListDlg::CFileListDlg(const std::wstring& argument)
    : Windows(Store, [this] { ToEditor().UpdateState(); }),
      Argument(argument),
      ReadyEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

INT_PTR CFileListDlg::OnInitDialog(LPARAM) {
  RememberLayout();
  SetWindowTextW(Hwnd, LoadResString(IDS_FILES).c_str());
  // The list goes with the editor and has no close command of its own.
  DeleteMenu(GetSystemMenu(Hwnd, FALSE), SC_CLOSE, MF_BYCOMMAND);
  Rows.Attach(Item(IDC_LIST_FILES), DpiScaleX);
  Rows.SetupColumns(FrqType);

  const bool filled = FillFromArguments();
  if (!filled) SetEvent(ReadyEvent.get());
  WaitForSingleObject(Editor->ReadyEvent.get(), INFINITE);
  if (!filled) {
    ToEditor().PostCancel();
    return 1;
  }
  Rows.Select(0);
  if (!RestoreWindowPlacement(Hwnd, kPlacementValue)) PlaceBeside(Editor->Hwnd, Hwnd);
  SetEvent(ReadyEvent.get());
  ToEditor().UpdateState();
  return 1;
}

void CFileListDlg::RememberLayout() {
  const HDC screen = GetDC(nullptr);
  DpiScaleX = GetDeviceCaps(screen, LOGPIXELSX) / 96.0;
  DpiScaleY = GetDeviceCaps(screen, LOGPIXELSY) / 96.0;
  ReleaseDC(nullptr, screen);
  RECT window{};
  GetWindowRect(Hwnd, &window);
  MinTrackWidth = window.right - window.left;
  MinTrackHeight = window.bottom - window.top;
  RECT list{};
  GetWindowRect(Item(IDC_LIST_FILES), &list);
  MapWindowPoints(nullptr, Hwnd, reinterpret_cast<POINT*>(&list), 2);
  LeftMargin = list.left;
  TopMargin = list.top;
}

LRESULT CFileListDlg::OnDestroy() {
  SaveWindowPlacement(Hwnd, kPlacementValue);
  if (PluginAnswer) AnswerHost(Argument, SavedCount > 0);
  return CDlgBase::OnDestroy();
}

LRESULT CFileListDlg::OnSize(WPARAM kind, int width, int height) {
  if (kind == SIZE_MINIMIZED) return 0;
  SetWindowPos(Rows.Window(), nullptr, 0, 0, width - 2 * LeftMargin, height - 2 * TopMargin,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  return 0;
}

LRESULT CFileListDlg::OnGetMinMaxInfo(MINMAXINFO* info) {
  info->ptMinTrackSize = {MinTrackWidth, MinTrackHeight};
  return 0;
}

LRESULT CFileListDlg::OnNotify(WPARAM, NMHDR* header) {
  if (header->idFrom != IDC_LIST_FILES || header->code != LVN_ITEMCHANGED) return 1;
  const auto* const change = reinterpret_cast<const NMLISTVIEW*>(header);
  if (change->uNewState & LVIS_SELECTED) ShowSyllable(Rows.IndexOf(change->iItem));
  return 1;
}

// Enter in the list does nothing.
void CFileListDlg::OnOK() {}

// Also reached by Escape in this window, which ends the list alone: the editor runs on without it. The thumbnails go
// with their maps, in their own time: they may be waiting for an answer of this window.
void CFileListDlg::OnCancel() {
  if (const HWND thumbnail = Thumbnail.Hwnd) PostMessageW(thumbnail, WM_COMMAND, IDCANCEL, 0);
  EndDialog(Hwnd, IDCANCEL);
}

EditorSender CFileListDlg::ToEditor() const {
  return EditorSender(Editor->Hwnd);
}
