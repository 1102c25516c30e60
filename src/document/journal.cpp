#include "document/journal.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/wordhash.h"

namespace {

std::int64_t PresentTime() {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::floor<std::chrono::seconds>(sinceEpoch).count();
}

}  // namespace

Journal::Journal(Document& document, FileSystem& files, std::wstring path, std::chrono::milliseconds strokeInterval)
    : document_(document), file_(files, std::move(path)), strokeInterval_(strokeInterval), thread_([this] { Run(); }) {
  document_.SetJournal(this);
}

void Journal::Begin(const JournalHead& head) {
  const std::lock_guard locked(document_);
  try {
    ByteWriter writer = NewFrame();
    EncodeHead(writer, head);
    StartAnew(writer.Take());
    isOn_ = true;
  } catch (const std::exception&) {
    End();
  }
}

void Journal::OnOpened() {
  syllables_.clear();
  StartAnew(Bytes());
}

// Frames of the old folder that are not yet written are of no use to anybody.
void Journal::StartAnew(std::optional<Bytes> head) {
  End();
  for (auto& [index, syllable] : syllables_) syllable.IsNamed = false;
  hasRecords_ = false;
  strokeTold_ = 0;
  const std::lock_guard lock(mutex_);
  queue_.clear();
  newHead_ = std::move(head);
  hasFailed_ = false;
  told_.notify_one();
}

bool Journal::Flush() {
  std::unique_lock lock(mutex_);
  told_.notify_one();
  written_.wait(lock, [this] { return queue_.empty() && !isWriting_ && !newHead_; });
  return !hasFailed_;
}

void Journal::Close(bool remove) {
  if (!thread_.joinable()) return;
  document_.SetJournal(nullptr);
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
    told_.notify_one();
  }
  thread_.join();
  remove ? file_.Remove() : file_.Close();
}

// A lack of memory must not reach the document, which has done its work already.
template <typename Function>
void Journal::Note(Function&& write) {
  if (!isOn_) return;
  try {
    write();
    hasRecords_ = true;
  } catch (const std::exception&) {
    End();
  }
}

void Journal::End() {
  isOn_ = false;
  frame_ = NewFrame();
}

void Journal::WriteRecord(JournalRecord::Type type, int index) {
  JournalRecord record{.What = type, .Entry = index};
  if (type <= JournalRecord::Broken) {
    const Syllable& syllable = syllables_.at(index);
    record.Path = syllable.Path;
    record.Stamp = syllable.Stamp;
    record.Image = syllable.Image;
  }
  EncodeRecord(frame_, record);
}

void Journal::Name(int index) {
  Syllable& syllable = syllables_[index];
  if (std::exchange(syllable.IsNamed, true) || syllable.Image == 0) return;
  WriteRecord(JournalRecord::Read, index);
}

// An entry may be edited before its map is there, since a window has said so.
void Journal::OnRead(int index, const SyllableEntry& entry) {
  try {
    Syllable& syllable = syllables_[index];
    syllable.Path = entry.Path;
    syllable.Stamp = entry.File.Stamp();
    syllable.Image = entry.Map.Loaded ? ImageHash(entry.Map) : 0;
    if (syllable.IsNamed) {
      Note([&] { WriteRecord(JournalRecord::Read, index); });
    } else if (entry.Edited) {
      OnEdited(index, true);
    }
  } catch (const std::exception&) {
    End();
  }
}

void Journal::OnSaved(int index, const SyllableEntry& entry, bool whole) {
  const auto found = syllables_.find(index);
  if (found == syllables_.end()) return;
  Syllable& syllable = found->second;
  syllable.Stamp = entry.File.Stamp();
  if (whole) syllable.Image = ImageHash(entry.Map);
  if (syllable.IsNamed) Note([&] { WriteRecord(whole ? JournalRecord::Saved : JournalRecord::Broken, index); });
}

void Journal::OnEdited(int index, bool edited) {
  const auto found = syllables_.find(index);
  if (found == syllables_.end()) return;
  const bool isWorthNaming = edited && found->second.Image != 0;
  if (!found->second.IsNamed && !isWorthNaming) return;
  Note([&] {
    Name(index);
    WriteRecord(edited ? JournalRecord::Edited : JournalRecord::Clean, index);
  });
}

