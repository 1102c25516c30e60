#include "document/document.h"

#include <algorithm>
#include <utility>

void Document::SetJournal(DocumentJournal* journal) {
  const std::lock_guard locked(*this);
  journal_ = journal;
  steps_.SetJournal(journal);
}

bool Document::TellStroke() const {
  const std::lock_guard locked(mutex_);
  const SyllableEntry* const entry = At(steps_.StrokeEntry());
  if (!entry) return false;
  const std::optional<Step> step = journal_ ? steps_.StrokeSoFar(entry->Map) : std::nullopt;
  if (step) journal_->OnStrokeSoFar(*step);
  return true;
}

void Document::lock() {
  mutex_.lock();
  ++depth_;
}

// Changes are told by the outermost holder alone, and only when another thread may come in again.
void Document::unlock() {
  DocumentChanges told;
  if (--depth_ == 0) {
    told = std::exchange(told_, {});
    told.History = steps_.TakeChanged();
    if (journal_) journal_->OnUnlock();
  }
  mutex_.unlock();
  if (told.Entries.empty() && !told.OfMany && !told.History) return;
  for (DocumentListener* const listener : listeners_) listener->OnChanged(told);
}

void Document::Tell(EntryChange change) {
  if (change.OneOfMany) told_.OfMany = true;
  told_.Entries.push_back(std::move(change));
}

SyllableEntry* Document::At(int index) const {
  return index >= 0 && index < std::ssize(entries_) ? entries_[static_cast<std::size_t>(index)].get() : nullptr;
}

SyllableEntries Document::Open(std::vector<FoundSyllable> found) {
  const std::lock_guard locked(*this);
  SyllableEntries entries;
  entries.reserve(found.size());
  mapCount_ = 0;
  for (FoundSyllable& syllable : found) {
    auto entry = std::make_unique<SyllableEntry>();
    entry->Path = std::move(syllable.Path);
    entry->FrameEstimate = syllable.FrameEstimate;
    entry->HasMap = syllable.HasMap;
    mapCount_ += entry->HasMap;
    entries.push_back(std::move(entry));
  }
  steps_.Clear();
  editedCount_ = 0;
  current_ = -1;
  if (journal_) journal_->OnOpened();
  return std::exchange(entries_, std::move(entries));
}

DocumentState Document::State() const {
  const std::lock_guard locked(mutex_);
  DocumentState state;
  state.Entries = static_cast<int>(entries_.size());
  state.Maps = mapCount_;
  state.Edited = editedCount_;
  const SyllableEntry* const current = At(current_);
  state.CurrentEdited = current && current->Edited;
  state.Saved = savedCount_;
  state.StrokeEntry = steps_.StrokeEntry();
  state.Undo = steps_.UndoGesture();
  if (const Step* const step = steps_.Next(false)) state.UndoEntry = step->Maps.front().Entry();
  if (state.StrokeEntry >= 0) state.UndoEntry = state.StrokeEntry;
  if (const Step* const step = steps_.Next(true)) {
    state.Redo = step->What;
    state.RedoEntry = step->Maps.front().Entry();
  }
  return state;
}

EntryFacts Document::Facts(int index) const {
  const std::lock_guard locked(mutex_);
  const SyllableEntry* const entry = At(index);
  if (!entry) return {};
  return {entry->Path,         entry->FrameEstimate, entry->HasMap,    entry->Edited,
          entry->Map.HasMarks, entry->Map.Loaded,    entry->Unreadable};
}

MapPair Document::Maps(int index) const {
  const std::lock_guard locked(mutex_);
  SyllableEntry* const entry = At(index);
  return entry ? MapPair{&entry->Map, &entry->SavedMap} : MapPair{};
}

int Document::IndexOf(const FrqMap* map) const {
  const std::lock_guard locked(mutex_);
  if (!map) return -1;
  // The map nearly always is the current one, and a stroke asks for it with each of its columns.
  if (const SyllableEntry* const current = At(current_); current && &current->Map == map) return current_;
  const auto found = std::ranges::find(entries_, map, [](const auto& entry) { return &entry->Map; });
  return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

int Document::Current() const {
  const std::lock_guard locked(mutex_);
  return current_;
}

// A stroke belongs to the syllable on which it began.
void Document::SetCurrent(int index) {
  const std::lock_guard locked(*this);
  if (index != current_) CloseStroke();
  current_ = At(index) ? index : -1;
}

void Document::SetHasMap(int index, bool hasMap, std::uint32_t frameEstimate) {
  const std::lock_guard locked(*this);
  SyllableEntry* const entry = At(index);
  if (!entry) return;
  entry->FrameEstimate = hasMap ? frameEstimate : 0;
  if (entry->HasMap == hasMap) return;
  entry->HasMap = hasMap;
  mapCount_ += hasMap ? 1 : -1;
  unsigned facts = EntryChange::HasMap;
  if (!hasMap) {
    steps_.DropEntry(index);
    entry->Map.Clear();
    entry->SavedMap.Clear();
    entry->File.SetAsSaved();
    if (journal_) journal_->OnRead(index, *entry);
    facts |= EntryChange::Replaced | EntryChange::Saved | EntryChange::Marks;
    if (SetEditedMark(index, false)) facts |= EntryChange::Edited;
    SetUnreadable(index, false);
  }
  Tell({.Index = index, .Facts = facts});
}

// True if the mark has changed.
bool Document::SetEditedMark(int index, bool edited) {
  SyllableEntry* const entry = At(index);
  if (!entry || entry->Edited == edited) return false;
  entry->Edited = edited;
  editedCount_ += edited ? 1 : -1;
  if (journal_) journal_->OnEdited(index, edited);
  return true;
}

void Document::SetUnreadable(int index, bool unreadable) {
  SyllableEntry& entry = *At(index);
  if (std::exchange(entry.Unreadable, unreadable) != unreadable) Tell({.Index = index, .Facts = EntryChange::Readable});
}

void Document::SetEdited(int index, bool edited, bool oneOfMany) {
  const std::lock_guard locked(*this);
  if (!At(index)) return;
  const bool changed = SetEditedMark(index, edited);
  Tell({.Index = index,
        .Facts = changed ? EntryChange::Edited | EntryChange::Touched : EntryChange::Touched,
        .OneOfMany = oneOfMany});
}
