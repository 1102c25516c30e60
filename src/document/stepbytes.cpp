// A step as bytes, for the journal. Apart from what a step does, and beside it since its members are its own.
//
// Changes of frames lie there as in memory: who reads them is this program on the same machine. Those of points hold
// gaps in memory and are written field by field.
#include <algorithm>

#include "document/gesture.h"
#include "document/step.h"

namespace {

constexpr std::size_t kPointValueBytes = 16;
constexpr std::size_t kPointChangeBytes = 4 + 2 * kPointValueBytes;
constexpr std::size_t kLeastMapBytes = 34;  // of a change without frames and points

void WriteValue(ByteWriter& writer, const PointValue& value) {
  writer.Write(value.Pitch);
  writer.Write(value.HasPitch);
  writer.Write(value.Dynamics);
}

PointValue ReadValue(ByteReader& reader) {
  PointValue value;
  value.Pitch = reader.Read<std::int32_t>();
  value.HasPitch = reader.Read<std::int32_t>();
  value.Dynamics = reader.Read<double>();
  return value;
}

// A count of records of that size, none if fewer are left.
std::optional<std::size_t> ReadCount(ByteReader& reader, std::size_t size) {
  const auto count = reader.Read<std::uint32_t>();
  return reader.Holds(count, size) ? std::optional<std::size_t>(count) : std::nullopt;
}

}  // namespace

void MapChange::Encode(ByteWriter& writer) const {
  writer.Write(static_cast<std::int32_t>(entry_));
  writer.Write(static_cast<std::int32_t>(frameCount_));
  writer.Write(static_cast<std::uint8_t>(modifiedBefore_));
  writer.Write(static_cast<std::uint8_t>(modifiedAfter_));
  writer.Write(keyBefore_);
  writer.Write(keyAfter_);
  writer.Write(static_cast<std::uint32_t>(frames_.size()));
  const std::size_t bytes = frames_.size() * sizeof(FrameChange);
  if (bytes > 0) std::memcpy(writer.Append(bytes), frames_.data(), bytes);
  writer.Write(static_cast<std::uint32_t>(points_.size()));
  for (const PointChange& change : points_) {
    writer.Write(change.Point);
    WriteValue(writer, change.Before);
    WriteValue(writer, change.After);
  }
}

std::optional<MapChange> MapChange::Decode(ByteReader& reader) {
  MapChange change;
  change.entry_ = reader.Read<std::int32_t>();
  change.frameCount_ = reader.Read<std::int32_t>();
  change.modifiedBefore_ = reader.Read<std::uint8_t>() != 0;
  change.modifiedAfter_ = reader.Read<std::uint8_t>() != 0;
  change.keyBefore_ = reader.Read<double>();
  change.keyAfter_ = reader.Read<double>();
  const auto frames = ReadCount(reader, sizeof(FrameChange));
  if (!frames) return std::nullopt;
  change.frames_.reserve(*frames);
  for (std::size_t i = 0; i < *frames; ++i) change.frames_.push_back(reader.Read<FrameChange>());
  const auto points = ReadCount(reader, kPointChangeBytes);
  if (!points) return std::nullopt;
  change.points_.reserve(*points);
  for (std::size_t i = 0; i < *points; ++i) {
    const auto point = reader.Read<std::uint32_t>();
    const PointValue before = ReadValue(reader);
    change.points_.push_back({point, before, ReadValue(reader)});
  }
  const bool isInOrder = std::ranges::is_sorted(change.frames_, {}, [](const FrameChange& c) { return c.Frame; }) &&
                         std::ranges::is_sorted(change.points_, {}, &PointChange::Point);
  return isInOrder && !reader.Failed() ? std::optional(std::move(change)) : std::nullopt;
}

void Step::Encode(ByteWriter& writer) const {
  writer.Write(static_cast<std::uint8_t>(What));
  writer.Write(static_cast<std::uint32_t>(Maps.size()));
  for (const MapChange& change : Maps) change.Encode(writer);
}

std::optional<Step> Step::Decode(ByteReader& reader) {
  const auto gesture = reader.Read<std::uint8_t>();
  const auto maps = ReadCount(reader, kLeastMapBytes);
  if (!maps || gesture >= kGestureCount) return std::nullopt;
  Step step{static_cast<Gesture>(gesture), {}};
  step.Maps.reserve(*maps);
  for (std::size_t i = 0; i < *maps; ++i) {
    std::optional<MapChange> change = MapChange::Decode(reader);
    if (!change) return std::nullopt;
    step.Maps.push_back(std::move(*change));
  }
  return step;
}
