// ShownMap: the map that the editor shows, read from the document a piece at a time.
//
// It runs on the main thread. Each function holds the document's lock for its own time and gives a copy, so that no
// control is filled under the lock.
#pragma once

#include <atomic>
#include <span>
#include <string>
#include <vector>

#include "document/document.h"

class ShownMap {
 public:
  explicit ShownMap(Document& document) : document_(document) {}

  // Both are null where nothing is shown.
  void Set(FrqMap* saved, FrqMap* map);

  FrqMap* Map() const { return map_; }
  FrqMap* Saved() const { return saved_; }
  explicit operator bool() const { return map_ != nullptr; }
  // Of the syllable, -1 for none. On any thread.
  int Index() const { return document_.IndexOf(map_); }

  bool IsLoaded() const;
  bool IsDerived() const;
  bool IsSinglePrecision() const;
  SampleCount FrameCount() const;
  // 0 without a loaded map.
  SampleCount Hop() const;
  // The average to show [Hz]; FrqNoPitch without a map.
  double Key() const;

  // Of all frames that a sample position leads to [Hz]: with a hop of 0 or less there are none, with a huge one only
  // the first.
  std::vector<double> Frequencies() const;
  // Of these frames; FrqNoPitch outside the map.
  std::vector<double> FrequenciesOf(std::span<const int> frames) const;
  double FrequencyOf(int frame) const;
  // In ascending order.
  std::vector<int> SelectedFrames() const;
  // Between two sample positions, both included: the selection alone, in the map itself.
  void SelectRange(SampleCount first, SampleCount last);
  // The frame at a sample position, 0 where there is none.
  SampleCount FrameAt(SampleCount position) const;
  // Both throw std::bad_alloc.
  void CopyTo(FrqMap& target) const;
  void CopySavedTo(FrqMap& target) const;

 private:
  Document& document_;
  std::atomic<FrqMap*> map_ = nullptr;  // the document's; other threads ask whether it is theirs
  FrqMap* saved_ = nullptr;             // the document's
};
