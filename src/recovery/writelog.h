// WriteLog: records a change on the disk before the file itself is touched, so that a change that a kill or a power cut
// has broken off is completed or taken back.
//
// A slot is a file that holds one change at a time: its first word tells whether that is under way. A thread has a slot
// for the time of its change, so that several may be under way at once. A slot that is never let go stays for the next
// start.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "base/fileguard.h"
#include "base/filesystem.h"

class WriteLog {
 public:
  // The folder is there when the first change begins.
  WriteLog(FileSystem& files, std::wstring folder) : files_(files), folder_(std::move(folder)) {}

  // Called on any thread, each of which ends the change that it has begun. Where the disk has no room for the record,
  // the change goes unrecorded.
  void Begin(const FileChange& change);
  void End();
  // Takes back and ends a change of that file that this run has left unfinished.
  void TakeBackLeft(const std::wstring& path);
  // Deletes the slots, except those that were never let go; false if there are such.
  bool Close();

  // The slots of a run that has gone. False if one could be neither completed nor taken back: it stays.
  static bool Mend(FileSystem& files, const std::wstring& folder);
  // Whether a file in a run's folder is a slot.
  static bool IsSlot(const std::wstring& name);

 private:
  struct Slot {
    std::wstring Path = {};
    std::unique_ptr<FileStream> File = {};
    std::wstring Target = {};  // of the change in it
    bool IsTaken = false;
  };

  Slot* Take(const std::wstring& target);
  bool LetGo(Slot& slot);

  FileSystem& files_;
  const std::wstring folder_;
  std::mutex mutex_;
  std::vector<std::unique_ptr<Slot>> slots_;
  std::map<std::thread::id, Slot*> taken_;
};
