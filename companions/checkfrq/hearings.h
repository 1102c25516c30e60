// Hearings: the hearings of waves, by the check library, in the folders that it was asked about.
//
// While the program goes through the maps of a folder, the next waves are listened to ahead on the other cores.
// Hearings are kept in files of the user's local data, and read from there in the next run as long as the wave has the
// same time and size. The library is unloaded when a run ends: each thread holds it by a reference of its own, which it
// gives back when it has had nothing to do for a while, and the last one writes the files.
//
// Any thread may call. One lock guards all but the hearings themselves, which nobody changes; nothing is read, listened
// to or written under it.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "check/heardwave.h"

class Hearings {
 public:
  using Search = std::unique_ptr<const PitchSearch>;
  struct Heard {
    std::shared_ptr<const HeardWave> wave;  // null: it cannot be listened to
    Search search;                          // of the same wave, if it was listened to just now
  };

  // `folder` is the one in which hearings are kept; empty if there is no place.
  Hearings(std::wstring folder, std::uint64_t edition);
  Hearings(const Hearings&) = delete;
  Hearings& operator=(const Hearings&) = delete;

  // The hearing of a wave. Listens if that was not done before, or waits for the thread that does. `hop` is positive.
  Heard Of(const std::wstring& wavePath, SampleCount hop);

  // The search of a wave; null for one that cannot be listened to.
  static Search SearchOf(const std::wstring& wavePath);

  // Keeps the answer to a map of the recording that `wave` was heard in.
  void Keep(const std::wstring& wavePath, const HeardWave& wave, KeptAnswer answer);

 private:
  // A wave by its folder and its name in it.
  using Name = std::pair<std::wstring, std::wstring>;
  struct Folder {
    std::vector<std::wstring> names;  // of its waves, in the order in which the program asks
    HeardWaves waves;
    bool hasChanged = false;
  };

  Folder& Enter(const std::wstring& path, std::unique_lock<std::mutex>& lock);
  void StartThreads();
  static unsigned __stdcall ThreadProc(void* self);
  void ListenAhead();
  bool TakeNext(Name& next);
  bool IsWanted(const Folder& folder, const Name& name) const;
  void Write();
  std::wstring FileOf(const std::wstring& folder) const;

  const std::wstring folder_;
  const std::uint64_t edition_;
  std::mutex mutex_;
  std::condition_variable hasNews_;  // for all: something was asked, or heard
  std::map<std::wstring, Folder> folders_;
  std::map<Name, Search> fresh_;  // heard ahead and not yet asked for
  std::set<Name> underWay_;
  std::set<Name> unheard_;  // waves that cannot be listened to ahead
  Name asked_;              // last
  SampleCount hop_ = 0;
  unsigned calls_ = 0;
  int threads_ = 0;
};
