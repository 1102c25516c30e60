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

  // Before any map is read; and the orderly end, when nobody changes a map any more. Nothing is kept without `Start`.
  void Start();
  void End();

  // A folder has been opened, or another kind of map has come to work: the journal begins anew. On any thread.
  void BeginJournal(const std::wstring& folder, FrqType kind);
  // That of the next journal, whose kind of map hangs on it.
  void SetResampler(const std::wstring& path);
  // The edits that are brought back are on the disk again. False if they are not.
  bool IsJournalWritten();
  // The edits of this run have been given up by the user: the end of the process may come without an `End`.
  void GiveUpEdits();

  // Kept maps, writes under way, and the journals of runs that died.
  Recovery Safety;

 private:
  Document& maps_;
  std::optional<Journal> journal_;
  std::mutex mutex_;
  std::wstring resampler_;
};
