// Document: gestures, strokes, and the way back and forth through their changes.
#include <algorithm>
#include <utility>

#include "document/document.h"

Document::Scope::Scope(Document& document, Gesture gesture) : locked_(document), document_(document) {
  document.CloseStroke();
  outermost_ = document.steps_.Begin(gesture);
}

Document::Scope::~Scope() {
  if (outermost_) document_.steps_.End();
}

void Document::Change(Gesture gesture, int index, const std::function<std::vector<int>(FrqMap&)>& change) {
  const Scope scope(*this, gesture);
  SyllableEntry* const entry = At(index);
  if (!entry) return;
  std::optional<MapBefore> before = steps_.Remember(entry->Map);
  if (!entry->Map.Frames.CanOwn()) return;
  const double average = entry->Map.Average;
  EntryChange told{.Index = index, .Facts = EntryChange::Frames | EntryChange::Touched};
  told.Rows = change(entry->Map);
  if (entry->Map.Average != average) told.Facts |= EntryChange::Key;
  steps_.Record(index, std::move(before), entry->Map, told.Rows.size());
  if (SetEditedMark(index, true)) told.Facts |= EntryChange::Edited;
  Tell(std::move(told));
}

void Document::BeginStroke(Gesture gesture, int index) {
  const std::lock_guard locked(*this);
  CloseStroke();
  if (const SyllableEntry* const entry = At(index)) steps_.BeginStroke(gesture, index, entry->Map);
}

bool Document::StrokeChange(int index, const std::function<std::vector<int>(FrqMap&)>& change) {
  const std::lock_guard locked(*this);
  if (index < 0 || steps_.StrokeEntry() != index) return false;
  EntryChange told{.Index = index, .Facts = EntryChange::Frames | EntryChange::Touched, .InStroke = true};
  FrqMap& map = At(index)->Map;
  if (!map.Frames.CanOwn()) return false;
  const double average = map.Average;
  told.Rows = change(map);
  if (map.Average != average) told.Facts |= EntryChange::Key;
  if (SetEditedMark(index, true)) told.Facts |= EntryChange::Edited;
  Tell(std::move(told));
  return true;
}

void Document::EndStroke() {
  const std::lock_guard locked(*this);
  CloseStroke();
}

void Document::CloseStroke() {
  if (const SyllableEntry* const entry = At(steps_.StrokeEntry())) steps_.EndStroke(entry->Map);
}

// A map that is no longer as the step has left it takes all its steps along, so that nothing else is touched.
StepResult Document::StepBack(bool redo) {
  const std::lock_guard locked(*this);
  CloseStroke();
  const Step* step = steps_.Next(redo);
  if (!step || steps_.IsOpen()) return {};
  StepResult result{.What = StepResult::Done, .Of = step->What, .Entry = step->Maps.front().Entry(), .Frames = {}};
  const std::vector<int> lost = EntriesLostTo(*step, redo);
  if (!lost.empty()) {
    result.What = StepResult::Lost;
    result.LostEntry = lost.front();
    const bool isAll = std::ranges::all_of(step->Maps, [&](const MapChange& change) {
      return std::ranges::find(lost, change.Entry()) != lost.end();
    });
    for (const int entry : lost) steps_.DropEntry(entry);
    if (isAll) return result;
    step = steps_.Next(redo);
  }
  const auto canChange = [this](const MapChange& change) { return At(change.Entry())->Map.Frames.CanOwn(); };
  if (!std::ranges::all_of(step->Maps, canChange)) return {};
  result.Entry = step->Maps.front().Entry();
  const bool many = step->Maps.front().Entry() != step->Maps.back().Entry();
  const auto apply = [&](const MapChange& change) {
    ApplyChange(change, redo, many);
    if (change.Entry() == result.Entry) result.Frames = change.ChangedFrames();
  };
  if (redo) {
    std::for_each(step->Maps.begin(), step->Maps.end(), apply);
  } else {
    std::for_each(step->Maps.rbegin(), step->Maps.rend(), apply);
  }
  steps_.Move(redo);
  return result;
}

// The syllables of a step whose maps are no longer as the step would find them. A map that went out of memory is read
// again first.
std::vector<int> Document::EntriesLostTo(const Step& step, bool redo) {
  std::vector<int> lost;
  std::vector<int> seen;
  const auto look = [&](const MapChange& change) {
    // Only the first change of a map is looked at: any other meets the map as the one before it has left it.
    if (std::ranges::find(seen, change.Entry()) != seen.end()) return;
    if (step.Maps.size() > 1) seen.push_back(change.Entry());
    SyllableEntry* const entry = At(change.Entry());
    if (entry && !entry->Map.Loaded && LoadPair(change.Entry(), OnFailure::KeepSaved) == 0) {
      Tell({.Index = change.Entry(), .Facts = EntryChange::Replaced | EntryChange::Saved});
    }
    if (!entry || !change.Fits(entry->Map, redo)) lost.push_back(change.Entry());
  };
  if (redo) {
    std::for_each(step.Maps.begin(), step.Maps.end(), look);
  } else {
    std::for_each(step.Maps.rbegin(), step.Maps.rend(), look);
  }
  return lost;
}

void Document::ApplyChange(const MapChange& change, bool redo, bool oneOfMany) {
  SyllableEntry& entry = *At(change.Entry());
  EntryChange told{.Index = change.Entry(), .Facts = EntryChange::Frames | EntryChange::Touched};
  told.Rows = change.ChangedFrames();
  change.Apply(entry.Map, redo);
  told.OneOfMany = oneOfMany;
  told.FromHistory = true;
  if (change.HasKey()) told.Facts |= EntryChange::Key;
  if (change.HasMarks()) told.Facts |= EntryChange::Marks;
  const bool isSaved = entry.File.Holds(entry.Map, entry.SavedMap, files_, entry.Path);
  if (SetEditedMark(change.Entry(), !isSaved)) told.Facts |= EntryChange::Edited;
  Tell(std::move(told));
}
