#include "batch/pitchtier.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

// Distances that differ by less than this share of a step are the same: other programs write six digits.
constexpr double kSameStep = 0.02;
// Steps are even where at least this share of the distances between points is one step.
constexpr double kMostAreSteps = 0.7;
constexpr std::size_t kLeastPoints = 4;

// A time [s] shorter than a sample: points so near before the end of a tier reach its last frame, and no further.
constexpr double kJustBefore = 1e-5;

struct Token {
  std::string_view Text;  // a text with its quotes
  std::int64_t Line = 0;
};

// The tokens of a text: texts in quotes, numbers and words, without comments.
class Tokens {
 public:
  explicit Tokens(std::string_view text) : rest_(text) {}

  std::optional<Token> Take() {
    while (true) {
      Skip(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
      if (rest_.empty()) return std::nullopt;
      if (rest_.front() != '!') break;
      Skip(std::min(rest_.find_first_of("\r\n"), rest_.size()));
    }
    const std::size_t quote = rest_.front() == '"' ? rest_.find('"', 1) : rest_.npos;
    const std::size_t length = quote == rest_.npos ? rest_.find_first_of(kBlanks) : quote + 1;
    const Token token{rest_.substr(0, length), line_};
    Skip(token.Text.size());
    return token;
  }

  std::int64_t Line() const { return line_; }

 private:
  // A line ends in LF, CR or both.
  void Skip(std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
      const bool isPair = rest_[i] == '\r' && i + 1 < rest_.size() && rest_[i + 1] == '\n';
      line_ += rest_[i] == '\n' || (rest_[i] == '\r' && !isPair);
    }
    rest_.remove_prefix(length);
  }

  std::string_view rest_;
  std::int64_t line_ = 1;
};

bool IsWordForNoNumber(std::string_view text) {
  return text == "nan" || text == "NaN" || text == "inf" || text == "Infinity" || text == "--undefined--";
}

// Words are names of the numbers behind them, and a number is told from a word by its first character alone.
bool IsMeantAsNumber(std::string_view text) {
  const char first = text.front();
  return (first >= '0' && first <= '9') || first == '-' || first == '+' || first == '.' || IsWordForNoNumber(text);
}

struct NumberRead {
  double Value = 0.0;
  CurveFault Fault;
};

NumberRead TakeNumber(Tokens& tokens) {
  while (const std::optional<Token> token = tokens.Take()) {
    if (!IsMeantAsNumber(token->Text)) continue;
    const std::optional<double> number = NumberIn(token->Text, false);
    if (!number) return {0.0, {CurveFault::NoNumber, token->Line}};
    return {*number, {CurveFault::None, token->Line}};
  }
  return {0.0, {CurveFault::WrongCount, tokens.Line()}};
}

std::optional<Token> TakeQuoted(Tokens& tokens) {
  std::optional<Token> token = tokens.Take();
  while (token && token->Text.front() != '"') token = tokens.Take();
  return token;
}

bool HasHead(Tokens& tokens) {
  const std::optional<Token> type = TakeQuoted(tokens);
  if (!type || !type->Text.starts_with("\"ooTextFile")) return false;
  const std::optional<Token> object = TakeQuoted(tokens);
  return object && object->Text.starts_with("\"PitchTier");
}

struct Tier {
  double Begin = 0.0, End = 0.0;  // [s]
  std::vector<CurvePoint> Points;
  CurveFault Fault;
};

// Takes a number; false for a fault, which the tier keeps.
bool Take(Tokens& tokens, double& number, Tier& tier) {
  const NumberRead read = TakeNumber(tokens);
  number = read.Value;
  if (read.Fault.Why != CurveFault::None) tier.Fault = read.Fault;
  return read.Fault.Why == CurveFault::None;
}

bool TakePoint(Tokens& tokens, Tier& tier) {
  CurvePoint point;
  if (!Take(tokens, point.Seconds, tier) || !Take(tokens, point.Hz, tier)) return false;
  if (point.Seconds < 0.0 || point.Hz < 0.0) {
    tier.Fault = {CurveFault::Negative, tokens.Line()};
    return false;
  }
  tier.Points.push_back(point);
  return true;
}

