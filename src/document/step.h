// A step of the history: what one gesture has changed, to be taken back and done again bit for bit.
//
// A step holds differences and no maps, so that it costs what was changed and not what there is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "base/bytes.h"
#include "document/gesture.h"
#include "document/pointvalue.h"
#include "frqmap/frqmap.h"

// Of one frame its frequency with its voice, or its mark with the suggestion, or both where the frame has taken the
// suggestion. 24 bytes, of which a step may hold millions.
struct FrameChange {
  enum Kind : std::uint32_t { Frequency, MarkGone, MarkSet, Taken };

  std::uint32_t Frame : 28;
  std::uint32_t What : 2;
  std::uint32_t VoicedBefore : 1;
  std::uint32_t VoicedAfter : 1;
  std::uint32_t Mark;  // that is gone, taken or set
  double Before;       // [Hz] frequency; of a mark its suggestion
  double After;        // [Hz] frequency; of Taken the suggestion as well
};
static_assert(sizeof(FrameChange) == 24);

struct PointChange {
  std::uint32_t Point;
  PointValue Before;
  PointValue After;
};

// A map as it was when a gesture began.
class MapBefore {
 public:
  // Throws std::bad_alloc.
  explicit MapBefore(const FrqMap& map);

  const FrqFrames& Frames() const { return frames_; }
  const std::vector<PointValue>& Points() const { return points_; }
  double Average() const { return average_; }
  bool Modified() const { return modified_; }

 private:
  FrqFrames frames_;
  std::vector<PointValue> points_;
  double average_;
  bool modified_;
};

class MapChange {
 public:
  // The difference of a map of as many frames to what it was. `expected`: changes, to make room for; to let the records
  // of a long map grow would take longer than all the rest. Throws std::bad_alloc.
  MapChange(int entry, const MapBefore& before, const FrqMap& after, std::size_t expected = 0);

  // Index of the syllable.
  int Entry() const { return entry_; }
  // Nothing that a user could take back: that a frame was set to what it was is no difference.
  bool IsNone() const;
  bool HasKey() const;
  bool HasMarks() const;
  // Of another index, where the syllables have come to stand in another order.
  void SetEntry(int entry) { entry_ = entry; }
  // In ascending order; a frame with two changes comes once.
  std::vector<int> ChangedFrames() const;
  std::size_t Bytes() const;

  // Whether it is a map of that many frames and points, so that any state can be brought about in it.
  bool Reaches(const FrqMap& map) const;
  // Whether the map is as this change has left it (or, `undone`, as it has found it), so that the other state can be
  // brought back.
  bool Fits(const FrqMap& map, bool undone) const;
  // Brings back the state before (or, with `redo`, the one after). The map fits, or is reached at least.
  void Apply(FrqMap& map, bool redo) const;

  // As bytes and back (stepbytes.cpp). None if they are not all there.
  void Encode(ByteWriter& writer) const;
  static std::optional<MapChange> Decode(ByteReader& reader);

 private:
  MapChange() = default;
  void AddFrame(std::uint32_t index, const FrqFrame& before, const FrqFrame& after);
  void ApplyToFrame(FrqFrame& frame, const FrameChange& change, bool redo) const;

  int entry_ = -1;
  SampleCount frameCount_ = 0;
  bool modifiedBefore_ = false, modifiedAfter_ = false;
  double keyBefore_ = 0.0, keyAfter_ = 0.0;
  std::vector<FrameChange> frames_;
  std::vector<PointChange> points_;
};

struct Step {
  Gesture What;
  std::vector<MapChange> Maps;  // in the order in which they were changed

  std::size_t Bytes() const;
  void Encode(ByteWriter& writer) const;
  static std::optional<Step> Decode(ByteReader& reader);
};
