// marlit_bench JSONFILE VOICEBANK [NAME]: measures the rows whose name begins with NAME, or all of them, prints their
// table and writes them as JSON. VOICEBANK is a large one, see rows.h.
#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <string_view>

#include "report.h"
#include "rows.h"

namespace {

std::vector<Row> RowsNamed(std::string_view beginning, const std::wstring& voicebank) {
  std::vector<Row> rows;
  for (const auto& family :
       {ExecutableRows(), FolderRows(voicebank), FrameListRows(), MapFileRows(), MrqRows(), VoicebankRows()}) {
    std::ranges::copy_if(family, std::back_inserter(rows),
                         [&](const Row& row) { return row.name.starts_with(beginning); });
  }
  return rows;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) {
    std::fprintf(stderr, "usage: marlit_bench JSONFILE VOICEBANK [NAME]\n");
    return 2;
  }
  // The table is read on the host system, which ends its lines without a carriage return.
  _setmode(_fileno(stdout), _O_BINARY);
  const std::vector<Row> rows =
      RowsNamed(count > 3 ? arguments[3] : "", std::filesystem::absolute(arguments[2]).wstring());
  if (rows.empty()) {
    std::fprintf(stderr, "marlit_bench: no row of that name\n");
    return 2;
  }
  std::vector<ReportRow> report;
  PrintTableHead();
  for (const Row& row : rows) {
    report.push_back({row, Measure(row)});
    PrintTableRow(report.back());
  }
  if (WriteJson(report, std::filesystem::path(arguments[1]).wstring())) return 0;
  std::fprintf(stderr, "marlit_bench: cannot write %s\n", arguments[1]);
  return 1;
}
