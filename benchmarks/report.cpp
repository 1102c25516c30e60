#include "report.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "base/files.h"

namespace {

bool Holds(const ReportRow& row) {
  return row.measurement.ratio <= row.row.aim;
}

}  // namespace

void PrintTableHead() {
  std::printf("%-16s %10s %10s %-4s %8s %6s  %s\n", "name", "value", "yardstick", "unit", "ratio", "aim", "holds");
}

void PrintTableRow(const ReportRow& row) {
  const Measurement& got = row.measurement;
  std::printf("%-16s %10.3f %10.3f %-4s %8.2f %6.2f  %s\n", row.row.name.c_str(), got.value, got.yardstick,
              row.row.unit.c_str(), got.ratio, row.row.aim, Holds(row) ? "yes" : "NO");
  std::fflush(stdout);
}

bool WriteJson(const std::vector<ReportRow>& rows, const std::wstring& path) {
  auto list = nlohmann::ordered_json::array();
  for (const ReportRow& row : rows) {
    list.push_back({{"name", row.row.name},
                    {"value", row.measurement.value},
                    {"unit", row.row.unit},
                    {"yardstick", row.measurement.yardstick},
                    {"ratio", row.measurement.ratio},
                    {"aim", row.row.aim},
                    {"holds", Holds(row)}});
  }
  const std::string text = list.dump(2) + "\n";
  return WriteWholeFile(path, Bytes(text.begin(), text.end()));
}
