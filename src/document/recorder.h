// Recorder: makes a step of a gesture, from its first change to its end, and keeps the steps that there are.
//
// A gesture is open for the time of one call of the document, a stroke over many; only one of both at a time. Where
// memory does not hold a step the gesture stands all the same, and the history begins anew.
#pragma once

#include <optional>
#include <vector>

#include "document/documentjournal.h"
#include "document/history.h"
#include "document/step.h"

class Recorder {
 public:
  // Sets the journal that is told of all steps; null for none.
  void SetJournal(DocumentJournal* journal) { journal_ = journal; }

  // Begins a gesture. True if it is the outermost one, which the same caller ends.
  bool Begin(Gesture gesture);
  void End();
  bool IsOpen() const { return open_.has_value(); }

  // A map as it is before a change; none where memory does not hold it.
  std::optional<MapBefore> Remember(const FrqMap& map);
  // Puts the difference of the entry's map into the open gesture. No step leads to a map of another size: that entry is
  // dropped. `expected`: see MapChange.
  void Record(int entry, std::optional<MapBefore> before, const FrqMap& map, std::size_t expected = 0);

  void BeginStroke(Gesture gesture, int entry, const FrqMap& map);
  // Ends the stroke, given the map of its entry. A stroke inside an open gesture is a part of that.
  void EndStroke(const FrqMap& map);
  // The changes of the open stroke so far; none without one, or where memory does not hold them.
  std::optional<Step> StrokeSoFar(const FrqMap& map) const;
  // The entry of the open stroke; -1 without one.
  int StrokeEntry() const { return stroke_ ? stroke_->Entry : -1; }

  // The gesture that would be undone. Where a stroke is open, that one: it ends then.
  std::optional<Gesture> UndoGesture() const;
  const Step* Next(bool redo) const { return redo ? steps_.NextRedo() : steps_.NextUndo(); }
  // Adds the step of a gesture.
  void Add(Step step);
  // The next step has been done again (`redo`), or undone.
  void Move(bool redo);

  // The map of an entry is another one: its steps go, and its changes in an open gesture.
  void DropEntry(int entry);
  void Clear();

  std::size_t Bytes() const { return steps_.Bytes(); }
  // Whether anything of what this answers has changed since the last call.
  bool TakeChanged();

 private:
  struct OpenGesture {
    Gesture What;
    std::vector<MapChange> Maps;
    bool Lost;  // memory did not hold its step
  };
  struct OpenStroke {
    Gesture What;
    int Entry;
    std::optional<MapBefore> Before;
  };

  void DropStroke();
  void ClearSteps();

  DocumentJournal* journal_ = nullptr;
  std::optional<OpenGesture> open_;
  std::optional<OpenStroke> stroke_;
  History steps_;
  bool changed_ = false;
};
