#include "document/documentediting.h"

#include <mutex>

namespace {

Gesture GestureOf(StrokeKind kind) {
  switch (kind) {
    case StrokeKind::Erase: return Gesture::Erase;
    case StrokeKind::Average: return Gesture::DragKey;
    default: return Gesture::Stroke;
  }
}

}  // namespace

// The working map of an entry, alone or with its saved one. They are compared and not followed.
bool DocumentEditing::MayShow(const FrqMap* reference, const FrqMap* map) const {
  const std::lock_guard locked(document_);
  if (!map) return !reference;
  const MapPair pair = document_.Maps(document_.IndexOf(map));
  return pair.Map && (!reference || reference == pair.Saved);
}

void DocumentEditing::BeginStroke(const FrqMap& map, StrokeKind kind) {
  document_.BeginStroke(GestureOf(kind), document_.IndexOf(&map));
}

void DocumentEditing::EndStroke() {
  document_.EndStroke();
}

bool DocumentEditing::IsStrokeOpen() const {
  return document_.State().StrokeEntry >= 0;
}

bool DocumentEditing::SetFrequency(FrqMap& map, SampleCount frame, double hz) {
  return document_.StrokeChange(document_.IndexOf(&map), [&](FrqMap& edited) {
    edited.SetFrequency(edited.PositionOf(frame), hz);
    return std::vector<int>{frame};
  });
}

bool DocumentEditing::SetKey(FrqMap& map, double hz) {
  return document_.StrokeChange(document_.IndexOf(&map), [&](FrqMap& edited) {
    edited.Average = hz;
    return std::vector<int>{};
  });
}

// The table tells its window of it, as of a stroke.
void DocumentEditing::Flatten(FrqMap& map, double hz) {
  const std::lock_guard locked(document_);
  const int index = document_.IndexOf(&map);
  document_.BeginStroke(Gesture::Flatten, index);
  document_.StrokeChange(index, [&](FrqMap& edited) {
    FlattenFrames(edited, hz);
    return std::vector<int>{};
  });
  document_.EndStroke();
}

void DocumentEditing::Select(FrqMap& map, std::span<const int> frames) {
  const std::lock_guard locked(document_);
  SelectFrames(map, frames);
}

void DocumentEditing::SelectRange(FrqMap& map, SampleCount first, SampleCount last) {
  const std::lock_guard locked(document_);
  SelectFrameRange(map, first, last);
}
