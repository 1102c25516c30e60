#include "resampler/soundrun.h"

#include <process.h>

#include <atomic>
#include <exception>
#include <utility>

#include "app/messages.h"
#include "base/tempfolder.h"
#include "resampler/playmci.h"

namespace {

constexpr wchar_t kAlias[] = L"Listening";
constexpr DWORD kPollMs = 50;
constexpr DWORD kPauseMs = 300;  // between two files
constexpr DWORD kLongestWaitMs = 10'000;

}  // namespace

// The state that the object and its thread share.
struct SoundRun::Shared {
  HWND Window = nullptr;
  std::wstring Folder;
  ListenInput Input;
  EventHandle StopAsked{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  std::atomic<int> Sounding = -1;
  std::atomic<bool> Ended = false;
  SoundEnd End = SoundEnd::Well;  // the thread's until it has ended

  bool IsStopped(DWORD waitMs = 0) const { return WaitForSingleObject(StopAsked.get(), waitMs) != WAIT_TIMEOUT; }
  SoundEnd MakeAndPlay();
  bool Play(const std::wstring& file) const;
};

// A new run, handed to its thread, which waits for the one before it.
struct SoundRun::Begun {
  std::shared_ptr<Shared> State;
  ThreadHandle Before;
};

SoundEnd SoundRun::Shared::MakeAndPlay() {
  TempFolder::Empty(Folder);
  SoundEnd end = SoundEnd::NotPrepared;
  const std::vector<std::wstring> files = MakeSounds(Folder, Input, [this] { return IsStopped(); }, end);
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (IsStopped(i > 0 ? kPauseMs : 0)) return SoundEnd::Well;
    Sounding = static_cast<int>(i);
    EditorSender(Window).PostListening();
    if (!Play(files[i])) return SoundEnd::NotPlayed;
  }
  return end;
}

bool SoundRun::Shared::Play(const std::wstring& file) const {
  const bool isPlayed = PlayMci(file, 0, 0, kAlias) == 0;
  while (isPlayed && IsMciPlaying(kAlias) && !IsStopped(kPollMs)) {
  }
  CloseMci(kAlias);
  return isPlayed;
}

void SoundRun::Start(HWND window, const std::wstring& folder, ListenInput input) {
  Stop();
  state_ = std::make_shared<Shared>();
  state_->Window = window;
  state_->Folder = folder;
  state_->Input = std::move(input);
  auto begun = std::make_unique<Begun>(state_, std::move(thread_));
  thread_.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, ThreadProc, begun.get(), 0, nullptr)));
  if (thread_) {
    begun.release();
  } else {
    state_->End = SoundEnd::NotPrepared;
    state_->Ended = true;
    EditorSender(window).PostListening();
  }
}

unsigned WINAPI SoundRun::ThreadProc(void* argument) {
  const std::unique_ptr<Begun> begun(static_cast<Begun*>(argument));
  Shared& shared = *begun->State;
  if (begun->Before) WaitForSingleObject(begun->Before.get(), INFINITE);
  try {
    if (!shared.IsStopped()) shared.End = shared.MakeAndPlay();
  } catch (const std::exception&) {
    shared.End = SoundEnd::NotPrepared;  // memory does not hold the sound
  }
  shared.Sounding = -1;
  shared.Ended = true;
  EditorSender(shared.Window).PostListening();
  return 0;
}

void SoundRun::Stop() const {
  if (state_) SetEvent(state_->StopAsked.get());
}

void SoundRun::StopAndWait() {
  Stop();
  if (thread_) WaitForSingleObject(thread_.get(), kLongestWaitMs);
  thread_.reset();  // not to be waited for twice
}

bool SoundRun::IsRunning() const {
  return state_ && !state_->Ended && !state_->IsStopped();
}

int SoundRun::Sounding() const {
  return IsRunning() ? state_->Sounding.load() : -1;
}

SoundEnd SoundRun::End() const {
  return state_ && state_->Ended && !state_->IsStopped() ? state_->End : SoundEnd::Well;
}
