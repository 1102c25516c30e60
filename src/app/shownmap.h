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
  // The index of the syllable, -1 for none. May be called on any thread.
  int Index() const { return document_.IndexOf(map_); }

  bool IsLoaded() const;
  bool IsDerived() const;
  bool IsSinglePrecision() const;
  SampleCount FrameCount() const;
  // 0 without a loaded map.
  SampleCount Hop() const;
  // The key to show [Hz]; FrqNoPitch without a map.
  double Key() const;

  // The frequencies of all frames that a sample position leads to [Hz]: none with a hop of 0 or less, only the first
  // with a huge one.
  std::vector<double> Frequencies() const;
  // The frequencies of these frames [Hz]; FrqNoPitch outside the map.
  std::vector<double> FrequenciesOf(std::span<const int> frames) const;
  double FrequencyOf(int frame) const;
  // The frames are in ascending order.
  std::vector<int> SelectedFrames() const;
  // Selects the frames between two sample positions, both included, and no others, in the map itself.
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
