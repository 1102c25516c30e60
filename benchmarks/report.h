// What ./bench shows and keeps: one table for the eye, and the same rows as JSON.
#pragma once

#include <string>
#include <vector>

#include "measuring.h"
#include "rows.h"

struct ReportRow {
  Row row;
  Measurement measurement;
};

void PrintTableHead();
// Row by row, as they come: a run takes a while.
void PrintTableRow(const ReportRow& row);

// False if the file cannot be written.
bool WriteJson(const std::vector<ReportRow>& rows, const std::wstring& path);
