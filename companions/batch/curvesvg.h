// The curve of a map as a small picture in SVG: its pitch over its level, and what the check has found as bands.
//
// Thousands of them stand in one page, so that each is thinned to what its pixels can show.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "batch/facts.h"
#include "batch/reporttexts.h"

// The picture of a map; empty for a map without frames. `key` [Hz] is a line across; `label` is UTF-8, not escaped.
std::string CurveSvg(const FrqMap& map, double key, std::span<const Finding> findings, std::string_view label,
                     ReportLanguage language);
