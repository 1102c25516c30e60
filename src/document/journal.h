// Journal: writes down all that a document tells, as it happens, so that unsaved edits outlast a kill or a power cut.
//
// The document only leaves bytes in a queue. A thread of the journal's own appends them to the file, 20 ms later at
// most, and while a stroke is open asks the document now and then how far it is, so that no more than a second of work
// is ever missing. There is no file before the first edit. Where the disk fails, or the file would become too large,
// journaling ends without a word until the next folder: nothing that a user does hangs on it.
//
// Locks: the members that the document's calls use are guarded by its lock. The queue has a lock that is taken under
// that one, never the other way round, and that nobody holds while the disk works.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>

#include "document/document.h"
#include "document/journalfile.h"

class Journal : public DocumentJournal {
 public:
  // The time after which an open stroke is asked for; with the write behind it that stays below a second.
  static constexpr std::chrono::milliseconds kStrokeInterval{750};
  // The time that the thread stays awake after the last work, and the pauses in which it looks for more then.
  static constexpr std::chrono::milliseconds kAwake{1000};
  static constexpr std::chrono::milliseconds kPause{20};

  // The document tells this journal from now on, and outlives it. `path` is that of a file in a folder that is there.
  Journal(Document& document, FileSystem& files, std::wstring path,
          std::chrono::milliseconds strokeInterval = kStrokeInterval);
  // The file stays.
  ~Journal() override { Close(false); }
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  // Begins a journal of this voicebank: after each Document::Open, before anybody can edit, and when another kind of
  // maps comes to work and nothing is edited. Without it nothing is written.
  void Begin(const JournalHead& head);
  // Waits until all that was told is on the disk. False if it is not, since journaling has ended. Neither this nor
  // Close is called under the document's lock.
  bool Flush();
  // Ends the journal: nothing is told any more, all that was told is written, and the file goes or stays.
  void Close(bool remove);

  void OnOpened() override;
  void OnRead(int index, const SyllableEntry& entry) override;
  void OnSaved(int index, const SyllableEntry& entry, bool whole) override;
  void OnEdited(int index, bool edited) override;
  void OnStep(const Step& step) override;
  void OnMoved(bool redo) override;
  void OnDropped(int index) override;
  void OnCleared() override;
  void OnStroke(bool isOpen) override;
  void OnStrokeSoFar(const Step& step) override;
  void OnUnlock() override;

 private:
  using Clock = std::chrono::steady_clock;

  // A syllable is named when there is first something to tell of it: most are looked at and never edited.
  struct Syllable {
    std::wstring Path = {};
    std::uint64_t Stamp = 0;
    std::uint64_t Image = 0;
    bool IsNamed = false;
  };
  struct Frame {
    Bytes Content;
    std::int64_t Time = 0;
  };

  template <typename Function>
  void Note(Function&& write);
  void End();
  void Name(int index);
  void WriteRecord(JournalRecord::Type type, int index);
  void Commit();
  void StartAnew(std::optional<Bytes> head);
  void Run();
  bool WaitForWork(std::unique_lock<std::mutex>& lock);
  void AskForStroke(std::unique_lock<std::mutex>& lock);
  void Write(std::unique_lock<std::mutex>& lock);

  // Guarded by the document's lock:
  Document& document_;
  bool isOn_ = false;
  bool hasRecords_ = false;  // of this voicebank
  std::unordered_map<int, Syllable> syllables_;
  ByteWriter frame_ = NewFrame();
  std::uint64_t strokeTold_ = 0;  // hash of the open stroke as it was told last, 0 if it was not

  // Guarded by the lock of the queue:
  std::mutex mutex_;
  std::condition_variable told_;     // to the thread
  std::condition_variable written_;  // by it
  std::deque<Frame> queue_;
  std::optional<Bytes> newHead_;  // another folder, empty before its Begin
  std::optional<Clock::time_point> strokeDue_;
  Clock::time_point awakeUntil_{};
  bool isAsleep_ = false;
  bool isWriting_ = false;
  bool hasFailed_ = false;
  bool isEnding_ = false;

  // Used by the thread alone:
  JournalFile file_;
  const std::chrono::milliseconds strokeInterval_;
  std::thread thread_;
};
