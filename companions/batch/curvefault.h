// CurveFault: why a file of a curve cannot be read, and in which of its lines. The readers of all formats share it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct CurveFault {
  enum Reason {
    None,
    Empty,           // there is no row in it
    NotText,         // it holds bytes that are no text, or text in UTF-16
    Foreign,         // it is no file of this format
    NoTimeColumn,    // the heading names no time
    NoHertzColumn,   // the heading names no hertz
    TooFewColumns,   // the line ends before the hertz
    TooManyColumns,  // more than the heading names, as commas make of them that are both decimal and separator
    NoNumber,        // something else stands where a number belongs, an endless one included
    Negative,        // a time, a frequency or a level under 0
    WrongCount,      // the file tells another number of points than it holds
    TooLong,         // more rows than any map has frames
  };

  Reason Why = None;
  std::int64_t Line = 0;  // from 1; 0 where it is the file as a whole

  bool operator==(const CurveFault&) const = default;
};

// The fault in words, "line 7: a number was expected"; empty without a fault.
std::string TextOf(const CurveFault& fault);

// The most rows that are read: some five hours of frames that are 5 ms apart.
inline constexpr std::size_t MostCurvePoints = 4'000'000;

// The number that a text is, with a point or, where it may have one, a comma. None for any other text, and for an
// endless number.
std::optional<double> NumberIn(std::string_view text, bool mayHaveComma);

// Appends the shortest text that reads back to the same number.
void AppendShortest(std::string& text, double number);
