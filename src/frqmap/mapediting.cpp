#include "frqmap/mapediting.h"

#include <cstddef>

#include "frqmap/frqmap.h"

void DirectEditing::BeginStroke(const FrqMap& map, StrokeKind) {
  map_ = &map;
}

void DirectEditing::EndStroke() {
  map_ = nullptr;
}

bool DirectEditing::SetFrequency(FrqMap& map, SampleCount frame, double hz) {
  if (map_ != &map) return false;
  map.SetFrequency(map.PositionOf(frame), hz);
  return true;
}

bool DirectEditing::SetKey(FrqMap& map, double hz) {
  if (map_ != &map) return false;
  map.Average = hz;
  return true;
}

void DirectEditing::Flatten(FrqMap& map, double hz) {
  FlattenFrames(map, hz);
}

void DirectEditing::Select(FrqMap& map, std::span<const int> frames) {
  SelectFrames(map, frames);
}

void DirectEditing::SelectRange(FrqMap& map, SampleCount first, SampleCount last) {
  SelectFrameRange(map, first, last);
}

void FlattenFrames(FrqMap& map, double hz) {
  map.Average = hz;
  for (SampleCount i = 0; i < map.FrameCount; ++i) map.SetFrequency(map.PositionOf(i), hz);
  map.ClearSelection();
}

void SelectFrames(FrqMap& map, std::span<const int> frames) {
  if (!map.Frames.CanOwn()) return;
  map.ClearSelection();
  for (const int frame : frames) {
    if (frame >= 0 && frame < map.FrameCount) map.Frames.Own()[static_cast<std::size_t>(frame)].Selected = true;
  }
}

// Frames are told to the map as sample positions, which not every hop has.
void SelectFrameRange(FrqMap& map, SampleCount first, SampleCount last) {
  if (!map.Frames.CanOwn()) return;
  map.ClearSelection();
  const SampleCount from = map.PositionOf(first);
  const SampleCount to = map.PositionOf(last);
  if (from >= 0 && to >= 0) map.SelectRange(from, to, false);
}
