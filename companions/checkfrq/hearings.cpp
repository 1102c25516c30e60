#include "hearings.h"

#include <windows.h>
#include <process.h>
#include <shlwapi.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <optional>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/path.h"
#include "base/text.h"
#include "base/wordhash.h"
#include "voicebank/soundfile.h"

namespace {

constexpr double kMostSecondsAhead = 15.0;  // of a wave that nobody has asked for yet, as several are held at once
constexpr std::ptrdiff_t kMostAhead = 4;    // waves, for each thread
constexpr int kMostThreads = 8;
constexpr auto kPatience = std::chrono::milliseconds(250);  // of a thread that has nothing to do
constexpr std::size_t kMostFiles = 40;

// The number of threads is that of the processors: a caller mostly waits for a wave that is under way.
int ThreadCount() {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  return std::clamp(static_cast<int>(info.dwNumberOfProcessors), 1, kMostThreads);
}

// Listens to a wave; gives none for one that cannot be listened to, or that somebody is writing.
Hearings::Heard Listen(const std::wstring& path, SampleCount hop, double mostSeconds) {
  const std::optional<FileFacts> facts = Disk().FactsOf(path);
  std::optional<Sound> sound = facts ? ReadSound(path, mostSeconds) : std::nullopt;
  if (!sound || Disk().FactsOf(path) != facts) return {};
  auto search = std::make_unique<const PitchSearch>(sound->samples, sound->rate);
  const std::size_t samples = sound->samples.size();
  sound->samples = {};
  HeardWave wave{*facts, HearingOf(*search, samples, sound->rate, hop)};
  return {std::make_shared<const HeardWave>(std::move(wave)), std::move(search)};
}

Hearings::Heard TryToListen(const std::wstring& path, SampleCount hop, double mostSeconds) {
  try {
    return Listen(path, hop, mostSeconds);
  } catch (const std::exception&) {
    return {};  // without memory
  }
}

std::vector<std::wstring> WavesIn(const std::wstring& folder) {
  std::vector<std::wstring> names = Disk().List(folder);
  std::erase_if(names, [](const std::wstring& name) { return !PathMatchSpecW(name.c_str(), L"*.wav"); });
  std::ranges::sort(names);
  return names;
}

// Deletes the files that were not written for the longest time.
void LeaveNewest(const std::wstring& folder) {
  std::vector<std::pair<std::int64_t, std::wstring>> files;
  for (const std::wstring& name : Disk().List(folder)) {
    const std::wstring path = PathIn(folder, name);
    if (const auto facts = Disk().FactsOf(path); facts && !facts->IsFolder) files.emplace_back(facts->Written, path);
  }
  std::ranges::sort(files, std::greater());
  for (std::size_t i = kMostFiles; i < files.size(); ++i) Disk().Delete(files[i].second);
}

}  // namespace

Hearings::Hearings(std::wstring folder, std::uint64_t edition) : folder_(std::move(folder)), edition_(edition) {}

Hearings::Heard Hearings::Of(const std::wstring& wavePath, SampleCount hop) {
  const Name name = {FolderOf(wavePath), FileNameOf(wavePath)};
  const std::optional<FileFacts> facts = Disk().FactsOf(wavePath);
  if (!facts) return {};
  std::unique_lock lock(mutex_);
  Folder& folder = Enter(name.first, lock);
  asked_ = name;
  hop_ = hop;
  ++calls_;
  std::erase_if(fresh_, [&](const auto& each) { return each.first.first != name.first || each.first < name; });
  StartThreads();
  hasNews_.notify_all();
  hasNews_.wait(lock, [&] { return !underWay_.contains(name); });
  if (const auto known = folder.waves.find(name.second);
      known != folder.waves.end() && known->second->File == *facts && known->second->Heard.Hop == hop) {
    auto fresh = fresh_.extract(name);
    return {known->second, fresh ? std::move(fresh.mapped()) : nullptr};
  }
  underWay_.insert(name);
  lock.unlock();
  Heard heard = TryToListen(wavePath, hop, kMostSecondsHeard);
  lock.lock();
  underWay_.erase(name);
  hasNews_.notify_all();
  if (heard.wave) {
    folder.waves.insert_or_assign(name.second, heard.wave);
    folder.hasChanged = true;
  }
  return heard;
}

Hearings::Search Hearings::SearchOf(const std::wstring& wavePath) {
  const std::optional<Sound> sound = ReadSound(wavePath, kMostSecondsHeard);
  return sound ? std::make_unique<const PitchSearch>(sound->samples, sound->rate) : nullptr;
}

