#include "batch/curvefault.h"

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace {

// The texts in the order of CurveFault::Reason.
constexpr std::array<std::string_view, CurveFault::TooLong + 1> kTexts = {
    "",
    "there is no row",
    "this is no text in UTF-8",
    "this is no PitchTier",
    "the heading has no column named time",
    "the heading has no column named hertz",
    "a time and a frequency were expected",
    "there are more columns than the heading names",
    "a number was expected",
    "a number of 0 or more was expected",
    "the number of points does not agree with the file",
    "the file has more rows than any map has frames",
};

}  // namespace

std::string TextOf(const CurveFault& fault) {
  const std::string text(kTexts[fault.Why]);
  return fault.Line > 0 ? "line " + std::to_string(fault.Line) + ": " + text : text;
}

std::optional<double> NumberIn(std::string_view text, bool mayHaveComma) {
  std::string digits(text);
  const std::size_t comma = digits.find(',');
  if (mayHaveComma && comma != digits.npos && digits.find('.') == digits.npos) digits[comma] = '.';
  const char* begin = digits.data();
  const char* const end = begin + digits.size();
  if (digits.starts_with('+') && !digits.starts_with("+-")) ++begin;
  double value = 0.0;
  const auto [last, error] = std::from_chars(begin, end, value);
  if (error != std::errc() || last != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

void AppendShortest(std::string& text, double number) {
  std::array<char, 32> digits;
  text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}
