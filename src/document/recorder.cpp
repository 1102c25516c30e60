#include "document/recorder.h"

#include <exception>
#include <new>
#include <utility>

bool Recorder::Begin(Gesture gesture) {
  if (open_) return false;
  open_.emplace(OpenGesture{gesture, {}, false});
  return true;
}

void Recorder::End() {
  OpenGesture gesture = std::move(*open_);
  open_.reset();
  if (gesture.Lost) return ClearSteps();
  if (!gesture.Maps.empty()) Add({gesture.What, std::move(gesture.Maps)});
}

void Recorder::Add(Step step) {
  if (journal_) journal_->OnStep(step);
  try {
    steps_.Add(std::move(step));
    changed_ = true;
  } catch (const std::exception&) {
    ClearSteps();
  }
}

std::optional<MapBefore> Recorder::Remember(const FrqMap& map) {
  try {
    return MapBefore(map);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

void Recorder::Record(int entry, std::optional<MapBefore> before, const FrqMap& map, std::size_t expected) {
  if (before && before->Frames().size() != map.Frames.size()) return DropEntry(entry);
  try {
    if (!before) throw std::bad_alloc();
    MapChange change(entry, *before, map, expected);
    if (!change.IsNone()) open_->Maps.push_back(std::move(change));
  } catch (const std::exception&) {
    open_->Lost = true;
  }
}

void Recorder::BeginStroke(Gesture gesture, int entry, const FrqMap& map) {
  stroke_.emplace(OpenStroke{gesture, entry, Remember(map)});
  changed_ = true;
  if (journal_) journal_->OnStroke(true);
}

void Recorder::EndStroke(const FrqMap& map) {
  OpenStroke stroke = std::move(*stroke_);
  DropStroke();
  const bool outermost = Begin(stroke.What);
  Record(stroke.Entry, std::move(stroke.Before), map);
  if (outermost) End();
}

std::optional<Step> Recorder::StrokeSoFar(const FrqMap& map) const {
  if (!stroke_ || !stroke_->Before || stroke_->Before->Frames().size() != map.Frames.size()) return std::nullopt;
  try {
    return Step{stroke_->What, {MapChange(stroke_->Entry, *stroke_->Before, map)}};
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

void Recorder::DropStroke() {
  if (!stroke_) return;
  stroke_.reset();
  changed_ = true;
  if (journal_) journal_->OnStroke(false);
}

std::optional<Gesture> Recorder::UndoGesture() const {
  if (stroke_) return stroke_->What;
  const Step* const step = steps_.NextUndo();
  return step ? std::optional(step->What) : std::nullopt;
}

void Recorder::Move(bool redo) {
  changed_ = true;
  if (journal_) journal_->OnMoved(redo);
  try {
    redo ? steps_.MoveToDone() : steps_.MoveToUndone();
  } catch (const std::exception&) {
    ClearSteps();
  }
}

void Recorder::DropEntry(int entry) {
  if (StrokeEntry() == entry) DropStroke();
  if (open_) std::erase_if(open_->Maps, [entry](const MapChange& change) { return change.Entry() == entry; });
  if (!steps_.DropEntry(entry)) return;
  changed_ = true;
  if (journal_) journal_->OnDropped(entry);
}

void Recorder::Clear() {
  DropStroke();
  if (open_) open_->Maps.clear();
  ClearSteps();
}

void Recorder::ClearSteps() {
  changed_ = changed_ || steps_.NextUndo() || steps_.NextRedo();
  steps_.Clear();
  if (journal_) journal_->OnCleared();
}

bool Recorder::TakeChanged() {
  return std::exchange(changed_, false);
}
