// A job over many waves against the same processes, started by as many threads in a bare loop.
#include <windows.h>
#include <process.h>
#include <shellapi.h>

#include <array>
#include <atomic>
#include <filesystem>

#include "app/messages.h"
#include "base/files.h"
#include "measuring.h"
#include "resampler/commandline.h"
#include "resampler/createfrqdlg.h"
#include "rows.h"
#include "scratchfolder.h"

namespace {

constexpr int kWaves = 100;

// The program ends at once, so that only what the job adds is weighed.
std::wstring IdleProgram() {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
  return std::filesystem::path(path.data()).parent_path() / L"bench_idle.exe";
}

// Answers what the job asks of the list of syllables, on a thread of its own as the list does.
class ListStandIn {
 public:
  explicit ListStandIn(const std::vector<std::wstring>& waves) : waves_(waves) {
    const EventHandle ready(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    ready_ = ready.get();
    thread_.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, Thread, this, 0, nullptr)));
    WaitForSingleObject(ready.get(), INFINITE);
  }
  ~ListStandIn() {
    PostMessageW(window_, WM_CLOSE, 0, 0);
    WaitForSingleObject(thread_.get(), INFINITE);
  }
  ListStandIn(const ListStandIn&) = delete;
  ListStandIn& operator=(const ListStandIn&) = delete;

  HWND Window() const { return window_; }

 private:
  static unsigned WINAPI Thread(void* argument) {
    auto* const self = static_cast<ListStandIn*>(argument);
    self->window_ = CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    SetPropW(self->window_, L"self", self);
    SetWindowLongPtrW(self->window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
    SetEvent(self->ready_);
    for (MSG message; GetMessageW(&message, nullptr, 0, 0) > 0;) DispatchMessageW(&message);
    return 0;
  }
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto* const self = static_cast<ListStandIn*>(GetPropW(window, L"self"));
    if (message == FLM_GETCOUNT) *reinterpret_cast<std::uint32_t*>(lParam) = kWaves;
    if (message == FLM_GETPATH) lstrcpynW(reinterpret_cast<wchar_t*>(lParam), self->waves_[wParam].c_str(), MAX_PATH);
    if (message == WM_CLOSE) DestroyWindow(window);
    if (message == WM_DESTROY) PostQuitMessage(0);
    return message >= FLM_SETCURRENTEDITED ? 0 : DefWindowProcW(window, message, wParam, lParam);
  }

  const std::vector<std::wstring>& waves_;
  HANDLE ready_ = nullptr;
  HWND window_ = nullptr;
  ThreadHandle thread_;
};

// Tells when its last worker has come to its end: the full bar is shown for half a second more, which users are meant
// to wait for.
class TimedJob : public CCreateFrqDlg {
 public:
  using CCreateFrqDlg::CCreateFrqDlg;

  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == WM_CREATEFRQ_WORKER_DONE) ended = std::chrono::steady_clock::now();
    return CCreateFrqDlg::OnDialogMessage(message, wParam, lParam);
  }

  std::chrono::steady_clock::time_point ended;
};

template <int workers>
class Job : public Work {
 public:
  Job() {
    for (int i = 0; i < kWaves; ++i) waves_.push_back(folder_.PathOf(std::to_wstring(i) + L".wav"));
  }

  double Measured() override {
    const ListStandIn list(waves_);
    TimedJob job(CreateMode::All, nullptr, list.Window(), IdleProgram(), workers);
    const auto start = std::chrono::steady_clock::now();
    Require(job.Run(false) == IDCANCEL, "the dialog does not open");
    return std::chrono::duration<double, std::milli>(job.ended - start).count();
  }

  double Yardstick() override {
    next_ = 0;
    return MillisecondsOf([this] {
      std::array<ThreadHandle, workers> threads;
      for (ThreadHandle& thread : threads) {
        thread.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, BareLoop, this, 0, nullptr)));
      }
      for (const ThreadHandle& thread : threads) WaitForSingleObject(thread.get(), INFINITE);
    });
  }

 private:
  static unsigned WINAPI BareLoop(void* argument) {
    auto* const self = static_cast<Job*>(argument);
    const std::wstring program = IdleProgram();
    for (int i; (i = self->next_++) < kWaves;) {
      const std::wstring line = CreateCommandLine(self->waves_[static_cast<std::size_t>(i)]);
      SHELLEXECUTEINFOW run{};
      run.cbSize = sizeof(run);
      run.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NO_CONSOLE;
      run.lpFile = program.c_str();
      run.lpParameters = line.c_str();
      Require(ShellExecuteExW(&run), "bench_idle.exe is not there");
      const UniqueHandle<KernelTraits> process(run.hProcess);
      WaitForSingleObject(process.get(), INFINITE);
    }
    return 0;
  }

  ScratchFolder folder_;
  std::vector<std::wstring> waves_;
  std::atomic<int> next_ = 0;
};

}  // namespace

std::vector<Row> JobRows() {
  // A process that starts is held up by all that the system does: the least of some goes counts.
  return {RowOf<Job<1>>("job_1", "ms", 1.05, Taken::Least), RowOf<Job<2>>("job_2", "ms", 1.05, Taken::Least),
          RowOf<Job<4>>("job_4", "ms", 1.05, Taken::Least)};
}
