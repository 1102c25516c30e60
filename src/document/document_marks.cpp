// Document: the marks that a check leaves, and the taking or ending of them.
#include <algorithm>
#include <new>
#include <utility>

#include "document/document.h"

void Document::Mark(int index, const std::function<void(FrqMap&)>& mark, bool tell) {
  const std::lock_guard locked(*this);
  SyllableEntry* const entry = At(index);
  if (!entry) return;
  // The stroke ends first, or undoing it would take the new marks along.
  if (steps_.StrokeEntry() == index) CloseStroke();
  try {
    mark(entry->Map);
  } catch (const std::bad_alloc&) {
    return;
  }
  if (tell) Tell({.Index = index, .Facts = EntryChange::Marks});
}

// With marks, but no run at the position, the average is computed anew all the same, whatever it was, and the entry is
// edited. Marks that are ended change nothing that a file holds.
bool Document::ApplyMarks(Gesture gesture, int index, SampleCount position, bool apply) {
  const Scope scope(*this, gesture);
  const bool many = gesture == Gesture::ModifyAll || gesture == Gesture::IgnoreAll;
  SyllableEntry* const entry = At(index);
  if (!entry || !entry->Map.HasMarks) return false;
  std::optional<MapBefore> before = steps_.Remember(entry->Map);
  if (!entry->Map.Frames.CanOwn()) return false;
  entry->Map.ApplyMarks(position, apply);
  EntryChange told{.Index = index, .Facts = EntryChange::Frames | EntryChange::Marks | EntryChange::Touched};
  told.OneOfMany = many;
  if (apply) {
    entry->Map.Average = entry->Map.ComputeAverage(-1);
    told.Facts |= EntryChange::Key;
    if (SetEditedMark(index, true)) told.Facts |= EntryChange::Edited;
  }
  steps_.Record(index, std::move(before), entry->Map);
  Tell(std::move(told));
  return true;
}

void Document::ApplyAllMarks(bool apply) {
  const Gesture gesture = apply ? Gesture::ModifyAll : Gesture::IgnoreAll;
  const Scope scope(*this, gesture);
  for (int index = 0; index < std::ssize(entries_); ++index) ApplyMarks(gesture, index, -1, apply);
  told_.OfMany = true;
}

bool Document::IsAnyMarked() const {
  const std::lock_guard locked(mutex_);
  return std::ranges::any_of(entries_, [](const auto& entry) { return entry->Map.HasMarks; });
}
