// How windows change a map: the table by the mouse, the editor by its boxes and buttons.
//
// In the program the document stands behind this, so that each gesture can be taken back. A table that stands alone, as
// a thumbnail does, writes straight into its map (DirectEditing).
#pragma once

#include <cstdint>
#include <span>

#include "base/sample.h"

class FrqMap;

// The sort of a drag of the mouse, from its press to its release.
enum class StrokeKind : std::uint8_t { Draw, Erase, Average };

class MapEditing {
 public:
  virtual ~MapEditing() = default;

  // Whether a table may show these, where either may be null or lead nowhere: any program may send them to it.
  virtual bool MayShow(const FrqMap* reference, const FrqMap* map) const = 0;

  // All changes of a stroke are one gesture. It belongs to the map on which it began; one that was open ends.
  virtual void BeginStroke(const FrqMap& map, StrokeKind kind) = 0;
  virtual void EndStroke() = 0;
  // False as soon as something has ended the stroke: another syllable, a job, a step back.
  virtual bool IsStrokeOpen() const = 0;

  // Between BeginStroke and EndStroke. False, with nothing done, if the stroke is no longer open or belongs to another
  // map. A frame that no sample position leads to is passed over. Frequencies in [Hz], as FrqMap::SetFrequency and
  // FrqMap::Average take them.
  virtual bool SetFrequency(FrqMap& map, SampleCount frame, double hz) = 0;
  virtual bool SetKey(FrqMap& map, double hz) = 0;

  // A gesture of its own: the average and every frame become one pitch, and no frame stays selected.
  virtual void Flatten(FrqMap& map, double hz) = 0;

  // The selection alone; no gesture. Frames outside the map are passed over.
  virtual void Select(FrqMap& map, std::span<const int> frames) = 0;
  // Both ends included, in any order; no frame where no sample position leads to them.
  virtual void SelectRange(FrqMap& map, SampleCount first, SampleCount last) = 0;

  // Held while a map is read over more than one call, so that no other thread changes it meanwhile. Nothing is sent to
  // a window of another thread, and none of the functions above is called, under it.
  virtual void lock() const = 0;
  virtual void unlock() const = 0;
};

// Writes straight into the map, of one thread. It knows no maps, and leaves it to the table to look where they lead.
class DirectEditing : public MapEditing {
 public:
  bool MayShow(const FrqMap*, const FrqMap*) const override { return true; }
  void BeginStroke(const FrqMap& map, StrokeKind kind) override;
  void EndStroke() override;
  bool IsStrokeOpen() const override { return map_ != nullptr; }
  bool SetFrequency(FrqMap& map, SampleCount frame, double hz) override;
  bool SetKey(FrqMap& map, double hz) override;
  void Flatten(FrqMap& map, double hz) override;
  void Select(FrqMap& map, std::span<const int> frames) override;
  void SelectRange(FrqMap& map, SampleCount first, SampleCount last) override;
  void lock() const override {}
  void unlock() const override {}

 private:
  const FrqMap* map_ = nullptr;  // of the stroke that is open
};

// The writes themselves, for whoever keeps a map.
void FlattenFrames(FrqMap& map, double hz);
void SelectFrames(FrqMap& map, std::span<const int> frames);
void SelectFrameRange(FrqMap& map, SampleCount first, SampleCount last);
