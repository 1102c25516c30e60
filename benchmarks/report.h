// The output of ./bench: one table for the eye, and the same rows as JSON. Two programs write it one after the other, a
// native one and one for Windows.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "measuring.h"
#include "rows.h"

// Measures the rows whose name begins with `beginning`, prints them, and adds them to the list in `jsonFile`; the table
// gets its head where the list is new. The result is for main to return.
int MeasureAndReport(const std::vector<std::vector<Row>>& families, std::string_view beginning,
                     const std::filesystem::path& jsonFile);
