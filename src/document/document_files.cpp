// Document: its work with files, each in one way: loading a pair of maps, saving, reloading, removing.
#include <exception>
#include <utility>

#include "document/document.h"

namespace {

// Reads both maps of an entry. The stamp is taken first, so that a program that writes the file meanwhile makes it
// another one. A map that memory does not hold twice counts as one that cannot be read: the working one is empty then,
// and the saved one stays or is empty too.
int ReadPair(DocumentFiles& files, SyllableEntry& entry, Document::OnFailure onFailure) {
  int result = -1;
  try {
    const std::uint64_t stamp = files.Stamp(entry.Path);
    result = files.Load(entry.Map, entry.Path);
    if (result == 0) {
      entry.Map.CopyTo(entry.SavedMap);
      entry.File.SetAsSaved(stamp);
      return 0;
    }
  } catch (const std::exception&) {
    result = -1;
  }
  entry.Map.Clear();
  if (onFailure == Document::OnFailure::EmptySaved) {
    entry.SavedMap.Clear();
    entry.File.SetAsSaved();
  }
  return result;
}

}  // namespace

int Document::LoadPair(int index, OnFailure onFailure) {
  SyllableEntry& entry = *At(index);
  const int result = ReadPair(files_, entry, onFailure);
  if (journal_) journal_->OnRead(index, entry);
  SetUnreadable(index, result != 0 && entry.HasMap);
  return result;
}

bool Document::EnsureLoaded(int index, OnFailure onFailure) {
  const std::lock_guard locked(*this);
  SyllableEntry* const entry = At(index);
  if (!entry) return false;
  if (entry->Map.Loaded) return true;
  if (LoadPair(index, onFailure) != 0) return false;
  Tell({.Index = index, .Facts = EntryChange::Replaced | EntryChange::Saved});
  return true;
}

// The map that a window shows is not replaced under it: selecting its syllable reads it.
void Document::Adopt(int index, std::wstring_view path, FrqMap& map, std::uint64_t stamp) {
  const std::lock_guard locked(*this);
  SyllableEntry* const entry = At(index);
  if (!entry || entry->Path != path) return;
  if (entry->Map.Loaded) {
    CopyMap(index, map);
    return;
  }
  if (!entry->HasMap || index == current_) return;
  try {
    map.CopyTo(entry->SavedMap);
    map.CopyTo(entry->Map);
    entry->File.SetAsSaved(stamp);
  } catch (const std::exception&) {
    entry->Map.Clear();
  }
  if (journal_) journal_->OnRead(index, *entry);
  SetUnreadable(index, false);
}

bool Document::CopyMap(int index, FrqMap& target) const {
  const std::lock_guard locked(mutex_);
  const SyllableEntry* const entry = At(index);
  try {
    if (entry && entry->Map.Loaded) return entry->Map.CopyTo(target) == 0;
  } catch (const std::exception&) {
    // without memory there is nothing to show
  }
  target.Clear();
  return false;
}

int Document::Reload(int index, OnFailure onFailure, bool clearEdited) {
  const Scope scope(*this, Gesture::Reload);
  SyllableEntry* const entry = At(index);
  if (!entry) return -1;
  std::optional<MapBefore> before = steps_.Remember(entry->Map);
  const std::optional<MapImage> onDisk = entry->File.Content(entry->SavedMap);
  const int result = LoadPair(index, onFailure);
  // A map that was saved here comes back as its kind of file holds it, rounded or not.
  if (result == 0 && onDisk && (onDisk->IsOf(entry->Map) || onDisk->IsNearly(entry->Map))) {
    steps_.Record(index, std::move(before), entry->Map);
  } else {
    steps_.DropEntry(index);
  }
  TellRead(index, result == 0 || clearEdited);
  return result;
}

int Document::ReadAfresh(int index, OnFailure onFailure, bool clearEdited) {
  const std::lock_guard locked(*this);
  CloseStroke();
  SyllableEntry* const entry = At(index);
  if (!entry) return -1;
  steps_.DropEntry(index);
  const int result = LoadPair(index, onFailure);
  TellRead(index, result == 0 || clearEdited);
  return result;
}

// An entry whose map could not be read keeps its edited mark, unless it is said to be clean.
void Document::TellRead(int index, bool isClean) {
  EntryChange told{.Index = index, .Facts = EntryChange::Replaced | EntryChange::Saved};
  if (isClean) told.Facts |= EntryChange::Touched;
  if (isClean && SetEditedMark(index, false)) told.Facts |= EntryChange::Edited;
  Tell(std::move(told));
}

int Document::Save(int index, bool deleteAnalysis, std::uint32_t& error, OutsideChange change) {
  const std::lock_guard locked(*this);
  CloseStroke();
  SyllableEntry* const entry = At(index);
  if (!entry) return -1;
  // An entry may be marked edited that was never read: it has nothing to save.
  if (change == OutsideChange::Refuse && entry->Map.Loaded &&
      entry->File.IsChangedOutside(entry->SavedMap, files_, entry->Path)) {
    return kChangedOutside;
  }
  try {
    if (const int result = files_.Save(entry->Map, entry->Path, error); result != 0) {
      if (error == 0) return result;
      entry->File.OnBroken(files_, entry->Path);
      if (journal_) journal_->OnSaved(index, *entry, false);
      return result;
    }
  } catch (const std::exception&) {
    error = 0;
    return -1;
  }
  entry->File.OnSaved(files_, entry->Path, entry->Map);
  SetUnreadable(index, false);
  ++savedCount_;
  if (journal_) journal_->OnSaved(index, *entry, true);
  const bool changed = SetEditedMark(index, false);
  Tell({.Index = index, .Facts = changed ? EntryChange::Edited | EntryChange::Touched : EntryChange::Touched});
  try {
    if (deleteAnalysis) files_.DeleteAnalysis(entry->Path);
  } catch (const std::exception&) {
    // the map is saved all the same
  }
  return 0;
}

// After a save that failed, the saved map shows the state that did not reach the file; users know it as that of the
// last attempt. The file's content is kept apart from it then.
void Document::RenewSaved(int index) {
  const std::lock_guard locked(*this);
  SyllableEntry* const entry = At(index);
  if (!entry) return;
  try {
    entry->File.BeforeRenewal(entry->SavedMap);
    entry->Map.CopyTo(entry->SavedMap);
  } catch (const std::exception&) {
    entry->SavedMap.Clear();  // memory does not hold it twice: no second curve
  }
  entry->File.AfterRenewal(entry->SavedMap);
  Tell({.Index = index, .Facts = EntryChange::Saved});
}

bool Document::Remove(int index) {
  const std::lock_guard locked(*this);
  const SyllableEntry* const entry = At(index);
  try {
    if (!entry || !files_.Delete(entry->Path)) return false;
  } catch (const std::exception&) {
    return false;
  }
  SetHasMap(index, false, 0);
  return true;
}