// The count of points is believed no further than the points come.
Tier TakeTier(Tokens& tokens) {
  Tier tier;
  double count = 0.0;
  if (!Take(tokens, tier.Begin, tier) || !Take(tokens, tier.End, tier) || !Take(tokens, count, tier)) return tier;
  const std::int64_t line = tokens.Line();
  if (count < 0.0 || count != std::floor(count)) tier.Fault = {CurveFault::WrongCount, line};
  if (count > static_cast<double>(MostCurvePoints)) tier.Fault = {CurveFault::TooLong, line};
  if (count == 0.0) tier.Fault = {CurveFault::Empty, line};
  if (tier.Fault.Why != CurveFault::None) return tier;
  for (auto left = static_cast<std::int64_t>(count); left > 0; --left) {
    if (!TakePoint(tokens, tier)) return tier;
  }
  const NumberRead more = TakeNumber(tokens);
  if (more.Fault.Why != CurveFault::WrongCount) tier.Fault = {CurveFault::WrongCount, more.Fault.Line};
  return tier;
}

// The step of points in even steps, some of which are left out; none for others.
std::optional<double> StepOf(const std::vector<CurvePoint>& points) {
  if (points.size() < kLeastPoints) return std::nullopt;
  std::vector<double> distances;
  for (std::size_t i = 1; i < points.size(); ++i) distances.push_back(points[i].Seconds - points[i - 1].Seconds);
  std::vector<double> sorted = distances;
  const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
  std::ranges::nth_element(sorted, middle);
  const double step = *middle;
  const auto even =
      std::ranges::count_if(distances, [&](double distance) { return std::fabs(distance - step) <= step * kSameStep; });
  const bool isEven = static_cast<double>(even) >= kMostAreSteps * static_cast<double>(distances.size());
  return step > 0.0 && isEven ? std::optional(step) : std::nullopt;
}

// Adds points without pitch from one step behind `from` to one step before `to`.
void AddGap(std::vector<CurvePoint>& points, double from, double to, double step) {
  if (to - from < 1.5 * step) return;
  points.push_back({from + step, 0.0, {}});
  if (to - from >= 2.5 * step) points.push_back({to - step, 0.0, {}});
}

std::vector<CurvePoint> WithGaps(const Tier& tier, double step) {
  std::vector<CurvePoint> points;
  const double first = tier.Points.front().Seconds, last = tier.Points.back().Seconds;
  AddGap(points, std::max(tier.Begin, 0.0) - step, first, step);
  for (std::size_t i = 0; i < tier.Points.size(); ++i) {
    if (i > 0) AddGap(points, tier.Points[i - 1].Seconds, tier.Points[i].Seconds, step);
    points.push_back(tier.Points[i]);
  }
  AddGap(points, last, tier.End, step);
  return points;
}

std::vector<CurvePoint> WithEnds(const Tier& tier) {
  std::vector<CurvePoint> points = tier.Points;
  const double begin = std::max(tier.Begin, 0.0), end = tier.End - kJustBefore;
  if (begin < points.front().Seconds) points.insert(points.begin(), {begin, points.front().Hz, {}});
  if (end > points.back().Seconds) points.push_back({end, points.back().Hz, {}});
  return points;
}

void AppendLine(std::string& text, std::string_view name, double value) {
  text += name;
  AppendShortest(text, value);
  text += " \n";
}

}  // namespace

std::string PitchTier(std::span<const CurvePoint> points, double seconds) {
  const auto hasPitch = [](const CurvePoint& point) { return point.Hz > 0.0; };
  std::string text = "File type = \"ooTextFile\"\nObject class = \"PitchTier\"\n\nxmin = 0 \n";
  AppendLine(text, "xmax = ", seconds);
  text += "points: size = " + std::to_string(std::ranges::count_if(points, hasPitch)) + " \n";
  std::int64_t number = 0;
  for (const CurvePoint& point : points) {
    if (!hasPitch(point)) continue;
    text += "points [" + std::to_string(++number) + "]:\n";
    AppendLine(text, "    number = ", point.Seconds);
    AppendLine(text, "    value = ", point.Hz);
  }
  return text;
}

CurveReading ReadPitchTier(std::string_view file) {
  if (file.starts_with("\xFF\xFE") || file.starts_with("\xFE\xFF")) return {{}, {CurveFault::NotText, 0}};
  if (file.starts_with("\xEF\xBB\xBF")) file.remove_prefix(3);
  if (file.empty()) return {{}, {CurveFault::Empty, 0}};
  Tokens tokens(file);
  if (!HasHead(tokens)) return {{}, {CurveFault::Foreign, 0}};
  Tier tier = TakeTier(tokens);
  if (tier.Fault.Why != CurveFault::None) return {{}, tier.Fault};
  std::ranges::stable_sort(tier.Points, {}, &CurvePoint::Seconds);
  const std::optional<double> step = StepOf(tier.Points);
  return {step ? WithGaps(tier, *step) : WithEnds(tier), {}};
}
