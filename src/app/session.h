// Session: what this run of the program does for the next one: its folder for what must not be lost, and in it the
// journal of its edits.
#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "document/journal.h"
#include "recovery/recovery.h"

class Session {
 public:
  explicit Session(Document& maps);

  // `Start` comes before any map is read, `End` when nobody changes a map any more. Nothing is kept without `Start`.
  void Start();
  void End();

  // Begins the journal anew, for another folder or another kind of map. May be called on any thread.
  void BeginJournal(const std::wstring& folder, FrqType kind);
  // The next journal names this resampler, since its kind of map depends on it.
  void SetResampler(const std::wstring& path);
  // True if the edits that are brought back are on the disk again.
  bool IsJournalWritten();
  // The user has given up the edits of this run: the end of the process may come without an `End`.
  void GiveUpEdits();

  // Kept maps, writes under way, and the journals of runs that died.
  Recovery Safety;

 private:
  Document& maps_;
  std::optional<Journal> journal_;
  std::mutex mutex_;
  std::wstring resampler_;
};
