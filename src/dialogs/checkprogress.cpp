#include "dialogs/checkprogress.h"

#include <commctrl.h>
#include <process.h>

#include <algorithm>

#include "base/path.h"
#include "base/text.h"

namespace {

constexpr DWORD kPatienceMs = 1000;  // how long a check goes on without a window
constexpr UINT_PTR kTimer = 1;
constexpr UINT kUpdateMs = 100;
constexpr int kMostSeconds = 90;  // longer times are told in minutes

std::wstring TextOfTimeLeft(int seconds) {
  if (seconds <= kMostSeconds) return FormatText(LoadResString(IDS_LEFT_SECONDS).c_str(), std::max(1, seconds));
  return FormatText(LoadResString(IDS_LEFT_MINUTES).c_str(), (seconds + 59) / 60);
}

}  // namespace

CheckProgress::CheckProgress(HWND over, int count)
    : over_(over), count_(count), ended_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  thread_.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, ThreadProc, this, 0, nullptr)));
}

CheckProgress::~CheckProgress() {
  if (!thread_) return;
  SetEvent(ended_.get());
  const HANDLE thread = thread_.get();
  while (MsgWaitForMultipleObjects(1, &thread, FALSE, INFINITE, QS_SENDMESSAGE) == WAIT_OBJECT_0 + 1) {
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

bool CheckProgress::Begin(const std::wstring& wavePath) {
  const std::lock_guard lock(mutex_);
  ++state_.Begun;
  state_.WavePath = wavePath;
  return !isAborted_;
}

CheckProgress::State CheckProgress::Present() const {
  const std::lock_guard lock(mutex_);
  return state_;
}

int CheckProgress::SecondsLeft(int begun) const {
  const double elapsed = static_cast<double>(GetTickCount64() - start_) / 1000.0;
  const int done = std::max(1, begun - 1);
  return static_cast<int>(elapsed / done * std::max(0, count_ - done) + 0.5);
}

unsigned WINAPI CheckProgress::ThreadProc(void* self) {
  auto& progress = *static_cast<CheckProgress*>(self);
  if (WaitForSingleObject(progress.ended_.get(), kPatienceMs) == WAIT_OBJECT_0) return 0;
  CCheckProgressDlg dialog;
  dialog.Progress = &progress;
  dialog.Run(false);
  return 0;
}

INT_PTR CCheckProgressDlg::OnInitDialog(LPARAM) {
  before_ = GetForegroundWindow();
  Progress->isShown_ = true;
  MoveOver(Progress->over_);
  SendDlgItemMessageW(Hwnd, IDC_CHECKPROGRESS_BAR, PBM_SETRANGE32, 0, Progress->count_);
  SetTimer(Hwnd, kTimer, kUpdateMs, nullptr);
  Update();
  return 1;
}

INT_PTR CCheckProgressDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_TIMER) return CDlgBase::OnDialogMessage(message, wParam, lParam);
  Update();
  return Answered();
}

void CCheckProgressDlg::OnCancel() {
  Progress->isAborted_ = true;
  EnableWindow(Item(IDCANCEL), FALSE);
}

void CCheckProgressDlg::MoveOver(HWND window) const {
  RECT own, under;
  if (!GetWindowRect(Hwnd, &own) || !GetWindowRect(window, &under)) return;
  SetWindowPos(Hwnd, nullptr, (under.left + under.right - (own.right - own.left)) / 2,
               (under.top + under.bottom - (own.bottom - own.top)) / 2, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

void CCheckProgressDlg::Update() {
  if (WaitForSingleObject(Progress->ended_.get(), 0) == WAIT_OBJECT_0) {
    if (GetForegroundWindow() == Hwnd && before_) SetForegroundWindow(before_);
    End(IDOK);
    return;
  }
  const CheckProgress::State state = Progress->Present();
  const std::wstring name = FileNameOf(state.WavePath);
  SetDlgItemTextW(Hwnd, IDC_CHECKPROGRESS_FILE,
                  FormatText(L"(%d/%d) %s", state.Begun, Progress->count_, name.c_str()).c_str());
  SetDlgItemTextW(Hwnd, IDC_CHECKPROGRESS_LEFT, TextOfTimeLeft(Progress->SecondsLeft(state.Begun)).c_str());
  SendDlgItemMessageW(Hwnd, IDC_CHECKPROGRESS_BAR, PBM_SETPOS, static_cast<WPARAM>(std::max(0, state.Begun - 1)), 0);
}
