#include "batch/curvesvg.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "base/note.h"
#include "batch/html.h"

namespace {

// Units of the picture, two to a pixel; page.css tells the pixels.
constexpr int kWidth = 400;
constexpr int kHeight = 88;
constexpr int kMargin = 6;

constexpr std::int64_t kPitchColumns = 200;
constexpr std::int64_t kLevelColumns = 64;
constexpr double kLeastSpan = 12.0;  // semitones from top to bottom, so that a steady tone looks steady

struct Point {
  int X, Y;
};

bool IsPitch(double hz) {
  return hz > FrqNoPitch && std::isfinite(hz);
}

// The frames of a map in columns of the same width.
struct Columns {
  const FrqMap& Map;
  std::int64_t Count;

  Columns(const FrqMap& map, std::int64_t most)
      : Map(map), Count(std::min(most, std::int64_t{std::ssize(map.Frames)})) {}
  int CenterOf(std::int64_t column) const { return static_cast<int>((2 * column + 1) * kWidth / (2 * Count)); }
  std::span<const FrqFrame> At(std::int64_t column) const {
    const std::int64_t frames = std::ssize(Map.Frames), from = column * frames / Count;
    return std::span(Map.Frames)
        .subspan(static_cast<std::size_t>(from), static_cast<std::size_t>((column + 1) * frames / Count - from));
  }
};

struct PitchRange {
  double Low = std::numeric_limits<double>::infinity();  // [Hz]
  double High = 0.0;
  bool HasPitch() const { return Low <= High; }
};

PitchRange RangeOf(std::span<const FrqFrame> frames) {
  PitchRange range;
  for (const FrqFrame& frame : frames) {
    if (!IsPitch(frame.Frequency)) continue;
    range.Low = std::min(range.Low, frame.Frequency);
    range.High = std::max(range.High, frame.Frequency);
  }
  return range;
}

// The pitches from top to bottom of the picture: the map's, or a wider span around their middle.
class PitchScale {
 public:
  explicit PitchScale(const PitchRange& range) {
    const double low = HzToNote(range.Low), high = HzToNote(range.High);
    span_ = std::max(kLeastSpan, high - low);
    top_ = (low + high + span_) / 2.0;
  }
  // The height of a pitch, clamped where it is far above or below the picture.
  int YOf(double hz) const {
    const double part = std::clamp((top_ - HzToNote(hz)) / span_, -1.0, 2.0);
    return kMargin + static_cast<int>(std::lround(part * (kHeight - 2 * kMargin)));
  }

 private:
  double top_, span_;  // [semitones]
};

void AppendNumber(std::string& path, int number) {
  if (number >= 0 && path.back() >= '0' && path.back() <= '9') path += ' ';
  path += std::to_string(number);
}

// Appends a line through the points, without those that lie on a straight way.
void AppendLine(std::string& path, const std::vector<Point>& points) {
  path += 'M';
  path += std::to_string(points[0].X);
  AppendNumber(path, points[0].Y);
  if (points.size() == 1) path += "h1";
  Point last = points[0];
  for (std::size_t i = 1; i < points.size(); ++i) {
    const int x = points[i].X - last.X, y = points[i].Y - last.Y;
    if (i + 1 < points.size()) {
      const int nextX = points[i + 1].X - points[i].X, nextY = points[i + 1].Y - points[i].Y;
      const bool isOnTheWay = x * nextY == y * nextX && y * nextY >= 0 && (x != 0 || nextX == 0);
      if (isOnTheWay) continue;
    }
    path += 'l';
    AppendNumber(path, x);
    AppendNumber(path, y);
    last = points[i];
  }
}

// The line of a column that holds several pitches goes over all of them, from the end that is nearer.
void AddColumn(std::vector<Point>& points, int x, int high, int low) {
  const bool fromLow = !points.empty() && std::abs(points.back().Y - low) < std::abs(points.back().Y - high);
  points.push_back({x, fromLow ? low : high});
  if (low != high) points.push_back({x, fromLow ? high : low});
}

std::string PitchPath(const FrqMap& map, const PitchScale& scale) {
  const Columns columns(map, kPitchColumns);
  std::string path;
  std::vector<Point> points;
  for (std::int64_t column = 0; column <= columns.Count; ++column) {
    const PitchRange range = column < columns.Count ? RangeOf(columns.At(column)) : PitchRange();
    if (range.HasPitch()) {
      AddColumn(points, columns.CenterOf(column), scale.YOf(range.High), scale.YOf(range.Low));
    } else if (!points.empty()) {
      AppendLine(path, points);
      points.clear();
    }
  }
  return path;
}

double LevelOf(std::span<const FrqFrame> frames) {
  double level = 0.0;
  for (const FrqFrame& frame : frames) {
    if (std::isfinite(frame.Amplitude)) level = std::max(level, frame.Amplitude);
  }
  return level;
}

// The path of the levels, which is as high as the picture where the map is loudest.
std::string LevelPath(const FrqMap& map) {
  const double loudest = LevelOf(map.Frames);
  if (loudest <= 0.0) return {};
  const Columns columns(map, kLevelColumns);
  std::vector<Point> points = {{0, kHeight}};
  for (std::int64_t column = 0; column < columns.Count; ++column) {
    const double part = LevelOf(columns.At(column)) / loudest;
    points.push_back({columns.CenterOf(column), kHeight - static_cast<int>(std::lround(part * kHeight))});
  }
  points.push_back({kWidth, kHeight});
  std::string path;
  AppendLine(path, points);
  return path + 'z';
}

std::string Band(const FrqMap& map, const Finding& finding, ReportLanguage language) {
  const double unitsPerFrame = static_cast<double>(kWidth) / static_cast<double>(map.Frames.size());
  const double x = finding.First * unitsPerFrame;
  const double width = std::max(2.0, (static_cast<double>(finding.Last) - finding.First + 1.0) * unitsPerFrame);
  const std::size_t reason = ReasonOf(finding.Mark);
  return "<rect class=\"m" + std::to_string(reason) + "\" x=\"" + Fixed(x, 0) + "\" width=\"" + Fixed(width, 0) +
         "\" height=\"" + std::to_string(kHeight) + "\"><title>" + Escaped(TextOfReason(reason, language)) +
         "</title></rect>";
}

std::string PathElement(std::string_view attributes, const std::string& path) {
  if (path.empty()) return {};
  return std::string("<path ").append(attributes).append("d=\"").append(path).append("\"/>");
}

}  // namespace

std::string CurveSvg(const FrqMap& map, double key, std::span<const Finding> findings, std::string_view label,
                     ReportLanguage language) {
  if (map.Frames.empty()) return {};
  std::string svg = "<svg viewBox=\"0 0 " + std::to_string(kWidth) + " " + std::to_string(kHeight) +
                    "\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"" + Escaped(label) + "\">";
  svg += PathElement("class=\"l\" ", LevelPath(map));
  for (const Finding& finding : findings) svg += Band(map, finding, language);
  const PitchRange range = RangeOf(map.Frames);
  if (range.HasPitch()) {
    const PitchScale scale(range);
    const int y = IsPitch(key) ? scale.YOf(key) : -1;
    if (y >= 0 && y <= kHeight)
      svg += PathElement("class=\"k\" ", "M0 " + std::to_string(y) + "h" + std::to_string(kWidth));
    svg += PathElement("", PitchPath(map, scale));
  }
  return svg + "</svg>";
}
