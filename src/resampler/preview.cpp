#include "resampler/preview.h"

#include <process.h>

#include <atomic>
#include <exception>
#include <utility>

#include "app/messages.h"
#include "base/path.h"
#include "base/tempfolder.h"
#include "resampler/playmci.h"

namespace {

constexpr DWORD kPollMs = 100;
constexpr DWORD kLongestWaitMs = 10'000;

}  // namespace

// The state that the object and its thread share.
struct CPreview::Shared {
  std::wstring Folder;
  PreviewInput Input;
  std::atomic<bool> StopAsked = false;
  std::atomic<bool> Ended = true;
  PreviewEnd End = PreviewEnd::Well;  // the thread's until it has ended

  // The last render belongs to the thread alone.
  FrqMap LastMap;
  std::wstring LastPath;
  RenderSettings LastSettings;

  bool HasChanged() const;
  void RememberInput();
  int RenderAndPlay();
  int Play(const std::wstring& output) const;
};

bool CPreview::Shared::HasChanged() const {
  return LastSettings != Input.Settings || LastPath != Input.WavePath || !Input.Map.Equals(LastMap);
}

void CPreview::Shared::RememberInput() {
  Input.Map.CopyTo(LastMap);
  LastPath = Input.WavePath;
  LastSettings = Input.Settings;
}

// The same input leaves the folder as it is, but is rendered anew.
int CPreview::Shared::RenderAndPlay() {
  End = PreviewEnd::NotPrepared;
  if (HasChanged()) TempFolder::Empty(Folder);
  const int error = RenderPreview(Folder, Input, End);
  if (End != PreviewEnd::NotPrepared) RememberInput();
  if (error != 0) return error;
  const int result = Play(PathIn(Folder, kRenderedName));
  if (result == 0) End = PreviewEnd::Well;
  return result;
}

int CPreview::Shared::Play(const std::wstring& output) const {
  if (PlayMci(output, 0, 0) != 0) {
    LogPreview(L"fail to play " + output);
    return static_cast<int>(CloseMci());
  }
  LogPreview(L"succeed to play " + output);
  while (!StopAsked && IsMciPlaying()) Sleep(kPollMs);
  CloseMci();
  return 0;
}

CPreview::CPreview() : state_(std::make_shared<Shared>()) {}

CPreview::~CPreview() {
  StopAndWait();
}

void CPreview::SetFolder(const std::wstring& folder) {
  state_->Folder = folder;
}

void CPreview::ClearFolder() const {
  TempFolder::Empty(state_->Folder);
}

void CPreview::Start(PreviewInput input) {
  running_ = true;
  state_->StopAsked = false;
  state_->Ended = false;
  const HWND window = input.Window;
  state_->Input = std::move(input);
  auto shared = std::make_unique<std::shared_ptr<Shared>>(state_);
  thread_.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, ThreadProc, shared.get(), 0, nullptr)));
  if (thread_) {
    shared.release();
  } else {
    state_->Ended = true;
    EditorSender(window).PostPreviewDone();
  }
}

unsigned WINAPI CPreview::ThreadProc(void* argument) {
  const std::unique_ptr<std::shared_ptr<Shared>> owned(static_cast<std::shared_ptr<Shared>*>(argument));
  Shared& shared = **owned;
  ClearPreviewLog();
  int result = -1;
  try {
    result = shared.RenderAndPlay();
  } catch (const std::exception&) {
    // A preview that memory does not hold is not played.
  }
  const HWND window = shared.Input.Window;
  shared.Ended = true;  // the next render may begin at any moment from here on
  EditorSender(window).PostPreviewDone();
  return static_cast<unsigned>(result);
}

void CPreview::Stop() {
  state_->StopAsked = true;
}

bool CPreview::HasEnded() const {
  return state_->Ended;
}

PreviewEnd CPreview::End() const {
  return state_->End;
}

void CPreview::Finish() {
  running_ = false;
  state_->StopAsked = false;
}

void CPreview::StopAndWait() {
  Stop();
  if (thread_) WaitForSingleObject(thread_.get(), kLongestWaitMs);
  thread_.reset();  // not to be waited for twice
}