void Journal::OnStep(const Step& step) {
  Note([&] {
    if (frame_.Size() == kFrameHead) frame_.Reserve(kFrameHead + step.Bytes());
    for (const MapChange& change : step.Maps) Name(change.Entry());
    EncodeChange(frame_, JournalRecord::Done, step);
  });
}

void Journal::OnMoved(bool redo) {
  Note([&] { WriteRecord(redo ? JournalRecord::Redone : JournalRecord::Undone, -1); });
}

void Journal::OnDropped(int index) {
  Note([&] { WriteRecord(JournalRecord::Dropped, index); });
}

void Journal::OnCleared() {
  if (hasRecords_) Note([&] { WriteRecord(JournalRecord::Cleared, -1); });
}

void Journal::OnStroke(bool isOpen) {
  if (std::exchange(strokeTold_, 0) != 0) Note([&] { WriteRecord(JournalRecord::NoStroke, -1); });
  if (!isOpen || !isOn_) return;
  const std::lock_guard lock(mutex_);
  strokeDue_ = Clock::now() + strokeInterval_;
  if (isAsleep_) told_.notify_one();
}

// The stroke is written only if it has changed: a hand that rests for a while leaves nothing new.
void Journal::OnStrokeSoFar(const Step& step) {
  Note([&] {
    ByteWriter writer;
    EncodeChange(writer, JournalRecord::Stroke, step);
    const Bytes record = writer.Take();
    WordHash hash;
    hash.Add(ByteSpan(record));
    if (std::exchange(strokeTold_, hash.Value()) == hash.Value()) return;
    for (const MapChange& change : step.Maps) Name(change.Entry());
    std::memcpy(frame_.Append(record.size()), record.data(), record.size());
    Commit();
  });
}

void Journal::OnUnlock() {
  if (frame_.Size() > kFrameHead) Note([&] { Commit(); });
}

void Journal::Commit() {
  Frame frame{std::exchange(frame_, NewFrame()).Take(), PresentTime()};
  const std::lock_guard lock(mutex_);
  if (hasFailed_) return;
  queue_.push_back(std::move(frame));
  if (isAsleep_) told_.notify_one();
}

void Journal::Run() {
  std::unique_lock lock(mutex_);
  for (;;) {
    if (WaitForWork(lock)) {
      Write(lock);
      if (isEnding_ && queue_.empty()) return;
    } else {
      AskForStroke(lock);
    }
  }
}

// False if it is time to ask for the open stroke. To wake this thread costs another one more than the step itself, so
// this one looks by itself while somebody is at work.
bool Journal::WaitForWork(std::unique_lock<std::mutex>& lock) {
  while (!newHead_ && queue_.empty() && !isEnding_) {
    const Clock::time_point now = Clock::now();
    if (strokeDue_ && now >= *strokeDue_) return false;
    if (strokeDue_ || now < awakeUntil_) {
      told_.wait_for(lock, std::min(kPause, strokeInterval_));
      continue;
    }
    isAsleep_ = true;
    told_.wait(lock);
    isAsleep_ = false;
  }
  awakeUntil_ = Clock::now() + kAwake;
  return true;
}

// The document tells the stroke on this thread, under its own lock. Meanwhile another stroke may have begun.
void Journal::AskForStroke(std::unique_lock<std::mutex>& lock) {
  strokeDue_.reset();
  lock.unlock();
  const bool isOpen = document_.TellStroke();
  lock.lock();
  if (isOpen && !strokeDue_) strokeDue_ = Clock::now() + strokeInterval_;
}

// The lock is let go while the disk works. Where a folder is opened meanwhile, a failure of this write does not count.
void Journal::Write(std::unique_lock<std::mutex>& lock) {
  std::deque<Frame> frames = std::exchange(queue_, {});
  std::optional<Bytes> head = std::exchange(newHead_, std::nullopt);
  const bool isVain = hasFailed_;
  isWriting_ = true;
  lock.unlock();
  bool isWritten = true;
  try {
    if (head) file_.Begin(std::move(*head));
    for (Frame& frame : frames) {
      isWritten = isWritten && !isVain && file_.Append(std::move(frame.Content), frame.Time);
    }
  } catch (const std::exception&) {
    isWritten = false;
  }
  lock.lock();
  isWriting_ = false;
  if (!newHead_ && !isWritten) hasFailed_ = true;
  written_.notify_all();
}
