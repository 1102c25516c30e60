#include "document/journalreplay.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <unordered_map>
#include <utility>

using Record = JournalRecord;
using Reason = RestoreReport::Reason;

// Where memory gives out half way nothing is recovered: the maps stay as the files have them, and the journal is still
// there.
RestoreReport JournalReplay::Run(JournalContent content) {
  const std::lock_guard locked(document_);
  document_.CloseStroke();
  document_.steps_.Clear();
  bool isWhole = true;
  try {
    syllables_ = Collect(content.Records);
    Place();
    Load();
    for (Record& record : content.Records) Apply(record);
    if (stroke_) ApplyStep(std::move(*stroke_));
  } catch (const std::exception&) {
    isWhole = false;
    document_.steps_.Clear();
  }
  for (auto& [entry, syllable] : syllables_) syllable.IsLoaded = syllable.IsLoaded && isWhole;
  Settle();
  document_.steps_.DropEntry(-1);
  return std::move(report_);
}

// The syllables of the journal, with the state of their files and edited marks at its end.
std::map<int, JournalReplay::Syllable> JournalReplay::Collect(const std::vector<Record>& records) {
  std::map<int, Syllable> syllables;
  for (const Record& record : records) {
    if (record.Entry < 0) continue;
    Syllable& syllable = syllables[record.Entry];
    switch (record.What) {
      case Record::Read:
        syllable.Path = record.Path;
        [[fallthrough]];
      case Record::Saved:
        syllable.Stamps = {record.Stamp};
        syllable.Image = record.Image;
        break;
      case Record::Broken: syllable.Stamps.push_back(record.Stamp); break;
      case Record::Edited:
      case Record::Clean: syllable.WasEdited = record.What == Record::Edited; break;
      default: break;
    }
  }
  return syllables;
}

// A save that was broken off and taken back has the file written at another time, with nothing in it changed.
std::vector<std::wstring> JournalReplay::UnchangedOf(const JournalContent& content, const NumberOf& stampOf,
                                                     const NumberOf& imageOf) {
  std::vector<std::wstring> paths;
  for (const auto& [entry, syllable] : Collect(content.Records)) {
    if (!syllable.WasEdited) continue;
    const std::uint64_t stamp = stampOf(syllable.Path);
    const bool isSame = std::ranges::find(syllable.Stamps, stamp) != syllable.Stamps.end();
    if (isSame || (syllable.Image != 0 && imageOf(syllable.Path) == syllable.Image)) paths.push_back(syllable.Path);
  }
  return paths;
}

// Syllables may stand in another order now, or be gone. Those that are gone get indexes of their own, so that the
// history goes the same ways until they are taken out of it.
void JournalReplay::Place() {
  std::unordered_map<std::wstring_view, int> indexes;
  const int count = static_cast<int>(document_.entries_.size());
  for (int index = 0; index < count; ++index) indexes.emplace(document_.At(index)->Path, index);
  int none = count;
  for (auto& [entry, syllable] : syllables_) {
    const auto found = indexes.find(syllable.Path);
    syllable.Index = found == indexes.end() ? none++ : found->second;
    byIndex_[syllable.Index] = &syllable;
  }
}

void JournalReplay::Load() {
  for (auto& [entry, syllable] : syllables_) {
    const SyllableEntry* const here = document_.At(syllable.Index);
    if (!here || !here->HasMap) continue;
    document_.SetEditedMark(syllable.Index, false);
    syllable.IsLoaded = document_.LoadPair(syllable.Index, Document::OnFailure::EmptySaved) == 0;
  }
}

void JournalReplay::Apply(Record& record) {
  const auto found = syllables_.find(record.Entry);
  Syllable* const syllable = found == syllables_.end() ? nullptr : &found->second;
  switch (record.What) {
    case Record::Done: return ApplyStep(std::move(*record.Change));
    case Record::Stroke: stroke_ = std::move(record.Change); return;
    case Record::NoStroke: stroke_.reset(); return;
    case Record::Undone: return ApplyMove(false);
    case Record::Redone: return ApplyMove(true);
    case Record::Cleared: return document_.steps_.Clear();
    default: break;
  }
  if (!syllable) return;
  switch (record.What) {
    case Record::Read: return ApplyRead(*syllable);
    case Record::Saved:
    case Record::Broken: return ApplySaved(*syllable, record.What == Record::Saved);
    case Record::Dropped: return document_.steps_.DropEntry(syllable->Index);
    default: document_.SetEditedMark(syllable->Index, record.What == Record::Edited); return;
  }
}

