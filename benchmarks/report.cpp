#include "report.h"

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

namespace {

struct ReportRow {
  Row row;
  Measurement measurement;
};

bool Holds(const ReportRow& row) {
  return row.measurement.ratio <= row.row.aim;
}

void PrintTableHead() {
  std::printf("%-22s %10s %10s %-5s %8s %6s %6s  %s\n", "name", "value", "yardstick", "unit", "ratio", "spread",
              "aim", "holds");
}

// The rows are printed as they come: a run takes a while.
void PrintTableRow(const ReportRow& row) {
  const Measurement& got = row.measurement;
  std::printf("%-22s %10.3f %10.3f %-5s %8.2f %4.0f %% %6.2f  %s\n", row.row.name.c_str(), got.value, got.yardstick,
              row.row.unit.c_str(), got.ratio, 100.0 * got.spread, row.row.aim, Holds(row) ? "yes" : "NO");
  std::fflush(stdout);
}

nlohmann::ordered_json ToJson(const ReportRow& row) {
  return {{"name", row.row.name},
          {"value", row.measurement.value},
          {"unit", row.row.unit},
          {"yardstick", row.measurement.yardstick},
          {"ratio", row.measurement.ratio},
          {"spread", row.measurement.spread},
          {"aim", row.row.aim},
          {"holds", Holds(row)}};
}

}  // namespace

int MeasureAndReport(const std::vector<std::vector<Row>>& families, std::string_view beginning,
                     const std::filesystem::path& jsonFile) {
  auto list = nlohmann::ordered_json::array();
  if (std::ifstream before(jsonFile); before) list = nlohmann::ordered_json::parse(before);
  for (const std::vector<Row>& family : families) {
    for (const Row& row : family) {
      if (!row.name.starts_with(beginning)) continue;
      if (list.empty()) PrintTableHead();
      const ReportRow reported{row, Measure(row)};
      PrintTableRow(reported);
      list.push_back(ToJson(reported));
    }
  }
  std::ofstream after(jsonFile, std::ios::binary);
  after << list.dump(2) << "\n";
  if (after.flush()) return 0;
  std::fprintf(stderr, "marlit_bench: cannot write %s\n", jsonFile.string().c_str());
  return 1;
}
