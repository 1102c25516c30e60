#include "app/shownmap.h"

#include <algorithm>
#include <mutex>

void ShownMap::Set(FrqMap* saved, FrqMap* map) {
  saved_ = saved;
  map_ = map;
}

bool ShownMap::IsLoaded() const {
  const std::lock_guard reading(document_);
  return map_ && Map()->Loaded;
}

bool ShownMap::IsDerived() const {
  const std::lock_guard reading(document_);
  return map_ && Map()->DerivedAverage;
}

bool ShownMap::IsSinglePrecision() const {
  const std::lock_guard reading(document_);
  return map_ && Map()->SinglePrecision;
}

SampleCount ShownMap::FrameCount() const {
  const std::lock_guard reading(document_);
  return map_ ? Map()->FrameCount : 0;
}

SampleCount ShownMap::Hop() const {
  const std::lock_guard reading(document_);
  return IsLoaded() ? Map()->Hop : 0;
}

double ShownMap::Key() const {
  const std::lock_guard reading(document_);
  return map_ ? Map()->ShownAverage() : FrqNoPitch;
}

std::vector<double> ShownMap::Frequencies() const {
  const std::lock_guard reading(document_);
  std::vector<double> frequencies;
  if (!map_) return frequencies;
  frequencies.reserve(Map()->Frames.size());
  for (SampleCount i = 0; i < Map()->FrameCount && Map()->PositionOf(i) >= 0; ++i) {
    frequencies.push_back(Map()->Frames[static_cast<std::size_t>(i)].Frequency);
  }
  return frequencies;
}

std::vector<double> ShownMap::FrequenciesOf(std::span<const int> frames) const {
  const std::lock_guard reading(document_);
  std::vector<double> frequencies(frames.size(), FrqNoPitch);
  if (!map_) return frequencies;
  std::ranges::transform(frames, frequencies.begin(),
                         [this](int frame) { return Map()->FrequencyAt(Map()->PositionOf(frame)); });
  return frequencies;
}

double ShownMap::FrequencyOf(int frame) const {
  return frame < 0 ? FrqNoPitch : FrequenciesOf({&frame, 1}).front();
}

std::vector<int> ShownMap::SelectedFrames() const {
  const std::lock_guard reading(document_);
  std::vector<int> selected;
  for (SampleCount i = 0; map_ && i < Map()->FrameCount; ++i) {
    if (Map()->Frames[static_cast<std::size_t>(i)].Selected) selected.push_back(i);
  }
  return selected;
}

SampleCount ShownMap::FrameAt(SampleCount position) const {
  const std::lock_guard reading(document_);
  return map_ ? Map()->FrameAt(position).value_or(0) : 0;
}

void ShownMap::SelectRange(SampleCount first, SampleCount last) {
  const std::lock_guard locked(document_);
  if (map_ && Map()->Frames.CanOwn()) Map()->SelectRange(first, last, true);
}

void ShownMap::CopyTo(FrqMap& target) const {
  const std::lock_guard reading(document_);
  if (map_) Map()->CopyTo(target);
}

void ShownMap::CopySavedTo(FrqMap& target) const {
  const std::lock_guard reading(document_);
  if (saved_) saved_->CopyTo(target);
}
