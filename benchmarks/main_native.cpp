// marlit_bench_native JSONFILE COMMAND32 [NAME]: measures the rows of the portable floor whose name begins with NAME,
// or all of them, prints their table and adds them to the list in JSONFILE. COMMAND32 runs spectrum32.exe.
#include <cstdio>

#include "report.h"
#include "rows.h"

int main(int count, char** arguments) {
  if (count < 3) {
    std::fprintf(stderr, "usage: marlit_bench_native JSONFILE COMMAND32 [NAME]\n");
    return 2;
  }
  return MeasureAndReport({CheckRows(), DocumentRows(), NameRows(), RenderRows(), SpectrumRows(arguments[2])},
                          count > 3 ? arguments[3] : "", arguments[1]);
}
