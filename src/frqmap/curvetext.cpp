#include "frqmap/curvetext.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "frqmap/frqtype.h"

namespace {

constexpr std::wstring_view kBlanks = L" \t";
constexpr std::size_t kLongestLine = 1000;  // of a heading
constexpr int kTimeDecimals = 6;            // a sample lasts more than twenty times as long

void Append(std::wstring& text, double value, int decimals) {
  std::array<char, 400> digits;
  char* const end = digits.data() + digits.size();
  const auto result = decimals > 0 ? std::to_chars(digits.data(), end, value, std::chars_format::fixed, decimals)
                                   : std::to_chars(digits.data(), end, value);
  text.append(digits.data(), result.ptr);
}

std::wstring_view Trimmed(std::wstring_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// The number that all of a text is; none for a text that is no number, or an endless one.
std::optional<double> NumberOf(std::wstring_view text, bool mayHaveComma) {
  std::string digits(text.size(), '?');
  std::ranges::transform(text, digits.begin(), [](wchar_t c) { return c < 0x80 ? static_cast<char>(c) : '?'; });
  const std::size_t comma = digits.find(',');
  if (mayHaveComma && comma != digits.npos && digits.find('.') == digits.npos) digits[comma] = '.';
  double value = 0.0;
  const char* const end = digits.data() + digits.size();
  const auto [last, error] = std::from_chars(digits.data(), end, value);
  if (error != std::errc() || last != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

// The two fields of a line. `IsPair`: something stands between them, even if nothing follows.
struct Fields {
  std::wstring_view Time;
  std::wstring_view Frequency;
  bool IsPair = false;
  bool HasTab = false;
};

Fields Split(std::wstring_view line) {
  const auto at = [&](std::size_t separator) {
    return Fields{Trimmed(line.substr(0, separator)), Trimmed(line.substr(separator + 1)), true,
                  line[separator] == L'\t'};
  };
  if (const std::size_t tab = line.find(L'\t'); tab != line.npos) return at(tab);
  if (const std::size_t comma = line.find(L','); comma != line.npos) return at(comma);
  const std::wstring_view both = Trimmed(line);
  const std::size_t blank = both.find(L' ');
  if (blank == both.npos) return {both, {}, false, false};
  return {both.substr(0, blank), Trimmed(both.substr(blank)), true, false};
}

std::optional<CurveRow> RowOf(const Fields& fields) {
  const std::optional<double> seconds = NumberOf(fields.Time, fields.HasTab);
  if (!seconds) return std::nullopt;
  if (fields.Frequency.empty()) return CurveRow{*seconds, FrqNoPitch};
  const std::optional<double> hz = NumberOf(fields.Frequency, fields.HasTab);
  if (!hz || *hz < 0.0) return std::nullopt;
  return CurveRow{*seconds, std::max(*hz, FrqNoPitch)};
}

// Takes the next line that holds anything: none where it is longer than any of ours, an empty one at the end. A tab at
// its beginning stands behind an empty cell.
std::optional<std::wstring_view> TakeLine(std::wstring_view& text) {
  const std::size_t held = std::min(text.find_first_not_of(L"\r\n \t"), text.size());
  text.remove_prefix(held == text.size() ? held : text.substr(0, held).find_last_of(L"\r\n") + 1);
  const std::wstring_view line = text.substr(0, text.substr(0, kLongestLine).find_first_of(L"\r\n"));
  if (line.size() > kLongestLine) return std::nullopt;
  text.remove_prefix(line.size());
  return line;
}

void StartAtZero(std::vector<CurveRow>& rows) {
  std::ranges::stable_sort(rows, {}, &CurveRow::Seconds);
  const double first = rows.front().Seconds;
  for (CurveRow& row : rows) row.Seconds -= first;
}

}  // namespace

std::wstring CurveText(std::span<const CurveRow> rows) {
  std::wstring text;
  for (const CurveRow& row : rows) {
    Append(text, row.Seconds, kTimeDecimals);
    text += L'\t';
    if (row.Hz > FrqNoPitch) Append(text, row.Hz, 0);
    text += L"\r\n";
  }
  return text;
}

// Lines of one number each may be a list of anything, so at least one line has to be a pair.
std::optional<std::vector<CurveRow>> ParseCurve(std::wstring_view text, std::size_t most) {
  std::vector<CurveRow> rows;
  bool isAnyPair = false, mayBeHeading = true;
  while (rows.size() < most) {
    const std::optional<std::wstring_view> line = TakeLine(text);
    if (!line) return std::nullopt;
    if (line->empty()) break;
    const Fields fields = Split(*line);
    const std::optional<CurveRow> row = RowOf(fields);
    if (!row && !mayBeHeading) return std::nullopt;
    mayBeHeading = false;
    if (!row) continue;
    isAnyPair |= fields.IsPair;
    rows.push_back(*row);
  }
  if (rows.empty() || !isAnyPair) return std::nullopt;
  StartAtZero(rows);
  return rows;
}
