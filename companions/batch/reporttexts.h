// The words of the report page in its languages, in UTF-8 and before they are escaped for HTML.
//
// Why a frame is marked and why a map cannot be read is told in the words of the windows; a test compares them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "frqmap/frqtype.h"
#include "frqmap/mapfault.h"

enum class ReportLanguage { English, Japanese };

// "en" or "ja", as HTML takes it.
std::string_view CodeOf(ReportLanguage language);

// A text by the name that it has in page.html; empty for a name that is none.
std::string_view PageText(std::string_view name, ReportLanguage language);

// Reasons of marks as rows of a table: first the marks of other libraries, then those of CheckMark in their order.
inline constexpr std::size_t ReasonCount = 8;
using CountsOfReasons = std::array<std::int64_t, ReasonCount>;
std::size_t ReasonOf(std::int32_t mark);
std::string_view TextOfReason(std::size_t reason, ReportLanguage language);

// The reason for which a map cannot be read; empty without a fault.
std::string TextOfFault(const MapFault& fault, ReportLanguage language);

// A pitch as "C4 +3 cents"; in hertz where the note has no name, and in words where there is no pitch.
std::string TextOfPitch(double hz, ReportLanguage language);

// The name of a kind: the extension of its files without the dot.
std::string NameOfKind(FrqType kind);

// A number with its digits in threes: "5,000".
std::string TextOfCount(std::int64_t count);

// A number with so many decimals, as printf writes it in the "C" locale.
std::string Fixed(double value, int decimals);
