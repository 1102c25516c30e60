// The table at a point in numbers: the pitch that a pencil would give there, and the frame of the map in that column.
// Arithmetic without a window; the map is read without a lock.
#pragma once

#include <cstdint>
#include <optional>

#include "base/sample.h"
#include "frqctrl/tablemodel.h"

struct PitchReading {
  double Hz = 0.0;
  int Note = 0;   // the nearest one
  int Cents = 0;  // from it, -50 to 50
};

struct FrameReading {
  SampleCount Frame = 0;
  SampleCount Position = 0;           // of its first sample; -1 where none leads to it
  std::optional<PitchReading> Pitch;  // none without a pitch
  std::optional<double> Level;        // [dB] of the loudest that 16 bits hold; none in silence
  std::uint32_t Mark = 0;
  std::optional<PitchReading> Suggested;
};

struct TableReading {
  std::optional<PitchReading> Pointer;  // none where a pencil erases
  std::optional<FrameReading> Frame;    // none beyond the map
};

// None for a frequency [Hz] that is no pitch: at most FrqNoPitch, or no number.
std::optional<PitchReading> ReadPitch(double hz);

// None outside the plot.
std::optional<TableReading> ReadTable(const TableModel& model, int x, int y);
