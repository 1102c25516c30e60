#include "frqctrl/tablereading.h"

#include <cmath>

#include "base/note.h"

namespace {

constexpr double kLoudest = 32768.0;

FrameReading ReadFrame(const FrqMap& map, SampleCount column) {
  const FrqFrame& frame = map.Frames[static_cast<std::size_t>(column)];
  FrameReading reading;
  reading.Frame = column;
  reading.Position = map.PositionOf(column);
  reading.Pitch = ReadPitch(frame.Frequency);
  if (frame.Amplitude > 0.0 && std::isfinite(frame.Amplitude)) {
    reading.Level = 20.0 * std::log10(frame.Amplitude / kLoudest);
  }
  reading.Mark = frame.Mark;
  if (frame.Mark != 0) reading.Suggested = ReadPitch(frame.SuggestedFrequency);
  return reading;
}

}  // namespace

std::optional<PitchReading> ReadPitch(double hz) {
  if (!(hz > FrqNoPitch) || !std::isfinite(hz)) return std::nullopt;
  const double note = HzToNote(hz);
  const double nearest = std::round(note);
  return PitchReading{hz, static_cast<int>(nearest), static_cast<int>(std::lround((note - nearest) * 100.0))};
}

std::optional<TableReading> ReadTable(const TableModel& model, int x, int y) {
  const TableSpot spot = model.SpotAt(x, y);
  if (spot.Place != TableSpot::Plot) return std::nullopt;
  TableReading reading;
  reading.Pointer = ReadPitch(model.FrequencyAtY(y));
  if (spot.Column >= 0 && model.IsMapLoaded()) reading.Frame = ReadFrame(*model.Map, spot.Column);
  return reading;
}
