#include "frqmap/edits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace {

constexpr int kDecimals = 8;
// A file may hold frequencies up to 1e308: all their digits, the point and the decimals must fit.
constexpr int kLongestText = std::numeric_limits<double>::max_exponent10 + 1 + 1 + kDecimals;

bool IsBlank(wchar_t c) {
  return c == L' ' || (c >= L'\t' && c <= L'\r');
}

bool StartsNumber(std::string_view text) {
  return !text.empty() && (text.front() == '.' || (text.front() >= '0' && text.front() <= '9'));
}

// Characters beyond ASCII become "?", which ends a number like any other odd character.
std::string NarrowDigits(std::wstring_view text) {
  std::string narrow(text.size(), '?');
  std::ranges::transform(text, narrow.begin(), [](wchar_t c) { return c < 0x80 ? static_cast<char>(c) : '?'; });
  return narrow;
}

// Only an exponent takes a short text out of a double's range: it gives 0 downward and infinity upward.
double BeyondRange(std::string_view text) {
  return text.find_first_of('-') == text.npos ? HUGE_VAL : 0.0;
}

double ParseUnsigned(std::string_view text) {
  if (!StartsNumber(text)) return 0.0;
  double value = 0.0;
  const char* end = text.data() + text.size();
  const std::from_chars_result result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc::result_out_of_range) return value;
  return BeyondRange(text.substr(0, static_cast<std::size_t>(result.ptr - text.data())));
}

}  // namespace

double ClampFrequency(double hz, FrqType workingKind, bool singlePrecision) {
  if (std::isnan(hz)) return FrqNoPitch;
  if (singlePrecision) hz = static_cast<double>(static_cast<float>(hz));
  hz = std::min(hz, MaxFrequencyOfKind(workingKind));
  return hz < MinFrequencyOfKind(workingKind) ? FrqNoPitch : hz;
}

std::wstring FrequencyText(double hz) {
  if (!(hz > FrqNoPitch)) return {};
  return FrameRowText(hz);
}

std::wstring FrameRowText(double hz) {
  FrameRowBuffer buffer;
  return WriteFrameRowText(hz, buffer);
}

const wchar_t* WriteFrameRowText(double hz, FrameRowBuffer& buffer) {
  static_assert(kLongestText < std::tuple_size_v<FrameRowBuffer>);
  if (!(hz > FrqNoPitch)) return L"----";
  std::array<char, kLongestText> text;
  const auto result = std::to_chars(text.data(), text.data() + text.size(), hz, std::chars_format::fixed, kDecimals);
  *std::copy(text.data(), result.ptr, buffer.begin()) = L'\0';
  return buffer.data();
}

double ParseFrequency(std::wstring_view text) {
  text.remove_prefix(static_cast<std::size_t>(std::ranges::find_if_not(text, IsBlank) - text.begin()));
  const bool negative = text.starts_with(L'-');
  if (negative || text.starts_with(L'+')) text.remove_prefix(1);
  const double value = ParseUnsigned(NarrowDigits(text));
  return negative ? -value : value;
}

std::vector<int> ScaleFrames(FrqMap& map, std::span<const int> rows, double factor, FrqType workingKind) {
  std::vector<int> changed;
  changed.reserve(rows.size());
  for (const int row : rows) {
    const SampleCount position = map.PositionOf(row);
    const double frequency = map.FrequencyAt(position);
    if (!(frequency > FrqNoPitch)) continue;
    map.SetFrequency(position, ClampFrequency(frequency * factor, workingKind, map.SinglePrecision));
    changed.push_back(row);
  }
  return changed;
}

std::vector<int> InterpolateFrames(FrqMap& map, std::span<const int> rows, FrqType workingKind) {
  if (rows.size() < 2) return {};
  const int first = rows.front();
  const double start = map.FrequencyAt(map.PositionOf(first));
  const double end = map.FrequencyAt(map.PositionOf(rows.back()));
  const double step = (end - start) / static_cast<double>(rows.size() - 1);
  std::vector<int> changed;
  for (int row = first + 1; row < rows.back(); ++row) {
    const double value = (row - first) * step + start;
    map.SetFrequency(map.PositionOf(row), ClampFrequency(value, workingKind, map.SinglePrecision));
    changed.push_back(row);
  }
  return changed;
}

std::optional<double> MeanFrequency(const FrqMap& map, std::span<const int> rows) {
  double sum = 0.0;
  int count = 0;
  for (const int row : rows) {
    const double frequency = map.FrequencyAt(map.PositionOf(row));
    if (!(frequency > FrqNoPitch)) continue;
    sum += frequency;
    ++count;
  }
  if (count == 0) return std::nullopt;
  return sum / count;
}

int RestoreFrames(FrqMap& map, const FrqMap& saved, std::span<const int> rows, int rowCount) {
  int different = 0;
  auto next = rows.begin();
  for (int row = 0; row < rowCount; ++row) {
    const SampleCount position = map.PositionOf(row);
    const double before = saved.FrequencyAt(position);
    if (next != rows.end() && *next == row) {
      map.SetFrequency(position, before);
      ++next;
    } else if (map.FrequencyAt(position) != before) {
      ++different;
    }
  }
  return different;
}