// The file may have been saved after this record. Then the steps in between set each frame that the save has changed as
// it was.
void JournalReplay::ApplyRead(Syllable& syllable) {
  SyllableEntry* const entry = document_.At(syllable.Index);
  if (!entry || !syllable.IsLoaded) return;
  entry->SavedMap.CopyTo(entry->Map);
  entry->File.SetAsSaved();
  if (document_.journal_) document_.journal_->OnRead(syllable.Index, *entry);
}

// After a save that failed, the file that has been read here is the one that it has left.
void JournalReplay::ApplySaved(Syllable& syllable, bool whole) {
  SyllableEntry* const entry = document_.At(syllable.Index);
  if (!entry || !syllable.IsLoaded) return;
  entry->File.SetAsSaved();
  if (whole) entry->File.SetContent(entry->Map);
  if (document_.journal_) document_.journal_->OnSaved(syllable.Index, *entry, whole);
}

void JournalReplay::ApplyStep(Step step) {
  for (MapChange& change : step.Maps) {
    const auto found = syllables_.find(change.Entry());
    change.SetEntry(found == syllables_.end() ? -1 : found->second.Index);
    ApplyChange(change, true);
  }
  document_.steps_.Add(std::move(step));
}

void JournalReplay::ApplyMove(bool redo) {
  const Step* const step = document_.steps_.Next(redo);
  if (!step) return;
  const auto apply = [this, redo](const MapChange& change) { ApplyChange(change, redo); };
  if (redo) {
    std::for_each(step->Maps.begin(), step->Maps.end(), apply);
  } else {
    std::for_each(step->Maps.rbegin(), step->Maps.rend(), apply);
  }
  document_.steps_.Move(redo);
}

// The change is made whatever the map holds: a file that was saved after this step holds the change already, or a later
// one, and some kinds of files round it.
void JournalReplay::ApplyChange(const MapChange& change, bool redo) {
  const auto found = byIndex_.find(change.Entry());
  SyllableEntry* const entry = document_.At(change.Entry());
  if (!entry || found == byIndex_.end() || !found->second->IsLoaded) return;
  if (change.Reaches(entry->Map)) {
    change.Apply(entry->Map, redo);
  } else {
    found->second->IsFitting = false;
  }
}

void JournalReplay::Settle() {
  using enum EntryChange::Fact;
  for (auto& [entry, syllable] : syllables_) {
    const std::optional<Reason> reason = ReasonAgainst(syllable);
    if (reason) LeaveAlone(syllable.Index);
    // A syllable whose map was emptied has nothing that could be recovered.
    if (reason && syllable.WasEdited && syllable.Image != 0) report_.Others.push_back({syllable.Path, *reason});
    const SyllableEntry* const here = document_.At(syllable.Index);
    if (!here) continue;
    report_.Recovered += here->Edited;
    document_.Tell({.Index = syllable.Index, .Facts = Replaced | Saved | Marks | Edited | Touched, .OneOfMany = true});
  }
}

// The stamp may be another one although nobody else has written: where a save was broken off and taken back, and where
// the journal broke off between a save and the record of it.
std::optional<Reason> JournalReplay::ReasonAgainst(const Syllable& syllable) {
  SyllableEntry* const entry = document_.At(syllable.Index);
  if (!entry || !entry->HasMap) return Reason::Gone;
  if (!syllable.IsLoaded || syllable.Image == 0) return Reason::Unreadable;
  if (!syllable.IsFitting) return Reason::Changed;
  if (std::ranges::find(syllable.Stamps, entry->File.Stamp()) != syllable.Stamps.end()) return std::nullopt;
  if (ImageHash(entry->SavedMap) == syllable.Image) return std::nullopt;
  if (!HaveSameImage(entry->Map, entry->SavedMap)) return Reason::Changed;
  entry->File.SetAsSaved();
  if (document_.journal_) document_.journal_->OnSaved(syllable.Index, *entry, true);
  document_.SetEditedMark(syllable.Index, false);
  return std::nullopt;
}

void JournalReplay::LeaveAlone(int index) {
  document_.steps_.DropEntry(index);
  SyllableEntry* const entry = document_.At(index);
  if (!entry) return;
  try {
    entry->SavedMap.CopyTo(entry->Map);
  } catch (const std::exception&) {
    entry->Map.Clear();
  }
  entry->File.SetAsSaved();
  if (document_.journal_) document_.journal_->OnRead(index, *entry);
  document_.SetEditedMark(index, false);
}
