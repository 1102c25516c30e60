#include "dialogs/modifydlg.h"

#include <utility>

#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"
#include "window/balloon.h"
#include "window/clearplace.h"

namespace {

constexpr wchar_t kPlacementValue[] = L"ModifyFailureDlg";

constexpr UINT_PTR kFrontTimer = 1;
constexpr UINT kFrontMs = 300;

bool IsProgramInFront() {
  DWORD process = 0;
  GetWindowThreadProcessId(GetForegroundWindow(), &process);
  return process == GetCurrentProcessId();
}

}  // namespace

INT_PTR CModifyFailureDlg::OnInitDialog(LPARAM) {
  SetEvent(ReadyEvent);
  keys_.Start(Hwnd, Commands, IDR_SHAREDKEYS);
  Index = Sample = -1;
  ShowNext(true);
  // The focus is set before the placement brings the window, since a key may follow at once.
  SendMessageW(Hwnd, DM_SETDEFID, IDC_MODIFY_MODIFY, 0);
  SetFocus(Item(IDC_MODIFY_MODIFY));
  if (!RestoreWindowPlacement(Hwnd, kPlacementValue)) PlaceBesideWork();
  words_.Follow();
  SetTimer(Hwnd, kFrontTimer, kFrontMs, nullptr);
  return 0;
}

// The bar hides nothing that is worked on; its words stand below it.
void CModifyFailureDlg::PlaceBesideWork() const {
  RECT own{};
  GetWindowRect(Hwnd, &own);
  PlaceClearOf(Hwnd, {List, Commands}, (own.bottom - own.top) / 2);
}

INT_PTR CModifyFailureDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_MOVE) words_.Follow();
  // No message tells a thread that another program has come to the front of another thread's window.
  if (message == WM_TIMER && wParam == kFrontTimer) words_.ShowWhileInFront(IsProgramInFront());
  if (message == kMoveMessage) {
    MoveTo(static_cast<int>(wParam), static_cast<int>(lParam));
    return TRUE;
  }
  return CTemplateDlg::OnDialogMessage(message, wParam, lParam);
}

LRESULT CModifyFailureDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  switch (LOWORD(wParam)) {
    case IDC_MODIFY_PREVIOUS: PressNext(false, IDC_MODIFY_PREVIOUS); return 0;
    case IDC_MODIFY_NEXT: PressNext(true, IDC_MODIFY_NEXT); return 0;
    case IDC_MODIFY_IGNORE:
      ToList().Ignore(Index, Sample);
      ShowNextOrEnd();
      return 0;
    case IDC_MODIFY_MODIFY:
      ToList().Modify(Index, Sample);
      ShowNextOrEnd();
      return 0;
    case IDC_MODIFY_MODIFYALL:
      ToList().Modify(-1, 0);
      End(IDOK);
      return 0;
    default: return CDlgBase::OnCommand(wParam, code, control);
  }
}

// False, and the same run stays, if there is no other one.
bool CModifyFailureDlg::ShowNext(bool forward) {
  FindFailureRecord record{Index, Sample, forward, true, false};
  ToList().FindFailure(record);
  if (!record.Found) return false;
  MoveTo(record.Index, record.Sample);
  return true;
}

void CModifyFailureDlg::MoveTo(int index, int sample) {
  Index = index;
  Sample = sample;
  if (TextOfRun) words_.Show(Hwnd, TextOfRun(Index, Sample));
}

// The way goes round: from the only run it leads back to it.
void CModifyFailureDlg::PressNext(bool forward, int button) {
  Forward = forward;
  const auto from = std::pair(Index, Sample);
  if (!ShowNext(forward) || from == std::pair(Index, Sample))
    Balloon::Show(Item(button), LoadResString(IDS_NOMOREMARKS));
}

void CModifyFailureDlg::ShowNextOrEnd() {
  if (!ShowNext(Forward)) End(IDOK);
}

LRESULT CModifyFailureDlg::OnDestroy() {
  keys_.Stop();
  words_.Forget();
  SaveWindowPlacement(Hwnd, kPlacementValue);
  return CDlgBase::OnDestroy();
}

void CModifyFailureDlg::OnDialogEnd() {
  Hwnd = nullptr;
}