void Hearings::Keep(const std::wstring& wavePath, const HeardWave& wave, KeptAnswer answer) {
  HeardWave answered = wave;
  answered.Answer = std::move(answer);
  auto kept = std::make_shared<const HeardWave>(std::move(answered));
  const std::lock_guard lock(mutex_);
  Folder& folder = folders_[FolderOf(wavePath)];
  folder.waves.insert_or_assign(FileNameOf(wavePath), std::move(kept));
  folder.hasChanged = true;
}

// The folder, with all that earlier runs have heard there. Folders stay once they are entered.
Hearings::Folder& Hearings::Enter(const std::wstring& path, std::unique_lock<std::mutex>& lock) {
  if (const auto known = folders_.find(path); known != folders_.end()) return known->second;
  lock.unlock();
  Folder folder{WavesIn(path), {}};
  if (const auto bytes = folder_.empty() ? std::nullopt : ReadWholeFile(FileOf(path))) {
    folder.waves = DecodeHeardWaves(*bytes, edition_);
  }
  lock.lock();
  return folders_.try_emplace(path, std::move(folder)).first->second;
}

// A thread that cannot be started is not missed: a wave that is asked for is listened to all the same.
void Hearings::StartThreads() {
  if (threads_ > 0) return;
  for (const int wanted = ThreadCount(); threads_ < wanted; ++threads_) {
    HMODULE own = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&ThreadProc),
                            &own)) {
      return;
    }
    const auto thread = reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, ThreadProc, this, 0, nullptr));
    if (!thread) {
      FreeLibrary(own);
      return;
    }
    CloseHandle(thread);
  }
}

unsigned __stdcall Hearings::ThreadProc(void* self) {
  HMODULE own = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const wchar_t*>(&ThreadProc), &own);
  try {
    static_cast<Hearings*>(self)->ListenAhead();
  } catch (const std::exception&) {
    // Without memory nobody listens ahead.
  }
  FreeLibraryAndExitThread(own, 0);
}

void Hearings::ListenAhead() {
  std::unique_lock lock(mutex_);
  for (;;) {
    if (Name next; TakeNext(next)) {
      const SampleCount hop = hop_;
      lock.unlock();
      Heard heard = TryToListen(PathIn(next.first, next.second), hop, kMostSecondsAhead);
      lock.lock();
      underWay_.erase(next);
      if (heard.wave) {
        Folder& folder = folders_[next.first];
        folder.waves.insert_or_assign(next.second, heard.wave);
        folder.hasChanged = true;
        fresh_.insert_or_assign(next, std::move(heard.search));
      } else {
        unheard_.insert(next);
      }
      hasNews_.notify_all();
      continue;
    }
    const unsigned calls = calls_;
    if (!hasNews_.wait_for(lock, kPatience, [&] { return calls_ != calls; })) break;
  }
  if (--threads_ > 0) return;
  fresh_.clear();
  lock.unlock();
  Write();
}

// Takes the next wave that will be asked for and that nobody has listened to, which is under way then. False if there
// is none among the next few.
bool Hearings::TakeNext(Name& next) {
  const auto at = folders_.find(asked_.first);
  if (at == folders_.end()) return false;
  const Folder& folder = at->second;
  const auto first = std::ranges::upper_bound(folder.names, asked_.second);
  const auto last = first + std::min(folder.names.end() - first, kMostAhead * threads_);
  const auto found = std::find_if(first, last, [&](const std::wstring& name) {
    return IsWanted(folder, {asked_.first, name});
  });
  if (found == last) return false;
  next = {asked_.first, *found};
  underWay_.insert(next);
  return true;
}

bool Hearings::IsWanted(const Folder& folder, const Name& name) const {
  if (underWay_.contains(name) || unheard_.contains(name)) return false;
  return !folder.waves.contains(name.second);
}

void Hearings::Write() {
  if (folder_.empty()) return;
  std::vector<std::pair<std::wstring, HeardWaves>> changed;
  {
    const std::lock_guard lock(mutex_);
    for (auto& [path, folder] : folders_) {
      if (std::exchange(folder.hasChanged, false)) changed.emplace_back(path, folder.waves);
    }
  }
  if (changed.empty() || !Disk().MakeFolder(folder_)) return;
  for (const auto& [path, waves] : changed) WriteWholeFile(FileOf(path), EncodeHeardWaves(waves, edition_));
  LeaveNewest(folder_);
}

std::wstring Hearings::FileOf(const std::wstring& folder) const {
  WordHash hash;
  for (const wchar_t unit : folder) hash.Add(std::uint64_t{unit});
  return PathIn(folder_, FormatText(L"%016llx.heard", hash.Value()));
}
